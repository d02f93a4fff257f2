// SPDX-License-Identifier: MIT
//
// What outlives an event: which branches are open, what is selected, how the columns stand.
#include "taviapp/taviregistry.h"
#include "treeviews/taviheaderview.h"
#include "treeviews/tavioverride_p.h"
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeproxymodel.h"
#include "treeviews/tavitreeview.h"
#include "treeviews/treerows_p.h"

#include <QPersistentModelIndex>
#include <QSignalBlocker>

const char TaviTreeView::headers_reg_key[] = "header_state";

namespace {

TAVI_DEFINE_OVERRIDES(overridesScrollTo, QTreeView, scrollTo)

QByteArray fromHex(const std::string &hex)
{
    return QByteArray::fromHex(QByteArray::fromStdString(hex));
}

std::string toHex(const QByteArray &state)
{
    return state.toHex().toStdString();
}

} // namespace

void TaviTreeView::saveExpandStates()
{
    expand_states.clear();
    visitVisibleBranches([this](const QModelIndex &index, const TaviTreeItem *item) {
        expand_states.append({item->id(), isExpanded(index)});
    });
}

void TaviTreeView::restoreExpandStates()
{
    const TaviTreeModel *source = sourceModel();
    if (!source)
        return;
    QVector<ExpandChange> changes;
    for (const ExpandState &state : qAsConst(expand_states)) {
        const QModelIndex index = proxy_model->mapFromSource(source->indexFromId(state.item_id));
        if (index.isValid() && isExpanded(index) != state.expanded)
            changes.append({index, state.expanded});
    }
    applyExpandChanges(changes);
}

void TaviTreeView::applyExpandChanges(const QVector<ExpandChange> &changes)
{
    if (changes.isEmpty())
        return;
    // With a layout to come, opening a branch is a note in a table; without, it moves all rows below.
    if (changes.size() > 1) {
        scheduleDelayedItemsLayout();
        layout_is_for_us = true;
    }
    const QPointer<TaviTreeView> self(this);
    for (const ExpandChange &change : changes) {
        if (change.index.isValid())
            setExpanded(change.index, change.expanded);
        if (!self)
            return;
    }
}

void TaviTreeView::visitVisibleBranches(const BranchVisitor &visit) const
{
    if (const TaviTreeModel *source = sourceModel())
        visitVisibleBranches(source->allItems(), QModelIndex(), visit);
}

void TaviTreeView::visitVisibleBranches(const QList<TaviTreeItem *> &items, const QModelIndex &source_parent,
                                        const BranchVisitor &visit) const
{
    const TaviTreeModel *source = sourceModel();
    for (int row = 0; row < items.size(); ++row) {
        const TaviTreeItem *item = items[row];
        // Leaves are most of a tree, and they cost no index.
        if (!item || item->childCount() < 1)
            continue;
        const QModelIndex source_index = source->index(row, 0, source_parent);
        const QModelIndex index = proxy_model->mapFromSource(source_index);
        if (!index.isValid() || !source->hasChildren(source_index) || isRowHidden(index.row(), index.parent()))
            continue;
        visit(index, item);
        visitVisibleBranches(item->children(), source_index, visit);
    }
}

void TaviTreeView::expandVisibleBranches()
{
    if (!sourceModel()) {
        expandAll();
        return;
    }
    QVector<ExpandChange> changes;
    visitVisibleBranches([&](const QModelIndex &index, const TaviTreeItem *) {
        if (!isExpanded(index))
            changes.append({index, true});
    });
    // As expandAll() does it: nobody has opened these branches.
    const QSignalBlocker silence(this);
    applyExpandChanges(changes);
}

void TaviTreeView::proxyLayoutAboutToBeChanged()
{
    // In the middle of filtering, what it began from must outlive a sort.
    if (!expand_states_before_sort && (filter_session || proxy_model->isFiltering()))
        expand_states_before_sort = expand_states;
    saveExpandStates();
}

void TaviTreeView::proxyLayoutChanged()
{
    const QPointer<TaviTreeView> self(this);
    restoreExpandStates();
    if (!self || !expand_states_before_sort)
        return;
    expand_states = *expand_states_before_sort;
    expand_states_before_sort.reset();
}

void TaviTreeView::saveSelections(int column, int role, QList<QVariant> &list)
{
    list.clear();
    const QList<TaviTreeItem *> items = selectedItems(0);
    for (const TaviTreeItem *item : items)
        list.append(item->data(column, role));
}

void TaviTreeView::saveSelections()
{
    saveSelections(0, TaviTreeItem::IdRole, saved_selection);
}

void TaviTreeView::restoreSelections(int column, int role, QList<QVariant> &list)
{
    Q_UNUSED(column)
    const QPointer<TaviTreeView> self(this);
    const QVector<QVariant> values = list.toVector(); // a slot may change the list
    // The two steps of QItemSelectionModel::clear(): between them a slot may destroy the view, and the selection
    // model with it.
    if (selectionModel())
        selectionModel()->clearSelection();
    if (self && selectionModel())
        selectionModel()->clearCurrentIndex();
    if (!self || !model()->index(0, 0).isValid())
        return;

    // A subclass that follows the scrolling sees all of it; for anybody else the last place is what counts.
    const bool every_scroll = overridesScrollTo(this);
    QModelIndexList hits;
    QModelIndexList first_hits;
    for (const QVariant &value : values) {
        const QModelIndexList rows = rowsWithValue(role, value);
        if (rows.isEmpty())
            continue;
        hits += rows;
        first_hits += rows.first();
    }
    const QVector<QPersistentModelIndex> rows(hits.cbegin(), hits.cend());
    const QVector<QPersistentModelIndex> scroll_rows(first_hits.cbegin(), first_hits.cend());
    if (!every_scroll)
        expandParentsOf(first_hits);
    for (int i = every_scroll ? 0 : scroll_rows.size() - 1; self && i >= 0 && i < scroll_rows.size(); ++i)
        scrollTo(scroll_rows[i], PositionAtCenter);
    if (!self)
        return;

    QModelIndexList selected;
    for (const QPersistentModelIndex &row : rows)
        selected.append(row);
    sortInTreeOrder(selected);
    select(selectionOfRows(selected), QItemSelectionModel::Select | QItemSelectionModel::Rows);
}

void TaviTreeView::restoreSelections()
{
    if (!hasSelection())
        restoreSelections(0, TaviTreeItem::IdRole, saved_selection);
}

QModelIndexList TaviTreeView::rowsWithValue(int role, const QVariant &value) const
{
    const TaviTreeModel *source = sourceModel();
    if (role != TaviTreeItem::IdRole || !source)
        return model()->match(model()->index(0, 0), role, value, -1, Qt::MatchWrap | Qt::MatchRecursive);
    bool is_number = false;
    const int id = value.toInt(&is_number);
    if (!is_number || value != QVariant(id))
        return {};
    const QModelIndex row = proxy_model->mapFromSource(source->indexFromId(id));
    return row.isValid() ? QModelIndexList{row} : QModelIndexList();
}

void TaviTreeView::expandParentsOf(const QModelIndexList &rows)
{
    // As scrolling to each of them would.
    if (state() != NoState || !itemsExpandable())
        return;
    QVector<ExpandChange> changes;
    QSet<QModelIndex> seen;
    for (const QModelIndex &row : rows) {
        for (QModelIndex parent = row.parent(); parent.isValid() && !seen.contains(parent);
             parent = parent.parent()) {
            seen.insert(parent);
            if (!isExpanded(parent))
                changes.append({parent, true});
        }
    }
    applyExpandChanges(changes);
}

std::string TaviTreeView::getHeaderRegistryKey() const
{
    QByteArray key(headers_reg_key);
    key.append('_').append(metaObject()->className()).append('_').append(objectName().toLatin1());
    return key.toStdString();
}

void TaviTreeView::saveHeaderState(TaviRegistry &registry, std::string &section)
{
    auto *tavi_header = qobject_cast<TaviHeaderView *>(header());
    if (!tavi_header)
        return;
    std::string key = getHeaderRegistryKey();
    registry.putstring(section, key, toHex(tavi_header->saveState()));
}

void TaviTreeView::saveHeaderState(TaviRegistry &registry, const char *section)
{
    if (!section)
        return;
    std::string name = TaviRegistry::reg_fixup_null_cstr(section);
    saveHeaderState(registry, name);
}

void TaviTreeView::restoreHeaderState(TaviRegistry &registry, std::string &section)
{
    auto *tavi_header = qobject_cast<TaviHeaderView *>(header());
    if (!tavi_header)
        return;
    std::string bare_key = TaviRegistry::reg_fixup_null_cstr(headers_reg_key);
    std::string key = getHeaderRegistryKey();

    if (registry.exists(section, bare_key)) {
        const QByteArray state = fromHex(registry.getstring(section, bare_key));
        if (state.isEmpty())
            return;
        tavi_header->restoreState(state);
        registry.clearkey(section, bare_key);
        // What older programs leave here is the state itself up to its first zero byte, in place of its hexadecimal
        // digits: nothing, as a rule. It is kept so, because programs of both kinds share one store, and nobody can
        // take it for a state: it is passed over until the next state is saved.
        registry.putstring(section, key, TaviRegistry::reg_fixup_null_cstr(state.constData()));
    } else if (registry.exists(section, key)) {
        const QByteArray state = fromHex(registry.getstring(section, key));
        if (!state.isEmpty())
            tavi_header->restoreState(state);
    } else {
        const QByteArray state = tavi_header->autoUpdateHeaderState(registry, section);
        if (!state.isEmpty())
            registry.putstring(section, key, toHex(state));
    }
}

void TaviTreeView::restoreHeaderState(TaviRegistry &registry, const char *section)
{
    if (!section)
        return;
    std::string name = TaviRegistry::reg_fixup_null_cstr(section);
    restoreHeaderState(registry, name);
}
