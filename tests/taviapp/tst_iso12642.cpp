// SPDX-License-Identifier: MIT
#include "taviapp/iso12642.h"
#include "tavilib/tavialloc_p.h"
#include "tavilib/tavicms.h"
#include "tests/support/tavitest.h"
#include "tests/taviapp/patchtext.h"

#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>

#include <cmath>
#include <thread>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

/// The importer of patches: rules, public files, and what becomes of files that cannot be read.
class TestIso12642 : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aPatchIsARecordWithAllItsFields();
    void xyzBecomesD50Lab();
    void displayColourIsThatOfTheLab();
    void deviceColumnsAreFoundByName_data();
    void deviceColumnsAreFoundByName();
    void hostileInkNamesTakeNoMoreThanLinearTime_data();
    void hostileInkNamesTakeNoMoreThanLinearTime();
    void referencePatchesAreMarked_data();
    void referencePatchesAreMarked();
    void publicFile_data();
    void publicFile();
    void publicCharacterisationDataIsReadToTheLastDigit();
    void refusalIsLoggedInOneLine();
    void fileThatCannotBeReadIsRefused_data();
    void fileThatCannotBeReadIsRefused();
    void fileWithoutPermissionIsRefused();
    void outOfMemoryGivesNothingAndIsRefused();
    void cutFileNeverGivesAWrongNumber_data();
    void cutFileNeverGivesAWrongNumber();
    void severalThreadsImportAtOnce();

private:
    static QString write(const QTemporaryDir &folder, const QByteArray &bytes);
    static TAVICOMBOCOLOUR_CC readText(const QByteArray &bytes, CgatsReport &report);
};

namespace {

const QString characterisation_folder = QStringLiteral("/usr/share/color/icc");
const QString target_folder = QStringLiteral("/usr/share/color/argyll/ref");

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// How many lines with words the first data block has: counted without the reader under test.
int linesInFirstTable(const QByteArray &bytes)
{
    int count = -1;
    for (const QByteArray &line : bytes.split('\n')) {
        const QByteArray words = line.simplified();
        if (count < 0) {
            if (words == "BEGIN_DATA")
                count = 0;
        } else if (words == "END_DATA") {
            return count;
        } else if (!words.isEmpty() && !words.startsWith('#')) {
            ++count;
        }
    }
    return -1;
}

} // namespace

QString TestIso12642::write(const QTemporaryDir &folder, const QByteArray &bytes)
{
    const QString path = folder.filePath("file.txt");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write a file for the test");
    return path;
}

/// Reads a file in memory: thousands of files on a disk would take the test its time.
TAVICOMBOCOLOUR_CC TestIso12642::readText(const QByteArray &bytes, CgatsReport &report)
{
    const int file = memfd_create("tst_iso12642", 0);
    if (file < 0 || ::write(file, bytes.constData(), size_t(bytes.size())) != bytes.size())
        qFatal("cannot write a file for the test");
    TAVICOMBOCOLOUR_CC patches(ISO12642Importer::import("/proc/self/fd/" + std::to_string(file), 0, report));
    close(file);
    return patches;
}

void TestIso12642::aPatchIsARecordWithAllItsFields()
{
    CgatsReport report;
    const std::string path = dataFile("cgats/inks_of_6.txt").toStdString();
    const TAVICOMBOCOLOUR_CC patches(ISO12642Importer::import(path, 0, report));
    QCOMPARE(patches.count(), size_t(2));
    const TAVICOMBOCOLOUR *patch = NextInList(patches.head());
    QCOMPARE(patch->name, "O");
    QCOMPARE(patch->flags, uint32_t(COMBOCOLOUR_FLAG_LAB));
    QCOMPARE(patch->tolerances, 0U);
    QCOMPARE(patch->percent, 100);
    QCOMPARE(patch->device_model, uint32_t(COMBOCOLOUR_DEVICE_NCLR));
    QCOMPARE(patch->device_count, 6U);
    QCOMPARE(patch->device_extra[2], 0.0F);
    QCOMPARE(patch->header.next, nullptr);
    QCOMPARE(report.path, path);
    QCOMPARE(report.tables, size_t(1));

    const TAVICOMBOCOLOUR_CC target(
        ISO12642Importer::import(dataFile("cgats/device_only.txt").toStdString(), 0, report));
    QCOMPARE(target.head()->percent, 0);
    QCOMPARE(target.head()->rgb, 0U);
    QCOMPARE(report.rows_without_colour, size_t(3));
}

/// CIE 15: the white of the profile connection space, the cube root above 216/24389, the straight line below.
void TestIso12642::xyzBecomesD50Lab()
{
    CgatsReport report;
    const TAVICOMBOCOLOUR_CC patches =
        readText("NUMBER_OF_FIELDS 3\nBEGIN_DATA_FORMAT\nXYZ_X XYZ_Y XYZ_Z\nEND_DATA_FORMAT\n"
                 "NUMBER_OF_SETS 3\nBEGIN_DATA\n84.48 87.62 74.57\n1.69 1.61 1.67\n"
                 "0.3 0.2 0.1\nEND_DATA\n",
                 report);
    QCOMPARE(patches.count(), size_t(3));
    const double xyz[3][3] = {{84.48, 87.62, 74.57}, {1.69, 1.61, 1.67}, {0.3, 0.2, 0.1}};
    const auto f = [](double t) {
        return t > 216.0 / 24389 ? std::cbrt(t) : (24389.0 / 27 * t + 16) / 116;
    };
    const TAVICOMBOCOLOUR *patch = patches.head();
    for (const auto &value : xyz) {
        const double x = f(value[0] / 96.42);
        const double y = f(value[1] / 100);
        const double z = f(value[2] / 82.49);
        QVERIFY(std::fabs(patch->L - (116 * y - 16)) < 1e-4);
        QVERIFY(std::fabs(patch->a - 500 * (x - y)) < 1e-4);
        QVERIFY(std::fabs(patch->b - 200 * (y - z)) < 1e-4);
        patch = NextInList(patch);
    }
}

void TestIso12642::displayColourIsThatOfTheLab()
{
    CgatsReport report;
    const TAVICOMBOCOLOUR_CC patches(ISO12642Importer::import(dataFile("cgats/plain.txt").toStdString(), 0, report));
    QCOMPARE(patches.count(), size_t(3));
    for (const TAVICOMBOCOLOUR *patch = patches.head(); patch; patch = NextInList(patch))
        QCOMPARE(patch->rgb, TAVICMSLabToDisplay(patch->L, patch->a, patch->b));
    QVERIFY(patches.head()->rgb != 0);
}

void TestIso12642::deviceColumnsAreFoundByName_data()
{
    QTest::addColumn<QByteArray>("fields");
    QTest::addColumn<QString>("expected"); // with values that count from 1 by column; empty: no device values
    const auto row = [](const char *fields, const char *expected) {
        QTest::newRow(fields) << QByteArray(fields) << expected;
    };
    row("CMYK_C CMYK_M CMYK_Y CMYK_K", "cmyk 1 2 3 4");
    row("cmyk_k cmyk_c cmyk_m cmyk_y", "cmyk 2 3 4 1");
    row("K C M Y", "cmyk 2 3 4 1");
    row("CMYK_C CMYK_M CMYK_Y", "");
    row("CMY_Y CMY_M CMY_C", "cmy 3 2 1");
    row("RGB_R RGB_G RGB_B", "rgb 1 2 3");
    row("RGB_R RGB_G", "");
    row("GRAY", "gray 1");
    row("GREY_K", "gray 1");
    row("GRAYISH", "");
    row("2CLR_2 2CLR_1", "nclr 2 1");
    row("7CLR_1 7CLR_2 7CLR_3 7CLR_4 7CLR_5 7CLR_6 7CLR_7", "nclr 1 2 3 4 5 6 7");
    row("8CLR_1 8CLR_2 8CLR_3 8CLR_4 8CLR_5 8CLR_6 8CLR_7 8CLR_8", "nclr 1 2 3 4 5 6 7 8");
    row("3CLR_1 3CLR_2", "");
    row("0CLR_1", "");
    row("CLR_1", "");
    row("CMYKOG_O CMYKOG_G CMYKOG_C CMYKOG_M CMYKOG_Y CMYKOG_K", "nclr 3 4 5 6 1 2");
    row("CMYKOG_C CMYKOG_M CMYKOG_Y CMYKOG_K CMYKOG_O", "");
    row("6CLR_1 6CLR_2 6CLR_3 6CLR_4 6CLR_5 6CLR_6 CMYK_C CMYK_M CMYK_Y CMYK_K", "nclr 1 2 3 4 5 6");
    row("ACLR_1 ACLR_2 ACLR_3 ACLR_4 ACLR_5 ACLR_6 ACLR_7 ACLR_8 ACLR_9 ACLR_10", "10 inks");
    row("10CLR_1 10CLR_2 10CLR_3 10CLR_4 10CLR_5 10CLR_6 10CLR_7 10CLR_8 10CLR_9 10CLR_10", "10 inks");
    row("D_RED D_GREEN D_BLUE", "");
    // The series that begins first counts, of equal names the first.
    row("3CLR_3 2CLR_1 2CLR_2 3CLR_1 3CLR_2", "nclr 4 5 1");
    row("3CLR_1 3CLR_2 2CLR_2 2CLR_1", "nclr 4 3");
    row("2CLR_2 2CLR_2 2CLR_1 2CLR_1", "nclr 3 1");
}

void TestIso12642::deviceColumnsAreFoundByName()
{
    QFETCH(QByteArray, fields);
    QFETCH(QString, expected);
    QByteArray row;
    for (int i = 1; i <= fields.split(' ').size(); ++i)
        row += ' ' + QByteArray::number(i);
    CgatsReport report;
    const TAVICOMBOCOLOUR_CC patches = readText("BEGIN_DATA_FORMAT\nLAB_L LAB_A LAB_B " + fields
                                                    + "\nEND_DATA_FORMAT\nBEGIN_DATA\n95 0 0" + row + "\nEND_DATA\n",
                                                report);
    QCOMPARE(patches.count(), size_t(1));
    const QString device = patchText(*patches.head()).section(" | ", 2);
    if (expected.endsWith("inks")) {
        QCOMPARE(device, QString());
        QVERIFY(noteTexts(report.doubts).join(';').contains("there are " + expected));
    } else {
        QCOMPARE(device, expected);
        QCOMPARE(noteTexts(report.doubts), QStringList());
    }
}

void TestIso12642::hostileInkNamesTakeNoMoreThanLinearTime_data()
{
    QTest::addColumn<QByteArray>("names");
    QByteArray series;
    for (int ink = 1; ink < 99; ++ink)
        series += " 99CLR_" + QByteArray::number(ink);
    QTest::newRow("one number") << QByteArray(" 99CLR_1").repeated(1020);
    QTest::newRow("numbers but the last") << series.repeated(10);
    QTest::newRow("one letter") << " CMYKXZ_X" + QByteArray(" CMYKXZ_C").repeated(1000);
    const QByteArray letters = " CMYK" + QByteArray(2000, 'C');
    QTest::newRow("many letters") << (letters + "_C").repeated(10);
    QTest::newRow("many letters but the last") << (letters + "X_C").repeated(10);
}

void TestIso12642::hostileInkNamesTakeNoMoreThanLinearTime()
{
    QFETCH(QByteArray, names);
    const int columns = names.count(' ');
    const QByteArray table = "BEGIN_DATA_FORMAT\nSAMPLE_ID" + names + "\nEND_DATA_FORMAT\nBEGIN_DATA\n1"
                             + QByteArray(" 1").repeated(columns) + "\nEND_DATA\n";
    QElapsedTimer timer;
    timer.start();
    CgatsReport report;
    readText(table.repeated(250), report);
    // A reader that looks through the names for each column anew takes minutes for some of these.
    QVERIFY2(timer.elapsed() < 10000, qPrintable(QString("%1 ms").arg(timer.elapsed())));
}

void TestIso12642::referencePatchesAreMarked_data()
{
    QTest::addColumn<QByteArray>("device");
    QTest::addColumn<QString>("meaning");
    QTest::newRow("paper") << QByteArray("0 0 0 0") << "paper";
    QTest::newRow("cyan") << QByteArray("100 0 0 0") << "cyan";
    QTest::newRow("magenta") << QByteArray("0 100 0 0") << "magenta";
    QTest::newRow("yellow") << QByteArray("0 0 100 0") << "yellow";
    QTest::newRow("black") << QByteArray("0 0 0 100") << "black";
    QTest::newRow("grey of the wedge") << QByteArray("60 45 45 0") << "grey";
    QTest::newRow("grey of a press") << QByteArray("50 40 40 0") << "grey";
    QTest::newRow("grey from eight bits") << QByteArray("74.9 66.27 65.88 0") << "grey";
    QTest::newRow("no solid") << QByteArray("99 0 0 0") << "";
    QTest::newRow("not quite paper") << QByteArray("0 0 0.4 0") << "";
    QTest::newRow("overprint") << QByteArray("100 100 0 0") << "";
    QTest::newRow("equal inks are brown") << QByteArray("40 40 40 0") << "";
    QTest::newRow("grey with black") << QByteArray("50 40 40 1") << "";
    QTest::newRow("grey of black alone") << QByteArray("0 0 0 50") << "";
    QTest::newRow("between two greys") << QByteArray("30 20 20 0") << "";
}

void TestIso12642::referencePatchesAreMarked()
{
    QFETCH(QByteArray, device);
    QFETCH(QString, meaning);
    CgatsReport report;
    const TAVICOMBOCOLOUR_CC patches = readText(
        "BEGIN_DATA_FORMAT\nCMYK_C CMYK_M CMYK_Y CMYK_K\nEND_DATA_FORMAT\nBEGIN_DATA\n" + device + "\nEND_DATA\n",
        report);
    QCOMPARE(patches.count(), size_t(1));
    const QStringList parts = patchText(*patches.head()).split(" | ");
    QCOMPARE(parts.size() > 3 ? parts.at(3) : QString(), meaning);
    QCOMPARE(parts.size(), meaning.isEmpty() ? 3 : 4);
}

void TestIso12642::publicFile_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QStringList>("assumptions");

    const QDir characterisations(characterisation_folder, "*.ti3", QDir::Name, QDir::Files);
    const QDir targets(target_folder, "*.ti1 *.ti2 *.cie", QDir::Name, QDir::Files);
    if (characterisations.count() == 0 || targets.count() == 0)
        QFAIL("the public files are not there: packages icc-profiles-free and argyll");

    // What these files are known for; the others have no quirk.
    const QHash<QString, int> rows = {{"FOGRA28L.ti3", 1485},  {"FOGRA29L.ti3", 1485}, {"FOGRA30L.ti3", 1485},
                                      {"FOGRA39L.ti3", 1617},  {"FOGRA40L.ti3", 1617}, {"TR002.ti3", 928},
                                      {"TR003.ti3", 1617},     {"TR005.ti3", 1617},    {"TR006.ti3", 1617},
                                      {"FograStrip2.ti1", 46}, {"FograStrip3.ti1", 72}};
    const QHash<QString, QStringList> quirks = {
        {"FograStrip2.ti1",
         {"70: another table with 8 rows is left out; the patches come from the one at line 1",
          "95: another table with 9 rows is left out; the patches come from the one at line 1"}},
        {"FograStrip3.ti1",
         {"16: NUMBER_OF_FIELDS is '9'; the table has 8 columns",
          "96: another table with 8 rows is left out; the patches come from the one at line 1",
          "121: another table with 9 rows is left out; the patches come from the one at line 1"}},
        {"ColorChecker.ti2", {"23: NUMBER_OF_FIELDS is '9'; the table has 8 columns"}}};
    for (const QDir &folder : {characterisations, targets}) {
        for (const QString &name : folder.entryList()) {
            const QString path = folder.filePath(name);
            QTest::newRow(qPrintable(name))
                << path << rows.value(name, linesInFirstTable(contents(path))) << quirks.value(name);
        }
    }
}

void TestIso12642::publicFile()
{
    QFETCH(QString, path);
    QFETCH(int, rows);
    QFETCH(QStringList, assumptions);
    QVERIFY(rows > 0);
    CgatsReport report;
    const TAVICOMBOCOLOUR_CC patches(ISO12642Importer::import(path.toStdString(), 0, report));
    QCOMPARE(QString::fromStdString(report.refusalText()), QString());
    QCOMPARE(int(patches.count()), rows);
    QCOMPARE(noteTexts(report.assumptions), assumptions);
    QCOMPARE(noteTexts(report.doubts), QStringList());
    QCOMPARE(report.rows_without_colour, size_t(0));
}

void TestIso12642::publicCharacterisationDataIsReadToTheLastDigit()
{
    const QString path = characterisation_folder + "/FOGRA39L.ti3";
    CgatsReport report;
    const TAVICOMBOCOLOUR_CC patches(ISO12642Importer::import(path.toStdString(), 0, report));
    QStringList expected;
    bool data = false;
    for (const QByteArray &line : contents(path).split('\n')) {
        const QList<QByteArray> words = line.simplified().split(' ');
        data = data && words.first() != "END_DATA";
        if (data) {
            QString text = words.at(0) + " |";
            for (int i = 8; i < 11; ++i)
                text += ' ' + numberText(words.at(i).toDouble());
            text += " | cmyk";
            for (int i = 1; i < 5; ++i)
                text += ' ' + numberText(words.at(i).toFloat());
            expected.append(text);
        }
        data = data || words.first() == "BEGIN_DATA";
    }
    QCOMPARE(expected.size(), 1617);
    QStringList marked;
    QStringList read = patchTexts(patches);
    for (QString &text : read) {
        const QStringList parts = text.split(" | ");
        if (parts.size() > 3)
            marked.append(parts.at(3));
        text = parts.mid(0, 3).join(" | ");
    }
    QCOMPARE(read, expected);
    // The chart has its primaries and its paper twice.
    for (const char *meaning : {"paper", "cyan", "magenta", "yellow", "black"})
        QCOMPARE(marked.count(meaning), 2);
    QCOMPARE(marked.count("grey"), 8);
    QCOMPARE(marked.size(), 18);
}

void TestIso12642::refusalIsLoggedInOneLine()
{
    const std::string path = dataFile("cgats/decimal_comma_and_point.txt").toStdString();
    expectLog(QString::fromStdString("iso12642: import: " + path + ":10: there are decimal points"));
    QCOMPARE(ISO12642Importer::import(path, 0), nullptr);
    QCOMPARE(recorder().lines().size(), 1);

    // The form with a report leaves the telling to its caller, and a file that is read says nothing.
    CgatsReport report;
    QCOMPARE(ISO12642Importer::import(path, 0, report), nullptr);
    const TAVICOMBOCOLOUR_CC plain(ISO12642Importer::import(dataFile("cgats/plain.txt").toStdString(), 0));
    QCOMPARE(plain.count(), size_t(3));
    QCOMPARE(recorder().lines().size(), 1);
}

void TestIso12642::fileThatCannotBeReadIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("reason");
    QTest::newRow("missing") << "missing.txt"
                             << "cannot be read: No such file or directory";
    QTest::newRow("folder") << "folder"
                            << "is a directory";
    QTest::newRow("pipe") << "pipe"
                          << "is no regular file";
    QTest::newRow("loop") << "loop"
                          << "cannot be read: Too many levels of symbolic links";
    QTest::newRow("program") << "program"
                             << "there is a zero byte; this is no text file";
}

void TestIso12642::fileThatCannotBeReadIsRefused()
{
    QFETCH(QString, name);
    QFETCH(QString, reason);
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir("folder"));
    QCOMPARE(mkfifo(qPrintable(folder.filePath("pipe")), 0600), 0);
    QVERIFY(QFile::link(folder.filePath("loop"), folder.filePath("loop")));
    QVERIFY(QFile::copy(QCoreApplication::applicationFilePath(), folder.filePath("program")));
    CgatsReport report;
    QCOMPARE(ISO12642Importer::import(folder.filePath(name).toStdString(), 0, report), nullptr);
    QVERIFY(report.refused);
    QCOMPARE(QString::fromStdString(report.refusal_reason), reason);
}

void TestIso12642::fileWithoutPermissionIsRefused()
{
    const QTemporaryDir folder;
    const QString path = write(folder, "95 0 0\n");
    QCOMPARE(chmod(qPrintable(path), 0), 0);
    // Root may read everything, so this part of the test is nobody's.
    const bool root = geteuid() == 0;
    QVERIFY(!root || seteuid(65534) == 0);
    CgatsReport report;
    const TAVICOMBOCOLOUR_CC patches(ISO12642Importer::import(path.toStdString(), 0, report));
    QVERIFY(!root || seteuid(0) == 0);
    QCOMPARE(patches.count(), size_t(0));
    QCOMPARE(QString::fromStdString(report.refusal_reason), QString("cannot be read: Permission denied"));
}

void TestIso12642::outOfMemoryGivesNothingAndIsRefused()
{
    const std::string path = dataFile("cgats/k_first.txt").toStdString();
    int left = 0;
    const auto hook = [](size_t, void *context) {
        return (*static_cast<int *>(context))-- > 0;
    };
    int allocations = 0;
    for (;; ++allocations) {
        left = allocations;
        CgatsReport report;
        TaviAllocSetHook(hook, &left);
        const TAVICOMBOCOLOUR_CC patches(ISO12642Importer::import(path, 0, report));
        TaviAllocSetHook(nullptr, nullptr);
        if (patches.count() > 0) {
            QVERIFY(!report.refused);
            QCOMPARE(patches.count(), size_t(4));
            break;
        }
        QCOMPARE(report.refusal_reason, std::string("out of memory"));
    }
    QCOMPARE(allocations, 8); // a record and a name each
}

void TestIso12642::cutFileNeverGivesAWrongNumber_data()
{
    QTest::addColumn<QString>("file");
    for (const char *file : {"k_first", "decimal_comma", "quotes_missing", "quotes_doubled", "rows_over_lines",
                             "crlf", "cr_only", "tabs_names_with_blanks", "tabs_empty_cell", "no_format_block",
                             "bare_lab", "bare_with_header_line", "bom_utf16_le", "names_utf8", "xyz", "two_tables"})
        QTest::newRow(file) << QString("cgats/%1.txt").arg(file);
}

void TestIso12642::cutFileNeverGivesAWrongNumber()
{
    QFETCH(QString, file);
    const QByteArray bytes = contents(dataFile(file));
    QVERIFY(bytes.size() > 20);
    CgatsReport whole_report;
    const QStringList whole = patchTexts(readText(bytes, whole_report));
    QVERIFY(!whole.isEmpty());
    int refused = 0;
    int shorter = 0;
    for (int length = 0; length < bytes.size(); ++length) {
        CgatsReport report;
        QStringList patches = patchTexts(readText(bytes.left(length), report));
        if (report.refused) {
            QCOMPARE(patches, QStringList());
            ++refused;
            continue;
        }
        // A table without END_DATA may end anywhere; its last line is believed, and the report says so.
        const bool believed = noteTexts(report.assumptions).join(';').contains("its last value is taken as whole");
        if (believed)
            patches.removeLast();
        QVERIFY2(patches == whole.mid(0, patches.size()),
                 qPrintable(QString("cut at %1: %2").arg(length).arg(patches.join("; "))));
        if (patches.size() < whole.size()) {
            QVERIFY2(!report.assumptions.empty() || !report.doubts.empty(),
                     qPrintable(QString("cut at %1 without a word").arg(length)));
            ++shorter;
        }
    }
    QVERIFY(refused > 0);
    QVERIFY(shorter > 0);
}

void TestIso12642::severalThreadsImportAtOnce()
{
    const std::string path = (characterisation_folder + "/FOGRA39L.ti3").toStdString();
    constexpr int threads = 4;
    QStringList read[threads];
    std::vector<std::thread> running;
    for (QStringList &texts : read) {
        running.emplace_back([&texts, &path] {
            for (int i = 0; i < 3; ++i) {
                CgatsReport report;
                texts = patchTexts(TAVICOMBOCOLOUR_CC(ISO12642Importer::import(path, 0, report)));
            }
        });
    }
    for (std::thread &thread : running)
        thread.join();
    QCOMPARE(read[0].size(), 1617);
    for (const QStringList &texts : read)
        QCOMPARE(texts, read[0]);
}

TAVI_TEST_MAIN(TestIso12642)
#include "tst_iso12642.moc"
