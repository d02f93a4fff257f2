// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_ITEMTREE_H
#define TESTS_TREEVIEWS_ITEMTREE_H

#include "treeviews/tavitreeitem.h"

#include <QStringList>
#include <QVariant>

/// A row with these texts, listed nowhere.
inline TaviTreeItem *newItem(const QStringList &texts)
{
    QList<QVariant> values;
    for (const QString &text : texts)
        values.append(text);
    return new TaviTreeItem(values, nullptr);
}

/// The same with one text.
inline TaviTreeItem *newItem(const char *text)
{
    return newItem(QStringList(QString::fromUtf8(text)));
}

/// A row with one text at the end of the children of @a parent.
inline TaviTreeItem *addItem(TaviTreeItem *parent, const char *text)
{
    TaviTreeItem *item = newItem(text);
    parent->appendChild(item);
    return item;
}

/// The text of column 0.
inline QString textOf(const TaviTreeItem *item)
{
    return item ? item->data(0, Qt::DisplayRole).toString() : QStringLiteral("(null)");
}

/// The texts of items.
inline QStringList textsOf(const QList<TaviTreeItem *> &items)
{
    QStringList texts;
    for (const TaviTreeItem *item : items)
        texts.append(textOf(item));
    return texts;
}

#endif
