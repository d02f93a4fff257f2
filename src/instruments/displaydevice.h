// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_DISPLAYDEVICE_H
#define INSTRUMENTS_DISPLAYDEVICE_H

#include "foundation/taviwidgets_export.h"

class QWidget;

/// The physical screen behind a widget: its size, its resolution, and the gamma table of the video card.
///
/// A monitor is measured with a neutral table, and afterwards gets back the table that it had:
///
/// @code
///     if (DisplayDevice::resetDisplayToNativeSettings(panel, false) != 0)
///         return; // the log says why
///     measure();
///     DisplayDevice::resetDisplayToDefaultSettings(panel, false);
/// @endcode
///
/// **Saved tables.** The first neutral reset of a monitor keeps what its card had; later ones do not overwrite it,
/// and restoring does not forget it. What is given back is the card's own table, entry by entry, whatever its size;
/// it is mapped only when the monitor meanwhile hangs on a card with a table of another size. Nothing is restored by
/// itself when the program ends.
///
/// **Monitors that come and go.** A table belongs to the output that the monitor is plugged into, not to a place on
/// the desktop and not to the part of the card (CRTC) that happens to drive it. Where monitors change places, each
/// gets its own table back; where an output gets another CRTC, the table goes to the new one, and the former keeps
/// what it has. While a monitor is unplugged, its widgets are on another one, and that is left alone unless it was
/// reset itself; the saved table waits, and can be restored as soon as a widget is on the monitor again. Of monitors
/// that show the same picture only one is meant: the primary one, or else the first that the display names.
///
/// **Where it works.** On the X11 platform with RandR 1.3, through a connection of its own to the server that the
/// environment names in `DISPLAY`; a server named by the option `-display` is not known here. On other platforms
/// (Wayland, offscreen) no display is found: the resets fail, and the resolution is 72. A display without gamma
/// control is told from its answers, logged, and left as it was.
///
/// **Errors.** Operations that can fail return 0 for success and -1 for failure; the log then holds the reason, under
/// the unit "displaydevice". A fault of the display server never ends the program.
///
/// **Threads.** The main thread, with a QApplication alive. Each reset, and the first look at a screen's resolution,
/// asks the display server and waits for it.
class TAVIWIDGETS_EXPORT DisplayDevice
{
public:
    DisplayDevice() = delete;

    /// @name The gamma table
    /// @{

    /// The gamma of a monitor with a neutral table: 1.801 for all three channels, whatever @a widget is. Returns 0.
    static int nativeGamma(const QWidget *widget, double &r, double &g, double &b);

    /// Does nothing and returns 0: a neutral table is for one monitor, which only a widget names.
    static int resetDisplayToNativeSettings(bool force);
    /// A widget alone is no answer to whether to force.
    static int resetDisplayToNativeSettings(const QWidget *widget) = delete;
    /// Gives the monitor that shows most of @a widget, which may be hidden, a neutral table: a straight line from 0
    /// to 1 in each channel. Null stands for the primary monitor. What the card had is kept when it is the monitor's
    /// first time; if it cannot be read, nothing is changed.
    ///
    /// Does nothing and returns 0 unless changesAllowed(@a force). -1 if the monitor is not found, has no gamma
    /// control, or refuses, or if memory is out.
    static int resetDisplayToNativeSettings(QWidget *widget, bool force);

    /// resetDisplayToDefaultSettings() for the primary monitor.
    static int resetDisplayToDefaultSettings(bool force);
    /// A widget alone is no answer to whether to force.
    static int resetDisplayToDefaultSettings(const QWidget *widget) = delete;
    /// Gives the monitor that shows most of @a widget the table back that it had before its first neutral reset. Null
    /// stands for the primary monitor. A monitor that was never reset is left alone, which is no error.
    ///
    /// Does nothing and returns 0 unless changesAllowed(@a force). -1 if the monitor is not found or refuses.
    static int resetDisplayToDefaultSettings(QWidget *widget, bool force);

    /// Whether monitors have gamma tables at all: true, always. Only a reset tells whether one of them really has.
    static bool hasVCGTSupport();

    /// @}

    /// @name The gate
    /// @{

    /// From here on resets do nothing, unless forced.
    static void disableChanges();
    /// Resets work, as they do at the start.
    static void enableChanges();
    /// True if @a force, or if changes are enabled.
    static bool changesAllowed(bool force);

    /// @}

    /// @name Size and resolution
    /// @{

    /// The screen that holds most of @a widget, as displaySize() by its number; null stands for the primary one.
    static int displaySize(QWidget *widget, int &width, int &height, double &dpi_x, double &dpi_y, bool use_custom);

    /// The size of a screen in Qt's pixels, and how many of them there are to the inch. A negative @a screen, or one
    /// of 4 or above, counts as 0; one that is not there as the primary one.
    ///
    /// The resolution is, with @a use_custom and a custom x value, the custom one; otherwise that measured from the
    /// physical size that the monitor reports. It is measured once: again only when another screen has taken the
    /// number, or the screen's place or size has changed.
    ///
    /// -1 if the display is not found, which is logged, or if it knows no physical size, as with projectors and many
    /// virtual machines. @a dpi_x and @a dpi_y are usable all the same: 72 then, and in place of a custom y value
    /// that is not above 0. @a width and @a height are 0 only while there is no screen.
    static int displaySize(int screen, int &width, int &height, double &dpi_x, double &dpi_y, bool use_custom);

    /// The resolution that the user has set for a screen, in pixels per inch; an @a x that is not above 0 takes it
    /// back. Screen numbers run from 0 to 3; others are passed over.
    static void setCustomDPI(int screen, double x, double y);

    /// @}
};

#endif
