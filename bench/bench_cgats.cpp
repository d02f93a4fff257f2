// SPDX-License-Identifier: MIT
// The CGATS reader on a file of a million rows: the structure against a bare loop over the same bytes, and the whole
// way to patches against a bare loop of fgets, strtok and strtod over the same file.
#include "taviapp/cgatsreader.h"
#include "taviapp/iso12642.h"
#include "tavilib/tavifile.h"
#include "tavilib/tavipacket.h"
#include "tavilib/tavistring.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <random>
#include <string>
#include <unistd.h>

namespace {

constexpr int row_count = 1000000;
constexpr int column_count = 11;

/// A characterisation file: CMYK, XYZ and Lab of each patch, in aligned columns.
std::string makeText()
{
    std::mt19937 random(12642);
    const auto upTo = [&random](int most) {
        return static_cast<int>(random() % static_cast<unsigned>(most + 1));
    };
    std::string text = "CGATS.17\nORIGINATOR \"bench\"\nNUMBER_OF_FIELDS 11\nBEGIN_DATA_FORMAT\n"
                       "SAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K XYZ_X XYZ_Y XYZ_Z LAB_L LAB_A LAB_B\n"
                       "END_DATA_FORMAT\nNUMBER_OF_SETS "
                       + std::to_string(row_count) + "\nBEGIN_DATA\n";
    text.reserve(size_t(row_count) * 80);
    char line[128];
    for (int row = 1; row <= row_count; ++row) {
        std::snprintf(line, sizeof line, "%-7d %3d %3d %3d %3d %7.2f %7.2f %7.2f %7.2f %7.2f %7.2f\n", row, upTo(100),
                      upTo(100), upTo(100), upTo(100), upTo(9000) / 100.0, upTo(9000) / 100.0, upTo(8000) / 100.0,
                      upTo(10000) / 100.0, upTo(16000) / 100.0 - 80, upTo(16000) / 100.0 - 80);
        text += line;
    }
    return text + "END_DATA\n";
}

const std::string &text()
{
    static const std::string made = makeText();
    return made;
}

/// The text as a file, removed at the end.
class File
{
public:
    File() : path_(std::filesystem::temp_directory_path() / ("bench_cgats." + std::to_string(getpid())))
    {
        FILE *file = Tavi_fopen(path_.c_str(), "wb");
        if (!file || std::fwrite(text().data(), 1, text().size(), file) != text().size())
            std::abort();
        Tavi_fclose(file);
    }
    ~File() { std::filesystem::remove(path_); }
    File(const File &) = delete;
    File &operator=(const File &) = delete;
    const std::string &path() const { return path_; }

private:
    const std::string path_;
};

const std::string &filePath()
{
    static const File file;
    return file.path();
}

void perByte(benchmark::State &state)
{
    state.SetBytesProcessed(static_cast<int64_t>(state.iterations()) * static_cast<int64_t>(text().size()));
}

/// The least that any reader has to do: find where each word begins and ends.
void bareTokenLoop(benchmark::State &state)
{
    const std::string &bytes = text();
    for (auto _ : state) {
        size_t words = 0;
        size_t length = 0;
        const char *p = bytes.data();
        const char *const end = p + bytes.size();
        while (p < end) {
            while (p < end && (*p == ' ' || *p == '\t' || *p == '\n' || *p == '\r'))
                ++p;
            const char *begin = p;
            while (p < end && *p != ' ' && *p != '\t' && *p != '\n' && *p != '\r')
                ++p;
            words += p > begin;
            length += static_cast<size_t>(p - begin);
        }
        benchmark::DoNotOptimize(words);
        benchmark::DoNotOptimize(length);
        if (words < size_t(row_count) * column_count)
            state.SkipWithError("words are missing");
    }
    perByte(state);
}

void cgatsParse(benchmark::State &state)
{
    for (auto _ : state) {
        state.PauseTiming();
        std::string bytes = text();
        CgatsReport report;
        state.ResumeTiming();
        CgatsFile file = CgatsFile::parse(std::move(bytes), report);
        state.PauseTiming();
        if (file.tables().size() != 1 || file.tables()[0].rowCount() != row_count)
            state.SkipWithError("rows are missing");
        file = CgatsFile();
        state.ResumeTiming();
    }
    perByte(state);
}

/// What a reader without any care would do to get at Lab.
void bareFgetsStrtodLoop(benchmark::State &state)
{
    for (auto _ : state) {
        FILE *file = Tavi_fopen(filePath().c_str(), "rb");
        char line[1024];
        size_t rows = 0;
        double sum = 0.0;
        while (std::fgets(line, sizeof line, file)) {
            char *save = nullptr;
            size_t cells = 0;
            for (char *cell = Tavi_strtok(line, " \t\r\n", &save); cell;
                 cell = Tavi_strtok(nullptr, " \t\r\n", &save)) {
                sum += std::strtod(cell, nullptr);
                ++cells;
            }
            rows += cells == column_count;
        }
        Tavi_fclose(file);
        benchmark::DoNotOptimize(sum);
        if (rows < row_count)
            state.SkipWithError("rows are missing");
    }
    perByte(state);
}

void importPatches(benchmark::State &state)
{
    for (auto _ : state) {
        CgatsReport report;
        TAVICOMBOCOLOUR *patches = ISO12642Importer::import(filePath(), 0, report);
        state.PauseTiming();
        if (report.rows != row_count)
            state.SkipWithError("rows are missing");
        TaviPacketFreeList(&patches, TAVIPACKET_COMBOCOLOUR);
        state.ResumeTiming();
    }
    perByte(state);
}

} // namespace

BENCHMARK(bareTokenLoop)->Unit(benchmark::kMillisecond);
BENCHMARK(cgatsParse)->Unit(benchmark::kMillisecond);
BENCHMARK(bareFgetsStrtodLoop)->Unit(benchmark::kMillisecond);
BENCHMARK(importPatches)->Unit(benchmark::kMillisecond);

BENCHMARK_MAIN();
