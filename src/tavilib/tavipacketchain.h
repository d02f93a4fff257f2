// SPDX-License-Identifier: MIT
#ifndef TAVILIB_TAVIPACKETCHAIN_H
#define TAVILIB_TAVIPACKETCHAIN_H

#include "tavilib/tavilist.h"
#include "tavilib/tavipacket.h"

#include <cstddef>
#include <utility>

/// A list of records that knows its tail and its length, for lists that grow to many thousands: where AddList()
/// walks to the tail, append() does not. It does not own its records, because who frees them depends on their kind;
/// hand them on with takeAll() or free them with freeAll().
///
/// Not synchronised; movable, not copyable.
template <TaviPacket T>
class TaviPacketChain
{
public:
    TaviPacketChain() = default;
    /// Takes the list over. O(length).
    explicit TaviPacketChain(T *list) { appendList(list); }
    TaviPacketChain(const TaviPacketChain &) = delete;
    TaviPacketChain &operator=(const TaviPacketChain &) = delete;
    TaviPacketChain(TaviPacketChain &&other) noexcept
        : head_(std::exchange(other.head_, nullptr)), tail_(std::exchange(other.tail_, nullptr)),
          length_(std::exchange(other.length_, 0))
    {}
    TaviPacketChain &operator=(TaviPacketChain &&) = delete;
    ~TaviPacketChain() = default;

    /// The first record, or null. The chain keeps it.
    T *head() const { return head_; }
    /// Whether there is no record.
    bool isEmpty() const { return !head_; }
    /// How many records there are. O(1): they are counted as they come.
    size_t length() const { return length_; }

    /// Appends one record. O(1). Null is ignored.
    void append(T *item)
    {
        if (!item)
            return;
        item->header.next = nullptr;
        if (tail_)
            tail_->header.next = item;
        else
            head_ = item;
        tail_ = item;
        ++length_;
    }

    /// Appends a whole list. O(length of @a list).
    void appendList(T *list)
    {
        while (list) {
            T *next = NextInList(list);
            append(list);
            list = next;
        }
    }

    /// Appends all records of @a other, which is empty afterwards. O(1).
    void moveFrom(TaviPacketChain &other)
    {
        if (other.isEmpty() || &other == this)
            return;
        if (tail_)
            tail_->header.next = other.head_;
        else
            head_ = other.head_;
        tail_ = other.tail_;
        length_ += other.length_;
        other.takeAll();
    }

    /// Unlinks and returns the first record; null if there is none. O(1).
    T *takeFirst()
    {
        T *first = head_;
        if (!first)
            return nullptr;
        head_ = NextInList(first);
        if (!head_)
            tail_ = nullptr;
        first->header.next = nullptr;
        --length_;
        return first;
    }

    /// Unlinks the first @a count records, or all if there are fewer, and returns them as a list. O(count).
    T *takeFront(size_t count)
    {
        TaviPacketChain front;
        for (; count > 0 && head_; --count)
            front.append(takeFirst());
        return front.takeAll();
    }

    /// Unlinks and returns the whole list. O(1).
    T *takeAll()
    {
        tail_ = nullptr;
        length_ = 0;
        return std::exchange(head_, nullptr);
    }

    /// Frees all records with the packet free of @a type.
    void freeAll(int type)
    {
        T *list = takeAll();
        TaviPacketFreeList(&list, type);
    }

private:
    T *head_ = nullptr;
    T *tail_ = nullptr;
    size_t length_ = 0;
};

#endif
