// SPDX-License-Identifier: MIT
#ifndef LISTVIEWS_LISTHEADERSTATE_P_H
#define LISTVIEWS_LISTHEADERSTATE_P_H

#include "foundation/taviwidgets_export.h"

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

/// @file
/// The stored state of a list's columns, as texts and as numbers.

/// What a state tells of one column.
struct ListColumnState {
    int position = -1; ///< Among all columns.
    bool visible = true;
    int width = -1; ///< Pixels from 0 to widest_column, or -1 for as wide as the contents.
};

/// No column is wider than this many pixels, whatever a state says.
constexpr int widest_column = 32767;

/// The value of a column's key.
TAVIWIDGETS_EXPORT std::string columnStateText(const ListColumnState &state);
/// The value of the sorting's key.
TAVIWIDGETS_EXPORT std::string sortingText(int place, bool ascending);
/// Place and ascending of the sorting's key; nothing if that are not two numbers.
TAVIWIDGETS_EXPORT std::optional<std::pair<int, bool>> readSorting(std::string_view value);
/// The key of a column: @a prefix and at least three digits.
TAVIWIDGETS_EXPORT std::string columnKey(std::string_view prefix, int column);

/// The state of a list's columns, gathered from keys and values of any origin.
class TAVIWIDGETS_EXPORT ListHeaderState
{
public:
    /// Of @a columns columns, of which nothing is known.
    explicit ListHeaderState(int columns);

    /// Takes in a key and its value. Passed over are keys that are not @a prefix and the number of a column, values
    /// that don't begin with three numbers, and those whose position is none. What comes later holds, both for a
    /// column and for a position.
    void read(std::string_view prefix, std::string_view key, std::string_view value);
    /// What is known of a column.
    const std::optional<ListColumnState> &column(int column) const { return columns_[static_cast<size_t>(column)]; }
    /// All columns in order: those that have their position, then the rest.
    std::vector<int> order() const;

private:
    std::vector<std::optional<ListColumnState>> columns_;
    std::vector<int> places_; ///< The column at each position; -1 for none.
};

#endif
