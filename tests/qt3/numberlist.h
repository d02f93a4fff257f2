// SPDX-License-Identifier: MIT
#ifndef TESTS_QT3_NUMBERLIST_H
#define TESTS_QT3_NUMBERLIST_H

#include "qt3/q3ptrlist.h"

#include <QString>
#include <QStringList>

#include <functional>

/// An item that is counted.
struct Number {
    explicit Number(int number) : value(number) { ++alive; }
    Number(const Number &other) : value(other.value) { ++alive; }
    Number &operator=(const Number &) = delete;
    ~Number()
    {
        --alive;
        if (on_deletion)
            on_deletion();
    }

    int value;
    std::function<void()> on_deletion;
    static inline int alive = 0;
};

/// Compares by value, as a derived class may.
class ValueList : public Q3PtrList<Number>
{
protected:
    int compareItems(Item item1, Item item2) override
    {
        return static_cast<Number *>(item1)->value - static_cast<Number *>(item2)->value;
    }
};

/// The values in order, the current one in brackets: "1 [2] 3".
template <typename List>
QString listText(const List &list)
{
    QStringList parts;
    int index = 0;
    for (const Number *number : list)
        parts.append(QString(index++ == list.at() ? "[%1]" : "%1").arg(number->value));
    return parts.join(' ');
}

/// Appends new items with these values.
template <typename List>
void appendNew(List &list, std::initializer_list<int> values)
{
    for (const int value : values)
        list.append(new Number(value));
}

#endif
