// SPDX-License-Identifier: MIT
#include "measurements.h"

#include "cgatstable.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace simspectro {

namespace {

using Columns = std::vector<size_t>;

/// The columns with all of @a names; empty if one is missing.
Columns columnsOf(const CgatsTable &table, std::initializer_list<const char *> names)
{
    Columns columns;
    for (const char *name : names) {
        const std::optional<size_t> column = table.column(name);
        if (!column)
            return {};
        columns.push_back(*column);
    }
    return columns;
}

/// "5CLR_1" ... "8CLR_8".
Columns inkColumns(const CgatsTable &table)
{
    for (int inks = 8; inks >= 5; --inks) {
        Columns columns;
        for (int ink = 1; ink <= inks; ++ink) {
            const auto column = table.column(std::to_string(inks) + "CLR_" + std::to_string(ink));
            if (column)
                columns.push_back(*column);
        }
        if (static_cast<int>(columns.size()) == inks)
            return columns;
    }
    return {};
}

Columns deviceColumns(const CgatsTable &table, uint32_t &model)
{
    const auto take = [&model](uint32_t candidate, Columns columns) {
        model = columns.empty() ? uint32_t{COMBOCOLOUR_DEVICE_NONE} : candidate;
        return columns;
    };
    Columns columns = take(COMBOCOLOUR_DEVICE_CMYK, columnsOf(table, {"CMYK_C", "CMYK_M", "CMYK_Y", "CMYK_K"}));
    if (columns.empty())
        columns = take(COMBOCOLOUR_DEVICE_RGB, columnsOf(table, {"RGB_R", "RGB_G", "RGB_B"}));
    if (columns.empty())
        columns = take(COMBOCOLOUR_DEVICE_CMY, columnsOf(table, {"CMY_C", "CMY_M", "CMY_Y"}));
    if (columns.empty())
        columns = take(COMBOCOLOUR_DEVICE_NCLR, inkColumns(table));
    for (const char *gray : {"GRAY_K", "GRAY_W", "GRAY"}) {
        if (columns.empty())
            columns = take(COMBOCOLOUR_DEVICE_GRAY, columnsOf(table, {gray}));
    }
    return columns;
}

bool readNumbers(const CgatsTable &table, size_t row, const Columns &columns, std::vector<double> &numbers,
                 std::string &fault)
{
    numbers.clear();
    for (const size_t column : columns) {
        const std::optional<double> number = table.number(row, column, fault);
        if (!number)
            return false;
        numbers.push_back(*number);
    }
    return true;
}

std::vector<double> deviceOf(const TAVICOMBOCOLOUR &patch)
{
    std::vector<double> device;
    if (patch.device_model == COMBOCOLOUR_DEVICE_NONE)
        return device;
    for (uint32_t i = 0; i < std::min(patch.device_count, 8U); ++i)
        device.push_back(static_cast<double>(i < 4 ? patch.device[i] : patch.device_extra[i - 4]));
    return device;
}

double distance(const std::vector<double> &a, const std::vector<double> &b)
{
    double largest = 0.0;
    for (size_t i = 0; i < a.size(); ++i)
        largest = std::max(largest, std::abs(a[i] - b[i]));
    return largest;
}

std::string describe(const TAVICOMBOCOLOUR &patch, const std::vector<double> &device)
{
    std::string text = patch.name && *patch.name ? "'" + std::string(patch.name) + "'" : "without a name";
    for (size_t i = 0; i < device.size(); ++i) {
        char number[32];
        std::snprintf(number, sizeof number, "%s%g", i == 0 ? " of device values " : " ", device[i]);
        text += number;
    }
    return text;
}

} // namespace

std::optional<Measurements> Measurements::load(const std::string &path, std::string &fault)
{
    const std::optional<CgatsTable> table = CgatsTable::read(path, fault);
    Measurements measurements;
    if (!table || !measurements.loadPatches(*table, fault))
        return std::nullopt;
    return measurements;
}

bool Measurements::loadPatches(const CgatsTable &table, std::string &fault)
{
    const Columns lab = columnsOf(table, {"LAB_L", "LAB_A", "LAB_B"});
    const Columns xyz = lab.empty() ? columnsOf(table, {"XYZ_X", "XYZ_Y", "XYZ_Z"}) : Columns();
    if (lab.empty() && xyz.empty()) {
        fault = table.path() + ": neither LAB nor XYZ columns";
        return false;
    }
    const Columns densities = columnsOf(table, {"D_VIS", "D_RED", "D_GREEN", "D_BLUE"});
    const Columns device = deviceColumns(table, device_model_);
    Columns names;
    for (const char *name : {"SAMPLE_NAME", "SAMPLE_ID", "SAMPLE_LOC"}) {
        if (const std::optional<size_t> column = table.column(name))
            names.push_back(*column);
    }

    std::vector<double> numbers;
    for (size_t row = 0; row < table.rowCount(); ++row) {
        Patch patch;
        for (const size_t column : names)
            patch.names.push_back(table.cell(row, column));
        if (!readNumbers(table, row, device, patch.device, fault)
            || !readNumbers(table, row, lab.empty() ? xyz : lab, numbers, fault))
            return false;
        Reading &reading = patch.reading;
        if (lab.empty()) {
            reading.xyz = {numbers[0], numbers[1], numbers[2]};
            reading.lab = labFromXyz(reading.xyz);
        } else {
            reading.lab = {numbers[0], numbers[1], numbers[2]};
            reading.xyz = xyzFromLab(reading.lab);
        }
        if (!densities.empty()) {
            if (!readNumbers(table, row, densities, numbers, fault))
                return false;
            reading.densities = Densities{numbers[0], numbers[1], numbers[2], numbers[3]};
        }
        patches_.push_back(std::move(patch));
    }
    return true;
}

const Measurements::Patch *Measurements::findDevice(uint32_t model, const std::vector<double> &device) const
{
    const Patch *nearest = nullptr;
    double nearest_distance = device_tolerance;
    if (model != device_model_)
        return nullptr;
    for (const Patch &patch : patches_) {
        if (patch.device.size() != device.size())
            continue;
        const double found = distance(patch.device, device);
        if (found < nearest_distance || (!nearest && found <= nearest_distance)) {
            nearest = &patch;
            nearest_distance = found;
        }
    }
    return nearest;
}

const Measurements::Patch *Measurements::findName(const std::string &name) const
{
    if (patches_.empty())
        return nullptr;
    // One kind of name after the other: that "7" is a patch's number counts less than that it is one's name.
    for (size_t kind = 0; kind < patches_.front().names.size(); ++kind) {
        for (const Patch &patch : patches_) {
            if (patch.names[kind] == name)
                return &patch;
        }
    }
    return nullptr;
}

const Reading *Measurements::find(const TAVICOMBOCOLOUR &patch, std::string &fault) const
{
    const std::vector<double> device = deviceOf(patch);
    const Patch *found = nullptr;
    if (!device.empty())
        found = findDevice(patch.device_model, device);
    else if (patch.name)
        found = findName(patch.name);
    if (!found)
        fault = "no measurement for the patch " + describe(patch, device);
    return found ? &found->reading : nullptr;
}

std::optional<Reading> Measurements::tint(uint32_t band_type, double tint) const
{
    static constexpr std::array channels = {TAVIBANDTYPE_CYAN, TAVIBANDTYPE_MAGENTA, TAVIBANDTYPE_YELLOW,
                                            TAVIBANDTYPE_BLACK};
    const auto found = std::find(channels.begin(), channels.end(), static_cast<int>(band_type));
    if (found == channels.end()
        || (device_model_ != COMBOCOLOUR_DEVICE_CMYK && device_model_ != COMBOCOLOUR_DEVICE_CMY))
        return std::nullopt;
    const auto channel = static_cast<size_t>(found - channels.begin());

    const Patch *below = nullptr;
    const Patch *above = nullptr;
    for (const Patch &patch : patches_) {
        if (channel >= patch.device.size())
            return std::nullopt;
        bool alone = true;
        for (size_t i = 0; i < patch.device.size(); ++i)
            alone = alone && (i == channel || std::abs(patch.device[i]) <= device_tolerance);
        if (!alone)
            continue;
        const double value = patch.device[channel];
        if (value <= tint + device_tolerance && (!below || value > below->device[channel]))
            below = &patch;
        if (value >= tint - device_tolerance && (!above || value < above->device[channel]))
            above = &patch;
    }
    if (!below || !above)
        return std::nullopt;
    const double low = below->device[channel];
    const double high = above->device[channel];
    const double part = high > low ? std::clamp((tint - low) / (high - low), 0.0, 1.0) : 0.0;
    Reading reading;
    reading.xyz = between(below->reading.xyz, above->reading.xyz, part);
    reading.lab = labFromXyz(reading.xyz);
    if (below->reading.densities && above->reading.densities)
        reading.densities = between(*below->reading.densities, *above->reading.densities, part);
    return reading;
}

} // namespace simspectro
