// SPDX-License-Identifier: MIT
#ifndef FOUNDATION_SPLITTERWIDTHS_P_H
#define FOUNDATION_SPLITTERWIDTHS_P_H

#include "foundation/taviwidgets_export.h"

#include <QList>
#include <QString>
#include <QVector>

/// @file
/// The widths of a splitter's panes as one text, without a splitter.

/// Each width as a decimal number and a blank behind it: 120 and 300 give "120 300 ". Empty, not null, for no widths.
TAVIWIDGETS_EXPORT QString splitterWidthsText(const QList<int> &widths);

/// The widths that @a text holds, for panes of which @a hidden tells whether each is hidden now.
///
/// A hidden pane's 0 becomes 50. A part that is no number is 0. Widths of surplus panes are kept. A text with too few
/// widths was stored for other panes: then all get the same width, the mean of the text's, rounded down, or 50 where
/// their sum is not positive.
TAVIWIDGETS_EXPORT QList<int> splitterWidthsOfText(const QString &text, const QVector<bool> &hidden);

#endif
