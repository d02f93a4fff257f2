// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_RENAMEWALK_P_H
#define TREEVIEWS_RENAMEWALK_P_H

#include <QAbstractItemModel>
#include <QBitArray>
#include <QItemSelectionModel>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QVector>

class TaviTreeModel;
class TaviTreeView;
struct RenameRule;

/// One walk over the rows of a view's top level that renames them. Made for the rows that are there: each of these is
/// handled once, in this order, wherever it goes meanwhile; one that is removed is passed over.
class RenameWalk
{
public:
    RenameWalk(TaviTreeView *view, int column);

    /// @param all also rows that are not selected
    /// @param one only the first row that qualifies
    /// @return how many rows were changed
    int rename(const RenameRule &rule, bool all, bool one);

private:
    struct Row {
        int item_id;                 ///< Of a row that is an item,
        QPersistentModelIndex index; ///< and of any other row this.
    };

    QModelIndex indexOf(const Row &row) const;
    void noteSelection();
    bool isSelected(const QModelIndex &index);

    const QPointer<TaviTreeView> view_;
    const QPointer<QAbstractItemModel> model_;
    const QPointer<TaviTreeModel> items_; ///< Null if the rows are no items.
    const QPointer<QItemSelectionModel> selection_;
    const int column_;
    QVector<Row> rows_;
    QBitArray selected_; ///< By row, as long as it is known.
    bool selected_known_ = false;
};

#endif
