// SPDX-License-Identifier: MIT
#ifndef BENCH_TREEWIDGETPEER_H
#define BENCH_TREEWIDGETPEER_H

/// Qt's tree widget, which the lists and trees of this library are measured against.

#include "bench/treetexts.h"
#include "bench/viewbench.h"

#include <QTreeWidget>

namespace treestacks {

inline void prepare(QTreeView *view)
{
    view->setUniformRowHeights(true);
    view->resize(800, 600);
    view->show();
    paint(view);
}

/// The table in a tree widget, each operation in the way that suits the widget best.
class Widget
{
public:
    class Item : public QTreeWidgetItem
    {
    public:
        using QTreeWidgetItem::QTreeWidgetItem;
        bool operator<(const QTreeWidgetItem &other) const override
        {
            if (!by_number)
                return QTreeWidgetItem::operator<(other);
            return text(2).toInt() < other.text(2).toInt();
        }
        static inline bool by_number = false;
    };

    Widget()
    {
        Item::by_number = false;
        shown.setHeaderLabels(header());
        prepare(&shown);
    }

    static QTreeWidgetItem *makeItem(int row)
    {
        return new Item(QStringList{text(row, 0), text(row, 1), text(row, 2), text(row, 3)});
    }
    static void addChild(QTreeWidgetItem *parent, QTreeWidgetItem *child) { parent->addChild(child); }
    static void makeCheckable(QTreeWidgetItem *item)
    {
        item->setFlags(item->flags() | Qt::ItemIsUserCheckable);
        if (item->childCount() > 0)
            item->setFlags(item->flags() | Qt::ItemIsAutoTristate);
        item->setCheckState(0, Qt::Unchecked);
    }
    static void check(QTreeWidgetItem *item, bool on) { item->setCheckState(0, on ? Qt::Checked : Qt::Unchecked); }

    void append(const QList<QTreeWidgetItem *> &items) { shown.addTopLevelItems(items); }
    void append(QTreeWidgetItem *item) { shown.addTopLevelItem(item); }
    void removeEverySecond()
    {
        for (int row = (shown.topLevelItemCount() - 1) / 2 * 2; row >= 0; row -= 2)
            delete shown.takeTopLevelItem(row);
    }
    void takeEverySecond() { removeEverySecond(); }
    void filter(const QString &keyword)
    {
        bool branches = false;
        for (int row = 0; row < shown.topLevelItemCount(); ++row) {
            filter(shown.topLevelItem(row), keyword);
            branches = branches || shown.topLevelItem(row)->childCount() > 0;
        }
        if (branches && !keyword.isEmpty())
            shown.expandAll();
    }
    void sort(int column) { shown.sortItems(column, Qt::AscendingOrder); }
    void sortByNumber()
    {
        Item::by_number = true;
        shown.sortItems(2, Qt::AscendingOrder);
    }
    QTreeView *view() { return &shown; }

    QTreeWidget shown;

private:
    static bool filter(QTreeWidgetItem *item, const QString &keyword)
    {
        bool visible = keyword.isEmpty();
        for (int column = 0; column < columns && !visible; ++column)
            visible = item->text(column).contains(keyword, Qt::CaseInsensitive);
        for (int row = 0; row < item->childCount(); ++row)
            visible = filter(item->child(row), keyword) || visible;
        item->setHidden(!visible);
        return visible;
    }
};

} // namespace treestacks

#endif
