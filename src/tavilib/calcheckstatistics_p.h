// SPDX-License-Identifier: MIT
#ifndef TAVILIB_CALCHECKSTATISTICS_P_H
#define TAVILIB_CALCHECKSTATISTICS_P_H

#include "tavilib/calcheckfigures_p.h"

/// Gathers the figures of one kind of delta in one walk over the patches, without keeping the values. Not installed.
class CalcheckStatistics
{
public:
    /// Takes the delta of one patch. @a flags are those of the reference patch; @a grey is what a composed grey
    /// counts with. Neither is ever "no number".
    void add(double value, uint32_t flags, double grey)
    {
        if (count_ == 0) {
            first_ = max_ = value;
        }
        ++count_;
        // Measured from the first value, so that equal values have no deviation at all.
        const double distance = value - first_;
        sum_ += distance;
        squares_ += distance * distance;
        if (value > max_)
            max_ = value;
        if (flags & marks)
            addMarked(value, flags, grey);
    }

    /// Takes into account that a patch brings a tolerance of its own, which its delta may be above.
    void judge(double value, uint32_t flags, double tolerance);

    /// Writes the figures, all of them passing.
    void writeFigures(CALCHECKSTATISTICS &statistics) const;
    /// Judges the figures by what judge() has seen, or by @a limits.
    void writePatchJudgement(CALCHECKSTATISTICS &statistics);
    void writeJudgement(CALCHECKSTATISTICS &statistics, const CALCHECKLIMITS &limits);

    /// How much of its limit that value uses up which uses up most; 0 where nothing was judged.
    double worst() const { return worst_; }

    /// The flags of patches that stand for something.
    static constexpr uint32_t marks = COMBOCOLOUR_FLAG_PAPER | COMBOCOLOUR_FLAG_CYAN | COMBOCOLOUR_FLAG_MAGENTA
                                      | COMBOCOLOUR_FLAG_YELLOW | COMBOCOLOUR_FLAG_BLACK | COMBOCOLOUR_FLAG_GREY;

private:
    void addMarked(double value, uint32_t flags, double grey);
    void use(double value, double limit);

    size_t count_ = 0;
    double first_ = 0.0;
    double sum_ = 0.0;
    double squares_ = 0.0;
    double max_ = 0.0;
    uint32_t present_ = 0;
    double solids_[calcheck_solids] = {};
    size_t grey_count_ = 0;
    double grey_sum_ = 0.0;
    double grey_max_ = 0.0;
    uint32_t exceeded_ = 0; ///< Bits of figures that a patch's own tolerance makes fail.
    uint32_t limited_ = 0;  ///< Bits of figures that a patch's own tolerance is about.
    double worst_ = 0.0;
};

#endif
