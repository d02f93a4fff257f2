// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVITREEITEM_P_H
#define TREEVIEWS_TAVITREEITEM_P_H

#include "treeviews/tavitreeitem.h"

/// @file
/// What the model and the proxy may know of an item beyond its public side.

/// The inside of an item, for the model and the proxy alone.
class TaviTreeItemAccess
{
public:
    /// The item with this number; null if it is not (or no longer) alive. O(1).
    static TaviTreeItem *itemById(int id);

    /// The children without a copy.
    static const QList<TaviTreeItem *> &children(const TaviTreeItem *item) { return item->children_; }
    /// The place of @a child in the list of @a parent, -1 if it is not there.
    static int rowOf(const TaviTreeItem *parent, const TaviTreeItem *child) { return parent->rowOf(child); }
    /// The stored value, the row's default included; null if there is none.
    static const QVariant *storedValue(const TaviTreeItem *item, int column, int role)
    {
        return item->storedValue(column, role);
    }
    /// As insertChild() of each at @a row, @a row + 1, ..., null entries left out. O(children + items).
    static void insertChildren(TaviTreeItem *parent, int row, const QList<TaviTreeItem *> &items)
    {
        parent->insertChildren(row, items);
    }
    /// Takes each of @a items out of the list; the result has null for one that is no child. Null entries are left
    /// out. O(children + items), and no item that is not a child is touched, whether it is still alive or not.
    static QList<TaviTreeItem *> takeChildren(TaviTreeItem *parent, const QList<TaviTreeItem *> &items)
    {
        return parent->takeChildren(items);
    }

    /// Whether the class of the item answers data() or childCount() itself, or one below it does.
    static bool overridesBelow(const TaviTreeItem *item) { return item->overrides_below; }
    /// Whether the class of the item answers data() itself.
    static bool overridesData(const TaviTreeItem *item);
    /// Whether the class of the item answers childCount() itself.
    static bool overridesChildCount(const TaviTreeItem *item);

    /// Texts that were written to items in some tree: how many, and which last. Whoever keeps conclusions drawn from
    /// texts learns here of those that changed without a signal.
    struct TextWrites {
        static constexpr int kept = 64;
        quint64 count = 0;
        int ids[kept] = {};
    };
    /// The texts written so far.
    static const TextWrites &textWrites();
};

#endif
