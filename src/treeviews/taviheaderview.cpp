// SPDX-License-Identifier: MIT
#include "treeviews/taviheaderview.h"

#include "treeviews/headerstate_p.h"

#include <QAbstractItemModel>

#include <algorithm>

TaviHeaderView::TaviHeaderView(Qt::Orientation orientation, QWidget *parent) : QHeaderView(orientation, parent)
{
    setAccessibleName(tr("Column headers"));
    setMinimumSectionSize(-1);
    setDefaultAlignment(Qt::AlignLeft);
    setSectionsClickable(true);
    setSectionsMovable(true);
    setSortIndicatorShown(true);
    setSectionResizeMode(QHeaderView::Interactive);
    setStretchLastSection(true);
    setVisible(true);
    setContextMenuPolicy(Qt::CustomContextMenu);
    // For keys only: a click on a column must not take the focus away from the rows.
    setFocusPolicy(Qt::TabFocus);
    connect(this, &QWidget::customContextMenuRequested, this, &TaviHeaderView::headerMenu);
}

TaviHeaderView::~TaviHeaderView() = default;

void TaviHeaderView::setMenuEnabled(bool on)
{
    menu_enabled = on;
}

bool TaviHeaderView::isMenuEnabled() const
{
    return menu_enabled;
}

int TaviHeaderView::modelColumnCount() const
{
    return model() ? model()->columnCount(rootIndex()) : 0;
}

int TaviHeaderView::visibleSectionCount() const
{
    int visible = 0;
    for (int section = 0; section < modelColumnCount(); ++section)
        visible += isSectionHidden(section) ? 0 : 1;
    return visible;
}

int TaviHeaderView::logicalIndexFromVisible(int visible_index) const
{
    QVector<int> visual_indexes;
    for (int section = 0; section < modelColumnCount(); ++section) {
        if (!isSectionHidden(section))
            visual_indexes.append(visualIndex(section));
    }
    std::sort(visual_indexes.begin(), visual_indexes.end());
    if (visible_index < 0 || visible_index >= visual_indexes.size())
        return -1;
    return logicalIndex(visual_indexes.at(visible_index));
}

void TaviHeaderView::showSectionLastStretchSafe(int section)
{
    if (!isSectionHidden(section))
        return;
    {
        const SectionMinimumLifted lifted(this, &lowered_minimum);
        setSectionHidden(section, false);
    }
    if (!stretchLastSection())
        return;
    const int visible = visibleSectionCount();
    const int last = logicalIndexFromVisible(visible - 1);
    if (last != section || visible < 2)
        return;
    const int neighbour = logicalIndexFromVisible(visible - 2);
    // The sizes as they stand now: the newcomer is stretched already, and its neighbour isn't any more. So where
    // there is room the newcomer is the wider one and halves its neighbour, and stretching then gives it the rest all
    // the same. Users know it like that.
    const int room = sectionSize(last);
    const int neighbour_size = sectionSize(neighbour);
    const SectionMinimumLifted lifted(this, &lowered_minimum);
    if (room > neighbour_size) {
        resizeSection(neighbour, neighbour_size / 2);
        resizeSection(last, neighbour_size / 2);
        return;
    }
    int left = neighbour_size - room;
    if (left < defaultSectionSize()) {
        // Below the default size this is a negative number, which a header passes over.
        resizeSection(last, neighbour_size - defaultSectionSize());
        left = defaultSectionSize();
    }
    resizeSection(neighbour, left);
}
