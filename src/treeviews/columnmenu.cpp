// SPDX-License-Identifier: MIT
#include "treeviews/columnmenu_p.h"

#include <QAction>
#include <QIcon>
#include <QMenu>

void addConfigureEntry(QMenu *menu, const QString &text, QObject *receiver, const char *slot)
{
    menu->addAction(text + QLatin1String("..."), receiver, slot)->setData(-1);
    menu->addSeparator();
}

QAction *addColumnEntry(QMenu *menu, const QIcon &icon, const QString &title, int number, bool ticked)
{
    // A title may have an ampersand, which in a menu would mark the key of an entry.
    QAction *entry = menu->addAction(icon, QString(title).replace(QLatin1Char('&'), QLatin1String("&&")));
    entry->setData(number);
    entry->setCheckable(true);
    entry->setChecked(ticked);
    return entry;
}
