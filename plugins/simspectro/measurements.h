// SPDX-License-Identifier: MIT
#ifndef SIMSPECTRO_MEASUREMENTS_H
#define SIMSPECTRO_MEASUREMENTS_H

#include "colour.h"

#include <tavilib/instrumentplugin.h>

#include <optional>
#include <string>
#include <vector>

namespace simspectro {

class CgatsTable;

/// What the device finds on a patch before noise.
struct Reading {
    XYZ xyz;
    Lab lab;
    std::optional<Densities> densities; ///< Where the file has density columns; else they come from the colour.
};

/// All patches of the measured file.
class Measurements
{
public:
    /// Device values closer than this, in the units of the file, are the same.
    static constexpr double device_tolerance = 0.05;

    /// Loads a CGATS file. Nothing if it cannot be used; @a fault then says why.
    static std::optional<Measurements> load(const std::string &path, std::string &fault);

    size_t count() const { return patches_.size(); }
    /// The patch at @a index in the order of the file.
    const Reading &at(size_t index) const { return patches_[index].reading; }

    /// The patch that stands for @a patch: with the nearest device values if it has some, else with its name. Null if
    /// the file has none; @a fault then names the patch. O(count()).
    const Reading *find(const TAVICOMBOCOLOUR &patch, std::string &fault) const;

    /// @a tint percent of the ink of kind @a band_type (TAVIBANDTYPE_...), nothing else: between the file's two
    /// nearest tints of that ink. Nothing if the file does not have them. O(count()).
    std::optional<Reading> tint(uint32_t band_type, double tint) const;

private:
    struct Patch {
        std::vector<std::string> names;
        std::vector<double> device;
        Reading reading;
    };
    bool loadPatches(const CgatsTable &table, std::string &fault);
    const Patch *findDevice(uint32_t model, const std::vector<double> &device) const;
    const Patch *findName(const std::string &name) const;

    std::vector<Patch> patches_;
    uint32_t device_model_ = COMBOCOLOUR_DEVICE_NONE;
};

} // namespace simspectro

#endif
