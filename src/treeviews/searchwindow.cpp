// SPDX-License-Identifier: MIT
#include "treeviews/searchwindow_p.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>

QLineEdit *furnishSearchWindow(QWidget *window, const QString &title, const QString &line_edit_name)
{
    window->setObjectName(QStringLiteral("filter_floater"));
    window->setWindowTitle(title);
    window->setAccessibleName(title);

    auto *const line_edit = new QLineEdit(window);
    line_edit->setAccessibleName(line_edit_name);
    auto *const icon = new QLabel(window);
    icon->setPixmap(QPixmap(QStringLiteral(":tavi/search.png")));
    icon->setBuddy(line_edit);
    auto *const layout = new QHBoxLayout(window);
    layout->addWidget(icon, 0);
    layout->addWidget(line_edit, 1);
    window->setFocusProxy(line_edit);
    return line_edit;
}

void showSearchWindow(QWidget *window, QLineEdit *line_edit, const QWidget *viewport)
{
    const QPoint corner = viewport->mapToGlobal(viewport->pos());
    const QSize hint = window->sizeHint();
    window->move(corner.x() + (viewport->width() - hint.width()) / 2,
                 corner.y() + (viewport->height() - hint.height()) / 2);
    window->show();
    window->raise();
    window->activateWindow();
    line_edit->setFocus(Qt::OtherFocusReason);
}
