// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_SPECTROSTRINGKIT_H
#define INSTRUMENTS_SPECTROSTRINGKIT_H

#include "foundation/taviwidgets_export.h"

#include <QString>

/// Makes the texts of instrument plug-ins translatable.
///
/// A plug-in knows no translation: it sends fixed English texts, printf formats, through its message callback, and
/// the instrument drivers translate them before they fill in the arguments. This class names those texts, so that a
/// catalogue extracted from the sources holds them, and looks them up. A plug-in that has something to say looks for
/// a text in #pluggedstrings first.
///
/// For translators: each text is asked for in the context "SpectroStringKit"; a translation must keep number, kind
/// and order of the printf placeholders. One that does not is not used.
class TAVIWIDGETS_EXPORT SpectroStringKit
{
public:
    /// How many texts there are.
    static constexpr int text_count = 402;

    /// The texts: in column 0 the key, which is the text in lower case, in column 1 the text with its proper
    /// capitals, as `QObject::tr` translated it when the library was loaded. The rows ascend by their keys; a row of
    /// two null strings closes them. Read only; nothing in the library reads it.
    static QString pluggedstrings[text_count + 1][2];

    /// The translation of @a text (UTF-8) by the application's installed translators at the time of the call; @a text
    /// itself where they have none, whether it is in the table or not. Placeholders come back unfilled. A null text
    /// gives a null string. Callable from any thread.
    static QString getSpectroQString(const char *text);
};

#endif
