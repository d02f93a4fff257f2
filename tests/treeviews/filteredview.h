// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_FILTEREDVIEW_H
#define TESTS_TREEVIEWS_FILTEREDVIEW_H

#include "tests/treeviews/itemtree.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeproxymodel.h"

#include <QHeaderView>
#include <QTreeView>

/// The least that a view does for its proxy: it passes on rows that came, forgets hidden rows at a reset, tells of
/// rows that others hide, and counts updates of its status line.
class FilteredView : public QTreeView
{
    Q_OBJECT

public:
    /// With a @a proxy of the test's own, which becomes the view's child, or one of the library's.
    explicit FilteredView(TaviTreeModel *model, TaviTreeProxyModel *own_proxy = nullptr)
        : proxy(own_proxy ? own_proxy : new TaviTreeProxyModel(this))
    {
        proxy->QObject::setParent(this);
        proxy->setDynamicSortFilter(true);
        proxy->setFilterCaseSensitivity(Qt::CaseInsensitive);
        proxy->setSortCaseSensitivity(Qt::CaseInsensitive);
        proxy->setFilterKeyColumn(-1);
        setModel(proxy);
        proxy->setSourceModel(model);
    }

    void reset() override
    {
        QTreeView::reset();
        if (proxy)
            proxy->hiddenRowsForgotten();
    }

    void setRowHidden(int row, const QModelIndex &parent, bool hide)
    {
        QTreeView::setRowHidden(row, parent, hide);
        proxy->hiddenRowsTouched();
    }

    /// The texts of the rows in sight, children in brackets: "a(a1 a2) b"; a question
    /// mark for a row without an index.
    QString shown(const QModelIndex &parent = QModelIndex()) const
    {
        QStringList rows;
        for (int row = 0; row < proxy->rowCount(parent); ++row) {
            if (isRowHidden(row, parent))
                continue;
            const QModelIndex index = proxy->index(row, 0, parent);
            if (!index.isValid()) {
                rows.append(QStringLiteral("?"));
                continue;
            }
            const QString below = shown(index);
            rows.append(index.data().toString() + (below.isEmpty() ? below : QStringLiteral("(%1)").arg(below)));
        }
        return rows.join(QLatin1Char(' '));
    }

    /// The index of an item in the proxy.
    QModelIndex indexOf(const TaviTreeItem *item) const
    {
        return proxy->mapFromSource(static_cast<TaviTreeModel *>(proxy->sourceModel())->indexFromItem(item));
    }

    TaviTreeProxyModel *proxy;
    int status_updates = 0;

public Q_SLOTS:
    void updateStatusBar(int)
    {
        ++status_updates;
        Q_EMIT statusUpdated();
    }

Q_SIGNALS:
    void statusUpdated();

protected Q_SLOTS:
    void rowsInserted(const QModelIndex &parent, int first, int last) override
    {
        QTreeView::rowsInserted(parent, first, last);
        proxy->filterInserted(parent, first, last);
    }
};

#endif
