// SPDX-License-Identifier: MIT
//
// Keys and wheel.
#include "listviews/listviewwalk_p.h"
#include "listviews/tavilistview.h"
#include "treeviews/viewkeys_p.h"

#include <QKeyEvent>
#include <QWheelEvent>

#include <cstdlib>

void TaviListView::keyPressEvent(QKeyEvent *event)
{
    const QString text = event->text();
    if (isPrintable(text)) {
        if (last_key_time.elapsed() > search_pause)
            search_text.clear();
        search_text += text.toLower();
    }
    last_key_time.start();

    const QPointer<TaviListView> self(this);
    if (opensSearchWindow(event))
        showFilterFloater();
    else if (closesSearchWindow(event))
        closeFilterFloater();
    if (!self)
        return;

    if (isViewKey(event->key()))
        Q3ListView::keyPressEvent(event);
    else if (event->key() == Qt::Key_Right || event->key() == Qt::Key_Left)
        setSelectedOpen(event->key() == Qt::Key_Right);
    else if (!isPrintable(text))
        Q3ListView::keyPressEvent(event);
    else
        searchAhead();
}

void TaviListView::searchAhead()
{
    constexpr ComparisonFlags any_place = BeginsWith | Contains | ExactMatch;
    const int sorted_by = sortColumn();
    Q3ListViewItem *hit = sorted_by >= 0 ? findItem(search_text, sorted_by, any_place) : nullptr;
    for (int column = 0; !hit && column < columns(); ++column) {
        if (column != sorted_by)
            hit = findItem(search_text, column, any_place);
    }
    if (!hit)
        return;
    // A slot may delete the item, or the view.
    const QPointer<TaviListView> self(this);
    const Q3ListViewItemIterator place(hit);
    setCurrentItem(hit);
    if (self && place.current() == hit)
        selectAlone(this, hit);
}

void TaviListView::contentsWheelEvent(QWheelEvent *event)
{
    if (!(event->modifiers() & (Qt::ShiftModifier | Qt::AltModifier))) {
        Q3ListView::contentsWheelEvent(event);
        return;
    }
    // With Alt the platform has turned the wheel already.
    const QPoint angle = event->angleDelta();
    const int delta = std::abs(angle.x()) > std::abs(angle.y()) ? angle.x() : angle.y();
    scrollBy(-delta, 0);
    event->accept();
}
