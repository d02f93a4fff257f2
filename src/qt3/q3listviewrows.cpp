// SPDX-License-Identifier: MIT
#include "qt3/q3listview_p.h"
#include "qt3/q3listviewtree_p.h"

#include <algorithm>

Q3ListViewItemGuard *Q3ListViewItemGuard::first_ = nullptr;

Q3ListViewItemGuard::Q3ListViewItemGuard(Q3ListViewItem *item) : item_(item), next_(first_)
{
    if (next_)
        next_->previous_ = this;
    first_ = this;
}

Q3ListViewItemGuard::~Q3ListViewItemGuard()
{
    (previous_ ? previous_->next_ : first_) = next_;
    if (next_)
        next_->previous_ = previous_;
}

void Q3ListViewItemGuard::deleted(const Q3ListViewItem *item)
{
    for (Q3ListViewItemGuard *guard = first_; guard; guard = guard->next_) {
        if (guard->item_ == item)
            guard->item_ = nullptr;
    }
}

/// Whether a change to a search tree pays; after many without a question, making it anew when asked is cheaper.
bool Q3ListViewRows::changePays(Q3ListViewChildren &children)
{
    return ++children.changes <= fewOf(children);
}

int Q3ListViewRows::totalOf(const Q3ListViewItem *item)
{
    if (!item->isVisible())
        return 0;
    return item->height_ + ((item->flags_ & Q3ListViewItem::Opened) ? childrenHeight(item) : 0);
}

int Q3ListViewRows::childrenHeight(const Q3ListViewItem *item)
{
    return item->children_ && item->children_->indexed ? Q3ListViewTree::sum(*item->children_) : 0;
}

/// Tells the trees above of another height of an item's children.
void Q3ListViewRows::passUp(Q3ListViewItem *parent)
{
    for (; parent->parent_ && parent->parent_->children_->indexed; parent = parent->parent_) {
        const int total = totalOf(parent);
        if (total == parent->total_)
            return;
        Q3ListViewTree::setTotal(parent, total);
    }
}

void Q3ListViewRows::forget(Q3ListViewItem *parent)
{
    if (parent->children_)
        parent->children_->indexed = false;
    constexpr int counts = Q3ListViewItem::Opened | Q3ListViewItem::Visible;
    while ((parent->flags_ & counts) == counts && parent->parent_ && parent->parent_->children_->indexed) {
        parent = parent->parent_;
        parent->children_->indexed = false;
    }
}

void Q3ListViewRows::changed(Q3ListViewItem *item)
{
    Q3ListViewItem *parent = item->parent_;
    if (!parent || !parent->children_->indexed || (item->flags_ & Q3ListViewItem::Pending))
        return;
    Q3ListView *view = item->listView();
    if (!view || !changePays(*parent->children_)) {
        forget(parent);
        return;
    }
    const bool measured =
        (item->flags_ & Q3ListViewItem::SetUp)
        && (!(item->flags_ & Q3ListViewItem::Opened) || item->childCount() == 0 || item->children_->indexed);
    if (!measured) {
        Q3ListViewPrivate::of(view)->addPending(item);
        return;
    }
    Q3ListViewTree::setTotal(item, totalOf(item));
    passUp(parent);
}

void Q3ListViewRows::join(Q3ListViewItem *item, Q3ListViewItem *after)
{
    Q3ListViewChildren &children = *item->parent_->children_;
    item->previous_ = after;
    item->next_ = after ? after->next_ : children.first;
    (item->previous_ ? item->previous_->next_ : children.first) = item;
    (item->next_ ? item->next_->previous_ : children.last) = item;
}

void Q3ListViewRows::leave(Q3ListViewItem *item)
{
    Q3ListViewChildren &children = *item->parent_->children_;
    (item->previous_ ? item->previous_->next_ : children.first) = item->next_;
    (item->next_ ? item->next_->previous_ : children.last) = item->previous_;
}

void Q3ListViewRows::link(Q3ListViewItem *parent, Q3ListViewItem *item, Q3ListViewItem *after)
{
    if (!parent->children_)
        parent->children_ = std::make_unique<Q3ListViewChildren>();
    Q3ListViewChildren &children = *parent->children_;
    item->parent_ = parent;
    join(item, after);
    ++children.count;
    misplace(item);
    item->total_ = 0;
    children.linked = children.linked && changePays(children);
    if (children.linked)
        Q3ListViewTree::insert(children, item);
    Q3ListView *view = children.linked && children.indexed ? parent->listView() : nullptr;
    if (view)
        Q3ListViewPrivate::of(view)->addPending(item);
    else
        forget(parent);
}

void Q3ListViewRows::unlink(Q3ListViewItem *item)
{
    Q3ListViewItem *parent = item->parent_;
    Q3ListViewChildren &children = *parent->children_;
    if (Q3ListView *view = (item->flags_ & Q3ListViewItem::Pending) || item->children_ ? item->listView() : nullptr)
        Q3ListViewPrivate::of(view)->removePending(item);
    if (item->flags_ & Q3ListViewItem::Misplaced) {
        item->setFlag(Q3ListViewItem::Misplaced, false);
        // It most likely came a moment ago.
        const auto found = std::find(children.misplaced.rbegin(), children.misplaced.rend(), item);
        if (found != children.misplaced.rend())
            children.misplaced.erase(std::next(found).base());
    }
    children.linked = children.linked && changePays(children);
    if (children.linked)
        Q3ListViewTree::remove(children, item);
    if (children.linked && children.indexed)
        passUp(parent);
    else
        forget(parent);
    leave(item);
    --children.count;
    item->parent_ = item->previous_ = item->next_ = nullptr;
}

void Q3ListViewRows::handOver(Q3ListViewItem *from, Q3ListViewItem *to)
{
    Q3ListViewChildren &left = *from->children_;
    Q3ListViewChildren &right = *to->children_;
    if (!left.first)
        return;
    for (Q3ListViewItem *item = left.first; item; item = item->next_)
        item->parent_ = to;
    left.last->next_ = right.first;
    (right.first ? right.first->previous_ : right.last) = left.last;
    right.first = left.first;
    right.count += left.count;
    left.first = left.last = left.root = nullptr;
    left.count = 0;
    left.linked = right.linked = left.indexed = right.indexed = false;
    left.misplaced.clear();
    right.misplaced.clear();
}

void Q3ListViewRows::ensureSetup(Q3ListViewItem *item)
{
    if (item->flags_ & Q3ListViewItem::SetUp)
        return;
    item->flags_ = item->flags_ | Q3ListViewItem::SetUp;
    item->setup();
}

void Q3ListViewRows::index(Q3ListViewItem *top)
{
    // A path of its own in place of recursion: trees may be deeper than the stack.
    struct Step {
        Q3ListViewItem *parent;
        Q3ListViewItem *child; ///< The next to be measured.
        int count;             ///< Of the children, when going over them began.
    };
    std::vector<Step> path;
    const auto enter = [&path](Q3ListViewItem *parent) {
        if (!parent->children_)
            return false;
        order(parent);
        const Q3ListViewChildren &children = *parent->children_;
        parent->children_->changes = 0;
        if (!children.indexed)
            path.push_back({parent, children.first, children.count});
        return !children.indexed;
    };
    enter(top);
    while (!path.empty()) {
        Q3ListViewItem *item = path.back().child;
        Q3ListViewItem *parent = path.back().parent;
        if (item) {
            ensureSetup(item);
            if ((item->flags_ & Q3ListViewItem::Opened) && item->isVisible() && enter(item))
                continue;
        } else {
            Q3ListViewChildren &children = *parent->children_;
            if (path.back().count != children.count) {
                // An item may fill itself, and its parent, in its setup().
                path.back() = {parent, children.first, children.count};
                continue;
            }
            Q3ListViewTree::build(children);
            children.linked = children.indexed = true;
            path.pop_back();
            if (path.empty())
                break;
            item = parent;
        }
        item->total_ = totalOf(item);
        path.back().child = item->next_;
    }
}

int Q3ListViewRows::position(const Q3ListViewItem *item)
{
    int y = 0;
    for (; item->parent_; item = item->parent_) {
        index(item->parent_);
        y += Q3ListViewTree::offset(item) + item->parent_->height_;
    }
    return y;
}

Q3ListViewItem *Q3ListViewRows::itemAt(Q3ListViewItem *root, int y)
{
    Q3ListViewItem *parent = root;
    while (parent && parent->children_) {
        index(parent);
        Q3ListViewItem *item = Q3ListViewTree::find(*parent->children_, y);
        if (!item || y < item->height_)
            return item;
        y -= item->height_;
        parent = item;
    }
    return nullptr;
}

Q3ListViewItem *Q3ListViewRows::shownFrom(Q3ListViewItem *item)
{
    return nearestShown(item, true);
}

Q3ListViewItem *Q3ListViewRows::shownUpTo(Q3ListViewItem *item)
{
    return nearestShown(item, false);
}

Q3ListViewItem *Q3ListViewRows::nearestShown(Q3ListViewItem *item, bool downwards)
{
    const auto step = downwards ? &Q3ListViewItem::next_ : &Q3ListViewItem::previous_;
    constexpr int steps = 8; // the nearest is mostly near: only then the index
    for (int i = 0; item && i < steps; ++i, item = item->*step) {
        if (item->isShown())
            return item;
    }
    if (!item)
        return nullptr;
    const Q3ListViewChildren &children = *item->parent_->children_;
    const Q3ListView *view = item->listView();
    if (children.indexed && view && Q3ListViewPrivate::of(view)->pending.empty()) {
        int y = Q3ListViewTree::offset(item) + (downwards ? 0 : item->total_ - 1);
        return Q3ListViewTree::find(children, y);
    }
    while (item && !item->isShown())
        item = item->*step;
    return item;
}

Q3ListViewItem *Q3ListViewRows::lowest(Q3ListViewItem *item)
{
    while (item->isOpen()) {
        order(item);
        Q3ListViewItem *last = shownUpTo(item->children_->last);
        if (!last)
            break;
        item = last;
    }
    return item;
}

Q3ListViewItem *Q3ListViewRows::behind(const Q3ListViewItem *item)
{
    for (; item && item->parent_; item = item->parent_) {
        if (item->next_)
            return item->next_;
    }
    return nullptr;
}

Q3ListViewItem *Q3ListViewRows::next(const Q3ListViewItem *item)
{
    return item->children_ && item->children_->first ? item->children_->first : behind(item);
}

Q3ListViewItem *Q3ListViewRows::previous(const Q3ListViewItem *item)
{
    Q3ListViewItem *before = item->previous_;
    if (!before)
        return item->parent();
    while (before->children_ && before->children_->last)
        before = before->children_->last;
    return before;
}
