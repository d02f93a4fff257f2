// SPDX-License-Identifier: MIT
#ifndef QT3_Q3LISTVIEWITEMITERATOR_H
#define QT3_Q3LISTVIEWITEMITERATOR_H

#include "qt3/taviqt3_export.h"

class Q3ListView;
class Q3ListViewItem;

/// Goes through the items of a Q3ListView one by one: an item, then all below it, then its next sibling. It goes
/// through all, whether they are shown or not, or through those that flags choose.
///
/// @code
/// for (Q3ListViewItemIterator it(list, Q3ListViewItemIterator::Selected); it.current(); ++it)
///     names.append(it.current()->text(0));
/// @endcode
///
/// Items may be deleted and taken meanwhile: an iterator whose item goes, or an item above that, goes on to the one
/// behind, or to the last one before if there is none, or stands on none. A loop that deletes its item must not also
/// step on.
///
/// A step is O(1) in the long run.
class TAVIQT3_EXPORT Q3ListViewItemIterator
{
public:
    /// Which items to go through. Of a pair that excludes each other, both together mean the same as none.
    enum IteratorFlag {
        Visible = 0x00000001,       ///< Those that isVisible().
        Invisible = 0x00000002,     ///< Those that are not.
        Selected = 0x00000004,      ///< Those that are selected.
        Unselected = 0x00000008,    ///< Those that are not.
        Selectable = 0x00000010,    ///< Those that the user may select.
        NotSelectable = 0x00000020, ///< Those that he may not.
        DragEnabled = 0x00000040,   ///< Those that can be dragged.
        DragDisabled = 0x00000080,  ///< Those that can't.
        DropEnabled = 0x00000100,   ///< Those that things can be dropped on.
        DropDisabled = 0x00000200,  ///< Those on which nothing can be.
        Expandable = 0x00000400,    ///< Those that show themselves as such without children.
        NotExpandable = 0x00000800, ///< Those that do not.
        Checked = 0x00001000,       ///< No item has a tick: none.
        NotChecked = 0x00002000     ///< All.
    };

    /// Stands on none.
    Q3ListViewItemIterator();
    /// Stands on an item.
    explicit Q3ListViewItemIterator(Q3ListViewItem *item);
    /// Stands on an item, or the next one that the flags choose.
    Q3ListViewItemIterator(Q3ListViewItem *item, int iteratorFlags);
    /// Stands on the first item of a view.
    explicit Q3ListViewItemIterator(Q3ListView *lv);
    /// Stands on the first item of a view that the flags choose.
    Q3ListViewItemIterator(Q3ListView *lv, int iteratorFlags);
    /// Stands where the other does, with its flags.
    Q3ListViewItemIterator(const Q3ListViewItemIterator &it);
    /// Goes where the other stands, and takes its flags.
    Q3ListViewItemIterator &operator=(const Q3ListViewItemIterator &it);
    ~Q3ListViewItemIterator();

    /// Goes to the next item and returns itself; behind the last it stands on none, as it does from then on.
    Q3ListViewItemIterator &operator++();
    /// Goes to the next item and returns where it stood.
    const Q3ListViewItemIterator operator++(int);
    /// Goes on by @a j items.
    Q3ListViewItemIterator &operator+=(int j);
    /// Goes to the item before.
    Q3ListViewItemIterator &operator--();
    /// Goes to the item before and returns where it stood.
    const Q3ListViewItemIterator operator--(int);
    /// Goes back by @a j items.
    Q3ListViewItemIterator &operator-=(int j);
    /// The item that it stands on, or null.
    Q3ListViewItem *operator*() { return current_; }
    /// The item that it stands on, or null.
    Q3ListViewItem *current() const { return current_; }

private:
    friend class Q3ListView;
    friend class Q3ListViewItem;
    void attach();
    bool matches(const Q3ListViewItem *item) const;
    Q3ListViewItem *matchFrom(Q3ListViewItem *item) const;
    Q3ListViewItem *matchBackFrom(Q3ListViewItem *item) const;
    /// An item, still in its place, is about to go.
    static void leave(const Q3ListViewItem *item);
    /// All items of a view are about to go.
    static void leaveAll(const Q3ListViewItem *root);

    Q3ListViewItem *current_ = nullptr;
    int flags_ = 0;
    Q3ListViewItemIterator *previous_ = nullptr;
    Q3ListViewItemIterator *next_ = nullptr;
    static Q3ListViewItemIterator *first_; ///< All there are, of whatever view.
};

#endif
