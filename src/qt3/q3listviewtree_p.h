// SPDX-License-Identifier: MIT
#ifndef QT3_Q3LISTVIEWTREE_P_H
#define QT3_Q3LISTVIEWTREE_P_H

#include "qt3/q3listviewitem.h"

#include <QPixmap>

#include <vector>

/// The children of an item, made with the first of them.
struct Q3ListViewChildren {
    Q3ListView *view = nullptr; ///< Of a view's hidden root only.
    Q3ListViewItem *first = nullptr;
    Q3ListViewItem *last = nullptr;
    Q3ListViewItem *root = nullptr; ///< Of the search tree; it means something only when linked.
    int count = 0;
    int changes = 0;             ///< To the search tree since it was asked last.
    bool linked = false;         ///< The search tree has all of them, as they stand.
    bool indexed = false;        ///< It tells all heights and positions, too.
    bool unsorted = true;        ///< Any of them may stand elsewhere than the last sorting left it.
    bool only_misplaced = false; ///< The sorting that begins has to do with these only.
    bool ascending = true;
    int column = -1; ///< They were sorted by.
    /// What came, or changed its text, since the last sorting; nothing if unsorted. The others are in order.
    std::vector<Q3ListViewItem *> misplaced;
};

/// What few items have.
struct Q3ListViewItemExtra {
    std::vector<std::unique_ptr<QPixmap>> pixmaps;
    std::vector<bool> rename;
};

/// A search tree over siblings, ordered as they stand, that knows the sum of heights below each: a treap whose
/// priorities are the items' mixed addresses. It allocates nothing: the links are in the items.
class Q3ListViewTree
{
public:
    /// Makes the tree of all siblings anew from their total heights. O(n).
    static void build(Q3ListViewChildren &children);
    /// Puts in an item of height 0 behind its previous sibling. O(log n).
    static void insert(Q3ListViewChildren &children, Q3ListViewItem *item);
    /// Takes an item out. O(log n).
    static void remove(Q3ListViewChildren &children, Q3ListViewItem *item);
    /// Gives an item another total height. O(log n).
    static void setTotal(Q3ListViewItem *item, int total);
    /// The sum of all heights.
    static int sum(const Q3ListViewChildren &children) { return sum(children.root); }
    /// The sum of the heights of all siblings before an item. O(log n).
    static int offset(const Q3ListViewItem *item);
    /// The item that covers @a y pixels from the first, which is then made to count from the item's top; null
    /// outside. O(log n).
    static Q3ListViewItem *find(const Q3ListViewChildren &children, int &y);
    /// Whether a sibling stands before another one. O(log n).
    static bool isBefore(const Q3ListViewItem *a, const Q3ListViewItem *b);
    /// The last item for which @a stands_before is true, as it is for all before that; null if it is for none.
    /// O(log n) questions.
    template <typename Predicate>
    static Q3ListViewItem *last(const Q3ListViewChildren &children, Predicate stands_before)
    {
        Q3ListViewItem *last = nullptr;
        for (Q3ListViewItem *node = children.root; node;) {
            const bool before = stands_before(node);
            last = before ? node : last;
            node = before ? node->tree_right_ : node->tree_left_;
        }
        return last;
    }

private:
    static int sum(const Q3ListViewItem *node) { return node ? node->tree_sum_ : 0; }
    static void add(Q3ListViewItem *item);
    static void rotateUp(Q3ListViewChildren &children, Q3ListViewItem *node);
    static void replace(Q3ListViewChildren &children, Q3ListViewItem *node, Q3ListViewItem *by);
};

/// The structure of items and the rows that come of it: which item follows which, and where each is.
class Q3ListViewRows
{
public:
    /// Links an item in behind another child, or as the first.
    static void link(Q3ListViewItem *parent, Q3ListViewItem *item, Q3ListViewItem *after);
    /// Puts an item into its parent's list, behind a sibling or first, and no more.
    static void join(Q3ListViewItem *item, Q3ListViewItem *after);
    /// Takes it out of the list, and no more.
    static void leave(Q3ListViewItem *item);
    /// Takes an item out of its siblings.
    static void unlink(Q3ListViewItem *item);
    /// Puts all children of an item before those of another, which has children or had some.
    static void handOver(Q3ListViewItem *from, Q3ListViewItem *to);
    /// Links the children anew in the order given.
    static void reorder(Q3ListViewItem *parent, const std::vector<Q3ListViewItem *> &order);
    /// Makes the search tree of the children, if there is none, without heights.
    static void linkTree(Q3ListViewChildren &children);
    /// An item may stand elsewhere now than its siblings are sorted.
    static void misplace(Q3ListViewItem *item);
    /// Forgets which children are misplaced.
    static void settle(Q3ListViewChildren &children);
    /// Brings what is misplaced to its place among siblings that are in order, as sorting them all would; false if
    /// that has to be done. O(k log n) calls of compare() for k of n items.
    static bool place(Q3ListViewItem *parent);
    /// The heights of an item's children are not known any more.
    static void forget(Q3ListViewItem *parent);
    /// An item's total height is another now: height, visibility, opening.
    static void changed(Q3ListViewItem *item);
    /// Makes the search trees of an item's children, and of all that is open below, valid. Calls setup().
    static void index(Q3ListViewItem *parent);
    /// The height of all that is shown below an item if it is open. Its children must be indexed.
    static int childrenHeight(const Q3ListViewItem *item);
    /// Calls setup() if that was not called yet.
    static void ensureSetup(Q3ListViewItem *item);
    /// The y of an item from the beginning of its view's root.
    static int position(const Q3ListViewItem *item);
    /// The item on the row at a height; null outside.
    static Q3ListViewItem *itemAt(Q3ListViewItem *root, int y);
    /// The next of the siblings from @a item on that is shown, or null.
    static Q3ListViewItem *shownFrom(Q3ListViewItem *item);
    /// The last of the siblings up to @a item that is shown, or null.
    static Q3ListViewItem *shownUpTo(Q3ListViewItem *item);
    /// Either of the two.
    static Q3ListViewItem *nearestShown(Q3ListViewItem *item, bool downwards);
    /// The lowest row of an item and all that is shown below it.
    static Q3ListViewItem *lowest(Q3ListViewItem *item);
    /// Puts the children in order if the view wants one and they are not.
    static void order(Q3ListViewItem *parent);
    /// The item behind this one and all below it, in the whole tree, shown or not.
    static Q3ListViewItem *behind(const Q3ListViewItem *item);
    /// The next item of the whole tree.
    static Q3ListViewItem *next(const Q3ListViewItem *item);
    /// The previous item of the whole tree.
    static Q3ListViewItem *previous(const Q3ListViewItem *item);

private:
    /// How many single changes cost less than doing all anew.
    static int fewOf(const Q3ListViewChildren &children) { return 64 + children.count / 16; }
    static bool changePays(Q3ListViewChildren &children);
    static int totalOf(const Q3ListViewItem *item);
    static void passUp(Q3ListViewItem *parent);
};

/// A pointer to an item that becomes null when the item is deleted. They stand in one list, by which items find them.
class Q3ListViewItemGuard
{
public:
    explicit Q3ListViewItemGuard(Q3ListViewItem *item = nullptr);
    ~Q3ListViewItemGuard();
    Q3ListViewItemGuard(const Q3ListViewItemGuard &other) : Q3ListViewItemGuard(other.item_) {}
    Q3ListViewItemGuard &operator=(const Q3ListViewItemGuard &other) { return *this = other.item_; }
    Q3ListViewItemGuard &operator=(Q3ListViewItem *item)
    {
        item_ = item;
        return *this;
    }
    Q3ListViewItem *get() const { return item_; }
    operator Q3ListViewItem *() const { return item_; }
    Q3ListViewItem *operator->() const { return item_; }
    /// Tells all of a deletion.
    static void deleted(const Q3ListViewItem *item);

private:
    Q3ListViewItem *item_;
    Q3ListViewItemGuard *next_;
    Q3ListViewItemGuard *previous_ = nullptr;
    static Q3ListViewItemGuard *first_;
};

#endif
