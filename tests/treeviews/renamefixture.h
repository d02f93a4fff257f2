// SPDX-License-Identifier: MIT
#ifndef TESTS_TREEVIEWS_RENAMEFIXTURE_H
#define TESTS_TREEVIEWS_RENAMEFIXTURE_H

#include "taviapp/taviregistry.h"
#include "tests/treeviews/treefixture.h"
#include "treeviews/tavitreeviewrenamedlg.h"

#include <QComboBox>
#include <QLabel>
#include <QPushButton>

/// A flat view of two columns, "Ink" and "Remark", with an editable first column.
struct RenameTree {
    explicit RenameTree(const QStringList &texts = {"cyan 40", "magenta 40", "yellow 70", "black 40"})
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

    /// The texts of the model's rows, as "a|b|c".
    QString texts(int column = 0) const
    {
        QStringList list;
        const QList<TaviTreeItem *> items = model.allItems();
        for (const TaviTreeItem *item : items)
            list << item->data(column, Qt::DisplayRole).toString();
        return list.join('|');
    }

    void selectRows(const QVector<int> &rows)
    {
        view.clearSelection();
        for (const int row : rows)
            view.selectItem(model.itemAt(row));
    }

    TaviTreeModel model;
    TreeProbe view;
    TaviRegistry registry;
    std::string section = "inks";
};

/// The dialog for a column of such a view, with what a user does.
struct RenameDialog {
    explicit RenameDialog(RenameTree &tree, int column = 0) : window(&tree.view, column, tree.registry, tree.section)
    {}

    void choose(int method, const QString &op, const QString &with = {})
    {
        window.op_combo->setCurrentIndex(method);
        Q_EMIT window.op_combo->activated(method);
        window.op_edit->setText(op);
        window.replace_edit->setText(with);
    }
    /// Runs a slot that answers with a number.
    int apply(const char *slot)
    {
        int changed = -1;
        if (!QMetaObject::invokeMethod(&window, slot, Q_RETURN_ARG(int, changed)))
            QTest::qFail("there is no such slot", __FILE__, __LINE__);
        return changed;
    }
    QString result() const { return window.results_label->text(); }

    TaviTreeViewRenameDLG window;
};

/// Presses "Find Next" or "Find Previous" and tells "<selected rows>: <what the label says>".
inline QString found(RenameDialog &dialog, const RenameTree &tree, bool forward)
{
    (forward ? dialog.window.find_next_button : dialog.window.find_prev_button)->click();
    return tree.view.selectedTexts().join('|') + ": " + dialog.result();
}

/// "ink 0", "ink 1" ...
inline QStringList numberedInks(int count)
{
    QStringList texts;
    for (int number = 0; number < count; ++number)
        texts << QStringLiteral("ink %1").arg(number);
    return texts;
}

#endif
