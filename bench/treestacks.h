// SPDX-License-Identifier: MIT
#ifndef BENCH_TREESTACKS_H
#define BENCH_TREESTACKS_H

/// The same table in three ways, each with a view in front: the tree stack of this library, Qt's standard model
/// behind a sorting and filtering proxy, and Qt's tree widget. Every way has the same operations, so that one
/// benchmark measures all three.

#include "bench/treewidgetpeer.h"
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeproxymodel.h"
#include "treeviews/tavitreeview.h"

#include <QHeaderView>
#include <QLineEdit>
#include <QSortFilterProxyModel>
#include <QStandardItemModel>

#include <memory>

namespace treestacks {

/// Orders by the number in column 2.
class NumberComparer : public TaviModelIndexComparer
{
public:
    using TaviModelIndexComparer::TaviModelIndexComparer;
    int compare(const QModelIndex &left, const QModelIndex &right) override
    {
        const int a = number(left);
        const int b = number(right);
        return a < b ? -1 : a > b ? 1 : 0;
    }

private:
    static int number(const QModelIndex &index)
    {
        return static_cast<const TaviTreeItem *>(index.internalPointer())
            ->data(2, Qt::DisplayRole)
            .toString()
            .toInt();
    }
};

class Tavi
{
public:
    using Item = TaviTreeItem;

    Tavi()
        : model(
            [] {
                QList<QVariant> texts;
                for (const QString &one : header())
                    texts.append(one);
                return texts;
            }(),
            nullptr)
    {
        shown.setModel(&model);
        shown.addFilterLineEdit(&line_edit);
        prepare(&shown);
    }

    static Item *makeItem(int row)
    {
        return new Item({text(row, 0), text(row, 1), text(row, 2), text(row, 3)}, nullptr);
    }
    static void addChild(Item *parent, Item *child) { parent->appendChild(child); }
    static void makeCheckable(Item *item) { item->setCheckable(0, true, item->childCount() > 0); }
    static void check(Item *item, bool on) { item->setCheckState(0, on ? Qt::Checked : Qt::Unchecked); }

    void append(const QList<Item *> &items) { model.appendItems(items); }
    void append(Item *item) { model.appendItem(item); }
    void removeEverySecond()
    {
        QList<Item *> doomed;
        for (int row = 0; row < model.rowCount(); row += 2)
            doomed.append(model.itemAt(row));
        model.removeItems(doomed);
    }
    void takeEverySecond()
    {
        QList<Item *> taken;
        for (int row = 0; row < model.rowCount(); row += 2)
            taken.append(model.itemAt(row));
        qDeleteAll(model.takeItems(taken));
    }
    /// As a user does: the view opens the branches of hits by itself.
    void filter(const QString &keyword) { line_edit.setText(keyword); }
    void sort(int column) { proxy()->sort(column); }
    void sortByNumber()
    {
        proxy()->setComparer(&comparer);
        proxy()->sort(2);
    }
    void change(int row) { model.setData(model.index(row, 0), QStringLiteral("changed"), Qt::EditRole); }
    QTreeView *view() { return &shown; }
    TaviTreeProxyModel *proxy() { return static_cast<TaviTreeProxyModel *>(shown.model()); }

    TaviTreeModel model;
    NumberComparer comparer{nullptr};
    QLineEdit line_edit;
    TaviTreeView shown;
};

class Standard
{
public:
    using Item = QStandardItem;

    /// A row of items; the children stand below the first.
    Standard()
    {
        model.setHorizontalHeaderLabels(header());
        proxy.setSourceModel(&model);
        proxy.setRecursiveFilteringEnabled(true);
        proxy.setFilterKeyColumn(-1);
        proxy.setFilterCaseSensitivity(Qt::CaseInsensitive);
        proxy.setSortCaseSensitivity(Qt::CaseInsensitive);
        shown.setModel(&proxy);
        prepare(&shown);
    }

    static Item *makeItem(int row)
    {
        auto *item = new Item(text(row, 0));
        item->setData(row); // the other columns are made when the row finds its place
        return item;
    }
    static QList<Item *> wholeRow(Item *first)
    {
        const int row = first->data().toInt();
        first->setData(QVariant());
        return {first, new Item(text(row, 1)), new Item(text(row, 2)), new Item(text(row, 3))};
    }
    static void addChild(Item *parent, Item *child) { parent->appendRow(wholeRow(child)); }

    /// Without the proxy looking on, which would take minutes.
    void append(const QList<Item *> &items)
    {
        proxy.setSourceModel(nullptr);
        for (Item *item : items)
            model.appendRow(wholeRow(item));
        proxy.setSourceModel(&model);
    }
    void append(Item *item) { model.appendRow(wholeRow(item)); }
    void removeEverySecond()
    {
        for (int row = (model.rowCount() - 1) / 2 * 2; row >= 0; row -= 2)
            model.removeRow(row);
    }
    void takeEverySecond()
    {
        for (int row = (model.rowCount() - 1) / 2 * 2; row >= 0; row -= 2)
            qDeleteAll(model.takeRow(row));
    }
    void filter(const QString &keyword)
    {
        proxy.setFilterFixedString(keyword);
        if (!keyword.isEmpty())
            shown.expandAll();
    }
    void sort(int column) { proxy.sort(column); }
    void sortByNumber()
    {
        proxy.by_number = true;
        proxy.sort(2);
    }
    void change(int row) { model.item(row, 0)->setText(QStringLiteral("changed")); }
    QTreeView *view() { return &shown; }

    class Proxy : public QSortFilterProxyModel
    {
    public:
        bool by_number = false;

    protected:
        bool lessThan(const QModelIndex &left, const QModelIndex &right) const override
        {
            if (!by_number)
                return QSortFilterProxyModel::lessThan(left, right);
            return left.data().toString().toInt() < right.data().toString().toInt();
        }
    };

    QStandardItemModel model;
    Proxy proxy;
    QTreeView shown;
};

} // namespace treestacks

#endif
