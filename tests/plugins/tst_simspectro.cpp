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

constexpr const char *characterisation = "/usr/share/color/icc/FOGRA39L.ti3";
constexpr const char *wedge = "/usr/share/color/argyll/ref/FograStrip3.ti1";

/// The numbers of the rows of a CGATS file's first table, for files with nothing but numbers in them.
std::vector<std::vector<double>> rowsOf(const char *path)
{
    std::vector<std::vector<double>> rows;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return rows;
    bool inside = false;
    for (const QByteArray &line : file.readAll().split('\n')) {
        const QList<QByteArray> cells = line.simplified().split(' ');
        if (cells.first() == "END_DATA")
            break;
        if (inside) {
            rows.emplace_back();
            for (const QByteArray &cell : cells)
                rows.back().push_back(cell.toDouble());
        }
        inside = inside || cells.first() == "BEGIN_DATA";
    }
    return rows;
}

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

QByteArray table(const QByteArray &fields, const QByteArray &rows)
{
    return "CTI3\nBEGIN_DATA_FORMAT\n" + fields + "\nEND_DATA_FORMAT\nBEGIN_DATA\n" + rows + "END_DATA\n";
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
            table("SAMPLE_ID GRAY LAB_L LAB_A LAB_B", "1 0 10 0 0\n2 50 20 0 0\n3 100 30 0 0\n"));
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
        const SimspectroFile file(table("GRAY LAB_L LAB_A LAB_B", "0 10 0 0\n"));
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
        const SimspectroFile file(table(fields + " LAB_L LAB_A LAB_B", row + " 11 12 13\n"));
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
            table("GRAY LAB_L LAB_A LAB_B", "10.00 1 0 0\n10.04 2 0 0\n10.04 3 0 0\n20.00 4 0 0\n"));
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
        const SimspectroFile file(table("SAMPLE_ID SAMPLE_NAME SAMPLE_LOC LAB_L LAB_A LAB_B",
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
        const SimspectroFile file(table("SAMPLE_ID GRAY LAB_L LAB_A LAB_B", "1 10 10 0 0\n"));
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
        const SimspectroFile file(table("LAB_L LAB_A LAB_B", "10 1 2\n20 3 4\n30 5 6\n"));
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
        environment.set("SIMSPECTRO_DELAY_MS", "60000");
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
        if (read >= 2)
            QTRY_VERIFY(device.recorder.events().contains("status: Measure A1"));
        QElapsedTimer timer;
        timer.start();
        device.abort();
        QCOMPARE(thread.join(), 0);
        // The read looks every 5 ms; the rest is for a busy machine.
        QVERIFY2(timer.elapsed() < 500, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(device.recorder.count(), 0);
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
        const SimspectroFile file(table("GRAY LAB_L LAB_A LAB_B", "0 10 0 0\n"));
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
        const SimspectroFile file(table("LAB_L LAB_A LAB_B", rows));
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
        const SimspectroFile file(table("XYZ_X XYZ_Y XYZ_Z", cells));
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

    void densitiesAreColorimetricWithoutColumns()
    {
        const SimspectroFile file(table("XYZ_X XYZ_Y XYZ_Z", "96.42 100 82.49\n9.642 10 8.249\n9.642 1 82.49\n0 0 0\n"
                                                             "97 101 99\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        SPECTROSEPTYPE separation = SPECTROSEP_BLACK;
        device.abortAfter(5);
        QCOMPARE(device.readSpotDensities(&separation), 0);
        const double expected[][4] = {{0, 0, 0, 0}, {1, 1, 1, 1}, {2, 1, 2, 0}, {4, 4, 4, 4}, {0, 0, 0, 0}};
        const std::vector<PATCHDENSITY> densities = device.recorder.densities();
        QCOMPARE(densities.size(), size_t(5));
        for (size_t i = 0; i < 5; ++i) {
            const PATCHDENSITY &patch = densities[i];
            const double got[] = {patch.density_k, patch.density_c, patch.density_m, patch.density_y};
            for (int channel = 0; channel < 4; ++channel)
                QVERIFY2(std::abs(got[channel] - expected[i][channel]) < 1e-9,
                         qPrintable(QString::number(got[channel])));
        }
    }

    void densityColumnsArePlayedAsTheyAre()
    {
        const SimspectroFile file(table("D_RED D_GREEN D_BLUE D_VIS LAB_L LAB_A LAB_B", "1.1 1.2 1.3 1.4 50 0 0\n"));
        SimspectroEnvironment environment(file.path());
        environment.set("SIMSPECTRO_NOISE", "3");
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        SPECTROSEPTYPE separation = SPECTROSEP_YELLOW;
        device.abortAfter(1);
        device.readSpotDensities(&separation);
        const PATCHDENSITY patch = device.recorder.densities().at(0);
        QCOMPARE(patch.density_c, 1.1);
        QCOMPARE(patch.density_m, 1.2);
        QCOMPARE(patch.density_y, 1.3);
        QCOMPARE(patch.density_k, 1.4);
        QCOMPARE(patch.density, 1.3);
        QCOMPARE(patch.sep_type, SPECTROSEP_YELLOW);
        QCOMPARE(patch.sep_index, 0U);
        QCOMPARE(patch.patch_index, 0);
        QVERIFY(!patch.header.next);
    }

    void theSeparationMayChangeBetweenReadings()
    {
        QByteArray rows;
        for (int i = 0; i < 9; ++i)
            rows += "1 2 3 4 50 0 0\n";
        const SimspectroFile file(table("D_RED D_GREEN D_BLUE D_VIS LAB_L LAB_A LAB_B", rows));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        SPECTROSEPTYPE separation = SPECTROSEP_BLACK;
        device.recorder.on_reading = [&device, &separation] {
            separation = static_cast<SPECTROSEPTYPE>(device.recorder.count());
            if (device.recorder.count() == 9)
                device.abort();
        };
        device.readSpotDensities(&separation);
        const double expected[] = {4, 1, 2, 3, 2, 1, 1, 2, 4};
        const std::vector<PATCHDENSITY> densities = device.recorder.densities();
        QCOMPARE(densities.size(), size_t(9));
        for (size_t i = 0; i < 9; ++i) {
            QCOMPARE(densities[i].sep_type, static_cast<SPECTROSEPTYPE>(i));
            QCOMPARE(densities[i].density, expected[i]);
        }
    }

    void anotherDensityStandardIsDeclined()
    {
        const SimspectroFile file(table("LAB_L LAB_A LAB_B", "50 0 0\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        SPECTROSEPTYPE separation = SPECTROSEP_BLACK;
        device.abortAfter(1);
        device.readSpotDensities(&separation, DENSITYSTANDARD_STATUS_T);
        QCOMPARE(device.recorder.events().first(),
                 QString("status: Instrument does not support setting density standard. Please use instrument "
                         "default"));
        QCOMPARE(device.recorder.count(), 1);
    }

    void aLinearisationWalksTheTable()
    {
        const SimspectroEnvironment environment(characterisation);
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        DENSITYLUT_CC lut;
        for (const uint32_t band : {TAVIBANDTYPE_CYAN, TAVIBANDTYPE_MAGENTA, TAVIBANDTYPE_YELLOW, TAVIBANDTYPE_BLACK})
            lut.appendSeparation(band);
        QCOMPARE(device.readLinearisation(21, lut.lut(), 1, 5), 16 + 21 + 21);
        const std::vector<PATCHDENSITY> densities = device.recorder.densities();
        QCOMPARE(densities.size(), size_t(58));
        QCOMPARE(densities.front().sep_index, 1U);
        QCOMPARE(densities.front().patch_index, 5);
        QCOMPARE(densities.front().sep_type, SPECTROSEP_MAGENTA);
        QCOMPARE(densities[16].sep_index, 2U);
        QCOMPARE(densities[16].patch_index, 0);
        QCOMPARE(densities[16].sep_type, SPECTROSEP_YELLOW);
        QCOMPARE(densities.back().sep_index, 3U);
        QCOMPARE(densities.back().patch_index, 20);
        QCOMPARE(densities.back().sep_type, SPECTROSEP_BLACK);
        for (size_t i = 1; i < densities.size(); ++i) {
            if (densities[i].sep_index == densities[i - 1].sep_index)
                QVERIFY2(densities[i].density > densities[i - 1].density, qPrintable(QString::number(i)));
        }
        const QStringList texts = device.recorder.texts("status");
        QCOMPARE(texts.size(), 59);
        QCOMPARE(texts[0], QString("Measure B6"));
        QCOMPARE(texts[16], QString("Measure C1"));
        QCOMPARE(texts[57], QString("Measure D21"));
        QCOMPARE(texts[58], QString("Measurement complete"));
    }

    void tintsBetweenThoseOfTheFileAreInterpolated()
    {
        const SimspectroFile file(
            table("CMYK_C CMYK_M CMYK_Y CMYK_K XYZ_X XYZ_Y XYZ_Z",
                  "0 0 0 0 96.42 100 82.49\n0 0 0 100 0.9642 1 0.8249\n0 0 0 60 48.21 50 41.245\n"
                  "50 0 0 50 3 4 5\n100 0 0 0 9.642 20 41.245\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_BLACK);
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        QCOMPARE(device.readLinearisation(6, lut.lut()), 12);
        // Black at 0, 20 ... 100 percent: Y falls from 100 to 50 at 60, and to 1 at 100.
        const double luminance[] = {100, 250.0 / 3, 200.0 / 3, 50, 25.5, 1};
        const std::vector<PATCHDENSITY> densities = device.recorder.densities();
        for (size_t i = 0; i < 6; ++i)
            QVERIFY(std::abs(densities[i].density + std::log10(luminance[i] / 100.0)) < 1e-9);
        QVERIFY(std::abs(densities[11].density - 1.0) < 1e-9);
        QVERIFY(std::abs(densities[11].density_y + std::log10(0.5)) < 1e-9);
        QVERIFY(std::abs(densities[8].density + std::log10(0.64)) < 1e-9);
    }

    void aSeparationTheFileLacksFailsTheLinearisation_data()
    {
        QTest::addColumn<uint>("band");
        QTest::newRow("orange") << uint(TAVIBANDTYPE_ORANGE);
        QTest::newRow("light cyan") << uint(TAVIBANDTYPE_LIGHT_CYAN);
        QTest::newRow("no ramp") << uint(TAVIBANDTYPE_MAGENTA);
        QTest::newRow("channel missing") << uint(TAVIBANDTYPE_BLACK);
    }
    void aSeparationTheFileLacksFailsTheLinearisation()
    {
        QFETCH(uint, band);
        const SimspectroFile file(table("CMY_C CMY_M CMY_Y LAB_L LAB_A LAB_B", "0 0 0 95 0 0\n100 0 0 55 -37 -50\n"));
        const SimspectroEnvironment environment(file.path());
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        lut.appendSeparation(band);
        QCOMPARE(device.readLinearisation(2, lut.lut()), -1);
        QVERIFY(device.recorder.count() >= 2);
        QCOMPARE(device.recorder.events().last(), QString("status: Measurement of chart failed"));
        const QString fault = device.recorder.texts("fault").value(0);
        QVERIFY2(fault.contains(file.path()) && fault.contains("separation 2"), qPrintable(fault));
    }

    void aLinearisationWithNothingToDoReturnsAtOnce()
    {
        const SimspectroEnvironment environment(characterisation);
        const SimspectroPlugin plugin;
        SimspectroDevice device(plugin);
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        QCOMPARE(device.readLinearisation(21, nullptr), -1);
        QCOMPARE(device.readLinearisation(21, lut.lut(), 1), 0);
        QCOMPARE(device.readLinearisation(21, lut.lut(), 0, 21), 0);
        QCOMPARE(device.recorder.count(), 0);
    }

    void linearisationChartsAreEvenlySpaced()
    {
        const SimspectroPlugin plugin;
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        double values[5] = {};
        QCOMPARE(plugin.getLinChart(lut.lut(), values, 5), 5);
        for (int i = 0; i < 5; ++i)
            QCOMPARE(values[i], 25.0 * i);
        QCOMPARE(plugin.getLinChart(lut.lut(), values, 1), 1);
        QCOMPARE(values[0], 100.0);
        QCOMPARE(plugin.getLinChart(nullptr, values, 5), 0);
        QCOMPARE(plugin.getLinChart(lut.lut(), nullptr, 5), 0);
        QCOMPARE(plugin.getLinChart(lut.lut(), values, 0), 0);
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
