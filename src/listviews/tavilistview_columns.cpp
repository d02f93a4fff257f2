// SPDX-License-Identifier: MIT
//
// Columns: the operations of the base class, and the column items behind them.
#include "listviews/tavilistview.h"
#include "qt3/q3header.h"
#include "treeviews/taviconfigorder.h"

#include <QSignalBlocker>

#include <algorithm>
#include <utility>
#include <vector>

int TaviListView::addColumn(const QString &label, int width)
{
    return header_menu_enabled ? addColumnItem(label, width, true) : Q3ListView::addColumn(label, width);
}

int TaviListView::addColumn(const QIcon &icon, const QString &label, int width)
{
    return header_menu_enabled ? addColumnItem(icon, label, width, true) : Q3ListView::addColumn(icon, label, width);
}

int TaviListView::addColumnItem(const QString &text, int width, bool visible)
{
    if (!header_menu_enabled)
        return Q3ListView::addColumn(text, width);
    const int id = newColumnItem(QIcon(), text, width, visible);
    if (visible)
        Q3ListView::addColumn(text, width);
    return id;
}

int TaviListView::addColumnItem(const QIcon &icon, const QString &text, int width, bool visible)
{
    if (!header_menu_enabled)
        return Q3ListView::addColumn(icon, text, width);
    const int id = newColumnItem(icon, text, width, visible);
    if (visible)
        Q3ListView::addColumn(icon, text, width);
    return id;
}

int TaviListView::newColumnItem(const QIcon &icon, const QString &text, int width, bool visible)
{
    auto *const item = new ColumnItem;
    item->title = text;
    item->icon = icon;
    item->setItemVisible(visible);
    item->width = std::max(width, -1);
    item->width_mode = width < 0 ? Maximum : Manual;
    item->id = next_column_id++;
    column_items.append(item);
    fixed_column_items.append(item);
    return item->id;
}

/// The column item at a section; null with the header menu off and for a section out of range.
ColumnItem *TaviListView::managedColumn(int section) const
{
    return header_menu_enabled ? columnItemAtSection(section) : nullptr;
}

void TaviListView::removeColumn(int index)
{
    if (ColumnItem *item = managedColumn(index))
        item->setItemVisible(false);
    Q3ListView::removeColumn(index);
}

void TaviListView::setColumnText(int column, const QString &label)
{
    if (ColumnItem *item = managedColumn(column))
        item->title = label;
    Q3ListView::setColumnText(column, label);
}

void TaviListView::setColumnText(int column, const QIcon &icon, const QString &label)
{
    if (ColumnItem *item = managedColumn(column)) {
        item->title = label;
        item->icon = icon;
    }
    Q3ListView::setColumnText(column, icon, label);
}

void TaviListView::setColumnWidth(int column, int w)
{
    if (ColumnItem *item = managedColumn(column))
        item->width = std::max(w, -1);
    Q3ListView::setColumnWidth(column, w);
}

void TaviListView::setColumnWidthMode(int c, WidthMode mode)
{
    if (ColumnItem *item = managedColumn(c))
        item->width_mode = mode;
    Q3ListView::setColumnWidthMode(c, mode);
}

void TaviListView::setColumnAlignment(int column, int align)
{
    if (ColumnItem *item = managedColumn(column))
        item->alignment = align;
    Q3ListView::setColumnAlignment(column, align);
}

void TaviListView::setSorting(int column, bool ascending)
{
    sort_ascending = ascending;
    Q3ListView::setSorting(column, ascending);
}

ColumnItem *TaviListView::columnItem(int id) const
{
    // Ids are the places in order of creation, but for columns that were in another order when the menu came on.
    if (id >= 0 && id < fixed_column_items.size() && fixed_column_items.at(id)->id == id)
        return fixed_column_items.at(id);
    const auto has_id = [id](const ColumnItem *item) {
        return item->id == id;
    };
    const auto found = std::find_if(fixed_column_items.begin(), fixed_column_items.end(), has_id);
    return found == fixed_column_items.end() ? nullptr : *found;
}

int TaviListView::columnItemID(int section) const
{
    const ColumnItem *const item = columnItemAtSection(section);
    return item ? item->id : -1;
}

int TaviListView::columnItemSection(int id) const
{
    int index = 0;
    for (const ColumnItem *const item : column_items) {
        if (item->id == id)
            return item->isItemVisible() ? header()->mapToSection(index) : -1;
        index += item->isItemVisible() ? 1 : 0;
    }
    return -1;
}

bool TaviListView::itemVisible(int id) const
{
    const ColumnItem *const item = columnItem(id);
    return item && item->id < column_items.size() && item->isItemVisible();
}

void TaviListView::setItemVisible(int id, bool visible)
{
    ColumnItem *const item = columnItem(id);
    if (!item || item->isItemVisible() == visible)
        return;
    item->setItemVisible(visible);
    rebuildHeaders();
}

int TaviListView::mapToColumnItemIndex(int visible_index) const
{
    if (visible_index < 0 || visible_index == column_items.size())
        return visible_index < 0 ? -1 : visible_index;
    int left = visible_index;
    for (int index = 0; index < column_items.size(); ++index) {
        if (column_items.at(index)->isItemVisible() && left-- == 0)
            return index;
    }
    return -1;
}

ColumnItem *TaviListView::columnItemAtSection(int section) const
{
    return section < columns() ? columnItemAtIndex(header()->mapToIndex(section)) : nullptr;
}

ColumnItem *TaviListView::columnItemAtIndex(int visible_index) const
{
    if (visible_index >= columns())
        return nullptr;
    const int index = mapToColumnItemIndex(visible_index);
    return index >= 0 && index < column_items.size() ? column_items.at(index) : nullptr;
}

void TaviListView::resizeColumnItem(int visible_index, int width)
{
    const int index = mapToColumnItemIndex(visible_index);
    if (index >= 0 && index < column_items.size())
        column_items.at(index)->width = width;
}

void TaviListView::setHeaderMenuEnabled(bool enabled)
{
    if (enabled == header_menu_enabled)
        return;
    if (header_order)
        header_order->cancel(); // it shows the column items
    header_menu_enabled = enabled;
    fixed_column_items.clear();
    qDeleteAll(std::exchange(column_items, {}));
    if (!enabled)
        return;
    next_column_id = 0;
    const int count = columns();
    for (int place = 0; place < count; ++place) {
        column_items.append(nullptr);
        fixed_column_items.append(nullptr);
    }
    for (int section = 0; section < count; ++section) {
        auto *const item = new ColumnItem;
        item->title = columnText(section);
        item->width = columnWidth(section);
        item->alignment = columnAlignment(section);
        item->width_mode = columnWidthMode(section);
        if (const QIcon *icon = header()->iconSet(section))
            item->icon = *icon;
        item->id = next_column_id++;
        const int place = header()->mapToIndex(section);
        column_items[place] = item;
        fixed_column_items[place] = item;
    }
}

void TaviListView::rebuildHeaders()
{
    if (!header_menu_enabled)
        return;
    const QPoint position = viewportToContents(QPoint(0, 0));
    {
        const QSignalBlocker quiet(this);
        const Q3ListViewItem *const current = currentItem();
        Q3ListViewItem *const selected = selectedItem();
        struct Taken {
            Q3ListViewItem *item;
            bool selected;
        };
        std::vector<Taken> items;
        size_t others = 0;
        for (Q3ListViewItem *item = firstChild(); item; item = firstChild()) {
            items.push_back({item, item->isSelected()});
            others += item != current ? 1 : 0;
            takeItem(item);
        }

        while (columns() > 0)
            Q3ListView::removeColumn(0);
        for (const ColumnItem *const item : qAsConst(column_items)) {
            if (!item->isItemVisible())
                continue;
            const int width = item->width < 1 ? -1 : item->width;
            const int column = item->icon.isNull() ? Q3ListView::addColumn(item->title, width)
                                                   : Q3ListView::addColumn(item->icon, item->title, width);
            Q3ListView::setColumnAlignment(column, item->alignment);
            Q3ListView::setColumnWidthMode(column, item->width_mode);
        }
        // It says so of the column that is the last at the time.
        if (resizeMode() == LastColumn)
            setResizeMode(LastColumn);

        // Each goes in as the first, so that from the last on they are in order without a move.
        for (size_t place = items.size(); place-- > 0;) {
            insertItem(items[place].item);
            items[place].item->setSelected(items[place].selected);
        }
        if (selected)
            selected->setSelected(true); // below the top level, taking the branch away has unselected it
        // A list that had a current item has one again: the last one, which is what those who listen know.
        if (others < items.size())
            setCurrentItem(items[others].item);
    }

    const QPointer<TaviListView> self(this);
    Q_EMIT currentChanged(currentItem());
    if (self && isMultiSelection())
        Q_EMIT selectionChanged();
    else if (self)
        Q_EMIT selectionChanged(selectedItem());
    if (!self)
        return;
    setContentsPos(position.x(), position.y());
    headersRebuilt();
}
