// SPDX-License-Identifier: MIT
#include "listviews/dndlistview.h"

#include <QBitmap>
#include <QPainter>

DNDIndicator::DNDIndicator(QWidget *parent)
    : QWidget(parent), triangle(3), pen(QBrush(Qt::color1), 0, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin),
      brush(Qt::color1, Qt::SolidPattern)
{
    setObjectName(QStringLiteral("DNDindicator"));
    setAutoFillBackground(true);
    QPalette red = palette();
    red.setBrush(backgroundRole(), QBrush(Qt::red, Qt::SolidPattern));
    setPalette(red);
    // The mouse, and a drag, are over the view behind it.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    resize(line_height, line_height);
    setMinimumSize(line_height, line_height);
    DNDIndicator::updateMask();
}

DNDIndicator::~DNDIndicator() = default;

void DNDIndicator::setDropBetweenMode(bool between)
{
    if (between == drop_between)
        return;
    drop_between = between;
    updateMask();
}

void DNDIndicator::updateMask()
{
    const int w = width() - 1;
    const int h = height() - 1;
    QBitmap mask(size());
    mask.fill(Qt::color0);
    QPainter painter(&mask);
    painter.setPen(pen);
    painter.setBrush(brush);
    if (drop_between) {
        const auto draw = [&] {
            painter.drawConvexPolygon(triangle);
            painter.drawPoints(triangle); // an outline may lack the pixel where it closes
        };
        triangle.setPoints(3, 0, 0, 5, 5, 0, h);
        draw();
        triangle.setPoints(3, w, 0, w - 5, 5, w, h);
        draw();
    } else {
        for (const int inset : {0, 1}) {
            const QPoint left[] = {{7, inset}, {inset, inset}, {inset, h - inset}, {7, h - inset}};
            const QPoint right[] = {{w - 8, inset}, {w - inset, inset}, {w - inset, h - inset}, {w - 8, h - inset}};
            painter.drawPolyline(left, 4);
            painter.drawPolyline(right, 4);
        }
    }
    painter.end();
    setMask(mask);
}

void DNDIndicator::resizeEvent(QResizeEvent *event)
{
    updateMask();
    QWidget::resizeEvent(event);
}
