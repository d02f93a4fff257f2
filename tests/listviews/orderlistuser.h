// SPDX-License-Identifier: MIT
#ifndef TESTS_LISTVIEWS_ORDERLISTUSER_H
#define TESTS_LISTVIEWS_ORDERLISTUSER_H

#include "tests/listviews/orderlistfixture.h"
#include "tests/treeviews/orderdialoguser.h"

using OrderListDialog = OrderDialogOf<TaviConfigOrderListView>;
using OrderListUser = OrderDialogUserOf<TaviConfigOrderListView>;

/// Things "A", "B" ... in a dialog; those of @a showing show, in that order.
struct OrderListRun {
    explicit OrderListRun(const QString &showing = "A B C", int count = 6) : things(makeThings(count, showing))
    {
        for (const auto &thing : things)
            all.append(thing.get());
        const QStringList names = showing.split(' ', Qt::SkipEmptyParts);
        for (const QString &name : names)
            shown.append(things[static_cast<std::size_t>(name.at(0).unicode() - 'A')].get());
    }

    /// Runs it; the dialog is cancelled if the user does nothing about it.
    int run(const std::function<void(const OrderListDialog &)> &use, bool fixed = false)
    {
        OrderListUser user(use);
        const int result = order->reorder(all, shown, fixed, registry, section);
        if (!user.seen)
            QTest::qFail("there was no dialog", __FILE__, __LINE__);
        return result;
    }

    QString result() const
    {
        QStringList names;
        for (const TaviConfigOrderItem *thing : shown)
            names << (!thing ? "null" : thing->isItemVisible() ? thing->itemText() : thing->itemText().toLower());
        return names.join(' ');
    }

    std::vector<std::unique_ptr<Thing>> things;
    QList<TaviConfigOrderItem *> all;
    QList<TaviConfigOrderItem *> shown;
    TaviRegistry *registry = nullptr;
    const char *section = nullptr;
    std::unique_ptr<TaviConfigOrder> order = std::make_unique<TaviConfigOrder>("Order of Things", nullptr, "things");
};

#endif
