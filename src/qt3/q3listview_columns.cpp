// SPDX-License-Identifier: MIT
#include "qt3/q3listview_p.h"

#include <algorithm>

int Q3ListView::addColumn(const QString &label, int width)
{
    const int column = d->header->addLabel(label, width);
    d->columnAdded(width);
    return column;
}

int Q3ListView::addColumn(const QIcon &icon, const QString &label, int width)
{
    const int column = d->header->addLabel(icon, label, width);
    d->columnAdded(width);
    return column;
}

void Q3ListViewPrivate::columnAdded(int width)
{
    Column added;
    added.mode = width < 0 ? Q3ListView::Maximum : Q3ListView::Manual;
    added.measure = width < 0 && q->childCount() > 0;
    columns.push_back(added);
    if (resize_mode == Q3ListView::LastColumn)
        stretchColumns();
    updateSortIndicator();
    q->triggerUpdate();
}

void Q3ListView::removeColumn(int index)
{
    if (index < 0 || index >= columns())
        return;
    d->finishRename(false);
    d->columns.erase(d->columns.begin() + index);
    d->header->removeLabel(index);
    d->updateSortIndicator();
    triggerUpdate();
}

void Q3ListView::setColumnText(int column, const QString &label)
{
    d->header->setLabel(column, label);
    d->headingChanged(column);
}

void Q3ListView::setColumnText(int column, const QIcon &icon, const QString &label)
{
    d->header->setLabel(column, icon, label);
    d->headingChanged(column);
}

void Q3ListViewPrivate::headingChanged(int column)
{
    if (q->columnWidthMode(column) == Q3ListView::Maximum && header->has(column))
        q->Q3ListView::setColumnWidth(column, std::max(q->columnWidth(column), headingWidth(column)));
    q->triggerUpdate();
}

int Q3ListViewPrivate::headingWidth(int column) const
{
    return header->fittingSize(column);
}

QString Q3ListView::columnText(int c) const
{
    return d->header->label(c);
}

void Q3ListView::setColumnWidth(int column, int w)
{
    if (column < 0 || column >= columns() || w < 0 || w == columnWidth(column))
        return;
    d->header->resizeSection(column, w);
    triggerUpdate();
}

int Q3ListView::columnWidth(int c) const
{
    return d->header->sectionSize(c);
}

void Q3ListView::setColumnWidthMode(int c, WidthMode mode)
{
    if (c < 0 || c >= columns())
        return;
    Q3ListViewPrivate::Column &column = d->columns[static_cast<size_t>(c)];
    column.measure = mode == Maximum && (column.measure || column.mode != Maximum);
    column.mode = mode;
    triggerUpdate();
}

Q3ListView::WidthMode Q3ListView::columnWidthMode(int c) const
{
    return c >= 0 && c < columns() ? d->columns[static_cast<size_t>(c)].mode : Manual;
}

void Q3ListView::setColumnAlignment(int column, int align)
{
    if (column < 0 || column >= columns())
        return;
    d->columns[static_cast<size_t>(column)].align = align;
    viewport()->update();
}

int Q3ListView::columnAlignment(int column) const
{
    return column >= 0 && column < columns() ? d->columns[static_cast<size_t>(column)].align : Qt::AlignLeft;
}

Q3ListView::ResizeMode Q3ListView::resizeMode() const
{
    return d->resize_mode;
}

void Q3ListView::setResizeMode(ResizeMode m)
{
    d->resize_mode = m;
    d->stretchColumns();
    triggerUpdate();
}

void Q3ListViewPrivate::stretchColumns()
{
    header->setStretchEnabled(resize_mode == Q3ListView::AllColumns);
    if (resize_mode == Q3ListView::LastColumn && !columns.empty())
        header->setStretchEnabled(true, q->columns() - 1);
}

/// The width that an item wants for a column, with its indentation.
static int wantedWidth(const Q3ListViewPrivate &d, const Q3ListViewItem *item, int column)
{
    return item->width(d.q->fontMetrics(), d.q, column) + (column == 0 ? d.indentation(item) : 0);
}

void Q3ListView::adjustColumn(int col)
{
    if (col < 0 || col >= columns())
        return;
    int width = d->headingWidth(col);
    for (Q3ListViewItem *item = firstChild(); item; item = item->itemBelow())
        width = std::max(width, wantedWidth(*d, item, col));
    setColumnWidth(col, width);
}

/// Asks items for widths that were not wanted when they were set up.
void Q3ListViewPrivate::measureColumns()
{
    for (int column = 0; column < q->columns(); ++column) {
        if (!std::exchange(columns[static_cast<size_t>(column)].measure, false))
            continue;
        int width = q->columnWidth(column);
        for (Q3ListViewItem *item = root->firstChild(); item; item = Q3ListViewRows::next(item)) {
            if (item->flags_ & Q3ListViewItem::SetUp)
                width = std::max(width, wantedWidth(*this, item, column));
        }
        if (width > q->columnWidth(column))
            q->Q3ListView::setColumnWidth(column, width); // not what the user or the application wants
    }
}

void Q3ListView::columnResized(int, int, int)
{
    updateContents();
}

void Q3ListView::columnMoved()
{
    d->placeEditor();
    viewport()->update();
}
