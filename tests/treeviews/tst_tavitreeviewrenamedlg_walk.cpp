// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/renamefixture.h"

#include <algorithm>

/// The rename dialog changing the rows of a view.
class TestTaviTreeViewRenameDlgWalk : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void renaming_data()
    {
        QTest::addColumn<QString>("slot");
        QTest::addColumn<int>("method");
        QTest::addColumn<QVector<int>>("selected");
        QTest::addColumn<QString>("op");
        QTest::addColumn<QString>("with");
        QTest::addColumn<QString>("texts");
        QTest::addColumn<int>("changed");
        QTest::addColumn<QString>("result");
        const auto row = [](const char *name, const char *slot, int method, const QVector<int> &selected,
                            const char *op, const char *with, const char *texts, int changed, const char *result) {
            QTest::newRow(name) << slot << method << selected << op << with << texts << changed << result;
        };
        const char *const all = "applyToAll", *const selected = "applyToSelected", *const current = "applyToCurrent";
        const char *const same = "cyan 40|magenta 40|yellow 70|black 40";
        row("all found", all, 0, {}, "40", "50", "cyan 50|magenta 50|yellow 70|black 50", 3, "Found 3 items");
        row("one found", all, 0, {}, "yellow", "gelb", "cyan 40|magenta 40|gelb 70|black 40", 1, "Found 1 item");
        row("none found", all, 0, {}, "green", "gelb", same, 0, "Not Found");
        row("empty", all, 0, {}, "", "gelb", same, 0, "Not Found");
        row("all, selection is of no account", all, 0, {2}, "40", "50", "cyan 50|magenta 50|yellow 70|black 50", 3,
            "Found 3 items");
        row("by the same text counts", all, 0, {}, "40", "40", same, 3, "Found 3 items");
        row("prefix", all, 1, {}, "new ", "unused", "new cyan 40|new magenta 40|new yellow 70|new black 40", 4, "");
        row("empty prefix", all, 1, {}, "", "", same, 0, "");
        row("append", all, 2, {}, "!", "unused", "cyan 40!|magenta 40!|yellow 70!|black 40!", 4, "");
        row("selected", selected, 0, {0, 2}, "0", "1", "cyan 41|magenta 40|yellow 71|black 40", 2, "Found 2 items");
        row("selected, none found", selected, 0, {2}, "40", "50", same, 0, "Not Found");
        row("none selected", selected, 0, {}, "40", "50", same, 0, "Not Found");
        row("selected, append", selected, 2, {1, 3}, "!", "", "cyan 40|magenta 40!|yellow 70|black 40!", 2, "");
        row("current", current, 0, {1, 3}, "40", "50", "cyan 40|magenta 50|yellow 70|black 40", 1, "Found 1 item");
        row("current without a hit goes no further", current, 0, {2, 3}, "40", "50", same, 0, "Not Found");
        row("current, prefix", current, 1, {1, 2, 3}, "x", "", "cyan 40|xmagenta 40|yellow 70|black 40", 1, "");
        row("no current", current, 1, {}, "x", "", same, 0, "");
    }
    void renaming()
    {
        QFETCH(const QString, slot);
        QFETCH(const int, method);
        QFETCH(const QVector<int>, selected);
        QFETCH(const QString, op);
        QFETCH(const QString, with);
        QFETCH(const QString, texts);
        QFETCH(const int, changed);
        QFETCH(const QString, result);
        RenameTree tree;
        tree.selectRows(selected);
        RenameDialog dialog(tree);
        dialog.choose(method, op, with);
        QSignalSpy renamed(&tree.view, SIGNAL(itemsRenamed(int)));
        QSignalSpy data(tree.view.model(), &QAbstractItemModel::dataChanged);
        QCOMPARE(dialog.apply(slot.toLatin1().constData()), changed);
        QCOMPARE(tree.texts(), texts);
        QCOMPARE(tree.texts(1),
                 QString("remark of cyan 40|remark of magenta 40|remark of yellow 70|remark of black 40"));
        QCOMPARE(dialog.result(), result);
        QCOMPARE(renamed.count(), 1);
        QCOMPARE(renamed.at(0).at(0).toInt(), changed);
        QCOMPARE(data.count(), tree.texts() == "cyan 40|magenta 40|yellow 70|black 40" ? 0 : changed);
        QCOMPARE(tree.view.selectedRows().size(), selected.size());
    }

    void theButtonsRename_data()
    {
        QTest::addColumn<int>("which");
        QTest::addColumn<QString>("texts");
        QTest::newRow("all") << 0 << "xa|xb|xc";
        QTest::newRow("selected") << 1 << "a|xb|xc";
        QTest::newRow("current") << 2 << "a|xb|c";
    }
    void theButtonsRename()
    {
        QFETCH(const int, which);
        QFETCH(const QString, texts);
        RenameTree tree({"a", "b", "c"});
        tree.selectRows({1, 2});
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QPushButton *const buttons[] = {dialog.window.apply_all_button, dialog.window.apply_selected_button,
                                        dialog.window.apply_current_button};
        QTest::mouseClick(buttons[which], Qt::LeftButton);
        QCOMPARE(tree.texts(), texts);
    }

    void aMethodThatDoesNotExistRenamesNothing()
    {
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.window.op_combo->addItem("Turn over");
        dialog.choose(3, "40", "50");
        QSignalSpy renamed(&tree.view, SIGNAL(itemsRenamed(int)));
        QCOMPARE(dialog.apply("applyToAll"), 0);
        dialog.window.op_combo->setCurrentIndex(-1);
        QCOMPARE(dialog.apply("applyToAll"), 0);
        QCOMPARE(renamed.count(), 0);
        QCOMPARE(dialog.result(), QString());
    }

    void rowsThatCannotBeEditedAreLeftOut()
    {
        RenameTree tree({"a", "a", "a"});
        tree.model.itemAt(0)->setEditable(0, false);
        tree.model.itemAt(0)->setEditable(1, true);
        RenameDialog dialog(tree);
        dialog.choose(0, "a", "b");
        QCOMPARE(dialog.apply("applyToAll"), 2);
        QCOMPARE(tree.texts(), QString("a|b|b"));
        QCOMPARE(dialog.result(), QString("Found 2 items"));
        // Nor do they end the walk for the current one.
        dialog.choose(1, "x");
        tree.selectRows({0, 1, 2});
        QCOMPARE(dialog.apply("applyToCurrent"), 1);
        QCOMPARE(tree.texts(), QString("a|xb|b"));
    }

    // What is selected is what the selection model says: not a row that can't be any more.
    void rowsThatCannotBeSelectedAnyMoreAreLeftOut()
    {
        RenameTree tree({"a", "a"});
        tree.selectRows({0, 1});
        tree.model.itemAt(0)->setSelectable(false);
        tree.model.itemAt(1)->setEnabled(false);
        QVERIFY(!tree.view.selectionModel()->isSelected(tree.view.model()->index(0, 0)));
        QVERIFY(tree.view.selectionModel()->isSelected(tree.view.model()->index(1, 0)));
        RenameDialog dialog(tree);
        dialog.choose(0, "a", "b");
        QCOMPARE(dialog.apply("applyToSelected"), 1);
        QCOMPARE(tree.texts(), QString("a|b"));
        QCOMPARE(dialog.apply("applyToAll"), 1); // which asks nobody
    }

    void selectedChildrenAndOtherCellsDoNotCount()
    {
        RenameTree tree({"a", "b"});
        tree.model.appendItem(new TaviTreeItem(QList<QVariant>{"child", ""}, nullptr), tree.model.itemAt(1));
        const QAbstractItemModel *rows = tree.view.model();
        QItemSelectionModel *selection = tree.view.selectionModel();
        selection->select(rows->index(0, 0, rows->index(1, 0)),
                          QItemSelectionModel::Select | QItemSelectionModel::Rows);
        selection->select(rows->index(1, 1), QItemSelectionModel::Select);
        RenameDialog dialog(tree);
        dialog.choose(1, "x");
        QCOMPARE(dialog.apply("applyToSelected"), 0);
        selection->select(rows->index(1, 0), QItemSelectionModel::Select);
        QCOMPARE(dialog.apply("applyToSelected"), 1);
        QCOMPARE(tree.texts(), QString("a|xb"));
    }

    void eachRowIsHandledOnceWhereverItIsSorted_data()
    {
        QTest::addColumn<QString>("op");
        QTest::addColumn<int>("order");
        for (const Qt::SortOrder order : {Qt::AscendingOrder, Qt::DescendingOrder}) {
            for (const char *op : {"a", "z"})
                QTest::addRow("%s, %s", op, order == Qt::AscendingOrder ? "ascending" : "descending")
                    << op << int(order);
        }
    }
    void eachRowIsHandledOnceWhereverItIsSorted()
    {
        QFETCH(const QString, op);
        QFETCH(const int, order);
        RenameTree tree({"b", "a", "d", "c", "e"});
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(0, Qt::SortOrder(order));
        RenameDialog dialog(tree);
        dialog.choose(1, op);
        QCOMPARE(dialog.apply("applyToAll"), 5);
        QCOMPARE(tree.texts(), QString("%1b|%1a|%1d|%1c|%1e").arg(op));
        tree.selectRows({0, 3});
        QCOMPARE(dialog.apply("applyToSelected"), 2);
        QCOMPARE(tree.texts(), QString("%1%1b|%1a|%1d|%1%1c|%1e").arg(op));
        // The rows are sorted by their new texts.
        QStringList shown = tree.view.shownTexts();
        QStringList sorted = shown;
        std::sort(sorted.begin(), sorted.end());
        if (order == Qt::DescendingOrder)
            std::reverse(sorted.begin(), sorted.end());
        QCOMPARE(shown, sorted);
    }

    void rowsAreSortedOnceForAll()
    {
        RenameTree tree;
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(0, Qt::AscendingOrder);
        int sorted = 0;
        connect(tree.view.model(), &QAbstractItemModel::layoutChanged, this, [&sorted] { ++sorted; });
        RenameDialog dialog(tree);
        dialog.choose(0, "a", "z");
        QCOMPARE(dialog.apply("applyToAll"), 3);
        QCOMPARE(tree.view.shownTexts(), QStringList({"blzck 40", "cyzn 40", "mzgentz 40", "yellow 70"}));
        QCOMPARE(sorted, 1);
        // And one by one from then on, as before.
        QVERIFY(tree.view.proxyModel()->dynamicSortFilter());
        tree.model.setData(tree.model.index(0, 0), "x", Qt::DisplayRole);
        QCOMPARE(tree.view.shownTexts(), QStringList({"blzck 40", "mzgentz 40", "x", "yellow 70"}));
    }

    void sortingThatIsOffStaysOff()
    {
        RenameTree tree;
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(0, Qt::AscendingOrder);
        tree.view.proxyModel()->setDynamicSortFilter(false);
        RenameDialog dialog(tree);
        dialog.choose(0, "black", "z");
        dialog.apply("applyToAll");
        QVERIFY(!tree.view.proxyModel()->dynamicSortFilter());
        QCOMPARE(tree.view.shownTexts(), QStringList({"z 40", "cyan 40", "magenta 40", "yellow 70"}));
    }

    void anExpressionOfTheApplicationIsAppliedToNewTexts()
    {
        RenameTree tree;
        tree.view.proxyModel()->setFilterRegExp("^[a-z]+ 40");
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan 40", "magenta 40", "black 40"}));
        RenameDialog dialog(tree);
        dialog.choose(0, "magenta 40", "50");
        QCOMPARE(dialog.apply("applyToAll"), 1);
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan 40", "black 40"}));
    }

    void aKeywordFollowsTheNewTexts()
    {
        RenameTree tree;
        tree.view.filter("50");
        QCOMPARE(tree.view.shownTexts(), QStringList());
        RenameDialog dialog(tree);
        dialog.choose(0, "40", "50");
        dialog.apply("applyToAll");
        QCOMPARE(tree.view.shownTexts(), QStringList({"cyan 50", "magenta 50", "black 50"}));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewRenameDlgWalk)
#include "tst_tavitreeviewrenamedlg_walk.moc"
