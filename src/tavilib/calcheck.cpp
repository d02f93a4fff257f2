// SPDX-License-Identifier: MIT
#include "tavilib/calcheck.h"

#include "tavilib/calcheckcriteria.h"
#include "tavilib/calcheckstatistics_p.h"
#include "tavilib/tavialloc_p.h"
#include "tavilib/tavicms.h"
#include "tavilib/tavilog.h"
#include "tavilib/tavipacket.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace {

using Difference = double (*)(const double *, const double *);

struct FreeResult {
    void operator()(CALCHECKRESULT *result) const { TaviPacketFreeItem(result, TAVIPACKET_CALCHECKRESULT); }
};

Difference differenceOf(DELTAE_TYPE type)
{
    switch (type) {
    case DELTAE_CIE76:
        return TAVICMS_ColourDiff_DeltaE;
    case DELTAE_CIE94:
        return TAVICMS_ColourDiff_CIE94;
    default:
        return TAVICMS_ColourDiff_CIE2000;
    }
}

bool isColour(const TAVICOMBOCOLOUR *patch)
{
    return (patch->flags & COMBOCOLOUR_FLAG_LAB) && std::isfinite(patch->L) && std::isfinite(patch->a)
           && std::isfinite(patch->b);
}

/// The deltas of one pair of patches.
struct Deltas {
    double e = HUGE_VAL;
    double h = HUGE_VAL;
    double c = HUGE_VAL;
    double ch = HUGE_VAL; ///< Of composed greys.
};

/// One check on its way through the patches.
class Check
{
public:
    Check(const CALCHECKCHART &chart, CALCHECKRESULT &result)
        : chart_(chart), difference_(differenceOf(chart.delta_e_type)), result_(result)
    {}

    void compare(const TAVICOMBOCOLOUR *measured);
    /// False if memory is out.
    bool judge();

private:
    Deltas deltas(const TAVICOMBOCOLOUR *reference, const TAVICOMBOCOLOUR *measured);
    void judgePatch(const TAVICOMBOCOLOUR *reference, const Deltas &delta);
    void judgeDelta(CalcheckStatistics &figures, CALCHECKSTATISTICS *statistics, const CALCHECKLIMITS *limits);

    bool hasH() const { return chart_.check_mask & CALCHECK_MASK_DELTA_H; }
    bool hasC() const { return chart_.check_mask & CALCHECK_MASK_DELTA_C; }

    const CALCHECKCHART &chart_;
    const Difference difference_;
    CALCHECKRESULT &result_;
    bool own_tolerances_ = false;
    CalcheckStatistics e_;
    CalcheckStatistics h_;
    CalcheckStatistics c_;
};

Deltas Check::deltas(const TAVICOMBOCOLOUR *reference, const TAVICOMBOCOLOUR *measured)
{
    Deltas delta;
    if (!isColour(reference) || !isColour(measured)) {
        result_.flags |= CALCHECKRESULT_NO_COLOUR;
        return delta;
    }
    const double p[3] = {reference->L, reference->a, reference->b};
    const double q[3] = {measured->L, measured->a, measured->b};
    delta.e = difference_(p, q);
    if (hasH())
        delta.h = TAVICMS_ColourDiff_dH(p, q);
    if (hasC()) {
        delta.c = TAVICMS_ColourDiff_dC(p, q);
        if (reference->flags & COMBOCOLOUR_FLAG_GREY)
            delta.ch = TAVICMS_ColourDiff_dCh(p, q);
    }
    return delta;
}

void Check::compare(const TAVICOMBOCOLOUR *measured)
{
    const TAVICOMBOCOLOUR *reference = chart_.reference;
    for (; reference && measured; reference = NextInList(reference), measured = NextInList(measured)) {
        const Deltas delta = deltas(reference, measured);
        const uint32_t flags = reference->flags;
        e_.add(delta.e, flags, delta.e);
        if (hasH())
            h_.add(delta.h, flags, delta.h);
        if (hasC())
            c_.add(delta.c, flags, delta.ch);
        if (!chart_.criteria && calcheckHasOwnTolerances(reference))
            judgePatch(reference, delta);
        ++result_.patch_count;
    }
    if (reference || measured)
        result_.flags |= CALCHECKRESULT_COUNTS_DIFFER;
}

void Check::judgePatch(const TAVICOMBOCOLOUR *reference, const Deltas &delta)
{
    own_tolerances_ = true;
    const auto judge = [reference](CalcheckStatistics &figures, double value, double tolerance) {
        if (tolerance != HUGE_VAL)
            figures.judge(value, reference->flags, tolerance);
    };
    judge(e_, delta.e, DECODE_DELTA_E_TOLERANCE(reference));
    if (hasH())
        judge(h_, delta.h, DECODE_DELTA_H_TOLERANCE(reference));
    if (hasC())
        judge(c_, delta.c, DECODE_DELTA_C_TOLERANCE(reference));
}

void Check::judgeDelta(CalcheckStatistics &figures, CALCHECKSTATISTICS *statistics, const CALCHECKLIMITS *limits)
{
    if (!statistics) {
        if (limits && limits->limited)
            result_.flags |= CALCHECKRESULT_SET_IN_PART;
        return;
    }
    figures.writeFigures(*statistics);
    if (own_tolerances_) {
        figures.writePatchJudgement(*statistics);
    } else if (limits) {
        figures.writeJudgement(*statistics, *limits);
        if (limits->limited & ~statistics->limited)
            result_.flags |= CALCHECKRESULT_SET_IN_PART;
    }
}

bool Check::judge()
{
    result_.delta_e = TaviAllocRecord<CALCHECKSTATISTICS>();
    if (hasH())
        result_.delta_h = TaviAllocRecord<CALCHECKSTATISTICS>();
    if (hasC())
        result_.delta_c = TaviAllocRecord<CALCHECKSTATISTICS>();
    if (!result_.delta_e || (hasH() && !result_.delta_h) || (hasC() && !result_.delta_c))
        return false;

    const CALCHECKCRITERIA *set = chart_.criteria;
    if (!set && !own_tolerances_)
        set = calcheckCriteriaFor(chart_.delta_e_type);
    if (set) {
        result_.criteria = DuplicatePacketItem(TAVIPACKET_CALCHECKCRITERIA, set);
        if (!result_.criteria)
            return false;
    }
    if (own_tolerances_)
        result_.flags |= CALCHECKRESULT_BY_CHART;
    const bool fits = set && differenceOf(set->delta_e_type) == difference_;
    judgeDelta(e_, result_.delta_e, fits ? &set->delta_e : nullptr);
    judgeDelta(h_, result_.delta_h, set ? &set->delta_h : nullptr);
    judgeDelta(c_, result_.delta_c, set ? &set->delta_c : nullptr);
    if (!fits && !own_tolerances_) {
        result_.flags |= CALCHECKRESULT_NOT_JUDGED;
        result_.delta_e->passed = 0;
        return true;
    }
    result_.score = 100.0 * std::exp2(-std::max({e_.worst(), h_.worst(), c_.worst()}));
    return true;
}

} // namespace

CALCHECKRESULT *calcheckResults(const CALCHECKCHART *chart, const TAVICOMBOCOLOUR *measured)
{
    if (!chart || !chart->reference || !measured)
        return nullptr;
    std::unique_ptr<CALCHECKRESULT, FreeResult> result(TaviAllocRecord<CALCHECKRESULT>());
    if (result) {
        Check check(*chart, *result);
        check.compare(measured);
        if (check.judge())
            return result.release();
    }
    TaviLogAllocationFailure("calcheck", "calcheckResults", sizeof(CALCHECKRESULT));
    return nullptr;
}

bool calcheckPasses(const CALCHECKRESULT *results)
{
    constexpr uint32_t never = CALCHECKRESULT_NOT_JUDGED | CALCHECKRESULT_COUNTS_DIFFER | CALCHECKRESULT_NO_COLOUR;
    if (!results || (results->flags & never) || !calcheckDeltaPasses(results->delta_e))
        return false;
    return (!results->delta_h || calcheckDeltaPasses(results->delta_h))
           && (!results->delta_c || calcheckDeltaPasses(results->delta_c));
}

bool calcheckDeltaPasses(const CALCHECKSTATISTICS *statistics)
{
    return statistics && (statistics->passed & calcheck_all_passed) == calcheck_all_passed;
}

CALCHECKCHART *CALCHECKCHART_CC::newChart()
{
    auto *chart = TaviAllocRecord<CALCHECKCHART>();
    if (!chart) {
        TaviLogAllocationFailure("calcheck", "CALCHECKCHART_CC::newChart", sizeof(CALCHECKCHART));
        return nullptr;
    }
    chart->delta_e_type = DELTAE_CIE2000;
    chart->check_mask = CALCHECK_MASK_DELTA_H | CALCHECK_MASK_DELTA_C;
    return chart;
}

bool CALCHECKCHART_CC::setCriteria(CALCHECKCHART *chart, const CALCHECKCRITERIA *criteria)
{
    if (!chart)
        return false;
    CALCHECKCRITERIA *copy = DuplicatePacketItem(TAVIPACKET_CALCHECKCRITERIA, criteria);
    if (criteria && !copy)
        return false;
    TaviPacketFreeItem(chart->criteria, TAVIPACKET_CALCHECKCRITERIA);
    chart->criteria = copy;
    if (!copy)
        return true;
    chart->delta_e_type = copy->delta_e_type;
    if (copy->delta_h.limited)
        chart->check_mask |= CALCHECK_MASK_DELTA_H;
    if (copy->delta_c.limited)
        chart->check_mask |= CALCHECK_MASK_DELTA_C;
    return true;
}
