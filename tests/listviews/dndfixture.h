// SPDX-License-Identifier: MIT
#ifndef TESTS_LISTVIEWS_DNDFIXTURE_H
#define TESTS_LISTVIEWS_DNDFIXTURE_H

#include "listviews/dndlistview.h"
#include "qt3/q3dragobject.h"

#include <QDragEnterEvent>
#include <QMimeData>
#include <QtTest>

#include <functional>
#include <memory>

/// What a list is told by a drag, for its viewport. Events go past the application, which would want a real drag.
template <typename View>
class DragTarget : public View
{
public:
    using View::View;

    bool enter(const QMimeData &mime, const QPoint &at = QPoint(10, 10))
    {
        QDragEnterEvent event(at, Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        return take(event);
    }
    bool moveOver(const QMimeData &mime, const QPoint &at)
    {
        QDragMoveEvent event(at, Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        return take(event);
    }
    void leave()
    {
        QDragLeaveEvent event;
        this->viewportEvent(&event);
    }
    bool drop(const QMimeData &mime, const QPoint &at, Qt::DropAction action = Qt::MoveAction)
    {
        QDropEvent event(at, Qt::CopyAction | Qt::MoveAction, &mime, Qt::LeftButton, Qt::NoModifier);
        event.setDropAction(action);
        return take(event);
    }
    /// As a drag does: it moves over the place before it is dropped there.
    bool dragAndDrop(const QMimeData &mime, const QPoint &at)
    {
        enter(mime, at);
        moveOver(mime, at);
        return drop(mime, at);
    }
    DNDIndicator *mark() const { return this->viewport()->template findChild<DNDIndicator *>("DNDindicator"); }
    Q3ListViewItem *at(int row) const
    {
        Q3ListViewItem *item = this->firstChild();
        for (; item && row > 0; --row)
            item = item->nextSibling();
        return item;
    }
    /// A point in a row of the viewport: 0.0 is its upper edge, 1.0 the lower one.
    QPoint inRow(int row, double down = 0.5) const
    {
        const QRect rect = this->itemRect(at(row));
        return {30, rect.top() + int(rect.height() * down)};
    }
    bool showAndWait(const QPoint &place = QPoint(100, 100))
    {
        this->move(place);
        this->show();
        this->activateWindow();
        if (!QTest::qWaitForWindowActive(this))
            return false;
        QCoreApplication::processEvents();
        return true;
    }

private:
    template <typename Event>
    bool take(Event &event)
    {
        event.ignore();
        const QPointer<View> self(this);
        this->viewportEvent(&event);
        return event.isAccepted();
    }
};

/// A list that takes "text/x-ink" and notes what it is asked to do.
class DNDProbe : public DragTarget<DNDListView>
{
public:
    explicit DNDProbe(int rows = 5, QWidget *parent = nullptr) : DragTarget(parent, "probe")
    {
        addColumn("Ink", 120);
        Q3ListViewItem *last = nullptr;
        for (int row = 0; row < rows; ++row)
            last = new Q3ListViewItem(this, last, QString(QChar('a' + row)));
        resize(300, 200);
    }
    bool canDecode(const QDropEvent *event) override { return understands && event->mimeData()->hasFormat(type); }
    Q3DragObject *encode() override
    {
        ++asked;
        if (!has_something)
            return nullptr;
        auto *drag = new Q3StoredDrag(type, this, "ink");
        drag->setEncodedData("cyan");
        return drag;
    }
    int decode(Q3ListViewItem *after, const QDropEvent *event) override
    {
        calls << "decode " + event->mimeData()->data(type) + " after " + (after ? after->text(0) : "null");
        if (const auto act = during_decode)
            act(); // perhaps the end of this list
        return 1;
    }
    void clearSources(bool remove) override { calls << (remove ? "remove" : "keep"); }

    bool understands = true;
    bool has_something = true;
    int asked = 0;
    QStringList calls;
    std::function<void()> during_decode;
    static constexpr const char *type = "text/x-ink";
};

/// A colour to be dropped on it.
struct Ink : QMimeData {
    Ink() { setData(DNDProbe::type, "cyan"); }
};

#endif
