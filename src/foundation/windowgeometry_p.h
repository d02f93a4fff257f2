// SPDX-License-Identifier: MIT
#ifndef FOUNDATION_WINDOWGEOMETRY_P_H
#define FOUNDATION_WINDOWGEOMETRY_P_H

#include "foundation/taviwidgets_export.h"

#include <QPoint>
#include <QRect>
#include <QSize>
#include <QVector>

/// @file
/// Where windows go: the arithmetic behind TaviWidgetUtil and TaviScreens, without a window or a screen.
///
/// All rectangles are in the coordinates of the whole desktop; "available" is the part of a screen that is free for
/// windows. Right and bottom edges are inclusive, as QRect has them. Any int is good as a stored position; everything
/// else keeps to what a desktop can have (2^24 either way).

/// The index of the rectangle that shares most area with @a frame, the first of equals; if none shares any, of the
/// nearest one, again the first of equals. A frame without an area counts as its corner. 0 for an empty list.
TAVIWIDGETS_EXPORT int screenHolding(const QVector<QRect> &screens, const QRect &frame);

/// Where a window appears that was stored at @a relative to the top left corner of a screen's available area. A
/// direction in which that lies off the screen, on either side, falls back to the left or top edge; one pixel past
/// the last still counts as on the screen.
TAVIWIDGETS_EXPORT QPoint restoredTopLeft(const QPoint &relative, const QRect &available);

/// The height that a restored window keeps.
/// @param height what it has
/// @param top where restoredTopLeft() has put it
/// @param current the available area of the screen that it is on by now
/// @param requested the available area of the screen that it was restored to
///
/// What reaches further than one pixel past the height of @a requested, counted from the top of @a current, is cut
/// off. Zero or less if nothing is left.
TAVIWIDGETS_EXPORT int restoredHeight(int height, int top, const QRect &current, const QRect &requested);

/// Where a window with a frame of this size appears when it is centred over @a area on a screen. It is kept on the
/// screen: left and top edge first of all, then the bottom edge, then the right edge. One that would come nearer than
/// 20 pixels to the right edge stands one pixel from it. One that is as large as the screen or larger stands at the
/// left or top edge.
TAVIWIDGETS_EXPORT QPoint centredTopLeft(const QRect &area, const QSize &frame, const QRect &available);

/// Where a window at @a position of the screen @a from appears on the screen @a to: at the same place of its
/// available area, or at the left or top edge in a direction in which it would begin before that area, or in its last
/// 19 pixels or beyond.
TAVIWIDGETS_EXPORT QPoint topLeftOnOtherScreen(const QPoint &position, const QRect &from, const QRect &to);

#endif
