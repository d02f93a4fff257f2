// SPDX-License-Identifier: MIT
#include "tests/support/realpointer.h"

#include <QApplication>
#include <QProcess>
#include <QWidget>
#include <QtTest>

namespace {

/// Where the window system has it: pixels of the screen, whatever the scale. The first screen alone: there they begin
/// at the same corner.
QPoint onDisplay(const QWidget *widget, const QPoint &at)
{
    const QPointF place = QPointF(widget->mapToGlobal(at)) * widget->devicePixelRatioF();
    return place.toPoint();
}

bool isThere(QWidget *widget, const QPoint &at)
{
    return widget->rect().contains(at) && QApplication::widgetAt(widget->mapToGlobal(at)) == widget;
}

QStringList moveTo(const QPoint &place)
{
    return {"mousemove", QString::number(place.x()), QString::number(place.y())};
}

bool run(const QStringList &arguments)
{
    QProcess xdotool;
    xdotool.start("xdotool", arguments);
    // Its events may open loops of their own in here, a drag for one.
    if (!QTest::qWaitFor([&] { return xdotool.state() == QProcess::NotRunning; }, 30000))
        return false;
    QCoreApplication::processEvents();
    return xdotool.exitStatus() == QProcess::NormalExit && xdotool.exitCode() == 0;
}

bool runDrag(const QPoint &start, const QPoint &end)
{
    // In steps: a drag begins after some pixels, and each place on the way is asked whether it takes the drop. The
    // pauses give a slow build the time to answer.
    QStringList arguments = moveTo(start) + QStringList{"sleep", "0.05", "mousedown", "1", "sleep", "0.1"};
    const int steps = 10;
    for (int step = 1; step <= steps; ++step)
        arguments += moveTo(start + (end - start) * step / steps) + QStringList{"sleep", "0.04"};
    arguments += QStringList{"mousemove_relative",
                             "--",
                             "1",
                             "0",
                             "sleep",
                             "0.1",
                             "mousemove_relative",
                             "--",
                             "-1",
                             "0",
                             "sleep",
                             "0.2",
                             "mouseup",
                             "1",
                             "sleep",
                             "0.2"};
    return run(arguments);
}

} // namespace

bool RealPointer::click(QWidget *widget, const QPoint &at)
{
    return isThere(widget, at) && run(moveTo(onDisplay(widget, at)) + QStringList{"click", "1", "sleep", "0.05"});
}

bool RealPointer::doubleClick(QWidget *widget, const QPoint &at)
{
    return isThere(widget, at)
           && run(moveTo(onDisplay(widget, at))
                  + QStringList{"click", "--repeat", "2", "--delay", "60", "1", "sleep", "0.05"});
}

bool RealPointer::drag(QWidget *from_widget, const QPoint &from, QWidget *to_widget, const QPoint &to)
{
    return isThere(from_widget, from) && isThere(to_widget, to)
           && runDrag(onDisplay(from_widget, from), onDisplay(to_widget, to));
}

bool RealPointer::dragOut(QWidget *from_widget, const QPoint &from, const QPoint &to_on_display)
{
    return isThere(from_widget, from) && runDrag(onDisplay(from_widget, from), to_on_display);
}

bool RealPointer::key(const char *chord)
{
    return run({"key", "--clearmodifiers", chord, "sleep", "0.05"});
}
