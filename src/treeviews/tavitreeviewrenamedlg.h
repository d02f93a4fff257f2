// SPDX-License-Identifier: MIT
#ifndef TREEVIEWS_TAVITREEVIEWRENAMEDLG_H
#define TREEVIEWS_TAVITREEVIEWRENAMEDLG_H

#include "foundation/taviwidgets_export.h"
#include "treeviews/tavirenamedialog.h"

#include <QPersistentModelIndex>
#include <QPointer>

#include <string>

class TaviRegistry;
class TaviTreeView;

/// The window that finds and renames in one column of a TaviTreeView. TaviTreeView::renameItems() opens it.
///
/// @image html tavitreeviewrenamedlg.png
///
/// It goes over the rows of the top level in the order in which the view shows them, also over those that a keyword
/// hides; children are left alone.
///
/// **Finding** begins at the first row, or the last, and goes on from where it came to, whatever is selected. With
/// "Wrap Around" it goes on at the other end. A hit is selected and scrolled to. A search that came to the end stays
/// there: the next one in the same direction fails.
///
/// **Renaming** changes the rows whose cell can be edited (`Qt::ItemIsEditable`), all of them, those that are
/// selected, or the first that is selected. The texts are those of `Qt::DisplayRole`, written through the view's
/// model. Each row that was there at the beginning is handled once, also where it is sorted to another place
/// meanwhile. In the end TaviTreeView::itemsRenamed() tells the number.
///
/// **Ownership.** The view is the parent.
///
/// **Complexity.** Finding costs the rows between one hit and the next. Renaming costs all rows.
class TAVIWIDGETS_EXPORT TaviTreeViewRenameDLG : public TaviRenameDialog
{
    Q_OBJECT

public:
    /// A window for @a column of @a view, with its settings in @a section of @a registry, which must outlive it; of
    /// an empty section nothing is read or kept.
    TaviTreeViewRenameDLG(TaviTreeView *view, int column, TaviRegistry &registry, std::string &section);
    ~TaviTreeViewRenameDLG() override;

    /// The cell that a search looks at next: below the last one, or the first; with "Wrap Around" the first after the
    /// last, without it none.
    QModelIndex nextCandidate() const;
    /// The same upwards, with first and last row in each other's place.
    QModelIndex prevCandidate() const;

private:
    int renameRows(const RenameRule &rule, Rows which, const Report &report) override;
    bool findRow(const RenameRule &rule, bool forward) override;
    QModelIndex cell(int row) const;

    QPointer<TaviTreeView> view;
    int column;
    QPersistentModelIndex found_index; ///< Where a search looked last.
};

#endif
