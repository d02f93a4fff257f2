// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TREEROWS_P_H
#define TREEVIEWS_TREEROWS_P_H

#include "foundation/taviwidgets_export.h"

#include <QItemSelection>
#include <QModelIndexList>

/// @file
/// Rows of a tree in the order in which they are seen.

/// Sorts rows of one model depth first: by the rows of their ancestors, then by their own, parents before their
/// children. Entries that occur twice are left once, and invalid ones are dropped. O(n log n) for n rows, whatever
/// the size of the tree.
TAVIWIDGETS_EXPORT void sortInTreeOrder(QModelIndexList &rows);

/// The rows as a selection. Neighbours under one parent make one range: what walks over a selection takes time for
/// each of its ranges.
TAVIWIDGETS_EXPORT QItemSelection selectionOfRows(const QModelIndexList &rows);

#endif
