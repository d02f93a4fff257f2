// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVITREEMODEL_H
#define TREEVIEWS_TAVITREEMODEL_H

#include "foundation/taviwidgets_export.h"

#include <QAbstractItemModel>
#include <QList>
#include <QMap>
#include <QVariant>

class QMimeData;
class TaviTreeItem;

/// @file
/// The item model over a tree of TaviTreeItem objects, and the interface of applications' sort orders.

/// Decides the order of two cells when a view is sorted; see TaviTreeProxyModel::setComparer().
///
/// An application derives from it. **Threads.** The main thread.
class TAVIWIDGETS_EXPORT TaviModelIndexComparer : public QObject
{
    Q_OBJECT

public:
    /// A comparer owned by @a parent.
    explicit TaviModelIndexComparer(QObject *parent = nullptr);

    /// -1 if @a left sorts before @a right, 1 if after; anything else leaves the decision to the order that holds
    /// without a comparer. The indexes are those of the source model.
    virtual int compare(const QModelIndex &left, const QModelIndex &right) = 0;
};

/// Qt's item model over a tree of TaviTreeItem objects.
///
/// The model owns a hidden root item. Its children are the rows of the top level, its display data the header. What a
/// cell shows and allows is the item's affair; the model forwards, and puts the row signals around what comes and
/// goes.
///
/// How many columns the children of an item have is decided by that item: an item with values in fewer columns than
/// the header cuts its children short.
///
/// **Ownership.** The model owns the items of its tree; what is taken out belongs to the caller.
///
/// **Derived classes** may override what QAbstractItemModel lets them, and items may override TaviTreeItem::data()
/// and TaviTreeItem::childCount(). Where nobody does, the model goes short ways to the same results: it reads the
/// item out of an index of its own, and finds an item by number in the time its depth needs. An item that is found
/// this way and whose class or model answers TaviTreeItem::IdRole itself is asked for it. A number that no item of
/// the tree bears is searched for by a walk of the whole tree as soon as some class in it answers for itself.
///
/// **Threads.** The main thread.
class TAVIWIDGETS_EXPORT TaviTreeModel : public QAbstractItemModel
{
    Q_OBJECT

public:
    /// Name of the dynamic property that marks a QMimeData with the number of the model it comes from.
    static const char *const PROP_MODEL_ID;

    /// An empty model without a header. Until the header or the root has columns, no row has an index.
    explicit TaviTreeModel(QObject *parent = nullptr);
    /// An empty model with the texts of the header.
    explicit TaviTreeModel(const QList<QVariant> &header, QObject *parent = nullptr);
    /// Deletes all items.
    ~TaviTreeModel() override;

    /// See QAbstractItemModel.
    QModelIndex index(int row, int column, const QModelIndex &parent = QModelIndex()) const override;
    /// See QAbstractItemModel.
    QModelIndex parent(const QModelIndex &index) const override;
    using QObject::parent;
    /// See QAbstractItemModel. Only column 0 has children.
    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    /// See QAbstractItemModel: TaviTreeItem::columnCount() of the item at @a parent, or of the root.
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    /// TaviTreeItem::data() of the item.
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    /// TaviTreeItem::setData() of the item, followed by dataChanged() if that took the value. A value equal to the
    /// present one is no change: false.
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    /// The values of the roles below 256 that can be written to a stream, as a drag does. Addresses cannot, nor can
    /// values of a type without stream operators.
    QMap<int, QVariant> itemData(const QModelIndex &index) const override;
    /// The root's value for a horizontal section.
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;
    using QAbstractItemModel::setHeaderData;
    /// TaviTreeItem::flags() of the item; `Qt::ItemIsDropEnabled` for the invalid index, so that the empty area of a
    /// view takes drops.
    Qt::ItemFlags flags(const QModelIndex &index) const override;

    /// removeAllItems().
    virtual void clear();
    /// Puts @a item at the end of the top level.
    virtual void appendItem(TaviTreeItem *item);
    /// Puts @a item at the end of the children of @a parent (null: the top level). A null item is ignored.
    virtual void appendItem(TaviTreeItem *item, TaviTreeItem *parent);
    /// Puts @a items at the end of the top level.
    virtual void appendItems(QList<TaviTreeItem *> items);
    /// Puts @a items at the end of the children of @a parent, within one bracket of row signals. Null entries are
    /// left out. The way to load many rows.
    virtual void appendItems(QList<TaviTreeItem *> items, TaviTreeItem *parent);
    /// Deletes @a item, a row of the top level.
    virtual void removeItem(TaviTreeItem *item);
    /// Deletes @a item, a child of @a parent; it is not checked that it is one. A null item is ignored.
    virtual void removeItem(TaviTreeItem *item, TaviTreeItem *parent);
    /// Deletes the row of the top level that has this number.
    virtual void removeItem(int id);
    /// Calls removeItem() with @a parent on the row of the top level that has this number.
    virtual void removeItem(int id, TaviTreeItem *parent);
    /// Deletes rows of the top level.
    virtual void removeItems(QList<TaviTreeItem *> items);
    /// Deletes those of @a items that are children of @a parent, and resets the model: the rows need not lie
    /// together. Costs O(children + items).
    virtual void removeItems(QList<TaviTreeItem *> items, TaviTreeItem *parent);
    /// Deletes all items.
    virtual void removeAllItems();
    /// Deletes all children of @a parent. The bracket of row signals comes also where there is no row.
    virtual void removeAllItems(TaviTreeItem *parent);
    /// Takes a row of the top level out.
    virtual TaviTreeItem *takeItem(TaviTreeItem *item);
    /// Takes @a item, a child of @a parent, out and hands it to the caller. It is not checked that it is one.
    virtual TaviTreeItem *takeItem(TaviTreeItem *item, TaviTreeItem *parent);
    /// Takes rows of the top level out.
    virtual QList<TaviTreeItem *> takeItems(const QList<TaviTreeItem *> &items);
    /// Takes @a items out and resets the model. The result has null for an entry that is no child of @a parent.
    /// Costs O(children + items).
    virtual QList<TaviTreeItem *> takeItems(const QList<TaviTreeItem *> &items, TaviTreeItem *parent);
    /// Takes all rows of the top level out and hands them to the caller.
    virtual QList<TaviTreeItem *> takeAllItems();
    /// With a null @a parent as takeAllItems(). With another one nothing moves: the rows of the *top level* are asked
    /// for under @a parent, which does not have them; the result holds a null for each, and the bracket of row
    /// signals is issued all the same. To empty a parent use takeItems() of its children.
    virtual QList<TaviTreeItem *> takeAllItems(TaviTreeItem *parent);
    /// Inserts into the top level.
    virtual void insertItems(int row, const QList<TaviTreeItem *> &items);
    /// Inserts @a items from @a row on, which is brought into the range of rows. The bracket of row signals counts
    /// null entries, which are left out.
    virtual void insertItems(int row, const QList<TaviTreeItem *> &items, TaviTreeItem *parent);
    /// Inserts into the top level.
    virtual void insertItem(int row, TaviTreeItem *item);
    /// Inserts @a item at @a row, which is brought into the range of rows. A null item is ignored.
    virtual void insertItem(int row, TaviTreeItem *item, TaviTreeItem *parent);
    /// Sets a value of a header section and tells so, also when the root refused it.
    virtual void setHeaderData(int section, const QVariant &value, Qt::ItemDataRole role);
    /// Sets the texts of the header from section 0 on.
    virtual void setHeaderData(const QList<QVariant> &header);

    /// The row of the top level that has this number; null if there is none. Deeper items are found by indexFromId().
    TaviTreeItem *itemFromId(int id) const;
    /// The index, in column 0, of the item with this number anywhere in the tree; invalid if there is none. Costs
    /// O(depth); for the exception see the class description.
    QModelIndex indexFromId(int id) const;
    /// indexFromId() of the item's number; invalid for null.
    QModelIndex indexFromItem(const TaviTreeItem *item) const;
    /// The item in this row of the top level; null if there is none.
    TaviTreeItem *itemAt(int row) const;
    /// The items of the top level, in row order.
    QList<TaviTreeItem *> allItems() const;
    /// The item at @a index, which must be valid: of this model, or of any proxy in front of one. Null if the index's
    /// model has no items.
    static TaviTreeItem *itemFromIndex(const QModelIndex &index);
    /// itemFromIndex() of each, nulls left out. A list with all columns of a row has its item once for each; reduce
    /// it with indexesToRows() first.
    QList<TaviTreeItem *> itemsFromIndexList(const QList<QModelIndex> &indexes) const;
    /// Those of @a indexes that lie in @a column.
    QList<QModelIndex> indexesToRows(const QList<QModelIndex> &indexes, int column) const;
    /// The value of @a role at each of @a indexes, invalid ones left out.
    QList<QVariant> variantsFromIndexList(const QList<QModelIndex> &indexes, int role) const;
    /// Resets the model.
    void resetModel();
    /// Makes all items rows of the top level, as TaviTreeItem::flattenHierarchy(). Emits nothing: resetModel() must
    /// follow.
    void flattenHierarchy();
    /// The number of this model, unique in the process. The first model has number 1.
    int modelID() const;
    /// Marks @a data as coming from the model with this number. Null is ignored.
    void setMimeDataSourceModelID(QMimeData *data, int model_id) const;
    /// The number that @a data is marked with; -1 if it is not, or null.
    int getMimeDataSourceModelID(const QMimeData *data) const;

public Q_SLOTS:
    /// Emits dataChanged() for column 0 of the item's row, if it is in this model. Null is ignored.
    void itemChanged(const TaviTreeItem *item);

protected Q_SLOTS:
    /// The same for the item with this number. Connected to the items' mapper.
    void itemChanged(int item_id);

protected:
    /// Begins and ends a reset.
    void reset();

private:
    friend class TaviTreeModelAccess;

    void construct();
    TaviTreeItem *itemOf(const QModelIndex &index) const;
    TaviTreeItem *itemOrRoot(const QModelIndex &parent) const;
    TaviTreeItem *givenOrRoot(TaviTreeItem *parent) const;
    QModelIndex indexOfParent(const TaviTreeItem *parent) const;
    QModelIndex indexInTree(TaviTreeItem *item) const;
    int clampedRow(int row, const QModelIndex &parent) const;

    static int model_id_ticket;

    TaviTreeItem *root_item = nullptr;
    int model_id = 0;
};

#endif
