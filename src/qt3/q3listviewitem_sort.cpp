// SPDX-License-Identifier: MIT
//
// The order of siblings.
#include "qt3/q3listview_p.h"
#include "qt3/q3listviewitem.h"
#include "qt3/q3listviewtree_p.h"

#include <algorithm>
#include <utility>
#include <vector>

void Q3ListViewRows::order(Q3ListViewItem *parent)
{
    if (parent->children_)
        parent->enforceSortOrder();
}

void Q3ListViewRows::reorder(Q3ListViewItem *parent, const std::vector<Q3ListViewItem *> &order)
{
    Q3ListViewChildren &children = *parent->children_;
    Q3ListViewItem *last = nullptr;
    children.first = nullptr;
    for (Q3ListViewItem *item : order) {
        item->previous_ = last;
        (last ? last->next_ : children.first) = item;
        last = item;
    }
    if (last)
        last->next_ = nullptr;
    children.last = last;
    children.linked = false;
    linkTree(children);
}

void Q3ListViewRows::linkTree(Q3ListViewChildren &children)
{
    if (children.linked)
        return;
    Q3ListViewTree::build(children);
    children.linked = true;
    children.changes = 0;
}

void Q3ListViewRows::misplace(Q3ListViewItem *item)
{
    Q3ListViewChildren &children = *item->parent_->children_;
    if (children.unsorted || (item->flags_ & Q3ListViewItem::Misplaced))
        return;
    if (static_cast<int>(children.misplaced.size()) >= fewOf(children)) {
        settle(children);
        children.unsorted = true;
        return;
    }
    item->setFlag(Q3ListViewItem::Misplaced, true);
    children.misplaced.push_back(item);
}

void Q3ListViewRows::settle(Q3ListViewChildren &children)
{
    for (Q3ListViewItem *item : children.misplaced)
        item->setFlag(Q3ListViewItem::Misplaced, false);
    children.misplaced.clear();
}

bool Q3ListViewRows::place(Q3ListViewItem *parent)
{
    Q3ListViewChildren &children = *parent->children_;
    if (!children.linked)
        return false;
    children.changes = 0;
    struct Stray {
        Q3ListViewItem *item;
        Q3ListViewItem *behind; ///< The nearest before it that is in order; null if there is none.
        int total;
    };
    std::vector<Q3ListViewItem *> items;
    items.swap(children.misplaced); // compare() may be the cause of more
    std::sort(items.begin(), items.end(), Q3ListViewTree::isBefore);
    std::vector<Stray> strays;
    strays.reserve(items.size());
    for (Q3ListViewItem *item : items) {
        Q3ListViewItem *before = item->previous_;
        const bool in_order = !before || !(before->flags_ & Q3ListViewItem::Misplaced);
        strays.push_back({item, in_order ? before : strays.back().behind, item->total_});
    }
    for (const Stray &stray : strays) {
        Q3ListViewTree::remove(children, stray.item);
        leave(stray.item);
    }
    const int column = children.column;
    const bool ascending = children.ascending;
    for (const Stray &stray : strays) {
        const auto stands_before = [&](Q3ListViewItem *other) {
            const int order = other->compare(stray.item, column, ascending);
            if (order != 0)
                return ascending == (order < 0);
            // Those that are equal keep their order.
            return (other->flags_ & Q3ListViewItem::Misplaced) || other == stray.behind
                   || (stray.behind && Q3ListViewTree::isBefore(other, stray.behind));
        };
        join(stray.item, Q3ListViewTree::last(children, stands_before));
        Q3ListViewTree::insert(children, stray.item);
        Q3ListViewTree::setTotal(stray.item, stray.total);
    }
    for (Q3ListViewItem *item : items)
        item->setFlag(Q3ListViewItem::Misplaced, false);
    return true;
}

void Q3ListViewItem::enforceSortOrder() const
{
    const Q3ListView *view = listView();
    const Q3ListViewPrivate *d = view ? Q3ListViewPrivate::of(view) : nullptr;
    if (!children_ || !d || !d->isSorted())
        return;
    const bool in_order =
        !children_->unsorted && children_->column == d->sort_column && children_->ascending == d->sort_ascending;
    if (in_order && children_->misplaced.empty())
        return;
    children_->only_misplaced = in_order;
    const_cast<Q3ListViewItem *>(this)->sortChildItems(d->sort_column, d->sort_ascending);
    children_->only_misplaced = false;
}

void Q3ListViewItem::sortChildItems(int column, bool ascending)
{
    if (!children_)
        return;
    const bool in_order = std::exchange(children_->only_misplaced, false) && column == children_->column
                          && ascending == children_->ascending;
    if (Q3ListView *view = listView())
        Q3ListViewPrivate::of(view)->place = {};
    if (in_order && Q3ListViewRows::place(this))
        return;
    Q3ListViewRows::settle(*children_);
    children_->unsorted = false;
    children_->column = column;
    children_->ascending = ascending;
    std::vector<Q3ListViewItem *> items;
    items.reserve(static_cast<size_t>(children_->count));
    for (Q3ListViewItem *item = children_->first; item; item = item->next_)
        items.push_back(item);
    const auto before = [column, ascending](Q3ListViewItem *a, Q3ListViewItem *b) {
        const int order = a->compare(b, column, ascending);
        return ascending ? order < 0 : order > 0;
    };
    if (std::is_sorted(items.begin(), items.end(), before)) {
        Q3ListViewRows::linkTree(*children_);
        return;
    }
    std::stable_sort(items.begin(), items.end(), before);
    Q3ListViewRows::reorder(this, items);
}

void Q3ListViewItem::sort()
{
    if (children_)
        children_->unsorted = true;
    enforceSortOrder();
    if (Q3ListView *view = listView())
        view->triggerUpdate();
}
