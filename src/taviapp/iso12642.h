// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_ISO12642_H
#define TAVIAPP_ISO12642_H

#include "taviapp/cgatsreport.h"
#include "taviapp/taviapp_export.h"
#include "taviapp/tavicombocolour_cc.h"
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
/// the paper and the composed greys are marked by the COMBOCOLOUR_FLAG_... bits. Columns that only ExportISO12642
/// writes give marks, tolerances and device values of their own.
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

/// What kind of file swatches are read from.
enum SWATCHTYPE {
    SWATCHTYPE_CGATS = 1, ///< CGATS / ISO 12642, as ISO12642Importer reads it.
};

/// Reads lists of colours in which each patch is told by its place: a reference, a measurement, or both, one behind
/// the other in one file. Written by ExportISO12642 or by other programs.
///
/// As ISO12642Importer, but a file is refused where the list would have a gap: without columns of Lab or XYZ, where a
/// patch has no usable colour, and where a row is not whole. One patch left out would pair all that follow with wrong
/// ones.
class TAVIAPP_EXPORT SwatchImporter
{
public:
    /// The patches of the regular file at @a path as a new list that the caller owns (type code 17), or null if the
    /// file is refused, which is logged in one line with file, line and reason; so is any @a type but
    /// SWATCHTYPE_CGATS. @a flags is 0 in all callers and not looked at. May be called from any thread and throws
    /// nothing; out of memory is a refusal. O(file size).
    static TAVICOMBOCOLOUR *import(const std::string &path, SWATCHTYPE type, unsigned long flags);

    /// The same without the log: @a report, whatever it held before, tells what was assumed, what is doubtful, or why
    /// the file was refused.
    static TAVICOMBOCOLOUR *import(const std::string &path, SWATCHTYPE type, unsigned long flags,
                                   CgatsReport &report);
};

/// Writes colour patches as CGATS / ISO 12642 files that other programs read, and that come back as they were.
///
/// @code
/// std::string error;
/// if (!ExportISO12642::exportColours(patches, "proof.txt", nullptr, ExportISO12642::lab, error))
///     std::fprintf(stderr, "%s\n", error.c_str());
/// @endcode
///
/// **What comes back.** SwatchImporter gives the same patches in the same order: names, Lab and device values to the
/// last bit, the marks of paper, solids and greys, and the tolerances that patches bring (not those that
/// calcheckFillTolerances() has put there). Numbers are in the shortest form that reads back to the same value.
///
/// **Names** are written in UTF-8. A patch without one comes back named by its number, counted from 1. Of a name,
/// control characters become blanks, bytes that are no UTF-8 are taken for Windows-1252, and what is beyond the
/// 16,384 bytes of a cell is cut off at a character.
///
/// **Columns.** SAMPLE_ID, SAMPLE_NAME, the device values where all patches have the same kind of them, Lab. What the
/// format has no columns for stands in columns of our own (TAVI_...), and only where there is any.
class TAVIAPP_EXPORT ExportISO12642
{
public:
    /// The colour space signature 'Lab ', the one that can be written: D50, 2 degree observer.
    static constexpr uint32_t lab = 0x4C616220;

    /// Writes @a colours to @a path, whole or not at all: what stood there before stays until the new file is
    /// complete. @a instrument is what they were measured with, or null. False, with one line in the log, if the file
    /// cannot be written, and where it would not come back as it is: without patches, in another @a colour_space, and
    /// if a patch has no Lab value, or a value that is no finite number. May be called from any thread and throws
    /// nothing. O(patches).
    static bool exportColours(const TAVICOMBOCOLOUR_CC &colours, const std::string &path,
                              const SPECTROPHOTOMETERINFO *instrument, uint32_t colour_space);

    /// The same without the log: @a error is "path: reason" where it fails, else empty. Throws std::bad_alloc if
    /// memory is out, and nothing else.
    static bool exportColours(const TAVICOMBOCOLOUR_CC &colours, const std::string &path,
                              const SPECTROPHOTOMETERINFO *instrument, uint32_t colour_space, std::string &error);
};

#endif
