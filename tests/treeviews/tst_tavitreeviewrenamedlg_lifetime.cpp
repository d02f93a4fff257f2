// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/renamefixture.h"

#include <QElapsedTimer>
#include <QStandardItemModel>

#include <memory>

/// The rename dialog while slots change what it works on.
class TestTaviTreeViewRenameDlgLifetime : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void rowsThatComeMeanwhileAreLeftAlone()
    {
        RenameTree tree({"a", "b"});
        const auto add = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] {
            auto *item = new TaviTreeItem(QList<QVariant>{"new", ""}, nullptr);
            item->setEditable(0, true);
            tree.model.insertItem(0, item);
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 2);
        disconnect(add);
        QCOMPARE(tree.texts(), QString("new|new|xa|xb"));
    }

    void aSelectionFollowsRowsThatMoveMeanwhile()
    {
        RenameTree tree({"a", "b", "c", "d"});
        tree.selectRows({1, 3});
        const auto add = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] {
            tree.model.insertItem(0, new TaviTreeItem(QList<QVariant>{"new", ""}, nullptr));
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToSelected"), 2);
        disconnect(add);
        QCOMPARE(tree.texts(), QString("new|new|a|xb|c|xd"));
    }

    void aSelectionFollowsRowsThatGoUpMeanwhile()
    {
        RenameTree tree({"a", "b", "c", "d"});
        tree.selectRows({1, 3});
        const auto remove = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] {
            if (tree.model.rowCount() == 4)
                tree.model.removeItem(tree.model.itemAt(0)); // which is not selected
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToSelected"), 2);
        disconnect(remove);
        QCOMPARE(tree.texts(), QString("xb|c|xd"));
    }

    void aSelectionThatGoesWithAResetCountsNoMore()
    {
        RenameTree tree({"a", "b", "c"});
        tree.selectRows({0, 2});
        bool still_selected = true;
        const auto reset = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&] {
            tree.model.resetModel();
            still_selected = tree.view.selectionModel()->isSelected(tree.view.model()->index(2, 0));
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToSelected"), 1);
        disconnect(reset);
        QVERIFY(!still_selected);
        QCOMPARE(tree.texts(), QString("xa|b|c"));
    }

    void aSelectionOfOtherColumnsDoesNotCount()
    {
        RenameTree tree({"a", "b"});
        for (int row = 0; row < 2; ++row)
            tree.model.itemAt(row)->setEditable(1, true);
        QItemSelectionModel *selection = tree.view.selectionModel();
        selection->select(tree.view.model()->index(0, 0), QItemSelectionModel::Select);
        RenameDialog dialog(tree, 1);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToSelected"), 0);
        selection->select(tree.view.model()->index(1, 1), QItemSelectionModel::Select);
        QCOMPARE(dialog.apply("applyToSelected"), 1);
        QCOMPARE(tree.texts(1), QString("remark of a|xremark of b"));
    }

    void aSelectionFollowsRowsThatASlotSorts()
    {
        RenameTree tree({"a", "b", "c", "d"});
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(0, Qt::AscendingOrder);
        tree.selectRows({0, 1});
        const auto sort = connect(&tree.model, &QAbstractItemModel::dataChanged, this,
                                  [&tree] { tree.view.sortByColumn(0, Qt::DescendingOrder); });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToSelected"), 2);
        disconnect(sort);
        QCOMPARE(tree.texts(), QString("xa|xb|c|d"));
    }

    void theSelectionCountsAsItIsWhenARowsTurnComes()
    {
        RenameTree tree({"a", "b", "c", "d"});
        tree.selectRows({0, 1});
        const auto change = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] {
            tree.selectRows({0, 3});
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToSelected"), 2);
        disconnect(change);
        QCOMPARE(tree.texts(), QString("xa|b|c|xd"));
    }

    void aSlotMayRemoveRowsMeanwhile()
    {
        RenameTree tree({"a", "b", "c", "d", "e"});
        const auto remove = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] {
            if (tree.model.rowCount() > 3)
                tree.model.removeItem(tree.model.itemAt(1));
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 4); // all but b, and c went afterwards
        disconnect(remove);
        QCOMPARE(tree.texts(), QString("xa|xd|xe"));
    }

    void aSlotMayRemoveTheRowThatIsRenamed()
    {
        RenameTree tree({"a", "b", "c"});
        const auto remove =
            connect(&tree.model, &QAbstractItemModel::dataChanged, &tree.model,
                    [&tree](const QModelIndex &at) { tree.model.removeItem(tree.model.itemAt(at.row())); });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 3);
        disconnect(remove);
        QCOMPARE(tree.model.rowCount(), 0);
    }

    void aRowThatBecameAChildIsLeftAlone()
    {
        RenameTree tree({"a", "b"});
        const auto move = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] {
            if (tree.model.rowCount() == 2)
                tree.model.appendItem(tree.model.takeItem(tree.model.itemAt(1)), tree.model.itemAt(0));
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 1);
        disconnect(move);
        QCOMPARE(tree.model.itemAt(0)->child(0)->data(0, Qt::DisplayRole), QVariant("b"));
    }

    void aSlotMayResetOrEmptyTheModel()
    {
        RenameTree tree({"a", "b", "c"});
        auto change =
            connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] { tree.model.resetModel(); });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 3);
        QCOMPARE(tree.texts(), QString("xa|xb|xc"));
        disconnect(change);
        change =
            connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&tree] { tree.model.removeAllItems(); });
        QCOMPARE(dialog.apply("applyToAll"), 1);
        disconnect(change);
    }

    void anotherModelEndsTheWalk()
    {
        RenameTree tree({"a", "b"});
        TaviTreeModel other({"Ink"});
        const auto change =
            connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&] { tree.view.setModel(&other); });
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 1);
        disconnect(change);
        QCOMPARE(tree.texts(), QString("xa|b"));
    }

    void modelsOfOtherKindsAreRenamedAsWell()
    {
        RenameTree tree;
        QStandardItemModel other;
        for (const char *text : {"b", "a", "c"})
            other.appendRow(new QStandardItem(text));
        tree.view.proxyModel()->setSourceModel(&other);
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(0, Qt::AscendingOrder);
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToAll"), 3);
        QCOMPARE(other.item(0)->text(), QString("xb"));
        QCOMPARE(other.item(1)->text(), QString("xa"));
        QCOMPARE(other.item(2)->text(), QString("xc"));
        tree.view.proxyModel()->setSourceModel(nullptr);
    }

    void theDialogMayGoInTheMiddleOfARename()
    {
        RenameTree tree({"a", "b", "c"});
        auto dialog = std::make_unique<RenameDialog>(tree);
        dialog->choose(1, "x");
        QSignalSpy renamed(&tree.view, SIGNAL(itemsRenamed(int)));
        const auto close =
            connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&dialog] { dialog.reset(); });
        dialog->window.apply_all_button->click();
        disconnect(close);
        QVERIFY(!dialog);
        // What was asked for is done, and told.
        QCOMPARE(tree.texts(), QString("xa|xb|xc"));
        QCOMPARE(renamed.count(), 1);
        QCOMPARE(renamed.at(0).at(0).toInt(), 3);
    }

    void theViewMayGoInTheMiddleOfARename_data()
    {
        QTest::addColumn<bool>("before_the_end");
        QTest::newRow("while rows are renamed") << true;
        QTest::newRow("when it is told") << false;
    }
    void theViewMayGoInTheMiddleOfARename()
    {
        QFETCH(const bool, before_the_end);
        TaviTreeModel model({"Ink"});
        for (int row = 0; row < 3; ++row) {
            auto *item = new TaviTreeItem(QList<QVariant>{"a"}, nullptr);
            item->setEditable(0, true);
            model.appendItem(item);
        }
        auto *view = new TaviTreeView;
        view->setModel(&model);
        TaviRegistry registry;
        std::string section = "inks";
        const QPointer<TaviTreeViewRenameDLG> dialog = new TaviTreeViewRenameDLG(view, 0, registry, section);
        dialog->op_edit->setText("a");
        dialog->replace_edit->setText("b");
        const auto destroy = [&view] {
            delete view;
            view = nullptr;
        };
        if (before_the_end)
            connect(&model, &QAbstractItemModel::dataChanged, this, destroy);
        else
            connect(view, &TaviTreeView::itemsRenamed, this, destroy);
        dialog->apply_all_button->click();
        QVERIFY(!dialog);
        QCOMPARE(model.itemAt(0)->data(0, Qt::DisplayRole), QVariant("b"));
        QCOMPARE(model.itemAt(2)->data(0, Qt::DisplayRole), QVariant(before_the_end ? "a" : "b"));
        model.disconnect(this);
    }

    void theViewMayGoWhenAHitIsSelected()
    {
        TaviTreeModel model({"Ink"});
        model.appendItem(new TaviTreeItem(QList<QVariant>{"a"}, nullptr));
        auto *view = new TaviTreeView;
        view->setModel(&model);
        TaviRegistry registry;
        std::string section = "inks";
        const QPointer<TaviTreeViewRenameDLG> dialog = new TaviTreeViewRenameDLG(view, 0, registry, section);
        connect(view, SIGNAL(selectionChanged()), view, SLOT(deleteLater()));
        connect(view->selectionModel(), &QItemSelectionModel::selectionChanged, this, [&view] {
            delete view;
            view = nullptr;
        });
        dialog->find_next_button->click();
        QVERIFY(!dialog);
    }

    void rowsMayGoWhenAHitIsSelected()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.choose(0, "40");
        const auto remove = connect(&tree.view, QOverload<>::of(&TaviTreeView::selectionChanged), &tree.model,
                                    [&tree] { tree.model.removeAllItems(); });
        QCOMPARE(found(dialog, tree, true), QString(": Found"));
        disconnect(remove);
        QCOMPARE(found(dialog, tree, true), QString(": Not Found"));
    }

    void aHundredThousandRowsWhileASlotRemovesSome_data()
    {
        QTest::addColumn<bool>("sorted");
        QTest::addColumn<bool>("selected");
        QTest::newRow("as they are") << false << false;
        QTest::newRow("sorted by what changes") << true << false;
        QTest::newRow("every second one, by selection") << false << true;
    }
    void aHundredThousandRowsWhileASlotRemovesSome()
    {
        QFETCH(const bool, sorted);
        QFETCH(const bool, selected);
        constexpr int rows = 100000;
        RenameTree tree(numberedInks(rows));
        if (sorted) {
            tree.view.setSortingEnabled(true);
            tree.view.sortByColumn(0, Qt::AscendingOrder);
        }
        QItemSelection every_second;
        for (int row = 0; selected && row < rows; row += 2)
            every_second.append(
                QItemSelectionRange(tree.view.model()->index(row, 0), tree.view.model()->index(row, 1)));
        if (selected)
            tree.view.selectionModel()->select(every_second, QItemSelectionModel::Select);
        int told = 0;
        const auto remove = connect(&tree.model, &QAbstractItemModel::dataChanged, this, [&] {
            // One of a thousand times, the last row.
            if (++told % 1000 == 0)
                tree.model.removeItem(tree.model.itemAt(tree.model.rowCount() - 1));
        });
        RenameDialog dialog(tree);
        dialog.choose(1, "z"); // which sorts each row behind all that have not had their turn
        QElapsedTimer clock;
        clock.start();
        const int changed = dialog.apply(selected ? "applyToSelected" : "applyToAll");
        const qint64 taken = clock.elapsed();
        disconnect(remove);
        QCOMPARE(changed, told);
        int renamed = 0;
        const QList<TaviTreeItem *> items = tree.model.allItems();
        for (const TaviTreeItem *item : items) {
            const QString text = item->data(0, Qt::DisplayRole).toString();
            QVERIFY(!text.startsWith("zz"));
            renamed += text.startsWith('z') ? 1 : 0;
        }
        QVERIFY(renamed > 0 && renamed <= changed);
        if (!sorted && !selected)
            QCOMPARE(renamed, items.size()); // what is still there has its turn
        QVERIFY2(taken < 20000, QByteArray::number(taken));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewRenameDlgLifetime)
#include "tst_tavitreeviewrenamedlg_lifetime.moc"
