// SPDX-License-Identifier: MIT
//
// Counting rows, and acting on the selected ones.
#include "listviews/listviewwalk_p.h"
#include "listviews/tavilistview.h"

namespace {

/// Counts the items of a walk that @a counts, and gives the first that is also selected.
template <typename Next, typename Counts>
int countItems(Q3ListViewItem *item, Next next, Counts counts, Q3ListViewItem **first)
{
    int count = 0;
    Q3ListViewItem *first_selected = nullptr;
    for (; item; item = next(item)) {
        if (!counts(item))
            continue;
        ++count;
        if (!first_selected && item->isSelected())
            first_selected = item;
    }
    if (first)
        *first = first_selected;
    return count;
}

Q3ListViewItem *below(const Q3ListViewItem *item)
{
    return item->itemBelow();
}

bool selected(const Q3ListViewItem *item)
{
    return item->isSelected();
}

} // namespace

Q3ListViewItem *TaviListView::firstSelectedChild() const
{
    Q3ListViewItem *item = firstChild();
    while (item && !item->isSelected())
        item = item->itemBelow();
    return item;
}

int TaviListView::selectedChildCount(Q3ListViewItem **first) const
{
    return countItems(firstChild(), below, selected, first);
}

int TaviListView::visibleChildCount(Q3ListViewItem **first) const
{
    return countItems(
        firstChild(), below, [](const Q3ListViewItem *item) { return item->isVisible(); }, first);
}

int TaviListView::selectedItemChildCount(const Q3ListViewItem *item, Q3ListViewItem **first) const
{
    return countItems(
        item ? item->firstChild() : nullptr, [](const Q3ListViewItem *child) { return child->nextSibling(); },
        selected, first);
}

Q3ListViewItem *TaviListView::lastVisibleItem() const
{
    // The last item of the tree need not be in sight: a branch above it may be closed or hidden. What decides is the
    // highest such branch, which has nothing behind it.
    Q3ListViewItem *last = lastItem();
    Q3ListViewItem *decisive = last;
    for (Q3ListViewItem *item = last; item; item = item->parent()) {
        if (!item->isVisible() || (item != last && !item->isOpen()))
            decisive = item;
    }
    return !decisive || decisive->isVisible() ? decisive : decisive->itemAbove();
}

void TaviListView::setFirstSelectedAsCurrent(bool ensure_visible)
{
    Q3ListViewItem *const item = firstSelectedChild();
    if (!item)
        return;
    const QPointer<TaviListView> self(this);
    const Q3ListViewItemIterator place(item);
    setCurrentItem(item);
    if (self && ensure_visible && place.current() == item)
        ensureItemVisible(item);
}

void TaviListView::setSelectedOpen(bool open)
{
    forEachBranch(this, [this, open](Q3ListViewItem *item) {
        if (item->isSelected())
            setOpen(item, open);
    });
}
