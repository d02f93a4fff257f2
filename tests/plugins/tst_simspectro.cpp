// SPDX-License-Identifier: MIT
#include "taviapp/densitylut_cc.h"
#include "taviapp/tavicombocolour_cc.h"
#include "tavilib/tavidll.h"
#include "tavilib/tavipacket.h"
#include "tavilib/tavistring.h"
#include "tests/plugins/simspectroplugin.h"
#include "tests/support/tavitest.h"

#include <QElapsedTimer>
#include <QProcess>

#include <array>
#include <atomic>
#include <cmath>
#include <memory>
#include <thread>

namespace {

constexpr const char *wedge = "/usr/share/color/argyll/ref/FograStrip3.ti1";

TAVICOMBOCOLOUR *newPatch(const char *name, uint32_t model = COMBOCOLOUR_DEVICE_NONE,
                          const std::vector<double> &device = {})
{
    auto *patch = static_cast<TAVICOMBOCOLOUR *>(std::calloc(1, sizeof(TAVICOMBOCOLOUR)));
    patch->name = AllocateAndCopyStringConst(name);
    patch->device_model = model;
    patch->device_count = static_cast<uint32_t>(device.size());
    for (size_t i = 0; i < device.size(); ++i)
        (i < 4 ? patch->device[i] : patch->device_extra[i - 4]) = static_cast<float>(device[i]);
    return patch;
}

/// The media wedge as a chart: 72 patches of CMYK values.
TAVICOMBOCOLOUR_CC wedgeChart()
{
    TAVICOMBOCOLOUR_CC chart;
    for (const std::vector<double> &row : rowsOf(wedge))
        chart.insertCombo(newPatch(nullptr, COMBOCOLOUR_DEVICE_CMYK, {row[1], row[2], row[3], row[4]}));
    return chart;
}

/// The characterisation set as spot readings with noise.
std::vector<RecordedLab> noisyReadings(const SimspectroPlugin &plugin, const QByteArray &seed)
{
    SimspectroEnvironment environment(characterisation);
    environment.set("SIMSPECTRO_NOISE", "0.5");
    if (!seed.isNull())
        environment.set("SIMSPECTRO_SEED", seed);
    SimspectroDevice device(plugin);
    device.abortAfter(1617);
    device.readSpotLab();
    return device.recorder.colours();
}

/// A read on a thread of its own, as the driver runs it; joined at the end.
class ReadThread
{
public:
    template <typename Read>
    explicit ReadThread(Read read)
        : thread_([this, read] {
              result_ = read();
              ended_ = true;
          })
    {}
    ~ReadThread() { join(); }
    bool ended() const { return ended_; }
    int join()
    {
        if (thread_.joinable())
            thread_.join();
        return result_;
    }

private:
    std::atomic<int> result_ = 0;
    std::atomic<bool> ended_ = false;
    std::thread thread_;
};

} // namespace

class TestSimspectro : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theRecordOutlivesThePlugin()
    {
        SPECTROPHOTOMETERINFO *info = nullptr;
        {
            const SimspectroEnvironment environment("");
            const SimspectroPlugin plugin;
            info = plugin.getInfo();
            QVERIFY(info);
        }
        QCOMPARE(info->name, "Simulated spectrophotometer");
        QCOMPARE(info->rev, "1.00");
        QVERIFY(!info->dll_filename);
        QCOMPARE(info->flags, 0x0633U);
        TaviPacketFreeItem(info, TAVIPACKET_SPECTROPHOTOMETERINFO);
    }

    void theVariableMakesItAPrinter_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<bool>("printer");
        QTest::newRow("1") << QByteArray("1") << true;
        QTest::newRow("0") << QByteArray("0") << false;
        QTest::newRow("empty") << QByteArray("") << false;
        QTest::newRow("yes") << QByteArray("yes") << false;
    }
    void theVariableMakesItAPrinter()
    {
        QFETCH(QByteArray, value);
        QFETCH(bool, printer);
        SimspectroEnvironment environment("");
        environment.set("SIMSPECTRO_PRINTER", value);
        const SimspectroPlugin plugin;
        SPECTROPHOTOMETERINFO *info = plugin.getInfo();
        QCOMPARE(info->flags, printer ? 0x1633U : 0x0633U);
        TaviPacketFreeItem(info, TAVIPACKET_SPECTROPHOTOMETERINFO);
    }

    /// Ten entry points, and of the other choice for a linearisation chart nothing.
    void exportsWhatTheFlagsPromiseAndNoMore()
    {
        QProcess tool;
        tool.start("nm", {"-D", "--defined-only", SimspectroPlugin::path()});
        QVERIFY(tool.waitForFinished());
        QStringList exported;
        for (const QByteArray &line : tool.readAllStandardOutput().split('\n')) {
            const QByteArray name = line.split(' ').last();
            if (line.contains(" T ") && !name.startsWith("__") && name != "_init" && name != "_fini")
                exported.append(QString(name).remove("Spectrophotometer"));
        }
        exported.sort();
        QCOMPARE(exported, QStringList({"Close", "GetComboColourChart", "GetInfo", "GetLinChart", "Open",
                                        "PrintNReadComboColourChart", "ReadComboColourChart", "ReadLinearisation",
                                        "ReadSpotDensities", "ReadSpotLab"}));
    }

    void linksToNoneOfTheLibrarysObjects()
    {
        QProcess tool;
        tool.start("readelf", {"-d", SimspectroPlugin::path()});
        QVERIFY(tool.waitForFinished());
        int needed = 0;
        for (const QByteArray &line : tool.readAllStandardOutput().split('\n')) {
            if (!line.contains("(NEEDED)"))
                continue;
            ++needed;
            QVERIFY2(!line.toLower().contains("tavi") && !line.contains("Qt"), line.constData());
        }
        QVERIFY(needed > 0);
    }

    void theWedgeIsFoundByDeviceValues()
    {
        std::map<std::array<double, 4>, RecordedLab> reference;
        for (const std::vector<double> &row : rowsOf(characterisation))
            reference.insert({{row[1], row[2], row[3], row[4]}, {row[8], row[9], row[10]}});
        std::vector<RecordedLab> expected;
        for (const std::vector<double> &row : rowsOf(wedge)) {
            const auto found = reference.find({row[1], row[2], row[3], row[4]});
            QVERIFY(found != reference.end());
            expected.push_back(found->second);
        }
        QCOMPARE(expected.size(), size_t(72));
        expected.push_back({-1.0, 0.0, 0.0});

        const SimspectroEnvironment environment(characterisation);
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        const TAVICOMBOCOLOUR_CC chart = wedgeChart();
        QCOMPARE(device.readChart(chart.head()), 0);
        QCOMPARE(device.recorder.colours(), expected);
        QCOMPARE(device.recorder.texts("fault"), QStringList());
        // A second read does the same.
        QCOMPARE(device.readChart(chart.head()), 0);
        QCOMPARE(device.recorder.count(), 146);
    }

    void aChartIsReadPatchByPatchWithItsTexts()
    {
        const SimspectroFile file(
            cgatsTable("SAMPLE_ID GRAY LAB_L LAB_A LAB_B", "1 0 10 0 0\n2 50 20 0 0\n3 100 30 0 0\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        TAVICOMBOCOLOUR_CC chart;
        for (const double gray : {100.0, 0.0, 50.0})
            chart.insertCombo(newPatch("x", COMBOCOLOUR_DEVICE_GRAY, {gray}));
        QCOMPARE(device.readChart(chart.head(), 2), 0);
        QCOMPARE(device.recorder.events(),
                 QStringList({"status: Insert chart and press button to begin measuring", "status: Measure A1", "lab",
                              "status: Measure A2", "lab", "status: Measure B1", "lab",
                              "status: Measurement complete", "end"}));
        const std::vector<RecordedLab> expected = {{30, 0, 0}, {10, 0, 0}, {20, 0, 0}, {-1, 0, 0}};
        QCOMPARE(device.recorder.colours(), expected);
        for (const QString &place : device.recorder.places())
            QCOMPARE(place, QString("simspectro/SpectrophotometerReadComboColourChart"));
    }

    void aLineLengthOfZeroIsOneLine()
    {
        const SimspectroFile file(cgatsTable("GRAY LAB_L LAB_A LAB_B", "0 10 0 0\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        TAVICOMBOCOLOUR_CC chart;
        for (int i = 0; i < 20; ++i)
            chart.insertCombo(newPatch("x", COMBOCOLOUR_DEVICE_GRAY, {0.0}));
        QCOMPARE(device.readChart(chart.head(), 0), 0);
        QCOMPARE(device.recorder.texts("status").at(20), QString("Measure A20"));
    }

    void patchesAreLookedUpInTheirColourSpace_data()
    {
        QTest::addColumn<QByteArray>("fields");
        QTest::addColumn<QByteArray>("row");
        QTest::addColumn<uint>("model");
        QTest::addColumn<QVector<double>>("device");
        const auto row = [](const char *name, const char *fields, const char *cells, uint model,
                            const QVector<double> &device) {
            QTest::newRow(name) << QByteArray(fields) << QByteArray(cells) << model << device;
        };
        row("gray", "GRAY_K", "7", COMBOCOLOUR_DEVICE_GRAY, {7});
        row("RGB", "RGB_R RGB_G RGB_B", "255 1 2", COMBOCOLOUR_DEVICE_RGB, {255, 1, 2});
        row("RGB in other order", "RGB_B RGB_G RGB_R", "2 1 255", COMBOCOLOUR_DEVICE_RGB, {255, 1, 2});
        row("CMY", "CMY_C CMY_M CMY_Y", "1 2 3", COMBOCOLOUR_DEVICE_CMY, {1, 2, 3});
        row("black first", "CMYK_K CMYK_C CMYK_M CMYK_Y", "4 1 2 3", COMBOCOLOUR_DEVICE_CMYK, {1, 2, 3, 4});
        row("six inks", "6CLR_1 6CLR_2 6CLR_3 6CLR_4 6CLR_5 6CLR_6", "1 2 3 4 5 6", COMBOCOLOUR_DEVICE_NCLR,
            {1, 2, 3, 4, 5, 6});
    }
    void patchesAreLookedUpInTheirColourSpace()
    {
        QFETCH(QByteArray, fields);
        QFETCH(QByteArray, row);
        QFETCH(uint, model);
        QFETCH(QVector<double>, device);
        const SimspectroFile file(cgatsTable(fields + " LAB_L LAB_A LAB_B", row + " 11 12 13\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice simulator(plugin);
        const std::vector<double> values(device.begin(), device.end());
        TAVICOMBOCOLOUR_CC chart(newPatch(nullptr, model, values));
        QCOMPARE(simulator.readChart(chart.head()), 0);
        QCOMPARE(simulator.recorder.colours().front(), (RecordedLab{11, 12, 13}));

        // The same figures in another space are another patch.
        chart.head()->device_model =
            model == COMBOCOLOUR_DEVICE_RGB ? COMBOCOLOUR_DEVICE_CMY : COMBOCOLOUR_DEVICE_RGB;
        QCOMPARE(simulator.readChart(chart.head()), -1);
    }

    void theNearestPatchWithinTheToleranceIsTaken()
    {
        const SimspectroFile file(
            cgatsTable("GRAY LAB_L LAB_A LAB_B", "10.00 1 0 0\n10.04 2 0 0\n10.04 3 0 0\n20.00 4 0 0\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        TAVICOMBOCOLOUR_CC chart;
        for (const double gray : {10.0, 10.01, 10.03, 10.04, 10.08, 19.96, 20.04})
            chart.insertCombo(newPatch(nullptr, COMBOCOLOUR_DEVICE_GRAY, {gray}));
        QCOMPARE(device.readChart(chart.head()), 0);
        const std::vector<RecordedLab> expected = {{1, 0, 0}, {1, 0, 0}, {2, 0, 0}, {2, 0, 0},
                                                   {2, 0, 0}, {4, 0, 0}, {4, 0, 0}, {-1, 0, 0}};
        QCOMPARE(device.recorder.colours(), expected);

        const TAVICOMBOCOLOUR_CC too_far(newPatch("far", COMBOCOLOUR_DEVICE_GRAY, {20.06}));
        QCOMPARE(device.readChart(too_far.head()), -1);
    }

    void patchesWithoutDeviceValuesAreFoundByName()
    {
        const SimspectroFile file(cgatsTable("SAMPLE_ID SAMPLE_NAME SAMPLE_LOC LAB_L LAB_A LAB_B",
                                             "1 \"7\" A1 10 0 0\n2 \"light blue\" A2 20 0 0\n7 x A3 30 0 0\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        TAVICOMBOCOLOUR_CC chart;
        for (const char *name : {"light blue", "7", "2", "A3"})
            chart.insertCombo(newPatch(name));
        QCOMPARE(device.readChart(chart.head()), 0);
        const std::vector<RecordedLab> expected = {{20, 0, 0}, {10, 0, 0}, {20, 0, 0}, {30, 0, 0}, {-1, 0, 0}};
        QCOMPARE(device.recorder.colours(), expected);
    }

    void aPatchTheFileLacksFailsTheChartBeforeAnyIsMeasured_data()
    {
        QTest::addColumn<bool>("with_device");
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QString>("fault");
        QTest::newRow("device values")
            << true << QByteArray("1")
            << "Error no measurement for the patch '1' of device values 12.5 while measuring "
               "chart";
        QTest::newRow("name") << false << QByteArray("B 2")
                              << "Error no measurement for the patch 'B 2' while measuring chart";
        QTest::newRow("nothing") << false << QByteArray()
                                 << "Error no measurement for the patch without a name while measuring chart";
    }
    void aPatchTheFileLacksFailsTheChartBeforeAnyIsMeasured()
    {
        QFETCH(bool, with_device);
        QFETCH(QByteArray, name);
        QFETCH(QString, fault);
        const SimspectroFile file(cgatsTable("SAMPLE_ID GRAY LAB_L LAB_A LAB_B", "1 10 10 0 0\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        TAVICOMBOCOLOUR_CC chart;
        chart.insertCombo(newPatch("1"));
        const std::vector<double> values = with_device ? std::vector<double>{12.5} : std::vector<double>{};
        chart.insertCombo(newPatch(name.isNull() ? nullptr : name.constData(),
                                   with_device ? COMBOCOLOUR_DEVICE_GRAY : COMBOCOLOUR_DEVICE_NONE, values));
        QCOMPARE(device.readChart(chart.head()), -1);
        QCOMPARE(device.recorder.events(),
                 QStringList({"fault: " + fault, "status: Measurement of chart failed", "end"}));
    }

    void anEmptyChartIsAFault()
    {
        const SimspectroEnvironment environment(characterisation);
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        QCOMPARE(device.readChart(nullptr), -1);
        QCOMPARE(device.recorder.events(),
                 QStringList({"fault: No patches given to measure", "status: Measurement of chart failed", "end"}));
    }

    void printAndReadSaysSoAndReads()
    {
        const SimspectroEnvironment environment(characterisation);
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        const TAVICOMBOCOLOUR_CC chart = wedgeChart();
        QCOMPARE(device.printNRead(chart.head()), 0);
        QCOMPARE(device.recorder.texts("status").first(),
                 QString("Please wait for results while the colour chart is being printed and read."));
        QCOMPARE(device.recorder.count(), 73);
        QCOMPARE(device.printNRead(nullptr), -1);
    }

    void spotColoursComeInTheOrderOfTheFileAndThenItWaits()
    {
        const SimspectroFile file(cgatsTable("LAB_L LAB_A LAB_B", "10 1 2\n20 3 4\n30 5 6\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        ReadThread thread([&device] { return device.readSpotLab(); });
        QTRY_COMPARE(device.recorder.events(), QStringList({"lab", "lab", "lab", "status: Measurement complete"}));
        QTest::qWait(50); // that it goes on waiting is what is tested
        QVERIFY(!thread.ended());
        device.abort();
        QCOMPARE(thread.join(), 0);
        QCOMPARE(device.recorder.events().mid(4), QStringList("status: Reading cancelled by user"));
        const std::vector<RecordedLab> expected = {{10, 1, 2}, {20, 3, 4}, {30, 5, 6}};
        QCOMPARE(device.recorder.colours(), expected);
    }

    void anAbortEndsAnyReadWithinAPatch_data()
    {
        QTest::addColumn<int>("read");
        QTest::newRow("spot colours") << 0;
        QTest::newRow("spot densities") << 1;
        QTest::newRow("chart") << 2;
        QTest::newRow("print and read") << 3;
        QTest::newRow("linearisation") << 4;
    }
    void anAbortEndsAnyReadWithinAPatch()
    {
        QFETCH(int, read);
        SimspectroEnvironment environment(characterisation);
        // A spot read is silent until its first value, so that has to come.
        const bool spot = read < 2;
        environment.set("SIMSPECTRO_DELAY_MS", spot ? "1500" : "60000");
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        const TAVICOMBOCOLOUR_CC chart = wedgeChart();
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        SPECTROSEPTYPE separation = SPECTROSEP_CYAN;
        ReadThread thread([&] {
            switch (read) {
            case 0:
                return device.readSpotLab();
            case 1:
                return device.readSpotDensities(&separation);
            case 2:
                return device.readChart(chart.head());
            case 3:
                return device.printNRead(chart.head());
            default:
                return device.readLinearisation(21, lut.lut());
            }
        });
        if (spot)
            QTRY_COMPARE(device.recorder.count(), 1);
        else
            QTRY_VERIFY(device.recorder.events().contains("status: Measure A1"));
        QElapsedTimer timer;
        timer.start();
        device.abort();
        QCOMPARE(thread.join(), 0);
        // The read looks every 5 ms; the rest is for a busy machine.
        QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(device.recorder.count(), spot ? 1 : 0);
        QCOMPARE(device.recorder.events().last(), QString("status: Reading cancelled by user"));
    }

    void nothingComesAfterAnAbort()
    {
        const SimspectroEnvironment environment(characterisation);
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        const TAVICOMBOCOLOUR_CC chart = wedgeChart();
        device.abortAfter(10);
        QCOMPARE(device.readChart(chart.head()), 0);
        QCOMPARE(device.recorder.count(), 10);
        QVERIFY(!device.recorder.events().contains("end"));
        QCOMPARE(device.recorder.events().last(), QString("status: Reading cancelled by user"));
    }

    void eachPatchTakesItsTime()
    {
        const SimspectroFile file(cgatsTable("GRAY LAB_L LAB_A LAB_B", "0 10 0 0\n"));
        SimspectroEnvironment environment(file.path());
        environment.set("SIMSPECTRO_DELAY_MS", "20");
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        TAVICOMBOCOLOUR_CC chart;
        for (int i = 0; i < 5; ++i)
            chart.insertCombo(newPatch("x", COMBOCOLOUR_DEVICE_GRAY, {0.0}));
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(device.readChart(chart.head()), 0);
        QVERIFY2(timer.elapsed() >= 100, qPrintable(QString::number(timer.elapsed())));
    }

    void noiseIsNormalAndOfTheGivenDeviation()
    {
        const SimspectroPlugin plugin;
        const std::vector<RecordedLab> noisy = noisyReadings(plugin, {});
        const std::vector<std::vector<double>> rows = rowsOf(characterisation);
        QCOMPARE(noisy.size(), rows.size());
        for (int channel = 0; channel < 3; ++channel) {
            double sum = 0.0;
            double squares = 0.0;
            int within = 0;
            for (size_t i = 0; i < rows.size(); ++i) {
                const double measured[] = {noisy[i].L, noisy[i].a, noisy[i].b};
                const double error = measured[channel] - rows[i][8 + static_cast<size_t>(channel)];
                sum += error;
                squares += error * error;
                within += std::abs(error) < 0.5;
            }
            const auto count = static_cast<double>(rows.size());
            // Four standard errors: of the mean 0.5 / sqrt(n), of the deviation 0.5 / sqrt(2 n), of the share
            // sqrt(0.683 * 0.317 / n).
            QVERIFY2(std::abs(sum / count) < 0.05, qPrintable(QString::number(sum / count)));
            const double deviation = std::sqrt(squares / count);
            QVERIFY2(std::abs(deviation - 0.5) < 0.036, qPrintable(QString::number(deviation)));
            const double share = within / count;
            QVERIFY2(std::abs(share - 0.6827) < 0.047, qPrintable(QString::number(share)));
        }
    }

    void theSeedDecidesTheNoise()
    {
        const SimspectroPlugin plugin;
        const std::vector<RecordedLab> first = noisyReadings(plugin, "7");
        QCOMPARE(noisyReadings(plugin, "7"), first);
        QVERIFY(noisyReadings(plugin, "8") != first);
        QCOMPARE(noisyReadings(plugin, {}), noisyReadings(plugin, "1"));
    }

    void noiseNeverMakesAnEndMarker()
    {
        QByteArray rows;
        for (int i = 0; i < 500; ++i)
            rows += "0 0 0\n";
        const SimspectroFile file(cgatsTable("LAB_L LAB_A LAB_B", rows));
        SimspectroEnvironment environment(file.path());
        environment.set("SIMSPECTRO_NOISE", "5");
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        device.abortAfter(500);
        device.readSpotLab();
        QCOMPARE(device.recorder.count(), 500);
        QVERIFY(!device.recorder.events().contains("end"));
    }

    /// A published set has both, each rounded to two decimals, which in the shadows is worth half a unit of Lab.
    void xyzBecomesLab()
    {
        const std::vector<std::vector<double>> rows = rowsOf(characterisation);
        QByteArray cells;
        for (const std::vector<double> &row : rows) {
            for (size_t column = 5; column < 8; ++column)
                cells += QByteArray::number(row[column]) + (column < 7 ? ' ' : '\n');
        }
        const SimspectroFile file(cgatsTable("XYZ_X XYZ_Y XYZ_Z", cells));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        device.abortAfter(static_cast<int>(rows.size()));
        device.readSpotLab();
        const std::vector<RecordedLab> colours = device.recorder.colours();
        QCOMPARE(colours.size(), rows.size());
        for (size_t i = 0; i < rows.size(); ++i) {
            const double limit = rows[i][6] > 10.0 ? 0.1 : 0.6;
            const double errors[] = {colours[i].L - rows[i][8], colours[i].a - rows[i][9],
                                     colours[i].b - rows[i][10]};
            for (const double error : errors)
                QVERIFY2(std::abs(error) < limit, qPrintable(QString("row %1: %2").arg(i).arg(error)));
        }
    }

    void colourChartsHaveTheWantedLineOrSixteen()
    {
        const SimspectroPlugin plugin;
        const TAVICOMBOCOLOUR_CC chart = wedgeChart();
        QCOMPARE(plugin.getChart(chart.head(), 0), 16);
        QCOMPARE(plugin.getChart(chart.head(), 24), 24);
        QCOMPARE(plugin.getChart(chart.head(), 500), 72);
        QCOMPARE(plugin.getChart(nullptr, 8), 0);
    }
};

TAVI_TEST_MAIN(TestSimspectro)
#include "tst_simspectro.moc"
