// SPDX-License-Identifier: MIT
#ifndef LISTVIEWS_TAVICONFIGORDERLISTVIEW_H
#define LISTVIEWS_TAVICONFIGORDERLISTVIEW_H

#include "foundation/taviwidgets_export.h"
#include "listviews/dndlistview.h"
#include "qt3/q3listviewitem.h"

#include <QByteArray>
#include <QList>
#include <QPointer>

class TaviConfigOrderItem;

/// @file
/// The two lists of the order dialog for TaviConfigOrderItem things, and their rows.

/// A row for a thing in one of the two lists.
///
/// **Ownership.** The row belongs to its list; the thing belongs to others and must live as long.
class TAVIWIDGETS_EXPORT TaviConfigOrderListItem : public Q3ListViewItem
{
public:
    /// A row for @a item with its picture, behind the row @a after or, if that is null, at the top. A null @a item
    /// gives an empty row, which no drag takes along.
    TaviConfigOrderListItem(Q3ListView *view, Q3ListViewItem *after, TaviConfigOrderItem *item);
    ~TaviConfigOrderListItem() override;

    /// The thing.
    TaviConfigOrderItem *configOrderItem() const { return config_item; }
    /// The thing of @a row; null for null, for a row of another class and for an empty row.
    static TaviConfigOrderItem *configOrderItemOf(const Q3ListViewItem *row);

    /// In column 0 the name that the thing has now.
    QString text(int column) const override;

private:
    TaviConfigOrderItem *const config_item;
};

/// One of a pair of lists: the source list has a row for all things, the other one for those that show. Things are
/// dragged from list to list, and up and down in the list of what shows.
///
/// What shows is greyed out in the source list, where its row stays, and can't be dragged from there again. A drag
/// to the source list brings it back. What travels are the indices of the things in the source list, as a
/// NumberListDrag, whichever list it comes from.
///
/// @code
/// auto *all = new TaviConfigOrderListView(true, this);
/// auto *showing = new TaviConfigOrderListView(false, this);
/// all->setBuddy(showing);
/// showing->setBuddy(all);
/// @endcode
///
/// Selection is Extended. A keyword that the user types in the search window of the source list leaves what shows
/// greyed out.
///
/// Data is taken with care: a number that is none of a thing is passed over, one counts once, and no thing comes to
/// stand twice in the list of what shows. A drag from elsewhere, another process too, is not taken.
///
/// **Ownership.** Rows belong to the list. Each list may be deleted; the other one then drags nothing any more.
///
/// **Re-entry.** As of DNDListView. Rows may be deleted while they are dragged.
///
/// **Cost.** A drag, and a drop, are linear in the number of rows of both lists. Deleting rows one by one while many
/// are dragged costs the number of those each, unless the first are deleted first.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT TaviConfigOrderListView : public DNDListView
{
    Q_OBJECT

public:
    /// What the type of the drags ends with, "-conford".
    static const QByteArray MIME_SUFFIX;

    /// An empty list without a buddy, "All Items" or "Showing" by its heading.
    explicit TaviConfigOrderListView(bool is_source, QWidget *parent = nullptr, const char *name = nullptr,
                                     Qt::WindowFlags flags = Qt::WindowFlags());
    ~TaviConfigOrderListView() override;

    /// Whether it is the list of all things.
    bool isSource() const { return is_source; }
    /// The other list of the pair; null at first and when it is gone.
    TaviConfigOrderListView *buddy() const { return buddy_; }
    /// Sets the other list of the pair, which is to be told of this one by itself.
    void setBuddy(TaviConfigOrderListView *other) { buddy_ = other; }

    /// Whether a drag comes from the buddy or, in the list of what shows, from the list itself, and brings such
    /// numbers.
    bool canDecode(const QDropEvent *event) override;
    /// The indices of the selected, enabled things in the source list; null if there are none.
    Q3DragObject *encode() override;
    /// Puts what was dropped behind the row @a after. In the list of what shows there are new rows, which are
    /// selected; in the source list the rows that were greyed out come back, selected. Emits selectionChanged(), of
    /// the buddy too if the drag came from there.
    /// @return the number of things taken
    int decode(Q3ListViewItem *after, const QDropEvent *event) override;
    /// With @a remove, deletes the dragged rows of the list of what shows, and emits selectionChanged() if one was
    /// selected. Rows of the source list always stay.
    void clearSources(bool remove) override;

    /// As TaviListView. A row that is taken, or deleted, is dragged no longer.
    void takeItem(Q3ListViewItem *item) override;

    using TaviListView::filterItems;

public Q_SLOTS:
    /// As TaviListView.
    void clear() override;
    /// As TaviListView; but what is in the list of what shows stays greyed out in the source list.
    void filterItems(QString keyword, bool invert) override;

private:
    bool isFromBuddy(const QDropEvent *event) const;
    bool isFromShowingSelf(const QDropEvent *event) const;
    Q3ListViewItem *take(TaviConfigOrderListItem *entry, Q3ListViewItem *after, bool from_buddy);

    const bool is_source;
    QPointer<TaviConfigOrderListView> buddy_;
    QList<Q3ListViewItem *> dragged; // in the drag under way; all are in this list
};

#endif
