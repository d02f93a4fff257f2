// SPDX-License-Identifier: MIT
#include "qt3/q3scrollview.h"

#include <QDragEnterEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include <algorithm>

namespace {

constexpr int drag_border = 20;   // pixels from the edge at which a drag scrolls
constexpr int drag_interval = 50; // milliseconds between two steps

/// Hands a translated copy of a drag's event on, and takes over what was made of it.
template <typename Event>
void sendDrag(Q3ScrollView *view, Event *e, Event *translated, void (Q3ScrollView::*handler)(Event *))
{
    translated->setDropAction(e->dropAction());
    translated->ignore();
    (view->*handler)(translated);
    e->setDropAction(translated->dropAction());
    e->setAccepted(translated->isAccepted());
}

} // namespace

void Q3ScrollView::paintEvent(QPaintEvent *pe)
{
    viewportPaintEvent(pe);
}

void Q3ScrollView::viewportPaintEvent(QPaintEvent *pe)
{
    QPainter painter(viewport());
    const QRect clip = pe->rect().translated(position_);
    painter.setClipRegion(pe->region());
    drawContentsOffset(&painter, position_.x(), position_.y(), clip.x(), clip.y(), clip.width(), clip.height());
}

void Q3ScrollView::drawContentsOffset(QPainter *p, int offsetx, int offsety, int clipx, int clipy, int clipw,
                                      int cliph)
{
    p->translate(-offsetx, -offsety);
    drawContents(p, clipx, clipy, clipw, cliph);
}

void Q3ScrollView::drawContents(QPainter *, int, int, int, int) {}

bool Q3ScrollView::sendTranslated(QMouseEvent *e, void (Q3ScrollView::*handler)(QMouseEvent *))
{
    QMouseEvent translated(e->type(), e->localPos() + position_, e->windowPos(), e->screenPos(), e->button(),
                           e->buttons(), e->modifiers(), e->source());
    translated.setTimestamp(e->timestamp());
    (this->*handler)(&translated);
    e->setAccepted(translated.isAccepted());
    return translated.isAccepted();
}

void Q3ScrollView::mousePressEvent(QMouseEvent *e)
{
    sendTranslated(e, &Q3ScrollView::contentsMousePressEvent);
}

void Q3ScrollView::mouseReleaseEvent(QMouseEvent *e)
{
    sendTranslated(e, &Q3ScrollView::contentsMouseReleaseEvent);
}

void Q3ScrollView::mouseDoubleClickEvent(QMouseEvent *e)
{
    sendTranslated(e, &Q3ScrollView::contentsMouseDoubleClickEvent);
}

void Q3ScrollView::mouseMoveEvent(QMouseEvent *e)
{
    sendTranslated(e, &Q3ScrollView::contentsMouseMoveEvent);
}

void Q3ScrollView::contentsMousePressEvent(QMouseEvent *e)
{
    e->ignore();
}

void Q3ScrollView::contentsMouseReleaseEvent(QMouseEvent *e)
{
    e->ignore();
}

void Q3ScrollView::contentsMouseDoubleClickEvent(QMouseEvent *e)
{
    contentsMousePressEvent(e);
}

void Q3ScrollView::contentsMouseMoveEvent(QMouseEvent *e)
{
    e->ignore();
}

void Q3ScrollView::wheelEvent(QWheelEvent *e)
{
    QWheelEvent translated(e->position() + position_, e->globalPosition(), e->pixelDelta(), e->angleDelta(),
                           e->buttons(), e->modifiers(), e->phase(), e->inverted(), e->source());
    translated.setTimestamp(e->timestamp());
    const QPointer<Q3ScrollView> self(this);
    contentsWheelEvent(&translated);
    e->setAccepted(translated.isAccepted());
    if (self && !translated.isAccepted())
        QAbstractScrollArea::wheelEvent(e);
}

void Q3ScrollView::contentsWheelEvent(QWheelEvent *e)
{
    e->ignore();
}

bool Q3ScrollView::event(QEvent *e)
{
    // The area would ignore those of the mouse, and with them what its children leave to it.
    return e->type() == QEvent::ContextMenu ? QFrame::event(e) : QAbstractScrollArea::event(e);
}

bool Q3ScrollView::viewportEvent(QEvent *e)
{
    if (e->type() != QEvent::ContextMenu || contextMenuPolicy() != Qt::DefaultContextMenu)
        return QAbstractScrollArea::viewportEvent(e);
    auto *menu = static_cast<QContextMenuEvent *>(e);
    QContextMenuEvent translated(menu->reason(), menu->pos() + position_, menu->globalPos(), menu->modifiers());
    contentsContextMenuEvent(&translated);
    e->setAccepted(translated.isAccepted());
    return true;
}

void Q3ScrollView::contextMenuEvent(QContextMenuEvent *e)
{
    if (e->reason() != QContextMenuEvent::Keyboard) {
        e->ignore();
        return;
    }
    const QPoint at = viewport()->mapFrom(this, e->pos()) + position_;
    QContextMenuEvent translated(e->reason(), at, e->globalPos(), e->modifiers());
    contentsContextMenuEvent(&translated);
    e->setAccepted(translated.isAccepted());
}

void Q3ScrollView::contentsContextMenuEvent(QContextMenuEvent *e)
{
    e->ignore();
}

void Q3ScrollView::dragEnterEvent(QDragEnterEvent *e)
{
    QDragEnterEvent translated(e->pos() + position_, e->possibleActions(), e->mimeData(), e->mouseButtons(),
                               e->keyboardModifiers());
    sendDrag(this, e, &translated, &Q3ScrollView::contentsDragEnterEvent);
}

void Q3ScrollView::dragMoveEvent(QDragMoveEvent *e)
{
    QDragMoveEvent translated(e->pos() + position_, e->possibleActions(), e->mimeData(), e->mouseButtons(),
                              e->keyboardModifiers());
    const QPoint at = e->pos();
    sendDrag(this, e, &translated, &Q3ScrollView::contentsDragMoveEvent);
    drag_pos_ = at;
    const bool near_edge =
        !viewport()->rect().adjusted(drag_border, drag_border, -drag_border, -drag_border).contains(at);
    if (!drag_auto_scroll_ || !near_edge)
        drag_timer_.stop();
    else if (!drag_timer_.isActive())
        drag_timer_.start(drag_interval, this);
}

void Q3ScrollView::dragLeaveEvent(QDragLeaveEvent *e)
{
    drag_timer_.stop();
    contentsDragLeaveEvent(e);
}

void Q3ScrollView::dropEvent(QDropEvent *e)
{
    drag_timer_.stop();
    QDropEvent translated(e->posF() + position_, e->possibleActions(), e->mimeData(), e->mouseButtons(),
                          e->keyboardModifiers());
    sendDrag(this, e, &translated, &Q3ScrollView::contentsDropEvent);
}

void Q3ScrollView::contentsDragEnterEvent(QDragEnterEvent *event)
{
    event->ignore();
}

void Q3ScrollView::contentsDragMoveEvent(QDragMoveEvent *event)
{
    event->ignore();
}

void Q3ScrollView::contentsDragLeaveEvent(QDragLeaveEvent *) {}

void Q3ScrollView::contentsDropEvent(QDropEvent *event)
{
    event->ignore();
}

void Q3ScrollView::timerEvent(QTimerEvent *e)
{
    if (e->timerId() == drag_timer_.timerId())
        scrollNearEdge(drag_pos_);
    else
        QAbstractScrollArea::timerEvent(e);
}

/// One step towards the edge that a point is near to, the longer the nearer.
void Q3ScrollView::scrollNearEdge(const QPoint &viewport_pos)
{
    const auto step = [](int at, int length) {
        const int border = std::min(drag_border, length / 3);
        if (at < border)
            return at - border;
        return at >= length - border ? at - (length - border) + 1 : 0;
    };
    scrollBy(step(viewport_pos.x(), visibleWidth()), step(viewport_pos.y(), visibleHeight()));
}
