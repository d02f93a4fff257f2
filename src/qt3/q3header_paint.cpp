// SPDX-License-Identifier: MIT
#include "qt3/q3header.h"

#include <QPaintEvent>
#include <QPainter>
#include <QStyle>

#include <algorithm>

QStyleOptionHeader Q3Header::styleOption(int index) const
{
    const int section = order_[index];
    const Section &shown = sections_[section];
    QStyleOptionHeader option;
    option.initFrom(this);
    option.orientation = orientation_;
    option.section = section;
    option.text = shown.label;
    if (shown.icon)
        option.icon = *shown.icon;
    option.textAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    option.iconAlignment = Qt::AlignVCenter;
    option.position = count() == 1           ? QStyleOptionHeader::OnlyOneSection
                      : index == 0           ? QStyleOptionHeader::Beginning
                      : index == count() - 1 ? QStyleOptionHeader::End
                                             : QStyleOptionHeader::Middle;
    if (orientation_ == Qt::Horizontal)
        option.state |= QStyle::State_Horizontal;
    if (section == pressed_section_ && mouse_ != Mouse::Resizing)
        option.state |= QStyle::State_Sunken;
    else
        option.state |= QStyle::State_Raised;
    if (index != hovered_)
        option.state &= ~QStyle::State_MouseOver;
    if (section == sort_section_)
        option.sortIndicator =
            sort_order_ == Qt::AscendingOrder ? QStyleOptionHeader::SortDown : QStyleOptionHeader::SortUp;
    return option;
}

int Q3Header::fittingSize(int section) const
{
    const QStyleOptionHeader option = styleOption(mapToIndex(section));
    const QSize size = style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), this);
    return orientation_ == Qt::Horizontal ? size.width() : size.height();
}

QSize Q3Header::sizeHint() const
{
    ensurePolished();
    int across = 0;
    for (int index = 0; index < count(); ++index) {
        const QStyleOptionHeader option = styleOption(index);
        const QSize size = style()->sizeFromContents(QStyle::CT_HeaderSection, &option, QSize(), this);
        across = std::max(across, orientation_ == Qt::Horizontal ? size.height() : size.width());
    }
    if (count() == 0)
        across = fontMetrics().height() + 2 * style()->pixelMetric(QStyle::PM_HeaderMargin, nullptr, this);
    return orientation_ == Qt::Horizontal ? QSize(headerWidth(), across) : QSize(across, headerWidth());
}

void Q3Header::paintSection(QPainter *p, int index, const QRect &fr)
{
    if (mapToSection(index) < 0)
        return;
    QStyleOptionHeader option = styleOption(index);
    option.rect = fr;
    p->save();
    p->setClipRect(fr, Qt::IntersectClip);
    style()->drawControl(QStyle::CE_HeaderSection, &option, p, this);
    paintSectionLabel(p, index, fr);
    p->restore();
}

void Q3Header::paintSectionLabel(QPainter *p, int index, const QRect &fr)
{
    if (mapToSection(index) < 0)
        return;
    QStyleOptionHeader option = styleOption(index);
    option.rect = fr;
    QStyleOptionHeader label = option;
    label.rect = style()->subElementRect(QStyle::SE_HeaderLabel, &option, this);
    label.text = fontMetrics().elidedText(
        option.text, Qt::ElideRight,
        label.rect.width() - (label.icon.isNull() ? 0 : style()->pixelMetric(QStyle::PM_SmallIconSize)));
    style()->drawControl(QStyle::CE_HeaderLabel, &label, p, this);
    if (option.sortIndicator != QStyleOptionHeader::None) {
        QStyleOptionHeader arrow = option;
        arrow.rect = style()->subElementRect(QStyle::SE_HeaderArrow, &option, this);
        style()->drawPrimitive(QStyle::PE_IndicatorHeaderArrow, &arrow, p, this);
    }
    if (hasFocus() && index == focused_) {
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = style()->subElementRect(QStyle::SE_HeaderLabel, &option, this);
        focus.state |= QStyle::State_KeyboardFocusChange;
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &focus, p, this);
    }
}

void Q3Header::paintEvent(QPaintEvent *e)
{
    QPainter painter(this);
    QRect covered;
    for (int index = 0; index < count(); ++index) {
        const QRect section = sRect(index);
        covered |= section;
        if (section.isEmpty() || !section.intersects(e->rect()))
            continue;
        paintSection(&painter, index, section);
    }
    // What no section covers looks like an empty one.
    QStyleOptionHeader empty;
    empty.initFrom(this);
    empty.state |=
        QStyle::State_Raised | (orientation_ == Qt::Horizontal ? QStyle::State_Horizontal : QStyle::State_None);
    empty.state &= ~QStyle::State_MouseOver;
    empty.orientation = orientation_;
    empty.section = -1;
    for (const QRect &rest : QRegion(rect()).subtracted(covered)) {
        empty.rect = rest;
        style()->drawControl(QStyle::CE_HeaderEmptyArea, &empty, &painter, this);
    }
    if (mouse_ != Mouse::Moving || gap_ < 0)
        return;
    const QRect before = sRect(std::min(gap_, count() - 1));
    QRect mark = before;
    const bool at_end = gap_ == count();
    if (orientation_ == Qt::Vertical) {
        mark.setHeight(2);
        mark.moveTop(at_end ? before.bottom() - 1 : before.top() - 1);
    } else {
        mark.setWidth(2);
        mark.moveLeft(at_end != isRightToLeft() ? before.right() - 1 : before.left() - 1);
    }
    painter.fillRect(mark, palette().brush(QPalette::Highlight));
}
