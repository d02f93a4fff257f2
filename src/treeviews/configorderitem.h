// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_CONFIGORDERITEM_H
#define TREEVIEWS_CONFIGORDERITEM_H

#include "foundation/taviwidgets_export.h"
#include "treeviews/tavitreeitem.h"

/// An entry of the order dialog: stands for one thing, such as a column, that can be shown or hidden and put in
/// order.
///
/// Each thing has an entry in the list of all things and, while it shows, another one in the list of those that show.
/// An entry can be picked where it can go over to the other list: in the list of those that show while it is visible,
/// in the list of all while it isn't. So a thing that shows is greyed out in the list of all.
///
/// Text and icon are the values of column 0 at `Qt::DisplayRole` and `Qt::DecorationRole`. A subclass tells clone();
/// see ColumnOrderItem.
///
/// **Ownership.** As with every TaviTreeItem; copies have no parent.
class TAVIWIDGETS_EXPORT ConfigOrderItem : public TaviTreeItem
{
    Q_OBJECT

public:
    /// The free slots of column 0 in which an entry keeps itself.
    enum UserSlot {
        VisibleSlot = 1,    ///< isItemVisible(), a bool
        InShowListSlot = 2, ///< isItemInShowList(), a bool
        ItemIdSlot = 3,     ///< itemID(), an int; not there at first
    };

    /// A visible entry of the list of all things: it can be dragged and neither picked nor dropped on. @a parent is
    /// remembered as TaviTreeItem does.
    explicit ConfigOrderItem(TaviTreeItem *parent = nullptr);
    /// An entry with the text, icon, list, visibility and item id of @a other, and without a parent.
    ConfigOrderItem(const ConfigOrderItem &other);
    ~ConfigOrderItem() override;

    /// Takes over the text, icon, list, visibility and item id of @a other.
    virtual ConfigOrderItem &operator=(const ConfigOrderItem &other);
    /// A copy as the copy constructor of the subclass makes it. The caller owns it.
    virtual ConfigOrderItem *clone() const = 0;
    /// Whether the thing shows.
    virtual bool isItemVisible() const;
    /// Sets isItemVisible(), and by that whether the entry can be picked.
    virtual void setItemVisible(bool visible);

    /// Sets the caller's own number of the thing, such as a logical section. It has nothing to do with id().
    void setItemID(int item_id);
    /// The caller's own number; 0 where none was set.
    int itemID() const;
    /// Whether this entry belongs to the list of those that show, not to the list of all things.
    bool isItemInShowList() const;
    /// Sets isItemInShowList(), and by that whether the entry can be picked. It can be dragged from now on.
    void setItemInShowList(bool in_show_list);

private:
    void deriveFlags();
};

#endif
