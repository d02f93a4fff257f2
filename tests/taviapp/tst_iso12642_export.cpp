// SPDX-License-Identifier: MIT
#include "taviapp/comboflags_p.h"
#include "taviapp/iso12642.h"
#include "taviapp/iso12642text_p.h"
#include "tavilib/calcheck.h"
#include "tavilib/tavialloc_p.h"
#include "tavilib/tavistring.h"
#include "tests/support/tavitest.h"
#include "tests/taviapp/patchtext.h"

#include <QDir>
#include <QTemporaryDir>

#include <cmath>
#include <csignal>
#include <lcms2.h>
#include <random>

#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

TAVICOMBOCOLOUR *newPatch(const char *name, double L, double a, double b)
{
    auto *patch = TaviAllocRecord<TAVICOMBOCOLOUR>();
    patch->name = AllocateAndCopyStringConst(name);
    patch->flags = COMBOCOLOUR_FLAG_LAB;
    patch->L = L;
    patch->a = a;
    patch->b = b;
    patch->percent = 100;
    return patch;
}

void setDevice(TAVICOMBOCOLOUR *patch, uint32_t model, std::initializer_list<float> values)
{
    patch->device_model = model;
    patch->device_count = 0;
    for (const float value : values) {
        const uint32_t i = patch->device_count++;
        (i < 4 ? patch->device[i] : patch->device_extra[i - 4]) = value;
    }
}

/// patchText() and the tolerances.
QStringList wholeTexts(const TAVICOMBOCOLOUR_CC &patches)
{
    QStringList texts;
    for (const TAVICOMBOCOLOUR *patch = patches.head(); patch; patch = NextInList(patch)) {
        QString text = patchText(*patch);
        for (const double tolerance :
             {DECODE_DELTA_E_TOLERANCE(patch), DECODE_DELTA_H_TOLERANCE(patch), DECODE_DELTA_C_TOLERANCE(patch)})
            text += QLatin1Char(' ') + numberText(tolerance);
        texts.append(text);
    }
    return texts;
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("cannot be read");
}

bool write(const TAVICOMBOCOLOUR_CC &patches, const QString &path, std::string &error)
{
    return ExportISO12642::exportColours(patches, path.toStdString(), nullptr, ExportISO12642::lab, error);
}

/// Writes and reads. A refusal, a doubt or an assumption fails the test.
TAVICOMBOCOLOUR_CC thereAndBack(const TAVICOMBOCOLOUR_CC &patches)
{
    // In memory where that can be: a file that is safe on a disk takes its time, a thousand times.
    static const QTemporaryDir folder(QDir("/dev/shm").exists() ? QString("/dev/shm/tst_iso12642_export-XXXXXX")
                                                                : QDir::tempPath() + "/tst_iso12642_export-XXXXXX");
    const QString path = folder.filePath("file.txt");
    std::string error;
    if (!write(patches, path, error)) {
        qWarning("%s", error.c_str());
        return {};
    }
    CgatsReport report;
    TAVICOMBOCOLOUR_CC back(SwatchImporter::import(path.toStdString(), SWATCHTYPE_CGATS, 0, report));
    if (report.refused || !report.assumptions.empty())
        qWarning("%s\n%s\n%s", report.refusalText().c_str(), qPrintable(noteTexts(report.assumptions).join('\n')),
                 contents(path).left(2000).constData());
    return back;
}

} // namespace

/// The exporter of patches: what it writes reads back as it was.
class TestIso12642Export : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theFileLooksAsOthersExpectIt()
    {
        TAVICOMBOCOLOUR_CC patches;
        patches.insertCombo(newPatch("paper", 95.25, -0.5, 1e-7));
        setDevice(patches.head(), COMBOCOLOUR_DEVICE_CMYK, {0, 0, 0, 0});
        patches.head()->flags |= COMBOCOLOUR_FLAG_PAPER;
        TAVICOMBOCOLOUR *second = newPatch("say \"cyan\"", 55, -37, -50);
        setDevice(second, COMBOCOLOUR_DEVICE_CMYK, {99.9F, 0, 0, 12.5F});
        patches.insertCombo(second);
        SPECTROPHOTOMETERINFO instrument = {};
        char name[] = "Spectro \"X\"";
        instrument.name = name;
        std::string error = "left";
        QCOMPARE(QString::fromStdString(iso12642Text(patches.head(), &instrument, error)),
                 QString("CGATS.17\nORIGINATOR \"libtaviwidgets\"\nINSTRUMENTATION \"Spectro \"\"X\"\"\"\n"
                         "WEIGHTING_FUNCTION \"ILLUMINANT, D50\"\nWEIGHTING_FUNCTION \"OBSERVER, 2 degree\"\n"
                         "NUMBER_OF_FIELDS 9\nBEGIN_DATA_FORMAT\n"
                         "SAMPLE_ID SAMPLE_NAME CMYK_C CMYK_M CMYK_Y CMYK_K LAB_L LAB_A LAB_B\n"
                         "END_DATA_FORMAT\nNUMBER_OF_SETS 2\nBEGIN_DATA\n"
                         "1 \"paper\" 0 0 0 0 95.25 -0.5 1e-07\n"
                         "2 \"say \"\"cyan\"\"\" 99.9 0 0 12.5 55 -37 -50\n"
                         "END_DATA\n"));
        QVERIFY(error.empty());
        QCOMPARE(wholeTexts(thereAndBack(patches)), wholeTexts(patches));
    }

    void ownColumnsStandOnlyWhereTheyAreNeeded()
    {
        TAVICOMBOCOLOUR_CC patches;
        patches.insertCombo(newPatch("a", 50, 0, 0));
        patches.insertCombo(newPatch("b", 60, 0, 0));
        std::string error;
        QVERIFY(iso12642Text(patches.head(), nullptr, error).find("TAVI_") == std::string::npos);
        patches.head()->flags |= COMBOCOLOUR_FLAG_PAPER | COMBOCOLOUR_FLAG_GREY;
        ENCODE_DELTA_H_TOLERANCE(patches.head(), 2.5);
        const QString text = QString::fromStdString(iso12642Text(patches.head(), nullptr, error));
        QVERIFY(text.contains("KEYWORD \"TAVI_MARKS\"\nKEYWORD \"TAVI_TOLERANCE_E\"\n"));
        QVERIFY(text.contains("SAMPLE_ID SAMPLE_NAME LAB_L LAB_A LAB_B TAVI_MARKS TAVI_TOLERANCE_E TAVI_TOLERANCE_H "
                              "TAVI_TOLERANCE_C\n"));
        QVERIFY(text.contains("1 \"a\" 50 0 0 PG - 2.5 -\n2 \"b\" 60 0 0 - - - -\n"));
        QCOMPARE(wholeTexts(thereAndBack(patches)), wholeTexts(patches));
    }

    void patchesWithAndWithoutDeviceValuesComeBack()
    {
        TAVICOMBOCOLOUR_CC patches;
        const auto add = [&](const char *name, uint32_t model, std::initializer_list<float> values) {
            TAVICOMBOCOLOUR *patch = newPatch(name, 50, 1, 2);
            setDevice(patch, model, values);
            patch->flags |= taviReferenceFlags(*patch);
            patches.insertCombo(patch);
        };
        add("cyan", COMBOCOLOUR_DEVICE_CMYK, {100, 0, 0, 0});
        add("six", COMBOCOLOUR_DEVICE_NCLR, {1, 2, 3, 4, 5, 0.1F});
        add("none", COMBOCOLOUR_DEVICE_NONE, {});
        add("red", COMBOCOLOUR_DEVICE_RGB, {255, 0, 0});
        add("grey", COMBOCOLOUR_DEVICE_GRAY, {33.3F});
        add("cmy", COMBOCOLOUR_DEVICE_CMY, {10, 20, 30});
        std::string error;
        const QString text = QString::fromStdString(iso12642Text(patches.head(), nullptr, error));
        QVERIFY(text.contains("SAMPLE_NAME TAVI_DEVICE_MODEL TAVI_DEVICE_1 TAVI_DEVICE_2 TAVI_DEVICE_3 TAVI_DEVICE_4 "
                              "TAVI_DEVICE_5 TAVI_DEVICE_6 LAB_L"));
        QVERIFY(text.contains("\"none\" - - - - - - - 50"));
        QVERIFY(!text.contains("TAVI_MARKS"));
        const TAVICOMBOCOLOUR_CC back = thereAndBack(patches);
        QCOMPARE(wholeTexts(back), wholeTexts(patches));
        QVERIFY(back.head()->flags & COMBOCOLOUR_FLAG_CYAN);
    }

    void everyKindOfDeviceValuesHasItsColumns_data()
    {
        QTest::addColumn<uint>("model");
        QTest::addColumn<int>("count");
        QTest::addColumn<QString>("fields");
        QTest::newRow("gray") << uint(COMBOCOLOUR_DEVICE_GRAY) << 1 << " GRAY ";
        QTest::newRow("rgb") << uint(COMBOCOLOUR_DEVICE_RGB) << 3 << " RGB_R RGB_G RGB_B ";
        QTest::newRow("cmy") << uint(COMBOCOLOUR_DEVICE_CMY) << 3 << " CMY_C CMY_M CMY_Y ";
        QTest::newRow("cmyk") << uint(COMBOCOLOUR_DEVICE_CMYK) << 4 << " CMYK_C CMYK_M CMYK_Y CMYK_K ";
        for (int count = 1; count <= 8; ++count)
            QTest::addRow("nclr%d", count)
                << uint(COMBOCOLOUR_DEVICE_NCLR) << count << QStringLiteral(" %1CLR_1 ").arg(count);
    }
    void everyKindOfDeviceValuesHasItsColumns()
    {
        QFETCH(uint, model);
        QFETCH(int, count);
        QFETCH(QString, fields);
        TAVICOMBOCOLOUR_CC patches;
        for (int i = 0; i < 3; ++i) {
            TAVICOMBOCOLOUR *patch = newPatch("p", 50, 0, 0);
            patch->device_model = model;
            patch->device_count = uint32_t(count);
            for (int j = 0; j < count; ++j)
                (j < 4 ? patch->device[j] : patch->device_extra[j - 4]) = float(7 * i + j) / 3;
            patches.insertCombo(patch);
        }
        std::string error;
        const QString text = QString::fromStdString(iso12642Text(patches.head(), nullptr, error));
        QVERIFY2(text.contains(fields), qPrintable(text));
        QVERIFY(!text.contains("TAVI_DEVICE"));
        QCOMPARE(wholeTexts(thereAndBack(patches)), wholeTexts(patches));
    }

    /// Of all floats just one is lost in its shortest form, where that is read as a double first.
    void theFloatThatRoundsTwiceComesBack()
    {
        TAVICOMBOCOLOUR_CC patches;
        patches.insertCombo(newPatch("p", 50, 0, 0));
        const float value = 0x1.5c87fap-84F; // 7.038531e-26
        setDevice(patches.head(), COMBOCOLOUR_DEVICE_GRAY, {value});
        const TAVICOMBOCOLOUR_CC back = thereAndBack(patches);
        QVERIFY(back.head()->device[0] == value);
    }

    void impossibleDeviceValuesAreLeftOut()
    {
        TAVICOMBOCOLOUR_CC patches;
        const std::pair<uint32_t, uint32_t> odd[] = {{COMBOCOLOUR_DEVICE_CMYK, 3},
                                                     {COMBOCOLOUR_DEVICE_NCLR, 9},
                                                     {COMBOCOLOUR_DEVICE_NCLR, 0},
                                                     {COMBOCOLOUR_DEVICE_RGB, 4},
                                                     {77, 1},
                                                     {COMBOCOLOUR_DEVICE_GRAY, 0xffffffff}};
        for (const auto &[model, count] : odd) {
            TAVICOMBOCOLOUR *patch = newPatch("odd", 50, 0, 0);
            patch->device_model = model;
            patch->device_count = count;
            patch->device[0] = std::nanf("");
            patches.insertCombo(patch);
        }
        const TAVICOMBOCOLOUR_CC back = thereAndBack(patches);
        QCOMPARE(back.count(), size_t(6));
        for (const TAVICOMBOCOLOUR *patch = back.head(); patch; patch = NextInList(patch))
            QCOMPARE(patch->device_model, uint32_t(COMBOCOLOUR_DEVICE_NONE));
    }

    /// What is marked by hand stays so, whatever the device values say.
    void marksOfTheListGoBeforeThoseOfTheDeviceValues()
    {
        TAVICOMBOCOLOUR_CC patches;
        patches.insertCombo(newPatch("cyan that is none", 50, 0, 0));
        setDevice(patches.head(), COMBOCOLOUR_DEVICE_CMYK, {100, 0, 0, 0});
        QCOMPARE(wholeTexts(thereAndBack(patches)), wholeTexts(patches));
        patches.head()->flags |= COMBOCOLOUR_FLAG_BLACK | COMBOCOLOUR_FLAG_MAGENTA | COMBOCOLOUR_FLAG_YELLOW;
        QCOMPARE(wholeTexts(thereAndBack(patches)), wholeTexts(patches));
    }

    void tolerancesThatASetFilledInAreNotTheCharts()
    {
        CALCHECKCHART *chart = CALCHECKCHART_CC::newChart();
        chart->reference = newPatch("a", 50, 0, 0);
        AddList(&chart->reference, newPatch("b", 50, 0, 0));
        CALCHECKCRITERIA set = {};
        set.delta_e_type = chart->delta_e_type;
        set.delta_e.limited = CALCHECK_MAX;
        set.delta_e.max = 5;
        ENCODE_DELTA_E_TOLERANCE(chart->reference, 1);
        calcheckFillTolerances(chart, &set);
        const TAVICOMBOCOLOUR_CC patches(std::exchange(chart->reference, nullptr));
        TaviPacketFreeItem(chart, TAVIPACKET_CALCHECKCHART);
        const TAVICOMBOCOLOUR_CC back = thereAndBack(patches);
        QCOMPARE(DECODE_DELTA_E_TOLERANCE(back.head()), 1.0);
        QVERIFY(!calcheckHasOwnTolerances(NextInList(back.head())));
        QVERIFY(std::isinf(DECODE_DELTA_E_TOLERANCE(NextInList(back.head()))));
    }

    void namesComeBack_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("expected");
        const auto same = [](const char *row, const QByteArray &name) {
            QTest::newRow(row) << name << name;
        };
        same("plain", "A1");
        same("blanks", "  light  cyan ");
        same("quote", "\"");
        same("quotes", "\"\"");
        same("in quotes", "\"cyan\"");
        same("quote and blank", "\" ");
        same("quote at the end", "5\"");
        same("hash", "#1");
        same("keyword", "END_DATA");
        same("number", "-12.5");
        same("no number", "nan");
        same("tavi", "-");
        same("utf-8", "Grün 青 \xf0\x9f\x8e\xa8");
        same("html", "<b>&amp;</b>");
        QTest::newRow("tab and line ends") << QByteArray("a\tb\nc\rd") << QByteArray("a b c d");
        QTest::newRow("control characters") << QByteArray("\x01x\x1f\x7f") << QByteArray(" x  ");
        QTest::newRow("latin-1") << QByteArray("Gr\xfcn") << QByteArray("Gr\xc3\xbcn");
        QTest::newRow("unnamed is numbered") << QByteArray("") << QByteArray("1");
        same("16384", QByteArray(16384, 'n'));
        QTest::newRow("16385") << QByteArray(16385, 'n') << QByteArray(16384, 'n');
        QTest::newRow("a million") << QByteArray(1000000, 'm') << QByteArray(16384, 'm');
        QTest::newRow("a million quotes") << QByteArray(1000000, '"') << QByteArray(8192, '"');
        QTest::newRow("cut at a character")
            << "x" + QByteArray("ü").repeated(10000) << "x" + QByteArray("ü").repeated(8191);
        QTest::newRow("cut before a quote") << QByteArray(16383, 'q') + "\"\"" << QByteArray(16383, 'q');
    }
    void namesComeBack()
    {
        QFETCH(QByteArray, name);
        QFETCH(QByteArray, expected);
        TAVICOMBOCOLOUR_CC patches;
        patches.insertCombo(newPatch(name.constData(), 50, 0, 0));
        patches.insertCombo(newPatch("next", 60, 0, 0));
        const TAVICOMBOCOLOUR_CC back = thereAndBack(patches);
        QCOMPARE(back.count(), size_t(2));
        QCOMPARE(QByteArray(back.head()->name), expected);
        QCOMPARE(QByteArray(NextInList(back.head())->name), QByteArray("next"));
    }

    void aNullNameIsNumberedToo()
    {
        TAVICOMBOCOLOUR_CC patches;
        patches.insertCombo(newPatch("first", 50, 0, 0));
        TAVICOMBOCOLOUR *nameless = newPatch("", 60, 0, 0);
        std::free(std::exchange(nameless->name, nullptr));
        patches.insertCombo(nameless);
        QCOMPARE(QByteArray(NextInList(thereAndBack(patches).head())->name), QByteArray("2"));
    }

    void whatWouldNotComeBackIsNotWritten_data()
    {
        QTest::addColumn<int>("field"); // L a b, device 0, device 5, mark
        QTest::addColumn<double>("value");
        QTest::addColumn<QString>("reason");
        const char *fields[] = {"L", "a", "b", "first device value", "sixth device value"};
        for (int field = 0; field < 5; ++field) {
            for (const double value : {std::nan(""), HUGE_VAL, -HUGE_VAL})
                QTest::addRow("%s %f", fields[field], value)
                    << field << value
                    << (field < 3 ? "has a Lab value that is no finite number"
                                  : "has a device value that is no finite number");
        }
        QTest::newRow("no colour") << 5 << 0.0 << "has no Lab value";
    }
    void whatWouldNotComeBackIsNotWritten()
    {
        QFETCH(int, field);
        QFETCH(double, value);
        QFETCH(QString, reason);
        TAVICOMBOCOLOUR_CC patches;
        patches.insertCombo(newPatch("sound", 50, 0, 0));
        TAVICOMBOCOLOUR *patch = newPatch("bad\nname", 50, 0, 0);
        setDevice(patch, COMBOCOLOUR_DEVICE_NCLR, {1, 2, 3, 4, 5, 6});
        patches.insertCombo(patch);
        if (field < 3)
            (field == 0 ? patch->L : field == 1 ? patch->a : patch->b) = value;
        else if (field < 5)
            (field == 3 ? patch->device[0] : patch->device_extra[1]) = float(value);
        else
            patch->flags = 0;
        QTemporaryDir folder;
        const QString path = folder.filePath("file.txt");
        std::string error;
        QVERIFY(!write(patches, path, error));
        QCOMPARE(QString::fromStdString(error), path + ": patch 2, 'bad name', " + reason);
        QVERIFY(QDir(folder.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).isEmpty());
    }

    void refusalsAreLoggedInOneLine()
    {
        TAVICOMBOCOLOUR_CC patches;
        expectLog("iso12642: exportColours: /nowhere/x: there are no patches");
        QVERIFY(!ExportISO12642::exportColours(patches, "/nowhere/x", nullptr, ExportISO12642::lab));
        patches.insertCombo(newPatch("a", 1, 2, 3));
        expectLog("iso12642: exportColours: /nowhere/x: other colour spaces than Lab cannot be written");
        QVERIFY(!ExportISO12642::exportColours(patches, "/nowhere/x", nullptr, 0x58595A20));
        expectLog("iso12642: exportColours: /nowhere/x: cannot be written: No such file or directory");
        QVERIFY(!ExportISO12642::exportColours(patches, "/nowhere/x", nullptr, ExportISO12642::lab));
        expectLog("iso12642: exportColours: /: is a directory");
        QVERIFY(!ExportISO12642::exportColours(patches, "/", nullptr, ExportISO12642::lab));
        expectLog("iso12642: exportColours: /dev/null: is no regular file");
        QVERIFY(!ExportISO12642::exportColours(patches, "/dev/null", nullptr, ExportISO12642::lab));
    }

    void aFileIsReplacedWhole()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath("file.txt");
        const QString link = folder.filePath("link.txt");
        {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("old") == 3);
        }
        QVERIFY(QFile::link(path, link));
        QCOMPARE(chmod(path.toUtf8().constData(), 0604), 0);
        TAVICOMBOCOLOUR_CC patches;
        patches.insertCombo(newPatch("a", HUGE_VAL, 2, 3));
        std::string error;
        QVERIFY(!write(patches, link, error));
        QCOMPARE(contents(path), QByteArray("old"));
        patches.head()->L = 50;
        QVERIFY(ExportISO12642::exportColours(patches, link.toStdString(), nullptr, ExportISO12642::lab));
        QVERIFY(contents(path).startsWith("CGATS.17\n"));
        QVERIFY(QFileInfo(link).isSymLink());
        struct stat status = {};
        QCOMPARE(stat(path.toUtf8().constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777U, mode_t(0604));
        QCOMPARE(QDir(folder.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size(), 2);
    }

    void aNewFileHasTheUsualRights()
    {
        QTemporaryDir folder;
        TAVICOMBOCOLOUR_CC patches;
        patches.insertCombo(newPatch("a", 1, 2, 3));
        std::string error;
        const mode_t before = umask(027);
        const bool written = write(patches, folder.filePath("file.txt"), error);
        umask(before);
        QVERIFY(written);
        struct stat status = {};
        QCOMPARE(stat(folder.filePath("file.txt").toUtf8().constData(), &status), 0);
        QCOMPARE(status.st_mode & 0777U, mode_t(0640));
    }

    void whatCannotBeFinishedLeavesTheOldFile()
    {
        QTemporaryDir folder;
        const QString path = folder.filePath("file.txt");
        {
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("old") == 3);
        }
        TAVICOMBOCOLOUR_CC patches;
        patches.insertCombo(newPatch("a", 1, 2, 3));
        std::string error;
        // A limit on the size of files stands in for a full disk.
        rlimit before = {};
        QCOMPARE(getrlimit(RLIMIT_FSIZE, &before), 0);
        const rlimit small = {100, before.rlim_max};
        const auto former = signal(SIGXFSZ, SIG_IGN);
        QCOMPARE(setrlimit(RLIMIT_FSIZE, &small), 0);
        const bool written = write(patches, path, error);
        setrlimit(RLIMIT_FSIZE, &before);
        signal(SIGXFSZ, former);
        QVERIFY(!written);
        QCOMPARE(QString::fromStdString(error), path + ": cannot be written: File too large");
        QCOMPARE(contents(path), QByteArray("old"));
        QCOMPARE(QDir(folder.path()).entryList(QDir::NoDotAndDotDot | QDir::AllEntries).size(), 1);
    }

    void aThousandRandomChartsComeBackEqual()
    {
        std::mt19937 random(4711);
        std::uniform_real_distribution<double> lightness(0, 100);
        std::uniform_real_distribution<double> ab(-120, 120);
        std::uniform_real_distribution<float> ink(0, 100);
        const char *const pieces[] = {"a", "Z9",       " ",    "\"",  "#", "ü",  "青",
                                      "-", "END_DATA", "\"\"", "1.5", "'", "<b>"};
        const uint32_t marks[] = {COMBOCOLOUR_FLAG_PAPER,  COMBOCOLOUR_FLAG_CYAN,  COMBOCOLOUR_FLAG_MAGENTA,
                                  COMBOCOLOUR_FLAG_YELLOW, COMBOCOLOUR_FLAG_BLACK, COMBOCOLOUR_FLAG_GREY};
        int with_own_device = 0;
        for (int round = 0; round < 1000; ++round) {
            TAVICOMBOCOLOUR_CC patches;
            const auto kind = random() % 5; // none, all the same, by chance, ...
            const int count = 1 + int(random() % 40);
            for (int i = 0; i < count; ++i) {
                QByteArray name("p");
                for (auto j = random() % 6; j > 0; --j)
                    name += pieces[random() % std::size(pieces)];
                TAVICOMBOCOLOUR *patch = newPatch(name.constData(), lightness(random), ab(random), ab(random));
                if (random() % 10 == 0) // any bits, as long as they are a number
                    patch->b = std::ldexp(ab(random), int(random() % 600) - 300);
                const bool device = kind == 1 || kind == 2 || (kind > 2 && random() % 2);
                if (device) {
                    static constexpr uint32_t models[][2] = {{1, 1}, {3, 3}, {4, 4}, {6, 3}, {5, 2}, {5, 8}};
                    const auto &model = models[kind == 1 || kind == 3 ? 2 : random() % 6];
                    patch->device_model = model[0];
                    patch->device_count = model[1];
                    for (uint32_t j = 0; j < model[1]; ++j) {
                        const float value = random() % 3 ? ink(random) : float(random() % 3) * 50;
                        (j < 4 ? patch->device[j] : patch->device_extra[j - 4]) = value;
                    }
                    patch->flags |= taviReferenceFlags(*patch);
                }
                if (round % 2 && random() % 3 == 0)
                    patch->flags ^= marks[random() % 6];
                if (round % 3 == 0) {
                    if (random() % 2)
                        ENCODE_DELTA_E_TOLERANCE(patch, double(random() % 65535) / 1000);
                    if (random() % 2)
                        ENCODE_DELTA_H_TOLERANCE(patch, double(random() % 65535) / 1000);
                    if (random() % 2)
                        ENCODE_DELTA_C_TOLERANCE(patch, double(random() % 65535) / 1000);
                }
                patches.insertCombo(patch);
            }
            const TAVICOMBOCOLOUR_CC back = thereAndBack(patches);
            QCOMPARE(wholeTexts(back), wholeTexts(patches));
            for (const TAVICOMBOCOLOUR *patch = back.head(); patch; patch = NextInList(patch))
                QCOMPARE(patch->percent, 100);
            std::string error;
            // What is written of what came back is the same file.
            const std::string text = iso12642Text(patches.head(), nullptr, error);
            QCOMPARE(iso12642Text(back.head(), nullptr, error), text);
            with_own_device += text.find("TAVI_DEVICE_MODEL") != std::string::npos;
        }
        QVERIFY(with_own_device > 100);
    }

    /// Little CMS has a reader of its own for these files.
    void anotherReaderReadsTheSameNumbers()
    {
        TAVICOMBOCOLOUR_CC patches;
        for (int i = 0; i < 50; ++i) {
            TAVICOMBOCOLOUR *patch = newPatch("patch \"x\"", 10 + i * 1.1, i / 7.0 - 3, -i / 9.0);
            std::free(patch->name);
            patch->name = AllocateAndCopyStringConst(("patch " + std::to_string(i)).c_str());
            setDevice(patch, COMBOCOLOUR_DEVICE_CMYK, {float(i), 0, float(i) / 3, 0});
            ENCODE_DELTA_E_TOLERANCE(patch, 2.5);
            patches.insertCombo(patch);
        }
        std::string error;
        std::string text = iso12642Text(patches.head(), nullptr, error);
        cmsHANDLE it8 = cmsIT8LoadFromMem(nullptr, text.data(), cmsUInt32Number(text.size()));
        QVERIFY(it8);
        const TAVICOMBOCOLOUR *patch = patches.head();
        for (int i = 0; i < 50; ++i, patch = NextInList(patch)) {
            const auto value = [&](const char *column) {
                return cmsIT8GetDataDbl(it8, QByteArray::number(i + 1).constData(), column);
            };
            QVERIFY(std::abs(value("LAB_L") - patch->L) < 1e-9);
            QVERIFY(std::abs(value("LAB_A") - patch->a) < 1e-9);
            QVERIFY(std::abs(value("LAB_B") - patch->b) < 1e-9);
            QVERIFY(std::abs(value("CMYK_Y") - double(patch->device[2])) < 1e-4);
            QVERIFY(std::abs(value("TAVI_TOLERANCE_E") - 2.5) < 1e-9);
        }
        cmsIT8Free(it8);
    }
};

TAVI_TEST_MAIN(TestIso12642Export)
#include "tst_iso12642_export.moc"
