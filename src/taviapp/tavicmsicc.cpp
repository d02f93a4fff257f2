// SPDX-License-Identifier: MIT
#include "taviapp/tavicmsicc.h"

#include "taviapp/tavicolourutil.h"
#include "tavilib/tavicms.h"

#include <algorithm>

std::array<double, 3> TaviCmsIcc::D65()
{
    return {0.95047, 1.0, 1.08883};
}

void TaviCmsIcc::labD502rgb(double L, double a, double b, int *red, int *green, int *blue) const
{
    TaviColourUtil::decodeRGB(TAVICMSLabToDisplay(L, a, b), red, green, blue);
}

void TaviCmsIcc::labD502rgb(const double *lab, int *rgb, size_t count) const
{
    constexpr size_t most = 256;
    uint32_t argb[most];
    while (count > 0) {
        const size_t part = std::min(count, most);
        TAVICMSLabListToDisplay(lab, argb, part);
        for (size_t i = 0; i < part; ++i, rgb += 3)
            TaviColourUtil::decodeRGB(argb[i], rgb, rgb + 1, rgb + 2);
        lab += part * 3;
        count -= part;
    }
}
