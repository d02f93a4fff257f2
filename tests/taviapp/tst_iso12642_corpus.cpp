// SPDX-License-Identifier: MIT
#include "taviapp/iso12642.h"
#include "tests/support/tavitest.h"
#include "tests/taviapp/patchtext.h"

#include <QDir>

/// Files with one quirk each, from tests/data/cgats: what comes out of them, what is assumed, what is refused.
class TestIso12642Corpus : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void quirk_data();
    void quirk();
    void everyFileIsInTheTable();
};

namespace {

struct Quirk {
    const char *file;
    const char *refusal; ///< What stands behind the path; empty for a file that is read.
    QStringList patches;
    QStringList assumptions = {};
    QStringList doubts = {};
};

std::vector<Quirk> quirks()
{
    const QStringList three = {"1 | 95 0 -2", "2 | 55.25 -37.5 -50", "3 | 16 0 0.5"};
    const QString bare = "1: the file has no CGATS structure; its lines are taken for the rows of a table";
    return {
        {"bare_four_columns.txt",
         ":1: there are four columns without names, and the first is no running number; what they are cannot be told",
         {},
         {bare}},
        {"bare_lab.txt", "", three, {bare, "1: the three columns without names are taken for Lab"}},
        {"bare_lab_without_last_line_end.txt",
         "",
         three,
         {bare, "3: the last line has no line break; its last value is taken as whole",
          "1: the three columns without names are taken for Lab"}},
        {"bare_names_and_lab.txt",
         "",
         {"Paper | 95 0 -2", "Cyan | 55.25 -37.5 -50", "Black | 16 0 0.5"},
         {bare, "1: the four columns without names are taken for a name and Lab"}},
        {"bare_no_lab.txt",
         ":1: there are columns without names, and these values are no Lab; what they are cannot be told",
         {},
         {bare}},
        {"bare_numbers_and_lab.txt",
         "",
         three,
         {bare, "1: the four columns without names are taken for a name and Lab"}},
        {"bare_seven_columns.txt", ":1: there are 7 columns without names; what they are cannot be told", {}, {bare}},
        {"bare_with_header_line.txt",
         "",
         three,
         {bare, "1: there is no format block; this line is taken for the names of the columns"}},
        {"blank.txt", ": the file holds no text", {}},
        {"bom_utf16_be.txt",
         "",
         {"紙 | 95 0 -2", "2 | 55.25 -37.5 -50", "3 | 16 0 0.5"},
         {"1: the file is in UTF-16"}},
        {"bom_utf16_le.txt",
         "",
         {"Weiß | 95 0 -2", "2 | 55.25 -37.5 -50", "3 | 16 0 0.5"},
         {"1: the file is in UTF-16"}},
        {"bom_utf8.txt", "", three, {"1: the file begins with a byte order mark"}},
        {"cmy.txt", "", {"P | 95 0 -2 | cmy 0 0 0"}},
        {"column_twice.txt",
         "",
         {"1 | 95 0 -2", "2 | 16 0 0.5"},
         {"5: there are several columns 'LAB_L'; the first is read"}},
        {"comments.txt", "", three},
        {"cr_only.txt", "", three},
        {"crlf.txt", "", three},
        {"decimal_comma.txt", "", three, {"9: numbers are written with a decimal comma"}},
        {"decimal_comma_and_point.txt",
         ":10: there are decimal points and decimal commas in one table; no number can be trusted",
         {}},
        {"device_only.txt",
         "",
         {"1 | none | cmyk 0 0 0 0 | paper", "2 | none | cmyk 0 100 0 0 | magenta",
          "3 | none | cmyk 50 40 40 0 | grey"}},
        {"dos_end_mark.txt", "", three},
        {"empty.txt", ": the file is empty", {}},
        {"end_data_behind_row.txt", "", three},
        {"fields_missing.txt", "", three, {"1: there is no NUMBER_OF_FIELDS; the table has 4 columns"}},
        {"fields_wrong.txt", "", three, {"3: NUMBER_OF_FIELDS is '9'; the table has 4 columns"}},
        {"format_block_not_closed.txt", "", three, {"4: the format block is not closed by END_DATA_FORMAT"}},
        {"format_block_on_one_line.txt", "", three},
        {"gray.txt", "", {"P | 95 0 -2 | gray 0", "K | 16 0 0.5 | gray 100"}},
        {"ids_only.txt", ":5: there are no columns of Lab, XYZ or device values", {}},
        {"illuminant.txt", "", three, {}, {"2: the header names 'D65'; the colours are taken for D50 nevertheless"}},
        {"include.txt",
         "",
         {"1 | 95 0 -2", "2 | 55.25 -37.5 -50"},
         {"2: the file asks for another one to be included; that is not done",
          "11: the file asks for another one to be included; that is not done"}},
        {"ink_scale.txt",
         "",
         {"1 | 95 0 -2 | cmyk 0 0 0 0 | paper", "2 | 55.25 -37.5 -50 | cmyk 255 0 0 0"},
         {},
         {"10: an ink is outside of 0 to 100 percent; the inks may be on another scale"}},
        {"inks_lettered.txt", "", {"P | 95 0 -2 | nclr 0 0 0 0 0 0", "X | 70 40 60 | nclr 1 2 3 4 5 6"}},
        {"inks_of_6.txt", "", {"P | 95 0 -2 | nclr 0 0 0 0 0 0", "O | 70 40 60 | nclr 0 10 20 30 40 50"}},
        {"inks_of_9.txt",
         "",
         {"P | 95 0 -2"},
         {},
         {"5: there are 9 inks, more than are kept; the patches have no device values"}},
        {"k_first.txt",
         "",
         {"1 | 95 0 -2 | cmyk 0 0 0 0 | paper", "2 | 55.25 -37.5 -50 | cmyk 100 0 0 0 | cyan",
          "3 | 70 0 0 | cmyk 25 19 19 0 | grey", "4 | 16 0 0.5 | cmyk 0 0 0 100 | black"}},
        {"lab_before_device.txt",
         "",
         {"P | 95 0 -2 | cmyk 0 0 0 0 | paper", "M | 48 74 -4 | cmyk 0 100 0 0 | magenta",
          "Y | 89 -4 92 | cmyk 0 0 100 0 | yellow"}},
        {"lower_case.txt",
         "",
         three,
         {"3: the keyword 'number_of_FIELDS' is not in capitals", "12: the keyword 'end_data' is not in capitals"}},
        {"mixed_line_ends.txt", "", three},
        {"names_in_mixed_case.txt", "", three},
        {"names_latin1.txt",
         "",
         {"Weiß | 95 0 -2", "Blaugrün – voll | 55.25 -37.5 -50", "Tiefe | 16 0 0.5"},
         {"9: the name 'Weiß' is no UTF-8; it is taken for Windows-1252",
          "10: the name 'Blaugrün – voll' is no UTF-8; it is taken for Windows-1252"}},
        {"names_utf8.txt", "", {"Weiß | 95 0 -2", "Blaugrün | 55.25 -37.5 -50", "墨 | 16 0 0.5"}},
        {"names_with_stars.txt", "", three, {"5: the columns 'L*' and following are taken for Lab"}},
        {"no_device_value.txt",
         "",
         {"1 | 95 0 -2 | cmyk 0 0 0 0 | paper", "2 | 55.25 -37.5 -50"},
         {},
         {"10: CMYK_M is '*', which is no usable number; the patch has no device values"}},
        {"no_format_block.txt",
         "",
         three,
         {"4: there is no format block", "4: the three columns without names are taken for Lab"}},
        {"no_names.txt", "", three},
        {"no_rows.txt", ":8: there are no rows", {}},
        {"no_values.txt",
         "",
         {"1 | 95 0 -2", "2 | none", "3 | none", "4 | none", "5 | none", "6 | none", "7 | none", "8 | 16 0 0.5"},
         {},
         {"10: LAB_L is '1.#IND00', which is no usable number; the patch has no colour",
          "11: LAB_A is 'nan', which is no usable number; the patch has no colour",
          "12: LAB_B is '-inf', which is no usable number; the patch has no colour",
          "13: LAB_A is '-', which is no usable number; the patch has no colour",
          "14: LAB_L is '1e999', which is no usable number; the patch has no colour",
          "15: LAB_B is '5%', which is no usable number; the patch has no colour"}},
        {"paper_dark.txt",
         "",
         {"1 | 70 0 0 | cmyk 100 0 0 0 | cyan", "2 | 40 0 0 | cmyk 0 0 0 0 | paper"},
         {},
         {"10: the unprinted paper has L 40.00; the colours may be on another scale"}},
        {"plain.txt", "", three},
        {"plus_and_exponent.txt", "", three},
        {"prose.txt",
         ":2: there is no BEGIN_DATA, and the lines are no table: this one has 4 cells, the first 2",
         {},
         {bare}},
        {"quoted_values.txt", "", {"Paper # 1 | 95 0 -2", "BEGIN_DATA | 55.25 -37.5 -50", "END_DATA | 16 0 0.5"}},
        {"quotes_doubled.txt",
         "",
         {"Paper white | 95 0 -2", "5\" spot | 55.25 -37.5 -50", "3 | 16 0 0.5"},
         {"2: a value is in doubled quotes", "9: a cell is in doubled quotes"}},
        {"quotes_missing.txt",
         "",
         {"Paper | 95 0 -2", "Cyan | 55.25 -37.5 -50", "Black | 16 0 0.5"},
         {"2: a quote is not closed; the value is taken to the end of the line",
          "3: a value of several words is not in quotes; it is taken to the end of the line",
          "10: a quote is not closed; its cell is taken to end at the next blank",
          "11: a cell has a quote inside or at its end only"}},
        {"rgb.txt", "", {"W | 100 0 0 | rgb 255 255 255", "R | 54 80 70 | rgb 255 0 0"}},
        {"row_long.txt",
         "",
         {"1 | 95 0 -2", "3 | 16 0 0.5"},
         {},
         {"10: the row has 5 cells in place of 4; it is left out"}},
        {"row_short.txt",
         "",
         {"1 | 95 0 -2", "3 | 16 0 0.5"},
         {},
         {"10: the row has 3 cells in place of 4; it is left out"}},
        {"rows_all_long.txt",
         ":9: no row is whole: the row has 5 cells in place of 4",
         {},
         {},
         {"9: the row has 5 cells in place of 4; it is left out",
          "10: the row has 5 cells in place of 4; it is left out"}},
        {"rows_over_lines.txt",
         "",
         {"1 | 95 0 -2 | cmyk 0 0 0 0 | paper", "2 | 55.25 -37.5 -50 | cmyk 100 0 0 0 | cyan"},
         {"9: rows run over 2 lines"}},
        {"rows_over_lines_quoted_words.txt",
         "",
         {"Paper | 95 0 -2", "END_DATA | 55.25 -37.5 -50", "BEGIN_DATA | 16 0 0.5", ".INCLUDE | 50 0 0",
          "END_DATA | 50 0 1"},
         {"8: rows run over 2 lines"}},
        {"rows_over_lines_uneven.txt",
         ":12: rows run over several lines, which come to more cells here than there are columns",
         {},
         {"9: rows run over 2 lines"}},
        {"sample_id_from_0.txt", "", {"0 | 95 0 -2", "1 | 55.25 -37.5 -50", "2 | 16 0 0.5"}},
        {"sample_name.txt", "", {"Paper | 95 0 -2", "A2 | 55.25 -37.5 -50", "3 | 16 0 0.5"}},
        {"sampleid.txt", "", three, {"5: the column 'SampleID' is taken for the one with a '_'"}},
        {"sets_missing.txt", "", three, {"1: there is no NUMBER_OF_SETS; the table has 3 rows"}},
        {"sets_wrong.txt", "", three, {"7: NUMBER_OF_SETS is '5'; the table has 3 rows"}},
        {"spectral.txt", "", {"1 | 95 0 -2", "2 | 55.25 -37.5 -50"}, {"5: 4 spectral columns passed over"}},
        {"spectral_only.txt", ":5: there are spectra, but no columns of Lab, XYZ or device values", {}},
        {"tabs.txt", "", three},
        {"tabs_against_blanks.txt",
         "",
         {"Paper | 95 0 -2", "Black | 16 0 0.5"},
         {},
         {"10: the row has different cells between tabs than between blanks; it is left out"}},
        {"tabs_empty_cell.txt",
         "",
         {"Paper | 95 0 -2", "2 | 55.25 -37.5 -50", "Black | none"},
         {"10: cells are taken between tabs, where blanks do not give as many as there are columns"},
         {"11: LAB_L is '', which is no usable number; the patch has no colour"}},
        {"tabs_names_with_blanks.txt",
         "",
         {"Paper white | 95 0 -2", "Cyan 100 | 55.25 -37.5 -50", "Black | 16 0 0.5"},
         {"9: cells are taken between tabs, where blanks do not give as many as there are columns"}},
        {"text_behind_table.txt",
         "",
         three,
         {"13: a value of several words is not in quotes; it is taken to the end of the line",
          "13: what is behind the last table has no rows; it is left out"}},
        {"trailing_tabs.txt", "", three},
        {"truncated_between_rows.txt",
         "",
         {"1 | 95 0 -2", "2 | 55.25 -37.5 -50"},
         {"11: the file ends without END_DATA", "7: NUMBER_OF_SETS is '3'; the table has 2 rows"}},
        {"truncated_in_end_data.txt", "", three, {"12: the file ends inside END_DATA"}},
        {"truncated_in_header.txt",
         ":4: there are no rows",
         {},
         {"4: there is no format block", "4: the file ends without END_DATA",
          "3: NUMBER_OF_FIELDS is '4'; the table has 0 columns",
          "1: there is no NUMBER_OF_SETS; the table has 0 rows"}},
        {"truncated_in_last_value.txt",
         "",
         {"1 | 95 0 -2", "2 | 55.25 -37.5 -50"},
         {"11: the file ends without END_DATA"},
         {"11: the file ends inside this row or right behind it, so its last value may be cut; it is left out"}},
        {"truncated_in_row.txt",
         "",
         {"1 | 95 0 -2"},
         {"10: the file ends without END_DATA", "7: NUMBER_OF_SETS is '3'; the table has 2 rows"},
         {"10: the file ends inside this row or right behind it, so its last value may be cut; it is left out"}},
        {"two_tables.txt",
         "",
         three,
         {"14: another table with 1 row is left out; the patches come from the one at line 1"}},
        {"two_tables_colour_second.txt",
         "",
         three,
         {"1: another table with 2 rows is left out; the patches come from the one at line 12"}},
        {"utf16_without_bom.txt", ":1: there is a zero byte; this is no text file", {}},
        {"xyz.txt", "", {"1 | 100 0 0", "2 | 0 0 0", "3 | 76.06926101415557 0 0"}},
        {"xyz_scale_of_1.txt",
         "",
         {"1 | 8.991442404369852 0 0", "2 | 0 0 0"},
         {},
         {"9: the lightest patch has L 8.99; the colours may be on another scale"}},
        {"zero_byte.txt", ":10: there is a zero byte; this is no text file", {}},
    };
}

} // namespace

void TestIso12642Corpus::quirk_data()
{
    QTest::addColumn<QStringList>("patches");
    QTest::addColumn<QStringList>("assumptions");
    QTest::addColumn<QStringList>("doubts");
    QTest::addColumn<QString>("refusal");
    for (const Quirk &quirk : quirks())
        QTest::newRow(quirk.file) << quirk.patches << quirk.assumptions << quirk.doubts << QString(quirk.refusal);
}

void TestIso12642Corpus::quirk()
{
    QFETCH(QStringList, patches);
    QFETCH(QStringList, assumptions);
    QFETCH(QStringList, doubts);
    QFETCH(QString, refusal);

    const QString path = dataFile("cgats/" + QString(QTest::currentDataTag()));
    CgatsReport report;
    const TAVICOMBOCOLOUR_CC read(ISO12642Importer::import(path.toStdString(), 0, report));
    QCOMPARE(QString::fromStdString(report.refusalText()), refusal.isEmpty() ? QString() : path + refusal);
    QCOMPARE(patchTexts(read), patches);
    QCOMPARE(noteTexts(report.assumptions), assumptions);
    QCOMPARE(noteTexts(report.doubts), doubts);
    QCOMPARE(report.refused, !refusal.isEmpty());
    QCOMPARE(report.rows, read.count());
    QCOMPARE(int(report.rows_without_colour), patches.filter(" none").size());
    QCOMPARE(report.notes_left_out, size_t(0));
}

void TestIso12642Corpus::everyFileIsInTheTable()
{
    QStringList tested;
    for (const Quirk &quirk : quirks())
        tested.append(quirk.file);
    tested.sort();
    QCOMPARE(QDir(dataFile("cgats")).entryList({"*.txt"}, QDir::Files, QDir::Name), tested);
}

TAVI_TEST_MAIN(TestIso12642Corpus)
#include "tst_iso12642_corpus.moc"
