// SPDX-License-Identifier: MIT
#include "tavilib/calcheck.h"
#include "tavilib/calcheckfigures_p.h"
#include "tavilib/tavilist.h"

#include <algorithm>
#include <cmath>

// A tolerance is kept as a number of thousandths, plus one, so that 0 means none: dE in the lower half of
// `tolerances`, dH in its upper half, dC in the lower half of `tolerances_more`.

namespace {

constexpr uint32_t lower_half = 0xffffU;
constexpr uint32_t steps = 1000;
/// In `tolerances_more`: the tolerances are not the chart's own but a criteria set's.
constexpr uint32_t filled_in = 0x10000U;

double decode(uint32_t code)
{
    return code == 0 ? HUGE_VAL : static_cast<double>(code - 1) / steps;
}

uint32_t encode(double tolerance)
{
    if (!(tolerance >= 0.0) || tolerance == HUGE_VAL)
        return 0;
    return static_cast<uint32_t>(std::lround(std::min(tolerance, 65.534) * steps)) + 1;
}

/// Takes away what a criteria set has put there: with a tolerance of its own a patch has only such.
void makeOwn(TAVICOMBOCOLOUR *patch)
{
    if (patch->tolerances_more & filled_in)
        patch->tolerances = patch->tolerances_more = 0;
}

void setE(TAVICOMBOCOLOUR *patch, double tolerance)
{
    patch->tolerances = (patch->tolerances & ~lower_half) | encode(tolerance);
}

void setH(TAVICOMBOCOLOUR *patch, double tolerance)
{
    patch->tolerances = (patch->tolerances & lower_half) | encode(tolerance) << 16;
}

void setC(TAVICOMBOCOLOUR *patch, double tolerance)
{
    patch->tolerances_more = (patch->tolerances_more & ~lower_half) | encode(tolerance);
}

/// What one patch may have by the limits of one delta, which limit its marks and all patches.
double toleranceBy(const CALCHECKLIMITS &limits, uint32_t flags)
{
    double tolerance = HUGE_VAL;
    for (const CalcheckFigure &figure : calcheck_figures) {
        // An average limits no single patch.
        const bool single = figure.bit == CALCHECK_MAX || (flags & figure.mark && figure.bit != CALCHECK_GRAY);
        if (single && (limits.limited & figure.bit))
            tolerance = std::min(tolerance, limits.*figure.limit);
    }
    return tolerance;
}

bool sameFormula(DELTAE_TYPE a, DELTAE_TYPE b)
{
    const auto plain = [](DELTAE_TYPE type) {
        return type == DELTAE_CIE76 || type == DELTAE_CIE94 ? type : DELTAE_CIE2000;
    };
    return plain(a) == plain(b);
}

} // namespace

double DECODE_DELTA_E_TOLERANCE(const TAVICOMBOCOLOUR *reference)
{
    return decode(reference ? reference->tolerances & lower_half : 0);
}

double DECODE_DELTA_H_TOLERANCE(const TAVICOMBOCOLOUR *reference)
{
    return decode(reference ? reference->tolerances >> 16 : 0);
}

double DECODE_DELTA_C_TOLERANCE(const TAVICOMBOCOLOUR *reference)
{
    return decode(reference ? reference->tolerances_more & lower_half : 0);
}

void ENCODE_DELTA_E_TOLERANCE(TAVICOMBOCOLOUR *reference, double tolerance)
{
    makeOwn(reference);
    setE(reference, tolerance);
}

void ENCODE_DELTA_H_TOLERANCE(TAVICOMBOCOLOUR *reference, double tolerance)
{
    makeOwn(reference);
    setH(reference, tolerance);
}

void ENCODE_DELTA_C_TOLERANCE(TAVICOMBOCOLOUR *reference, double tolerance)
{
    makeOwn(reference);
    setC(reference, tolerance);
}

bool calcheckHasOwnTolerances(const TAVICOMBOCOLOUR *reference)
{
    return reference && (reference->tolerances || (reference->tolerances_more & lower_half))
           && !(reference->tolerances_more & filled_in);
}

void calcheckFillTolerances(CALCHECKCHART *chart, const CALCHECKCRITERIA *criteria)
{
    if (!chart)
        return;
    for (TAVICOMBOCOLOUR *patch = chart->reference; patch; patch = NextInList(patch)) {
        if (calcheckHasOwnTolerances(patch))
            continue;
        patch->tolerances = patch->tolerances_more = 0;
        if (!criteria)
            continue;
        if (sameFormula(chart->delta_e_type, criteria->delta_e_type))
            setE(patch, toleranceBy(criteria->delta_e, patch->flags));
        setH(patch, toleranceBy(criteria->delta_h, patch->flags));
        setC(patch, toleranceBy(criteria->delta_c, patch->flags));
        patch->tolerances_more |= filled_in;
    }
}
