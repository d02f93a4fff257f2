// SPDX-License-Identifier: MIT
#include "taviapp/cgatsrows_p.h"

#include "taviapp/cgatsnumber_p.h"
#include "taviapp/cgatstext_p.h"

#include <algorithm>

namespace {

std::string cellCount(const CgatsLine &line)
{
    return (line.too_many ? "more than " : "") + cgatsCount(line.cells.size(), "cell");
}

size_t withoutTrailingGaps(const CgatsLine &line)
{
    size_t count = line.cells.size();
    while (count > 0 && line.cells[count - 1].length == 0)
        --count;
    return count;
}

} // namespace

CgatsWord cgatsWord(std::string_view word)
{
    struct Entry {
        std::string_view text;
        CgatsWord word;
    };
    static constexpr Entry entries[] = {{"END_DATA", CgatsWord::EndData},
                                        {"BEGIN_DATA", CgatsWord::BeginData},
                                        {"BEGIN_DATA_FORMAT", CgatsWord::BeginDataFormat},
                                        {"END_DATA_FORMAT", CgatsWord::EndDataFormat},
                                        {"NUMBER_OF_FIELDS", CgatsWord::NumberOfFields},
                                        {"NUMBER_OF_SETS", CgatsWord::NumberOfSets},
                                        {".INCLUDE", CgatsWord::Include}};
    for (const Entry &entry : entries) {
        if (cgatsEqual(word, entry.text))
            return entry.word;
    }
    return CgatsWord::None;
}

CgatsRowReader::CgatsRowReader(const char *text, CgatsCursor &cursor, CgatsTable &table, CgatsBudget &budget,
                               CgatsReport &report, const CgatsLimits &limits, bool bare)
    : text_(text), cursor_(cursor), table_(table), budget_(budget), report_(report), limits_(limits), bare_(bare),
      splitter_(text, limits.fields)
{}

bool CgatsRowReader::read(size_t announced_rows)
{
    if (table_.fields_.empty())
        takeNames();
    table_.columns_ = table_.fields_.size();
    Step step = Step::NextLine;
    while (step == Step::NextLine) {
        if (cursor_.atEnd()) {
            if (!bare_ && !ended_inside_word_)
                report_.assume(cursor_.line, "the file ends without END_DATA");
            step = Step::Done;
        } else {
            step = takeLine();
        }
    }
    if (step == Step::Refused)
        return false;
    if (wrapped_ && announced_rows > 0 && announced_rows != table_.rowCount() + table_.dropped_) {
        report_.refuse(table_.rowLine(0), "the rows are cut in lines that do not come to NUMBER_OF_SETS");
        return false;
    }
    return true;
}

/// Where nothing names the columns, the line before the first row may.
void CgatsRowReader::takeNames()
{
    CgatsCursor look = cursor_;
    if (!look.toWord())
        return;
    const size_t names_line = look.line;
    const char *end = look.lineEnd();
    splitter_.splitAtBlanks(look.at, end, line_);
    look.toNextLine(end);
    const auto isNumber = [this](const Cell &cell) {
        return cgatsNumber(view(cell)).valid;
    };
    const auto isTooLong = [this](const Cell &cell) {
        return view(cell).size() > limits_.cell_length;
    };
    if (line_.too_many || cgatsWord(view(line_.cells.front())) != CgatsWord::None || !look.toWord()
        || std::any_of(line_.cells.begin(), line_.cells.end(), isTooLong))
        return;
    splitter_.splitAtBlanks(look.at, look.lineEnd(), tab_line_);
    if (tab_line_.cells.size() != line_.cells.size() || std::any_of(line_.cells.begin(), line_.cells.end(), isNumber)
        || std::none_of(tab_line_.cells.begin(), tab_line_.cells.end(), isNumber))
        return;
    for (const Cell &cell : line_.cells)
        table_.fields_.emplace_back(view(cell));
    table_.fields_line_ = names_line;
    report_.assume(names_line, "there is no format block; this line is taken for the names of the columns");
    cursor_.toWord();
    cursor_.toNextLine(cursor_.lineEnd());
}

CgatsRowReader::Step CgatsRowReader::takeLine()
{
    const char *line_end = cursor_.at;
    cells_.clear();
    if (wrapped_ || !splitter_.splitPlain(line_end, cells_))
        return takeOddLine();
    if (cells_.empty()) {
        cursor_.toNextLine(line_end);
        return Step::NextLine;
    }
    if (mayBeStructure(cells_.front()) || cells_.size() != table_.columns_ || line_end == cursor_.end
        || static_cast<size_t>(line_end - cursor_.at) > limits_.cell_length)
        return takeOddLine();
    const Step step = store(cells_, cursor_.line);
    cursor_.toNextLine(line_end);
    return step;
}

/// A quick look: structure words have eight letters at least, begin with one of these and stand without quotes.
bool CgatsRowReader::mayBeStructure(const Cell &cell) const
{
    if (cell.length < 8 || (cell.begin > 0 && text_[cell.begin - 1] == '"'))
        return false;
    const char first = text_[cell.begin];
    return first == 'E' || first == 'e' || first == 'B' || first == 'b' || first == 'N' || first == 'n'
           || first == '.';
}

/// The structure word that a line begins with, if any. In quotes it is a text like any other.
CgatsWord CgatsRowReader::structureWord(const Cell &first) const
{
    return !bare_ && mayBeStructure(first) ? cgatsWord(view(first)) : CgatsWord::None;
}

/// A line that is not simply a row.
CgatsRowReader::Step CgatsRowReader::takeOddLine()
{
    const char *begin = cursor_.at;
    const char *end = cursor_.lineEnd();
    const size_t line = cursor_.line;
    splitter_.splitAtBlanks(begin, end, line_);
    if (line_.cells.empty()) {
        cursor_.toNextLine(end);
        return Step::NextLine;
    }
    const Step structure = takeStructure(line_.cells.front());
    if (structure != Step::NextLine || cursor_.at != begin)
        return structure;
    if (!cellsAreShort(line_.cells, line))
        return Step::Refused;
    // END_DATA may stand on the line of the last row.
    if (table_.columns_ > 0 && line_.cells.size() > table_.columns_) {
        const Cell &behind = line_.cells[table_.columns_];
        if (!bare_ && mayBeStructure(behind) && cgatsWord(view(behind)) == CgatsWord::EndData) {
            cursor_.at = view(behind).data() + view(behind).size();
            line_.cells.resize(table_.columns_);
            return store(line_.cells, line) == Step::Refused ? Step::Refused : Step::Done;
        }
    }
    if (isCut(end, line_.cells)) {
        cursor_.toNextLine(end);
        return Step::NextLine;
    }
    if (table_.columns_ == 0 && !setColumns(line_.cells.size()))
        return Step::Refused;
    if (wrapped_)
        return joinLines();

    const size_t count = line_.cells.size();
    if (takeTabCells(begin, end, count)) {
        if (count == table_.columns_) {
            cursor_.toNextLine(end);
            return drop(line, "the row has different cells between tabs than between blanks");
        }
        if (!tabs_told_)
            report_.assume(line,
                           "cells are taken between tabs, where blanks do not give as many as there are columns");
        tabs_told_ = true;
        cursor_.toNextLine(end);
        return store(tab_line_.cells, line);
    }
    if (count == table_.columns_ && !line_.too_many) {
        tellQuotes(line_);
        cursor_.toNextLine(end);
        return store(line_.cells, line);
    }
    if (bare_) {
        report_.refuse(line, "there is no BEGIN_DATA, and the lines are no table: this one has " + cellCount(line_)
                                 + ", the first " + std::to_string(table_.columns_));
        return Step::Refused;
    }
    const std::string reason = "the row has " + cellCount(line_) + " in place of " + std::to_string(table_.columns_);
    if (count < table_.columns_ && table_.rowCount() + table_.dropped_ == 0) {
        const Step joined = joinLines();
        if (joined != Step::NextLine || cursor_.at != begin)
            return joined;
    }
    cursor_.toNextLine(end);
    return drop(line, reason);
}

/// Acts on a structure word at the begin of a line. NextLine with the cursor where it was: there is none.
CgatsRowReader::Step CgatsRowReader::takeStructure(const Cell &first)
{
    const std::string_view word = view(first);
    switch (structureWord(first)) {
    case CgatsWord::None:
        return Step::NextLine;
    case CgatsWord::EndData:
        if (word != "END_DATA")
            report_.assume(cursor_.line, "the keyword " + cgatsQuoted(word) + " is not in capitals");
        cursor_.at = word.data() + word.size();
        return Step::Done;
    case CgatsWord::Include:
        report_.assume(cursor_.line, "the file asks for another one to be included; that is not done");
        cursor_.toNextLine(cursor_.lineEnd());
        return Step::NextLine;
    default:
        report_.assume(cursor_.line, "the table ends without END_DATA");
        return Step::Done;
    }
}

bool CgatsRowReader::setColumns(size_t count)
{
    if (line_.too_many) {
        report_.refuse(cursor_.line, "the row has " + cellCount(line_) + ", more than are read");
        return false;
    }
    table_.columns_ = count;
    return true;
}

/// True if tabs give the line as many cells as there are columns and blanks say something else.
bool CgatsRowReader::takeTabCells(const char *begin, const char *end, size_t blank_count)
{
    if (std::find(begin, end, '\t') == end)
        return false;
    splitter_.splitAtTabs(begin, end, tab_line_);
    const size_t columns = table_.columns_;
    if (tab_line_.too_many || tab_line_.cells.size() < columns || withoutTrailingGaps(tab_line_) > columns)
        return false;
    tab_line_.cells.resize(columns);
    return blank_count != columns || tab_line_.inner_gap;
}

/// Makes rows of lines that are shorter. The first row tells whether the table is written so: its lines must come to
/// the number of columns exactly. NextLine with the cursor where it was: they do not, which only the first row may.
/// The line at hand is taken without another look at what it is, so that each call moves on.
CgatsRowReader::Step CgatsRowReader::joinLines()
{
    const CgatsCursor before = cursor_;
    cells_.clear();
    size_t lines = 0;
    do {
        if (!cellsAreShort(line_.cells, cursor_.line))
            return Step::Refused;
        cells_.insert(cells_.end(), line_.cells.begin(), line_.cells.end());
        if (line_.too_many || cells_.size() > table_.columns_)
            break;
        cursor_.toNextLine(cursor_.lineEnd());
        ++lines;
    } while (cells_.size() < table_.columns_ && goesOn());
    if (cells_.size() == table_.columns_ && !line_.too_many) {
        if (!wrapped_)
            report_.assume(before.line, "rows run over " + std::to_string(lines) + " lines");
        wrapped_ = true;
        return store(cells_, before.line);
    }
    if (!wrapped_) {
        cursor_ = before;
        return Step::NextLine;
    }
    if (cells_.size() > table_.columns_ || line_.too_many) {
        report_.refuse(cursor_.line, "rows run over several lines, which come to more cells here than there are "
                                     "columns");
        return Step::Refused;
    }
    // The cursor stands at the word or the cut line that ends the table.
    return drop(before.line,
                "the row has " + std::to_string(cells_.size()) + " of " + std::to_string(table_.columns_) + " cells");
}

/// Splits the next line with words. False if there is none, or one that cannot be a part of the row before it.
bool CgatsRowReader::goesOn()
{
    if (!cursor_.toWord())
        return false;
    const char *end = cursor_.lineEnd();
    splitter_.splitAtBlanks(cursor_.at, end, line_);
    return structureWord(line_.cells.front()) == CgatsWord::None && end != cursor_.end;
}

CgatsRowReader::Step CgatsRowReader::store(const std::vector<Cell> &cells, size_t line)
{
    if (budget_.rows == 0) {
        report_.refuse(line, "there are more than " + std::to_string(limits_.rows) + " rows");
        return Step::Refused;
    }
    if (budget_.cells < cells.size()) {
        report_.refuse(line, "there are more than " + std::to_string(limits_.cells) + " cells");
        return Step::Refused;
    }
    --budget_.rows;
    budget_.cells -= cells.size();
    if (table_.row_lines_.empty())
        reserve(cells.back().begin - cells.front().begin + 2);
    table_.cells_.insert(table_.cells_.end(), cells.begin(), cells.end());
    table_.row_lines_.push_back(static_cast<uint32_t>(line));
    return Step::NextLine;
}

CgatsRowReader::Step CgatsRowReader::drop(size_t line, const std::string &reason)
{
    if (table_.dropped_++ == 0)
        table_.first_dropped_ = {line, reason};
    report_.doubt(line, reason + "; it is left out");
    return Step::NextLine;
}

void CgatsRowReader::tellQuotes(const CgatsLine &line)
{
    if (line.unclosed_quote)
        report_.assume(cursor_.line, "a quote is not closed; its cell is taken to end at the next blank");
    if (line.stray_quote)
        report_.assume(cursor_.line, "a cell has a quote inside or at its end only");
    if (line.doubled_quotes)
        report_.assume(cursor_.line, "a cell is in doubled quotes");
}

/// True for a last line without line break, whose last value may be cut. Such a row is dropped, but in a bare table,
/// where nothing has to follow it.
bool CgatsRowReader::isCut(const char *line_end, const std::vector<Cell> &cells)
{
    if (line_end != cursor_.end)
        return false;
    if (bare_) {
        report_.assume(cursor_.line, "the last line has no line break; its last value is taken as whole");
        return false;
    }
    const std::string_view first = view(cells.front());
    const std::string_view last_word = "END_DATA";
    ended_inside_word_ = cells.size() == 1 && cgatsEqual(first, last_word.substr(0, first.size()));
    if (ended_inside_word_)
        report_.assume(cursor_.line, "the file ends inside END_DATA");
    else
        drop(cursor_.line, "the file ends inside this row or right behind it, so its last value may be cut");
    return true;
}

bool CgatsRowReader::cellsAreShort(const std::vector<Cell> &cells, size_t line)
{
    const auto tooLong = [this](const Cell &cell) {
        return view(cell).size() > limits_.cell_length;
    };
    if (std::none_of(cells.begin(), cells.end(), tooLong))
        return true;
    report_.refuse(line, "a cell is longer than " + std::to_string(limits_.cell_length) + " bytes");
    return false;
}

/// Rows are much alike in length, so the first tells how much room they will need. A cell takes two bytes at least.
void CgatsRowReader::reserve(size_t row_length)
{
    const auto left = static_cast<size_t>(cursor_.end - cursor_.at);
    const size_t rows = std::min(left / row_length * 21 / 20 + 2, budget_.rows + 1);
    table_.cells_.reserve(std::min({rows * table_.columns_, left / 2 + table_.columns_, budget_.cells + 1}));
    table_.row_lines_.reserve(rows);
}
