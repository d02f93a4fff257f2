// SPDX-License-Identifier: MIT
#include "gallery/page.h"

QVector<Page> galleryPages()
{
    return {
        {"spectrobuddy", "SpectroBuddy",
         "The instrument box of a panel: chooses an instrument and delivers its colours.", makeSpectroBuddyPage},
        {"tavigridview", "TaviGridView",
         "A collection as cells of one size, as many in a row as fit: the patches of a characterisation set.",
         makeTaviGridViewPage},
        {"tavitreeview", "TaviTreeView",
         "A tree that is sorted, ticked and filtered as one types: a characterisation set by the number of inks.",
         makeTaviTreeViewPage},
    };
}
