// SPDX-License-Identifier: MIT
#include "tests/support/testdisplay.h"

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

bool hasTwoScreens()
{
    return qEnvironmentVariableIntValue("TAVI_DISPLAY_SCREENS") == 2;
}

ChangedDisplay::ChangedDisplay(const QString &change, const QString &undo)
{
    if (!hasTwoScreens())
        return;
    // The end of the input, which comes with the end of this program too, is what brings back what was.
    keeper_.start(QStringLiteral("sh"), {QStringLiteral("-c"), QStringLiteral("trap '' HUP INT TERM\n"
                                                                              "xrandr %1\n"
                                                                              "echo done\n"
                                                                              "cat >/dev/null\n"
                                                                              "xrandr %2")
                                                                   .arg(change, undo)});
    keeper_.waitForReadyRead();
}

bool ChangedDisplay::undo()
{
    if (keeper_.state() == QProcess::NotRunning)
        return true;
    keeper_.closeWriteChannel();
    return keeper_.waitForFinished() && keeper_.exitCode() == 0;
}

UnpluggedScreen::UnpluggedScreen()
    : available_(availableAreas()), unplugged_(QStringLiteral("--output DUMMY1 --off"),
                                               QStringLiteral("--output DUMMY1 --mode 1280x1024 --right-of DUMMY0"))
{
    if (hasTwoScreens())
        waitFor(available_.mid(0, 1));
}

bool UnpluggedScreen::plugIn()
{
    return unplugged_.undo() && (!hasTwoScreens() || waitFor(available_));
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
