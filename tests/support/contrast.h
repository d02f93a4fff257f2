// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_CONTRAST_H
#define TESTS_SUPPORT_CONTRAST_H

#include <QColor>

#include <algorithm>
#include <cmath>

/// Relative luminance of an opaque colour as WCAG 2.1 defines it, 0 to 1.
inline double relativeLuminance(const QColor &colour)
{
    const auto linear = [](int value) {
        const double part = value / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.red()) + 0.7152 * linear(colour.green()) + 0.0722 * linear(colour.blue());
}

/// Contrast of two opaque colours as WCAG 2.1 defines it: 1 for none, 21 for black and white. It wants 4.5 for text
/// and 3 for signs and outlines.
inline double contrast(const QColor &a, const QColor &b)
{
    const double first = relativeLuminance(a) + 0.05;
    const double second = relativeLuminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

#endif
