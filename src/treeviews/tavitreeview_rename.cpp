// SPDX-License-Identifier: MIT
//
// Starting the dialog that finds and renames.
#include "treeviews/tavitreeview.h"

#include <QDialog>

#include <memory>

namespace {

/// The dialog for a column of a view. There is none yet: it joins with the classic lists, whose form it shares, and
/// until then this gives null.
QDialog *makeRenameDialog(TaviTreeView *view, int column, TaviRegistry &registry, const std::string &section)
{
    Q_UNUSED(view)
    Q_UNUSED(column)
    Q_UNUSED(registry)
    Q_UNUSED(section)
    return nullptr;
}

} // namespace

void TaviTreeView::renameItems(int column, TaviRegistry &registry, std::string &section)
{
    delete rename_dialog;
    std::unique_ptr<QDialog> dialog(makeRenameDialog(this, column, registry, section));
    if (!dialog)
        return;
    // A modeless dialog could not be reached from a window that is modal.
    if (window()->windowModality() != Qt::NonModal) {
        dialog->exec();
        return;
    }
    rename_dialog = dialog.release();
    connect(rename_dialog, SIGNAL(closed()), this, SLOT(dismissRenameDialog()));
    rename_dialog->show();
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
