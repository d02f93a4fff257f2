// SPDX-License-Identifier: MIT
#include "taviapp/comboflags_p.h"

#include <cmath>

namespace {

bool equal(float value, float percent)
{
    return std::fabs(value - percent) < 0.01F;
}

/// Half a percent, as eight bits a channel need it.
bool about(float value, float percent)
{
    return std::fabs(value - percent) < 0.501F;
}

bool isComposedGrey(float cyan, float magenta, float yellow)
{
    static constexpr float greys[][2] = {{10, 6},   {20, 12}, {40, 27}, {60, 45}, {80, 65},
                                         {100, 85}, {25, 19}, {50, 40}, {75, 66}};
    for (const auto &[c, m] : greys) {
        if (about(cyan, c) && about(magenta, m) && about(yellow, m))
            return true;
    }
    return false;
}

} // namespace

uint32_t taviReferenceFlags(const TAVICOMBOCOLOUR &patch)
{
    if (patch.device_model != COMBOCOLOUR_DEVICE_CMYK)
        return 0;
    const float c = patch.device[0];
    const float m = patch.device[1];
    const float y = patch.device[2];
    const float k = patch.device[3];
    const auto is = [&](float cyan, float magenta, float yellow, float black) {
        return equal(c, cyan) && equal(m, magenta) && equal(y, yellow) && equal(k, black);
    };
    if (is(0, 0, 0, 0))
        return COMBOCOLOUR_FLAG_PAPER;
    if (is(100, 0, 0, 0))
        return COMBOCOLOUR_FLAG_CYAN;
    if (is(0, 100, 0, 0))
        return COMBOCOLOUR_FLAG_MAGENTA;
    if (is(0, 0, 100, 0))
        return COMBOCOLOUR_FLAG_YELLOW;
    if (is(0, 0, 0, 100))
        return COMBOCOLOUR_FLAG_BLACK;
    return equal(k, 0) && isComposedGrey(c, m, y) ? COMBOCOLOUR_FLAG_GREY : 0;
}
