// SPDX-License-Identifier: MIT
#include "qt3/q3listview_p.h"
#include "qt3/q3listviewaccess_p.h"
#include "qt3/q3listviewitem.h"
#include "qt3/q3listviewtree_p.h"

#include <algorithm>
#include <utility>

namespace {

// One destructor deletes all that is below its item: those who go leave their children to it. A tree may be deeper
// than the stack.
Q3ListViewItem *grave = nullptr;
Q3ListViewItem *buried = nullptr; ///< The one that it deletes now.

/// Items have come, gone or changed places.
void structureChanged(Q3ListView *view)
{
    Q3ListViewPrivate::of(view)->place = {};
    view->triggerUpdate();
}

Q3ListViewItem *rootOf(Q3ListView *view)
{
    return view ? Q3ListViewPrivate::of(view)->root.get() : nullptr;
}

} // namespace

Q3ListViewItem::Q3ListViewItem(RootTag, Q3ListView *view)
{
    flags_ |= Opened | SetUp;
    children_ = std::make_unique<Q3ListViewChildren>();
    children_->view = view;
}

Q3ListViewItem::Q3ListViewItem(Q3ListView *parent)
{
    construct(rootOf(parent), nullptr);
}

Q3ListViewItem::Q3ListViewItem(Q3ListViewItem *parent)
{
    construct(parent, nullptr);
}

Q3ListViewItem::Q3ListViewItem(Q3ListView *parent, Q3ListViewItem *after)
{
    construct(rootOf(parent), after);
}

Q3ListViewItem::Q3ListViewItem(Q3ListViewItem *parent, Q3ListViewItem *after)
{
    construct(parent, after);
}

Q3ListViewItem::Q3ListViewItem(Q3ListView *parent, const QString &label1, const QString &label2,
                               const QString &label3, const QString &label4, const QString &label5,
                               const QString &label6, const QString &label7, const QString &label8)
    : Q3ListViewItem(parent)
{
    setLabels(label1, label2, label3, label4, label5, label6, label7, label8);
}

Q3ListViewItem::Q3ListViewItem(Q3ListViewItem *parent, const QString &label1, const QString &label2,
                               const QString &label3, const QString &label4, const QString &label5,
                               const QString &label6, const QString &label7, const QString &label8)
    : Q3ListViewItem(parent)
{
    setLabels(label1, label2, label3, label4, label5, label6, label7, label8);
}

Q3ListViewItem::Q3ListViewItem(Q3ListView *parent, Q3ListViewItem *after, const QString &label1,
                               const QString &label2, const QString &label3, const QString &label4,
                               const QString &label5, const QString &label6, const QString &label7,
                               const QString &label8)
    : Q3ListViewItem(parent, after)
{
    setLabels(label1, label2, label3, label4, label5, label6, label7, label8);
}

Q3ListViewItem::Q3ListViewItem(Q3ListViewItem *parent, Q3ListViewItem *after, const QString &label1,
                               const QString &label2, const QString &label3, const QString &label4,
                               const QString &label5, const QString &label6, const QString &label7,
                               const QString &label8)
    : Q3ListViewItem(parent, after)
{
    setLabels(label1, label2, label3, label4, label5, label6, label7, label8);
}

void Q3ListViewItem::setLabels(const QString &label1, const QString &label2, const QString &label3,
                               const QString &label4, const QString &label5, const QString &label6,
                               const QString &label7, const QString &label8)
{
    const QString *const labels[] = {&label1, &label2, &label3, &label4, &label5, &label6, &label7, &label8};
    int count = 8;
    while (count > 0 && labels[count - 1]->isNull())
        --count;
    texts_ = std::make_unique<QString[]>(static_cast<size_t>(count));
    text_count_ = static_cast<quint16>(count);
    for (int i = 0; i < count; ++i)
        texts_[i] = *labels[i];
}

void Q3ListViewItem::construct(Q3ListViewItem *parent, Q3ListViewItem *after)
{
    if (!parent)
        return;
    Q3ListViewRows::link(parent, this, after && after->parent_ == parent ? after : nullptr);
    if (Q3ListView *view = parent->listView())
        structureChanged(view);
}

Q3ListViewItem::~Q3ListViewItem()
{
    setFlag(Dying, true);
    if (isRoot()) {
        children_->view = nullptr;
    } else if (Q3ListView *view = parent_ && parent_->isRoot() ? listView() : nullptr) {
        // Derived classes are told of what goes.
        view->takeItem(this);
    } else if (parent_ && !(parent_->flags_ & Dying)) {
        parent_->takeItem(this);
    }
    if (parent_)
        parent_->Q3ListViewItem::takeItem(this);
    Q3ListViewItemGuard::deleted(this);
    Q3ListViewAccess::forget(this);
    if (!children_ || !children_->first)
        return;
    children_->linked = children_->indexed = false;
    children_->misplaced.clear();
    if (buried == this) {
        Q3ListViewRows::handOver(this, grave);
        return;
    }
    // Others may go in the destructors of these, with a loop of their own.
    Q3ListViewItem *const outer_grave = std::exchange(grave, this);
    Q3ListViewItem *const outer_buried = buried;
    while (Q3ListViewItem *child = children_->first) {
        Q3ListViewRows::unlink(child);
        buried = child;
        delete child;
    }
    grave = outer_grave;
    buried = outer_buried;
}

void Q3ListViewItem::insertItem(Q3ListViewItem *newChild)
{
    if (!newChild || newChild->parent_ || newChild == this || isInside(newChild))
        return;
    // Columns, font or style may be others than where it comes from.
    for (Q3ListViewItem *item = newChild; item; item = Q3ListViewRows::next(item))
        item->setFlag(SetUp, false);
    Q3ListViewRows::link(this, newChild, nullptr);
    if (Q3ListView *view = listView())
        structureChanged(view);
}

void Q3ListViewItem::takeItem(Q3ListViewItem *item)
{
    if (!item || item->parent_ != this)
        return;
    Q3ListViewItemIterator::leave(item);
    Q3ListView *view = listView();
    if (!view) {
        Q3ListViewRows::unlink(item);
        return;
    }
    Q3ListViewPrivate *d = Q3ListViewPrivate::of(view);
    const Q3ListViewPrivate::Leaving left = d->itemLeaves(item);
    Q3ListViewRows::unlink(item);
    structureChanged(view);
    d->tellOf(left);
}

void Q3ListViewItem::moveItem(Q3ListViewItem *after)
{
    Q3ListView *view = listView();
    if (!parent_ || after == this || (after && after->parent_ != parent_) || after == previous_)
        return;
    if (!after || (view && Q3ListViewPrivate::of(view)->isSorted()))
        return;
    Q3ListViewItem *parent = parent_;
    Q3ListViewRows::unlink(this);
    Q3ListViewRows::link(parent, this, after);
    if (view)
        structureChanged(view);
}

bool Q3ListViewItem::isRoot() const
{
    return !parent_ && children_ && children_->view;
}

Q3ListViewItem *Q3ListViewItem::parent() const
{
    return parent_ && parent_->isRoot() ? nullptr : parent_;
}

Q3ListView *Q3ListViewItem::listView() const
{
    const Q3ListViewItem *top = this;
    while (top->parent_)
        top = top->parent_;
    return top->children_ ? top->children_->view : nullptr;
}

Q3ListViewItem *Q3ListViewItem::firstChild() const
{
    return children_ ? children_->first : nullptr;
}

int Q3ListViewItem::childCount() const
{
    return children_ ? children_->count : 0;
}

int Q3ListViewItem::depth() const
{
    int depth = 0;
    for (const Q3ListViewItem *up = parent_; up && !up->isRoot(); up = up->parent_)
        ++depth;
    return depth;
}

bool Q3ListViewItem::isInside(const Q3ListViewItem *ancestor) const
{
    const Q3ListViewItem *item = this;
    while (item && item != ancestor)
        item = item->parent_;
    return item != nullptr;
}

Q3ListViewItem *Q3ListViewItem::itemAbove() const
{
    if (previous_) {
        if (Q3ListViewItem *above = Q3ListViewRows::shownUpTo(previous_))
            return Q3ListViewRows::lowest(above);
    }
    return parent();
}

Q3ListViewItem *Q3ListViewItem::itemBelow() const
{
    if (isOpen() && isVisible()) {
        Q3ListViewRows::order(const_cast<Q3ListViewItem *>(this));
        if (Q3ListViewItem *below = Q3ListViewRows::shownFrom(children_->first))
            return below;
    }
    for (const Q3ListViewItem *item = this; item; item = item->parent_) {
        if (item->next_) {
            if (Q3ListViewItem *below = Q3ListViewRows::shownFrom(item->next_))
                return below;
        }
    }
    return nullptr;
}

int Q3ListViewItem::totalHeight() const
{
    if (!isVisible())
        return 0;
    auto *self = const_cast<Q3ListViewItem *>(this);
    Q3ListViewRows::ensureSetup(self);
    if (!isOpen())
        return height_;
    if (Q3ListView *view = listView())
        Q3ListViewPrivate::of(view)->index();
    Q3ListViewRows::index(self);
    return height_ + Q3ListViewRows::childrenHeight(this);
}

int Q3ListViewItem::itemPos() const
{
    Q3ListView *view = listView();
    if (!view)
        return 0;
    Q3ListViewPrivate::of(view)->index();
    return Q3ListViewRows::position(this);
}

void Q3ListViewItem::setHeight(int height)
{
    if (height_ == height)
        return;
    height_ = std::max(0, height);
    invalidateHeight();
}

void Q3ListViewItem::invalidateHeight()
{
    Q3ListViewRows::changed(this);
    if (Q3ListView *view = (flags_ & SetUp) && parent_ && parent_->children_->indexed ? listView() : nullptr)
        view->triggerUpdate();
}
