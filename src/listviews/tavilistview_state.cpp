// SPDX-License-Identifier: MIT
//
// The state of the columns in the settings.
#include "listviews/listheaderstate_p.h"
#include "listviews/tavilistview.h"
#include "qt3/q3header.h"
#include "taviapp/taviregistry.h"

const char TaviListView::KEY_ITEM[] = "column_";
const char TaviListView::KEY_SORTING[] = "sorting";

void TaviListView::saveHeaderState(TaviRegistry &registry, std::string &section)
{
    if (!header_menu_enabled)
        return;
    registry.clearsection(section);
    // A view may be about to be sorted by a column that is not there yet.
    const int sorted_place = sortColumn() < 0 ? -1 : header()->mapToIndex(sortColumn());
    if (sorted_place >= 0) {
        std::string key = KEY_SORTING;
        registry.putstring(section, key, sortingText(sorted_place, sortOrder() == Qt::AscendingOrder));
    }
    for (int column = 0; column < fixed_column_items.size(); ++column) {
        ColumnItem *const item = fixed_column_items.at(column);
        std::string key = columnKey(KEY_ITEM, column);
        registry.putstring(section, key,
                           columnStateText({column_items.indexOf(item), item->isItemVisible(), item->width}));
    }
}

void TaviListView::restoreHeaderState(TaviRegistry &registry, std::string &section)
{
    if (!header_menu_enabled || registry.size(section) == 0)
        return;
    ListHeaderState state(fixed_column_items.size());
    for (auto at = registry.firstItem(section); !registry.isEndItem(at); at = registry.nextItem())
        state.read(KEY_ITEM, registry.key(at), registry.value(at));

    column_items.clear();
    for (const int column : state.order()) {
        ColumnItem *const item = fixed_column_items.at(column);
        column_items.append(item);
        if (const auto &known = state.column(column)) {
            item->setItemVisible(known->visible);
            item->width = known->width;
            item->width_mode = known->width < 0 ? Maximum : Manual;
        }
    }
    const QPointer<TaviListView> self(this);
    rebuildHeaders();
    if (!self)
        return;

    std::string key = KEY_SORTING;
    const auto sorting = readSorting(registry.getstring(section, key));
    const int count = column_items.size();
    if (sorting && sorting->first >= 0 && sorting->first < count && sortColumn() >= 0 && sortColumn() < count)
        setSorting(sorting->first, sorting->second);
}
