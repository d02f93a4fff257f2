// SPDX-License-Identifier: MIT
//
// The runs of the keyword filter. A run over all rows goes from item to item and hides or shows each row; after a
// change of the source a short run does so for the rows that can be affected. Both leave in the view what asking
// filterRow() for every row would leave.
#include "treeviews/tavitreeproxymodel.h"

#include "treeviews/keywordmatcher_p.h"
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreeitem_p.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreemodel_p.h"
#include "treeviews/tavitreeproxymodel_p.h"
#include "treeviews/tavitreeview.h"

#include <QHeaderView>
#include <QMetaMethod>
#include <QTreeView>

#include <algorithm>
#include <typeinfo>
#include <utility>

/// One run, from item to item. Texts come from the items; classes that answer for themselves are asked.
class TaviTreeProxyModel::Run
{
public:
    explicit Run(TaviTreeProxyModel *proxy_model)
        : proxy(proxy_model), source(static_cast<TaviTreeModel *>(proxy_model->sourceModel())),
          view(proxy_model->hidingView()), matcher(proxy_model->filter_string, proxy_model->filterCaseSensitivity()),
          hidden_columns(proxy_model->hiddenColumns()), model_answers(TaviTreeModelAccess::overridesData(source)),
          structure(proxy_model->structure)
    {}

    /// Prepares for a run over all rows, which compares with the one before and notes what it leaves.
    void goOverAll()
    {
        over_all = true;
        comparing = proxy->hidden_known && proxy->rows_left_structure == structure;
        proxy->rows_left_structure = -1;
    }
    /// Ends it.
    void haveGoneOverAll()
    {
        proxy->rows_left.resize(noted);
        proxy->rows_left_structure = structure;
    }

    /// Whether an answer of an application's class has changed the rows: nothing that was found holds any more.
    bool isVoid() const { return structure != proxy->structure; }

    /// All rows of the source. True if one stays in sight.
    bool all()
    {
        TaviTreeItem *const root = TaviTreeModelAccess::root(source);
        const int visible = rows(root, QModelIndex(), 0, root->childCount());
        if (!isVoid())
            proxy->visible_top_rows = visible;
        return visible > 0;
    }

    /// One row of the source, below @a parent, and all below it.
    bool one(TaviTreeItem *parent, const QModelIndex &proxy_parent, int row)
    {
        return rows(parent, proxy_parent, row, row + 1) > 0;
    }

    /// The row by itself.
    bool matches(const TaviTreeItem *item, int row, int columns) const
    {
        if (proxy->filter_string.isEmpty())
            return true;
        bool hit = false;
        for (int column = 0; item && column < columns && !hit && !isVoid(); ++column) {
            if (!isHiddenColumn(column))
                hit = isIn(item, row, column);
        }
        return hit != proxy->inverted;
    }

private:
    struct Level {
        TaviTreeItem *parent;
        QModelIndex proxy_parent;
        int row;
        int end;
        int visible_rows = 0;
        QModelIndex index{};  // of the row, where it is needed
        bool matched = false; // the row by itself, while those below it have their turn
    };

    /// Rows and all below them. How many of the rows themselves stay in sight. A tree may be deeper than the stack,
    /// so that the levels stand in a list.
    int rows(TaviTreeItem *parent, const QModelIndex &proxy_parent, int first, int end)
    {
        std::vector<Level> levels{Level{parent, proxy_parent, first, end}};
        while (!isVoid()) {
            Level &level = levels.back();
            if (level.row == level.end) {
                const int visible_rows = level.visible_rows;
                levels.pop_back();
                if (levels.empty())
                    return visible_rows;
                show(levels.back(), levels.back().matched || visible_rows > 0);
                continue;
            }
            TaviTreeItem *const item = level.parent->child(level.row);
            const int columns = level.parent->columnCount();
            if (!item || columns == 0) { // a row without an index has nothing below it, and cannot be hidden
                pass(level, matches(item, level.row, columns));
                continue;
            }
            level.index = QModelIndex();
            if (item->childCount() > 0 || proxy->rows != Rows::Straight) {
                level.index = proxy->mapFromSource(TaviTreeModelAccess::createIndex(source, level.row, 0, item));
                if (!level.index.isValid()) { // going: the base class tells of a removal before the rows are gone
                    pass(level, false);
                    continue;
                }
            }
            level.matched = matches(item, level.row, columns);
            if (isVoid())
                break;
            const int children = item->childCount();
            if (children > 0) {
                const QModelIndex index = level.index;
                levels.push_back(Level{item, index, 0, children});
            } else {
                show(level, level.matched);
            }
        }
        return 0;
    }

    void show(Level &level, bool visible)
    {
        const TaviTreeItem *const item = level.parent->child(level.row);
        if (view && !(over_all && staysHidden(item, !visible)))
            view->setRowHidden(level.index.isValid() ? level.index.row() : level.row, level.proxy_parent, !visible);
        pass(level, visible);
    }

    void pass(Level &level, bool visible)
    {
        level.visible_rows += visible ? 1 : 0;
        ++level.row;
    }

    /// Notes what becomes of a row. True if it was hidden before and is again: most rows are while one types, and the
    /// view would look each of them up in its tables.
    bool staysHidden(const TaviTreeItem *item, bool hidden)
    {
        const RowLeft now{item->id(), hidden};
        std::vector<RowLeft> &left = proxy->rows_left;
        const std::size_t here = noted++;
        if (here >= left.size()) {
            left.push_back(now);
            return false;
        }
        const RowLeft before = std::exchange(left[here], now);
        return comparing && hidden && before.hidden && before.item_id == now.item_id;
    }

    bool isHiddenColumn(int column) const
    {
        const auto place = static_cast<std::size_t>(column);
        return place < hidden_columns.size() && hidden_columns[place];
    }

    bool isIn(const TaviTreeItem *item, int row, int column) const
    {
        if (model_answers) {
            return matcher.isIn(
                source
                    ->data(TaviTreeModelAccess::createIndex(source, row, column, const_cast<TaviTreeItem *>(item)),
                           Qt::DisplayRole)
                    .toString());
        }
        if (TaviTreeItemAccess::overridesData(item))
            return matcher.isIn(item->data(column, Qt::DisplayRole).toString());
        const QVariant *const value = TaviTreeItemAccess::storedValue(item, column, Qt::DisplayRole);
        if (!value)
            return false;
        if (value->userType() == QMetaType::QString)
            return matcher.isIn(*static_cast<const QString *>(value->constData()));
        return matcher.isIn(value->toString());
    }

    TaviTreeProxyModel *proxy;
    TaviTreeModel *source;
    QTreeView *view;
    KeywordMatcher matcher;
    std::vector<bool> hidden_columns;
    bool model_answers;
    int structure;
    bool over_all = false;
    bool comparing = false;
    std::size_t noted = 0; // rows in the list of what is left
};

namespace {

constexpr int most_beginnings = 8;

} // namespace

void TaviTreeProxyModel::updateStatus(QTreeView *view)
{
    // By name, because a class of the application may have declared the slot anew; found once.
    if (view->metaObject() != status_class) {
        status_class = view->metaObject();
        status_slot = status_class->indexOfSlot("updateStatusBar(int)");
        status_is_usual =
            status_slot >= 0
            && status_class->method(status_slot).enclosingMetaObject() == &TaviTreeView::staticMetaObject;
    }
    int stays = 0;
    void *arguments[] = {nullptr, &stays};
    if (status_is_usual) // what the call by number below comes to, for each single change
        static_cast<TaviTreeView *>(view)->updateStatusBar(stays);
    else if (status_slot >= 0)
        QMetaObject::metacall(view, QMetaObject::InvokeMetaMethod, status_slot, arguments);
}

std::vector<bool> TaviTreeProxyModel::hiddenColumns() const
{
    std::vector<bool> hidden;
    const QTreeView *const view = hidingView();
    const QHeaderView *const header = view ? view->header() : nullptr;
    for (int column = 0; header && column < header->count(); ++column)
        hidden.push_back(header->isSectionHidden(column));
    return hidden;
}

bool TaviTreeProxyModel::runsShort() const
{
    const auto *const source = qobject_cast<const TaviTreeModel *>(sourceModel());
    return source && typeid(*this) == typeid(TaviTreeProxyModel) && !TaviTreeModelAccess::overridesStructure(source)
           && filterRegExp().pattern().isEmpty();
}

void TaviTreeProxyModel::filter()
{
    filter(filter_string);
}

void TaviTreeProxyModel::filter(QString string)
{
    if (!beginRun())
        return;
    filter_string = string;
    if (QTreeView *const view = hidingView())
        view->setUpdatesEnabled(false);
    lookThroughAll();
    endRun();
}

bool TaviTreeProxyModel::beginRun()
{
    if (filtering_now)
        return false;
    auto *const view = qobject_cast<TaviTreeView *>(QObject::parent());
    hidden_known = view && view->hiddenRowsAreKnown() && view_tells && !hidden_unknown;
    filtering_now = true;
    ++layout_reasons;
    return true;
}

void TaviTreeProxyModel::endRun()
{
    ++layout_reasons;
    if (QTreeView *const view = hidingView()) {
        if (view->testAttribute(Qt::WA_ForceUpdatesDisabled))
            view->setUpdatesEnabled(true);
        const Presence presence(this);
        const bool before = goByKeptCount(true);
        updateStatus(view);
        if (presence.isOver())
            return;
        goByKeptCount(before);
    }
    filtering_now = false;
}

void TaviTreeProxyModel::lookThroughAll()
{
    all_due = false;
    texts_seen = TaviTreeItemAccess::textWrites().count;
    searched_without = hiddenColumns();
    searched_case = filterCaseSensitivity();
    searched_inverted = inverted;
    hidden_unknown = !view_tells;
    visible_top_rows = -1;
    if (runsShort()) {
        for (int beginning = 0; beginning < most_beginnings; ++beginning) {
            Run run(this);
            run.goOverAll();
            run.all();
            if (!run.isVoid()) {
                run.haveGoneOverAll();
                return;
            }
        }
    }
    for (int row = 0; row < rowCount(); ++row)
        filterRow(row, QModelIndex());
}

bool TaviTreeProxyModel::filterRow(int row, const QModelIndex &parent)
{
    // Kept, because an application's class that is asked for a text may move rows.
    const QPersistentModelIndex kept_parent(parent);
    const QPersistentModelIndex this_row(index(row, 0, parent));
    if (this_row.isValid() && runsShort()) {
        ++layout_reasons;
        rows_left_structure = -1;
        auto *const source = static_cast<TaviTreeModel *>(sourceModel());
        Run run(this);
        const bool visible = run.one(parent.isValid() ? TaviTreeModelAccess::itemOf(source, mapToSource(parent))
                                                      : TaviTreeModelAccess::root(source),
                                     parent, mapToSource(this_row).row());
        if (!parent.isValid())
            visible_top_rows = -1;
        if (!run.isVoid())
            return visible;
    }
    const KeywordMatcher matcher(filter_string, filterCaseSensitivity());
    bool visible = filter_string.isEmpty();
    if (!visible) {
        const std::vector<bool> hidden_columns = hiddenColumns();
        bool hit = false;
        for (int column = 0; column < columnCount(kept_parent) && !hit; ++column) {
            const auto place = static_cast<std::size_t>(column);
            if (place >= hidden_columns.size() || !hidden_columns[place])
                hit = matcher.isIn(data(this_row.sibling(this_row.row(), column), Qt::DisplayRole).toString());
        }
        visible = hit != inverted;
    }
    for (int child = 0; this_row.isValid() && child < rowCount(this_row); ++child)
        visible = filterRow(child, this_row) || visible;
    QTreeView *const view = hidingView();
    if (view && this_row.isValid()) {
        if (!this_row.parent().isValid())
            visible_top_rows = -1;
        ++layout_reasons;
        rows_left_structure = -1;
        view->setRowHidden(this_row.row(), this_row.parent(), !visible);
    }
    return visible;
}

void TaviTreeProxyModel::showAll()
{
    if (!hidden_unknown)
        return;
    QTreeView *const view = hidingView();
    if (!view)
        return;
    rows_left_structure = -1;
    // A hidden row is an index that the view keeps; so the kept ones are all that need be looked at.
    const QModelIndexList kept = persistentIndexList();
    for (const QModelIndex &index : kept) {
        if (index.column() == 0 && view->isRowHidden(index.row(), index.parent()))
            view->setRowHidden(index.row(), index.parent(), false);
    }
    hidden_unknown = !view_tells;
    visible_top_rows = -1;
}

void TaviTreeProxyModel::lookThroughChanged(const QModelIndex &parent, int first, int last, bool came)
{
    if (rows == Rows::Straight && filter_string.isEmpty() && !all_due && !hidden_unknown && !filtering_now) {
        filtering_now = true; // nothing is hidden: only the status is told
        endRun();
        return;
    }
    if (!beginRun())
        return;
    const auto *const source = qobject_cast<const TaviTreeModel *>(sourceModel());
    if (!runsShort()) {
        if (QTreeView *const view = hidingView())
            view->setUpdatesEnabled(false);
        lookThroughAll();
    } else if (filter_string.isEmpty() && !all_due) {
        showAll();
    } else {
        const TaviTreeItemAccess::TextWrites &writes = TaviTreeItemAccess::textWrites();
        const quint64 unseen = writes.count - texts_seen;
        const bool every_row_may_depend = TaviTreeModelAccess::overridesData(source)
                                          || TaviTreeItemAccess::overridesBelow(TaviTreeModelAccess::root(source));
        if (all_due || hidden_unknown || every_row_may_depend || unseen > TaviTreeItemAccess::TextWrites::kept
            || searched_case != filterCaseSensitivity() || searched_inverted != inverted
            || searched_without != hiddenColumns()) {
            if (QTreeView *const view = hidingView())
                view->setUpdatesEnabled(false);
            lookThroughAll();
        } else {
            texts_seen = writes.count;
            lookAtRows(parent, first, last, came);
            for (quint64 write = writes.count - unseen; write != writes.count; ++write) {
                const QModelIndex written =
                    mapFromSource(source->indexFromId(writes.ids[write % TaviTreeItemAccess::TextWrites::kept]));
                if (written.isValid())
                    lookAtRows(written.parent(), written.row(), written.row(), false);
            }
        }
    }
    endRun();
}

void TaviTreeProxyModel::lookAtRows(const QModelIndex &parent, int first, int last, bool with_all_below)
{
    QTreeView *const view = hidingView();
    if (!view)
        return;
    rows_left_structure = -1;
    Run run(this);
    const auto *const source = static_cast<TaviTreeModel *>(sourceModel());
    const auto item_of = [&](const QModelIndex &index) {
        return index.isValid() ? TaviTreeModelAccess::itemOf(source, mapToSource(index))
                               : TaviTreeModelAccess::root(source);
    };
    // The row by itself, and whether something below it is in sight.
    const auto update = [&](const QModelIndex &index, const QModelIndex &above) {
        const QModelIndex in_source = mapToSource(index);
        bool visible = run.matches(item_of(index), in_source.row(), item_of(above)->columnCount());
        for (int child = 0, count = rowCount(index); child < count && !visible; ++child)
            visible = !view->isRowHidden(child, index);
        if (visible == !view->isRowHidden(index.row(), above))
            return false;
        if (!above.isValid() && visible_top_rows >= 0)
            visible_top_rows += visible ? 1 : -1;
        view->setRowHidden(index.row(), above, !visible);
        return true;
    };
    for (int row = first; row <= last; ++row) {
        const QModelIndex changed = index(row, 0, parent);
        if (!changed.isValid())
            continue;
        if (with_all_below)
            run.one(item_of(parent), parent, mapToSource(changed).row());
        else
            update(changed, parent);
    }
    for (QModelIndex above = parent; above.isValid(); above = above.parent()) {
        if (!update(above, above.parent()))
            break;
    }
}

void TaviTreeProxyModel::afterDataChange(const QModelIndex &top_left, const QModelIndex &bottom_right)
{
    const bool any_row = filter_string.isEmpty() && !all_due; // then nobody asks which
    lookThroughChanged(any_row ? QModelIndex() : top_left.parent(), top_left.row(), bottom_right.row(), false);
}

void TaviTreeProxyModel::afterRowsRemoved(const QModelIndex &parent)
{
    lookThroughChanged(parent, 0, -1, false);
}

void TaviTreeProxyModel::filterInserted(const QModelIndex &parent, int first, int last)
{
    lookThroughChanged(parent, first, last, true);
}

void TaviTreeProxyModel::afterReset()
{
    // The view has yet to forget its hidden rows; what is hidden now would be forgotten with them.
    all_due = true;
    hidden_unknown = true;
    visible_top_rows = -1;
    if (runsShort())
        return;
    filter();
    all_due = true;
}

void TaviTreeProxyModel::sourceWasReset()
{
    if (all_due)
        filter();
}

void TaviTreeProxyModel::hiddenRowsForgotten()
{
    view_tells = true;
    rows_left_structure = -1;
    filter();
}

void TaviTreeProxyModel::hiddenRowsTouched()
{
    view_tells = true;
    if (filtering_now)
        return;
    hidden_unknown = true;
    visible_top_rows = -1;
}

int TaviTreeProxyModel::visibleTopLevelRows() const
{
    const QTreeView *const view = hidingView();
    if (kept_count_will_do && view_tells && visible_top_rows >= 0)
        return visible_top_rows;
    const int rows_in_all = rowCount();
    int count = rows_in_all;
    for (int row = 0; view && row < rows_in_all; ++row)
        count -= view->isRowHidden(row, QModelIndex()) ? 1 : 0;
    if (visible_top_rows >= 0 && visible_top_rows != count)
        hidden_unknown = true; // somebody has, and has not told
    visible_top_rows = count;
    return count;
}
