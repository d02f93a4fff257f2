// SPDX-License-Identifier: MIT
#include "taviapp/tavicmsicc.h"

#include "tavilib/tavicms.h"
#include "tests/support/tavitest.h"

#include <cmath>
#include <limits>
#include <vector>

/// The colour engine as the widgets use it.
class TestTaviCmsIcc : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    /// x 0.3127, y 0.3290, the chromaticity that standards give for D65.
    void d65HasItsChromaticity()
    {
        const auto [x, y, z] = TaviCmsIcc::D65();
        QCOMPARE(y, 1.0);
        QVERIFY(std::abs(x / (x + y + z) - 0.3127) < 0.00005);
        QVERIFY(std::abs(y / (x + y + z) - 0.3290) < 0.00005);
    }

    void d65IsWhiteToItself()
    {
        const auto white = TaviCmsIcc::D65();
        double lab[3] = {};
        TAVICMS_XYZToLab(white.data(), white.data(), lab);
        QVERIFY(std::abs(lab[0] - 100) < 1e-9 && std::abs(lab[1]) < 1e-9 && std::abs(lab[2]) < 1e-9);
    }

    void colourIsThatOfTheDisplay()
    {
        const TaviCmsIcc cms;
        for (const auto &lab : {std::array{100.0, 0.0, 0.0}, std::array{55.0, -37.0, -50.0},
                                std::array{48.0, 74.0, -3.0}, std::array{-20.0, 0.0, 0.0}}) {
            int red = -1, green = -1, blue = -1;
            cms.labD502rgb(lab[0], lab[1], lab[2], &red, &green, &blue);
            const uint32_t argb = TAVICMSLabToDisplay(lab[0], lab[1], lab[2]);
            QCOMPARE(red, int(argb >> 16 & 0xff));
            QCOMPARE(green, int(argb >> 8 & 0xff));
            QCOMPARE(blue, int(argb & 0xff));
        }
    }

    /// sRGB's own primaries and white, from IEC 61966-2-1 by way of the ICC profile connection space.
    void knownColours_data()
    {
        QTest::addColumn<QVector<double>>("lab");
        QTest::addColumn<QVector<int>>("rgb");
        QTest::newRow("white") << QVector<double>{100, 0, 0} << QVector<int>{255, 255, 255};
        QTest::newRow("black") << QVector<double>{0, 0, 0} << QVector<int>{0, 0, 0};
        QTest::newRow("red") << QVector<double>{54.29, 80.81, 69.89} << QVector<int>{255, 0, 0};
        QTest::newRow("green") << QVector<double>{87.82, -79.29, 80.99} << QVector<int>{0, 255, 0};
        QTest::newRow("blue") << QVector<double>{29.57, 68.30, -112.03} << QVector<int>{0, 0, 255};
        QTest::newRow("no number") << QVector<double>{50, std::nan(""), 0} << QVector<int>{0, 0, 0};
    }
    void knownColours()
    {
        QFETCH(QVector<double>, lab);
        QFETCH(QVector<int>, rgb);
        int found[3] = {-1, -1, -1};
        TaviCmsIcc().labD502rgb(lab[0], lab[1], lab[2], found, found + 1, found + 2);
        for (int i = 0; i < 3; ++i)
            QVERIFY2(std::abs(found[i] - rgb[i]) <= 2, qPrintable(QString::number(found[i])));
    }

    void listIsConvertedAsItsColours()
    {
        const TaviCmsIcc cms;
        for (const size_t count : {size_t(0), size_t(1), size_t(255), size_t(256), size_t(257), size_t(600)}) {
            std::vector<double> lab(count * 3);
            for (size_t i = 0; i < lab.size(); ++i)
                lab[i] = double(i * 7919 % 1009) / 10.09 - (i % 3 ? 50 : 0);
            std::vector<int> found(count * 3 + 1, -7);
            cms.labD502rgb(lab.data(), found.data(), count);
            for (size_t i = 0; i < count; ++i) {
                int one[3] = {};
                cms.labD502rgb(lab[i * 3], lab[i * 3 + 1], lab[i * 3 + 2], one, one + 1, one + 2);
                for (size_t j = 0; j < 3; ++j)
                    QCOMPARE(found[i * 3 + j], one[j]);
            }
            QCOMPARE(found.back(), -7);
        }
    }
};

TAVI_TEST_MAIN(TestTaviCmsIcc)
#include "tst_tavicmsicc.moc"
