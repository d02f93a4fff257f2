// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_TAVICOLOURUTIL_H
#define TAVIAPP_TAVICOLOURUTIL_H

#include "taviapp/taviapp_export.h"

#include <cstdint>

/// Display colours as records keep them (TAVICOMBOCOLOUR::rgb): 0xAARRGGBB.
class TAVIAPP_EXPORT TaviColourUtil
{
public:
    /// The opaque colour of red, green and blue, 0xffRRGGBB. Each is clipped to 0..255.
    static uint32_t encodeRGB(int red, int green, int blue);
    /// Red, green and blue, 0..255, of 0xAARRGGBB; the opacity is not looked at.
    static void decodeRGB(uint32_t rgb, int *red, int *green, int *blue);
};

#endif
