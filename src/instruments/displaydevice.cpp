// SPDX-License-Identifier: MIT
#include "instruments/displaydevice.h"

#include "foundation/taviscreens.h"
#include "instruments/displayservices_p.h"
#include "instruments/gammatable_p.h"
#include "tavilib/tavialloc_p.h"
#include "tavilib/tavilog.h"

#include <QPointer>
#include <QScreen>

#include <array>
#include <cmath>
#include <cstdlib>
#include <map>
#include <memory>
#include <utility>

namespace {

constexpr const char *unit = "displaydevice";
constexpr double fallback_dpi = 72.0;
constexpr double mm_per_inch = 25.4;
constexpr int screen_count = 4; ///< With a resolution of their own.

struct Freed {
    void operator()(GammaSamples *samples) const { std::free(samples); }
};

/// What a monitor had before its first neutral reset.
struct SavedTable {
    std::unique_ptr<GammaSamples, Freed> samples; ///< What the services show of it; null if nothing was saved.
    CardTable card;                               ///< The card's own, to be given back as it was.
};

/// What a resolution was measured on.
struct MeasuredScreen {
    QPointer<QScreen> screen;
    QRect geometry;
};

/// Shared by all, as a display is; the main thread's.
struct State {
    bool changes_allowed = true;
    std::map<DisplayServices::DisplayId, SavedTable> monitor_gammas;
    std::array<double, screen_count> monitor_custom_dpi_x{};
    std::array<double, screen_count> monitor_custom_dpi_y{};
    std::array<double, screen_count> monitor_cached_dpi_x{};
    std::array<double, screen_count> monitor_cached_dpi_y{};
    std::array<MeasuredScreen, screen_count> measured_screens;
};

State &state()
{
    static State only;
    return only;
}

int fail(const char *function, const char *text)
{
    TaviLogMessage(unit, function, TAVILOG_PLUGIN, TAVILOG_FORM_TEXT, 1, "%s", text);
    return -1;
}

int fail(const char *function, const char *what, int code)
{
    TaviLogMessage(unit, function, TAVILOG_PLUGIN, TAVILOG_FORM_TEXT, 1, "Error %d while trying to %s", code, what);
    return -1;
}

bool isUsable(double dpi)
{
    return std::isfinite(dpi) && dpi > 0.0;
}

std::size_t stateIndex(int screen)
{
    return screen < 0 || screen >= screen_count ? 0 : static_cast<std::size_t>(screen);
}

/// The display that shows the middle of the screen.
bool findDisplay(const QScreen *screen, const char *function, DisplayServices::DisplayId &display)
{
    if (screen) {
        // Qt scales a screen's size and leaves its corner where the window system has it.
        const QRect scaled = screen->geometry();
        const QPoint centre = QRect(scaled.topLeft(), scaled.size() * screen->devicePixelRatio()).center();
        if (DisplayServices::displayAtPoint(centre.x(), centre.y(), display) == DisplayServices::Done)
            return true;
    }
    fail(function, "Cannot get display id");
    return false;
}

bool findDisplay(const QWidget *widget, const char *function, DisplayServices::DisplayId &display)
{
    return findDisplay(TaviScreens::screen(TaviScreens::screenNumber(widget)), function, display);
}

} // namespace

int DisplayDevice::nativeGamma(const QWidget *, double &r, double &g, double &b)
{
    r = g = b = 1.801;
    return 0;
}

int DisplayDevice::resetDisplayToNativeSettings(bool)
{
    return 0;
}

int DisplayDevice::resetDisplayToNativeSettings(QWidget *widget, bool force)
{
    constexpr const char *function = "resetDisplayToNativeSettings";
    if (!changesAllowed(force))
        return 0;
    DisplayServices::DisplayId display = 0;
    if (!findDisplay(widget, function, display))
        return -1;
    SavedTable &saved = state().monitor_gammas[display];
    if (!saved.samples) {
        SavedTable table{decltype(SavedTable::samples)(TaviAllocRecord<GammaSamples>()), {}};
        if (!table.samples)
            return fail(function, "Cannot allocate memory");
        table.samples->count = GammaSamples::capacity;
        const int error = DisplayServices::readTable(display, *table.samples, table.card);
        if (error != DisplayServices::Done)
            return fail(function, "retrieve video card lookup table", error);
        saved = std::move(table);
    }
    const int error = DisplayServices::writeLinearRamp(display);
    return error == DisplayServices::Done ? 0 : fail(function, "set a linear video card lookup table", error);
}

int DisplayDevice::resetDisplayToDefaultSettings(bool force)
{
    return resetDisplayToDefaultSettings(nullptr, force);
}

int DisplayDevice::resetDisplayToDefaultSettings(QWidget *widget, bool force)
{
    constexpr const char *function = "resetDisplayToDefaultSettings";
    if (!changesAllowed(force))
        return 0;
    DisplayServices::DisplayId display = 0;
    if (!findDisplay(widget, function, display))
        return -1;
    const SavedTable &saved = state().monitor_gammas[display];
    if (!saved.samples)
        return 0;
    const int error = DisplayServices::writeTable(display, *saved.samples, saved.card);
    return error == DisplayServices::Done ? 0 : fail(function, "restore video card lookup table", error);
}

bool DisplayDevice::hasVCGTSupport()
{
    return true;
}

void DisplayDevice::disableChanges()
{
    state().changes_allowed = false;
}

void DisplayDevice::enableChanges()
{
    state().changes_allowed = true;
}

bool DisplayDevice::changesAllowed(bool force)
{
    return force || state().changes_allowed;
}

int DisplayDevice::displaySize(QWidget *widget, int &width, int &height, double &dpi_x, double &dpi_y,
                               bool use_custom)
{
    return displaySize(TaviScreens::screenNumber(widget), width, height, dpi_x, dpi_y, use_custom);
}

int DisplayDevice::displaySize(int screen, int &width, int &height, double &dpi_x, double &dpi_y, bool use_custom)
{
    const std::size_t index = stateIndex(screen);
    QScreen *shown_by = TaviScreens::screen(static_cast<int>(index));
    const QRect geometry = shown_by ? shown_by->geometry() : QRect();
    width = geometry.width();
    height = geometry.height();

    State &all = state();
    if (use_custom && isUsable(all.monitor_custom_dpi_x[index])) {
        dpi_x = all.monitor_custom_dpi_x[index];
        dpi_y = isUsable(all.monitor_custom_dpi_y[index]) ? all.monitor_custom_dpi_y[index] : fallback_dpi;
        return 0;
    }
    MeasuredScreen &measured = all.measured_screens[index];
    if (all.monitor_cached_dpi_x[index] > 0.0 && measured.screen == shown_by && measured.geometry == geometry) {
        dpi_x = all.monitor_cached_dpi_x[index];
        dpi_y = all.monitor_cached_dpi_y[index];
        return 0;
    }

    dpi_x = dpi_y = fallback_dpi;
    DisplayServices::DisplayId display = 0;
    if (!findDisplay(shown_by, "displaySize", display))
        return -1;
    double mm_width = 0.0;
    double mm_height = 0.0;
    if (DisplayServices::physicalSize(display, mm_width, mm_height) != DisplayServices::Done || !(mm_width > 0.0)
        || !(mm_height > 0.0))
        return -1;
    dpi_x = width / mm_width * mm_per_inch;
    dpi_y = height / mm_height * mm_per_inch;
    all.monitor_cached_dpi_x[index] = dpi_x;
    all.monitor_cached_dpi_y[index] = dpi_y;
    measured = {shown_by, geometry};
    return 0;
}

void DisplayDevice::setCustomDPI(int screen, double x, double y)
{
    if (screen < 0 || screen >= screen_count)
        return;
    const auto index = static_cast<std::size_t>(screen);
    state().monitor_custom_dpi_x[index] = x;
    state().monitor_custom_dpi_y[index] = y;
}
