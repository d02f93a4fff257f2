// SPDX-License-Identifier: MIT
#ifndef QT3_Q3PTRCOLLECTION_H
#define QT3_Q3PTRCOLLECTION_H

#include "qt3/taviqt3_export.h"

#include <QtGlobal>

/// What collections of pointers share: how many items there are, and whether the collection deletes what it lets go.
///
/// The items are untyped here; a template over it, such as Q3PtrList, gives them their type.
///
/// **Ownership.** With automatic deletion on, the collection owns its items: whatever is removed from it is deleted,
/// by way of deleteItem(). With it off, as it is at first, the collection only refers to them.
///
/// **Threads.** As a container of Qt: one thread at a time for one object.
class TAVIQT3_EXPORT Q3PtrCollection
{
public:
    /// An item without its type.
    using Item = void *;

    /// Whether items that are removed are deleted. False at first.
    bool autoDelete() const { return auto_delete_; }
    /// Turns automatic deletion on or off, for all items, those that are in the collection already included.
    void setAutoDelete(bool enable) { auto_delete_ = enable; }

    /// The number of items.
    virtual uint count() const = 0;
    /// Removes all items, and deletes them if automatic deletion is on.
    virtual void clear() = 0;

protected:
    Q3PtrCollection() = default;
    /// A collection with automatic deletion off, whatever that of @a source is: items have one owner.
    Q3PtrCollection(const Q3PtrCollection &source);
    Q3PtrCollection &operator=(const Q3PtrCollection &) = delete;
    virtual ~Q3PtrCollection();

    /// What is put in for @a item when it is inserted: here @a item itself. A class that keeps copies returns one.
    virtual Item newItem(Item item);
    /// Deletes @a item, which has left the collection, if automatic deletion is on, and only then.
    ///
    /// A class that overrides this calls clear() in its own destructor: in that of its base the override is gone.
    virtual void deleteItem(Item item) = 0;

private:
    bool auto_delete_ = false;
};

#endif
