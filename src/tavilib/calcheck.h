// SPDX-License-Identifier: MIT
#ifndef TAVILIB_CALCHECK_H
#define TAVILIB_CALCHECK_H

#include "tavilib/tavilib_export.h"
#include "tavilib/tavirecords.h"

/// @file
/// The colour check: does what was measured match its reference? Figures, their judgement, and the score.
///
/// @code
/// CALCHECKRESULT *results = calcheckResults(chart, measured);
/// if (results) {
///     std::printf("%s, score %.2f\n", calcheckPasses(results) ? "pass" : "fail", results->score);
///     std::printf("by %s\n", results->criteria ? results->criteria->name : "the chart's own tolerances");
/// }
/// TaviPacketFreeItem(results, TAVIPACKET_CALCHECKRESULT);
/// @endcode
///
/// Nothing here throws. Every function may be called from any thread, as long as nobody changes the records
/// meanwhile.

/// Compares the measured patches with the chart's reference patches, pair by pair in their order, as far as both
/// lists go. The record is the caller's (packet type 88). Null for a null chart, where one of the lists is empty, and
/// if memory is out. O(patches); the cost is that of the colour differences.
///
/// **Kinds of delta.** `delta_e` by the chart's formula; `delta_h`, TAVICMS_ColourDiff_dH(), if the chart's mask has
/// CALCHECK_MASK_DELTA_H; `delta_c`, TAVICMS_ColourDiff_dC(), if it has CALCHECK_MASK_DELTA_C: signed, and compared
/// as it is, so that a gain of chroma never fails by itself. The others are null.
///
/// **Figures.** `paper`, `cyan`, `magenta`, `yellow`, `black`: the delta of the patches whose reference has that
/// COMBOCOLOUR_FLAG_...; of several the largest. `gray`: the average over the composed greys, `gray_max` their
/// largest; in `delta_c` greys count with TAVICMS_ColourDiff_dCh(), as ISO 12647-7 has them. `average`, `max`,
/// `deviation`: over all patches; the deviation is that of the patches themselves (the root of the mean square
/// distance from the average, divided by their number).
///
/// **Limits** come from the chart's criteria set, where it has one; else from the tolerances that its reference
/// patches bring; else from the set for the chart's formula (calcheckCriteriaFor()). By a set a figure passes if it
/// is not above its limit (`gray`: if `gray_max` is not, either). By tolerances of patches a mark's figure passes if
/// each patch so marked is within its own tolerance, and `max` if every patch is. A figure without a limit passes. A
/// set that is for another formula than the chart's is not applied to dE. With no limits at all nothing is judged:
/// CALCHECKRESULT_NOT_JUDGED, and no bit of `passed` is set in `delta_e`.
///
/// **What is no colour**, a patch without COMBOCOLOUR_FLAG_LAB or with a value that is no finite number, is
/// infinitely far from its partner.
///
/// **Score**, 0 to 100, 100 being a perfect match. Of all figures that have a limit (with tolerances of patches: of
/// all patches) the one is taken that uses up its limit most, r = figure / limit, and the score is 100 * 2^-r: 50 at
/// the limit, 25 at twice the limit, and on towards 0. A negative figure uses up nothing, a figure above a limit of 0
/// everything. So a check whose figures all pass has 50 or more, one with a figure that fails less, but for the last
/// bit. 0 where nothing is judged.
TAVILIB_EXPORT CALCHECKRESULT *calcheckResults(const CALCHECKCHART *chart, const TAVICOMBOCOLOUR *measured);

/// Whether the whole check passes: it was judged, the counts of patches agree, every patch has a colour, and each
/// delta that is part of the chart passes. Where CALCHECKRESULT_SET_IN_PART is set that says so of the limits for
/// which the chart has patches. False for null.
TAVILIB_EXPORT bool calcheckPasses(const CALCHECKRESULT *results);

/// Whether every figure of one delta has its `passed` bit. False for null.
TAVILIB_EXPORT bool calcheckDeltaPasses(const CALCHECKSTATISTICS *statistics);

/// @name Tolerances of patches
/// A reference patch may bring a tolerance for each delta, 0 to 65.534 in steps of 0.001. A row whose delta is above
/// it fails; one that is equal passes.
/// @{

/// The tolerance for dE; infinity, which nothing is above, for a patch that brings none and for null.
TAVILIB_EXPORT double DECODE_DELTA_E_TOLERANCE(const TAVICOMBOCOLOUR *reference);
/// DECODE_DELTA_E_TOLERANCE() for dH.
TAVILIB_EXPORT double DECODE_DELTA_H_TOLERANCE(const TAVICOMBOCOLOUR *reference);
/// DECODE_DELTA_E_TOLERANCE() for dC.
TAVILIB_EXPORT double DECODE_DELTA_C_TOLERANCE(const TAVICOMBOCOLOUR *reference);

/// Gives the patch a tolerance for dE of its own, rounded to a thousandth, the largest being 65.534. A negative or
/// infinite value and one that is no number take it away.
TAVILIB_EXPORT void ENCODE_DELTA_E_TOLERANCE(TAVICOMBOCOLOUR *reference, double tolerance);
/// ENCODE_DELTA_E_TOLERANCE() for dH.
TAVILIB_EXPORT void ENCODE_DELTA_H_TOLERANCE(TAVICOMBOCOLOUR *reference, double tolerance);
/// ENCODE_DELTA_E_TOLERANCE() for dC.
TAVILIB_EXPORT void ENCODE_DELTA_C_TOLERANCE(TAVICOMBOCOLOUR *reference, double tolerance);

/// Whether the patch brings a tolerance of its own: one that calcheckFillTolerances() has not put there.
TAVILIB_EXPORT bool calcheckHasOwnTolerances(const TAVICOMBOCOLOUR *reference);

/// Gives every reference patch that brings none the tolerances by which a criteria set judges it: the limit of what
/// it is marked as and that of `max`, whichever is less, of dE only where the set is for the chart's formula. Rows of
/// a list are judged by them; calcheckResults() still goes by the set, because a set limits averages, too. Called
/// again it replaces what it put there before; null takes that away. O(patches).
TAVILIB_EXPORT void calcheckFillTolerances(CALCHECKCHART *chart, const CALCHECKCRITERIA *criteria);

/// @}

/// Operations on reference charts (packet type 75).
class TAVILIB_EXPORT CALCHECKCHART_CC
{
public:
    /// An empty chart, the caller's: no name, no patches, judged by CIEDE2000, dH and dC; so by the set
    /// `iso12647-7-2016`, as long as patches bring no tolerances. Null if memory is out.
    static CALCHECKCHART *newChart();

    /// Has @a chart judged by a copy of @a criteria, by its formula, and by each kind of delta that it limits; null
    /// takes a set away and leaves the rest as it is. False, and nothing changed, if memory is out or @a chart is
    /// null.
    static bool setCriteria(CALCHECKCHART *chart, const CALCHECKCRITERIA *criteria);
};

#endif
