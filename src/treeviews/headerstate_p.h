// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_HEADERSTATE_P_H
#define TREEVIEWS_HEADERSTATE_P_H

#include "foundation/taviwidgets_export.h"

#include <QByteArray>
#include <QHeaderView>
#include <QVector>

#include <string>

class TaviRegistry;

/// What a header's state tells of one section.
struct HeaderSectionState {
    int size;
    int visual_index;
    bool hidden;
};

/// A header's state, as bytes of the format that taviheaderview.h describes.
struct TAVIWIDGETS_EXPORT HeaderState {
    QVector<HeaderSectionState> sections; ///< By logical index.
    int sort_order = 0;
    int sort_section = 0;

    QByteArray toBytes() const;
    /// The state of @a columns sections; fewer where the bytes end before that. Numbers that are not there are 0.
    static HeaderState fromBytes(const QByteArray &bytes, int columns);
};

/// The logical sections in the visual order that is wanted.
///
/// @param present the logical sections in their present order
/// @param wanted the wanted place of each logical section, from the first on; perhaps not for all
///
/// A place that is out of range or wanted by an earlier section already counts as none. Sections without a place keep
/// their order among themselves and fill the places that are left.
TAVIWIDGETS_EXPORT QVector<int> orderOfSections(const QVector<int> &present, const QVector<int> &wanted);

/// The state told by the oldest settings of a header with @a columns sections, as
/// TaviHeaderView::autoUpdateHeaderState() describes; null if they don't tell one section each. The settings are
/// removed.
TAVIWIDGETS_EXPORT QByteArray takeOldestHeaderSettings(TaviRegistry &registry, std::string &section, int columns);

/// Sizes below this are no widths that anybody chose.
constexpr int least_section_size = 6;

/// While this lives, sections of a header may have any size. A header would widen them to the style's minimum, not
/// only now but also whenever it stretches its last section. So afterwards its minimum is as low as the smallest
/// section needs it (but least_section_size), and the style's if none needs it lower. A minimum that the application
/// has set stays in force.
class TAVIWIDGETS_EXPORT SectionMinimumLifted
{
public:
    /// @param lowered where the header keeps the minimum that this class gave it last; -1 for none
    SectionMinimumLifted(QHeaderView *header, int *lowered);
    ~SectionMinimumLifted();
    SectionMinimumLifted(const SectionMinimumLifted &) = delete;
    SectionMinimumLifted &operator=(const SectionMinimumLifted &) = delete;

private:
    int smallestSection() const;

    QHeaderView *const header_;
    int *const lowered_;
    bool lifted_ = false;
};

#endif
