// SPDX-License-Identifier: MIT
#include "qt3/q3listview_p.h"

#include <QApplication>
#include <QMouseEvent>
#include <QScrollBar>

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
