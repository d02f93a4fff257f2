// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_CGATSOWNCOLUMNS_P_H
#define TAVIAPP_CGATSOWNCOLUMNS_P_H

#include "taviapp/cgatsreader.h"
#include "tavilib/tavirecords.h"

#include <array>
#include <optional>

/// @file
/// Columns of our own, for what the format has no columns for: they are written only where they are needed, and other
/// programs pass over them. A cell "-" is none. Not installed.
///
/// TAVI_MARKS has a letter for each thing that the patch stands for: P paper, C, M, Y, K the solids, G a composed
/// grey. TAVI_TOLERANCE_E, _H and _C are the tolerances of dE, dH and dC. TAVI_DEVICE_MODEL and TAVI_DEVICE_1 to _8
/// have the device values where not all patches have the same kind of them.

/// The own columns of a table.
struct CgatsOwnColumns {
    std::optional<size_t> marks;
    std::array<std::optional<size_t>, 3> tolerances; ///< E, H, C.
    std::optional<size_t> model;
    std::vector<size_t> device; ///< In their order; at most eight.

    static constexpr const char *marks_name = "TAVI_MARKS";
    static constexpr const char *tolerance_names[3] = {"TAVI_TOLERANCE_E", "TAVI_TOLERANCE_H", "TAVI_TOLERANCE_C"};
    static constexpr const char *model_name = "TAVI_DEVICE_MODEL";
    static constexpr const char *device_prefix = "TAVI_DEVICE_"; ///< In front of 1 to 8.
    static constexpr const char *none = "-";

    /// Those that the table has. Exact names: nobody else writes them.
    static CgatsOwnColumns find(const CgatsTable &table);

    /// Gives the patch the device values that the row has for it. Returns what is wrong with a cell, or nothing.
    std::string readDevice(const CgatsTable &table, size_t row, TAVICOMBOCOLOUR &patch) const;
    /// Gives the patch its marks, in place of those it has, and its tolerances. Returns as readDevice().
    std::string readMarks(const CgatsTable &table, size_t row, TAVICOMBOCOLOUR &patch) const;

private:
    std::string wrong(const CgatsTable &table, size_t row, size_t column, const char *consequence) const;
};

/// All bits that TAVI_MARKS has letters for.
inline constexpr uint32_t cgats_marks = COMBOCOLOUR_FLAG_PAPER | COMBOCOLOUR_FLAG_CYAN | COMBOCOLOUR_FLAG_MAGENTA
                                        | COMBOCOLOUR_FLAG_YELLOW | COMBOCOLOUR_FLAG_BLACK | COMBOCOLOUR_FLAG_GREY;

/// The letters of a patch's marks, or "-".
std::string cgatsMarksText(uint32_t flags);

/// Whether a patch of this COMBOCOLOUR_DEVICE_... can have as many device values; never for one without.
bool cgatsModelHas(uint32_t model, uint32_t count);

/// The word for a COMBOCOLOUR_DEVICE_..., or "-".
const char *cgatsModelText(uint32_t model);

#endif
