// SPDX-License-Identifier: MIT
#ifndef TAVILIB_TAVICMS_H
#define TAVILIB_TAVICMS_H

#include "tavilib/tavilib_export.h"

#include <cstddef>
#include <cstdint>

/// @file
/// Colour conversions and colour differences, by Little CMS. Lab is CIE 1976 L*a*b* relative to the D50 illuminant,
/// 2 degree observer, with L 0..100, unless a white point is given. Every function may be called from any thread and
/// throws nothing.

/// @name Conversions
/// @{

/// XYZ on the scale where D50 white has Y 100, as measurement files give it, to Lab (CIE 15; the white point is the
/// ICC profile connection space's: X 96.42, Y 100, Z 82.49).
TAVILIB_EXPORT void TAVICMSXYZToLab(double X, double Y, double Z, double *L, double *a, double *b);

/// Normalised XYZ (white has Y 1) to Lab relative to @a white_point, which is on the same scale: X, Y, Z to L, a, b
/// after CIE 15. A display's reading, for example, is taken relative to TaviCmsIcc::D65(). @a xyz and @a lab may be
/// the same triple. A white point without a positive X, Y and Z, and values that are no number, give what the formula
/// makes of them: infinities or no number.
TAVILIB_EXPORT void TAVICMS_XYZToLab(const double xyz[3], const double white_point[3], double lab[3]);

/// A display colour for a Lab value, 0xffRRGGBB in sRGB, absolute: paper white looks like paper, not like the
/// screen's white. Colours outside sRGB are clipped channel by channel; values that are no number give black.
TAVILIB_EXPORT uint32_t TAVICMSLabToDisplay(double L, double a, double b);

/// TAVICMSLabToDisplay() for @a count colours, the triples L, a, b one behind the other, to as many display colours:
/// what a list is converted with. O(count), a little cheaper than single calls.
TAVILIB_EXPORT void TAVICMSLabListToDisplay(const double *lab, uint32_t *argb, size_t count);

/// @}

/// @name Differences
/// How far a measured colour is from its reference, both as L, a, b. Those called DeltaE, dH and dCh are never
/// negative. A value that is no finite number is infinitely far from every colour, so that it is above every
/// tolerance; so is what a double cannot hold.
/// @{

/// The plain difference dE*ab (CIE 15, CIE 1976): the distance in Lab. Symmetric.
TAVILIB_EXPORT double TAVICMS_ColourDiff_DeltaE(const double reference[3], const double measured[3]);

/// dE*94 (CIE 116-1995) with the parameters of the graphic arts: kL = kC = kH = 1, K1 0.045, K2 0.015. Not symmetric:
/// the weights are those of the reference's chroma. (90, -5, 100) against (90, -5, 106) is 1.0947.
TAVILIB_EXPORT double TAVICMS_ColourDiff_CIE94(const double reference[3], const double measured[3]);

/// dE00 (CIE 142-2001, ISO/CIE 11664-6) with kL = kC = kH = 1. Symmetric.
TAVILIB_EXPORT double TAVICMS_ColourDiff_CIE2000(const double reference[3], const double measured[3]);

/// The hue difference dH*ab (CIE 15) without its sign: what is left of dE*ab without its parts of lightness and
/// chroma, sqrt(dE^2 - dL^2 - dC^2). Symmetric.
TAVILIB_EXPORT double TAVICMS_ColourDiff_dH(const double reference[3], const double measured[3]);

/// The chroma difference with its sign, C(reference) - C(measured), with C = sqrt(a^2 + b^2) (CIE 15): a loss of
/// chroma is positive, a gain negative.
TAVILIB_EXPORT double TAVICMS_ColourDiff_dC(const double reference[3], const double measured[3]);

/// The chromaticness difference dCh = sqrt(da^2 + db^2), by which ISO 12647-7 judges composed greys: hue and chroma
/// say little so near to the grey axis. Symmetric.
TAVILIB_EXPORT double TAVICMS_ColourDiff_dCh(const double reference[3], const double measured[3]);

/// @}

#endif
