// SPDX-License-Identifier: MIT
#include "proofcheck/patchmodel.h"

#include "tavilib/tavicms.h"
#include "tavilib/tavilist.h"

#include <QColor>

void PatchModel::append(const MeasuredPatch &patch)
{
    const int row = rowCount();
    beginInsertRows({}, row, row);
    patches_.push_back(patch);
    endInsertRows();
}

void PatchModel::append(const TAVICOMBOCOLOUR *list)
{
    std::vector<MeasuredPatch> added;
    for (; list; list = NextInList(list)) {
        if ((list->flags & COMBOCOLOUR_FLAG_LAB) != 0)
            added.push_back({list->name ? QString::fromUtf8(list->name) : tr("Untitled"), list->L, list->a, list->b});
    }
    if (added.empty())
        return;
    const int row = rowCount();
    beginInsertRows({}, row, row + static_cast<int>(added.size()) - 1);
    patches_.insert(patches_.end(), added.begin(), added.end());
    endInsertRows();
}

void PatchModel::replace(int row, const MeasuredPatch &patch)
{
    if (row < 0 || row >= rowCount())
        return;
    patches_[static_cast<size_t>(row)] = patch;
    Q_EMIT dataChanged(index(row, 0), index(row, ColumnCount - 1));
}

void PatchModel::clear()
{
    beginResetModel();
    patches_.clear();
    endResetModel();
}

int PatchModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(patches_.size());
}

int PatchModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant PatchModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    const MeasuredPatch &patch = patches_[static_cast<size_t>(index.row())];
    const auto column = static_cast<Column>(index.column());
    if (role == Qt::TextAlignmentRole && column != Name)
        return static_cast<int>(Qt::AlignRight | Qt::AlignVCenter);
    if (column == Swatch) {
        if (role == Qt::DecorationRole)
            return QColor::fromRgb(TAVICMSLabToDisplay(patch.L, patch.a, patch.b));
        if (role == Qt::AccessibleTextRole)
            return tr("Colour swatch");
        return {};
    }
    if (role != Qt::DisplayRole)
        return {};
    switch (column) {
    case L:
        return QString::number(patch.L, 'f', 2);
    case A:
        return QString::number(patch.a, 'f', 2);
    case B:
        return QString::number(patch.b, 'f', 2);
    default:
        return patch.name;
    }
}

QVariant PatchModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal)
        return {};
    if (role == Qt::TextAlignmentRole) {
        const Qt::Alignment side = section == Name     ? Qt::AlignLeft
                                   : section == Swatch ? Qt::AlignHCenter
                                                       : Qt::AlignRight;
        return static_cast<int>(side | Qt::AlignVCenter);
    }
    if (role != Qt::DisplayRole)
        return {};
    switch (section) {
    case Swatch:
        return tr("Swatch");
    case L:
        return QStringLiteral("L*");
    case A:
        return QStringLiteral("a*");
    case B:
        return QStringLiteral("b*");
    default:
        return tr("Name");
    }
}
