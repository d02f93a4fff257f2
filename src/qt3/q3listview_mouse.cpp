// SPDX-License-Identifier: MIT
#include "qt3/q3listview_p.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>

#include <algorithm>

int Q3ListViewPrivate::columnAt(const QPoint &viewport_pos) const
{
    return header->mapToSection(header->cellAt(viewport_pos.x()));
}

bool Q3ListViewPrivate::isOnExpander(Q3ListViewItem *item, const QPoint &viewport_pos)
{
    if (!hasExpander(item))
        return false;
    const QRect cell = cellRect(item, 0);
    const int end = q->isRightToLeft() ? viewport_pos.x() - cell.right() - 1 : cell.left() - 1 - viewport_pos.x();
    return end >= 0 && end < tree_step && header->sectionRect(0).contains(viewport_pos.x(), 0);
}

void Q3ListViewPrivate::endPress()
{
    if (press == Press::Rubber)
        q->viewport()->update();
    press = Press::None;
    scroll_timer.stop();
    select_on_release = rename_on_release = press_on_expander = dragging_over = pressed_beside = false;
    pressed = nullptr;
}

void Q3ListView::contentsMousePressEvent(QMouseEvent *e)
{
    e->accept();
    const QPointer<Q3ListView> self(this);
    const QPoint at = contentsToViewport(e->pos());
    const QPoint global = e->globalPos();
    const Qt::KeyboardModifiers modifiers = e->modifiers();
    const int button = e->button();
    const int hit = d->columnAt(at);
    d->rename_timer.stop();
    d->typed.clear();
    const Q3ListViewItemGuard item(itemAt(at));
    const bool beside = !item;
    if (d->editor) {
        d->finishRename(d->rename_action == Accept);
        if (!self || (!beside && !item))
            return;
    }
    d->endPress();
    d->ignore_release = false;
    if (item && !item->isEnabled())
        return; // the user cannot get at it
    const int column = item ? hit : -1;
    d->press_button = button;
    d->press_pos = d->mouse_pos = e->pos();
    d->press_modifiers = modifiers;
    d->pressed = item;
    d->pressed_beside = beside;

    if (item && button == Qt::LeftButton && d->isOnExpander(item, at)) {
        d->press_on_expander = true;
        setOpen(item, !item->isOpen());
    } else if (button == Qt::LeftButton) {
        d->press = item ? Q3ListViewPrivate::Press::Item : Q3ListViewPrivate::Press::Empty;
        if (item) {
            const bool again = d->current == item && item->isSelected() && modifiers == Qt::NoModifier;
            d->rename_on_release = again && item->renameEnabled(column);
            d->rename_column = column;
            d->pressItem(item, modifiers);
        } else {
            d->pressEmpty(modifiers);
        }
    } else if (item && button == Qt::RightButton) {
        if (item->isSelected() || d->selection_mode == Multi)
            setCurrentItem(item);
        else
            d->pressItem(item, Qt::NoModifier);
    }
    if (self && item && !d->press_on_expander && item->listView() == this) {
        d->activated = item;
        d->activated_by_mouse = true;
        d->activate_pos = e->pos() - QPoint(0, item->itemPos());
        item->activate();
        if (!self)
            return;
        d->activated = nullptr;
    }
    if (self && (beside || item))
        d->emitPress(button, item, global, column);
}

void Q3ListView::contentsMouseReleaseEvent(QMouseEvent *e)
{
    e->accept();
    const QPointer<Q3ListView> self(this);
    const QPoint at = contentsToViewport(e->pos());
    const QPoint global = e->globalPos();
    const int button = e->button();
    const bool beside = d->pressed_beside;
    const bool dragged = d->dragging_over || d->press == Q3ListViewPrivate::Press::Rubber;
    const bool select = d->select_on_release && !dragged && button == d->press_button;
    const bool rename = d->rename_on_release && !dragged && button == Qt::LeftButton;
    const Q3ListViewItemGuard item(d->pressed);
    d->endPress();
    if (d->ignore_release || button != d->press_button || !(beside || item)) {
        d->ignore_release = false;
        return;
    }
    if (item && item->listView() != this)
        return;
    if (select && item && d->selectOnly(item))
        d->emitSelectionChanged();
    if (!self || dragged || (!beside && !item))
        return;
    Q3ListViewItem *here = itemAt(at);
    if (here != item)
        return;
    if (rename) {
        d->to_rename = item;
        d->rename_timer.start(QApplication::doubleClickInterval(), this);
    }
    d->emitClick(button, item, global, item ? d->columnAt(at) : -1);
}

void Q3ListView::contentsMouseDoubleClickEvent(QMouseEvent *e)
{
    e->accept();
    const QPointer<Q3ListView> self(this);
    const QPoint at = contentsToViewport(e->pos());
    const QPoint global = e->globalPos();
    const Q3ListViewItemGuard item(itemAt(at));
    const bool beside = !item;
    const int column = item ? d->columnAt(at) : -1;
    if (item && item->isEnabled() && e->button() == Qt::LeftButton && d->isOnExpander(item, at)) {
        contentsMousePressEvent(e);
        return;
    }
    d->rename_timer.stop();
    d->endPress();
    d->ignore_release = true;
    if (e->button() != Qt::LeftButton) {
        contentsMousePressEvent(e);
        return;
    }
    if (item && !item->isEnabled())
        return;
    if (item)
        Q_EMIT doubleClicked(item);
    if (self && (beside || item))
        Q_EMIT doubleClicked(item, global, column);
    if (self && item && item->listView() == this && d->hasExpander(item))
        setOpen(item, !item->isOpen());
}

void Q3ListView::contentsContextMenuEvent(QContextMenuEvent *e)
{
    e->accept();
    if (e->reason() == QContextMenuEvent::Keyboard) {
        QPoint at = e->globalPos();
        if (d->current) {
            const QRect cell = d->cellRect(d->current, 0);
            at = viewport()->mapToGlobal(
                QPoint(std::max(0, cell.left()), std::clamp(cell.center().y(), 0, visibleHeight())));
        }
        Q_EMIT contextMenuRequested(d->current, at, -1);
        return;
    }
    const QPoint at = contentsToViewport(e->pos());
    Q3ListViewItem *item = itemAt(at);
    if (item && !item->isEnabled())
        item = nullptr;
    Q_EMIT contextMenuRequested(item, e->globalPos(), item ? d->columnAt(at) : -1);
}
