// SPDX-License-Identifier: MIT
#ifndef FOUNDATION_TAVISCREENS_H
#define FOUNDATION_TAVISCREENS_H

#include "foundation/taviwidgets_export.h"

#include <QRect>

class QScreen;
class QWidget;

/// @file
/// Screens by number.

/// Screens by number, as settings keep them.
///
/// The number of a screen is its index in `QGuiApplication::screens()`. It holds until a monitor is plugged in or
/// out; a number that was stored may therefore name no screen any more, and then stands for the primary one.
///
/// **Threads.** The main thread, with a QGuiApplication alive. Each operation costs O(number of screens).
namespace TaviScreens {

/// How many screens there are.
TAVIWIDGETS_EXPORT int count();

/// The screen of this number; the primary screen for a number that does not exist. Null only while there is no screen
/// at all. Owned by Qt.
TAVIWIDGETS_EXPORT QScreen *screen(int number);

/// What of a screen is free for windows, without panels and docks, in the coordinates of the whole desktop; the
/// primary screen's for a number that does not exist. A null rectangle only while there is no screen at all.
TAVIWIDGETS_EXPORT QRect availableGeometry(int number);

/// The number of the screen that holds most of @a widget with its frame; of equal shares the lowest number. A widget
/// that touches no screen belongs to the nearest one. Null gives the primary screen.
///
/// Only the geometry is asked, so that a hidden widget has a screen too: the one where it would appear. The screen
/// that the window system has attached to a window may lag behind a move that was just made.
TAVIWIDGETS_EXPORT int screenNumber(const QWidget *widget);

} // namespace TaviScreens

#endif
