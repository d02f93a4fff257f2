// SPDX-License-Identifier: MIT
#include "treeviews/tavitreeitem.h"

#include "treeviews/tavitreeitem_p.h"

#include <QSet>

#include <algorithm>
#include <vector>

namespace {

// Destructors call each other down the tree. What lies deeper than this goes from its leaves up instead: a tree may
// be deeper than the stack.
constexpr int most_nested_destructions = 200;
int nested_destructions = 0;

} // namespace

int TaviTreeItem::childCount() const
{
    return children_.size();
}

TaviTreeItem *TaviTreeItem::child(int row) const
{
    return children_.value(row, nullptr);
}

QList<TaviTreeItem *> TaviTreeItem::children() const
{
    return children_;
}

TaviTreeItem *TaviTreeItem::parentTreeItem() const
{
    return parent_item;
}

TaviTreeItem *TaviTreeItem::topLevelParent()
{
    TaviTreeItem *top = this;
    while (top->parent_item)
        top = top->parent_item;
    return top;
}

int TaviTreeItem::row() const
{
    return parent_item ? parent_item->rowOf(this) : 0;
}

int TaviTreeItem::rowOf(const TaviTreeItem *child) const
{
    const int count = children_.size();
    const int hint = child->row_hint;
    if (hint >= 0 && hint < count && children_.at(hint) == child)
        return hint;
    if (child->list_count == 0 || count == 0)
        return -1;
    // Rows that came or went shift the others a little: look around the place of before, ever wider.
    int found = -1;
    int low = std::clamp(hint, 0, count - 1);
    for (int high = low + 1; low >= 0 || high < count; --low, ++high) {
        ++search_steps;
        if (low >= 0 && children_.at(low) == child) {
            found = low;
            break;
        }
        if (high < count && children_.at(high) == child) {
            found = high;
            break;
        }
    }
    if (found < 0)
        return -1;
    child->row_hint = found;
    if (search_steps > count) {
        search_steps = 0;
        for (int row = 0; row < count; ++row) {
            if (TaviTreeItem *sibling = children_.at(row); sibling && sibling->parent_item == this)
                sibling->row_hint = row;
        }
    }
    return found;
}

void TaviTreeItem::listed(TaviTreeItem *child, int row)
{
    child->parent_item = this;
    child->row_hint = row;
    ++child->list_count;
    if (child->overrides_below || TaviTreeItemAccess::overridesData(child)
        || TaviTreeItemAccess::overridesChildCount(child)) {
        child->overrides_below = 1;
        for (TaviTreeItem *above = this; above && !above->overrides_below; above = above->parent_item)
            above->overrides_below = 1;
    }
}

void TaviTreeItem::appendChild(TaviTreeItem *child)
{
    if (!child)
        return;
    takeChild(child);
    children_.append(child);
    listed(child, children_.size() - 1);
}

void TaviTreeItem::insertChild(int index, TaviTreeItem *child)
{
    if (!child)
        return;
    takeChild(child);
    const int row = std::clamp(index, 0, children_.size());
    children_.insert(row, child);
    listed(child, row);
}

void TaviTreeItem::insertChildren(int row, const QList<TaviTreeItem *> &items)
{
    // Items that stand in no list yet, each once, go in together; any other has to be taken out of its place first.
    QList<TaviTreeItem *> fresh;
    fresh.reserve(items.size());
    for (TaviTreeItem *item : items) {
        if (item && item->list_count == 0) {
            ++item->list_count;
            fresh.append(item);
        }
    }
    for (TaviTreeItem *item : qAsConst(fresh))
        --item->list_count;
    if (fresh.size() != items.size() - items.count(nullptr)) {
        for (TaviTreeItem *item : items) {
            if (item)
                insertChild(row++, item);
        }
        return;
    }
    const int place = std::clamp(row, 0, children_.size());
    children_ = children_.mid(0, place) + fresh + children_.mid(place);
    for (int i = 0; i < fresh.size(); ++i)
        listed(fresh.at(i), place + i);
}

TaviTreeItem *TaviTreeItem::takeRow(int row)
{
    TaviTreeItem *child = children_.takeAt(row);
    if (child) {
        child->parent_item = nullptr;
        --child->list_count;
    }
    return child;
}

TaviTreeItem *TaviTreeItem::takeChild(TaviTreeItem *child)
{
    const int row = child && child->list_count > 0 ? rowOf(child) : -1;
    return row >= 0 ? takeRow(row) : nullptr;
}

void TaviTreeItem::removeChild(TaviTreeItem *child)
{
    delete takeChild(child);
}

void TaviTreeItem::removeAllChildren()
{
    ++nested_destructions;
    if (nested_destructions > most_nested_destructions)
        removeFromBelow();
    // One by one: the destructor of an application's item may take out others.
    while (!children_.isEmpty())
        delete takeRow(0);
    --nested_destructions;
}

void TaviTreeItem::removeFromBelow()
{
    std::vector<int> path; // by number: any of them may be deleted by another one's destructor
    for (;;) {
        TaviTreeItem *const above = path.empty() ? this : TaviTreeItemAccess::itemById(path.back());
        if (above && !above->children_.isEmpty()) {
            const TaviTreeItem *const first = above->children_.first();
            if (first && !first->children_.isEmpty())
                path.push_back(first->id_);
            else
                delete above->takeRow(0);
            continue;
        }
        if (path.empty())
            return;
        path.pop_back();
        TaviTreeItem *const parent = path.empty() ? this : TaviTreeItemAccess::itemById(path.back());
        if (above && parent)
            parent->removeChild(above);
    }
}

QList<TaviTreeItem *> TaviTreeItem::takeChildren(const QList<TaviTreeItem *> &items)
{
    QList<TaviTreeItem *> taken;
    taken.reserve(items.size());
    if (items.size() == 1) {
        if (items.first())
            taken.append(takeChild(items.first()));
        return taken;
    }
    QSet<const TaviTreeItem *> wanted;
    wanted.reserve(items.size());
    for (const TaviTreeItem *item : items)
        wanted.insert(item);
    QSet<const TaviTreeItem *> found;
    found.reserve(wanted.size());
    const auto is_wanted = [&](TaviTreeItem *child) {
        if (!child || !wanted.contains(child))
            return false;
        child->parent_item = nullptr;
        --child->list_count;
        found.insert(child);
        return true;
    };
    children_.erase(std::remove_if(children_.begin(), children_.end(), is_wanted), children_.end());
    for (TaviTreeItem *item : items) {
        if (item)
            taken.append(found.remove(item) ? item : nullptr);
    }
    return taken;
}

TaviTreeItem *TaviTreeItem::nextSibling() const
{
    return parent_item ? parent_item->child(row() + 1) : nullptr;
}

TaviTreeItem *TaviTreeItem::prevSibling() const
{
    return parent_item ? parent_item->child(row() - 1) : nullptr;
}

void TaviTreeItem::flattenHierarchy(TaviTreeItem *root)
{
    if (!root)
        root = this;
    struct Level {
        bool stays; // its items are children of the root already
        QList<TaviTreeItem *> items;
        int next = 0;
    };
    const auto level_below = [root](TaviTreeItem *parent) {
        const QList<TaviTreeItem *> items = parent->children_;
        if (parent != root) {
            parent->children_.clear();
            for (TaviTreeItem *item : items) {
                if (!item) {
                    parent->children_.append(nullptr);
                    continue;
                }
                item->parent_item = nullptr;
                --item->list_count;
            }
        }
        return Level{parent == root, items};
    };
    std::vector<Level> levels{level_below(this)};
    while (!levels.empty()) {
        Level &level = levels.back();
        if (level.next == level.items.size()) {
            levels.pop_back();
            continue;
        }
        TaviTreeItem *const item = level.items.at(level.next++);
        if (!item)
            continue;
        if (!level.stays)
            root->appendChild(item);
        levels.push_back(level_below(item));
    }
}
