// SPDX-License-Identifier: MIT
#ifndef TAVILIB_TAVILOG_H
#define TAVILIB_TAVILOG_H

#include "tavilib/tavilib_export.h"

#include <cstddef>

/// @file
/// The log of the base libraries, the widgets and the plug-ins.
///
/// Every call writes one whole line, from any thread, and never throws, shows a dialog or stops the caller. Line
/// breaks and control characters inside a text are written as escapes ("\n", "\x1b"), so that one call stays one
/// line whatever a plug-in says.

/// An error from the library's own logic.
constexpr int TAVILOG_ERROR = 0;
/// A failed launch of a worker thread, or a text handed on from a plug-in.
constexpr int TAVILOG_PLUGIN = 2;

/// Form 1: a printf format with its arguments.
constexpr int TAVILOG_FORM_TEXT = 1;
/// Form 2: an empty format and one int, the number of bytes that could not be allocated.
constexpr int TAVILOG_FORM_ALLOCATION = 2;

/// What a log line is made of, as a sink gets it. The pointers are valid during the call only.
struct TaviLogLine {
    int kind;             ///< TAVILOG_ERROR or TAVILOG_PLUGIN.
    const char *unit;     ///< Source unit without path; never null.
    const char *function; ///< Function or class; never null.
    const char *text;     ///< The formatted text in UTF-8, line breaks and all; never null.
};

/// Takes a log line in place of standard error. Called on the thread that logs, one call at a time.
using TaviLogSink = void (*)(void *context, const TaviLogLine &line);

/// Installs @a sink; null brings back standard error. Returns when no call of the former sink is under way any
/// more, so its context may then be destroyed. A sink may log, which goes to standard error, but must neither call
/// this nor throw.
TAVILIB_EXPORT void TaviLogSetSink(TaviLogSink sink, void *context);

/// Writes one log line, "unit: function: text" on standard error. @a unit and @a function may be null or empty.
/// @a kind is one of the kinds above, @a form one of the forms; @a target is 1 in all callers and not looked at.
/// Cost: O(length of the text).
TAVILIB_EXPORT void TaviLogMessage(const char *unit, const char *function, int kind, int form, int target,
                                   const char *format, ...) __attribute__((format(printf, 6, 7)));

/// Logs that @a bytes could not be allocated: TaviLogMessage() with kind 0 and form 2, which compilers warn about
/// where its empty format is written out.
TAVILIB_EXPORT void TaviLogAllocationFailure(const char *unit, const char *function, size_t bytes);

/// Logs one failure line (kind 0) without format handling: @a text is written as it stands. Null is empty.
TAVILIB_EXPORT void LogError(const char *unit, const char *function, const char *text);

#endif
