// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_VIEWFRAME_P_H
#define TREEVIEWS_VIEWFRAME_P_H

class QPalette;
class QStatusBar;
class QString;
class QWidget;

/// @file
/// What surrounds the views of the library: their colours, and the container with the status line.

/// The palette of a view: light blue for what is selected, grey for what is disabled, and all other colours from the
/// application's palette as it is now.
QPalette viewPalette();

/// For a view that got viewPalette() and hears that the application's palette has changed: the text colour follows,
/// and what the application has set on the view itself stays.
void followApplicationPalette(QWidget *view);

/// Puts a view into @a container, above a status line, to which it gives a name for screen readers.
void putAboveStatusBar(QWidget *container, QWidget *view, QStatusBar *status_bar, const QString &status_bar_name);

#endif
