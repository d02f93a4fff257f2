// SPDX-License-Identifier: MIT
#include "treeviews/headerstate_p.h"

#include <QDataStream>
#include <QIODevice>

#include <limits>

QByteArray HeaderState::toBytes() const
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    for (const HeaderSectionState &section : sections)
        stream << qint32(section.size) << qint32(section.visual_index) << section.hidden;
    stream << qint32(sort_order) << qint32(sort_section);
    return bytes;
}

HeaderState HeaderState::fromBytes(const QByteArray &bytes, int columns)
{
    HeaderState state;
    QDataStream stream(bytes);
    for (int column = 0; column < columns; ++column) {
        qint32 size = 0, visual_index = 0;
        bool hidden = false;
        stream >> size >> visual_index >> hidden;
        if (stream.status() == QDataStream::Ok)
            state.sections.append({size, visual_index, hidden});
    }
    qint32 order = 0, section = 0;
    stream >> order >> section;
    state.sort_order = order;
    state.sort_section = section;
    return state;
}

QVector<int> orderOfSections(const QVector<int> &present, const QVector<int> &wanted)
{
    const int count = present.size();
    QVector<int> order(count, -1);
    QVector<bool> placed(count, false);
    for (int section = 0; section < qMin(count, wanted.size()); ++section) {
        const int place = wanted.at(section);
        if (place >= 0 && place < count && order.at(place) < 0) {
            order[place] = section;
            placed[section] = true;
        }
    }
    int place = 0;
    for (const int section : present) {
        if (placed.at(section))
            continue;
        while (order.at(place) >= 0)
            ++place;
        order[place] = section;
    }
    return order;
}

SectionMinimumLifted::SectionMinimumLifted(QHeaderView *header, int *lowered) : header_(header), lowered_(lowered)
{
    const int minimum = header->minimumSectionSize();
    if (minimum != *lowered) {
        header->setMinimumSectionSize(-1);
        if (header->minimumSectionSize() != minimum) {
            header->setMinimumSectionSize(minimum);
            return;
        }
    }
    header->setMinimumSectionSize(0);
    lifted_ = true;
}

SectionMinimumLifted::~SectionMinimumLifted()
{
    if (!lifted_)
        return;
    const int smallest = smallestSection();
    header_->setMinimumSectionSize(-1);
    const bool lower = smallest < header_->minimumSectionSize();
    *lowered_ = lower ? qMax(smallest, least_section_size) : -1;
    if (lower) {
        // Raised from below: that widens what is smaller, which lowering would leave.
        header_->setMinimumSectionSize(0);
        header_->setMinimumSectionSize(*lowered_);
    }
}

/// Of those that show, but for one that is stretched: that takes the room which is there.
int SectionMinimumLifted::smallestSection() const
{
    int smallest = std::numeric_limits<int>::max();
    bool skip = header_->stretchLastSection();
    for (int place = header_->count() - 1; place >= 0; --place) {
        const int section = header_->logicalIndex(place);
        if (header_->isSectionHidden(section))
            continue;
        if (!skip)
            smallest = qMin(smallest, header_->sectionSize(section));
        skip = false;
    }
    return smallest;
}
