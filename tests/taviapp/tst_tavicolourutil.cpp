// SPDX-License-Identifier: MIT
#include "taviapp/tavicolourutil.h"

#include "tests/support/tavitest.h"

#include <QColor>

/// Display colours of records.
class TestTaviColourUtil : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void encodesAsQtDoes()
    {
        for (const QColor &colour : {QColor(0, 0, 0), QColor(255, 255, 255), QColor(1, 2, 3), QColor(200, 100, 50)})
            QCOMPARE(TaviColourUtil::encodeRGB(colour.red(), colour.green(), colour.blue()), colour.rgba());
    }

    void clipsWhatIsOutside()
    {
        QCOMPARE(TaviColourUtil::encodeRGB(-1, 256, 128), 0xff00ff80U);
        QCOMPARE(TaviColourUtil::encodeRGB(INT_MAX, INT_MIN, 1000000), 0xffff00ffU);
    }

    void decodesWhatItEncodes()
    {
        for (int value = 0; value < 256; ++value) {
            int red = -1, green = -1, blue = -1;
            TaviColourUtil::decodeRGB(TaviColourUtil::encodeRGB(value, 255 - value, value / 2), &red, &green, &blue);
            QCOMPARE(red, value);
            QCOMPARE(green, 255 - value);
            QCOMPARE(blue, value / 2);
        }
        int red = -1, green = -1, blue = -1;
        TaviColourUtil::decodeRGB(0x7f102030U, &red, &green, &blue);
        QCOMPARE(red, 16);
        QCOMPARE(green, 32);
        QCOMPARE(blue, 48);
    }
};

TAVI_TEST_MAIN(TestTaviColourUtil)
#include "tst_tavicolourutil.moc"
