// SPDX-License-Identifier: MIT
#include "listviews/listviewwalk_p.h"
#include "listviews/tavilistviewbuddies.h"

#include <QTimer>

TaviListViewSignalBuddy::TaviListViewSignalBuddy()
{
    setObjectName(QStringLiteral("TaviListViewSignalBuddy"));
}

TaviListViewSignalBuddy::~TaviListViewSignalBuddy() = default;

void TaviListViewSignalBuddy::setListView(Q3ListView *view)
{
    init();
    list_view = view;
    if (!view)
        return;
    connect(view, SIGNAL(contextMenuRequested(Q3ListViewItem *, QPoint, int)), this,
            SLOT(contextMenuRequested_slot(Q3ListViewItem *, QPoint, int)));
    connect(view, SIGNAL(doubleClicked(Q3ListViewItem *, QPoint, int)), this,
            SLOT(doubleClicked_slot(Q3ListViewItem *, QPoint, int)));
    connect(view, SIGNAL(selectionChanged(Q3ListViewItem *)), this, SLOT(selectionChanged_slot(Q3ListViewItem *)));
    connect(view, SIGNAL(selectionChanged()), this, SLOT(selectionChanged_slot()));
    connect(view, SIGNAL(currentChanged(Q3ListViewItem *)), this, SLOT(currentChanged_slot(Q3ListViewItem *)));
    connect(view, SIGNAL(clicked(Q3ListViewItem *)), this, SLOT(clicked_slot(Q3ListViewItem *)));
    connect(view, SIGNAL(returnPressed(Q3ListViewItem *)), this, SLOT(returnPressed_slot(Q3ListViewItem *)));
}

Q3ListView *TaviListViewSignalBuddy::listView() const
{
    return list_view;
}

void TaviListViewSignalBuddy::init()
{
    if (list_view)
        list_view->disconnect(this);
    context_item = double_click_item = selection_item = current_item = clicked_item = return_item = nullptr;
}

/// The item, or null if it has gone since the signal.
Q3ListViewItem *TaviListViewSignalBuddy::inView(Q3ListViewItem *item) const
{
    return item && list_view && isInView(list_view, item) ? item : nullptr;
}

void TaviListViewSignalBuddy::contextMenuRequested_slot(Q3ListViewItem *item, const QPoint &pos, int col)
{
    context_item = item;
    context_pos = pos;
    context_column = col;
    QTimer::singleShot(0, this, &TaviListViewSignalBuddy::contextMenuRequested_timerEvent);
}

void TaviListViewSignalBuddy::contextMenuRequested_timerEvent()
{
    Q_EMIT contextMenuRequested(inView(context_item), context_pos, context_column);
}

void TaviListViewSignalBuddy::doubleClicked_slot(Q3ListViewItem *item, const QPoint &pos, int col)
{
    double_click_item = item;
    double_click_pos = pos;
    double_click_column = col;
    QTimer::singleShot(0, this, &TaviListViewSignalBuddy::doubleClicked_timerEvent);
}

void TaviListViewSignalBuddy::doubleClicked_timerEvent()
{
    Q_EMIT doubleClicked(inView(double_click_item), double_click_pos, double_click_column);
}

void TaviListViewSignalBuddy::selectionChanged_slot(Q3ListViewItem *item)
{
    selection_item = item;
    QTimer::singleShot(0, this, &TaviListViewSignalBuddy::selectionChanged_timerEvent);
}

void TaviListViewSignalBuddy::selectionChanged_timerEvent()
{
    Q_EMIT selectionChanged(inView(selection_item));
}

void TaviListViewSignalBuddy::selectionChanged_slot()
{
    QTimer::singleShot(0, this, &TaviListViewSignalBuddy::selectionChanged_timerEvent_noParam);
}

void TaviListViewSignalBuddy::selectionChanged_timerEvent_noParam()
{
    Q_EMIT selectionChanged();
}

void TaviListViewSignalBuddy::currentChanged_slot(Q3ListViewItem *item)
{
    current_item = item;
    QTimer::singleShot(0, this, &TaviListViewSignalBuddy::currentChanged_timerEvent);
}

void TaviListViewSignalBuddy::currentChanged_timerEvent()
{
    Q_EMIT currentChanged(inView(current_item));
}

void TaviListViewSignalBuddy::clicked_slot(Q3ListViewItem *item)
{
    clicked_item = item;
    QTimer::singleShot(0, this, &TaviListViewSignalBuddy::clicked_timerEvent);
}

void TaviListViewSignalBuddy::clicked_timerEvent()
{
    Q_EMIT clicked(inView(clicked_item));
}

void TaviListViewSignalBuddy::returnPressed_slot(Q3ListViewItem *item)
{
    return_item = item;
    QTimer::singleShot(0, this, &TaviListViewSignalBuddy::returnPressed_timerEvent);
}

void TaviListViewSignalBuddy::returnPressed_timerEvent()
{
    Q_EMIT returnPressed(inView(return_item));
}
