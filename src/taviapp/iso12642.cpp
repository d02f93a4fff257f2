// SPDX-License-Identifier: MIT
#include "taviapp/iso12642.h"

#include "taviapp/cgatscolumns_p.h"
#include "taviapp/cgatsnumber_p.h"
#include "taviapp/cgatsowncolumns_p.h"
#include "taviapp/cgatsreader.h"
#include "taviapp/cgatstext_p.h"
#include "taviapp/comboflags_p.h"
#include "tavilib/tavialloc_p.h"
#include "tavilib/tavicms.h"
#include "tavilib/tavilog.h"
#include "tavilib/tavipacketchain.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <limits>
#include <new>

namespace {

constexpr const char *out_of_memory = "out of memory"; // short: it must fit a string without an allocation

template <typename Number>
constexpr double most_of = std::numeric_limits<Number>::max();

/// What becomes of a patch without a colour.
enum class Colourless {
    Kept,   ///< It is a patch all the same.
    Refused ///< It refuses the file.
};

/// Makes patches of the rows of one table.
class PatchMaker
{
public:
    PatchMaker(const CgatsTable &table, const CgatsColumns &columns, Colourless colourless, CgatsReport &report)
        : table_(table), columns_(columns), own_(CgatsOwnColumns::find(table)), colourless_(colourless),
          report_(report)
    {}
    PatchMaker(const PatchMaker &) = delete;
    PatchMaker &operator=(const PatchMaker &) = delete;
    ~PatchMaker() { patches_.freeAll(TAVIPACKET_COMBOCOLOUR); }

    /// The patches; null if the report now holds a refusal.
    TAVICOMBOCOLOUR *make();

private:
    bool makeName(TAVICOMBOCOLOUR &patch, size_t row);
    void setColour(TAVICOMBOCOLOUR &patch, size_t row);
    void setDevice(TAVICOMBOCOLOUR &patch, size_t row);
    bool readValue(size_t row, size_t column, double &value, double most, const char *consequence);
    void noteWrong(const std::string &reason, size_t row);
    bool checkSeparators();
    void notePaper(const TAVICOMBOCOLOUR &patch, size_t row);
    void doubtScales();

    struct Paper {
        double L = 0.0;
        size_t line = 0; ///< 0: not seen.
    };

    const CgatsTable &table_;
    const CgatsColumns &columns_;
    const CgatsOwnColumns own_;
    const Colourless colourless_;
    CgatsReport &report_;
    TaviPacketChain<TAVICOMBOCOLOUR> patches_;
    Paper lightest_;
    Paper unprinted_;
    double largest_ink_ = 0.0;
    size_t largest_ink_line_ = 0;
    size_t comma_line_ = 0;
};

TAVICOMBOCOLOUR *PatchMaker::make()
{
    for (size_t row = 0; row < table_.rowCount(); ++row) {
        auto *patch = TaviAllocRecord<TAVICOMBOCOLOUR>();
        if (!patch)
            throw std::bad_alloc();
        patches_.append(patch);
        if (!makeName(*patch, row))
            throw std::bad_alloc();
        setColour(*patch, row);
        if (report_.refused)
            return nullptr;
        setDevice(*patch, row);
        patch->flags |= taviReferenceFlags(*patch);
        noteWrong(own_.readMarks(table_, row, *patch), row);
        notePaper(*patch, row);
    }
    if (comma_line_ > 0 && !checkSeparators())
        return nullptr;
    doubtScales();
    report_.rows = patches_.length();
    return patches_.takeAll();
}

bool PatchMaker::makeName(TAVICOMBOCOLOUR &patch, size_t row)
{
    const auto set = [&patch](std::string_view text) {
        patch.name = static_cast<char *>(TaviAllocZeroed(text.size() + 1));
        if (patch.name)
            std::memcpy(patch.name, text.data(), text.size());
        return patch.name != nullptr;
    };
    for (const size_t column : columns_.names) {
        const std::string_view cell = table_.cell(row, column);
        if (cell.empty())
            continue;
        const auto isPlain = [](char c) {
            return c > 0x1f && c < 0x7f && c != '"';
        };
        if (std::all_of(cell.begin(), cell.end(), isPlain))
            return set(cell);
        bool converted = false;
        const std::string text = table_.cellText(row, column, &converted);
        if (converted)
            report_.assume(table_.rowLine(row),
                           "the name " + cgatsQuoted(cell) + " is no UTF-8; it is taken for Windows-1252");
        return set(text);
    }
    char number[24];
    const auto end = std::to_chars(number, number + sizeof number, row + 1).ptr;
    return set(std::string_view(number, static_cast<size_t>(end - number)));
}

void PatchMaker::noteWrong(const std::string &reason, size_t row)
{
    if (!reason.empty())
        report_.doubt(table_.rowLine(row), reason);
}

/// A value that is no number, or one beyond @a most, is a doubt. @a consequence tells what becomes of it.
bool PatchMaker::readValue(size_t row, size_t column, double &value, double most, const char *consequence)
{
    const CgatsNumber number = cgatsNumber(table_.cell(row, column));
    if (!number.valid || std::abs(number.value) > most) {
        const std::string field =
            column < table_.fields().size() ? table_.fields()[column] : "column " + std::to_string(column + 1);
        report_.doubt(table_.rowLine(row), cgatsToUtf8(field) + " is " + cgatsQuoted(table_.cell(row, column))
                                               + ", which is no usable number; " + consequence);
        return false;
    }
    if (number.comma && comma_line_ == 0)
        comma_line_ = table_.rowLine(row);
    value = number.value;
    return true;
}

void PatchMaker::setColour(TAVICOMBOCOLOUR &patch, size_t row)
{
    double value[3] = {};
    bool usable = columns_.hasColour();
    for (size_t i = 0; usable && i < 3; ++i)
        usable = readValue(row, columns_.colour()[i], value[i], most_of<double>, "the patch has no colour");
    if (!usable) {
        ++report_.rows_without_colour;
        if (colourless_ == Colourless::Refused)
            report_.refuse(table_.rowLine(row), "the patch " + cgatsQuoted(patch.name)
                                                    + " has no usable colour, and the list is of no use without it");
        return;
    }
    if (columns_.lab) {
        patch.L = value[0];
        patch.a = value[1];
        patch.b = value[2];
    } else {
        TAVICMSXYZToLab(value[0], value[1], value[2], &patch.L, &patch.a, &patch.b);
    }
    if (patch.L < 0.0)
        report_.doubt(table_.rowLine(row), "L is below zero");
    patch.flags |= COMBOCOLOUR_FLAG_LAB;
    patch.percent = 100;
    patch.rgb = TAVICMSLabToDisplay(patch.L, patch.a, patch.b);
}

void PatchMaker::setDevice(TAVICOMBOCOLOUR &patch, size_t row)
{
    double value[8] = {};
    for (size_t i = 0; i < columns_.device.size(); ++i) {
        if (!readValue(row, columns_.device[i], value[i], most_of<float>, "the patch has no device values"))
            return;
    }
    if (!columns_.hasDevice()) {
        noteWrong(own_.readDevice(table_, row, patch), row);
        return;
    }
    patch.device_model = columns_.device_model;
    patch.device_count = static_cast<uint32_t>(columns_.device.size());
    for (size_t i = 0; i < 4; ++i) {
        patch.device[i] = static_cast<float>(value[i]);
        patch.device_extra[i] = static_cast<float>(value[i + 4]);
    }
    const double largest = *std::max_element(value, value + 8);
    const double smallest = *std::min_element(value, value + 8);
    const double farthest = smallest < 0.0 ? 101.0 : largest; // both are outside of a percentage
    if (farthest > largest_ink_) {
        largest_ink_ = farthest;
        largest_ink_line_ = table_.rowLine(row);
    }
}

void PatchMaker::notePaper(const TAVICOMBOCOLOUR &patch, size_t row)
{
    if (!(patch.flags & COMBOCOLOUR_FLAG_LAB))
        return;
    const auto note = [&](Paper &paper) {
        if (paper.line == 0 || patch.L > paper.L)
            paper = {patch.L, table_.rowLine(row)};
    };
    note(lightest_);
    if (patch.flags & COMBOCOLOUR_FLAG_PAPER)
        note(unprinted_);
}

/// Decimal commas are believed only where no number has a point.
bool PatchMaker::checkSeparators()
{
    std::vector<size_t> columns = columns_.device;
    if (columns_.hasColour())
        columns.insert(columns.end(), columns_.colour().begin(), columns_.colour().end());
    for (size_t row = 0; row < table_.rowCount(); ++row) {
        for (const size_t column : columns) {
            const std::string_view cell = table_.cell(row, column);
            if (cell.find('.') != std::string_view::npos && cgatsNumber(cell).valid) {
                report_.refuse(std::max(table_.rowLine(row), comma_line_),
                               "there are decimal points and decimal commas in one table; no number can be trusted");
                return false;
            }
        }
    }
    report_.assume(comma_line_, "numbers are written with a decimal comma");
    return true;
}

void PatchMaker::doubtScales()
{
    const Paper &paper = unprinted_.line > 0 ? unprinted_ : lightest_;
    // Rounded values may pass 100 by a little.
    if (paper.line > 0 && (paper.L < 60.0 || paper.L > 100.01)) {
        char number[32];
        const auto end = std::to_chars(number, number + sizeof number, paper.L, std::chars_format::fixed, 2);
        const std::string L = end.ec == std::errc() ? std::string(number, end.ptr) : std::string("far beyond 100");
        report_.doubt(paper.line, (unprinted_.line > 0 ? "the unprinted paper has L " : "the lightest patch has L ")
                                      + L + "; the colours may be on another scale");
    }
    const bool percent = columns_.device_model != COMBOCOLOUR_DEVICE_RGB
                         && columns_.device_model != COMBOCOLOUR_DEVICE_GRAY && columns_.hasDevice();
    if (percent && largest_ink_ > 100.0)
        report_.doubt(largest_ink_line_, "an ink is outside of 0 to 100 percent; the inks may be on another scale");
    else if (percent && largest_ink_ > 0.0 && largest_ink_ <= 1.0)
        report_.doubt(largest_ink_line_, "no ink is above 1 percent; the inks may be on another scale");
}

struct Choice {
    const CgatsTable *table = nullptr;
    CgatsColumns columns;
};

/// The first table with rows that gives colours, else the first that gives device values, else the first without
/// names in which Lab can be told. No table if the report now holds a refusal.
Choice chooseTable(const CgatsFile &file, CgatsReport &report)
{
    Choice device;
    for (const CgatsTable &table : file.tables()) {
        if (table.rowCount() == 0)
            continue;
        CgatsColumns columns = cgatsColumns(table);
        if (columns.hasColour())
            return {&table, std::move(columns)};
        if (!device.table && columns.hasDevice())
            device = {&table, std::move(columns)};
    }
    if (device.table)
        return device;
    CgatsNote why_not = {};
    for (const CgatsTable &table : file.tables()) {
        if (table.rowCount() == 0 || !table.fields().empty())
            continue;
        if (auto columns = cgatsGuessColumns(table, why_not))
            return {&table, std::move(*columns)};
    }
    if (!why_not.text.empty()) {
        report.refuse(why_not.line, why_not.text);
        return {};
    }
    for (const CgatsTable &table : file.tables()) {
        if (table.rowCount() > 0) {
            const bool spectral = cgatsColumns(table).spectral > 0;
            report.refuse(table.fieldsLine(), spectral
                                                  ? "there are spectra, but no columns of Lab, XYZ or device values"
                                                  : "there are no columns of Lab, XYZ or device values");
            return {};
        }
        if (table.droppedRowCount() > 0) {
            report.refuse(table.firstDroppedRow().line, "no row is whole: " + table.firstDroppedRow().text);
            return {};
        }
    }
    report.refuse(file.tables().empty() ? 0 : file.tables().front().rowsLine(), "there are no rows");
    return {};
}

void tellChoice(const CgatsFile &file, const Choice &choice, CgatsReport &report)
{
    for (const std::string &note : choice.columns.notes)
        report.assume(choice.table->fieldsLine(), note);
    if (choice.columns.inks_beyond > 0)
        report.doubt(choice.table->fieldsLine(),
                     "there are " + std::to_string(choice.columns.inks_beyond)
                         + " inks, more than are kept; the patches have no device values");
    if (choice.columns.spectral > 0)
        report.assume(choice.table->fieldsLine(),
                      cgatsCount(choice.columns.spectral, "spectral column") + " passed over");
    for (const CgatsTable &table : file.tables()) {
        if (&table != choice.table)
            report.assume(table.line(), "another table with " + cgatsCount(table.rowCount(), "row")
                                            + " is left out; the patches come from the one at line "
                                            + std::to_string(choice.table->line()));
    }
}

/// XYZ and Lab are taken for D50, as ISO 13655 has it; chart makers sell values for other lights too.
void doubtIlluminant(const CgatsTable &table, CgatsReport &report)
{
    for (const CgatsTable::Keyword &keyword : table.keywords()) {
        const bool names_light = cgatsEqual(keyword.name, "ILLUMINANT")
                                 || (cgatsEqual(keyword.name, "WEIGHTING_FUNCTION")
                                     && cgatsEqual(keyword.value.substr(0, 10), "ILLUMINANT"));
        if (names_light && keyword.value.find("D50") == std::string::npos)
            report.doubt(keyword.line, "the header names " + cgatsQuoted(keyword.value)
                                           + "; the colours are taken for D50 nevertheless");
    }
}

/// In a list whose patches are told by their place none may be missing.
bool refuseGaps(const Choice &choice, CgatsReport &report)
{
    if (!choice.columns.hasColour())
        report.refuse(choice.table->fieldsLine(), "there are no columns of Lab or XYZ");
    else if (choice.table->droppedRowCount() > 0)
        report.refuse(choice.table->firstDroppedRow().line,
                      choice.table->firstDroppedRow().text + "; the list is of no use without this row");
    return report.refused;
}

TAVICOMBOCOLOUR *readPatches(const std::string &path, Colourless colourless, CgatsReport &report)
{
    const CgatsFile file = CgatsFile::read(path, report);
    if (report.refused)
        return nullptr;
    const Choice choice = chooseTable(file, report);
    if (!choice.table)
        return nullptr;
    tellChoice(file, choice, report);
    if (choice.columns.hasColour())
        doubtIlluminant(*choice.table, report);
    report.rows_dropped = choice.table->droppedRowCount();
    if (colourless == Colourless::Refused && refuseGaps(choice, report))
        return nullptr;
    return PatchMaker(*choice.table, choice.columns, colourless, report).make();
}

TAVICOMBOCOLOUR *tryToRead(const std::string &path, Colourless colourless, CgatsReport &report)
{
    report = CgatsReport();
    try {
        report.path = path;
        return readPatches(path, colourless, report);
    } catch (const std::bad_alloc &) {
        report.refuse(0, out_of_memory);
    }
    return nullptr;
}

void logRefusal(const char *function, const CgatsReport &report)
{
    try {
        TaviLogMessage("iso12642", function, TAVILOG_ERROR, TAVILOG_FORM_TEXT, 1, "%s", report.refusalText().c_str());
    } catch (const std::bad_alloc &) {
        LogError("iso12642", function, out_of_memory);
    }
}

} // namespace

TAVICOMBOCOLOUR *ISO12642Importer::import(const std::string &path, unsigned long flags)
{
    CgatsReport report;
    TAVICOMBOCOLOUR *patches = import(path, flags, report);
    if (!patches)
        logRefusal("import", report);
    return patches;
}

TAVICOMBOCOLOUR *ISO12642Importer::import(const std::string &path, unsigned long /*flags*/, CgatsReport &report)
{
    return tryToRead(path, Colourless::Kept, report);
}

TAVICOMBOCOLOUR *SwatchImporter::import(const std::string &path, SWATCHTYPE type, unsigned long flags)
{
    CgatsReport report;
    TAVICOMBOCOLOUR *patches = import(path, type, flags, report);
    if (!patches)
        logRefusal("SwatchImporter::import", report);
    return patches;
}

TAVICOMBOCOLOUR *SwatchImporter::import(const std::string &path, SWATCHTYPE type, unsigned long /*flags*/,
                                        CgatsReport &report)
{
    if (type == SWATCHTYPE_CGATS)
        return tryToRead(path, Colourless::Refused, report);
    report = CgatsReport();
    try {
        report.path = path;
        report.refuse(0, "swatches of type " + std::to_string(type) + " cannot be read");
    } catch (const std::bad_alloc &) {
        report.refuse(0, out_of_memory);
    }
    return nullptr;
}
