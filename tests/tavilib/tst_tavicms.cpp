// SPDX-License-Identifier: MIT
#include "tavilib/tavicms.h"
#include "tests/support/tavitest.h"

#include <array>
#include <atomic>
#include <cmath>
#include <limits>
#include <random>
#include <thread>
#include <vector>

namespace {

struct Triple {
    double x, y, z;
};

/// CIE 15, worked out here anew.
Triple labOf(const Triple &xyz)
{
    const auto f = [](double t) {
        return t > std::pow(24.0 / 116, 3) ? std::cbrt(t) : 841.0 / 108 * t + 16.0 / 116;
    };
    const double x = f(xyz.x / 96.42);
    const double y = f(xyz.y / 100);
    const double z = f(xyz.z / 82.49);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

/// The sRGB channels of a Lab colour before clipping, 0..255: IEC 61966-2-1, with the Bradford matrix from D50.
Triple srgbOf(const Triple &lab)
{
    const auto back = [](double f) {
        return f > 24.0 / 116 ? f * f * f : (f - 16.0 / 116) * 108 / 841;
    };
    const double fy = (lab.x + 16) / 116;
    const double X = 0.9642 * back(fy + lab.y / 500);
    const double Y = back(fy);
    const double Z = 0.8249 * back(fy - lab.z / 200);
    const auto encoded = [](double linear) {
        return 255 * (linear <= 0.0031308 ? 12.92 * linear : 1.055 * std::pow(linear, 1 / 2.4) - 0.055);
    };
    return {encoded(3.1338561 * X - 1.6168667 * Y - 0.4906146 * Z),
            encoded(-0.9787684 * X + 1.9161415 * Y + 0.0334540 * Z),
            encoded(0.0719453 * X - 0.2289914 * Y + 1.4052427 * Z)};
}

std::array<int, 3> channels(uint32_t rgb)
{
    return {int(rgb >> 16 & 0xff), int(rgb >> 8 & 0xff), int(rgb & 0xff)};
}

} // namespace

class TestTaviCms : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void knownXyzValues_data()
    {
        QTest::addColumn<QVector<double>>("xyz");
        QTest::addColumn<QVector<double>>("lab");
        using V = QVector<double>;
        QTest::newRow("white") << V{96.42, 100, 82.49} << V{100, 0, 0};
        QTest::newRow("black") << V{0, 0, 0} << V{0, 0, 0};
        QTest::newRow("18 % grey") << V{96.42 * 0.184187, 18.4187, 82.49 * 0.184187} << V{50, 0, 0};
        QTest::newRow("in the linear part") << V{0.09642, 0.1, 0.08249} << V{0.90330, 0, 0};
    }
    void knownXyzValues()
    {
        QFETCH(QVector<double>, xyz);
        QFETCH(QVector<double>, lab);
        double found[3] = {-1, -1, -1};
        TAVICMSXYZToLab(xyz[0], xyz[1], xyz[2], &found[0], &found[1], &found[2]);
        for (int i = 0; i < 3; ++i)
            QVERIFY2(std::abs(found[i] - lab[i]) < 1e-3, qPrintable(QString::number(found[i], 'g', 12)));
    }

    void xyzFollowsTheFormula()
    {
        std::mt19937 random(21);
        std::uniform_real_distribution<double> value(0, 110);
        for (int i = 0; i < 2000; ++i) {
            // Every other one small, where the formula is linear.
            const double scale = i % 2 == 0 ? 1 : 0.005;
            const Triple xyz = {scale * value(random), scale * value(random), scale * value(random)};
            const Triple expected = labOf(xyz);
            double L = 0, a = 0, b = 0;
            TAVICMSXYZToLab(xyz.x, xyz.y, xyz.z, &L, &a, &b);
            QVERIFY(std::abs(L - expected.x) < 1e-6);
            QVERIFY(std::abs(a - expected.y) < 1e-6);
            QVERIFY(std::abs(b - expected.z) < 1e-6);
        }
    }

    void whiteOfTheGivenIlluminantIsWhite()
    {
        const double whites[][3] = {{0.95047, 1, 1.08883}, {0.9642, 1, 0.8249}, {1.09850, 1, 0.35585}};
        for (const auto &white : whites) {
            for (const double part : {1.0, 0.184187, 0.001}) {
                const double xyz[3] = {part * white[0], part * white[1], part * white[2]};
                double lab[3] = {-1, -1, -1};
                TAVICMS_XYZToLab(xyz, white, lab);
                const double L = part == 1.0 ? 100 : part == 0.001 ? 0.90330 : 50;
                QVERIFY2(std::abs(lab[0] - L) < 1e-3, qPrintable(QString::number(lab[0], 'g', 12)));
                QVERIFY(std::abs(lab[1]) < 1e-9 && std::abs(lab[2]) < 1e-9);
            }
        }
    }

    void normalisedXyzFollowsTheFormulaForAnyWhite()
    {
        std::mt19937 random(23);
        std::uniform_real_distribution<double> value(0, 1.1);
        std::uniform_real_distribution<double> white_value(0.3, 1.2);
        for (int i = 0; i < 2000; ++i) {
            const double scale = i % 2 == 0 ? 1 : 0.005;
            const double white[3] = {white_value(random), white_value(random), white_value(random)};
            double lab[3] = {scale * value(random), scale * value(random), scale * value(random)};
            // The same, told of D50 on the scale of 100.
            const Triple expected =
                labOf({lab[0] / white[0] * 96.42, lab[1] / white[1] * 100, lab[2] / white[2] * 82.49});
            TAVICMS_XYZToLab(lab, white, lab); // in place
            QVERIFY(std::abs(lab[0] - expected.x) < 1e-9);
            QVERIFY(std::abs(lab[1] - expected.y) < 1e-9);
            QVERIFY(std::abs(lab[2] - expected.z) < 1e-9);
        }
    }

    void listIsConvertedAsItsColours_data()
    {
        QTest::addColumn<int>("count");
        for (const int count : {0, 1, 127, 128, 129, 256, 1000})
            QTest::addRow("%d", count) << count;
    }
    void listIsConvertedAsItsColours()
    {
        QFETCH(int, count);
        const auto size = size_t(count);
        std::mt19937 random(24);
        std::uniform_real_distribution<double> lightness(-5, 105);
        std::uniform_real_distribution<double> chroma(-110, 110);
        std::vector<double> lab;
        for (size_t i = 0; i < size; ++i) {
            for (const double value : {lightness(random), chroma(random), chroma(random)})
                lab.push_back(value);
        }
        // What is no colour leaves its neighbours alone.
        for (size_t i = 5; i < size; i += 50)
            lab[i * 3 + i % 3] = i % 2 ? std::numeric_limits<double>::infinity() : std::nan("");
        std::vector<uint32_t> found(size + 1, 7U);
        TAVICMSLabListToDisplay(lab.data(), found.data(), size);
        for (size_t i = 0; i < size; ++i)
            QCOMPARE(found[i], TAVICMSLabToDisplay(lab[i * 3], lab[i * 3 + 1], lab[i * 3 + 2]));
        QCOMPARE(found[size], 7U);
    }

    void knownDisplayColours()
    {
        QCOMPARE(TAVICMSLabToDisplay(100, 0, 0), 0xffffffffU);
        QCOMPARE(TAVICMSLabToDisplay(0, 0, 0), 0xff000000U);
        const auto grey = channels(TAVICMSLabToDisplay(50, 0, 0));
        for (const int channel : grey)
            QVERIFY(std::abs(channel - 119) <= 1);
        // Paper looks like paper: darker than the screen's white.
        QVERIFY(channels(TAVICMSLabToDisplay(95, 0, -2))[0] < 245);
    }

    void displayColoursFollowTheFormula()
    {
        std::mt19937 random(22);
        std::uniform_real_distribution<double> lightness(0, 100);
        std::uniform_real_distribution<double> chroma(-110, 110);
        int inside = 0;
        for (int i = 0; i < 3000; ++i) {
            const Triple lab = {lightness(random), chroma(random), chroma(random)};
            const Triple expected = srgbOf(lab);
            const auto found = channels(TAVICMSLabToDisplay(lab.x, lab.y, lab.z));
            const double wanted[3] = {expected.x, expected.y, expected.z};
            bool in_gamut = true;
            for (int channel = 0; channel < 3; ++channel) {
                const double clipped = std::clamp(wanted[channel], 0.0, 255.0);
                in_gamut = in_gamut && clipped == wanted[channel];
                QVERIFY2(std::abs(found[size_t(channel)] - clipped) <= 1.5,
                         qPrintable(QStringLiteral("%1 %2 %3: channel %4 is %5, not %6")
                                        .arg(lab.x)
                                        .arg(lab.y)
                                        .arg(lab.z)
                                        .arg(channel)
                                        .arg(found[size_t(channel)])
                                        .arg(clipped)));
            }
            inside += in_gamut;
        }
        QVERIFY(inside > 300);
    }

    void displayColoursAreOpaque()
    {
        for (const double L : {-50.0, 0.0, 33.3, 100.0, 150.0})
            QCOMPARE(TAVICMSLabToDisplay(L, 20, -20) >> 24, 0xffU);
    }

    void whatIsNoColourIsBlack()
    {
        const double nan = std::numeric_limits<double>::quiet_NaN();
        const double infinite = std::numeric_limits<double>::infinity();
        for (const double bad : {nan, infinite, -infinite}) {
            QCOMPARE(TAVICMSLabToDisplay(bad, 0, 0), 0xff000000U);
            QCOMPARE(TAVICMSLabToDisplay(50, bad, 0), 0xff000000U);
            QCOMPARE(TAVICMSLabToDisplay(50, 0, bad), 0xff000000U);
        }
    }

    void absurdValuesAreClipped()
    {
        QCOMPARE(TAVICMSLabToDisplay(1e300, 0, 0), 0xffffffffU);
        QCOMPARE(TAVICMSLabToDisplay(-1e300, 0, 0), 0xff000000U);
        QCOMPARE(TAVICMSLabToDisplay(50, 1e300, 0) >> 24, 0xffU);
        QCOMPARE(TAVICMSLabToDisplay(50, 0, -1e300) >> 24, 0xffU);
    }

    void threadsMayConvertAtOnce()
    {
        std::atomic<int> wrong{0};
        std::vector<std::thread> threads;
        threads.reserve(4);
        const uint32_t expected = TAVICMSLabToDisplay(60, 20, -30);
        for (int i = 0; i < 4; ++i) {
            threads.emplace_back([&wrong, expected] {
                for (int round = 0; round < 500; ++round) {
                    TAVICMSLabToDisplay(round % 100, 0, 0);
                    double L = 0, a = 0, b = 0;
                    TAVICMSXYZToLab(96.42, 100, 82.49, &L, &a, &b);
                    wrong += TAVICMSLabToDisplay(60, 20, -30) != expected || std::abs(L - 100) > 1e-6;
                }
            });
        }
        for (std::thread &thread : threads)
            thread.join();
        QCOMPARE(wrong.load(), 0);
    }
};

TAVI_TEST_MAIN(TestTaviCms)
#include "tst_tavicms.moc"
