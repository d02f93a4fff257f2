// SPDX-License-Identifier: MIT
#include "taviapp/densitylut_cc.h"
#include "taviapp/tavicombocolour_cc.h"
#include "tavilib/calc.h"
#include "tavilib/tavipacket.h"
#include "tests/instruments/measurementfile.h"
#include "tests/instruments/messagetranslator.h"
#include "tests/support/allocfailure.h"
#include "tests/support/tavitest.h"

#include <QProcess>

#include <clocale>
#include <cmath>
#include <cstdlib>
#include <cstring>

namespace {

const QString ready = QStringLiteral("status: File importer ready");
const QString cancelled = QStringLiteral("status: Reading cancelled by user");

QString processed(int count)
{
    return QStringLiteral("status: File importer: processed %1 measurements").arg(count);
}

/// @a count times "density" or "lab" between the texts.
QStringList events(const QStringList &before, const QString &event, int count, const QStringList &after)
{
    QStringList all = before;
    for (int i = 0; i < count; ++i)
        all.append(event);
    return all + after;
}

uint64_t bitsOf(double number)
{
    uint64_t bits = 0;
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

} // namespace

Q_DECLARE_METATYPE(SpectrophotometerGetInfoFunction)

/// The identity cards, opening and closing, and the text readers of colours.
class TestSpectroFromFile : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    // Identity cards

    void identityCards_data()
    {
        QTest::addColumn<SpectrophotometerGetInfoFunction>("get_info");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("rev");
        QTest::addColumn<QString>("file_name");
        QTest::addColumn<uint>("flags");
        QTest::newRow("CMYK") << SpectrophotometerGetInfoFunction(
            spectro_fromfile_cmykorder_SpectrophotometerGetInfoDensityOnly)
                              << "CMYK text file (CMYK sample order)"
                              << "1.03"
                              << "tabdelimitedcmyk.orloinstrument" << 0x2412U;
        QTest::newRow("KCMY") << SpectrophotometerGetInfoFunction(
            spectro_fromfile_kcmyorder_SpectrophotometerGetInfoDensityOnly)
                              << "CMYK text file (KCMY sample order)"
                              << "1.01"
                              << "tabdelimitedkcmy.orloinstrument" << 0x2412U;
        QTest::newRow("Lab") << SpectrophotometerGetInfoFunction(spectro_fromfile_SpectrophotometerGetInfoLabOnly)
                             << "Lab text file (Lab sample order)"
                             << "1.03"
                             << "tabdelimitedlab.orloinstrument" << 0x2221U;
        QTest::newRow("CGATS") << SpectrophotometerGetInfoFunction(spectro_fromCGATS_SpectrophotometerGetInfo)
                               << "CGATS / ISO 12642 file"
                               << "1.01"
                               << "cgatslab.orloinstrument" << 0x2221U;
    }
    void identityCards()
    {
        QFETCH(SpectrophotometerGetInfoFunction, get_info);
        QFETCH(uint, flags);
        SPECTROPHOTOMETERINFO *info = get_info();
        QVERIFY(info);
        QTEST(QString(info->name), "name");
        QTEST(QString(info->rev), "rev");
        QTEST(QString(info->dll_filename), "file_name");
        QCOMPARE(info->flags, flags);
        QVERIFY(!info->header.next);
        TaviPacketFreeItem(info, TAVIPACKET_SPECTROPHOTOMETERINFO);
    }

    void identityCardsWithoutMemory_data() { identityCards_data(); }
    void identityCardsWithoutMemory()
    {
        QFETCH(SpectrophotometerGetInfoFunction, get_info);
        expectLog(QStringLiteral("spectro_fromfile: SpectrophotometerGetInfo: Cannot allocate %1 bytes")
                      .arg(sizeof(SPECTROPHOTOMETERINFO)));
        // The record, then its three strings, which fail without a word.
        for (int number = 1; number <= 4; ++number) {
            const AllocFailure failure(number);
            QVERIFY(!get_info());
            QVERIFY(failure.happened());
        }
        const AllocFailure none(5);
        SPECTROPHOTOMETERINFO *info = get_info();
        QVERIFY(info);
        QCOMPARE(none.count(), 4);
        TaviPacketFreeItem(info, TAVIPACKET_SPECTROPHOTOMETERINFO);
    }

    // Opening and closing

    void openingAsksForAFile()
    {
        const ChosenFile chosen{QString()};
        InstrumentRecorder recorder;
        QVERIFY(!spectro_fromfile_SpectrophotometerOpen(InstrumentRecorder::message, &recorder));
        QCOMPARE(chosen.asked, 1);
        QCOMPARE(chosen.title, QString("Choose a file containing measurements"));
        QCOMPARE(chosen.filter, QString("All(*);;Text files (*.txt)"));
        QVERIFY(!spectro_fromCGATS_SpectrophotometerOpen(InstrumentRecorder::message, &recorder));
        QCOMPARE(chosen.asked, 2);
        QCOMPARE(chosen.title, QString("Choose a file containing measurements"));
        QCOMPARE(chosen.filter, QString("All(*);;Text files (*.txt)"));
        QCOMPARE(recorder.events(), QStringList());
    }

    void theTitleIsTranslated()
    {
        MessageTranslator translator;
        translator.set("QObject", "Choose a file containing measurements", "Messdatei");
        const ChosenFile chosen{QString()};
        InstrumentRecorder recorder;
        spectro_fromfile_SpectrophotometerOpen(InstrumentRecorder::message, &recorder);
        QCOMPARE(chosen.title, QString("Messdatei"));
    }

    void theFormerChooserComesBack()
    {
        const auto answering = [](const char *path) {
            return [path](const QString &, const QString &) {
                return QString(path);
            };
        };
        const SpectroFileChooser at_first = setSpectroFileChooser(answering("one"));
        QVERIFY(at_first);
        const SpectroFileChooser one = setSpectroFileChooser(answering("two"));
        QCOMPARE(one({}, {}), QString("one"));
        QCOMPARE(setSpectroFileChooser(nullptr)({}, {}), QString("two"));
        QVERIFY(setSpectroFileChooser(at_first));
    }

    void aChooserMayPutAnotherInItsPlace()
    {
        const SpectroFileChooser former = setSpectroFileChooser([](const QString &, const QString &) {
            const QString path("/nonexistent/long enough to be on the heap");
            setSpectroFileChooser(nullptr);
            return path;
        });
        InstrumentRecorder recorder;
        QVERIFY(!spectro_fromfile_SpectrophotometerOpen(InstrumentRecorder::message, &recorder));
        QCOMPARE(recorder.events().size(), 1);
        setSpectroFileChooser(former);
    }

    void aFileThatCannotBeOpenedIsAFault_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("missing") << "/nonexistent/file.txt";
        QTest::newRow("directory") << "/usr";
        QTest::newRow("UTF-8") << QString::fromUtf8("/nonexistent/M\xc3\xa4rz.txt");
    }
    void aFileThatCannotBeOpenedIsAFault()
    {
        QFETCH(QString, path);
        const ChosenFile chosen(path);
        InstrumentRecorder recorder;
        QVERIFY(!spectro_fromfile_SpectrophotometerOpen(InstrumentRecorder::message, &recorder));
        QCOMPARE(recorder.events(), QStringList("fault: Cannot open file " + path));
        QCOMPARE(recorder.places(), QStringList("spectro_fromfile/SpectrophotometerOpen"));
    }

    void namesMayHoldAnything()
    {
        MeasurementFile file("1 2 3\n", MeasurementFile::Text, QString::fromUtf8("M\xc3\xa4rz %s.txt"));
        QCOMPARE(file.readSpotLab(), 0);
        QCOMPARE(file.recorder.events(), QStringList({ready, "lab", "end", processed(1)}));
    }

    void closingNothingIsFine()
    {
        InstrumentRecorder recorder;
        spectro_fromfile_SpectrophotometerClose(nullptr, InstrumentRecorder::message, &recorder);
        spectro_fromCGATS_SpectrophotometerClose(nullptr, InstrumentRecorder::message, &recorder);
        QCOMPARE(recorder.events(), QStringList());
    }

    // Lab

    void labLinesAreDeliveredInOrder()
    {
        MeasurementFile file("95 0 -2\n50.25\t-30.5\t1e1\n  12   13\t 14  \n");
        QCOMPARE(file.readSpotLab(), 0);
        const std::vector<RecordedLab> expected = {{95, 0, -2}, {50.25, -30.5, 10}, {12, 13, 14}, {-1, 0, 0}};
        QCOMPARE(file.recorder.colours(), expected);
        QCOMPARE(file.recorder.events(), QStringList({ready, "lab", "lab", "lab", "end", processed(3)}));
        QCOMPARE(file.recorder.places(), QStringList({"spectro_fromfile/", "spectro_fromfile/"}));
    }

    void aChartIsNotLookedAt()
    {
        MeasurementFile file("1 0 0\n2 0 0\n3 0 0\n");
        const TAVICOMBOCOLOUR_CC chart(TAVICOMBOCOLOUR_CC::newMeasuredPatch(50, 0, 0));
        QCOMPARE(file.readChart(chart.head()), 0);
        QCOMPARE(file.recorder.events(), QStringList({ready, "lab", "lab", "lab", "end", processed(3)}));
        file.recorder.clear();
        QCOMPARE(file.readChart(nullptr), 0);
        QCOMPARE(file.recorder.events(), QStringList({ready, "lab", "lab", "lab", "end", processed(3)}));
    }

    void linesOfAllKinds_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QVector<double>>("lightness");
        const auto row = [](const char *name, const QByteArray &content, const QVector<double> &lightness) {
            QTest::newRow(name) << content << lightness;
        };
        row("empty", "", {});
        row("blank lines", "\n\n  \n\t\n", {});
        row("too few columns", "1 2\n3\n4 5 6\n", {4});
        row("columns beyond", "1 2 3 4 5\n", {1});
        row("no last line end", "1 2 3\n4 5 6", {1, 4});
        row("CRLF", "1 2 3\r\n\r\n4 5 6\r\n", {1, 4});
        row("carriage return within", "1 2 3\r4 5 6\n", {1});
        row("headline of two words", "L a\n1 2 3\n", {1});
        row("headline of three words", "L a b\n1 2 3\n", {0, 1});
        row("below zero", "-1 2 3\n4 5 6\n", {-1, 4});
        row("longest line", "1 2 " + QByteArray(1018, ' ') + "3\n4 5 6\n", {1, 4});
        row("line in two pieces", "1 2 3" + QByteArray(1018, ' ') + "4 5 6\n", {1, 4});
        row("zero byte", QByteArray("1 2 3\0 9\n4 5\0 6\n", 16), {1});
    }
    void linesOfAllKinds()
    {
        QFETCH(QByteArray, content);
        QFETCH(QVector<double>, lightness);
        MeasurementFile file(content);
        QCOMPARE(file.readSpotLab(), 0);
        QVector<double> read;
        for (const RecordedLab &colour : file.recorder.colours())
            read.append(colour.L);
        QCOMPARE(read, lightness + QVector<double>{-1});
        QCOMPARE(file.recorder.events().first(), ready);
        QCOMPARE(file.recorder.events().last(), processed(lightness.size()));
    }

    void numbersAreReadAsTheCLibraryDoes_data()
    {
        QTest::addColumn<QByteArray>("token");
        for (const char *token : {"0",
                                  "-0",
                                  "1",
                                  "+1.5",
                                  "-1.5",
                                  ".5",
                                  "5.",
                                  "1e3",
                                  "1E+3",
                                  "1e-3",
                                  "1e",
                                  "1e+",
                                  "1e400",
                                  "-1e400",
                                  "1e-400",
                                  "4.9e-324",
                                  "2.2250738585072011e-308",
                                  "0.1",
                                  "0.30000000000000004",
                                  "9007199254740993",
                                  "123456789012345678901234567890",
                                  "0x10",
                                  "0x1.8p3",
                                  "0x",
                                  "inf",
                                  "-inf",
                                  "+infinity",
                                  "nan",
                                  "NAN",
                                  "nan(1)",
                                  "abc",
                                  "12abc",
                                  "1,5",
                                  "--1",
                                  "+-1",
                                  "+",
                                  "-",
                                  ".",
                                  "1.#IND00",
                                  "1.5.5",
                                  "1\v",
                                  "\"1\"",
                                  "1e5x"})
            QTest::newRow(token) << QByteArray(token);
        QTest::newRow("long") << QByteArray("0.") + QByteArray(400, '3') + "1";
    }
    void numbersAreReadAsTheCLibraryDoes()
    {
        QFETCH(QByteArray, token);
        MeasurementFile file("1 " + token + " 3\n");
        QCOMPARE(file.readSpotLab(), 0);
        QCOMPARE(file.recorder.colours().size(), size_t(2));
        const double number = file.recorder.colours().front().a;
        const double expected = std::atof(token.constData());
        if (std::isnan(expected))
            QVERIFY(std::isnan(number)); // whatever its payload
        else
            QCOMPARE(bitsOf(number), bitsOf(expected));
    }

    /// With a window on the screen the C library reads numbers as the user's country writes them.
    void theLocaleDoesNotMatter()
    {
        QTemporaryDir locales;
        QProcess tool;
        tool.start("localedef", {"-i", "de_DE", "-f", "UTF-8", locales.filePath("de_DE.UTF-8")});
        QVERIFY(tool.waitForFinished());
        qputenv("LOCPATH", locales.path().toUtf8());
        const QByteArray former = std::setlocale(LC_NUMERIC, nullptr);
        QVERIFY2(std::setlocale(LC_NUMERIC, "de_DE.UTF-8"), "package locales is missing");
        QCOMPARE(std::atof("1,5"), 1.5);
        MeasurementFile file("1.5 +2.5 3,5\n");
        file.readSpotLab();
        std::setlocale(LC_NUMERIC, former.constData());
        qunsetenv("LOCPATH");
        QCOMPARE(file.recorder.colours().front(), (RecordedLab{1.5, 2.5, 3.0}));
    }

    void everyReadBeginsAtTheTop()
    {
        MeasurementFile file("1 2 3 4\n5 6 7 8\n");
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        SPECTROSEPTYPE separation = SPECTROSEP_CYAN;
        file.readSpotLab();
        file.readSpotLab();
        file.readChart();
        file.readSpotDensities(&separation);
        file.readLinearisation(1, lut.lut());
        file.readLinearisation(1, lut.lut());
        const std::vector<RecordedLab> one = {{1, 2, 3}, {5, 6, 7}, {-1, 0, 0}};
        std::vector<RecordedLab> expected;
        for (int i = 0; i < 3; ++i)
            expected.insert(expected.end(), one.begin(), one.end());
        QCOMPARE(file.recorder.colours(), expected);
        QVector<double> cyan;
        for (const PATCHDENSITY &patch : file.recorder.densities())
            cyan.append(patch.density_c);
        QCOMPARE(cyan, QVector<double>({1, 5, 1, 1}));
    }

    void anAbortOfALabReadDeliversNoEndMarker_data()
    {
        QTest::addColumn<bool>("chart");
        QTest::addColumn<int>("after");
        QTest::newRow("spot, at once") << false << 0;
        QTest::newRow("spot, later") << false << 2;
        QTest::newRow("chart, at once") << true << 0;
        QTest::newRow("chart, later") << true << 2;
    }
    void anAbortOfALabReadDeliversNoEndMarker()
    {
        QFETCH(bool, chart);
        QFETCH(int, after);
        MeasurementFile file("1 2 3\n4 5 6\n7 8 9\n");
        file.setAborted(after == 0);
        file.abortAfter(after);
        QCOMPARE(chart ? file.readChart() : file.readSpotLab(), 0);
        QCOMPARE(file.recorder.events(), events({ready}, "lab", after, {cancelled}));
        QCOMPARE(file.recorder.places(),
                 QStringList({"spectro_fromfile/", "spectro_fromfile/SpectrophotometerReadSpotLab"}));
    }

    void anAbortBehindTheLastLineComesTooLate()
    {
        MeasurementFile file("1 2 3\n4 5 6\n");
        file.abortAfter(2);
        QCOMPARE(file.readSpotLab(), 0);
        QCOMPARE(file.recorder.events(), QStringList({ready, "lab", "lab", "end", processed(2)}));
    }

    void anAbortIsSeenOnSkippedLinesToo()
    {
        MeasurementFile file("1 2 3\n\n");
        file.abortAfter(1);
        QCOMPARE(file.readSpotLab(), 0);
        QCOMPARE(file.recorder.events(), QStringList({ready, "lab", cancelled}));
    }

    // Charts

    void chartsAreThoseOfAHandHeldInstrument()
    {
        DENSITYLUT_CC lut;
        lut.appendSeparation(TAVIBANDTYPE_CYAN);
        double values[5] = {};
        QCOMPARE(spectro_fromfile_SpectrophotometerGetLinChart(lut.lut(), values, 5), 5);
        QCOMPARE(values[1], 25.0);
        QCOMPARE(spectro_fromfile_SpectrophotometerGetLinChart(nullptr, values, 5), 0);

        TAVICOMBOCOLOUR_CC chart;
        for (int i = 0; i < 10; ++i)
            chart.insertCombo(TAVICOMBOCOLOUR_CC::newMeasuredPatch(50, 0, 0));
        for (const unsigned long parameter : {0UL, 3UL, 100UL}) {
            const int expected = GenerateHandheldComboColourChart(chart.head(), parameter);
            QVERIFY(expected > 0);
            QCOMPARE(spectro_fromfile_SpectrophotometerGetComboColourChart(chart.head(), parameter), expected);
            QCOMPARE(spectro_fromCGATS_SpectrophotometerGetComboColourChart(chart.head(), parameter), expected);
        }
        QCOMPARE(spectro_fromfile_SpectrophotometerGetComboColourChart(nullptr, 3), 0);
        QCOMPARE(spectro_fromCGATS_SpectrophotometerGetComboColourChart(nullptr, 3), 0);
    }
};

TAVI_TEST_MAIN(TestSpectroFromFile)
#include "tst_spectro_fromfile.moc"
