// SPDX-License-Identifier: MIT
#include "tests/support/contrast.h"
#include "tests/support/tavitest.h"

class TestContrast : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void contrastOfTwoColours_data()
    {
        QTest::addColumn<QColor>("a");
        QTest::addColumn<QColor>("b");
        QTest::addColumn<double>("wanted");
        QTest::newRow("black and white") << QColor(Qt::black) << QColor(Qt::white) << 21.0;
        QTest::newRow("none") << QColor(10, 200, 30) << QColor(10, 200, 30) << 1.0;
        // Ratios that are widely quoted, to two decimals.
        QTest::newRow("the lightest grey for text on white") << QColor(0x76, 0x76, 0x76) << QColor(Qt::white) << 4.54;
        QTest::newRow("red on white") << QColor(Qt::red) << QColor(Qt::white) << 4.00;
        QTest::newRow("green on white") << QColor(Qt::green) << QColor(Qt::white) << 1.37;
        QTest::newRow("blue on white") << QColor(Qt::blue) << QColor(Qt::white) << 8.59;
    }

    void contrastOfTwoColours()
    {
        QFETCH(QColor, a);
        QFETCH(QColor, b);
        QFETCH(double, wanted);
        QVERIFY2(std::fabs(contrast(a, b) - wanted) <= 0.005, qPrintable(QString::number(contrast(a, b))));
        QCOMPARE(contrast(b, a), contrast(a, b));
    }
};

TAVI_TEST_MAIN(TestContrast)
#include "tst_contrast.moc"
