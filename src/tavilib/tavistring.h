// SPDX-License-Identifier: MIT
#ifndef TAVILIB_TAVISTRING_H
#define TAVILIB_TAVISTRING_H

#include "tavilib/tavilib_export.h"

/// @file
/// Strings on the C heap. Every function may be called from any thread.

/// A heap copy of @a text, to be released with `free` or with the record that holds it. Null if memory is out or
/// @a text is null.
TAVILIB_EXPORT char *AllocateAndCopyString(char *text);

/// AllocateAndCopyString() for a constant text.
TAVILIB_EXPORT char *AllocateAndCopyStringConst(const char *text);

/// Re-entrant token splitter. The first call gets the text, which is cut up in place; later calls null. @a save
/// keeps the place between calls. Returns the next token, or null when there is none. A null text with a null
/// @a *save gives null.
TAVILIB_EXPORT char *Tavi_strtok(char *text, const char *delimiters, char **save);

#endif
