// SPDX-License-Identifier: MIT
#include "treeviews/viewframe_p.h"

#include <QApplication>
#include <QGridLayout>
#include <QPalette>
#include <QStatusBar>

QPalette viewPalette()
{
    // Only these roles: all others follow the application's palette, be it light or dark.
    QPalette colours;
    colours.setColor(QPalette::All, QPalette::Highlight, QColor(0xBF, 0xD8, 0xFA));
    colours.setColor(QPalette::All, QPalette::HighlightedText, Qt::black);
    colours.setColor(QPalette::Disabled, QPalette::Text, Qt::gray);
    colours.setColor(QPalette::Disabled, QPalette::HighlightedText, Qt::gray);
    return colours;
}

void followApplicationPalette(QWidget *view)
{
    // A palette marks a role as set for all groups at once: with the grey of disabled texts the view has taken over
    // the colour of all others.
    QPalette colours = view->palette();
    const QPalette of_application = QApplication::palette();
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive})
        colours.setColor(group, QPalette::Text, of_application.color(group, QPalette::Text));
    view->setPalette(colours);
}

void putAboveStatusBar(QWidget *container, QWidget *view, QStatusBar *status_bar, const QString &status_bar_name)
{
    auto *const layout = new QGridLayout(container);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(view, 0, 0); // which makes the container the parent
    status_bar->setSizeGripEnabled(false);
    status_bar->setAccessibleName(status_bar_name);
    layout->addWidget(status_bar, 1, 0);
    layout->setRowStretch(0, 1);
    layout->setRowStretch(1, 0);
}
