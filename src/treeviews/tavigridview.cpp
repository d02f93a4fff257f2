// SPDX-License-Identifier: MIT
#include "treeviews/tavigridview.h"

#include "treeviews/tavioverride_p.h"

#include <QEvent>
#include <QHeaderView>
#include <QStyleOptionViewItem>

namespace {

TAVI_DEFINE_OVERRIDES(overridesSizeHint, TaviGridDelegate, sizeHint)

/// Gives every section the size, and nothing happens where all have it already. The default size goes first: a header
/// sets all its sections to that in one go, and makes new ones of it after a reset.
void setAllSections(QHeaderView *header, int wanted)
{
    const int size = qBound(header->minimumSectionSize(), wanted, header->maximumSectionSize());
    const int count = header->count();
    if (header->defaultSectionSize() != size)
        header->setDefaultSectionSize(size);
    for (int section = 0; section < count; ++section) {
        if (header->sectionSize(section) != size && !header->isSectionHidden(section))
            header->resizeSection(section, size);
    }
}

} // namespace

TaviGridView::TaviGridView(QWidget *parent) : QTableView(parent)
{
    setAccessibleName(tr("Grid"));
    setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setShowGrid(false);
    for (QHeaderView *header : {horizontalHeader(), verticalHeader()}) {
        header->hide();
        header->setMinimumSectionSize(1);
    }
}

void TaviGridView::setItemDelegate(QAbstractItemDelegate *delegate)
{
    QTableView::setItemDelegate(delegate);
    fitCells();
}

void TaviGridView::recalculateGrid()
{
    if (!model() || !itemDelegate())
        return;
    const int cell = itemDelegate()->sizeHint(QStyleOptionViewItem(), QModelIndex()).width() + lineWidth();
    if (cell < 1)
        return;
    const int wanted = viewport()->width() / cell;
    const int present = model()->columnCount();
    if (wanted > present)
        model()->insertColumns(present, wanted - present);
    else if (wanted < present)
        model()->removeColumns(0, present - wanted);
}

bool TaviGridView::viewportEvent(QEvent *event)
{
    QAbstractItemView::viewportEvent(event);
    switch (event->type()) {
    case QEvent::Resize:
        recalculateGrid();
        Q_FALLTHROUGH();
    case QEvent::Paint:
    case QEvent::Show:
    case QEvent::ShowToParent:
        fitCells();
        break;
    default:
        break;
    }
    // Also for what was handled: applications have panels around their grids that count on seeing these events.
    return false;
}

int TaviGridView::lineWidth() const
{
    return showGrid() ? 1 : 0;
}

/// Whether the delegate's cell size is all that matters, as far as can be told without asking for each cell.
bool TaviGridView::cellsAreAlike() const
{
    const auto *const delegate = qobject_cast<const TaviGridDelegate *>(itemDelegate());
    if (!delegate || overridesSizeHint(delegate) || !viewport()->children().isEmpty())
        return false;
    for (const QHeaderView *header : {horizontalHeader(), verticalHeader()}) {
        if (header->stretchLastSection() || header->stretchSectionCount() > 0)
            return false;
    }
    for (int row = 0; row < verticalHeader()->count(); ++row) {
        if (itemDelegateForRow(row))
            return false;
    }
    for (int column = 0; column < horizontalHeader()->count(); ++column) {
        if (itemDelegateForColumn(column))
            return false;
    }
    return true;
}

/// Does what resizeColumnsToContents() and resizeRowsToContents() do, which ask each cell of up to a thousand rows
/// for its width and each cell of all rows for its height: too much for every repaint of a large grid of equal cells.
void TaviGridView::fitCells()
{
    if (!itemDelegate())
        return;
    if (!cellsAreAlike()) {
        resizeColumnsToContents();
        resizeRowsToContents();
        return;
    }
    const QSize cell = itemDelegate()->sizeHint(QStyleOptionViewItem(), QModelIndex());
    setAllSections(horizontalHeader(), cell.width() + lineWidth());
    setAllSections(verticalHeader(), cell.height() + lineWidth());
}
