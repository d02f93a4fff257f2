// SPDX-License-Identifier: MIT
#include "tavilib/calcheckstatistics_p.h"

#include <algorithm>
#include <cmath>

void CalcheckStatistics::addMarked(double value, uint32_t flags, double grey)
{
    for (size_t i = 0; i < calcheck_solids; ++i) {
        const CalcheckFigure &figure = calcheck_figures[i];
        if (!(flags & figure.mark))
            continue;
        solids_[i] = present_ & figure.bit ? std::max(solids_[i], value) : value;
        present_ |= figure.bit;
    }
    if (flags & COMBOCOLOUR_FLAG_GREY) {
        grey_max_ = grey_count_ > 0 ? std::max(grey_max_, grey) : grey;
        grey_sum_ += grey;
        ++grey_count_;
        present_ |= CALCHECK_GRAY | CALCHECK_GRAY_MAX;
    }
}

void CalcheckStatistics::use(double value, double limit)
{
    if (value > 0.0)
        worst_ = std::max(worst_, limit > 0.0 ? value / limit : HUGE_VAL);
}

void CalcheckStatistics::judge(double value, uint32_t flags, double tolerance)
{
    uint32_t figures = CALCHECK_MAX;
    for (const CalcheckFigure &figure : calcheck_figures) {
        if (flags & figure.mark)
            figures |= figure.bit;
    }
    limited_ |= figures;
    if (value > tolerance)
        exceeded_ |= figures;
    use(value, tolerance);
}

void CalcheckStatistics::writeFigures(CALCHECKSTATISTICS &statistics) const
{
    for (size_t i = 0; i < calcheck_solids; ++i)
        statistics.*calcheck_figures[i].value = solids_[i];
    const auto count = static_cast<double>(count_);
    const double mean = sum_ / count;
    statistics.max = max_;
    // With an infinite value among them the sums are infinite or no number.
    statistics.average = std::isfinite(sum_) ? first_ + mean : HUGE_VAL;
    statistics.deviation =
        std::isfinite(squares_) ? std::sqrt(std::max(0.0, squares_ / count - mean * mean)) : HUGE_VAL;
    if (grey_count_ > 0)
        statistics.gray = grey_sum_ / static_cast<double>(grey_count_);
    statistics.gray_max = grey_max_;
    statistics.present = present_ | CALCHECK_AVERAGE | CALCHECK_MAX | CALCHECK_DEVIATION;
    statistics.passed = calcheck_all_passed;
}

void CalcheckStatistics::writePatchJudgement(CALCHECKSTATISTICS &statistics)
{
    statistics.limited = limited_;
    statistics.passed &= ~exceeded_;
}

void CalcheckStatistics::writeJudgement(CALCHECKSTATISTICS &statistics, const CALCHECKLIMITS &limits)
{
    for (const CalcheckFigure &figure : calcheck_figures) {
        if (!(limits.limited & statistics.present & figure.bit))
            continue;
        const double value = statistics.*figure.value;
        const double limit = limits.*figure.limit;
        statistics.limited |= figure.bit;
        if (value > limit)
            statistics.passed &=
                ~(figure.bit == CALCHECK_GRAY_MAX ? static_cast<uint32_t>(CALCHECK_GRAY) : figure.bit);
        use(value, limit);
    }
}
