// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_GRIDFIXTURE_H
#define TESTS_TREEVIEWS_GRIDFIXTURE_H

#include "treeviews/tavigridview.h"

#include <QPainter>
#include <QStyledItemDelegate>

/// The numbers from 0 on as cells. Counts what is read, and which cells are asked for.
class GridNumbers : public TaviGridModel
{
public:
    explicit GridNumbers(int count) : items(count) {}

    int itemCount() const override { return items; }
    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override
    {
        ++indexes;
        return TaviGridModel::index(row, column, parent);
    }
    QVariant data(const QModelIndex &index, int role) const override
    {
        ++reads;
        const int place = index.row() * columnCount() + index.column();
        return role == Qt::DisplayRole && place < items ? QVariant(place) : QVariant();
    }

    int items;
    mutable int reads = 0;
    mutable int indexes = 0;
};

/// Fills cells with a colour and counts how often.
class CountingGridDelegate : public TaviGridDelegate
{
public:
    using TaviGridDelegate::TaviGridDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &) const override
    {
        ++paints;
        painter->fillRect(option.rect, Qt::red);
    }

    mutable int paints = 0;
};

/// Cells of one size but for one row that is taller and one column that is wider.
class VaryingGridDelegate : public CountingGridDelegate
{
public:
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QSize usual = TaviGridDelegate::sizeHint(option, index);
        return {index.column() == 2 ? 50 : usual.width(), index.row() == 1 ? 60 : usual.height()};
    }
};

/// A delegate of another family with cells of one size.
class SameSizeDelegate : public QStyledItemDelegate
{
public:
    explicit SameSizeDelegate(QSize cell) : size(cell) {}
    QSize sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const override { return size; }

    const QSize size;
};

#endif
