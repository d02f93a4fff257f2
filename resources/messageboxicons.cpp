// SPDX-License-Identifier: MIT
#include "resources/drawings.h"

#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>

#include <cmath>

namespace {

// All of a middle lightness: each stands out at 3 to 1 or more from a light window, from a dark one, and from its
// sign.
const QColor question_violet(0x8f, 0x70, 0xe8);
const QColor information_blue(0x2f, 0x86, 0xdc);
const QColor warning_orange(0xcc, 0x6f, 0x00);
const QColor critical_red(0xe5, 0x4a, 0x4a);

constexpr double stroke_width = 6.5;

/// A filled shape with rounded corners.
void fillRounded(QPainter &painter, const QPolygonF &corners, const QColor &colour, double roundness)
{
    QPen pen(colour, roundness);
    pen.setJoinStyle(Qt::RoundJoin);
    painter.setPen(pen);
    painter.setBrush(colour);
    painter.drawPolygon(corners);
}

void strokeWhite(QPainter &painter, const QPainterPath &path)
{
    QPen pen(Qt::white, stroke_width);
    pen.setCapStyle(Qt::RoundCap);
    pen.setJoinStyle(Qt::RoundJoin);
    painter.setPen(pen);
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(path);
}

void dotWhite(QPainter &painter, double x, double y)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(Qt::white);
    painter.drawEllipse(QPointF(x, y), stroke_width * 0.62, stroke_width * 0.62);
}

} // namespace

void drawQuestionIcon(QPainter &painter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(question_violet);
    painter.drawRoundedRect(QRectF(4, 4, 56, 56), 13, 13);

    QPainterPath hook;
    hook.arcMoveTo(QRectF(22, 14, 20, 20), 175);
    hook.arcTo(QRectF(22, 14, 20, 20), 175, -220);
    hook.cubicTo(QPointF(34.5, 34), QPointF(32, 34.5), QPointF(32, 40));
    strokeWhite(painter, hook);
    dotWhite(painter, 32, 50);
}

void drawInformationIcon(QPainter &painter)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(information_blue);
    painter.drawEllipse(QRectF(3, 3, 58, 58));

    QPainterPath stem(QPointF(32, 29));
    stem.lineTo(32, 47.5);
    strokeWhite(painter, stem);
    dotWhite(painter, 32, 17.5);
}

void drawWarningIcon(QPainter &painter)
{
    fillRounded(painter, QPolygonF({{32, 9}, {57, 55}, {7, 55}}), warning_orange, 9);

    QPainterPath stem(QPointF(32, 24));
    stem.lineTo(32, 38);
    strokeWhite(painter, stem);
    dotWhite(painter, 32, 48.5);
}

void drawCriticalIcon(QPainter &painter)
{
    QPolygonF octagon;
    for (int i = 0; i < 8; ++i) {
        const double angle = (2 * i + 1) * 3.14159265358979 / 8.0;
        octagon << QPointF(32 + 28.5 * std::cos(angle), 32 + 28.5 * std::sin(angle));
    }
    fillRounded(painter, octagon, critical_red, 5);

    QPainterPath cross(QPointF(22, 22));
    cross.lineTo(42, 42);
    cross.moveTo(42, 22);
    cross.lineTo(22, 42);
    strokeWhite(painter, cross);
}
