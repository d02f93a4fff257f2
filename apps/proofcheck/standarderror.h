// SPDX-License-Identifier: MIT
#ifndef PROOFCHECK_STANDARDERROR_H
#define PROOFCHECK_STANDARDERROR_H

#include <QString>

/// Writes "proofcheck: text" to standard error as one line: line breaks and control characters in the text (a path
/// may hold some) become blanks.
void sayLine(const QString &text);

#endif
