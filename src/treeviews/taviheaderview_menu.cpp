// SPDX-License-Identifier: MIT
#include "treeviews/columnmenu_p.h"
#include "treeviews/taviheaderview.h"

#include <QAbstractItemModel>
#include <QAction>
#include <QCursor>
#include <QMenu>
#include <QPointer>

void TaviHeaderView::headerMenu(QPoint)
{
    if (!menu_enabled)
        return;
    const QPointer<QMenu> menu = new QMenu(this);
    addConfigureEntry(menu, tr("Configure Headers"), this, SLOT(configureHeaders()));
    for (int section = 0; section < count(); ++section) {
        const QString title = model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
        addColumnEntry(menu, QIcon(), title, section, !isSectionHidden(section));
    }
    const QAction *chosen = menu->exec(QCursor::pos());
    // Whatever ran while the menu was open, the dialog among others, may have taken the header away, and the menu
    // with it.
    if (!menu)
        return;
    const int section = chosen ? chosen->data().toInt() : -1;
    const bool show = chosen && chosen->isChecked();
    delete menu;
    if (section < 0)
        return;
    if (show)
        showSectionLastStretchSafe(section);
    else
        setSectionHidden(section, true);
}
