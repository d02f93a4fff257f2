// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_CGATSCOLUMNS_P_H
#define TAVIAPP_CGATSCOLUMNS_P_H

#include "taviapp/cgatsreader.h"

#include <array>
#include <optional>

/// What the columns of a table are to the importer of patches. Not installed.
struct CgatsColumns {
    using Triple = std::array<size_t, 3>;

    std::vector<size_t> names;      ///< Columns that can name a patch, the best first.
    std::optional<Triple> lab;      ///< L, a, b.
    std::optional<Triple> xyz;      ///< X, Y, Z.
    std::vector<size_t> device;     ///< In the order in which a record keeps device values; at most eight.
    uint32_t device_model = 0;      ///< COMBOCOLOUR_DEVICE_...
    size_t inks_beyond = 0;         ///< How many inks the file has, if they are more than a record keeps.
    size_t spectral = 0;            ///< How many columns are a spectrum.
    std::vector<std::string> notes; ///< Names that had to be read in another way than the format knows them.

    bool hasColour() const { return lab || xyz; }
    bool hasDevice() const { return !device.empty(); }
    /// The colour columns; there must be some.
    const Triple &colour() const { return lab ? *lab : *xyz; }
};

/// Finds the columns by their names.
CgatsColumns cgatsColumns(const CgatsTable &table);

/// Tells the columns of a table without names from its cells: three numbers that can be Lab, alone or behind a name
/// or a running number. None, with the reason and its line in @a why_not, where that would be a guess.
std::optional<CgatsColumns> cgatsGuessColumns(const CgatsTable &table, CgatsNote &why_not);

#endif
