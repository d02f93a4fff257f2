// SPDX-License-Identifier: MIT
#include "tavilib/calcheck.h"

#include "tavilib/tavicms.h"
#include "tests/support/tavitest.h"
#include "tests/tavilib/calcheckcharts.h"

#include <algorithm>
#include <cmath>
#include <numeric>
#include <random>
#include <vector>

namespace {

/// What one delta comes to, worked out from lists of values, one for each figure.
struct Expected {
    std::vector<double> all;
    std::vector<double> marked[6]; // paper, cyan, magenta, yellow, black, grey

    static double average(const std::vector<double> &values)
    {
        return values.empty() ? 0 : std::accumulate(values.begin(), values.end(), 0.0) / double(values.size());
    }
    static double largest(const std::vector<double> &values)
    {
        return values.empty() ? 0 : *std::max_element(values.begin(), values.end());
    }
    double deviation() const
    {
        const double mean = average(all);
        double squares = 0;
        for (const double value : all)
            squares += (value - mean) * (value - mean);
        return std::sqrt(squares / double(all.size()));
    }
};

constexpr uint32_t marks[6] = {COMBOCOLOUR_FLAG_PAPER,  COMBOCOLOUR_FLAG_CYAN,  COMBOCOLOUR_FLAG_MAGENTA,
                               COMBOCOLOUR_FLAG_YELLOW, COMBOCOLOUR_FLAG_BLACK, COMBOCOLOUR_FLAG_GREY};

} // namespace

/// The colour check against a plain calculation, on charts that nobody has thought of.
class TestCalcheckRandom : public TaviTest
{
    Q_OBJECT

private:
    static bool isNear(double found, double expected)
    {
        return std::abs(found - expected) <= 1e-9 * std::max(1.0, std::abs(expected));
    }

    static void compare(const CALCHECKSTATISTICS *found, const Expected &expected)
    {
        const double singles[5] = {found->paper, found->cyan, found->magenta, found->yellow, found->black};
        for (size_t i = 0; i < 5; ++i)
            QVERIFY(isNear(singles[i], Expected::largest(expected.marked[i])));
        QVERIFY(isNear(found->gray, Expected::average(expected.marked[5])));
        QVERIFY(isNear(found->gray_max, Expected::largest(expected.marked[5])));
        QVERIFY(isNear(found->average, Expected::average(expected.all)));
        QVERIFY(isNear(found->max, Expected::largest(expected.all)));
        QVERIFY(isNear(found->deviation, expected.deviation()));
    }

    /// What passes by a set, told anew from the figures that compare() has found right.
    static uint32_t passedBy(const CALCHECKSTATISTICS *s, const CALCHECKLIMITS &l)
    {
        const auto within = [&l](uint32_t bit, double value, double limit) {
            return !(l.limited & bit) || value <= limit;
        };
        uint32_t passed = 0;
        passed |= within(CALCHECK_PAPER, s->paper, l.paper) ? 1U : 0U;
        passed |= within(CALCHECK_CYAN, s->cyan, l.cyan) ? 2U : 0U;
        passed |= within(CALCHECK_MAGENTA, s->magenta, l.magenta) ? 4U : 0U;
        passed |= within(CALCHECK_YELLOW, s->yellow, l.yellow) ? 8U : 0U;
        passed |= within(CALCHECK_BLACK, s->black, l.black) ? 16U : 0U;
        passed |= within(CALCHECK_AVERAGE, s->average, l.average) ? 32U : 0U;
        passed |= within(CALCHECK_MAX, s->max, l.max) ? 64U : 0U;
        passed |= within(CALCHECK_DEVIATION, s->deviation, l.deviation) ? 128U : 0U;
        passed |=
            within(CALCHECK_GRAY, s->gray, l.gray) && within(CALCHECK_GRAY_MAX, s->gray_max, l.gray_max) ? 256U : 0U;
        return passed;
    }

private Q_SLOTS:
    void figuresAreThoseOfAPlainCalculation()
    {
        std::mt19937 random(6107);
        std::uniform_real_distribution<double> lightness(0, 100);
        std::uniform_real_distribution<double> ab(-90, 90);
        std::normal_distribution<double> error(0, 2);
        int passes = 0;
        for (int round = 0; round < 600; ++round) {
            const auto type = static_cast<DELTAE_TYPE>(round % 2 == 0 ? DELTAE_CIE76 : DELTAE_CIE2000);
            CheckBuilder check(type, 3);
            Expected e, h, c;
            const double scale = round % 3 == 0 ? 0.2 : 1;
            const int count = 1 + int(random() % 60);
            for (int i = 0; i < count; ++i) {
                const uint32_t mark = random() % 3 ? marks[random() % 6] : 0;
                const double p[3] = {lightness(random), ab(random), ab(random)};
                const double q[3] = {p[0] + scale * error(random), p[1] + scale * error(random),
                                     p[2] + scale * error(random)};
                check.add(newPatch(p[0], p[1], p[2], mark), newPatch(q[0], q[1], q[2]));
                const double de =
                    type == DELTAE_CIE76 ? TAVICMS_ColourDiff_DeltaE(p, q) : TAVICMS_ColourDiff_CIE2000(p, q);
                const double dh = TAVICMS_ColourDiff_dH(p, q);
                const double dc = std::hypot(p[1], p[2]) - std::hypot(q[1], q[2]);
                const double dch = std::hypot(p[1] - q[1], p[2] - q[2]);
                e.all.push_back(de);
                h.all.push_back(dh);
                c.all.push_back(dc);
                for (size_t m = 0; m < 6; ++m) {
                    if (mark != marks[m])
                        continue;
                    e.marked[m].push_back(de);
                    h.marked[m].push_back(dh);
                    c.marked[m].push_back(m == 5 ? dch : dc);
                }
            }
            const Result result = check.results();
            compare(result->delta_e, e);
            compare(result->delta_h, h);
            compare(result->delta_c, c);
            const CALCHECKCRITERIA *set = calcheckCriteriaFor(type);
            QCOMPARE(result->delta_e->passed, passedBy(result->delta_e, set->delta_e));
            QCOMPARE(result->delta_h->passed, passedBy(result->delta_h, set->delta_h));
            QCOMPARE(result->delta_c->passed, passedBy(result->delta_c, set->delta_c));
            const bool pass = (result->delta_e->passed & result->delta_h->passed & result->delta_c->passed) == 0x1ff;
            QCOMPARE(calcheckPasses(result.get()), pass);
            QCOMPARE(result->score >= 50, pass);
            passes += pass;
        }
        QVERIFY2(passes > 100 && passes < 500, qPrintable(QString::number(passes)));
    }

    /// Moving one patch away from its reference never raises the score.
    void theScoreFallsWithTheError()
    {
        std::mt19937 random(6108);
        std::uniform_real_distribution<double> lightness(20, 80);
        for (int round = 0; round < 100; ++round) {
            CheckBuilder check(DELTAE_CIE76, 3);
            for (int i = 0; i < 10; ++i)
                check.add(newPatch(lightness(random), 10, 5, marks[random() % 6]), newPatch(50, 10, 5));
            double before = check.results()->score;
            const double away = check.measured->L < check.chart->reference->L ? -1 : 1;
            for (int step = 0; step < 20; ++step) {
                check.measured->L += away;
                const double after = check.results()->score;
                QVERIFY(after <= before && after >= 0);
                before = after;
            }
        }
    }
};

TAVI_TEST_MAIN(TestCalcheckRandom)
#include "tst_calcheck_random.moc"
