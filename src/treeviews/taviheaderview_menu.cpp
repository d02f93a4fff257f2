// SPDX-License-Identifier: MIT
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
    // By name, so that a subclass with such a slot of its own is asked.
    QAction *configure =
        menu->addAction(tr("Configure Headers") + QLatin1String("..."), this, SLOT(configureHeaders()));
    configure->setData(-1);
    menu->addSeparator();
    for (int section = 0; section < count(); ++section) {
        // A title may have an ampersand, which in a menu would mark the key of an entry.
        const QString title = model()->headerData(section, Qt::Horizontal, Qt::DisplayRole).toString();
        QAction *toggle = menu->addAction(QString(title).replace(QLatin1Char('&'), QLatin1String("&&")));
        toggle->setData(section);
        toggle->setCheckable(true);
        toggle->setChecked(!isSectionHidden(section));
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
