// SPDX-License-Identifier: MIT
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreeitem_p.h"
#include "treeviews/tavitreemodel.h"

#include <algorithm>
#include <utility>
#include <vector>

void TaviTreeModel::reset()
{
    beginResetModel();
    endResetModel();
}

void TaviTreeModel::resetModel()
{
    reset();
}

void TaviTreeModel::flattenHierarchy()
{
    root_item->flattenHierarchy(nullptr);
}

int TaviTreeModel::clampedRow(int row, const QModelIndex &parent) const
{
    return std::max(0, std::min(row, rowCount(parent)));
}

void TaviTreeModel::clear()
{
    removeAllItems();
}

void TaviTreeModel::appendItem(TaviTreeItem *item)
{
    appendItem(item, nullptr);
}

void TaviTreeModel::appendItem(TaviTreeItem *item, TaviTreeItem *parent)
{
    if (!item)
        return;
    const QModelIndex under = indexOfParent(parent);
    const int row = rowCount(under);
    beginInsertRows(under, row, row);
    givenOrRoot(parent)->appendChild(item);
    endInsertRows();
}

void TaviTreeModel::appendItems(QList<TaviTreeItem *> items)
{
    appendItems(std::move(items), nullptr);
}

void TaviTreeModel::appendItems(QList<TaviTreeItem *> items, TaviTreeItem *parent)
{
    items.removeAll(nullptr);
    if (items.isEmpty())
        return;
    const QModelIndex under = indexOfParent(parent);
    const int row = rowCount(under);
    beginInsertRows(under, row, row + items.size() - 1);
    for (TaviTreeItem *const item : qAsConst(items))
        givenOrRoot(parent)->appendChild(item);
    endInsertRows();
}

void TaviTreeModel::insertItem(int row, TaviTreeItem *item)
{
    insertItem(row, item, nullptr);
}

void TaviTreeModel::insertItem(int row, TaviTreeItem *item, TaviTreeItem *parent)
{
    if (!item)
        return;
    const QModelIndex under = indexOfParent(parent);
    const int place = clampedRow(row, under);
    beginInsertRows(under, place, place);
    givenOrRoot(parent)->insertChild(place, item);
    endInsertRows();
}

void TaviTreeModel::insertItems(int row, const QList<TaviTreeItem *> &items)
{
    insertItems(row, items, nullptr);
}

void TaviTreeModel::insertItems(int row, const QList<TaviTreeItem *> &items, TaviTreeItem *parent)
{
    if (items.isEmpty())
        return;
    const QModelIndex under = indexOfParent(parent);
    const int place = clampedRow(row, under);
    beginInsertRows(under, place, place + items.size() - 1);
    TaviTreeItemAccess::insertChildren(givenOrRoot(parent), place, items);
    endInsertRows();
}

void TaviTreeModel::removeItem(TaviTreeItem *item)
{
    removeItem(item, nullptr);
}

void TaviTreeModel::removeItem(TaviTreeItem *item, TaviTreeItem *parent)
{
    if (!item)
        return;
    const QModelIndex under = indexOfParent(parent);
    const int row = item->row();
    beginRemoveRows(under, row, row);
    givenOrRoot(parent)->removeChild(item);
    endRemoveRows();
}

void TaviTreeModel::removeItem(int id)
{
    removeItem(id, nullptr);
}

void TaviTreeModel::removeItem(int id, TaviTreeItem *parent)
{
    if (TaviTreeItem *const item = itemFromId(id))
        removeItem(item, parent);
}

void TaviTreeModel::removeItems(QList<TaviTreeItem *> items)
{
    removeItems(std::move(items), nullptr);
}

void TaviTreeModel::removeItems(QList<TaviTreeItem *> items, TaviTreeItem *parent)
{
    if (items.isEmpty())
        return;
    // An entry may lie below another one, or be deleted by another one's destructor: only numbers are kept.
    beginResetModel();
    std::vector<int> doomed;
    doomed.reserve(static_cast<std::size_t>(items.size()));
    const QList<TaviTreeItem *> taken = TaviTreeItemAccess::takeChildren(givenOrRoot(parent), items);
    for (const TaviTreeItem *const item : taken) {
        if (item)
            doomed.push_back(item->id());
    }
    for (const int id : doomed)
        delete TaviTreeItemAccess::itemById(id);
    endResetModel();
}

void TaviTreeModel::removeAllItems()
{
    removeAllItems(nullptr);
}

void TaviTreeModel::removeAllItems(TaviTreeItem *parent)
{
    const QModelIndex under = indexOfParent(parent);
    beginRemoveRows(under, 0, rowCount(under) - 1);
    givenOrRoot(parent)->removeAllChildren();
    endRemoveRows();
}

TaviTreeItem *TaviTreeModel::takeItem(TaviTreeItem *item)
{
    return takeItem(item, nullptr);
}

TaviTreeItem *TaviTreeModel::takeItem(TaviTreeItem *item, TaviTreeItem *parent)
{
    if (!item)
        return nullptr;
    const QModelIndex under = indexOfParent(parent);
    const int row = item->row();
    beginRemoveRows(under, row, row);
    TaviTreeItem *const taken = givenOrRoot(parent)->takeChild(item);
    endRemoveRows();
    return taken;
}

QList<TaviTreeItem *> TaviTreeModel::takeItems(const QList<TaviTreeItem *> &items)
{
    return takeItems(items, nullptr);
}

QList<TaviTreeItem *> TaviTreeModel::takeItems(const QList<TaviTreeItem *> &items, TaviTreeItem *parent)
{
    if (items.isEmpty())
        return {};
    beginResetModel();
    const QList<TaviTreeItem *> taken = TaviTreeItemAccess::takeChildren(givenOrRoot(parent), items);
    endResetModel();
    return taken;
}

QList<TaviTreeItem *> TaviTreeModel::takeAllItems()
{
    return takeAllItems(nullptr);
}

QList<TaviTreeItem *> TaviTreeModel::takeAllItems(TaviTreeItem *parent)
{
    const QModelIndex under = indexOfParent(parent);
    beginRemoveRows(under, 0, rowCount(under) - 1);
    // The rows of the top level, whatever the parent: see the header.
    const QList<TaviTreeItem *> taken = TaviTreeItemAccess::takeChildren(givenOrRoot(parent), root_item->children());
    endRemoveRows();
    return taken;
}
