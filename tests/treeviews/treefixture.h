// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_TREEFIXTURE_H
#define TESTS_TREEVIEWS_TREEFIXTURE_H

#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreemodel.h"
#include "treeviews/tavitreeproxymodel.h"
#include "treeviews/tavitreeview.h"
#include "treeviews/tavitreeviewfilterfloater.h"

#include <QLineEdit>
#include <QPointer>
#include <QStatusBar>
#include <QtTest>

/// A view whose protected side can be called.
class TreeProbe : public TaviTreeView
{
    Q_OBJECT

public:
    using TaviTreeView::TaviTreeView;

    using TaviTreeView::currentChanged;
    using TaviTreeView::dragEnterEvent;
    using TaviTreeView::dragLeaveEvent;
    using TaviTreeView::dragMoveEvent;
    using TaviTreeView::dropEvent;
    using TaviTreeView::filter;
    using TaviTreeView::filterIndex;
    using TaviTreeView::selectionCommand;
    using TaviTreeView::startFiltering;
    using TaviTreeView::state;
    using TaviTreeView::stopFiltering;
    using TaviTreeView::toggleExpandAnyColumn;

    /// As while a drag is over the view.
    void pretendDragging() { setState(DraggingState); }

    /// Texts of the first column of all rows in sight of the filter, depth first.
    QStringList shownTexts() const { return texts(allRows(0)); }
    QStringList selectedTexts() const { return texts(selectedRows(0)); }
    bool isItemExpanded(TaviTreeItem *item) const { return isExpanded(indexOf(item)); }
    void setItemExpanded(TaviTreeItem *item, bool on) { setExpanded(indexOf(item), on); }
    QModelIndex indexOf(TaviTreeItem *item, int column = 0) const
    {
        const QModelIndex source = sourceModel()->indexFromItem(item);
        return mapFromSource(source.sibling(source.row(), column));
    }
    QPoint centreOf(const QModelIndex &index) const { return visualRect(index).center(); }

private:
    static QStringList texts(const QModelIndexList &rows)
    {
        QStringList list;
        for (const QModelIndex &row : rows)
            list.append(row.data().toString());
        return list;
    }
};

inline TaviTreeItem *makeItem(const QString &first, const QString &second = {}, const QString &third = {})
{
    return new TaviTreeItem(QList<QVariant>{first, second, third}, nullptr);
}

inline TaviTreeItem *addChild(TaviTreeItem *parent, const QString &first, const QString &second = {},
                              const QString &third = {})
{
    TaviTreeItem *child = makeItem(first, second, third);
    parent->appendChild(child);
    return child;
}

/// A model of three columns with a view on it.
///
///     cyan          C 100     solid
///       light cyan  C 50
///       pale cyan   C 20
///     magenta       M 100     solid
///     black         K 100     solid
///       grey        K 50
///         light grey K 20
///     paper
struct Tree {
    Tree()
    {
        model.setHeaderData({"name", "inks", "kind"});
        cyan = makeItem("cyan", "C 100", "solid");
        light_cyan = addChild(cyan, "light cyan", "C 50");
        pale_cyan = addChild(cyan, "pale cyan", "C 20");
        magenta = makeItem("magenta", "M 100", "solid");
        black = makeItem("black", "K 100", "solid");
        grey = addChild(black, "grey", "K 50");
        light_grey = addChild(grey, "light grey", "K 20");
        paper = makeItem("paper");
        model.appendItems({cyan, magenta, black, paper});
        view.setModel(&model);
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
    }

    bool show(const QSize &size = {400, 300})
    {
        view.widget()->resize(size);
        view.widget()->show();
        view.widget()->activateWindow();
        return QTest::qWaitForWindowActive(view.widget());
    }

    TaviTreeModel model;
    TaviTreeItem *cyan;
    TaviTreeItem *light_cyan;
    TaviTreeItem *pale_cyan;
    TaviTreeItem *magenta;
    TaviTreeItem *black;
    TaviTreeItem *grey;
    TaviTreeItem *light_grey;
    TaviTreeItem *paper;
    // The container of widget() becomes the view's parent and must not delete a member.
    TreeProbe &view = *new TreeProbe;
    struct Deleter {
        QPointer<TreeProbe> view;
        ~Deleter()
        {
            if (view)
                delete (view->parentWidget() ? view->parentWidget() : static_cast<QWidget *>(view));
        }
    } deleter{&view};
};

#endif
