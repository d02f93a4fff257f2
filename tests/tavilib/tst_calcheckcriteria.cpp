// SPDX-License-Identifier: MIT
#include "tavilib/calcheckcriteria.h"

#include "tests/support/allocfailure.h"
#include "tests/support/tavitest.h"
#include "tests/tavilib/calcheckcharts.h"

#include <QDir>
#include <QTemporaryDir>

#include <random>

#include <sys/stat.h>
#include <unistd.h>

namespace {

const std::string head = "name = mine\nformula = CIE2000\n";

/// An environment variable with another value while this lives; null removes it.
class Variable
{
public:
    Variable(const char *name, const QByteArray &value) : name_(name), was_set_(qEnvironmentVariableIsSet(name))
    {
        before_ = qgetenv(name);
        if (value.isNull())
            qunsetenv(name);
        else
            qputenv(name, value);
    }
    ~Variable()
    {
        if (was_set_)
            qputenv(name_, before_);
        else
            qunsetenv(name_);
    }
    Variable(const Variable &) = delete;
    Variable &operator=(const Variable &) = delete;

private:
    const char *name_;
    bool was_set_;
    QByteArray before_;
};

void write(const QString &path, const QByteArray &text)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("cannot write a file for the test");
}

Criteria parse(const std::string &text, std::string *error = nullptr)
{
    std::string unused;
    return Criteria(calcheckParseCriteria(text, "set.criteria", error ? *error : unused));
}

} // namespace

/// Criteria sets: their files, what is refused, and where they are found.
class TestCalcheckCriteria : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aSetIsReadWithAllItsKeys()
    {
        std::string text =
            "# a comment\n\n  name=mine-1.2_b  \r\nstandard = ISO 12647-7\nedition = 2016 \nsource = x\n"
            "formula = CIE94\n";
        const char *const figures[] = {"paper",   "cyan", "magenta",   "yellow",   "black",
                                       "average", "max",  "deviation", "gray_max", "gray"};
        int number = 0;
        for (const char *delta : {"delta_e", "delta_h", "delta_c"}) {
            for (const char *figure : figures)
                text += std::string(delta) + '.' + figure + " = " + std::to_string(++number) + ".125\n";
        }
        std::string error = "left from before";
        const Criteria set = parse(text, &error);
        QCOMPARE(QString::fromStdString(error), QString());
        QCOMPARE(set->name, "mine-1.2_b");
        QCOMPARE(set->standard, "ISO 12647-7");
        QCOMPARE(set->edition, "2016");
        QCOMPARE(set->delta_e_type, DELTAE_CIE94);
        number = 0;
        for (const CALCHECKLIMITS *limits : {&set->delta_e, &set->delta_h, &set->delta_c}) {
            QCOMPARE(limits->limited, 0x3ffU);
            for (const double limit :
                 {limits->paper, limits->cyan, limits->magenta, limits->yellow, limits->black, limits->average,
                  limits->max, limits->deviation, limits->gray_max, limits->gray})
                QCOMPARE(limit, ++number + 0.125);
        }
    }

    void formulasHaveTheirNames_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("type");
        QTest::newRow("76") << "CIE76" << int(DELTAE_CIE76);
        QTest::newRow("94") << "CIE94" << int(DELTAE_CIE94);
        QTest::newRow("2000") << "CIE2000" << int(DELTAE_CIE2000);
    }
    void formulasHaveTheirNames()
    {
        QFETCH(QString, name);
        QFETCH(int, type);
        const Criteria set = parse("name = a\nformula = " + name.toStdString() + "\ndelta_e.max = 1");
        QCOMPARE(int(set->delta_e_type), type);
        QVERIFY(!set->standard && !set->edition);
    }

    void filesOfOtherSystemsAreRead()
    {
        QVERIFY(parse("\xef\xbb\xbfname = a\r\nformula = CIE76\r\ndelta_e.max = 1\r\n"));
        QVERIFY(parse("name = a\nformula\t=\tCIE76\n\tdelta_e.max\t=\t1"));
    }

    void limitsAtTheEndsOfTheirRange()
    {
        QCOMPARE(parse(head + "delta_e.max = 0")->delta_e.max, 0.0);
        QCOMPARE(parse(head + "delta_e.max = 65.534")->delta_e.max, 65.534);
        QCOMPARE(parse(head + "delta_c.gray = 0.001")->delta_c.gray, 0.001);
        QCOMPARE(parse(head + "delta_c.gray = 2.500")->delta_c.gray, 2.5);
    }

    void whatIsWrongIsRefusedWithLineAndReason_data()
    {
        QTest::addColumn<QByteArray>("text");
        QTest::addColumn<QString>("error");
        const auto row = [](const char *name, const std::string &text, const char *error) {
            QTest::newRow(name) << QByteArray::fromStdString(text) << QString(error);
        };
        row("empty", "", "set.criteria: there is no 'name'");
        row("no name", "formula = CIE76\ndelta_e.max = 1\n", "set.criteria: there is no 'name'");
        row("no formula", "name = a\ndelta_e.max = 1\n", "set.criteria: there is no 'formula'");
        row("no limits", head, "set.criteria: there are no limits");
        row("unknown key", head + "delta_e.papre = 3", "set.criteria:3: the key 'delta_e.papre' is not known");
        row("unknown delta", head + "delta_x.paper = 3", "set.criteria:3: the key 'delta_x.paper' is not known");
        row("no figure", head + "delta_e = 3", "set.criteria:3: the key 'delta_e' is not known");
        row("empty figure", head + "delta_e. = 3", "set.criteria:3: the key 'delta_e.' is not known");
        row("other key", head + "colour = red", "set.criteria:3: the key 'colour' is not known");
        row("keys are lower case", head + "Delta_E.max = 1", "set.criteria:3: the key 'Delta_E.max' is not known");
        row("no sign", head + "\n# x\ndelta_e.max 3", "set.criteria:5: 'delta_e.max 3' is no 'key = value'");
        row("no value", head + "delta_e.max =", "set.criteria:3: 'delta_e.max' has no value");
        row("no key", head + "= 3", "set.criteria:3: the key '' is not known");
        row("limit twice", head + "delta_e.max = 1\ndelta_e.max = 1",
            "set.criteria:4: 'delta_e.max' stands there twice");
        row("name twice", head + "name = b", "set.criteria:3: 'name' stands there twice");
        row("formula twice", head + "formula = CIE76", "set.criteria:3: 'formula' stands there twice");
        row("edition twice", head + "edition = 1\nedition = 1", "set.criteria:4: 'edition' stands there twice");
        row("source twice", head + "source = 1\nsource = 1", "set.criteria:4: 'source' stands there twice");
        row("formula", "formula = dE", "set.criteria:1: the formula 'dE' is none of CIE76, CIE94 and CIE2000");
        row("word", head + "delta_e.max = three",
            "set.criteria:3: the limit 'three' is no number with a decimal point");
        row("comma", head + "delta_e.max = 2,5", "set.criteria:3: the limit '2,5' is no number with a decimal point");
        row("unit", head + "delta_e.max = 2.5 dE",
            "set.criteria:3: the limit '2.5 dE' is no number with a decimal point");
        row("nan", head + "delta_e.max = nan", "set.criteria:3: the limit 'nan' is outside of 0 to 65.534");
        row("inf", head + "delta_e.max = inf", "set.criteria:3: the limit 'inf' is outside of 0 to 65.534");
        row("negative", head + "delta_e.max = -1", "set.criteria:3: the limit '-1' is outside of 0 to 65.534");
        row("too large", head + "delta_e.max = 65.535",
            "set.criteria:3: the limit '65.535' is outside of 0 to 65.534");
        row("huge", head + "delta_e.max = 1e999",
            "set.criteria:3: the limit '1e999' is no number with a decimal point");
        row("decimals", head + "delta_e.max = 2.5001",
            "set.criteria:3: the limit '2.5001' has more than three decimals");
        const char *bad_name = "has other characters than letters, digits, '.', '_' and '-'";
        row("blank in name", "name = a b", qPrintable(QStringLiteral("set.criteria:1: the name 'a b' ") + bad_name));
        row("path as name", "name = ../a", qPrintable(QStringLiteral("set.criteria:1: the name '../a' ") + bad_name));
        row("dots as name", "name = ..", qPrintable(QStringLiteral("set.criteria:1: the name '..' ") + bad_name));
        row("control characters",
            head
                + "a\x01\x7f"
                  "b",
            "set.criteria:3: 'a  b' is no 'key = value'");
        row("long line", head + std::string(1001, 'x'), "set.criteria:3: the line is longer than 1000 bytes");
        row("long word", head + std::string(50, 'x'),
            "set.criteria:3: 'xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx...' is no 'key = value'");
        row("zero byte", head + std::string("a\0b = 1", 7),
            "set.criteria:3: there is a zero byte; this is no text file");
    }
    void whatIsWrongIsRefusedWithLineAndReason()
    {
        QFETCH(QByteArray, text);
        QFETCH(QString, error);
        std::string found;
        QVERIFY(!parse(text.toStdString(), &found));
        QCOMPARE(QString::fromStdString(found), error);
    }

    void aLineOfTheLongestLengthIsRead()
    {
        const std::string start = "source = ";
        QVERIFY(parse(head + start + std::string(1000 - start.size(), 'x') + "\ndelta_e.max = 1"));
    }

    void damagedTextNeverDoesHarm()
    {
        QFile file(QStringLiteral(TAVI_SHIPPED_CRITERIA "/iso12647-7-2016.criteria"));
        QVERIFY(file.open(QIODevice::ReadOnly));
        const std::string whole = file.readAll().toStdString();
        std::mt19937 random(9);
        int read = 0;
        for (int round = 0; round < 3000; ++round) {
            std::string text = whole;
            for (unsigned i = random() % 4; i < 4; ++i) {
                const size_t at = random() % text.size();
                switch (random() % 3) {
                case 0:
                    text[at] = static_cast<char>(random());
                    break;
                case 1:
                    text.erase(at, random() % 20);
                    break;
                default:
                    text.insert(at, whole, random() % whole.size(), random() % 30);
                }
            }
            std::string error;
            const Criteria set = parse(text, &error);
            QCOMPARE(!set, !error.empty());
            QVERIFY(error.find('\n') == std::string::npos);
            read += set != nullptr;
        }
        QVERIFY(read > 100 && read < 2900);
    }

    void withoutMemoryASetIsRefused()
    {
        const std::string text = head + "standard = a\nedition = b\ndelta_e.max = 1\n";
        for (int number = 1; number <= 4; ++number) {
            AllocFailure failure(number);
            std::string error;
            QVERIFY(!parse(text, &error));
            QVERIFY(failure.happened());
            QVERIFY(error.ends_with("out of memory"));
        }
        AllocFailure failure(5);
        QVERIFY(parse(text));
        QVERIFY(!failure.happened());
    }

    void shippedSetsHaveTheirLimits_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("edition");
        QTest::addColumn<int>("type");
        QTest::addColumn<QStringList>("limits");
        QTest::newRow("2016") << "iso12647-7-2016"
                              << "2016" << int(DELTAE_CIE2000)
                              << QStringList{"E paper 3",     "E cyan 3",      "E magenta 3", "E yellow 3",
                                             "E black 3",     "E average 2.5", "E max 5",     "H cyan 2.5",
                                             "H magenta 2.5", "H yellow 2.5",  "C gray 2",    "C gray_max 3.5"};
        QTest::newRow("2007") << "iso12647-7-2007"
                              << "2007" << int(DELTAE_CIE76)
                              << QStringList{"E paper 3",     "E cyan 5",     "E magenta 5", "E yellow 5",
                                             "E black 5",     "E average 3",  "E max 6",     "H cyan 2.5",
                                             "H magenta 2.5", "H yellow 2.5", "H black 2.5", "H gray 1.5"};
    }
    void shippedSetsHaveTheirLimits()
    {
        QFETCH(QString, name);
        QFETCH(QString, edition);
        QFETCH(int, type);
        QFETCH(QStringList, limits);
        std::string error;
        const Criteria set(calcheckFindCriteria(name.toStdString(), error));
        QVERIFY2(set, error.c_str());
        QCOMPARE(QString(set->name), name);
        QCOMPARE(set->standard, "ISO 12647-7");
        QCOMPARE(QString(set->edition), edition);
        QCOMPARE(int(set->delta_e_type), type);
        QStringList found;
        const std::pair<const char *, const CALCHECKLIMITS *> deltas[] = {
            {"E", &set->delta_e}, {"H", &set->delta_h}, {"C", &set->delta_c}};
        for (const auto &[delta, l] : deltas) {
            const std::tuple<uint32_t, const char *, double> figures[] = {
                {CALCHECK_PAPER, "paper", l->paper},
                {CALCHECK_CYAN, "cyan", l->cyan},
                {CALCHECK_MAGENTA, "magenta", l->magenta},
                {CALCHECK_YELLOW, "yellow", l->yellow},
                {CALCHECK_BLACK, "black", l->black},
                {CALCHECK_AVERAGE, "average", l->average},
                {CALCHECK_MAX, "max", l->max},
                {CALCHECK_DEVIATION, "deviation", l->deviation},
                {CALCHECK_GRAY, "gray", l->gray},
                {CALCHECK_GRAY_MAX, "gray_max", l->gray_max}};
            for (const auto &[bit, figure, limit] : figures) {
                if (l->limited & bit)
                    found << QStringLiteral("%1 %2 %3").arg(delta, figure).arg(limit);
            }
        }
        QCOMPARE(found, limits);
        const CALCHECKCRITERIA *standard = calcheckCriteriaFor(static_cast<DELTAE_TYPE>(type));
        QCOMPARE(QString(standard->name), name);
        QCOMPARE(calcheckCriteriaFor(static_cast<DELTAE_TYPE>(type)), standard);
    }

    void cie94HasNoSet() { QVERIFY(!calcheckCriteriaFor(DELTAE_CIE94)); }

    void setsAreFoundByNameAndByFile()
    {
        QTemporaryDir folder;
        write(folder.filePath("sets/mine.criteria"), "name = mine\nformula = CIE76\ndelta_e.max = 1\n");
        write(folder.filePath("other.criteria"), "name = other-name\nformula = CIE76\ndelta_e.max = 2\n");
        const Variable path("TAVI_CRITERIA_PATH", folder.filePath("sets").toUtf8());
        std::string error;
        QCOMPARE(Criteria(calcheckFindCriteria("mine", error))->delta_e.max, 1.0);
        // A file may be called otherwise than the set in it, but not where sets are looked for by name.
        QCOMPARE(Criteria(calcheckFindCriteria(folder.filePath("other.criteria").toStdString(), error))->name,
                 "other-name");
        QDir::setCurrent(folder.path());
        QCOMPARE(Criteria(calcheckFindCriteria("other.criteria", error))->name, "other-name");
        QCOMPARE(Criteria(calcheckFindCriteria("./other.criteria", error))->name, "other-name");
        QVERIFY(!Criteria(calcheckFindCriteria("other", error)));
        QDir::setCurrent(QDir::rootPath());
        QCOMPARE(QString::fromStdString(error),
                 "there is no criteria set 'other' in " + folder.filePath("sets") + "; there are mine");
    }

    void aFileOfAnotherSetsNameIsRefused()
    {
        QTemporaryDir folder;
        write(folder.filePath("strict.criteria"), "name = iso12647-7-2016\nformula = CIE76\ndelta_e.max = 60\n");
        const Variable path("TAVI_CRITERIA_PATH", folder.path().toUtf8());
        std::string error;
        QVERIFY(!Criteria(calcheckFindCriteria("strict", error)));
        QCOMPARE(QString::fromStdString(error),
                 folder.filePath("strict.criteria") + ": the set in it is called 'iso12647-7-2016'");
    }

    void foldersComeInTheirOrder()
    {
        QTemporaryDir folder;
        const Variable none("TAVI_CRITERIA_PATH", QByteArray());
        const Variable home("HOME", folder.filePath("home").toUtf8());
        const Variable data_home("XDG_DATA_HOME", folder.filePath("data").toUtf8());
        const Variable system("XDG_DATA_DIRS", (folder.filePath("s1") + "::" + folder.filePath("s2")).toUtf8());
        const auto names = [] {
            QStringList list;
            for (const std::string &name : calcheckCriteriaFolders())
                list << QString::fromStdString(name);
            return list;
        };
        QStringList found = names();
        QVERIFY(!found.isEmpty());
        QCOMPARE(QFileInfo(found.takeFirst()).canonicalFilePath(),
                 QFileInfo(QStringLiteral(TAVI_SHIPPED_CRITERIA)).canonicalFilePath());
        const QStringList system_folders = {folder.filePath("s1/taviwidgets/criteria"),
                                            folder.filePath("s2/taviwidgets/criteria")};
        QCOMPARE(found, QStringList{folder.filePath("data/taviwidgets/criteria")} + system_folders);
        {
            const Variable no_data_home("XDG_DATA_HOME", QByteArray());
            QCOMPARE(names().mid(1),
                     QStringList{folder.filePath("home/.local/share/taviwidgets/criteria")} + system_folders);
            const Variable no_home("HOME", QByteArray());
            QCOMPARE(names().mid(1), system_folders);
        }
        const Variable no_system("XDG_DATA_DIRS", QByteArray());
        QCOMPARE(names().mid(2),
                 (QStringList{"/usr/local/share/taviwidgets/criteria", "/usr/share/taviwidgets/criteria"}));
        const Variable instead("TAVI_CRITERIA_PATH", "/a::/b/");
        QCOMPARE(names(), (QStringList{"/a", "/b/"}));
    }

    void nobodyTakesTheNameOfAShippedSet()
    {
        QTemporaryDir folder;
        const Variable none("TAVI_CRITERIA_PATH", QByteArray());
        const Variable data_home("XDG_DATA_HOME", folder.path().toUtf8());
        const QByteArray set = "\nformula = CIE2000\ndelta_e.max = 60\n";
        write(folder.filePath("taviwidgets/criteria/iso12647-7-2016.criteria"), "name = iso12647-7-2016" + set);
        write(folder.filePath("taviwidgets/criteria/mine.criteria"), "name = mine" + set);
        write(folder.filePath("taviwidgets/criteria/notes.txt"), "no set");
        write(folder.filePath("taviwidgets/criteria/.criteria"), "no set");
        QDir(folder.path()).mkpath("taviwidgets/criteria/folder.criteria");
        std::string error;
        QCOMPARE(Criteria(calcheckFindCriteria("iso12647-7-2016", error))->delta_e.max, 5.0);
        QCOMPARE(Criteria(calcheckFindCriteria("mine", error))->delta_e.max, 60.0);
        const std::vector<std::string> names = calcheckCriteriaNames();
        QCOMPARE(names, (std::vector<std::string>{"iso12647-7-2007", "iso12647-7-2016", "mine"}));
    }

    void aFileThatCannotBeReadIsRefused()
    {
        QTemporaryDir folder;
        const auto error = [&](const QString &name) {
            std::string text = "unset";
            const Criteria set(calcheckReadCriteria(folder.filePath(name).toStdString(), text));
            return set ? QString("read") : QString::fromStdString(text).remove(folder.path() + '/');
        };
        QCOMPARE(error("missing"), QString("missing: cannot be read: No such file or directory"));
        QDir(folder.path()).mkdir("folder");
        QCOMPARE(error("folder"), QString("folder: is no regular file"));
        QCOMPARE(mkfifo(folder.filePath("pipe").toUtf8().constData(), 0600), 0);
        QCOMPARE(error("pipe"), QString("pipe: is no regular file"));
        const QByteArray set = QByteArray::fromStdString(head) + "delta_e.max = 1\n";
        QByteArray long_set = set + QByteArray((64 << 10) - set.size(), '\n');
        write(folder.filePath("long"), long_set);
        QCOMPARE(error("long"), QString("read"));
        write(folder.filePath("longer"), long_set + '\n');
        QCOMPARE(error("longer"), QString("longer: has more than 65536 bytes"));
        write(folder.filePath("wrong"), "name = a\nx\n");
        QCOMPARE(error("wrong"), QString("wrong:2: 'x' is no 'key = value'"));
        if (geteuid() != 0) { // who may read everything
            write(folder.filePath("closed"), set);
            QVERIFY(QFile::setPermissions(folder.filePath("closed"), QFile::Permissions()));
            QCOMPARE(error("closed"), QString("closed: cannot be read: Permission denied"));
        }
    }
};

TAVI_TEST_MAIN(TestCalcheckCriteria)
#include "tst_calcheckcriteria.moc"
