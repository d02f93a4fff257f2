// SPDX-License-Identifier: MIT
#ifndef LISTVIEWS_TAVILISTVIEWRENAMEDLG_H
#define LISTVIEWS_TAVILISTVIEWRENAMEDLG_H

#include "foundation/taviwidgets_export.h"
#include "treeviews/tavirenamedialog.h"

#include <QPointer>

#include <string>

class TaviListView;
class TaviRegistry;

/// The window that finds and renames in one column of a TaviListView. TaviListView::renameItems() opens it.
///
/// @image html tavilistviewrenamedlg.png
///
/// It goes over the top-level items in the order in which the view shows them, also over those that a keyword hides;
/// children are left alone. The column is told by its id and may be moved and hidden meanwhile. While it is hidden,
/// and in a view without the header menu, which has no ids, there is nothing to find or to rename.
///
/// **Finding** begins behind the item that is selected, or before it when it goes backwards; if none or several are
/// selected, at the first item, or the last, and then a selected item may be a hit. With "Wrap Around" a search that
/// finds nothing looks once more from that end, over all items. A hit alone is selected afterwards, and in sight.
///
/// **Renaming** changes the items whose column can be renamed (Q3ListViewItem::renameEnabled()), all of them, those
/// that are selected, or the first that is selected. The texts are those of Q3ListViewItem::text(), written by
/// Q3ListViewItem::setText(). Each item that was there at the beginning is handled once; a view that is sorted is
/// sorted anew when all have their texts. In the end TaviListView::itemsRenamed() tells the number.
///
/// **Ownership.** The window has no parent, and stands on top of all others. It does not keep the application
/// running. Whoever makes it deletes it, also when the view goes before it; after that it finds and renames nothing.
///
/// **Complexity.** Finding and renaming cost all top-level items.
class TAVIWIDGETS_EXPORT TaviListViewRenameDLG : public TaviRenameDialog
{
    Q_OBJECT

public:
    /// A window for the column of @a view with the id @a column_id, with its settings in @a section of @a registry,
    /// which must outlive it; of an empty section nothing is read or kept.
    TaviListViewRenameDLG(TaviListView *view, int column_id, TaviRegistry &registry, std::string &section);
    ~TaviListViewRenameDLG() override;

private:
    int renameRows(const RenameRule &rule, Rows which, const Report &report) override;
    bool findRow(const RenameRule &rule, bool forward) override;

    QPointer<TaviListView> list_view;
    int column_id;
};

#endif
