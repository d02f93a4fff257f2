// SPDX-License-Identifier: MIT
#ifndef TAVILIB_TAVILIST_H
#define TAVILIB_TAVILIST_H

#include "tavilib/tavilib_export.h"
#include "tavilib/tavirecords.h"

#include <type_traits>

/// @file
/// Singly linked lists of records. A list is a pointer to its head, an empty list is null, and whoever holds the
/// head owns the list. Nothing here is synchronised: who shares a list between threads locks it.
///
/// The operations take any record whose first member is `TAVIPACKETHEADER header`. A null head address or a null
/// item is ignored. For lists that grow to many thousands see `tavipacketchain.h`, which appends in constant time.

/// A record that can stand in a list.
template <typename T>
concept TaviPacket = std::is_same_v<decltype(T::header), TAVIPACKETHEADER>;

/// The record after @a item, or null.
template <typename T>
T *NextInList(T *item)
{
    return static_cast<T *>(item->header.next); // also for a record that is const, whose next one is so too
}

namespace tavi::detail {
TAVILIB_EXPORT void addListList(TAVIPACKETHEADER **head, TAVIPACKETHEADER *list);
TAVILIB_EXPORT void removeItem(TAVIPACKETHEADER **head, TAVIPACKETHEADER *item);
TAVILIB_EXPORT int listLength(const TAVIPACKETHEADER *head);

template <TaviPacket T>
TAVIPACKETHEADER **headAddress(T **head)
{
    return reinterpret_cast<TAVIPACKETHEADER **>(head);
}
} // namespace tavi::detail

/// Appends the single record @a item at the tail, so that repeated calls keep the order of insertion. O(length).
template <TaviPacket T>
void AddList(T **head, T *item)
{
    if (!head || !item)
        return;
    item->header.next = nullptr;
    tavi::detail::addListList(tavi::detail::headAddress(head), &item->header);
}

/// Appends the whole list @a list at the tail; it then belongs to the first list. O(length of the first list).
template <TaviPacket T>
void AddListList(T **head, T *list)
{
    if (head && list)
        tavi::detail::addListList(tavi::detail::headAddress(head), &list->header);
}

/// Unlinks @a item and does not free it. An item that is not in the list is left alone. O(position of the item).
template <TaviPacket T>
void RemoveItemFromList(T **head, T *item)
{
    if (head && item)
        tavi::detail::removeItem(tavi::detail::headAddress(head), &item->header);
}

/// Inserts @a item in ascending order of @a key, bytewise; an item with an equal key goes behind those that are
/// there. @a key_of gives the key of a record that is in the list; null counts as an empty text. O(length).
template <TaviPacket T, typename KeyOf>
    requires std::is_invocable_v<KeyOf, const T &>
void InsertOrderedList(T **head, T *item, const char *key, KeyOf key_of)
{
    if (!head || !item)
        return;
    const auto before = [](const char *a, const char *b) {
        a = a ? a : "";
        b = b ? b : "";
        while (*a && *a == *b) {
            ++a;
            ++b;
        }
        return static_cast<unsigned char>(*a) < static_cast<unsigned char>(*b);
    };
    T *previous = nullptr;
    T *next = *head;
    while (next && !before(key, key_of(*next))) {
        previous = next;
        next = NextInList(next);
    }
    item->header.next = next;
    if (previous)
        previous->header.next = item;
    else
        *head = item;
}

/// InsertOrderedList() for records with a `name`, by which instrument lists are sorted.
template <TaviPacket T>
    requires std::is_convertible_v<decltype(T::name), const char *>
void InsertOrderedList(T **head, T *item, const char *key)
{
    InsertOrderedList(head, item, key, [](const T &other) { return other.name; });
}

/// Counts the records; 0 for a null head. O(length).
template <TaviPacket T>
int ListLength(const T *head)
{
    return head ? tavi::detail::listLength(&head->header) : 0;
}

#endif
