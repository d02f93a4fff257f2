// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVICONFIGORDER_H
#define TREEVIEWS_TAVICONFIGORDER_H

#include "foundation/taviwidgets_export.h"
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeview.h"
#include "treeviews/ui_taviconfigorder_ui.h"

#include <QDialog>
#include <QList>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QString>
#include <QVector>

class Q3ListViewItem;
class QLabel;
class QPushButton;
class QToolButton;
class TaviConfigOrderItem;
class TaviConfigOrderListView;
class TaviRegistry;

/// @file
/// The dialog in which the user says which of a fixed set of things show, and in what order; its items, its two lists
/// and their model.

/// A thing that can show: a column, a tool bar button.
///
/// Each thing has two entries. The left one stands in the list of all things, always. The right one stands in the
/// list of what shows, while the thing does. An entry can be picked (is enabled and selectable) where its list and
/// its visible flag agree: on the right if visible is true, on the left if it is false. So what shows is greyed out
/// at the left.
///
/// All is kept in column 0 of the item: the text under `Qt::DisplayRole`, the icon under `Qt::DecorationRole`,
/// visible, in show list and the number of the thing in the free slots 1, 2 and 3.
///
/// **Ownership, threads.** As of TaviTreeItem. Nothing is emitted: whoever changes an item that stands in a model
/// tells the model.
class TAVIWIDGETS_EXPORT ConfigOrderItem : public TaviTreeItem
{
    Q_OBJECT

public:
    /// A left entry that shows: disabled, not selectable, draggable, not droppable. @a parent is only remembered.
    explicit ConfigOrderItem(TaviTreeItem *parent = nullptr);
    /// An entry without a parent that has text, icon, flags and thing of @a other, and nothing else of it.
    ConfigOrderItem(const ConfigOrderItem &other);
    ~ConfigOrderItem() override;

    /// Takes text, icon, flags and thing of @a other over; all else stays, the parent and the children too.
    virtual ConfigOrderItem &operator=(const ConfigOrderItem &other);
    /// A new copy without a parent, which the caller owns.
    virtual ConfigOrderItem *clone() const;
    /// Whether the thing shows; true at first.
    virtual bool isItemVisible() const;
    /// Sets whether the thing shows, and so whether this entry can be picked.
    virtual void setItemVisible(bool visible);

    /// Sets the caller's number of the thing: of a section, or an index into a list. It has nothing to do with id().
    void setItemID(int id);
    /// The caller's number of the thing; 0 without one.
    int itemID() const;
    /// Whether this is a right entry; false at first.
    bool isItemInShowList() const;
    /// Makes this a right or a left entry, and so whether it can be picked. It is draggable from then on.
    void setItemInShowList(bool in_show_list);

private:
    void copyFrom(const ConfigOrderItem &other);
    void updateFlags();
};

/// One of the two lists of the order dialog.
///
/// A list of ConfigOrderItem rows, without sorting, in which several can be selected. It answers its model's word
/// that its own rows were dropped by moving them.
///
/// Moved rows stay selected, the list scrolls to the end towards which they went, and the current row goes with them.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT ConfigOrderTree : public TaviTreeView
{
    Q_OBJECT

public:
    /// A list without a model.
    explicit ConfigOrderTree(QWidget *parent = nullptr);
    ~ConfigOrderTree() override;

    using TaviTreeView::setModel;
    /// Shows @a model and moves rows when that says so. Any TaviTreeModel will do; only one that has the signal
    /// ConfigOrderModel::selfDroppedSelectedItemsAt() says so.
    void setModel(TaviTreeModel *model) override;
    /// Fixed: the list takes drops from other widgets alone, so that its order stays. Not fixed: also its own rows,
    /// which is always a move. Either way rows can be dragged out of it. Before the first call nothing can.
    void setFixedItems(bool fixed);
    /// Sets the visible flag of the first entry for the thing @a item_id. The views must be told (by a reset).
    /// @return the entry; null if no row that a keyword leaves visible is for that thing
    ///
    /// O(rows).
    ConfigOrderItem *setItemVisible(int item_id, bool visible);
    /// Moves each selected row up by one. A row that is at the top, or below a selected one that could not move,
    /// keeps its place; selected rows never change their order.
    void upSelectedItems();
    /// The same downwards.
    void downSelectedItems();

protected Q_SLOTS:
    /// Moves the selected rows together to where a drop at @a row says, counted with the rows as they are before.
    ///
    /// Going through the selected rows from the top, the row dropped at becomes one less for each that lies above it
    /// as it stands by then. With rows 0 and 1 of five, a drop at 3 lands them at 1 and 2.
    void moveSelectedItemsTo(int row);

protected:
    /// @name Rows that can't be picked
    /// A double click on one does nothing, and no drag begins there: both would mean the rows that are selected
    /// elsewhere.
    /// @{

    /// Remembers whether a drag may begin here.
    void mousePressEvent(QMouseEvent *event) override;
    /// Passes on those on rows that can be picked.
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    /// Drags the selected rows, if it began on one that can be picked.
    void startDrag(Qt::DropActions actions) override;
    /// @}

private:
    friend class TaviConfigOrder;
    using ItemList = QList<QPointer<TaviTreeItem>>;
    enum class Direction { Up, Down };

    void moveSelectedItems(Direction direction);
    QList<TaviTreeItem *> selectedSourceItems() const;
    void selectMoved(const ItemList &items, Direction direction);
    int currentRow() const;
    void setCurrentRow(int row);

    QPointer<TaviTreeModel> config_model;
    bool pressed_on_greyed = false; // where the mouse button went down last
};

/// The model of a list of the order dialog. It takes drops of such rows, but moves nothing: it says where they were
/// dropped, and its list or the dialog acts, since the rows of a drag are the selected rows of the list it comes
/// from.
///
/// A drag carries "MIME_CONFIG_ORDER_ITEM", without content. Its QMimeData has the numbers (TaviTreeItem::id()) of
/// the rows in the dynamic property "dragged_ids", for others to read, and that of the model as TaviTreeModel tells.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT ConfigOrderModel : public TaviTreeModel
{
    Q_OBJECT

public:
    /// An empty model with one column, "Order".
    explicit ConfigOrderModel(QObject *parent = nullptr);
    /// An empty model with the texts of the header.
    explicit ConfigOrderModel(const QList<QVariant> &header, QObject *parent = nullptr);
    ~ConfigOrderModel() override;

    /// Moves alone.
    Qt::DropActions supportedDragActions() const override;
    /// Moves alone.
    Qt::DropActions supportedDropActions() const override;
    /// "MIME_CONFIG_ORDER_ITEM".
    QStringList mimeTypes() const override;
    /// What a drag of the rows of @a indexes carries; the caller owns it.
    QMimeData *mimeData(const QModelIndexList &indexes) const override;
    /// Emits one of the two signals, with the number of rows in place of a negative @a row. False, and no signal, for
    /// another kind of data, null, and `Qt::IgnoreAction`.
    bool dropMimeData(const QMimeData *data, Qt::DropAction action, int row, int column,
                      const QModelIndex &parent) override;

Q_SIGNALS:
    /// Rows of this model were dropped before @a row.
    void selfDroppedSelectedItemsAt(int row);
    /// Rows of another model were dropped before @a row.
    void othersDropped(int row);
};

/// The window of TaviConfigOrder: two frames for lists, the buttons between and beside them, Ok, Cancel and Help.
///
/// The buttons show arrows until they are given an icon, and each has a tool tip, a name for screen readers and a
/// key: Alt with the arrow that it shows. Left and right change places where one reads from right to left.
class TAVIWIDGETS_EXPORT TaviConfigOrderDLG : public QDialog, public Ui::TaviConfigOrder_UI
{
    Q_OBJECT

public:
    /// An empty window; all buttons are enabled.
    explicit TaviConfigOrderDLG(QWidget *parent = nullptr);
    ~TaviConfigOrderDLG() override;

    /// Gives @a button the picture of the file @a normal, and of @a disabled while it is disabled. Its text goes. If
    /// neither file is a picture, the button stays as it is.
    void setButtonIcon(QToolButton *button, const QString &normal, const QString &disabled);

public Q_SLOTS:
    /// Closes with the result 1.
    void accept() override;
    /// Closes with the result 0.
    void reject() override;

public:
    QPushButton *help_button; ///< Of the buttons at the bottom.

protected:
    /// Turns the arrows around with the layout direction.
    void changeEvent(QEvent *event) override;

private:
    void adjustToDirection();
};

/// The dialog in which the user says which things show and in what order.
///
/// At the left is the list of all things, at the right that of those which show. Things are made to show and hidden
/// by buttons, by a double click, and by a drag from list to list; those which show are ordered by buttons and by a
/// drag within their list.
///
/// @code
/// QList<ConfigOrderItem *> all = ...;   // an entry for each thing, visible or not
/// QList<ConfigOrderItem *> shown = ...; // another entry for each thing that shows, in order
/// TaviConfigOrder order(tr("Configure Tool Bar"), this, "toolbar_config");
/// if (order.reorder(all, shown, false, registry, "toolbar_order") == QDialog::Accepted) {
///     for (const ConfigOrderItem *entry : all)
///         setShown(entry->itemID(), entry->isItemVisible());
///     for (const ConfigOrderItem *entry : shown)
///         append(entry->itemID());
/// }
/// qDeleteAll(shown);
/// @endcode
///
/// There are two forms of the same dialog: one for ConfigOrderItem entries in trees, as above, and an older one for
/// TaviConfigOrderItem things in classic lists, where a label below each list counts the selected rows.
///
/// An object serves for one dialog.
///
/// **Ownership.** ConfigOrderItem entries given belong to this object from the call on. What is handed back in the
/// list of shown entries belongs to the caller; the entries of all things live as long as this object.
/// TaviConfigOrderItem things stay the caller's throughout, and must live until the dialog is over; see cancel(). The
/// parent given is that of the window, not of this object.
///
/// **Re-entry.** The dialog runs an event loop. The parent may be destroyed meanwhile, and so may this object: that
/// counts as Cancel.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT TaviConfigOrder : public QObject
{
    Q_OBJECT

public:
    /// A dialog to come, with an empty title. @a name becomes the object name.
    TaviConfigOrder(QWidget *parent, const char *name);
    /// The same with @a title.
    TaviConfigOrder(const QString &title, QWidget *parent, const char *name);
    /// Closes the dialog if it is open.
    ~TaviConfigOrder() override;

    /// Runs the dialog.
    ///
    /// @param all an entry for each thing; nulls are passed over
    /// @param shown another entry for each thing that shows, in order; nulls are passed over. Afterwards empty, or if
    ///        the user accepted the entries of what shows now, in order, which the caller owns
    /// @param fixed only the order can be changed: the left list isn't there
    /// @param registry, section where the geometry of the window is kept; if either is null it is kept for the run of
    ///        the process, for all dialogs of this kind together
    /// @return 1 if the user accepted, 0 if not; the visible flags of @a all then mean nothing
    int reorder(const QList<ConfigOrderItem *> &all, QList<ConfigOrderItem *> &shown, bool fixed,
                TaviRegistry *registry, const char *section);

    /// Runs the dialog in the older form.
    ///
    /// While it runs, TaviConfigOrderItem::isItemInShowList() of each thing tells whether it is to show.
    ///
    /// @param all each thing once; nulls are passed over
    /// @param shown the things in order, of which those count that are visible; nulls are passed over. If the user
    ///        accepted, all things: the visible ones in their new order, then the others in the order of @a all. If
    ///        not, as it was
    /// @param fixed, registry, section as above
    /// @return 1 if the user accepted, and then isItemVisible() of each thing is as he wants it; 0 if not, and then
    ///         it is as it was
    int reorder(const QList<TaviConfigOrderItem *> &all, QList<TaviConfigOrderItem *> &shown, bool fixed,
                TaviRegistry *registry, const char *section);

    /// Ends the dialog as Cancel does, if it is open, and forgets the things in the older form's lists: they may be
    /// deleted then.
    void cancel();

    /// Reads the geometry for the run of the process from section "taviconfig_order_dlg". If one of its four values
    /// is missing or below 1, nothing is taken.
    static void loadDialogGeometry(TaviRegistry &registry);
    /// Writes the geometry for the run of the process where loadDialogGeometry() reads it. At first it is 500 by 500
    /// at 50, 50.
    static void saveDialogGeometry(TaviRegistry &registry);

    /// Makes the text of @a label, in small letters, tell how many are selected: "None selected" for less than one.
    /// Null is ignored.
    static void updateLabelText(QLabel *label, int selected, int total);

    /// @name Pictures of the buttons
    /// File names, for the whole application. Empty at first: the buttons show arrows then.
    /// @{

    /// The button that moves up.
    static void set_pixname_moveup(const QString &file) { pixname_moveup = file; }
    /// The same while it is disabled.
    static void set_pixname_moveup_off(const QString &file) { pixname_moveup_off = file; }
    /// The button that moves down.
    static void set_pixname_movedown(const QString &file) { pixname_movedown = file; }
    /// The same while it is disabled.
    static void set_pixname_movedown_off(const QString &file) { pixname_movedown_off = file; }
    /// The button that hides.
    static void set_pixname_makehidden(const QString &file) { pixname_makehidden = file; }
    /// The same while it is disabled.
    static void set_pixname_makehidden_off(const QString &file) { pixname_makehidden_off = file; }
    /// The button that shows.
    static void set_pixname_makeshowing(const QString &file) { pixname_makeshowing = file; }
    /// The same while it is disabled.
    static void set_pixname_makeshowing_off(const QString &file) { pixname_makeshowing_off = file; }
    /// @}

public Q_SLOTS:
    /// @name Of the older form
    /// Nothing happens while it is not open. Selections are told of a turn of the event loop late. Each is linear in
    /// the number of rows.
    /// @{

    /// Shows what is selected at the left: behind the last selected row at the right, or at the end. The new rows are
    /// selected; at the left the next row that can be picked is.
    void makeShowing();
    /// Hides what is selected at the right: those rows go, the left ones can be picked and are selected; at the right
    /// the row below is selected, or the last one.
    void makeHidden();
    /// Moves what is selected at the right up by one row, as one block above the row above the first of them. Nothing
    /// if the first row is selected.
    void moveUp();
    /// Moves what is selected at the right down as one block, below the first row that is not selected behind the
    /// first of them. Nothing if there is none.
    void moveDown();
    /// Counts the rows selected at the left, for the label and the button that shows.
    void hiddenSelectionsChanged();
    /// Counts the rows selected at the right, for the label and the buttons that hide and move.
    void showingSelectionsChanged();
    /// Shows what is selected if @a lvi is a row at the left, hides it if it is one at the right. Nothing for null.
    void doubleClicked(Q3ListViewItem *lvi, QPoint p, int col);
    /// @}

protected Q_SLOTS:
    /// Hides what is selected at the right: the right entries go, the left ones can be picked and are selected.
    void hideItems();
    /// Shows what is selected at the left, at the end.
    void showItems();
    /// The same before @a row, or at the end if that is negative. The new entries are selected.
    void showItems(int row);
    /// Moves what is selected at the right up.
    void upItems();
    /// Moves what is selected at the right down.
    void downItems();
    /// Enables the buttons that order if something is selected at the right.
    void adjustOrderButtons();
    /// Enables the buttons that show and hide if something is selected at the left, or at the right.
    void adjustShowHideButtons();

private:
    void openDialog(TaviRegistry *registry, const char *section);
    void arrangeDialog(bool fixed, const QVector<QWidget *> &left, const QVector<QWidget *> &right);
    void closeDialog(TaviRegistry *registry, const char *section);
    ConfigOrderTree *makeTree(QFrame *frame, const QString &heading, bool fixed, ConfigOrderModel *&model);
    void connectSignals(bool fixed);
    bool hasLists() const;
    TaviConfigOrderListView *makeList(QFrame *frame, bool is_source);
    void fillLists(const QList<TaviConfigOrderItem *> &all, const QList<TaviConfigOrderItem *> &shown);
    void takeOver(QList<TaviConfigOrderItem *> &shown) const;
    Q3ListViewItem *makeShowing(Q3ListViewItem *item, Q3ListViewItem *after);
    void moveStuff(bool up);
    static void moveAfter(const QVector<Q3ListViewItem *> &rows, Q3ListViewItem *after);

    static QRect geometry_rect;
    static QString pixname_moveup;
    static QString pixname_moveup_off;
    static QString pixname_movedown;
    static QString pixname_movedown_off;
    static QString pixname_makehidden;
    static QString pixname_makehidden_off;
    static QString pixname_makeshowing;
    static QString pixname_makeshowing_off;

    QString title;
    QPointer<QWidget> parent_widget;
    QPointer<TaviConfigOrderListView> hidden_list;
    QPointer<TaviConfigOrderListView> showing_list;
    QPointer<ConfigOrderTree> hidden_tree;
    ConfigOrderModel *hidden_model = nullptr;
    QPointer<ConfigOrderTree> showing_tree;
    ConfigOrderModel *showing_model = nullptr;
    QPointer<TaviConfigOrderDLG> dialog;
};

#endif
