// SPDX-License-Identifier: MIT
//
// Rows one to one. The base class keeps a table per parent and writes the whole table anew for each row that comes or
// goes; with 100,000 rows that is what adding rows one by one costs. As long as rows are neither sorted nor left out
// the table says nothing, so it is not made: the base class does not hear of the source's changes, and every virtual
// operation that would read its tables is answered here. An index then carries what the source's index carries.
//
// The base class moves indexes that are kept (of the view's selection, of open and of hidden rows) through the
// virtual mapToSource() and mapFromSource(). That is used to change over: while the rows are `Leaving`, the first
// reads the old kind and the second makes the new kind.
//
// The base class's setters of a filter expression are no virtual operations and tell nobody, but they ask
// filterAcceptsRow() for the rows of tables that exist. So one table is made as a tripwire: of the top level, with
// every row left out, and never brought up to date. When it is asked for, an expression is there; then the base
// class is in the midst of its tables, and the change waits for the next question for rows, or for the event loop.
#include "treeviews/tavitreeproxymodel.h"

#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreeitem_p.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreemodel_p.h"
#include "treeviews/tavitreeproxymodel_p.h"

#include <QSignalBlocker>

#include <algorithm>
#include <typeinfo>

namespace {

struct Connection {
    const char *signal;
    const char *slot;
};

// How the base class hears of its source. The slots are private, but they stand in its meta object.
const Connection of_base_class[] = {
    {SIGNAL(dataChanged(QModelIndex, QModelIndex, QVector<int>)),
     SLOT(_q_sourceDataChanged(QModelIndex, QModelIndex, QVector<int>))},
    {SIGNAL(headerDataChanged(Qt::Orientation, int, int)),
     SLOT(_q_sourceHeaderDataChanged(Qt::Orientation, int, int))},
    {SIGNAL(rowsAboutToBeInserted(QModelIndex, int, int)),
     SLOT(_q_sourceRowsAboutToBeInserted(QModelIndex, int, int))},
    {SIGNAL(rowsInserted(QModelIndex, int, int)), SLOT(_q_sourceRowsInserted(QModelIndex, int, int))},
    {SIGNAL(columnsAboutToBeInserted(QModelIndex, int, int)),
     SLOT(_q_sourceColumnsAboutToBeInserted(QModelIndex, int, int))},
    {SIGNAL(columnsInserted(QModelIndex, int, int)), SLOT(_q_sourceColumnsInserted(QModelIndex, int, int))},
    {SIGNAL(rowsAboutToBeRemoved(QModelIndex, int, int)), SLOT(_q_sourceRowsAboutToBeRemoved(QModelIndex, int, int))},
    {SIGNAL(rowsRemoved(QModelIndex, int, int)), SLOT(_q_sourceRowsRemoved(QModelIndex, int, int))},
    {SIGNAL(columnsAboutToBeRemoved(QModelIndex, int, int)),
     SLOT(_q_sourceColumnsAboutToBeRemoved(QModelIndex, int, int))},
    {SIGNAL(columnsRemoved(QModelIndex, int, int)), SLOT(_q_sourceColumnsRemoved(QModelIndex, int, int))},
    {SIGNAL(rowsAboutToBeMoved(QModelIndex, int, int, QModelIndex, int)),
     SLOT(_q_sourceRowsAboutToBeMoved(QModelIndex, int, int, QModelIndex, int))},
    {SIGNAL(rowsMoved(QModelIndex, int, int, QModelIndex, int)),
     SLOT(_q_sourceRowsMoved(QModelIndex, int, int, QModelIndex, int))},
    {SIGNAL(columnsAboutToBeMoved(QModelIndex, int, int, QModelIndex, int)),
     SLOT(_q_sourceColumnsAboutToBeMoved(QModelIndex, int, int, QModelIndex, int))},
    {SIGNAL(columnsMoved(QModelIndex, int, int, QModelIndex, int)),
     SLOT(_q_sourceColumnsMoved(QModelIndex, int, int, QModelIndex, int))},
    {SIGNAL(layoutAboutToBeChanged(QList<QPersistentModelIndex>, QAbstractItemModel::LayoutChangeHint)),
     SLOT(_q_sourceLayoutAboutToBeChanged(QList<QPersistentModelIndex>, QAbstractItemModel::LayoutChangeHint))},
    {SIGNAL(layoutChanged(QList<QPersistentModelIndex>, QAbstractItemModel::LayoutChangeHint)),
     SLOT(_q_sourceLayoutChanged(QList<QPersistentModelIndex>, QAbstractItemModel::LayoutChangeHint))},
    {SIGNAL(modelAboutToBeReset()), SLOT(_q_sourceAboutToBeReset())},
    {SIGNAL(modelReset()), SLOT(_q_sourceReset())},
};

const char *required_besides = nullptr;

bool baseClassHas(const char *slot)
{
    return QSortFilterProxyModel::staticMetaObject.indexOfSlot(slot) >= 0;
}

/// Whether this release of the base class has all of these slots. If not, it is never cut off.
bool baseClassIsKnown()
{
    static const bool known =
        std::all_of(std::begin(of_base_class), std::end(of_base_class), [](const Connection &c) {
            return baseClassHas(QMetaObject::normalizedSignature(c.slot + 1).constData());
        });
    return known && (!required_besides || baseClassHas(required_besides));
}

} // namespace

void requireSlotOfBaseClass(const char *slot)
{
    required_besides = slot;
}

bool TaviTreeProxyModel::canBeStraight(const QAbstractItemModel *source) const
{
    return typeid(*this) == typeid(TaviTreeProxyModel) && qobject_cast<const TaviTreeModel *>(source)
           && sortColumn() < 0 && filterRegExp().pattern().isEmpty() && baseClassIsKnown();
}

void TaviTreeProxyModel::setSourceModel(QAbstractItemModel *source)
{
    for (const QMetaObject::Connection &connection : source_connections)
        disconnect(connection);
    source_connections.clear();
    QSortFilterProxyModel::setSourceModel(source); // calls takeUpSource() on its way
    if (rows == Rows::Straight) {
        for (const Connection &connection : of_base_class)
            disconnect(source, connection.signal, this, connection.slot);
        followSource();
        layTripwire();
    }
    watchSource(source);
    sourceWasReset();
}

void TaviTreeProxyModel::watchSource(QAbstractItemModel *source)
{
    if (!source)
        return;
    // After all others: then the base class, or what stands for it, has passed a reset on to the views.
    source_connections.push_back(
        connect(source, &QAbstractItemModel::modelReset, this, &TaviTreeProxyModel::sourceWasReset));
    source_connections.push_back(connect(source, &QObject::destroyed, this, &TaviTreeProxyModel::sourceIsGone));
}

void TaviTreeProxyModel::takeUpSource()
{
    // In the middle of the base class's reset: what has been told so far spoke of the old source, and views will ask
    // for the rows of the new one as soon as it ends.
    const bool one_to_one = canBeStraight(sourceModel());
    rows = one_to_one ? Rows::Straight : Rows::Mapped;
    expression_due = false;
    tripwire_lies = false;
    open_brackets.clear();
    straight_source = one_to_one ? qobject_cast<TaviTreeModel *>(sourceModel()) : nullptr;
}

void TaviTreeProxyModel::sourceIsGone()
{
    // The base class has let go of the source, but told nobody; views would go on reading indexes of deleted items.
    source_connections.clear();
    straight_source = nullptr;
    beginResetModel();
    rows = Rows::Mapped;
    endResetModel();
    sourceWasReset();
}

void TaviTreeProxyModel::leaveStraightRows(bool quietly)
{
    if (rows != Rows::Straight)
        return;
    if (!quietly)
        Q_EMIT layoutAboutToBeChanged();
    for (const QMetaObject::Connection &connection : source_connections)
        disconnect(connection);
    source_connections.clear();
    rows = Rows::Leaving;
    {
        const QSignalBlocker silence(this);
        invalidate();
    }
    rows = Rows::Mapped;
    TaviTreeModel *const source = straight_source;
    straight_source = nullptr;
    for (const Connection &connection : of_base_class)
        connect(source, connection.signal, this, connection.slot);
    watchSource(source);
    if (!quietly)
        Q_EMIT layoutChanged();
}

void TaviTreeProxyModel::layTripwire()
{
    if (rows != Rows::Straight || tripwire_lies || !straight_source || straight_source->rowCount() == 0)
        return;
    {
        // A table that was made while there were no rows has none to ask for. No index is kept then.
        const QSignalBlocker silence(this);
        invalidate();
    }
    QSortFilterProxyModel::rowCount(); // makes the table
    tripwire_lies = true;
}

bool TaviTreeProxyModel::hasExpression() const
{
    return !filterRegExp().pattern().isEmpty();
}

void TaviTreeProxyModel::noteExpression() const
{
    if (expression_due || !hasExpression())
        return;
    expression_due = true;
    auto *const self = const_cast<TaviTreeProxyModel *>(this);
    QMetaObject::invokeMethod(
        self, [self] { self->goByExpression(); }, Qt::QueuedConnection);
}

void TaviTreeProxyModel::goByExpression()
{
    if (!expression_due || !open_brackets.empty())
        return;
    expression_due = false;
    if (rows != Rows::Straight || !hasExpression())
        return;
    accepts_all = true; // first the rows as they are, then those that go
    leaveStraightRows(false);
    rowCount();
    accepts_all = false;
    invalidateFilter();
}

QModelIndex TaviTreeProxyModel::settled(const QModelIndex &asked_for) const
{
    if (!expression_due)
        return asked_for;
    const QPersistentModelIndex kept(asked_for);
    const_cast<TaviTreeProxyModel *>(this)->goByExpression();
    return kept;
}

void TaviTreeProxyModel::followSource()
{
    using M = QAbstractItemModel;
    const auto follow = [this](auto signal, auto reaction) {
        source_connections.push_back(connect(straight_source, signal, this, reaction));
    };
    // Between the beginning and the end of a change the rows stay straight: signals carry indexes of that kind.
    const auto open = [this](bool passed_on) {
        open_brackets.push_back(passed_on);
        return passed_on;
    };
    const auto close = [this](auto end) {
        if (open_brackets.empty())
            return;
        const Presence presence(this);
        if (open_brackets.back())
            end();
        if (presence.isOver()) // deleted by a slot
            return;
        if (!open_brackets.empty())
            open_brackets.pop_back();
        if (!tripwire_lies) // the first rows: nothing told of an expression that was set before
            noteExpression();
        layTripwire();
        goByExpression();
    };
    follow(&M::dataChanged, [this](const QModelIndex &from, const QModelIndex &to, const QVector<int> &roles) {
        if (!from.isValid() || !to.isValid())
            return;
        goByExpression();
        // Where that has made the base class follow the source, it will do so from the next signal on.
        const bool one_to_one = rows == Rows::Straight;
        Q_EMIT dataChanged(one_to_one ? straight(from) : mapFromSource(from),
                           one_to_one ? straight(to) : mapFromSource(to), roles);
    });
    follow(&M::headerDataChanged, [this](Qt::Orientation orientation, int first, int last) {
        Q_EMIT headerDataChanged(orientation, first, last);
    });
    // A range without rows tells nothing, and the base class does not pass it on either.
    follow(&M::rowsAboutToBeInserted, [this, open](const QModelIndex &parent, int first, int last) {
        if (open(first >= 0 && last >= first))
            beginInsertRows(straight(parent), first, last);
    });
    follow(&M::rowsInserted, [this, close] { close([this] { endInsertRows(); }); });
    follow(&M::rowsAboutToBeRemoved, [this, open](const QModelIndex &parent, int first, int last) {
        if (open(first >= 0 && last >= first))
            beginRemoveRows(straight(parent), first, last);
    });
    follow(&M::rowsRemoved, [this, close] { close([this] { endRemoveRows(); }); });
    follow(&M::columnsAboutToBeInserted, [this, open](const QModelIndex &parent, int first, int last) {
        if (open(first >= 0 && last >= first))
            beginInsertColumns(straight(parent), first, last);
    });
    follow(&M::columnsInserted, [this, close] { close([this] { endInsertColumns(); }); });
    follow(&M::columnsAboutToBeRemoved, [this, open](const QModelIndex &parent, int first, int last) {
        if (open(first >= 0 && last >= first))
            beginRemoveColumns(straight(parent), first, last);
    });
    follow(&M::columnsRemoved, [this, close] { close([this] { endRemoveColumns(); }); });
    follow(&M::rowsAboutToBeMoved,
           [this, open](const QModelIndex &parent, int first, int last, const QModelIndex &to, int row) {
               open(true);
               open_brackets.back() = beginMoveRows(straight(parent), first, last, straight(to), row);
           });
    follow(&M::rowsMoved, [this, close] { close([this] { endMoveRows(); }); });
    follow(&M::columnsAboutToBeMoved,
           [this, open](const QModelIndex &parent, int first, int last, const QModelIndex &to, int column) {
               open(true);
               open_brackets.back() = beginMoveColumns(straight(parent), first, last, straight(to), column);
           });
    follow(&M::columnsMoved, [this, close] { close([this] { endMoveColumns(); }); });
    const auto parents_of = [this](const QList<QPersistentModelIndex> &parents) {
        QList<QPersistentModelIndex> mapped;
        for (const QPersistentModelIndex &parent : parents)
            mapped.append(straight(parent));
        return mapped;
    };
    follow(&M::layoutAboutToBeChanged,
           [this, open, parents_of](const QList<QPersistentModelIndex> &parents, M::LayoutChangeHint hint) {
               open(true);
               Q_EMIT layoutAboutToBeChanged(parents_of(parents), hint);
               moving_indexes.clear();
               const QModelIndexList kept = persistentIndexList();
               for (const QModelIndex &index : kept)
                   moving_indexes.append({index, mapToSource(index)});
           });
    follow(&M::layoutChanged,
           [this, close, parents_of](const QList<QPersistentModelIndex> &parents, M::LayoutChangeHint hint) {
               close([&] {
                   for (const auto &[before, now] : qAsConst(moving_indexes))
                       changePersistentIndex(before, straight(now));
                   moving_indexes.clear();
                   Q_EMIT layoutChanged(parents_of(parents), hint);
               });
           });
    follow(&M::modelAboutToBeReset, [this, open] {
        open(true);
        beginResetModel();
    });
    follow(&M::modelReset, [this, close] {
        tripwire_lies = false; // so that an expression is looked for
        close([this] { endResetModel(); });
    });
}

QModelIndex TaviTreeProxyModel::straight(const QModelIndex &source_index) const
{
    return source_index.isValid()
               ? createIndex(source_index.row(), source_index.column(), source_index.internalPointer())
               : QModelIndex();
}

QModelIndex TaviTreeProxyModel::mapToSource(const QModelIndex &proxy_index) const
{
    if (rows == Rows::Mapped)
        return QSortFilterProxyModel::mapToSource(proxy_index);
    return straight_source && proxy_index.isValid() && proxy_index.model() == this ? TaviTreeModelAccess::createIndex(
               straight_source, proxy_index.row(), proxy_index.column(), proxy_index.internalPointer())
                                                                                   : QModelIndex();
}

QModelIndex TaviTreeProxyModel::mapFromSource(const QModelIndex &source_index) const
{
    settled({});
    if (rows != Rows::Straight)
        return QSortFilterProxyModel::mapFromSource(source_index);
    return straight_source && source_index.model() == straight_source ? straight(source_index) : QModelIndex();
}

QModelIndex TaviTreeProxyModel::index(int row, int column, const QModelIndex &asked_parent) const
{
    const QModelIndex parent = settled(asked_parent);
    if (rows != Rows::Straight)
        return QSortFilterProxyModel::index(row, column, parent);
    if (!straight_source)
        return {};
    // Views ask this of each row that they lay out.
    if (TaviTreeModelAccess::isPlain(straight_source) && (!parent.isValid() || parent.model() == this)) {
        const auto *const parent_item = parent.isValid() ? static_cast<const TaviTreeItem *>(parent.internalPointer())
                                                         : TaviTreeModelAccess::root(straight_source);
        if (!parent.isValid() || !TaviTreeItemAccess::overridesData(parent_item)) {
            if (row < 0 || column < 0 || parent.column() > 0 || row >= parent_item->childCount()
                || column >= parent_item->columnCount())
                return {};
            TaviTreeItem *const item = parent_item->child(row);
            return item ? createIndex(row, column, item) : QModelIndex();
        }
    }
    return straight(straight_source->index(row, column, mapToSource(parent)));
}

QModelIndex TaviTreeProxyModel::parent(const QModelIndex &child) const
{
    if (rows != Rows::Straight)
        return QSortFilterProxyModel::parent(child);
    if (!straight_source)
        return {};
    // Views ask this of each row that changes.
    if (child.isValid() && child.model() == this && TaviTreeModelAccess::isPlain(straight_source)) {
        const auto *const item = static_cast<const TaviTreeItem *>(child.internalPointer());
        if (!TaviTreeItemAccess::overridesData(item)) {
            TaviTreeItem *const parent_item = item->parentTreeItem();
            return parent_item && parent_item != TaviTreeModelAccess::root(straight_source)
                       ? createIndex(parent_item->row(), 0, parent_item)
                       : QModelIndex();
        }
    }
    return straight(straight_source->parent(mapToSource(child)));
}

QModelIndex TaviTreeProxyModel::sibling(int row, int column, const QModelIndex &index) const
{
    if (rows != Rows::Straight)
        return QSortFilterProxyModel::sibling(row, column, index);
    if (!straight_source)
        return {};
    // Views go along a row with this.
    if (index.isValid() && row == index.row() && column >= 0
        && !TaviTreeModelAccess::overridesStructure(straight_source)) {
        const auto *const item = static_cast<const TaviTreeItem *>(index.internalPointer());
        const TaviTreeItem *const parent_item = item->parentTreeItem();
        return parent_item && column < parent_item->columnCount() ? createIndex(row, column, index.internalPointer())
                                                                  : QModelIndex();
    }
    return straight(straight_source->sibling(row, column, mapToSource(index)));
}

int TaviTreeProxyModel::rowCount(const QModelIndex &asked_parent) const
{
    const QModelIndex parent = settled(asked_parent);
    if (rows != Rows::Straight)
        return QSortFilterProxyModel::rowCount(parent);
    return straight_source ? straight_source->rowCount(mapToSource(parent)) : 0;
}

int TaviTreeProxyModel::columnCount(const QModelIndex &parent) const
{
    if (rows != Rows::Straight)
        return QSortFilterProxyModel::columnCount(parent);
    return straight_source ? straight_source->columnCount(mapToSource(parent)) : 0;
}

bool TaviTreeProxyModel::hasChildren(const QModelIndex &asked_parent) const
{
    const QModelIndex parent = settled(asked_parent);
    if (rows != Rows::Straight)
        return QSortFilterProxyModel::hasChildren(parent);
    if (!straight_source)
        return false;
    // Views ask this of each row that they lay out.
    if (parent.isValid() && parent.model() == this && TaviTreeModelAccess::isPlain(straight_source)) {
        const auto *const item = static_cast<const TaviTreeItem *>(parent.internalPointer());
        if (!TaviTreeItemAccess::overridesData(item))
            return parent.column() == 0 && item->childCount() > 0 && item->columnCount() > 0;
    }
    return straight_source->hasChildren(mapToSource(parent));
}

Qt::ItemFlags TaviTreeProxyModel::flags(const QModelIndex &index) const
{
    // Views ask this of each row that they lay out, and the base class goes through the source's index.
    if (rows == Rows::Straight && straight_source && index.isValid() && index.model() == this)
        return straight_source->flags(mapToSource(index));
    return QSortFilterProxyModel::flags(index);
}

QVariant TaviTreeProxyModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (rows != Rows::Straight)
        return QSortFilterProxyModel::headerData(section, orientation, role);
    return straight_source ? straight_source->headerData(section, orientation, role) : QVariant();
}

bool TaviTreeProxyModel::setHeaderData(int section, Qt::Orientation orientation, const QVariant &value, int role)
{
    if (rows != Rows::Straight)
        return QSortFilterProxyModel::setHeaderData(section, orientation, value, role);
    QAbstractItemModel *const source = straight_source;
    return source && source->setHeaderData(section, orientation, value, role);
}

bool TaviTreeProxyModel::insertRows(int row, int count, const QModelIndex &parent)
{
    if (rows != Rows::Straight)
        return QSortFilterProxyModel::insertRows(row, count, parent);
    return straight_source && straight_source->insertRows(row, count, mapToSource(parent));
}

bool TaviTreeProxyModel::insertColumns(int column, int count, const QModelIndex &parent)
{
    if (rows != Rows::Straight)
        return QSortFilterProxyModel::insertColumns(column, count, parent);
    return straight_source && straight_source->insertColumns(column, count, mapToSource(parent));
}

bool TaviTreeProxyModel::removeRows(int row, int count, const QModelIndex &parent)
{
    if (rows != Rows::Straight)
        return QSortFilterProxyModel::removeRows(row, count, parent);
    return straight_source && straight_source->removeRows(row, count, mapToSource(parent));
}

bool TaviTreeProxyModel::removeColumns(int column, int count, const QModelIndex &parent)
{
    if (rows != Rows::Straight)
        return QSortFilterProxyModel::removeColumns(column, count, parent);
    return straight_source && straight_source->removeColumns(column, count, mapToSource(parent));
}

void TaviTreeProxyModel::sort(int column, Qt::SortOrder order)
{
    goByExpression();
    if (rows == Rows::Straight && column >= 0) {
        Q_EMIT layoutAboutToBeChanged(QList<QPersistentModelIndex>(), VerticalSortHint);
        leaveStraightRows(true);
        {
            const QSignalBlocker silence(this);
            QSortFilterProxyModel::sort(column, order);
        }
        Q_EMIT layoutChanged(QList<QPersistentModelIndex>(), VerticalSortHint);
        return;
    }
    QSortFilterProxyModel::sort(column, order);
}

void TaviTreeProxyModel::setFilterRegExp(const QRegExp &expression)
{
    leaveStraightRows(false);
    rowCount(); // the base class takes rows out of the tables that it has
    QSortFilterProxyModel::setFilterRegExp(expression);
}

void TaviTreeProxyModel::setFilterRegExp(const QString &pattern)
{
    leaveStraightRows(false);
    rowCount();
    QSortFilterProxyModel::setFilterRegExp(pattern);
}

void TaviTreeProxyModel::setFilterWildcard(const QString &pattern)
{
    leaveStraightRows(false);
    rowCount();
    QSortFilterProxyModel::setFilterWildcard(pattern);
}

void TaviTreeProxyModel::setFilterFixedString(const QString &pattern)
{
    leaveStraightRows(false);
    rowCount();
    QSortFilterProxyModel::setFilterFixedString(pattern);
}
