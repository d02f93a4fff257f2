// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_MENUUSER_H
#define TESTS_SUPPORT_MENUUSER_H

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QtTest>

#include <functional>
#include <utility>

/// @file
/// What a user does with menus, and with dialogs that wait for an answer.

/// Waits in the background for a menu or a modal dialog of this class, and does with it what the test says.
template <typename Widget>
class PopupUser : public QObject
{
public:
    explicit PopupUser(std::function<void(Widget &)> use) : use_(std::move(use)) { startTimer(10); }

    bool seen = false;

protected:
    void timerEvent(QTimerEvent *event) override
    {
        QWidget *at = QApplication::activePopupWidget();
        if (!at)
            at = QApplication::activeModalWidget();
        auto *widget = qobject_cast<Widget *>(at);
        if (!widget || !widget->isVisible())
            return;
        killTimer(event->timerId());
        seen = true;
        use_(*widget);
    }

private:
    const std::function<void(Widget &)> use_;
};

using MenuUser = PopupUser<QMenu>;

/// The entries of a menu as they are read: "Open", "[x] Ticked", "[ ] Not ticked", and "-" for a line.
inline QStringList entries(const QMenu &menu)
{
    QStringList texts;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions) {
        if (action->isSeparator())
            texts << "-";
        else if (action->isCheckable())
            texts << (action->isChecked() ? "[x] " : "[ ] ") + action->text();
        else
            texts << action->text();
    }
    return texts;
}

/// By the keyboard: down to the entry, then Return. Without such an entry the test fails, and the menu is closed.
inline void choose(QMenu &menu, const QString &title)
{
    for (int step = 0; step <= menu.actions().size(); ++step) {
        QTest::keyClick(&menu, Qt::Key_Down);
        if (menu.activeAction() && menu.activeAction()->text() == title) {
            QTest::keyClick(&menu, Qt::Key_Return);
            return;
        }
    }
    menu.close();
    QTest::qFail(qPrintable("no entry " + title), __FILE__, __LINE__);
}

/// By the keyboard.
inline void closeMenu(QMenu &menu)
{
    QTest::keyClick(&menu, Qt::Key_Escape);
}

#endif
