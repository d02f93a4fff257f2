// SPDX-License-Identifier: MIT
#include "listviews/tavilistview.h"
#include "treeviews/searchwindow_p.h"
#include "treeviews/viewkeys_p.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLineEdit>

FilterFloater::FilterFloater(TaviListView *view)
    : QWidget(view, Qt::Tool), list_view(view),
      //: Name of the line edit for people who do not see the magnifying glass beside it.
      line_edit(furnishSearchWindow(this, tr("Search"), tr("Search for")))
{
    if (view)
        view->filterBuddy()->addFilterLineEdit(line_edit);
}

FilterFloater::~FilterFloater()
{
    if (TaviListView::filter_floater == this)
        TaviListView::filter_floater = nullptr;
}

void FilterFloater::closeEvent(QCloseEvent *event)
{
    const QPointer<FilterFloater> self(this);
    line_edit->clear();
    if (self)
        QWidget::closeEvent(event);
    if (self)
        Q_EMIT closed();
}

void FilterFloater::keyPressEvent(QKeyEvent *event)
{
    if (closesSearchWindow(event))
        close();
    else
        QWidget::keyPressEvent(event);
}
