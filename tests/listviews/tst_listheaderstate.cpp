// SPDX-License-Identifier: MIT
#include "listviews/listheaderstate_p.h"
#include "tests/support/tavitest.h"

#include <climits>

namespace {

QString orderText(const ListHeaderState &state)
{
    QStringList texts;
    for (const int column : state.order())
        texts << QString::number(column);
    return texts.join(' ');
}

} // namespace

/// The state of a list's columns as texts.
class TestListHeaderState : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void keysHaveThreeDigitsOrMore()
    {
        QCOMPARE(columnKey("column_", 0), std::string("column_000"));
        QCOMPARE(columnKey("column_", 12), std::string("column_012"));
        QCOMPARE(columnKey("column_", 1234), std::string("column_1234"));
    }

    void valuesAreThreeNumbers()
    {
        QCOMPARE(columnStateText({2, true, 80}), std::string("2 1 80"));
        QCOMPARE(columnStateText({-1, false, -1}), std::string("-1 0 -1"));
        QCOMPARE(columnStateText({0, true, -7}), std::string("0 1 -1"));
        QCOMPARE(sortingText(3, true), std::string("3 0"));
        QCOMPARE(sortingText(3, false), std::string("3 1"));
    }

    void sortingIsRead_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<bool>("valid");
        QTest::addColumn<int>("place");
        QTest::addColumn<bool>("ascending");
        QTest::newRow("ascending") << QByteArray("3 0") << true << 3 << true;
        QTest::newRow("descending") << QByteArray("1 1") << true << 1 << false;
        QTest::newRow("any other order") << QByteArray("1 7") << true << 1 << false;
        QTest::newRow("a negative order") << QByteArray("1 -1") << true << 1 << false;
        QTest::newRow("negative") << QByteArray("-1 0") << true << -1 << true;
        QTest::newRow("empty") << QByteArray() << false << 0 << false;
        QTest::newRow("one number") << QByteArray("3") << false << 0 << false;
        QTest::newRow("no number") << QByteArray("x 0") << false << 0 << false;
        QTest::newRow("beyond int") << QByteArray("99999999999 0") << false << 0 << false;
    }
    void sortingIsRead()
    {
        QFETCH(QByteArray, value);
        QFETCH(bool, valid);
        QFETCH(int, place);
        QFETCH(bool, ascending);
        const auto read = readSorting(value.toStdString());
        QCOMPARE(read.has_value(), valid);
        if (valid) {
            QCOMPARE(read->first, place);
            QCOMPARE(read->second, ascending);
        }
    }

    void aColumnIsRead()
    {
        ListHeaderState state(3);
        state.read("column_", "column_001", "2 0 80");
        QVERIFY(state.column(1));
        QCOMPARE(state.column(1)->position, 2);
        QCOMPARE(state.column(1)->visible, false);
        QCOMPARE(state.column(1)->width, 80);
        QVERIFY(!state.column(0) && !state.column(2));
        QCOMPARE(orderText(state), QString("1 0 2")); // the others come after it
    }

    void anyWhiteSpaceWillDo()
    {
        ListHeaderState state(3);
        state.read("column_", "column_001", " \t2\n0\r\v\f80 and more");
        QVERIFY(state.column(1));
        QCOMPARE(state.column(1)->position, 2);
        QCOMPARE(state.column(1)->width, 80);
    }

    void visibleIsAbove0()
    {
        ListHeaderState state(2);
        state.read("column_", "column_000", "0 5 80");
        state.read("column_", "column_001", "1 -1 80");
        QVERIFY(state.column(0)->visible);
        QVERIFY(!state.column(1)->visible);
    }

    void widthsAreHeldInRange_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::addColumn<int>("width");
        QTest::newRow("automatic") << QByteArray("0 1 -1") << -1;
        QTest::newRow("negative") << QByteArray("0 1 -2147483648") << -1;
        QTest::newRow("none") << QByteArray("0 1 0") << 0;
        QTest::newRow("widest") << QByteArray("0 1 32767") << 32767;
        QTest::newRow("huge") << QByteArray("0 1 2147483647") << 32767;
    }
    void widthsAreHeldInRange()
    {
        QFETCH(QByteArray, value);
        QFETCH(int, width);
        ListHeaderState state(1);
        state.read("column_", "column_000", value.toStdString());
        QVERIFY(state.column(0));
        QCOMPARE(state.column(0)->width, width);
    }

    void whatCannotBeReadIsPassedOver_data()
    {
        QTest::addColumn<QByteArray>("key");
        QTest::addColumn<QByteArray>("value");
        const QByteArray good("2 0 80");
        QTest::newRow("other key") << QByteArray("colour_000") << good;
        QTest::newRow("shorter key") << QByteArray("col") << good;
        QTest::newRow("empty key") << QByteArray() << good;
        QTest::newRow("no number") << QByteArray("column_") << good;
        QTest::newRow("no decimal number") << QByteArray("column_0x1") << good;
        QTest::newRow("a number and more") << QByteArray("column_001b") << good;
        QTest::newRow("a blank") << QByteArray("column_ 01") << good;
        QTest::newRow("negative column") << QByteArray("column_-01") << good;
        QTest::newRow("column of as many") << QByteArray("column_003") << good;
        QTest::newRow("huge column") << QByteArray("column_99999999999999999999") << good;
        QTest::newRow("empty value") << QByteArray("column_001") << QByteArray();
        QTest::newRow("one number") << QByteArray("column_001") << QByteArray("2");
        QTest::newRow("two numbers") << QByteArray("column_001") << QByteArray("2 0");
        QTest::newRow("two numbers and a blank") << QByteArray("column_001") << QByteArray("2 0 ");
        QTest::newRow("words") << QByteArray("column_001") << QByteArray("two no wide");
        QTest::newRow("a word in the middle") << QByteArray("column_001") << QByteArray("2 no 80");
        QTest::newRow("negative position") << QByteArray("column_001") << QByteArray("-1 0 80");
        QTest::newRow("position of as many") << QByteArray("column_001") << QByteArray("3 0 80");
        QTest::newRow("huge position") << QByteArray("column_001") << QByteArray("99999999999 0 80");
        QTest::newRow("width beyond int") << QByteArray("column_001") << QByteArray("2 0 99999999999");
    }
    void whatCannotBeReadIsPassedOver()
    {
        QFETCH(QByteArray, key);
        QFETCH(QByteArray, value);
        ListHeaderState state(3);
        state.read("column_", key.toStdString(), value.toStdString());
        for (int column = 0; column < 3; ++column)
            QVERIFY(!state.column(column));
        QCOMPARE(orderText(state), QString("0 1 2"));
    }

    void theLaterOfTwoAtOnePositionHolds()
    {
        ListHeaderState state(3);
        state.read("column_", "column_000", "1 1 10");
        state.read("column_", "column_001", "0 1 20");
        state.read("column_", "column_002", "1 1 30");
        QCOMPARE(orderText(state), QString("1 2 0"));
        QCOMPARE(state.column(0)->width, 10); // which it keeps
    }

    void theLaterOfTwoForOneColumnHolds()
    {
        ListHeaderState state(3);
        state.read("column_", "column_00", "0 1 10");
        state.read("column_", "column_000", "2 0 20");
        state.read("column_", "column_001", "1 1 30");
        QCOMPARE(orderText(state), QString("1 0 2"));
        QCOMPARE(state.column(0)->width, 20);
        QCOMPARE(state.column(0)->visible, false);
    }

    void aLaterOneThatIsNoneLeavesTheEarlier()
    {
        ListHeaderState state(2);
        state.read("column_", "column_00", "1 1 10");
        state.read("column_", "column_000", "5 0 20");
        QCOMPARE(state.column(0)->width, 10);
        QCOMPARE(orderText(state), QString("0 1"));
    }

    void noColumnsAreNoTrouble()
    {
        ListHeaderState state(0);
        state.read("column_", "column_000", "0 1 10");
        QVERIFY(state.order().empty());
    }
};

TAVI_TEST_MAIN(TestListHeaderState)
#include "tst_listheaderstate.moc"
