// SPDX-License-Identifier: MIT
#include "taviapp/densitylut_cc.h"
#include "tests/support/tavitest.h"

class TestDensityLut : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void byDefaultThereIsNoTable()
    {
        DENSITYLUT_CC table;
        QVERIFY(!table.isSet());
        QVERIFY(!table.lut());
        QVERIFY(!std::as_const(table).lut());
        QVERIFY(!DENSITYLUT_CC(nullptr).isSet());
        const DENSITYLUT_CC copy(table);
        QVERIFY(!copy.isSet());
        QVERIFY(!copy.lut());
    }

    void separationsAreAppended()
    {
        DENSITYLUT_CC table;
        table.appendSeparation(TAVIBANDTYPE_CYAN);
        QVERIFY(table.isSet());
        for (uint32_t band = 1; band < 20; ++band)
            table.appendSeparation(band, "ink " + std::to_string(band));
        const DENSITYLUT *lut = table.lut();
        QVERIFY(lut);
        QCOMPARE(lut->separation_count, 20U);
        QCOMPARE(lut->bands[0].name, "");
        for (uint32_t band = 1; band < 20; ++band) {
            QCOMPARE(lut->bands[band].band_type, band);
            QCOMPARE(QByteArray(lut->bands[band].name), "ink " + QByteArray::number(band));
            QCOMPARE(lut->bands[band].target_count, 0U);
        }
    }

    void aLongNameIsCutAtACharacter_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<int>("length");
        QTest::newRow("63") << QByteArray(63, 'x') << 63;
        QTest::newRow("64") << QByteArray(64, 'x') << 63;
        QTest::newRow("200") << QByteArray(200, 'x') << 63;
        QTest::newRow("two bytes end at 63") << QByteArray(61, 'x') + "\xc3\xbc" + "yy" << 63;
        QTest::newRow("two bytes across 63") << QByteArray(62, 'x') + "\xc3\xbc" + "yy" << 62;
        QTest::newRow("four bytes across 63") << QByteArray(60, 'x') + "\xf0\x9f\x8e\xa8" + "yy" << 60;
        QTest::newRow("nothing but the insides of characters") << QByteArray(100, '\x80') << 0;
    }
    void aLongNameIsCutAtACharacter()
    {
        QFETCH(QByteArray, name);
        QFETCH(int, length);
        DENSITYLUT_CC table;
        table.appendSeparation(TAVIBANDTYPE_SPOT, name.toStdString());
        QCOMPARE(QByteArray(table.lut()->bands[0].name), name.left(length));
    }

    void aRecordIsCopied()
    {
        DENSITYLUTBAND bands[2] = {};
        bands[0].band_type = TAVIBANDTYPE_MAGENTA;
        bands[1].target_count = 8;
        bands[1].target[7] = 1.5;
        const DENSITYLUT lut = {{}, 2, bands};
        DENSITYLUT_CC table(&lut);
        bands[0].band_type = TAVIBANDTYPE_SPOT;
        QVERIFY(table.lut()->bands != bands);
        QCOMPARE(table.lut()->separation_count, 2U);
        QCOMPARE(table.lut()->bands[0].band_type, uint32_t(TAVIBANDTYPE_MAGENTA));
        QCOMPARE(table.lut()->bands[1].target[7], 1.5);
    }

    void aTableWithoutBandsIsATable()
    {
        const DENSITYLUT empty = {};
        const DENSITYLUT_CC table(&empty);
        QVERIFY(table.isSet());
        QCOMPARE(table.lut()->separation_count, 0U);
        QVERIFY(!table.lut()->bands);
        DENSITYLUT_CC copy(table);
        QVERIFY(copy.lut() != table.lut());
        QVERIFY(copy.isSet());

        const DENSITYLUT torn = {{}, 3, nullptr};
        QCOMPARE(DENSITYLUT_CC(&torn).lut()->separation_count, 0U);
    }

    void copiesAreTheirOwn()
    {
        DENSITYLUT_CC table;
        table.appendSeparation(TAVIBANDTYPE_CYAN, "cyan");
        DENSITYLUT_CC copy(table);
        DENSITYLUT_CC assigned;
        assigned.appendSeparation(TAVIBANDTYPE_BLACK, "black");
        assigned.appendSeparation(TAVIBANDTYPE_BLACK, "black");
        assigned = table;
        table.appendSeparation(TAVIBANDTYPE_YELLOW, "yellow");
        table.lut()->bands[0].band_type = TAVIBANDTYPE_SPOT;
        for (const DENSITYLUT_CC *other : {&copy, &assigned}) {
            QCOMPARE(other->lut()->separation_count, 1U);
            QCOMPARE(other->lut()->bands[0].band_type, uint32_t(TAVIBANDTYPE_CYAN));
            QVERIFY(other->lut()->bands != table.lut()->bands);
        }
        QVERIFY(copy.lut()->bands != assigned.lut()->bands);
    }

    void assignmentOfItselfAndOfNothing()
    {
        DENSITYLUT_CC table;
        table.appendSeparation(TAVIBANDTYPE_CYAN, "cyan");
        const DENSITYLUT_CC &same = table;
        table = same;
        QCOMPARE(table.lut()->separation_count, 1U);
        QCOMPARE(table.lut()->bands[0].name, "cyan");
        table = DENSITYLUT_CC();
        QVERIFY(!table.isSet());
        QVERIFY(!table.lut());
    }
};

TAVI_TEST_MAIN(TestDensityLut)
#include "tst_densitylut_cc.moc"
