// SPDX-License-Identifier: MIT
#include "tests/support/instruments/spectrobuddyfixture.h"

/// From values to signals: single colours, lines, series.
class TestSpectroBuddyDelivery : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aSpotIsShownAndEmitted()
    {
        SpectroBuddyFixture f;
        f.buddy->fireSpotLab(50, -1.23456, 0.0005);
        QCOMPARE(f.spots->count(), 1);
        QCOMPARE(f.spots->first(), (QVariantList{50.0, -1.23456, 0.0005}));
        QCOMPARE(f.messageLine()->text(), QString("L:50.000, a:-1.235, b:0.001"));
    }

    void aSpotReadArrivesAsSpots()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.plugin->on_spot_lab = [](const ScriptedPlugin::Read &read) {
            for (int i = 0; i < 5; ++i)
                read.sendLab(i, i, i);
            read.sendLab(-1, 0, 0);
            return 0;
        };
        f.press();
        QTRY_COMPARE(f.spots->count(), 6);
        // Nothing is gathered, so that the end marker reaches the listener.
        QCOMPARE(f.spots->last().first().toDouble(), -1.0);
        QVERIFY(f.series.empty());
    }

    void aFileSourceArrivesAsOneSeries()
    {
        SpectroBuddyFixture f;
        f.plugin->flags |= SPECTRO_FLAG_FILESOURCE;
        f.findInstrumentsAnew();
        f.choose("Scripted");
        f.plugin->on_spot_lab = [](const ScriptedPlugin::Read &read) {
            for (int i = 0; i < 10; ++i)
                read.sendLab(i * 10.125, -0.5, 33.333);
            read.sendLab(-1, 0, 0);
            return 0;
        };
        f.press();
        QTRY_COMPARE(f.series.size(), size_t(1));
        QCOMPARE(f.series[0].count(), size_t(10));
        QCOMPARE(f.spots->count(), 0);
        QCOMPARE(f.messageLine()->text(), QString("Measured 10 colours."));
        QCOMPARE(SpectroBuddyFixture::names(f.series[0])[1], QString("10.12, -0.50, 33.33"));
        const TAVICOMBOCOLOUR *patch = f.series[0].head();
        QCOMPARE(patch->flags, uint32_t(COMBOCOLOUR_FLAG_LAB));
        QCOMPARE(patch->percent, 100);
        QCOMPARE(patch->b, 33.333);
        QVERIFY(f.buddy->disable() == 0);
        QCOMPARE(f.series.size(), size_t(1)); // nothing is left to flush
    }

    void aSeriesMayBeEndedByAnEmptyOne()
    {
        SpectroBuddyFixture f;
        f.buddy->bufferAllLab(-1, 0, 0);
        f.buddy->fireAllLab();
        QVERIFY(f.series.empty());
        QCOMPARE(f.messageLine()->text(), QString());
    }

    void zeroLightnessIsAColour()
    {
        SpectroBuddyFixture f;
        f.buddy->bufferAllLab(0, 0, 0);
        f.buddy->bufferAllLab(-0.001, 0, 0);
        QCOMPARE(f.series.size(), size_t(1));
        QCOMPARE(SpectroBuddyFixture::names(f.series[0]), QStringList{"0.00, 0.00, 0.00"});
    }

    void turningOffFlushesASeriesWithoutAnEndMarker()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.plugin->on_spot_lab = [](const ScriptedPlugin::Read &read) {
            read.sendLab(1, 0, 0);
            read.sendLab(2, 0, 0);
            read.say(0, nullptr, "Measurement complete");
            return SpectroBuddyFixture::waitForAbort(read);
        };
        f.press();
        f.buddy->setBufferAllMeasurements(true);
        QTRY_COMPARE(f.messageLine()->text(), QString("Measurement complete"));
        QVERIFY(f.series.empty());
        f.press();
        QCOMPARE(f.series.size(), size_t(1));
        QCOMPARE(f.series[0].count(), size_t(2));
    }

    void linesOfThreeOutOfSeven()
    {
        SpectroBuddyFixture f;
        TAVICOMBOCOLOUR_CC chart(TAVICOMBOCOLOUR_CC::newMeasuredPatch(1, 2, 3));
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.buddy->setBufferLineMeasurements(true);
        f.buddy->setComboChart(chart.head(), 3, 0, 0);
        f.choose("Scripted");
        f.plugin->on_chart = [](const ScriptedPlugin::Read &read, TAVICOMBOCOLOUR *, unsigned long line_length,
                                unsigned long) {
            for (int i = 1; i <= 7; ++i)
                read.sendLab(i, static_cast<double>(line_length), 0);
            return 0;
        };
        f.press();
        QTRY_COMPARE(f.lines.size(), size_t(2));
        QCOMPARE(SpectroBuddyFixture::names(f.lines[0]),
                 (QStringList{"1.00, 3.00, 0.00", "2.00, 3.00, 0.00", "3.00, 3.00, 0.00"}));
        QCOMPARE(SpectroBuddyFixture::names(f.lines[1]).first(), QString("4.00, 3.00, 0.00"));
        QCOMPARE(f.messageLine()->text(), QString("Measured 3 colours")); // no full stop
        QCoreApplication::processEvents();
        // The seventh waits for its line.
        f.buddy->bufferLineLab(8, 0, 0);
        f.buddy->bufferLineLab(9, 0, 0);
        QCOMPARE(f.lines.size(), size_t(3));
        QCOMPARE(SpectroBuddyFixture::names(f.lines[2]).first(), QString("7.00, 3.00, 0.00"));
    }

    void anEndMarkerInALineIsAPatch()
    {
        SpectroBuddyFixture f;
        TAVICOMBOCOLOUR_CC chart(TAVICOMBOCOLOUR_CC::newMeasuredPatch(1, 2, 3));
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.buddy->setComboChart(chart.head(), 2, 0, 0);
        f.buddy->bufferLineLab(5, 0, 0);
        f.buddy->bufferLineLab(-1, 0, 0);
        QCOMPARE(f.lines.size(), size_t(1));
        QCOMPARE(SpectroBuddyFixture::names(f.lines[0]), (QStringList{"5.00, 0.00, 0.00", "-1.00, 0.00, 0.00"}));
    }

    void aLineIsSixteenAtFirst()
    {
        SpectroBuddyFixture f;
        for (int i = 0; i < 15; ++i)
            f.buddy->bufferLineLab(i, 0, 0);
        f.buddy->fireLineLab();
        QVERIFY(f.lines.empty());
        f.buddy->bufferLineLab(15, 0, 0);
        QCOMPARE(f.lines.size(), size_t(1));
    }

    void coloursBeyondTheLineStay()
    {
        SpectroBuddyFixture f;
        for (int i = 0; i < 5; ++i)
            f.buddy->bufferAllLab(i, 0, 0);
        TAVICOMBOCOLOUR_CC chart(TAVICOMBOCOLOUR_CC::newMeasuredPatch(1, 2, 3));
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.buddy->setComboChart(chart.head(), 2, 0, 0);
        f.buddy->fireLineLab();
        QCOMPARE(f.lines.size(), size_t(1));
        f.buddy->fireAllLab();
        QCOMPARE(SpectroBuddyFixture::names(f.series.at(0)),
                 (QStringList{"2.00, 0.00, 0.00", "3.00, 0.00, 0.00", "4.00, 0.00, 0.00"}));
    }

    void aLineOfNoneIsNeverComplete()
    {
        SpectroBuddyFixture f;
        TAVICOMBOCOLOUR_CC chart(TAVICOMBOCOLOUR_CC::newMeasuredPatch(1, 2, 3));
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.buddy->setComboChart(chart.head(), 0, 0, 0);
        f.buddy->bufferLineLab(5, 0, 0);
        f.buddy->bufferAllLab(5, 0, 0);
        f.buddy->fireLineLab();
        QVERIFY(f.lines.empty());
    }

    void chartModeDeliversByItsFlags_data()
    {
        QTest::addColumn<bool>("line");
        QTest::addColumn<bool>("all");
        QTest::addColumn<int>("spots");
        QTest::addColumn<int>("lines");
        QTest::addColumn<int>("series");
        QTest::newRow("nothing gathered") << false << false << 5 << 0 << 0;
        QTest::newRow("all") << false << true << 0 << 0 << 1;
        QTest::newRow("line") << true << false << 0 << 2 << 0;
        QTest::newRow("line goes before all") << true << true << 0 << 2 << 0;
    }

    void chartModeDeliversByItsFlags()
    {
        QFETCH(bool, line);
        QFETCH(bool, all);
        QFETCH(int, spots);
        QFETCH(int, lines);
        QFETCH(int, series);
        SpectroBuddyFixture f;
        TAVICOMBOCOLOUR_CC chart(TAVICOMBOCOLOUR_CC::newMeasuredPatch(1, 2, 3));
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        f.choose("Scripted");
        f.buddy->setComboChart(chart.head(), 2, 0, 0);
        f.plugin->on_chart = [](const ScriptedPlugin::Read &read, TAVICOMBOCOLOUR *, unsigned long, unsigned long) {
            for (int i = 0; i < 4; ++i)
                read.sendLab(i, 0, 0);
            read.sendLab(-1, 0, 0);
            read.say(0, nullptr, "Reset done");
            return 0;
        };
        f.press();
        f.buddy->setBufferLineMeasurements(line);
        f.buddy->setBufferAllMeasurements(all);
        QTRY_COMPARE(f.messageLine()->text(), QString("Reset done"));
        QCOMPARE(f.spots->count(), spots);
        QCOMPARE(int(f.lines.size()), lines);
        QCOMPARE(int(f.series.size()), series);
    }

    void spotModeKnowsNoLines()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.buddy->setBufferLineMeasurements(true);
        f.plugin->on_spot_lab = [](const ScriptedPlugin::Read &read) {
            read.sendLab(1, 0, 0);
            return 0;
        };
        f.press();
        QTRY_COMPARE(f.spots->count(), 1);
    }

    void listsWithoutAReceiverAreFreed()
    {
        SpectroBuddy buddy(nullptr, false); // the leak checker sees what is not freed
        buddy.bufferAllLab(1, 0, 0);
        buddy.fireAllLab();
        for (int i = 0; i < 16; ++i)
            buddy.bufferLineLab(i, 0, 0);
        buddy.bufferAllLab(2, 0, 0); // stays gathered until the end
    }

    void listsBehindBlockedSignalsAreFreed()
    {
        SpectroBuddyFixture f;
        f.buddy->blockSignals(true);
        f.buddy->bufferAllLab(1, 0, 0);
        f.buddy->fireAllLab();
        QVERIFY(f.series.empty());
    }

    void turningOffFlushesOnlyWhatIsGatheredToTheEnd()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.press();
        f.buddy->setBufferAllMeasurements(false);
        f.buddy->bufferAllLab(1, 0, 0);
        f.press();
        QVERIFY(f.series.empty());
    }

    void aHundredThousandColoursAreGatheredInOrder()
    {
        SpectroBuddyFixture f;
        constexpr int count = 100000;
        for (int i = 0; i < count; ++i)
            f.buddy->bufferAllLab(i % 101, i, 0);
        f.buddy->bufferAllLab(-1, 0, 0);
        QCOMPARE(f.series.at(0).count(), size_t(count));
        int i = 0;
        for (const TAVICOMBOCOLOUR *patch = f.series[0].head(); patch; patch = NextInList(patch))
            QCOMPARE(patch->a, double(i++));
    }

    void aSlotMayDestroyTheBuddy_data()
    {
        QTest::addColumn<bool>("file_source");
        QTest::newRow("spotLab") << false;
        QTest::newRow("allLab") << true;
    }

    void aSlotMayDestroyTheBuddy()
    {
        QFETCH(bool, file_source);
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.plugin->on_spot_lab = [](const ScriptedPlugin::Read &read) {
            for (int i = 0; i < 5; ++i)
                read.sendLab(i, 0, 0);
            read.sendLab(-1, 0, 0);
            read.sendLab(7, 0, 0);
            return 0;
        };
        int calls = 0;
        const auto destroy = [&] {
            ++calls;
            f.spots.reset();
            f.status.reset();
            f.buddy.reset();
        };
        connect(f.buddy.get(), &SpectroBuddy::spotLab, this, destroy);
        connect(f.buddy.get(), &SpectroBuddy::allLab, this, destroy);
        f.press();
        f.buddy->setBufferAllMeasurements(file_source);
        QTRY_VERIFY(!f.buddy);
        QCoreApplication::processEvents();
        QCOMPARE(calls, 1);
        QCOMPARE(f.plugin->closes.load(), 1);
    }

    void aSlotOfTheFlushMayDestroyTheBuddy()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.press();
        f.buddy->bufferAllLab(1, 0, 0);
        f.buddy->setBufferAllMeasurements(true);
        connect(f.buddy.get(), &SpectroBuddy::allLab, this, [&] { f.buddy.reset(); });
        SpectroBuddy *raw = f.buddy.get();
        QCOMPARE(raw->disable(), 0);
        QVERIFY(!f.buddy);
    }

    void aSlotMayTurnTheInstrumentOffInTheMiddle()
    {
        SpectroBuddyFixture f;
        f.choose("Scripted");
        f.plugin->on_spot_lab = [](const ScriptedPlugin::Read &read) {
            for (int i = 0; i < 100; ++i)
                read.sendLab(i, 0, 0);
            return 0;
        };
        connect(f.buddy.get(), &SpectroBuddy::spotLab, this, [&](double L) {
            if (L == 3.0)
                f.buddy->disable();
        });
        f.press();
        QTRY_COMPARE(f.status->count(), 2);
        QCoreApplication::processEvents();
        QCOMPARE(f.spots->count(), 4);
    }
};

TAVI_GUI_TEST_MAIN(TestSpectroBuddyDelivery)
#include "tst_spectrobuddy_delivery.moc"
