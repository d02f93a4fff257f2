// SPDX-License-Identifier: MIT
#include "treeviews/renamewalk_p.h"

#include "treeviews/renamemethod_p.h"
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeproxymodel.h"
#include "treeviews/tavitreeview.h"

#include <optional>

namespace {

/// Rows that change are not sorted one by one while this lives, each at the cost of all rows, but together at its
/// end.
class SortedAtTheEnd
{
public:
    explicit SortedAtTheEnd(TaviTreeProxyModel *proxy)
    {
        // With an expression of the application each row has to be looked at as it changes.
        if (!proxy->dynamicSortFilter() || !proxy->filterRegExp().isEmpty())
            return;
        proxy_ = proxy;
        proxy_->setDynamicSortFilter(false);
    }
    ~SortedAtTheEnd()
    {
        if (proxy_)
            proxy_->setDynamicSortFilter(true);
    }
    SortedAtTheEnd(const SortedAtTheEnd &) = delete;
    SortedAtTheEnd &operator=(const SortedAtTheEnd &) = delete;

private:
    QPointer<TaviTreeProxyModel> proxy_;
};

} // namespace

RenameWalk::RenameWalk(TaviTreeView *view, int column)
    : view_(view), model_(view->model()), items_(view->sourceModel()), selection_(view->selectionModel()),
      column_(column)
{
    const int count = model_->index(0, column).isValid() ? model_->rowCount() : 0;
    rows_.reserve(count);
    for (int row = 0; row < count; ++row) {
        const QModelIndex index = model_->index(row, column);
        // Numbers cost nothing while they wait. A hundred thousand persistent indexes would be gone through at every
        // row that is removed or sorted to another place.
        const TaviTreeItem *const item = items_ ? TaviTreeModel::itemFromIndex(index) : nullptr;
        rows_.append({item ? item->id() : 0, item ? QPersistentModelIndex() : QPersistentModelIndex(index)});
    }
}

/// By ranges: a selection that is asked row by row goes through all of them each time.
void RenameWalk::noteSelection()
{
    selected_known_ = true;
    selected_.fill(false, model_->rowCount());
    const QItemSelection ranges = selection_ ? selection_->selection() : QItemSelection();
    for (const QItemSelectionRange &range : ranges) {
        if (!range.isValid() || range.parent().isValid() || range.left() > column_ || range.right() < column_)
            continue;
        selected_.fill(true, qMin(range.top(), selected_.size()), qMin(range.bottom() + 1, selected_.size()));
    }
}

bool RenameWalk::isSelected(const QModelIndex &index)
{
    if (!selected_known_)
        noteSelection();
    return index.row() < selected_.size() && selected_.testBit(index.row()) && (index.flags() & Qt::ItemIsSelectable);
}

/// Invalid for a row that is gone, or not of the top level any more.
QModelIndex RenameWalk::indexOf(const Row &row) const
{
    if (row.item_id == 0)
        return row.index;
    if (!items_ || !view_)
        return {};
    const QModelIndex source = items_->indexFromId(row.item_id);
    return source.isValid() && !source.parent().isValid()
               ? view_->mapFromSource(source.sibling(source.row(), column_))
               : QModelIndex();
}

int RenameWalk::rename(const RenameRule &rule, bool all, bool one)
{
    if (rule.op.isEmpty())
        return 0;
    QObject context;
    const auto forget = [this] {
        selected_known_ = false;
    };
    QObject::connect(selection_, &QItemSelectionModel::selectionChanged, &context, forget);
    QObject::connect(model_, &QAbstractItemModel::rowsInserted, &context, forget);
    QObject::connect(model_, &QAbstractItemModel::rowsRemoved, &context, forget);
    QObject::connect(model_, &QAbstractItemModel::rowsMoved, &context, forget);
    QObject::connect(model_, &QAbstractItemModel::layoutChanged, &context, forget);
    QObject::connect(model_, &QAbstractItemModel::modelReset, &context, forget);
    std::optional<SortedAtTheEnd> sorting;
    if (!one)
        sorting.emplace(view_->proxyModel());
    int changed = 0;
    for (const Row &row : qAsConst(rows_)) {
        // Whoever hears of a change may take away what comes next, be it the model.
        if (!model_ || !view_ || view_->model() != model_)
            break;
        const QModelIndex index = indexOf(row);
        if (!index.isValid())
            continue;
        if (!(index.flags() & Qt::ItemIsEditable))
            continue;
        if (!all && !isSelected(index))
            continue;
        if (const auto renamed = rule.renamed(index.data(Qt::DisplayRole).toString())) {
            ++changed;
            model_->setData(index, *renamed, Qt::DisplayRole);
        }
        if (one)
            break;
    }
    return changed;
}
