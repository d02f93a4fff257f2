// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_GAMMATABLE_P_H
#define INSTRUMENTS_GAMMATABLE_P_H

#include "foundation/taviwidgets_export.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

/// @file
/// Gamma tables: as callers see them, and as a card has them. Not installed.

/// A table as callers see it, in one zeroed block. Red, green, blue; 0 is no light, 1 all.
struct GammaSamples {
    static constexpr std::uint32_t capacity = 1024;      ///< Of each channel.
    std::uint32_t count;                                 ///< How many samples are asked for, 2 to capacity.
    std::array<std::array<float, capacity>, 3> channels; ///< The samples.
    std::uint32_t returned;                              ///< How many were given.
};

/// A table as a card has it: of any size, the same in each channel, entries from 0 to 65535.
struct CardTable {
    std::array<std::vector<std::uint16_t>, 3> channels; ///< Red, green, blue.

    /// Entries of a channel.
    std::size_t size() const { return channels[0].size(); }
};

/// A card's table, of 2 entries at least, as the samples that are asked for. Each of its entries is one of them, with
/// straight lines between; of a table with more entries than samples, the nearest is taken. O(size).
TAVIWIDGETS_EXPORT void samplesOfCardTable(const CardTable &card, GammaSamples &samples);

/// The samples for a card of @a size entries, at least 2: the inverse of samplesOfCardTable(). Of a table of up to
/// `count` entries each comes back as it was; samples of a larger one give the same samples again, however often.
/// What is not between 0 and 1 is put there; what is no number is 0. O(size).
TAVIWIDGETS_EXPORT CardTable cardTableOfSamples(const GammaSamples &samples, std::size_t size);

/// The straight line from 0 to 65535 in @a size entries, at least 2.
TAVIWIDGETS_EXPORT CardTable linearCardTable(std::size_t size);

#endif
