// SPDX-License-Identifier: MIT
#include "treeviews/tavitreeviewfilterfloater.h"

#include "treeviews/searchwindow_p.h"
#include "treeviews/tavitreeview.h"
#include "treeviews/viewkeys_p.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>

TaviTreeViewFilterFloater::TaviTreeViewFilterFloater(TaviTreeView *owner)
    : QWidget(owner, Qt::Tool), view(owner),
      //: Name of the line edit for people who do not see the magnifying glass beside it.
      line_edit(furnishSearchWindow(this, tr("Search"), tr("Search for")))
{
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
    if (closesSearchWindow(event))
        close();
    else
        QWidget::keyPressEvent(event);
}
