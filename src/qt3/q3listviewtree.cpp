// SPDX-License-Identifier: MIT
#include "qt3/q3listviewtree_p.h"

namespace {

/// Addresses mixed so that they are as good as random.
quint32 priority(const Q3ListViewItem *item)
{
    const quint64 mixed = static_cast<quint64>(reinterpret_cast<quintptr>(item)) * Q_UINT64_C(0x9e3779b97f4a7c15);
    return static_cast<quint32>(mixed >> 32);
}

} // namespace

/// The sum of a node from those of its two children.
void Q3ListViewTree::add(Q3ListViewItem *item)
{
    item->tree_sum_ = item->total_ + sum(item->tree_left_) + sum(item->tree_right_);
}

void Q3ListViewTree::build(Q3ListViewChildren &children)
{
    children.root = nullptr;
    Q3ListViewItem *last = nullptr;
    for (Q3ListViewItem *item = children.first; item; item = item->next_) {
        // Nodes of lower priority on the right edge of the tree so far become the left part of the new one.
        Q3ListViewItem *above = last;
        Q3ListViewItem *below = nullptr;
        while (above && priority(above) < priority(item)) {
            add(above);
            below = above;
            above = above->tree_up_;
        }
        item->tree_left_ = below;
        item->tree_right_ = nullptr;
        item->tree_up_ = above;
        if (below)
            below->tree_up_ = item;
        if (above)
            above->tree_right_ = item;
        else
            children.root = item;
        last = item;
    }
    for (; last; last = last->tree_up_)
        add(last);
}

/// Puts @a by, which may be null, where @a node is.
void Q3ListViewTree::replace(Q3ListViewChildren &children, Q3ListViewItem *node, Q3ListViewItem *by)
{
    Q3ListViewItem *up = node->tree_up_;
    if (!up)
        children.root = by;
    else if (up->tree_left_ == node)
        up->tree_left_ = by;
    else
        up->tree_right_ = by;
    if (by)
        by->tree_up_ = up;
}

void Q3ListViewTree::rotateUp(Q3ListViewChildren &children, Q3ListViewItem *node)
{
    Q3ListViewItem *up = node->tree_up_;
    replace(children, up, node);
    if (up->tree_left_ == node) {
        up->tree_left_ = node->tree_right_;
        if (up->tree_left_)
            up->tree_left_->tree_up_ = up;
        node->tree_right_ = up;
    } else {
        up->tree_right_ = node->tree_left_;
        if (up->tree_right_)
            up->tree_right_->tree_up_ = up;
        node->tree_left_ = up;
    }
    up->tree_up_ = node;
    add(up);
    add(node);
}

void Q3ListViewTree::insert(Q3ListViewChildren &children, Q3ListViewItem *item)
{
    item->tree_up_ = item->tree_left_ = item->tree_right_ = nullptr;
    item->total_ = item->tree_sum_ = 0;
    Q3ListViewItem *before = item->previous_;
    Q3ListViewItem *place = before ? before->tree_right_ : children.root;
    if (before && !place) {
        before->tree_right_ = item;
        item->tree_up_ = before;
    } else if (!place) {
        children.root = item;
    } else {
        while (place->tree_left_)
            place = place->tree_left_;
        place->tree_left_ = item;
        item->tree_up_ = place;
    }
    while (item->tree_up_ && priority(item->tree_up_) < priority(item))
        rotateUp(children, item);
}

void Q3ListViewTree::remove(Q3ListViewChildren &children, Q3ListViewItem *item)
{
    setTotal(item, 0);
    while (item->tree_left_ || item->tree_right_) {
        Q3ListViewItem *left = item->tree_left_;
        Q3ListViewItem *right = item->tree_right_;
        rotateUp(children, !right || (left && priority(left) > priority(right)) ? left : right);
    }
    replace(children, item, nullptr);
    item->tree_up_ = nullptr;
}

void Q3ListViewTree::setTotal(Q3ListViewItem *item, int total)
{
    const int more = total - item->total_;
    item->total_ = total;
    for (Q3ListViewItem *node = item; node && more != 0; node = node->tree_up_)
        node->tree_sum_ += more;
}

int Q3ListViewTree::offset(const Q3ListViewItem *item)
{
    int before = sum(item->tree_left_);
    for (const Q3ListViewItem *node = item; node->tree_up_; node = node->tree_up_) {
        const Q3ListViewItem *up = node->tree_up_;
        if (up->tree_right_ == node)
            before += sum(up->tree_left_) + up->total_;
    }
    return before;
}

Q3ListViewItem *Q3ListViewTree::find(const Q3ListViewChildren &children, int &y)
{
    Q3ListViewItem *node = children.root;
    while (node && y >= 0) {
        const int before = sum(node->tree_left_);
        if (y < before) {
            node = node->tree_left_;
        } else if (y < before + node->total_) {
            y -= before;
            return node;
        } else {
            y -= before + node->total_;
            node = node->tree_right_;
        }
    }
    return nullptr;
}

bool Q3ListViewTree::isBefore(const Q3ListViewItem *a, const Q3ListViewItem *b)
{
    const auto level = [](const Q3ListViewItem *node) {
        int ups = 0;
        for (; node->tree_up_; node = node->tree_up_)
            ++ups;
        return ups;
    };
    int lead = level(a) - level(b); // by which a is the deeper
    const Q3ListViewItem *below = nullptr;
    for (; lead > 0; --lead) {
        below = a;
        a = a->tree_up_;
    }
    if (below && a == b)
        return below == b->tree_left_;
    for (; lead < 0; ++lead) {
        below = b;
        b = b->tree_up_;
    }
    if (a == b)
        return below && below == a->tree_right_;
    while (a->tree_up_ != b->tree_up_) {
        a = a->tree_up_;
        b = b->tree_up_;
    }
    return a->tree_up_->tree_left_ == a;
}
