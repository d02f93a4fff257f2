// SPDX-License-Identifier: MIT
#include "treeviews/taviheaderview.h"

#include <QAbstractItemModel>
#include <QAbstractScrollArea>
#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyle>
#include <QStyleOptionFocusRect>

namespace {

/// By how many pixels one key press changes a width.
constexpr int resize_step = 8;

} // namespace

/// The section that keys act on: the one chosen last, or the first that is shown; -1 if none is.
int TaviHeaderView::keyboardSection() const
{
    const bool lives = keyboard_section >= 0 && keyboard_section < count() && !isSectionHidden(keyboard_section);
    return lives ? keyboard_section : logicalIndexFromVisible(0);
}

void TaviHeaderView::chooseKeyboardSection(int visible_index)
{
    const int section = logicalIndexFromVisible(visible_index);
    if (section < 0)
        return;
    keyboard_section = section;
    setAccessibleDescription(model()->headerData(section, orientation(), Qt::DisplayRole).toString());
    bringIntoSight(section);
    viewport()->update();
}

void TaviHeaderView::keyPressEvent(QKeyEvent *event)
{
    const int section = keyboardSection();
    if (section < 0 || orientation() != Qt::Horizontal) {
        event->ignore();
        return;
    }
    int visible_index = 0;
    while (logicalIndexFromVisible(visible_index) != section)
        ++visible_index;
    const int forwards = isRightToLeft() ? Qt::Key_Left : Qt::Key_Right;
    const int step = event->key() == forwards ? 1 : -1;
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;

    switch (event->key()) {
    case Qt::Key_Left:
    case Qt::Key_Right:
        if (modifiers == Qt::NoModifier)
            chooseKeyboardSection(visible_index + step);
        else if (modifiers == Qt::ControlModifier)
            moveSectionBy(section, step);
        else if (modifiers == Qt::ShiftModifier)
            resizeSectionBy(section, step * resize_step);
        else
            break;
        return;
    case Qt::Key_Home:
        chooseKeyboardSection(0);
        return;
    case Qt::Key_End:
        chooseKeyboardSection(visibleSectionCount() - 1);
        return;
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        if (modifiers == Qt::NoModifier)
            clickSection(section);
        else if (modifiers == Qt::ShiftModifier)
            Q_EMIT sectionHandleDoubleClicked(section);
        else
            break;
        return;
    default:
        break;
    }
    event->ignore();
}

/// What a click does: the indicator goes to the section, or turns over there, and the view is told.
void TaviHeaderView::clickSection(int section)
{
    if (!sectionsClickable())
        return;
    Qt::SortOrder order = Qt::AscendingOrder;
    if (sortIndicatorSection() == section) {
        if (sortIndicatorOrder() == Qt::AscendingOrder)
            order = Qt::DescendingOrder;
    } else if (model()->headerData(section, orientation(), Qt::InitialSortOrderRole).toInt() == Qt::DescendingOrder) {
        order = Qt::DescendingOrder;
    }
    setSortIndicator(section, order);
    Q_EMIT sectionClicked(section);
}

/// Over one section that is shown, as a drag does; hidden ones in between are passed.
void TaviHeaderView::moveSectionBy(int section, int places)
{
    if (!sectionsMovable())
        return;
    int to = visualIndex(section) + places;
    while (to >= 0 && to < count() && isSectionHidden(logicalIndex(to)))
        to += places;
    if (to < 0 || to >= count() || (!isFirstSectionMovable() && (to == 0 || visualIndex(section) == 0)))
        return;
    keyboard_section = section;
    moveSection(visualIndex(section), to);
    bringIntoSight(section);
}

void TaviHeaderView::resizeSectionBy(int section, int pixels)
{
    const bool stretched = stretchLastSection() && section == logicalIndexFromVisible(visibleSectionCount() - 1);
    if (stretched || sectionResizeMode(section) != QHeaderView::Interactive)
        return;
    keyboard_section = section;
    resizeSection(section, qMax(minimumSectionSize(), sectionSize(section) + pixels));
    bringIntoSight(section);
}

/// Scrolls the view that this is the header of.
void TaviHeaderView::bringIntoSight(int section)
{
    auto *area = qobject_cast<QAbstractScrollArea *>(parentWidget());
    if (!area)
        return;
    const int start = sectionViewportPosition(section);
    const int beyond = start + sectionSize(section) - viewport()->width();
    int distance = 0;
    if (start < 0)
        distance = start;
    else if (beyond > 0)
        distance = qMin(beyond, start);
    QScrollBar *bar = area->horizontalScrollBar();
    bar->setValue(bar->value() + (isRightToLeft() ? -distance : distance));
}

void TaviHeaderView::focusInEvent(QFocusEvent *event)
{
    QHeaderView::focusInEvent(event);
    viewport()->update();
}

void TaviHeaderView::focusOutEvent(QFocusEvent *event)
{
    QHeaderView::focusOutEvent(event);
    viewport()->update();
}

void TaviHeaderView::paintSection(QPainter *painter, const QRect &rect, int logicalIndex) const
{
    painter->save();
    QHeaderView::paintSection(painter, rect, logicalIndex);
    painter->restore();
    if (!hasFocus() || logicalIndex != keyboardSection() || rect.isEmpty())
        return;
    QStyleOptionFocusRect option;
    option.initFrom(this);
    option.state |= QStyle::State_KeyboardFocusChange;
    option.rect = rect.adjusted(1, 1, -1, -1);
    option.backgroundColor = palette().color(QPalette::Button);
    style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, painter, this);
}
