// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_REALPOINTER_H
#define TESTS_SUPPORT_REALPOINTER_H

#include <QPoint>

class QWidget;

/// The display's own pointer and keyboard, moved as a hand does: what the window system makes of it reaches the
/// application as events like all others. Each operation runs `xdotool`, lets the application go on meanwhile, and
/// returns when that has ended and the application has taken what came. Points are in the coordinates of the widget.
/// False if a point isn't of the widget alone (another window lies there), or the program failed.
namespace RealPointer {

/// A click with the left button.
bool click(QWidget *widget, const QPoint &at);
/// Two clicks at one place, close enough together.
bool doubleClick(QWidget *widget, const QPoint &at);
/// Pressed at one place, moved step by step to the other, and released.
bool drag(QWidget *from_widget, const QPoint &from, QWidget *to_widget, const QPoint &to);
/// The same out of the application, to a place of the display in its own pixels, whatever the scale.
bool dragOut(QWidget *from_widget, const QPoint &from, const QPoint &to_on_display);
/// A key or a chord, by its names in the X window system: "space", "alt+Up".
bool key(const char *chord);

} // namespace RealPointer

#endif
