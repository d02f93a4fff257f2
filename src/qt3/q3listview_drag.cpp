// SPDX-License-Identifier: MIT
#include "qt3/q3dragobject.h"
#include "qt3/q3listview_p.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QMimeData>

namespace {

constexpr int open_delay = 750; // milliseconds

/// The data of a drag's event in the form that items ask.
class EventSource : public QMimeSource
{
public:
    explicit EventSource(const QDropEvent *event) : data_(event->mimeData())
    {
        for (const QString &one : data_->formats())
            formats_.append(one.toLatin1());
    }
    const char *format(int i) const override
    {
        return i >= 0 && i < formats_.size() ? formats_.at(i).constData() : nullptr;
    }
    QByteArray encodedData(const char *mimeType) const override { return data_->data(QString::fromLatin1(mimeType)); }

private:
    const QMimeData *data_;
    QList<QByteArray> formats_;
};

} // namespace

Q3DragObject *Q3ListView::dragObject()
{
    return nullptr;
}

void Q3ListView::startDrag()
{
    if (Q3DragObject *object = dragObject())
        object->drag();
}

/// The item on which a drag is, if it takes drops at all.
static Q3ListViewItem *targetAt(const Q3ListView *view, const QPoint &contents_pos)
{
    return view->itemAt(view->contentsToViewport(contents_pos));
}

/// A drag that stays on a closed item wants to go on inside.
void Q3ListViewPrivate::dragOver(Q3ListViewItem *item)
{
    if (item && item->isEnabled() && !item->isOpen() && hasExpander(item))
        open_timer.start(open_delay, q);
    else
        open_timer.stop();
}

void Q3ListViewPrivate::openUnderDrag()
{
    open_timer.stop();
    q->setOpen(drop_target, true);
}

void Q3ListView::contentsDragEnterEvent(QDragEnterEvent *e)
{
    contentsDragMoveEvent(e);
}

void Q3ListView::contentsDragMoveEvent(QDragMoveEvent *e)
{
    const QPointer<Q3ListView> self(this);
    const Q3ListViewItemGuard item(targetAt(this, e->pos()));
    if (d->drop_target != item) {
        const Q3ListViewItemGuard left(d->drop_target);
        d->drop_target = item;
        d->dragOver(item);
        if (left)
            left->dragLeft();
        if (self && item)
            item->dragEntered();
    }
    if (!self)
        return;
    const bool accepts = item ? item->isEnabled() && item->dropEnabled()
                                    && item->acceptDrop(&static_cast<const QMimeSource &>(EventSource(e)))
                              : viewport()->acceptDrops();
    if (accepts)
        e->acceptProposedAction();
    else
        e->ignore();
}

void Q3ListView::contentsDragLeaveEvent(QDragLeaveEvent *)
{
    const Q3ListViewItemGuard left(d->drop_target);
    d->drop_target = nullptr;
    d->open_timer.stop();
    if (left)
        left->dragLeft();
}

void Q3ListView::contentsDropEvent(QDropEvent *e)
{
    d->drop_target = nullptr;
    d->open_timer.stop();
    Q3ListViewItem *item = targetAt(this, e->pos());
    if (!item) {
        e->acceptProposedAction();
        Q_EMIT dropped(e);
        return;
    }
    const EventSource source(e);
    if (!item->isEnabled() || !item->dropEnabled() || !item->acceptDrop(&source)) {
        e->ignore();
        return;
    }
    e->acceptProposedAction();
    item->dropped(e);
}
