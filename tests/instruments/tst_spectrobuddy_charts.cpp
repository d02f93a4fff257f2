// SPDX-License-Identifier: MIT
#include "taviapp/tavikey_cc.h"
#include "tests/support/instruments/spectrobuddyfixture.h"

#include <atomic>

namespace {

TAVICOMBOCOLOUR *patches(int count)
{
    TAVICOMBOCOLOUR_CC list;
    for (int i = 0; i < count; ++i)
        list.insertCombo(TAVICOMBOCOLOUR_CC::newMeasuredPatch(i, 0, 0));
    return list.take();
}

constexpr uint32_t printer_flags = 0x1633;

} // namespace

/// Charts, and instruments that print them.
class TestSpectroBuddyCharts : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aStoredChartIsReadWithTheNextMeasure()
    {
        SpectroBuddyFixture f;
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.choose("Scripted");
        std::atomic<unsigned long> line{0};
        std::atomic<unsigned long> parameter{0};
        f.plugin->on_chart = [&](const ScriptedPlugin::Read &read, TAVICOMBOCOLOUR *chart, unsigned long line_length,
                                 unsigned long number) {
            line = line_length;
            parameter = number;
            for (; chart; chart = NextInList(chart))
                read.sendLab(chart->L, 0, 0);
            return 0;
        };
        {
            TAVICOMBOCOLOUR_CC chart(patches(4));
            f.buddy->setComboChart(chart.head(), 8, 77, 0);
        } // the group keeps a copy
        QCOMPARE(f.plugin->opens.load(), 0);
        f.press();
        QTRY_COMPARE(f.spots->count(), 4);
        QCOMPARE(line.load(), 8UL);
        QCOMPARE(parameter.load(), 77UL);
        QVERIFY(f.status->count() == 1);
    }

    void withoutAChartTheMeasureFallsBack()
    {
        SpectroBuddyFixture f;
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.choose("Scripted");
        f.press();
        QCOMPARE(f.plugin->opens.load(), 1);
        QCOMPARE(f.plugin->closes.load(), 1);
        QCOMPARE(f.plugin->reads.load(), 0);
        QCOMPARE(f.status->count(), 0);
        QCOMPARE(f.activateButton()->text(), QString("Measure"));
        QCOMPARE(f.buddy->dllFilename(), std::string("one.so"));
    }

    void aChartGivenWhileOnIsReadAtOnce()
    {
        SpectroBuddyFixture f;
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.choose("Scripted");
        f.buddy->setChartInitDelayed(true);
        QVERIFY(f.buddy->isChartInitDelayed());
        f.press();
        QVERIFY(f.buddy->enable() == 0);
        QCOMPARE(f.plugin->reads.load(), 0); // waits for its chart
        f.plugin->on_chart = [&](const ScriptedPlugin::Read &read, TAVICOMBOCOLOUR *, unsigned long, unsigned long) {
            read.sendLab(5, 0, 0);
            return 0;
        };
        TAVICOMBOCOLOUR_CC chart(patches(1));
        f.buddy->setComboChart(chart.head(), 1, 0, 0);
        QTRY_COMPARE(f.spots->count(), 1);
        QCOMPARE(f.status->count(), 1);
    }

    void aChartThatCannotBeReadTurnsTheInstrumentOff()
    {
        SpectroBuddyFixture f;
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.choose("Scripted");
        f.buddy->setChartInitDelayed(true);
        f.press();
        f.status->clear();
        f.buddy->setComboChart(nullptr, 1, 0, 0);
        QCOMPARE(f.plugin->closes.load(), 1);
        QCOMPARE(f.status->count(), 1);
        QCOMPARE(f.buddy->dllFilename(), std::string("one.so"));
        QCOMPARE(f.activateButton()->text(), QString("Measure"));
    }

    void aChartInSpotModeClosesTheInstrument()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.press();
        f.status->clear();
        TAVICOMBOCOLOUR_CC chart(patches(1));
        f.buddy->setComboChart(chart.head(), 1, 0, 0);
        QCOMPARE(f.plugin->closes.load(), 1);
        QCOMPARE(f.status->count(), 1);
        QCOMPARE(f.group->title(), QString("Spectrophotometer (offline)"));
    }

    void theInstrumentIsAskedHowToMakeAChart()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.plugin->on_get_chart = [](const TAVICOMBOCOLOUR *, unsigned long parameter) {
            return static_cast<int>(parameter) + 1;
        };
        TAVICOMBOCOLOUR_CC chart(patches(1));
        QCOMPARE(f.buddy->getComboColourChart(chart.head(), 41), 42);
    }

    void aPrinterAsksForItsDataAndPrints()
    {
        SpectroBuddyFixture f;
        usePrinter(f);
        ScriptedPlugin::Print seen = {};
        f.plugin->on_print = [&](const ScriptedPlugin::Read &read, const ScriptedPlugin::Print &print) {
            seen = print;
            read.sendLab(5, 0, 0);
            return 0;
        };
        auto *server = reinterpret_cast<TaviCommServer *>(&seen);
        connect(f.buddy.get(), &SpectroBuddy::requestPrinterCommData, this,
                [&](TaviCommServer **given, TAVIKEY_ELEMENT &setup, TAVIKEY_ELEMENT &media, bool &ok) {
                    QVERIFY(!ok);
                    QVERIFY(!*given);
                    QVERIFY(!TAVIKEY_CC::isValid(setup));
                    QVERIFY(!TAVIKEY_CC::isValid(media));
                    *given = server;
                    setup = {1, 2};
                    media = {3, 4};
                    ok = true;
                });
        TAVICOMBOCOLOUR_CC chart(patches(1));
        f.buddy->setComboChart({5, 6}, chart.head(), 7, 8, 9);
        f.press();
        QTRY_COMPARE(f.spots->count(), 1);
        QVERIFY(f.buddy->isPrinterCommDataValid());
        // The end of the print and read run turns the instrument off: done() parks the group.
        QTRY_COMPARE(f.status->count(), 2);
        QCOMPARE(f.status->last().first().toBool(), false);
        QCOMPARE(f.activateButton()->text(), QString("Measure"));
        QCOMPARE(seen.server, server);
        QCOMPARE(seen.print_setup.word1, 2U);
        QCOMPARE(seen.media.word0, 3U);
        QCOMPARE(seen.chart_key.word1, 6U);
        QCOMPARE(seen.line_length, 7UL);
        QCOMPARE(seen.chart_parameter, 8UL);
        QCOMPARE(seen.print_parameter, 9UL);
    }

    void aRefusedPrintStartsNothingAndStaysOn()
    {
        SpectroBuddyFixture f;
        usePrinter(f);
        TAVICOMBOCOLOUR_CC chart(patches(1));
        f.buddy->setComboChart(chart.head(), 7, 8, 9);
        f.press(); // nobody answers the request
        QCOMPARE(f.plugin->reads.load(), 0);
        QCOMPARE(f.status->count(), 1);
        QCOMPARE(f.activateButton()->text(), QString("Done"));
        QVERIFY(!f.buddy->isPrinterCommDataValid());
    }

    void aChartForARunningPrinterNeedsValidData_data()
    {
        QTest::addColumn<bool>("server");
        QTest::addColumn<bool>("setup");
        QTest::addColumn<bool>("says_ok");
        QTest::addColumn<bool>("prints");
        QTest::newRow("both") << true << true << true << true;
        QTest::newRow("both, without the word for it") << true << true << false << true;
        QTest::newRow("no server") << false << true << true << false;
        QTest::newRow("no setup") << true << false << true << false;
    }

    void aChartForARunningPrinterNeedsValidData()
    {
        QFETCH(bool, server);
        QFETCH(bool, setup);
        QFETCH(bool, says_ok);
        QFETCH(bool, prints);
        SpectroBuddyFixture f;
        usePrinter(f);
        f.buddy->setChartInitDelayed(true);
        f.press();
        QCOMPARE(f.status->count(), 1);
        int some_server = 0;
        connect(f.buddy.get(), &SpectroBuddy::requestPrinterCommData, this,
                [&](TaviCommServer **given, TAVIKEY_ELEMENT &key, TAVIKEY_ELEMENT &, bool &ok) {
                    if (server)
                        *given = reinterpret_cast<TaviCommServer *>(&some_server);
                    if (setup)
                        key = {1, 2};
                    ok = says_ok;
                });
        f.plugin->on_print = [](const ScriptedPlugin::Read &read, const ScriptedPlugin::Print &) {
            return SpectroBuddyFixture::waitForAbort(read);
        };
        TAVICOMBOCOLOUR_CC chart(patches(1));
        f.buddy->setComboChart({5, 6}, chart.head(), 7, 8, 9);
        QTRY_COMPARE(f.plugin->reads.load(), prints ? 1 : 0);
        QCOMPARE(f.status->count(), prints ? 1 : 2);
    }

    void aSlotOfTheRequestMayDestroyTheBuddy()
    {
        SpectroBuddyFixture f;
        usePrinter(f);
        TAVICOMBOCOLOUR_CC chart(patches(1));
        f.buddy->setComboChart(chart.head(), 7, 8, 9);
        connect(f.buddy.get(), &SpectroBuddy::requestPrinterCommData, this,
                [&](TaviCommServer **, TAVIKEY_ELEMENT &, TAVIKEY_ELEMENT &, bool &ok) {
                    ok = true; // kept on a stack that outlives the buddy
                    f.buddy.reset();
                });
        SpectroBuddy *raw = f.buddy.get();
        QCOMPARE(raw->enable(), -1);
        QCOMPARE(f.plugin->closes.load(), 1);
    }

    void aNewChartOutlivesTheEndOfTheOldPrint()
    {
        SpectroBuddyFixture f;
        usePrinter(f);
        f.plugin->on_print = [&](const ScriptedPlugin::Read &read, const ScriptedPlugin::Print &print) {
            if (print.chart_parameter == 1)
                return SpectroBuddyFixture::waitForAbort(read);
            // Longer than the old run's last word needs to arrive.
            for (int i = 0; i < 10 && !read.aborted(); ++i) {
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
                read.sendLab(i, 0, 0);
            }
            return 0;
        };
        giveServer(f);
        TAVICOMBOCOLOUR_CC chart(patches(1));
        f.buddy->setComboChart(chart.head(), 1, 1, 0);
        f.press();
        QTRY_COMPARE(f.plugin->reads.load(), 1);
        f.buddy->setComboChart(chart.head(), 1, 2, 0);
        QTRY_COMPARE(f.spots->count(), 10);
        QTRY_COMPARE(f.status->count(), 2); // its own end turns the instrument off
    }

    void aSlotThatSpinsAnEventLoopLosesNoReading()
    {
        SpectroBuddyFixture f;
        usePrinter(f);
        f.plugin->on_print = [](const ScriptedPlugin::Read &read, const ScriptedPlugin::Print &) {
            for (int i = 0; i < 10; ++i)
                read.sendLab(i, 0, 0);
            return 0;
        };
        giveServer(f);
        connect(f.buddy.get(), &SpectroBuddy::spotLab, this, [](double L) {
            if (L == 0.0)
                QTest::qWait(200); // the end of the run is told in here
        });
        TAVICOMBOCOLOUR_CC chart(patches(1));
        f.buddy->setComboChart(chart.head(), 1, 1, 0);
        f.press();
        QTRY_COMPARE(f.spots->count(), 10);
        QTRY_COMPARE(f.status->count(), 2);
    }

    void theShortFormGivesTheNullKey()
    {
        SpectroBuddyFixture f;
        usePrinter(f);
        std::atomic<bool> null_key{false};
        f.plugin->on_print = [&](const ScriptedPlugin::Read &, const ScriptedPlugin::Print &print) {
            null_key = !TAVIKEY_CC::isValid(print.chart_key);
            return 0;
        };
        giveServer(f);
        TAVICOMBOCOLOUR_CC chart(patches(1));
        f.buddy->setComboChart({5, 6}, chart.head(), 1, 1, 0);
        f.buddy->setComboChart(chart.head(), 1, 1, 0);
        f.press();
        QTRY_COMPARE(f.plugin->reads.load(), 1);
        QTRY_VERIFY(null_key);
    }

    void everyRequestBeginsWithNothing()
    {
        SpectroBuddyFixture f;
        usePrinter(f);
        int some_server = 0;
        int requests = 0;
        connect(f.buddy.get(), &SpectroBuddy::requestPrinterCommData, this,
                [&](TaviCommServer **given, TAVIKEY_ELEMENT &setup, TAVIKEY_ELEMENT &media, bool &ok) {
                    ++requests;
                    QVERIFY(!ok);
                    QVERIFY(!*given);
                    QVERIFY(!TAVIKEY_CC::isValid(setup));
                    QVERIFY(!TAVIKEY_CC::isValid(media));
                    *given = reinterpret_cast<TaviCommServer *>(&some_server);
                    setup = {1, 2};
                    media = {3, 4};
                });
        TAVICOMBOCOLOUR_CC chart(patches(1));
        f.buddy->setComboChart(chart.head(), 1, 1, 0);
        for (int i = 0; i < 2; ++i) {
            f.press();
            f.press();
        }
        QCOMPARE(requests, 2);
    }

    void thePrintButtonAsksTheApplication()
    {
        SpectroBuddyFixture f;
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.choose("Scripted");
        QSignalSpy print(f.buddy.get(), &SpectroBuddy::printChart);
        f.printButton()->click();
        QCOMPARE(print.count(), 1);
        QCOMPARE(f.buddy->dllFilename(), std::string("one.so"));
    }

    void theEndOfAPrintOfADestroyedBuddyReachesNobody()
    {
        SpectroBuddyFixture f;
        usePrinter(f);
        std::atomic<bool> started{false};
        f.plugin->on_print = [&](const ScriptedPlugin::Read &read, const ScriptedPlugin::Print &) {
            started = true;
            return SpectroBuddyFixture::waitForAbort(read);
        };
        int some_server = 0;
        connect(f.buddy.get(), &SpectroBuddy::requestPrinterCommData, this,
                [&](TaviCommServer **given, TAVIKEY_ELEMENT &key, TAVIKEY_ELEMENT &, bool &ok) {
                    *given = reinterpret_cast<TaviCommServer *>(&some_server);
                    key = {1, 2};
                    ok = true;
                });
        TAVICOMBOCOLOUR_CC chart(patches(1));
        f.buddy->setComboChart(chart.head(), 7, 8, 9);
        f.press();
        QTRY_VERIFY(started);
        f.buddy.reset(); // done() is emitted while this waits for the worker
        QCoreApplication::processEvents();
        QCOMPARE(f.plugin->closes.load(), 1);
    }

private:
    void giveServer(SpectroBuddyFixture &f)
    {
        connect(f.buddy.get(), &SpectroBuddy::requestPrinterCommData, this,
                [this](TaviCommServer **given, TAVIKEY_ELEMENT &key, TAVIKEY_ELEMENT &, bool &ok) {
                    *given = reinterpret_cast<TaviCommServer *>(this);
                    key = {1, 2};
                    ok = true;
                });
    }

    static void usePrinter(SpectroBuddyFixture &f)
    {
        f.plugin->flags = printer_flags;
        ReadersFolder::forgetInstruments();
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.choose("Scripted");
        QVERIFY(f.buddy->isPrinter());
    }
};

TAVI_GUI_TEST_MAIN(TestSpectroBuddyCharts)
#include "tst_spectrobuddy_charts.moc"
