// SPDX-License-Identifier: MIT
#include "qt3/q3listviewitemiterator.h"

#include "qt3/q3listview_p.h"
#include "qt3/q3listviewtree_p.h"

Q3ListViewItemIterator *Q3ListViewItemIterator::first_ = nullptr;

Q3ListViewItemIterator::Q3ListViewItemIterator()
{
    attach();
}

Q3ListViewItemIterator::Q3ListViewItemIterator(Q3ListViewItem *item) : current_(item)
{
    attach();
}

Q3ListViewItemIterator::Q3ListViewItemIterator(Q3ListViewItem *item, int iteratorFlags) : flags_(iteratorFlags)
{
    attach();
    current_ = matchFrom(item);
}

Q3ListViewItemIterator::Q3ListViewItemIterator(Q3ListView *lv) : current_(lv ? lv->firstChild() : nullptr)
{
    attach();
}

Q3ListViewItemIterator::Q3ListViewItemIterator(Q3ListView *lv, int iteratorFlags) : flags_(iteratorFlags)
{
    attach();
    current_ = matchFrom(lv ? lv->firstChild() : nullptr);
}

Q3ListViewItemIterator::Q3ListViewItemIterator(const Q3ListViewItemIterator &it)
    : current_(it.current_), flags_(it.flags_)
{
    attach();
}

Q3ListViewItemIterator &Q3ListViewItemIterator::operator=(const Q3ListViewItemIterator &it)
{
    current_ = it.current_;
    flags_ = it.flags_;
    return *this;
}

Q3ListViewItemIterator::~Q3ListViewItemIterator()
{
    (previous_ ? previous_->next_ : first_) = next_;
    if (next_)
        next_->previous_ = previous_;
}

void Q3ListViewItemIterator::attach()
{
    next_ = first_;
    if (next_)
        next_->previous_ = this;
    first_ = this;
}

bool Q3ListViewItemIterator::matches(const Q3ListViewItem *item) const
{
    const auto fits = [this](int yes, int no, bool is) {
        const int wanted = flags_ & (yes | no);
        return wanted == 0 || wanted == (yes | no) || (wanted == yes) == is;
    };
    return fits(Visible, Invisible, item->isVisible()) && fits(Selected, Unselected, item->isSelected())
           && fits(Selectable, NotSelectable, item->isSelectable())
           && fits(DragEnabled, DragDisabled, item->dragEnabled())
           && fits(DropEnabled, DropDisabled, item->dropEnabled())
           && fits(Expandable, NotExpandable, item->isExpandable()) && fits(Checked, NotChecked, false);
}

Q3ListViewItem *Q3ListViewItemIterator::matchFrom(Q3ListViewItem *item) const
{
    while (item && !matches(item))
        item = Q3ListViewRows::next(item);
    return item;
}

Q3ListViewItem *Q3ListViewItemIterator::matchBackFrom(Q3ListViewItem *item) const
{
    while (item && !matches(item))
        item = Q3ListViewRows::previous(item);
    return item;
}

Q3ListViewItemIterator &Q3ListViewItemIterator::operator++()
{
    if (current_)
        current_ = matchFrom(Q3ListViewRows::next(current_));
    return *this;
}

const Q3ListViewItemIterator Q3ListViewItemIterator::operator++(int)
{
    const Q3ListViewItemIterator before = *this;
    ++*this;
    return before;
}

Q3ListViewItemIterator &Q3ListViewItemIterator::operator+=(int j)
{
    for (; current_ && j > 0; --j)
        ++*this;
    return *this;
}

Q3ListViewItemIterator &Q3ListViewItemIterator::operator--()
{
    if (current_)
        current_ = matchBackFrom(Q3ListViewRows::previous(current_));
    return *this;
}

const Q3ListViewItemIterator Q3ListViewItemIterator::operator--(int)
{
    const Q3ListViewItemIterator before = *this;
    --*this;
    return before;
}

Q3ListViewItemIterator &Q3ListViewItemIterator::operator-=(int j)
{
    for (; current_ && j > 0; --j)
        --*this;
    return *this;
}

void Q3ListViewItemIterator::leave(const Q3ListViewItem *item)
{
    for (Q3ListViewItemIterator *it = first_; it; it = it->next_) {
        if (!it->current_ || !it->current_->isInside(item))
            continue;
        Q3ListViewItem *heir = it->matchFrom(Q3ListViewRows::behind(item));
        it->current_ = heir ? heir : it->matchBackFrom(Q3ListViewRows::previous(item));
    }
}

void Q3ListViewItemIterator::leaveAll(const Q3ListViewItem *root)
{
    for (Q3ListViewItemIterator *it = first_; it; it = it->next_) {
        if (it->current_ && it->current_->isInside(root))
            it->current_ = nullptr;
    }
}
