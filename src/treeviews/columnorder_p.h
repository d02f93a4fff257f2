// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_COLUMNORDER_P_H
#define TREEVIEWS_COLUMNORDER_P_H

#include "foundation/taviwidgets_export.h"

#include <QList>

class ConfigOrderItem;
class TaviHeaderView;

/// The columns of a header as entries of the order dialog, without the dialog.
struct TAVIWIDGETS_EXPORT ColumnOrder {
    QList<ConfigOrderItem *> all;   ///< One for each section, by logical index, visible as the section is.
    QList<ConfigOrderItem *> shown; ///< One for each visible section, in visual order.

    /// New entries for @a header, which the caller owns.
    static ColumnOrder of(const TaviHeaderView &header);
    /// Shows, hides and orders the sections of @a header as the entries tell. Entries of sections that are not there
    /// any more are passed over.
    void applyTo(TaviHeaderView &header) const;
};

#endif
