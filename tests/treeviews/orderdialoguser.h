// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_ORDERDIALOGUSER_H
#define TESTS_TREEVIEWS_ORDERDIALOGUSER_H

#include "tests/treeviews/orderfixture.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QPushButton>
#include <QToolButton>

#include <functional>

/// The order dialog on the display, by what is in it: the form with lists of a class.
template <typename List>
struct OrderDialogOf {
    explicit OrderDialogOf(TaviConfigOrderDLG *window_of_it)
        : window(*window_of_it), left(*window.hidden_frame->findChild<List *>()),
          right(*window.showing_frame->findChild<List *>())
    {}

    void press(QToolButton *button) const { QTest::mouseClick(button, Qt::LeftButton); }
    void finish(QDialogButtonBox::StandardButton how) const
    {
        QTest::mouseClick(window.bbox->button(how), Qt::LeftButton);
    }

    TaviConfigOrderDLG &window;
    List &left;
    List &right;
};

/// Waits in the background for the order dialog to be active and does with it what the test says. What is still open
/// afterwards is cancelled.
template <typename List>
class OrderDialogUserOf : public QObject
{
public:
    explicit OrderDialogUserOf(std::function<void(const OrderDialogOf<List> &)> use) : use_(std::move(use))
    {
        startTimer(10);
    }

    bool seen = false;

protected:
    void timerEvent(QTimerEvent *event) override
    {
        const QPointer<TaviConfigOrderDLG> window =
            qobject_cast<TaviConfigOrderDLG *>(QApplication::activeModalWidget());
        if (!window || !window->isActiveWindow() || !QTest::qWaitForWindowExposed(window))
            return;
        killTimer(event->timerId());
        seen = true;
        use_(OrderDialogOf<List>(window));
        if (window && window->isVisible())
            window->reject();
    }

private:
    const std::function<void(const OrderDialogOf<List> &)> use_;
};

using OrderDialog = OrderDialogOf<ConfigOrderTree>;
using OrderDialogUser = OrderDialogUserOf<ConfigOrderTree>;

/// Things "A" to "F" in a dialog; those of @a showing show, in that order.
struct OrderRun {
    explicit OrderRun(const QString &showing = "A B C", int things = 6)
    {
        const QStringList letters = showing.split(' ', Qt::SkipEmptyParts);
        for (int id = 0; id < things; ++id) {
            const bool visible = letters.contains(QString(QChar('A' + id)));
            all.append(orderItem(id, visible, false));
        }
        for (const QString &letter : letters)
            shown.append(orderItem(letter.at(0).unicode() - 'A', true, true));
    }
    ~OrderRun() { qDeleteAll(shown); }
    OrderRun(const OrderRun &) = delete;
    OrderRun &operator=(const OrderRun &) = delete;

    /// Runs it; the dialog is cancelled if the user does nothing about it.
    int run(const std::function<void(const OrderDialog &)> &use, bool fixed = false)
    {
        OrderDialogUser user(use);
        const int result = order.reorder(all, shown, fixed, registry, section);
        if (!user.seen)
            QTest::qFail("there was no dialog", __FILE__, __LINE__);
        return result;
    }

    QString result() const
    {
        QStringList texts;
        for (const ConfigOrderItem *item : shown)
            texts << item->data(0, Qt::DisplayRole).toString();
        return texts.join(' ');
    }

    /// Those of all things that show.
    QString visible() const
    {
        QStringList texts;
        for (const ConfigOrderItem *item : all) {
            if (item->isItemVisible())
                texts << item->data(0, Qt::DisplayRole).toString();
        }
        return texts.join(' ');
    }

    QList<ConfigOrderItem *> all;
    QList<ConfigOrderItem *> shown;
    TaviRegistry *registry = nullptr;
    const char *section = nullptr;
    TaviConfigOrder order{"Order of Things", nullptr, "things"};
};

#endif
