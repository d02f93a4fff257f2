// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_ISO12642_H
#define TAVIAPP_ISO12642_H

#include "taviapp/cgatsreport.h"
#include "taviapp/taviapp_export.h"
#include "tavilib/tavirecords.h"

#include <string>

/// Reads colour patches from CGATS / ISO 12642 files: characterisation data, measurements, charts and targets.
///
/// @code
/// CgatsReport report;
/// TAVICOMBOCOLOUR_CC patches(ISO12642Importer::import("FOGRA39L.ti3", 0, report));
/// if (report.refused)
///     std::fprintf(stderr, "%s\n", report.refusalText().c_str());
/// @endcode
///
/// **Which table.** The patches come from one table: the first that has rows and columns of Lab or XYZ, else the
/// first with device values, else a table without column names in which Lab can be told (three numbers, alone or
/// behind a name or a running number). Other tables are an assumption in the report. A file that has none of these is
/// refused.
///
/// **What a patch is.** One row, in file order. Its name is SAMPLE_NAME, else SAMPLE_LOC, else SAMPLE_ID, else the
/// number of the row, counted from 1 over the rows that were read; always set, in UTF-8. COMBOCOLOUR_FLAG_LAB with L,
/// a and b where the file has Lab, else from XYZ (0..100, taken for D50); such a patch has `percent` 100 and its
/// display colour in `rgb`. Device values as the file gives them, in the order C, M, Y, K, or R, G, B, or of the
/// inks' numbers or letters, whatever the order of the columns; no more than eight. Of CMYK patches the solid inks,
/// the paper and the composed greys are marked by the COMBOCOLOUR_FLAG_... bits.
///
/// **What is no number** ("nan", "1.#IND00", a dash, an empty cell) is never read as one: the patch is kept without
/// colour, or without device values, and the report doubts it. Decimal commas are accepted in a file that uses no
/// decimal point, and refused together with one. L may come out a little below zero where a file has noise; the
/// report doubts that too.
///
/// **Scales.** A paper white (the unprinted CMYK patch, else the lightest) outside of L 60..100, inks beyond 100
/// percent or none above 1 percent, and a header that names another light than D50 are doubts; values are never
/// rescaled.
class TAVIAPP_EXPORT ISO12642Importer
{
public:
    /// The patches of the regular file at @a path as a new list that the caller owns (type code 17), or null if the
    /// file is refused, which is logged in one line with file, line and reason. @a flags is 0 in all callers and not
    /// looked at. May be called from any thread and throws nothing; out of memory is a refusal. O(file size).
    static TAVICOMBOCOLOUR *import(const std::string &path, unsigned long flags);

    /// The same without the log: @a report, whatever it held before, tells what was assumed, what is doubtful, or why
    /// the file was refused.
    static TAVICOMBOCOLOUR *import(const std::string &path, unsigned long flags, CgatsReport &report);
};

#endif
