// SPDX-License-Identifier: MIT
//
// What is dragged over the view, and dropped on it.
#include "listviews/dndlistview.h"

#include <QDragEnterEvent>
#include <QDropEvent>

bool DNDListView::takes(const QDropEvent *event)
{
    return canDecode(event) && isAllowed(qobject_cast<QWidget *>(event->source()));
}

void DNDListView::contentsDragEnterEvent(QDragEnterEvent *event)
{
    indicator->hide();
    indicator->setDropBetweenMode(drop_between);
    if (drop_between)
        indicator->resize(visibleWidth(), DNDIndicator::line_height);
    if (takes(event))
        event->acceptProposedAction();
    else
        event->ignore();
}

void DNDListView::contentsDragMoveEvent(QDragMoveEvent *event)
{
    if (!takes(event)) {
        event->ignore();
        indicator->hide();
        return;
    }
    const QPoint at = contentsToViewport(event->pos());
    placeIndicator(itemAt(at), at.y());
    indicator->show();
    indicator->raise();
    event->acceptProposedAction();
}

/// The row of an item in the viewport, be it in sight or not.
QRect DNDListView::rowRect(const Q3ListViewItem *item) const
{
    return {0, item->itemPos() - contentsY(), visibleWidth(), item->height()};
}

/// Puts the mark where a drop at height y, on the item or beside all, would go.
void DNDListView::placeIndicator(Q3ListViewItem *item, int y)
{
    if (drop_between) {
        placeOnLine(item ? item : lastVisibleItem(), y);
        return;
    }
    if (item) {
        indicator->setGeometry(rowRect(item));
        return;
    }
    const Q3ListViewItem *const last = lastVisibleItem();
    const int top = last ? rowRect(last).bottom() : 0;
    indicator->setGeometry(0, top, visibleWidth(), visibleHeight() - top);
}

/// Puts the mark on the line above or below an item, so that the middle of its 11 pixels is on the line.
void DNDListView::placeOnLine(Q3ListViewItem *item, int y)
{
    if (!item) {
        drop_above = false;
        indicator->move(0, 0);
        return;
    }
    const QRect row = rowRect(item);
    drop_above = y < row.top() + row.height() / 2;
    indicator->move(row.left(), drop_above ? row.top() - 5 : row.bottom() - 4);
}

void DNDListView::contentsDragLeaveEvent(QDragLeaveEvent *)
{
    indicator->hide();
}

void DNDListView::contentsDropEvent(QDropEvent *event)
{
    const QPointer<DNDListView> self(this);
    bool removes = false;
    if (takes(event)) {
        if (event->source() == this && event->dropAction() == Qt::MoveAction) {
            event->acceptProposedAction();
            removes = isAllowed(DRAG_SELF_MOVES);
        }
        Q3ListViewItem *item = itemAt(contentsToViewport(event->pos()));
        if (!item)
            item = lastVisibleItem();
        if (item && drop_between && drop_above)
            item = item->itemAbove();
        decode(item, event);
        event->acceptProposedAction();
    } else {
        event->ignore();
    }
    if (!self)
        return;
    indicator->hide();
    if (removes)
        clearSources(true);
}
