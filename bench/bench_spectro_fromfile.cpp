// SPDX-License-Identifier: MIT

/// The Lab text reader against the plainest loop that reads the same file: `fgets`, three `strtod`, a callback. Both
/// read a file of a million lines, as a characterisation set has them, from the system's cache.

#include "instruments/spectro_fromfile.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <benchmark/benchmark.h>

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

constexpr int line_count = 1000000;

/// "95.00 0.00 -2.00" and the like, made once.
const std::string &labFile()
{
    static const QTemporaryDir directory;
    static const std::string path = [] {
        std::string made = directory.filePath(QStringLiteral("lab.txt")).toStdString();
        FILE *file = std::fopen(made.c_str(), "wb");
        for (int i = 0; i < line_count; ++i)
            std::fprintf(file, "%.2f %.2f %.2f\n", i % 10001 * 0.01, i % 16001 * 0.01 - 80.0,
                         i % 19997 * 0.01 - 90.0);
        std::fclose(file);
        return made;
    }();
    return path;
}

struct Sum {
    double colours = 0.0;
    long count = 0;
};

int addUp(void *context, double L, double a, double b)
{
    if (L < 0.0)
        return 0;
    auto *sum = static_cast<Sum *>(context);
    sum->colours += L + a + b;
    ++sum->count;
    return 0;
}

int passOver(void *, int, const char *, const char *, const char *, ...)
{
    return 0;
}

/// So that neither side reads something else.
void check(benchmark::State &state, const Sum &sum)
{
    static const double expected = [] {
        double colours = 0.0;
        for (int i = 0; i < line_count; ++i)
            colours += i % 10001 * 0.01 + i % 16001 * 0.01 - 80.0 + i % 19997 * 0.01 - 90.0;
        return colours;
    }();
    if (sum.count != line_count || std::abs(sum.colours - expected) > 1.0)
        state.SkipWithError("read something else");
}

void labReader(benchmark::State &state)
{
    setSpectroFileChooser([](const QString &, const QString &) { return QString::fromStdString(labFile()); });
    void *handle = spectro_fromfile_SpectrophotometerOpen(passOver, nullptr);
    for ([[maybe_unused]] const auto &turn : state) {
        Sum sum;
        int abort_flag = 0;
        spectro_fromfile_SpectrophotometerReadSpotLab(handle, &abort_flag, addUp, &sum, passOver, nullptr);
        check(state, sum);
    }
    spectro_fromfile_SpectrophotometerClose(handle, passOver, nullptr);
    setSpectroFileChooser(nullptr);
    state.SetItemsProcessed(state.iterations() * line_count);
}
BENCHMARK(labReader)->Unit(benchmark::kMillisecond);

void plainLoop(benchmark::State &state)
{
    FILE *file = std::fopen(labFile().c_str(), "rb");
    for ([[maybe_unused]] const auto &turn : state) {
        Sum sum;
        char line[1024];
        std::rewind(file);
        while (std::fgets(line, sizeof line, file)) {
            char *rest = line;
            const double L = std::strtod(rest, &rest);
            const double a = std::strtod(rest, &rest);
            const double b = std::strtod(rest, &rest);
            addUp(&sum, L, a, b);
        }
        check(state, sum);
    }
    std::fclose(file);
    state.SetItemsProcessed(state.iterations() * line_count);
}
BENCHMARK(plainLoop)->Unit(benchmark::kMillisecond);

} // namespace

BENCHMARK_MAIN();
