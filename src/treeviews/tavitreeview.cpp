// SPDX-License-Identifier: MIT
#include "treeviews/tavitreeview.h"

#include "treeviews/statusline_p.h"
#include "treeviews/taviheaderview.h"
#include "treeviews/tavitreeitemdelegate.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeproxymodel.h"
#include "treeviews/tavitreeviewfilterfloater.h"
#include "treeviews/viewframe_p.h"

#include <QEvent>
#include <QLineEdit>
#include <QPalette>

#include <utility>

TaviTreeViewFilterFloater *TaviTreeView::filter_floater = nullptr;

TaviTreeView::TaviTreeView(QWidget *parent) : QTreeView(parent)
{
    setObjectName(QStringLiteral("TaviTreeView"));
    //: What a screen reader calls a tree view that the application gives no name of its own.
    setAccessibleName(tr("List"));
    setUp();
    setItemDelegate(new TaviTreeItemDelegate(this));

    setPalette(viewPalette());

    setHeader(new TaviHeaderView(Qt::Horizontal, this));
    proxy_model = new TaviTreeProxyModel(this);
    proxy_model->setDynamicSortFilter(true);
    proxy_model->setFilterCaseSensitivity(Qt::CaseInsensitive);
    proxy_model->setSortCaseSensitivity(Qt::CaseInsensitive);
    proxy_model->setFilterKeyColumn(-1);
    QTreeView::setModel(proxy_model);

    connect(proxy_model, SIGNAL(layoutAboutToBeChanged()), this, SLOT(proxyLayoutAboutToBeChanged()));
    connect(proxy_model, SIGNAL(layoutChanged()), this, SLOT(proxyLayoutChanged()));
    connect(proxy_model, SIGNAL(modelReset()), this, SLOT(followWithStatusBar()));
    connect(proxy_model, SIGNAL(rowsInserted(QModelIndex, int, int)), this, SLOT(followWithStatusBar()));
    connect(proxy_model, SIGNAL(rowsRemoved(QModelIndex, int, int)), this, SLOT(followWithStatusBar()));
    connect(this, SIGNAL(doubleClicked(QModelIndex)), this, SLOT(toggleExpandAnyColumn(QModelIndex)));
}

TaviTreeView::~TaviTreeView()
{
    if (filter_floater && filter_floater->view == this) {
        filter_floater->view = nullptr;
        filter_floater->setParent(nullptr);
    }
}

bool TaviTreeView::event(QEvent *event)
{
    if (event->type() == QEvent::ApplicationPaletteChange)
        followApplicationPalette(this);
    return QTreeView::event(event);
}

void TaviTreeView::setUp()
{
    setUniformRowHeights(true);
    setWordWrap(false);
    setEditTriggers(QAbstractItemView::SelectedClicked | QAbstractItemView::EditKeyPressed);
    setAlternatingRowColors(true);
    setTextElideMode(Qt::ElideMiddle);
    setSortingEnabled(false);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setRootIsDecorated(false);
    setDragDropOverwriteMode(false);
}

QWidget *TaviTreeView::widget()
{
    if (!status_bar_enabled)
        return this;
    if (container)
        return container;
    container = new QWidget(qobject_cast<QWidget *>(parent()));
    container->setObjectName(QStringLiteral("tavitreeview_container"));
    status_bar = new StatusLine(container);
    //: What a screen reader calls the line below a list, which tells how many rows there are.
    putAboveStatusBar(container, this, status_bar, tr("Status"));
    return container;
}

void TaviTreeView::setModel(TaviTreeModel *model)
{
    if (proxy_model)
        proxy_model->setSourceModel(model);
    else
        QTreeView::setModel(model);
}

void TaviTreeView::setModel(QAbstractItemModel *model)
{
    if (model && model == proxy_model)
        return;
    auto *const tavi_model = qobject_cast<TaviTreeModel *>(model);
    // A subclass hears of every change of its model; of another class's only that its own is gone.
    setModel(tavi_model);
    if (model != tavi_model)
        proxy_model->setSourceModel(model);
}

TaviTreeModel *TaviTreeView::sourceModel() const
{
    return proxy_model ? qobject_cast<TaviTreeModel *>(proxy_model->sourceModel()) : nullptr;
}

void TaviTreeView::setSelectionModel(QItemSelectionModel *model)
{
    if (selectionModel())
        disconnect(selectionModel(), SIGNAL(selectionChanged(QItemSelection, QItemSelection)), this,
                   SIGNAL(selectionChanged()));
    QTreeView::setSelectionModel(model);
    if (!selectionModel())
        return;
    connect(selectionModel(), SIGNAL(selectionChanged(QItemSelection, QItemSelection)), this,
            SIGNAL(selectionChanged()));
}

void TaviTreeView::reset()
{
    QTreeView::reset();
    if (proxy_model)
        proxy_model->hiddenRowsForgotten();
}

void TaviTreeView::setRowHidden(int row, const QModelIndex &parent, bool hide)
{
    QTreeView::setRowHidden(row, parent, hide);
    proxy_model->hiddenRowsTouched();
}

void TaviTreeView::doItemsLayout()
{
    const bool has_reason = std::exchange(layout_is_for_us, false);
    QTreeView::doItemsLayout();
    if (!proxy_model)
        return;
    const quint64 reasons = proxy_model->layoutReasons();
    if (std::exchange(laid_out_for, reasons) != reasons || has_reason)
        return;
    proxy_model->hiddenRowsTouched();
    followWithStatusBar();
}

bool TaviTreeView::hiddenRowsAreKnown()
{
    // With a layout to come for a reason that is known, there is no telling whether it also comes for another one.
    if (!proxy_model || laid_out_for != proxy_model->layoutReasons() || layout_is_for_us)
        return false;
    executeDelayedItemsLayout(); // one for an unknown reason tells the proxy
    return true;
}

void TaviTreeView::rowsInserted(const QModelIndex &parent, int start, int end)
{
    QTreeView::rowsInserted(parent, start, end);
    if (!proxy_model)
        return;
    proxy_model->filterInserted(parent, start, end);
    // A keyword keeps the branches of visible rows open, and this row was none before.
    if (proxy_model->isFiltering() && parent.isValid() && end - start + 1 == model()->rowCount(parent))
        expand(parent);
}

void TaviTreeView::setHeaderMenuEnabled(bool enabled)
{
    if (auto *tavi_header = qobject_cast<TaviHeaderView *>(header()))
        tavi_header->setMenuEnabled(enabled);
}

bool TaviTreeView::isHeaderMenuEnabled() const
{
    const auto *tavi_header = qobject_cast<TaviHeaderView *>(header());
    return tavi_header && tavi_header->isMenuEnabled();
}

QModelIndex TaviTreeView::mapToSource(const QModelIndex &index) const
{
    return proxy_model->mapToSource(index);
}

QModelIndex TaviTreeView::mapFromSource(const QModelIndex &index) const
{
    return proxy_model->mapFromSource(index);
}

void TaviTreeView::addFilterLineEdit(QLineEdit *line_edit)
{
    if (!line_edit)
        return;
    connect(line_edit, SIGNAL(textChanged(QString)), this, SLOT(filter(QString)));
    proxy_model->addFilterLineEdit(line_edit);
}

QStatusBar *TaviTreeView::statusBar()
{
    return status_bar_enabled ? status_bar : nullptr;
}

int TaviTreeView::sortColumn() const
{
    return isSortingEnabled() && header() ? header()->sortIndicatorSection() : -1;
}

bool TaviTreeView::isEditing() const
{
    return state() == EditingState;
}
