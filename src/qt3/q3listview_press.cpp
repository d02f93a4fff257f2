// SPDX-License-Identifier: MIT
#include "qt3/q3listview_p.h"

void Q3ListViewPrivate::emitPress(int button, Q3ListViewItem *target, const QPoint &global, int column)
{
    const QPointer<Q3ListView> self(q);
    const Q3ListViewItemGuard item(target);
    const auto alive = [&] {
        return self && (!target || item);
    };
    Q_EMIT q->pressed(target);
    if (alive())
        Q_EMIT q->pressed(target, global, column);
    if (alive())
        Q_EMIT q->mouseButtonPressed(button, target, global, column);
    if (alive() && button == Qt::RightButton)
        Q_EMIT q->rightButtonPressed(target, global, column);
}

void Q3ListViewPrivate::emitClick(int button, Q3ListViewItem *target, const QPoint &global, int column)
{
    const QPointer<Q3ListView> self(q);
    const Q3ListViewItemGuard item(target);
    const auto alive = [&] {
        return self && (!target || item);
    };
    Q_EMIT q->clicked(target);
    if (alive())
        Q_EMIT q->clicked(target, global, column);
    if (alive())
        Q_EMIT q->mouseButtonClicked(button, target, global, column);
    if (alive() && button == Qt::RightButton)
        Q_EMIT q->rightButtonClicked(target, global, column);
}

/// What a press of the left button makes of current item and selection.
void Q3ListViewPrivate::pressItem(Q3ListViewItem *target, Qt::KeyboardModifiers modifiers)
{
    const QPointer<Q3ListView> self(q);
    const Q3ListViewItemGuard item(target);
    if (!anchor)
        anchor = current ? current : target;
    q->setCurrentItem(target);
    if (!self || !item || item->listView() != q)
        return;
    bool changed = false;
    const bool may = isSelectableByUser(item);
    press_selects = true;
    switch (selection_mode) {
    case Q3ListView::Single:
        changed = may && selectOnly(item);
        break;
    case Q3ListView::Multi:
        press_selects = !item->isSelected();
        changed = may && select(item, press_selects);
        break;
    case Q3ListView::Extended:
        if (modifiers & Qt::ShiftModifier) {
            changed = selectRange(anchor ? anchor : item, item, true, !(modifiers & Qt::ControlModifier));
            break;
        }
        anchor = item;
        if (modifiers & Qt::ControlModifier) {
            press_selects = !item->isSelected();
            changed = may && select(item, press_selects);
        } else if (item->isSelected()) {
            // It may be the beginning of a drag of all that is selected.
            select_on_release = true;
        } else {
            changed = selectOnly(may ? item.get() : nullptr);
        }
        break;
    case Q3ListView::NoSelection:
        break;
    }
    if (changed)
        emitSelectionChanged();
}

void Q3ListViewPrivate::pressEmpty(Qt::KeyboardModifiers modifiers)
{
    const bool keeps = modifiers & (Qt::ShiftModifier | Qt::ControlModifier);
    if (selection_mode == Q3ListView::Extended && !keeps && selectOnly(nullptr))
        emitSelectionChanged();
}
