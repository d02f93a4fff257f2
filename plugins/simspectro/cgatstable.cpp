// SPDX-License-Identifier: MIT
#include "cgatstable.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace simspectro {

namespace {

constexpr size_t max_file_size = size_t{64} << 20;

std::string place(const std::string &path, int line, const std::string &what)
{
    return path + ", line " + std::to_string(line) + ": " + what;
}

/// Cuts the first line off @a rest: "\n", "\r\n" and "\r" end one.
std::string_view takeLine(std::string_view &rest)
{
    const size_t end = std::min(rest.find_first_of("\r\n"), rest.size());
    const std::string_view line = rest.substr(0, end);
    rest.remove_prefix(end);
    if (rest.starts_with("\r\n"))
        rest.remove_prefix(2);
    else if (!rest.empty())
        rest.remove_prefix(1);
    return line;
}

/// The cells of a line; false if a quote has no end.
bool splitLine(std::string_view line, std::vector<std::string> &cells)
{
    cells.clear();
    for (;;) {
        const size_t begin = line.find_first_not_of(" \t\v\f");
        if (begin == std::string_view::npos || line[begin] == '#')
            return true;
        line.remove_prefix(begin);
        size_t end = 0;
        if (line.front() == '"') {
            line.remove_prefix(1);
            end = line.find('"');
            if (end == std::string_view::npos)
                return false;
            cells.emplace_back(line.substr(0, end));
            line.remove_prefix(end + 1);
        } else {
            end = std::min(line.find_first_of(" \t\v\f"), line.size());
            cells.emplace_back(line.substr(0, end));
            line.remove_prefix(end);
        }
    }
}

std::string upper(std::string_view text)
{
    std::string result(text);
    std::transform(result.begin(), result.end(), result.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; });
    return result;
}

} // namespace

std::optional<CgatsTable> CgatsTable::read(const std::string &path, std::string &fault)
{
    // Without O_NONBLOCK opening a pipe waits for a writer. Of a regular file it changes nothing.
    const int descriptor = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
    struct stat status = {};
    if (descriptor >= 0 && fstat(descriptor, &status) == 0 && !S_ISREG(status.st_mode) && !S_ISDIR(status.st_mode)) {
        close(descriptor);
        fault = path + ": it is no regular file";
        return std::nullopt;
    }
    const std::unique_ptr<FILE, int (*)(FILE *)> file(descriptor >= 0 ? fdopen(descriptor, "rb") : nullptr,
                                                      std::fclose);
    std::string content;
    bool failed = !file;
    while (!failed && content.size() <= max_file_size) {
        char block[65536];
        const size_t size = std::fread(block, 1, sizeof block, file.get());
        content.append(block, size);
        failed = std::ferror(file.get()) != 0; // a directory opens, and only then fails to be read
        if (size == 0)
            break;
    }
    if (failed) {
        fault = path + ": " + std::strerror(errno);
        return std::nullopt;
    }
    if (content.size() > max_file_size) {
        fault = path + ": larger than 64 MiB";
        return std::nullopt;
    }
    return parse(content, path, fault);
}

std::optional<CgatsTable> CgatsTable::parse(std::string_view content, const std::string &path, std::string &fault)
{
    enum { Keywords, Format, Data } block = Keywords;
    CgatsTable table;
    table.path_ = path;
    std::string announced_rows;
    std::vector<std::string> cells;
    int line = 0;
    const auto refuse = [&](const std::string &what) {
        fault = place(path, line, what);
        return std::nullopt;
    };

    if (content.starts_with("\xef\xbb\xbf"))
        content.remove_prefix(3);
    while (!content.empty()) {
        ++line;
        if (!splitLine(takeLine(content), cells))
            return refuse("a quote has no end");
        if (cells.empty())
            continue;
        const std::string keyword = upper(cells.front());
        if (block == Keywords && keyword == "NUMBER_OF_SETS" && cells.size() > 1) {
            announced_rows = cells[1];
        } else if (block == Keywords && keyword == "BEGIN_DATA_FORMAT") {
            block = Format;
            cells.erase(cells.begin());
        } else if (block == Keywords && keyword == "BEGIN_DATA") {
            if (table.fields_.empty())
                return refuse("BEGIN_DATA without a BEGIN_DATA_FORMAT block before it");
            block = Data;
            continue;
        }
        if (block == Format) {
            for (const std::string &cell : cells) {
                const std::string field = upper(cell);
                if (field == "END_DATA_FORMAT") {
                    block = Keywords;
                    break;
                }
                if (table.column(field))
                    return refuse("the column " + field + " stands twice");
                table.fields_.push_back(field);
            }
        } else if (block == Data) {
            if (keyword == "END_DATA") {
                const std::string rows = std::to_string(table.rows_.size());
                if (table.rows_.empty())
                    return refuse("the data block is empty");
                if (!announced_rows.empty() && announced_rows != rows)
                    return refuse(rows + " sets where NUMBER_OF_SETS says " + announced_rows);
                return table;
            }
            if (cells.size() != table.fields_.size())
                return refuse(std::to_string(cells.size()) + " cells for " + std::to_string(table.fields_.size())
                              + " columns");
            table.rows_.push_back({line, cells});
        }
    }
    if (block == Data)
        return refuse("the file ends without END_DATA");
    if (block == Format)
        return refuse("the file ends without END_DATA_FORMAT");
    return refuse(table.fields_.empty() ? "no BEGIN_DATA_FORMAT: this is no CGATS file" : "no BEGIN_DATA");
}

std::optional<size_t> CgatsTable::column(std::string_view field) const
{
    const auto found = std::find(fields_.begin(), fields_.end(), upper(field));
    if (found == fields_.end())
        return std::nullopt;
    return static_cast<size_t>(found - fields_.begin());
}

std::optional<double> CgatsTable::number(size_t row, size_t column, std::string &fault) const
{
    const std::string &text = cell(row, column);
    const char *begin = text.c_str();
    const char *end = begin + text.size();
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        ++begin;
    double value = 0.0;
    const auto [stopped, error] = std::from_chars(begin, end, value);
    if (error != std::errc() || stopped != end || !std::isfinite(value)) {
        fault = place(path_, rows_[row].line, fields_[column] + " is '" + text + "', no number");
        return std::nullopt;
    }
    return value;
}

} // namespace simspectro
