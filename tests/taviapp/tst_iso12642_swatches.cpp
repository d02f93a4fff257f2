// SPDX-License-Identifier: MIT
#include "taviapp/iso12642.h"
#include "taviapp/iso12642text_p.h"
#include "tavilib/calcheck.h"
#include "tests/support/tavitest.h"
#include "tests/taviapp/patchtext.h"

#include <QDir>
#include <QTemporaryDir>

#include <cmath>
#include <new>

#include <sys/mman.h>
#include <unistd.h>

namespace {

const QString characterisation_folder = QStringLiteral("/usr/share/color/icc");

/// A file in memory with a path.
class MemoryFile
{
public:
    explicit MemoryFile(const QByteArray &bytes) : file_(memfd_create("tst_iso12642_swatches", 0))
    {
        if (file_ < 0 || ::write(file_, bytes.constData(), size_t(bytes.size())) != bytes.size())
            qFatal("cannot write a file for the test");
    }
    ~MemoryFile() { close(file_); }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;
    std::string path() const { return "/proc/self/fd/" + std::to_string(file_); }

private:
    int file_;
};

TAVICOMBOCOLOUR_CC readText(const QByteArray &bytes, CgatsReport &report)
{
    const MemoryFile file(bytes);
    return TAVICOMBOCOLOUR_CC(SwatchImporter::import(file.path(), SWATCHTYPE_CGATS, 0, report));
}

/// A table of columns and rows, with its structure around it.
QByteArray table(const QByteArray &fields, const QList<QByteArray> &rows)
{
    QByteArray text = "CGATS.17\nNUMBER_OF_FIELDS " + QByteArray::number(fields.split(' ').size())
                      + "\nBEGIN_DATA_FORMAT\n" + fields + "\nEND_DATA_FORMAT\nNUMBER_OF_SETS "
                      + QByteArray::number(rows.size()) + "\nBEGIN_DATA\n";
    for (const QByteArray &row : rows)
        text += row + '\n';
    return text + "END_DATA\n";
}

} // namespace

/// The importer of swatches: lists without gaps, and the columns that only our exporter writes.
class TestIso12642Swatches : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void swatchesAreThePatchesOfTheFile()
    {
        const std::string path = dataFile("cgats/plain.txt").toStdString();
        CgatsReport report;
        const TAVICOMBOCOLOUR_CC patches(ISO12642Importer::import(path, 0, report));
        const TAVICOMBOCOLOUR_CC swatches(SwatchImporter::import(path, SWATCHTYPE_CGATS, 0, report));
        QCOMPARE(swatches.count(), size_t(3));
        QCOMPARE(patchTexts(swatches), patchTexts(patches));
        QVERIFY(!report.refused);
        const TAVICOMBOCOLOUR_CC unreported(SwatchImporter::import(path, SWATCHTYPE_CGATS, 0));
        QCOMPARE(patchTexts(unreported), patchTexts(patches));
    }

    /// Characterisation data of several makers, as Debian has it.
    void filesOfOtherProgramsAreRead_data()
    {
        QTest::addColumn<QString>("path");
        const QDir folder(characterisation_folder);
        const QStringList files = folder.entryList({"*.ti3"}, QDir::Files);
        QVERIFY2(!files.isEmpty(), "the package icc-profiles-free is not installed");
        for (const QString &file : files)
            QTest::newRow(qPrintable(file)) << folder.filePath(file);
    }
    void filesOfOtherProgramsAreRead()
    {
        QFETCH(QString, path);
        CgatsReport report;
        const TAVICOMBOCOLOUR_CC swatches(SwatchImporter::import(path.toStdString(), SWATCHTYPE_CGATS, 0, report));
        QVERIFY2(!report.refused, report.refusalText().c_str());
        QVERIFY(swatches.count() > 100);
        uint32_t marks = 0;
        for (const TAVICOMBOCOLOUR *patch = swatches.head(); patch; patch = NextInList(patch)) {
            QVERIFY(patch->flags & COMBOCOLOUR_FLAG_LAB);
            QVERIFY(!calcheckHasOwnTolerances(patch));
            marks |= patch->flags;
        }
        QVERIFY(marks & COMBOCOLOUR_FLAG_PAPER);
        // And what is written of it is it.
        std::string error;
        const std::string text = iso12642Text(swatches.head(), nullptr, error);
        const TAVICOMBOCOLOUR_CC back = readText(QByteArray::fromStdString(text), report);
        QCOMPARE(patchTexts(back), patchTexts(swatches));
    }

    /// Targets have device values, and XYZ that a program has estimated.
    void targetsOfOtherProgramsAreReadOrRefused_data()
    {
        QTest::addColumn<QString>("path");
        const QDir folder(QStringLiteral("/usr/share/color/argyll/ref"));
        const QStringList files = folder.entryList({"*.ti1", "*.ti2", "*.cie", "*.it8"}, QDir::Files);
        QVERIFY2(!files.isEmpty(), "the package argyll-ref is not installed");
        for (const QString &file : files)
            QTest::newRow(qPrintable(file)) << folder.filePath(file);
    }
    void targetsOfOtherProgramsAreReadOrRefused()
    {
        QFETCH(QString, path);
        CgatsReport plain;
        const TAVICOMBOCOLOUR_CC patches(ISO12642Importer::import(path.toStdString(), 0, plain));
        CgatsReport report;
        const TAVICOMBOCOLOUR_CC swatches(SwatchImporter::import(path.toStdString(), SWATCHTYPE_CGATS, 0, report));
        QCOMPARE(report.refused, plain.refused || plain.rows_dropped > 0 || plain.rows_without_colour > 0);
        if (report.refused)
            QVERIFY(report.refusal_line > 0 && swatches.count() == 0);
        else
            QCOMPARE(patchTexts(swatches), patchTexts(patches));
    }

    void aListWithAGapIsRefused_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<int>("line");
        QTest::addColumn<QString>("reason");
        const QByteArray lab = "SAMPLE_NAME LAB_L LAB_A LAB_B";
        QTest::newRow("no number") << table(lab, {"a 1 2 3", "b nan 2 3", "c 1 2 3"}) << 9
                                   << "the patch 'b' has no usable colour, and the list is of no use without it";
        QTest::newRow("infinite") << table(lab, {"a 1 2 3", "b 1 2 3", "c 1 inf 3"}) << 10
                                  << "the patch 'c' has no usable colour, and the list is of no use without it";
        QTest::newRow("broken instrument")
            << table(lab, {"a 1 2 1.#IND00"}) << 8
            << "the patch 'a' has no usable colour, and the list is of no use without it";
        QTest::newRow("short row") << table(lab, {"a 1 2 3", "b 1 2", "c 1 2 3"}) << 9 << "without this row";
        QTest::newRow("device values only") << table("SAMPLE_NAME CMYK_C CMYK_M CMYK_Y CMYK_K", {"a 1 2 3 4"}) << 4
                                            << "there are no columns of Lab or XYZ";
        QTest::newRow("no rows") << table(lab, {}) << 7 << "there are no rows";
        QTest::newRow("cut") << table(lab, {"a 1 2 3", "b 4 5 66"}).chopped(10) << 9 << "without this row";
        QTest::newRow("empty") << QByteArray() << 0 << "the file is empty";
    }
    void aListWithAGapIsRefused()
    {
        QFETCH(QByteArray, text);
        QFETCH(int, line);
        QFETCH(QString, reason);
        CgatsReport report;
        const TAVICOMBOCOLOUR_CC swatches = readText(text, report);
        QCOMPARE(swatches.count(), size_t(0));
        QVERIFY(report.refused);
        QVERIFY2(QString::fromStdString(report.refusal_reason).contains(reason), report.refusal_reason.c_str());
        QCOMPARE(int(report.refusal_line), line);
    }

    void refusalsAreLoggedInOneLine()
    {
        expectLog("iso12642: SwatchImporter::import: /nowhere/file: cannot be read: No such file or directory");
        QVERIFY(!SwatchImporter::import("/nowhere/file", SWATCHTYPE_CGATS, 0));
        expectLog("iso12642: SwatchImporter::import: /nowhere/file: swatches of type 0 cannot be read");
        QVERIFY(!SwatchImporter::import("/nowhere/file", static_cast<SWATCHTYPE>(0), 0));
    }

    void aReportIsMadeAnew()
    {
        CgatsReport report;
        report.refuse(7, "before");
        report.doubt(1, "before");
        const std::string path = dataFile("cgats/plain.txt").toStdString();
        QVERIFY(TAVICOMBOCOLOUR_CC(SwatchImporter::import(path, SWATCHTYPE_CGATS, 0, report)).count() == 3);
        QVERIFY(!report.refused && report.doubts.empty());
        report.doubt(1, "before");
        QVERIFY(!SwatchImporter::import(path, static_cast<SWATCHTYPE>(0), 0, report));
        QVERIFY(report.refused && report.doubts.empty());
        QCOMPARE(report.path, path);
    }

    void wrongCellsOfOwnColumnsAreDoubts_data()
    {
        QTest::addColumn<QByteArray>("fields");
        QTest::addColumn<QByteArray>("cells");
        QTest::addColumn<QString>("doubt");
        const auto row = [](const char *fields, const char *cells, const char *doubt) {
            QTest::addRow("%s: %s", fields, cells) << QByteArray(fields) << QByteArray(cells) << QString(doubt);
        };
        const char *marks = "; the patch keeps the marks of its device values";
        const char *device = "; the patch has no device values";
        row("TAVI_MARKS", "X", qPrintable(QString("8: TAVI_MARKS is 'X'") + marks));
        row("TAVI_MARKS", "P-", qPrintable(QString("8: TAVI_MARKS is 'P-'") + marks));
        row("TAVI_MARKS", "p", qPrintable(QString("8: TAVI_MARKS is 'p'") + marks));
        row("TAVI_MARKS", "PCMYKG", "");
        row("TAVI_MARKS", "-", "");
        row("TAVI_TOLERANCE_E", "-1", "8: TAVI_TOLERANCE_E is '-1'; the patch has no such tolerance");
        row("TAVI_TOLERANCE_H", "nan", "8: TAVI_TOLERANCE_H is 'nan'; the patch has no such tolerance");
        row("TAVI_TOLERANCE_C", "1,5", "8: TAVI_TOLERANCE_C is '1,5'; the patch has no such tolerance");
        row("TAVI_TOLERANCE_C", "0", "");
        row("TAVI_DEVICE_MODEL", "rgb", qPrintable(QString("8: TAVI_DEVICE_MODEL is 'rgb'") + device));
        row("TAVI_DEVICE_MODEL TAVI_DEVICE_1", "cielab 1",
            qPrintable(QString("8: TAVI_DEVICE_MODEL is 'cielab'") + device));
        row("TAVI_DEVICE_MODEL TAVI_DEVICE_1", "gray x", qPrintable(QString("8: TAVI_DEVICE_1 is 'x'") + device));
        row("TAVI_DEVICE_MODEL TAVI_DEVICE_1", "gray 1,5", qPrintable(QString("8: TAVI_DEVICE_1 is '1,5'") + device));
        row("TAVI_DEVICE_MODEL TAVI_DEVICE_1", "gray 1e39",
            qPrintable(QString("8: TAVI_DEVICE_1 is '1e39'") + device));
        row("GRAY", "3.5e38", qPrintable(QString("8: GRAY is '3.5e38', which is no usable number") + device));
        row("GRAY", "3.4e38", "");
        row("GRAY", "-1e39", qPrintable(QString("8: GRAY is '-1e39', which is no usable number") + device));
        row("TAVI_DEVICE_MODEL TAVI_DEVICE_1 TAVI_DEVICE_2", "gray 1 2",
            qPrintable(QString("8: TAVI_DEVICE_MODEL is 'gray'") + device));
        row("TAVI_DEVICE_MODEL TAVI_DEVICE_1 TAVI_DEVICE_2", "gray 1 -", "");
        row("TAVI_DEVICE_MODEL TAVI_DEVICE_1", "- 5", "");
    }
    void wrongCellsOfOwnColumnsAreDoubts()
    {
        QFETCH(QByteArray, fields);
        QFETCH(QByteArray, cells);
        QFETCH(QString, doubt);
        CgatsReport report;
        const TAVICOMBOCOLOUR_CC swatches =
            readText(table("SAMPLE_NAME LAB_L LAB_A LAB_B " + fields, {"a 90 2 3 " + cells}), report);
        QCOMPARE(swatches.count(), size_t(1));
        QCOMPARE(noteTexts(report.doubts).join('\n'), doubt);
        if (!doubt.isEmpty()) {
            QCOMPARE(swatches.head()->device_model, uint32_t(COMBOCOLOUR_DEVICE_NONE));
            QVERIFY(!calcheckHasOwnTolerances(swatches.head()));
            QCOMPARE(swatches.head()->flags, uint32_t(COMBOCOLOUR_FLAG_LAB));
        }
    }

    void deviceValuesOfTheFormatGoBeforeOurs()
    {
        CgatsReport report;
        const TAVICOMBOCOLOUR_CC swatches =
            readText(table("SAMPLE_NAME RGB_R RGB_G RGB_B LAB_L LAB_A LAB_B TAVI_DEVICE_MODEL TAVI_DEVICE_1",
                           {"a 255 128 0 90 2 3 gray 50"}),
                     report);
        QCOMPARE(swatches.head()->device_model, uint32_t(COMBOCOLOUR_DEVICE_RGB));
        QCOMPARE(swatches.head()->device[1], 128.0F);
    }

    void theOtherImporterReadsOurColumnsToo()
    {
        const MemoryFile file(table("SAMPLE_NAME LAB_L LAB_A LAB_B TAVI_MARKS TAVI_TOLERANCE_E", {"a 90 2 3 P 1.5"}));
        CgatsReport report;
        const TAVICOMBOCOLOUR_CC patches(ISO12642Importer::import(file.path(), 0, report));
        QVERIFY(patches.head()->flags & COMBOCOLOUR_FLAG_PAPER);
        QCOMPARE(DECODE_DELTA_E_TOLERANCE(patches.head()), 1.5);
    }

    void ownColumnsOfLaterMakersArePassedOver()
    {
        CgatsReport report;
        const TAVICOMBOCOLOUR_CC swatches =
            readText(table("SAMPLE_NAME LAB_L LAB_A LAB_B TAVI_LATER tavi_marks", {"a 90 2 3 x P"}), report);
        QCOMPARE(swatches.head()->flags, uint32_t(COMBOCOLOUR_FLAG_LAB));
    }
};

TAVI_TEST_MAIN(TestIso12642Swatches)
#include "tst_iso12642_swatches.moc"
