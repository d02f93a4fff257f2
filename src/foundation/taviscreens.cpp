// SPDX-License-Identifier: MIT
#include "foundation/taviscreens.h"

#include "foundation/windowgeometry_p.h"

#include <QGuiApplication>
#include <QScreen>
#include <QVector>
#include <QWidget>

#include <algorithm>

namespace {

int primaryNumber()
{
    const auto number = QGuiApplication::screens().indexOf(QGuiApplication::primaryScreen());
    return std::max(0, static_cast<int>(number));
}

/// The widget with its frame, in the coordinates of the whole desktop. A part of a window has no frame of its own.
QRect frameOnDesktop(const QWidget *widget)
{
    if (widget->isWindow())
        return widget->frameGeometry();
    return {widget->mapToGlobal(QPoint(0, 0)), widget->size()};
}

} // namespace

int TaviScreens::count()
{
    return static_cast<int>(QGuiApplication::screens().size());
}

QScreen *TaviScreens::screen(int number)
{
    return QGuiApplication::screens().value(number, QGuiApplication::primaryScreen());
}

QRect TaviScreens::availableGeometry(int number)
{
    const QScreen *of_number = screen(number);
    return of_number ? of_number->availableGeometry() : QRect();
}

int TaviScreens::screenNumber(const QWidget *widget)
{
    if (!widget)
        return primaryNumber();
    const QList<QScreen *> screens = QGuiApplication::screens();
    QVector<QRect> geometries;
    for (const QScreen *each : screens)
        geometries.append(each->geometry());
    return screenHolding(geometries, frameOnDesktop(widget));
}
