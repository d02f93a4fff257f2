// SPDX-License-Identifier: MIT
#ifndef TESTS_LISTVIEWS_ORDERLISTFIXTURE_H
#define TESTS_LISTVIEWS_ORDERLISTFIXTURE_H

#include "listviews/taviconfigorderlistview.h"

#include <QtTest>

#include <memory>
#include <vector>

/// A thing "A", "B" ...
class Thing : public TaviConfigOrderItem
{
public:
    explicit Thing(QString name_of_it, bool shows = true) : name(std::move(name_of_it)) { setItemVisible(shows); }
    QString itemText() const override { return name; }
    QPixmap itemPixmap() const override { return pixmap; }

    QString name;
    QPixmap pixmap;
};

/// Things "A" to "Z", of which those of @a showing show.
inline std::vector<std::unique_ptr<Thing>> makeThings(int count, const QString &showing = QString())
{
    const QStringList shown = showing.split(' ', Qt::SkipEmptyParts);
    std::vector<std::unique_ptr<Thing>> things;
    for (int number = 0; number < count; ++number) {
        const QString name = number < 26 ? QString(QChar('A' + number)) : QString::number(number);
        things.push_back(std::make_unique<Thing>(name, shown.contains(name)));
    }
    return things;
}

/// The rows of a list, as "A b C", in lower case those that can't be picked.
inline QString rowTexts(const Q3ListView &list)
{
    QStringList texts;
    for (const Q3ListViewItem *row = list.firstChild(); row; row = row->nextSibling())
        texts << (row->isEnabled() ? row->text(0) : row->text(0).toLower());
    return texts.join(' ');
}

/// The selected rows in the order of rows.
inline QString selectedTexts(const Q3ListView &list)
{
    QStringList texts;
    for (const Q3ListViewItem *row = list.firstChild(); row; row = row->nextSibling()) {
        if (row->isSelected())
            texts << row->text(0);
    }
    return texts.join(' ');
}

inline Q3ListViewItem *rowAt(const Q3ListView &list, int row)
{
    Q3ListViewItem *item = list.firstChild();
    for (; item && row > 0; --row)
        item = item->nextSibling();
    return item;
}

/// The row with this text.
inline Q3ListViewItem *rowOf(const Q3ListView &list, const QString &text)
{
    Q3ListViewItem *item = list.firstChild();
    while (item && item->text(0) != text)
        item = item->nextSibling();
    return item;
}

/// Selects the rows with these texts, "A C", and nothing else.
inline void selectRows(Q3ListView &list, const QString &texts)
{
    list.clearSelection();
    const QStringList names = texts.split(' ', Qt::SkipEmptyParts);
    for (const QString &name : names)
        list.setSelected(rowOf(list, name), true);
}

/// A point in a row of the viewport: 0.0 is its upper edge, 1.0 the lower one.
inline QPoint inRow(const Q3ListView &list, int row, double down = 0.5)
{
    const QRect rect = list.itemRect(rowAt(list, row));
    return {30, rect.top() + int(rect.height() * down)};
}

inline QPoint belowAllRows(const Q3ListView &list)
{
    return inRow(list, list.childCount() - 1) + QPoint(0, 60);
}

#endif
