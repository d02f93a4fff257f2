// SPDX-License-Identifier: MIT
#include "taviapp/cgatsparser_p.h"

#include "taviapp/cgatstext_p.h"

#include <algorithm>
#include <charconv>

namespace {

std::string_view trimmed(std::string_view text)
{
    constexpr const char *blanks = " \t\f\v";
    const size_t first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return std::string_view();
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// The first line of a file tells its kind, "CGATS.17" or "IT8.7/2 and some words", unless it is a keyword already.
bool isIdentifier(std::string_view word, std::string_view value)
{
    if (value.empty())
        return true;
    return value.front() != '"' && word.find_first_of("./0123456789") != std::string_view::npos;
}

} // namespace

size_t CgatsParser::Announced::number() const
{
    size_t value = 0;
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size() ? value : 0;
}

CgatsParser::CgatsParser(std::shared_ptr<const std::string> text, CgatsReport &report, const CgatsLimits &limits)
    : text_(std::move(text)), report_(report),
      limits_(limits), cursor_{text_->data(), text_->data() + text_->size()}, budget_{limits.rows, limits.cells},
      notes_before_(report.assumptions.size())
{}

std::vector<CgatsTable> CgatsParser::run()
{
    if (!parse())
        return {};
    report_.tables = tables_.size();
    return std::move(tables_);
}

bool CgatsParser::parse()
{
    startTable();
    while (cursor_.toWord()) {
        // Without a structure word so far this is perhaps no header but a table already.
        if (!structure_seen_ && table_.keywords_.size() >= limits_.keywords)
            return parseBare();
        if (!parseHeaderWord())
            return false;
    }
    return structure_seen_ ? checkLeftover() : parseBare();
}

void CgatsParser::startTable()
{
    table_ = CgatsTable();
    table_.text_ = text_;
    announced_fields_ = announced_sets_ = Announced();
    has_format_ = false;
}

bool CgatsParser::parseHeaderWord()
{
    const size_t line = cursor_.line;
    if (table_.line_ == 0)
        table_.line_ = line;
    bool quoted = false;
    const std::string_view word = cursor_.takeWord(&quoted);
    const CgatsWord structure = quoted ? CgatsWord::None : cgatsWord(word);
    if (structure == CgatsWord::None)
        return parseKeyword(word);
    structure_seen_ = structure_seen_ || structure != CgatsWord::Include;
    return parseStructure(structure, word, line);
}

bool CgatsParser::parseStructure(CgatsWord word, std::string_view text, size_t line)
{
    const auto isLower = [](char c) {
        return c >= 'a' && c <= 'z';
    };
    if (!case_told_ && std::any_of(text.begin(), text.end(), isLower)) {
        report_.assume(line, "the keyword " + cgatsQuoted(text) + " is not in capitals");
        case_told_ = true;
    }
    switch (word) {
    case CgatsWord::BeginDataFormat:
        return parseFormat(line);
    case CgatsWord::BeginData:
        return parseRows(false);
    case CgatsWord::NumberOfFields:
        announced_fields_ = {cursor_.takeWord(), line};
        return true;
    case CgatsWord::NumberOfSets:
        announced_sets_ = {cursor_.takeWord(), line};
        return true;
    case CgatsWord::Include:
        report_.assume(line, "the file asks for another one to be included; that is not done");
        cursor_.toNextLine(cursor_.lineEnd());
        return true;
    default:
        report_.assume(line, cgatsQuoted(text) + " stands where nothing has begun");
        return true;
    }
}

bool CgatsParser::parseFormat(size_t line)
{
    if (has_format_)
        report_.assume(line, "there is a second format block; it is the one that counts");
    has_format_ = true;
    table_.fields_.clear();
    while (cursor_.toWord()) {
        const CgatsCursor before = cursor_;
        bool quoted = false;
        const std::string_view name = cursor_.takeWord(&quoted);
        const CgatsWord word = quoted ? CgatsWord::None : cgatsWord(name);
        if (word == CgatsWord::EndDataFormat)
            return true;
        if (word != CgatsWord::None) {
            cursor_ = before;
            break;
        }
        if (!isShort(name))
            return false;
        if (table_.fields_.size() == limits_.fields) {
            report_.refuse(cursor_.line, "there are more than " + std::to_string(limits_.fields) + " columns");
            return false;
        }
        table_.fields_.emplace_back(name);
    }
    report_.assume(line, "the format block is not closed by END_DATA_FORMAT");
    return true;
}

bool CgatsParser::parseKeyword(std::string_view name)
{
    const size_t line = cursor_.line;
    const std::string_view rest =
        trimmed(std::string_view(cursor_.at, static_cast<size_t>(cursor_.lineEnd() - cursor_.at)));
    if (!isShort(name) || !isShort(rest))
        return false;
    if (table_.keywords_.size() >= limits_.keywords) {
        report_.refuse(line, "there are more than " + std::to_string(limits_.keywords) + " header lines");
        return false;
    }
    if (table_.identifier_.empty() && table_.keywords_.empty() && isIdentifier(name, rest)) {
        table_.identifier_ = utf8(name);
        if (!rest.empty())
            table_.identifier_ += ' ' + utf8(rest);
    } else {
        table_.keywords_.push_back({std::string(name), headerValue(), line});
    }
    cursor_.toNextLine(cursor_.lineEnd());
    return true;
}

/// The value of a keyword, whose line is short enough: what is in quotes, else the rest of the line.
std::string CgatsParser::headerValue()
{
    const char *end = cursor_.lineEnd();
    const std::string_view rest = trimmed(std::string_view(cursor_.at, static_cast<size_t>(end - cursor_.at)));
    if (rest.empty())
        return std::string();
    if (rest.front() != '"') {
        const bool words = rest.find_first_of(" \t") != std::string_view::npos;
        if (words && rest.find_first_not_of("0123456789.,+-eE \t") != std::string_view::npos)
            report_.assume(cursor_.line,
                           "a value of several words is not in quotes; it is taken to the end of the line");
        return utf8(rest);
    }
    CgatsLine line;
    CgatsLineSplitter(text_->data(), 1).splitAtBlanks(rest.data(), end, line);
    if (line.unclosed_quote) {
        report_.assume(cursor_.line, "a quote is not closed; the value is taken to the end of the line");
        return utf8(rest.substr(1));
    }
    if (line.doubled_quotes)
        report_.assume(cursor_.line, "a value is in doubled quotes");
    const CgatsTable::Cell &cell = line.cells.front();
    const std::string_view value(text_->data() + cell.begin, cell.length & ~CgatsTable::doubled_quotes);
    std::string text = utf8(value);
    if (cell.length & CgatsTable::doubled_quotes)
        cgatsUndoubleQuotes(text);
    return text;
}

/// Reads the whole text again, as rows without any structure around them.
bool CgatsParser::parseBare()
{
    // What came up while it was taken for a header says nothing about it.
    report_.assumptions.resize(notes_before_);
    report_.notes_left_out = 0;
    cursor_ = {text_->data(), text_->data() + text_->size()};
    startTable();
    if (!cursor_.toWord()) {
        report_.refuse(0, "the file holds no text");
        return false;
    }
    table_.line_ = cursor_.line;
    return parseRows(true);
}

bool CgatsParser::parseRows(bool bare)
{
    const size_t line = cursor_.line;
    if (tables_.size() == limits_.tables) {
        report_.refuse(line, "there are more than " + std::to_string(limits_.tables) + " tables");
        return false;
    }
    if (bare)
        report_.assume(line, "the file has no CGATS structure; its lines are taken for the rows of a table");
    else if (table_.fields_.empty())
        report_.assume(line, has_format_ ? "the format block names no column" : "there is no format block");
    const bool named = !table_.fields_.empty();
    CgatsRowReader rows(text_->data(), cursor_, table_, budget_, report_, limits_, bare);
    if (!rows.read(announced_sets_.number()))
        return false;
    if (!bare) {
        checkAnnounced(announced_fields_, "NUMBER_OF_FIELDS", table_.columns_,
                       named ? " columns named" : " cells in the first row");
        checkAnnounced(announced_sets_, "NUMBER_OF_SETS", table_.rowCount() + table_.dropped_, " rows");
    }
    tables_.push_back(std::move(table_));
    startTable();
    return true;
}

void CgatsParser::checkAnnounced(const Announced &announced, const char *keyword, size_t found, const char *unit)
{
    const std::string have = std::to_string(found) + unit;
    if (announced.line == 0)
        report_.assume(table_.line_, std::string("there is no ") + keyword + "; there are " + have);
    else if (announced.number() != found)
        report_.assume(announced.line,
                       std::string(keyword) + " is " + cgatsQuoted(announced.text) + "; there are " + have);
}

/// What is behind the last table.
bool CgatsParser::checkLeftover()
{
    if (table_.line_ == 0)
        return true;
    if (tables_.empty()) {
        report_.refuse(cursor_.line, "the file ends before BEGIN_DATA");
        return false;
    }
    report_.assume(table_.line_, "what is behind the last table has no rows; it is left out");
    return true;
}

bool CgatsParser::isShort(std::string_view text)
{
    if (text.size() <= limits_.cell_length)
        return true;
    report_.refuse(cursor_.line, "a word or value is longer than " + std::to_string(limits_.cell_length) + " bytes");
    return false;
}

std::string CgatsParser::utf8(std::string_view bytes)
{
    bool converted = false;
    std::string text = cgatsToUtf8(bytes, &converted);
    if (converted)
        report_.assume(cursor_.line, "the text is no UTF-8; it is taken for Windows-1252");
    return text;
}
