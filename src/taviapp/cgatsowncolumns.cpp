// SPDX-License-Identifier: MIT
#include "taviapp/cgatsowncolumns_p.h"

#include "taviapp/cgatsnumber_p.h"
#include "taviapp/cgatstext_p.h"
#include "tavilib/calcheck.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr struct {
    char letter;
    uint32_t flag;
} letters[] = {{'P', COMBOCOLOUR_FLAG_PAPER},  {'C', COMBOCOLOUR_FLAG_CYAN},  {'M', COMBOCOLOUR_FLAG_MAGENTA},
               {'Y', COMBOCOLOUR_FLAG_YELLOW}, {'K', COMBOCOLOUR_FLAG_BLACK}, {'G', COMBOCOLOUR_FLAG_GREY}};

constexpr struct {
    const char *word;
    uint32_t model;
} models[] = {{"gray", COMBOCOLOUR_DEVICE_GRAY},
              {"rgb", COMBOCOLOUR_DEVICE_RGB},
              {"cmyk", COMBOCOLOUR_DEVICE_CMYK},
              {"nclr", COMBOCOLOUR_DEVICE_NCLR},
              {"cmy", COMBOCOLOUR_DEVICE_CMY}};

constexpr size_t most_device = 8;

bool marksOf(std::string_view cell, uint32_t &flags)
{
    uint32_t marks = 0;
    for (const char c : cell == CgatsOwnColumns::none ? std::string_view() : cell) {
        const auto *found = std::find_if(std::begin(letters), std::end(letters),
                                         [c](const auto &entry) { return entry.letter == c; });
        if (found == std::end(letters))
            return false;
        marks |= found->flag;
    }
    flags = (flags & ~cgats_marks) | marks;
    return true;
}

bool toleranceOf(std::string_view cell, double &tolerance)
{
    tolerance = -1.0;
    if (cell == CgatsOwnColumns::none)
        return true;
    const CgatsNumber number = cgatsNumber(cell);
    tolerance = number.value;
    return number.valid && !number.comma && number.value >= 0.0;
}

} // namespace

std::string cgatsMarksText(uint32_t flags)
{
    std::string text;
    for (const auto &entry : letters) {
        if (flags & entry.flag)
            text += entry.letter;
    }
    return text.empty() ? CgatsOwnColumns::none : text;
}

const char *cgatsModelText(uint32_t model)
{
    for (const auto &entry : models) {
        if (entry.model == model)
            return entry.word;
    }
    return CgatsOwnColumns::none;
}

bool cgatsModelHas(uint32_t model, uint32_t count)
{
    switch (model) {
    case COMBOCOLOUR_DEVICE_GRAY:
        return count == 1;
    case COMBOCOLOUR_DEVICE_RGB:
    case COMBOCOLOUR_DEVICE_CMY:
        return count == 3;
    case COMBOCOLOUR_DEVICE_CMYK:
        return count == 4;
    case COMBOCOLOUR_DEVICE_NCLR:
        return count >= 1 && count <= most_device;
    default:
        return false;
    }
}

CgatsOwnColumns CgatsOwnColumns::find(const CgatsTable &table)
{
    const auto column = [&table](const std::string &name) -> std::optional<size_t> {
        const auto found = std::find(table.fields().begin(), table.fields().end(), name);
        if (found == table.fields().end())
            return std::nullopt;
        return static_cast<size_t>(found - table.fields().begin());
    };
    CgatsOwnColumns own;
    own.marks = column(marks_name);
    for (size_t i = 0; i < own.tolerances.size(); ++i)
        own.tolerances[i] = column(tolerance_names[i]);
    own.model = column(model_name);
    for (size_t i = 1; own.model && i <= most_device; ++i) {
        const auto at = column(device_prefix + std::to_string(i));
        if (!at)
            break;
        own.device.push_back(*at);
    }
    return own;
}

std::string CgatsOwnColumns::wrong(const CgatsTable &table, size_t row, size_t column, const char *consequence) const
{
    return table.fields()[column] + " is " + cgatsQuoted(table.cell(row, column)) + "; " + consequence;
}

std::string CgatsOwnColumns::readDevice(const CgatsTable &table, size_t row, TAVICOMBOCOLOUR &patch) const
{
    if (!model || table.cell(row, *model) == none)
        return {};
    const char *without = "the patch has no device values";
    const auto *known = std::find_if(std::begin(models), std::end(models),
                                     [&](const auto &entry) { return table.cell(row, *model) == entry.word; });
    if (known == std::end(models))
        return wrong(table, row, *model, without);
    float values[most_device] = {};
    uint32_t count = 0;
    for (const size_t column : device) {
        const std::string_view cell = table.cell(row, column);
        if (cell == none)
            break;
        const CgatsNumber number = cgatsNumber(cell);
        if (!number.valid || number.comma || std::abs(number.value) > std::numeric_limits<float>::max())
            return wrong(table, row, column, without);
        values[count++] = static_cast<float>(number.value);
    }
    if (!cgatsModelHas(known->model, count))
        return wrong(table, row, *model, without);
    patch.device_model = known->model;
    patch.device_count = count;
    std::copy(values, values + 4, patch.device);
    std::copy(values + 4, values + 8, patch.device_extra);
    return {};
}

std::string CgatsOwnColumns::readMarks(const CgatsTable &table, size_t row, TAVICOMBOCOLOUR &patch) const
{
    std::string reason;
    if (marks && !marksOf(table.cell(row, *marks), patch.flags))
        reason = wrong(table, row, *marks, "the patch keeps the marks of its device values");
    constexpr void (*encode[])(TAVICOMBOCOLOUR *, double) = {ENCODE_DELTA_E_TOLERANCE, ENCODE_DELTA_H_TOLERANCE,
                                                             ENCODE_DELTA_C_TOLERANCE};
    for (size_t i = 0; i < tolerances.size(); ++i) {
        double tolerance = -1.0;
        if (tolerances[i] && toleranceOf(table.cell(row, *tolerances[i]), tolerance))
            encode[i](&patch, tolerance);
        else if (tolerances[i])
            reason = wrong(table, row, *tolerances[i], "the patch has no such tolerance");
    }
    return reason;
}
