// SPDX-License-Identifier: MIT
#include "tavilib/calcheck.h"

#include "tavilib/tavicms.h"
#include "tests/support/allocfailure.h"
#include "tests/support/tavitest.h"
#include "tests/tavilib/calcheckcharts.h"

#include <cmath>
#include <limits>

namespace {

constexpr double infinite = std::numeric_limits<double>::infinity();
constexpr uint32_t all_passed = 0x1ff;

bool isNear(double found, double expected)
{
    return std::abs(found - expected) < 1e-9;
}

} // namespace

/// The rules of the colour check, one by one, with differences that can be told by heart.
class TestCalcheck : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void withoutPatchesThereAreNoResults()
    {
        CheckBuilder check;
        QVERIFY(!check.results());
        check.add(0);
        QVERIFY(check.results());
        QVERIFY(!calcheckResults(nullptr, check.measured.get()));
        QVERIFY(!calcheckResults(check.chart.get(), nullptr));
        TaviPacketFreeList(&check.chart->reference, TAVIPACKET_COMBOCOLOUR);
        QVERIFY(!check.results());
    }

    void eachFigureIsThatOfItsPatches()
    {
        CheckBuilder check;
        check.add(1, COMBOCOLOUR_FLAG_PAPER);
        check.add(2, COMBOCOLOUR_FLAG_CYAN);
        check.add(3, COMBOCOLOUR_FLAG_MAGENTA);
        check.add(4, COMBOCOLOUR_FLAG_YELLOW);
        check.add(5, COMBOCOLOUR_FLAG_BLACK);
        check.add(-1, COMBOCOLOUR_FLAG_GREY);
        check.add(4, COMBOCOLOUR_FLAG_GREY);
        check.add(12);
        const Result result = check.results();
        const CALCHECKSTATISTICS &e = *result->delta_e;
        QVERIFY(isNear(e.paper, 1));
        QVERIFY(isNear(e.cyan, 2));
        QVERIFY(isNear(e.magenta, 3));
        QVERIFY(isNear(e.yellow, 4));
        QVERIFY(isNear(e.black, 5));
        QVERIFY(isNear(e.gray, 2.5));
        QVERIFY(isNear(e.gray_max, 4));
        QVERIFY(isNear(e.average, 4));
        QVERIFY(isNear(e.max, 12));
        // 1 2 3 4 5 1 4 12: squares 216, mean square 27, less 16.
        QVERIFY(isNear(e.deviation, std::sqrt(11.0)));
        QCOMPARE(e.present, 0x3ffU);
        QCOMPARE(result->patch_count, 8U);
    }

    void ofSeveralPatchesWithOneMarkTheWorstCounts()
    {
        CheckBuilder check;
        for (const double difference : {2.0, 5.0, 3.0})
            check.add(difference, COMBOCOLOUR_FLAG_PAPER);
        for (const double difference : {7.0, 1.0})
            check.add(difference, COMBOCOLOUR_FLAG_BLACK);
        const Result result = check.results();
        QVERIFY(isNear(result->delta_e->paper, 5));
        QVERIFY(isNear(result->delta_e->black, 7));
    }

    void aPatchMayHaveSeveralMarks()
    {
        CheckBuilder check;
        check.add(2, COMBOCOLOUR_FLAG_CYAN | COMBOCOLOUR_FLAG_GREY);
        const Result result = check.results();
        QVERIFY(isNear(result->delta_e->cyan, 2));
        QVERIFY(isNear(result->delta_e->gray, 2));
    }

    void aFigureWithoutPatchesIsZeroAndPasses()
    {
        CheckBuilder check;
        check.add(0.5);
        const Result result = check.results();
        const CALCHECKSTATISTICS &e = *result->delta_e;
        for (const double figure : {e.paper, e.cyan, e.magenta, e.yellow, e.black, e.gray, e.gray_max})
            QCOMPARE(figure, 0.0);
        QCOMPARE(e.present, uint32_t(CALCHECK_AVERAGE | CALCHECK_MAX | CALCHECK_DEVIATION));
        QCOMPARE(e.passed, all_passed);
        QCOMPARE(e.limited, uint32_t(CALCHECK_AVERAGE | CALCHECK_MAX));
        QVERIFY(calcheckPasses(result.get()));
        QVERIFY(result->flags & CALCHECKRESULT_SET_IN_PART);
    }

    void theMarkOfTheMeasurementIsNotLookedAt()
    {
        CheckBuilder check;
        check.add(newPatch(50, 0, 0), newPatch(51, 0, 0, COMBOCOLOUR_FLAG_PAPER));
        QCOMPARE(check.results()->delta_e->paper, 0.0);
    }

    void equalDifferencesHaveNoDeviation()
    {
        CheckBuilder check;
        for (int i = 0; i < 1000; ++i)
            check.add(newPatch(50, 0, 0), newPatch(50.1, 0, 0));
        QCOMPARE(check.results()->delta_e->deviation, 0.0);
    }

    void theFormulaIsTheCharts_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<int>("formula");
        QTest::newRow("plain") << 0 << 0;
        QTest::newRow("CIE94") << 1 << 1;
        QTest::newRow("CIE2000") << 2 << 2;
        QTest::newRow("any other is CIE2000") << 77 << 2;
    }
    void theFormulaIsTheCharts()
    {
        QFETCH(int, type);
        QFETCH(int, formula);
        const double p[3] = {60, 40, -20};
        const double q[3] = {58, 47, -11};
        const double expected[3] = {TAVICMS_ColourDiff_DeltaE(p, q), TAVICMS_ColourDiff_CIE94(p, q),
                                    TAVICMS_ColourDiff_CIE2000(p, q)};
        CheckBuilder check(static_cast<DELTAE_TYPE>(type));
        check.add(newPatch(60, 40, -20), newPatch(58, 47, -11));
        QCOMPARE(check.results()->delta_e->max, expected[formula]);
    }

    /// CIE94 weighs by the reference, so the order of the arguments shows.
    void theReferenceIsTheStandard()
    {
        CheckBuilder check(DELTAE_CIE94);
        check.add(newPatch(50, 0, 0), newPatch(50, 10, 0));
        QVERIFY(isNear(check.results()->delta_e->max, 10));
    }

    void theMaskSaysWhichDeltasThereAre_data()
    {
        QTest::addColumn<uint>("mask");
        QTest::addColumn<bool>("h");
        QTest::addColumn<bool>("c");
        QTest::newRow("none") << 0U << false << false;
        QTest::newRow("H") << 1U << true << false;
        QTest::newRow("C") << 2U << false << true;
        QTest::newRow("both") << 3U << true << true;
        QTest::newRow("other bits") << 0xfffffffcU << false << false;
    }
    void theMaskSaysWhichDeltasThereAre()
    {
        QFETCH(uint, mask);
        QFETCH(bool, h);
        QFETCH(bool, c);
        CheckBuilder check(DELTAE_CIE2000, mask);
        check.add(newPatch(60, 3, 4), newPatch(60, -4, 3));
        const Result result = check.results();
        QVERIFY(result->delta_e);
        QCOMPARE(result->delta_h != nullptr, h);
        QCOMPARE(result->delta_c != nullptr, c);
        if (h)
            QVERIFY(isNear(result->delta_h->max, std::sqrt(50.0)));
        if (c)
            QVERIFY(isNear(result->delta_c->max, 0));
    }

    void chromaIsComparedWithItsSign()
    {
        CheckBuilder check(DELTAE_CIE76, CALCHECK_MASK_DELTA_C);
        check.add(newPatch(50, 20, 0, COMBOCOLOUR_FLAG_CYAN), newPatch(50, 23, 0));
        check.add(newPatch(50, 20, 0, COMBOCOLOUR_FLAG_CYAN), newPatch(50, 24, 0));
        check.add(newPatch(50, 20, 0, COMBOCOLOUR_FLAG_YELLOW), newPatch(50, 19, 0));
        const Result result = check.results();
        QVERIFY(isNear(result->delta_c->cyan, -3));
        QVERIFY(isNear(result->delta_c->yellow, 1));
        QVERIFY(isNear(result->delta_c->average, -2));
        QVERIFY(isNear(result->delta_c->max, 1));
        QVERIFY(isNear(result->delta_c->deviation, std::sqrt((1.0 + 4 + 9) / 3)));
    }

    void aGainOfChromaNeverFailsByItself()
    {
        CheckBuilder check(DELTAE_CIE76, CALCHECK_MASK_DELTA_C);
        Criteria criteria = newCriteria();
        criteria->delta_c.limited = CALCHECK_CYAN | CALCHECK_MAX | CALCHECK_AVERAGE;
        CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get());
        check.add(newPatch(50, 20, 0, COMBOCOLOUR_FLAG_CYAN), newPatch(50, 60, 0));
        const Result gain = check.results();
        QVERIFY(calcheckDeltaPasses(gain->delta_c));
        QCOMPARE(gain->score, 100.0);
        check.measured->a = 19;
        const Result loss = check.results();
        QVERIFY(!calcheckDeltaPasses(loss->delta_c));
        QCOMPARE(loss->score, 0.0);
    }

    void greysCountInDeltaCWithTheirChromaticness()
    {
        CheckBuilder check(DELTAE_CIE76, CALCHECK_MASK_DELTA_H | CALCHECK_MASK_DELTA_C);
        check.add(newPatch(50, 3, 0, COMBOCOLOUR_FLAG_GREY), newPatch(52, 0, 4));
        check.add(newPatch(50, 1, 0, COMBOCOLOUR_FLAG_GREY), newPatch(50, 2, 0));
        const Result result = check.results();
        QVERIFY(isNear(result->delta_c->gray, 3));
        QVERIFY(isNear(result->delta_c->gray_max, 5));
        QVERIFY(isNear(result->delta_c->max, -1)); // signed where it is about all patches
        QVERIFY(isNear(result->delta_h->gray, std::sqrt(24.0) / 2));
        QVERIFY(isNear(result->delta_e->gray, (std::sqrt(29.0) + 1) / 2));
    }

    void aFigureAtItsLimitPasses_data()
    {
        QTest::addColumn<uint>("bit");
        QTest::addColumn<uint>("passed_bit");
        QTest::addColumn<uint>("mark");
        const auto row = [](const char *name, uint bit, uint mark) {
            QTest::newRow(name) << bit << (bit == CALCHECK_GRAY_MAX ? uint(CALCHECK_GRAY) : bit) << mark;
        };
        row("paper", CALCHECK_PAPER, COMBOCOLOUR_FLAG_PAPER);
        row("cyan", CALCHECK_CYAN, COMBOCOLOUR_FLAG_CYAN);
        row("magenta", CALCHECK_MAGENTA, COMBOCOLOUR_FLAG_MAGENTA);
        row("yellow", CALCHECK_YELLOW, COMBOCOLOUR_FLAG_YELLOW);
        row("black", CALCHECK_BLACK, COMBOCOLOUR_FLAG_BLACK);
        row("average", CALCHECK_AVERAGE, 0);
        row("max", CALCHECK_MAX, 0);
        row("gray", CALCHECK_GRAY, COMBOCOLOUR_FLAG_GREY);
        row("gray_max", CALCHECK_GRAY_MAX, COMBOCOLOUR_FLAG_GREY);
    }
    void aFigureAtItsLimitPasses()
    {
        QFETCH(uint, bit);
        QFETCH(uint, passed_bit);
        QFETCH(uint, mark);
        CheckBuilder check;
        check.add(2, mark);
        Criteria criteria = newCriteria();
        CALCHECKLIMITS &limits = criteria->delta_e;
        limits.limited = bit;
        // All others would fail, were they looked at.
        double *const limit = bit == CALCHECK_PAPER     ? &limits.paper
                              : bit == CALCHECK_CYAN    ? &limits.cyan
                              : bit == CALCHECK_MAGENTA ? &limits.magenta
                              : bit == CALCHECK_YELLOW  ? &limits.yellow
                              : bit == CALCHECK_BLACK   ? &limits.black
                              : bit == CALCHECK_AVERAGE ? &limits.average
                              : bit == CALCHECK_MAX     ? &limits.max
                              : bit == CALCHECK_GRAY    ? &limits.gray
                                                        : &limits.gray_max;
        *limit = 2;
        QVERIFY(CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get()));
        const Result at = check.results();
        QCOMPARE(at->delta_e->passed, all_passed);
        QCOMPARE(at->delta_e->limited, bit);
        QCOMPARE(at->score, 50.0);
        QVERIFY(calcheckPasses(at.get()));
        QVERIFY(!(at->flags & CALCHECKRESULT_SET_IN_PART));

        *limit = 1.999;
        QVERIFY(CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get()));
        const Result above = check.results();
        QCOMPARE(above->delta_e->passed, all_passed & ~passed_bit);
        QVERIFY(above->score < 50.0);
        QVERIFY(!calcheckDeltaPasses(above->delta_e));
        QVERIFY(!calcheckPasses(above.get()));
    }

    void theDeviationMayBeLimited()
    {
        CheckBuilder check;
        check.add(1);
        check.add(3);
        Criteria criteria = newCriteria();
        criteria->delta_e.limited = CALCHECK_DEVIATION;
        criteria->delta_e.deviation = 1;
        CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get());
        QVERIFY(calcheckPasses(check.results().get()));
        criteria->delta_e.deviation = 0.999;
        CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get());
        QCOMPARE(check.results()->delta_e->passed, all_passed & ~uint32_t(CALCHECK_DEVIATION));
    }

    void everyDeltaMustPass_data()
    {
        QTest::addColumn<double>("L");
        QTest::addColumn<double>("a");
        QTest::addColumn<double>("b");
        QTest::addColumn<QString>("fails");
        QTest::newRow("none") << 50.5 << 20.0 << 0.0 << "";
        QTest::newRow("E") << 60.0 << 20.0 << 0.0 << "E";
        QTest::newRow("H") << 50.0 << 20 * std::cos(0.2) << 20 * std::sin(0.2) << "H";
        QTest::newRow("C") << 50.0 << 17.0 << 0.0 << "C";
    }
    void everyDeltaMustPass()
    {
        QFETCH(double, L);
        QFETCH(double, a);
        QFETCH(double, b);
        QFETCH(QString, fails);
        Criteria criteria = newCriteria();
        criteria->delta_e.limited = criteria->delta_h.limited = criteria->delta_c.limited = CALCHECK_MAX;
        criteria->delta_e.max = 5;
        criteria->delta_h.max = 3;
        criteria->delta_c.max = 2;
        CheckBuilder check;
        CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get());
        check.add(newPatch(50, 20, 0), newPatch(L, a, b));
        const Result result = check.results();
        QCOMPARE(calcheckDeltaPasses(result->delta_e), fails != "E");
        QCOMPARE(calcheckDeltaPasses(result->delta_h), fails != "H");
        QCOMPARE(calcheckDeltaPasses(result->delta_c), fails != "C");
        QCOMPARE(calcheckPasses(result.get()), fails.isEmpty());
        QCOMPARE(result->score >= 50, fails.isEmpty());
    }

    void theScoreHalvesWithEachLimitUsedUp_data()
    {
        QTest::addColumn<double>("difference");
        QTest::addColumn<double>("score");
        QTest::newRow("none") << 0.0 << 100.0;
        QTest::newRow("half") << 2.0 << 100 / std::sqrt(2.0);
        QTest::newRow("at the limit") << 4.0 << 50.0;
        QTest::newRow("twice") << 8.0 << 25.0;
        QTest::newRow("ten times") << 40.0 << 100.0 / 1024;
    }
    void theScoreHalvesWithEachLimitUsedUp()
    {
        QFETCH(double, difference);
        QFETCH(double, score);
        Criteria criteria = newCriteria();
        criteria->delta_e.limited = CALCHECK_MAX | CALCHECK_PAPER;
        criteria->delta_e.max = 4;
        criteria->delta_e.paper = 60;
        CheckBuilder check;
        CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get());
        check.add(difference, COMBOCOLOUR_FLAG_PAPER);
        QVERIFY(isNear(check.results()->score, score));
    }

    void theWorstFigureOfAllDeltasMakesTheScore()
    {
        Criteria criteria = newCriteria();
        criteria->delta_e.limited = criteria->delta_h.limited = criteria->delta_c.limited = CALCHECK_MAX;
        criteria->delta_e.max = 10;
        CheckBuilder check;
        check.add(newPatch(50, 20, 0), newPatch(50, 18, 0));
        for (const double limit : {1.0, 4.0, 20.0}) {
            criteria->delta_h.max = 1;
            criteria->delta_c.max = limit;
            CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get());
            QVERIFY(isNear(check.results()->score, 100 * std::exp2(-std::max(2 / limit, 0.2))));
        }
    }

    void aLimitOfZeroIsMetByEquality()
    {
        Criteria criteria = newCriteria();
        criteria->delta_e.limited = CALCHECK_MAX;
        criteria->delta_e.max = 0;
        CheckBuilder check;
        CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get());
        check.add(0);
        const Result equal = check.results();
        QVERIFY(calcheckPasses(equal.get()));
        QCOMPARE(equal->score, 100.0);
        check.measured->L += 1e-9;
        const Result other = check.results();
        QVERIFY(!calcheckPasses(other.get()));
        QCOMPARE(other->score, 0.0);
    }

    void theChartsFormulaChoosesTheSet_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << 0 << "iso12647-7-2007";
        QTest::newRow("CIE94") << 1 << "";
        QTest::newRow("CIE2000") << 2 << "iso12647-7-2016";
        QTest::newRow("other") << 9 << "iso12647-7-2016";
    }
    void theChartsFormulaChoosesTheSet()
    {
        QFETCH(int, type);
        QFETCH(QString, name);
        CheckBuilder check(static_cast<DELTAE_TYPE>(type), 3);
        check.add(0, COMBOCOLOUR_FLAG_PAPER);
        const Result result = check.results();
        QCOMPARE(result->criteria ? QString(result->criteria->name) : QString(), name);
        QCOMPARE(calcheckPasses(result.get()), !name.isEmpty());
        QCOMPARE(bool(result->flags & CALCHECKRESULT_NOT_JUDGED), name.isEmpty());
        QVERIFY(!(result->flags & CALCHECKRESULT_BY_CHART));
    }

    void withoutLimitsNothingPasses()
    {
        CheckBuilder check(DELTAE_CIE94, 3);
        check.add(0);
        const Result result = check.results();
        QCOMPARE(result->delta_e->passed, 0U);
        QCOMPARE(result->score, 0.0);
        QVERIFY(!calcheckDeltaPasses(result->delta_e));
        QVERIFY(!calcheckPasses(result.get()));
    }

    void aSetForAnotherFormulaDoesNotJudgeDeltaE()
    {
        Criteria criteria = newCriteria("for2000", DELTAE_CIE2000);
        criteria->delta_e.limited = criteria->delta_h.limited = CALCHECK_MAX;
        criteria->delta_e.max = criteria->delta_h.max = 50;
        CheckBuilder check;
        check.add(0);
        CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get());
        QCOMPARE(check.chart->delta_e_type, DELTAE_CIE2000);
        QVERIFY(calcheckPasses(check.results().get()));
        check.chart->delta_e_type = DELTAE_CIE76;
        const Result result = check.results();
        QVERIFY(result->flags & CALCHECKRESULT_NOT_JUDGED);
        QCOMPARE(result->delta_e->limited, 0U);
        QVERIFY(!calcheckPasses(result.get()));
    }

    void limitsThatWereNotJudgedAreToldOf()
    {
        CheckBuilder check(DELTAE_CIE2000, 3);
        for (const uint32_t mark : {COMBOCOLOUR_FLAG_PAPER, COMBOCOLOUR_FLAG_CYAN, COMBOCOLOUR_FLAG_MAGENTA,
                                    COMBOCOLOUR_FLAG_YELLOW, COMBOCOLOUR_FLAG_BLACK, COMBOCOLOUR_FLAG_GREY})
            check.add(0, mark);
        QVERIFY(!(check.results()->flags & CALCHECKRESULT_SET_IN_PART));
        for (const uint32_t mask : {0U, 1U, 2U}) {
            check.chart->check_mask = mask;
            QVERIFY(check.results()->flags & CALCHECKRESULT_SET_IN_PART);
            QVERIFY(calcheckPasses(check.results().get()));
        }
        check.chart->check_mask = 3;
        check.chart->reference->flags &= ~uint32_t(COMBOCOLOUR_FLAG_PAPER);
        QVERIFY(check.results()->flags & CALCHECKRESULT_SET_IN_PART);
    }

    /// ISO 12647-7 as public sources quote it.
    void shippedSetsJudgeAsTheirStandards_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<uint>("mark");
        QTest::addColumn<double>("most"); // of lightness alone
        QTest::newRow("2016 paper") << 2 << uint(COMBOCOLOUR_FLAG_PAPER) << 3.0;
        QTest::newRow("2016 black") << 2 << uint(COMBOCOLOUR_FLAG_BLACK) << 3.0;
        QTest::newRow("2007 paper") << 0 << uint(COMBOCOLOUR_FLAG_PAPER) << 3.0;
        QTest::newRow("2007 cyan") << 0 << uint(COMBOCOLOUR_FLAG_CYAN) << 5.0;
        QTest::newRow("2007 black") << 0 << uint(COMBOCOLOUR_FLAG_BLACK) << 5.0;
        QTest::newRow("2007 any") << 0 << 0U << 6.0;
    }
    void shippedSetsJudgeAsTheirStandards()
    {
        QFETCH(int, type);
        QFETCH(uint, mark);
        QFETCH(double, most);
        // At L 50 a small step of lightness is about one of CIEDE2000, too: SL is 1 there.
        for (const double factor : {0.99, 1.01}) {
            CheckBuilder check(static_cast<DELTAE_TYPE>(type));
            check.add(newPatch(50 + most * factor / 2, 0, 0, mark), newPatch(50 - most * factor / 2, 0, 0));
            for (int i = 0; i < 20; ++i)
                check.add(0); // so that the average stays low
            QCOMPARE(calcheckPasses(check.results().get()), factor < 1);
        }
    }

    void tolerancesOfPatchesJudgeInsteadOfASet()
    {
        CheckBuilder check;
        TAVICOMBOCOLOUR *paper = check.add(10, COMBOCOLOUR_FLAG_PAPER);
        TAVICOMBOCOLOUR *other = check.add(20);
        ENCODE_DELTA_E_TOLERANCE(paper, 10);
        ENCODE_DELTA_E_TOLERANCE(other, 40);
        const Result result = check.results();
        QVERIFY(result->flags & CALCHECKRESULT_BY_CHART);
        QVERIFY(!result->criteria);
        QVERIFY(calcheckPasses(result.get()));
        QCOMPARE(result->score, 50.0);
        QCOMPARE(result->delta_e->limited, uint32_t(CALCHECK_PAPER | CALCHECK_MAX));

        ENCODE_DELTA_E_TOLERANCE(paper, 9.999);
        const Result failed = check.results();
        QCOMPARE(failed->delta_e->passed, all_passed & ~uint32_t(CALCHECK_PAPER | CALCHECK_MAX));
        QVERIFY(!calcheckPasses(failed.get()));
        QVERIFY(failed->score < 50);

        ENCODE_DELTA_E_TOLERANCE(paper, 10);
        ENCODE_DELTA_E_TOLERANCE(other, 19);
        QCOMPARE(check.results()->delta_e->passed, all_passed & ~uint32_t(CALCHECK_MAX));
    }

    void aPatchWithoutAToleranceIsNotJudgedByOthers()
    {
        CheckBuilder check;
        ENCODE_DELTA_E_TOLERANCE(check.add(1), 2);
        check.add(50);
        QVERIFY(calcheckPasses(check.results().get()));
    }

    void tolerancesOfEachDeltaJudgeThatDelta()
    {
        CheckBuilder check(DELTAE_CIE76, 3);
        TAVICOMBOCOLOUR *patch = check.add(newPatch(50, 20, 0, COMBOCOLOUR_FLAG_GREY), newPatch(50, 0, 18));
        ENCODE_DELTA_E_TOLERANCE(patch, 60);
        ENCODE_DELTA_H_TOLERANCE(patch, 60);
        ENCODE_DELTA_C_TOLERANCE(patch, 60);
        QVERIFY(calcheckPasses(check.results().get()));
        ENCODE_DELTA_C_TOLERANCE(patch, 1.5); // by its signed dC, which is 2
        Result result = check.results();
        QVERIFY(calcheckDeltaPasses(result->delta_h) && !calcheckDeltaPasses(result->delta_c));
        QCOMPARE(result->delta_c->passed, all_passed & ~uint32_t(CALCHECK_GRAY | CALCHECK_MAX));
        ENCODE_DELTA_C_TOLERANCE(patch, 2);
        ENCODE_DELTA_H_TOLERANCE(patch, 0);
        result = check.results();
        QVERIFY(!calcheckDeltaPasses(result->delta_h) && calcheckDeltaPasses(result->delta_c));
        check.chart->check_mask = CALCHECK_MASK_DELTA_C;
        QVERIFY(calcheckPasses(check.results().get()));
    }

    void aToleranceOfZeroIsMetByEquality()
    {
        CheckBuilder check;
        ENCODE_DELTA_E_TOLERANCE(check.add(0), 0);
        QVERIFY(calcheckPasses(check.results().get()));
        check.measured->b = 0.001;
        QVERIFY(!calcheckPasses(check.results().get()));
        QCOMPARE(check.results()->score, 0.0);
    }

    void theChartsSetGoesBeforeTolerancesOfPatches()
    {
        CheckBuilder check;
        ENCODE_DELTA_E_TOLERANCE(check.add(5), 1);
        Criteria criteria = newCriteria("wide");
        criteria->delta_e.limited = CALCHECK_MAX;
        criteria->delta_e.max = 6;
        CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get());
        const Result result = check.results();
        QVERIFY(calcheckPasses(result.get()));
        QCOMPARE(result->criteria->name, "wide");
        QVERIFY(!(result->flags & CALCHECKRESULT_BY_CHART));
        CALCHECKCHART_CC::setCriteria(check.chart.get(), nullptr);
        QVERIFY(!calcheckPasses(check.results().get()));
    }

    void countsThatDifferNeverPass()
    {
        CheckBuilder check;
        check.add(0);
        check.add(0);
        QVERIFY(calcheckPasses(check.results().get()));
        AddList(&check.chart->reference, newPatch(1, 2, 3));
        Result result = check.results();
        QVERIFY(result->flags & CALCHECKRESULT_COUNTS_DIFFER);
        QCOMPARE(result->patch_count, 2U);
        QVERIFY(calcheckDeltaPasses(result->delta_e));
        QVERIFY(!calcheckPasses(result.get()));
        TAVICOMBOCOLOUR *measured = check.measured.get();
        AddList(&measured, newPatch(1, 2, 3));
        QVERIFY(calcheckPasses(check.results().get()));
        AddList(&measured, newPatch(1, 2, 3));
        result = check.results();
        QVERIFY(result->flags & CALCHECKRESULT_COUNTS_DIFFER);
        QCOMPARE(result->patch_count, 3U);
        QVERIFY(!calcheckPasses(result.get()));
    }

    void whatIsNoColourNeverPasses_data()
    {
        QTest::addColumn<double>("bad");
        QTest::addColumn<bool>("first");
        for (const bool first : {false, true}) {
            const char *place = first ? "first" : "second";
            QTest::addRow("nan %s", place) << std::nan("") << first;
            QTest::addRow("infinity %s", place) << infinite << first;
            QTest::addRow("minus infinity %s", place) << -infinite << first;
            QTest::addRow("no mark %s", place) << 0.0 << first;
        }
    }
    void whatIsNoColourNeverPasses()
    {
        QFETCH(double, bad);
        QFETCH(bool, first);
        for (int place = 0; place < 4; ++place) {
            CheckBuilder check(DELTAE_CIE2000, 3);
            check.add(0, COMBOCOLOUR_FLAG_GREY);
            check.add(0, COMBOCOLOUR_FLAG_PAPER);
            TAVICOMBOCOLOUR *patch = place == 3 ? check.chart->reference : check.measured.get();
            if (!first)
                patch = NextInList(patch);
            if (bad == 0.0)
                patch->flags &= ~uint32_t(COMBOCOLOUR_FLAG_LAB);
            else
                (place == 1 ? patch->a : place == 2 ? patch->b : patch->L) = bad;
            const Result result = check.results();
            QVERIFY(result->flags & CALCHECKRESULT_NO_COLOUR);
            for (const CALCHECKSTATISTICS *delta : {result->delta_e, result->delta_h, result->delta_c}) {
                QCOMPARE(delta->max, infinite);
                QCOMPARE(delta->average, infinite);
                QCOMPARE(delta->deviation, infinite);
                QCOMPARE(first ? delta->gray : delta->paper, infinite);
                QCOMPARE(first ? delta->paper : delta->gray, 0.0);
            }
            QVERIFY(!calcheckDeltaPasses(result->delta_e));
            QVERIFY(!calcheckPasses(result.get()));
            QCOMPARE(result->score, 0.0);
        }
    }

    /// Where no limit is about it, the missing colour alone must keep the check from passing.
    void aMissingColourFailsWithoutALimitToo()
    {
        CheckBuilder check;
        check.add(0, COMBOCOLOUR_FLAG_PAPER);
        check.add(0);
        NextInList(check.measured.get())->L = std::nan("");
        Criteria criteria = newCriteria();
        criteria->delta_e.limited = CALCHECK_PAPER;
        CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get());
        const Result result = check.results();
        QVERIFY(calcheckDeltaPasses(result->delta_e));
        QVERIFY(!calcheckPasses(result.get()));
    }

    void absurdValuesGiveFigures()
    {
        CheckBuilder check(DELTAE_CIE76, 3);
        for (const double value : {1e160, -1e160, 1e308, 0.0})
            check.add(newPatch(50, 0, 0, COMBOCOLOUR_FLAG_GREY), newPatch(50, value, value));
        const Result result = check.results();
        for (const CALCHECKSTATISTICS *delta : {result->delta_e, result->delta_h, result->delta_c}) {
            for (const double figure : {delta->average, delta->max, delta->deviation, delta->gray, delta->gray_max})
                QVERIFY(!std::isnan(figure));
        }
        QVERIFY(!calcheckPasses(result.get()));
        QVERIFY(!std::isnan(result->score));
    }

    void deviationOfValuesTooFarApartIsInfinite()
    {
        CheckBuilder check;
        check.add(newPatch(0, 0, 0), newPatch(0, 0, 0));
        check.add(newPatch(0, 0, 0), newPatch(1e154, 0, 0));
        check.add(newPatch(0, 0, 0), newPatch(1.2e154, 0, 0));
        check.add(newPatch(0, 0, 0), newPatch(1.2e154, 0, 0));
        const Result result = check.results();
        QVERIFY(std::isfinite(result->delta_e->average));
        QCOMPARE(result->delta_e->deviation, infinite);
    }

    void nullDoesNotPass()
    {
        QVERIFY(!calcheckPasses(nullptr));
        QVERIFY(!calcheckDeltaPasses(nullptr));
        CALCHECKRESULT empty = {};
        QVERIFY(!calcheckPasses(&empty));
    }

    void aSingleMissingBitFails()
    {
        for (uint32_t bit = 1; bit <= 0x100; bit <<= 1) {
            CALCHECKSTATISTICS statistics = {};
            statistics.passed = all_passed & ~bit;
            QVERIFY(!calcheckDeltaPasses(&statistics));
        }
        CALCHECKSTATISTICS statistics = {};
        statistics.passed = all_passed;
        QVERIFY(calcheckDeltaPasses(&statistics));
        statistics.passed = 0xffffffffU;
        QVERIFY(calcheckDeltaPasses(&statistics));
    }

    void aNewChartIsEmptyAndJudgedByTheNewerStandard()
    {
        const Chart chart(CALCHECKCHART_CC::newChart());
        QVERIFY(!chart->name);
        QVERIFY(!chart->reference);
        QVERIFY(!chart->criteria);
        QVERIFY(!chart->header.next);
        QCOMPARE(chart->delta_e_type, DELTAE_CIE2000);
        QCOMPARE(chart->check_mask, uint32_t(CALCHECK_MASK_DELTA_H | CALCHECK_MASK_DELTA_C));
    }

    void aSetBringsItsFormulaAndItsDeltas()
    {
        const Chart chart(CALCHECKCHART_CC::newChart());
        chart->check_mask = 0;
        Criteria criteria = newCriteria("one", DELTAE_CIE94);
        criteria->delta_e.limited = CALCHECK_MAX;
        QVERIFY(CALCHECKCHART_CC::setCriteria(chart.get(), criteria.get()));
        QCOMPARE(chart->delta_e_type, DELTAE_CIE94);
        QCOMPARE(chart->check_mask, 0U);
        QVERIFY(chart->criteria != criteria.get());
        QCOMPARE(chart->criteria->name, "one");
        criteria->delta_h.limited = CALCHECK_CYAN;
        CALCHECKCHART_CC::setCriteria(chart.get(), criteria.get());
        QCOMPARE(chart->check_mask, uint32_t(CALCHECK_MASK_DELTA_H));
        criteria->delta_h.limited = 0;
        criteria->delta_c.limited = CALCHECK_CYAN;
        CALCHECKCHART_CC::setCriteria(chart.get(), criteria.get());
        QCOMPARE(chart->check_mask, uint32_t(CALCHECK_MASK_DELTA_H | CALCHECK_MASK_DELTA_C));
        QVERIFY(CALCHECKCHART_CC::setCriteria(chart.get(), nullptr));
        QVERIFY(!chart->criteria);
        QCOMPARE(chart->delta_e_type, DELTAE_CIE94);
        QVERIFY(!CALCHECKCHART_CC::setCriteria(nullptr, criteria.get()));
    }

    void withoutMemoryThereAreNoResults()
    {
        CheckBuilder check(DELTAE_CIE2000, 3);
        check.add(0);
        QVERIFY(check.results()); // reads the sets
        int needed = 0;
        {
            AllocFailure counter(0);
            QVERIFY(check.results());
            needed = counter.count();
        }
        QCOMPARE(needed, 8); // the record, three statistics, the set and its three texts
        for (int number = 1; number <= needed; ++number) {
            expectLog("calcheck: calcheckResults");
            AllocFailure failure(number);
            QVERIFY(!check.results());
        }
        {
            expectLog("calcheck: CALCHECKCHART_CC::newChart");
            AllocFailure failure(1);
            QVERIFY(!CALCHECKCHART_CC::newChart());
        }
        Criteria criteria = newCriteria("kept");
        QVERIFY(CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get()));
        AllocFailure failure(2);
        QVERIFY(!CALCHECKCHART_CC::setCriteria(check.chart.get(), criteria.get()));
        QCOMPARE(check.chart->criteria->name, "kept");
    }
};

TAVI_TEST_MAIN(TestCalcheck)
#include "tst_calcheck.moc"
