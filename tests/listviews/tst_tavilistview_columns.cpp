// SPDX-License-Identifier: MIT
#include "tests/listviews/listviewfixture.h"
#include "tests/support/tavitest.h"

namespace {

class RebuildProbe : public ListProbe
{
public:
    using ListProbe::ListProbe;
    void headersRebuilt() override { ++rebuilt; }
    int rebuilt = 0;
};

QIcon redIcon()
{
    QPixmap red(16, 16);
    red.fill(Qt::red);
    return QIcon(red);
}

} // namespace

/// Columns and the items behind them.
class TestTaviListViewColumns : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void withoutMenuColumnsAreThoseOfTheBase()
    {
        ListProbe list(false);
        QCOMPARE(list.addColumn("A", 60), 0);
        QCOMPARE(list.addColumn(redIcon(), "B"), 1);
        QCOMPARE(list.addColumnItem("C", 50, false), 2);
        QCOMPARE(list.addColumnItem(redIcon(), "D", 50, false), 3);
        QCOMPARE(list.headings(), QString("A B C D")); // shown all the same
        QVERIFY(list.header()->iconSet(3));
        QVERIFY(list.columnItems().isEmpty());
        list.setColumnText(0, "E");
        list.setColumnText(1, redIcon(), "F");
        list.setColumnWidth(0, 77);
        list.setColumnWidthMode(0, Q3ListView::Maximum);
        list.setColumnAlignment(0, Qt::AlignRight);
        list.removeColumn(2);
        QCOMPARE(list.headings(), QString("E F D"));
        QCOMPARE(list.columnWidth(0), 77);
        QCOMPARE(list.columnWidthMode(0), Q3ListView::Maximum);
        QCOMPARE(list.columnAlignment(0), int(Qt::AlignRight));
        RebuildProbe other(false);
        other.addColumn("A", 60);
        other.rebuildHeaders();
        other.setItemVisible(0, false);
        QCOMPARE(other.rebuilt, 0);
        QCOMPARE(other.headings(), QString("A"));
    }

    void aColumnItemHasWhatWasGiven()
    {
        ListProbe list;
        QCOMPARE(list.addColumnItem("A", 60, true), 0);
        QCOMPARE(list.addColumnItem(redIcon(), "B", -7, false), 1);
        QCOMPARE(list.addColumn("C", 0), 2);
        QCOMPARE(list.addColumn(redIcon(), "D"), 3);
        QCOMPARE(list.headings(), QString("A C D"));
        QCOMPARE(list.columnTexts(), QString("A (B*) C D*"));
        const QList<ColumnItem *> &items = list.columnItems();
        for (int id = 0; id < 4; ++id)
            QCOMPARE(items.at(id)->id, id);
        QCOMPARE(items.at(0)->width_mode, Q3ListView::Manual);
        QCOMPARE(items.at(0)->alignment, int(Qt::AlignLeft));
        QVERIFY(items.at(0)->icon.isNull());
        QCOMPARE(items.at(1)->width, -1);
        QCOMPARE(items.at(1)->width_mode, Q3ListView::Maximum);
        QVERIFY(!items.at(1)->icon.isNull());
        QCOMPARE(items.at(2)->width, 0);
        QCOMPARE(items.at(2)->width_mode, Q3ListView::Manual);
        QVERIFY(list.header()->iconSet(2) && !list.header()->iconSet(2)->isNull());
        QCOMPARE(list.addColumnItem(redIcon(), "E", 44, true), 4);
        QCOMPARE(list.columnWidth(3), 44);
    }

    void settersReachTheItemOfTheSection()
    {
        ListProbe list;
        list.addColumnItem("hidden", 60, false);
        list.addColumn("A", 60);
        list.addColumn("B", 60);
        QVERIFY(list.showAndWait());
        list.dragHeading(1, 0, -20); // B A
        const auto b = [&] {
            return list.columnItemAtIndex(0);
        };
        list.setColumnText(1, "Beta");
        QCOMPARE(b()->title, QString("Beta"));
        QCOMPARE(list.columnText(1), QString("Beta"));
        list.setColumnText(1, redIcon(), "Gamma");
        QCOMPARE(b()->title, QString("Gamma"));
        QVERIFY(!b()->icon.isNull());
        QVERIFY(list.header()->iconSet(1));
        list.setColumnWidth(1, 88);
        QCOMPARE(b()->width, 88);
        QCOMPARE(list.columnWidth(1), 88);
        list.setColumnWidth(1, -3);
        QCOMPARE(b()->width, -1);
        QCOMPARE(list.columnWidth(1), 88);
        list.setColumnAlignment(1, Qt::AlignRight);
        QCOMPARE(b()->alignment, int(Qt::AlignRight));
        QCOMPARE(list.columnAlignment(1), int(Qt::AlignRight));
        list.setColumnWidthMode(1, Q3ListView::Maximum);
        QCOMPARE(b()->width_mode, Q3ListView::Maximum);
        QCOMPARE(list.columnWidthMode(1), Q3ListView::Maximum);
        list.removeColumn(1);
        QCOMPARE(list.headings(), QString("A"));
        QCOMPARE(list.columnTexts(), QString("(hidden) (Gamma*) A"));
    }

    void aRemovedColumnCanBeShownAgain()
    {
        ListProbe list;
        list.fill(3, 2);
        list.removeColumn(1);
        QCOMPARE(list.headings(), QString("A C"));
        QVERIFY(!list.itemVisible(1));
        list.setItemVisible(1, true);
        QCOMPARE(list.headings(), QString("A B C"));
    }

    void numbersOutOfRangeChangeNothing_data()
    {
        QTest::addColumn<int>("column");
        QTest::newRow("negative") << -1;
        QTest::newRow("as many as shown") << 2;
        QTest::newRow("as many as there are") << 3;
        QTest::newRow("huge") << INT_MAX;
        QTest::newRow("least") << INT_MIN;
    }
    void numbersOutOfRangeChangeNothing()
    {
        QFETCH(int, column);
        ListProbe list;
        list.fill(2, 1);
        list.addColumnItem("hidden", 60, false);
        list.setColumnText(column, "X");
        list.setColumnText(column, redIcon(), "X");
        list.setColumnWidth(column, 5);
        list.setColumnWidthMode(column, Q3ListView::Maximum);
        list.setColumnAlignment(column, Qt::AlignRight);
        list.removeColumn(column);
        QCOMPARE(list.columnTexts(), QString("A B (hidden)"));
        QCOMPARE(list.headings(), QString("A B"));
        QVERIFY(!list.columnItemAtSection(column));
        QVERIFY(!list.columnItemAtIndex(column));
        QCOMPARE(list.columnItemID(column), -1);
        list.columnItems().at(2)->setItemVisible(true); // which the header does not know yet
        QVERIFY(!list.columnItemAtSection(column));
        QVERIFY(!list.columnItemAtIndex(column));
        list.columnItems().at(2)->setItemVisible(false);
        list.resizeColumnItem(column, 5);
        for (const ColumnItem *item : list.columnItems()) {
            QCOMPARE(item->width, 60);
            QCOMPARE(item->alignment, int(Qt::AlignLeft));
            QCOMPARE(item->width_mode, Q3ListView::Manual);
        }
    }

    void idsAndSectionsAreFoundFromEachOther()
    {
        ListProbe list;
        list.addColumnItem("hidden", 60, false);
        list.addColumn("A", 60);
        list.addColumn("B", 60);
        QVERIFY(list.showAndWait());
        QCOMPARE(list.columnItemID(0), 1);
        QCOMPARE(list.columnItemID(1), 2);
        list.dragHeading(1, 0, -20);
        QCOMPARE(list.headings(), QString("B A"));
        QCOMPARE(list.columnItemID(0), 1);
        QCOMPARE(list.columnItemID(1), 2);
        QCOMPARE(list.columnItemSection(0), -1);
        QCOMPARE(list.columnItemSection(1), 0);
        QCOMPARE(list.columnItemSection(2), 1);
        QCOMPARE(list.columnItemSection(3), -1);
        QCOMPARE(list.columnItemSection(-1), -1);
        QCOMPARE(list.columnItemAtSection(1)->title, QString("B"));
        QCOMPARE(list.columnItemAtIndex(1)->title, QString("A"));
        list.rebuildHeaders(); // sections are in order of display now
        QCOMPARE(list.headings(), QString("B A"));
        QCOMPARE(list.columnItemID(0), 2);
        QCOMPARE(list.columnItemSection(1), 1);
    }

    void visibleIndexesAreMapped()
    {
        ListProbe list;
        for (int column = 0; column < 5; ++column)
            list.addColumnItem(QString::number(column), 60, column % 2 == 1); // 1 and 3 are shown
        QCOMPARE(list.mapToColumnItemIndex(-1), -1);
        QCOMPARE(list.mapToColumnItemIndex(0), 1);
        QCOMPARE(list.mapToColumnItemIndex(1), 3);
        QCOMPARE(list.mapToColumnItemIndex(2), -1);
        QCOMPARE(list.mapToColumnItemIndex(4), -1);
        QCOMPARE(list.mapToColumnItemIndex(5), 5);
        QCOMPARE(list.mapToColumnItemIndex(6), -1);
        list.resizeColumnItem(1, 99);
        QCOMPARE(list.columnItems().at(3)->width, 99);
        list.resizeColumnItem(5, 99);
    }

    void visibilityIsToldById()
    {
        ListProbe list;
        list.addColumn("A", 60);
        list.addColumnItem("B", 60, false);
        QVERIFY(list.itemVisible(0));
        QVERIFY(!list.itemVisible(1));
        QVERIFY(!list.itemVisible(2));
        QVERIFY(!list.itemVisible(-1));
        QVERIFY(!list.itemVisible(INT_MAX));
    }

    void settingVisibilityRebuildsOnlyForAChange()
    {
        RebuildProbe list;
        list.fill(2, 1);
        list.setItemVisible(0, true);
        list.setItemVisible(-1, false);
        list.setItemVisible(2, false);
        QCOMPARE(list.rebuilt, 0);
        list.setItemVisible(0, false);
        QCOMPARE(list.rebuilt, 1);
        QCOMPARE(list.headings(), QString("B"));
        list.setItemVisible(1, false);
        QCOMPARE(list.headings(), QString());
    }

    void rebuildingMakesColumnsFromTheirItems()
    {
        ListProbe list;
        list.fill(3, 2);
        ColumnItem *b = list.columnItemAtIndex(1);
        b->alignment = Qt::AlignHCenter;
        b->width = 123;
        b->icon = redIcon();
        b->title = "Beta";
        b->width_mode = Q3ListView::Maximum;
        list.columnItemAtIndex(2)->width = 0;
        list.rebuildHeaders();
        QCOMPARE(list.headings(), QString("A Beta C"));
        QCOMPARE(list.columnAlignment(1), int(Qt::AlignHCenter));
        QVERIFY(list.columnWidth(1) >= 123);
        QVERIFY(list.header()->iconSet(1));
        QVERIFY(!list.header()->iconSet(0));
        QCOMPARE(list.columnWidthMode(1), Q3ListView::Maximum);
        QVERIFY(list.columnWidth(2) > 0); // automatic at first
        QCOMPARE(list.columnWidthMode(2), Q3ListView::Manual);
    }

    void rebuildingKeepsOrderSelectionAndPosition()
    {
        RebuildProbe list;
        list.setSelectionMode(Q3ListView::Multi);
        list.fill(3, 200);
        QVERIFY(list.showAndWait());
        for (int row = 100; row < 103; ++row)
            list.setSelected(list.at(row), true);
        list.setContentsPos(0, 700);
        const QString rows = list.rows();
        list.setItemVisible(1, false);
        QCOMPARE(list.rows(), rows);
        QCOMPARE(list.selection(), QString("a100 a101 a102"));
        QCOMPARE(list.contentsY(), 700);
        QCOMPARE(list.rebuilt, 1);
    }

    void withoutACurrentItemNoneBecomesCurrent()
    {
        ListProbe list;
        list.fill(2, 3);
        list.rebuildHeaders();
        QVERIFY(!list.currentItem());
    }

    void rebuildingKeepsASingleSelection()
    {
        ListProbe list;
        list.fill(2, 5);
        list.setSelected(list.at(2), true);
        list.setItemVisible(1, false);
        QCOMPARE(list.selection(), QString("a2"));
        QCOMPARE(list.selectedItem(), list.at(2));
    }

    void rebuildingKeepsTheSelectionBelowTheTop()
    {
        ListProbe list;
        list.fill(2, 3);
        auto *child = new Q3ListViewItem(list.at(1), "child");
        list.at(1)->setOpen(true);
        list.setSelected(child, true);
        list.setItemVisible(1, false);
        QCOMPARE(list.selection(), QString("child"));
        QCOMPARE(list.rows(), QString("a0 a1 child a2"));
    }

    void rebuildingKeepsTheOrderOfEqualsInASortedView()
    {
        ListProbe list;
        list.fill(2, 4);
        for (int row = 0; row < 4; ++row)
            list.at(row)->setText(1, "same");
        list.setSorting(1);
        QCOMPARE(list.rows(), QString("a0 a1 a2 a3"));
        list.rebuildHeaders();
        QCOMPARE(list.rows(), QString("a0 a1 a2 a3"));
    }

    void rebuildingMakesTheLastTopLevelItemCurrent()
    {
        ListProbe list;
        list.fill(2, 5);
        list.setCurrentItem(list.at(0));
        list.rebuildHeaders();
        QCOMPARE(list.currentItem(), list.at(4));
        list.setCurrentItem(list.at(2));
        list.rebuildHeaders();
        QCOMPARE(list.currentItem(), list.at(4));
    }

    void rebuildingTellsCurrentItemAndSelection()
    {
        ListProbe list;
        list.fill(2, 3);
        list.setSelected(list.at(0), true);
        QSignalSpy current(&list, SIGNAL(currentChanged(Q3ListViewItem *)));
        QSignalSpy selected(&list, SIGNAL(selectionChanged(Q3ListViewItem *)));
        QSignalSpy selection(&list, SIGNAL(selectionChanged()));
        list.rebuildHeaders();
        QCOMPARE(current.count(), 1);
        QCOMPARE(current.at(0).at(0).value<Q3ListViewItem *>(), list.at(2));
        QCOMPARE(selected.count(), 1);
        QCOMPARE(selected.at(0).at(0).value<Q3ListViewItem *>(), list.at(0));
        QCOMPARE(selection.count(), 0);
        list.setSelectionMode(Q3ListView::Extended);
        list.rebuildHeaders();
        QCOMPARE(current.count(), 2);
        QCOMPARE(selected.count(), 1);
        QCOMPARE(selection.count(), 1);
    }

    void rebuildingMeasuresTheItemsAnew()
    {
        ListProbe list;
        list.addColumn("A");
        list.addColumn("B", 60);
        new Q3ListViewItem(&list, "a text that is wider than the heading of its column");
        QVERIFY(list.showAndWait());
        const int width = list.columnWidth(0);
        QVERIFY(width > 150);
        list.setItemVisible(1, false);
        QTRY_COMPARE(list.columnWidth(0), width);
        QCOMPARE(list.columnItemAtIndex(0)->width, -1);
    }

    // Whatever the user shows or hides: the rest of the width is the last column's, or all columns share it.
    void rebuildingKeepsColumnsThatFillTheWidth_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("the last one") << int(Q3ListView::LastColumn);
        QTest::newRow("all") << int(Q3ListView::AllColumns);
    }
    void rebuildingKeepsColumnsThatFillTheWidth()
    {
        QFETCH(int, mode);
        ListProbe list;
        list.fill(3, 1);
        list.setResizeMode(Q3ListView::ResizeMode(mode));
        QVERIFY(list.showAndWait());
        list.setItemVisible(2, false);
        QVERIFY(list.header()->isStretchEnabled(1));
        QCOMPARE(list.header()->isStretchEnabled(0), mode == Q3ListView::AllColumns);
        list.setItemVisible(2, true);
        QVERIFY(list.header()->isStretchEnabled(2));
        QCOMPARE(list.header()->isStretchEnabled(1), mode == Q3ListView::AllColumns);
    }

    void aSlotDoesNotScrollTheListThatIsRebuilt()
    {
        ListProbe list;
        list.fill(12, 200);
        QVERIFY(list.showAndWait());
        list.setCurrentItem(list.at(0));
        list.setContentsPos(90, 700);
        connect(&list, &Q3ListView::currentChanged, &list, [&list](Q3ListViewItem *item) {
            list.ensureItemVisible(item);
            list.setContentsPos(0, list.contentsY());
        });
        list.rebuildHeaders();
        QCOMPARE(QPoint(list.contentsX(), list.contentsY()), QPoint(90, 700));
    }

    void aCurrentItemBelowTheTopIsNoneAfterwards()
    {
        ListProbe list;
        list.fill(2, 3);
        auto *child = new Q3ListViewItem(list.at(1), "child");
        list.at(1)->setOpen(true);
        list.setCurrentItem(child);
        list.rebuildHeaders();
        QVERIFY(list.currentItem() != list.at(2));
    }

    void aSlotMayClearTheListThatIsRebuilt()
    {
        RebuildProbe list;
        list.fill(2, 3);
        list.setSelected(list.at(0), true);
        connect(&list, SIGNAL(currentChanged(Q3ListViewItem *)), &list, SLOT(clear()));
        list.rebuildHeaders();
        QCOMPARE(list.childCount(), 0);
        QCOMPARE(list.rebuilt, 1);
    }

    void turningTheMenuOnMakesItemsOfTheColumns()
    {
        ListProbe list(false);
        list.fill(3, 1);
        list.setColumnAlignment(1, Qt::AlignRight);
        list.setColumnWidthMode(1, Q3ListView::Maximum);
        list.setColumnText(1, redIcon(), "Beta");
        QVERIFY(list.showAndWait());
        list.dragHeading(2, 0, -20);
        QCOMPARE(list.headings(), QString("C A Beta"));
        list.setHeaderMenuEnabled(true);
        QVERIFY(list.headerMenuEnabled());
        QCOMPARE(list.columnTexts(), QString("C A Beta"));
        const QList<ColumnItem *> &items = list.columnItems();
        QCOMPARE(items.at(0)->id, 2);
        QCOMPARE(items.at(1)->id, 0);
        QCOMPARE(items.at(2)->id, 1);
        QCOMPARE(items.at(2)->alignment, int(Qt::AlignRight));
        QCOMPARE(items.at(2)->width_mode, Q3ListView::Maximum);
        QCOMPARE(items.at(0)->width, 60);
        QVERIFY(!items.at(2)->icon.isNull());
        QVERIFY(items.at(0)->icon.isNull());
        QVERIFY(list.itemVisible(0) && list.itemVisible(1) && list.itemVisible(2));
        QCOMPARE(list.addColumn("D", 60), 3);
        list.setItemVisible(2, false);
        QCOMPARE(list.headings(), QString("A Beta D"));
        QVERIFY(!list.itemVisible(2));
        QVERIFY(list.itemVisible(0));
        list.setHeaderMenuEnabled(true); // no change
        QCOMPARE(list.columnTexts(), QString("(C) A Beta D"));
    }

    void turningTheMenuOffLeavesWhatShows()
    {
        ListProbe list;
        list.fill(3, 1);
        list.setItemVisible(0, false);
        list.setHeaderMenuEnabled(false);
        QVERIFY(list.columnItems().isEmpty());
        QCOMPARE(list.headings(), QString("B C"));
        QVERIFY(!list.itemVisible(1));
        list.setHeaderMenuEnabled(true);
        QCOMPARE(list.columnTexts(), QString("B C"));
        QCOMPARE(list.columnItemID(0), 0);
    }

    void aListWithoutColumnsHasNoItems()
    {
        ListProbe list(false);
        list.setHeaderMenuEnabled(true);
        QVERIFY(list.columnItems().isEmpty());
        QCOMPARE(list.addColumn("A", 60), 0);
    }
};

TAVI_GUI_TEST_MAIN(TestTaviListViewColumns)
#include "tst_tavilistview_columns.moc"
