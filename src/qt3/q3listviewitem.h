// SPDX-License-Identifier: MIT
#ifndef QT3_Q3LISTVIEWITEM_H
#define QT3_Q3LISTVIEWITEM_H

#include "qt3/taviqt3_export.h"

#include <QPalette>
#include <QString>

#include <memory>

class QDropEvent;
class QFontMetrics;
class QMimeSource;
class QPainter;
class QPixmap;
class QPoint;
class QRect;
class Q3ListView;
struct Q3ListViewChildren;
struct Q3ListViewItemExtra;

/// The colours to paint with: a palette whose current colour group is the right one.
using QColorGroup = QPalette;

/// A row of a Q3ListView, with a text and a pixmap for each column, and with rows below it.
///
/// An item is made with its parent, a view or another item, and belongs to that; it may be deleted at any time, in
/// any slot of the view's signals too, and its children with it. What it shows may be computed: derive and override
/// text(), pixmap(), compare(), paintCell(), setup() and width().
///
/// @code
/// class Patch : public Q3ListViewItem
/// {
/// public:
///     Patch(Q3ListView *list, Q3ListViewItem *after, double delta) : Q3ListViewItem(list, after), delta_(delta) {}
///     QString text(int) const override { return QString::number(delta_, 'f', 2); }
///     int compare(Q3ListViewItem *i, int, bool) const override
///     {
///         const double other = static_cast<Patch *>(i)->delta_;
///         return delta_ < other ? -1 : delta_ > other ? 1 : 0;
///     }
///
/// private:
///     double delta_;
/// };
/// @endcode
///
/// **Order.** In a view that sorts, children are put in order when the order is needed: before they are shown, and by
/// Q3ListView::firstChild(), itemPos(), itemAt(). firstChild() and nextSibling() of an item do not sort. What came,
/// or got another text by setText(), is brought to its place then; where compare() gives another answer for other
/// reasons, call sort().
///
/// **Cost.** Inserting, taking and deleting an item are O(1) in the long run and O(log n) at most, n its siblings;
/// itemBelow() and itemAbove() are O(1), or O(log n) over many hidden items; itemPos(), height changes, opening and
/// hiding O(depth log n). Bringing k items to their places among n asks compare() O(k log n) times, or O(n log n) if
/// they are many. listView() and depth() are O(depth). An item takes 112 bytes and its texts.
///
/// GUI thread only.
class TAVIQT3_EXPORT Q3ListViewItem
{
public:
    /// @name Making
    /// A new item stands first among its siblings, or behind @a after where that is given; where that is null or no
    /// child of the parent it stands first.
    /// @{

    /// A top-level item.
    explicit Q3ListViewItem(Q3ListView *parent);
    /// A child of an item.
    explicit Q3ListViewItem(Q3ListViewItem *parent);
    /// A top-level item behind another.
    Q3ListViewItem(Q3ListView *parent, Q3ListViewItem *after);
    /// A child behind another.
    Q3ListViewItem(Q3ListViewItem *parent, Q3ListViewItem *after);
    /// A top-level item with texts.
    Q3ListViewItem(Q3ListView *parent, const QString &label1, const QString &label2 = QString(),
                   const QString &label3 = QString(), const QString &label4 = QString(),
                   const QString &label5 = QString(), const QString &label6 = QString(),
                   const QString &label7 = QString(), const QString &label8 = QString());
    /// A child with texts.
    Q3ListViewItem(Q3ListViewItem *parent, const QString &label1, const QString &label2 = QString(),
                   const QString &label3 = QString(), const QString &label4 = QString(),
                   const QString &label5 = QString(), const QString &label6 = QString(),
                   const QString &label7 = QString(), const QString &label8 = QString());
    /// A top-level item with texts behind another.
    Q3ListViewItem(Q3ListView *parent, Q3ListViewItem *after, const QString &label1,
                   const QString &label2 = QString(), const QString &label3 = QString(),
                   const QString &label4 = QString(), const QString &label5 = QString(),
                   const QString &label6 = QString(), const QString &label7 = QString(),
                   const QString &label8 = QString());
    /// A child with texts behind another.
    Q3ListViewItem(Q3ListViewItem *parent, Q3ListViewItem *after, const QString &label1,
                   const QString &label2 = QString(), const QString &label3 = QString(),
                   const QString &label4 = QString(), const QString &label5 = QString(),
                   const QString &label6 = QString(), const QString &label7 = QString(),
                   const QString &label8 = QString());
    /// Deletes the children, and takes the item out of where it is: takeItem() of its parent is called.
    virtual ~Q3ListViewItem();
    Q3ListViewItem(const Q3ListViewItem &) = delete;
    Q3ListViewItem &operator=(const Q3ListViewItem &) = delete;
    /// @}

    /// @name Structure
    /// @{

    /// Takes in an item without a parent as the first child.
    virtual void insertItem(Q3ListViewItem *newChild);
    /// Lets a child go without deleting it. It can be inserted elsewhere, or deleted. A selected item is unselected
    /// in a view of Single selection and stays selected in others. If the current item goes, a neighbour is current.
    virtual void takeItem(Q3ListViewItem *item);
    /// The same as takeItem().
    virtual void removeItem(Q3ListViewItem *item) { takeItem(item); }
    /// Moves the item behind a sibling. Nothing in a view that sorts, or if @a after is no sibling.
    void moveItem(Q3ListViewItem *after);
    /// The parent; null for a top-level item and for one that was taken.
    Q3ListViewItem *parent() const;
    /// The view; null for an item that was taken, and for one below it.
    Q3ListView *listView() const;
    /// The first child, or null. It does not sort.
    Q3ListViewItem *firstChild() const;
    /// The sibling behind this item, or null. It does not sort.
    Q3ListViewItem *nextSibling() const { return next_; }
    /// The number of children.
    int childCount() const;
    /// 0 for a top-level item, 1 for its children, and so on.
    int depth() const;
    /// The item on the row above, whether that is in sight or not; null above the first. All parents are taken to be
    /// open.
    Q3ListViewItem *itemAbove() const;
    /// The item on the row below, whether that is in sight or not; null below the last.
    Q3ListViewItem *itemBelow() const;
    /// @}

    /// @name Contents
    /// @{

    /// The text of a column; empty if there is none.
    virtual QString text(int column) const;
    /// Sets the text of a column from 0 to 9999.
    virtual void setText(int column, const QString &text);
    /// The pixmap of a column, owned by the item; null if there is none.
    virtual const QPixmap *pixmap(int column) const;
    /// Sets the pixmap of a column from 0 to 9999. A null pixmap takes it away.
    virtual void setPixmap(int column, const QPixmap &pm);
    /// What the item is sorted by in a column: its text.
    virtual QString key(int column, bool ascending) const;
    /// Less than 0 if this item comes before @a i in a column, 0 if they are equal, greater than 0 if behind. The
    /// direction is left to the view. Here the keys are compared as the locale wants it.
    virtual int compare(Q3ListViewItem *i, int col, bool ascending) const;
    /// A number that tells kinds of items from each other: 0. Derived classes use numbers above 1000.
    virtual int rtti() const;
    /// @}

    /// @name Sorting
    /// @{

    /// Sorts the children by a column; those that are equal keep their order. O(n log n) calls of compare(). The view
    /// calls it, too, when children came or changed to children that are in order, and for these it takes
    /// O(log n) each.
    virtual void sortChildItems(int column, bool ascending);
    /// Sorts the children as the view is sorted.
    virtual void sort();
    /// @}

    /// @name State
    /// @{

    /// Whether the children are shown: there are some, and the item was opened.
    bool isOpen() const;
    /// Shows or hides the children. Of the user's openings and closings the view tells by its signals, and of these
    /// too.
    virtual void setOpen(bool o);
    /// Whether the item shows itself as one that can be opened even without children.
    bool isExpandable() const { return (flags_ & Expandable) != 0; }
    /// Sets it; items may then fill themselves in setOpen().
    virtual void setExpandable(bool enable);
    /// Whether the item is selected.
    bool isSelected() const { return (flags_ & Selected) != 0; }
    /// Selects or unselects it and no more: Q3ListView::setSelected() keeps the rules, repaints and tells.
    virtual void setSelected(bool s);
    /// Whether the user may select it. True at first.
    bool isSelectable() const { return (flags_ & Selectable) != 0; }
    /// Sets whether the user may select it.
    virtual void setSelectable(bool enable);
    /// Whether the user may do anything with it. True at first.
    bool isEnabled() const { return (flags_ & Enabled) != 0; }
    /// Sets whether the user may do anything with it; if not, it is painted in the palette's disabled colours.
    virtual void setEnabled(bool b);
    /// Whether it is shown at all; not whether it is in sight. True at first.
    bool isVisible() const { return (flags_ & Visible) != 0; }
    /// Shows or hides it with its children.
    void setVisible(bool b);
    /// Whether texts may have several lines. False at first.
    bool multiLinesEnabled() const { return (flags_ & MultiLines) != 0; }
    /// Sets whether texts may have several lines.
    virtual void setMultiLinesEnabled(bool b);
    /// @}

    /// @name Drag and drop
    /// @{

    /// Whether moving the mouse on the item starts a drag. False at first.
    bool dragEnabled() const { return (flags_ & DragEnabled) != 0; }
    /// Sets whether moving the mouse on the item starts a drag.
    virtual void setDragEnabled(bool allow);
    /// Whether things can be dropped on the item. False at first.
    bool dropEnabled() const { return (flags_ & DropEnabled) != 0; }
    /// Sets whether things can be dropped on the item.
    virtual void setDropEnabled(bool allow);
    /// Whether this can be dropped on the item, if drops can be at all: false here.
    virtual bool acceptDrop(const QMimeSource *mime) const;
    /// @}

    /// @name Renaming in place
    /// @{

    /// Whether the user may rename the item in a column. False at first.
    bool renameEnabled(int col) const;
    /// Sets whether the user may rename the item in a column from 0 to 9999.
    virtual void setRenameEnabled(int col, bool b);
    /// Opens an editor on the column's cell, if the user may rename it there.
    virtual void startRename(int col);
    /// @}

    /// @name Looks
    /// @{

    /// The height in pixels, without the children.
    int height() const { return height_; }
    /// The height in pixels with all that is shown below it; 0 for a hidden item.
    int totalHeight() const;
    /// The y of the item in the view's contents; 0 without a view.
    int itemPos() const;
    /// Called before the item's height is needed for the first time, and after changes of font and style. Here it
    /// calls widthChanged() and sets a height that holds the texts and pixmaps.
    virtual void setup();
    /// How wide a column must be for this item, without indentation: text, pixmap and margins.
    virtual int width(const QFontMetrics &fm, const Q3ListView *lv, int c) const;
    /// To be called when width() of a column, or with -1 of any, may be another. A column of Q3ListView::Maximum
    /// grows accordingly.
    void widthChanged(int c = -1) const;
    /// To be called when the total height may be another for reasons unknown to the view.
    virtual void invalidateHeight();
    /// Paints a cell: background, pixmap and text. The painter's (0, 0) is the cell's upper left, the cell is
    /// @a width by height() pixels, and all of it must be painted. @a column is the number of the column, wherever it
    /// is shown. The painter has the view's font.
    virtual void paintCell(QPainter *painter, const QColorGroup &cg, int column, int width, int align);
    /// Paints the branches to the children: a strip of @a w by @a h pixels at (0, 0), all of which must be painted.
    /// The children begin at y, which is not above 0.
    virtual void paintBranches(QPainter *p, const QColorGroup &cg, int w, int y, int h);
    /// Paints what shows that the item has the keyboard's focus.
    virtual void paintFocus(QPainter *p, const QColorGroup &cg, const QRect &r);
    /// Repaints the item soon if it is in sight.
    void repaint() const;
    /// @}

protected:
    /// Puts the children in the view's order if they are not.
    virtual void enforceSortOrder() const;
    /// Sets the height in pixels.
    virtual void setHeight(int height);
    /// The user pressed the mouse or Space on the item. Nothing here.
    virtual void activate();
    /// Within activate(): true if it was the mouse, with its position from the item's upper left in @a pos.
    bool activatedPos(QPoint &pos);
    /// The user has accepted a new text: sets it, ends the renaming and lets the view tell.
    virtual void okRename(int col);
    /// The user has given up renaming: ends it.
    virtual void cancelRename(int col);
    /// Something was dropped on the item. Nothing here.
    virtual void dropped(QDropEvent *e);
    /// A drag has come upon the item. Nothing here.
    virtual void dragEntered();
    /// A drag has left the item. Nothing here.
    virtual void dragLeft();

private:
    friend class Q3ListView;
    friend class Q3ListViewAccess;
    friend class Q3ListViewItemAccessible;
    friend class Q3ListViewItemGuard;
    friend class Q3ListViewItemIterator;
    friend class Q3ListViewRows;
    friend class Q3ListViewTree;
    friend struct Q3ListViewPrivate;

    enum Flag : quint16 {
        Selected = 0x1,
        Opened = 0x2,
        Visible = 0x4,
        Enabled = 0x8,
        Selectable = 0x10,
        Expandable = 0x20,
        DragEnabled = 0x40,
        DropEnabled = 0x80,
        MultiLines = 0x100,
        SetUp = 0x200,   ///< setup() was called.
        Pending = 0x400, ///< The view has it in its list of items to be measured.
        Dying = 0x800,   ///< Its destructor runs.
        /// It is in its parent's list of children that may have to move.
        Misplaced = 0x1000
    };

    struct RootTag {};
    Q3ListViewItem(RootTag, Q3ListView *view);
    void construct(Q3ListViewItem *parent, Q3ListViewItem *after);
    void setLabels(const QString &label1, const QString &label2, const QString &label3, const QString &label4,
                   const QString &label5, const QString &label6, const QString &label7, const QString &label8);
    void setFlag(Flag flag, bool on);
    bool isRoot() const;
    bool isShown() const;
    bool canBeOpened() const { return childCount() > 0 || isExpandable(); }
    bool isInside(const Q3ListViewItem *ancestor) const;
    Q3ListViewItemExtra *extra();
    void contentChanged(int column);

    Q3ListViewItem *parent_ = nullptr; ///< Of a top-level item, the view's hidden root.
    Q3ListViewItem *previous_ = nullptr;
    Q3ListViewItem *next_ = nullptr;
    std::unique_ptr<Q3ListViewChildren> children_;
    std::unique_ptr<QString[]> texts_;
    std::unique_ptr<Q3ListViewItemExtra> extra_; ///< What few items have.
    // The place in a search tree over the siblings, by which a row is found in logarithmic time.
    Q3ListViewItem *tree_up_ = nullptr;
    Q3ListViewItem *tree_left_ = nullptr;
    Q3ListViewItem *tree_right_ = nullptr;
    int tree_sum_ = 0; ///< The total heights of all items below it in that tree, its own included.
    int total_ = 0;    ///< The total height that the tree reckons with.
    int height_ = 0;
    quint16 text_count_ = 0;
    quint16 flags_ = Visible | Enabled | Selectable;
};

#endif
