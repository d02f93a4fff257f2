// SPDX-License-Identifier: MIT
#include "treeviews/headerstate_p.h"
#include "treeviews/taviheaderview.h"

#include <QPointer>
#include <QSignalBlocker>

namespace {

/// While this lives, no section is stretched, so that each has the size that it is given.
class StretchSuspended
{
public:
    explicit StretchSuspended(QHeaderView *header) : header_(header), stretched_(header->stretchLastSection())
    {
        header->setStretchLastSection(false);
    }
    ~StretchSuspended() { header_->setStretchLastSection(stretched_); }
    StretchSuspended(const StretchSuspended &) = delete;
    StretchSuspended &operator=(const StretchSuspended &) = delete;

private:
    QHeaderView *const header_;
    const bool stretched_;
};

} // namespace

/// By logical index, 0 for those that are shown. A hidden section tells its size only while it is shown, so each is
/// for a moment; nobody hears of it, and in the end all is as before.
QVector<int> TaviHeaderView::hiddenSectionSizes()
{
    QVector<int> sizes(modelColumnCount(), 0);
    if (!sectionsHidden())
        return sizes;
    const QSignalBlocker blocker(this);
    const StretchSuspended unstretched(this);
    const SectionMinimumLifted lifted(this, &lowered_minimum);
    for (int section = 0; section < sizes.size(); ++section) {
        if (!isSectionHidden(section))
            continue;
        setSectionHidden(section, false);
        sizes[section] = sectionSize(section);
        setSectionHidden(section, true);
    }
    return sizes;
}

QByteArray TaviHeaderView::saveState()
{
    HeaderState state;
    const QVector<int> hidden_sizes = hiddenSectionSizes();
    for (int section = 0; section < hidden_sizes.size(); ++section) {
        const bool hidden = isSectionHidden(section);
        const int size = hidden ? hidden_sizes.at(section) : sectionSize(section);
        state.sections.append({size, visualIndex(section), hidden});
    }
    state.sort_order = sortIndicatorOrder();
    state.sort_section = sortIndicatorSection();
    return state.toBytes();
}

bool TaviHeaderView::restoreState(const QByteArray &bytes)
{
    // A model may have got columns without a word to its views.
    if (orientation() == Qt::Horizontal && count() != modelColumnCount())
        initializeSections();
    const HeaderState state = HeaderState::fromBytes(bytes, modelColumnCount());
    {
        const StretchSuspended unstretched(this);
        const SectionMinimumLifted lifted(this, &lowered_minimum);
        QVector<int> places;
        for (int section = 0; section < state.sections.size(); ++section) {
            const int size = state.sections.at(section).size;
            resizeSection(section, size < least_section_size ? defaultSectionSize() : size);
            places.append(state.sections.at(section).visual_index);
        }
        QVector<int> present;
        for (int place = 0; place < count(); ++place)
            present.append(logicalIndex(place));
        // From the first place to the last: what stands already is never moved again.
        const QVector<int> order = orderOfSections(present, places);
        for (int place = 0; place < order.size(); ++place)
            moveSection(visualIndex(order.at(place)), place);
        for (int section = 0; section < state.sections.size(); ++section)
            setSectionHidden(section, state.sections.at(section).hidden);
    }
    const QPointer<TaviHeaderView> self(this);
    setSortIndicator(state.sort_section,
                     state.sort_order == Qt::DescendingOrder ? Qt::DescendingOrder : Qt::AscendingOrder);
    // Views that sort by clicks have not heard of the indicator.
    if (self)
        Q_EMIT sectionClicked(state.sort_section);
    return true;
}

QByteArray TaviHeaderView::autoUpdateHeaderState(TaviRegistry &registry, std::string &section)
{
    return takeOldestHeaderSettings(registry, section, count());
}
