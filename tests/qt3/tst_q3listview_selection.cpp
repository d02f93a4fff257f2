// SPDX-License-Identifier: MIT
#include "tests/qt3/listfixture.h"
#include "tests/support/tavitest.h"

class TestQ3ListViewSelection : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void defaults()
    {
        ListFixture list;
        QCOMPARE(list.selectionMode(), Q3ListView::Single);
        QVERIFY(!list.isMultiSelection());
        QCOMPARE(list.currentItem(), nullptr);
        QCOMPARE(list.selectedItem(), nullptr);
        list.setMultiSelection(true);
        QCOMPARE(list.selectionMode(), Q3ListView::Multi);
        list.setSelectionMode(Q3ListView::Extended);
        list.setMultiSelection(true);
        QCOMPARE(list.selectionMode(), Q3ListView::Extended);
        list.setMultiSelection(false);
        QCOMPARE(list.selectionMode(), Q3ListView::Single);
    }

    void singleKeepsOne()
    {
        ListFixture list;
        QSignalSpy changed(&list, SIGNAL(selectionChanged()));
        QSignalSpy item(&list, SIGNAL(selectionChanged(Q3ListViewItem *)));
        QSignalSpy current(&list, SIGNAL(currentChanged(Q3ListViewItem *)));
        list.setSelected(list.at(2), true);
        QCOMPARE(list.currentItem(), list.at(2));
        QCOMPARE(list.selectedItem(), list.at(2));
        list.setSelected(list.at(4), true);
        QCOMPARE(list.selection(), QStringLiteral("4"));
        QCOMPARE(changed.count(), 2);
        QCOMPARE(item.last().at(0).value<Q3ListViewItem *>(), list.at(4));
        QCOMPARE(current.count(), 2);
        list.setSelected(list.at(4), true);
        QCOMPARE(changed.count(), 2);
        list.setSelected(list.at(4), false);
        QCOMPARE(item.last().at(0).value<Q3ListViewItem *>(), nullptr);
        QCOMPARE(list.selectedItem(), nullptr);
    }

    void theItemsOwnSetterTellsNobody()
    {
        ListFixture list;
        QSignalSpy changed(&list, SIGNAL(selectionChanged()));
        list.at(3)->setSelected(true);
        QCOMPARE(changed.count(), 0);
        QVERIFY(list.isSelected(list.at(3)));
        QCOMPARE(list.selectedItem(), list.at(3));
        list.clearSelection();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(list.selection(), QString());
        list.clearSelection();
        QCOMPARE(changed.count(), 1);
    }

    void selectedItemIsOfSingleOnly()
    {
        ListFixture list(5, Q3ListView::Multi);
        list.setSelected(list.at(1), true);
        QCOMPARE(list.selectedItem(), nullptr);
        QCOMPARE(list.currentItem(), nullptr);
    }

    void selectAllAndInvert()
    {
        ListFixture list(5, Q3ListView::Extended);
        QSignalSpy changed(&list, SIGNAL(selectionChanged()));
        list.at(2)->setSelectable(false);
        list.at(3)->setEnabled(false);
        list.selectAll(true);
        QCOMPARE(list.selection(), QStringLiteral("0 1 4"));
        QCOMPARE(changed.count(), 1);
        list.setSelected(list.at(0), false);
        list.invertSelection();
        QCOMPARE(list.selection(), QStringLiteral("0"));
        list.selectAll(false);
        QCOMPARE(list.selection(), QString());
        list.setSelectionMode(Q3ListView::Single);
        list.invertSelection();
        QCOMPARE(list.selection(), QString());
        list.selectAll(true);
        QCOMPARE(list.selection(), QString());
        list.setCurrentItem(list.at(1));
        list.selectAll(true);
        QCOMPARE(list.selection(), QStringLiteral("1"));
        list.selectAll(false);
        QCOMPARE(list.selection(), QString());
    }

    void clearingTellsOnlyOfWhatWas()
    {
        ListFixture list;
        QSignalSpy changed(&list, SIGNAL(selectionChanged()));
        QSignalSpy current(&list, SIGNAL(currentChanged(Q3ListViewItem *)));
        list.clear();
        QCOMPARE(changed.count(), 0);
        QCOMPARE(current.count(), 0);
        auto *item = new Q3ListViewItem(&list, QStringLiteral("row"));
        list.setSelected(item, true);
        changed.clear();
        current.clear();
        list.clear();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(current.count(), 1);
    }

    void takingASelectedItem()
    {
        ListFixture list;
        list.setSelected(list.at(2), true);
        QSignalSpy changed(&list, SIGNAL(selectionChanged()));
        QSignalSpy current(&list, SIGNAL(currentChanged(Q3ListViewItem *)));
        list.takeItem(list.at(2));
        QVERIFY(!list.at(2)->isSelected());
        QCOMPARE(changed.count(), 1);
        QCOMPARE(current.count(), 1);
        QCOMPARE(list.currentItem(), list.at(3));
        delete list.at(2);

        list.setSelectionMode(Q3ListView::Extended);
        list.setSelected(list.at(4), true);
        list.takeItem(list.at(4));
        QVERIFY(list.at(4)->isSelected());
        delete list.at(4);
    }

    void aNeighbourBecomesCurrent()
    {
        ListFixture list(3);
        auto *child = new Q3ListViewItem(list.at(2));
        list.setOpen(list.at(2), true);
        list.setCurrentItem(child);
        delete list.at(2);
        QCOMPARE(list.currentItem(), list.at(1));
        delete list.at(0);
        QCOMPARE(list.currentItem(), list.at(1));
        delete list.at(1);
        QCOMPARE(list.currentItem(), nullptr);
    }

    void clearTellsOfWhatIsLost()
    {
        ListFixture list(3);
        list.setSelected(list.at(1), true);
        QSignalSpy changed(&list, SIGNAL(selectionChanged()));
        QSignalSpy current(&list, SIGNAL(currentChanged(Q3ListViewItem *)));
        list.clear();
        QCOMPARE(changed.count(), 1);
        QCOMPARE(current.count(), 1);
        QCOMPARE(current.at(0).at(0).value<Q3ListViewItem *>(), nullptr);
        list.clear();
        QCOMPARE(current.count(), 1);
    }

    void closingMovesTheCurrentItemOut()
    {
        ListFixture list(2);
        auto *child = new Q3ListViewItem(list.at(0));
        list.at(0)->setOpen(true);
        list.setCurrentItem(child);
        list.at(0)->setOpen(false);
        QCOMPARE(list.currentItem(), list.at(0));
    }

    void foreignItemsAreIgnored()
    {
        ListFixture list(2);
        ListFixture other(2);
        list.setSelected(other.at(0), true);
        list.setCurrentItem(other.at(0));
        list.setSelected(nullptr, true);
        QVERIFY(!other.at(0)->isSelected());
        QCOMPARE(list.currentItem(), nullptr);
    }
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewSelection)

#include "tst_q3listview_selection.moc"
