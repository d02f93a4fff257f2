// SPDX-License-Identifier: MIT
//
// The fonts of widget trees.
#include "foundation/tavigfx.h"
#include "qt3/q3scrollview.h"

#include <QApplication>
#include <QComboBox>
#include <QFont>
#include <QFontInfo>
#include <QLabel>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QVector>

#include <cstdint>
#include <limits>

int TaviGfx::normal_button_height = 0;
int TaviGfx::default_font_point_size = 0;

namespace {

/// A font that is set in pixels tells no points itself.
int pointSizeOf(const QFont &font)
{
    return font.pointSize() > 0 ? font.pointSize() : QFontInfo(font).pointSize();
}

bool takesFont(const QWidget *widget)
{
    return qobject_cast<const QPushButton *>(widget) || qobject_cast<const QLabel *>(widget)
           || qobject_cast<const QComboBox *>(widget) || qobject_cast<const QLineEdit *>(widget)
           || qobject_cast<const QScrollArea *>(widget) || qobject_cast<const Q3ScrollView *>(widget);
}

/// Guarded: who hears of a new font may delete other widgets.
QVector<QPointer<QWidget>> childWidgetsOf(const QWidget *widget)
{
    QVector<QPointer<QWidget>> found;
    for (QObject *const child : widget->children()) {
        if (auto *const child_widget = qobject_cast<QWidget *>(child))
            found.append(child_widget);
    }
    return found;
}

int plainButtonHeight()
{
    return QPushButton(QStringLiteral("HqpH")).sizeHint().height();
}

} // namespace

void TaviGfx::applyFont(QWidget *widget, const QFont &font, bool top)
{
    if (!widget)
        return;
    if (top) {
        widget->setFont(font);
        default_font_point_size = pointSizeOf(QApplication::font());
        normal_button_height = plainButtonHeight();
    } else if (takesFont(widget)) {
        widget->setFont(font);
        if (auto *const button = qobject_cast<QPushButton *>(widget)) {
            const bool large = pointSizeOf(font) > default_font_point_size;
            button->setFixedHeight(large ? button->sizeHint().height() : normal_button_height);
        }
    }
    const QVector<QPointer<QWidget>> children = childWidgetsOf(widget);
    for (const QPointer<QWidget> &child : children)
        applyFont(child, font, false);
}

void TaviGfx::adjustFontSize(QWidget *widget, int delta)
{
    if (!widget || delta == 0)
        return;
    const std::int64_t points = std::int64_t(QFontInfo(widget->font()).pointSize()) + delta;
    if (points < MIN_FONT_SIZE || points > std::numeric_limits<int>::max())
        return;
    QFont font = widget->font();
    font.setPointSize(static_cast<int>(points));
    applyFont(widget, font, true);
}

void TaviGfx::applyFontSize(QWidget *widget, int points)
{
    if (!widget || points <= 0)
        return;
    QFont font = widget->font();
    font.setPointSize(points);
    if (QFontInfo(font).pixelSize() >= MIN_FONT_SIZE)
        applyFont(widget, font, true);
}

void TaviGfx::resetFontSize(QWidget *widget)
{
    if (fontDeltaPoints(widget) != 0)
        applyFont(widget, QApplication::font(), true);
}

int TaviGfx::fontDeltaPoints(QWidget *widget)
{
    return widget ? pointSizeOf(widget->font()) - pointSizeOf(QApplication::font()) : 0;
}
