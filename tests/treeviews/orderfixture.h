// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_ORDERFIXTURE_H
#define TESTS_TREEVIEWS_ORDERFIXTURE_H

#include "treeviews/taviconfigorder.h"

#include <QtTest>

/// An entry "A" for 0, "B" for 1, ...
inline ConfigOrderItem *orderItem(int id, bool visible, bool in_show_list)
{
    auto *item = new ConfigOrderItem;
    item->setData(0, QString(QChar('A' + id)), Qt::DisplayRole);
    item->setItemID(id);
    item->setItemInShowList(in_show_list);
    item->setItemVisible(visible);
    return item;
}

/// The rows of a list, as "A b C", in lower case those that can't be picked.
inline QString rowTexts(const TaviTreeModel &model)
{
    QStringList texts;
    const QList<TaviTreeItem *> items = model.allItems();
    for (const TaviTreeItem *item : items) {
        const QString text = item->data(0, Qt::DisplayRole).toString();
        texts << (item->isEnabled() ? text : text.toLower());
    }
    return texts.join(' ');
}

inline QString rowTexts(const ConfigOrderTree &tree)
{
    return rowTexts(*tree.sourceModel());
}

/// The selected rows in the order of rows.
inline QString selectedTexts(const ConfigOrderTree &tree)
{
    QStringList texts;
    const QModelIndexList rows = tree.selectedRows(0);
    for (const QModelIndex &row : rows)
        texts << row.data().toString();
    return texts.join(' ');
}

/// Selects the rows with these numbers and nothing else.
inline void selectRows(ConfigOrderTree &tree, const QVector<int> &rows)
{
    tree.clearSelection();
    for (const int row : rows)
        tree.selectItem(tree.sourceModel()->itemAt(row));
}

inline QPoint centreOfRow(const ConfigOrderTree &tree, int row)
{
    return tree.visualRect(tree.model()->index(row, 0)).center();
}

#endif
