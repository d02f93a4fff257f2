// SPDX-License-Identifier: MIT
//
// Colours, shapes and texts.
#include "foundation/tavigfx.h"

#include <QColor>
#include <QFontMetrics>
#include <QPoint>
#include <QRect>
#include <QtGlobal>

#include <algorithm>
#include <array>
#include <cstdint>
#include <limits>

const QString TaviGfx::ELLIPSIS = QStringLiteral("...");

namespace {

constexpr int lightest_dark = 150;
constexpr int opaque = 255;
constexpr int tail_width = 13;
constexpr int least_text_width = 11;
constexpr int taken_characters = 4;

enum Corner { top_left, bottom_left, top_right, bottom_right };

std::array<QPoint, 4> cornersOf(const QRect &rect)
{
    return {rect.topLeft(), rect.bottomLeft(), rect.topRight(), rect.bottomRight()};
}

/// QPoint's own wraps.
std::int64_t manhattanDistance(const QPoint &a, const QPoint &b)
{
    const auto along = [](std::int64_t p, std::int64_t q) {
        return p > q ? p - q : q - p;
    };
    return along(a.x(), b.x()) + along(a.y(), b.y());
}

/// The tail from @a tip to a corner at @a foot: its feet lie on the two sides that meet there.
QPolygon tail(const QPoint &tip, const QPoint &foot, Corner corner)
{
    const bool top = corner == top_left || corner == top_right;
    const bool left = corner == top_left || corner == bottom_left;
    const QPoint on_side(foot.x(), foot.y() + (top ? tail_width : -tail_width));
    const QPoint on_edge(foot.x() + (left ? tail_width : -tail_width), foot.y());
    QPolygon polygon;
    polygon << tip << on_side << foot << on_edge;
    return polygon;
}

} // namespace

QColor TaviGfx::getSensibleForegroundColour(const QColor &background)
{
    const int lightness =
        static_cast<int>(0.299 * background.red() + 0.5 + 0.587 * background.green() + 0.114 * background.blue());
    return lightness >= lightest_dark ? Qt::black : Qt::white;
}

void TaviGfx::applyTint(QColor &colour, double percent)
{
    // What is not a number fails both comparisons.
    const double share = percent > 0 ? std::min(percent, 100.0) : 0;
    const double white = 1 - share / 100;
    const auto mixed = [white](int channel) {
        return static_cast<int>(channel + (255 - channel) * white);
    };
    colour = QColor(mixed(colour.red()), mixed(colour.green()), mixed(colour.blue()), opaque);
}

QPolygon TaviGfx::getSpeechBubble(const QRect &bubble, const QRect &target)
{
    const QPolygon outline(bubble, false);
    if (bubble.intersects(target))
        return outline;
    const std::array<QPoint, 4> feet = cornersOf(bubble);
    const std::array<QPoint, 4> tips = cornersOf(target);
    std::int64_t nearest = std::numeric_limits<std::int64_t>::max();
    QPolygon tail_outline;
    for (const Corner corner : {top_left, bottom_left, top_right, bottom_right}) {
        for (const QPoint &tip : tips) {
            const std::int64_t distance = manhattanDistance(feet[corner], tip);
            if (distance < nearest) {
                nearest = distance;
                tail_outline = tail(tip, feet[corner], corner);
            }
        }
    }
    return outline.united(tail_outline);
}

TaviGfx::SIZE_HANDLE TaviGfx::onHandle(QRect rect, QPoint point, int size)
{
    if (!rect.adjusted(-size, -size, size, size).contains(point))
        return OUTSIDE;
    const auto isNear = [size](std::int64_t a, std::int64_t b) {
        return (a > b ? a - b : b - a) < size;
    };
    const bool top = isNear(point.y(), rect.top());
    const bool bottom = isNear(point.y(), rect.bottom());
    const bool left = isNear(point.x(), rect.left());
    const bool right = isNear(point.x(), rect.right());
    if (top && left)
        return TOP_LEFT_HANDLE;
    if (top && right)
        return TOP_RIGHT_HANDLE;
    if (bottom && left)
        return BOTTOM_LEFT_HANDLE;
    if (bottom && right)
        return BOTTOM_RIGHT_HANDLE;
    if (top)
        return TOP_HANDLE;
    if (bottom)
        return BOTTOM_HANDLE;
    if (left)
        return LEFT_HANDLE;
    return right ? RIGHT_HANDLE : NO_HANDLE;
}

QString TaviGfx::truncateString(const QString &text, const QFontMetrics &metrics, int width, int mode)
{
    if (width < least_text_width || text.isEmpty())
        return {};
    QString shortened = text;
    while (metrics.horizontalAdvance(shortened) > width) {
        if (shortened.length() < taken_characters)
            return {};
        int from = shortened.length() - taken_characters;
        if (mode == 0)
            from = 0;
        else if (mode == 1)
            from = shortened.length() / 2 - taken_characters / 2;
        shortened.replace(from, taken_characters, ELLIPSIS);
    }
    return shortened;
}
