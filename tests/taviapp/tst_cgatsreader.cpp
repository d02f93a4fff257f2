// SPDX-License-Identifier: MIT
#include "taviapp/cgatsreader.h"
#include "tests/support/tavitest.h"
#include "tests/taviapp/patchtext.h"

#include <QElapsedTimer>
#include <QTemporaryFile>

/// The reader of CGATS tables: structure, cells, limits, lines.
class TestCgatsReader : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction();
    void headerIsKept();
    void aValueEndsWithItsQuote();
    void cellsAreThoseOfTheFile();
    void bytesThatAreNoUtf8AreWindows1252_data();
    void bytesThatAreNoUtf8AreWindows1252();
    void tablesOutliveTheFile();
    void everyTableHasItsOwnHeader();
    void cellBetweenQuotesAndBlanks_data();
    void cellBetweenQuotesAndBlanks();
    void lineNumbersCountEveryKindOfLineEnd_data();
    void lineNumbersCountEveryKindOfLineEnd();
    void structureWordsNeedNoLineOfTheirOwn();
    void nextTableEndsATableWithoutEndData();
    void rowsOverLinesMustComeToTheAnnouncedNumber();
    void rowsOverLinesMayBeCut();
    void rowsOverLinesMayHoldQuotedWords_data();
    void rowsOverLinesMayHoldQuotedWords();
    void commentedAndBlankLinesAreNoRows();
    void bareTableMayHaveMoreLinesThanAHeader();
    void atTheLimitIsRead_data();
    void atTheLimitIsRead();
    void beyondTheLimitIsRefused_data();
    void beyondTheLimitIsRefused();
    void tooBigFileIsRefused();
    void onlySoManyNotesAreKept();
    void firstRefusalHolds();
    void refusalTextIsOneLine();
    void hostileQuotesTakeNoMoreThanLinearTime_data();
    void hostileQuotesTakeNoMoreThanLinearTime();
};

namespace {

CgatsFile parse(const std::string &text, CgatsReport &report, const CgatsLimits &limits = CgatsLimits())
{
    return CgatsFile::parse(text, report, limits);
}

std::string table(const std::string &fields, const std::string &rows)
{
    return "BEGIN_DATA_FORMAT\n" + fields + "\nEND_DATA_FORMAT\nBEGIN_DATA\n" + rows + "END_DATA\n";
}

/// All cells, those of a row joined by '|', rows by '/'.
QString cells(const CgatsTable &table)
{
    QStringList rows;
    for (size_t row = 0; row < table.rowCount(); ++row) {
        QStringList texts;
        for (size_t column = 0; column < table.columnCount(); ++column)
            texts.append(QString::fromStdString(table.cellText(row, column)));
        rows.append(texts.join('|'));
    }
    return rows.join('/');
}

} // namespace

void TestCgatsReader::construction()
{
    QVERIFY(CgatsFile().tables().empty());
    const CgatsTable table;
    QCOMPARE(table.rowCount(), size_t(0));
    QCOMPARE(table.columnCount(), size_t(0));
    QCOMPARE(table.line(), size_t(0));
    QVERIFY(table.fields().empty());
    QVERIFY(table.keywords().empty());
    QCOMPARE(table.keyword("ORIGINATOR"), nullptr);
    const CgatsReport report;
    QVERIFY(!report.refused);
    QCOMPARE(report.refusalText(), std::string());
}

void TestCgatsReader::headerIsKept()
{
    CgatsReport report;
    const CgatsFile file = parse("\nCGATS.17\tAverage of 2\nORIGINATOR \"us\"\nKEYWORD \"OURS\"\nOURS\t12\nALONE\n"
                                     + table("SAMPLE_ID A", "1 2\n"),
                                 report);
    QCOMPARE(file.tables().size(), size_t(1));
    const CgatsTable &read = file.tables().front();
    QCOMPARE(read.line(), size_t(2));
    QCOMPARE(read.identifier(), std::string("CGATS.17 Average of 2"));
    QCOMPARE(read.keywords().size(), size_t(4));
    QCOMPARE(read.keywords()[2].name, std::string("OURS"));
    QCOMPARE(read.keywords()[2].value, std::string("12"));
    QCOMPARE(read.keywords()[2].line, size_t(5));
    QCOMPARE(*read.keyword("originator"), std::string("us"));
    QCOMPARE(*read.keyword("ALONE"), std::string());
    QCOMPARE(read.keyword("THEIRS"), nullptr);
    QCOMPARE(read.fieldsLine(), size_t(8));
    QCOMPARE(read.rowsLine(), size_t(10));
    QCOMPARE(read.rowLine(0), size_t(11));
}

void TestCgatsReader::aValueEndsWithItsQuote()
{
    CgatsReport report;
    const CgatsFile file = parse("A \"one \"\"two\"\" three\" rest\nB \"x # y\" # comment\nC plain # kept\nD \"\"\n"
                                 "E \"tab\tinside\"\t\t\n"
                                     + table("X", "1\n"),
                                 report);
    const CgatsTable &read = file.tables().front();
    QCOMPARE(*read.keyword("A"), std::string("one \"two\" three"));
    QCOMPARE(*read.keyword("B"), std::string("x # y"));
    QCOMPARE(*read.keyword("C"), std::string("plain # kept"));
    QCOMPARE(*read.keyword("D"), std::string());
    QCOMPARE(*read.keyword("E"), std::string("tab\tinside"));
}

void TestCgatsReader::cellsAreThoseOfTheFile()
{
    CgatsReport report;
    const CgatsFile file = parse(table("SAMPLE_NAME LAB_L", "\"a \"\"b\"\"\" +95,50\n\xe4 nan\n"), report);
    const CgatsTable &read = file.tables().front();
    QCOMPARE(read.fields(), (std::vector<std::string>{"SAMPLE_NAME", "LAB_L"}));
    QCOMPARE(std::string(read.cell(0, 0)), std::string("a \"\"b\"\""));
    QCOMPARE(read.cellText(0, 0), std::string("a \"b\""));
    QCOMPARE(std::string(read.cell(0, 1)), std::string("+95,50"));
    bool converted = true;
    read.cellText(0, 1, &converted);
    QVERIFY(!converted);
    QCOMPARE(read.cellText(1, 0, &converted), std::string("ä"));
    QVERIFY(converted);
    QCOMPARE(std::string(read.cell(1, 1)), std::string("nan"));
}

void TestCgatsReader::bytesThatAreNoUtf8AreWindows1252_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("expected");
    QTest::addColumn<bool>("converted");
    const auto row = [](const char *name, const char *bytes, const QString &expected, bool converted) {
        QTest::newRow(name) << QByteArray(bytes) << expected << converted;
    };
    row("two bytes", "\xc3\xa4", QString(QChar(0xe4)), false);
    row("three bytes", "\xe2\x82\xac", QString(QChar(0x20ac)), false);
    row("four bytes", "\xf0\x9f\x8e\xa8", QString::fromUtf8("\xf0\x9f\x8e\xa8"), false);
    row("one byte of Latin-1", "\xe4", QString(QChar(0xe4)), true);
    row("euro sign and dash", "\x80\x96", QString() + QChar(0x20ac) + QChar(0x2013), true);
    row("nothing in Windows-1252", "\x81", QString(QChar(0x81)), true);
    row("continuation bytes alone", "\x84\x84", QString() + QChar(0x201e) + QChar(0x201e), true);
    row("cut character", "\xe2\x82", QString() + QChar(0xe2) + QChar(0x201a), true);
    row("overlong", "\xe0\x82\xaf", QString() + QChar(0xe0) + QChar(0x201a) + QChar(0xaf), true);
    row("surrogate", "\xed\xa0\xa1", QString() + QChar(0xed) + QChar(0xa0) + QChar(0xa1), true);
    row("beyond the last character", "\xf4\xaf\xaf\xaf",
        QString() + QChar(0xf4) + QChar(0xaf) + QChar(0xaf) + QChar(0xaf), true);
}

void TestCgatsReader::bytesThatAreNoUtf8AreWindows1252()
{
    QFETCH(QByteArray, bytes);
    QFETCH(QString, expected);
    QFETCH(bool, converted);
    CgatsReport report;
    const CgatsFile file = parse(table("A B", bytes.toStdString() + " 1\n"), report);
    bool was_converted = !converted;
    QCOMPARE(QString::fromStdString(file.tables().front().cellText(0, 0, &was_converted)), expected);
    QCOMPARE(was_converted, converted);
}

void TestCgatsReader::tablesOutliveTheFile()
{
    CgatsTable kept;
    {
        CgatsReport report;
        const CgatsFile file = parse(table("A B", "1 2\n3 4\n"), report);
        kept = file.tables().front();
    }
    const CgatsTable copy = kept;
    kept = CgatsTable();
    QCOMPARE(cells(copy), QString("1|2/3|4"));
}

void TestCgatsReader::everyTableHasItsOwnHeader()
{
    CgatsReport report;
    const CgatsFile file =
        parse("CTI1\nA \"1\"\n" + table("X Y", "1 2\n") + "\nCTI2\nB \"2\"\n" + table("Z", "3\n4\n"), report);
    QCOMPARE(file.tables().size(), size_t(2));
    QCOMPARE(report.tables, size_t(2));
    const CgatsTable &second = file.tables()[1];
    QCOMPARE(second.identifier(), std::string("CTI2"));
    QCOMPARE(second.line(), size_t(10));
    QCOMPARE(second.keyword("A"), nullptr);
    QCOMPARE(*second.keyword("B"), std::string("2"));
    QCOMPARE(cells(second), QString("3/4"));
}

void TestCgatsReader::cellBetweenQuotesAndBlanks_data()
{
    QTest::addColumn<QByteArray>("row");
    QTest::addColumn<QString>("expected"); // the cells of one row of three columns; empty: left out
    QTest::newRow("plain") << QByteArray("a b c") << "a|b|c";
    QTest::newRow("indented") << QByteArray("\t  a b c") << "a|b|c";
    QTest::newRow("blanks and tabs") << QByteArray("a \t b\t \tc") << "a|b|c";
    QTest::newRow("tabs to align") << QByteArray("a\t\tb\t\tc") << "a|b|c";
    QTest::newRow("trailing tabs") << QByteArray("a\tb\tc\t\t\t") << "a|b|c";
    QTest::newRow("quotes") << QByteArray("\"a 1\" \"b\" c") << "a 1|b|c";
    QTest::newRow("empty quotes") << QByteArray("\"\" b \"\"") << "|b|";
    QTest::newRow("cells that touch") << QByteArray("\"a\"b c") << "a|b|c";
    QTest::newRow("pair of quotes inside") << QByteArray("\"5\"\" x\" b c") << "5\" x|b|c";
    QTest::newRow("three quotes around") << QByteArray("\"\"\"a\"\"\" b c") << "\"a\"|b|c";
    QTest::newRow("doubled quotes around") << QByteArray("\"\"a 1\"\" b c") << "a 1|b|c";
    QTest::newRow("open quote") << QByteArray("\"a b c") << "a|b|c";
    QTest::newRow("open quote at the end") << QByteArray("a b \"c") << "a|b|c";
    QTest::newRow("quote at the end of a cell") << QByteArray("a\" b c") << "a|b|c";
    QTest::newRow("quote inside a cell") << QByteArray("a\"1 b c") << "a\"1|b|c";
    QTest::newRow("one quote too many") << QByteArray("\"a\"\" b c") << "a|b|c";
    QTest::newRow("comment") << QByteArray("a b c # d") << "a|b|c";
    QTest::newRow("comment that touches") << QByteArray("a b c #d") << "a|b|c";
    QTest::newRow("hash inside a cell") << QByteArray("a#1 b c") << "a#1|b|c";
    QTest::newRow("hash in quotes") << QByteArray("\"#a\" b c") << "#a|b|c";
    QTest::newRow("empty place between tabs") << QByteArray("a\t\tc") << "a||c";
    QTest::newRow("empty place before tabs") << QByteArray("\tb\tc") << "|b|c";
    QTest::newRow("empty place behind tabs") << QByteArray("a\tb\t") << "a|b|";
    QTest::newRow("blanks inside, between tabs") << QByteArray("a 1\tb\tc") << "a 1|b|c";
    QTest::newRow("too few") << QByteArray("a b") << "";
    QTest::newRow("too many") << QByteArray("a b c d") << "";
    QTest::newRow("comment in the way") << QByteArray("a b # c") << "";
    QTest::newRow("two readings") << QByteArray("a 1\t\tc") << "";
}

void TestCgatsReader::cellBetweenQuotesAndBlanks()
{
    QFETCH(QByteArray, row);
    QFETCH(QString, expected);
    CgatsReport report;
    const CgatsFile file = parse(table("A B C", "1 2 3\n" + row.toStdString() + "\n4 5 6\n"), report);
    QCOMPARE(file.tables().size(), size_t(1));
    const CgatsTable &read = file.tables().front();
    QCOMPARE(cells(read), expected.isEmpty() ? QString("1|2|3/4|5|6") : "1|2|3/" + expected + "/4|5|6");
    QCOMPARE(read.droppedRowCount(), size_t(expected.isEmpty() ? 1 : 0));
    QCOMPARE(report.doubts.size(), size_t(expected.isEmpty() ? 1 : 0));
    if (expected.isEmpty()) {
        QCOMPARE(report.doubts.front().line, size_t(6));
        QCOMPARE(read.firstDroppedRow().line, size_t(6));
    }
}

void TestCgatsReader::lineNumbersCountEveryKindOfLineEnd_data()
{
    QTest::addColumn<QByteArray>("line_end");
    QTest::newRow("line feed") << QByteArray("\n");
    QTest::newRow("carriage return") << QByteArray("\r");
    QTest::newRow("both") << QByteArray("\r\n");
}

void TestCgatsReader::lineNumbersCountEveryKindOfLineEnd()
{
    QFETCH(QByteArray, line_end);
    QByteArray text = QByteArray::fromStdString("# one\n\nX \"y\"\n" + table("A B", "1 2\n\n# no\n3 4\n5 6 7\n"));
    text.replace("\n", line_end);
    CgatsReport report;
    const CgatsFile file = parse(text.toStdString(), report);
    const CgatsTable &read = file.tables().front();
    QCOMPARE(read.line(), size_t(3));
    QCOMPARE(read.rowLine(0), size_t(8));
    QCOMPARE(read.rowLine(1), size_t(11));
    QCOMPARE(read.firstDroppedRow().line, size_t(12));
}

void TestCgatsReader::structureWordsNeedNoLineOfTheirOwn()
{
    CgatsReport report;
    const CgatsFile file =
        parse("NUMBER_OF_FIELDS 2 BEGIN_DATA_FORMAT A\n B END_DATA_FORMAT NUMBER_OF_SETS 2 BEGIN_DATA "
              "1 2\n3 4 END_DATA ORIGINATOR \"x\"\n"
                  + table("C", "5\n"),
              report);
    QCOMPARE(file.tables().size(), size_t(2));
    QCOMPARE(cells(file.tables()[0]), QString("1|2/3|4"));
    QCOMPARE(*file.tables()[1].keyword("ORIGINATOR"), std::string("x"));
    QCOMPARE(cells(file.tables()[1]), QString("5"));
    QVERIFY(report.doubts.empty());
}

void TestCgatsReader::nextTableEndsATableWithoutEndData()
{
    std::string text = table("A B", "1 2\n") + table("C", "3\n");
    text.erase(text.find("END_DATA\n", text.find("1 2")), 9);
    CgatsReport report;
    const CgatsFile file = parse(text, report);
    QCOMPARE(file.tables().size(), size_t(2));
    QCOMPARE(cells(file.tables()[0]), QString("1|2"));
    QCOMPARE(cells(file.tables()[1]), QString("3"));
    QVERIFY(noteTexts(report.assumptions).contains("6: the table ends without END_DATA"));
}

void TestCgatsReader::rowsOverLinesMustComeToTheAnnouncedNumber()
{
    CgatsReport report;
    const std::string text = table("A B C D", "1 2\n3 4\n5 6\n7 8\n");
    QCOMPARE(cells(parse("NUMBER_OF_SETS 2\n" + text, report).tables().front()), QString("1|2|3|4/5|6|7|8"));
    QVERIFY(noteTexts(report.assumptions).contains("6: rows run over 2 lines"));

    // Four announced rows of two cells are another table than the format block names.
    QVERIFY(parse("NUMBER_OF_SETS 4\n" + text, report).tables().empty());
    QCOMPARE(report.refusalText(),
             std::string("text:6: the rows are cut in lines that do not come to NUMBER_OF_SETS"));
}

void TestCgatsReader::rowsOverLinesMayBeCut()
{
    CgatsReport report;
    const CgatsFile file = parse(table("A B C D", "1 2\n3 4\n5 6\n"), report);
    QCOMPARE(cells(file.tables().front()), QString("1|2|3|4"));
    QCOMPARE(noteTexts(report.doubts), QStringList{"7: the row has 2 of 4 cells; it is left out"});
}

void TestCgatsReader::rowsOverLinesMayHoldQuotedWords_data()
{
    QTest::addColumn<QByteArray>("rows");
    QTest::addColumn<QString>("expected");
    for (const char *word :
         {"BEGIN_DATA_FORMAT", "END_DATA_FORMAT", "BEGIN_DATA", "END_DATA", "NUMBER_OF_SETS", ".INCLUDE"}) {
        const QByteArray quoted = QByteArray("\"") + word + "\"";
        QTest::addRow("%s first", word) << quoted + " 2\n3 4\n" << QString("%1|2|3|4").arg(word);
        QTest::addRow("%s later", word) << "1 2\n" + quoted + " 3\n" << QString("1|2|%1|3").arg(word);
        QTest::addRow("%s not closed", word) << QByteArray("\"") + word + "\n2 3\n4\n"
                                             << QString("%1|2|3|4").arg(word);
        QTest::addRow("%s last", word) << "1 2\n3\n" + quoted + "\n" << QString("1|2|3|%1").arg(word);
    }
}

void TestCgatsReader::rowsOverLinesMayHoldQuotedWords()
{
    QFETCH(QByteArray, rows);
    QFETCH(QString, expected);
    CgatsReport report;
    const CgatsFile file = parse(table("SAMPLE_ID LAB_L LAB_A LAB_B", "1 50\n0 0\n" + rows.toStdString()), report);
    QVERIFY2(!report.refused, report.refusalText().c_str());
    QCOMPARE(cells(file.tables().front()), "1|50|0|0/" + expected);
}

void TestCgatsReader::commentedAndBlankLinesAreNoRows()
{
    CgatsReport report;
    const CgatsFile file = parse(table("A B", "\n   \n# 1 2\n 3 4\n\t\t\n#\n"), report);
    QCOMPARE(cells(file.tables().front()), QString("3|4"));
    QVERIFY(report.doubts.empty());
}

void TestCgatsReader::bareTableMayHaveMoreLinesThanAHeader()
{
    CgatsLimits limits;
    limits.keywords = 5;
    CgatsReport report;
    const CgatsFile file = parse("a 1\nb 2\nc 3\nd 4\ne 5\nf 6\nEND_DATA 7\n", report, limits);
    QCOMPARE(QString::fromStdString(report.refusalText()), QString());
    QCOMPARE(cells(file.tables().front()), QString("a|1/b|2/c|3/d|4/e|5/f|6/END_DATA|7"));
    QCOMPARE(noteTexts(report.assumptions),
             QStringList{"1: the file has no CGATS structure; its lines are taken for the rows of a table"});
}

void TestCgatsReader::atTheLimitIsRead_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("refusal"); // with one more; see beyondTheLimitIsRefused()
    const auto of = [](int count, const std::string &text) {
        std::string all;
        for (int i = 0; i < count; ++i)
            all += text;
        return all;
    };
    const auto row = [](const char *name, const std::string &text, const char *refusal) {
        QTest::newRow(name) << QByteArray::fromStdString(text) << refusal;
    };
    row("file size", table("A", "1\n") + std::string(1000 - table("A", "1\n").size(), '\n'),
        "has more than 1000 bytes");
    row("tables", of(3, table("A", "1\n")), "16: there are more than 3 tables");
    row("keywords", of(5, "K \"v\"\n") + table("A", "1\n"), "5: there are more than 5 header lines");
    row("fields", table(of(6, " A"), "1 2 3 4 5 6\n"), "2: there are more than 6 columns");
    row("rows", table("A", of(7, "1\n")), "11: there are more than 7 rows");
    row("cells", table("A A A", of(5, "1 2 3\n")), "9: there are more than 15 cells");
    row("length of a cell", table("A A", "1 " + std::string(40, '2') + "\n"), "5: a cell is longer than 40 bytes");
    row("length of a quoted cell", table("A A", "1 \"" + std::string(40, '2') + "\"\n"),
        "5: a cell is longer than 40 bytes");
    row("length of a value", "K " + std::string(40, '2') + "\n" + table("A", "1\n"),
        "1: a word or value is longer than 40 bytes");
    row("length of a field name", table(std::string(40, '2'), "1\n"), "2: a word or value is longer than 40 bytes");
}

static CgatsLimits smallLimits()
{
    CgatsLimits limits;
    limits.file_size = 1000;
    limits.tables = 3;
    limits.keywords = 5;
    limits.fields = 6;
    limits.rows = 7;
    limits.cells = 15;
    limits.cell_length = 40;
    return limits;
}

void TestCgatsReader::atTheLimitIsRead()
{
    QFETCH(QByteArray, text);
    CgatsReport report;
    const CgatsFile file = parse(text.toStdString(), report, smallLimits());
    QCOMPARE(QString::fromStdString(report.refusalText()), QString());
    QVERIFY(!file.tables().empty());
    QVERIFY(file.tables().front().rowCount() > 0);
}

void TestCgatsReader::beyondTheLimitIsRefused_data()
{
    atTheLimitIsRead_data();
}

/// The same texts with one more of what is limited: a limit that is one lower comes to the same.
void TestCgatsReader::beyondTheLimitIsRefused()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, refusal);
    const QString limit = QTest::currentDataTag();
    CgatsLimits limits = smallLimits();
    const QRegularExpression number("than (\\d+) ");
    const QString lowered =
        QString(refusal).replace(number, QString("than %1 ").arg(number.match(refusal).captured(1).toInt() - 1));
    --(limit == "file size"  ? limits.file_size
       : limit == "tables"   ? limits.tables
       : limit == "keywords" ? limits.keywords
       : limit == "fields"   ? limits.fields
       : limit == "rows"     ? limits.rows
       : limit == "cells"    ? limits.cells
                             : limits.cell_length);
    CgatsReport report;
    const CgatsFile file = parse(text.toStdString(), report, limits);
    QVERIFY(report.refused);
    QVERIFY(file.tables().empty());
    const QString line = report.refusal_line > 0 ? QString::number(report.refusal_line) + ": " : QString();
    QCOMPARE(line + QString::fromStdString(report.refusal_reason), lowered);
}

void TestCgatsReader::tooBigFileIsRefused()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    QVERIFY(file.resize(1001)); // zero bytes, which nobody gets to see
    CgatsReport report;
    QVERIFY(CgatsFile::read(file.fileName().toStdString(), report, smallLimits()).tables().empty());
    QCOMPARE(report.refusalText(), file.fileName().toStdString() + ": has more than 1000 bytes");

    QVERIFY(file.resize(1000));
    CgatsReport second;
    CgatsFile::read(file.fileName().toStdString(), second, smallLimits());
    QCOMPARE(second.refusalText(), file.fileName().toStdString() + ":1: there is a zero byte; this is no text file");
}

void TestCgatsReader::onlySoManyNotesAreKept()
{
    std::string rows;
    for (int i = 0; i < 1500; ++i)
        rows += "1\n";
    CgatsReport report;
    const CgatsFile file = parse(table("A B", "1 2\n" + rows), report);
    QCOMPARE(file.tables().front().droppedRowCount(), size_t(1500));
    QCOMPARE(report.doubts.size(), size_t(CgatsReport::maximum_notes));
    QCOMPARE(report.notes_left_out, size_t(500));
}

void TestCgatsReader::firstRefusalHolds()
{
    CgatsReport report;
    report.refuse(3, "first");
    report.refuse(4, "second");
    QVERIFY(report.refused);
    QCOMPARE(report.refusalText(), std::string("text:3: first"));
}

void TestCgatsReader::refusalTextIsOneLine()
{
    CgatsReport report;
    report.path = "folder/file.txt";
    report.refuse(0, "is empty");
    QCOMPARE(report.refusalText(), std::string("folder/file.txt: is empty"));
}

void TestCgatsReader::hostileQuotesTakeNoMoreThanLinearTime_data()
{
    QTest::addColumn<QByteArray>("unit");
    for (const char *unit : {"\"x\"\" ", "\"", "\" ", "\"\" ", "\"\"x ", "\"\"\" ", "x\" ", "\"x\"\"", "\t", "#\" ",
                             "a\t\t", "\"a\" ", "\"a\"\t\t"})
        QTest::newRow(unit) << QByteArray(unit);
}

void TestCgatsReader::hostileQuotesTakeNoMoreThanLinearTime()
{
    QFETCH(QByteArray, unit);
    const std::string line = unit.repeated(2000000 / unit.size()).toStdString() + "\n";
    CgatsLimits limits;
    limits.cell_length = 4000000;
    limits.fields = 4000000;
    // The reference does the same work without a quirk; a quadratic reader would need hours.
    QElapsedTimer timer;
    timer.start();
    CgatsReport report;
    parse(table("A B C", "1 2 3\n" + line + "4 5 6\n"), report, limits);
    parse("K " + line + table("A", "1\n"), report, limits);
    parse(line, report, limits);
    QVERIFY2(timer.elapsed() < 20000, qPrintable(QString("%1 ms").arg(timer.elapsed())));
}

TAVI_TEST_MAIN(TestCgatsReader)
#include "tst_cgatsreader.moc"
