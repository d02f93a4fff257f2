// SPDX-License-Identifier: MIT
#ifndef SIMSPECTRO_CGATSTABLE_H
#define SIMSPECTRO_CGATSTABLE_H

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace simspectro {

/// The first table of a CGATS file, cell by cell.
///
/// Understood is what measurement programs write: keywords, a BEGIN_DATA_FORMAT block, a BEGIN_DATA block with one
/// set a line, cells between white space, quoted where they hold some, "#" comments, any line ends.
class CgatsTable
{
public:
    /// Reads a file. Nothing if that is not possible; @a fault then says what is wrong and where.
    static std::optional<CgatsTable> read(const std::string &path, std::string &fault);
    /// Reads the content of a file; @a path only names it in @a fault.
    static std::optional<CgatsTable> parse(std::string_view content, const std::string &path, std::string &fault);

    /// The name of the file.
    const std::string &path() const { return path_; }
    size_t rowCount() const { return rows_.size(); }
    /// The column with the name @a field, whatever its case; nothing if there is none.
    std::optional<size_t> column(std::string_view field) const;
    /// The column names, in upper case.
    const std::vector<std::string> &fields() const { return fields_; }
    const std::string &cell(size_t row, size_t column) const { return rows_[row].cells[column]; }
    /// The cell as a finite number; nothing if it is none, and @a fault then says so.
    std::optional<double> number(size_t row, size_t column, std::string &fault) const;

private:
    struct Row {
        int line;
        std::vector<std::string> cells;
    };
    std::string path_;
    std::vector<std::string> fields_;
    std::vector<Row> rows_;
};

} // namespace simspectro

#endif
