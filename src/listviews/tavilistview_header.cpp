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
    const auto entryOf = [](const ColumnItem *column, int place, bool in_show_list) {
        auto *const entry = new ConfigOrderItem;
        entry->setItemInShowList(in_show_list);
        entry->setData(0, column->title, Qt::DisplayRole);
        if (!column->icon.isNull())
            entry->setData(0, column->itemPixmap(), Qt::DecorationRole);
        entry->setItemID(place);
        entry->setItemVisible(column->isItemVisible());
        return entry;
    };
    QList<ConfigOrderItem *> all;
    QList<ConfigOrderItem *> shown;
    for (int place = 0; place < fixed_column_items.size(); ++place)
        all.append(entryOf(fixed_column_items.at(place), place, false));
    for (ColumnItem *const column : qAsConst(column_items)) {
        if (column->isItemVisible())
            shown.append(entryOf(column, fixed_column_items.indexOf(column), true));
    }

    const QPointer<TaviListView> self(this);
    const QList<ColumnItem *> columns_before = fixed_column_items;
    TaviConfigOrder order(tr("Configure List Headers"), this, "header_config");
    const bool accepted = order.reorder(all, shown, false, nullptr, "taviconfig_order_dlg") == QDialog::Accepted;
    // Whatever ran while the dialog was open may have taken the view away, or columns.
    if (self && accepted && fixed_column_items == columns_before) {
        QList<ColumnItem *> ordered;
        for (const ConfigOrderItem *const entry : qAsConst(shown))
            ordered.append(fixed_column_items.at(entry->itemID()));
        for (ColumnItem *const column : qAsConst(fixed_column_items)) {
            column->setItemVisible(ordered.contains(column));
            if (!column->isItemVisible())
                ordered.append(column);
        }
        column_items = ordered;
        rebuildHeaders();
    }
    qDeleteAll(shown);
}
