// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/orderfixture.h"

#include <QMimeData>
#include <QScrollBar>

#include <memory>

Q_DECLARE_METATYPE(QVector<int>)

using Rows = QVector<int>;

namespace {

/// A list of the dialog with rows "A", "B", ... that all can be picked.
struct OrderList {
    explicit OrderList(int rows)
    {
        for (int row = 0; row < rows; ++row)
            model.appendItem(orderItem(row, true, true));
        tree.setModel(&model);
        tree.setFixedItems(false);
        tree.setStatusBarEnabled(false);
    }

    /// As a drop of the selected rows.
    void dropAt(int row)
    {
        const std::unique_ptr<QMimeData> data(model.mimeData({}));
        model.dropMimeData(data.get(), Qt::MoveAction, row, 0, QModelIndex());
    }

    ConfigOrderModel model;
    ConfigOrderTree tree;
};

} // namespace

/// A list of the order dialog: moving selected rows.
class TestConfigOrderTree : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        const ConfigOrderTree tree;
        QVERIFY(!tree.isSortingEnabled());
        QCOMPARE(tree.selectionMode(), QAbstractItemView::ExtendedSelection);
        QCOMPARE(tree.sourceModel(), nullptr);
        QCOMPARE(tree.dndFlags(), 0L);
    }

    void fixedItemsTakeDropsFromOthersAlone()
    {
        ConfigOrderTree tree;
        tree.setFixedItems(true);
        QCOMPARE(tree.dndFlags(), 2L);
        QCOMPARE(tree.dragDropMode(), QAbstractItemView::DragDrop);
        tree.setFixedItems(false);
        QCOMPARE(tree.dndFlags(), 11L);
        QCOMPARE(tree.dragDropMode(), QAbstractItemView::DragDrop);
    }

    void upAndDown_data()
    {
        QTest::addColumn<bool>("up");
        QTest::addColumn<Rows>("selected");
        QTest::addColumn<QString>("rows");
        QTest::newRow("one up") << true << Rows{2} << "A C B D E";
        QTest::newRow("the top row stays on top") << true << Rows{0} << "A B C D E";
        QTest::newRow("a block at the top stays") << true << Rows{0, 1} << "A B C D E";
        QTest::newRow("others close up to the top") << true << Rows{0, 2, 3} << "A C D B E";
        QTest::newRow("two apart, up") << true << Rows{1, 3} << "B A D C E";
        QTest::newRow("all up") << true << Rows{0, 1, 2, 3, 4} << "A B C D E";
        QTest::newRow("one down") << false << Rows{2} << "A B D C E";
        QTest::newRow("the last row stays last") << false << Rows{4} << "A B C D E";
        QTest::newRow("a block at the end stays") << false << Rows{3, 4} << "A B C D E";
        QTest::newRow("others close up to the end") << false << Rows{1, 2, 4} << "A D B C E";
        QTest::newRow("two apart, down") << false << Rows{0, 3} << "B A C E D";
        QTest::newRow("nothing") << false << Rows{} << "A B C D E";
    }

    void upAndDown()
    {
        QFETCH(bool, up);
        QFETCH(Rows, selected);
        QFETCH(QString, rows);
        OrderList list(5);
        selectRows(list.tree, selected);
        const QString texts = selectedTexts(list.tree);
        if (up)
            list.tree.upSelectedItems();
        else
            list.tree.downSelectedItems();
        QCOMPARE(rowTexts(list.model), rows);
        QCOMPARE(selectedTexts(list.tree), texts);
    }

    // A row that was selected and then greyed out is not moved, and not selected any more either.
    void onlyWhatMovedIsSelectedAfterwards()
    {
        OrderList list(5);
        selectRows(list.tree, {1, 3});
        auto *greyed = static_cast<ConfigOrderItem *>(list.model.itemAt(1));
        greyed->setItemVisible(false);
        list.tree.upSelectedItems();
        QCOMPARE(rowTexts(list.model), QString("A b D C E"));
        greyed->setItemVisible(true);
        QCOMPARE(selectedTexts(list.tree), QString("D"));
    }

    void aBlockAtTheEndKeepsItsOrderHoweverOften()
    {
        OrderList list(4);
        selectRows(list.tree, {2, 3});
        for (int time = 0; time < 5; ++time)
            list.tree.upSelectedItems();
        QCOMPARE(rowTexts(list.model), QString("C D A B"));
        QCOMPARE(selectedTexts(list.tree), QString("C D"));
        for (int time = 0; time < 5; ++time)
            list.tree.downSelectedItems();
        QCOMPARE(rowTexts(list.model), QString("A B C D"));
    }

    void dropsMove_data()
    {
        QTest::addColumn<Rows>("selected");
        QTest::addColumn<int>("at");
        QTest::addColumn<QString>("rows");
        QTest::newRow("two down") << Rows{0, 1} << 3 << "C A B D E";
        QTest::newRow("two up") << Rows{3, 4} << 1 << "A D E B C";
        QTest::newRow("on themselves") << Rows{1, 2} << 1 << "A B C D E";
        QTest::newRow("to the end") << Rows{0} << 5 << "B C D E A";
        QTest::newRow("by a drop on nothing") << Rows{0, 2} << -1 << "B D E A C";
        QTest::newRow("from both sides") << Rows{0, 4} << 2 << "B A E C D";
        QTest::newRow("against the running row") << Rows{1, 2} << 3 << "A D B C E";
        QTest::newRow("all") << Rows{0, 1, 2, 3, 4} << 2 << "A B C D E";
        QTest::newRow("none") << Rows{} << 2 << "A B C D E";
    }

    void dropsMove()
    {
        QFETCH(Rows, selected);
        QFETCH(int, at);
        QFETCH(QString, rows);
        OrderList list(5);
        selectRows(list.tree, selected);
        const QString texts = selectedTexts(list.tree);
        list.dropAt(at);
        QCOMPARE(rowTexts(list.model), rows);
        QCOMPARE(selectedTexts(list.tree), texts);
    }

    void theOldModelIsNotListenedTo()
    {
        OrderList list(3);
        ConfigOrderModel other;
        other.appendItems({orderItem(3, true, true), orderItem(4, true, true)});
        list.tree.setModel(&other);
        selectRows(list.tree, {0});
        list.dropAt(2); // which would move what is selected now
        QCOMPARE(rowTexts(other), QString("D E"));
        const std::unique_ptr<QMimeData> data(other.mimeData({}));
        other.dropMimeData(data.get(), Qt::MoveAction, 2, 0, QModelIndex());
        QCOMPARE(rowTexts(other), QString("E D"));
        list.tree.setModel(&other);
        other.dropMimeData(data.get(), Qt::MoveAction, 0, 0, QModelIndex());
        QCOMPARE(rowTexts(other), QString("D E"));
    }

    void anyModelWillDo()
    {
        TaviTreeModel plain(QList<QVariant>{"plain"});
        plain.appendItems({orderItem(0, true, true), orderItem(1, true, true)});
        ConfigOrderTree tree;
        tree.setModel(&plain);
        selectRows(tree, {1});
        tree.upSelectedItems();
        QCOMPARE(rowTexts(plain), QString("B A"));
        tree.setModel(nullptr);
        tree.upSelectedItems();
        QVERIFY(tree.setItemVisible(0, true) == nullptr);
    }

    void aModelMayGoFirst()
    {
        auto model = std::make_unique<ConfigOrderModel>();
        model->appendItem(orderItem(0, true, true));
        ConfigOrderTree tree;
        tree.setModel(model.get());
        selectRows(tree, {0});
        model.reset();
        tree.upSelectedItems();
        tree.downSelectedItems();
        QVERIFY(tree.setItemVisible(0, true) == nullptr);
        ConfigOrderModel next;
        tree.setModel(&next);
        QCOMPARE(tree.sourceModel(), &next);
    }

    void visibleFlagsAreSetByTheThing()
    {
        OrderList list(3);
        static_cast<ConfigOrderItem *>(list.model.itemAt(2))->setItemID(1);
        ConfigOrderItem *found = list.tree.setItemVisible(1, false);
        QCOMPARE(found, list.model.itemAt(1));
        QVERIFY(!found->isItemVisible());
        QVERIFY(static_cast<ConfigOrderItem *>(list.model.itemAt(2))->isItemVisible());
        QVERIFY(list.tree.setItemVisible(7, false) == nullptr);
    }

    void aRowThatAKeywordHidesIsNotFound()
    {
        OrderList list(3);
        list.tree.setRowHidden(1, QModelIndex(), true);
        QVERIFY(list.tree.setItemVisible(1, false) == nullptr);
        QVERIFY(list.tree.setItemVisible(2, false) != nullptr);
    }

    void movedRowsStayInSightAndCurrent()
    {
        OrderList list(26);
        list.tree.resize(200, 150);
        list.tree.show();
        QVERIFY(QTest::qWaitForWindowExposed(&list.tree));
        selectRows(list.tree, {0, 1});
        for (int time = 0; time < 20; ++time)
            list.tree.downSelectedItems();
        const QRect shown = list.tree.viewport()->rect();
        QVERIFY(shown.contains(centreOfRow(list.tree, 20)));
        QVERIFY(shown.contains(centreOfRow(list.tree, 21)));
        QCOMPARE(list.tree.currentIndex().data().toString(), QString("B"));
        for (int time = 0; time < 18; ++time)
            list.tree.upSelectedItems();
        QVERIFY(shown.contains(centreOfRow(list.tree, 2)));
        QCOMPARE(list.tree.currentIndex().data().toString(), QString("A"));
    }

    void whoeverHearsOfAMoveMayRemoveRows()
    {
        OrderList list(5);
        selectRows(list.tree, {1, 2, 3});
        const auto remove = connect(&list.model, &QAbstractItemModel::rowsInserted, &list.model, [&list] {
            for (TaviTreeItem *item : list.model.allItems()) {
                if (item->data(0, Qt::DisplayRole).toString() == "C") {
                    list.model.removeItem(item);
                    return;
                }
            }
        });
        list.tree.upSelectedItems();
        disconnect(remove);
        QCOMPARE(rowTexts(list.model), QString("B A D E"));
        QCOMPARE(selectedTexts(list.tree), QString("B D"));
    }

    void whoeverHearsOfADropMayRemoveAllRows()
    {
        OrderList list(5);
        selectRows(list.tree, {1, 2});
        const auto remove = connect(&list.model, &QAbstractItemModel::modelReset, &list.model,
                                    [&list] { list.model.removeAllItems(); });
        list.dropAt(5);
        disconnect(remove);
        QCOMPARE(rowTexts(list.model), QString("B C"));
    }

    void theListMayGoInTheMiddleOfAMove()
    {
        ConfigOrderModel model;
        for (int row = 0; row < 3; ++row)
            model.appendItem(orderItem(row, true, true));
        auto *tree = new ConfigOrderTree;
        tree->setModel(&model);
        selectRows(*tree, {1, 2});
        connect(&model, &QAbstractItemModel::rowsInserted, &model, [&tree] {
            delete tree;
            tree = nullptr;
        });
        tree->upSelectedItems();
        QVERIFY(tree == nullptr);
        QCOMPARE(rowTexts(model), QString("B C A"));
    }
};

TAVI_GUI_TEST_MAIN(TestConfigOrderTree)
#include "tst_configordertree.moc"
