// SPDX-License-Identifier: MIT
#include "treeviews/tavigridview.h"

TaviGridSelectionModel::TaviGridSelectionModel(QAbstractItemModel *model) : QItemSelectionModel(model) {}

TaviGridSelectionModel::TaviGridSelectionModel(QAbstractItemModel *model, QObject *parent)
    : QItemSelectionModel(model, parent)
{}

void TaviGridSelectionModel::setEnabled(bool on)
{
    enabled = on;
}

bool TaviGridSelectionModel::isEnabled() const
{
    return enabled;
}

void TaviGridSelectionModel::clear()
{
    if (enabled)
        QItemSelectionModel::clear();
}

void TaviGridSelectionModel::clearSelection()
{
    if (enabled)
        QItemSelectionModel::clearSelection();
}

void TaviGridSelectionModel::reset()
{
    if (enabled)
        QItemSelectionModel::reset();
}

void TaviGridSelectionModel::select(const QModelIndex &index, QItemSelectionModel::SelectionFlags command)
{
    if (enabled)
        QItemSelectionModel::select(index, command);
}

void TaviGridSelectionModel::select(const QItemSelection &selection, QItemSelectionModel::SelectionFlags command)
{
    if (enabled)
        QItemSelectionModel::select(selection, command);
}

void TaviGridSelectionModel::setCurrentIndex(const QModelIndex &index, QItemSelectionModel::SelectionFlags command)
{
    if (enabled)
        QItemSelectionModel::setCurrentIndex(index, command);
}
