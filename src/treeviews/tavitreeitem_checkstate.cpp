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
    // The children of this moment, by number: a slot may delete any of them on the way.
    std::vector<int> present;
    present.reserve(static_cast<std::size_t>(children_.size()));
    for (const TaviTreeItem *item : qAsConst(children_)) {
        if (item)
            present.push_back(item->id_);
    }
    bool changed = false;
    for (const int child_id : present) {
        TaviTreeItem *item = TaviTreeItemAccess::itemById(child_id);
        if (!item || !item->isCheckable(column))
            continue;
        const Life life(item);
        if (state != Qt::PartiallyChecked)
            changed = item->storeCheckState(column, state) || changed;
        if (!life.isOver() && item->childCount() > 0)
            changed = item->setAllCheckState(column, state) || changed;
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
    if (childCount() < 1)
        return false;
    Qt::CheckState state;
    if (isPartiallyChecked(column))
        state = Qt::PartiallyChecked;
    else if (isAllCheckState(column, Qt::Checked))
        state = Qt::Checked;
    else if (isAllCheckState(column, Qt::Unchecked))
        state = Qt::Unchecked;
    else // Unchecked and partial ones alone: neither of the three, and the parent keeps what it has.
        return false;
    const Life life(this);
    if (!storeCheckState(column, state))
        return false;
    if (!life.isOver() && parent_item)
        parent_item->updateCheckStateFromChildren(column);
    return true;
}
