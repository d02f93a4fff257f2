// SPDX-License-Identifier: MIT
#include "taviapp/cgatscolumns_p.h"

#include "taviapp/cgatsnumber_p.h"
#include "taviapp/cgatstext_p.h"
#include "tavilib/tavirecords.h"

#include <algorithm>
#include <charconv>
#include <initializer_list>
#include <map>
#include <set>

namespace {

/// More inks than this a record does not keep.
constexpr size_t most_inks = 8;
/// A longer name is none of an ink. As many as two digits can number.
constexpr size_t most_lettered_inks = 99;

std::string upper(std::string_view name)
{
    std::string text(name);
    for (char &c : text) {
        if (c >= 'a' && c <= 'z')
            c = static_cast<char>(c - ('a' - 'A'));
    }
    return text;
}

/// The first column of each name. With tens of thousands of names in the tables of a hostile file a search must not
/// go through them all.
class ColumnIndex
{
public:
    explicit ColumnIndex(const std::vector<std::string> &names)
    {
        for (size_t column = 0; column < names.size(); ++column)
            columns_.emplace(names[column], column);
    }

    std::optional<size_t> find(std::string_view name) const
    {
        const auto found = columns_.find(name);
        return found == columns_.end() ? std::nullopt : std::optional(found->second);
    }

private:
    std::map<std::string_view, size_t> columns_;
};

/// The field names of one table, in capitals.
class Names
{
public:
    Names(const CgatsTable &table, std::vector<std::string> &notes) : fields_(table.fields()), notes_(notes)
    {
        for (const std::string &field : table.fields())
            names_.push_back(upper(field));
        index_ = ColumnIndex(names_);
    }

    size_t count() const { return names_.size(); }
    const std::string &operator[](size_t column) const { return names_[column]; }

    std::optional<size_t> find(std::string_view name) const { return index_.find(name); }

    /// The columns of all @a names, or nothing unless each is there.
    std::vector<size_t> findAll(std::initializer_list<std::string_view> names) const
    {
        std::vector<size_t> columns;
        for (const std::string_view name : names) {
            if (const auto column = find(name))
                columns.push_back(*column);
            else
                return {};
        }
        for (const size_t column : columns) {
            if (std::count(names_.begin(), names_.end(), names_[column]) > 1)
                notes_.push_back("there are several columns " + cgatsQuoted(fields_[column]) + "; the first is read");
        }
        return columns;
    }

    /// findAll() for names that are in use but not the format's.
    std::vector<size_t> findOther(std::initializer_list<std::string_view> names, const char *meaning) const
    {
        std::vector<size_t> columns = findAll(names);
        if (!columns.empty())
            notes_.push_back("the columns " + cgatsQuoted(fields_[columns.front()]) + " and following are taken for "
                             + meaning);
        return columns;
    }

private:
    const std::vector<std::string> &fields_;
    std::vector<std::string> names_;
    ColumnIndex index_{{}};
    std::vector<std::string> &notes_;
};

std::optional<CgatsColumns::Triple> triple(const std::vector<size_t> &columns)
{
    if (columns.size() != 3)
        return std::nullopt;
    return CgatsColumns::Triple{columns[0], columns[1], columns[2]};
}

std::vector<size_t> firstOf(std::initializer_list<std::vector<size_t>> candidates)
{
    for (const std::vector<size_t> &columns : candidates) {
        if (!columns.empty())
            return columns;
    }
    return {};
}

void findNames(const CgatsTable &table, const Names &names, CgatsColumns &columns)
{
    static constexpr std::string_view best_first[] = {"SAMPLE_NAME", "SAMPLENAME", "SAMPLE_LOC",
                                                      "SAMPLELOC",   "SAMPLE_ID",  "SAMPLEID"};
    for (const std::string_view name : best_first) {
        const auto column = names.find(name);
        if (!column)
            continue;
        columns.names.push_back(*column);
        if (name.find('_') == std::string_view::npos)
            columns.notes.push_back("the column " + cgatsQuoted(table.fields()[*column])
                                    + " is taken for the one with a '_'");
    }
}

/// Inks that are numbered, "6CLR_1" to "6CLR_6", in the order of their numbers.
std::vector<size_t> findNumberedInks(const Names &names, size_t &inks)
{
    std::set<std::string_view> tried; // a hundred and some at most
    for (size_t column = 0; column < names.count(); ++column) {
        const std::string &name = names[column];
        const size_t end = name.find("CLR_");
        if (end == std::string::npos || end == 0 || end > 2)
            continue;
        if (!tried.insert(std::string_view(name).substr(0, end)).second)
            continue;
        // Two decimal digits, or one hexadecimal as in ICC profiles.
        const auto result = std::from_chars(name.data(), name.data() + end, inks, end == 1 ? 16 : 10);
        if (result.ec != std::errc() || result.ptr != name.data() + end || inks == 0)
            continue;
        std::vector<size_t> found;
        for (size_t ink = 1; ink <= inks; ++ink) {
            const auto at = names.find(name.substr(0, end + 4) + std::to_string(ink));
            if (!at)
                break;
            found.push_back(*at);
        }
        if (found.size() == inks)
            return found;
    }
    inks = 0;
    return {};
}

/// Inks named by letters, "CMYKOG_C" to "CMYKOG_G", in the order of the letters. Case tells light inks from full
/// ones.
std::vector<size_t> findLetteredInks(const CgatsTable &table)
{
    const ColumnIndex index(table.fields());
    std::set<std::string_view> tried;
    for (const std::string &field : table.fields()) {
        const size_t end = field.find('_');
        if (end == std::string::npos || end < 5 || end > most_lettered_inks || !field.starts_with("CMYK"))
            continue;
        if (!tried.insert(std::string_view(field).substr(0, end)).second)
            continue;
        std::vector<size_t> found;
        for (size_t ink = 0; ink < end; ++ink) {
            const std::string name = field.substr(0, end + 1) + field[ink];
            const auto at = index.find(name);
            if (!at)
                break;
            found.push_back(*at);
        }
        if (found.size() == end)
            return found;
    }
    return {};
}

std::vector<size_t> findGray(const Names &names)
{
    for (size_t column = 0; column < names.count(); ++column) {
        const std::string &name = names[column];
        if (name == "GRAY" || name == "GREY" || name.starts_with("GRAY_") || name.starts_with("GREY_"))
            return {column};
    }
    return {};
}

void findDevice(const CgatsTable &table, const Names &names, CgatsColumns &columns)
{
    size_t inks = 0;
    const auto take = [&columns](std::vector<size_t> found, uint32_t model) {
        if (found.empty())
            return false;
        if (found.size() > most_inks) {
            columns.inks_beyond = found.size();
            return true;
        }
        columns.device = std::move(found);
        columns.device_model = model;
        return true;
    };
    if (take(findNumberedInks(names, inks), COMBOCOLOUR_DEVICE_NCLR)
        || take(findLetteredInks(table), COMBOCOLOUR_DEVICE_NCLR)
        || take(names.findAll({"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K"}), COMBOCOLOUR_DEVICE_CMYK)
        || take(names.findOther({"C", "M", "Y", "K"}, "CMYK"), COMBOCOLOUR_DEVICE_CMYK)
        || take(names.findAll({"CMY_C", "CMY_M", "CMY_Y"}), COMBOCOLOUR_DEVICE_CMY)
        || take(names.findAll({"RGB_R", "RGB_G", "RGB_B"}), COMBOCOLOUR_DEVICE_RGB)
        || take(findGray(names), COMBOCOLOUR_DEVICE_GRAY))
        return;
}

/// "nm380", "SPECTRAL_380", "SPECTRAL_NM_380", "SPEC_380", "380_NM", "380NM", "R_380"... : a wavelength with a word.
bool isSpectral(const std::string &name)
{
    const size_t first = name.find_first_of("0123456789");
    if (first == std::string::npos)
        return false;
    const size_t last = name.find_first_not_of("0123456789.", first);
    int wavelength = 0;
    std::from_chars(name.data() + first, name.data() + name.size(), wavelength);
    if (wavelength < 200 || wavelength > 2500)
        return false;
    const std::string_view head = std::string_view(name).substr(0, first);
    const std::string_view tail =
        last == std::string::npos ? std::string_view() : std::string_view(name).substr(last);
    const bool spectral_head = head == "NM" || head == "NM_" || head == "SPECTRAL_" || head == "SPECTRAL_NM"
                               || head == "SPECTRAL_NM_" || head == "SPEC_" || head == "R_";
    return (spectral_head && tail.empty()) || (head.empty() && (tail == "_NM" || tail == "NM"));
}

/// Line of the first row in which @a test fails, or 0.
template <typename Test>
size_t firstLineWithout(const CgatsTable &table, Test test)
{
    for (size_t row = 0; row < table.rowCount(); ++row) {
        if (!test(row))
            return table.rowLine(row);
    }
    return 0;
}

} // namespace

CgatsColumns cgatsColumns(const CgatsTable &table)
{
    CgatsColumns columns;
    const Names names(table, columns.notes);
    columns.lab =
        triple(firstOf({names.findAll({"LAB_L", "LAB_A", "LAB_B"}), names.findOther({"L*", "A*", "B*"}, "Lab"),
                        names.findOther({"L", "A", "B"}, "Lab")}));
    columns.xyz =
        triple(firstOf({names.findAll({"XYZ_X", "XYZ_Y", "XYZ_Z"}), names.findOther({"X", "Y", "Z"}, "XYZ")}));
    findDevice(table, names, columns);
    findNames(table, names, columns);
    for (size_t column = 0; column < names.count(); ++column)
        columns.spectral += isSpectral(names[column]);
    return columns;
}

std::optional<CgatsColumns> cgatsGuessColumns(const CgatsTable &table, CgatsNote &why_not)
{
    const size_t count = table.columnCount();
    CgatsColumns columns;
    size_t first = 0;
    if (count == 4) {
        const auto isNumber = [&](size_t row) {
            return cgatsNumber(table.cell(row, 0)).valid;
        };
        const auto start = table.rowCount() > 0 ? cgatsNumber(table.cell(0, 0)) : CgatsNumber();
        const auto counts = [&](size_t row) {
            const CgatsNumber number = cgatsNumber(table.cell(row, 0));
            return number.valid && number.value == start.value + static_cast<double>(row);
        };
        const bool names = firstLineWithout(table, [&](size_t row) { return !isNumber(row); }) == 0;
        const bool running =
            start.valid && (start.value == 0.0 || start.value == 1.0) && firstLineWithout(table, counts) == 0;
        if (!names && !running) {
            why_not = {table.rowLine(0), "there are four columns without names, and the first is no running number; "
                                         "what they are cannot be told"};
            return std::nullopt;
        }
        columns.names.push_back(0);
        first = 1;
    } else if (count != 3) {
        why_not = {
            table.rowCount() > 0 ? table.rowLine(0) : table.line(),
            (count == 1 ? std::string("there is one column") : "there are " + std::to_string(count) + " columns")
                + " without names; what they are cannot be told"};
        return std::nullopt;
    }
    columns.lab = CgatsColumns::Triple{first, first + 1, first + 2};
    const auto isLab = [&](size_t row) {
        const CgatsNumber L = cgatsNumber(table.cell(row, first));
        return L.valid && L.value >= 0.0 && L.value <= 100.0 && cgatsNumber(table.cell(row, first + 1)).valid
               && cgatsNumber(table.cell(row, first + 2)).valid;
    };
    if (const size_t line = firstLineWithout(table, isLab)) {
        why_not = {line,
                   "there are columns without names, and these values are no Lab; what they are cannot be told"};
        return std::nullopt;
    }
    columns.notes.push_back(count == 3 ? "the three columns without names are taken for Lab"
                                       : "the four columns without names are taken for a name and Lab");
    return columns;
}
