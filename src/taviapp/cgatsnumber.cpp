// SPDX-License-Identifier: MIT
#include "taviapp/cgatsnumber_p.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

CgatsNumber cgatsNumber(std::string_view cell)
{
    CgatsNumber number;
    // from_chars knows a minus sign only.
    if (cell.size() > 1 && cell[0] == '+' && cell[1] != '-')
        cell.remove_prefix(1);
    const char *end = cell.data() + cell.size();
    auto result = std::from_chars(cell.data(), end, number.value);
    // A number that begins with its decimal comma (",5") is no number from the start on.
    if (result.ptr != end && (*result.ptr == ',' || result.ec == std::errc::invalid_argument)) {
        std::array<char, 64> copy = {};
        const auto comma = static_cast<size_t>(std::count(cell.begin(), cell.end(), ','));
        if (comma != 1 || cell.size() > copy.size() || cell.find('.') != std::string_view::npos)
            return number;
        std::replace_copy(cell.begin(), cell.end(), copy.begin(), ',', '.');
        end = copy.data() + cell.size();
        result = std::from_chars(copy.data(), end, number.value);
        number.comma = true;
    }
    number.valid = result.ec == std::errc() && result.ptr == end && std::isfinite(number.value);
    return number;
}
