// SPDX-License-Identifier: MIT
#include "resources/drawings.h"

#include <QPainter>

void drawSearchIcon(QPainter &painter)
{
    // Of a middle lightness, as the icons of message boxes: seen on light windows and on dark ones.
    QPen pen(QColor(0x2f, 0x86, 0xdc), 8.5);
    pen.setCapStyle(Qt::RoundCap);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(pen);
    painter.drawEllipse(QRectF(9, 9, 32, 32));
    pen.setWidthF(10.5);
    painter.setPen(pen);
    painter.drawLine(QPointF(39, 39), QPointF(54, 54));
}
