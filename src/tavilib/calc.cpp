// SPDX-License-Identifier: MIT
#include "tavilib/calc.h"

#include "tavilib/tavilist.h"

#include <algorithm>
#include <limits>

SPECTROSEPTYPE TaviBandTypeToSpectroSepType(uint32_t band_type)
{
    switch (band_type) {
    case TAVIBANDTYPE_CYAN:
        return SPECTROSEP_CYAN;
    case TAVIBANDTYPE_MAGENTA:
        return SPECTROSEP_MAGENTA;
    case TAVIBANDTYPE_YELLOW:
        return SPECTROSEP_YELLOW;
    case TAVIBANDTYPE_BLACK:
    case TAVIBANDTYPE_LIGHT_BLACK:
        return SPECTROSEP_BLACK;
    case TAVIBANDTYPE_LIGHT_CYAN:
        return SPECTROSEP_LIGHT_CYAN;
    case TAVIBANDTYPE_LIGHT_MAGENTA:
        return SPECTROSEP_LIGHT_MAGENTA;
    case TAVIBANDTYPE_ORANGE:
        return SPECTROSEP_ORANGE;
    case TAVIBANDTYPE_GREEN:
        return SPECTROSEP_GREEN;
    default:
        return SPECTROSEP_NONE;
    }
}

int GenerateHandheldLinearisationChart(const DENSITYLUT *lut, double *values, unsigned long count)
{
    if (!lut || lut->separation_count == 0 || !values || count == 0)
        return 0;
    count = std::min<unsigned long>(count, std::numeric_limits<int>::max());
    for (unsigned long i = 0; i < count; ++i)
        values[i] = count == 1 ? 100.0 : 100.0 * static_cast<double>(i) / static_cast<double>(count - 1);
    return static_cast<int>(count);
}

int GenerateHandheldComboColourChart(const TAVICOMBOCOLOUR *chart, unsigned long parameter)
{
    const int patches = ListLength(chart);
    if (parameter > 0)
        return static_cast<int>(std::min<unsigned long>(parameter, static_cast<unsigned long>(patches)));
    int side = 0;
    while (static_cast<long long>(side) * side < patches)
        ++side;
    return side;
}
