// SPDX-License-Identifier: MIT
#ifndef FOUNDATION_TAVIWIDGETUTIL_H
#define FOUNDATION_TAVIWIDGETUTIL_H

#include "foundation/taviwidgets_export.h"

#include <QMessageBox>
#include <QString>

#include <list>
#include <string>

class QColor;
class QPixmap;
class QRect;
class QSplitter;
class QWidget;
class TaviRegistry;

/// Operations on widgets: window geometry that survives several screens, centring, moving between screens, coloured
/// backgrounds, finding widgets up and down the object tree, and pane widths of a splitter as one text.
///
/// A dialog that comes back where it was left:
///
/// @code
/// SwatchDialog dialog(parent);
/// TaviWidgetUtil::restoreSizeFromRegistry(&dialog, &registry, "swatches", true, true);
/// dialog.exec();
/// TaviWidgetUtil::saveSizeToRegistry(&dialog, &registry, "swatches");
/// @endcode
///
/// **Stored geometry.** Five numbers in one section of a TaviRegistry. "WinX" and "WinY" are the client area's top
/// left corner relative to that of the available area of the window's screen (TaviScreens), so that the window comes
/// back at the same place of its screen however the screens stand by then. "WinWidth" and "WinHeight" are the
/// client's size, not the frame's. "WinScreen" is the screen's number; one that does not exist any more stands for
/// the primary screen. The state of a maximised window is not kept, only its size. Restore before the window is
/// shown: then nobody sees it jump.
///
/// **Failure.** Nothing here reports any. Null widgets, registries, sections and splitters end an operation silently.
///
/// **Threads.** The user interface thread alone.
class TAVIWIDGETS_EXPORT TaviWidgetUtil
{
public:
    TaviWidgetUtil() = delete;

    /// @name Standard keys of a stored geometry
    /// @{
    static constexpr const char *PREFS_WINDOW_WIDTH = "WinWidth";
    static constexpr const char *PREFS_WINDOW_HEIGHT = "WinHeight";
    static constexpr const char *PREFS_WINDOW_X = "WinX";
    static constexpr const char *PREFS_WINDOW_Y = "WinY";
    static constexpr const char *PREFS_WINDOW_SCREEN = "WinScreen";
    /// @}

    /// @name Looks
    /// @{

    /// The picture of a message box icon, 64 by 64 pixels, readable on light and dark backgrounds; null for any value
    /// but Question, Information, Warning and Critical. A new object, owned by the caller: callers hold it for as
    /// long as their label does, and a null pointer tells that there is no icon.
    static QPixmap *getMessageBoxIconPixmap(QMessageBox::Icon icon);

    /// Fills the background of @a widget with a colour.
    ///
    /// The widget's palette is replaced by a default one with @a colour at the widget's background role, in all
    /// groups. A child gets the colour with this @a alpha, 0 (clear) to 1. A widget without a parent gets the full
    /// colour, and its window this opacity, because the window system can only fade a window as a whole. Values out
    /// of range count as the nearest end, and what is not a number as 0.
    static void setBackgroundProperties(QWidget *widget, QColor colour, double alpha);
    /// @}

    /// @name Moving windows
    /// @{

    /// Moves @a widget to the screen that holds @a parent; false as below, or if @a parent is null. A hidden parent
    /// that is no QDialog is shown; false as well if @a widget is deleted by what happens then.
    static bool moveToScreen(QWidget *widget, QWidget *parent);
    /// Moves @a widget to the screen with this number, at the same place relative to its available area. A direction
    /// in which it would begin before that area, or in the last 19 pixels of it or beyond, goes to the left or top
    /// edge. A hidden widget that is no QDialog is shown, also if it is there already, because the window system may
    /// place a window anew when it appears.
    ///
    /// True if it moved; false if it is there already, there is one screen only or none of this number.
    static bool moveToScreen(QWidget *widget, int screen);

    /// Centres the frame of @a widget over that of the window @a parent, or on the widget's own screen if @a parent
    /// is null. It stays on the widget's screen: one that would leave it at the left, top or bottom stands at that
    /// edge, and one that would come nearer than 20 pixels to the right edge stands one pixel from that. What is as
    /// wide or high as the screen or more stands at the left or top edge. The frame of a window that was never shown
    /// is not known yet and counts as none.
    static void centerPlaceWidget(QWidget *widget, const QWidget *parent);
    /// @}

    /// @name Restoring and saving geometry
    /// @{

    /// Places @a widget at a stored geometry.
    ///
    /// @param widget a window
    /// @param x, y the client's corner relative to the available area of @a screen. A direction in which that is off
    ///        the area, by more than one pixel at the far side, goes to the left or top edge.
    /// @param width, height the client's size; raised to the widget's minimumSizeHint(), each by itself
    /// @param restore false: nothing is done
    /// @param followParent with a parent and at least two screens, the widget goes to the parent's screen, as
    ///        moveToScreen() does
    /// @param screen number of the screen
    ///
    /// The height is cut so that the bottom lies at most one pixel past the height of the available area of
    /// @a screen, also on the parent's screen; the width is never cut. A visible window whose frame would reach above
    /// the available area is moved down.
    static void restoreSize(QWidget *widget, int x, int y, int width, int height, bool restore, bool followParent,
                            int screen);
    /// The same with a rectangle of saveSizeToRect(), always on screen 0: a rectangle tells no screen.
    static void restoreSize(QWidget *widget, const QRect &rect, bool restore, bool followParent);

    /// Places @a widget at the geometry stored in @a section under the standard keys, as restoreSize() does. Where
    /// there is no x, nothing was ever stored: then the widget is centred on its screen. With @a restore false
    /// nothing is read.
    static void restoreSizeFromRegistry(QWidget *widget, TaviRegistry *registry, const char *section, bool restore,
                                        bool followParent);
    static void restoreSizeFromRegistry(QWidget *widget, TaviRegistry *registry, const std::string &section,
                                        bool restore, bool followParent);
    /// The same under keys of the caller's own. A null @a screenKey means screen 0.
    static void restoreSizeFromRegistry(QWidget *widget, TaviRegistry *registry, const char *section,
                                        const char *xKey, const char *yKey, const char *widthKey,
                                        const char *heightKey, bool restore, bool followParent,
                                        const char *screenKey);

    /// Stores the geometry of @a widget in @a section under the standard keys.
    static void saveSizeToRegistry(QWidget *widget, TaviRegistry *registry, const char *section);
    static void saveSizeToRegistry(QWidget *widget, TaviRegistry *registry, const std::string &section);
    /// The same under keys of the caller's own. A null @a screenKey stores no screen.
    static void saveSizeToRegistry(QWidget *widget, TaviRegistry *registry, const char *section, const char *xKey,
                                   const char *yKey, const char *widthKey, const char *heightKey,
                                   const char *screenKey);

    /// Puts the client's rectangle, relative to the available area of the widget's screen, into @a rect, which stays
    /// as it is for a null widget.
    static void saveSizeToRect(QWidget *widget, QRect &rect);
    /// @}

    /// @name Up and down the object tree
    /// @{

    /// The last widget of the parent chain, beyond windows too; @a widget itself if it has no parent. Ends before it
    /// would come back to @a widget. O(depth).
    static QWidget *getTopParentWidget(QWidget *widget);

    /// Appends the windows among the descendants of @a parent to @a out, each before its own descendants, children in
    /// their order.
    ///
    /// @param parent where to begin; not looked at itself
    /// @param out what is found is appended
    /// @param visibleOnly hidden windows are passed over, but not the windows below them
    /// @param active if not null, is set to the active window if that is among the found ones, and left alone if not
    /// @return how many were appended
    ///
    /// O(number of descendants).
    static int getTopLevelChildren(QWidget *parent, std::list<QWidget *> &out, bool visibleOnly, QWidget **active);
    /// @}

    /// @name Pane widths of a splitter
    /// @{

    /// The sizes of the panes as decimal numbers, each with a blank behind it: "120 300 ". Empty without panes, null
    /// for a null splitter. A hidden pane has 0.
    static QString getSplitterWidthsString(QSplitter *splitter);

    /// Applies sizes as getSplitterWidthsString() gives them. A 0 for a pane that is hidden now becomes 50, so that
    /// it has a width once it is shown. A text with fewer numbers than there are panes gives all of them the mean of
    /// its numbers, rounded down, or 50 where their sum is not positive. What is no number counts as 0. An empty text
    /// does nothing.
    static void applySplitterWidthsString(QSplitter *splitter, const QString &text);
    /// @}

    /// @name Tool tips
    /// The application's switch for tool tips that widgets draw themselves; true at start. Qt's own tool tips do not
    /// ask it.
    /// @{

    /// Whether tool tips are wanted.
    static bool isToolTipEnabled() { return tooltip_enabled; }
    /// Turns tool tips on or off.
    static void setToolTipEnabled(bool enabled) { tooltip_enabled = enabled; }
    /// @}

private:
    static bool tooltip_enabled;
};

#endif
