// SPDX-License-Identifier: MIT
#ifndef QT3_Q3PTRLIST_H
#define QT3_Q3PTRLIST_H

#include "qt3/q3glist.h"

#include <cstddef>
#include <iterator>
#include <type_traits>

template <typename T>
class Q3PtrListStdIterator;

/// A list of pointers to T that may own what they point at, and has a current item.
///
/// New code is better off with a standard container of smart pointers; this list is for classes whose interface is
/// built on it.
///
/// @code
/// Q3PtrList<Job> jobs;
/// jobs.setAutoDelete(true);
/// jobs.append(new Job("sleeve"));
/// jobs.prepend(new Job("label"));
/// for (Job *job = jobs.first(); job; job = jobs.next())
///     job->print();
/// for (const Job *job : jobs) // leaves the current item alone
///     job->report();
/// jobs.removeFirst(); // deletes the label
/// @endcode
///
/// **Index and current item.** Positions count from 0 to count() - 1. One item may be the current one; at() tells its
/// index, which is -1 while there is none. Whatever inserts an item makes it current. Whatever takes an item out
/// makes current the item that has come to its place, or the new last one if it was the last, but for removeNode()
/// and takeNode(), which make the first item current. An operation that fails leaves the current item alone, but for
/// a search, after which there is none. The operations that are const, Q3PtrListIterator and the iterators of the
/// standard form do not move it.
///
/// **Comparison.** find(), findNext(), contains(), remove(const T *), inSort(), sort() and the operators == and !=
/// compare items by the virtual compareItems(), which a class derived from this one may override; as it stands it
/// compares addresses. The forms with "Ref" always compare addresses.
///
/// **Ownership.** With setAutoDelete(true) the list owns its items and deletes what is removed, replaced, cleared,
/// or in it when it goes; what a take operation hands out belongs to the caller. An item is deleted by `delete`
/// when it has left the list: its destructor may use the list. A copy of a list never owns.
///
/// **Errors.** A null item cannot be put in: nothing happens but a warning in Qt's log. An index out of range gives
/// false or null.
///
/// **Threads.** One thread at a time for one list with all its iterators, also where all only read: the registration
/// of a Q3PtrListIterator is a change.
///
/// **Complexity.** What works at either end or at the current item is O(1), and what takes out an item O(iterators)
/// in addition. Operations with an index walk from the first, the last or the current item, whichever is nearest.
/// Searches are O(count), sort() is O(count log count).
template <typename T>
class Q3PtrList : public Q3GList
{
public:
    using iterator = Q3PtrListStdIterator<T>; ///< Items cannot be exchanged through it: the same for const lists.
    using Iterator = iterator;
    using const_iterator = iterator;
    using ConstIterator = iterator;

    /// An empty list with automatic deletion off.
    Q3PtrList() = default;
    /// A list of the same items, in the same order, with automatic deletion off. O(count).
    Q3PtrList(const Q3PtrList &list) : Q3GList(list) { appendAll(list); }
    /// Clears the list, which deletes the items if automatic deletion is on. Iterators stand on none afterwards.
    ~Q3PtrList() override { Q3PtrList::clear(); }

    /// Clears this list and appends the items of @a list to it. Whether it deletes items stays as it was: two lists
    /// that both do may not share them. Assignment to itself does nothing.
    Q3PtrList &operator=(const Q3PtrList &list)
    {
        if (this != &list) {
            clear();
            appendAll(list);
        }
        return *this;
    }

    /// Whether both lists have equal items in the same order, by this list's compareItems().
    bool operator==(const Q3PtrList &list) const { return isEqualTo(list); }
    /// Whether they differ in an item or in their length.
    bool operator!=(const Q3PtrList &list) const { return !isEqualTo(list); }

    /// @name Inserting
    /// The item that goes in becomes the current one.
    /// @{

    /// Inserts @a item so that it stands at @a index, from 0 to count(). Returns false if it is out of range or the
    /// item is null.
    bool insert(uint index, const T *item) { return insertItem(index, untyped(item)); }
    /// Inserts @a item as the first one.
    void prepend(const T *item) { insertItem(0, untyped(item)); }
    /// Inserts @a item as the last one.
    void append(const T *item) { insertItem(count(), untyped(item)); }
    /// Inserts @a item behind all that are less or equal, in a list that is in order. O(count): for many items
    /// append() and sort() are the better way.
    void inSort(const T *item) { insertSorted(untyped(item)); }
    /// Puts @a item in place of the one at @a index, which is deleted if automatic deletion is on and it is another.
    /// The current position stays. Returns false if the index is out of range or the item is null.
    bool replace(uint index, const T *item) { return replaceItem(index, untyped(item)); }
    /// @}

    /// @name Removing
    /// The item is deleted if automatic deletion is on. Returned is whether there was one to remove.
    /// @{

    /// Removes the item at @a index.
    bool remove(uint index) { return goTo(index) && removeCurrent(); }
    /// Removes the current item.
    bool remove() { return current() && removeCurrent(); }
    /// Removes the first item equal to @a item, or the current one if @a item is null. If none is equal, none is
    /// current afterwards.
    bool remove(const T *item) { return item ? find(item) >= 0 && removeCurrent() : remove(); }
    /// Removes the first occurrence of just this @a item. If it is not there, none is current afterwards.
    bool removeRef(const T *item) { return findRef(item) >= 0 && removeCurrent(); }
    /// Removes the item of @a node, which must be a place of this list.
    void removeNode(Q3LNode *node) { deleteItem(takeListNode(node)); }
    /// Removes the first item.
    bool removeFirst() { return first() && removeCurrent(); }
    /// Removes the last item.
    bool removeLast() { return last() && removeCurrent(); }
    /// Removes the item at @a position and returns the position behind it.
    iterator erase(iterator position)
    {
        Q3LNode *node = position.node();
        ++position;
        removeNode(node);
        return position;
    }
    /// @}

    /// @name Taking
    /// The item leaves the list and is never deleted.
    /// @{

    /// Takes the item at @a index out; null if there is none.
    T *take(uint index) { return goTo(index) ? typed(takeCurrent()) : nullptr; }
    /// Takes the current item out; null if there is none.
    T *take() { return current() ? typed(takeCurrent()) : nullptr; }
    /// Takes the item of @a node out, which must be a place of this list.
    T *takeNode(Q3LNode *node) { return typed(takeListNode(node)); }
    /// @}

    /// @name Searching
    /// An item that is found becomes current and its index is returned; else none is current, and -1 is returned. A
    /// null item is never found.
    /// @{

    /// Finds the first item equal to @a item.
    int find(const T *item) { return findItem(untyped(item), ByComparison, FromFirst); }
    /// Finds the next item equal to @a item, beginning with the current item itself: to go on from one that was
    /// found, call next() before. Without a current item nothing is found.
    int findNext(const T *item) { return findItem(untyped(item), ByComparison, FromCurrent); }
    /// Finds the first occurrence of just this @a item.
    int findRef(const T *item) { return findItem(untyped(item), ByAddress, FromFirst); }
    /// Finds the next occurrence of just this @a item, beginning with the current item itself, as findNext() does.
    int findNextRef(const T *item) { return findItem(untyped(item), ByAddress, FromCurrent); }
    /// How many items are equal to @a item.
    uint contains(const T *item) const { return countOf(untyped(item), ByComparison); }
    /// How often just this @a item is in the list.
    uint containsRef(const T *item) const { return countOf(untyped(item), ByAddress); }
    /// @}

    /// @name Walking
    /// These make the item that they return current; null is returned, and none is current, where there is none.
    /// @{

    /// The item at @a index. If that is out of range, null is returned and the current item stays.
    T *at(uint index) { return typed(goTo(index)); }
    /// The first item.
    T *first() { return typed(goToFirst()); }
    /// The last item.
    T *last() { return typed(goToLast()); }
    /// The item behind the current one. Does nothing if there is no current item.
    T *next() { return typed(goToNext()); }
    /// The item before the current one. Does nothing if there is no current item.
    T *prev() { return typed(goToPrevious()); }
    /// @}

    /// @name Looking
    /// @{

    /// The index of the current item; -1 if there is none.
    int at() const { return currentIndex(); }
    /// The current item; null if there is none.
    T *current() const { return typed(currentItem()); }
    /// The place of the current item, for removeNode() and takeNode(); null if there is none. It lasts until its
    /// item leaves the list.
    Q3LNode *currentNode() const { return currentListNode(); }
    /// The first item, without making it current; null if the list is empty.
    T *getFirst() const { return typed(firstItem()); }
    /// The last item, without making it current; null if the list is empty.
    T *getLast() const { return typed(lastItem()); }
    /// @}

    /// Sorts by compareItems(). Items that are equal keep their order. The current item stays current, and iterators
    /// stay with their items.
    void sort() { sortItems(); }

    /// @name Iterators of the standard form
    /// @{

    /// The position of the first item.
    iterator begin() const { return iterator(this, firstListNode()); }
    /// The same as begin().
    iterator constBegin() const { return begin(); }
    /// The position behind the last item.
    iterator end() const { return iterator(this, nullptr); }
    /// The same as end().
    iterator constEnd() const { return end(); }
    /// @}

protected:
    /// Deletes @a item if automatic deletion is on.
    void deleteItem(Item item) override
    {
        static_assert(std::is_destructible_v<T>, "an item is deleted, so its type must be complete");
        if (autoDelete())
            delete typed(item);
    }

private:
    static Item untyped(const T *item) { return const_cast<std::remove_cv_t<T> *>(item); }
    static T *typed(Item item) { return static_cast<T *>(item); }
    bool removeCurrent()
    {
        deleteItem(takeCurrent());
        return true;
    }
};

/// Walks a Q3PtrList independently of its current item and of other iterators, and survives changes of the list.
///
/// It stands on an item or on none. Items may be inserted and removed meanwhile: when the item it stands on leaves
/// the list, it goes to the one behind it, or to the new last one. After clear() it stands on none; after the end of
/// the list it does so for good.
///
/// @code
/// for (Q3PtrListIterator<Job> it(jobs); it.current(); ++it)
///     it.current()->report();
/// @endcode
template <typename T>
class Q3PtrListIterator : public Q3GListIterator
{
public:
    /// Stands on the first item of @a list, on none if it is empty.
    explicit Q3PtrListIterator(const Q3PtrList<T> &list) : Q3GListIterator(list) {}

    /// The number of items in the list.
    uint count() const { return itemCount(); }
    /// Whether the list has no items.
    bool isEmpty() const { return itemCount() == 0; }
    /// Whether it stands on the first item.
    bool atFirst() const { return isAtFirst(); }
    /// Whether it stands on the last item.
    bool atLast() const { return isAtLast(); }

    /// The item that it stands on; null if on none.
    T *current() const { return typed(item()); }
    /// The same as current(); implicit, as users of the class know it.
    operator T *() const { return current(); }
    /// The same as current().
    T *operator*() const { return current(); }

    /// Goes to the first item and returns it; null if there is none.
    T *toFirst() { return typed(goToFirst()); }
    /// Goes to the last item and returns it; null if there is none.
    T *toLast() { return typed(goToLast()); }
    /// Goes to the next item and returns the one left; null if it stood on none.
    T *operator()()
    {
        T *left = current();
        goForward(1);
        return left;
    }
    /// Goes to the next item and returns it. Behind the last one it stands on none.
    T *operator++() { return typed(goForward(1)); }
    /// Goes @a jump items on and returns the one there; behind the last one it stands on none. O(jump).
    T *operator+=(uint jump) { return typed(goForward(jump)); }
    /// Goes to the item before and returns it. Before the first one it stands on none.
    T *operator--() { return typed(goBack(1)); }
    /// Goes @a jump items back and returns the one there; before the first one it stands on none. O(jump).
    T *operator-=(uint jump) { return typed(goBack(jump)); }

private:
    static T *typed(Q3PtrCollection::Item item) { return static_cast<T *>(item); }
};

/// A bidirectional iterator over a Q3PtrList, for loops and algorithms. It lasts until its item leaves the list.
///
/// It gives the pointers by value: the items of a list are exchanged with Q3PtrList::replace().
template <typename T>
class Q3PtrListStdIterator : public Q3GListPosition
{
public:
    using iterator_concept = std::bidirectional_iterator_tag;
    using iterator_category = std::input_iterator_tag; // what the older algorithms call one without references
    using value_type = T *;
    using difference_type = std::ptrdiff_t;
    using pointer = T **;
    using reference = T *;

    /// A position in no list.
    Q3PtrListStdIterator() = default;

    /// The item. There must be one.
    T *operator*() const { return static_cast<T *>(item()); }
    /// To the next item, or behind the last.
    Q3PtrListStdIterator &operator++()
    {
        goForward();
        return *this;
    }
    /// To the next item, or behind the last; returns where it was.
    Q3PtrListStdIterator operator++(int)
    {
        Q3PtrListStdIterator former = *this;
        goForward();
        return former;
    }
    /// To the item before, from behind the last to the last one.
    Q3PtrListStdIterator &operator--()
    {
        goBack();
        return *this;
    }
    /// To the item before; returns where it was.
    Q3PtrListStdIterator operator--(int)
    {
        Q3PtrListStdIterator former = *this;
        goBack();
        return former;
    }

private:
    friend class Q3PtrList<T>;
    Q3PtrListStdIterator(const Q3GList *list, Q3LNode *node) : Q3GListPosition(list, node) {}
};

#endif
