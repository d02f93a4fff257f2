// SPDX-License-Identifier: MIT
#include "treeviews/tavitreeitemdelegate.h"

#include <QBrush>
#include <QColor>
#include <QPainter>
#include <QPen>
#include <QStyle>

namespace {

/// A frame and the bar in it, both in one colour.
void drawFrameAndBar(QPainter *painter, const QRect &frame, const QRect &bar, const QColor &colour, int pen_width)
{
    painter->setPen(QPen(colour, pen_width, Qt::SolidLine, Qt::SquareCap, Qt::RoundJoin));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(frame);
    painter->setPen(Qt::NoPen);
    painter->setBrush(colour);
    painter->drawRect(bar);
}

} // namespace

TaviTreeItemDelegate::TaviTreeItemDelegate(QObject *parent) : QItemDelegate(parent) {}

int TaviTreeItemDelegate::margin() const
{
    return margin_;
}

void TaviTreeItemDelegate::setMargin(int margin)
{
    margin_ = margin;
}

void TaviTreeItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                 const QModelIndex &index) const
{
    if (!index.isValid())
        return;
    const QStyleOptionViewItem own = initStyleOption(index, option);
    painter->setRenderHint(QPainter::Antialiasing);
    QItemDelegate::paint(painter, own, index);
}

QSize TaviTreeItemDelegate::sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    return QItemDelegate::sizeHint(option, index) + QSize(2 * margin_, 2 * margin_);
}

QStyleOptionViewItem TaviTreeItemDelegate::initStyleOption(const QModelIndex &index,
                                                           const QStyleOptionViewItem &option) const
{
    QStyleOptionViewItem own = setOptions(index, option);
    const QVariant foreground = index.data(Qt::ForegroundRole);
    if (foreground.canConvert<QBrush>())
        own.palette.setBrush(QPalette::All, QPalette::HighlightedText, foreground.value<QBrush>());
    return own;
}

void TaviTreeItemDelegate::drawDisplay(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect,
                                       const QString &text) const
{
    QItemDelegate::drawDisplay(painter, option, withoutSideMargins(rect), text);
}

void TaviTreeItemDelegate::drawDecoration(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect,
                                          const QPixmap &pixmap) const
{
    QItemDelegate::drawDecoration(painter, option, rect, pixmap);
}

void TaviTreeItemDelegate::drawFocus(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect) const
{
    QItemDelegate::drawFocus(painter, option, rect);
}

void TaviTreeItemDelegate::drawCheck(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect,
                                     Qt::CheckState state) const
{
    QItemDelegate::drawCheck(painter, option, rect, state);
}

void TaviTreeItemDelegate::drawSwatch(QPainter *painter, const QStyleOptionViewItem &option,
                                      const TAVICOMBOCOLOUR *colour) const
{
    if (!painter || !colour)
        return;
    QRect cell = option.rect;
    if (margin_ > 0)
        cell.adjust(margin_, margin_, -margin_, -margin_);
    // Of a cell smaller than its margins nothing is left; fillRect() would turn such a rectangle inside out.
    if (cell.isEmpty())
        return;
    painter->save();
    painter->fillRect(cell, QColor(colour->rgb));
    painter->restore();
}

void TaviTreeItemDelegate::drawText(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect,
                                    const QString &text) const
{
    if (!painter || text.isEmpty())
        return;
    const QString shown = option.fontMetrics.elidedText(text, option.textElideMode, rect.width());
    painter->save();
    // The font that the text was measured with, and the direction that tells what "left" in an alignment means.
    painter->setFont(option.font);
    painter->setLayoutDirection(option.direction);
    painter->setPen(option.palette.color(QPalette::Text));
    painter->drawText(rect, static_cast<int>(option.displayAlignment), shown);
    painter->restore();
}

void TaviTreeItemDelegate::drawProgressBar(QPainter *painter, const QStyleOptionViewItem &option,
                                           const QModelIndex &index, int percent, const QColor &colour,
                                           const QString &text) const
{
    if (!painter || !index.isValid() || percent < 0 || percent > 100)
        return;
    const int line = qMax(1, margin_ / 3);
    const QRect frame = option.rect.adjusted(line, line, -line, -line);
    if (!frame.isEmpty()) {
        QRect bar = frame;
        bar.setWidth(static_cast<int>(percent / 100.0 * frame.width() + 0.5));
        bar = QStyle::visualRect(option.direction, frame, bar);
        painter->save();
        painter->fillRect(frame, option.palette.brush(QPalette::Base));
        drawFrameAndBar(painter, frame.translated(1, 1), bar.translated(1, 1), colour.darker(125), line);
        drawFrameAndBar(painter, frame, bar, colour, line);
        painter->restore();
    }
    if (!text.isEmpty())
        drawText(painter, option, withoutSideMargins(option.rect), text);
}

QRect TaviTreeItemDelegate::withoutSideMargins(const QRect &rect) const
{
    return margin_ > 0 ? rect.adjusted(margin_, 0, -margin_, 0) : rect;
}
