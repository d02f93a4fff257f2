// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_GRIDFIXTURE_H
#define TESTS_TREEVIEWS_GRIDFIXTURE_H

#include "treeviews/tavigridview.h"

#include <QPainter>
#include <QStyledItemDelegate>

/// The numbers from 0 on as cells. Counts what is read.
class GridNumbers : public TaviGridModel
{
public:
    explicit GridNumbers(int count) : items(count) {}

    int itemCount() const override { return items; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        ++reads;
        const int place = index.row() * columnCount() + index.column();
        return role == Qt::DisplayRole && place < items ? QVariant(place) : QVariant();
    }

    int items;
    mutable int reads = 0;
};

/// Fills cells with a colour and counts what it is asked.
class CountingGridDelegate : public TaviGridDelegate
{
public:
    using TaviGridDelegate::TaviGridDelegate;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &) const override
    {
        ++paints;
        painter->fillRect(option.rect, Qt::red);
    }
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        ++size_hints;
        return TaviGridDelegate::sizeHint(option, index);
    }

    mutable int paints = 0;
    mutable int size_hints = 0;
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
