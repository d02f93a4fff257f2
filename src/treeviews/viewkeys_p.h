// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_VIEWKEYS_P_H
#define TREEVIEWS_VIEWKEYS_P_H

#include <QtGlobal>

class QKeyEvent;
class QString;

/// @file
/// Which keys mean what in the views that are searched as one types.

/// Milliseconds after which a search starts anew.
constexpr qint64 search_pause = 400;

/// Whether a key's text begins with something to search for.
bool isPrintable(const QString &text);
/// Whether every item view knows this key, whatever text it brings along.
bool isViewKey(int key);
/// Whether this key opens the search window.
bool opensSearchWindow(const QKeyEvent *event);
/// Whether this key closes it.
bool closesSearchWindow(const QKeyEvent *event);

#endif
