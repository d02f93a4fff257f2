// SPDX-License-Identifier: MIT
#ifndef TESTS_FOUNDATION_COLORSCHEMEREFERENCE_H
#define TESTS_FOUNDATION_COLORSCHEMEREFERENCE_H

#include <algorithm>
#include <array>
#include <cmath>

/// The colours of a scheme, worked out in another way than the library does: in long double, by Cramer's rule in
/// place of an inverse matrix, and with the chroma of each round of fitting as a power of 0.9 from its first value in
/// place of repeated scaling.
namespace reference {

using Number = long double;
using Numbers = std::array<Number, 3>;

struct Colour {
    Numbers coded; ///< 0 to 255, not truncated.
    int rounds;
    bool is_close = false; ///< A component stood so close to 1 that doubles may see it on the other side.

    /// Whether @a channels are the truncated components. One that stands so close to a whole number that doubles may
    /// see it on the other side may be either.
    bool agreesWith(const std::array<int, 3> &channels) const
    {
        for (size_t i = 0; i < 3; ++i) {
            if (channels[i] != static_cast<int>(coded[i] - 1e-9L)
                && channels[i] != static_cast<int>(coded[i] + 1e-9L))
                return false;
        }
        return true;
    }
    bool isClear() const
    {
        return std::all_of(coded.begin(), coded.end(), [](Number v) {
            return v == 255 || static_cast<int>(v - 1e-9L) == static_cast<int>(v + 1e-9L);
        });
    }
};

inline constexpr Number rows[3][3] = {
    {0.2989L, 0.5866L, 0.1144L}, {0.5959L, -0.2741L, -0.3218L}, {0.2113L, -0.5227L, 0.3113L}};

inline Number determinant(const Number (&m)[3][3])
{
    return m[0][0] * m[1][1] * m[2][2] + m[0][1] * m[1][2] * m[2][0] + m[0][2] * m[1][0] * m[2][1]
           - m[0][2] * m[1][1] * m[2][0] - m[0][1] * m[1][0] * m[2][2] - m[0][0] * m[1][2] * m[2][1];
}

/// Linear red, green and blue that have this luminance and chroma.
inline Numbers solve(const Numbers &yiq)
{
    Numbers result;
    for (size_t column = 0; column < 3; ++column) {
        Number replaced[3][3];
        for (size_t row = 0; row < 3; ++row) {
            std::copy(rows[row], rows[row] + 3, replaced[row]);
            replaced[row][column] = yiq[row];
        }
        result[column] = determinant(replaced) / determinant(rows);
    }
    return result;
}

inline Numbers toYiq(const Numbers &rgb)
{
    Numbers yiq = {};
    for (size_t row = 0; row < 3; ++row) {
        for (size_t column = 0; column < 3; ++column)
            yiq[row] += rows[row][column] * rgb[column];
    }
    return yiq;
}

inline Numbers toLinear(const std::array<int, 3> &channels)
{
    Numbers linear;
    for (size_t i = 0; i < 3; ++i)
        linear[i] = std::pow(static_cast<Number>(channels[i]) / 255, static_cast<Number>(2.2222222222222223));
    return linear;
}

/// The colour of this luminance and chroma, fitted.
inline Colour fitted(Number y, Number i, Number q)
{
    Colour colour = {};
    Numbers linear;
    for (colour.rounds = 0;; ++colour.rounds) {
        const Number factor = std::pow(static_cast<Number>(0.9), static_cast<Number>(colour.rounds));
        linear = solve({y, i * factor, q * factor});
        const Number largest = *std::max_element(linear.begin(), linear.end());
        if (std::fabs(largest - 1) < 1e-12L)
            colour.is_close = true;
        if (largest <= 1 || colour.rounds == 101)
            break;
    }
    for (size_t c = 0; c < 3; ++c) {
        const Number coded = 255 * std::pow(std::fabs(linear[c]), static_cast<Number>(0.44999999999999996));
        colour.coded[c] = std::min(coded, Number(255));
    }
    return colour;
}

inline Colour half(const std::array<int, 3> &base)
{
    const Numbers yiq = toYiq(toLinear(base));
    return fitted(0.85L, yiq[1] / 2, yiq[2] / 2);
}

/// The stripe of the level @a level.
inline Colour stripe(const std::array<int, 3> &base, int level)
{
    const Numbers yiq = toYiq(toLinear(base));
    const Number white = static_cast<Number>(level) / 255;
    return fitted(toYiq({white, white, white})[0], yiq[1], yiq[2]);
}

/// On 0 to 255, not rounded.
inline Number luminance(const std::array<int, 3> &base)
{
    return toYiq(toLinear(base))[0] * 255;
}

} // namespace reference

#endif
