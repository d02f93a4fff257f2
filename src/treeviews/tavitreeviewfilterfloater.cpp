// SPDX-License-Identifier: MIT
#include "treeviews/tavitreeviewfilterfloater.h"

#include "treeviews/tavitreeview.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QIcon>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPixmap>

TaviTreeViewFilterFloater::TaviTreeViewFilterFloater(TaviTreeView *owner)
    : QWidget(owner, Qt::Tool), view(owner), line_edit(new QLineEdit(this))
{
    setObjectName(QStringLiteral("filter_floater"));
    setWindowTitle(tr("Search"));
    setAccessibleName(tr("Search"));

    auto *icon = new QLabel(this);
    icon->setPixmap(QPixmap(QStringLiteral(":tavi/search.png")));
    icon->setBuddy(line_edit);
    //: Name of the line edit for people who do not see the magnifying glass beside it.
    line_edit->setAccessibleName(tr("Search for"));
    auto *layout = new QHBoxLayout(this);
    layout->addWidget(icon, 0);
    layout->addWidget(line_edit, 1);
    setFocusProxy(line_edit);
    view->addFilterLineEdit(line_edit);
}

TaviTreeViewFilterFloater::~TaviTreeViewFilterFloater()
{
    if (TaviTreeView::filter_floater == this)
        TaviTreeView::filter_floater = nullptr;
}

void TaviTreeViewFilterFloater::closeEvent(QCloseEvent *event)
{
    const QPointer<TaviTreeViewFilterFloater> self(this);
    line_edit->clear();
    if (self)
        Q_EMIT closing();
    if (self)
        QWidget::closeEvent(event);
}

void TaviTreeViewFilterFloater::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_Escape && event->modifiers() == Qt::NoModifier)
        close();
    else
        QWidget::keyPressEvent(event);
}
