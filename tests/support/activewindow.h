// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_ACTIVEWINDOW_H
#define TESTS_SUPPORT_ACTIVEWINDOW_H

#include <QtTest>

/// Shows a widget that is a window, and gives it the keyboard. False if the window manager did not let it have that.
inline bool showActive(QWidget *window)
{
    window->show();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window))
        return false;
    window->setFocus();
    QCoreApplication::processEvents();
    return true;
}

#endif
