// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_CGATSREPORT_H
#define TAVIAPP_CGATSREPORT_H

#include "taviapp/taviapp_export.h"

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

/// A remark on a line of a file.
struct CgatsNote {
    size_t line; ///< Counted from 1; 0 for the file as a whole.
    std::string text;
};

/// What reading a CGATS file came to: why it was refused, or what had to be assumed to read it and what looks wrong
/// in it. A value; use each object on one thread.
struct TAVIAPP_EXPORT CgatsReport {
    /// As many notes of each kind are kept; the others are counted in `notes_left_out`.
    static constexpr size_t maximum_notes = 1000;

    std::string path;           ///< The file as it was named; empty for text that came from no file.
    bool refused = false;       ///< Nothing was read, for #refusal_reason.
    size_t refusal_line = 0;    ///< Counted from 1; 0 where no line is at fault.
    std::string refusal_reason; ///< One line, without file name and line.

    /// Where the file departs from the format and was read in a particular way.
    std::vector<CgatsNote> assumptions;
    /// Where what was read may be wrong: rows left out, values that are no numbers, an unlikely scale.
    std::vector<CgatsNote> doubts;
    size_t notes_left_out = 0;

    size_t tables = 0;              ///< Tables in the file, of which one gives the patches.
    size_t rows = 0;                ///< Rows of that table that became patches.
    size_t rows_dropped = 0;        ///< Rows of that table left out because they are not whole; each is a doubt.
    size_t rows_without_colour = 0; ///< Patches without a usable Lab or XYZ value.

    /// "file:line: reason" as one line; without the line where none is at fault. Empty if the file was not refused.
    std::string refusalText() const;

    /// Records the refusal. The first one holds.
    void refuse(size_t line, std::string reason);
    /// Notes that the file departs from the format at @a line, and how that was read.
    void assume(size_t line, std::string text) { note(assumptions, line, std::move(text)); }
    /// Notes that what stands at @a line may be wrong.
    void doubt(size_t line, std::string text) { note(doubts, line, std::move(text)); }

private:
    void note(std::vector<CgatsNote> &notes, size_t line, std::string &&text);
};

#endif
