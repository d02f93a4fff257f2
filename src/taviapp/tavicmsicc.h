// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_TAVICMSICC_H
#define TAVIAPP_TAVICMSICC_H

#include "taviapp/taviapp_export.h"

#include <array>
#include <cstddef>

/// The colour engine of the widgets: what a colour looks like on the screen. Widgets take a pointer to one and, where
/// that is null, show no colours.
///
/// @code
/// const TaviCmsIcc cms;
/// int red = 0, green = 0, blue = 0;
/// cms.labD502rgb(95.0, 0.0, -2.0, &red, &green, &blue); // paper
/// @endcode
///
/// The screen is taken for sRGB. A value without state; constant objects may be used from several threads.
class TAVIAPP_EXPORT TaviCmsIcc
{
public:
    /// The white of CIE illuminant D65, 2 degree observer: X 0.95047, Y 1, Z 1.08883 (ASTM E308, the figures of the
    /// CIE tables summed from 360 to 780 nm).
    static std::array<double, 3> D65();

    /// The display colour of a D50 Lab value as red, green and blue, 0..255. Absolute: paper looks like paper.
    /// Colours that the screen cannot show are clipped channel by channel; values that are no number give black.
    void labD502rgb(double L, double a, double b, int *red, int *green, int *blue) const;

    /// labD502rgb() for a list: @a count triples L, a, b at @a lab to as many triples red, green, blue at @a rgb.
    /// O(count), a little cheaper than single calls.
    void labD502rgb(const double *lab, int *rgb, size_t count) const;
};

#endif
