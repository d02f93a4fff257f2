// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/listviews/listviewfixture.h"
#include "tests/support/tavitest.h"

namespace {

/// All keys of a section with their values.
QStringList entries(TaviRegistry &registry, std::string section)
{
    QStringList texts;
    for (auto at = registry.firstItem(section); !registry.isEndItem(at); at = registry.nextItem())
        texts << QString::fromStdString(registry.key(at) + "=" + registry.value(at));
    return texts;
}

} // namespace

/// The columns of a list in the settings.
class TestTaviListViewState : public TaviTest
{
    Q_OBJECT

private:
    TaviRegistry *registry = nullptr;
    std::string section = "list";

    void put(const char *key, const char *value) { registry->putstring("list", key, value); }

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        registry = new TaviRegistry;
    }
    void cleanup()
    {
        delete registry;
        TaviTest::cleanup();
    }

    void orderVisibilityAndWidthsAreSaved()
    {
        ListProbe list;
        list.fill(3, 2);
        list.addColumnItem("D", -5, false);
        QVERIFY(list.showAndWait());
        list.dragHeading(2, 0, -20);
        list.saveHeaderState(*registry, section);
        QCOMPARE(entries(*registry, section),
                 QStringList({"column_000=1 1 60", "column_001=2 1 60", "column_002=0 1 60", "column_003=3 0 -1"}));
    }

    void columnsFoundInAnotherOrderAreNumberedAsTheyStood()
    {
        ListProbe list(false);
        list.fill(3, 1);
        list.setColumnWidth(2, 99);
        QVERIFY(list.showAndWait());
        list.dragHeading(2, 0, -20); // C A B
        list.setHeaderMenuEnabled(true);
        list.saveHeaderState(*registry, section);
        QCOMPARE(entries(*registry, section),
                 QStringList({"column_000=0 1 99", "column_001=1 1 60", "column_002=2 1 60"}));
    }

    void aListWithoutColumnsKeepsNone()
    {
        put("column_000", "0 1 5");
        ListProbe list;
        list.restoreHeaderState(*registry, section);
        QCOMPARE(list.columns(), 0);
        list.saveHeaderState(*registry, section);
        QCOMPARE(entries(*registry, section), QStringList());
    }

    void savingReplacesTheSection()
    {
        put("column_007", "0 1 5");
        put("other", "gone");
        ListProbe list;
        list.addColumn("A", 70);
        list.saveHeaderState(*registry, section);
        QCOMPARE(entries(*registry, section), QStringList("column_000=0 1 70"));
    }

    void sortingIsSavedByPlace()
    {
        ListProbe list;
        list.fill(3, 2);
        QVERIFY(list.showAndWait());
        list.dragHeading(2, 0, -20);
        list.setSorting(2, false);
        list.saveHeaderState(*registry, section);
        QCOMPARE(registry->getstring("list", "sorting"), std::string("0 1"));
        list.setSorting(0, true);
        list.saveHeaderState(*registry, section);
        QCOMPARE(registry->getstring("list", "sorting"), std::string("1 0"));
        list.setSorting(-1);
        list.saveHeaderState(*registry, section);
        QVERIFY(!registry->exists("list", "sorting"));
    }

    void sortingByNoColumnIsNotSaved()
    {
        ListProbe list;
        list.fill(2, 2);
        list.setSorting(7);
        list.saveHeaderState(*registry, section);
        QVERIFY(!registry->exists("list", "sorting"));
    }

    void withoutHeaderMenuNothingIsWrittenOrRead()
    {
        put("column_000", "1 0 99");
        put("sorting", "1 1");
        const QStringList before = entries(*registry, section);
        ListProbe list(false);
        list.fill(2, 2);
        list.setSorting(0);
        list.saveHeaderState(*registry, section);
        QCOMPARE(entries(*registry, section), before);
        list.restoreHeaderState(*registry, section);
        QCOMPARE(list.headings(), QString("A B"));
        QCOMPARE(list.columnWidth(0), 60);
        QCOMPARE(list.sortColumn(), 0);
        QCOMPARE(list.sortOrder(), Qt::AscendingOrder);
    }

    void anEmptySectionChangesNothing()
    {
        ListProbe list;
        list.fill(2, 1);
        QSignalSpy current(&list, SIGNAL(currentChanged(Q3ListViewItem *)));
        list.restoreHeaderState(*registry, section);
        QCOMPARE(list.columnTexts(), QString("A B"));
        QCOMPARE(current.count(), 0); // not even made anew
    }

    void aStateComesBack()
    {
        {
            ListProbe list;
            list.fill(4, 3);
            list.setItemVisible(1, false);
            list.setColumnWidth(0, 111);
            list.setSorting(1, false);
            QVERIFY(list.showAndWait());
            list.dragHeading(2, 0, -20);
            list.saveHeaderState(*registry, section);
        }
        ListProbe list;
        list.fill(4, 3);
        list.setSorting(0);
        list.restoreHeaderState(*registry, section);
        QCOMPARE(list.headings(), QString("D A C"));
        QCOMPARE(list.columnTexts(), QString("D A (B) C"));
        QCOMPARE(list.columnWidth(1), 111);
        QCOMPARE(list.sortColumn(), 2);
        QCOMPARE(list.sortOrder(), Qt::DescendingOrder);
    }

    void columnsWithoutKeysGoToTheEndAndKeepTheirFlags()
    {
        ListProbe list;
        list.fill(4, 1);
        list.setItemVisible(0, false);
        list.setColumnWidth(0, 99); // B
        put("column_003", "0 1 44");
        list.restoreHeaderState(*registry, section);
        QCOMPARE(list.columnTexts(), QString("D (A) B C"));
        QCOMPARE(list.columnWidth(0), 44);
        QCOMPARE(list.columnWidth(1), 99);
    }

    void aWidthOfMinus1MakesTheColumnAutomatic()
    {
        ListProbe list;
        list.fill(2, 1);
        put("column_000", "0 1 -1");
        put("column_001", "1 1 33");
        list.restoreHeaderState(*registry, section);
        QCOMPARE(list.columnTexts(), QString("A* B"));
        QCOMPARE(list.columnItemAtIndex(0)->width_mode, Q3ListView::Maximum);
        QCOMPARE(list.columnWidthMode(0), Q3ListView::Maximum);
        QCOMPARE(list.columnItemAtIndex(1)->width_mode, Q3ListView::Manual);
        QCOMPARE(list.columnWidthMode(1), Q3ListView::Manual);
        QCOMPARE(list.columnWidth(1), 33);
    }

    void anAutomaticColumnStaysSoOverSavingAndRestoring()
    {
        ListProbe list;
        list.addColumn("A");
        new Q3ListViewItem(&list, "a text that is wider than the heading of its column");
        QVERIFY(list.showAndWait());
        QVERIFY(list.columnWidth(0) > 150);
        list.saveHeaderState(*registry, section);
        QCOMPARE(registry->getstring("list", "column_000"), std::string("0 1 -1"));
        list.restoreHeaderState(*registry, section);
        QTRY_VERIFY(list.columnWidth(0) > 150);
        list.saveHeaderState(*registry, section);
        QCOMPARE(registry->getstring("list", "column_000"), std::string("0 1 -1"));
    }

    void theLaterOfTwoAtOnePositionWins()
    {
        ListProbe list;
        list.fill(3, 1);
        put("column_000", "0 1 10");
        put("column_001", "1 1 20");
        put("column_002", "0 1 30");
        list.restoreHeaderState(*registry, section);
        QCOMPARE(list.columnTexts(), QString("C B A"));
        QCOMPARE(list.columnWidth(2), 10);
    }

    void twoKeysForOneColumnNeverDoubleIt()
    {
        ListProbe list;
        list.fill(3, 1);
        put("column_0", "2 1 10");
        put("column_00", "1 1 20");
        put("column_000", "0 1 30");
        list.restoreHeaderState(*registry, section);
        // Bytewise, "column_0" comes first and "column_000" last.
        QCOMPARE(list.columnTexts(), QString("A B C"));
        QCOMPARE(list.columnWidth(0), 30);
        QCOMPARE(list.columns(), 3);
    }

    void hostileValuesDoNoHarm()
    {
        ListProbe list;
        list.fill(3, 5);
        list.setSorting(0);
        put("column_", "0 0 1");
        put("column_-1", "0 0 1");
        put("column_000", "0 1 2147483647");
        put("column_001", "1 1");
        put("column_002", "2147483647 0 1");
        put("column_00x", "0 0 1");
        put("column_99999999999999999999", "0 0 1");
        put("sorting", "99999999999999 1");
        put("zzz", "");
        list.restoreHeaderState(*registry, section);
        QCOMPARE(list.columnTexts(), QString("A B C"));
        QCOMPARE(list.columnWidth(0), 32767);
        QCOMPARE(list.columnWidth(1), 60);
        QCOMPARE(list.sortColumn(), 0);
        QVERIFY(list.showAndWait());
        QCOMPARE(list.rows(), QString("a0 a1 a2 a3 a4"));
    }

    void sortingByAColumnThatIsNotThereIsPassedOver_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("negative") << QByteArray("-1 1");
        QTest::newRow("as many") << QByteArray("2 1");
        QTest::newRow("huge") << QByteArray("2147483647 1");
        QTest::newRow("word") << QByteArray("first 1");
    }
    void sortingByAColumnThatIsNotThereIsPassedOver()
    {
        QFETCH(QByteArray, value);
        ListProbe list;
        list.fill(2, 1);
        list.setSorting(1);
        put("sorting", value.constData());
        list.restoreHeaderState(*registry, section);
        QCOMPARE(list.sortColumn(), 1);
        QCOMPARE(list.sortOrder(), Qt::AscendingOrder);
    }

    void aViewThatIsNotSortedStaysSo()
    {
        ListProbe list;
        list.fill(2, 1);
        put("sorting", "1 0");
        list.restoreHeaderState(*registry, section);
        QCOMPARE(list.sortColumn(), -1);
        list.setSorting(2); // of a column that is not there
        list.restoreHeaderState(*registry, section);
        QCOMPARE(list.sortColumn(), 2);
    }

    void allColumnsMayBeHiddenAndComeBack()
    {
        ListProbe list;
        list.fill(2, 3);
        put("column_000", "0 0 10");
        put("column_001", "1 0 20");
        list.restoreHeaderState(*registry, section);
        QCOMPARE(list.columns(), 0);
        QVERIFY(list.showAndWait());
        QVERIFY(list.header()->height() > 5); // the menu can be reached
        list.setItemVisible(0, true);
        QCOMPARE(list.headings(), QString("A"));
        QCOMPARE(list.rows(), QString("a0 a1 a2"));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviListViewState)
#include "tst_tavilistview_state.moc"
