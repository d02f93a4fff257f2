// SPDX-License-Identifier: MIT
#include "tavilib/tavicms.h"
#include "tests/support/tavitest.h"

#include <array>
#include <cmath>
#include <limits>
#include <random>

namespace {

using Lab = std::array<double, 3>;
using Difference = double (*)(const double[3], const double[3]);

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();
constexpr double infinite = std::numeric_limits<double>::infinity();

double chroma(const Lab &lab)
{
    return std::hypot(lab[1], lab[2]);
}

/// The sine of half the angle between two hues times the chromas: CIE 15's other form of dH.
double hueDifferenceByAngle(const Lab &p, const Lab &q)
{
    const double angle = std::atan2(p[2], p[1]) - std::atan2(q[2], q[1]);
    return std::abs(2 * std::sqrt(chroma(p) * chroma(q)) * std::sin(angle / 2));
}

/// CIE 116-1995 from its definition, with dH as what is left of dE.
double cie94(const Lab &reference, const Lab &measured)
{
    const double dl = reference[0] - measured[0];
    const double da = reference[1] - measured[1];
    const double db = reference[2] - measured[2];
    const double dc = chroma(reference) - chroma(measured);
    const double dh2 = std::max(0.0, da * da + db * db - dc * dc);
    const double sc = 1 + 0.045 * chroma(reference);
    const double sh = 1 + 0.015 * chroma(reference);
    return std::sqrt(dl * dl + dc * dc / (sc * sc) + dh2 / (sh * sh));
}

const struct {
    const char *name;
    Difference difference;
} all[] = {{"dE", TAVICMS_ColourDiff_DeltaE},       {"CIE94", TAVICMS_ColourDiff_CIE94},
           {"CIE2000", TAVICMS_ColourDiff_CIE2000}, {"dH", TAVICMS_ColourDiff_dH},
           {"dC", TAVICMS_ColourDiff_dC},           {"dCh", TAVICMS_ColourDiff_dCh}};

bool isNear(double found, double expected, double most)
{
    return std::abs(found - expected) <= most;
}

} // namespace

/// The colour differences against published figures and against their definitions.
class TestTaviCmsDifferences : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    /// G. Sharma, W. Wu, E. N. Dalal: The CIEDE2000 color-difference formula: implementation notes, supplementary
    /// test data, and mathematical observations. Color Research and Application 30 (2005), table 1.
    void publishedPairsOfCie2000()
    {
        static constexpr double pairs[34][7] = {{50.0000, 2.6772, -79.7751, 50.0000, 0.0000, -82.7485, 2.0425},
                                                {50.0000, 3.1571, -77.2803, 50.0000, 0.0000, -82.7485, 2.8615},
                                                {50.0000, 2.8361, -74.0200, 50.0000, 0.0000, -82.7485, 3.4412},
                                                {50.0000, -1.3802, -84.2814, 50.0000, 0.0000, -82.7485, 1.0000},
                                                {50.0000, -1.1848, -84.8006, 50.0000, 0.0000, -82.7485, 1.0000},
                                                {50.0000, -0.9009, -85.5211, 50.0000, 0.0000, -82.7485, 1.0000},
                                                {50.0000, 0.0000, 0.0000, 50.0000, -1.0000, 2.0000, 2.3669},
                                                {50.0000, -1.0000, 2.0000, 50.0000, 0.0000, 0.0000, 2.3669},
                                                {50.0000, 2.4900, -0.0010, 50.0000, -2.4900, 0.0009, 7.1792},
                                                {50.0000, 2.4900, -0.0010, 50.0000, -2.4900, 0.0010, 7.1792},
                                                {50.0000, 2.4900, -0.0010, 50.0000, -2.4900, 0.0011, 7.2195},
                                                {50.0000, 2.4900, -0.0010, 50.0000, -2.4900, 0.0012, 7.2195},
                                                {50.0000, -0.0010, 2.4900, 50.0000, 0.0009, -2.4900, 4.8045},
                                                {50.0000, -0.0010, 2.4900, 50.0000, 0.0010, -2.4900, 4.8045},
                                                {50.0000, -0.0010, 2.4900, 50.0000, 0.0011, -2.4900, 4.7461},
                                                {50.0000, 2.5000, 0.0000, 50.0000, 0.0000, -2.5000, 4.3065},
                                                {50.0000, 2.5000, 0.0000, 73.0000, 25.0000, -18.0000, 27.1492},
                                                {50.0000, 2.5000, 0.0000, 61.0000, -5.0000, 29.0000, 22.8977},
                                                {50.0000, 2.5000, 0.0000, 56.0000, -27.0000, -3.0000, 31.9030},
                                                {50.0000, 2.5000, 0.0000, 58.0000, 24.0000, 15.0000, 19.4535},
                                                {50.0000, 2.5000, 0.0000, 50.0000, 3.1736, 0.5854, 1.0000},
                                                {50.0000, 2.5000, 0.0000, 50.0000, 3.2972, 0.0000, 1.0000},
                                                {50.0000, 2.5000, 0.0000, 50.0000, 1.8634, 0.5757, 1.0000},
                                                {50.0000, 2.5000, 0.0000, 50.0000, 3.2592, 0.3350, 1.0000},
                                                {60.2574, -34.0099, 36.2677, 60.4626, -34.1751, 39.4387, 1.2644},
                                                {63.0109, -31.0961, -5.8663, 62.8187, -29.7946, -4.0864, 1.2630},
                                                {61.2901, 3.7196, -5.3901, 61.4292, 2.2480, -4.9620, 1.8731},
                                                {35.0831, -44.1164, 3.7933, 35.0232, -40.0716, 1.5901, 1.8645},
                                                {22.7233, 20.0904, -46.6940, 23.0331, 14.9730, -42.5619, 2.0373},
                                                {36.4612, 47.8580, 18.3852, 36.2715, 50.5065, 21.2231, 1.4146},
                                                {90.8027, -2.0831, 1.4410, 91.1528, -1.6435, 0.0447, 1.4441},
                                                {90.9257, -0.5406, -0.9208, 88.6381, -0.8985, -0.7239, 1.5381},
                                                {6.7747, -0.2908, -2.4247, 5.8714, -0.0985, -2.2286, 0.6377},
                                                {2.0776, 0.0795, -1.1350, 0.9033, -0.0636, -0.5514, 0.9082}};
        int number = 0;
        for (const auto &pair : pairs) {
            ++number;
            for (const bool turned : {false, true}) {
                const double found =
                    turned ? TAVICMS_ColourDiff_CIE2000(pair + 3, pair) : TAVICMS_ColourDiff_CIE2000(pair, pair + 3);
                QVERIFY2(isNear(found, pair[6], 0.00005000001),
                         qPrintable(QStringLiteral("pair %1: %2").arg(number).arg(found, 0, 'f', 8)));
            }
        }
    }

    void cie94IsTheOneOfTheGraphicArts()
    {
        const Lab reference = {90, -5, 100};
        const Lab measured = {90, -5, 106};
        QVERIFY(isNear(TAVICMS_ColourDiff_CIE94(reference.data(), measured.data()), 1.0947, 0.00005));
        QVERIFY(
            isNear(TAVICMS_ColourDiff_CIE94(reference.data(), measured.data()), cie94(reference, measured), 1e-12));
    }

    void cie94WeighsByTheReference()
    {
        // 10 of chroma on a grey reference count whole, and on one of chroma 10 less.
        const Lab grey = {50, 0, 0};
        const Lab red = {50, 10, 0};
        QVERIFY(isNear(TAVICMS_ColourDiff_CIE94(grey.data(), red.data()), 10, 1e-12));
        QVERIFY(isNear(TAVICMS_ColourDiff_CIE94(red.data(), grey.data()), 10 / 1.45, 1e-12));
        // A difference in hue alone: K2.
        const Lab yellow = {50, 0, 10};
        QVERIFY(isNear(TAVICMS_ColourDiff_CIE94(red.data(), yellow.data()), std::sqrt(200.0) / 1.15, 1e-12));
        // Lightness is not weighed.
        const Lab dark = {47, 10, 0};
        QVERIFY(isNear(TAVICMS_ColourDiff_CIE94(red.data(), dark.data()), 3, 1e-12));
    }

    void plainDifferenceIsTheDistance()
    {
        const Lab p = {50, 10, -20};
        const Lab q = {48, 13, -26};
        QVERIFY(isNear(TAVICMS_ColourDiff_DeltaE(p.data(), q.data()), 7, 1e-12));
        QVERIFY(isNear(TAVICMS_ColourDiff_DeltaE(q.data(), p.data()), 7, 1e-12));
    }

    void lossOfChromaIsPositiveAndGainNegative()
    {
        const Lab strong = {50, 30, 40};
        const Lab weak = {80, 4.8, -6.4};
        QVERIFY(isNear(TAVICMS_ColourDiff_dC(strong.data(), weak.data()), 42, 1e-12));
        QVERIFY(isNear(TAVICMS_ColourDiff_dC(weak.data(), strong.data()), -42, 1e-12));
    }

    void chromaticnessIsTheDistanceWithoutLightness()
    {
        const Lab p = {20, 1, -1};
        const Lab q = {70, -2, 3};
        QVERIFY(isNear(TAVICMS_ColourDiff_dCh(p.data(), q.data()), 5, 1e-12));
        QVERIFY(isNear(TAVICMS_ColourDiff_dCh(q.data(), p.data()), 5, 1e-12));
    }

    void hueDifferenceOfKnownPairs()
    {
        const auto dh = [](const Lab &p, const Lab &q) {
            return TAVICMS_ColourDiff_dH(p.data(), q.data());
        };
        QVERIFY(isNear(dh({50, 10, 0}, {50, 0, 10}), std::sqrt(200.0), 1e-12)); // a right angle
        QVERIFY(isNear(dh({50, 10, 0}, {50, -10, 0}), 20, 1e-12));              // opposite hues
        QVERIFY(isNear(dh({50, 10, 0}, {50, -40, 0}), 40, 1e-12));
        QVERIFY(isNear(dh({50, 10, 0}, {90, 40, 0}), 0, 0)); // one hue
        QVERIFY(isNear(dh({50, 0, 0}, {50, 40, 7}), 0, 0));  // grey has no hue
        QVERIFY(isNear(dh({50, 0, 0}, {50, 0, 0}), 0, 0));
        // Hues that are a thousandth of a degree apart, where a difference of squares has no digits left.
        const double angle = 1e-3 * M_PI / 180;
        const double expected = 2 * 60 * std::sin(angle / 2);
        QVERIFY(isNear(dh({50, 60, 0}, {50, 60 * std::cos(angle), 60 * std::sin(angle)}), expected, 1e-12));
    }

    void differencesFollowTheirDefinitions()
    {
        std::mt19937 random(77);
        std::uniform_real_distribution<double> lightness(0, 100);
        std::uniform_real_distribution<double> ab(-120, 120);
        for (int i = 0; i < 5000; ++i) {
            const Lab p = {lightness(random), ab(random), ab(random)};
            const Lab q = {lightness(random), ab(random), ab(random)};
            const double de = TAVICMS_ColourDiff_DeltaE(p.data(), q.data());
            const double dh = TAVICMS_ColourDiff_dH(p.data(), q.data());
            const double dc = TAVICMS_ColourDiff_dC(p.data(), q.data());
            const double dl = p[0] - q[0];
            QVERIFY(isNear(dh, hueDifferenceByAngle(p, q), 1e-9));
            QVERIFY(isNear(dh, TAVICMS_ColourDiff_dH(q.data(), p.data()), 1e-9));
            QVERIFY(isNear(de * de, dl * dl + dc * dc + dh * dh, 1e-8));
            QVERIFY(isNear(dc, chroma(p) - chroma(q), 1e-9));
            QVERIFY(isNear(TAVICMS_ColourDiff_CIE94(p.data(), q.data()), cie94(p, q), 1e-9));
            const double dch = TAVICMS_ColourDiff_dCh(p.data(), q.data());
            QVERIFY(isNear(dch * dch, dc * dc + dh * dh, 1e-8));
        }
    }

    void aColourDiffersFromItselfByNothing()
    {
        for (const Lab &lab : {Lab{0, 0, 0}, Lab{100, 0, 0}, Lab{37.5, -81.25, 3.125}, Lab{-5, 1e-9, 1e-9}}) {
            for (const auto &one : all)
                QVERIFY2(one.difference(lab.data(), lab.data()) == 0.0, one.name);
        }
    }

    void whatIsNoNumberIsInfinitelyFar()
    {
        const Lab sound = {50, 20, -10};
        for (const auto &one : all) {
            for (const double bad : {not_a_number, infinite, -infinite}) {
                for (size_t i = 0; i < 3; ++i) {
                    Lab broken = sound;
                    broken[i] = bad;
                    QVERIFY2(one.difference(sound.data(), broken.data()) == infinite, one.name);
                    QVERIFY2(one.difference(broken.data(), sound.data()) == infinite, one.name);
                    QVERIFY2(one.difference(broken.data(), broken.data()) == infinite, one.name);
                }
            }
        }
    }

    void absurdValuesGiveADistance()
    {
        const Lab sound = {50, 20, -10};
        const Lab absurd = {1e200, -1e200, 1e200};
        for (const auto &one : all) {
            for (const double found :
                 {one.difference(sound.data(), absurd.data()), one.difference(absurd.data(), sound.data())})
                QVERIFY2(!std::isnan(found) && std::abs(found) > 1e6, one.name);
        }
    }
};

TAVI_TEST_MAIN(TestTaviCmsDifferences)
#include "tst_tavicms_differences.moc"
