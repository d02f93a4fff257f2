// SPDX-License-Identifier: MIT
#include "tests/treeviews/renamefixture.h"
#include "tests/treeviews/renamewalktest.h"

#include <algorithm>

/// The tree's rename dialog changing the rows of a view.
class TestTaviTreeViewRenameDlgWalk : public RenameWalkTest
{
    Q_OBJECT

protected:
    std::unique_ptr<RenameRows> makeRows(const QStringList &texts) override
    {
        return std::make_unique<RenameTree>(texts);
    }

private Q_SLOTS:
    void eachChangeIsTold_data()
    {
        QTest::addColumn<int>("method");
        QTest::addColumn<QString>("op");
        QTest::addColumn<int>("changes");
        QTest::newRow("find") << 0 << "40" << 3;
        QTest::newRow("find what isn't there") << 0 << "green" << 0;
        QTest::newRow("prefix") << 1 << "new " << 4;
        QTest::newRow("append") << 2 << "!" << 4;
        QTest::newRow("nothing") << 2 << "" << 0;
    }
    void eachChangeIsTold()
    {
        QFETCH(const int, method);
        QFETCH(const QString, op);
        QFETCH(const int, changes);
        RenameTree tree;
        RenameDialog dialog(tree);
        dialog.choose(method, op, "50");
        QSignalSpy data(tree.view.model(), &QAbstractItemModel::dataChanged);
        QCOMPARE(dialog.apply("applyToAll"), changes);
        QCOMPARE(data.count(), changes);
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
