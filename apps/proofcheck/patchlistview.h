// SPDX-License-Identifier: MIT
#ifndef PROOFCHECK_PATCHLISTVIEW_H
#define PROOFCHECK_PATCHLISTVIEW_H

#include <QStyledItemDelegate>
#include <QTimer>
#include <QTreeView>

class PatchModel;

/// Paints the colour of a row as a framed field that fills its cell.
class SwatchDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
};

/// The list of received patches. Follows what arrives as long as its last row is in sight.
class PatchListView : public QTreeView
{
    Q_OBJECT

public:
    /// Shows @a model, which stays the caller's.
    PatchListView(PatchModel *model, QWidget *parent);

private:
    void followEnd();

    QTimer follow_timer_; ///< Runs from an arrival until the list has followed it.
};

#endif
