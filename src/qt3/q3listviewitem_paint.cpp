// SPDX-License-Identifier: MIT
#include "qt3/q3listview_p.h"
#include "qt3/q3listviewitem.h"
#include "qt3/q3listviewtree_p.h"

#include <QPainter>
#include <QPixmap>
#include <QStyle>
#include <QStyleOptionFocusRect>

#include <algorithm>

namespace {

constexpr int pixmap_gap = 2; // between pixmap and text

QSize sizeOf(const QPixmap &pixmap)
{
    return pixmap.size() / pixmap.devicePixelRatioF();
}

/// The text as it is shown: on one line unless several are wanted.
QString shownText(const Q3ListViewItem *item, int column)
{
    QString text = item->text(column);
    if (!item->multiLinesEnabled() && text.contains(QLatin1Char('\n')))
        text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return text;
}

/// Cut off at the side that the text does not begin at, with dots in its place.
QString elided(const QString &text, const QFontMetrics &metrics, int width, Qt::Alignment align)
{
    const Qt::TextElideMode mode = (align & Qt::AlignRight) ? Qt::ElideLeft : Qt::ElideRight;
    if (!text.contains(QLatin1Char('\n')))
        return metrics.elidedText(text, mode, width);
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString &line : lines)
        line = metrics.elidedText(line, mode, width);
    return lines.join(QLatin1Char('\n'));
}

} // namespace

void Q3ListViewItem::setup()
{
    widthChanged();
    Q3ListView *view = listView();
    if (!view)
        return;
    Q3ListViewPrivate *d = Q3ListViewPrivate::of(view);
    if (d->row_height == 0) {
        const int line = view->fontMetrics().height() + 2 * d->item_margin;
        d->row_height = line + line % 2;
    }
    int height = d->row_height;
    if (multiLinesEnabled() || extra_) {
        for (int column = 0; column < view->columns(); ++column) {
            if (multiLinesEnabled()) {
                const int lines = static_cast<int>(text(column).count(QLatin1Char('\n')));
                height = std::max(height, d->row_height + lines * view->fontMetrics().lineSpacing());
            }
            if (const QPixmap *shown = pixmap(column))
                height = std::max(height, sizeOf(*shown).height() + 2 * d->item_margin);
        }
    }
    // An even height lets dotted lines of branches meet.
    setHeight(height + height % 2);
}

int Q3ListViewItem::width(const QFontMetrics &fm, const Q3ListView *lv, int c) const
{
    const QString shown = shownText(this, c);
    int width = 0;
    if (shown.contains(QLatin1Char('\n'))) {
        for (const QString &line : shown.split(QLatin1Char('\n')))
            width = std::max(width, fm.horizontalAdvance(line));
    } else {
        width = fm.horizontalAdvance(shown);
    }
    if (const QPixmap *image = pixmap(c))
        width += sizeOf(*image).width() + pixmap_gap;
    return width + 2 * (lv ? lv->itemMargin() : 1) + 2 * pixmap_gap;
}

void Q3ListViewItem::widthChanged(int c) const
{
    Q3ListView *view = listView();
    if (!view)
        return;
    Q3ListViewPrivate *d = Q3ListViewPrivate::of(view);
    const int count = static_cast<int>(d->columns.size());
    for (int column = std::max(0, c); column < count && (c < 0 || column == c); ++column) {
        if (d->columns[static_cast<size_t>(column)].mode != Q3ListView::Maximum)
            continue;
        const int indent = column == 0 ? d->indentation(this) : 0;
        const int wanted = width(view->fontMetrics(), view, column) + indent;
        if (wanted > view->columnWidth(column))
            view->Q3ListView::setColumnWidth(column, wanted); // not what the user or the application wants
    }
}

void Q3ListViewItem::paintCell(QPainter *painter, const QColorGroup &cg, int column, int width, int align)
{
    const Q3ListView *view = listView();
    if (!view)
        return;
    const QStyle *style = view->style();
    const QRect cell(0, 0, width, height_);
    const bool selected = isSelected() && (column == 0 || view->allColumnsShowFocus());
    painter->fillRect(cell, cg.brush(QPalette::Base));

    QStyleOptionViewItem option;
    option.initFrom(view->viewport());
    option.rect = cell;
    option.palette = cg;
    option.palette.setCurrentColorGroup(cg.currentColorGroup());
    option.showDecorationSelected = true;
    option.state.setFlag(QStyle::State_Enabled, isEnabled() && view->isEnabled());
    option.state.setFlag(QStyle::State_Selected, selected);
    option.state.setFlag(QStyle::State_Active, cg.currentColorGroup() != QPalette::Inactive);
    option.state &= ~(QStyle::State_HasFocus | QStyle::State_MouseOver);
    if (selected)
        style->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, view);

    const int margin = view->itemMargin();
    QRect room = cell.adjusted(margin + pixmap_gap, 0, -margin - pixmap_gap, 0);
    const Qt::LayoutDirection direction = view->layoutDirection();
    if (const QPixmap *image = pixmap(column)) {
        const QSize size = sizeOf(*image);
        const QRect place = QStyle::visualRect(
            direction, room, QRect(room.left(), (height_ - size.height()) / 2, size.width(), size.height()));
        const QPixmap shown = option.state & QStyle::State_Enabled
                                  ? *image
                                  : style->generatedIconPixmap(QIcon::Disabled, *image, &option);
        painter->save();
        painter->setClipRect(cell, Qt::IntersectClip);
        painter->drawPixmap(place.topLeft(), shown);
        painter->restore();
        const int used = size.width() + pixmap_gap;
        room = QStyle::visualRect(direction, room, room.adjusted(used, 0, 0, 0));
    }
    const QString shown = shownText(this, column);
    if (shown.isEmpty() || room.width() <= 0)
        return;
    Qt::Alignment alignment = QStyle::visualAlignment(direction, Qt::Alignment(align));
    if (!(alignment & Qt::AlignVertical_Mask))
        alignment |= Qt::AlignVCenter;
    painter->setPen(cg.color(selected ? QPalette::HighlightedText : QPalette::Text));
    painter->drawText(room, static_cast<int>(alignment) | (multiLinesEnabled() ? 0 : Qt::TextSingleLine),
                      elided(shown, painter->fontMetrics(), room.width(), alignment));
}

void Q3ListViewItem::paintFocus(QPainter *p, const QColorGroup &cg, const QRect &r)
{
    const Q3ListView *view = listView();
    if (!view)
        return;
    QStyleOptionFocusRect option;
    option.initFrom(view->viewport());
    option.rect = r;
    option.palette = cg;
    option.state |= QStyle::State_KeyboardFocusChange | QStyle::State_HasFocus | QStyle::State_Item;
    const bool selected = isSelected();
    option.backgroundColor = cg.color(selected ? QPalette::Highlight : QPalette::Base);
    view->style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, p, view);
}

void Q3ListViewItem::paintBranches(QPainter *p, const QColorGroup &cg, int w, int y, int h)
{
    p->fillRect(0, 0, w, h, cg.brush(QPalette::Base));
    const Q3ListView *view = listView();
    if (!view || !children_ || !children_->indexed)
        return;
    QStyleOption option;
    option.initFrom(view->viewport());
    option.palette = cg;
    option.state &= ~(QStyle::State_MouseOver | QStyle::State_HasFocus);
    const QStyle::State plain = option.state;
    int in_child = -y;
    Q3ListViewItem *child = Q3ListViewTree::find(*children_, in_child);
    for (int top = -in_child; child && top < h;
         child = child->next_ ? Q3ListViewRows::shownFrom(child->next_) : nullptr) {
        const bool more = child->next_ && Q3ListViewRows::shownFrom(child->next_);
        const QStyle::State sibling = more ? QStyle::State_Sibling : QStyle::State_None;
        if (top + child->height_ > 0) {
            option.rect = QRect(0, top, w, child->height_);
            option.state = plain | QStyle::State_Item | sibling;
            if (child->canBeOpened())
                option.state |= QStyle::State_Children | (child->isOpen() ? QStyle::State_Open : QStyle::State_None);
            view->style()->drawPrimitive(QStyle::PE_IndicatorBranch, &option, p, view);
        }
        const int below = child->total_ - child->height_;
        if (below > 0 && more) {
            option.rect = QRect(0, std::max(0, top + child->height_), w,
                                std::min(h, top + child->total_) - std::max(0, top + child->height_));
            option.state = plain | QStyle::State_Sibling;
            if (option.rect.height() > 0)
                view->style()->drawPrimitive(QStyle::PE_IndicatorBranch, &option, p, view);
        }
        top += child->total_;
    }
}

void Q3ListViewItem::repaint() const
{
    if (const Q3ListView *view = listView())
        view->repaintItem(this);
}
