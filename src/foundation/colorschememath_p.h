// SPDX-License-Identifier: MIT
#ifndef FOUNDATION_COLORSCHEMEMATH_P_H
#define FOUNDATION_COLORSCHEMEMATH_P_H

#include "foundation/taviwidgets_export.h"

#include <array>
#include <bit>
#include <cstdint>
#include <optional>

/// @file
/// The colour arithmetic of ColorScheme, as plain functions that need no display. Not installed.
///
/// Linear components run from 0 for black to 1 for white, coded ones from 0 to 255. A matrix turns linear red, green
/// and blue into a luminance Y and two chroma components I and Q. Everything here is callable from any thread.
namespace tavi::colorscheme {

using Triple = double[3];
using Matrix = double[3][3];

/// A colour of 8 bits a channel.
struct Rgb {
    int red;
    int green;
    int blue;
    bool operator==(const Rgb &) const = default;
    bool isGrey() const { return red == green && green == blue; }
};

/// What QColor::setHsv() takes: a hue from 0 to 359 or -1 for none, the others from 0 to 255.
struct Hsv {
    int hue;
    int saturation;
    int value;
    bool operator==(const Hsv &) const = default;
};

inline constexpr double to_linear_exponent = 2.2222222222222223;
/// The double just below 0.45. Colours are compared exactly, so that the last bit counts.
inline constexpr double from_linear_exponent = 0.44999999999999996;
static_assert(std::bit_cast<std::uint64_t>(from_linear_exponent) == 0x3fdccccccccccccc);

/// Fitting gives up after so many rounds.
inline constexpr int scaling_limit = 101;
inline constexpr double scaling_factor = 0.9;

/// The linear component of the coded one @a channel.
TAVIWIDGETS_EXPORT double toLinear(int channel);
/// The coded component of the linear one @a component with the exponent @a exponent: at most 255.0, not rounded. A
/// negative component counts as its absolute value.
TAVIWIDGETS_EXPORT double toCoded(double component, double exponent);
/// The same in 8 bits: with #from_linear_exponent, truncated.
TAVIWIDGETS_EXPORT int fromLinear(double component);

/// Multiplies @a matrix by the column @a in.
TAVIWIDGETS_EXPORT void multiply(const Matrix &matrix, const Triple &in, Triple &out);
/// Inverts @a matrix; false, and @a inverse is left alone, if it has no inverse.
TAVIWIDGETS_EXPORT bool invert(const Matrix &matrix, Matrix &inverse);

/// Multiplies @a yiq_to_rgb by @a yiq into @a rgb and, while a component of that exceeds 1.0, scales I and Q by
/// #scaling_factor and does so again, at most #scaling_limit times. Y is never changed: what does not fit loses
/// chroma and keeps its luminance. Components below 0 stay. Returns how often it has scaled.
TAVIWIDGETS_EXPORT int fitIntoGamut(Triple &yiq, Triple &rgb, const Matrix &yiq_to_rgb);

/// The paler companion of @a base: half its chroma at the luminance 0.85, fitted. Null for a grey, and if
/// @a rgb_to_yiq has no inverse.
TAVIWIDGETS_EXPORT std::optional<Rgb> halfColour(const Rgb &base, const Matrix &rgb_to_yiq);

/// How many stripes there are before they repeat.
inline constexpr int stripe_count = 4;
using Stripes = std::array<Rgb, stripe_count>;
/// Pale stripes with the chroma of @a base, fitted; of a grey, fixed greys. Null if @a rgb_to_yiq has no inverse and
/// the base is no grey.
TAVIWIDGETS_EXPORT std::optional<Stripes> rasterStripes(const Rgb &base, const Matrix &rgb_to_yiq);

/// The luminance of @a base on linear light, rounded, from 0 to 255.
TAVIWIDGETS_EXPORT int luminance(const Rgb &base, const Matrix &rgb_to_yiq);

/// Scales a hue in degrees, a saturation and a value in percent. A hue below 0 or not a number is none, one above 360
/// is 359; the others are clipped to 0 and 100 percent, and what is not a number counts as 0.
TAVIWIDGETS_EXPORT Hsv hsvFromPercent(double hue, double saturation, double value);

} // namespace tavi::colorscheme

#endif
