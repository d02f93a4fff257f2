// SPDX-License-Identifier: MIT
#include "taviapp/tavicolourutil.h"

#include <algorithm>

uint32_t TaviColourUtil::encodeRGB(int red, int green, int blue)
{
    const auto byte = [](int value) {
        return static_cast<uint32_t>(std::clamp(value, 0, 255));
    };
    return 0xff000000U | byte(red) << 16 | byte(green) << 8 | byte(blue);
}

void TaviColourUtil::decodeRGB(uint32_t rgb, int *red, int *green, int *blue)
{
    *red = static_cast<int>(rgb >> 16 & 0xffU);
    *green = static_cast<int>(rgb >> 8 & 0xffU);
    *blue = static_cast<int>(rgb & 0xffU);
}
