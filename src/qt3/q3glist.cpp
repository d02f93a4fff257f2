// SPDX-License-Identifier: MIT
#include "qt3/q3glist.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <utility>
#include <vector>

Q3GList::Q3GList(const Q3GList &source) : Q3PtrCollection(source) {}

Q3GList::~Q3GList()
{
    // The class with the types has cleared the list; what an item's destructor has put in since is freed here.
    while (first_)
        delete unlink(first_);
    while (iterators_)
        iterators_->detach();
}

int Q3GList::compareItems(Item item1, Item item2)
{
    if (item1 == item2)
        return 0;
    return std::less<>()(item1, item2) ? -1 : 1;
}

int Q3GList::compare(Item item1, Item item2) const
{
    // compareItems() was never const, and overrides of it are not.
    return const_cast<Q3GList *>(this)->compareItems(item1, item2);
}

bool Q3GList::matches(Item item, const Q3LNode *node, Match match) const
{
    return match == ByAddress ? node->item_ == item : compare(item, node->item_) == 0;
}

Q3PtrCollection::Item Q3GList::setCurrent(Q3LNode *node, int index)
{
    current_ = node;
    current_index_ = node ? index : -1;
    return itemOf(node);
}

Q3PtrCollection::Item Q3GList::goToFirst()
{
    return setCurrent(first_, 0);
}

Q3PtrCollection::Item Q3GList::goToLast()
{
    return setCurrent(last_, static_cast<int>(count_) - 1);
}

Q3PtrCollection::Item Q3GList::goToNext()
{
    return current_ ? setCurrent(current_->next_, current_index_ + 1) : nullptr;
}

Q3PtrCollection::Item Q3GList::goToPrevious()
{
    return current_ ? setCurrent(current_->previous_, current_index_ - 1) : nullptr;
}

Q3PtrCollection::Item Q3GList::goTo(uint index)
{
    if (index >= count_)
        return nullptr;
    return setCurrent(nodeAt(index), static_cast<int>(index));
}

Q3LNode *Q3GList::nodeAt(uint index) const
{
    const int wanted = static_cast<int>(index);
    const int from_last = static_cast<int>(count_) - 1 - wanted;
    Q3LNode *node = first_;
    int steps = wanted;
    if (current_ && std::abs(wanted - current_index_) < std::min(wanted, from_last)) {
        node = current_;
        steps = wanted - current_index_;
    } else if (from_last < wanted) {
        node = last_;
        steps = -from_last;
    }
    for (; steps > 0; --steps)
        node = node->next_;
    for (; steps < 0; ++steps)
        node = node->previous_;
    return node;
}

void Q3GList::link(Q3LNode *node, Q3LNode *before)
{
    node->next_ = before;
    node->previous_ = before ? before->previous_ : last_;
    (node->previous_ ? node->previous_->next_ : first_) = node;
    (before ? before->previous_ : last_) = node;
    ++count_;
}

/// Takes @a node out of the chain, moves the iterators on that stand on it, and returns it.
Q3LNode *Q3GList::unlink(Q3LNode *node)
{
    (node->previous_ ? node->previous_->next_ : first_) = node->next_;
    (node->next_ ? node->next_->previous_ : last_) = node->previous_;
    --count_;
    Q3LNode *heir = node->next_ ? node->next_ : node->previous_;
    for (Q3GListIterator *iterator = iterators_; iterator; iterator = iterator->next_) {
        if (iterator->node_ == node)
            iterator->node_ = heir;
    }
    return node;
}

bool Q3GList::insertItem(uint index, Item item)
{
    if (!item) {
        qWarning("Q3PtrList: a null item is not inserted");
        return false;
    }
    if (index > count_)
        return false;
    auto *node = new Q3LNode(newItem(item));
    link(node, index < count_ ? nodeAt(index) : nullptr);
    setCurrent(node, static_cast<int>(index));
    return true;
}

void Q3GList::insertSorted(Item item)
{
    uint index = 0;
    if (item) {
        for (const Q3LNode *node = first_; node && compare(node->item_, item) <= 0; node = node->next_)
            ++index;
    }
    insertItem(index, item);
}

void Q3GList::appendAll(const Q3GList &other)
{
    for (const Q3LNode *node = other.first_; node; node = node->next_)
        insertItem(count_, node->item_);
}

bool Q3GList::replaceItem(uint index, Item item)
{
    if (!item) {
        qWarning("Q3PtrList: a null item is not inserted");
        return false;
    }
    if (index >= count_)
        return false;
    Q3LNode *node = nodeAt(index);
    if (node->item_ == item)
        return true;
    const Item former = std::exchange(node->item_, newItem(item));
    deleteItem(former);
    return true;
}

int Q3GList::findItem(Item item, Match match, Start start)
{
    Q3LNode *node = start == FromFirst ? first_ : current_;
    int index = start == FromFirst ? 0 : current_index_;
    if (!item)
        node = nullptr;
    while (node && !matches(item, node, match)) {
        node = node->next_;
        ++index;
    }
    setCurrent(node, index);
    return current_index_;
}

uint Q3GList::countOf(Item item, Match match) const
{
    uint found = 0;
    for (const Q3LNode *node = item ? first_ : nullptr; node; node = node->next_)
        found += matches(item, node, match) ? 1 : 0;
    return found;
}

bool Q3GList::isEqualTo(const Q3GList &other) const
{
    if (count_ != other.count_)
        return false;
    const Q3LNode *theirs = other.first_;
    for (const Q3LNode *ours = first_; ours; ours = ours->next_, theirs = theirs->next_) {
        if (compare(ours->item_, theirs->item_) != 0)
            return false;
    }
    return true;
}

void Q3GList::sortItems()
{
    std::vector<Q3LNode *> nodes;
    nodes.reserve(count_);
    for (Q3LNode *node = first_; node; node = node->next_)
        nodes.push_back(node);
    std::stable_sort(nodes.begin(), nodes.end(),
                     [this](const Q3LNode *a, const Q3LNode *b) { return compareItems(a->item_, b->item_) < 0; });
    // The nodes themselves change places, so that whatever stands on an item stays with it.
    first_ = last_ = nullptr;
    count_ = 0;
    for (Q3LNode *node : nodes) {
        if (node == current_)
            current_index_ = static_cast<int>(count_);
        link(node, nullptr);
    }
}

Q3PtrCollection::Item Q3GList::takeCurrent()
{
    Q3LNode *node = unlink(current_);
    if (node->next_)
        setCurrent(node->next_, current_index_);
    else
        setCurrent(node->previous_, current_index_ - 1);
    const Item item = node->item_;
    delete node;
    return item;
}

Q3PtrCollection::Item Q3GList::takeListNode(Q3LNode *node)
{
    const Item item = node->item_;
    delete unlink(node);
    goToFirst();
    return item;
}

void Q3GList::clear()
{
    Q3LNode *node = std::exchange(first_, nullptr);
    last_ = nullptr;
    count_ = 0;
    setCurrent(nullptr, -1);
    for (Q3GListIterator *iterator = iterators_; iterator; iterator = iterator->next_)
        iterator->node_ = nullptr;
    while (node) {
        const Item item = node->item_;
        delete std::exchange(node, node->next_);
        deleteItem(item);
    }
}

Q3GListIterator::Q3GListIterator(const Q3GList &list)
{
    attach(&list);
    node_ = list.first_;
}

Q3GListIterator::Q3GListIterator(const Q3GListIterator &other) : node_(other.node_)
{
    attach(other.list_);
}

Q3GListIterator &Q3GListIterator::operator=(const Q3GListIterator &other)
{
    if (list_ != other.list_) {
        detach();
        attach(other.list_);
    }
    node_ = other.node_;
    return *this;
}

Q3GListIterator::~Q3GListIterator()
{
    detach();
}

void Q3GListIterator::attach(const Q3GList *list)
{
    list_ = list;
    if (!list)
        return;
    next_ = list->iterators_;
    if (next_)
        next_->previous_ = this;
    list->iterators_ = this;
}

void Q3GListIterator::detach()
{
    if (!list_)
        return;
    (previous_ ? previous_->next_ : list_->iterators_) = next_;
    if (next_)
        next_->previous_ = previous_;
    previous_ = next_ = nullptr;
    list_ = nullptr;
    node_ = nullptr;
}

uint Q3GListIterator::itemCount() const
{
    return list_ ? list_->count_ : 0;
}

bool Q3GListIterator::isAtFirst() const
{
    return node_ && !node_->previous_;
}

bool Q3GListIterator::isAtLast() const
{
    return node_ && !node_->next_;
}

Q3PtrCollection::Item Q3GListIterator::goToFirst()
{
    node_ = list_ ? list_->first_ : nullptr;
    return item();
}

Q3PtrCollection::Item Q3GListIterator::goToLast()
{
    node_ = list_ ? list_->last_ : nullptr;
    return item();
}

Q3PtrCollection::Item Q3GListIterator::goForward(uint jump)
{
    for (; node_ && jump > 0; --jump)
        node_ = node_->next_;
    return item();
}

Q3PtrCollection::Item Q3GListIterator::goBack(uint jump)
{
    for (; node_ && jump > 0; --jump)
        node_ = node_->previous_;
    return item();
}

void Q3GListPosition::goBack()
{
    node_ = node_ ? node_->previous_ : list_->last_;
}
