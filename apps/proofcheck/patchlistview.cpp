// SPDX-License-Identifier: MIT
#include "proofcheck/patchlistview.h"

#include "proofcheck/patchmodel.h"

#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>

void SwatchDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem background = option;
    initStyleOption(&background, index);
    background.features &= ~QStyleOptionViewItem::HasDecoration;
    background.icon = QIcon();
    const QStyle *style = option.widget->style();
    style->drawControl(QStyle::CE_ItemViewItem, &background, painter, option.widget);

    const QRect field = option.rect.adjusted(4, 2, -4, -3);
    painter->save();
    painter->setPen(option.palette.color(QPalette::Mid));
    painter->setBrush(index.data(Qt::DecorationRole).value<QColor>());
    painter->drawRect(field);
    painter->restore();
}

PatchListView::PatchListView(PatchModel *model, QWidget *parent) : QTreeView(parent)
{
    setModel(model);
    setObjectName(QStringLiteral("patch_list"));
    setAccessibleName(tr("Measured patches"));
    setUniformRowHeights(true);
    setRootIsDecorated(false);
    setAlternatingRowColors(true);
    setAllColumnsShowFocus(true);
    setItemDelegateForColumn(PatchModel::Swatch, new SwatchDelegate(this));
    const int number_width = fontMetrics().horizontalAdvance(QStringLiteral("-000.00")) + 24;
    setColumnWidth(PatchModel::Swatch, fontMetrics().horizontalAdvance(tr("Swatch")) + 32);
    for (const int column : {PatchModel::L, PatchModel::A, PatchModel::B})
        setColumnWidth(column, number_width);
    header()->setStretchLastSection(true);

    // Following at each of thousands of arrivals would lay the list out as often.
    follow_timer_.setSingleShot(true);
    follow_timer_.setInterval(40);
    connect(&follow_timer_, &QTimer::timeout, this, &PatchListView::scrollToBottom);
    connect(model, &QAbstractItemModel::rowsAboutToBeInserted, this, &PatchListView::followEnd);
}

void PatchListView::followEnd()
{
    if (!follow_timer_.isActive() && verticalScrollBar()->value() == verticalScrollBar()->maximum())
        follow_timer_.start();
}
