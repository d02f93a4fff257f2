// SPDX-License-Identifier: MIT
#include "taviapp/densitylut_cc.h"
#include "taviapp/tavicombocolour_cc.h"
#include "tavilib/tavilog.h"
#include "tests/instruments/orloinstrumentreadtest.h"

#include <QSignalSpy>

#include <algorithm>
#include <atomic>

namespace {

TAVICOMBOCOLOUR *threePatches()
{
    TAVICOMBOCOLOUR_CC list;
    for (int i = 0; i < 3; ++i)
        list.insertCombo(TAVICOMBOCOLOUR_CC::newMeasuredPatch(10.0 * i, 0, 0));
    return list.take();
}

} // namespace

/// Reading: the worker thread and the hand-over.
class TestOrloInstrumentReads : public OrloInstrumentReadTest
{
    Q_OBJECT

private Q_SLOTS:
    void init() { setUp(); }
    void cleanup() { tearDown(); }

    void coloursArriveInOrderOnTheMainThread()
    {
        std::atomic<bool> was_main_thread{true};
        QThread *main_thread = QThread::currentThread();
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            was_main_thread = QThread::currentThread() == main_thread;
            for (int i = 0; i < 1000; ++i)
                read.sendLab(i * 0.1, i, -i);
            return 0;
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        QTRY_COMPARE(listener.labs.size(), size_t(1000));
        QVERIFY(!was_main_thread);
        for (int i = 0; i < 1000; ++i)
            QCOMPARE(listener.labs[static_cast<size_t>(i)], (Lab{i * 0.1, double(i), double(-i)}));
    }

    void nothingArrivesBeforeTheEventLoopRuns()
    {
        std::atomic<bool> sent{false};
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            read.sendLab(1, 2, 3);
            sent = true;
            return 0;
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        while (!sent)
            std::this_thread::yield();
        QVERIFY(listener.labs.empty());
        QTRY_COMPARE(listener.labs.size(), size_t(1));
    }

    void refusedReadsStartNothing_data()
    {
        QTest::addColumn<int>("which");
        for (int i = 0; i < 11; ++i)
            QTest::newRow(QByteArray::number(i).constData()) << i;
    }

    void refusedReadsStartNothing()
    {
        QFETCH(int, which);
        TAVICOMBOCOLOUR_CC chart(threePatches());
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        SPECTROSEPTYPE separation = SPECTROSEP_CYAN;
        const TAVIKEY_ELEMENT key = {1, 2};
        const auto call = [&] {
            switch (which) {
            case 0:
                return instrument->readSpotLab(nullptr, &listener);
            case 1:
                return instrument->readComboChart(nullptr, 16, 0, Listener::lab, &listener);
            case 2:
                return instrument->readComboChart(chart.head(), 16, 0, nullptr, &listener);
            case 3:
                return instrument->printNReadComboChart(nullptr, key, key, key, nullptr, 16, 0, 0, Listener::lab,
                                                        &listener);
            case 4:
                return instrument->printNReadComboChart(nullptr, key, key, key, chart.head(), 16, 0, 0, nullptr,
                                                        &listener);
            case 5:
                return instrument->readSpotDensity(&separation, nullptr, &listener);
            case 6:
                return instrument->readLinearisation(0, lut.lut(), 0, 0, Listener::density, &listener);
            case 7:
                return instrument->readLinearisation(21, nullptr, 0, 0, Listener::density, &listener);
            case 8:
                return instrument->readLinearisation(21, lut.lut(), 0, 0, nullptr, &listener);
            case 9:
                return instrument->readSpotDensity(nullptr, Listener::density, &listener);
            default:
                instrument->close();
                return instrument->readSpotLab(Listener::lab, &listener);
            }
        };
        QCOMPARE(call(), -1);
        QCOMPARE(plugin->reads.load(), 0);
    }

    void aMissingOptionalEntryLeavesAnOlderQueueAlone()
    {
        // A spectrophotometer without densities has read something that waits in the queue.
        plugin->flags = SPECTRO_FLAG_LAB | SPECTRO_FLAG_SPOTLAB | SPECTRO_FLAG_LINCHARTGENERATOR;
        ReadersFolder::forgetInstruments();
        QCOMPARE(instrument->open("Scripted", true), 0);
        std::atomic<bool> sent{false};
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            read.sendLab(1, 2, 3);
            sent = true;
            return 0;
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        while (!sent)
            std::this_thread::yield();
        SPECTROSEPTYPE separation = SPECTROSEP_CYAN;
        QCOMPARE(instrument->readSpotDensity(&separation, Listener::density, &listener), -1);
        QCOMPARE(plugin->reads.load(), 1);
        QTRY_COMPARE(listener.labs.size(), size_t(1));
    }

    void aChartIsCopiedAndItsNumbersHandedThrough()
    {
        std::atomic<int> patches{0};
        std::atomic<unsigned long> line_length{0};
        std::atomic<unsigned long> parameter{0};
        std::atomic<bool> go{false};
        plugin->on_chart = [&](const ScriptedPlugin::Read &read, TAVICOMBOCOLOUR *chart, unsigned long line,
                               unsigned long number) {
            while (!go)
                std::this_thread::yield();
            line_length = line;
            parameter = number;
            for (; chart; chart = NextInList(chart)) {
                ++patches;
                read.sendLab(chart->L, chart->a, chart->b);
            }
            return 0;
        };
        {
            TAVICOMBOCOLOUR_CC chart(threePatches());
            QCOMPARE(instrument->readComboChart(chart.head(), 7, 99, Listener::lab, &listener), 0);
        } // the caller's list is gone
        go = true;
        QTRY_COMPARE(listener.labs.size(), size_t(3));
        QCOMPARE(patches.load(), 3);
        QCOMPARE(line_length.load(), 7UL);
        QCOMPARE(parameter.load(), 99UL);
        QCOMPARE(listener.labs[2], (Lab{20, 0, 0}));
    }

    void printingHandsItsKeysThroughAndEmitsItsResult()
    {
        ScriptedPlugin::Print seen = {};
        plugin->on_print = [&](const ScriptedPlugin::Read &read, const ScriptedPlugin::Print &print) {
            seen = print;
            read.sendLab(50, 0, 0);
            return 17;
        };
        QSignalSpy done(instrument.get(), &OrloInstrument::done);
        std::atomic<bool> on_worker{false};
        QThread *main_thread = QThread::currentThread();
        connect(
            instrument.get(), &OrloInstrument::done, this,
            [&](int) { on_worker = QThread::currentThread() != main_thread; }, Qt::DirectConnection);
        int queued_result = 0;
        bool queued_on_main = false;
        connect(instrument.get(), &OrloInstrument::done, this, [&](int result) {
            queued_result = result;
            queued_on_main = QThread::currentThread() == main_thread;
        });
        auto *server = reinterpret_cast<TaviCommServer *>(&seen);
        TAVICOMBOCOLOUR_CC chart(threePatches());
        QCOMPARE(instrument->printNReadComboChart(server, {1, 2}, {3, 4}, {5, 6}, chart.head(), 8, 9, 10,
                                                  Listener::lab, &listener),
                 0);
        QTRY_COMPARE(queued_result, 17);
        QVERIFY(queued_on_main);
        QVERIFY(on_worker);
        QTRY_COMPARE(listener.labs.size(), size_t(1));
        instrument->abort(); // the worker has gone, so that what it wrote may be read
        QCOMPARE(seen.server, server);
        QCOMPARE(seen.print_setup.word0, 1U);
        QCOMPARE(seen.print_setup.word1, 2U);
        QCOMPARE(seen.media.word1, 4U);
        QCOMPARE(seen.chart_key.word0, 5U);
        QCOMPARE(seen.line_length, 8UL);
        QCOMPARE(seen.chart_parameter, 9UL);
        QCOMPARE(seen.print_parameter, 10UL);
    }

    void printingNeedsThePrinterFlag()
    {
        plugin->flags = 0x0733;
        ReadersFolder::forgetInstruments();
        QCOMPARE(instrument->open("Scripted", true), 0);
        QVERIFY(!instrument->isPrinter());
        TAVICOMBOCOLOUR_CC chart(threePatches());
        QCOMPARE(instrument->printNReadComboChart(nullptr, {1, 2}, {3, 4}, {5, 6}, chart.head(), 8, 9, 10,
                                                  Listener::lab, &listener),
                 -1);
    }

    void spotDensitiesSeeStandardAndSeparation()
    {
        SPECTROSEPTYPE separation = SPECTROSEP_MAGENTA;
        plugin->on_spot_densities = [&](const ScriptedPlugin::Read &read, DENSITYSTANDARD standard,
                                        SPECTROSEPTYPE *sep_type) {
            PATCHDENSITY patch = {};
            patch.sep_type = *sep_type;
            patch.density = standard;
            read.density(read.context, &patch);
            return 0;
        };
        instrument->setDensityStandard(DENSITYSTANDARD_STATUS_I);
        QCOMPARE(instrument->readSpotDensity(&separation, Listener::density, &listener), 0);
        QTRY_COMPARE(listener.densities.size(), size_t(1));
        QCOMPARE(listener.densities[0].sep_type, int(SPECTROSEP_MAGENTA));
        QCOMPARE(listener.densities[0].selected, 3.0);
        // The standard outlives an abort.
        instrument->abort();
        QCOMPARE(instrument->readSpotDensity(&separation, Listener::density, &listener), 0);
        QTRY_COMPARE(listener.densities.size(), size_t(2));
        QCOMPARE(listener.densities[1].selected, 3.0);
    }

    void linearisationHandsItsStartThrough()
    {
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        std::atomic<bool> right{false};
        plugin->on_linearisation = [&](const ScriptedPlugin::Read &read, DENSITYSTANDARD, unsigned long steps,
                                       DENSITYLUT *table, unsigned long first_separation, long first_patch) {
            right = steps == 33 && table == lut.lut() && first_separation == 2 && first_patch == 5;
            PATCHDENSITY first = {};
            PATCHDENSITY second = {};
            first.patch_index = 1;
            second.patch_index = 2;
            first.header.next = &second;
            read.density(read.context, &first);
            return 0;
        };
        QCOMPARE(instrument->readLinearisation(33, lut.lut(), 2, 5, Listener::density, &listener), 0);
        QTRY_COMPARE(listener.densities.size(), size_t(2));
        QVERIFY(right);
        const std::vector<size_t> one_list_of_two = {2};
        QCOMPARE(listener.density_lists, one_list_of_two);
    }

    void negativeDensitiesComeThroughAsAThousandth()
    {
        std::atomic<bool> own_record_untouched{false};
        plugin->on_spot_densities = [&](const ScriptedPlugin::Read &read, DENSITYSTANDARD, SPECTROSEPTYPE *) {
            PATCHDENSITY patch = {};
            patch.density = -0.5;
            patch.density_k = -1;
            patch.density_c = 0.25;
            patch.density_m = -0.0001;
            patch.density_y = 0.0;
            read.density(read.context, &patch);
            own_record_untouched = patch.density == -0.5 && patch.density_k == -1 && patch.density_m == -0.0001;
            return 0;
        };
        expectLog("OrloInstrument: processDensityFromInstrument: Some of the density values read were negative. "
                  "Please recalibrate your instrument and try again");
        SPECTROSEPTYPE separation = SPECTROSEP_CYAN;
        QCOMPARE(instrument->readSpotDensity(&separation, Listener::density, &listener), 0);
        QTRY_COMPARE(listener.densities.size(), size_t(1));
        QCOMPARE(listener.densities[0], (Density{0, 0, 0, 0.001, 0.001, 0.25, 0.001, 0.0}));
        QVERIFY(own_record_untouched);
        QVERIFY(listener.texts.isEmpty()); // a fault is not for the user's line
    }

    void aNegativePatchIndexWarnsAndIsDelivered()
    {
        plugin->on_spot_densities = [&](const ScriptedPlugin::Read &read, DENSITYSTANDARD, SPECTROSEPTYPE *) {
            PATCHDENSITY patch = {};
            patch.patch_index = -1;
            patch.density = 1.5;
            read.density(read.context, &patch);
            return 0;
        };
        expectLog("Some of the density values read were negative");
        SPECTROSEPTYPE separation = SPECTROSEP_CYAN;
        QCOMPARE(instrument->readSpotDensity(&separation, Listener::density, &listener), 0);
        QTRY_COMPARE(listener.densities.size(), size_t(1));
        QCOMPARE(listener.densities[0].patch_index, -1);
        QCOMPARE(listener.densities[0].selected, 1.5);
    }

    void oneWarningForAList()
    {
        plugin->on_spot_densities = [&](const ScriptedPlugin::Read &read, DENSITYSTANDARD, SPECTROSEPTYPE *) {
            PATCHDENSITY first = {};
            PATCHDENSITY second = {};
            first.density = -1;
            second.density = -2;
            first.header.next = &second;
            read.density(read.context, &first);
            return 0;
        };
        expectLog("Some of the density values read were negative", 1);
        SPECTROSEPTYPE separation = SPECTROSEP_CYAN;
        QCOMPARE(instrument->readSpotDensity(&separation, Listener::density, &listener), 0);
        QTRY_COMPARE(listener.densities.size(), size_t(2));
        QCOMPARE(listener.densities[1].selected, 0.001);
    }

    void statusTextsGoToTheReceiverAndFaultsToTheLog()
    {
        plugin->on_spot_lab = [](const ScriptedPlugin::Read &read) {
            read.say(0, nullptr, "File importer ready");
            read.say(1, "ReadSpotLab", "Calibration failed %s", "badly");
            read.say(0, "ReadSpotLab", "Measure %c%lu", 'B', 12UL);
            return 0;
        };
        expectLog("scripted: ReadSpotLab: Calibration failed badly");
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        QTRY_COMPARE(listener.texts, (QStringList{"File importer ready", "Measure B12"}));
        QCOMPARE(recorder().kinds(), QVector<int>{TAVILOG_ERROR});
    }

    void withoutAReceiverStatusTextsGoToTheLog()
    {
        instrument->setMessageCallback(nullptr, nullptr);
        plugin->on_spot_lab = [](const ScriptedPlugin::Read &read) {
            read.say(0, nullptr, "File importer ready");
            return 0;
        };
        expectLog("scripted: : File importer ready");
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        QTRY_COMPARE(recorder().lines().size(), 1);
    }

    void aLongTextComesThroughWhole_data()
    {
        QTest::addColumn<int>("length");
        for (const int length : {126, 127, 128, 129, 255, 256, 1000, 100000})
            QTest::newRow(QByteArray::number(length).constData()) << length;
    }

    void aLongTextComesThroughWhole()
    {
        QFETCH(int, length);
        const QByteArray text(length, 'x');
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            read.say(0, nullptr, "%s", text.constData());
            return 0;
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        QTRY_COMPARE(listener.texts.size(), 1);
        QCOMPARE(listener.texts.first(), QString::fromLatin1(text));
    }

    void aReadThatEndsByItselfLeavesTheDeviceOpen()
    {
        plugin->on_spot_lab = [](const ScriptedPlugin::Read &read) {
            read.sendLab(-1, 0, 0);
            return 0;
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        QTRY_COMPARE(listener.labs.size(), size_t(1));
        QCOMPARE(listener.labs[0], (Lab{-1, 0, 0})); // the end marker comes through as it is
        QVERIFY(instrument->enabled());
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        QTRY_COMPARE(listener.labs.size(), size_t(2));
    }

    void aNestedEventLoopInACallbackKeepsTheOrder()
    {
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            for (int i = 0; i < 5; ++i)
                read.sendLab(i, 0, 0);
            return 0;
        };
        listener.on_lab = [] {
            QCoreApplication::processEvents();
        };
        QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
        QTRY_COMPARE(listener.labs.size(), size_t(5));
        for (size_t i = 0; i < 5; ++i)
            QCOMPARE(listener.labs[i].L, double(i));
    }

    void manyReadsInARowLoseNothing()
    {
        plugin->on_spot_lab = [&](const ScriptedPlugin::Read &read) {
            for (int i = 0; i < 50; ++i)
                read.sendLab(i, 0, 0);
            read.sendLab(-1, 0, 0);
            return 0;
        };
        for (int round = 0; round < 100; ++round) {
            listener.labs.clear();
            QCOMPARE(instrument->readSpotLab(Listener::lab, &listener), 0);
            QTRY_COMPARE(listener.labs.size(), size_t(51));
            QCOMPARE(listener.labs.back().L, -1.0);
        }
    }
};

TAVI_TEST_MAIN(TestOrloInstrumentReads)
#include "tst_orloinstrument_reads.moc"
