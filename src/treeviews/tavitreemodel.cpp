// SPDX-License-Identifier: MIT
#include "treeviews/tavitreemodel.h"

#include "treeviews/tavioverride_p.h"
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreeitem_p.h"
#include "treeviews/tavitreemodel_p.h"

#include <QDataStream>
#include <QMimeData>

#include <iterator>

namespace {

TAVI_DEFINE_OVERRIDES(dataIsOverridden, TaviTreeModel, data)
TAVI_DEFINE_OVERRIDES(indexIsOverridden, TaviTreeModel, index)
TAVI_DEFINE_OVERRIDES(rowCountIsOverridden, TaviTreeModel, rowCount)
TAVI_DEFINE_OVERRIDES(columnCountIsOverridden, TaviTreeModel, columnCount)
TAVI_DEFINE_OVERRIDES(hasChildrenIsOverridden, QAbstractItemModel, hasChildren)
TAVI_DEFINE_OVERRIDES(matchIsOverridden, QAbstractItemModel, match)

} // namespace

bool TaviTreeModelAccess::overridesData(const TaviTreeModel *model)
{
    return dataIsOverridden(model);
}

bool TaviTreeModelAccess::overridesStructure(const TaviTreeModel *model)
{
    return indexIsOverridden(model) || rowCountIsOverridden(model) || columnCountIsOverridden(model)
           || hasChildrenIsOverridden(model);
}

bool TaviTreeModelAccess::isPlain(const TaviTreeModel *model)
{
    return !dataIsOverridden(model) && !overridesStructure(model);
}

TaviModelIndexComparer::TaviModelIndexComparer(QObject *parent) : QObject(parent) {}

const char *const TaviTreeModel::PROP_MODEL_ID = "TaviTreeModel::model_id";
int TaviTreeModel::model_id_ticket = 0;

TaviTreeModel::TaviTreeModel(QObject *parent) : QAbstractItemModel(parent), root_item(new TaviTreeItem(nullptr))
{
    construct();
}

TaviTreeModel::TaviTreeModel(const QList<QVariant> &header, QObject *parent)
    : QAbstractItemModel(parent), root_item(new TaviTreeItem(header, nullptr))
{
    construct();
}

void TaviTreeModel::construct()
{
    model_id = ++model_id_ticket;
    TaviTreeItem::subscribeDataChanged(this, SLOT(itemChanged(int)));
}

TaviTreeModel::~TaviTreeModel()
{
    delete root_item;
    root_item = nullptr;
}

TaviTreeItem *TaviTreeModel::itemFromIndex(const QModelIndex &index)
{
    const QVariant pointer = index.model()->data(index, TaviTreeItem::PointerRole);
    return pointer.userType() == QMetaType::VoidStar ? static_cast<TaviTreeItem *>(pointer.value<void *>()) : nullptr;
}

TaviTreeItem *TaviTreeModel::itemOf(const QModelIndex &index) const
{
    if (index.model() == this && !dataIsOverridden(this)) {
        auto *const item = static_cast<TaviTreeItem *>(index.internalPointer());
        if (!item || !TaviTreeItemAccess::overridesData(item))
            return item;
    }
    return itemFromIndex(index);
}

TaviTreeItem *TaviTreeModel::itemOrRoot(const QModelIndex &parent) const
{
    return parent.isValid() ? itemOf(parent) : root_item;
}

TaviTreeItem *TaviTreeModel::givenOrRoot(TaviTreeItem *parent) const
{
    return parent ? parent : root_item;
}

QModelIndex TaviTreeModel::index(int row, int column, const QModelIndex &parent) const
{
    if (rowCountIsOverridden(this) || columnCountIsOverridden(this)) {
        if (!hasIndex(row, column, parent))
            return {};
    } else if (row < 0 || column < 0 || parent.column() > 0) {
        return {};
    }
    TaviTreeItem *const parent_item = itemOrRoot(parent);
    if (!parent_item)
        return {};
    if (!rowCountIsOverridden(this) && row >= parent_item->childCount())
        return {};
    if (!columnCountIsOverridden(this) && column >= parent_item->columnCount())
        return {};
    TaviTreeItem *const item = parent_item->child(row);
    return item ? createIndex(row, column, item) : QModelIndex();
}

QModelIndex TaviTreeModel::parent(const QModelIndex &index) const
{
    TaviTreeItem *const item = index.isValid() ? itemOf(index) : nullptr;
    TaviTreeItem *const parent_item = item ? item->parentTreeItem() : nullptr;
    if (!parent_item || parent_item == root_item)
        return {};
    return createIndex(parent_item->row(), 0, parent_item);
}

int TaviTreeModel::rowCount(const QModelIndex &parent) const
{
    if (parent.column() > 0)
        return 0;
    TaviTreeItem *const item = itemOrRoot(parent);
    return item ? item->childCount() : 0;
}

int TaviTreeModel::columnCount(const QModelIndex &parent) const
{
    TaviTreeItem *const item = itemOrRoot(parent);
    return item ? item->columnCount() : 0;
}

Qt::ItemFlags TaviTreeModel::flags(const QModelIndex &index) const
{
    if (!index.isValid())
        return Qt::ItemIsDropEnabled;
    TaviTreeItem *const item = itemOf(index);
    return item ? item->flags(index.column()) : Qt::ItemIsEnabled | Qt::ItemIsSelectable;
}

QVariant TaviTreeModel::data(const QModelIndex &index, int role) const
{
    const auto *const item = index.isValid() ? static_cast<TaviTreeItem *>(index.internalPointer()) : nullptr;
    return item ? item->data(index.column(), role) : QVariant();
}

bool TaviTreeModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!index.isValid() || data(index, role) == value)
        return false;
    TaviTreeItem *const item = itemOf(index);
    if (!item)
        return false;
    // A change of a check state is told on its way, and whoever hears of it may move or delete the row.
    const int id = item->id();
    const QPersistentModelIndex kept(index);
    if (!item->setData(index.column(), value, role))
        return false;
    const QModelIndex now = kept.isValid() ? QModelIndex(kept) : indexFromId(id).siblingAtColumn(index.column());
    if (now.isValid())
        Q_EMIT dataChanged(now, now);
    return true;
}

QMap<int, QVariant> TaviTreeModel::itemData(const QModelIndex &index) const
{
    const auto is_writable = [](const QVariant &value) {
        QByteArray bytes;
        QDataStream stream(&bytes, QIODevice::WriteOnly);
        return QMetaType::save(stream, value.userType(), value.constData());
    };
    QMap<int, QVariant> values = QAbstractItemModel::itemData(index);
    for (auto value = values.begin(); value != values.end();)
        value = is_writable(*value) ? std::next(value) : values.erase(value);
    return values;
}

QVariant TaviTreeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    return orientation == Qt::Horizontal ? root_item->data(section, role) : QVariant();
}

void TaviTreeModel::setHeaderData(int section, const QVariant &value, Qt::ItemDataRole role)
{
    root_item->setData(section, value, role);
    Q_EMIT headerDataChanged(Qt::Horizontal, section, section);
}

void TaviTreeModel::setHeaderData(const QList<QVariant> &header)
{
    root_item->setDisplayData(header);
    Q_EMIT headerDataChanged(Qt::Horizontal, 0, header.size() - 1);
}

TaviTreeItem *TaviTreeModel::itemFromId(int id) const
{
    // An item may stand in two lists, and its link then names the other one.
    TaviTreeItem *const item = TaviTreeItemAccess::itemById(id);
    return item && item != root_item && TaviTreeItemAccess::rowOf(root_item, item) >= 0 ? item : nullptr;
}

QModelIndex TaviTreeModel::indexInTree(TaviTreeItem *item) const
{
    if (item == root_item)
        return {};
    // In the tree, but a row that its parent does not show, or one below such a row, has no index.
    const TaviTreeItem *step = item;
    int row_of_item = -1;
    while (const TaviTreeItem *const parent_item = step->parentTreeItem()) {
        const int row = step->row();
        if (row < 0 || row >= parent_item->childCount() || parent_item->columnCount() == 0)
            return {};
        if (step == item)
            row_of_item = row;
        step = parent_item;
        if (step == root_item)
            return createIndex(row_of_item, 0, item);
    }
    return {};
}

QModelIndex TaviTreeModel::indexFromId(int id) const
{
    const bool own_order =
        TaviTreeModelAccess::overridesStructure(this) || hasChildrenIsOverridden(this) || matchIsOverridden(this);
    const bool own_answers = dataIsOverridden(this) || TaviTreeItemAccess::overridesBelow(root_item);
    if (!own_order) {
        if (TaviTreeItem *const item = TaviTreeItemAccess::itemById(id)) {
            const QModelIndex found = indexInTree(item);
            if (found.isValid() && (!own_answers || data(found, TaviTreeItem::IdRole) == QVariant(id)))
                return found;
        }
        if (!own_answers)
            return {};
    }
    const QModelIndex start = index(0, 0, QModelIndex());
    return start.isValid() ? match(start, TaviTreeItem::IdRole, QVariant(id), 1,
                                   Qt::MatchFlags(Qt::MatchWrap | Qt::MatchRecursive))
                                 .value(0, QModelIndex())
                           : QModelIndex();
}

QModelIndex TaviTreeModel::indexFromItem(const TaviTreeItem *item) const
{
    return item ? indexFromId(item->id()) : QModelIndex();
}

QModelIndex TaviTreeModel::indexOfParent(const TaviTreeItem *parent) const
{
    return indexFromItem(parent);
}

TaviTreeItem *TaviTreeModel::itemAt(int row) const
{
    return row < rowCount() ? root_item->child(row) : nullptr;
}

QList<TaviTreeItem *> TaviTreeModel::allItems() const
{
    return root_item->children();
}

QList<TaviTreeItem *> TaviTreeModel::itemsFromIndexList(const QList<QModelIndex> &indexes) const
{
    QList<TaviTreeItem *> items;
    for (const QModelIndex &index : indexes) {
        if (TaviTreeItem *const item = itemFromIndex(index))
            items.append(item);
    }
    return items;
}

QList<QModelIndex> TaviTreeModel::indexesToRows(const QList<QModelIndex> &indexes, int column) const
{
    QList<QModelIndex> rows;
    for (const QModelIndex &index : indexes) {
        if (index.column() == column)
            rows.append(index);
    }
    return rows;
}

QList<QVariant> TaviTreeModel::variantsFromIndexList(const QList<QModelIndex> &indexes, int role) const
{
    QList<QVariant> values;
    for (const QModelIndex &index : indexes) {
        const QVariant value = index.model()->data(index, role);
        if (value.isValid())
            values.append(value);
    }
    return values;
}

void TaviTreeModel::itemChanged(const TaviTreeItem *item)
{
    if (item)
        itemChanged(item->id());
}

void TaviTreeModel::itemChanged(int item_id)
{
    const QModelIndex changed = indexFromId(item_id);
    if (changed.isValid())
        Q_EMIT dataChanged(changed, changed);
}

int TaviTreeModel::modelID() const
{
    return model_id;
}

void TaviTreeModel::setMimeDataSourceModelID(QMimeData *data, int source_model_id) const
{
    if (data)
        data->setProperty(PROP_MODEL_ID, source_model_id);
}

int TaviTreeModel::getMimeDataSourceModelID(const QMimeData *data) const
{
    bool is_number = false;
    const int number = data ? data->property(PROP_MODEL_ID).toInt(&is_number) : -1;
    return is_number ? number : -1;
}
