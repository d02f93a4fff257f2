// SPDX-License-Identifier: MIT
#include "foundation/tavigfx.h"
#include "tests/support/tavitest.h"

#include <QColor>
#include <QFontMetrics>

#include <climits>
#include <cmath>
#include <limits>

namespace {

QFontMetrics metrics()
{
    QFont font(QStringLiteral("DejaVu Sans"));
    font.setPixelSize(20);
    return QFontMetrics(font);
}

QPolygon bubbleWithTail(const QRect &bubble, const QPolygon &tail)
{
    return QPolygon(bubble, false).united(tail);
}

} // namespace

/// Colours, shapes and texts.
class TestTaviGfx : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void constants()
    {
        QCOMPARE(TaviGfx::ELLIPSIS, QStringLiteral("..."));
        QCOMPARE(TaviGfx::MIN_FONT_SIZE, 6);
        QCOMPARE(TaviGfx::normal_button_height, 0);
        QCOMPARE(TaviGfx::default_font_point_size, 0);
    }

    void handlesHaveTheirNumbers()
    {
        static_assert(TaviGfx::TOP_LEFT_HANDLE == 0 && TaviGfx::TOP_RIGHT_HANDLE == 1);
        static_assert(TaviGfx::BOTTOM_LEFT_HANDLE == 2 && TaviGfx::BOTTOM_RIGHT_HANDLE == 3);
        static_assert(TaviGfx::TOP_HANDLE == 4 && TaviGfx::BOTTOM_HANDLE == 5);
        static_assert(TaviGfx::LEFT_HANDLE == 6 && TaviGfx::RIGHT_HANDLE == 7);
        static_assert(TaviGfx::NO_HANDLE == 8 && TaviGfx::OUTSIDE == 9);
    }

    void foregroundCanBeRead_data()
    {
        QTest::addColumn<QColor>("background");
        QTest::addColumn<bool>("black");
        QTest::newRow("white") << QColor(255, 255, 255) << true;
        QTest::newRow("black") << QColor(0, 0, 0) << false;
        QTest::newRow("darkest light grey") << QColor(150, 150, 150) << true;
        QTest::newRow("lightest dark grey") << QColor(149, 149, 149) << false;
        QTest::newRow("red") << QColor(255, 0, 0) << false;
        QTest::newRow("green") << QColor(0, 255, 0) << true;
        QTest::newRow("a little less green") << QColor(0, 254, 0) << false;
        QTest::newRow("blue") << QColor(0, 0, 255) << false;
        QTest::newRow("rounded up") << QColor(151, 149, 149) << true;
        QTest::newRow("rounded down") << QColor(150, 149, 149) << false;
        QTest::newRow("blue counts") << QColor(0, 206, 252) << true;
        QTest::newRow("a little less blue") << QColor(0, 206, 250) << false;
        QTest::newRow("red counts") << QColor(255, 125, 0) << true;
        QTest::newRow("a little less red") << QColor(251, 125, 0) << false;
        QTest::newRow("red counts to the third digit") << QColor(255, 124, 2) << false;
        QTest::newRow("clear white") << QColor(255, 255, 255, 0) << true;
        QTest::newRow("invalid") << QColor() << false;
        QTest::newRow("CMYK yellow") << QColor::fromCmyk(0, 0, 255, 0) << true;
    }

    void foregroundCanBeRead()
    {
        QFETCH(QColor, background);
        QFETCH(bool, black);
        QCOMPARE(TaviGfx::getSensibleForegroundColour(background), black ? QColor(Qt::black) : QColor(Qt::white));
    }

    void tintIsMixedWithWhite_data()
    {
        QTest::addColumn<QColor>("colour");
        QTest::addColumn<double>("percent");
        QTest::addColumn<QColor>("tint");
        const QColor colour(100, 0, 200);
        QTest::newRow("all") << colour << 100.0 << colour;
        QTest::newRow("half") << colour << 50.0 << QColor(177, 127, 227);
        QTest::newRow("a third") << colour << 33.0 << QColor(203, 170, 236);
        QTest::newRow("part of a percent") << colour << 0.5 << QColor(254, 253, 254);
        QTest::newRow("none") << colour << 0.0 << QColor(255, 255, 255);
        QTest::newRow("less than none") << colour << -20.0 << QColor(255, 255, 255);
        QTest::newRow("more than all") << colour << 250.0 << colour;
        QTest::newRow("endless") << colour << std::numeric_limits<double>::infinity() << colour;
        QTest::newRow("no number") << colour << std::nan("") << QColor(255, 255, 255);
        QTest::newRow("clear") << QColor(100, 0, 200, 10) << 100.0 << colour;
        QTest::newRow("white") << QColor(255, 255, 255) << 40.0 << QColor(255, 255, 255);
        QTest::newRow("invalid") << QColor() << 100.0 << QColor(0, 0, 0);
        QTest::newRow("HSV") << QColor::fromHsv(0, 255, 255) << 100.0 << QColor(255, 0, 0);
    }

    void tintIsMixedWithWhite()
    {
        QFETCH(QColor, colour);
        QFETCH(double, percent);
        QFETCH(QColor, tint);
        TaviGfx::applyTint(colour, percent);
        QCOMPARE(colour, tint);
        QCOMPARE(colour.alpha(), 255);
    }

    void bubbleHasATail_data()
    {
        QTest::addColumn<QRect>("target");
        QTest::addColumn<QPolygon>("tail");
        // The bubble's corners are (100, 100), (100, 159), (199, 100) and (199, 159).
        QTest::newRow("above left") << QRect(
            40, 40, 20, 20) << QPolygon({QPoint(59, 59), QPoint(100, 113), QPoint(100, 100), QPoint(113, 100)});
        QTest::newRow("above right") << QRect(
            240, 40, 20, 20) << QPolygon({QPoint(240, 59), QPoint(199, 113), QPoint(199, 100), QPoint(186, 100)});
        QTest::newRow("below left") << QRect(
            40, 200, 20, 20) << QPolygon({QPoint(59, 200), QPoint(100, 146), QPoint(100, 159), QPoint(113, 159)});
        QTest::newRow("below right") << QRect(
            240, 200, 20, 20) << QPolygon({QPoint(240, 200), QPoint(199, 146), QPoint(199, 159), QPoint(186, 159)});
        QTest::newRow("just below: left before right")
            << QRect(100, 200, 100, 60)
            << QPolygon({QPoint(100, 200), QPoint(100, 146), QPoint(100, 159), QPoint(113, 159)});
        QTest::newRow("just above: left before right")
            << QRect(100, 20, 100, 60)
            << QPolygon({QPoint(100, 79), QPoint(100, 113), QPoint(100, 100), QPoint(113, 100)});
        QTest::newRow("just right: top before bottom")
            << QRect(240, 100, 100, 60)
            << QPolygon({QPoint(240, 100), QPoint(199, 113), QPoint(199, 100), QPoint(186, 100)});
        QTest::newRow("between two of its corners: top first")
            << QRect(240, 90, 20, 21)
            << QPolygon({QPoint(240, 90), QPoint(199, 113), QPoint(199, 100), QPoint(186, 100)});
        QTest::newRow("bottom left before top right")
            << QRect(240, 200, 1, 1)
            << QPolygon({QPoint(240, 200), QPoint(199, 146), QPoint(199, 159), QPoint(186, 159)});
        QTest::newRow("touching edges") << QRect(
            200, 100, 50, 60) << QPolygon({QPoint(200, 100), QPoint(199, 113), QPoint(199, 100), QPoint(186, 100)});
    }

    void bubbleHasATail()
    {
        QFETCH(QRect, target);
        QFETCH(QPolygon, tail);
        const QRect bubble(100, 100, 100, 60);
        const QPolygon outline = TaviGfx::getSpeechBubble(bubble, target);
        QCOMPARE(outline, bubbleWithTail(bubble, tail));
        QVERIFY(outline.size() > 4);
        QVERIFY(outline.boundingRect().contains(tail.first()));
    }

    void manhattanDistanceDecides()
    {
        // From the top right corner 60 along one axis and none along the other; from the bottom right one 35 and 35,
        // which is nearer as the crow flies.
        const QRect bubble(0, 0, 101, 101);
        const QRect target(135, 135, 1, 1);
        QCOMPARE(
            TaviGfx::getSpeechBubble(bubble, target),
            bubbleWithTail(bubble, QPolygon({QPoint(135, 135), QPoint(100, 87), QPoint(100, 100), QPoint(87, 100)})));
        // Two tips for the same corner: (150, 150) is 50 + 50 away, (100, 195) is 0 + 95.
        const QRect tall(100, 195, 51, 200);
        QCOMPARE(
            TaviGfx::getSpeechBubble(bubble, tall),
            bubbleWithTail(bubble, QPolygon({QPoint(100, 195), QPoint(100, 87), QPoint(100, 100), QPoint(87, 100)})));
        // 70 along x alone is farther than 60 in all, though both axes take part in the other.
        const QRect slim(-40, -30, 1, 201);
        QCOMPARE(TaviGfx::getSpeechBubble(bubble, slim),
                 bubbleWithTail(bubble, QPolygon({QPoint(-40, -30), QPoint(0, 13), QPoint(0, 0), QPoint(13, 0)})));
    }

    void bubbleOverItsTargetHasNoTail_data()
    {
        QTest::addColumn<QRect>("target");
        QTest::newRow("the same") << QRect(100, 100, 100, 60);
        QTest::newRow("inside") << QRect(120, 120, 10, 10);
        QTest::newRow("around") << QRect(0, 0, 500, 500);
        QTest::newRow("a common pixel") << QRect(199, 159, 50, 50);
    }

    void bubbleOverItsTargetHasNoTail()
    {
        QFETCH(QRect, target);
        const QPolygon outline = TaviGfx::getSpeechBubble(QRect(100, 100, 100, 60), target);
        QCOMPARE(outline, QPolygon({QPoint(100, 100), QPoint(200, 100), QPoint(200, 160), QPoint(100, 160)}));
    }

    void bubbleFarFromItsTargetDoesNotWrap()
    {
        const QRect bubble(-1'000'000'000, -1'000'000'000, 100, 60);
        const QRect target(1'500'000'000, 1'500'000'000, 20, 20);
        QCOMPARE(TaviGfx::getSpeechBubble(bubble, target),
                 bubbleWithTail(bubble, QPolygon({target.topLeft(), bubble.bottomRight() - QPoint(0, 13),
                                                  bubble.bottomRight(), bubble.bottomRight() - QPoint(13, 0)})));
    }

    void pointsOnHandles_data()
    {
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<int>("handle");
        // The rectangle goes from 100 to 199 and from 200 to 299, the handles reach 4 pixels.
        QTest::newRow("top left corner") << QPoint(100, 200) << 0;
        QTest::newRow("top left, the last inside") << QPoint(104, 204) << 0;
        QTest::newRow("top left, the last outside") << QPoint(96, 196) << 0;
        QTest::newRow("top right corner") << QPoint(199, 200) << 1;
        QTest::newRow("bottom left corner") << QPoint(100, 299) << 2;
        QTest::newRow("bottom right corner") << QPoint(199, 299) << 3;
        QTest::newRow("top") << QPoint(150, 200) << 4;
        QTest::newRow("top, the last inside") << QPoint(150, 204) << 4;
        QTest::newRow("top, the last outside") << QPoint(150, 196) << 4;
        QTest::newRow("bottom") << QPoint(150, 299) << 5;
        QTest::newRow("bottom, the last inside") << QPoint(150, 295) << 5;
        QTest::newRow("bottom, the last outside") << QPoint(150, 303) << 5;
        QTest::newRow("left") << QPoint(100, 250) << 6;
        QTest::newRow("left, the last inside") << QPoint(104, 250) << 6;
        QTest::newRow("left, the last outside") << QPoint(96, 250) << 6;
        QTest::newRow("right") << QPoint(199, 250) << 7;
        QTest::newRow("right, the last inside") << QPoint(195, 250) << 7;
        QTest::newRow("right, the last outside") << QPoint(203, 250) << 7;
        QTest::newRow("inside") << QPoint(150, 250) << 8;
        QTest::newRow("inside, five from the left") << QPoint(105, 250) << 8;
        QTest::newRow("inside, five from the top") << QPoint(150, 205) << 8;
        QTest::newRow("inside, five from the right") << QPoint(194, 250) << 8;
        QTest::newRow("inside, five from the bottom") << QPoint(150, 294) << 8;
        QTest::newRow("outside, exactly five from the top") << QPoint(150, 195) << 8;
        QTest::newRow("outside, exactly five from the left") << QPoint(95, 250) << 8;
        QTest::newRow("outside, exactly five from the bottom") << QPoint(150, 304) << 8;
        QTest::newRow("outside, exactly five from the right") << QPoint(204, 250) << 8;
        QTest::newRow("exactly five from the top, on the left") << QPoint(100, 195) << 6;
        QTest::newRow("exactly five from the left, on the top") << QPoint(95, 200) << 4;
        QTest::newRow("outside at the top") << QPoint(150, 194) << 9;
        QTest::newRow("outside at the left") << QPoint(94, 250) << 9;
        QTest::newRow("outside at the bottom") << QPoint(150, 305) << 9;
        QTest::newRow("outside at the right") << QPoint(205, 250) << 9;
        QTest::newRow("far away") << QPoint(INT_MAX, INT_MIN) << 9;
    }

    void pointsOnHandles()
    {
        QFETCH(QPoint, point);
        QFETCH(int, handle);
        QCOMPARE(int(TaviGfx::onHandle(QRect(100, 200, 100, 100), point, 5)), handle);
    }

    void upperLeftHandlesWin()
    {
        QCOMPARE(int(TaviGfx::onHandle(QRect(0, 0, 3, 3), QPoint(1, 1), 5)), 0);
        QCOMPARE(int(TaviGfx::onHandle(QRect(0, 0, 100, 3), QPoint(50, 1), 5)), 4);
        QCOMPARE(int(TaviGfx::onHandle(QRect(0, 0, 3, 100), QPoint(1, 50), 5)), 6);
        QCOMPARE(int(TaviGfx::onHandle(QRect(0, 0, 100, 3), QPoint(99, 1), 5)), 1);
        QCOMPARE(int(TaviGfx::onHandle(QRect(0, 0, 3, 100), QPoint(1, 99), 5)), 2);
    }

    void handlesWithoutASize()
    {
        QCOMPARE(int(TaviGfx::onHandle(QRect(0, 0, 10, 10), QPoint(0, 0), 0)), 8);
        QCOMPARE(int(TaviGfx::onHandle(QRect(0, 0, 10, 10), QPoint(0, 0), -2)), 9);
        QCOMPARE(int(TaviGfx::onHandle(QRect(0, 0, 10, 10), QPoint(2, 2), -2)), 8);
        QCOMPARE(int(TaviGfx::onHandle(QRect(), QPoint(0, 0), 0)), 9);
    }

    void textIsShortenedFromPassToPass_data()
    {
        QTest::addColumn<int>("mode");
        QTest::addColumn<QStringList>("passes");
        QTest::newRow("start") << 0
                               << QStringList({"...klmnopq", "...lmnopq", "...mnopq", "...nopq", "...opq", "...pq",
                                               "...q", "..."});
        QTest::newRow("end") << 2
                             << QStringList({"ghijklm...", "ghijkl...", "ghijk...", "ghij...", "ghi...", "gh...",
                                             "g...", "..."});
        QTest::newRow("any other") << -7
                                   << QStringList({"ghijklm...", "ghijkl...", "ghijk...", "ghij...", "ghi...",
                                                   "gh...", "g...", "..."});
        QTest::newRow("middle") << 1
                                << QStringList({"ghi...nopq", "ghi...opq", "gh...opq", "gh...pq", "g...pq", "g...q",
                                                "...q", "..."});
    }

    void textIsShortenedFromPassToPass()
    {
        QFETCH(int, mode);
        QFETCH(QStringList, passes);
        const QString text = QStringLiteral("ghijklmnopq");
        for (const QString &expected : passes) {
            const int width = metrics().horizontalAdvance(expected);
            QCOMPARE(TaviGfx::truncateString(text, metrics(), width, mode), expected);
        }
        const int least = metrics().horizontalAdvance(TaviGfx::ELLIPSIS);
        QVERIFY(least > 11);
        const QString none = TaviGfx::truncateString(text, metrics(), least - 1, mode);
        QVERIFY(none.isNull());
    }

    void aTextThatFitsIsLeftAlone()
    {
        const QString text = QStringLiteral("ghijkl");
        const int width = metrics().horizontalAdvance(text);
        for (const int mode : {0, 1, 2}) {
            QCOMPARE(TaviGfx::truncateString(text, metrics(), width, mode), text);
            QCOMPARE(TaviGfx::truncateString(text, metrics(), INT_MAX, mode), text);
            QVERIFY(TaviGfx::truncateString(text, metrics(), width - 1, mode) != text);
        }
    }

    void nothingFitsIntoTenPixels()
    {
        const QString text = QStringLiteral("i");
        QVERIFY(metrics().horizontalAdvance(text) <= 10);
        for (const int width : {10, 0, -1, INT_MIN})
            QVERIFY(TaviGfx::truncateString(text, metrics(), width, 0).isNull());
        QCOMPARE(TaviGfx::truncateString(text, metrics(), 11, 0), text);
    }

    void anEmptyTextIsNull()
    {
        QVERIFY(TaviGfx::truncateString(QStringLiteral(""), metrics(), 100, 0).isNull());
        QVERIFY(TaviGfx::truncateString(QString(), metrics(), 100, 0).isNull());
    }

    void aShortTextThatDoesNotFitIsNull()
    {
        QVERIFY(metrics().horizontalAdvance("WWW") > 30);
        QVERIFY(TaviGfx::truncateString(QStringLiteral("WWW"), metrics(), 30, 2).isNull());
        QCOMPARE(TaviGfx::truncateString(QStringLiteral("WWWW"), metrics(), 30, 2), QStringLiteral("..."));
    }

    void theAdvanceCounts()
    {
        // Spaces at the end have no ink.
        const QString text = QStringLiteral("gh") + QString(10, ' ');
        const int width = metrics().boundingRect(text).width() + 5;
        QVERIFY(metrics().horizontalAdvance(text) > width);
        const QString shortened = TaviGfx::truncateString(text, metrics(), width, 0);
        QVERIFY(shortened != text);
        QVERIFY(metrics().horizontalAdvance(shortened) <= width);
    }
};

TAVI_GUI_TEST_MAIN(TestTaviGfx)
#include "tst_tavigfx.moc"
