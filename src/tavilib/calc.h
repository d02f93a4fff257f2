// SPDX-License-Identifier: MIT
#ifndef TAVILIB_CALC_H
#define TAVILIB_CALC_H

#include "tavilib/tavilib_export.h"
#include "tavilib/tavirecords.h"

/// @file
/// Small calculations on records that plug-ins, readers and widgets share. Pure functions, callable from any thread.

/// The separation whose density filter reads an ink of kind @a band_type (TAVIBANDTYPE_...): process inks and their
/// light forms by their own channel, orange through magenta and green through cyan, as the linearisation read-out
/// does. An ink that is none of these gives SPECTROSEP_NONE.
TAVILIB_EXPORT SPECTROSEPTYPE TaviBandTypeToSpectroSepType(uint32_t band_type);

/// Fills @a values with the tints of a linearisation chart for a hand-held instrument, which the user moves from
/// patch to patch: @a count tints in percent, evenly spaced from 0 (paper) to 100 (solid). A single tint is the
/// solid. Returns the number written; 0 for a null table, a table without separations, null values or no count.
TAVILIB_EXPORT int GenerateHandheldLinearisationChart(const DENSITYLUT *lut, double *values, unsigned long count);

/// Answers how a colour chart must be made for a hand-held instrument: in how many patches to a line. That is
/// @a parameter where the chart has so many patches, else the number of its patches; 0 (no wish) asks for the
/// squarest chart, the smallest number whose square holds all patches. An empty chart gives 0. O(patches).
TAVILIB_EXPORT int GenerateHandheldComboColourChart(const TAVICOMBOCOLOUR *chart, unsigned long parameter);

#endif
