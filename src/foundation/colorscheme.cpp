// SPDX-License-Identifier: MIT
#include "foundation/colorscheme.h"

#include "foundation/colorschememath_p.h"

#include <QBrush>
#include <QPainter>
#include <QPalette>
#include <QPen>
#include <QPixmap>
#include <QPoint>
#include <QWidget>

#include <cstring>
#include <iterator>
#include <string_view>
#include <utility>

namespace math = tavi::colorscheme;

namespace {

constexpr int icon_size = 16;
constexpr int light_saturation = 20;
constexpr int grey_half_value = 220;

math::Rgb rgbOf(const QColor &colour)
{
    return {colour.red(), colour.green(), colour.blue()};
}

/// A colour of numbers as the first constructor takes them.
QColor colourFrom(int a, int b, int c, QColor::Spec spec)
{
    QColor colour;
    if (spec == QColor::Rgb)
        colour.setRgb(a, b, c);
    else if (spec == QColor::Hsv)
        colour.setHsv(a, b, c);
    return colour;
}

QColor colourFromPercent(double hue, double saturation, double value)
{
    const math::Hsv hsv = math::hsvFromPercent(hue, saturation, value);
    return QColor::fromHsv(hsv.hue, hsv.saturation, hsv.value);
}

QPixmap filledPixmap(const QColor &colour)
{
    QPixmap pixmap(icon_size, icon_size);
    pixmap.fill(colour);
    return pixmap;
}

void drawRow(QPainter &painter, int y, const QColor &colour)
{
    painter.setPen(colour);
    painter.drawLine(0, y, icon_size - 1, y);
}

const ColorScheme *firstNamed(const ColorSchemeHolder &schemes, std::string_view id)
{
    for (const ColorScheme *scheme : schemes) {
        if (scheme->idName() && scheme->idName() == id)
            return scheme;
    }
    return nullptr;
}

} // namespace

ColorScheme::ColorScheme(QString name, const char *id, int a, int b, int c, QColor::Spec spec)
    : ColorScheme(std::move(name), id, colourFrom(a, b, c, spec))
{}

ColorScheme::ColorScheme(QString name, const char *id, double hue, double saturation, double value)
    : ColorScheme(std::move(name), id, colourFromPercent(hue, saturation, value))
{}

ColorScheme::ColorScheme(QString name, const char *id, const QColor &colour)
    : display_name_(std::move(name)), id_name_(id), base_colour_(colour)
{
    init();
}

ColorScheme::~ColorScheme() = default;

const char *ColorScheme::DEFAULT_NAME()
{
    return "default";
}

void ColorScheme::init()
{
    theme_y_value_ = -1;
    is_default_ = id_name_ && std::strcmp(id_name_, DEFAULT_NAME()) == 0;
    light_colour_.setHsv(base_colour_.hue(), light_saturation, 255);
    white_ = Qt::white;
    initHalf();
}

void ColorScheme::initHalf()
{
    if (const auto half = math::halfColour(rgbOf(base_colour_), RGBtoYIQ)) {
        half_colour_.setRgb(half->red, half->green, half->blue, 255);
        return;
    }
    int hue = 0, saturation = 0, value = 0;
    base_colour_.getHsv(&hue, &saturation, &value);
    half_colour_.setHsv(-1, saturation, grey_half_value, 255);
}

QIcon ColorScheme::iconSet(bool half) const
{
    return iconSet(half ? HALF_COLOUR : FULL_COLOUR);
}

QIcon ColorScheme::iconSet(IconSetType type) const
{
    generateHalfIcon();
    generateFullIcon();
    generateRasterYIQ();
    switch (type) {
    case HALF_COLOUR:
        return half_icon_;
    case RASTER:
        return raster_icon_;
    case FULL_COLOUR:
        break;
    }
    return full_icon_;
}

void ColorScheme::generateHalfIcon() const
{
    if (!half_icon_.isNull())
        return;
    QPixmap pixmap = filledPixmap(white_);
    {
        constexpr int last = icon_size - 1;
        const QPoint corners[] = {{0, last}, {0, 0}, {last, 0}};
        QPainter painter(&pixmap);
        painter.setPen(Qt::white);
        painter.setBrush(QBrush(base_colour_, Qt::SolidPattern));
        painter.drawConvexPolygon(corners, static_cast<int>(std::size(corners)));
    }
    half_icon_.addPixmap(pixmap);
}

void ColorScheme::generateFullIcon() const
{
    if (full_icon_.isNull())
        full_icon_.addPixmap(filledPixmap(base_colour_));
}

void ColorScheme::generateRasterYIQ() const
{
    if (!raster_icon_.isNull())
        return;
    QPixmap pixmap = filledPixmap(base_colour_);
    {
        QPainter painter(&pixmap);
        if (const auto stripes = math::rasterStripes(rgbOf(base_colour_), RGBtoYIQ)) {
            for (int y = 0; y < icon_size; ++y) {
                const math::Rgb &stripe = (*stripes)[static_cast<size_t>(y % math::stripe_count)];
                drawRow(painter, y, QColor(stripe.red, stripe.green, stripe.blue));
            }
        } else {
            for (int y = 0; y < icon_size; y += 2)
                drawRow(painter, y, Qt::white);
        }
    }
    raster_icon_.addPixmap(pixmap, QIcon::Normal, QIcon::Off);
}

void ColorScheme::generateRasterHSV() const
{
    if (!raster_icon_.isNull())
        return;
    constexpr QRgb levels[] = {qRgb(255, 255, 255), qRgb(229, 239, 239), qRgb(231, 231, 231), qRgb(229, 239, 239)};
    QPixmap pixmap = filledPixmap(base_colour_);
    {
        QPainter painter(&pixmap);
        for (int y = 0; y < icon_size; ++y) {
            const int value = QColor(levels[static_cast<size_t>(y) % std::size(levels)]).value();
            drawRow(painter, y, QColor::fromHsv(base_colour_.hue(), base_colour_.saturation(), value, 255));
        }
    }
    raster_icon_.addPixmap(pixmap, QIcon::Normal, QIcon::Off);
}

void ColorScheme::adjustIQ(double (&yiq)[3], double (&rgb)[3], const double (&matrix)[3][3], double gamma) const
{
    math::fitIntoGamut(yiq, rgb, matrix);
    for (double &component : rgb)
        component = math::toCoded(component, 1.0 / gamma);
}

int ColorScheme::themeYValue() const
{
    if (theme_y_value_ < 0)
        theme_y_value_ = math::luminance(rgbOf(base_colour_), RGBtoYIQ);
    return theme_y_value_;
}

void ColorScheme::apply(QWidget *widget, IconSetType type) const
{
    switch (type) {
    case RASTER: {
        generateRasterYIQ();
        QPixmap pixmap = raster_icon_.pixmap(icon_size, icon_size, QIcon::Normal, QIcon::Off);
        applyDeeply(widget, &pixmap, base_colour_);
        return;
    }
    case HALF_COLOUR:
        applyDeeply(widget, nullptr, half_colour_);
        return;
    case FULL_COLOUR:
        break;
    }
    applyDeeply(widget, nullptr, base_colour_);
}

void ColorScheme::applyDeeply(QObject *object, QPixmap *pixmap, const QColor &colour) const
{
    if (!object || !object->isWidgetType())
        return;
    auto *widget = static_cast<QWidget *>(object);
    QPalette palette = widget->palette();
    if (pixmap)
        palette.setBrush(QPalette::All, widget->backgroundRole(), QBrush(*pixmap));
    else
        palette.setBrush(QPalette::All, QPalette::Window, QBrush(colour, Qt::SolidPattern));
    widget->setPalette(palette);
}

ColorSchemeHolder::ColorSchemeHolder()
{
    setAutoDelete(true);
}

ColorSchemeHolder::~ColorSchemeHolder() = default;

void ColorSchemeHolder::add(ColorScheme *scheme)
{
    if (scheme)
        append(scheme);
}

const ColorScheme *ColorSchemeHolder::find(std::string &id) const
{
    return firstNamed(*this, id);
}

const ColorScheme *ColorSchemeHolder::find(const char *id) const
{
    return id ? firstNamed(*this, id) : nullptr;
}

const ColorScheme *ColorSchemeHolder::find(int index) const
{
    if (index < 0 || static_cast<uint>(index) >= count())
        return nullptr;
    return *std::next(begin(), index);
}
