// SPDX-License-Identifier: MIT
#ifndef LISTVIEWS_LISTVIEWWALK_P_H
#define LISTVIEWS_LISTVIEWWALK_P_H

#include "qt3/q3listview.h"

#include <QPointer>

/// @file
/// Walks over items while slots may delete them.

/// Whether @a item is in @a view. The pointer may be one of an item that is gone; it is only compared. O(items).
inline bool isInView(Q3ListView *view, const Q3ListViewItem *item)
{
    Q3ListViewItemIterator place(view);
    while (place.current() && place.current() != item)
        ++place;
    return item && place.current();
}

/// Calls @a act for all top-level items that can be opened: those that have children, or show themselves as such. It
/// may lead to slots that delete any item, and the view.
template <typename Act>
void forEachBranch(Q3ListView *list, Act act)
{
    const QPointer<Q3ListView> view(list);
    Q3ListViewItem *item = list->firstChild();
    while (item) {
        if (item->childCount() > 0 || item->isExpandable()) {
            const Q3ListViewItemIterator place(item);
            act(item);
            if (!view)
                return;
            if (place.current() != item) {
                // It has gone, and the place is that of another one, perhaps below the top.
                item = place.current();
                while (item && item->parent())
                    item = item->parent();
                continue;
            }
        }
        item = item->nextSibling();
    }
}

/// Selects an item and no other, and scrolls to it. A slot of each step may delete the item, or the view.
inline void selectAlone(Q3ListView *list, Q3ListViewItem *item)
{
    const QPointer<Q3ListView> view(list);
    const Q3ListViewItemIterator place(item);
    const auto still_there = [&] {
        return view && place.current() == item;
    };
    view->clearSelection();
    if (still_there())
        view->setSelected(item, true);
    if (still_there())
        view->ensureItemVisible(item);
}

#endif
