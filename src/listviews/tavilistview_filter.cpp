// SPDX-License-Identifier: MIT
//
// Filtering, and the search window.
#include "listviews/listviewwalk_p.h"
#include "listviews/tavilistview.h"
#include "treeviews/keywordmatcher_p.h"
#include "treeviews/searchwindow_p.h"

#include <QLineEdit>

#include <unordered_set>
#include <utility>
#include <vector>

void TaviListView::setFilterInverted(bool inverted)
{
    filter_inverted = inverted;
    if (isFilteringItems())
        filterItems();
}

QString TaviListView::setFilterKeyword(const QString &keyword)
{
    const QString before = filter_keyword;
    filterItems(keyword, filter_inverted);
    return before;
}

void TaviListView::filterItems()
{
    filterItems(filter_keyword, filter_inverted);
}

void TaviListView::filterItems(QString keyword, bool invert)
{
    const QPointer<TaviListView> self(this);
    if (!isFilteringItems()) {
        open_items.clear();
        saveOpenStates(open_items);
    }
    filter_inverted = invert;
    filter_keyword = keyword;

    const bool has_items = firstChild();
    if (filteredColumns() > 0) {
        const KeywordMatcher matcher(filter_keyword, Qt::CaseInsensitive);
        bool branches = false;
        for (Q3ListViewItem *item = firstChild(); item; item = item->nextSibling())
            filterBranch(item, matcher, &branches);
        if (branches && isFilteringItems())
            openShownBranches(firstChild(), nullptr);
    }
    if (self && keyword.isEmpty())
        restoreOpenStates(open_items);
    if (self)
        ensureItemVisible(firstSelectedChild());
    if (self && has_items)
        Q_EMIT filterApplied();
}

bool TaviListView::filterItem(Q3ListViewItem *item, bool invert, bool parent_is_hit)
{
    Q_UNUSED(invert)
    Q_UNUSED(parent_is_hit)
    if (!item || item->listView() != this || filteredColumns() == 0)
        return false;
    bool branches = false;
    const bool shown = filterBranch(item, KeywordMatcher(filter_keyword, Qt::CaseInsensitive), &branches);
    if (branches && isFilteringItems()) {
        Q3ListViewItem *last = item;
        while (!last->nextSibling() && last->parent())
            last = last->parent();
        openShownBranches(item, last->nextSibling());
    }
    return shown;
}

bool TaviListView::filterItem(Q3ListViewItem *item)
{
    return filterItem(item, filter_inverted, false);
}

bool TaviListView::filterThisItem(Q3ListViewItem *item)
{
    auto *const view = item ? qobject_cast<TaviListView *>(item->listView()) : nullptr;
    return view && view->filterItem(item);
}

/// How many columns are searched: all that the user can show.
int TaviListView::filteredColumns() const
{
    return fixed_column_items.isEmpty() ? columns() : fixed_column_items.size();
}

/// Shows or hides an item and all below it, and returns whether it is shown. @a branches becomes true if one that is
/// shown has children. It opens nothing, so that no slot is called.
bool TaviListView::filterBranch(Q3ListViewItem *top, const KeywordMatcher &matcher, bool *branches)
{
    const int columns_to_search = filteredColumns();
    const bool all = filter_keyword.isEmpty();
    const auto is_hit = [&](const Q3ListViewItem *item) {
        for (int column = 0; !all && column < columns_to_search; ++column) {
            if (matcher.isIn(item->text(column)))
                return !filter_inverted;
        }
        return all || filter_inverted;
    };
    const auto settle = [branches](Q3ListViewItem *item, bool shown) {
        item->setVisible(shown);
        item->setEnabled(shown);
        *branches = *branches || (shown && item->childCount() > 0);
        return shown;
    };

    if (top->childCount() == 0)
        return settle(top, is_hit(top));
    // A path of its own in place of recursion: trees may be deeper than the stack.
    struct Step {
        Q3ListViewItem *item;
        Q3ListViewItem *child; ///< The next one.
        bool shown;
    };
    std::vector<Step> path{{top, top->firstChild(), is_hit(top)}};
    for (;;) {
        Step &step = path.back();
        if (Q3ListViewItem *child = step.child) {
            step.child = child->nextSibling();
            if (child->childCount() == 0)
                step.shown = settle(child, is_hit(child)) || step.shown;
            else
                path.push_back({child, child->firstChild(), is_hit(child)});
            continue;
        }
        const bool shown = settle(step.item, step.shown);
        path.pop_back();
        if (path.empty())
            return shown;
        path.back().shown = shown || path.back().shown;
    }
}

/// Opens what is shown and has children, from one item on to another. Slots may delete any of them.
void TaviListView::openShownBranches(Q3ListViewItem *first, Q3ListViewItem *behind)
{
    const QPointer<TaviListView> self(this);
    Q3ListViewItemIterator place(first);
    const Q3ListViewItemIterator end(behind);
    while (place.current() && place.current() != end.current()) {
        Q3ListViewItem *const item = place.current();
        if (item->childCount() > 0 && item->isVisible()) {
            setOpen(item, true);
            if (!self || !isFilteringItems())
                return; // the end of a filter opens nothing
            if (place.current() != item)
                continue; // it has gone, and this is the next one
            // Children that came with the opening are as they are enabled.
            for (Q3ListViewItem *child = item->firstChild(); child; child = child->nextSibling())
                child->setVisible(child->isEnabled());
        }
        ++place;
    }
}

void TaviListView::saveOpenStates(std::list<Q3ListViewItem *> &items)
{
    for (Q3ListViewItem *item = firstChild(); item; item = item->nextSibling()) {
        if (item->childCount() > 0 && item->isOpen() && item->isVisible() && item->isEnabled())
            items.push_back(item);
    }
}

void TaviListView::restoreOpenStates(std::list<Q3ListViewItem *> &items)
{
    const std::unordered_set<const Q3ListViewItem *> open(items.begin(), items.end());
    forEachBranch(this, [this, &open](Q3ListViewItem *item) {
        if (item->childCount() > 0)
            setOpen(item, open.count(item) > 0 || selectedItemChildCount(item) > 0);
    });
}

namespace {

/// Whether closing it ends something. One that the application has hidden may still filter.
bool isInUse(const FilterFloater *floater)
{
    return !floater->isHidden() || !floater->lineEdit()->text().isEmpty();
}

} // namespace

/// Does away with the search window of another view. False if this view has gone meanwhile.
bool TaviListView::takeFloaterOver()
{
    // A slot that hears of the end may destroy this view or the floater, or open it elsewhere again.
    const QPointer<TaviListView> self(this);
    while (self && filter_floater && filter_floater->list_view != this) {
        const QPointer<FilterFloater> other = filter_floater;
        // One that was closed before ended its filtering then.
        if (isInUse(other))
            other->close();
        delete other;
    }
    return self;
}

void TaviListView::showFilterFloater()
{
    if (!takeFloaterOver() || (filter_floater && filter_floater->isVisible()))
        return;
    if (!filter_floater) {
        filter_floater = new FilterFloater(this);
        connect(filter_floater, SIGNAL(closed()), this, SLOT(filterFloaterClosed()));
    }
    showSearchWindow(filter_floater, filter_floater->lineEdit(), viewport());
}

void TaviListView::closeFilterFloater()
{
    if (filter_floater && isInUse(filter_floater))
        filter_floater->close();
}

void TaviListView::filterFloaterClosed() {}
