// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVITREEITEM_H
#define TREEVIEWS_TAVITREEITEM_H

#include "foundation/taviwidgets_export.h"

#include <QBrush>
#include <QList>
#include <QObject>
#include <QSignalMapper>
#include <QString>
#include <QVariant>
#include <QVector>

#include <vector>

/// @file
/// The nodes of every tree that is shown through a TaviTreeModel, and the channel by which they tell of a change.

class TaviTreeItemAccess;

/// The one channel by which items tell models that they have changed.
///
/// Items know no model. A change is broadcast as the number of the item, and each model finds out for itself whether
/// the item stands in its tree. The library has a single mapper; applications subscribe through
/// TaviTreeItem::subscribeDataChanged().
///
/// **Threads.** The main thread.
class TAVIWIDGETS_EXPORT TaviTreeItemSignalMapper : public QSignalMapper
{
    Q_OBJECT

public:
    /// A mapper owned by @a parent.
    explicit TaviTreeItemSignalMapper(QObject *parent = nullptr);

    /// Emits the inherited `mapped(int)` with @a id.
    void emitMapped(int id);
};

/// The node of a tree: values per column and role, flags, check states, children.
///
/// An item holds a value for each pair of column and role. Column -1 is the default of the whole row: what is stored
/// there is read wherever a column has no value of its own. Item flags hold for all columns, column flags for one.
/// Check states follow each other within the tree: a parent follows its children, children follow their parent.
///
/// | Role | Read | Written |
/// |---|---|---|
/// | `Qt::EditRole`, `Qt::ToolTipRole` | the text, `Qt::DisplayRole` | edit: the text; tool tip: stored, never read |
/// | `Qt::CheckStateRole` | checkState() of a checkable column, otherwise invalid | as setCheckState() |
/// | IdRole | id() | refused |
/// | PointerRole | a `void *` to the item | refused |
/// | any other | as stored | stored |
///
/// Free slots for application data begin at getUserDataRole(0).
///
/// **Ownership.** An item owns its children; whoever creates an item without appending it, or takes one out, owns it.
/// The parent given to a constructor is only remembered: the caller appends the item. The `QObject` parent is not
/// used. Deleting an item that its parent still lists leaves an empty (null) place in the list; take it out first.
///
/// **Re-entry.** Setting check states emits while it walks. A slot may delete, take or add items, also the item whose
/// state is being set: what is deleted is passed over, the rest is done.
///
/// **Cost.** Each operation takes the time its result needs, whatever the number of siblings; row() too, unless rows
/// above it came or went since it was last asked. What walks children or siblings says so.
///
/// **Threads.** The main thread.
class TAVIWIDGETS_EXPORT TaviTreeItem : public QObject
{
    Q_OBJECT

public:
    /// The roles that items add to those of Qt. Their numbers are fixed: they travel through applications' data.
    enum Role {
        IdRole = 32,            ///< the number of the item, an int
        PointerRole = 33,       ///< the address of the item, a `void *`
        FirstUserDataRole = 34, ///< the first free slot
    };

    /// An item without values. @a parent is remembered as the parent, which does not list the item yet.
    explicit TaviTreeItem(TaviTreeItem *parent = nullptr);
    /// The same with @a display_data as the texts of the columns from 0 on.
    explicit TaviTreeItem(const QList<QVariant> &display_data, TaviTreeItem *parent = nullptr);
    /// The same, and takes the texts out of the list: the quickest way to make many items.
    explicit TaviTreeItem(QList<QVariant> &&display_data, TaviTreeItem *parent = nullptr);
    /// Deletes all children, first to last.
    ~TaviTreeItem() override;

    /// @a name, or if a sibling has this text in @a column the first of "name (2)", "name (3)", ... that none has.
    /// The number is at least @a field_width wide, filled up with @a fill (as QString::arg does). An item without a
    /// parent gets @a name back. Costs O(siblings).
    virtual QString getUniqueName(int column, const QString &name, int field_width, const QChar &fill) const;
    /// Makes the elements the texts of the columns from 0 on; everything else stays.
    virtual void setDisplayData(const QList<QVariant> &display_data);
    /// How many children there are.
    virtual int childCount() const;
    /// The flags of the item together with those of @a column.
    virtual Qt::ItemFlags flags(int column) const;
    /// The value at @a column and @a role as the class description tells; invalid without one.
    virtual QVariant data(int column, int role) const;
    /// Stores a value and returns true; false for a refused role, or when no check state changed. Nothing is emitted
    /// but by check states: whoever writes to an item directly and wants views to follow calls emitDataChanged().
    virtual bool setData(int column, const QVariant &value, int role);
    /// setData() on the free slot @a index.
    virtual bool setUserData(int column, const QVariant &value, unsigned int index);
    /// data() of the free slot @a index.
    virtual QVariant userData(int column, unsigned int index) const;

    /// Puts @a child at the end. One that is already in the list moves there; one that stands in another item's list
    /// is not taken out of it: the caller does. Null is ignored.
    void appendChild(TaviTreeItem *child);
    /// As appendChild(), at @a index, or at the end if there are fewer. Costs O(children) at worst.
    void insertChild(int index, TaviTreeItem *child);
    /// Takes @a child out and hands it to the caller; null if it is not in the list. Costs O(children) at worst.
    TaviTreeItem *takeChild(TaviTreeItem *child);
    /// Takes @a child out and deletes it; nothing if it is not in the list.
    void removeChild(TaviTreeItem *child);
    /// Deletes all children, first to last.
    void removeAllChildren();
    /// The child in @a row; null for a row that does not exist.
    TaviTreeItem *child(int row) const;
    /// A copy of the list.
    QList<TaviTreeItem *> children() const;
    /// The place in the parent's list; 0 without a parent, -1 if the parent does not list the item.
    int row() const;
    /// The parent, null for a root.
    TaviTreeItem *parentTreeItem() const;
    /// The ancestor that has no parent, or this item if it has none itself. Within a model: its hidden root.
    TaviTreeItem *topLevelParent();
    /// The next one in the parent's list, null at the end and without a parent. An item that its parent does not
    /// list gets the first child.
    TaviTreeItem *nextSibling() const;
    /// The one before in the parent's list, null at the start, without a parent, or when the parent does not list it.
    TaviTreeItem *prevSibling() const;
    /// Makes all descendants direct children of @a root (null: of this item). Those that were direct children stay in
    /// their order, the deeper ones follow, depth first. Emits nothing. Costs O(descendants).
    void flattenHierarchy(TaviTreeItem *root);
    /// The number of this item: unique in the process, never changed, never used again. The first item has number 1.
    int id() const;
    /// How many columns ever got a value; column -1, the row's default, counts. Never shrinks.
    int columnCount() const;

    /// Whether the item can be selected; on at first.
    void setSelectable(bool selectable);
    /// Whether the item can be selected.
    bool isSelectable() const;
    /// Whether the item can be dragged; off at first.
    void setDraggable(bool draggable);
    /// Whether the item can be dragged.
    bool isDraggable() const;
    /// Whether something can be dropped on the item; off at first.
    void setDroppable(bool droppable);
    /// Whether something can be dropped on the item.
    bool isDroppable() const;
    /// Whether the item is enabled; on at first.
    void setEnabled(bool enabled);
    /// Whether the item is enabled.
    bool isEnabled() const;
    /// Whether @a column can be edited; off at first. A negative column is ignored.
    void setEditable(int column, bool editable);
    /// Whether @a column can be edited.
    bool isEditable(int column) const;
    /// Whether @a column has a check box and whether it has three states; off at first. A negative column is ignored.
    void setCheckable(int column, bool checkable, bool tristate = false);
    /// Whether @a column has a check box. @a tristate, if given, receives whether it has three states.
    bool isCheckable(int column, bool *tristate = nullptr) const;
    /// Whether flags were ever set for @a column.
    bool columnHasFlags(int column) const;
    /// @a flags with @a flag set or cleared.
    Qt::ItemFlags setItemFlag(Qt::ItemFlags flags, Qt::ItemFlag flag, bool on) const;
    /// Whether @a flag is set in @a flags.
    bool checkItemFlag(Qt::ItemFlags flags, Qt::ItemFlag flag) const;

    /// Colours the texts of the whole row, where a column has no brush of its own.
    void setForeground(const QBrush &brush);
    /// The brush of the whole row; a default brush without one.
    QBrush foreground() const;
    /// Colours the text of @a column.
    void setForeground(int column, const QBrush &brush);
    /// The brush that @a column is painted with; a default brush without one.
    QBrush foreground(int column) const;
    /// The role of the free slot @a index: index + 34.
    static int getUserDataRole(unsigned int index);

    /// What getUniqueNewName() starts from.
    void setNewNameBase(const QString &name);
    /// What getUniqueNewName() starts from; until it is set the translation of "Untitled" into the present language.
    QString newNameBase() const;
    /// getUniqueName() of newNameBase().
    QString getUniqueNewName(int column, int field_width, const QChar &fill) const;
    /// Whether another child of the parent has exactly this text in @a column. Costs O(siblings).
    bool isNameTakenBySibling(int column, const QString &name) const;

    /// The stored state of @a column, unchecked without one.
    Qt::CheckState checkState(int column) const;
    /// Sets the state of a checkable column, of all checkable descendants, and lets the parents follow. A partial
    /// state comes from children only: given from outside it stores nothing. True if any item's state changed; each
    /// item that changed is told once. Costs O(descendants + siblings, also of the ancestors that change).
    bool setCheckState(int column, Qt::CheckState state);
    /// The same, with parents that follow only if @a update_parents is set.
    bool setCheckState(int column, Qt::CheckState state, bool update_parents);
    /// Whether no checkable child has another state. True if no child is checkable. Costs O(children).
    bool isAllCheckState(int column, Qt::CheckState state) const;
    /// Whether some checkable child is checked and some is not. A partially checked child counts as not checked, so
    /// that unchecked and partially checked children alone do not make a partial parent. Costs O(children).
    bool isPartiallyChecked(int column) const;
    /// Sets the state of all checkable descendants; branches below an item that is not checkable are left out, and so
    /// is everything if this item is not checkable. True if any state changed. Costs O(descendants).
    bool setAllCheckState(int column, Qt::CheckState state);
    /// Derives the state from the children, whether or not @a column is checkable here: partial if
    /// isPartiallyChecked(), checked or unchecked if all of them are; otherwise it stays. Where it changes, the
    /// parent follows. True if this item's state changed. Costs O(children).
    bool updateCheckStateFromChildren(int column);

    /// Connects `mapped(int)` of the one mapper to @a slot, written with `SLOT()`: it gets the number of each item in
    /// the process that changes. Nothing happens if either is null.
    static void subscribeDataChanged(const QObject *receiver, const char *slot);
    /// Tells all models that this item has changed.
    void emitDataChanged();

private:
    friend class TaviTreeItemAccess;

    // A value. One flat list in the order of column and role in place of nested maps: with the four texts of a usual
    // row it takes a tenth of their memory, and the few values are found as fast.
    struct Value {
        int column;
        int role;
        QVariant value;
    };
    struct ColumnFlags {
        int column;
        Qt::ItemFlags flags;
    };

    void mapConnections();
    const QVariant *storedValue(int column, int role) const;
    void storeValue(int column, int role, const QVariant &value);
    Qt::ItemFlags columnFlags(int column) const;
    void setColumnFlag(int column, Qt::ItemFlag flag, bool on);
    bool storeCheckState(int column, Qt::CheckState state);
    bool setCheckStateOfChildren(int column, Qt::CheckState state);
    int rowOf(const TaviTreeItem *child) const;
    void listed(TaviTreeItem *child, int row);
    void insertChildren(int row, const QList<TaviTreeItem *> &items);
    TaviTreeItem *takeRow(int row);
    void removeFromBelow();
    QList<TaviTreeItem *> takeChildren(const QList<TaviTreeItem *> &items);

    static int id_ticket;
    static TaviTreeItemSignalMapper data_changed_mapper;

    int id_;
    Qt::ItemFlags item_flags;
    TaviTreeItem *self_reference = nullptr;
    TaviTreeItem *parent_item;
    QList<TaviTreeItem *> children_; // in row order, owned
    std::vector<Value> column_data;
    QVector<ColumnFlags> column_flags;
    QString new_name_base; // once own_name_base is set
    int column_count = 0;
    // Where the parent listed this item when it was last looked for; row() looks there first.
    mutable int row_hint = 0;
    // The steps that looking for children at other places has taken since all of them learned their place: when it
    // has cost as much as telling them all, they are told.
    mutable int search_steps = 0;
    // How many lists hold this item, usually one or none.
    int list_count : 30;
    // This item or one below it answers data() or childCount() itself; never taken back.
    unsigned int overrides_below : 1;
    // setNewNameBase() has been called.
    unsigned int own_name_base : 1;
};

#endif
