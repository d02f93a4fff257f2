// SPDX-License-Identifier: MIT
//
// Keys, mouse and drags.
#include "treeviews/tavitreeproxymodel.h"
#include "treeviews/tavitreeview.h"
#include "treeviews/viewkeys_p.h"

#include <QContextMenuEvent>
#include <QDragEnterEvent>
#include <QDragLeaveEvent>
#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>

void TaviTreeView::keyPressEvent(QKeyEvent *event)
{
    const QString text = event->text();
    if (isPrintable(text)) {
        if (!search_time.isValid() || search_time.elapsed() > search_pause)
            search_string = text;
        else
            search_string += text;
    }
    search_time.start();

    const QPointer<TaviTreeView> self(this);
    if (opensSearchWindow(event))
        showFilterFloater();
    if (closesSearchWindow(event))
        closeFilterFloater();
    if (!self)
        return;

    if (isViewKey(event->key()))
        QTreeView::keyPressEvent(event);
    else if (event->key() == Qt::Key_Right || event->key() == Qt::Key_Left)
        setSelectedExpanded(event->key() == Qt::Key_Right);
    else if (!isPrintable(text))
        QTreeView::keyPressEvent(event);
    else
        searchAhead();
}

void TaviTreeView::searchAhead()
{
    const QModelIndex current = currentIndex();
    if (!current.isValid())
        return;
    const int sorted_by = sortColumn();
    QVector<int> columns;
    if (sorted_by != -1)
        columns.append(sorted_by);
    for (int column = 0; column < model()->columnCount(); ++column) {
        if (column != sorted_by)
            columns.append(column);
    }
    for (const int column : qAsConst(columns)) {
        // The row counts as one of the top level, also where the current one lies deeper.
        const QModelIndex start = model()->index(current.row(), column);
        if (!start.isValid())
            continue;
        const QModelIndexList hits = model()->match(start, Qt::DisplayRole, search_string, 1,
                                                    Qt::MatchContains | Qt::MatchWrap | Qt::MatchRecursive);
        if (hits.isEmpty())
            continue;
        const QPersistentModelIndex hit = hits.first();
        const QPointer<TaviTreeView> self(this);
        select({hit, hit},
               QItemSelectionModel::SelectCurrent | QItemSelectionModel::Clear | QItemSelectionModel::Rows);
        if (self && hit.isValid())
            scrollTo(hit, EnsureVisible);
        return;
    }
}

void TaviTreeView::setSelectedExpanded(bool expanded)
{
    if (!itemsExpandable())
        return;
    QVector<ExpandChange> changes;
    const QModelIndexList rows = selectedRows(0);
    for (const QModelIndex &row : rows)
        changes.append({row, expanded});
    applyExpandChanges(changes);
}

QItemSelectionModel::SelectionFlags TaviTreeView::selectionCommand(const QModelIndex &index,
                                                                   const QEvent *event) const
{
    if (!index.isValid())
        return invalid_index_selection_command;
    if (event && event->type() == QEvent::ContextMenu && selectionModel() && selectionModel()->isSelected(index))
        return QItemSelectionModel::NoUpdate;
    return QTreeView::selectionCommand(index, event);
}

QItemSelectionModel::SelectionFlags TaviTreeView::invalidIndexSelectionCommand() const
{
    return invalid_index_selection_command;
}

void TaviTreeView::setInvalidIndexSelectionCommand(QItemSelectionModel::SelectionFlags command)
{
    invalid_index_selection_command = command;
}

void TaviTreeView::contextMenuEvent(QContextMenuEvent *event)
{
    event->accept();
    Q_EMIT contextMenuRequested(indexAt(event->pos()));
}

void TaviTreeView::mouseDoubleClickEvent(QMouseEvent *event)
{
    const QPointer<TaviTreeView> self(this);
    QTreeView::mouseDoubleClickEvent(event);
    if (self)
        Q_EMIT doubleClicked();
}

void TaviTreeView::toggleExpandAnyColumn(const QModelIndex &index)
{
    if (!index.isValid() || index.column() == 0)
        return;
    const QModelIndex first = index.sibling(index.row(), 0);
    setExpanded(first, !isExpanded(first));
}

TaviTreeView::DragClass TaviTreeView::dragClass(const QDropEvent *event) const
{
    if (event->source() == this)
        return {DND_FROM_SELF, DND_MOVE_SELF};
    if (event->source())
        return {DND_FROM_WIDGETS, DND_MOVE_WIDGETS};
    return {DND_FROM_OUTSIDE, DND_MOVE_OUTSIDE};
}

bool TaviTreeView::takesDrag(const QDropEvent *event) const
{
    return (dnd_flags & dragClass(event).allowed) != 0;
}

void TaviTreeView::dragEnterEvent(QDragEnterEvent *event)
{
    // One that is refused here would be offered to the widget behind. Nothing is dropped all the same: no later event
    // of it gets through.
    if (takesDrag(event))
        passDragOn(event, [this, event] { QTreeView::dragEnterEvent(event); });
    else
        event->accept();
}

void TaviTreeView::dragMoveEvent(QDragMoveEvent *event)
{
    if (takesDrag(event))
        passDragOn(event, [this, event] { QTreeView::dragMoveEvent(event); });
    else
        event->ignore();
}

void TaviTreeView::dragLeaveEvent(QDragLeaveEvent *event)
{
    QTreeView::dragLeaveEvent(event);
}

void TaviTreeView::dropEvent(QDropEvent *event)
{
    if (takesDrag(event))
        passDragOn(event, [this, event] { QTreeView::dropEvent(event); });
    else
        event->ignore();
}

void TaviTreeView::passDragOn(QDropEvent *event, const std::function<void()> &base)
{
    const bool move = (dnd_flags & dragClass(event).forced_move) != 0;
    // Each event brings the user's wish anew; and with the base class accepting that, the source would keep what has
    // moved.
    if (move)
        event->setDropAction(Qt::MoveAction);
    base();
    if (move && event->isAccepted())
        event->setDropAction(Qt::MoveAction);
}
