// SPDX-License-Identifier: MIT
//
// The dialog that finds and renames.
#include "listviews/tavilistview.h"
#include "listviews/tavilistviewrenamedlg.h"

void TaviListView::renameItems(int column_id, TaviRegistry &registry, std::string &section)
{
    delete rename_dialog;
    // A modeless dialog could not be reached from a window that is modal.
    if (window()->windowModality() != Qt::NonModal) {
        TaviListViewRenameDLG dialog(this, column_id, registry, section);
        // Nobody could close it any more for a view that has gone. Hiding ends it, and keeps no settings.
        connect(this, &QObject::destroyed, &dialog, &QWidget::hide);
        dialog.exec();
        return;
    }
    rename_dialog = new TaviListViewRenameDLG(this, column_id, registry, section);
    connect(rename_dialog, SIGNAL(closed()), this, SLOT(dismissRenameDialog()));
    rename_dialog->show();
}

void TaviListView::dismissRenameDialog()
{
    // It may be in the middle of telling that it closes.
    if (rename_dialog)
        rename_dialog->deleteLater();
    rename_dialog = nullptr;
}

void TaviListView::fireItemsRenamed(int modified_count)
{
    Q_EMIT itemsRenamed(modified_count);
}
