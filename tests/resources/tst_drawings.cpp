// SPDX-License-Identifier: MIT
#include "resources/drawings.h"
#include "tests/support/tavitest.h"

#include <QFile>
#include <QPainter>

#include <cmath>

namespace {

constexpr double readable = 3.0; ///< The contrast that signs and outlines want (WCAG 2.1, 1.4.11).

/// Relative luminance as WCAG 2.1 defines it.
double luminance(QRgb colour)
{
    const auto linear = [](int value) {
        const double part = value / 255.0;
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(qRed(colour)) + 0.7152 * linear(qGreen(colour)) + 0.0722 * linear(qBlue(colour));
}

double contrast(QRgb a, QRgb b)
{
    const double first = luminance(a) + 0.05;
    const double second = luminance(b) + 0.05;
    return std::max(first, second) / std::min(first, second);
}

int largestDifference(const QImage &a, const QImage &b)
{
    int largest = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = qPremultiply(a.pixel(x, y));
            const QRgb q = qPremultiply(b.pixel(x, y));
            for (const int shift : {0, 8, 16, 24})
                largest = std::max(largest, std::abs(int(p >> shift & 255) - int(q >> shift & 255)));
        }
    }
    return largest;
}

} // namespace

/// The pictures that are compiled in, and the drawings they are made of.
class TestDrawings : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void everyFileIsItsDrawing_data() { addDrawings(); }
    void everyFileIsItsDrawing()
    {
        QFETCH(int, index);
        const Drawing drawing = allDrawings().at(index);
        const QImage drawn = renderDrawing(drawing);
        const QImage file = compiledIn(drawing);
        QCOMPARE(file.size(), QSize(drawing.size, drawing.size));
        // Roundings of another processor.
        QVERIFY2(largestDifference(drawn, file) <= 2, "to mend: render_drawings resources/tavi");
    }

    /// The shape by its colour on the window, and the sign by its colour on the shape.
    void everyPictureIsSeenOnLightAndDark_data() { addDrawings(); }
    void everyPictureIsSeenOnLightAndDark()
    {
        QFETCH(int, index);
        const Drawing drawing = allDrawings().at(index);
        const QImage image = compiledIn(drawing);
        QHash<QRgb, int> solid;
        int edge_pixels = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                const QRgb pixel = image.pixel(x, y);
                const bool at_border = x == 0 || y == 0 || x == image.width() - 1 || y == image.height() - 1;
                edge_pixels += at_border && qAlpha(pixel) == 255;
                if (qAlpha(pixel) == 255)
                    ++solid[pixel];
            }
        }
        QCOMPARE(edge_pixels, 0);
        const QRgb sign = qRgb(255, 255, 255);
        QCOMPARE(solid.value(sign) > 100, drawing.has_sign);
        solid.remove(sign);
        QRgb shape = 0;
        for (auto it = solid.cbegin(); it != solid.cend(); ++it)
            shape = it.value() > solid.value(shape) ? it.key() : shape;
        QVERIFY(solid.value(shape) > image.width() * image.height() / (drawing.has_sign ? 4 : 10));
        for (const QRgb window : {qRgb(255, 255, 255), qRgb(239, 239, 239), qRgb(53, 53, 53), qRgb(32, 32, 32)}) {
            const double seen = contrast(shape, window);
            QVERIFY2(seen >= readable,
                     qPrintable(QStringLiteral("%1 on %2").arg(seen).arg(QColor::fromRgb(window).name())));
        }
        if (drawing.has_sign)
            QVERIFY(contrast(shape, sign) >= readable);
    }

    /// Without colour, too: by their outlines alone.
    void picturesAreToldApart()
    {
        const QVector<Drawing> drawings = allDrawings();
        for (int i = 0; i < drawings.size(); ++i) {
            for (int j = 0; j < i; ++j) {
                const QImage a = compiledIn(drawings[i]);
                const QImage b = compiledIn(drawings[j]);
                if (a.size() != b.size())
                    continue; // the same at another resolution, or for another place
                int different = 0;
                for (int y = 0; y < a.height(); ++y)
                    for (int x = 0; x < a.width(); ++x)
                        different += (qAlpha(a.pixel(x, y)) > 127) != (qAlpha(b.pixel(x, y)) > 127);
                QVERIFY2(different > 100,
                         qPrintable(QStringLiteral("%1 and %2 by %3 pixels")
                                        .arg(QLatin1String(drawings[i].file), QLatin1String(drawings[j].file))
                                        .arg(different)));
            }
        }
    }

private:
    static void addDrawings()
    {
        QTest::addColumn<int>("index");
        const QVector<Drawing> drawings = allDrawings();
        for (int i = 0; i < drawings.size(); ++i)
            QTest::newRow(drawings[i].file) << i;
    }

    static QImage compiledIn(const Drawing &drawing)
    {
        return QImage(QStringLiteral(":/tavi/") + QLatin1String(drawing.file)).convertToFormat(QImage::Format_ARGB32);
    }
};

TAVI_TEST_MAIN(TestDrawings)
#include "tst_drawings.moc"
