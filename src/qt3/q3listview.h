// SPDX-License-Identifier: MIT
#ifndef QT3_Q3LISTVIEW_H
#define QT3_Q3LISTVIEW_H

#include "qt3/q3listviewitem.h"
#include "qt3/q3listviewitemiterator.h"
#include "qt3/q3scrollview.h"

#include <QIcon>

#include <memory>

class Q3DragObject;
class Q3Header;
struct Q3ListViewPrivate;

/// A list, or a tree, of rows with columns: it shows, selects, sorts, renames and drags Q3ListViewItem objects.
///
/// @code
/// auto *list = new Q3ListView(window);
/// list->addColumn(tr("Ink"));
/// list->addColumn(tr("Density"), 80);
/// list->setSorting(-1);
/// Q3ListViewItem *last = nullptr;
/// for (const Ink &ink : inks)
///     last = new Q3ListViewItem(list, last, ink.name, QString::number(ink.density));
/// connect(list, SIGNAL(selectionChanged()), SLOT(adjustButtons()));
/// @endcode
///
/// **Selection and current item.** The current item has the keyboard's focus; one or many others may be selected,
/// according to selectionMode().
///
/// **Keys.** Up, Down, Page Up, Page Down, Home and End go to another row. Left closes the current item or goes to
/// its parent, Right opens it or goes to its first child, and where there is nothing of the kind they scroll; the two
/// change roles where the layout runs from right to left. Plus and minus open and close. Shift with a key extends the
/// selection and Ctrl leaves it alone in Extended mode. Space selects or toggles, F2 renames. Letters find the first
/// row that begins with them, in the column that is sorted by or else in column 0; after
/// QApplication::keyboardInputInterval() they begin anew.
///
/// **Drags.** Where drops are accepted, a closed item that the user could open opens by itself when a drag stays on
/// it for three quarters of a second.
///
/// **Ownership.** Items belong to the view. They may be deleted at any time, the view's signals and the virtual
/// operations of items that these lead to included; so may all others, by clear(), and the view itself in slots of
/// its signals, though deleteLater() is the better way for that.
///
/// **Cost.** Only rows in sight are painted. itemAt(), itemPos(), itemRect() and ensureItemVisible() are O(depth log
/// n) for n items, after changes O(n) once. It is made for 100,000 items and more.
class TAVIQT3_EXPORT Q3ListView : public Q3ScrollView
{
    Q_OBJECT
    /// The number of columns.
    Q_PROPERTY(int columns READ columns)
    /// Whether several items can be selected.
    Q_PROPERTY(bool multiSelection READ isMultiSelection WRITE setMultiSelection DESIGNABLE false)
    /// What the user can select.
    Q_PROPERTY(SelectionMode selectionMode READ selectionMode WRITE setSelectionMode)
    /// The number of top-level items.
    Q_PROPERTY(int childCount READ childCount)
    /// Whether focus and selection show in all columns.
    Q_PROPERTY(bool allColumnsShowFocus READ allColumnsShowFocus WRITE setAllColumnsShowFocus)
    /// Whether the heading of the sorted column has an arrow.
    Q_PROPERTY(bool showSortIndicator READ showSortIndicator WRITE setShowSortIndicator)
    /// The pixels around what an item shows.
    Q_PROPERTY(int itemMargin READ itemMargin WRITE setItemMargin)
    /// Whether top-level items can be opened by the user.
    Q_PROPERTY(bool rootIsDecorated READ rootIsDecorated WRITE setRootIsDecorated)
    /// Whether texts that are cut off are told as tool tips.
    Q_PROPERTY(bool showToolTips READ showToolTips WRITE setShowToolTips)
    /// Which columns take up the room there is.
    Q_PROPERTY(ResizeMode resizeMode READ resizeMode WRITE setResizeMode)
    /// The pixels by which children are indented.
    Q_PROPERTY(int treeStepSize READ treeStepSize WRITE setTreeStepSize)
    /// What becomes of a renaming when the editor loses the focus.
    Q_PROPERTY(RenameAction defaultRenameAction READ defaultRenameAction WRITE setDefaultRenameAction)

public:
    /// How a column's width changes.
    enum WidthMode {
        Manual, ///< Not by itself.
        Maximum ///< It grows with the widest item, and never shrinks by itself.
    };
    Q_ENUM(WidthMode)
    /// What the user can select.
    enum SelectionMode {
        Single,   ///< One item; another one takes its place. The default.
        Multi,    ///< Any number; a click toggles.
        Extended, ///< Any number; a click selects one alone, Ctrl toggles, Shift selects from the anchor to the item.
        NoSelection ///< None.
    };
    Q_ENUM(SelectionMode)
    /// Which columns take up the room there is.
    enum ResizeMode {
        NoColumn,   ///< None; the default.
        AllColumns, ///< All in equal parts.
        LastColumn  ///< The last one.
    };
    Q_ENUM(ResizeMode)
    /// What becomes of a renaming when the editor loses the focus.
    enum RenameAction {
        Accept, ///< The new text is taken.
        Reject  ///< The old text stays; the default.
    };
    Q_ENUM(RenameAction)
    /// How findItem() compares. The values may be combined.
    enum StringComparisonMode {
        CaseSensitive = 0x01, ///< Capital and small letters differ.
        BeginsWith = 0x02,    ///< The item's text begins with the one searched.
        EndsWith = 0x04,      ///< It ends with it.
        Contains = 0x08,      ///< It contains it.
        ExactMatch = 0x10     ///< It is the same.
    };
    /// Values of StringComparisonMode, combined.
    using ComparisonFlags = uint;

    /// An empty view without columns.
    explicit Q3ListView(QWidget *parent = nullptr, const char *name = nullptr, Qt::WindowFlags f = Qt::WindowFlags());
    /// Deletes all items.
    ~Q3ListView() override;

    /// @name Columns
    /// They are numbered in the order of addColumn(); the user may show them in another one. Nothing happens without
    /// a column of the number given.
    /// @{

    /// The header. Its clicking, resizing and moving may be turned off and it may be hidden; all else is the view's.
    Q3Header *header() const;
    /// Adds a column behind the others and returns its number. With a negative width it has the mode Maximum.
    virtual int addColumn(const QString &label, int width = -1);
    /// The same with an icon before the heading.
    virtual int addColumn(const QIcon &icon, const QString &label, int width = -1);
    /// Removes a column; the items keep their texts, of which those behind are not moved.
    virtual void removeColumn(int index);
    /// Sets the heading.
    virtual void setColumnText(int column, const QString &label);
    /// Sets icon and heading.
    virtual void setColumnText(int column, const QIcon &icon, const QString &label);
    /// The heading.
    QString columnText(int c) const;
    /// Sets the width in pixels.
    virtual void setColumnWidth(int column, int w);
    /// The width in pixels.
    int columnWidth(int c) const;
    /// Sets how the width changes.
    virtual void setColumnWidthMode(int c, WidthMode mode);
    /// How the width changes.
    WidthMode columnWidthMode(int c) const;
    /// Hides a column: its width becomes 0.
    void hideColumn(int column) { setColumnWidth(column, 0); }
    /// Sets the alignment that paintCell() gets, of Qt::Alignment.
    virtual void setColumnAlignment(int column, int align);
    /// The alignment; Qt::AlignLeft at first, which means the side where reading begins.
    int columnAlignment(int column) const;
    /// The number of columns.
    int columns() const;
    /// Which columns take up the room there is.
    ResizeMode resizeMode() const;
    /// Sets it, for the columns there are and those that come.
    virtual void setResizeMode(ResizeMode m);
    /// @}

    /// @name Items
    /// @{

    /// Takes in an item without a parent as the first top-level item.
    virtual void insertItem(Q3ListViewItem *i);
    /// Lets a top-level item go without deleting it, as Q3ListViewItem::takeItem() does.
    virtual void takeItem(Q3ListViewItem *i);
    /// The same as takeItem().
    virtual void removeItem(Q3ListViewItem *item) { takeItem(item); }
    /// The first top-level item in order, or null.
    Q3ListViewItem *firstChild() const;
    /// The last item of the whole tree, shown or not, or null.
    Q3ListViewItem *lastItem() const;
    /// The number of top-level items.
    int childCount() const;
    /// The item on the row at a point of viewport(), be it on its indentation; null below the last row, and beside
    /// the columns.
    Q3ListViewItem *itemAt(const QPoint &viewPos) const;
    /// The rectangle of an item in viewport(), without its children; invalid if it is not in sight.
    QRect itemRect(const Q3ListViewItem *item) const;
    /// The y of an item in the contents.
    int itemPos(const Q3ListViewItem *item);
    /// Scrolls until the item is in sight, and opens its parents.
    void ensureItemVisible(const Q3ListViewItem *i);
    /// Repaints an item soon if it is in sight.
    void repaintItem(const Q3ListViewItem *item) const;
    /// The first item, shown or not, whose text in @a column matches. Of several comparisons in @a compare the first
    /// that matches any item counts, in the order ExactMatch, BeginsWith, EndsWith, Contains. Null if there is none.
    /// O(n).
    Q3ListViewItem *findItem(const QString &text, int column,
                             ComparisonFlags compare = ExactMatch | static_cast<uint>(Qt::CaseSensitive)) const;
    /// Opens an item that can be opened, or closes it.
    virtual void setOpen(Q3ListViewItem *item, bool open);
    /// The same as item->isOpen().
    bool isOpen(const Q3ListViewItem *item) const;
    /// @}

    /// @name Selection and current item
    /// @{

    /// What the user can select.
    SelectionMode selectionMode() const;
    /// Sets what the user can select. What is selected stays so.
    void setSelectionMode(SelectionMode mode);
    /// Whether the mode is Multi or Extended.
    bool isMultiSelection() const;
    /// Sets the mode Multi, unless it is Extended already, or Single.
    virtual void setMultiSelection(bool enable);
    /// Unselects all.
    virtual void clearSelection();
    /// Selects or unselects an item. In Single mode the one selected before is unselected and @a item is current.
    virtual void setSelected(Q3ListViewItem *item, bool selected);
    /// Sets where a selection with Shift begins, if the item is selectable.
    void setSelectionAnchor(Q3ListViewItem *item);
    /// Whether an item is selected.
    bool isSelected(const Q3ListViewItem *i) const;
    /// The selected item in Single mode; null in all others, or if there is none.
    Q3ListViewItem *selectedItem() const;
    /// Makes an item current.
    virtual void setCurrentItem(Q3ListViewItem *i);
    /// The current item, or null.
    Q3ListViewItem *currentItem() const;
    /// @}

    /// @name Looks
    /// @{

    /// Whether focus and selection show in all columns.
    bool allColumnsShowFocus() const;
    /// Sets it. False at first: they show in column 0.
    virtual void setAllColumnsShowFocus(bool enable);
    /// The pixels around what an item shows.
    int itemMargin() const;
    /// Sets the margin; 1 at first.
    virtual void setItemMargin(int margin);
    /// Whether top-level items can be opened by the user.
    bool rootIsDecorated() const;
    /// Sets it; false at first.
    virtual void setRootIsDecorated(bool enable);
    /// The pixels by which children are indented.
    int treeStepSize() const;
    /// Sets the indentation; 20 at first.
    virtual void setTreeStepSize(int size);
    /// Whether the heading of the sorted column has an arrow.
    bool showSortIndicator() const;
    /// Sets it; false at first.
    virtual void setShowSortIndicator(bool show);
    /// Whether texts that are cut off are told as tool tips.
    bool showToolTips() const;
    /// Sets it; true at first.
    virtual void setShowToolTips(bool b);
    /// A size that shows the columns and a good number of rows.
    QSize sizeHint() const override;
    /// Room for the header and a row or two.
    QSize minimumSizeHint() const override;
    /// @}

    /// @name Sorting
    /// @{

    /// Sorts by a column from now on. -1 turns sorting off, also by clicks on the header. With a column that is not
    /// there nothing is sorted until the user clicks one. The view is sorted by column 0, ascending, at first.
    virtual void setSorting(int column, bool ascending = true);
    /// The column that is sorted by, -1 if sorting is off.
    int sortColumn() const;
    /// Sets the column and leaves the order.
    void setSortColumn(int column);
    /// The order that is sorted in.
    Qt::SortOrder sortOrder() const;
    /// Sets the order and leaves the column.
    void setSortOrder(Qt::SortOrder order);
    /// Sorts anew what may be out of order because items have changed.
    virtual void sort();
    /// @}

    /// What becomes of a renaming when the editor loses the focus.
    RenameAction defaultRenameAction() const;
    /// Sets it; Reject at first.
    virtual void setDefaultRenameAction(RenameAction a);
    /// Whether an item is being renamed.
    bool isRenaming() const;

    /// Watches over the editor of a renaming.
    bool eventFilter(QObject *o, QEvent *e) override;
    /// Where the current item is, for an input method.
    QVariant inputMethodQuery(Qt::InputMethodQuery query) const override;

public Q_SLOTS:
    /// Deletes all items.
    virtual void clear();
    /// Selects the unselected items that may be and unselects the others, in Multi and Extended mode.
    virtual void invertSelection();
    /// Selects or unselects all items; in Single and NoSelection mode only the current one.
    virtual void selectAll(bool select);
    /// Brings sizes and what is seen up to date soon, once for any number of calls.
    void triggerUpdate();
    /// Scrolls so that (x, y) is in the upper left corner.
    void setContentsPos(int x, int y) override;
    /// Gives a column the width that heading and items want.
    void adjustColumn(int col);

Q_SIGNALS:
    /// The set of selected items has changed.
    void selectionChanged();
    /// Another item is selected, in Single mode; null if none is.
    void selectionChanged(Q3ListViewItem *item);
    /// Another item is current; null if none is.
    void currentChanged(Q3ListViewItem *item);
    /// The mouse was clicked; the item, or null beside all.
    void clicked(Q3ListViewItem *item);
    /// The same, with the point on the screen and the column, -1 without an item.
    void clicked(Q3ListViewItem *item, const QPoint &pnt, int c);
    /// A mouse button was pressed; the item, or null beside all.
    void pressed(Q3ListViewItem *item);
    /// The same, with the point on the screen and the column, -1 without an item.
    void pressed(Q3ListViewItem *item, const QPoint &pnt, int c);
    /// An item was double-clicked: with the second press.
    void doubleClicked(Q3ListViewItem *item);
    /// There was a double-click; null and -1 beside all items.
    void doubleClicked(Q3ListViewItem *item, const QPoint &point, int column);
    /// Return or Enter was pressed with a current item.
    void returnPressed(Q3ListViewItem *item);
    /// Space was pressed with a current item.
    void spacePressed(Q3ListViewItem *item);
    /// The right button was clicked; null and -1 beside all items.
    void rightButtonClicked(Q3ListViewItem *item, const QPoint &point, int column);
    /// The right button was pressed; null and -1 beside all items.
    void rightButtonPressed(Q3ListViewItem *item, const QPoint &point, int column);
    /// A button, of Qt::MouseButton, was pressed; null and -1 beside all items.
    void mouseButtonPressed(int button, Q3ListViewItem *item, const QPoint &pos, int c);
    /// A button, of Qt::MouseButton, was clicked; null and -1 beside all items.
    void mouseButtonClicked(int button, Q3ListViewItem *item, const QPoint &pos, int c);
    /// A context menu is wanted at a point of the screen: by the mouse on the item there, or by a key, then with the
    /// current item and -1. Null and -1 beside all items.
    void contextMenuRequested(Q3ListViewItem *item, const QPoint &pos, int col);
    /// The mouse has come upon an item.
    void onItem(Q3ListViewItem *i);
    /// The mouse has left all items.
    void onViewport();
    /// An item was opened.
    void expanded(Q3ListViewItem *item);
    /// An item was closed.
    void collapsed(Q3ListViewItem *item);
    /// Something was dropped beside all items.
    void dropped(QDropEvent *e);
    /// An item was renamed in place.
    void itemRenamed(Q3ListViewItem *item, int col, const QString &text);
    /// The same without the text.
    void itemRenamed(Q3ListViewItem *item, int col);

protected:
    /// @name For derived classes
    /// @{

    /// What is dragged when the mouse moves an item whose dragging is enabled: null, here, for nothing.
    virtual Q3DragObject *dragObject();
    /// Starts a drag of dragObject().
    virtual void startDrag();
    /// Paints a rectangle in which there are no items, in the painter's coordinates.
    virtual void paintEmptyArea(QPainter *p, const QRect &rect);
    /// Paints the rows in a rectangle of the contents.
    void drawContentsOffset(QPainter *p, int ox, int oy, int cx, int cy, int cw, int ch) override;
    /// @}

    /// Selects, opens, begins to drag.
    void contentsMousePressEvent(QMouseEvent *e) override;
    /// Clicks.
    void contentsMouseReleaseEvent(QMouseEvent *e) override;
    /// Double-clicks, opens and closes.
    void contentsMouseDoubleClickEvent(QMouseEvent *e) override;
    /// Selects further, and starts drags.
    void contentsMouseMoveEvent(QMouseEvent *e) override;
    /// Lets items look at a drag.
    void contentsDragEnterEvent(QDragEnterEvent *e) override;
    /// Lets items look at a drag.
    void contentsDragMoveEvent(QDragMoveEvent *e) override;
    /// Lets an item know that a drag has gone.
    void contentsDragLeaveEvent(QDragLeaveEvent *e) override;
    /// Hands a drop to an item, or tells of it.
    void contentsDropEvent(QDropEvent *e) override;
    /// Tells of a wanted context menu.
    void contentsContextMenuEvent(QContextMenuEvent *e) override;
    /// The keys that the class tells of.
    void keyPressEvent(QKeyEvent *e) override;
    /// Makes an item current if none is.
    void focusInEvent(QFocusEvent *e) override;
    /// Shows the selection as one without the focus.
    void focusOutEvent(QFocusEvent *e) override;
    /// Tab leaves the view.
    bool focusNextPrevChild(bool next) override;
    /// Keeps header and columns in order.
    void resizeEvent(QResizeEvent *e) override;
    /// The header, and the editor of a renaming, move along.
    void contentsMoved() override;
    /// Tool tips, and where the mouse is.
    bool viewportEvent(QEvent *e) override;
    /// Brings all up to date.
    void showEvent(QShowEvent *e) override;
    /// Fonts, styles and palettes change the items.
    void changeEvent(QEvent *ev) override;
    /// Timers of updates, of scrolling, of renaming and of drags.
    void timerEvent(QTimerEvent *e) override;

protected Q_SLOTS:
    /// Brings sizes and what is seen up to date at once. Call triggerUpdate().
    void updateContents();
    /// Scrolls while the mouse selects outside.
    void doAutoScroll();

private Q_SLOTS:
    void changeSortColumn(int section);
    void columnResized(int section, int before, int size);
    void columnMoved();

private:
    friend class Q3ListViewItem;
    friend class Q3ListViewItemAccessible;
    friend class Q3ListViewRows;
    friend struct Q3ListViewPrivate;

    std::unique_ptr<Q3ListViewPrivate> d;
};

#endif
