// SPDX-License-Identifier: MIT
#include "taviapp/cgatsline_p.h"

#include <algorithm>
#include <cstring>

namespace {

bool isBlank(char c)
{
    return cgatsCharacter(c) == CgatsCharacter::Blank;
}

const char *skipBlanks(const char *at)
{
    while (isBlank(*at))
        ++at;
    return at;
}

/// Behind the last byte of an unquoted word that begins at @a at.
const char *wordEnd(const char *at)
{
    while (cgatsCharacter(*at) < CgatsCharacter::Blank)
        ++at;
    return at;
}

/// The next pair of quotes, or null.
const char *pairOfQuotes(const char *begin, const char *end)
{
    constexpr char pair[2] = {'"', '"'};
    const char *found = std::search(begin, end, pair, pair + 2);
    return found == end ? nullptr : found;
}

} // namespace

const char *CgatsCursor::lineEnd() const
{
    const char *p = at;
    while (cgatsCharacter(*p) < CgatsCharacter::LineEnd)
        ++p;
    return p;
}

void CgatsCursor::toNextLine(const char *line_end)
{
    at = line_end;
    if (at == end)
        return;
    at += at[0] == '\r' && at[1] == '\n' ? 2 : 1;
    ++line;
}

bool CgatsCursor::toWord()
{
    for (;;) {
        at = skipBlanks(at);
        const CgatsCharacter kind = cgatsCharacter(*at);
        if (kind == CgatsCharacter::End)
            return false;
        if (kind == CgatsCharacter::Hash || kind == CgatsCharacter::LineEnd)
            toNextLine(lineEnd());
        else
            return true;
    }
}

std::string_view CgatsCursor::takeWord(bool *quoted)
{
    at = skipBlanks(at);
    const CgatsCharacter kind = cgatsCharacter(*at);
    if (quoted)
        *quoted = kind == CgatsCharacter::Quote;
    if (kind >= CgatsCharacter::LineEnd || kind == CgatsCharacter::Hash)
        return std::string_view();
    const char *begin = at;
    if (kind == CgatsCharacter::Quote) {
        const char *line_end = lineEnd();
        const char *close = std::find(begin + 1, line_end, '"');
        at = close == line_end ? line_end : close + 1;
        return std::string_view(begin + 1, static_cast<size_t>(close - begin - 1));
    }
    at = wordEnd(at);
    return std::string_view(begin, static_cast<size_t>(at - begin));
}

void CgatsLine::clear()
{
    cells.clear();
    too_many = unclosed_quote = stray_quote = doubled_quotes = inner_gap = false;
}

bool CgatsLineSplitter::splitPlain(const char *&at, std::vector<CgatsTable::Cell> &cells) const
{
    const char *p = skipBlanks(at);
    while (cgatsCharacter(*p) < CgatsCharacter::LineEnd) {
        const char *begin = p;
        if (cgatsCharacter(*p) == CgatsCharacter::Quote) {
            begin = ++p;
            while (cgatsCharacter(*p) != CgatsCharacter::Quote) {
                if (cgatsCharacter(*p) >= CgatsCharacter::LineEnd)
                    return false;
                ++p;
            }
            cells.push_back(cell(begin, p));
            ++p;
        } else {
            if (cgatsCharacter(*p) == CgatsCharacter::Hash)
                return false;
            do
                ++p;
            while (cgatsCharacter(*p) < CgatsCharacter::Quote);
            cells.push_back(cell(begin, p));
        }
        if (cgatsCharacter(*p) < CgatsCharacter::Blank || cells.size() > most_)
            return false;
        const char *gap = p;
        p = skipBlanks(p);
        if (p - gap > 1 && *gap == '\t' && p[-1] == '\t' && cgatsCharacter(*p) < CgatsCharacter::LineEnd)
            return false;
    }
    at = p;
    return true;
}

/// Adds the cell whose opening quote is at @a begin and returns the place behind it. A search to the end of the line
/// fails once or twice a line at most: behind an open quote all others stand in pairs, and each pair closes a cell.
const char *CgatsLineSplitter::quotedCell(const char *begin, const char *end, CgatsLine &line) const
{
    const char *p = begin + 1;
    const bool twice = p < end && *p == '"';
    const bool empty = twice && (p + 1 == end || isBlank(p[1]));
    if (empty) {
        line.cells.push_back(cell(p, p));
        return p + 1;
    }
    if (twice && p[1] != '"') {
        if (const char *close = pairOfQuotes(p + 1, end)) {
            line.doubled_quotes = true;
            line.cells.push_back(cell(p + 1, close));
            return close + 2;
        }
    }
    uint32_t mark = 0;
    for (; p < end; ++p) {
        if (*p != '"')
            continue;
        if (p + 1 == end || p[1] != '"') {
            CgatsTable::Cell found = cell(begin + 1, p);
            found.length |= mark;
            line.cells.push_back(found);
            return p + 1;
        }
        mark = CgatsTable::doubled_quotes;
        ++p;
    }
    // Without its other quote a cell ends at a blank, as any other.
    line.unclosed_quote = true;
    p = std::find_if(begin + 1, end, isBlank);
    const char *last = p;
    while (last > begin + 1 && last[-1] == '"')
        --last;
    line.cells.push_back(cell(begin + 1, last));
    return p;
}

void CgatsLineSplitter::splitAtBlanks(const char *begin, const char *end, CgatsLine &line) const
{
    line.clear();
    const char *p = begin;
    while (p < end) {
        if (isBlank(*p)) {
            ++p;
            continue;
        }
        if (*p == '#')
            return;
        if (line.cells.size() == most_) {
            line.too_many = true;
            return;
        }
        if (*p == '"') {
            p = quotedCell(p, end, line);
            continue;
        }
        const char *word_end = std::find_if(p, end, isBlank);
        const char *last = word_end;
        line.stray_quote = line.stray_quote || std::find(p, word_end, '"') != word_end;
        while (last > p && last[-1] == '"')
            --last;
        line.cells.push_back(cell(p, last));
        p = word_end;
    }
}

void CgatsLineSplitter::splitAtTabs(const char *begin, const char *end, CgatsLine &line) const
{
    line.clear();
    bool gap = false;
    for (const char *p = begin;; ++p) {
        const char *tab = std::find(p, end, '\t');
        const char *first = std::find_if_not(p, tab, isBlank);
        const char *last = tab;
        while (last > first && isBlank(last[-1]))
            --last;
        if (line.cells.size() == most_) {
            line.too_many = true;
            return;
        }
        uint32_t mark = 0;
        if (last - first >= 2 && *first == '"' && last[-1] == '"') {
            ++first;
            --last;
            if (pairOfQuotes(first, last))
                mark = CgatsTable::doubled_quotes;
        }
        line.inner_gap = line.inner_gap || (gap && first != last);
        gap = gap || first == last;
        CgatsTable::Cell found = cell(first, last);
        found.length |= mark;
        line.cells.push_back(found);
        if (tab == end)
            return;
        p = tab;
    }
}
