// SPDX-License-Identifier: MIT
#include "foundation/colorschememath_p.h"

#include <algorithm>
#include <cmath>

namespace tavi::colorscheme {

namespace {

constexpr double half_luminance = 0.85;
constexpr double half_chroma = 0.5;
constexpr std::array<int, stripe_count> stripe_levels = {255, 239, 231, 239};
constexpr Stripes grey_stripes = {{{255, 255, 255}, {245, 245, 245}, {240, 240, 240}, {245, 245, 245}}};

void toYiq(const Rgb &base, const Matrix &rgb_to_yiq, Triple &yiq)
{
    const Triple linear = {toLinear(base.red), toLinear(base.green), toLinear(base.blue)};
    multiply(rgb_to_yiq, linear, yiq);
}

Rgb fittedColour(Triple &yiq, const Matrix &yiq_to_rgb)
{
    Triple linear;
    fitIntoGamut(yiq, linear, yiq_to_rgb);
    return {fromLinear(linear[0]), fromLinear(linear[1]), fromLinear(linear[2])};
}

/// 0 to 100 percent on 0 to 255.
int scalePercent(double percent)
{
    if (!(percent >= 0.0))
        return 0;
    return percent > 100.0 ? 255 : static_cast<int>(255.0 * percent / 100.0 + 0.5);
}

} // namespace

double toLinear(int channel)
{
    return std::pow(channel / 255.0, to_linear_exponent);
}

double toCoded(double component, double exponent)
{
    const double coded = 255.0 * std::pow(std::fabs(component), exponent);
    return coded > 255.0 ? 255.0 : coded;
}

int fromLinear(double component)
{
    return static_cast<int>(toCoded(component, from_linear_exponent));
}

void multiply(const Matrix &matrix, const Triple &in, Triple &out)
{
    for (int row = 0; row < 3; ++row)
        out[row] = matrix[row][0] * in[0] + matrix[row][1] * in[1] + matrix[row][2] * in[2];
}

bool invert(const Matrix &matrix, Matrix &inverse)
{
    const auto &m = matrix;
    // Rows and columns counted around, so that the signs of the cofactors come by themselves.
    const auto cofactor = [&m](int row, int column) {
        const int r1 = (row + 1) % 3, r2 = (row + 2) % 3, c1 = (column + 1) % 3, c2 = (column + 2) % 3;
        return m[r1][c1] * m[r2][c2] - m[r1][c2] * m[r2][c1];
    };
    const double determinant = m[0][0] * cofactor(0, 0) + m[0][1] * cofactor(0, 1) + m[0][2] * cofactor(0, 2);
    if (determinant == 0.0 || !std::isfinite(determinant))
        return false;
    Matrix result;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            result[row][column] = cofactor(column, row) / determinant;
    }
    std::copy(&result[0][0], &result[0][0] + 9, &inverse[0][0]);
    return true;
}

int fitIntoGamut(Triple &yiq, Triple &rgb, const Matrix &yiq_to_rgb)
{
    multiply(yiq_to_rgb, yiq, rgb);
    int rounds = 0;
    while ((rgb[0] > 1.0 || rgb[1] > 1.0 || rgb[2] > 1.0) && rounds < scaling_limit) {
        yiq[1] *= scaling_factor;
        yiq[2] *= scaling_factor;
        multiply(yiq_to_rgb, yiq, rgb);
        ++rounds;
    }
    return rounds;
}

std::optional<Rgb> halfColour(const Rgb &base, const Matrix &rgb_to_yiq)
{
    Matrix yiq_to_rgb;
    if (base.isGrey() || !invert(rgb_to_yiq, yiq_to_rgb))
        return std::nullopt;
    Triple yiq;
    toYiq(base, rgb_to_yiq, yiq);
    yiq[0] = half_luminance;
    yiq[1] *= half_chroma;
    yiq[2] *= half_chroma;
    return fittedColour(yiq, yiq_to_rgb);
}

std::optional<Stripes> rasterStripes(const Rgb &base, const Matrix &rgb_to_yiq)
{
    if (base.isGrey())
        return grey_stripes;
    Matrix yiq_to_rgb;
    if (!invert(rgb_to_yiq, yiq_to_rgb))
        return std::nullopt;
    Triple base_yiq;
    toYiq(base, rgb_to_yiq, base_yiq);
    Stripes stripes;
    for (size_t i = 0; i < stripes.size(); ++i) {
        // A level is taken for linear light as it stands.
        const double level = stripe_levels[i] / 255.0;
        const Triple white = {level, level, level};
        Triple yiq;
        multiply(rgb_to_yiq, white, yiq);
        yiq[1] = base_yiq[1];
        yiq[2] = base_yiq[2];
        stripes[i] = fittedColour(yiq, yiq_to_rgb);
    }
    return stripes;
}

int luminance(const Rgb &base, const Matrix &rgb_to_yiq)
{
    Triple yiq;
    toYiq(base, rgb_to_yiq, yiq);
    return std::min(static_cast<int>(std::fabs(yiq[0] * 255.0) + 0.5), 255);
}

Hsv hsvFromPercent(double hue, double saturation, double value)
{
    int degrees = -1;
    if (hue > 360.0)
        degrees = 359;
    else if (hue >= 0.0)
        degrees = static_cast<int>(359.0 * hue / 360.0 + 0.5);
    return {degrees, scalePercent(saturation), scalePercent(value)};
}

} // namespace tavi::colorscheme
