// SPDX-License-Identifier: MIT
#include "treeviews/tavitreeitem.h"

#include "treeviews/tavitreeitem_p.h"

#include <algorithm>
#include <vector>

namespace {

/// Tells whether an item is still there after others had their say.
class Life
{
public:
    explicit Life(const TaviTreeItem *item) : id(item->id()) {}

    bool isOver() const { return !TaviTreeItemAccess::itemById(id); }

private:
    int id;
};

} // namespace

Qt::CheckState TaviTreeItem::checkState(int column) const
{
    for (const Value &value : column_data) {
        if (value.column == column && value.role == Qt::CheckStateRole)
            return static_cast<Qt::CheckState>(value.value.toInt());
    }
    return Qt::Unchecked;
}

bool TaviTreeItem::storeCheckState(int column, Qt::CheckState state)
{
    const Qt::CheckState old_state = checkState(column);
    storeValue(column, Qt::CheckStateRole, static_cast<int>(state));
    if (old_state == state)
        return false;
    emitDataChanged();
    return true;
}

bool TaviTreeItem::setCheckState(int column, Qt::CheckState state)
{
    return setCheckState(column, state, true);
}

bool TaviTreeItem::setCheckState(int column, Qt::CheckState state, bool update_parents)
{
    if (!isCheckable(column))
        return false;
    const Life life(this);
    bool changed = state != Qt::PartiallyChecked && storeCheckState(column, state);
    if (life.isOver())
        return changed;
    if (childCount() > 0)
        changed = setAllCheckState(column, state) || changed;
    if (life.isOver() || !update_parents || !parent_item)
        return changed;
    return parent_item->updateCheckStateFromChildren(column) || changed;
}

bool TaviTreeItem::setAllCheckState(int column, Qt::CheckState state)
{
    if (!isCheckable(column))
        return false;
    // A tree may be deeper than the stack, so that the levels stand in a list. The children of each are those of the
    // moment it was reached, by number: a slot may delete any of them on the way.
    struct Level {
        std::vector<int> present;
        std::size_t next = 0;
    };
    const auto level_below = [](const TaviTreeItem *parent) {
        Level level;
        level.present.reserve(static_cast<std::size_t>(parent->children_.size()));
        for (const TaviTreeItem *item : qAsConst(parent->children_)) {
            if (item)
                level.present.push_back(item->id_);
        }
        return level;
    };
    bool changed = false;
    std::vector<Level> levels{level_below(this)};
    while (!levels.empty()) {
        Level &level = levels.back();
        if (level.next == level.present.size()) {
            levels.pop_back();
            continue;
        }
        TaviTreeItem *const item = TaviTreeItemAccess::itemById(level.present[level.next++]);
        if (!item || !item->isCheckable(column))
            continue;
        const Life life(item);
        if (state != Qt::PartiallyChecked)
            changed = item->storeCheckState(column, state) || changed;
        if (!life.isOver() && item->childCount() > 0 && item->isCheckable(column))
            levels.push_back(level_below(item));
    }
    return changed;
}

bool TaviTreeItem::isAllCheckState(int column, Qt::CheckState state) const
{
    return std::all_of(children_.begin(), children_.end(), [&](const TaviTreeItem *item) {
        return !item || !item->isCheckable(column) || item->checkState(column) == state;
    });
}

bool TaviTreeItem::isPartiallyChecked(int column) const
{
    bool some_checked = false;
    bool some_not = false;
    for (const TaviTreeItem *item : children_) {
        if (!item || !item->isCheckable(column))
            continue;
        (item->checkState(column) == Qt::Checked ? some_checked : some_not) = true;
        if (some_checked && some_not)
            return true;
    }
    return false;
}

bool TaviTreeItem::updateCheckStateFromChildren(int column)
{
    bool changed = false;
    TaviTreeItem *item = this;
    while (item && item->childCount() > 0) {
        Qt::CheckState state;
        if (item->isPartiallyChecked(column))
            state = Qt::PartiallyChecked;
        else if (item->isAllCheckState(column, Qt::Checked))
            state = Qt::Checked;
        else if (item->isAllCheckState(column, Qt::Unchecked))
            state = Qt::Unchecked;
        else // Unchecked and partial ones alone: neither of the three, and the parent keeps what it has.
            break;
        const Life life(item);
        if (!item->storeCheckState(column, state))
            break;
        changed = true;
        item = life.isOver() ? nullptr : item->parent_item;
    }
    return changed;
}
