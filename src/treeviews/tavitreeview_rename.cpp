// SPDX-License-Identifier: MIT
//
// The dialog that finds and renames.
#include "treeviews/tavitreeview.h"
#include "treeviews/tavitreeviewrenamedlg.h"

void TaviTreeView::renameItems(int column, TaviRegistry &registry, std::string &section)
{
    delete rename_dialog;
    const QPointer<TaviTreeViewRenameDLG> dialog = new TaviTreeViewRenameDLG(this, column, registry, section);
    // A modeless dialog could not be reached from a window that is modal.
    if (window()->windowModality() != Qt::NonModal) {
        dialog->exec();
        delete dialog; // gone already if this view is
        return;
    }
    rename_dialog = dialog.data();
    connect(dialog, SIGNAL(closed()), this, SLOT(dismissRenameDialog()));
    dialog->show();
}

void TaviTreeView::dismissRenameDialog()
{
    if (rename_dialog)
        rename_dialog->deleteLater();
    rename_dialog = nullptr;
}

void TaviTreeView::fireItemsRenamed(int count)
{
    Q_EMIT itemsRenamed(count);
}
