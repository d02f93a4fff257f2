// SPDX-License-Identifier: MIT
#include "listviews/listheaderstate_p.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace {

/// The numbers that a text begins with, blanks before each; nothing if there are fewer or one is out of range.
template <size_t Count>
std::optional<std::array<int, Count>> readNumbers(std::string_view text)
{
    std::array<int, Count> numbers{};
    for (int &number : numbers) {
        text.remove_prefix(std::min(text.find_first_not_of(" \t\n\v\f\r"), text.size()));
        const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
        if (error != std::errc())
            return std::nullopt;
        text.remove_prefix(static_cast<size_t>(end - text.data()));
    }
    return numbers;
}

std::optional<size_t> columnOf(std::string_view prefix, std::string_view key, size_t columns)
{
    if (key.substr(0, prefix.size()) != prefix)
        return std::nullopt;
    const std::string_view digits = key.substr(prefix.size());
    size_t column = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), column);
    if (error != std::errc() || end != digits.data() + digits.size() || column >= columns)
        return std::nullopt;
    return column;
}

} // namespace

std::string columnStateText(const ListColumnState &state)
{
    return std::to_string(state.position) + (state.visible ? " 1 " : " 0 ")
           + std::to_string(std::max(state.width, -1));
}

std::string sortingText(int place, bool ascending)
{
    return std::to_string(place) + (ascending ? " 0" : " 1");
}

std::optional<std::pair<int, bool>> readSorting(std::string_view value)
{
    const auto numbers = readNumbers<2>(value);
    if (!numbers)
        return std::nullopt;
    return std::pair((*numbers)[0], (*numbers)[1] == 0);
}

std::string columnKey(std::string_view prefix, int column)
{
    const std::string digits = std::to_string(column);
    std::string key(prefix);
    if (digits.size() < 3)
        key.append(3 - digits.size(), '0');
    return key.append(digits);
}

ListHeaderState::ListHeaderState(int columns)
    : columns_(static_cast<size_t>(columns)), places_(static_cast<size_t>(columns), -1)
{}

void ListHeaderState::read(std::string_view prefix, std::string_view key, std::string_view value)
{
    const std::optional<size_t> column = columnOf(prefix, key, columns_.size());
    const auto numbers = readNumbers<3>(value);
    if (!column || !numbers)
        return;
    const auto [position, visible, width] = *numbers;
    if (position < 0 || static_cast<size_t>(position) >= columns_.size())
        return;
    std::replace(places_.begin(), places_.end(), static_cast<int>(*column), -1);
    places_[static_cast<size_t>(position)] = static_cast<int>(*column);
    columns_[*column] = {position, visible > 0, std::clamp(width, -1, widest_column)};
}

std::vector<int> ListHeaderState::order() const
{
    std::vector<int> order;
    std::vector<bool> placed(places_.size());
    for (const int column : places_) {
        if (column < 0)
            continue;
        order.push_back(column);
        placed[static_cast<size_t>(column)] = true;
    }
    for (size_t column = 0; column < placed.size(); ++column) {
        if (!placed[column])
            order.push_back(static_cast<int>(column));
    }
    return order;
}
