// SPDX-License-Identifier: MIT
#include "qt3/q3listview_p.h"
#include "qt3/q3listviewaccess_p.h"

#include <QSet>

bool Q3ListViewPrivate::isSelectableByUser(const Q3ListViewItem *item) const
{
    return selection_mode != Q3ListView::NoSelection && item && item->isSelectable() && item->isEnabled();
}

/// Sets an item's state, repaints it, and returns whether it was another.
bool Q3ListViewPrivate::select(Q3ListViewItem *item, bool on)
{
    if (item->isSelected() == on)
        return false;
    item->setSelected(on);
    if (on)
        selected = item;
    q->repaintItem(item);
    return item->isSelected() == on;
}

/// Selects an item, null for none, and unselects all others.
bool Q3ListViewPrivate::selectOnly(Q3ListViewItem *item)
{
    bool changed = false;
    if (selection_mode == Q3ListView::Single) {
        Q3ListViewItem *before = q->selectedItem();
        changed = before && before != item && select(before, false);
    } else {
        for (Q3ListViewItem *one = root->firstChild(); one; one = Q3ListViewRows::next(one)) {
            if (one != item && one->isSelected())
                changed = select(one, false) || changed;
        }
    }
    return (item && select(item, true)) || changed;
}

/// Selects or unselects the rows between two items, which may come in either order. With @a others_too the rest is
/// unselected.
bool Q3ListViewPrivate::selectRange(Q3ListViewItem *from, Q3ListViewItem *to, bool on, bool others_too)
{
    if (from->itemPos() > to->itemPos())
        std::swap(from, to);
    bool changed = false;
    QSet<Q3ListViewItem *> inside;
    for (Q3ListViewItem *item = from; item; item = item == to ? nullptr : item->itemBelow()) {
        inside.insert(item);
        if (isSelectableByUser(item))
            changed = select(item, on) || changed;
    }
    if (!others_too)
        return changed;
    for (Q3ListViewItem *item = root->firstChild(); item; item = Q3ListViewRows::next(item)) {
        if (item->isSelected() && !inside.contains(item))
            changed = select(item, false) || changed;
    }
    return changed;
}

void Q3ListViewPrivate::emitSelectionChanged()
{
    const QPointer<Q3ListView> self(q);
    Q3ListViewAccess::tellSelection(q);
    Q_EMIT q->selectionChanged();
    if (self && selection_mode == Q3ListView::Single)
        Q_EMIT q->selectionChanged(q->selectedItem());
}

Q3ListView::SelectionMode Q3ListView::selectionMode() const
{
    return d->selection_mode;
}

void Q3ListView::setSelectionMode(SelectionMode mode)
{
    d->selection_mode = mode;
}

bool Q3ListView::isMultiSelection() const
{
    return d->selection_mode == Multi || d->selection_mode == Extended;
}

void Q3ListView::setMultiSelection(bool enable)
{
    if (!enable)
        setSelectionMode(Single);
    else if (!isMultiSelection())
        setSelectionMode(Multi);
}

bool Q3ListView::isSelected(const Q3ListViewItem *i) const
{
    return i && i->isSelected();
}

Q3ListViewItem *Q3ListView::selectedItem() const
{
    if (d->selection_mode != Single)
        return nullptr;
    if (d->selected && d->selected->isSelected())
        return d->selected;
    if (d->current && d->current->isSelected())
        return d->current;
    // Items can be selected without the view knowing.
    for (Q3ListViewItem *item = firstChild(); item; item = Q3ListViewRows::next(item)) {
        if (item->isSelected()) {
            d->selected = item;
            return item;
        }
    }
    return nullptr;
}

void Q3ListView::setSelected(Q3ListViewItem *item, bool selected)
{
    if (!item || item->listView() != this)
        return;
    const QPointer<Q3ListView> self(this);
    const Q3ListViewItemGuard guard(item);
    bool changed = false;
    if (d->selection_mode == Single && selected)
        changed = d->selectOnly(item);
    else
        changed = d->select(item, selected);
    if (d->selection_mode == Single && selected)
        setCurrentItem(item);
    if (self && changed)
        d->emitSelectionChanged();
}

void Q3ListView::setSelectionAnchor(Q3ListViewItem *item)
{
    if (item && item->isSelectable() && item->listView() == this)
        d->anchor = item;
}

void Q3ListView::clearSelection()
{
    if (d->selectOnly(nullptr))
        d->emitSelectionChanged();
}

void Q3ListView::selectAll(bool select)
{
    if (!isMultiSelection()) {
        if (d->current)
            setSelected(d->current, select);
        return;
    }
    bool changed = false;
    for (Q3ListViewItem *item = d->root->firstChild(); item; item = Q3ListViewRows::next(item)) {
        if (!select || d->isSelectableByUser(item))
            changed = d->select(item, select) || changed;
    }
    if (changed)
        d->emitSelectionChanged();
}

void Q3ListView::invertSelection()
{
    if (!isMultiSelection())
        return;
    bool changed = false;
    for (Q3ListViewItem *item = d->root->firstChild(); item; item = Q3ListViewRows::next(item)) {
        if (d->isSelectableByUser(item))
            changed = d->select(item, !item->isSelected()) || changed;
    }
    if (changed)
        d->emitSelectionChanged();
}

Q3ListViewItem *Q3ListView::currentItem() const
{
    return d->current;
}

void Q3ListView::setCurrentItem(Q3ListViewItem *i)
{
    if (i == d->current || (i && i->listView() != this))
        return;
    Q3ListViewItem *before = d->current;
    d->current = i;
    repaintItem(before);
    repaintItem(i);
    Q3ListViewAccess::tellFocus(this, i);
    Q_EMIT currentChanged(i);
}

/// Goes to an item as a key does: with the rules of the mode and of the modifiers.
void Q3ListViewPrivate::goTo(Q3ListViewItem *target, Qt::KeyboardModifiers modifiers)
{
    if (!target)
        return;
    const QPointer<Q3ListView> self(q);
    const Q3ListViewItemGuard item(target);
    const bool from_selected = current && current->isSelected();
    if (!anchor)
        anchor = current ? current : target;
    q->setCurrentItem(target);
    if (!self || !item || item->listView() != q)
        return;
    bool changed = false;
    switch (selection_mode) {
    case Q3ListView::Single:
        changed = isSelectableByUser(item) && selectOnly(item);
        break;
    case Q3ListView::Multi:
        if (modifiers & Qt::ShiftModifier)
            changed = isSelectableByUser(item) && select(item, from_selected);
        break;
    case Q3ListView::Extended:
        if (modifiers & Qt::ShiftModifier) {
            changed = selectRange(anchor ? anchor : item, item, true, !(modifiers & Qt::ControlModifier));
        } else if (!(modifiers & Qt::ControlModifier)) {
            anchor = item;
            changed = selectOnly(isSelectableByUser(item) ? item.get() : nullptr);
        }
        break;
    case Q3ListView::NoSelection:
        break;
    }
    q->ensureItemVisible(item);
    if (changed)
        emitSelectionChanged();
}

/// The item, or the next one in a direction that the user may come to; null if there is none.
Q3ListViewItem *Q3ListViewPrivate::enabledFrom(Q3ListViewItem *item, bool downwards) const
{
    while (item && !item->isEnabled())
        item = downwards ? item->itemBelow() : item->itemAbove();
    return item;
}
