// SPDX-License-Identifier: MIT
#ifndef LISTVIEWS_TAVILISTVIEW_H
#define LISTVIEWS_TAVILISTVIEW_H

#include "foundation/taviwidgets_export.h"
#include "listviews/tavilistviewbuddies.h"
#include "qt3/q3listview.h"

#include <QElapsedTimer>
#include <QIcon>
#include <QList>
#include <QPointer>
#include <QString>

#include <list>
#include <string>

class KeywordMatcher;
class QAction;
class QDialog;
class QStackedWidget;
class QStatusBar;
class Q3WidgetStack;
class TaviConfigOrder;
class TaviRegistry;

/// @file
/// The classic list: a Q3ListView with what the lists of a production application share.

/// A thing whose showing and order the user may edit in a list: its name, its picture, and whether it shows.
///
/// **Threads.** The user interface thread alone, because of the pixmap.
class TAVIWIDGETS_EXPORT TaviConfigOrderItem
{
public:
    /// A thing that shows.
    TaviConfigOrderItem();
    virtual ~TaviConfigOrderItem();

    /// Whether the thing shows; true at first.
    virtual bool isItemVisible() const;
    /// Sets whether the thing shows.
    virtual void setItemVisible(bool visible);
    /// The name; empty here.
    virtual QString itemText() const;
    /// The picture; null here.
    virtual QPixmap itemPixmap() const;

    /// Whether the thing is in the list of what shows, while the user edits that; false at first. It is what
    /// isItemVisible() becomes if he accepts.
    bool isItemInShowList() const { return in_show_list; }
    /// Sets whether it is in that list.
    void setItemInShowList(bool in_list) { in_show_list = in_list; }

private:
    bool visible = true;
    bool in_show_list = false;
};

/// A column of a TaviListView, shown or not.
///
/// The fields are plain values. Changing them changes no view: use the view's operations, or call
/// TaviListView::rebuildHeaders() afterwards.
class TAVIWIDGETS_EXPORT ColumnItem : public TaviConfigOrderItem
{
public:
    /// A column without a name that shows, left aligned, of a width that follows the contents.
    ColumnItem();
    ~ColumnItem() override;

    /// The title.
    QString itemText() const override;
    /// The icon at 16 by 16; null without one.
    QPixmap itemPixmap() const override;

    QString title;                 ///< The heading.
    int id = -1;                   ///< Its number in its view, from 0 upward, whatever its place.
    int width = -1;                ///< Pixels, or -1: as wide as the contents.
    int alignment = Qt::AlignLeft; ///< As Q3ListView::setColumnAlignment() takes it.
    Q3ListView::WidthMode width_mode = Q3ListView::Maximum; ///< How the width changes.
    QIcon icon;                                             ///< Before the heading; null for none.
};

/// The classic list view: its columns are the user's, it is searched and filtered as one types, and its status line
/// tells how many items there are.
///
/// @code
/// auto *list = new TaviListView(true, this);
/// list->setWantStatusBar(true);
/// list->addColumn(tr("Patch"));
/// const int notes = list->addColumnItem(tr("Notes"), 200, false); // hidden until the user wants it
/// layout->addWidget(list->getListWidget());                       // the list above its status line
/// list->restoreHeaderState(registry, section);
/// @endcode
///
/// **Columns.** With the header menu on, the view keeps a ColumnItem for each column, shown or not. The context menu
/// of the header shows and hides them, a drag of a heading orders them, and saveHeaderState() keeps all that. The
/// base class knows the columns that show, and only these; its numbers ("sections") change whenever one is hidden,
/// and go from 0 in the order of display after that. A column keeps its *id*, which addColumnItem() returns. With the
/// header menu off, columns are those of Q3ListView.
///
/// Texts of items belong to section numbers, not to ids: when columns are hidden or moved in a view whose items have
/// fixed texts, the texts stay where they are. Items of such a view override text() and ask columnItemID() which
/// column they are asked for. A filter asks for as many sections as there are columns, shown or not; what an item
/// answers for those beyond columns() is searched as the texts of the hidden ones.
///
/// **Filtering.** A keyword hides the items that have it in none of their columns, and neither has anything below
/// them; the rest is opened so that all hits show. Shift+"?" opens a search window over the list, Escape closes it
/// and all is as before. Line edits of the application filter through filterBuddy(). The filter can be inverted.
///
/// **Keyboard.** Letters search for a text, letter by letter as long as no more than 400 ms lie between two of them,
/// first in the column that is sorted by. Right and Left open and close all selected top-level items. All else is as
/// in Q3ListView.
///
/// **Ownership.** Items and column items belong to the view. The view belongs to getListWidget() once that was called
/// with a status line wanted. Actions belong to the caller.
///
/// **Re-entry.** A slot of any signal here may delete items, clear the view or destroy it. Where a signal comes of
/// what is typed in a line edit, the line edit, and with its search window the view, want deleteLater().
///
/// **Cost.** What walks over items says so. Inserting an item costs what it costs in Q3ListView.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT TaviListView : public Q3ListView
{
    Q_OBJECT

public:
    /// An empty view. With @a header_menu, columns are managed; see setHeaderMenuEnabled().
    explicit TaviListView(bool header_menu, QWidget *parent = nullptr, const char *name = nullptr,
                          Qt::WindowFlags flags = Qt::WindowFlags());
    /// Deletes items, column items, and the search window if that is this view's.
    ~TaviListView() override;

    /// @name Status line
    /// @{

    /// Sets whether getListWidget() makes a status line; off at first. To be called before that.
    virtual void setWantStatusBar(bool want);
    /// Whether a status line is wanted.
    virtual bool wantStatusBar();
    /// What the status line says: "2 of 5 items", or "5 items" without a selection, in the digits and groups of the
    /// default locale. It counts rows, those of open branches included. O(rows).
    virtual QString getStatusString();
    /// The status line; null if none is wanted or getListWidget() has not been called.
    QStatusBar *getStatusBar() const;
    /// What goes into a layout: the view above its status line, in a container that the first call makes; the view
    /// alone if no status line is wanted. The container's parent is the view's, and becomes the view.
    QWidget *getListWidget();
    /// @}

    /// @name Open branches
    /// What a filter keeps, and brings back when it ends. These and the next stand here because programs know virtual
    /// operations by their place.
    /// @{

    /// Appends the top-level items to @a items that have children, are open, visible and enabled. O(top-level items).
    virtual void saveOpenStates(std::list<Q3ListViewItem *> &items);
    /// Opens the top-level items that are in @a items and closes all others, but for those that have a selected
    /// child. Items in the list may have been deleted. O(top-level items and their children).
    virtual void restoreOpenStates(std::list<Q3ListViewItem *> &items);
    /// @}

protected:
    /// Before each painting. Nothing here. It must not change items.
    virtual void preDrawContents();
    /// After rebuildHeaders(). Nothing here.
    virtual void headersRebuilt();

public:
    /// @name Filtering
    /// @{

    /// Opens the search window in the middle of the view. There is one search window in a process: that of another
    /// view is closed, which ends filtering there, and deleted.
    virtual void showFilterFloater();
    /// Closes the search window, whichever view it belongs to. One that is merely hidden ends its filter, too.
    virtual void closeFilterFloater();
    /// Whether there is a keyword.
    bool isFilteringItems() const { return !filter_keyword.isEmpty(); }
    /// Sets whether items are shown that do *not* have the keyword; filters anew if there is one. An empty keyword
    /// shows all items either way.
    void setFilterInverted(bool inverted);
    /// Filters by a keyword, inverted as setFilterInverted() says. Returns the keyword before.
    QString setFilterKeyword(const QString &keyword);
    /// Filters one item, and what is below it, by the keyword of its view.
    /// @return whether it is shown; false for null and for an item of a view of another class
    ///
    /// To be called for an item that came, or whose texts changed, while there is a keyword.
    static bool filterThisItem(Q3ListViewItem *item);
    /// The line edits that filter this view.
    TaviListViewFilterBuddy *filterBuddy() { return &filter_buddy; }
    /// The search window of the process; null if there is none.
    static FilterFloater *filterFloater() { return filter_floater; }
    /// @}

    /// @name Columns
    /// With the header menu off these are the operations of Q3ListView. With it on they keep the column items as
    /// well; numbers out of range are passed on.
    /// @{

    /// Adds a column that shows, as addColumnItem() does.
    int addColumn(const QString &label, int width = -1) override;
    /// The same with an icon before the heading.
    int addColumn(const QIcon &icon, const QString &label, int width = -1) override;
    /// Hides a column: with the header menu on, the user can show it again.
    void removeColumn(int index) override;
    /// Sets the heading.
    void setColumnText(int column, const QString &label) override;
    /// Sets icon and heading.
    void setColumnText(int column, const QIcon &icon, const QString &label) override;
    /// Sets the width in pixels. Negative: the column item is as wide as the contents from the next
    /// rebuildHeaders() on.
    void setColumnWidth(int column, int w) override;
    /// Sets how the width changes.
    void setColumnWidthMode(int c, WidthMode mode) override;
    /// Sets the alignment.
    void setColumnAlignment(int column, int align) override;
    /// Sorts by a section.
    void setSorting(int column, bool ascending = true) override;
    /// @}

    /// @name Column items
    /// @{

    /// Whether columns are managed.
    bool headerMenuEnabled() const { return header_menu_enabled; }
    /// Turns the management of columns on or off. On: a ColumnItem is made for each column there is, with the number
    /// of the section as its id and at its place of display. Off: the column items are deleted, and what shows stays.
    void setHeaderMenuEnabled(bool enabled);
    /// Adds a column and returns its id; with the header menu off, a column of Q3ListView and its number. With a
    /// negative @a width it is as wide as the contents.
    int addColumnItem(const QString &text, int width, bool visible);
    /// The same with an icon before the heading.
    int addColumnItem(const QIcon &icon, const QString &text, int width, bool visible);
    /// The id of the column at a section; -1 if there is none.
    int columnItemID(int section) const;
    /// The section of the column with this id; -1 if it is hidden or unknown.
    int columnItemSection(int id) const;
    /// Whether the column with this id shows; false if it is unknown.
    bool itemVisible(int id) const;
    /// Shows or hides the column with this id; nothing if it is unknown.
    void setItemVisible(int id, bool visible);
    /// The place among all columns, shown or not, of the one that is the @a visible_index-th shown. A value equal to
    /// the number of columns is returned as it is; -1 if there is none.
    int mapToColumnItemIndex(int visible_index) const;
    /// The column at a section; null if there is none.
    ColumnItem *columnItemAtSection(int section) const;
    /// The column that is the @a visible_index-th shown; null if there is none.
    ColumnItem *columnItemAtIndex(int visible_index) const;
    /// All columns in order of display, hidden ones included. They belong to the view.
    const QList<ColumnItem *> &columnItems() const { return column_items; }
    /// Stores a width for the column that is the @a visible_index-th shown.
    void resizeColumnItem(int visible_index, int width);
    /// Makes the columns of the view anew from the column items. Items keep their places, their selection and the
    /// position of the view; if there was a current top-level item, the last top-level item is current now. Emits
    /// currentChanged() and selectionChanged(), and calls headersRebuilt(). O(items). Nothing with the header menu
    /// off.
    void rebuildHeaders();
    /// Replaces @a section by the state of the columns: order, visibility, widths, and what is sorted by. Nothing
    /// with the header menu off.
    ///
    /// Key "column_000" and so on, in order of creation: place or -1, visible as 1 or 0, and width or -1. Key
    /// "sorting", if the view is sorted: place of the header that is sorted by, and 0 for ascending or 1.
    void saveHeaderState(TaviRegistry &registry, std::string &section);
    /// Applies a state of saveHeaderState(). Nothing with the header menu off, or if @a section is empty.
    ///
    /// What can't be read is passed over. Columns without a place, or whose place is another's, come last and are
    /// otherwise as they are. No width is above 32,767. A view that isn't sorted stays so.
    void restoreHeaderState(TaviRegistry &registry, std::string &section);
    /// @}

    /// @name In place of a list that a form made
    /// Takes the place of @a old: its what's-this text, resize mode, tool tips, selection mode, focus columns and
    /// rename action, and with @a copy_columns its headings. Deletes it, adds getListWidget() to @a stack and shows
    /// it there. Nothing if @a old or @a stack is null.
    /// @{

    /// In a stack of the older kind.
    void hotSwap(Q3ListView *old, Q3WidgetStack *stack, bool copy_columns);
    /// In a stack of Qt's own.
    void hotSwap(Q3ListView *old, QStackedWidget *stack, bool copy_columns);
    /// @}

    /// @name Actions of the application in the menu of the header
    /// They belong to the caller, who may delete them. Null is ignored.
    /// @{

    /// Appends an action.
    void appendAction(QAction *action);
    /// Removes the first entry of an action.
    void removeAction(QAction *action);
    /// Removes all.
    void removeAllActions();
    /// @}

    /// @name Rows and selection
    /// They go over rows, those of open branches included: O(rows), if nothing else is said.
    /// @{

    /// The first selected row, or null.
    Q3ListViewItem *firstSelectedChild() const;
    /// The number of selected rows; @a first, if given, gets the first of them or null.
    int selectedChildCount(Q3ListViewItem **first = nullptr) const;
    /// The number of visible rows; @a first, if given, gets the first that is selected or null.
    int visibleChildCount(Q3ListViewItem **first = nullptr) const;
    /// The number of selected direct children of @a item; @a first, if given, gets the first of them or null.
    /// O(children).
    int selectedItemChildCount(const Q3ListViewItem *item, Q3ListViewItem **first = nullptr) const;
    /// The last visible row, or null. O(depth).
    Q3ListViewItem *lastVisibleItem() const;
    /// Makes the first selected row current, and with @a ensure_visible scrolls to it. Nothing without a selection.
    void setFirstSelectedAsCurrent(bool ensure_visible);
    /// Opens or closes all selected top-level items that have children, or show themselves as if they had.
    /// O(top-level items).
    void setSelectedOpen(bool open);
    /// @}

    /// @name Renaming
    /// @{

    /// Opens the dialog that finds and renames in the column with the id @a column_id, TaviListViewRenameDLG; its
    /// settings lie in @a section of @a registry, which must outlive it. One that is still open goes at once, and its
    /// settings are not kept. From a window that is modal the dialog is modal, too, and this returns when it is
    /// closed. The dialog goes with the view.
    void renameItems(int column_id, TaviRegistry &registry, std::string &section);
    /// Emits itemsRenamed(int).
    void fireItemsRenamed(int modified_count);
    /// @}

public Q_SLOTS:
    /// Prints the columns to standard output.
    void debugColumnItems();
    /// Shows the items that have @a keyword in any column, hidden columns included and without regard to case, the
    /// items above these and, while the keyword is not empty, opens them. All others are hidden and disabled; what is
    /// shown is enabled, whatever it was before. With @a invert, which is stored, those without the keyword count as
    /// having it. At the end the first selected row is scrolled to. O(items).
    ///
    /// The first keyword notes which items are open, and an empty one opens these again.
    virtual void filterItems(QString keyword, bool invert);
    /// Applies keyword and flag anew.
    virtual void filterItems();
    /// Filters an item and what is below it by the stored keyword and the stored flag, and returns whether it is
    /// shown; false for an item of another view. @a invert and @a parent_is_hit are for callers of old and change
    /// nothing.
    bool filterItem(Q3ListViewItem *item, bool invert, bool parent_is_hit);
    /// The same.
    bool filterItem(Q3ListViewItem *item);
    /// Closes the rename dialog and deletes it later.
    void dismissRenameDialog();
    /// Shows getStatusString() in the status line for @a ms milliseconds; 0 for until it is replaced. O(rows);
    /// nothing without a status line.
    virtual void updateStatusBar(int ms);
    /// The same with 0.
    void updateStatusBar();
    /// Deletes all items, updates the status line and emits cleared().
    void clear() override;

Q_SIGNALS:
    /// A filter was applied to a list that has items.
    void filterApplied();
    /// For subclasses: the columns are as they were made at first.
    void defaultHeadersChanged();
    /// The rename dialog has changed texts: those of @a modified_count items.
    void itemsRenamed(int modified_count);
    /// For subclasses: items were renamed.
    void itemsRenamed();
    /// For subclasses: the list is about to be painted.
    void aboutToDrawContents();
    /// For subclasses: the list was sorted.
    void sorted();
    /// The list was cleared.
    void cleared();

protected Q_SLOTS:
    /// The search window was closed. Nothing here.
    virtual void filterFloaterClosed();

protected:
    /// Searches, filters, opens and closes; all other keys are those of Q3ListView.
    void keyPressEvent(QKeyEvent *event) override;
    /// On the header, runs its menu.
    void contextMenuEvent(QContextMenuEvent *event) override;
    /// Calls preDrawContents() first.
    void drawContentsOffset(QPainter *p, int ox, int oy, int cx, int cy, int cw, int ch) override;
    /// With Shift or Alt, scrolls sideways.
    void contentsWheelEvent(QWheelEvent *event) override;
    /// Keeps the colours of the selection when the application's palette changes.
    bool event(QEvent *event) override;

private Q_SLOTS:
    void changeHeaders(QAction *action);
    void changeHeaders(int mid);
    void indexChange(int section, int fromIndex, int toIndex);
    void sizeChange(int section, int oldSize, int newSize);
    void configureHeaders();

private:
    friend class FilterFloater;

    int filteredColumns() const;
    bool filterBranch(Q3ListViewItem *top, const KeywordMatcher &matcher, bool *branches);
    void openShownBranches(Q3ListViewItem *first, Q3ListViewItem *behind);
    ColumnItem *columnItem(int id) const;
    ColumnItem *managedColumn(int section) const;
    void moveColumnItem(int fromIndex, int toIndex);
    int newColumnItem(const QIcon &icon, const QString &text, int width, bool visible);
    bool takeOver(Q3ListView *old, bool copy_columns);
    QWidget *listWidget(QWidget *container_parent, const QString &container_name);
    bool takeFloaterOver();
    void searchAhead();

    static const char KEY_ITEM[];
    static const char KEY_SORTING[];
    static FilterFloater *filter_floater;

    std::list<Q3ListViewItem *> open_items; // when filtering began; some may be gone
    TaviListViewFilterBuddy filter_buddy;
    bool header_menu_enabled;
    bool sort_ascending = true;
    QList<ColumnItem *> column_items;       // in order of display; these are owned
    QList<ColumnItem *> fixed_column_items; // in order of creation
    QList<QPointer<QAction>> extra_actions;
    int next_column_id = 0;
    QString filter_keyword;
    bool filter_inverted = false;
    QPointer<QDialog> rename_dialog;
    QPointer<TaviConfigOrder> header_order; // while its dialog is open
    QElapsedTimer last_key_time;
    QString search_text; // in lower case
    QPointer<QStatusBar> status_bar;
    bool want_status_bar = false;
    QPointer<QWidget> list_widget;
};

#endif
