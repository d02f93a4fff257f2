// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_COLUMNMENU_P_H
#define TREEVIEWS_COLUMNMENU_P_H

class QAction;
class QIcon;
class QMenu;
class QObject;
class QString;

/// @file
/// The entries of a header's menu.

/// The first entry, with data -1, and a line below it. @a slot is a member as SLOT() makes it, so that a subclass
/// with such a slot of its own is asked.
void addConfigureEntry(QMenu *menu, const QString &text, QObject *receiver, const char *slot);

/// The entry of a column, to tick. @a number becomes its data.
QAction *addColumnEntry(QMenu *menu, const QIcon &icon, const QString &title, int number, bool ticked);

#endif
