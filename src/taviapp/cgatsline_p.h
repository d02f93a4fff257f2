// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_CGATSLINE_P_H
#define TAVIAPP_CGATSLINE_P_H

#include "taviapp/cgatsreader.h"

#include <array>

/// @file
/// Moving through the text of a CGATS file, and cutting its lines into cells. Not installed.
///
/// The text ends in a zero byte and holds no other, so that loops need no second end condition.

enum class CgatsCharacter : uint8_t { Text, Hash, Quote, Blank, LineEnd, End };

/// What each byte is. All that may stand inside a cell sorts before Quote.
constexpr std::array<CgatsCharacter, 256> cgatsCharacters()
{
    std::array<CgatsCharacter, 256> kinds = {};
    kinds['\0'] = CgatsCharacter::End;
    kinds['\n'] = kinds['\r'] = CgatsCharacter::LineEnd;
    kinds[' '] = kinds['\t'] = kinds['\f'] = kinds['\v'] = CgatsCharacter::Blank;
    kinds['"'] = CgatsCharacter::Quote;
    kinds['#'] = CgatsCharacter::Hash;
    return kinds;
}

inline CgatsCharacter cgatsCharacter(char c)
{
    static constexpr std::array<CgatsCharacter, 256> kinds = cgatsCharacters();
    return kinds[static_cast<unsigned char>(c)];
}

/// A place in the text, and the line it is on.
struct CgatsCursor {
    const char *at;
    const char *end; ///< Where the zero byte stands.
    size_t line = 1;

    bool atEnd() const { return at == end; }
    /// The end of the line at hand: its line break, or the end of the text.
    const char *lineEnd() const;
    /// Goes behind the line break at @a line_end; a carriage return with its line feed is one.
    void toNextLine(const char *line_end);
    /// Goes to the next word, over blanks, comments and line breaks. False if there is none.
    bool toWord();
    /// Takes the word at hand, without the quotes around it. Empty if there is none on this line. @a quoted, where
    /// given, tells whether it stood in quotes.
    std::string_view takeWord(bool *quoted = nullptr);
};

/// A line cut into cells.
struct CgatsLine {
    std::vector<CgatsTable::Cell> cells;
    bool too_many = false; ///< There are more cells than were asked for; they are left out.
    bool unclosed_quote = false;
    bool stray_quote = false;
    bool doubled_quotes = false;
    bool inner_gap = false; ///< Of a line cut at tabs: a cell before the last is empty.

    void clear();
};

/// Cuts lines into cells. The text and @a most_cells hold for all lines.
class CgatsLineSplitter
{
public:
    CgatsLineSplitter(const char *text, size_t most_cells) : text_(text), most_(most_cells) {}

    /// Cuts the line at @a at, which ends at its line end, at blanks. False, with @a at and the cells undefined, for
    /// a line that has to be looked at with care: a comment, a quote out of place, an empty place between two tabs.
    bool splitPlain(const char *&at, std::vector<CgatsTable::Cell> &cells) const;
    /// Cuts any line at blanks. A cell may stand in quotes; a `#` at the begin of a cell opens a comment.
    void splitAtBlanks(const char *begin, const char *end, CgatsLine &line) const;
    /// Cuts any line at tabs, which keeps empty cells and blanks inside cells.
    void splitAtTabs(const char *begin, const char *end, CgatsLine &line) const;

private:
    CgatsTable::Cell cell(const char *begin, const char *end) const
    {
        return {static_cast<uint32_t>(begin - text_), static_cast<uint32_t>(end - begin)};
    }
    const char *quotedCell(const char *begin, const char *end, CgatsLine &line) const;

    const char *text_;
    size_t most_;
};

#endif
