// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "treeviews/taviheaderview.h"

#include <memory>

/// The entries of the order dialog, by the ones for columns.
class TestConfigOrderItem : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        const ColumnOrderItem item;
        QVERIFY(!item.parentTreeItem());
        QVERIFY(item.isItemVisible());
        QVERIFY(!item.isItemInShowList());
        QVERIFY(!item.isEnabled() && !item.isSelectable());
        QVERIFY(item.isDraggable() && !item.isDroppable());
        QVERIFY(!item.userData(0, ConfigOrderItem::ItemIdSlot).isValid());
        QCOMPARE(item.itemID(), 0);
    }

    void anEntryCanBePickedWhereItCanGoOver_data()
    {
        QTest::addColumn<bool>("in_show_list");
        QTest::addColumn<bool>("visible");
        QTest::addColumn<bool>("picked");
        QTest::newRow("shows, in the list of all") << false << true << false;
        QTest::newRow("hidden, in the list of all") << false << false << true;
        QTest::newRow("shows, in the show list") << true << true << true;
        QTest::newRow("hidden, in the show list") << true << false << false;
    }
    void anEntryCanBePickedWhereItCanGoOver()
    {
        QFETCH(const bool, in_show_list);
        QFETCH(const bool, visible);
        QFETCH(const bool, picked);
        ColumnOrderItem one, other;
        one.setItemInShowList(in_show_list);
        one.setItemVisible(visible);
        other.setItemVisible(visible);
        other.setItemInShowList(in_show_list);
        for (const ColumnOrderItem *item : {&one, &other}) {
            QCOMPARE(item->isItemInShowList(), in_show_list);
            QCOMPARE(item->isItemVisible(), visible);
            QCOMPARE(item->isEnabled(), picked);
            QCOMPARE(item->isSelectable(), picked);
        }
    }

    void theListMakesItDraggableAndVisibilityDoesNot()
    {
        ColumnOrderItem item;
        item.setDraggable(false);
        item.setItemVisible(false);
        QVERIFY(!item.isDraggable());
        item.setItemInShowList(false);
        QVERIFY(item.isDraggable());
    }

    void theEntryKeepsItselfInColumnZero()
    {
        ColumnOrderItem item;
        item.setItemID(7);
        item.setItemVisible(false);
        item.setItemInShowList(true);
        QCOMPARE(item.userData(0, 1), QVariant(false));
        QCOMPARE(item.userData(0, 2), QVariant(true));
        QCOMPARE(item.userData(0, 3), QVariant(7));
        QCOMPARE(item.itemID(), 7);
        QVERIFY(item.itemID() != item.id() || item.id() == 7);
    }

    void copiesTakeOverAllButTheParent()
    {
        TaviTreeItem root;
        auto *item = new ColumnOrderItem;
        root.appendChild(item);
        item->setData(0, "Lab", Qt::DisplayRole);
        item->setData(0, QColor(Qt::red), Qt::DecorationRole);
        item->setItemID(5);
        item->setItemVisible(false);
        item->setItemInShowList(false);
        const ColumnOrderItem copy(*item);
        const std::unique_ptr<ConfigOrderItem> clone(item->clone());
        ColumnOrderItem assigned, by_base;
        assigned = *item;
        static_cast<ConfigOrderItem &>(by_base) = *item;
        QVERIFY(qobject_cast<ColumnOrderItem *>(clone.get()));
        for (const ConfigOrderItem *each :
             {static_cast<const ConfigOrderItem *>(&copy), static_cast<const ConfigOrderItem *>(clone.get()),
              static_cast<const ConfigOrderItem *>(&assigned), static_cast<const ConfigOrderItem *>(&by_base)}) {
            QVERIFY(!each->parentTreeItem());
            QCOMPARE(each->data(0, Qt::DisplayRole), QVariant("Lab"));
            QCOMPARE(each->data(0, Qt::DecorationRole), QVariant(QColor(Qt::red)));
            QCOMPARE(each->itemID(), 5);
            QVERIFY(!each->isItemVisible());
            QVERIFY(!each->isItemInShowList());
            QVERIFY(each->isEnabled() && each->isSelectable() && each->isDraggable());
            QVERIFY(each->id() != item->id());
        }
    }

    void anEntryMayBeAssignedToItself()
    {
        ColumnOrderItem item;
        item.setItemID(3);
        const ConfigOrderItem &same = item;
        static_cast<ConfigOrderItem &>(item) = same;
        QCOMPARE(item.itemID(), 3);
    }
};

TAVI_TEST_MAIN(TestConfigOrderItem)
#include "tst_configorderitem.moc"
