// SPDX-License-Identifier: MIT
#include "qt3/q3listview_p.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOptionRubberBand>

#include <algorithm>

namespace {

/// What the rows of one painting have in common.
struct Frame {
    QPainter *painter;
    QPalette colours;
    QPalette disabled;
    QPoint origin; ///< Of the painter, in contents coordinates.
    QRect clip;    ///< In the painter's coordinates.
};

void paintCell(const Frame &frame, Q3ListViewItem *item, const QRect &cell, int column, int align)
{
    if (!cell.intersects(frame.clip))
        return;
    QPainter *p = frame.painter;
    p->save();
    p->setClipRect(cell, Qt::IntersectClip);
    p->translate(cell.topLeft());
    item->paintCell(p, item->isEnabled() ? frame.colours : frame.disabled, column, cell.width(), align);
    p->restore();
}

/// The strips before a row in which the branches to it and past it are.
void paintBranches(const Frame &frame, const Q3ListViewItem *root, Q3ListViewItem *item, Q3ListViewItem *above,
                   QRect strips, int step, Qt::LayoutDirection direction)
{
    // From the inside outwards: the strip next to the item belongs to its parent.
    for (int right = strips.width(); right >= step && above; right -= step) {
        const QRect strip = QStyle::visualRect(
            direction, strips, QRect(strips.left() + right - step, strips.top(), step, strips.height()));
        const int children_top = above == root ? 0 : Q3ListViewRows::position(above) + above->height();
        if (strip.intersects(frame.clip)) {
            QPainter *p = frame.painter;
            p->save();
            p->setClipRect(strip, Qt::IntersectClip);
            p->translate(strip.topLeft());
            above->paintBranches(p, item->isEnabled() ? frame.colours : frame.disabled, step,
                                 children_top - Q3ListViewRows::position(item), strip.height());
            p->restore();
        }
        above = above == root ? nullptr : above->parent() ? above->parent() : const_cast<Q3ListViewItem *>(root);
    }
}

} // namespace

void Q3ListView::drawContentsOffset(QPainter *p, int ox, int oy, int cx, int cy, int cw, int ch)
{
    d->index();
    Frame frame;
    frame.painter = p;
    frame.origin = QPoint(ox, oy);
    frame.clip = QRect(cx - ox, cy - oy, cw, ch);
    frame.colours = frame.disabled = palette();
    frame.disabled.setCurrentColorGroup(QPalette::Disabled);
    frame.colours.setCurrentColorGroup(!isEnabled()       ? QPalette::Disabled
                                       : isActiveWindow() ? QPalette::Active
                                                          : QPalette::Inactive);
    p->setFont(font());

    std::vector<QRect> sections;
    QRect all;
    for (int column = 0; column < columns(); ++column) {
        sections.push_back(d->header->sectionRect(column).translated(d->header->offset() - ox, 0));
        all |= sections.back();
    }
    Q3ListViewItem *item = Q3ListViewRows::itemAt(d->root.get(), std::max(0, cy));
    int top = item ? Q3ListViewRows::position(item) - oy : 0;
    int bottom = item ? top : d->contentsHeight() - oy;
    const bool focus = hasFocus() && !d->editor;
    for (; item && top <= frame.clip.bottom(); item = item->itemBelow()) {
        const int height = item->height();
        const int indent = d->indentation(item);
        for (int column = 0; column < columns(); ++column) {
            QRect cell = sections[static_cast<size_t>(column)];
            if (cell.width() <= 0)
                continue;
            cell = QRect(cell.left(), top, cell.width(), height);
            if (column == 0 && indent > 0) {
                QRect strips = cell;
                strips.setWidth(std::min(indent, cell.width()));
                strips = QStyle::visualRect(layoutDirection(), cell, QRect(cell.left(), top, indent, height));
                p->save();
                p->setClipRect(cell, Qt::IntersectClip);
                Q3ListViewItem *above = item->parent() ? item->parent() : d->root.get();
                paintBranches(frame, d->root.get(), item, above, strips, std::max(1, d->tree_step),
                              layoutDirection());
                p->restore();
                cell = QStyle::visualRect(layoutDirection(), cell,
                                          QRect(cell.left() + indent, top, cell.width() - indent, height));
            }
            if (cell.width() > 0)
                paintCell(frame, item, cell, column, columnAlignment(column));
            if (focus && item == d->current && column == 0 && !d->all_columns_show_focus && cell.width() > 0)
                item->paintFocus(p, item->isEnabled() ? frame.colours : frame.disabled, cell);
        }
        if (focus && item == d->current && d->all_columns_show_focus)
            item->paintFocus(p, item->isEnabled() ? frame.colours : frame.disabled,
                             QRect(all.left(), top, all.width(), height));
        top += height;
        bottom = top;
    }
    const QRect rows(all.left(), frame.clip.top(), all.width(), bottom - frame.clip.top());
    for (const QRect &rest : QRegion(frame.clip).subtracted(rows)) {
        paintEmptyArea(p, rest);
    }
    const QRect band = d->rubberRect().translated(-ox, -oy);
    if (band.isValid()) {
        QStyleOptionRubberBand option;
        option.initFrom(viewport());
        option.shape = QRubberBand::Rectangle;
        option.opaque = false;
        option.rect = band;
        p->save();
        style()->drawControl(QStyle::CE_RubberBand, &option, p, viewport());
        p->restore();
    }
}

void Q3ListView::paintEmptyArea(QPainter *p, const QRect &rect)
{
    p->fillRect(rect, viewport()->palette().brush(viewport()->backgroundRole()));
}
