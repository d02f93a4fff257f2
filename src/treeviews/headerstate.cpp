// SPDX-License-Identifier: MIT
#include "treeviews/headerstate_p.h"

#include <QDataStream>
#include <QIODevice>

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

SectionMinimumLifted::SectionMinimumLifted(QHeaderView *header) : header_(header)
{
    const int minimum = header->minimumSectionSize();
    header->setMinimumSectionSize(-1);
    if (header->minimumSectionSize() != minimum) {
        header->setMinimumSectionSize(minimum);
        return;
    }
    header->setMinimumSectionSize(0);
    lifted_ = true;
}

SectionMinimumLifted::~SectionMinimumLifted()
{
    if (lifted_)
        header_->setMinimumSectionSize(-1);
}
