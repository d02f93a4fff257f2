// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_INSTRUMENTMESSAGE_P_H
#define INSTRUMENTS_INSTRUMENTMESSAGE_P_H

#include "foundation/taviwidgets_export.h"

#include <cstdarg>

/// @file
/// From the format text of a plug-in's message to the words that people see: what both instrument drivers do with
/// the arguments of a message callback. Not installed.

/// Whether the printf placeholders of two formats take the same arguments: as many, each with the same conversion
/// letter and length modifier, in the same order. A `*` for a width or a precision counts as one; a width written
/// out, a precision or a flag may differ, and "%%" is no placeholder. Null counts as an empty text.
TAVIWIDGETS_EXPORT bool formatsTakeSameArguments(const char *a, const char *b);

/// Translates @a format (SpectroStringKit::getSpectroQString()) and fills in @a arguments. A translation whose
/// placeholders take other arguments than those of @a format is passed over for @a format itself: it would read what
/// is not there. A format that cannot be formatted is the text as it stands; a null format is an empty text.
///
/// Returns the text in UTF-8, however long, on the C heap: the caller frees it. Null if memory is out; then nothing
/// is left allocated. Callable from any thread. @a arguments is used up as by `vprintf`.
TAVIWIDGETS_EXPORT char *formatInstrumentMessage(const char *format, va_list arguments);

#endif
