// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/tavilib/calcheckcharts.h"

#include <cmath>
#include <limits>

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();

struct Tolerance {
    const char *name;
    double (*decode)(const TAVICOMBOCOLOUR *);
    void (*encode)(TAVICOMBOCOLOUR *, double);
};

const Tolerance all[] = {{"E", DECODE_DELTA_E_TOLERANCE, ENCODE_DELTA_E_TOLERANCE},
                         {"H", DECODE_DELTA_H_TOLERANCE, ENCODE_DELTA_H_TOLERANCE},
                         {"C", DECODE_DELTA_C_TOLERANCE, ENCODE_DELTA_C_TOLERANCE}};

} // namespace

/// Tolerances packed into patches.
class TestCalcheckTolerances : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aZeroedPatchBringsNone()
    {
        const TAVICOMBOCOLOUR patch = {};
        for (const Tolerance &tolerance : all) {
            QCOMPARE(tolerance.decode(&patch), infinite);
            QCOMPARE(tolerance.decode(nullptr), infinite);
        }
        QVERIFY(!calcheckHasOwnTolerances(&patch));
        QVERIFY(!calcheckHasOwnTolerances(nullptr));
    }

    void everyThousandthComesBackAsItsNumber()
    {
        for (const Tolerance &tolerance : all) {
            TAVICOMBOCOLOUR patch = {};
            for (int thousandths = 0; thousandths <= 65534; ++thousandths) {
                const double value = thousandths / 1000.0;
                tolerance.encode(&patch, value);
                if (tolerance.decode(&patch) != value)
                    QFAIL(qPrintable(QStringLiteral("%1 %2").arg(tolerance.name).arg(value, 0, 'g', 17)));
            }
        }
    }

    void othersAreLeftAlone()
    {
        for (const Tolerance &changed : all) {
            TAVICOMBOCOLOUR patch = {};
            for (const Tolerance &tolerance : all)
                tolerance.encode(&patch, 65.534);
            for (const double value : {0.0, 1.25, 65.534, -1.0}) {
                changed.encode(&patch, value);
                for (const Tolerance &tolerance : all) {
                    const double expected = tolerance.decode != changed.decode ? 65.534
                                            : value < 0                        ? infinite
                                                                               : value;
                    QCOMPARE(tolerance.decode(&patch), expected);
                }
            }
        }
    }

    void oddValues_data()
    {
        QTest::addColumn<double>("value");
        QTest::addColumn<double>("expected");
        QTest::newRow("rounded down") << 1.23449 << 1.234;
        QTest::newRow("rounded up") << 1.2346 << 1.235;
        QTest::newRow("too large") << 1000.0 << 65.534;
        QTest::newRow("huge") << 1e300 << 65.534;
        QTest::newRow("minus zero") << -0.0 << 0.0;
        QTest::newRow("negative") << -0.5 << infinite;
        QTest::newRow("infinite") << infinite << infinite;
        QTest::newRow("minus infinite") << -infinite << infinite;
        QTest::newRow("no number") << std::nan("") << infinite;
    }
    void oddValues()
    {
        QFETCH(double, value);
        QFETCH(double, expected);
        for (const Tolerance &tolerance : all) {
            TAVICOMBOCOLOUR patch = {};
            tolerance.encode(&patch, 7);
            tolerance.encode(&patch, value);
            QCOMPARE(tolerance.decode(&patch), expected);
        }
    }

    void eachMakesAPatchBringItsOwn()
    {
        for (const Tolerance &tolerance : all) {
            TAVICOMBOCOLOUR patch = {};
            tolerance.encode(&patch, 0);
            QVERIFY2(calcheckHasOwnTolerances(&patch), tolerance.name);
            tolerance.encode(&patch, -1);
            QVERIFY2(!calcheckHasOwnTolerances(&patch), tolerance.name);
        }
    }

    void tolerancesAreCopiedWithThePatch()
    {
        const Patches patch(newPatch(1, 2, 3));
        ENCODE_DELTA_E_TOLERANCE(patch.get(), 3);
        ENCODE_DELTA_H_TOLERANCE(patch.get(), 2.5);
        ENCODE_DELTA_C_TOLERANCE(patch.get(), 1.5);
        const Patches copy(DuplicatePacketItem(TAVIPACKET_COMBOCOLOUR, patch.get()));
        QCOMPARE(DECODE_DELTA_E_TOLERANCE(copy.get()), 3.0);
        QCOMPARE(DECODE_DELTA_H_TOLERANCE(copy.get()), 2.5);
        QCOMPARE(DECODE_DELTA_C_TOLERANCE(copy.get()), 1.5);
    }

    void aSetFillsInWhatItAllowsSinglePatches()
    {
        CheckBuilder check(DELTAE_CIE2000, 3);
        TAVICOMBOCOLOUR *plain = check.add(0);
        TAVICOMBOCOLOUR *paper = check.add(0, COMBOCOLOUR_FLAG_PAPER);
        TAVICOMBOCOLOUR *cyan = check.add(0, COMBOCOLOUR_FLAG_CYAN);
        TAVICOMBOCOLOUR *black = check.add(0, COMBOCOLOUR_FLAG_BLACK);
        TAVICOMBOCOLOUR *grey = check.add(0, COMBOCOLOUR_FLAG_GREY);
        calcheckFillTolerances(check.chart.get(), calcheckCriteriaFor(DELTAE_CIE2000));
        const auto compare = [](const TAVICOMBOCOLOUR *patch, double e, double h, double c) {
            QCOMPARE(DECODE_DELTA_E_TOLERANCE(patch), e);
            QCOMPARE(DECODE_DELTA_H_TOLERANCE(patch), h);
            QCOMPARE(DECODE_DELTA_C_TOLERANCE(patch), c);
            QVERIFY(!calcheckHasOwnTolerances(patch));
        };
        compare(plain, 5, infinite, infinite);
        compare(paper, 3, infinite, infinite);
        compare(cyan, 3, 2.5, infinite);
        compare(black, 3, infinite, infinite);
        compare(grey, 5, infinite, 3.5);
    }

    void theSmallerOfTwoLimitsCounts()
    {
        CheckBuilder check;
        TAVICOMBOCOLOUR *paper = check.add(0, COMBOCOLOUR_FLAG_PAPER);
        Criteria criteria = newCriteria();
        criteria->delta_e.limited = CALCHECK_PAPER | CALCHECK_MAX | CALCHECK_AVERAGE | CALCHECK_DEVIATION;
        criteria->delta_e.paper = 4;
        criteria->delta_e.max = 2;
        criteria->delta_e.average = 1;
        calcheckFillTolerances(check.chart.get(), criteria.get());
        QCOMPARE(DECODE_DELTA_E_TOLERANCE(paper), 2.0);
    }

    void ownTolerancesAreLeftAlone()
    {
        CheckBuilder check;
        TAVICOMBOCOLOUR *own = check.add(0);
        ENCODE_DELTA_C_TOLERANCE(own, 9);
        calcheckFillTolerances(check.chart.get(), calcheckCriteriaFor(DELTAE_CIE76));
        QCOMPARE(DECODE_DELTA_E_TOLERANCE(own), infinite);
        QCOMPARE(DECODE_DELTA_C_TOLERANCE(own), 9.0);
        QVERIFY(calcheckHasOwnTolerances(own));
    }

    void filledInTolerancesAreReplacedAndTakenAway()
    {
        CheckBuilder check;
        TAVICOMBOCOLOUR *cyan = check.add(0, COMBOCOLOUR_FLAG_CYAN);
        calcheckFillTolerances(check.chart.get(), calcheckCriteriaFor(DELTAE_CIE76));
        QCOMPARE(DECODE_DELTA_E_TOLERANCE(cyan), 5.0);
        check.chart->delta_e_type = DELTAE_CIE2000;
        calcheckFillTolerances(check.chart.get(), calcheckCriteriaFor(DELTAE_CIE2000));
        QCOMPARE(DECODE_DELTA_E_TOLERANCE(cyan), 3.0);
        calcheckFillTolerances(check.chart.get(), nullptr);
        QCOMPARE(cyan->tolerances, 0U);
        QCOMPARE(cyan->tolerances_more, 0U);
        calcheckFillTolerances(nullptr, nullptr);
    }

    void aSetForAnotherFormulaFillsInNoDeltaE()
    {
        CheckBuilder check(DELTAE_CIE76);
        TAVICOMBOCOLOUR *cyan = check.add(0, COMBOCOLOUR_FLAG_CYAN);
        calcheckFillTolerances(check.chart.get(), calcheckCriteriaFor(DELTAE_CIE2000));
        QCOMPARE(DECODE_DELTA_E_TOLERANCE(cyan), infinite);
        QCOMPARE(DECODE_DELTA_H_TOLERANCE(cyan), 2.5);
    }

    void anOwnToleranceTakesTheSetsAway()
    {
        CheckBuilder check(DELTAE_CIE2000);
        TAVICOMBOCOLOUR *cyan = check.add(0, COMBOCOLOUR_FLAG_CYAN);
        for (const Tolerance &tolerance : all) {
            calcheckFillTolerances(check.chart.get(), nullptr);
            cyan->tolerances = cyan->tolerances_more = 0;
            calcheckFillTolerances(check.chart.get(), calcheckCriteriaFor(DELTAE_CIE2000));
            tolerance.encode(cyan, 1);
            QVERIFY(calcheckHasOwnTolerances(cyan));
            for (const Tolerance &other : all)
                QCOMPARE(other.decode(cyan), other.decode == tolerance.decode ? 1.0 : infinite);
        }
    }

    /// A chart that was filled in is judged by the set as before, which limits the average, too.
    void theSetStillJudgesAFilledChart()
    {
        CheckBuilder check;
        for (int i = 0; i < 3; ++i)
            check.add(4);
        calcheckFillTolerances(check.chart.get(), calcheckCriteriaFor(DELTAE_CIE76));
        const Result result = check.results();
        QCOMPARE(result->criteria->name, "iso12647-7-2007");
        QVERIFY(!(result->flags & CALCHECKRESULT_BY_CHART));
        QCOMPARE(result->delta_e->passed, 0x1ffU & ~uint32_t(CALCHECK_AVERAGE));
    }
};

TAVI_TEST_MAIN(TestCalcheckTolerances)
#include "tst_calchecktolerances.moc"
