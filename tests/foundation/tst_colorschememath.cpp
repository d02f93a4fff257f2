// SPDX-License-Identifier: MIT
#include "foundation/colorscheme.h"
#include "foundation/colorschememath_p.h"
#include "tests/foundation/colorschemereference.h"
#include "tests/support/tavitest.h"

#include <cmath>
#include <limits>
#include <random>

using namespace tavi::colorscheme;

namespace {

constexpr int levels[stripe_count] = {255, 239, 231, 239};

/// Pairs of rows that depend on each other, and one of no numbers.
constexpr double singular[3][3] = {{1, 2, 3}, {2, 4, 6}, {1, 0, 1}};
constexpr double nothing[3][3] = {};

Rgb rgb(const std::array<int, 3> &channels)
{
    return {channels[0], channels[1], channels[2]};
}

std::array<int, 3> channels(const Rgb &colour)
{
    return {colour.red, colour.green, colour.blue};
}

/// A colour that is no grey.
std::array<int, 3> randomColour(std::mt19937 &random)
{
    for (;;) {
        const std::array<int, 3> colour = {int(random() & 255), int(random() & 255), int(random() & 255)};
        if (!rgb(colour).isGrey())
            return colour;
    }
}

/// Luminance and chroma of @a base.
void toYiq(const std::array<int, 3> &base, Triple &yiq)
{
    const Triple linear = {toLinear(base[0]), toLinear(base[1]), toLinear(base[2])};
    multiply(ColorScheme::RGBtoYIQ, linear, yiq);
}

} // namespace

/// The colour arithmetic of schemes. Figures in tables were worked out with 60 decimal digits and Gauss elimination;
/// those of random colours are compared with the long double arithmetic of colorschemereference.h.
class TestColorSchemeMath : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void exponentsHaveTheirExactBits()
    {
        QCOMPARE(std::bit_cast<std::uint64_t>(from_linear_exponent), std::uint64_t(0x3fdccccccccccccc));
        QCOMPARE(std::nextafter(from_linear_exponent, 1.0), 0.45);
        QCOMPARE(to_linear_exponent, 20.0 / 9.0);
    }

    void linearLightAndBack()
    {
        QCOMPARE(toLinear(0), 0.0);
        QCOMPARE(toLinear(255), 1.0);
        QVERIFY(std::fabs(toLinear(128) - 0.216183107) < 1e-9);
        QCOMPARE(fromLinear(0.0), 0);
        QCOMPARE(fromLinear(1.0), 255);
        QCOMPARE(fromLinear(1.5), 255);  // capped
        QCOMPARE(fromLinear(-1.5), 255); // after the absolute value
        QCOMPARE(fromLinear(-0.5), fromLinear(0.5));
        QCOMPARE(fromLinear(0.5), 186); // 186.67: truncated, not rounded
        QCOMPARE(fromLinear(1.0 - 1e-15), 254);
    }

    void everyChannelIsTruncatedOnItsWayBack()
    {
        // The exponents are not quite each other's inverse, and what falls short of its number by a trifle loses one.
        for (int channel = 0; channel < 256; ++channel) {
            const int back = fromLinear(toLinear(channel));
            const long double exact =
                255
                * std::pow(std::pow(channel / 255.0L, static_cast<long double>(2.2222222222222223)),
                           static_cast<long double>(0.44999999999999996));
            QVERIFY2(std::fabs(exact - channel) < 1e-12L, qPrintable(QString::number(channel)));
            QVERIFY2(back == channel || back == channel - 1, qPrintable(QString::number(channel)));
        }
    }

    void theMatricesHaveTheirNumbers()
    {
        // By columns: what full red, green and blue are turned into.
        const auto check = [](const Matrix &matrix, const double(&columns)[3][3]) {
            for (int column = 0; column < 3; ++column) {
                Triple unit = {}, out;
                unit[column] = 1.0;
                multiply(matrix, unit, out);
                for (int row = 0; row < 3; ++row)
                    QCOMPARE(out[row], columns[column][row]);
            }
        };
        check(ColorScheme::RGBtoYIQ,
              {{0.2989, 0.5959, 0.2113}, {0.5866, -0.2741, -0.5227}, {0.1144, -0.3218, 0.3113}});
        check(ColorScheme::RGBtoYUV,
              {{0.2989, -0.1473, 0.6149}, {0.5866, -0.2891, -0.5145}, {0.1144, -0.4364, -0.1004}});
        check(ColorScheme::RGBtoHDTV, {{0.2122, -0.1162, 0.5}, {0.7013, -0.3838, -0.4451}, {0.0865, 0.5, -0.0549}});
    }

    void rowsOfTheMatricesDoNotAddUpExactly()
    {
        const Triple white = {1.0, 1.0, 1.0};
        Triple yiq;
        multiply(ColorScheme::RGBtoYIQ, white, yiq);
        QVERIFY(std::fabs(yiq[0] - 0.9999) < 1e-15 && std::fabs(yiq[1]) < 1e-15
                && std::fabs(yiq[2] + 0.0001) < 1e-15);
        multiply(ColorScheme::RGBtoYUV, white, yiq);
        QVERIFY(std::fabs(yiq[0] - 0.9999) < 1e-15 && std::fabs(yiq[1] + 0.8728) < 1e-15
                && std::fabs(yiq[2]) < 1e-15);
        multiply(ColorScheme::RGBtoHDTV, white, yiq);
        QVERIFY(std::fabs(yiq[0] - 1.0) < 1e-15 && std::fabs(yiq[1]) < 1e-15 && std::fabs(yiq[2]) < 1e-15);
    }

    void anInverseUndoesItsMatrix()
    {
        const auto check = [](const Matrix &matrix) {
            Matrix inverse;
            QVERIFY(invert(matrix, inverse));
            for (int column = 0; column < 3; ++column) {
                Triple unit = {}, there, back;
                unit[column] = 1.0;
                multiply(matrix, unit, there);
                multiply(inverse, there, back);
                for (int row = 0; row < 3; ++row)
                    QVERIFY(std::fabs(back[row] - unit[row]) < 1e-14);
            }
        };
        check(ColorScheme::RGBtoYIQ);
        check(ColorScheme::RGBtoYUV);
        check(ColorScheme::RGBtoHDTV);
    }

    void aSingularMatrixHasNoInverse()
    {
        const double infinity = std::numeric_limits<double>::infinity();
        const double not_finite[3][3] = {{infinity, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        Matrix inverse = {{7, 7, 7}, {7, 7, 7}, {7, 7, 7}};
        QVERIFY(!invert(singular, inverse));
        QVERIFY(!invert(nothing, inverse));
        QVERIFY(!invert(not_finite, inverse));
        for (const auto &row : inverse) {
            for (const double value : row)
                QCOMPARE(value, 7.0);
        }
    }

    void whatFitsIsLeftAlone()
    {
        constexpr double identity[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        Triple yiq = {1.0, -3.0, 0.5}, out;
        QCOMPARE(fitIntoGamut(yiq, out, identity), 0); // 1.0 itself fits, and so does what is below 0
        QCOMPARE(out[0], 1.0);
        QCOMPARE(out[1], -3.0);
        QCOMPARE(yiq[1], -3.0);
    }

    void fittingScalesChromaAlone()
    {
        constexpr double identity[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        Triple yiq = {0.5, 1.2, -1.0}, out;
        QCOMPARE(fitIntoGamut(yiq, out, identity), 2); // 1.2 * 0.81 is below 1, 1.2 * 0.9 is not
        QCOMPARE(yiq[0], 0.5);
        QCOMPARE(yiq[1], 1.2 * 0.9 * 0.9);
        QCOMPARE(yiq[2], -1.0 * 0.9 * 0.9);
        QCOMPARE(out[1], yiq[1]);
    }

    void fittingGivesUpAfter101Rounds()
    {
        constexpr double identity[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        Triple yiq = {1.5, 1.0, 1.0}, out; // Y is never touched, so that this never fits
        QCOMPARE(fitIntoGamut(yiq, out, identity), 101);
        QVERIFY(std::fabs(yiq[1] / std::pow(0.9, 101) - 1.0) < 1e-12);
        QCOMPARE(out[0], 1.5);
        QCOMPARE(out[1], yiq[1]);
        // The last of them is reached: what fits after just so many counts as fitted.
        Triple barely = {0.0, 1.0 / std::pow(0.9, 100.5), 0.0};
        QCOMPARE(fitIntoGamut(barely, out, identity), 101);
        QVERIFY(out[1] <= 1.0 && out[1] > 0.9);
    }

    void derivedColours_data()
    {
        QTest::addColumn<QList<int>>("base");
        QTest::addColumn<QList<int>>("half");
        QTest::addColumn<QList<int>>("stripe239");
        QTest::addColumn<QList<int>>("stripe231");
        QTest::addColumn<int>("luminance");
        const auto row = [](const char *name, QList<int> base, QList<int> half, QList<int> s239, QList<int> s231,
                            int y) {
            QTest::newRow(name) << base << half << s239 << s231 << y;
        };
        row("red", {255, 0, 0}, {253, 229, 229}, {254, 244, 244}, {253, 239, 239}, 76);
        row("green", {0, 255, 0}, {211, 253, 211}, {236, 254, 236}, {228, 253, 228}, 150);
        row("blue", {0, 0, 255}, {234, 234, 253}, {246, 246, 254}, {242, 242, 254}, 29);
        row("yellow", {255, 255, 0}, {244, 244, 170}, {254, 254, 180}, {254, 254, 120}, 226);
        row("cyan", {0, 255, 255}, {186, 254, 254}, {229, 254, 254}, {215, 254, 254}, 179);
        row("magenta", {255, 0, 255}, {253, 224, 253}, {254, 242, 254}, {254, 236, 254}, 105);
        row("azure", {0, 160, 255}, {228, 237, 254}, {244, 248, 254}, {238, 244, 254}, 82);
        row("nearly grey", {128, 129, 128}, {236, 237, 236}, {247, 247, 247}, {243, 244, 243}, 56);
        row("nearly black", {1, 0, 0}, {237, 237, 237}, {247, 247, 247}, {243, 243, 243}, 0);
        row("nearly white", {254, 255, 255}, {236, 237, 237}, {246, 247, 247}, {243, 244, 244}, 254);
        row("ochre", {200, 120, 40}, {254, 230, 219}, {254, 245, 240}, {254, 240, 233}, 73);
        row("violet", {90, 30, 120}, {239, 234, 245}, {249, 245, 254}, {247, 240, 254}, 14);
    }

    void derivedColours()
    {
        QFETCH(QList<int>, base);
        QFETCH(QList<int>, half);
        QFETCH(QList<int>, stripe239);
        QFETCH(QList<int>, stripe231);
        QFETCH(int, luminance);
        const auto colour = [](const QList<int> &list) {
            return Rgb{list[0], list[1], list[2]};
        };
        QVERIFY(halfColour(colour(base), ColorScheme::RGBtoYIQ) == colour(half));
        const auto stripes = rasterStripes(colour(base), ColorScheme::RGBtoYIQ);
        QVERIFY(stripes.has_value());
        QVERIFY((*stripes)[0] == (Rgb{255, 254, 255}));
        QVERIFY((*stripes)[1] == colour(stripe239));
        QVERIFY((*stripes)[2] == colour(stripe231));
        QVERIFY((*stripes)[3] == colour(stripe239));
        QCOMPARE(tavi::colorscheme::luminance(colour(base), ColorScheme::RGBtoYIQ), luminance);
    }

    void derivedColoursAreThoseOfTheReference()
    {
        std::mt19937 random(20240601);
        int unclear = 0;
        for (int n = 0; n < 5000; ++n) {
            const std::array<int, 3> base = randomColour(random);
            const QByteArray name = QStringLiteral("%1, %2, %3").arg(base[0]).arg(base[1]).arg(base[2]).toLatin1();
            const auto half = halfColour(rgb(base), ColorScheme::RGBtoYIQ);
            const reference::Colour wanted_half = reference::half(base);
            QVERIFY2(!wanted_half.is_close, name.constData());
            QVERIFY2(half && wanted_half.agreesWith(channels(*half)), name.constData());
            unclear += wanted_half.isClear() ? 0 : 1;

            const auto stripes = rasterStripes(rgb(base), ColorScheme::RGBtoYIQ);
            QVERIFY(stripes.has_value());
            for (size_t i = 0; i < stripe_count; ++i) {
                const reference::Colour wanted = reference::stripe(base, levels[i]);
                QVERIFY2(!wanted.is_close, name.constData());
                QVERIFY2(wanted.agreesWith(channels((*stripes)[i])), name.constData());
                unclear += wanted.isClear() ? 0 : 1;
            }

            const int y = luminance(rgb(base), ColorScheme::RGBtoYIQ);
            QVERIFY2(std::fabs(reference::luminance(base) - y) <= 0.5L + 1e-9L, name.constData());
        }
        // The comparison means something only if next to none could have gone either way.
        QVERIFY2(unclear < 5, qPrintable(QString::number(unclear)));
    }

    void fittingTakesAsManyRoundsAsTheReference()
    {
        Matrix inverse;
        QVERIFY(invert(ColorScheme::RGBtoYIQ, inverse));
        std::mt19937 random(7);
        int most = 0;
        for (int n = 0; n < 5000; ++n) {
            const std::array<int, 3> base = randomColour(random);
            Triple yiq, linear;
            toYiq(base, yiq);
            yiq[0] = 0.85;
            yiq[1] *= 0.5;
            yiq[2] *= 0.5;
            const int rounds = fitIntoGamut(yiq, linear, inverse);
            QCOMPARE(rounds, reference::half(base).rounds);
            QCOMPARE(yiq[0], 0.85);
            most = std::max(most, rounds);
        }
        // Among all colours there are no more than 11: a half colour never gives up.
        QVERIFY2(most >= 9 && most <= 11, qPrintable(QString::number(most)));
    }

    void theFirstStripeOfEveryColourUsesUpAllRounds()
    {
        // Among all colours with the luminance of white, 0.9999, none but white itself has no component above 1: the
        // luminance is a sum with positive weights. A stripe of level 255 takes its chroma from the base, which is
        // never just that of white, -0.0001 in Q; so it never fits and ends as (255, 254, 255).
        const reference::Numbers without_chroma = reference::solve({0.9999L, 0, 0});
        QVERIFY(without_chroma[0] > 1 && without_chroma[1] < 1 && without_chroma[2] > 1);

        Matrix inverse;
        QVERIFY(invert(ColorScheme::RGBtoYIQ, inverse));
        const auto check = [&inverse](const std::array<int, 3> &base) {
            const Triple white = {1.0, 1.0, 1.0};
            Triple yiq, base_yiq, linear;
            multiply(ColorScheme::RGBtoYIQ, white, yiq);
            toYiq(base, base_yiq);
            yiq[1] = base_yiq[1];
            yiq[2] = base_yiq[2];
            QCOMPARE(fitIntoGamut(yiq, linear, inverse), scaling_limit);
            QVERIFY(linear[0] > 1.0 && linear[1] < 1.0 && linear[2] > 1.0);
            QVERIFY((*rasterStripes(rgb(base), ColorScheme::RGBtoYIQ))[0] == (Rgb{255, 254, 255}));
        };
        std::mt19937 random(101);
        for (int n = 0; n < 5000; ++n)
            check(randomColour(random));
        // Those with the smallest chroma there is.
        for (int grey = 0; grey < 255; ++grey) {
            check({grey + 1, grey, grey});
            check({grey, grey + 1, grey});
            check({grey, grey, grey + 1});
            check({grey + 1, grey + 1, grey});
            check({grey + 1, grey, grey + 1});
            check({grey, grey + 1, grey + 1});
        }
    }

    void aGreyHasFixedStripesAndNoHalfColour()
    {
        for (int level = 0; level < 256; ++level) {
            const Rgb grey = {level, level, level};
            QVERIFY(!halfColour(grey, ColorScheme::RGBtoYIQ));
            const auto stripes = rasterStripes(grey, ColorScheme::RGBtoYIQ);
            QVERIFY(stripes == (Stripes{{{255, 255, 255}, {245, 245, 245}, {240, 240, 240}, {245, 245, 245}}}));
            QVERIFY(rasterStripes(grey, singular) == stripes); // the matrix is not asked for
        }
    }

    void withoutAnInverseThereAreNoColours()
    {
        const Rgb red = {255, 0, 0};
        QVERIFY(!halfColour(red, singular));
        QVERIFY(!rasterStripes(red, singular));
        QVERIFY(!halfColour(red, nothing));
        QVERIFY(!rasterStripes(red, nothing));
    }

    void luminanceIsRoundedAndCapped()
    {
        // Of greys the channel on linear light, times 0.9999.
        const std::pair<int, int> wanted[] = {{0, 0},     {1, 0},     {64, 12},   {128, 55},
                                              {186, 126}, {188, 130}, {254, 253}, {255, 255}};
        for (const auto &[level, y] : wanted)
            QCOMPARE(luminance({level, level, level}, ColorScheme::RGBtoYIQ), y);
        constexpr double bright[3][3] = {{1, 1, 1}, {0, 1, 0}, {0, 0, 1}};
        QCOMPARE(luminance({255, 255, 255}, bright), 255);
        constexpr double negative[3][3] = {{-0.5, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        QCOMPARE(luminance({255, 255, 255}, negative), 128); // 127.5 and a half, truncated
    }

    void percentagesAreScaled_data()
    {
        QTest::addColumn<double>("hue");
        QTest::addColumn<double>("saturation");
        QTest::addColumn<double>("value");
        QTest::addColumn<int>("h");
        QTest::addColumn<int>("s");
        QTest::addColumn<int>("v");
        const double infinity = std::numeric_limits<double>::infinity();
        const double nan = std::numeric_limits<double>::quiet_NaN();
        QTest::newRow("top") << 360.0 << 100.0 << 100.0 << 359 << 255 << 255;
        QTest::newRow("bottom") << 0.0 << 0.0 << 0.0 << 0 << 0 << 0;
        QTest::newRow("below") << -1.0 << -1.0 << -1.0 << -1 << 0 << 0;
        QTest::newRow("just below") << -1e-300 << -1e-300 << -1e-300 << -1 << 0 << 0;
        QTest::newRow("negative zero") << -0.0 << -0.0 << -0.0 << 0 << 0 << 0;
        QTest::newRow("above") << 360.1 << 100.1 << 100.1 << 359 << 255 << 255;
        QTest::newRow("a bit above") << 360.9 << 100.9 << 100.9 << 359 << 255 << 255;
        QTest::newRow("far above") << 1e300 << 1e300 << 1e300 << 359 << 255 << 255;
        QTest::newRow("infinite") << infinity << infinity << -infinity << 359 << 255 << 0;
        QTest::newRow("not a number") << nan << nan << nan << -1 << 0 << 0;
        QTest::newRow("halfway") << 180.0 << 50.0 << 50.0 << 180 << 128 << 128;        // 179.5 and 127.5 and a half
        QTest::newRow("third") << 120.0 << 33.0 << 67.0 << 120 << 84 << 171;           // 119.67, 84.15, 170.85
        QTest::newRow("the scale is 359") << 350.0 << 10.0 << 20.0 << 349 << 26 << 51; // 349.03; 26.0; 51
        QTest::newRow("below a step") << 0.5 << 0.19 << 0.2 << 0 << 0 << 1;            // 0.4986; 0.4845; 0.51
    }

    void percentagesAreScaled()
    {
        QFETCH(double, hue);
        QFETCH(double, saturation);
        QFETCH(double, value);
        QFETCH(int, h);
        QFETCH(int, s);
        QFETCH(int, v);
        const Hsv hsv = hsvFromPercent(hue, saturation, value);
        QCOMPARE(hsv.hue, h);
        QCOMPARE(hsv.saturation, s);
        QCOMPARE(hsv.value, v);
    }

    void everyHueAndPercentageIsScaledByWholeNumbers()
    {
        // In integers: 359 h / 360 + 1/2 is (359 h + 180) / 360, and 255 p / 100 + 1/2 is (255 p + 50) / 100.
        for (int h = 0; h <= 360; ++h)
            QCOMPARE(hsvFromPercent(h, 0, 0).hue, (359 * h + 180) / 360);
        for (int p = 0; p <= 100; ++p) {
            QCOMPARE(hsvFromPercent(0, p, 0).saturation, (255 * p + 50) / 100);
            QCOMPARE(hsvFromPercent(0, 0, p).value, (255 * p + 50) / 100);
        }
    }
};

TAVI_TEST_MAIN(TestColorSchemeMath)
#include "tst_colorschememath.moc"
