// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_RENAMEFIXTURE_H
#define TESTS_TREEVIEWS_RENAMEFIXTURE_H

#include "tests/treeviews/renamerows.h"
#include "tests/treeviews/treefixture.h"
#include "treeviews/tavitreeviewrenamedlg.h"

/// A flat tree view.
class RenameTree : public RenameRows
{
public:
    explicit RenameTree(const QStringList &texts = inks())
    {
        model.setHeaderData({"Ink", "Remark"});
        QList<TaviTreeItem *> items;
        for (const QString &text : texts) {
            auto *item = new TaviTreeItem(QList<QVariant>{text, "remark of " + text}, nullptr);
            item->setEditable(0, true);
            items.append(item);
        }
        model.appendItems(items);
        view.setModel(&model);
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.resize(300, 200);
    }

    QWidget &widget() override { return view; }
    std::unique_ptr<TaviRenameDialog> makeDialog(int column) override
    {
        return std::make_unique<TaviTreeViewRenameDLG>(&view, column, registry, section);
    }
    void renameItems(int column) override { view.renameItems(column, registry, section); }
    void dismissRenameDialog() override { view.dismissRenameDialog(); }
    void whenRenamed(std::function<void()> act) override
    {
        QObject::connect(&view, &TaviTreeView::itemsRenamed, &view, std::move(act));
    }
    void setHeading(const QString &heading) override { model.setHeaderData({heading, "Remark"}); }
    QStringList columnTexts(int column) const override
    {
        QStringList list;
        const QList<TaviTreeItem *> items = model.allItems();
        for (const TaviTreeItem *item : items)
            list << item->data(column, Qt::DisplayRole).toString();
        return list;
    }
    void setCanBeRenamed(int row, int column, bool can) override { model.itemAt(row)->setEditable(column, can); }
    void selectRows(const QVector<int> &rows) override
    {
        view.clearSelection();
        for (const int row : rows)
            view.selectItem(model.itemAt(row));
    }
    QStringList selectedTexts() override { return view.selectedTexts(); }

    TaviTreeModel model;
    TreeProbe view;
};

/// The dialog for a column of such a view, with what a user does.
class RenameDialog : public RenameUser
{
public:
    explicit RenameDialog(RenameTree &tree, int column = 0)
        : RenameUser(window), window(&tree.view, column, tree.registry, tree.section)
    {}

    TaviTreeViewRenameDLG window;
};

inline QString found(RenameDialog &dialog, RenameTree &tree, bool forward)
{
    return found(dialog.window, tree, forward);
}

#endif
