// SPDX-License-Identifier: MIT
//
// What the user does to the columns: the header's menu, drags and widths.
#include "listviews/tavilistview.h"
#include "qt3/q3header.h"
#include "treeviews/columnmenu_p.h"
#include "treeviews/taviconfigorder.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>

void TaviListView::appendAction(QAction *action)
{
    if (action)
        extra_actions.append(action);
}

void TaviListView::removeAction(QAction *action)
{
    if (action)
        extra_actions.removeOne(action);
}

void TaviListView::removeAllActions()
{
    extra_actions.clear();
}

void TaviListView::contextMenuEvent(QContextMenuEvent *event)
{
    if (!header_menu_enabled || childAt(event->pos()) != header()) {
        Q3ListView::contextMenuEvent(event);
        return;
    }
    event->accept();
    const QPointer<QMenu> menu = new QMenu(this);
    addConfigureEntry(menu, tr("Configure Headers"), this, SLOT(configureHeaders()));
    for (const ColumnItem *const item : qAsConst(fixed_column_items))
        addColumnEntry(menu, item->icon, item->title, item->id, item->isItemVisible());
    extra_actions.removeAll(nullptr); // those that were deleted
    if (!extra_actions.isEmpty())
        menu->addSeparator();
    for (const QPointer<QAction> &action : qAsConst(extra_actions))
        menu->addAction(action);
    connect(menu, SIGNAL(triggered(QAction *)), this, SLOT(changeHeaders(QAction *)));
    menu->exec(event->globalPos());
    delete menu; // gone already if the view is
}

void TaviListView::changeHeaders(QAction *action)
{
    // The application's own actions may carry any data.
    if (!action || extra_actions.contains(action))
        return;
    bool is_number = false;
    const int id = action->data().toInt(&is_number);
    if (is_number)
        changeHeaders(id);
}

void TaviListView::changeHeaders(int mid)
{
    ColumnItem *const item = mid < 0 ? nullptr : columnItem(mid);
    if (!item)
        return;
    item->setItemVisible(!item->isItemVisible());
    rebuildHeaders();
}

void TaviListView::indexChange(int section, int fromIndex, int toIndex)
{
    Q_UNUSED(section)
    moveColumnItem(fromIndex, toIndex);
}

/// Moves the column that was shown at one index into the gap before another.
void TaviListView::moveColumnItem(int fromIndex, int toIndex)
{
    if (!header_menu_enabled || fromIndex < 0 || toIndex < 0 || fromIndex == toIndex)
        return;
    const int from = mapToColumnItemIndex(fromIndex);
    int to = mapToColumnItemIndex(toIndex);
    if (from < 0 || from >= column_items.size())
        return;
    if (to < 0)
        to = column_items.size(); // behind hidden ones, too
    ColumnItem *const item = column_items.takeAt(from);
    column_items.insert(from < to ? to - 1 : to, item);
}

void TaviListView::sizeChange(int section, int oldSize, int newSize)
{
    Q_UNUSED(oldSize)
    if (header_menu_enabled)
        resizeColumnItem(header()->mapToIndex(section), newSize);
}

void TaviListView::configureHeaders()
{
    if (header_order)
        return;
    QList<TaviConfigOrderItem *> all;
    QList<TaviConfigOrderItem *> shown;
    for (ColumnItem *const column : qAsConst(fixed_column_items))
        all.append(column);
    for (ColumnItem *const column : qAsConst(column_items))
        shown.append(column);
    TaviConfigOrder order(tr("Configure List Headers"), this, "header_config");
    header_order = &order;
    // The view, and with it the dialog, may go meanwhile.
    if (order.reorder(all, shown, false, nullptr, "taviconfig_order_dlg") != QDialog::Accepted)
        return;
    QList<ColumnItem *> ordered;
    for (TaviConfigOrderItem *const column : qAsConst(shown))
        ordered.append(static_cast<ColumnItem *>(column));
    for (ColumnItem *const column : qAsConst(column_items)) {
        if (!ordered.contains(column))
            ordered.append(column); // one that came meanwhile
    }
    column_items = ordered;
    rebuildHeaders();
}
