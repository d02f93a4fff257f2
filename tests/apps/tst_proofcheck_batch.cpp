// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>

#include <sys/stat.h>

namespace {

struct Result {
    int status;
    QStringList lines; ///< Standard error.
};

QList<QByteArray> readLines(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().split('\n') : QList<QByteArray>();
}

const QString cgats_reader = "CGATS / ISO 12642 file";
const QString lab_reader = "Lab text file (Lab sample order)";
const QString simulated = "Simulated spectrophotometer";
const QString characterisation = "/usr/share/color/icc/FOGRA39L.ti3";
const QString wedge = "/usr/share/color/argyll/ref/FograStrip3.ti1";

} // namespace

/// The program itself, run as a user runs it, without a display.
class TestProofcheckBatch : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        folder = std::make_unique<QTemporaryDir>();
        out = folder->filePath("measured.tsv");
    }

    void aCharacterisationFileIsMeasured()
    {
        const Result result = measure(cgats_reader, characterisation);
        QCOMPARE(result.lines, QStringList());
        QCOMPARE(result.status, 0);
        const QList<QByteArray> lines = readLines(out);
        QCOMPARE(lines.size(), 1617 + 2);
        QCOMPARE(lines[0], QByteArray("name\tL\ta\tb"));
        QCOMPARE(lines[1], QByteArray("95.00, 0.00, -2.00\t95\t0\t-2"));
        QCOMPARE(lines[2], QByteArray("90.67, 5.90, -3.86\t90.67\t5.9\t-3.86"));
        QCOMPARE(lines[1618], QByteArray());
    }

    void aTextFileIsMeasured()
    {
        const Result result = measure(lab_reader, write("50 1 2\n60.5 -3 4\n"));
        QCOMPARE(result.lines, QStringList());
        QCOMPARE(result.status, 0);
        QCOMPARE(readLines(out), (QList<QByteArray>{"name\tL\ta\tb", "50.00, 1.00, 2.00\t50\t1\t2",
                                                    "60.50, -3.00, 4.00\t60.5\t-3\t4", ""}));
    }

    void skippedLinesAreTold()
    {
        const QString path = write("L a\n50 1 2\n\n60 1 2\n");
        const Result result = measure(lab_reader, path);
        QCOMPARE(result.status, 0);
        QCOMPARE(result.lines, QStringList{"proofcheck: " + path + ": 2 of 4 lines skipped"});
    }

    void anEndMarkerInTheFileLosesNothing()
    {
        const Result result = measure(lab_reader, write("50 1 2\n-1 0 0\n60 1 2\n-5 0 0\n"));
        QCOMPARE(result.status, 0);
        QCOMPARE(readLines(out).size(), 2 + 2);
        QVERIFY(result.lines.value(0).contains(":2: L is negative"));
    }

    void aChartIsMeasuredByTheSimulatedInstrument()
    {
        const Result result = measure(simulated, wedge, {}, {{"SIMSPECTRO_FILE", characterisation}});
        QCOMPARE(result.lines, QStringList());
        QCOMPARE(result.status, 0);
        const QList<QByteArray> lines = readLines(out);
        QCOMPARE(lines.size(), 72 + 2);
        QCOMPARE(lines[1], QByteArray("1\t55\t-37\t-50")); // the solid cyan, by its device values
    }

    void aPictureOfTheWindowIsLeft()
    {
        const QString shot = folder->filePath("shot.png");
        const Result result = measure(cgats_reader, characterisation, {"--screenshot", shot});
        QCOMPARE(result.status, 0);
        const QImage image(shot);
        QVERIFY(image.width() > 400 && image.height() > 300);
        // Not one colour all over.
        const QRgb corner = image.pixel(0, 0);
        int different = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x)
                different += image.pixel(x, y) != corner;
        QVERIFY(different > image.width() * image.height() / 10);
    }

    void pluginsAreFoundFromAnyFolder()
    {
        work_in = folder->path();
        const Result result = measure(simulated, wedge, {}, {{"SIMSPECTRO_FILE", characterisation}});
        work_in = QString();
        QCOMPARE(result.status, 0);
        QCOMPARE(readLines(out).size(), 72 + 2);
    }

    void unusableInputIsOneLineAndLeavesNoFile_data()
    {
        QTest::addColumn<QString>("instrument");
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("error"); // behind the path
        QTest::newRow("no measurement") << lab_reader << QByteArray("1 2\n")
                                        << ":1: no measurement: no line has three numbers (1 lines)";
        QTest::newRow("empty") << lab_reader << QByteArray()
                               << ":1: no measurement: no line has three numbers (0 lines)";
        QTest::newRow("no colours")
            << cgats_reader
            << QByteArray("CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K\nEND_DATA_FORMAT\n"
                          "BEGIN_DATA\n1 0 0 0 0\nEND_DATA\n")
            << ": no measurement: none of its 1 rows has a Lab or XYZ value";
    }

    void unusableInputIsOneLineAndLeavesNoFile()
    {
        QFETCH(QString, instrument);
        QFETCH(QByteArray, content);
        QFETCH(QString, error);
        const QString path = write(content);
        const Result result = measure(instrument, path);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.lines, QStringList{"proofcheck: " + path + error});
        QVERIFY(!QFile::exists(out));
    }

    void aDroppedRowIsCounted()
    {
        const QString path = write("CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\n"
                                   "BEGIN_DATA\n1 90 0 0\n2 80 0\n3 50 1 2\nEND_DATA\n");
        const Result result = measure(cgats_reader, path);
        QCOMPARE(result.status, 0);
        QVERIFY2(result.lines.contains("proofcheck: " + path + ": 1 of 3 lines skipped"),
                 qPrintable(result.lines.join("; ")));
    }

    void manyRemarksAreNotAllTold()
    {
        QByteArray content = "CGATS.17\nBEGIN_DATA_FORMAT\nSAMPLE_ID LAB_L LAB_A LAB_B\nEND_DATA_FORMAT\nBEGIN_DATA\n"
                             "0 90 0 0\n";
        for (int i = 1; i <= 200; ++i)
            content += QByteArray::number(i) + " nan 0 0\n";
        const Result result = measure(cgats_reader, write(content + "END_DATA\n"));
        QCOMPARE(result.status, 0);
        QCOMPARE(result.lines.size(), 11);
        QVERIFY2(result.lines.last().endsWith("more remarks like these"), qPrintable(result.lines.last()));
    }

    void aPipeIsNoMeasurementFile()
    {
        const QString pipe = folder->filePath("pipe");
        QCOMPARE(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
        for (const QString &instrument : {cgats_reader, lab_reader}) {
            const Result result = measure(instrument, pipe);
            QCOMPARE(result.status, 2);
            QCOMPARE(result.lines.size(), 1);
            QVERIFY(result.lines[0].startsWith("proofcheck: " + pipe + ":"));
        }
    }

    void anOddPathStaysOneLine_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("told");
        QTest::newRow("placeholders") << "a%1%2%s.txt"
                                      << "a%1%2%s.txt";
        QTest::newRow("line break") << "a\nb.txt"
                                    << "a b.txt";
    }

    void anOddPathStaysOneLine()
    {
        QFETCH(QString, name);
        QFETCH(QString, told);
        QFile file(folder->filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("1 2\n");
        file.close();
        const Result result = measure(lab_reader, file.fileName());
        QCOMPARE(result.status, 2);
        QCOMPARE(result.lines, QStringList{"proofcheck: " + folder->filePath(told)
                                           + ":1: no measurement: no line has three numbers (1 lines)"});
    }

    void warningsOfAFailedRunStayUntold()
    {
        const Result result = measure(lab_reader, write("L a b\n50 1 2\n"), {"--screenshot", "/dev/null/shot.png"});
        QCOMPARE(result.status, 2);
        QCOMPARE(result.lines, QStringList{"proofcheck: /dev/null/shot.png: cannot be written"});
        QVERIFY(!QFile::exists(out));
    }

    void whatIsNoRegularFileIsNotReplaced()
    {
        const QString pipe = folder->filePath("pipe");
        QCOMPARE(::mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
        out = pipe;
        const Result result = measure(lab_reader, write("50 1 2\n"));
        QCOMPARE(result.status, 2);
        QCOMPARE(result.lines, QStringList{"proofcheck: " + pipe + ": cannot be written"});
        QVERIFY(!QFileInfo(pipe).isFile());
    }

    void theInputIsNotOverwritten()
    {
        const QString path = write("50 1 2\n");
        out = path;
        const Result result = measure(lab_reader, path);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.lines.size(), 1);
        QCOMPARE(readLines(path), (QList<QByteArray>{"50 1 2", ""}));
    }

    void listAndPictureNeedTwoFiles()
    {
        const Result result = measure(lab_reader, write("50 1 2\n"), {"--screenshot", out});
        QCOMPARE(result.status, 2);
        QVERIFY(!QFile::exists(out));
    }

    void theUsersLocaleChangesNothing()
    {
        // Numbers have decimal points in every country; only the C library thinks otherwise.
        QProcess makes_locale;
        makes_locale.start("localedef", {"-i", "de_DE", "-f", "UTF-8", folder->filePath("de_DE.UTF-8")});
        QVERIFY2(makes_locale.waitForFinished(60000) && makes_locale.exitCode() == 0,
                 makes_locale.readAllStandardError().constData());
        const Result result = measure(lab_reader, write("95.30 0.5 -2.1\n-0.5 0 0\n"), {},
                                      {{"LOCPATH", folder->path()}, {"LC_ALL", "de_DE.UTF-8"}});
        QCOMPARE(result.status, 0);
        QCOMPARE(readLines(out), (QList<QByteArray>{"name\tL\ta\tb", "95.30, 0.50, -2.10\t95.3\t0.5\t-2.1", ""}));
        QCOMPARE(result.lines.size(), 1); // of the negative L
    }

    void progressShowsOnATerminal()
    {
        QProcess terminal;
        terminal.start("script", {"-qefc",
                                  QString("'%1' --batch --instrument '%2' --measure '%3' --out '%4'")
                                      .arg(PROOFCHECK_PROGRAM, cgats_reader, characterisation, out),
                                  folder->filePath("typescript")});
        QVERIFY(terminal.waitForFinished(60000));
        QCOMPARE(terminal.exitCode(), 0);
        const QByteArray shown = terminal.readAllStandardOutput();
        QVERIFY2(shown.contains("1617 of 1617 patches"), shown.constData());
    }

    void aMissingFileIsUnusable()
    {
        for (const QString &instrument : {cgats_reader, lab_reader, simulated}) {
            const Result result =
                measure(instrument, folder->filePath("missing"), {}, {{"SIMSPECTRO_FILE", characterisation}});
            QCOMPARE(result.status, 2);
            QCOMPARE(result.lines.size(), 1);
            QVERIFY2(result.lines[0].startsWith("proofcheck: " + folder->filePath("missing") + ":"),
                     qPrintable(result.lines[0]));
            QVERIFY(!QFile::exists(out));
        }
    }

    void anUnknownInstrumentIsToldWithTheKnownOnes()
    {
        const Result result = measure("Crystal ball", characterisation);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.lines.size(), 1);
        QVERIFY(result.lines[0].contains("there is no \"Crystal ball\"; there are \"CGATS / ISO 12642 file\", "));
    }

    void aDensityReaderMeasuresNoColours()
    {
        const Result result = measure("CMYK text file (CMYK sample order)", characterisation);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.lines.size(), 1);
    }

    void unusableArgumentsAreOneLine()
    {
        const Result result = run({"--batch", "--instrument", lab_reader});
        QCOMPARE(result.status, 2);
        QCOMPARE(result.lines, QStringList{"proofcheck: --batch needs --measure"});
    }

    void anOutputThatCannotBeWrittenIsToldBeforeTheMeasurement()
    {
        out = folder->filePath("missing/measured.tsv");
        const Result result = measure(cgats_reader, characterisation);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.lines, QStringList{"proofcheck: " + out + ": cannot be written"});
    }

    void anEarlierListStaysWhenAMeasurementFails()
    {
        QVERIFY(measure(lab_reader, write("50 1 2\n")).status == 0);
        const QList<QByteArray> before = readLines(out);
        QCOMPARE(measure(lab_reader, write("nothing\n")).status, 2);
        QCOMPARE(readLines(out), before);
    }

    void anInstrumentThatDoesNotOpenHasFailed()
    {
        const Result result = measure(simulated, wedge);
        QCOMPARE(result.status, 3);
        QCOMPARE(result.lines.size(), 1);
        QVERIFY2(result.lines[0].contains("SIMSPECTRO_FILE"), qPrintable(result.lines[0]));
        QVERIFY(!QFile::exists(out));
    }

    void aChartThatIsNotWhollyReadHasFailed()
    {
        // A characterisation that lacks most of the wedge's inks.
        const QString poor =
            write("CTI3\nBEGIN_DATA_FORMAT\nSAMPLE_ID CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B\n"
                  "END_DATA_FORMAT\nNUMBER_OF_SETS 1\nBEGIN_DATA\n1 100 0 0 0 55 -37 -50\nEND_DATA\n");
        const Result result = measure(simulated, wedge, {}, {{"SIMSPECTRO_FILE", poor}});
        QCOMPARE(result.status, 3);
        QCOMPARE(result.lines.size(), 1);
        QVERIFY2(result.lines[0].contains("of the 72 patches of " + wedge), qPrintable(result.lines[0]));
        QVERIFY(!QFile::exists(out));
    }

    void aSilentInstrumentHasFailed()
    {
        const Result result = measure(simulated, wedge, {"--timeout", "1"},
                                      {{"SIMSPECTRO_FILE", characterisation}, {"SIMSPECTRO_DELAY_MS", "60000"}});
        QCOMPARE(result.status, 3);
        QCOMPARE(result.lines.size(), 1);
        QVERIFY2(result.lines[0].contains("nothing came for 1 s; 0 of 72 patches had come"),
                 qPrintable(result.lines[0]));
        QVERIFY(!QFile::exists(out));
    }

    void aPrinterNeedsAPrintServer()
    {
        const Result result =
            measure(simulated, wedge, {}, {{"SIMSPECTRO_FILE", characterisation}, {"SIMSPECTRO_PRINTER", "1"}});
        QCOMPARE(result.status, 3);
        QVERIFY(result.lines.value(0).contains("there is no print server"));
    }

    void helpGoesToStandardOutput()
    {
        const Result result = run({"--help"});
        QCOMPARE(result.status, 0);
        QCOMPARE(result.lines, QStringList());
    }

private:
    Result measure(const QString &instrument, const QString &file, const QStringList &more = {},
                   const QList<QPair<QString, QString>> &environment = {})
    {
        return run(QStringList{"--batch", "--instrument", instrument, "--measure", file, "--out", out} + more,
                   environment);
    }

    Result run(const QStringList &arguments, const QList<QPair<QString, QString>> &environment = {})
    {
        QProcess process;
        QProcessEnvironment variables = QProcessEnvironment::systemEnvironment();
        variables.remove("DISPLAY");
        variables.remove("QT_QPA_PLATFORM");
        variables.remove("SIMSPECTRO_FILE");
        for (const auto &[name, value] : environment)
            variables.insert(name, value);
        process.setProcessEnvironment(variables);
        if (!work_in.isEmpty())
            process.setWorkingDirectory(work_in);
        process.start(PROOFCHECK_PROGRAM, arguments);
        if (!process.waitForFinished(60000) || process.exitStatus() != QProcess::NormalExit)
            return {-1, {QString::fromLocal8Bit(process.readAllStandardError()), process.errorString()}};
        QStringList lines = QString::fromLocal8Bit(process.readAllStandardError()).split('\n');
        lines.removeAll(QString());
        return {process.exitCode(), lines};
    }

    QString write(const QByteArray &content)
    {
        const QString path = folder->filePath(QString("input%1").arg(++inputs));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
            qFatal("cannot write %s", qPrintable(path));
        return path;
    }

    std::unique_ptr<QTemporaryDir> folder;
    QString out;
    QString work_in;
    int inputs = 0;
};

TAVI_TEST_MAIN(TestProofcheckBatch)
#include "tst_proofcheck_batch.moc"
