// SPDX-License-Identifier: MIT
#include "qt3/q3header.h"

#include <algorithm>
#include <numeric>

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
