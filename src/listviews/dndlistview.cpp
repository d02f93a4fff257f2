// SPDX-License-Identifier: MIT
//
// The view and its rules.
#include "listviews/dndlistview.h"

#include <cstdio>

DNDListView::DNDListView(QWidget *parent, const char *name, Qt::WindowFlags flags)
    : TaviListView(false, parent, name, flags), indicator(new DNDIndicator(viewport()))
{
    indicator->hide();
    setResizeMode(LastColumn);
    setSelectionMode(Single);
    TaviListView::setSorting(-1, true);
    setAcceptDrops(true);
    viewport()->setAcceptDrops(true);
    setDragAutoScroll(true);
}

DNDListView::~DNDListView() = default;

bool DNDListView::canDecode(const QDropEvent *)
{
    return false;
}

Q3DragObject *DNDListView::encode()
{
    return nullptr;
}

int DNDListView::decode(Q3ListViewItem *, const QDropEvent *)
{
    return 0;
}

void DNDListView::clearSources(bool) {}

void DNDListView::setMouseClicksEnabled(bool enabled)
{
    mouse_clicks_enabled = enabled;
}

void DNDListView::setAllowed(DNDAllow rule, bool allow)
{
    if (rule >= 0 && rule < rule_count)
        allowed[rule] = allow;
}

bool DNDListView::isAllowed(DNDAllow rule) const
{
    return rule >= 0 && rule < rule_count && allowed[rule];
}

bool DNDListView::isAllowed(const QWidget *source) const
{
    return isAllowed(source == this ? DROP_FROM_SELF : DROP_FROM_OTHERS);
}

void DNDListView::printAllowed() const
{
    std::printf("DNDListView::printAllowed() -- %s -- %s\n", qPrintable(objectName()),
                qPrintable(sprintAllowed(false)));
    std::fflush(stdout);
}

QString DNDListView::sprintAllowed(bool html) const
{
    QString text = QStringLiteral("DROP_FROM_OTHERS:%1 DROP_FROM_SELF:%2 DRAG_SELF_MOVES:%3 DRAG_OTHERS_MOVES:%4 "
                                  "DRAG_OTHERAPPS_MOVES:%5");
    if (html)
        text.replace(QLatin1Char(' '), QLatin1String("<br>"));
    for (const bool allow : allowed)
        text = text.arg(allow ? QLatin1String("true") : QLatin1String("false"));
    return text;
}

void DNDListView::setDropBetweenMode(bool between)
{
    drop_between = between;
    indicator->setDropBetweenMode(between);
    if (between)
        indicator->resize(visibleWidth(), DNDIndicator::line_height);
}

void DNDListView::endDrag()
{
    mouse_pressed = false;
    indicator->hide();
}
