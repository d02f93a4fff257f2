// SPDX-License-Identifier: MIT
#include "qt3/q3header.h"

#include <QEvent>

#include <algorithm>
#include <numeric>
#include <utility>

Q3Header::Q3Header(QWidget *parent, const char *name) : Q3Header(0, parent, name) {}

Q3Header::Q3Header(int n, QWidget *parent, const char *name) : QWidget(parent)
{
    setObjectName(QLatin1String(name));
    setMouseTracking(true);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    for (int i = 0; i < n; ++i)
        addLabel(QString());
}

Q3Header::~Q3Header() = default;

int Q3Header::addLabel(const QString &s, int size)
{
    return insert(nullptr, s, size);
}

int Q3Header::addLabel(const QIcon &icon, const QString &s, int size)
{
    return insert(std::make_unique<QIcon>(icon), s, size);
}

int Q3Header::insert(std::unique_ptr<QIcon> icon, const QString &text, int size)
{
    const int section = count();
    Section added;
    added.label = text;
    added.icon = std::move(icon);
    added.clickable = click_default_;
    added.resizable = resize_default_;
    added.stretches = stretch_default_;
    sections_.push_back(std::move(added));
    order_.push_back(section);
    sections_.back().size = size < 0 ? fittingSize(section) : size;
    adjustHeaderSize();
    updateGeometry();
    update();
    return section;
}

void Q3Header::removeLabel(int section)
{
    if (!has(section))
        return;
    sections_.erase(sections_.begin() + section);
    order_.erase(order_.begin() + std::distance(order_.begin(), std::find(order_.begin(), order_.end(), section)));
    for (int &other : order_)
        other -= other > section ? 1 : 0;
    if (sort_section_ == section)
        sort_section_ = -1;
    else if (sort_section_ > section)
        --sort_section_;
    mouse_ = Mouse::Idle;
    gap_ = hovered_ = pressed_section_ = -1;
    adjustHeaderSize();
    updateGeometry();
    update();
}

void Q3Header::setLabel(int section, const QString &s, int size)
{
    if (!has(section))
        return;
    sections_[section].label = s;
    if (size >= 0)
        setCellSize(section, size);
    updateGeometry();
    update();
}

void Q3Header::setLabel(int section, const QIcon &icon, const QString &s, int size)
{
    if (!has(section))
        return;
    sections_[section].icon = std::make_unique<QIcon>(icon);
    setLabel(section, s, size);
}

QString Q3Header::label(int section) const
{
    return has(section) ? sections_[section].label : QString();
}

QIcon *Q3Header::iconSet(int section) const
{
    return has(section) ? sections_[section].icon.get() : nullptr;
}

int Q3Header::mapToIndex(int section) const
{
    const auto found = std::find(order_.begin(), order_.end(), section);
    return found == order_.end() ? -1 : static_cast<int>(found - order_.begin());
}

int Q3Header::mapToSection(int index) const
{
    return index >= 0 && index < count() ? order_[index] : -1;
}

void Q3Header::moveSection(int section, int toIndex)
{
    const int from = mapToIndex(section);
    if (from < 0)
        return;
    const int to = std::clamp(toIndex, 0, count() - 1);
    const auto first = order_.begin();
    if (from < to)
        std::rotate(first + from, first + from + 1, first + to + 1);
    else
        std::rotate(first + to, first + from, first + from + 1);
    update();
}

void Q3Header::moveCell(int fromIdx, int toIdx)
{
    moveSection(mapToSection(fromIdx), toIdx);
}

int Q3Header::sectionSize(int section) const
{
    return has(section) ? sections_[section].size : 0;
}

int Q3Header::sectionPos(int section) const
{
    int pos = 0;
    for (const int other : order_) {
        if (other == section)
            return pos;
        pos += sections_[other].size;
    }
    return 0;
}

int Q3Header::sectionAt(int pos) const
{
    if (pos < 0)
        return -1;
    int end = 0;
    for (const int section : order_) {
        end += sections_[section].size;
        if (pos < end)
            return section;
    }
    return -1;
}

int Q3Header::cellAt(int pos) const
{
    return mapToIndex(sectionAt(along(orientation_ == Qt::Horizontal ? QPoint(pos, 0) : QPoint(0, pos))));
}

int Q3Header::headerWidth() const
{
    return std::accumulate(sections_.begin(), sections_.end(), 0,
                           [](int sum, const Section &section) { return sum + section.size; });
}

int Q3Header::extent() const
{
    return orientation_ == Qt::Horizontal ? width() : height();
}

/// A position in the widget as one from the header's beginning.
int Q3Header::along(const QPoint &point) const
{
    if (orientation_ == Qt::Vertical)
        return point.y() + offset_;
    const int pos = point.x() + offset_;
    return isRightToLeft() ? std::max(headerWidth(), width()) - 1 - pos : pos;
}

QRect Q3Header::sectionRect(int section) const
{
    if (!has(section))
        return QRect();
    const int pos = sectionPos(section);
    const int size = sections_[section].size;
    if (orientation_ == Qt::Vertical)
        return QRect(0, pos - offset_, width(), size);
    const int left = isRightToLeft() ? std::max(headerWidth(), width()) - pos - size : pos;
    return QRect(left - offset_, 0, size, height());
}

QRect Q3Header::sRect(int index)
{
    return sectionRect(mapToSection(index));
}

void Q3Header::resizeSection(int section, int s)
{
    setCellSize(section, s);
    updateGeometry();
    update();
}

void Q3Header::setCellSize(int section, int s)
{
    if (has(section))
        sections_[section].size = std::max(0, s);
}

void Q3Header::adjustHeaderSize()
{
    int fixed = 0;
    int stretching = 0;
    for (const Section &section : sections_) {
        stretching += section.stretches ? 1 : 0;
        fixed += section.stretches ? 0 : section.size;
    }
    const int room = extent() - fixed;
    // Before it has a place among other widgets its size says nothing.
    if (stretching == 0 || room <= 0 || !testAttribute(Qt::WA_Resized))
        return;
    int done = 0;
    for (const int index : order_) {
        Section &section = sections_[index];
        if (section.stretches) {
            section.size = room * (done + 1) / stretching - room * done / stretching;
            ++done;
        }
    }
    update();
}

bool Q3Header::isClickEnabled(int section) const
{
    if (has(section))
        return sections_[section].clickable;
    return std::all_of(sections_.begin(), sections_.end(), [](const Section &one) { return one.clickable; });
}

void Q3Header::setClickEnabled(bool enable, int section)
{
    if (has(section))
        sections_[section].clickable = enable;
    if (section != -1)
        return;
    click_default_ = enable;
    for (Section &one : sections_)
        one.clickable = enable;
}

bool Q3Header::isResizeEnabled(int section) const
{
    if (has(section))
        return sections_[section].resizable;
    return std::all_of(sections_.begin(), sections_.end(), [](const Section &one) { return one.resizable; });
}

void Q3Header::setResizeEnabled(bool enable, int section)
{
    if (has(section))
        sections_[section].resizable = enable;
    if (section >= 0)
        return;
    resize_default_ = enable;
    for (Section &one : sections_)
        one.resizable = enable;
}

bool Q3Header::isStretchEnabled(int section) const
{
    if (has(section))
        return sections_[section].stretches;
    return section == -1 && !sections_.empty()
           && std::all_of(sections_.begin(), sections_.end(), [](const Section &one) { return one.stretches; });
}

void Q3Header::setStretchEnabled(bool b, int section)
{
    if (has(section))
        sections_[section].stretches = b;
    if (section == -1) {
        stretch_default_ = b;
        for (Section &one : sections_)
            one.stretches = b;
    }
    adjustHeaderSize();
}

void Q3Header::setMovingEnabled(bool enable)
{
    moving_enabled_ = enable;
}

void Q3Header::setTracking(bool enable)
{
    tracking_ = enable;
}

void Q3Header::setOrientation(Qt::Orientation orientation)
{
    orientation_ = orientation;
    updateGeometry();
    update();
}

void Q3Header::setSortIndicator(int section, Qt::SortOrder order)
{
    sort_section_ = section;
    sort_order_ = order;
    updateGeometry();
    update();
}

void Q3Header::setSortIndicator(int section, bool ascending)
{
    setSortIndicator(section, ascending ? Qt::AscendingOrder : Qt::DescendingOrder);
}

void Q3Header::setOffset(int pos)
{
    if (pos == offset_)
        return;
    const int by = offset_ - pos;
    offset_ = pos;
    if (orientation_ == Qt::Horizontal)
        scroll(by, 0);
    else
        scroll(0, by);
}

void Q3Header::changeEvent(QEvent *ev)
{
    QWidget::changeEvent(ev);
    if (ev->type() == QEvent::FontChange || ev->type() == QEvent::StyleChange
        || ev->type() == QEvent::LayoutDirectionChange) {
        updateGeometry();
        update();
    }
}

void Q3Header::resizeEvent(QResizeEvent *e)
{
    QWidget::resizeEvent(e);
    adjustHeaderSize();
}

void Q3Header::showEvent(QShowEvent *e)
{
    adjustHeaderSize();
    QWidget::showEvent(e);
}
