// SPDX-License-Identifier: MIT
//
// Filtering, the search window and the status line.
#include "treeviews/searchwindow_p.h"
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeproxymodel.h"
#include "treeviews/tavitreeview.h"
#include "treeviews/tavitreeviewfilterfloater.h"

#include <QLineEdit>
#include <QStatusBar>

void TaviTreeView::takeFloaterOver()
{
    // A slot that hears of the end may destroy the floater, open it elsewhere again, or destroy this view: nothing of
    // this is touched here.
    while (filter_floater && filter_floater->view != this) {
        const QPointer<TaviTreeViewFilterFloater> other = filter_floater;
        // One that was closed before ended its filtering then; a second end would undo what happened since.
        if (!other->isHidden())
            other->close();
        delete other;
    }
}

void TaviTreeView::showFilterFloater()
{
    const QPointer<TaviTreeView> self(this);
    takeFloaterOver();
    if (!self || (filter_floater && filter_floater->isVisible()))
        return;
    if (!filter_floater) {
        filter_floater = new TaviTreeViewFilterFloater(this);
        connect(filter_floater, SIGNAL(closing()), this, SLOT(stopFiltering()));
    }

    showSearchWindow(filter_floater, filter_floater->lineEdit(), viewport());
    startFiltering();
}

void TaviTreeView::closeFilterFloater()
{
    if (filter_floater && !filter_floater->isHidden())
        filter_floater->close();
}

void TaviTreeView::startFiltering()
{
    filter_session = true;
    saveSelections(0, TaviTreeItem::IdRole, saved_selection);
    saveExpandStates();
}

void TaviTreeView::stopFiltering()
{
    filter_session = false;
    proxy_model->filter(QString());
    restoreExpandStates();
    if (!hasSelection()) {
        restoreSelections(0, TaviTreeItem::IdRole, saved_selection);
        // Scrolling to a row opens the branches above it.
        restoreExpandStates();
    }
}

void TaviTreeView::filter(const QString &string)
{
    proxy_model->filter(string);
    if (string.isEmpty())
        restoreExpandStates();
    else
        expandVisibleBranches();
}

void TaviTreeView::filterIndex(const QModelIndex &index)
{
    proxy_model->filterRow(index.row(), index.parent());
    updateStatusBar(0);
}

void TaviTreeView::setStatusBarEnabled(bool enabled)
{
    status_bar_enabled = enabled;
    if (!status_bar)
        return;
    status_bar->setVisible(enabled);
    updateStatusBar(0);
}

bool TaviTreeView::isStatusBarEnabled()
{
    return status_bar_enabled;
}

QString TaviTreeView::statusString()
{
    const int selected = selectedRowCount();
    const int total = visibleRowCount();
    const QString label = total > 1 ? tr("items") : tr("item");
    if (selected != 0)
        return QStringLiteral("%L1 of %L2 %3").arg(selected).arg(total).arg(label);
    return QStringLiteral("%L1 %3").arg(total).arg(label);
}

void TaviTreeView::updateStatusBar(int ms)
{
    if (status_bar && status_bar_enabled)
        status_bar->showMessage(statusString(), ms);
}

void TaviTreeView::followWithStatusBar()
{
    const QPointer<TaviTreeView> self(this);
    const bool before = proxy_model->goByKeptCount(true);
    updateStatusBar(0);
    if (self)
        proxy_model->goByKeptCount(before);
}

int TaviTreeView::visibleRowCount(const QModelIndex &parent) const
{
    if (!model())
        return 0;
    if (!parent.isValid())
        return proxy_model->visibleTopLevelRows();
    const int rows = model()->rowCount(parent);
    int count = 0;
    for (int row = 0; row < rows; ++row)
        count += isRowHidden(row, parent) ? 0 : 1;
    return count;
}
