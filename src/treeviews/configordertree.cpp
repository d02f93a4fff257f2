// SPDX-License-Identifier: MIT
#include "treeviews/configorderrows_p.h"
#include "treeviews/taviconfigorder.h"

#include <QMouseEvent>

#include <algorithm>

ConfigOrderTree::ConfigOrderTree(QWidget *parent) : TaviTreeView(parent)
{
    setSortingEnabled(false);
    setSelectionMode(QAbstractItemView::ExtendedSelection);
}

ConfigOrderTree::~ConfigOrderTree() = default;

void ConfigOrderTree::setModel(TaviTreeModel *model)
{
    // By name: the signal may be that of any model, and a subclass may have the slot.
    const auto tells = [](const TaviTreeModel *source) {
        return source && source->metaObject()->indexOfSignal("selfDroppedSelectedItemsAt(int)") >= 0;
    };
    if (tells(config_model))
        disconnect(config_model, SIGNAL(selfDroppedSelectedItemsAt(int)), this, SLOT(moveSelectedItemsTo(int)));
    config_model = model;
    if (tells(config_model))
        connect(config_model, SIGNAL(selfDroppedSelectedItemsAt(int)), this, SLOT(moveSelectedItemsTo(int)));
    TaviTreeView::setModel(model);
}

void ConfigOrderTree::setFixedItems(bool fixed)
{
    setDragDropMode(QAbstractItemView::DragDrop);
    setDNDFlags(fixed ? DND_FROM_WIDGETS : DND_FROM_SELF | DND_FROM_WIDGETS | DND_MOVE_SELF);
}

ConfigOrderItem *ConfigOrderTree::setItemVisible(int item_id, bool visible)
{
    for (QModelIndex index = model()->index(0, 0); index.isValid(); index = indexBelow(index)) {
        auto *const item = qobject_cast<ConfigOrderItem *>(TaviTreeModel::itemFromIndex(index));
        if (!item || item->itemID() != item_id)
            continue;
        item->setItemVisible(visible);
        return item;
    }
    return nullptr;
}

QList<TaviTreeItem *> ConfigOrderTree::selectedSourceItems() const
{
    if (!config_model)
        return {};
    QList<TaviTreeItem *> items = config_model->itemsFromIndexList(selectedRows(0));
    // Rows of a flat list; what lies deeper has no place in an order.
    const auto is_deeper = [this](const TaviTreeItem *item) {
        return config_model->itemAt(item->row()) != item;
    };
    items.erase(std::remove_if(items.begin(), items.end(), is_deeper), items.end());
    return items;
}

namespace {

QList<TaviTreeItem *> alive(const QList<QPointer<TaviTreeItem>> &items)
{
    QList<TaviTreeItem *> left;
    for (const QPointer<TaviTreeItem> &item : items) {
        if (item)
            left.append(item);
    }
    return left;
}

bool isGreyed(const QModelIndex &index)
{
    return index.isValid() && !(index.flags() & Qt::ItemIsEnabled);
}

QVector<int> rowsOf(const QList<TaviTreeItem *> &items)
{
    QVector<int> rows;
    for (const TaviTreeItem *const item : items)
        rows.append(item->row());
    return rows;
}

} // namespace

void ConfigOrderTree::upSelectedItems()
{
    moveSelectedItems(Direction::Up);
}

void ConfigOrderTree::downSelectedItems()
{
    moveSelectedItems(Direction::Down);
}

void ConfigOrderTree::moveSelectedItems(Direction direction)
{
    const QList<TaviTreeItem *> selected = selectedSourceItems();
    if (selected.isEmpty())
        return;
    const QVector<int> rows = rowsOf(selected);
    const QVector<int> places =
        direction == Direction::Up ? rowsMovedUp(rows) : rowsMovedDown(rows, config_model->rowCount());
    ItemList items;
    for (TaviTreeItem *const item : selected)
        items.append(item);
    const QPointer<ConfigOrderTree> self(this);
    const QPointer<TaviTreeModel> target(config_model);
    for (int step = 0; step < items.size(); ++step) {
        // The row that goes first makes room for the next one.
        const int at = direction == Direction::Up ? step : items.size() - 1 - step;
        // Whoever hears of a move may delete rows.
        if (!target || !items.at(at) || places.at(at) == rows.at(at))
            continue;
        if (TaviTreeItem *const taken = target->takeItem(items.at(at)))
            target->insertItem(places.at(at), taken);
    }
    if (self)
        selectMoved(items, direction);
}

void ConfigOrderTree::moveSelectedItemsTo(int row)
{
    const QList<TaviTreeItem *> selected = selectedSourceItems();
    if (selected.isEmpty())
        return;
    const QVector<int> rows = rowsOf(selected);
    const int target = rowAfterTaking(rows, row);
    const QPointer<ConfigOrderTree> self(this);
    const QPointer<TaviTreeModel> into(config_model);
    ItemList items;
    for (TaviTreeItem *const item : selected)
        items.append(item);
    into->takeItems(selected);
    // Whoever hears of the reset may delete what was taken, and the model.
    const QList<TaviTreeItem *> taken = alive(items);
    if (!into) {
        qDeleteAll(taken);
        return;
    }
    into->insertItems(target, taken);
    if (self)
        selectMoved(items, target < rows.first() ? Direction::Up : Direction::Down);
}

void ConfigOrderTree::mousePressEvent(QMouseEvent *event)
{
    pressed_on_greyed = isGreyed(indexAt(event->pos()));
    TaviTreeView::mousePressEvent(event);
}

void ConfigOrderTree::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (!isGreyed(indexAt(event->pos())))
        TaviTreeView::mouseDoubleClickEvent(event);
}

void ConfigOrderTree::startDrag(Qt::DropActions actions)
{
    if (!pressed_on_greyed)
        TaviTreeView::startDrag(actions);
}

void ConfigOrderTree::selectMoved(const ItemList &items, Direction direction)
{
    clearSelection();
    const QList<TaviTreeItem *> moved = alive(items);
    selectItems(moved);
    if (moved.isEmpty() || !config_model)
        return;
    const QModelIndex lead =
        mapFromSource(config_model->indexFromItem(direction == Direction::Up ? moved.first() : moved.last()));
    selectionModel()->setCurrentIndex(lead, QItemSelectionModel::NoUpdate);
    scrollTo(lead);
}

int ConfigOrderTree::currentRow() const
{
    return selectionModel()->currentIndex().row();
}

void ConfigOrderTree::setCurrentRow(int row)
{
    const int last = model()->rowCount() - 1;
    if (row >= 0 && last >= 0)
        selectionModel()->setCurrentIndex(model()->index(std::min(row, last), 0), QItemSelectionModel::NoUpdate);
}
