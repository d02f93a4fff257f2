// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVITREEVIEW_H
#define TREEVIEWS_TAVITREEVIEW_H

#include "foundation/taviwidgets_export.h"

#include <QElapsedTimer>
#include <QItemSelection>
#include <QItemSelectionModel>
#include <QList>
#include <QPersistentModelIndex>
#include <QPointer>
#include <QTreeView>
#include <QVariant>
#include <QVector>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

class QDialog;
class QLineEdit;
class QStatusBar;
class TaviRegistry;
class TaviTreeItem;
class TaviTreeModel;
class TaviTreeProxyModel;
class TaviTreeViewFilterFloater;

/// The library's data view: a tree of TaviTreeItem objects that is sorted, filtered as one types, and spoken to in
/// items.
///
/// The view shows a TaviTreeModel through a TaviTreeProxyModel of its own, with a TaviHeaderView and a
/// TaviTreeItemDelegate. Indexes of the view are those of the proxy; mapToSource() and mapFromSource() lead to those
/// of the model and back, and most callers need neither:
///
/// @code
/// auto *view = new TaviTreeView(this);
/// view->setModel(new TaviTreeModel({"Patch", "L", "a", "b"}, this));
/// layout->addWidget(view->widget()); // the view above its status line
/// ...
/// view->clearSelectItem(patch, true);
/// for (TaviTreeItem *item : view->selectedItems())
///     use(item);
/// @endcode
///
/// **Filtering.** A keyword hides rows, it does not take them out of the proxy: selections survive, and the status
/// line can tell the visible rows. Shift+"?" opens a small search window over the view, Escape closes it; between the
/// two the selection and the expansion of branches are remembered by the numbers of items, and both are restored at
/// the end, whatever rows came, went or were sorted meanwhile. A line edit of the application (addFilterLineEdit())
/// filters without such a beginning and end. While there is a keyword, the branches of visible rows are open, so that
/// hits in them show.
///
/// **Keyboard.** Letters search for a text, letter by letter as long as no more than 400 ms lie between two of them.
/// Right and Left open and close all selected rows. F2 edits, the Menu key asks for the context menu, Shift+"?" opens
/// the search window. All else is as in every item view.
///
/// **Ownership.** Proxy, header and delegate belong to the view, and the view belongs to widget(). The model belongs
/// to the caller; it may be destroyed first, and the view is then empty. Items belong to their model.
///
/// **Re-entry.** A slot of any signal here may remove rows, delete items, reset the model or destroy the view.
///
/// **Cost.** What names items costs a look-up for each of them, whatever the size of the tree. What goes over rows
/// says so.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT TaviTreeView : public QTreeView
{
    Q_OBJECT

public:
    /// Which drags may be dropped on the view, and what becomes of them; to be or-ed for setDNDFlags().
    enum DNDFlag : long {
        DND_FROM_SELF = 1,     ///< Drags from this view.
        DND_FROM_WIDGETS = 2,  ///< Drags from another widget of the application.
        DND_FROM_OUTSIDE = 4,  ///< Drags from another application.
        DND_MOVE_SELF = 8,     ///< A drag from this view is a move, whatever the user asks for.
        DND_MOVE_WIDGETS = 16, ///< So is one from another widget.
        DND_MOVE_OUTSIDE = 32, ///< So is one from another application.
    };

    /// A view without a model: rows of uniform height in alternating colours, single selection of rows, no sorting.
    explicit TaviTreeView(QWidget *parent = nullptr);
    /// Lets go of the search window if that is the view's own: it outlives the view.
    ~TaviTreeView() override;

    /// What goes into a layout: the view above its status line, in a container that is made by the first call; the
    /// view alone if the status line is disabled by then. The container's parent is the view's, and becomes the view.
    virtual QWidget *widget();
    /// Shows @a model; null shows nothing.
    virtual void setModel(TaviTreeModel *model);
    /// The same for callers that know the view as one of Qt's: whatever model they give stands behind the proxy. One
    /// that is not a TaviTreeModel is sorted and filtered, but has no items. The proxy itself changes nothing.
    void setModel(QAbstractItemModel *model) override;
    /// Shows nothing. A subclass that overrides one of these wants `using TaviTreeView::setModel;` for the others.
    void setModel(std::nullptr_t) { setModel(static_cast<TaviTreeModel *>(nullptr)); }
    /// The model that is shown; null if there is none or one of another class.
    virtual TaviTreeModel *sourceModel() const;
    /// Whether widget() makes a status line, and whether one that was made is shown; on at first.
    virtual void setStatusBarEnabled(bool enabled);
    /// Whether there is to be a status line.
    virtual bool isStatusBarEnabled();
    /// What the status line says: "2 of 5 items", or "5 items" without a selection. It counts visible rows of the top
    /// level, and selected rows of all levels, in the digits and groups of the default locale. O(rows of the top
    /// level); the line that follows a change by itself goes by a number that is kept.
    virtual QString statusString();
    /// Puts the value of @a role in @a column of each selected item into @a list, in the order of selectedRows().
    virtual void saveSelections(int column, int role, QList<QVariant> &list);
    /// Selects the rows whose value of @a role in the first column is in @a list, on all levels, hidden ones too, and
    /// nothing else. The first row of the last value that is found is scrolled to the middle. Before that, the
    /// branches that hold the first row of a value are opened. @a column is not looked at.
    ///
    /// Role TaviTreeItem::IdRole, the number of an item, costs a look-up for each value; any other role a walk over
    /// all rows.
    virtual void restoreSelections(int column, int role, QList<QVariant> &list);
    /// Stores the header's state in @a section, under getHeaderRegistryKey().
    virtual void saveHeaderState(TaviRegistry &registry, std::string &section);
    /// The same; nothing for null.
    virtual void saveHeaderState(TaviRegistry &registry, const char *section);
    /// Applies a header state of saveHeaderState(). The model must have its columns by then.
    ///
    /// Older forms are converted: a state under the bare key "header_state" is applied and moved, and settings of one
    /// key a column (TaviHeaderView::autoUpdateHeaderState()) become a state that is applied by the next restore.
    virtual void restoreHeaderState(TaviRegistry &registry, std::string &section);
    /// The same; nothing for null.
    virtual void restoreHeaderState(TaviRegistry &registry, const char *section);
    /// Opens or closes all selected rows; nothing if itemsExpandable() is off.
    virtual void setSelectedExpanded(bool expanded);
    /// Opens the search window over the view and starts filtering. There is one search window in a process: that of
    /// another view is closed, which ends filtering there, and deleted at once. If it stands over this view already,
    /// nothing happens.
    virtual void showFilterFloater();
    /// Closes the search window, whichever view it belongs to.
    virtual void closeFilterFloater();

protected Q_SLOTS:
    /// Remembers selection and expansion.
    virtual void startFiltering();
    /// Shows all rows and brings back the expansion; the selection, too, if nothing is selected.
    virtual void stopFiltering();

public Q_SLOTS:
    /// Shows statusString() in the status line for @a ms milliseconds, 0 for good. It runs by itself at every change
    /// of selection, current row and rows, and when a keyword has been applied.
    virtual void updateStatusBar(int ms = 0);
    /// Remembers which branches are open, of the rows that no keyword hides. O(rows).
    virtual void saveExpandStates();
    /// Opens and closes branches as they were when they were last remembered. Rows that are gone are passed over,
    /// rows that came since stay as they are. O(branches remembered).
    virtual void restoreExpandStates();

public:
    /// Whether the header offers its menu, TaviHeaderView::setMenuEnabled(). False with another header.
    void setHeaderMenuEnabled(bool enabled);
    /// Whether the header offers its menu.
    bool isHeaderMenuEnabled() const;

    /// The model's index of an index of the view.
    QModelIndex mapToSource(const QModelIndex &index) const;
    /// The view's index of an index of the model.
    QModelIndex mapFromSource(const QModelIndex &index) const;
    /// The proxy between model and view; never null.
    TaviTreeProxyModel *proxyModel() const { return proxy_model; }

    /// Sets the permissions for drags, a sum of DNDFlag values; 0 at first.
    void setDNDFlags(long flags) { dnd_flags = flags; }
    /// The permissions for drags.
    long dndFlags() const { return dnd_flags; }
    /// Lets the text of @a line_edit filter the view, and Ctrl+Shift+I in it invert the filter. Null is ignored.
    void addFilterLineEdit(QLineEdit *line_edit);
    /// The status line; null if there is none or it is disabled.
    QStatusBar *statusBar();
    /// The column that is sorted by, -1 if sorting is off.
    int sortColumn() const;
    /// Whether an editor is open.
    bool isEditing() const;
    /// Shows or hides a row until the next keyword, or the next change of the model, decides about it. The operation
    /// of the same name in the base class is not virtual: what it changes is noticed when the rows are laid out anew.
    void setRowHidden(int row, const QModelIndex &parent, bool hide);

    /// @name Selected rows
    /// Rows are given as indexes of the view. Of each selected row there is one entry; rows are in the order of their
    /// numbers, so that equal row numbers under different parents lie next to each other. A row whose cell in
    /// @a column is disabled or not selectable is left out. O(selected rows), sorted.
    /// @{

    /// The cells of the selected rows in @a column.
    QList<QModelIndex> selectedRows(int column = 0) const;
    /// The items of the selected rows.
    QList<TaviTreeItem *> selectedItems(int column = 0) const;
    /// The first of selectedRows(), or an invalid index. The argument is not looked at.
    QModelIndex firstSelectedIndex(const QModelIndex &parent = {}) const;
    /// The selected row if there is exactly one, else an invalid index. The argument is not looked at.
    QModelIndex selectedIndex(const QModelIndex &parent = {}) const;
    /// The item of the first selected row, or null.
    TaviTreeItem *firstSelectedItem() const;
    /// The item of the selected row if there is exactly one, else null.
    TaviTreeItem *selectedItem() const;
    /// @}

    /// @name All rows
    /// @{

    /// The rows below @a parent, depth first, collapsed branches included. A hidden row is left out with all that is
    /// below it. Only column 0 has children: for any other the result is the rows directly below @a parent. O(rows).
    QList<QModelIndex> allRows(int column = 0, const QModelIndex &parent = {}) const;
    /// The items of allRows().
    QList<TaviTreeItem *> allItems(int column = 0) const;
    /// How many rows directly below @a parent are not hidden. O(rows below @a parent).
    int visibleRowCount(const QModelIndex &parent = {}) const;
    /// @}

    /// @name Selecting items
    /// An item that is hidden, or whose parent is, or that is not in the model, is not found. The items must be
    /// alive. With @a ensure_visible the view scrolls to the last row that was found, in the order of rows.
    /// @{

    /// Adds an item to the selection.
    void selectItem(TaviTreeItem *item, bool ensure_visible = false);
    /// Selects an item in place of what is selected. If it is not found, the selection stays.
    void clearSelectItem(TaviTreeItem *item, bool ensure_visible = false);
    /// Adds items to the selection; one change of the selection in all.
    void selectItems(const QList<TaviTreeItem *> &items, bool ensure_visible = false);
    /// Selects items in place of what is selected: of a list that is not empty those that are found, if any.
    void clearSelectItems(const QList<TaviTreeItem *> &items, bool ensure_visible = false);
    /// Adds the row of the top level whose @a role in @a column equals @a value, if there is exactly one. Returns
    /// that cell or an invalid index. O(rows of the top level), as the other forms.
    QModelIndex selectItemWithProperty(int column, const QVariant &value, int role);
    /// The same in place of what is selected.
    QModelIndex clearSelectItemWithProperty(int column, const QVariant &value, int role);
    /// Adds all rows of the top level whose @a role in @a column equals @a value, and returns those cells.
    QList<QModelIndex> selectItemsWithProperty(int column, const QVariant &value, int role);
    /// The same in place of what is selected; without a hit the selection stays.
    QList<QModelIndex> clearSelectItemsWithProperty(int column, const QVariant &value, int role);
    /// @}

    /// @name Removing items
    /// The selection is cleared first. The model removes from its top level alone: what is below stays.
    /// @{

    /// Takes the selected items out (@a take: they are the caller's then, with null for one that was not on the top
    /// level), or deletes them; then the result only tells how many there were.
    QList<TaviTreeItem *> removeSelectedItems(bool take);
    /// The same with the given items. Without @a take the result is empty.
    QList<TaviTreeItem *> removeItems(const QList<TaviTreeItem *> &items, bool take);
    /// @}

    /// setSelectedExpanded(true)
    void expandSelected() { setSelectedExpanded(true); }
    /// setSelectedExpanded(false)
    void collapseSelected() { setSelectedExpanded(false); }

    /// saveSelections() of the numbers of items into a list of the view's own.
    void saveSelections();
    /// Brings back what the form without arguments saved, unless something is selected.
    void restoreSelections();
    /// The key of the header state: "header_state_", the class, "_", the object name. Views of one class and one name
    /// share it.
    std::string getHeaderRegistryKey() const;

    /// What happens to the selection at a click into empty space; QItemSelectionModel::Clear at first.
    QItemSelectionModel::SelectionFlags invalidIndexSelectionCommand() const;
    /// Sets what happens to the selection at a click into empty space.
    void setInvalidIndexSelectionCommand(QItemSelectionModel::SelectionFlags command);

    /// Opens the dialog that finds and renames in @a column, TaviTreeViewRenameDLG; its settings lie in @a section of
    /// @a registry, which must outlive it. One that is still open goes at once, and its settings are not kept. From a
    /// window that is modal the dialog is modal, too, and this returns when it is closed.
    void renameItems(int column, TaviRegistry &registry, std::string &section);
    /// Emits itemsRenamed() with @a count.
    void fireItemsRenamed(int count);

    /// The search window of the process; null if there is none.
    static TaviTreeViewFilterFloater *filterFloater() { return filter_floater; }

public Q_SLOTS:
    /// Closes the rename dialog and deletes it later.
    void dismissRenameDialog();

Q_SIGNALS:
    /// The user asks for a context menu on @a index, which is invalid over empty space. There is no menu but the one
    /// that the application opens in answer.
    void contextMenuRequested(const QModelIndex &index);
    /// The selection has changed.
    void selectionChanged();
    /// The rename dialog has changed texts: @a modified_count of them.
    void itemsRenamed(int modified_count = 0);
    /// A double click, anywhere in the view, after all that it causes by itself.
    void doubleClicked();

protected Q_SLOTS:
    /// Lets the status line follow.
    void currentChanged(const QModelIndex &current, const QModelIndex &previous) override;
    /// Lets the status line follow.
    void selectionChanged(const QItemSelection &selected, const QItemSelection &deselected) override;
    /// Applies a keyword. An empty one shows all rows and restores the expansion, any other opens the branches of
    /// visible rows.
    void filter(const QString &string);
    /// Applies the keyword to the row of @a index and what is below it.
    void filterIndex(const QModelIndex &index);
    /// Opens or closes the row of @a index, unless that is in column 0, where a double click does so by itself.
    void toggleExpandAnyColumn(const QModelIndex &index);

public:
    /// Listens to @a model in place of the one before.
    void setSelectionModel(QItemSelectionModel *model) override;
    /// Forgets what is selected, open and hidden; what a keyword hides is hidden again.
    void reset() override;
    /// As the base class; finds out about rows that were hidden or shown past setRowHidden().
    void doItemsLayout() override;

protected:
    /// Keeps up with the application's palette.
    bool event(QEvent *event) override;
    /// Emits doubleClicked() after what the base class does.
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    /// Searches as one types, opens and closes rows and the search window; see the class description.
    void keyPressEvent(QKeyEvent *event) override;
    /// Emits contextMenuRequested(). Selecting by a right click has happened by then.
    void contextMenuEvent(QContextMenuEvent *event) override;
    /// Takes the drags that the DNDFlag values allow, as a move where they say so.
    /// A drag that is not allowed is accepted here, so that no widget behind is asked, and ignored from then on.
    void dragEnterEvent(QDragEnterEvent *event) override;
    /// As dragEnterEvent(); ignores a drag that is not allowed.
    void dragMoveEvent(QDragMoveEvent *event) override;
    /// As the base class.
    void dragLeaveEvent(QDragLeaveEvent *event) override;
    /// As dragMoveEvent(): of a drag that is not allowed nothing is dropped.
    void dropEvent(QDropEvent *event) override;
    /// Looks through the new rows with the present keyword.
    void rowsInserted(const QModelIndex &parent, int start, int end) override;
    /// invalidIndexSelectionCommand() for an invalid index; nothing for a context menu on a selected row.
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event = nullptr) const override;

private Q_SLOTS:
    void proxyLayoutAboutToBeChanged();
    void proxyLayoutChanged();
    void followWithStatusBar();

private:
    friend class TaviTreeProxyModel;
    friend class TaviTreeViewFilterFloater;

    /// Whether a branch was open.
    struct ExpandState {
        int item_id;
        bool expanded;
    };
    /// A branch to open or to close.
    struct ExpandChange {
        QPersistentModelIndex index;
        bool expanded;
    };
    /// The flags that count for drags of one kind.
    struct DragClass {
        long allowed;
        long forced_move;
    };
    using BranchVisitor = std::function<void(const QModelIndex &index, const TaviTreeItem *item)>;

    void setUp();
    void takeFloaterOver();
    bool hiddenRowsAreKnown();
    DragClass dragClass(const QDropEvent *event) const;
    bool takesDrag(const QDropEvent *event) const;
    void passDragOn(QDropEvent *event, const std::function<void()> &base);
    void searchAhead();
    bool isPathHidden(const QModelIndex &index) const;
    QModelIndex indexOfShownItem(const TaviTreeItem *item) const;
    void selectShownItem(const TaviTreeItem *item, bool ensure_visible, QItemSelectionModel::SelectionFlags command);
    void selectShownItems(const QList<TaviTreeItem *> &items, bool ensure_visible,
                          QItemSelectionModel::SelectionFlags command);
    QModelIndex selectOnlyMatch(int column, const QVariant &value, int role,
                                QItemSelectionModel::SelectionFlags command);
    QModelIndexList selectAllMatches(int column, const QVariant &value, int role,
                                     QItemSelectionModel::SelectionFlags command);
    QModelIndexList matches(int column, const QVariant &value, int role, int hits) const;
    QList<TaviTreeItem *> removeFromModel(const QList<TaviTreeItem *> &items, bool take);
    void appendRows(int column, const QModelIndex &parent, QModelIndexList &rows) const;
    QItemSelection presentSelection() const;
    bool hasSelection() const;
    void select(const QItemSelection &rows, QItemSelectionModel::SelectionFlags command);
    int selectedRowCount() const;
    void visitVisibleBranches(const BranchVisitor &visit) const;
    void visitVisibleBranches(const QList<TaviTreeItem *> &items, const QModelIndex &source_parent,
                              const BranchVisitor &visit) const;
    void applyExpandChanges(const QVector<ExpandChange> &changes);
    void expandVisibleBranches();
    void expandParentsOf(const QModelIndexList &rows);
    QModelIndexList rowsWithValue(int role, const QVariant &value) const;

    static const char headers_reg_key[];
    static TaviTreeViewFilterFloater *filter_floater;

    QPointer<QStatusBar> status_bar;
    bool status_bar_enabled = true;
    QPointer<QWidget> container;
    TaviTreeProxyModel *proxy_model = nullptr;
    QList<QVariant> saved_selection; // numbers of items
    QString search_string;
    QElapsedTimer search_time; // since the last key
    long dnd_flags = 0;
    QVector<ExpandState> expand_states; // parents before their children
    QPointer<QDialog> rename_dialog;
    QItemSelectionModel::SelectionFlags invalid_index_selection_command = QItemSelectionModel::Clear;

    // From startFiltering() to stopFiltering().
    bool filter_session = false;
    // What filtering began from, while a sort in the middle of it saves and restores its own.
    std::optional<QVector<ExpandState>> expand_states_before_sort;
    quint64 laid_out_for = 0;      // the proxy's reasons at the last layout
    bool layout_is_for_us = false; // branches were opened or closed
};

#endif
