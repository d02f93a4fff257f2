// SPDX-License-Identifier: MIT
#include "treeviews/statusline_p.h"

#include <QStyleOption>
#include <QStylePainter>

#include <algorithm>

namespace {

constexpr int margin = 6; // as the base class leaves at both ends
constexpr int gap = 2;    // and before a permanent widget

} // namespace

QRect StatusLine::messagePlace() const
{
    // While there is a message, the widgets in sight are the permanent ones, at the end of the line.
    int left = margin;
    const QObjectList &all = children();
    for (const QObject *child : all) {
        const auto *const widget = qobject_cast<const QWidget *>(child);
        if (widget && widget->isVisible())
            left = std::max(left, widget->geometry().right() + 1 + gap);
    }
    return {left, 0, width() - margin - left, height()};
}

void StatusLine::paintEvent(QPaintEvent *event)
{
    if (layoutDirection() == Qt::LeftToRight || currentMessage().isEmpty()) {
        QStatusBar::paintEvent(event);
        return;
    }
    QStylePainter painter(this);
    QStyleOption option;
    option.initFrom(this);
    painter.drawPrimitive(QStyle::PE_PanelStatusBar, option);
    const QObjectList &all = children();
    for (const QObject *child : all) {
        const auto *const widget = qobject_cast<const QWidget *>(child);
        if (!widget || !widget->isVisible())
            continue;
        QStyleOption frame;
        frame.rect = widget->geometry().adjusted(-2, -1, 2, 1);
        frame.palette = palette();
        frame.state = QStyle::State_None;
        painter.drawPrimitive(QStyle::PE_FrameStatusBarItem, frame);
    }
    painter.setPen(palette().windowText().color());
    const QString isolated = QChar(0x2068) + currentMessage() + QChar(0x2069);
    painter.drawText(messagePlace(), Qt::AlignLeading | Qt::AlignVCenter | Qt::TextSingleLine, isolated);
}
