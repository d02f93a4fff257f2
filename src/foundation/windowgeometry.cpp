// SPDX-License-Identifier: MIT
#include "foundation/windowgeometry_p.h"

#include <algorithm>
#include <limits>

namespace {

/// How far before the right or bottom edge a window has to begin on a screen that it is moved to, and how near to the
/// right edge a centred one may come: enough to take hold of.
constexpr int grip = 20;

/// The distance between the nearest pixels of two rectangles, squared; 0 if they overlap.
qint64 gapSquared(const QRect &a, const QRect &b)
{
    const auto gap = [](qint64 a_first, qint64 a_last, qint64 b_first, qint64 b_last) {
        return std::max({qint64(0), b_first - a_last, a_first - b_last});
    };
    const qint64 across = gap(a.left(), a.right(), b.left(), b.right());
    const qint64 down = gap(a.top(), a.bottom(), b.top(), b.bottom());
    return across * across + down * down;
}

/// One direction of restoredTopLeft().
int restoredEdge(int relative, int first, int last)
{
    // Settings may hold any number, also one whose sum is no int.
    const qint64 edge = qint64(first) + relative;
    // The far side sends it back to the near edge, too, not just inside the far one: of a window there one would see
    // a corner. The far border itself, one past the last pixel, is let through: windows may have been stored there.
    return edge < first || edge > qint64(last) + 1 ? first : static_cast<int>(edge);
}

/// One direction of topLeftOnOtherScreen().
int edgeOnOtherScreen(int edge, int from_first, int to_first, int to_last)
{
    const int moved = edge - from_first + to_first;
    return moved < to_first || moved > to_last - (grip - 1) ? to_first : moved;
}

} // namespace

int screenHolding(const QVector<QRect> &screens, const QRect &frame)
{
    // Without an area it still has a place.
    const QRect body(frame.topLeft(), frame.size().expandedTo(QSize(1, 1)));
    int holding = -1;
    int nearest = 0;
    qint64 largest_share = 0;
    qint64 smallest_gap = std::numeric_limits<qint64>::max();
    for (int i = 0; i < screens.size(); ++i) {
        const QRect shared = screens[i].intersected(body);
        const qint64 share = shared.isEmpty() ? 0 : qint64(shared.width()) * shared.height();
        if (share > largest_share) {
            largest_share = share;
            holding = i;
        }
        const qint64 gap = gapSquared(screens[i], body);
        if (gap < smallest_gap) {
            smallest_gap = gap;
            nearest = i;
        }
    }
    return holding < 0 ? nearest : holding;
}

QPoint restoredTopLeft(const QPoint &relative, const QRect &available)
{
    return {restoredEdge(relative.x(), available.left(), available.right()),
            restoredEdge(relative.y(), available.top(), available.bottom())};
}

int restoredHeight(int height, int top, const QRect &current, const QRect &requested)
{
    // The limit is the requested screen's, although the window may have followed its parent to another: a window that
    // fitted where the user put it stays as tall as it was.
    const int excess = top - current.top() + (height - 1) - requested.height();
    return excess > 0 ? height - excess : height;
}

QPoint centredTopLeft(const QRect &area, const QSize &frame, const QRect &available)
{
    int x = area.left() + (area.width() - frame.width()) / 2;
    int y = area.top() + (area.height() - frame.height()) / 2;
    x = std::max(x, available.left());
    y = std::max(y, available.top());
    if (y + frame.height() - 1 > available.bottom())
        y = frame.height() < available.height() ? available.bottom() - (frame.height() - 1) : available.top();
    // Only the right edge keeps a margin, and a frame that oversteps it goes up to the last pixel but one. Height is
    // what windows are short of, so that the bottom keeps none.
    if (x + frame.width() - 1 > available.right() - grip)
        x = frame.width() < available.width() ? available.right() - frame.width() : available.left();
    return {x, y};
}

QPoint topLeftOnOtherScreen(const QPoint &position, const QRect &from, const QRect &to)
{
    return {edgeOnOtherScreen(position.x(), from.left(), to.left(), to.right()),
            edgeOnOtherScreen(position.y(), from.top(), to.top(), to.bottom())};
}
