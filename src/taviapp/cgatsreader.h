// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_CGATSREADER_H
#define TAVIAPP_CGATSREADER_H

#include "taviapp/cgatsreport.h"
#include "taviapp/taviapp_export.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

/// How much a file may hold. What goes beyond is refused, so that a hostile file costs bounded memory and time.
struct CgatsLimits {
    size_t file_size = 512U << 20; ///< Bytes; never above 2 GiB.
    size_t tables = 256;
    size_t keywords = 10000;    ///< Header lines of one table.
    size_t fields = 1024;       ///< Columns of one table.
    size_t rows = 4000000;      ///< Rows of all tables together.
    size_t cells = 64000000;    ///< Cells of all tables together.
    size_t cell_length = 16384; ///< Bytes of a cell, a field name, a keyword or its value.
};

/// One table of a CGATS file: its header, its field names and its rows of cells.
///
/// Every row has columnCount() cells. A value; copies share the text of the file, which is not changed any more, so
/// that tables may be read from several threads.
class TAVIAPP_EXPORT CgatsTable
{
public:
    /// A keyword and its value, and the line it stands in.
    struct Keyword {
        std::string name;  ///< As the file writes it.
        std::string value; ///< Without quotes, in UTF-8; empty for a keyword alone on its line.
        size_t line;
    };

    /// The place of a cell in the text of the file.
    struct Cell {
        uint32_t begin;
        uint32_t length; ///< Bytes without the quotes around it, and perhaps the mark #doubled_quotes.
    };
    /// In Cell::length: the cell holds pairs of quotes, each of which stands for one.
    static constexpr uint32_t doubled_quotes = 0x80000000U;

    /// The line on which the table's first row or, if it has a header, its header begins.
    size_t line() const { return line_; }
    /// The line in front of the header that tells the kind of file, such as "CGATS.17"; often empty.
    const std::string &identifier() const { return identifier_; }
    /// The header's lines of keyword and value, in file order, without those that give the table its structure.
    const std::vector<Keyword> &keywords() const { return keywords_; }
    /// The value of the first keyword @a name, whatever its case; null if there is none. O(keywords).
    const std::string *keyword(std::string_view name) const;

    /// The names of the columns as the file writes them; empty if it gives none.
    const std::vector<std::string> &fields() const { return fields_; }
    /// The line of the first field name or, if there is none, of BEGIN_DATA or the first row.
    size_t fieldsLine() const { return fields_.empty() ? rows_line_ : fields_line_; }
    /// The line of BEGIN_DATA or, without it, of the first row.
    size_t rowsLine() const { return rows_line_; }
    /// How many cells every row has; 0 in a table without names and rows.
    size_t columnCount() const { return columns_; }
    /// How many rows were read, without those left out.
    size_t rowCount() const { return row_lines_.size(); }
    /// Rows left out because they are not whole.
    size_t droppedRowCount() const { return dropped_; }
    /// Where the first of them stands, and what is wrong with it.
    const CgatsNote &firstDroppedRow() const { return first_dropped_; }

    /// A cell as it stands in the file, without its quotes, not converted to UTF-8; empty for a cell left empty
    /// between tabs. Valid while a copy of the table lives. O(1).
    std::string_view cell(size_t row, size_t column) const
    {
        const Cell &at = cells_[row * columns_ + column];
        return std::string_view(*text_).substr(at.begin, at.length & ~doubled_quotes);
    }
    /// A cell as UTF-8 text. @a converted, where given, tells whether its bytes were no UTF-8 and have been taken as
    /// Windows-1252 (Latin-1 with typographic signs).
    std::string cellText(size_t row, size_t column, bool *converted = nullptr) const;
    /// The line a row begins on.
    size_t rowLine(size_t row) const { return row_lines_[row]; }

private:
    friend class CgatsParser;
    friend class CgatsRowReader;

    std::shared_ptr<const std::string> text_;
    size_t line_ = 0;
    std::string identifier_;
    std::vector<Keyword> keywords_;
    std::vector<std::string> fields_;
    size_t fields_line_ = 0;
    size_t rows_line_ = 0;
    size_t columns_ = 0;
    size_t dropped_ = 0;
    CgatsNote first_dropped_ = {};
    std::vector<Cell> cells_; ///< Row after row. Places in the text, so that a cell costs no allocation.
    std::vector<uint32_t> row_lines_;
};

/// The tables of a CGATS text file (ANSI CGATS.17, ISO 28178 and their forerunners, of which ISO 12642 data files are
/// one kind), as they stand in it: nothing is interpreted but the structure.
///
/// Files depart from the format in many ways. What can be read without guessing at numbers is read, each departure is
/// noted in the report with its line; a file whose meaning would be a guess is refused with a line and a reason. A
/// row that is not whole never becomes a row.
///
/// Files may be in UTF-8, in Windows-1252 or, with a byte order mark, in UTF-16; lines may end in any of the three
/// usual ways. A `.INCLUDE` in a data file is noted and not obeyed.
///
/// A value. Functions throw std::bad_alloc if memory is out and nothing else. May be called from any thread.
class TAVIAPP_EXPORT CgatsFile
{
public:
    /// Reads the regular file at @a path. On a refusal the report says so and there are no tables. O(file size).
    static CgatsFile read(const std::string &path, CgatsReport &report, const CgatsLimits &limits = CgatsLimits());
    /// The same for text that is in memory, all bytes of a file.
    static CgatsFile parse(std::string bytes, CgatsReport &report, const CgatsLimits &limits = CgatsLimits());

    /// The tables in file order; none if the file was refused.
    const std::vector<CgatsTable> &tables() const { return tables_; }

private:
    static constexpr size_t largest_file = (1U << 31) - 1; ///< A cell's place has 32 bits, its length 31.

    std::vector<CgatsTable> tables_;
};

#endif
