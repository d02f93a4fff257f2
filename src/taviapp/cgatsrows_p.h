// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_CGATSROWS_P_H
#define TAVIAPP_CGATSROWS_P_H

#include "taviapp/cgatsline_p.h"

/// Words that give a CGATS file its structure.
enum class CgatsWord {
    None,
    BeginDataFormat,
    EndDataFormat,
    BeginData,
    EndData,
    NumberOfFields,
    NumberOfSets,
    Include
};

/// Which of them a word is, whatever its case.
CgatsWord cgatsWord(std::string_view word);

/// How many rows and cells the tables to come may still have.
struct CgatsBudget {
    size_t rows;
    size_t cells;
};

/// Reads the rows of one table: from behind BEGIN_DATA to behind END_DATA, or a text without these words. Not
/// installed.
class CgatsRowReader
{
public:
    /// @a bare: there is no structure around the rows, so every line has to be a row.
    CgatsRowReader(const char *text, CgatsCursor &cursor, CgatsTable &table, CgatsBudget &budget, CgatsReport &report,
                   const CgatsLimits &limits, bool bare);

    /// False if the report now holds a refusal. @a announced_rows is what the header says, 0 if nothing.
    bool read(size_t announced_rows);

private:
    using Cell = CgatsTable::Cell;
    enum class Step { NextLine, Done, Refused };

    void takeNames();
    Step takeLine();
    Step takeOddLine();
    Step takeStructure(const Cell &first);
    bool setColumns(size_t count);
    bool takeTabCells(const char *begin, const char *end, size_t blank_count);
    Step joinLines();
    bool goesOn();
    Step store(const std::vector<Cell> &cells, size_t line);
    Step drop(size_t line, const std::string &reason);
    void tellQuotes(const CgatsLine &line);
    bool isCut(const char *line_end, const std::vector<Cell> &cells);
    bool cellsAreShort(const std::vector<Cell> &cells, size_t line);
    void reserve(size_t row_length);
    bool mayBeStructure(const Cell &cell) const;
    CgatsWord structureWord(const Cell &first) const;

    std::string_view view(const Cell &cell) const
    {
        return std::string_view(text_ + cell.begin, cell.length & ~CgatsTable::doubled_quotes);
    }

    const char *text_;
    CgatsCursor &cursor_;
    CgatsTable &table_;
    CgatsBudget &budget_;
    CgatsReport &report_;
    const CgatsLimits &limits_;
    const bool bare_;
    const CgatsLineSplitter splitter_;
    std::vector<Cell> cells_; ///< Of the line at hand.
    CgatsLine line_;
    CgatsLine tab_line_;
    bool wrapped_ = false; ///< Every row runs over several lines.
    bool tabs_told_ = false;
    bool ended_inside_word_ = false; ///< The file ends inside END_DATA.
};

#endif
