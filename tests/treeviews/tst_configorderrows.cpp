// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "treeviews/configorderrows_p.h"

Q_DECLARE_METATYPE(QVector<int>)

using Rows = QVector<int>;

/// Where selected rows go.
class TestConfigOrderRows : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void up_data()
    {
        QTest::addColumn<Rows>("rows");
        QTest::addColumn<Rows>("places");
        QTest::newRow("none") << Rows{} << Rows{};
        QTest::newRow("one") << Rows{3} << Rows{2};
        QTest::newRow("a block") << Rows{2, 3} << Rows{1, 2};
        QTest::newRow("the top row stays") << Rows{0} << Rows{0};
        QTest::newRow("a block at the top stays") << Rows{0, 1, 2} << Rows{0, 1, 2};
        QTest::newRow("a block comes to the top") << Rows{1, 2} << Rows{0, 1};
        QTest::newRow("others close up") << Rows{0, 2, 4} << Rows{0, 1, 3};
        QTest::newRow("blocked by one that stays") << Rows{0, 1, 3} << Rows{0, 1, 2};
    }

    void up()
    {
        QFETCH(Rows, rows);
        QFETCH(Rows, places);
        QCOMPARE(rowsMovedUp(rows), places);
    }

    void down_data()
    {
        QTest::addColumn<Rows>("rows");
        QTest::addColumn<Rows>("places");
        QTest::newRow("none") << Rows{} << Rows{};
        QTest::newRow("one") << Rows{1} << Rows{2};
        QTest::newRow("a block") << Rows{1, 2} << Rows{2, 3};
        QTest::newRow("the last row stays") << Rows{4} << Rows{4};
        QTest::newRow("a block at the end stays") << Rows{2, 3, 4} << Rows{2, 3, 4};
        QTest::newRow("a block comes to the end") << Rows{2, 3} << Rows{3, 4};
        QTest::newRow("others close up") << Rows{0, 2, 4} << Rows{1, 3, 4};
        QTest::newRow("blocked by one that stays") << Rows{1, 3, 4} << Rows{2, 3, 4};
    }

    void down()
    {
        QFETCH(Rows, rows);
        QFETCH(Rows, places);
        QCOMPARE(rowsMovedDown(rows, 5), places);
    }

    void afterTaking_data()
    {
        QTest::addColumn<Rows>("rows");
        QTest::addColumn<int>("dropped");
        QTest::addColumn<int>("target");
        QTest::newRow("rows above count") << Rows{0, 1} << 3 << 1;
        QTest::newRow("rows below do not") << Rows{3, 4} << 1 << 1;
        QTest::newRow("at the rows themselves") << Rows{1, 2} << 1 << 1;
        QTest::newRow("at the end") << Rows{0} << 5 << 4;
        QTest::newRow("on both sides") << Rows{0, 4} << 2 << 1;
        QTest::newRow("against the running number") << Rows{1, 2} << 3 << 2;
    }

    void afterTaking()
    {
        QFETCH(Rows, rows);
        QFETCH(int, dropped);
        QFETCH(int, target);
        QCOMPARE(rowAfterTaking(rows, dropped), target);
    }
};

TAVI_TEST_MAIN(TestConfigOrderRows)
#include "tst_configorderrows.moc"
