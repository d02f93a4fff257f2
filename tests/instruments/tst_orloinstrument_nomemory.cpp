// SPDX-License-Identifier: MIT
#include "instruments/orloinstrument.h"
#include "tavilib/tavialloc_p.h"
#include "tavilib/tavilog.h"
#include "tests/support/instruments/readersfolder.h"
#include "tests/support/tavitest.h"

#include <atomic>
#include <dlfcn.h>
#include <pthread.h>
#include <thread>

namespace {

std::atomic<bool> refuse_threads{false};
std::atomic<int> allocations_left{-1}; // below zero: as many as wanted

bool allow(size_t, void *)
{
    if (allocations_left <= 0)
        return allocations_left < 0;
    --allocations_left;
    return true;
}

/// Lets @a count allocations succeed while it lives, and none after those.
class ScarceMemory
{
public:
    explicit ScarceMemory(int count)
    {
        allocations_left = count;
        TaviAllocSetHook(allow, nullptr);
    }
    ~ScarceMemory()
    {
        TaviAllocSetHook(nullptr, nullptr);
        allocations_left = -1;
    }
};

int countLab(void *context, double, double, double)
{
    ++*static_cast<int *>(context);
    return 0;
}

int countDensity(void *context, PATCHDENSITY *)
{
    ++*static_cast<int *>(context);
    return 0;
}

int keepText(void *context, char const *text)
{
    static_cast<QStringList *>(context)->append(QString::fromUtf8(text));
    return 0;
}

} // namespace

/// Stands before the C library's, for the whole program, the library under test included.
extern "C" int pthread_create(pthread_t *thread, const pthread_attr_t *attributes, void *(*start)(void *),
                              void *argument)
{
    if (refuse_threads)
        return EAGAIN;
    using Create = int (*)(pthread_t *, const pthread_attr_t *, void *(*)(void *), void *);
    static const auto next = reinterpret_cast<Create>(dlsym(RTLD_NEXT, "pthread_create"));
    return next(thread, attributes, start, argument);
}

/// The driver where memory or threads are out.
class TestOrloInstrumentNoMemory : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aThreadThatCannotBeHadIsLogged_data()
    {
        QTest::addColumn<QString>("operation");
        for (const char *operation : {"readSpotLab", "readSpotDensity"})
            QTest::newRow(operation) << operation;
    }

    void aThreadThatCannotBeHadIsLogged()
    {
        QFETCH(QString, operation);
        ReadersFolder readers;
        const ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        OrloInstrument instrument;
        QCOMPARE(instrument.open("Scripted", true), 0);
        SPECTROSEPTYPE separation = SPECTROSEP_CYAN;
        int values = 0;
        const auto start = [&] {
            return operation == "readSpotLab" ? instrument.readSpotLab(countLab, &values)
                                              : instrument.readSpotDensity(&separation, countDensity, &values);
        };
        refuse_threads = true;
        expectLog("orloinstrument: " + operation + ": Could not launch reading thread");
        const int result = start();
        refuse_threads = false;
        QCOMPARE(result, -1);
        QCOMPARE(recorder().kinds(), QVector<int>{TAVILOG_PLUGIN});
        QCOMPARE(plugin->reads.load(), 0);
        QVERIFY(instrument.enabled());
        instrument.abort(); // not busy: does not wait for a thread that never was
        QCOMPARE(start(), 0);
        QTRY_COMPARE(plugin->reads.load(), 1);
    }

    void openingWithoutMemoryLeavesTheDriverEmpty()
    {
        ReadersFolder readers;
        readers.add("scripted", "one.so");
        const SPECTROPHOTOMETERINFO *list = OrloInstrument::getInstrumentList();
        QVERIFY(list);
        bool failed_for_the_record = false;
        int result = -1;
        for (int allowed = 0; result != 0 && allowed < 20; ++allowed) {
            OrloInstrument instrument;
            allowLog("Cannot allocate memory");
            {
                const ScarceMemory scarce(allowed);
                result = instrument.open("Scripted", true);
            }
            if (result != 0) {
                QVERIFY(instrument.dllFilename().empty());
                QVERIFY(!instrument.enabled());
            }
            failed_for_the_record = recorder().count(": : Cannot allocate memory") > 0;
        }
        QCOMPARE(result, 0);
        QVERIFY(failed_for_the_record);
    }

    void aValueWithoutMemoryIsDroppedAndTheReadGoesOn()
    {
        ReadersFolder readers;
        ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        plugin->on_spot_lab = [](const ScriptedPlugin::Read &read) {
            read.sendLab(1, 0, 0);
            {
                const ScarceMemory scarce(0);
                read.sendLab(2, 0, 0);
                read.say(0, nullptr, "Reset done");
            }
            read.sendLab(3, 0, 0);
            return 0;
        };
        OrloInstrument instrument;
        QStringList texts;
        instrument.setMessageCallback(keepText, &texts);
        QCOMPARE(instrument.open("Scripted", true), 0);
        int values = 0;
        QCOMPARE(instrument.readSpotLab(countLab, &values), 0);
        QTRY_COMPARE(values, 2);
        QVERIFY(texts.isEmpty());
    }

    void aDensityWithoutMemoryIsDropped_data()
    {
        QTest::addColumn<int>("allowed");
        QTest::newRow("no event") << 0;
        QTest::newRow("no copy") << 1;
        QTest::newRow("no second copy") << 2;
    }

    void aDensityWithoutMemoryIsDropped()
    {
        QFETCH(int, allowed);
        ReadersFolder readers;
        ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        plugin->on_spot_densities = [allowed](const ScriptedPlugin::Read &read, DENSITYSTANDARD, SPECTROSEPTYPE *) {
            PATCHDENSITY first = {};
            PATCHDENSITY second = {};
            first.header.next = &second;
            {
                const ScarceMemory scarce(allowed);
                read.density(read.context, &first);
            }
            read.density(read.context, &second);
            return 0;
        };
        OrloInstrument instrument;
        QCOMPARE(instrument.open("Scripted", true), 0);
        SPECTROSEPTYPE separation = SPECTROSEP_CYAN;
        int values = 0;
        QCOMPARE(instrument.readSpotDensity(&separation, countDensity, &values), 0);
        QTRY_COMPARE(values, 1);
        instrument.abort();
        QCOMPARE(values, 1);
    }

    void aChartThatCannotBeCopiedIsNotRead()
    {
        ReadersFolder readers;
        const ScriptedPlugin *plugin = readers.add("scripted", "one.so");
        OrloInstrument instrument;
        QCOMPARE(instrument.open("Scripted", true), 0);
        TAVICOMBOCOLOUR patch = {};
        int values = 0;
        {
            const ScarceMemory scarce(0);
            QCOMPARE(instrument.readComboChart(&patch, 1, 0, countLab, &values), -1);
        }
        QCOMPARE(plugin->reads.load(), 0);
    }
};

TAVI_TEST_MAIN(TestOrloInstrumentNoMemory)
#include "tst_orloinstrument_nomemory.moc"
