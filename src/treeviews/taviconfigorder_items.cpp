// SPDX-License-Identifier: MIT
//
// The dialog with lists of ConfigOrderItem.
#include "treeviews/focuskept_p.h"
#include "treeviews/taviconfigorder.h"

#include <QBoxLayout>
#include <QHeaderView>

int TaviConfigOrder::reorder(const QList<ConfigOrderItem *> &all, QList<ConfigOrderItem *> &shown, bool fixed,
                             TaviRegistry *registry, const char *section)
{
    openDialog(registry, section);
    hidden_tree = makeTree(dialog->hidden_frame, tr("All Items"), true, hidden_model);
    showing_tree = makeTree(dialog->showing_frame, tr("Showing"), false, showing_model);
    showing_tree->header()->setVisible(!fixed);
    dialog->hidden_label->hide();
    dialog->showing_label->hide();
    arrangeDialog(fixed, {hidden_tree->header(), hidden_tree}, {showing_tree->header(), showing_tree});
    connectSignals(fixed);

    QList<TaviTreeItem *> entries;
    for (ConfigOrderItem *const item : all) {
        if (item)
            item->setItemInShowList(false);
        entries.append(item);
    }
    hidden_model->appendItems(entries);
    entries.clear();
    for (ConfigOrderItem *const item : qAsConst(shown)) {
        if (item)
            item->setItemInShowList(true);
        entries.append(item);
    }
    showing_model->appendItems(entries);
    adjustShowHideButtons();
    adjustOrderButtons();

    const QPointer<TaviConfigOrder> self(this);
    const int result = dialog->exec();
    shown.clear();
    if (!self)
        return QDialog::Rejected;
    if (result == QDialog::Accepted) {
        const QList<TaviTreeItem *> accepted = showing_model->takeAllItems();
        for (TaviTreeItem *const item : accepted)
            shown.append(static_cast<ConfigOrderItem *>(item)); // nothing else ever came in
    }
    closeDialog(registry, section);
    return result;
}

ConfigOrderTree *TaviConfigOrder::makeTree(QFrame *frame, const QString &heading, bool fixed,
                                           ConfigOrderModel *&model)
{
    auto *const tree = new ConfigOrderTree(frame);
    tree->setAccessibleName(heading);
    tree->setFixedItems(fixed);
    tree->setStatusBarEnabled(true);
    model = new ConfigOrderModel(this);
    model->setHeaderData(0, heading, Qt::DisplayRole);
    tree->setModel(model);
    static_cast<QBoxLayout *>(frame->layout())->addWidget(tree->widget(), 1);
    tree->widget()->show();
    return tree;
}

/// By name, so that a subclass may have slots of its own.
void TaviConfigOrder::connectSignals(bool fixed)
{
    if (!fixed) {
        connect(dialog->make_hidden_button, SIGNAL(clicked()), this, SLOT(hideItems()));
        connect(dialog->make_showing_button, SIGNAL(clicked()), this, SLOT(showItems()));
        connect(hidden_tree, SIGNAL(selectionChanged()), this, SLOT(adjustShowHideButtons()));
        connect(hidden_model, SIGNAL(modelReset()), this, SLOT(adjustShowHideButtons()));
        connect(hidden_tree, SIGNAL(doubleClicked(QModelIndex)), this, SLOT(showItems()));
        connect(showing_tree, SIGNAL(doubleClicked(QModelIndex)), this, SLOT(hideItems()));
    }
    connect(dialog->move_up_button, SIGNAL(clicked()), this, SLOT(upItems()));
    connect(dialog->move_down_button, SIGNAL(clicked()), this, SLOT(downItems()));
    connect(showing_tree, SIGNAL(selectionChanged()), this, SLOT(adjustOrderButtons()));
    connect(showing_tree, SIGNAL(selectionChanged()), this, SLOT(adjustShowHideButtons()));
    connect(showing_model, SIGNAL(modelReset()), this, SLOT(adjustShowHideButtons()));
    // A reset empties the selection without a word about it.
    connect(showing_model, SIGNAL(modelReset()), this, SLOT(adjustOrderButtons()));
    connect(showing_model, SIGNAL(othersDropped(int)), this, SLOT(showItems(int)));
    connect(hidden_model, SIGNAL(othersDropped(int)), this, SLOT(hideItems()));
}

void TaviConfigOrder::hideItems()
{
    if (!dialog)
        return;
    const FocusKept focus(showing_tree);
    QList<TaviTreeItem *> removed;
    QList<TaviTreeItem *> hidden;
    const QModelIndexList rows = showing_tree->selectedRows(0);
    for (const QModelIndex &row : rows) {
        auto *const item = qobject_cast<ConfigOrderItem *>(TaviTreeModel::itemFromIndex(row));
        ConfigOrderItem *const entry = item ? hidden_tree->setItemVisible(item->itemID(), false) : nullptr;
        if (!entry)
            continue;
        removed.append(item);
        hidden.append(entry);
    }
    if (removed.isEmpty())
        return;
    const int current = showing_tree->currentRow();
    hidden_model->resetModel();
    hidden_tree->selectItems(hidden, true);
    showing_model->removeItems(removed);
    showing_tree->setCurrentRow(current);
}

void TaviConfigOrder::showItems()
{
    showItems(-1);
}

void TaviConfigOrder::showItems(int row)
{
    if (!dialog)
        return;
    const FocusKept focus(hidden_tree);
    QList<TaviTreeItem *> clones;
    bool moved = false;
    const QItemSelectionModel *const selection = hidden_tree->selectionModel();
    for (QModelIndex index = hidden_tree->model()->index(0, 0); index.isValid();
         index = hidden_tree->indexBelow(index)) {
        auto *const item = qobject_cast<ConfigOrderItem *>(TaviTreeModel::itemFromIndex(index));
        if (!item || !selection->isSelected(index))
            continue;
        item->setItemVisible(true);
        moved = true;
        ConfigOrderItem *const entry = item->clone();
        if (!entry)
            continue;
        entry->setItemInShowList(true);
        if (row < 0)
            showing_model->appendItem(entry);
        else
            showing_model->insertItem(row++, entry);
        clones.append(entry);
    }
    const int current = hidden_tree->currentRow();
    if (moved)
        hidden_model->resetModel();
    hidden_tree->setCurrentRow(moved ? current : -1);
    if (clones.isEmpty())
        return;
    showing_tree->clearSelection();
    showing_tree->selectItems(clones, true);
}

void TaviConfigOrder::upItems()
{
    const FocusKept focus(showing_tree);
    if (showing_tree)
        showing_tree->upSelectedItems();
}

void TaviConfigOrder::downItems()
{
    const FocusKept focus(showing_tree);
    if (showing_tree)
        showing_tree->downSelectedItems();
}

void TaviConfigOrder::adjustOrderButtons()
{
    if (!dialog)
        return;
    const bool selected = showing_tree->selectionModel()->hasSelection();
    dialog->move_up_button->setEnabled(selected);
    dialog->move_down_button->setEnabled(selected);
}

void TaviConfigOrder::adjustShowHideButtons()
{
    if (!dialog)
        return;
    dialog->make_showing_button->setEnabled(!hidden_tree->selectedRows(0).isEmpty());
    dialog->make_hidden_button->setEnabled(!showing_tree->selectedRows(0).isEmpty());
}
