// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/treefixture.h"

namespace {

/// A view that notes what it scrolls to.
class ScrollProbe : public TreeProbe
{
public:
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override
    {
        scrolled.append(index.data().toString() + (hint == PositionAtCenter ? " (centre)" : ""));
        TreeProbe::scrollTo(index, hint);
    }
    QStringList scrolled;
};

/// An item that asks whether it may be selected are put to.
class CountingItem : public TaviTreeItem
{
public:
    using TaviTreeItem::TaviTreeItem;
    Qt::ItemFlags flags(int column) const override
    {
        ++asked;
        return TaviTreeItem::flags(column);
    }
    static int asked;
};
int CountingItem::asked = 0;

} // namespace

/// Rows and items of a tree view: which are selected, selecting and removing them.
class TestTaviTreeViewSelection : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void rowsAreInTheOrderOfTheirNumbers()
    {
        Tree tree;
        tree.view.selectItems({tree.paper, tree.pale_cyan, tree.magenta, tree.grey, tree.light_grey});
        // Rows 0, 0, 1, 1, 3: equal numbers under different parents lie together.
        const QModelIndexList rows = tree.view.selectedRows(0);
        QVector<int> numbers;
        for (const QModelIndex &row : rows)
            numbers.append(row.row());
        QCOMPARE(numbers, QVector<int>({0, 0, 1, 1, 3}));
        QVERIFY(std::is_sorted(rows.begin(), rows.end()));
        QStringList names = tree.view.selectedTexts();
        names.sort();
        QCOMPARE(names, QStringList({"grey", "light grey", "magenta", "pale cyan", "paper"}));
    }

    void rowsAreGivenInTheWantedColumn()
    {
        Tree tree;
        tree.view.selectItem(tree.magenta);
        QCOMPARE(tree.view.selectedRows(1).value(0).data().toString(), QString("M 100"));
        QCOMPARE(tree.view.selectedRows(2).value(0).column(), 2);
        QVERIFY(tree.view.selectedRows(3).isEmpty());
        QVERIFY(tree.view.selectedRows(-1).isEmpty());
        QCOMPARE(tree.view.selectedItems(1), QList<TaviTreeItem *>({tree.magenta}));
    }

    void aDisabledRowIsNotAmongTheSelected()
    {
        Tree tree;
        tree.view.selectItems({tree.cyan, tree.magenta});
        tree.cyan->setEnabled(false);
        QCOMPARE(tree.view.selectedTexts(), QStringList({"magenta"}));
        tree.magenta->setSelectable(false);
        QVERIFY(tree.view.selectedTexts().isEmpty());
        QCOMPARE(tree.view.statusString(), QString("4 items"));
    }

    void oneRowAndSeveral()
    {
        Tree tree;
        QCOMPARE(tree.view.selectedItem(), nullptr);
        QCOMPARE(tree.view.firstSelectedItem(), nullptr);
        QVERIFY(!tree.view.selectedIndex().isValid());
        QVERIFY(!tree.view.firstSelectedIndex().isValid());
        tree.view.selectItem(tree.magenta);
        QCOMPARE(tree.view.selectedItem(), tree.magenta);
        QCOMPARE(tree.view.selectedIndex(), tree.view.indexOf(tree.magenta));
        tree.view.selectItem(tree.paper);
        QCOMPARE(tree.view.selectedItem(), nullptr);
        QVERIFY(!tree.view.selectedIndex(tree.view.indexOf(tree.paper)).isValid());
        QCOMPARE(tree.view.firstSelectedItem(), tree.magenta);
        QCOMPARE(tree.view.firstSelectedIndex(tree.view.indexOf(tree.paper)), tree.view.indexOf(tree.magenta));
    }

    void aSortLeavesTheSameRowsSelected()
    {
        Tree tree;
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(0, Qt::AscendingOrder); // black cyan magenta paper
        tree.view.selectItems({tree.black, tree.cyan, tree.magenta});
        tree.cyan->setData(1, "Z", Qt::DisplayRole);
        tree.black->setData(1, "A", Qt::DisplayRole);
        tree.view.sortByColumn(1, Qt::AscendingOrder); // paper black magenta cyan
        QStringList texts = tree.view.selectedTexts();
        texts.sort();
        QCOMPARE(texts, QStringList({"black", "cyan", "magenta"}));
        tree.view.sortByColumn(2, Qt::DescendingOrder);
        QCOMPARE(tree.view.selectedTexts().size(), 3);
        QVERIFY(!tree.view.selectedTexts().contains("paper"));
    }

    void aRowThatComesBetweenSelectedOnesIsNotSelected()
    {
        Tree tree;
        tree.view.widget();
        tree.view.selectItems({tree.cyan, tree.magenta, tree.black});
        QCOMPARE(tree.view.selectionModel()->selection().size(), 1); // one range
        TaviTreeItem *item = makeItem("between");
        tree.model.insertItem(1, item);
        QCOMPARE(tree.view.selectedTexts(), QStringList({"cyan", "magenta", "black"}));
        QCOMPARE(tree.view.statusBar()->currentMessage(), QString("3 of 5 items"));
        QCOMPARE(tree.view.removeSelectedItems(false).size(), 3);
        QCOMPARE(tree.view.shownTexts(), QStringList({"between", "paper"}));
    }

    void withoutASelectionModelNothingHappens()
    {
        Tree tree;
        tree.view.selectItem(tree.paper);
        tree.view.saveSelections();
        auto *other = new QItemSelectionModel(tree.view.model());
        tree.view.setSelectionModel(other);
        tree.view.selectItem(tree.cyan);
        delete other;
        QVERIFY(!tree.view.selectionModel());
        QVERIFY(tree.view.selectedItems(0).isEmpty());
        QCOMPARE(tree.view.statusString(), QString("4 items"));
        tree.view.selectItem(tree.paper, true);
        tree.view.clearSelectItem(tree.paper);
        tree.view.selectItems({tree.paper}, true);
        tree.view.clearSelectItems({tree.paper});
        tree.view.clearSelectItemWithProperty(0, "paper", Qt::DisplayRole);
        tree.view.selectItemsWithProperty(2, "solid", Qt::DisplayRole);
        tree.view.expandSelected();
        QList<QVariant> list = {tree.paper->id()};
        tree.view.restoreSelections(0, TaviTreeItem::IdRole, list);
        static_cast<TaviTreeView &>(tree.view).restoreSelections();
        tree.view.saveSelections(0, TaviTreeItem::IdRole, list);
        QVERIFY(list.isEmpty());
        tree.view.startFiltering();
        tree.view.filter("cyan");
        tree.view.stopFiltering();
        QTest::keyClick(&tree.view, 'p');
        const QContextMenuEvent menu(QContextMenuEvent::Mouse, {5, 5});
        tree.view.selectionCommand(tree.view.indexOf(tree.cyan), &menu);
        QVERIFY(tree.view.removeSelectedItems(true).isEmpty());
        QVERIFY(tree.view.removeItems({tree.cyan}, false).isEmpty());
        QCOMPARE(tree.view.shownTexts(), QStringList({"magenta", "black", "grey", "light grey", "paper"}));
    }

    void aRowSelectedInOneCellCountsInThatColumnOnly()
    {
        Tree tree;
        tree.view.setSelectionBehavior(QAbstractItemView::SelectItems);
        tree.view.selectionModel()->select(tree.view.indexOf(tree.paper, 1), QItemSelectionModel::Select);
        QVERIFY(tree.view.selectedRows(0).isEmpty());
        QCOMPARE(tree.view.selectedRows(1).size(), 1);
        QCOMPARE(tree.view.statusString(), QString("4 items"));
    }

    void allRowsGoDepthFirst()
    {
        const Tree tree;
        QCOMPARE(tree.view.shownTexts(),
                 QStringList({"cyan", "light cyan", "pale cyan", "magenta", "black", "grey", "light grey", "paper"}));
        QCOMPARE(tree.view.allItems(0).size(), 8);
        QCOMPARE(tree.view.allRows(0, tree.view.indexOf(tree.black)).size(), 2);
    }

    void anyColumnButTheFirstHasTheTopLevelOnly()
    {
        const Tree tree;
        const QModelIndexList rows = tree.view.allRows(1, QModelIndex());
        QCOMPARE(rows.size(), 4);
        for (const QModelIndex &row : rows)
            QCOMPARE(row.column(), 1);
        QCOMPARE(tree.view.allItems(1), QList<TaviTreeItem *>({tree.cyan, tree.magenta, tree.black, tree.paper}));
    }

    void aHiddenRowTakesItsSubtreeAlong()
    {
        Tree tree;
        tree.view.setRowHidden(0, QModelIndex(), true);
        QCOMPARE(tree.view.shownTexts(), QStringList({"magenta", "black", "grey", "light grey", "paper"}));
        QCOMPARE(tree.view.visibleRowCount(), 3);
        QCOMPARE(tree.view.visibleRowCount(tree.view.indexOf(tree.cyan)), 2);
        tree.view.setRowHidden(1, tree.view.indexOf(tree.cyan), true);
        QCOMPARE(tree.view.visibleRowCount(tree.view.indexOf(tree.cyan)), 1);
        QCOMPARE(tree.view.visibleRowCount(tree.view.indexOf(tree.paper)), 0);
        tree.view.setRowHidden(0, QModelIndex(), false);
        QCOMPARE(tree.view.visibleRowCount(), 4);
        QCOMPARE(tree.view.shownTexts().size(), 7);
    }

    void anItemIsSelectedWithItsRow()
    {
        Tree tree;
        QSignalSpy spy(&tree.view, SIGNAL(selectionChanged()));
        tree.view.selectItem(tree.light_grey);
        QCOMPARE(tree.view.selectionModel()->selectedIndexes().size(), 3);
        QCOMPARE(tree.view.selectedItem(), tree.light_grey);
        QVERIFY(!tree.view.isItemExpanded(tree.black)); // not scrolled to
        QVERIFY(!tree.view.currentIndex().isValid());
        tree.view.selectItem(tree.magenta, true);
        QCOMPARE(tree.view.selectedItems(0).size(), 2);
        tree.view.clearSelectItem(tree.paper);
        QCOMPARE(tree.view.selectedItem(), tree.paper);
        QCOMPARE(spy.count(), 3);
    }

    void anItemThatIsNotShownLeavesTheSelectionAsItIs()
    {
        Tree tree;
        const std::unique_ptr<TaviTreeItem> stranger(makeItem("stranger"));
        tree.view.selectItem(tree.magenta);
        tree.view.filter("cyan");
        for (TaviTreeItem *item :
             {tree.paper, tree.light_grey, stranger.get(), static_cast<TaviTreeItem *>(nullptr)}) {
            tree.view.clearSelectItem(item, true);
            QCOMPARE(tree.view.selectedItem(), tree.magenta);
            tree.view.selectItem(item);
            QCOMPARE(tree.view.selectedItem(), tree.magenta);
        }
        // Below a hidden row everything is hidden.
        tree.view.filter("");
        tree.view.setRowHidden(2, QModelIndex(), true);
        tree.view.clearSelectItem(tree.light_grey);
        QCOMPARE(tree.view.selectedItem(), tree.magenta);
    }

    void listsOfItemsMakeOneChange()
    {
        Tree tree;
        QSignalSpy spy(&tree.view, SIGNAL(selectionChanged()));
        tree.view.selectItems({tree.paper, tree.cyan, tree.paper, nullptr, tree.grey});
        QCOMPARE(spy.count(), 1);
        QCOMPARE(tree.view.selectedItems(0).size(), 3);
        QVERIFY(tree.view.updatesEnabled());
        tree.view.clearSelectItems({tree.magenta, tree.light_cyan});
        QCOMPARE(spy.count(), 2);
        QCOMPARE(tree.view.selectedItems(0).size(), 2);
        // An empty list does nothing; one of which nothing is found is a selection of nothing.
        tree.view.clearSelectItems({});
        QCOMPARE(spy.count(), 2);
        tree.view.setRowHidden(3, QModelIndex(), true);
        tree.view.selectItems({tree.paper});
        QCOMPARE(tree.view.selectedItems(0).size(), 2);
        tree.view.clearSelectItems({tree.paper});
        QVERIFY(tree.view.selectedItems(0).isEmpty());
    }

    void theViewScrollsToTheLastRowOfTheTreeNotOfTheList()
    {
        Tree tree;
        ScrollProbe view;
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.setModel(&tree.model);
        view.selectItems({tree.light_grey, tree.paper, tree.cyan}, true);
        QCOMPARE(view.scrolled, QStringList({"paper"}));
        view.clearSelectItems({tree.light_grey, tree.cyan, tree.grey}, true);
        QCOMPARE(view.scrolled, QStringList({"paper", "light grey"}));
        view.selectItem(tree.magenta, true);
        QCOMPARE(view.scrolled.last(), QString("magenta"));
        view.scrolled.clear();
        view.selectItems({tree.pale_cyan});
        view.selectItem(tree.black);
        view.filter("nothing of that kind");
        view.selectItems({tree.paper}, true);
        QVERIFY(view.scrolled.isEmpty());
    }

    void theOrderOfRowsIsThatOfTheView()
    {
        Tree tree;
        ScrollProbe view;
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.setModel(&tree.model);
        view.setSortingEnabled(true);
        view.sortByColumn(0, Qt::DescendingOrder); // paper magenta cyan black
        view.selectItems({tree.magenta, tree.cyan, tree.paper}, true);
        QCOMPARE(view.scrolled, QStringList({"cyan"}));
        QCOMPARE(view.selectionModel()->selection().size(), 1); // neighbours: one range
    }

    void exactlyOneMatchIsSelected()
    {
        Tree tree;
        const QModelIndex hit = tree.view.selectItemWithProperty(1, "M 100", Qt::DisplayRole);
        QCOMPARE(hit, tree.view.indexOf(tree.magenta, 1));
        QCOMPARE(tree.view.selectedItem(), tree.magenta);
        QCOMPARE(tree.view.selectItemWithProperty(0, "paper", Qt::DisplayRole).row(), 3);
        QCOMPARE(tree.view.selectedItems(0).size(), 2);
        QCOMPARE(tree.view.clearSelectItemWithProperty(0, tree.cyan->id(), TaviTreeItem::IdRole).row(), 0);
        QCOMPARE(tree.view.selectedItem(), tree.cyan);
    }

    void twoMatchesOrNoneChangeNothing_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<QVariant>("value");
        QTest::newRow("three of them") << 2 << QVariant("solid");
        QTest::newRow("none") << 2 << QVariant("spot");
        QTest::newRow("deeper only") << 1 << QVariant("K 50");
        QTest::newRow("no such column") << 7 << QVariant("solid");
        QTest::newRow("exact case") << 0 << QVariant("Paper");
    }
    void twoMatchesOrNoneChangeNothing()
    {
        QFETCH(int, column);
        QFETCH(QVariant, value);
        Tree tree;
        tree.view.selectItem(tree.paper);
        QVERIFY(!tree.view.selectItemWithProperty(column, value, Qt::DisplayRole).isValid());
        QVERIFY(!tree.view.clearSelectItemWithProperty(column, value, Qt::DisplayRole).isValid());
        QCOMPARE(tree.view.selectedItem(), tree.paper);
    }

    void allMatchesAreSelected()
    {
        Tree tree;
        tree.view.selectItem(tree.paper);
        const QModelIndexList hits = tree.view.selectItemsWithProperty(2, "solid", Qt::DisplayRole);
        QCOMPARE(hits.size(), 3);
        QCOMPARE(hits[1], tree.view.indexOf(tree.magenta, 2));
        QCOMPARE(tree.view.selectedTexts(), QStringList({"cyan", "magenta", "black", "paper"}));
        QSignalSpy spy(&tree.view, SIGNAL(selectionChanged()));
        QCOMPARE(tree.view.clearSelectItemsWithProperty(2, "solid", Qt::DisplayRole).size(), 3);
        QCOMPARE(tree.view.selectedTexts(), QStringList({"cyan", "magenta", "black"}));
        QCOMPARE(spy.count(), 3); // one by one
        QVERIFY(tree.view.clearSelectItemsWithProperty(2, "spot", Qt::DisplayRole).isEmpty());
        QCOMPARE(tree.view.selectedTexts().size(), 3);
    }

    void selectedItemsAreTakenOutAlive()
    {
        Tree tree;
        tree.view.selectItems({tree.cyan, tree.paper});
        QSignalSpy resets(&tree.model, SIGNAL(modelReset()));
        const QList<TaviTreeItem *> taken = tree.view.removeSelectedItems(true);
        QCOMPARE(taken, QList<TaviTreeItem *>({tree.cyan, tree.paper}));
        QCOMPARE(tree.cyan->data(0, Qt::DisplayRole).toString(), QString("cyan"));
        QCOMPARE(tree.cyan->parentTreeItem(), nullptr);
        QVERIFY(!tree.model.indexFromItem(tree.cyan).isValid());
        QCOMPARE(tree.view.shownTexts(), QStringList({"magenta", "black", "grey", "light grey"}));
        QCOMPARE(resets.count(), 1);
        QVERIFY(tree.view.selectedItems(0).isEmpty());
        QVERIFY(tree.view.updatesEnabled());
        qDeleteAll(taken);
    }

    void selectedItemsAreDeletedAndCounted()
    {
        Tree tree;
        const QPointer<TaviTreeItem> cyan = tree.cyan;
        const QPointer<TaviTreeItem> child = tree.light_cyan;
        tree.view.selectItems({tree.cyan, tree.paper});
        QCOMPARE(tree.view.removeSelectedItems(false).size(), 2);
        QVERIFY(!cyan && !child);
        QCOMPARE(tree.view.shownTexts(), QStringList({"magenta", "black", "grey", "light grey"}));
    }

    void onlyTheTopLevelIsRemovedFrom()
    {
        Tree tree;
        tree.view.selectItems({tree.magenta, tree.light_grey});
        QList<TaviTreeItem *> taken = tree.view.removeSelectedItems(true);
        QCOMPARE(taken.size(), 2);
        QCOMPARE(taken.count(nullptr), 1);
        QVERIFY(taken.contains(tree.magenta));
        QVERIFY(tree.model.indexFromItem(tree.light_grey).isValid());
        qDeleteAll(taken);
    }

    void givenItemsAreRemoved()
    {
        Tree tree;
        tree.view.selectItem(tree.magenta);
        QVERIFY(tree.view.removeItems({tree.cyan, tree.paper}, false).isEmpty());
        QCOMPARE(tree.view.shownTexts(), QStringList({"magenta", "black", "grey", "light grey"}));
        QVERIFY(tree.view.selectedItems(0).isEmpty());
        const QList<TaviTreeItem *> taken = tree.view.removeItems({tree.black}, true);
        QCOMPARE(taken, QList<TaviTreeItem *>({tree.black}));
        qDeleteAll(taken);
        TreeProbe without_model;
        QVERIFY(without_model.removeItems({tree.magenta}, true).isEmpty());
        QVERIFY(without_model.removeSelectedItems(false).isEmpty());
        QVERIFY(without_model.updatesEnabled());
    }

    void nothingIsPaintedWhileListsAreSelectedOrRemoved()
    {
        Tree tree;
        QList<bool> painted;
        connect(&tree.view, qOverload<>(&TaviTreeView::selectionChanged), this,
                [&] { painted.append(tree.view.updatesEnabled()); });
        tree.view.selectItems({tree.cyan, tree.paper});
        tree.view.clearSelectItems({tree.magenta, tree.black});
        tree.view.removeItems({tree.cyan}, false);
        tree.view.selectItem(tree.paper);
        tree.view.removeSelectedItems(false);
        QCOMPARE(painted, QList<bool>({false, false, false, true, false}));
        QVERIFY(tree.view.updatesEnabled());
    }

    void noSelectionSignalComesFromARowThatIsGoingAway()
    {
        Tree tree;
        tree.view.selectItems({tree.cyan, tree.paper});
        QVector<int> rows_at_signal;
        connect(&tree.view, SIGNAL(selectionChanged()), &tree.view, SLOT(updateStatusBar()));
        connect(tree.view.selectionModel(), &QItemSelectionModel::selectionChanged, this,
                [&] { rows_at_signal.append(tree.model.rowCount()); });
        tree.view.removeSelectedItems(false);
        QCOMPARE(rows_at_signal, QVector<int>({4}));
    }

    /// Selecting by item is a look-up: neither the other items nor their rows are looked at.
    void theCostIsThatOfTheItemsFound()
    {
        TaviTreeModel model({"name"});
        QList<TaviTreeItem *> items;
        for (int i = 0; i < 20000; ++i)
            items.append(new CountingItem(QList<QVariant>{QString::number(i)}, nullptr));
        model.appendItems(items);
        TreeProbe view;
        view.setSelectionMode(QAbstractItemView::ExtendedSelection);
        view.setModel(&model);
        CountingItem::asked = 0;
        for (int i = 0; i < 100; ++i)
            view.selectItem(items[i * 200]);
        QCOMPARE(view.selectedItems(0).size(), 100);
        // Selecting the i-th asks those selected before, too; all rows would be two millions.
        QVERIFY2(CountingItem::asked < 60000, qPrintable(QString::number(CountingItem::asked)));
        view.clearSelection();
        CountingItem::asked = 0;
        view.selectItems(items.mid(5000, 100));
        QVERIFY2(CountingItem::asked < 2000, qPrintable(QString::number(CountingItem::asked)));
        QCOMPARE(view.selectionModel()->selection().size(), 1);
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewSelection)
#include "tst_tavitreeview_selection.moc"
