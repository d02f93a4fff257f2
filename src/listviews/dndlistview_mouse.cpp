// SPDX-License-Identifier: MIT
//
// From the press of the mouse to the end of the drag.
#include "listviews/dndlistview.h"
#include "qt3/q3dragobject.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QMouseEvent>

#include <cstdlib>

void DNDListView::contentsMousePressEvent(QMouseEvent *event)
{
    if (!mouse_clicks_enabled)
        return;
    const QPointer<DNDListView> self(this);
    TaviListView::contentsMousePressEvent(event);
    if (!self)
        return;
    mouse_pressed = event->button() == Qt::LeftButton;
    press_position = event->pos();
    drag_started = false;
}

void DNDListView::contentsMouseReleaseEvent(QMouseEvent *event)
{
    if (!mouse_clicks_enabled)
        return;
    endDrag();
    TaviListView::contentsMouseReleaseEvent(event);
}

void DNDListView::contentsMouseDoubleClickEvent(QMouseEvent *event)
{
    if (mouse_clicks_enabled)
        TaviListView::contentsMouseDoubleClickEvent(event);
}

void DNDListView::contentsContextMenuEvent(QContextMenuEvent *event)
{
    if (mouse_clicks_enabled || event->reason() == QContextMenuEvent::Keyboard)
        TaviListView::contentsContextMenuEvent(event);
}

void DNDListView::contentsMouseMoveEvent(QMouseEvent *event)
{
    if (!mouse_clicks_enabled)
        return;
    const QPoint way = event->pos() - press_position;
    const int far = QApplication::startDragDistance();
    if (mouse_pressed && (event->buttons() & Qt::LeftButton) && !drag_started
        && (std::abs(way.x()) > far || std::abs(way.y()) > far)) {
        const QPointer<DNDListView> self(this);
        initDrag();
        if (!self)
            return;
    }
    if (!drag_started)
        TaviListView::contentsMouseMoveEvent(event);
}

void DNDListView::initDrag()
{
    if (dragging)
        return;
    Q3DragObject *const object = encode();
    if (!object)
        return;
    const QPointer<DNDListView> self(this);
    drag_started = dragging = true;
    const bool moved = object->dragMove();
    if (!self)
        return;
    dragging = false;
    if (!moved)
        clearSources(false);
    else if (removesAfterDragTo(Q3DragObject::target()))
        clearSources(true);
}

/// Whether sources go after a move that ended on a widget, null for another application.
bool DNDListView::removesAfterDragTo(const QWidget *target) const
{
    if (!target)
        return isAllowed(DRAG_OTHERAPPS_MOVES);
    // The view itself has applied its own rule when the drop came.
    const bool here = target == this || isAncestorOf(target);
    return isAllowed(DRAG_OTHERS_MOVES) && (!here || isAllowed(DRAG_SELF_MOVES));
}
