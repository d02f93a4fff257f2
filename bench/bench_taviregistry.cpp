// SPDX-License-Identifier: MIT

/// The settings store against the settings class of Qt. Both keep a file in a scratch directory and hold 10 sections
/// of 100 keys; each write of the peer is followed by sync(), because the store's writes outlive the program as soon
/// as they return. Sections and keys are made before the clock starts, in the form that each side takes.

#include "bench/benchmain.h"
#include "taviapp/taviregistry.h"

#include <QCoreApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <string>
#include <vector>

namespace {

constexpr int section_count = 10;
constexpr int key_count = 100;
constexpr int write_count = section_count * key_count;
constexpr int read_count = 10 * write_count;

struct Name {
    std::string section;
    std::string key;
    QString joined;
};

const std::vector<Name> &names()
{
    static const std::vector<Name> all = [] {
        std::vector<Name> made;
        for (int key = 0; key < key_count; ++key) {
            for (int section = 0; section < section_count; ++section) {
                Name name = {"section " + std::to_string(section), "some key " + std::to_string(key), {}};
                name.joined = QString::fromStdString(name.section + "/" + name.key);
                made.push_back(name);
            }
        }
        return made;
    }();
    return all;
}

void fill(TaviRegistry &registry, long offset)
{
    for (int i = 0; i < write_count; ++i) {
        Name name = names()[static_cast<size_t>(i)];
        registry.putlong(name.section, name.key, i + offset);
    }
}

/// What the reads must come to, so that neither side reads something else.
constexpr long expected_sum = 10L * write_count * (write_count - 1) / 2;

void registryPuts(benchmark::State &state)
{
    const QTemporaryDir directory;
    TaviRegistry registry(directory.filePath("settings.db").toStdString());
    std::vector<Name> all = names();
    long value = 0;
    for (auto _ : state) {
        for (Name &name : all)
            registry.putlong(name.section, name.key, value++);
    }
    state.SetItemsProcessed(state.iterations() * write_count);
}

void settingsPuts(benchmark::State &state)
{
    const QTemporaryDir directory;
    QSettings settings(directory.filePath("settings.ini"), QSettings::IniFormat);
    qlonglong value = 0;
    for (auto _ : state) {
        for (const Name &name : names()) {
            settings.setValue(name.joined, value++);
            settings.sync();
        }
    }
    state.SetItemsProcessed(state.iterations() * write_count);
}

void registryReads(benchmark::State &state)
{
    const QTemporaryDir directory;
    TaviRegistry registry(directory.filePath("settings.db").toStdString());
    fill(registry, 0);
    std::vector<Name> all = names();
    for (auto _ : state) {
        long sum = 0;
        for (int i = 0; i < read_count; ++i) {
            Name &name = all[static_cast<size_t>(i % write_count)];
            sum += registry.getlong(name.section, name.key);
        }
        if (sum != expected_sum)
            state.SkipWithError("wrong values");
    }
    state.SetItemsProcessed(state.iterations() * read_count);
}

void settingsReads(benchmark::State &state)
{
    const QTemporaryDir directory;
    const QString path = directory.filePath("settings.ini");
    {
        QSettings settings(path, QSettings::IniFormat);
        for (int i = 0; i < write_count; ++i)
            settings.setValue(names()[static_cast<size_t>(i)].joined, i);
    }
    QSettings settings(path, QSettings::IniFormat);
    for (auto _ : state) {
        qlonglong sum = 0;
        for (int i = 0; i < read_count; ++i)
            sum += settings.value(names()[static_cast<size_t>(i % write_count)].joined).toLongLong();
        if (sum != expected_sum)
            state.SkipWithError("wrong values");
    }
    state.SetItemsProcessed(state.iterations() * read_count);
}

void registryWalks(benchmark::State &state)
{
    const QTemporaryDir directory;
    TaviRegistry registry(directory.filePath("settings.db").toStdString());
    fill(registry, 0);
    std::string section = names().front().section;
    for (auto _ : state) {
        for (auto at = registry.firstItem(section); !registry.isEndItem(at); at = registry.nextItem())
            benchmark::DoNotOptimize(registry.value(at));
    }
    state.SetItemsProcessed(state.iterations() * key_count);
}

void registryOpens(benchmark::State &state)
{
    const QTemporaryDir directory;
    const std::string path = directory.filePath("settings.db").toStdString();
    {
        TaviRegistry registry(path);
        fill(registry, 0);
    }
    for (auto _ : state) {
        TaviRegistry registry(path);
        benchmark::DoNotOptimize(registry.size("section 0"));
    }
}

BENCHMARK(registryPuts)->Name("1000_puts/TaviRegistry")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(settingsPuts)->Name("1000_puts/QSettings_sync")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(registryReads)->Name("10000_reads/TaviRegistry")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(settingsReads)->Name("10000_reads/QSettings")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(registryWalks)->Name("walk_over_100_keys/TaviRegistry")->Unit(benchmark::kMicrosecond)->UseRealTime();
BENCHMARK(registryOpens)->Name("open_with_1000_keys/TaviRegistry")->Unit(benchmark::kMillisecond)->UseRealTime();

} // namespace

int main(int argc, char **argv)
{
    return runBenchmarks<QCoreApplication>(argc, argv);
}
