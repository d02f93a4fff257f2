// SPDX-License-Identifier: MIT
#include "tests/plugins/misbehavingfixture.h"

namespace {

constexpr uint32_t all_bits = 0xffffffff;

} // namespace

/// Plug-ins that cannot do what they say, or say what they cannot do, and devices that do not open.
class TestMisbehavingCapabilities : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aPluginThatLacksAnEntryStaysOff_data()
    {
        QTest::addColumn<QString>("entry");
        QTest::addColumn<uint>("flags");
        QTest::addColumn<int>("mode");
        const auto rows = [](const char *entry, uint flags) {
            for (const auto mode : {SpectroBuddy::SPOT_MODE, SpectroBuddy::CHART_MODE})
                QTest::addRow("%s, %x, mode %d", entry, flags, mode) << QString(entry) << flags << int(mode);
        };
        for (const char *entry : {"Open", "Close", "ReadLinearisation"}) {
            rows(entry, 0x0621); // always needed, though a spectrophotometer has no linearisation
            rows(entry, all_bits);
        }
        for (const char *entry : {"ReadSpotDensities", "ReadSpotLab", "ReadComboColourChart", "GetComboColourChart",
                                  "GetLinChart", "PrintNReadComboColourChart"})
            rows(entry, 0x1733);
        rows("PrintNReadComboColourChart", all_bits);
        rows("GetLinChartNames", 0x1333);
    }

    void aPluginThatLacksAnEntryStaysOff()
    {
        QFETCH(QString, entry);
        QFETCH(uint, flags);
        QFETCH(int, mode);
        MisbehavingFixture f;
        f.addBad("scripted_without_" + entry)->flags = flags;
        f.buddy->setMode(static_cast<SpectroBuddy::INSTRUMENT_MODE>(mode));
        // One line for each try to load it: choosing is one, turning it on another.
        const QString line =
            "orloinstrument: OrloInstrument::init: Cannot get dll address for Spectrophotometer" + entry;
        allowLog(line);
        f.chooseBad();
        const int lines = recorder().count(line);
        QVERIFY(lines > 0);
        QVERIFY(f.looksOff());
        f.press();
        QVERIFY(recorder().count(line) > lines);
        QVERIFY(f.looksOff());
        QCOMPARE(f.combo()->currentText(), QString("Bad"));
        QVERIFY(f.buddy->dllFilename().empty());
        QVERIFY(!f.buddy->isPrinter());
        QCOMPARE(f.status->count(), 0);
        QCOMPARE(f.bad->opens.load(), 0);
        QCOMPARE(f.bad->reads.load(), 0);
        QVERIFY(f.allIsAsBefore());
    }

    void flagsDecideWhatIsOffered_data()
    {
        QTest::addColumn<uint>("flags");
        QTest::addColumn<bool>("in_spot_mode");
        QTest::addColumn<bool>("in_chart_mode");
        QTest::newRow("none") << 0U << false << false;
        QTest::newRow("all") << all_bits << true << true;
        QTest::newRow("a kind that reads nothing") << 0x0001U << false << false;
        QTest::newRow("reads of no kind") << 0x0220U << false << false;
        QTest::newRow("unknown bits alone") << 0xffffc884U << false << false;
        QTest::newRow("unknown bits beside") << (0xffffc884U | 0x0621U) << true << true;
        QTest::newRow("a chart reader that hides it") << 0x0421U << true << false;
        QTest::newRow("a spot reader that hides it") << 0x0601U << false << true;
        QTest::newRow("a densitometer that claims Lab") << 0x0622U << true << true;
        QTest::newRow("a monitor calibrator that claims Lab") << 0x0661U << true << true;
        QTest::newRow("a monitor calibrator") << 0x0660U << false << false;
    }

    void flagsDecideWhatIsOffered()
    {
        QFETCH(uint, flags);
        QFETCH(bool, in_spot_mode);
        QFETCH(bool, in_chart_mode);
        MisbehavingFixture f;
        f.addBad()->flags = flags;
        f.findInstrumentsAnew();
        QCOMPARE(f.listedInstruments().contains("Bad"), in_spot_mode);
        f.buddy->setMode(SpectroBuddy::CHART_MODE);
        QCOMPARE(f.listedInstruments().contains("Bad"), in_chart_mode);
        QVERIFY(f.looksOff());
        QVERIFY(f.allIsAsBefore());
    }

    /// How a reading of two colours and an end marker comes, when the flags say something else of it.
    void flagsDecideHowColoursCome_data()
    {
        QTest::addColumn<uint>("flags");
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("spots");
        QTest::addColumn<int>("series");
        QTest::addColumn<int>("reads");
        const int spot = SpectroBuddy::SPOT_MODE;
        const int chart = SpectroBuddy::CHART_MODE;
        QTest::newRow("a file source that hides it") << 0x0621U << spot << 3 << 0 << 1;
        QTest::newRow("no file source that says so") << 0x2621U << spot << 0 << 1 << 1;
        QTest::newRow("no strip reader that says so") << 0x0629U << spot << 3 << 0 << 1;
        QTest::newRow("a chart from a file source that hides it") << 0x0621U << chart << 3 << 0 << 1;
        QTest::newRow("a chart from no file source that says so") << 0x2621U << chart << 0 << 1 << 1;
        QTest::newRow("everything") << all_bits << spot << 0 << 1 << 1;
        // A printer waits for its print data, which nobody gives here.
        QTest::newRow("a chart from everything") << all_bits << chart << 0 << 0 << 0;
        QTest::newRow("no printer that says so") << 0x1621U << chart << 0 << 0 << 0;
    }

    void flagsDecideHowColoursCome()
    {
        QFETCH(uint, flags);
        QFETCH(int, mode);
        QFETCH(int, spots);
        QFETCH(int, series);
        QFETCH(int, reads);
        MisbehavingFixture f;
        f.addBad()->flags = flags;
        const auto measure = [](const ScriptedPlugin::Read &read) {
            read.sendLab(70, 0, 0);
            read.sendLab(80, 0, 0);
            read.sendLab(-1, 0, 0);
            read.say(0, nullptr, "Measurement complete");
            return 0;
        };
        f.bad->on_spot_lab = measure;
        f.bad->on_chart = [measure](const ScriptedPlugin::Read &read, TAVICOMBOCOLOUR *, unsigned long,
                                    unsigned long) {
            return measure(read);
        };
        f.buddy->fireAllLab(); // or what was gathered before would be part of the series
        QCOMPARE(f.series.size(), size_t(1));
        f.buddy->setMode(static_cast<SpectroBuddy::INSTRUMENT_MODE>(mode));
        TAVICOMBOCOLOUR_CC chart(TAVICOMBOCOLOUR_CC::newMeasuredPatch(1, 2, 3));
        f.buddy->setComboChart(chart.head(), 1, 0, 0);
        f.chooseBad();
        f.press();
        QVERIFY(f.looksOn());
        QTRY_COMPARE(f.messageLine()->text(), QString(reads ? "Measurement complete" : ""));
        QCOMPARE(f.bad->reads.load(), reads);
        QCOMPARE(f.lightnessOfNewSpots().size(), size_t(spots));
        QCOMPARE(f.series.size(), size_t(1 + series));
        if (series)
            QCOMPARE(f.names(f.series[1]), (QStringList{"70.00, 0.00, 0.00", "80.00, 0.00, 0.00"}));
        f.press();
        QVERIFY(f.looksOff());
        QCOMPARE(f.names(f.series[0]), (QStringList{"30.00, 3.00, 3.00", "40.00, 4.00, 4.00"}));
        QVERIFY(f.goodInstrumentMeasures());
    }

    void aDeviceThatDoesNotOpenStaysOff_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<int>("kind"); // of what it says; -1: nothing
        QTest::addColumn<QString>("line");
        const QString fault = "orloinstrument: OrloInstrument: SpectrophotometerOpen Cannot open file %s%n%x";
        for (const auto mode : {SpectroBuddy::SPOT_MODE, SpectroBuddy::CHART_MODE}) {
            QTest::addRow("silent, mode %d", mode) << int(mode) << -1 << QString();
            QTest::addRow("status, mode %d", mode) << int(mode) << 0 << QString();
            QTest::addRow("fault, mode %d", mode) << int(mode) << 1 << fault;
        }
    }

    void aDeviceThatDoesNotOpenStaysOff()
    {
        QFETCH(int, mode);
        QFETCH(int, kind);
        QFETCH(QString, line);
        MisbehavingFixture f;
        f.addBad();
        f.bad->on_open = [&](InstrumentMessageCallback message, void *context) -> void * {
            if (kind >= 0)
                message(context, kind, "bad", "SpectrophotometerOpen", "Cannot open file %s", "%s%n%x");
            return nullptr;
        };
        f.buddy->setMode(static_cast<SpectroBuddy::INSTRUMENT_MODE>(mode));
        f.chooseBad();
        constexpr int tries = 3;
        expectLog("orloinstrument: OrloInstrument::init: Spectrophotometer failed to initialise", tries);
        if (!line.isEmpty())
            expectLog(line, tries);
        for (int i = 0; i < tries; ++i) {
            f.press();
            QVERIFY(f.looksOff());
        }
        QCOMPARE(f.bad->opens.load(), tries);
        QCOMPARE(f.bad->closes.load(), 0);
        QCOMPARE(f.bad->reads.load(), 0);
        QCOMPARE(f.status->count(), 0);
        QCOMPARE(f.buddy->dllFilename(), std::string("bad.so")); // loaded as before
        f.bad->on_open = nullptr;
        f.buddy->setMode(SpectroBuddy::SPOT_MODE);
        f.press();
        QVERIFY(f.looksOn());
        f.press();
        QVERIFY(f.allIsAsBefore());
    }
};

TAVI_GUI_TEST_MAIN(TestMisbehavingCapabilities)
#include "tst_misbehaving_capabilities.moc"
