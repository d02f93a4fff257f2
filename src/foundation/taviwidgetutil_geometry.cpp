// SPDX-License-Identifier: MIT
#include "foundation/taviscreens.h"
#include "foundation/taviwidgetutil.h"
#include "foundation/windowgeometry_p.h"
#include "taviapp/taviregistry.h"

#include <QPointer>
#include <QWidget>

#include <limits>

namespace {

/// A stored number, whatever has become of it, as an int: one out of range is the nearest end.
int storedInt(TaviRegistry &registry, const char *section, const char *key)
{
    const long value = registry.getlong(section, key);
    return static_cast<int>(qBound<long>(std::numeric_limits<int>::min(), value, std::numeric_limits<int>::max()));
}

} // namespace

void TaviWidgetUtil::restoreSize(QWidget *widget, int x, int y, int width, int height, bool restore,
                                 bool followParent, int screen)
{
    if (!widget || !restore)
        return;
    const QRect requested = TaviScreens::availableGeometry(screen);
    const QPoint top_left = restoredTopLeft(QPoint(x, y), requested);
    // What a widget would make of it in the end, and small enough to be added to a position.
    const QSize size(qBound(0, width, QWIDGETSIZE_MAX), qBound(0, height, QWIDGETSIZE_MAX));
    widget->setGeometry(QRect(top_left, size));
    // The client stands there; of a window with a frame, the title bar must not end up above the screen.
    if (widget->y() < requested.top())
        widget->move(widget->x(), requested.top());
    widget->resize(size.expandedTo(widget->minimumSizeHint()));
    if (followParent && widget->parentWidget() && TaviScreens::count() >= 2) {
        const QPointer<QWidget> alive(widget);
        moveToScreen(widget, widget->parentWidget());
        if (!alive)
            return;
    }

    const QRect current = TaviScreens::availableGeometry(TaviScreens::screenNumber(widget));
    const int kept = restoredHeight(widget->height(), top_left.y(), current, requested);
    if (kept != widget->height())
        widget->resize(widget->width(), kept);
}

void TaviWidgetUtil::restoreSize(QWidget *widget, const QRect &rect, bool restore, bool followParent)
{
    restoreSize(widget, rect.left(), rect.top(), rect.width(), rect.height(), restore, followParent, 0);
}

void TaviWidgetUtil::restoreSizeFromRegistry(QWidget *widget, TaviRegistry *registry, const char *section,
                                             bool restore, bool followParent)
{
    restoreSizeFromRegistry(widget, registry, section, PREFS_WINDOW_X, PREFS_WINDOW_Y, PREFS_WINDOW_WIDTH,
                            PREFS_WINDOW_HEIGHT, restore, followParent, PREFS_WINDOW_SCREEN);
}

void TaviWidgetUtil::restoreSizeFromRegistry(QWidget *widget, TaviRegistry *registry, const std::string &section,
                                             bool restore, bool followParent)
{
    restoreSizeFromRegistry(widget, registry, section.c_str(), restore, followParent);
}

void TaviWidgetUtil::restoreSizeFromRegistry(QWidget *widget, TaviRegistry *registry, const char *section,
                                             const char *xKey, const char *yKey, const char *widthKey,
                                             const char *heightKey, bool restore, bool followParent,
                                             const char *screenKey)
{
    if (!widget || !registry || !section || !restore)
        return;
    if (!registry->exists(section, xKey)) {
        centerPlaceWidget(widget, nullptr);
        return;
    }
    const int x = storedInt(*registry, section, xKey);
    const int y = storedInt(*registry, section, yKey);
    const int width = storedInt(*registry, section, widthKey);
    const int height = storedInt(*registry, section, heightKey);
    const int screen = screenKey ? storedInt(*registry, section, screenKey) : 0;
    restoreSize(widget, x, y, width, height, restore, followParent, screen);
}

void TaviWidgetUtil::saveSizeToRegistry(QWidget *widget, TaviRegistry *registry, const char *section)
{
    saveSizeToRegistry(widget, registry, section, PREFS_WINDOW_X, PREFS_WINDOW_Y, PREFS_WINDOW_WIDTH,
                       PREFS_WINDOW_HEIGHT, PREFS_WINDOW_SCREEN);
}

void TaviWidgetUtil::saveSizeToRegistry(QWidget *widget, TaviRegistry *registry, const std::string &section)
{
    saveSizeToRegistry(widget, registry, section.c_str());
}

void TaviWidgetUtil::saveSizeToRegistry(QWidget *widget, TaviRegistry *registry, const char *section,
                                        const char *xKey, const char *yKey, const char *widthKey,
                                        const char *heightKey, const char *screenKey)
{
    if (!widget || !registry || !section)
        return;
    QRect rect;
    saveSizeToRect(widget, rect);
    registry->putlong(section, xKey, rect.left());
    registry->putlong(section, yKey, rect.top());
    registry->putlong(section, widthKey, rect.width());
    registry->putlong(section, heightKey, rect.height());
    if (screenKey)
        registry->putlong(section, screenKey, TaviScreens::screenNumber(widget));
}

void TaviWidgetUtil::saveSizeToRect(QWidget *widget, QRect &rect)
{
    if (!widget)
        return;
    const QRect available = TaviScreens::availableGeometry(TaviScreens::screenNumber(widget));
    rect = widget->geometry().translated(-available.topLeft());
}
