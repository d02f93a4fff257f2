// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "treeviews/taviheaderview.h"

#include <memory>

namespace {

bool canBePicked(const ConfigOrderItem &item)
{
    if (item.isEnabled() != item.isSelectable())
        QTest::qFail("enabled and selectable differ", __FILE__, __LINE__);
    return item.isEnabled();
}

} // namespace

/// The entries of the order dialog.
class TestConfigOrderItem : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        const ConfigOrderItem item;
        QVERIFY(item.parentTreeItem() == nullptr);
        QVERIFY(item.isItemVisible());
        QVERIFY(!item.isItemInShowList());
        QCOMPARE(item.itemID(), 0);
        QVERIFY(!item.isEnabled());
        QVERIFY(!item.isSelectable());
        QVERIFY(item.isDraggable());
        QVERIFY(!item.isDroppable());
        QVERIFY(!item.data(0, Qt::DisplayRole).isValid());
        QVERIFY(!item.data(0, Qt::DecorationRole).isValid());
        QVERIFY(!item.userData(0, 3).isValid());
    }

    void aParentIsRemembered()
    {
        TaviTreeItem parent;
        const ConfigOrderItem item(&parent);
        QCOMPARE(item.parentTreeItem(), &parent);
    }

    void valuesLieInTheFreeSlots()
    {
        ConfigOrderItem item;
        item.setItemID(42);
        item.setItemVisible(false);
        item.setItemInShowList(true);
        QCOMPARE(item.itemID(), 42);
        QCOMPARE(item.userData(0, 1), QVariant(false));
        QCOMPARE(item.userData(0, 2), QVariant(true));
        QCOMPARE(item.userData(0, 3), QVariant(42));
        QVERIFY(item.itemID() != item.id());
        item.setItemID(INT_MIN);
        QCOMPARE(item.itemID(), INT_MIN);
    }

    void listAndVisibleFlagMustAgree_data()
    {
        QTest::addColumn<bool>("in_show_list");
        QTest::addColumn<bool>("visible");
        QTest::addColumn<bool>("can_be_picked");
        QTest::newRow("left, visible") << false << true << false;
        QTest::newRow("left, hidden") << false << false << true;
        QTest::newRow("right, visible") << true << true << true;
        QTest::newRow("right, hidden") << true << false << false;
    }

    void listAndVisibleFlagMustAgree()
    {
        QFETCH(bool, in_show_list);
        QFETCH(bool, visible);
        QFETCH(bool, can_be_picked);
        ConfigOrderItem item;
        item.setItemInShowList(in_show_list);
        item.setItemVisible(visible);
        QCOMPARE(canBePicked(item), can_be_picked);
        ConfigOrderItem other_way;
        other_way.setItemVisible(visible);
        other_way.setItemInShowList(in_show_list);
        QCOMPARE(canBePicked(other_way), can_be_picked);
    }

    void onlyTheListMakesDraggable()
    {
        ConfigOrderItem item;
        item.setDraggable(false);
        item.setItemVisible(false);
        QVERIFY(!item.isDraggable());
        item.setItemInShowList(false);
        QVERIFY(item.isDraggable());
    }

    void copiesHaveTextIconFlagsAndThing_data()
    {
        QTest::addColumn<int>("way");
        QTest::newRow("constructor") << 0;
        QTest::newRow("assignment") << 1;
        QTest::newRow("clone") << 2;
    }

    void copiesHaveTextIconFlagsAndThing()
    {
        QFETCH(int, way);
        TaviTreeItem parent;
        ConfigOrderItem item(&parent);
        item.setData(0, "Density", Qt::DisplayRole);
        item.setData(0, QColor(Qt::cyan), Qt::DecorationRole);
        item.setData(0, "elsewhere", TaviTreeItem::getUserDataRole(7));
        item.setItemID(5);
        item.setItemInShowList(true);
        item.setItemVisible(true);
        // Flags that the two do not give.
        item.setEnabled(false);
        item.setDroppable(true);

        std::unique_ptr<ConfigOrderItem> copy;
        if (way == 0) {
            copy = std::make_unique<ConfigOrderItem>(item);
        } else if (way == 1) {
            copy = std::make_unique<ConfigOrderItem>();
            ConfigOrderItem &assigned = (*copy = item);
            QCOMPARE(&assigned, copy.get());
        } else {
            copy.reset(item.clone());
        }
        QVERIFY(copy->parentTreeItem() == nullptr);
        QCOMPARE(copy->data(0, Qt::DisplayRole), QVariant("Density"));
        QCOMPARE(copy->data(0, Qt::DecorationRole), QVariant(QColor(Qt::cyan)));
        QVERIFY(!copy->userData(0, 7).isValid());
        QCOMPARE(copy->itemID(), 5);
        QVERIFY(copy->isItemInShowList());
        QVERIFY(copy->isItemVisible());
        QVERIFY(canBePicked(*copy));
        QVERIFY(copy->isDraggable());
        QVERIFY(!copy->isDroppable());
        QVERIFY(copy->id() != item.id());
    }

    void assignmentKeepsTheParent()
    {
        TaviTreeItem parent;
        ConfigOrderItem item(&parent);
        ConfigOrderItem other;
        other.setItemID(8);
        item = other;
        QCOMPARE(item.parentTreeItem(), &parent);
        ConfigOrderItem &same = item;
        item = same;
        QCOMPARE(item.itemID(), 8);
    }

    void columnsAreCopiedInTheSameWay()
    {
        ColumnOrderItem column;
        QVERIFY(column.parentTreeItem() == nullptr);
        column.setData(0, "dE", Qt::DisplayRole);
        column.setItemID(3);
        column.setItemVisible(false);
        const ColumnOrderItem copy(column);
        QCOMPARE(copy.data(0, Qt::DisplayRole), QVariant("dE"));
        QCOMPARE(copy.itemID(), 3);
        QVERIFY(canBePicked(copy));
        ColumnOrderItem assigned;
        assigned = column;
        QCOMPARE(assigned.itemID(), 3);
        ConfigOrderItem &base = assigned;
        column.setItemID(4);
        base = column;
        QCOMPARE(assigned.itemID(), 4);
    }
};

TAVI_GUI_TEST_MAIN(TestConfigOrderItem)
#include "tst_configorderitem.moc"
