// SPDX-License-Identifier: MIT
#include "treeviews/taviconfigorder.h"

#include <QMimeData>

namespace {

const char dragged_ids[] = "dragged_ids";

QString dragType()
{
    return QStringLiteral("MIME_CONFIG_ORDER_ITEM");
}

} // namespace

ConfigOrderModel::ConfigOrderModel(QObject *parent) : ConfigOrderModel(QList<QVariant>{tr("Order")}, parent) {}

ConfigOrderModel::ConfigOrderModel(const QList<QVariant> &header, QObject *parent) : TaviTreeModel(header, parent) {}

ConfigOrderModel::~ConfigOrderModel() = default;

Qt::DropActions ConfigOrderModel::supportedDragActions() const
{
    return Qt::MoveAction;
}

Qt::DropActions ConfigOrderModel::supportedDropActions() const
{
    return Qt::MoveAction;
}

QStringList ConfigOrderModel::mimeTypes() const
{
    return {dragType()};
}

QMimeData *ConfigOrderModel::mimeData(const QModelIndexList &indexes) const
{
    auto *data = new QMimeData;
    data->setData(dragType(), QByteArray());
    data->setProperty(dragged_ids, variantsFromIndexList(indexesToRows(indexes, 0), TaviTreeItem::IdRole));
    setMimeDataSourceModelID(data, modelID());
    return data;
}

bool ConfigOrderModel::dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int, const QModelIndex &)
{
    if (action == Qt::IgnoreAction || !data || !data->hasFormat(dragType()))
        return false;
    const int before = row < 0 ? rowCount() : row;
    if (getMimeDataSourceModelID(data) == modelID())
        Q_EMIT selfDroppedSelectedItemsAt(before);
    else
        Q_EMIT othersDropped(before);
    return true;
}
