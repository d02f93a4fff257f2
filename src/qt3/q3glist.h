// SPDX-License-Identifier: MIT
#ifndef QT3_Q3GLIST_H
#define QT3_Q3GLIST_H

#include "qt3/q3ptrcollection.h"

class Q3GList;

/// A place in a list of pointers: one item between its neighbours. It is made and freed by the list.
class TAVIQT3_EXPORT Q3LNode
{
public:
    /// The item, without its type.
    Q3PtrCollection::Item getData() const { return item_; }

private:
    friend class Q3GList;
    friend class Q3GListIterator;
    friend class Q3GListPosition;
    explicit Q3LNode(Q3PtrCollection::Item item) : item_(item) {}

    Q3PtrCollection::Item item_;
    Q3LNode *previous_ = nullptr;
    Q3LNode *next_ = nullptr;
};

/// An iterator that its list knows: what Q3PtrListIterator does, without the type of the items.
///
/// It always stands on an item of the list or on none. When its item is removed the list moves it on; when the list
/// goes it stands on none for good.
class TAVIQT3_EXPORT Q3GListIterator
{
protected:
    /// Stands on the first item of @a list.
    explicit Q3GListIterator(const Q3GList &list);
    Q3GListIterator(const Q3GListIterator &other);
    Q3GListIterator &operator=(const Q3GListIterator &other);
    ~Q3GListIterator();

    /// The number of items in the list; 0 where the list is gone.
    uint itemCount() const;
    /// Whether it stands on the first item.
    bool isAtFirst() const;
    /// Whether it stands on the last item.
    bool isAtLast() const;
    /// The item that it stands on; null if on none.
    Q3PtrCollection::Item item() const { return node_ ? node_->item_ : nullptr; }
    /// Goes to the first item and returns it; null if there is none.
    Q3PtrCollection::Item goToFirst();
    /// Goes to the last item and returns it; null if there is none.
    Q3PtrCollection::Item goToLast();
    /// Goes on by @a jump places and returns the item there; past the end it stands on none. O(jump).
    Q3PtrCollection::Item goForward(uint jump);
    /// Goes back by @a jump places and returns the item there; before the first it stands on none. O(jump).
    Q3PtrCollection::Item goBack(uint jump);

private:
    friend class Q3GList;
    void attach(const Q3GList *list);
    void detach();

    const Q3GList *list_ = nullptr;
    Q3LNode *node_ = nullptr;
    Q3GListIterator *previous_ = nullptr; ///< The list's other iterators.
    Q3GListIterator *next_ = nullptr;
};

/// A place in a list or its end, which the list does not know: what Q3PtrListStdIterator stands on.
class TAVIQT3_EXPORT Q3GListPosition
{
public:
    /// Whether both are the same place of one list.
    bool operator==(const Q3GListPosition &other) const { return node_ == other.node_; }

protected:
    Q3GListPosition() = default;
    Q3GListPosition(const Q3GList *list, Q3LNode *node) : list_(list), node_(node) {}
    /// The item here; this must not be the end.
    Q3PtrCollection::Item item() const { return node_->item_; }
    /// To the next item, or from the last one to the end.
    void goForward() { node_ = node_->next_; }
    /// To the item before, or from the end to the last one.
    void goBack();
    /// The place in the list; null at the end.
    Q3LNode *node() const { return node_; }

private:
    const Q3GList *list_ = nullptr;
    Q3LNode *node_ = nullptr;
};

/// Holds the items of a Q3PtrList without knowing their type: a doubly linked list with a current item.
///
/// Use Q3PtrList, whose reference tells what each operation does.
class TAVIQT3_EXPORT Q3GList : public Q3PtrCollection
{
public:
    /// The number of items. O(1).
    uint count() const override { return count_; }
    /// Whether there are no items.
    bool isEmpty() const { return count_ == 0; }
    /// Removes all items, and deletes them if automatic deletion is on. There is no current item then, and all
    /// iterators of the list stand on none. The list is empty by the time that the first item is deleted. O(count).
    void clear() override;

protected:
    /// How items are told from each other: by compareItems() or by their addresses.
    enum Match { ByComparison, ByAddress };
    /// Where a search begins.
    enum Start { FromFirst, FromCurrent };

    Q3GList() = default;
    /// An empty list: the copy appends the items itself. The iterators of @a source stay with that.
    Q3GList(const Q3GList &source);
    Q3GList &operator=(const Q3GList &) = delete;
    ~Q3GList() override;

    /// Compares two items, neither of them null: 0 if they are equal, less than 0 if @a item1 comes before @a item2,
    /// more than 0 if it comes behind. It must not change the list. Here the addresses are compared.
    virtual int compareItems(Item item1, Item item2);

    /// @name Looking
    /// Null, and -1, where there is none.
    /// @{

    /// The index of the current item.
    int currentIndex() const { return current_index_; }
    /// The current item.
    Item currentItem() const { return itemOf(current_); }
    /// The first item.
    Item firstItem() const { return itemOf(first_); }
    /// The last item.
    Item lastItem() const { return itemOf(last_); }
    /// The place of the current item.
    Q3LNode *currentListNode() const { return current_; }
    /// The place of the first item.
    Q3LNode *firstListNode() const { return first_; }
    /// @}

    /// @name Moving the current item
    /// Each returns the item that is current then, null if there is none.
    /// @{

    /// Makes the first item current.
    Item goToFirst();
    /// Makes the last item current.
    Item goToLast();
    /// Makes the item behind the current one current.
    Item goToNext();
    /// Makes the item before the current one current.
    Item goToPrevious();
    /// Makes the item at @a index current; if that is out of range, changes nothing and returns null.
    Item goTo(uint index);
    /// @}

    /// Inserts newItem() of @a item so that it stands at @a index, and makes it current. False, and nothing changes,
    /// if the index is out of range or the item is null; of the latter a warning is logged.
    bool insertItem(uint index, Item item);
    /// Inserts @a item behind all that compare less or equal.
    void insertSorted(Item item);
    /// Appends the items of @a other, which must be another list.
    void appendAll(const Q3GList &other);
    /// Puts newItem() of @a item in place of the one at @a index and hands that to deleteItem(), unless it is the
    /// very same. False as for insertItem().
    bool replaceItem(uint index, Item item);
    /// Searches for @a item, makes what it finds current, none if nothing, and returns the current index.
    int findItem(Item item, Match match, Start start);
    /// How many items match @a item.
    uint countOf(Item item, Match match) const;
    /// Whether the items of both lists are equal, one by one.
    bool isEqualTo(const Q3GList &other) const;
    /// Sorts by compareItems(); equal items keep their order.
    void sortItems();

    /// Takes the current item out, which must not be null. O(iterators).
    Item takeCurrent();
    /// Takes @a node out and makes the first item current. O(iterators).
    Item takeListNode(Q3LNode *node);

private:
    friend class Q3GListIterator;
    friend class Q3GListPosition;
    static Item itemOf(const Q3LNode *node) { return node ? node->item_ : nullptr; }
    Item setCurrent(Q3LNode *node, int index);
    int compare(Item item1, Item item2) const;
    bool matches(Item item, const Q3LNode *node, Match match) const;
    Q3LNode *nodeAt(uint index) const;
    void link(Q3LNode *node, Q3LNode *before);
    Q3LNode *unlink(Q3LNode *node);

    Q3LNode *first_ = nullptr;
    Q3LNode *last_ = nullptr;
    Q3LNode *current_ = nullptr;
    int current_index_ = -1;
    uint count_ = 0;
    mutable Q3GListIterator *iterators_ = nullptr; ///< Those that stand in this list, in no order.
};

#endif
