// SPDX-License-Identifier: MIT
#ifndef TAVILIB_CALCHECKFIGURES_P_H
#define TAVILIB_CALCHECKFIGURES_P_H

#include "tavilib/tavirecords.h"

#include <cstddef>

/// The figures of a colour check in one table, for all that goes through them. Not installed.
struct CalcheckFigure {
    uint32_t bit;                      ///< CALCHECK_...
    const char *name;                  ///< As criteria files call it.
    double CALCHECKSTATISTICS::*value; ///< Where statistics keep it.
    double CALCHECKLIMITS::*limit;     ///< Where limits keep it.
    uint32_t mark;                     ///< The flag of the patches that it is of; 0: of all.
};

/// The first ones are those of marked single patches, in the order of their bits.
inline constexpr CalcheckFigure calcheck_figures[] = {
    {CALCHECK_PAPER, "paper", &CALCHECKSTATISTICS::paper, &CALCHECKLIMITS::paper, COMBOCOLOUR_FLAG_PAPER},
    {CALCHECK_CYAN, "cyan", &CALCHECKSTATISTICS::cyan, &CALCHECKLIMITS::cyan, COMBOCOLOUR_FLAG_CYAN},
    {CALCHECK_MAGENTA, "magenta", &CALCHECKSTATISTICS::magenta, &CALCHECKLIMITS::magenta, COMBOCOLOUR_FLAG_MAGENTA},
    {CALCHECK_YELLOW, "yellow", &CALCHECKSTATISTICS::yellow, &CALCHECKLIMITS::yellow, COMBOCOLOUR_FLAG_YELLOW},
    {CALCHECK_BLACK, "black", &CALCHECKSTATISTICS::black, &CALCHECKLIMITS::black, COMBOCOLOUR_FLAG_BLACK},
    {CALCHECK_AVERAGE, "average", &CALCHECKSTATISTICS::average, &CALCHECKLIMITS::average, 0},
    {CALCHECK_MAX, "max", &CALCHECKSTATISTICS::max, &CALCHECKLIMITS::max, 0},
    {CALCHECK_DEVIATION, "deviation", &CALCHECKSTATISTICS::deviation, &CALCHECKLIMITS::deviation, 0},
    {CALCHECK_GRAY, "gray", &CALCHECKSTATISTICS::gray, &CALCHECKLIMITS::gray, COMBOCOLOUR_FLAG_GREY},
    {CALCHECK_GRAY_MAX, "gray_max", &CALCHECKSTATISTICS::gray_max, &CALCHECKLIMITS::gray_max, COMBOCOLOUR_FLAG_GREY},
};

/// How many of calcheck_figures are of marked single patches.
inline constexpr size_t calcheck_solids = 5;

/// All bits of CALCHECKSTATISTICS::passed.
inline constexpr uint32_t calcheck_all_passed = 0x1ff;

#endif
