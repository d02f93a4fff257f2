// SPDX-License-Identifier: MIT
#ifndef TAVILIB_TAVICMS_H
#define TAVILIB_TAVICMS_H

#include "tavilib/tavilib_export.h"

#include <cstdint>

/// @file
/// Colour conversions, by Little CMS. Lab is CIE 1976 L*a*b* relative to the D50 illuminant, 2 degree observer, with
/// L 0..100. Every function may be called from any thread.

/// XYZ on the scale where D50 white has Y 100, as measurement files give it, to Lab (CIE 15; the white point is the
/// ICC profile connection space's: X 96.42, Y 100, Z 82.49).
TAVILIB_EXPORT void TAVICMSXYZToLab(double X, double Y, double Z, double *L, double *a, double *b);

/// A display colour for a Lab value, 0xffRRGGBB in sRGB, absolute: paper white looks like paper, not like the
/// screen's white. Colours outside sRGB are clipped channel by channel; values that are no number give black.
TAVILIB_EXPORT uint32_t TAVICMSLabToDisplay(double L, double a, double b);

#endif
