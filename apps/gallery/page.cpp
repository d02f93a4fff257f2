// SPDX-License-Identifier: MIT
#include "gallery/page.h"

QVector<Page> galleryPages()
{
    return {
        {"colorscheme", "ColorScheme", "Named tints for windows: choose one and see it in its three ways of filling.",
         makeColorSchemePage},
        {"frequencyedit", "FrequencyEdit",
         "How often something is to happen, or when it expires, and dates as the user's locale writes them.",
         makeFrequencyEditPage},
        {"tavigfx", "TaviGfx",
         "Helpers for drawing: tints with readable text, a speech bubble, size handles, texts that fit, fonts, "
         "printing.",
         makeTaviGfxPage},
        {"spectrobuddy", "SpectroBuddy",
         "The instrument box of a panel: chooses an instrument and delivers its colours.", makeSpectroBuddyPage},
        {"taviwidgetutil", "TaviWidgetUtil", "Message box icons, coloured backgrounds, pane widths as text.",
         makeTaviWidgetUtilPage},
        {"taviconfigorder", "TaviConfigOrder",
         "The dialog in which the user says which things show, and in what order.", makeTaviConfigOrderPage},
        {"taviconfigorderlistview", "TaviConfigOrderListView",
         "A pair of classic lists between which things are dragged; a red mark shows where a drop would go.",
         makeTaviConfigOrderListViewPage},
        {"tavigridview", "TaviGridView",
         "A collection as cells of one size, as many in a row as fit: the patches of a characterisation set.",
         makeTaviGridViewPage},
        {"taviheaderview", "TaviHeaderView",
         "Columns that come, go and move by menu, dialog, mouse and keys, and the kinds of cells of an item "
         "delegate.",
         makeTaviHeaderViewPage},
        {"tavilistview", "TaviListView",
         "The classic list: columns that the user shows, hides and orders by the menu of the header, and a filter.",
         makeTaviListViewPage},
        {"tavilistviewrenamedlg", "TaviListViewRenameDLG",
         "The dialog that finds, replaces, prefixes and appends in one column of a classic list.",
         makeTaviListViewRenamePage},
        {"tavitreeview", "TaviTreeView",
         "A tree that is sorted, ticked and filtered as one types: a characterisation set by the number of inks.",
         makeTaviTreeViewPage},
        {"tavitreeviewrenamedlg", "TaviTreeViewRenameDLG",
         "The dialog that finds, replaces, prefixes and appends in one column of a tree.",
         makeTaviTreeViewRenamePage},
    };
}
