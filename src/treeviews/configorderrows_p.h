// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_CONFIGORDERROWS_P_H
#define TREEVIEWS_CONFIGORDERROWS_P_H

#include "foundation/taviwidgets_export.h"

#include <QVector>

/// @file
/// Where selected rows of a list go; without a list.

/// The new places of the selected @a rows, ascending, when each moves up by one; a row that is at the top, or below a
/// selected one that stays, stays.
TAVIWIDGETS_EXPORT QVector<int> rowsMovedUp(const QVector<int> &rows);

/// The same downwards, in a list of @a count rows.
TAVIWIDGETS_EXPORT QVector<int> rowsMovedDown(const QVector<int> &rows, int count);

/// Where rows that were dropped before @a row are to be put in once they have been taken out. From the top, each of
/// @a rows that lies above the target as it stands by then makes it one less.
TAVIWIDGETS_EXPORT int rowAfterTaking(const QVector<int> &rows, int row);

#endif
