// SPDX-License-Identifier: MIT
#include "listviews/tavilistviewrenamedlg.h"

#include "listviews/listviewwalk_p.h"
#include "listviews/tavilistview.h"
#include "treeviews/renamemethod_p.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace {

QString titleOf(const TaviListView *view, int column_id)
{
    return view ? view->columnText(view->columnItemSection(column_id)) : QString();
}

QPoint placeOf(const TaviListView *view)
{
    return view ? view->mapToGlobal(view->pos()) : QPoint();
}

std::vector<Q3ListViewItem *> topLevelItems(const TaviListView *view)
{
    std::vector<Q3ListViewItem *> items;
    items.reserve(static_cast<size_t>(view->childCount()));
    for (Q3ListViewItem *item = view->firstChild(); item; item = item->nextSibling())
        items.push_back(item);
    return items;
}

/// One walk over the top-level items of a view that renames them. An item's setText() may delete, sort and move
/// items, be it its own, and the view.
class ItemWalk
{
public:
    explicit ItemWalk(TaviListView *view) : view_(view)
    {
        const std::vector<Q3ListViewItem *> items = topLevelItems(view);
        waiting_.insert(items.begin(), items.end());
    }

    /// Calls @a rename with each item that is still there. It answers whether to go on.
    template <typename Rename>
    void forEach(Rename rename)
    {
        bool again = true;
        while (again && view_) {
            // Items that wait are still there, perhaps, but not in what is left of the walk: they were sorted or
            // moved.
            again = false;
            for (Q3ListViewItem *item = view_->firstChild(); item;) {
                if (waiting_.erase(item) == 0) {
                    item = item->nextSibling();
                    continue;
                }
                again = !waiting_.empty();
                const Q3ListViewItemIterator place(item);
                if (!rename(item))
                    return;
                item = place.current() == item ? item->nextSibling() : topLevel(place.current());
            }
        }
    }

private:
    static Q3ListViewItem *topLevel(Q3ListViewItem *item)
    {
        while (item && item->parent())
            item = item->parent();
        return item;
    }

    const QPointer<TaviListView> view_;
    std::unordered_set<const Q3ListViewItem *> waiting_; ///< Only compared: they may be gone.
};

} // namespace

TaviListViewRenameDLG::TaviListViewRenameDLG(TaviListView *view, int of_column, TaviRegistry &store,
                                             std::string &store_section)
    : TaviRenameDialog(nullptr, titleOf(view, of_column), &store, store_section, placeOf(view)), list_view(view),
      column_id(of_column)
{
    setObjectName(QStringLiteral("tavilist_rename_DLG"));
    setAttribute(Qt::WA_QuitOnClose, false);
}

TaviListViewRenameDLG::~TaviListViewRenameDLG() = default;

bool TaviListViewRenameDLG::findRow(const RenameRule &rule, bool forward)
{
    if (!list_view)
        return false;
    const int header_section = list_view->columnItemSection(column_id);
    std::vector<Q3ListViewItem *> items = topLevelItems(list_view);
    if (!forward)
        std::reverse(items.begin(), items.end());

    const auto is_selected = [](const Q3ListViewItem *item) {
        return item->isSelected();
    };
    const auto is_hit = [&rule, header_section](const Q3ListViewItem *item) {
        return rule.isIn(item->text(header_section));
    };
    const auto selected = std::find_if(items.begin(), items.end(), is_selected);
    const bool one_selected =
        selected != items.end() && std::find_if(selected + 1, items.end(), is_selected) == items.end();
    auto hit = std::find_if(one_selected ? selected + 1 : items.begin(), items.end(), is_hit);
    if (hit == items.end() && wrap_tick->isChecked())
        hit = std::find_if(items.begin(), items.end(), is_hit);
    if (hit == items.end())
        return false;
    selectAlone(list_view, *hit);
    return true;
}

int TaviListViewRenameDLG::renameRows(const RenameRule &rule, Rows which, const Report &report)
{
    if (!list_view)
        return 0;
    const QPointer<TaviListView> in(list_view);
    const int header_section = in->columnItemSection(column_id);
    int changed = 0;
    ItemWalk(in).forEach([&](Q3ListViewItem *item) {
        if (!item->renameEnabled(header_section) || (which != Rows::All && !item->isSelected()))
            return true;
        if (const auto renamed = rule.renamed(item->text(header_section))) {
            ++changed;
            // Before the item looks where to repaint itself, for which all would be sorted.
            in->triggerUpdate();
            item->setText(header_section, *renamed);
        }
        return which != Rows::Current;
    });
    report(changed);
    if (in)
        in->triggerUpdate();
    if (in)
        in->fireItemsRenamed(changed);
    return changed;
}
