// SPDX-License-Identifier: MIT
//
// Rows and items: which are selected, selecting and removing them.
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeproxymodel.h"
#include "treeviews/tavitreeview.h"
#include "treeviews/treerows_p.h"

#include <algorithm>

namespace {

constexpr QItemSelectionModel::SelectionFlags add_rows = QItemSelectionModel::Select | QItemSelectionModel::Rows;
constexpr QItemSelectionModel::SelectionFlags replace_rows =
    QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows;

/// A widget that is not painted for a while. It may be destroyed meanwhile.
class UpdatesOff
{
public:
    explicit UpdatesOff(QWidget *widget) : widget_(widget) { widget->setUpdatesEnabled(false); }
    ~UpdatesOff()
    {
        if (widget_)
            widget_->setUpdatesEnabled(true);
    }
    UpdatesOff(const UpdatesOff &) = delete;
    UpdatesOff &operator=(const UpdatesOff &) = delete;

private:
    QPointer<QWidget> widget_;
};

/// Calls @a visit with each cell in @a column of the ranges that can be selected.
template <typename Visit>
void visitCells(const QItemSelection &selection, int column, const Visit &visit)
{
    constexpr Qt::ItemFlags selectable = Qt::ItemIsSelectable | Qt::ItemIsEnabled;
    for (const QItemSelectionRange &range : selection) {
        if (!range.isValid() || range.left() > column || range.right() < column)
            continue;
        const QModelIndex parent = range.parent();
        for (int row = range.top(); row <= range.bottom(); ++row) {
            const QModelIndex cell = range.model()->index(row, column, parent);
            if ((cell.flags() & selectable) == selectable)
                visit(cell);
        }
    }
}

QList<TaviTreeItem *> itemsOf(const QModelIndexList &rows)
{
    QList<TaviTreeItem *> items;
    items.reserve(rows.size());
    for (const QModelIndex &row : rows) {
        if (TaviTreeItem *item = TaviTreeModel::itemFromIndex(row))
            items.append(item);
    }
    return items;
}

} // namespace

void TaviTreeView::selectionChanged(const QItemSelection &selected, const QItemSelection &deselected)
{
    QTreeView::selectionChanged(selected, deselected);
    followWithStatusBar();
}

QItemSelection TaviTreeView::presentSelection() const
{
    // Asked for each time: a sort, or rows that come, change the ranges without a signal.
    return selectionModel() ? selectionModel()->selection() : QItemSelection();
}

bool TaviTreeView::hasSelection() const
{
    return selectionModel() && selectionModel()->hasSelection();
}

void TaviTreeView::select(const QItemSelection &rows, QItemSelectionModel::SelectionFlags command)
{
    if (selectionModel())
        selectionModel()->select(rows, command);
}

void TaviTreeView::currentChanged(const QModelIndex &current, const QModelIndex &previous)
{
    QTreeView::currentChanged(current, previous);
    followWithStatusBar();
}

QList<QModelIndex> TaviTreeView::selectedRows(int column) const
{
    QModelIndexList rows;
    visitCells(presentSelection(), column, [&](const QModelIndex &cell) { rows.append(cell); });
    std::sort(rows.begin(), rows.end());
    return rows;
}

int TaviTreeView::selectedRowCount() const
{
    int count = 0;
    visitCells(presentSelection(), 0, [&](const QModelIndex &) { ++count; });
    return count;
}

QList<QModelIndex> TaviTreeView::allRows(int column, const QModelIndex &parent) const
{
    QModelIndexList rows;
    if (model())
        appendRows(column, parent, rows);
    return rows;
}

void TaviTreeView::appendRows(int column, const QModelIndex &parent, QModelIndexList &rows) const
{
    const int count = model()->rowCount(parent);
    for (int row = 0; row < count; ++row) {
        if (isRowHidden(row, parent))
            continue;
        const QModelIndex index = model()->index(row, column, parent);
        rows.append(index);
        if (model()->hasChildren(index))
            appendRows(column, index, rows);
    }
}

QList<TaviTreeItem *> TaviTreeView::selectedItems(int column) const
{
    return itemsOf(selectedRows(column));
}

QList<TaviTreeItem *> TaviTreeView::allItems(int column) const
{
    return itemsOf(allRows(column, QModelIndex()));
}

QModelIndex TaviTreeView::firstSelectedIndex(const QModelIndex &) const
{
    return selectedRows(0).value(0);
}

QModelIndex TaviTreeView::selectedIndex(const QModelIndex &) const
{
    const QModelIndexList rows = selectedRows(0);
    return rows.size() == 1 ? rows.first() : QModelIndex();
}

TaviTreeItem *TaviTreeView::firstSelectedItem() const
{
    const QModelIndex index = firstSelectedIndex();
    return index.isValid() ? TaviTreeModel::itemFromIndex(index) : nullptr;
}

TaviTreeItem *TaviTreeView::selectedItem() const
{
    const QModelIndex index = selectedIndex();
    return index.isValid() ? TaviTreeModel::itemFromIndex(index) : nullptr;
}

bool TaviTreeView::isPathHidden(const QModelIndex &index) const
{
    for (QModelIndex level = index; level.isValid(); level = level.parent()) {
        if (isRowHidden(level.row(), level.parent()))
            return true;
    }
    return false;
}

QModelIndex TaviTreeView::indexOfShownItem(const TaviTreeItem *item) const
{
    const TaviTreeModel *source = sourceModel();
    if (!source || !item)
        return {};
    const QModelIndex index = proxy_model->mapFromSource(source->indexFromItem(item));
    return isPathHidden(index) ? QModelIndex() : index;
}

void TaviTreeView::selectItem(TaviTreeItem *item, bool ensure_visible)
{
    selectShownItem(item, ensure_visible, add_rows);
}

void TaviTreeView::clearSelectItem(TaviTreeItem *item, bool ensure_visible)
{
    selectShownItem(item, ensure_visible, replace_rows);
}

void TaviTreeView::selectShownItem(const TaviTreeItem *item, bool ensure_visible,
                                   QItemSelectionModel::SelectionFlags command)
{
    const QPersistentModelIndex index = indexOfShownItem(item);
    if (!index.isValid())
        return;
    const QPointer<TaviTreeView> self(this);
    select({index, index}, command);
    if (self && ensure_visible && index.isValid())
        scrollTo(index, EnsureVisible);
}

void TaviTreeView::selectItems(const QList<TaviTreeItem *> &items, bool ensure_visible)
{
    selectShownItems(items, ensure_visible, add_rows);
}

void TaviTreeView::clearSelectItems(const QList<TaviTreeItem *> &items, bool ensure_visible)
{
    selectShownItems(items, ensure_visible, replace_rows);
}

void TaviTreeView::selectShownItems(const QList<TaviTreeItem *> &items, bool ensure_visible,
                                    QItemSelectionModel::SelectionFlags command)
{
    if (items.isEmpty())
        return;
    QModelIndexList rows;
    for (const TaviTreeItem *item : items) {
        const QModelIndex index = indexOfShownItem(item);
        if (index.isValid())
            rows.append(index);
    }
    sortInTreeOrder(rows);
    const QPersistentModelIndex last = rows.isEmpty() ? QModelIndex() : rows.last();
    const QPointer<TaviTreeView> self(this);
    {
        const UpdatesOff updates_off(this);
        select(selectionOfRows(rows), command);
    }
    if (self && ensure_visible && last.isValid())
        scrollTo(last, EnsureVisible);
}

QModelIndex TaviTreeView::selectItemWithProperty(int column, const QVariant &value, int role)
{
    return selectOnlyMatch(column, value, role, add_rows);
}

QModelIndex TaviTreeView::clearSelectItemWithProperty(int column, const QVariant &value, int role)
{
    return selectOnlyMatch(column, value, role, replace_rows);
}

QModelIndex TaviTreeView::selectOnlyMatch(int column, const QVariant &value, int role,
                                          QItemSelectionModel::SelectionFlags command)
{
    // A second one tells that the first isn't the only one.
    const QModelIndexList hits = matches(column, value, role, 2);
    if (hits.size() != 1)
        return {};
    const QPersistentModelIndex hit = hits.first();
    select({hit, hit}, command);
    return hit;
}

QList<QModelIndex> TaviTreeView::selectItemsWithProperty(int column, const QVariant &value, int role)
{
    return selectAllMatches(column, value, role, add_rows);
}

QList<QModelIndex> TaviTreeView::clearSelectItemsWithProperty(int column, const QVariant &value, int role)
{
    return selectAllMatches(column, value, role, replace_rows);
}

QList<QModelIndex> TaviTreeView::selectAllMatches(int column, const QVariant &value, int role,
                                                  QItemSelectionModel::SelectionFlags command)
{
    const QModelIndexList hits = matches(column, value, role, -1);
    const QVector<QPersistentModelIndex> rows(hits.cbegin(), hits.cend());
    const QPointer<TaviTreeView> self(this);
    for (const QPersistentModelIndex &row : rows) {
        if (!self)
            return {};
        // The first one may replace what was selected; the others join it.
        select({row, row}, row == rows.first() ? command : add_rows);
    }
    QModelIndexList selected;
    for (const QPersistentModelIndex &row : rows)
        selected.append(row);
    return selected;
}

QModelIndexList TaviTreeView::matches(int column, const QVariant &value, int role, int hits) const
{
    const QModelIndex start = model() ? model()->index(0, column) : QModelIndex();
    return start.isValid() ? model()->match(start, role, value, hits, Qt::MatchExactly) : QModelIndexList();
}

QList<TaviTreeItem *> TaviTreeView::removeSelectedItems(bool take)
{
    const QList<TaviTreeItem *> items = selectedItems(0);
    const QList<TaviTreeItem *> taken = removeFromModel(items, take);
    return take ? taken : items;
}

QList<TaviTreeItem *> TaviTreeView::removeItems(const QList<TaviTreeItem *> &items, bool take)
{
    return removeFromModel(items, take);
}

QList<TaviTreeItem *> TaviTreeView::removeFromModel(const QList<TaviTreeItem *> &items, bool take)
{
    if (!sourceModel())
        return {};
    // A slot that hears of the selection may destroy the view, the model, or items of the list.
    const QPointer<TaviTreeView> self(this);
    const UpdatesOff updates_off(this);
    QVector<QPointer<TaviTreeItem>> watched;
    const bool heard = hasSelection();
    if (heard)
        watched = QVector<QPointer<TaviTreeItem>>(items.cbegin(), items.cend());
    clearSelection();
    TaviTreeModel *source = self ? sourceModel() : nullptr;
    if (!source)
        return {};
    QList<TaviTreeItem *> alive = items;
    if (heard) {
        for (int i = 0; i < items.size(); ++i)
            alive[i] = watched[i];
    }
    if (take)
        return source->takeItems(alive);
    source->removeItems(alive);
    return {};
}
