// SPDX-License-Identifier: MIT
#include "qt3/q3listview_p.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyle>

#include <algorithm>
#include <cstdlib>

namespace {

constexpr int scroll_interval = 50; // milliseconds

bool isFar(const QPoint &a, const QPoint &b)
{
    const QPoint way = b - a;
    return std::max(std::abs(way.x()), std::abs(way.y())) > QApplication::startDragDistance();
}

} // namespace

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

void Q3ListViewPrivate::hover(Q3ListViewItem *item)
{
    if (item == hovered)
        return;
    hovered = item;
    if (item)
        Q_EMIT q->onItem(item);
    else
        Q_EMIT q->onViewport();
}

void Q3ListView::contentsMouseMoveEvent(QMouseEvent *e)
{
    using Press = Q3ListViewPrivate::Press;
    e->accept();
    if (e->buttons() == Qt::NoButton) {
        d->hover(itemAt(contentsToViewport(e->pos())));
        return;
    }
    if (!(e->buttons() & Qt::LeftButton) || d->press == Press::None)
        return;
    d->mouse_pos = e->pos();
    if (!d->dragging_over && d->press != Press::Rubber) {
        if (!isFar(d->press_pos, d->mouse_pos))
            return;
        if (d->press == Press::Item && !d->pressed) {
            d->endPress();
            return;
        }
        if (d->press == Press::Item && d->pressed->dragEnabled()) {
            d->endPress();
            startDrag();
            return;
        }
        if (d->press == Press::Empty && isMultiSelection())
            d->press = Press::Rubber;
        else
            d->dragging_over = true;
    }
    const QPoint at = contentsToViewport(e->pos());
    if (at.y() < 0 || at.y() >= visibleHeight()) {
        if (!d->scroll_timer.isActive())
            d->scroll_timer.start(scroll_interval, this);
    } else {
        d->scroll_timer.stop();
    }
    if (d->press == Press::Rubber)
        d->rubberSelect(e->pos());
    else if (d->press == Press::Item)
        d->dragSelect(e->pos());
}

/// Selects as far as the mouse is now.
void Q3ListViewPrivate::dragSelect(const QPoint &contents_pos)
{
    const QPointer<Q3ListView> self(q);
    index();
    const int y = std::clamp(contents_pos.y(), q->contentsY(), q->contentsY() + std::max(0, q->visibleHeight() - 1));
    Q3ListViewItem *row = Q3ListViewRows::itemAt(root.get(), std::max(0, y));
    const Q3ListViewItemGuard item(row ? row : q->childCount() > 0 ? Q3ListViewRows::lowest(root.get()) : nullptr);
    if (!item || !item->isEnabled() || selection_mode == Q3ListView::NoSelection)
        return;
    const Q3ListViewItemGuard start(pressed);
    if (item != current)
        q->setCurrentItem(item);
    if (!self || !item || item->listView() != q)
        return;
    bool changed = false;
    if (selection_mode == Q3ListView::Single)
        changed = isSelectableByUser(item) && selectOnly(item);
    else if (selection_mode == Q3ListView::Multi || (press_modifiers & Qt::ControlModifier))
        changed = selectRange(start ? start : item, item, press_selects, false);
    else
        changed = selectRange(anchor ? anchor : item, item, true, true);
    select_on_release = false;
    if (changed)
        emitSelectionChanged();
}

/// The rectangle that the mouse draws out, in contents coordinates.
QRect Q3ListViewPrivate::rubberRect() const
{
    return press == Press::Rubber ? QRect(press_pos, mouse_pos).normalized() : QRect();
}

/// Selects the rows that the rectangle touches.
void Q3ListViewPrivate::rubberSelect(const QPoint &contents_pos)
{
    mouse_pos = contents_pos;
    q->viewport()->update();
    const QRect band = rubberRect();
    const QRect columns_area =
        header->rect().intersected(QRect(header->sectionRect(header->mapToSection(0))
                                         | header->sectionRect(header->mapToSection(header->count() - 1))));
    const int left = q->viewportToContents(columns_area.topLeft()).x();
    index();
    const int height = contentsHeight();
    const bool touches = height > 0 && band.top() < height && band.bottom() >= 0 && band.right() >= left
                         && band.left() < left + columns_area.width();
    const bool others_too =
        selection_mode == Q3ListView::Extended && !(press_modifiers & (Qt::ShiftModifier | Qt::ControlModifier));
    bool changed = false;
    if (touches) {
        Q3ListViewItem *from = Q3ListViewRows::itemAt(root.get(), std::max(0, band.top()));
        Q3ListViewItem *to = Q3ListViewRows::itemAt(root.get(), std::min(height - 1, band.bottom()));
        if (from && to)
            changed = selectRange(from, to, true, others_too);
    } else if (others_too) {
        changed = selectOnly(nullptr);
    }
    if (changed)
        emitSelectionChanged();
}

void Q3ListView::doAutoScroll()
{
    using Press = Q3ListViewPrivate::Press;
    if (d->press == Press::None) {
        d->scroll_timer.stop();
        return;
    }
    const int y = contentsToViewport(d->mouse_pos).y();
    const int beyond = y < 0 ? y : y >= visibleHeight() ? y - visibleHeight() + 1 : 0;
    const int before = contentsY();
    if (beyond == 0)
        return;
    const int row = std::max(1, verticalScrollBar()->singleStep());
    scrollBy(0, std::clamp(beyond, -4 * row, 4 * row));
    d->mouse_pos.ry() += contentsY() - before;
    if (d->press == Press::Rubber)
        d->rubberSelect(d->mouse_pos);
    else if (d->press == Press::Item)
        d->dragSelect(d->mouse_pos);
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
