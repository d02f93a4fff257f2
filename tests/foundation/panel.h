// SPDX-License-Identifier: MIT
#ifndef TESTS_FOUNDATION_PANEL_H
#define TESTS_FOUNDATION_PANEL_H

#include "foundation/taviscreens.h"

#include <QProcess>
#include <QWidget>
#include <QtTest>

/// A desktop's panel along the top, 40 pixels high, for which the window manager keeps room on every screen. Qt must
/// be told to believe the window manager: the test has QT_RELY_ON_NET_WORKAREA_ATOM=1 in its environment.
class Panel : public QWidget
{
public:
    static constexpr int thickness = 40;

    Panel()
    {
        setAttribute(Qt::WA_X11NetWmWindowTypeDock);
        setGeometry(0, 0, 200, thickness);
        QProcess::execute(QStringLiteral("xprop"),
                          {QStringLiteral("-id"), QString::number(winId()), QStringLiteral("-f"),
                           QStringLiteral("_NET_WM_STRUT"), QStringLiteral("32c"), QStringLiteral("-set"),
                           QStringLiteral("_NET_WM_STRUT"), QStringLiteral("0, 0, %1, 0").arg(int(thickness))});
        show();
    }

    ~Panel() override
    {
        hide();
        waitFor(0);
    }

    /// Whether the room is kept by now.
    bool isMinded() const { return waitFor(thickness); }

private:
    static bool waitFor(int top)
    {
        return QTest::qWaitFor([top] { return TaviScreens::availableGeometry(0).top() == top; });
    }
};

#endif
