// SPDX-License-Identifier: MIT
#include "tests/support/testdisplay.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

bool hasTwoScreens()
{
    return qEnvironmentVariableIntValue("TAVI_DISPLAY_SCREENS") == 2;
}

UnpluggedScreen::UnpluggedScreen() : available_(availableAreas())
{
    if (!hasTwoScreens())
        return;
    // The end of the input, which comes with the end of this program too, is what brings the screen back.
    keeper_.start(
        QStringLiteral("sh"),
        {QStringLiteral("-c"), QStringLiteral("trap '' HUP INT TERM\n"
                                              "xrandr --output DUMMY1 --off\n"
                                              "cat >/dev/null\n"
                                              "xrandr --output DUMMY1 --mode 1280x1024 --right-of DUMMY0")});
    if (keeper_.waitForStarted())
        waitFor(available_.mid(0, 1));
}

bool UnpluggedScreen::plugIn()
{
    if (keeper_.state() == QProcess::NotRunning)
        return true;
    keeper_.closeWriteChannel();
    return keeper_.waitForFinished() && keeper_.exitCode() == 0 && waitFor(available_);
}

QVector<QRect> UnpluggedScreen::availableAreas()
{
    QVector<QRect> areas;
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens)
        areas.append(screen->availableGeometry());
    return areas;
}

bool UnpluggedScreen::waitFor(const QVector<QRect> &available)
{
    // A screen is there before the window manager has told what of it is free.
    return QTest::qWaitFor([&] { return availableAreas() == available; });
}

bool UnpluggedScreen::isUnplugged() const
{
    return QGuiApplication::screens().size() == 1;
}

bool showWithFrame(QWidget &window)
{
    window.show();
    return QTest::qWaitForWindowActive(&window)
           && QTest::qWaitFor([&] { return window.frameGeometry().height() > window.geometry().height(); });
}
