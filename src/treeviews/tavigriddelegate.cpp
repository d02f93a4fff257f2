// SPDX-License-Identifier: MIT
#include "treeviews/tavigridview.h"

TaviGridDelegate::TaviGridDelegate(QObject *parent) : QAbstractItemDelegate(parent) {}

QSize TaviGridDelegate::sizeHint(const QStyleOptionViewItem &, const QModelIndex &) const
{
    return cell_size;
}

void TaviGridDelegate::setCellSize(int width, int height)
{
    cell_size = QSize(width, height);
}

void TaviGridDelegate::setCellWidth(int width)
{
    cell_size.setWidth(width);
}

void TaviGridDelegate::setCellHeight(int height)
{
    cell_size.setHeight(height);
}

QSize TaviGridDelegate::cellSize() const
{
    return cell_size;
}

int TaviGridDelegate::cellWidth() const
{
    return cell_size.width();
}

int TaviGridDelegate::cellHeight() const
{
    return cell_size.height();
}
