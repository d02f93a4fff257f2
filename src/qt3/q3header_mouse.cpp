// SPDX-License-Identifier: MIT
#include "qt3/q3header.h"

#include <QApplication>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPointer>
#include <QStyle>
#include <QToolTip>

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace {
constexpr int smallest_section = 8; // so that an edge can be found again
}

/// The section whose end is at @a pos, for the user to drag; -1 if none may be resized there. Of several, of which
/// all but one are hidden, the last one: so a hidden section can be drawn out again.
int Q3Header::handleAt(int pos) const
{
    const int grip = style()->pixelMetric(QStyle::PM_HeaderGripMargin, nullptr, this);
    int end = 0;
    int found = -1;
    for (const int section : order_) {
        end += sections_[section].size;
        if (std::abs(pos - end) <= grip && sections_[section].resizable)
            found = section;
    }
    return found;
}

/// The gap between two sections that is nearest to @a pos: the index before which a section would go.
int Q3Header::gapAt(int pos) const
{
    int begin = 0;
    for (int index = 0; index < count(); ++index) {
        const int size = sections_[order_[index]].size;
        if (pos < begin + size / 2)
            return index;
        begin += size;
    }
    return count();
}

void Q3Header::setHovered(int index)
{
    if (std::exchange(hovered_, index) != index)
        update();
}

void Q3Header::mousePressEvent(QMouseEvent *e)
{
    if (e->button() != Qt::LeftButton || mouse_ != Mouse::Idle) {
        e->ignore();
        return;
    }
    press_pos_ = along(e->pos());
    const int handle = handleAt(press_pos_);
    if (handle >= 0) {
        mouse_ = Mouse::Resizing;
        pressed_section_ = handle;
        press_size_ = sections_[handle].size;
        return;
    }
    const int section = sectionAt(press_pos_);
    if (section < 0)
        return;
    mouse_ = Mouse::Pressed;
    pressed_section_ = section;
    focused_ = mapToIndex(section);
    update();
    Q_EMIT pressed(section);
}

void Q3Header::mouseDoubleClickEvent(QMouseEvent *e)
{
    const int handle = e->button() == Qt::LeftButton ? handleAt(along(e->pos())) : -1;
    if (handle >= 0)
        Q_EMIT sectionHandleDoubleClicked(handle);
    else
        mousePressEvent(e);
}

void Q3Header::resizeByMouse(int pos)
{
    const int section = pressed_section_;
    const int size = std::max(smallest_section, press_size_ + pos - press_pos_);
    const int before = sections_[section].size;
    if (size == before)
        return;
    resizeSection(section, size);
    if (tracking_)
        Q_EMIT sizeChange(section, before, size);
}

void Q3Header::mouseMoveEvent(QMouseEvent *e)
{
    const int pos = along(e->pos());
    switch (mouse_) {
    case Mouse::Idle:
        if (handleAt(pos) >= 0)
            setCursor(orientation_ == Qt::Horizontal ? Qt::SplitHCursor : Qt::SplitVCursor);
        else
            unsetCursor();
        setHovered(mapToIndex(sectionAt(pos)));
        break;
    case Mouse::Resizing:
        resizeByMouse(pos);
        break;
    case Mouse::Pressed:
        if (!moving_enabled_ || std::abs(pos - press_pos_) <= QApplication::startDragDistance())
            break;
        mouse_ = Mouse::Moving;
        Q_FALLTHROUGH();
    case Mouse::Moving:
        gap_ = gapAt(pos);
        update();
        break;
    }
}

void Q3Header::mouseReleaseEvent(QMouseEvent *e)
{
    if (e->button() != Qt::LeftButton) {
        e->ignore();
        return;
    }
    const Mouse done = std::exchange(mouse_, Mouse::Idle);
    const int section = std::exchange(pressed_section_, -1);
    const int gap = std::exchange(gap_, -1);
    update();
    if (done == Mouse::Idle)
        return;
    if (done == Mouse::Resizing) {
        const int size = sections_[section].size;
        if (!tracking_ && size != press_size_)
            Q_EMIT sizeChange(section, press_size_, size);
        return;
    }
    const bool click = done == Mouse::Pressed && rect().contains(e->pos()) && sectionAt(along(e->pos())) == section;
    const QPointer<Q3Header> self(this);
    Q_EMIT released(section);
    if (!self)
        return;
    if (done == Mouse::Moving)
        moveByUser(section, gap);
    else if (click)
        emitClick(section);
}

void Q3Header::moveByUser(int section, int gap)
{
    const int from = mapToIndex(section);
    if (from < 0 || gap < 0 || gap == from || gap == from + 1)
        return;
    const QPointer<Q3Header> self(this);
    moveCell(from, gap > from ? gap - 1 : gap);
    Q_EMIT indexChange(section, from, gap);
    if (self)
        Q_EMIT moved(from, gap);
}

void Q3Header::emitClick(int section)
{
    if (!has(section) || !sections_[section].clickable)
        return;
    const QPointer<Q3Header> self(this);
    const int index = mapToIndex(section);
    Q_EMIT clicked(section);
    if (self)
        Q_EMIT sectionClicked(index);
}

void Q3Header::leaveEvent(QEvent *e)
{
    setHovered(-1);
    QWidget::leaveEvent(e);
}

void Q3Header::keyPressEvent(QKeyEvent *e)
{
    const bool backward = isRightToLeft() && orientation_ == Qt::Horizontal;
    const int forward_key = orientation_ == Qt::Vertical ? Qt::Key_Down : backward ? Qt::Key_Left : Qt::Key_Right;
    const int backward_key = orientation_ == Qt::Vertical ? Qt::Key_Up : backward ? Qt::Key_Right : Qt::Key_Left;
    const int step = e->key() == forward_key ? 1 : e->key() == backward_key ? -1 : 0;
    const int section = mapToSection(focused_);
    if (e->key() == Qt::Key_Space && section >= 0) {
        if (!e->isAutoRepeat()) {
            pressed_section_ = section;
            update();
            Q_EMIT pressed(section);
        }
    } else if (step != 0 && section >= 0) {
        const int target = std::clamp(focused_ + step, 0, count() - 1);
        const int from = std::exchange(focused_, target);
        update();
        if (moving_enabled_ && (e->modifiers() & Qt::ControlModifier) && target != from)
            moveByUser(section, step > 0 ? target + 1 : target);
    } else {
        e->ignore();
    }
}

void Q3Header::keyReleaseEvent(QKeyEvent *e)
{
    if (e->key() != Qt::Key_Space || e->isAutoRepeat() || pressed_section_ < 0) {
        e->ignore();
        return;
    }
    const int section = std::exchange(pressed_section_, -1);
    update();
    const QPointer<Q3Header> self(this);
    Q_EMIT released(section);
    if (self)
        emitClick(section);
}

bool Q3Header::event(QEvent *e)
{
    if (e->type() != QEvent::ToolTip || !toolTip().isEmpty())
        return QWidget::event(e);
    const auto *help = static_cast<QHelpEvent *>(e);
    const int section = sectionAt(along(help->pos()));
    if (section >= 0 && fittingSize(section) > sections_[section].size)
        QToolTip::showText(help->globalPos(), sections_[section].label, this, sectionRect(section));
    else
        QToolTip::hideText();
    return true;
}
