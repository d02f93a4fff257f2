// SPDX-License-Identifier: MIT
#include "foundation/windowgeometry_p.h"
#include "tests/support/tavitest.h"

#include <climits>
#include <cmath>
#include <random>

namespace {

/// Rounds of each seeded test.
constexpr int rounds = 20000;

/// The same numbers on every machine: the standard fixes this generator, but not the distributions.
class Numbers
{
public:
    explicit Numbers(unsigned seed) : generator_(seed) {}
    int from(int first, int last) { return first + static_cast<int>(generator_() % unsigned(last - first + 1)); }
    /// One of the borders that matter, or something near, or anything in reach.
    int near(std::initializer_list<int> borders)
    {
        const int choice = from(0, 2);
        const int border = borders.begin()[from(0, static_cast<int>(borders.size()) - 1)];
        return choice == 0 ? border : choice == 1 ? border + from(-3, 3) : from(-4000, 6000);
    }
    QRect rect(int origin, int smallest, int largest)
    {
        return {from(-origin, origin), from(-origin, origin), from(smallest, largest), from(smallest, largest)};
    }

private:
    std::mt19937 generator_;
};

QString text(const QRect &r)
{
    return QStringLiteral("%1,%2 %3x%4").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height());
}

} // namespace

/// Where windows go, without a window. The seeded cases are held against the rules put another way: in distances and
/// half-open intervals, or pixel by pixel.
class TestWindowGeometry : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aRestoredWindowStandsAtItsPlace_data();
    void aRestoredWindowStandsAtItsPlace();
    void restoredCornersByDistance();
    void aRestoredWindowIsCutAtTheBottom_data();
    void aRestoredWindowIsCutAtTheBottom();
    void restoredHeightsByTheirBottom();
    void aCentredWindowStaysOnItsScreen_data();
    void aCentredWindowStaysOnItsScreen();
    void centredCornersInHalfOpenIntervals();
    void aMovedWindowKeepsItsPlaceOrGoesToTheEdge_data();
    void aMovedWindowKeepsItsPlaceOrGoesToTheEdge();
    void movedCornersByWhatShows();
    void theScreenThatHoldsMost_data();
    void theScreenThatHoldsMost();
    void screensPixelByPixel();
};

void TestWindowGeometry::aRestoredWindowStandsAtItsPlace_data()
{
    QTest::addColumn<QPoint>("relative");
    QTest::addColumn<QPoint>("wanted");
    // On a screen that reaches from 1600 to 2879 and from 40 to 1063.
    QTest::newRow("inside") << QPoint(100, 200) << QPoint(1700, 240);
    QTest::newRow("at the corner") << QPoint(0, 0) << QPoint(1600, 40);
    QTest::newRow("left and above") << QPoint(-1, -1) << QPoint(1600, 40);
    QTest::newRow("the last pixel") << QPoint(1279, 1023) << QPoint(2879, 1063);
    QTest::newRow("one past the last pixel") << QPoint(1280, 1024) << QPoint(2880, 1064);
    QTest::newRow("two past the last pixel") << QPoint(1281, 1025) << QPoint(1600, 40);
    QTest::newRow("each direction by itself") << QPoint(5000, 300) << QPoint(1600, 340);
    QTest::newRow("the largest number") << QPoint(INT_MAX, INT_MAX) << QPoint(1600, 40);
    QTest::newRow("the smallest number") << QPoint(INT_MIN, INT_MIN) << QPoint(1600, 40);
}

void TestWindowGeometry::aRestoredWindowStandsAtItsPlace()
{
    QFETCH(QPoint, relative);
    QFETCH(QPoint, wanted);
    QCOMPARE(restoredTopLeft(relative, QRect(1600, 40, 1280, 1024)), wanted);
}

void TestWindowGeometry::restoredCornersByDistance()
{
    Numbers numbers(1);
    const auto wanted = [](int relative, int origin, int extent) {
        return origin + (relative >= 0 && relative <= extent ? relative : 0);
    };
    for (int round = 0; round < rounds; ++round) {
        const QRect available = numbers.rect(3000, 1, 3000);
        const QPoint relative = {numbers.near({0, available.width()}), numbers.near({0, available.height()})};
        const QPoint expected(wanted(relative.x(), available.x(), available.width()),
                              wanted(relative.y(), available.y(), available.height()));
        QVERIFY2(restoredTopLeft(relative, available) == expected,
                 qPrintable(QStringLiteral("%1,%2 on %3").arg(relative.x()).arg(relative.y()).arg(text(available))));
    }
}

void TestWindowGeometry::aRestoredWindowIsCutAtTheBottom_data()
{
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("top");
    QTest::addColumn<QRect>("current");
    QTest::addColumn<QRect>("requested");
    QTest::addColumn<int>("wanted");
    const QRect first(0, 0, 1600, 1200);
    const QRect second(1600, 0, 1280, 1024);
    const QRect below_a_panel(0, 40, 1600, 1160);
    const QRect lower(0, 1200, 1280, 1024);
    QTest::newRow("fits") << 500 << 100 << first << first << 500;
    QTest::newRow("up to the last pixel") << 1100 << 100 << first << first << 1100;
    QTest::newRow("one pixel past it") << 1101 << 100 << first << first << 1101;
    QTest::newRow("two pixels past it") << 1102 << 100 << first << first << 1101;
    QTest::newRow("far too high") << 2000 << 0 << first << first << 1201;
    QTest::newRow("below a panel") << 2000 << 140 << below_a_panel << below_a_panel << 1061;
    QTest::newRow("followed to a lower screen: the limit stays") << 1150 << 0 << second << first << 1150;
    QTest::newRow("followed to a higher screen: the limit stays") << 1150 << 0 << first << second << 1025;
    QTest::newRow("followed to the screen above: less than nothing is left") << 500 << 1300 << first << lower << -275;
    QTest::newRow("followed to the screen below: it may grow") << 2000 << 100 << lower << first << 2000;
}

void TestWindowGeometry::aRestoredWindowIsCutAtTheBottom()
{
    QFETCH(int, height);
    QFETCH(int, top);
    QFETCH(QRect, current);
    QFETCH(QRect, requested);
    QTEST(restoredHeight(height, top, current, requested), "wanted");
}

void TestWindowGeometry::restoredHeightsByTheirBottom()
{
    Numbers numbers(2);
    for (int round = 0; round < rounds; ++round) {
        const QRect requested = numbers.rect(3000, 1, 3000);
        const QRect current = numbers.from(0, 1) == 0 ? requested : numbers.rect(3000, 1, 3000);
        const int top = numbers.near({requested.y(), requested.y() + requested.height()});
        const int height = numbers.from(0, 4000);
        const int kept = restoredHeight(height, top, current, requested);
        // The row behind the last one, counted from the top of the screen that it is on now.
        const int limit = requested.height() + 1;
        const int end = top - current.y() + height;
        QVERIFY2(
            kept == (end <= limit ? height : height - (end - limit)),
            qPrintable(
                QStringLiteral("%1 at %2 on %3 for %4").arg(height).arg(top).arg(text(current), text(requested))));
    }
}

void TestWindowGeometry::aCentredWindowStaysOnItsScreen_data()
{
    QTest::addColumn<QRect>("area");
    QTest::addColumn<QSize>("frame");
    QTest::addColumn<QPoint>("wanted");
    // On a screen that reaches from 1600 to 2879 and from 0 to 1023.
    const QRect screen(1600, 0, 1280, 1024);
    QTest::newRow("on the screen") << screen << QSize(400, 300) << QPoint(2040, 362);
    QTest::newRow("odd differences are cut") << screen << QSize(401, 301) << QPoint(2039, 361);
    QTest::newRow("over a window") << QRect(1700, 100, 600, 400) << QSize(400, 300) << QPoint(1800, 150);
    QTest::newRow("larger than the window: cut towards zero")
        << QRect(1800, 100, 600, 400) << QSize(701, 501) << QPoint(1750, 50);
    QTest::newRow("over a window at the left edge") << QRect(1600, 0, 100, 100) << QSize(400, 300) << QPoint(1600, 0);
    QTest::newRow("over a window at the bottom")
        << QRect(1900, 1000, 400, 100) << QSize(400, 300) << QPoint(1900, 724);
    QTest::newRow("with the right edge on the margin")
        << QRect(2460, 100, 400, 300) << QSize(400, 300) << QPoint(2460, 100);
    QTest::newRow("with the right edge one past the margin")
        << QRect(2461, 100, 400, 300) << QSize(400, 300) << QPoint(2479, 100);
    QTest::newRow("with the bottom edge on the last pixel")
        << QRect(1900, 724, 400, 300) << QSize(400, 300) << QPoint(1900, 724);
    QTest::newRow("as wide as the screen but one") << screen << QSize(1279, 300) << QPoint(1600, 362);
    QTest::newRow("as wide as the screen") << screen << QSize(1280, 300) << QPoint(1600, 362);
    QTest::newRow("as high as the screen but one") << screen << QSize(400, 1023) << QPoint(2040, 0);
    QTest::newRow("as high as the screen") << screen << QSize(400, 1024) << QPoint(2040, 0);
    QTest::newRow("wider and higher than the screen") << screen << QSize(3000, 2000) << QPoint(1600, 0);
    QTest::newRow("over a window on another screen")
        << QRect(100, 100, 400, 300) << QSize(400, 300) << QPoint(1600, 100);
}

void TestWindowGeometry::aCentredWindowStaysOnItsScreen()
{
    QFETCH(QRect, area);
    QFETCH(QSize, frame);
    QTEST(centredTopLeft(area, frame, QRect(1600, 0, 1280, 1024)), "wanted");
}

void TestWindowGeometry::centredCornersInHalfOpenIntervals()
{
    Numbers numbers(3);
    // One direction: the frame takes [begin, begin + extent), the screen [first, end).
    const auto wanted = [](int area_begin, int area_extent, int extent, int first, int end, int margin, int back) {
        int begin = area_begin + static_cast<int>(std::trunc((area_extent - extent) / 2.0));
        if (begin < first)
            begin = first;
        if (begin + extent > end - margin)
            begin = extent < end - first ? end - back - extent : first;
        return begin;
    };
    int at_right_margin = 0;
    int too_large = 0;
    for (int round = 0; round < rounds; ++round) {
        const QRect available = numbers.rect(2000, 30, 2000);
        const QRect area = numbers.from(0, 3) == 0 ? available : numbers.rect(3000, 1, 1500);
        const QSize frame = {numbers.from(1, 2200), numbers.from(1, 2200)};
        const int end_x = available.x() + available.width();
        const int end_y = available.y() + available.height();
        const QPoint expected(wanted(area.x(), area.width(), frame.width(), available.x(), end_x, 20, 1),
                              wanted(area.y(), area.height(), frame.height(), available.y(), end_y, 0, 0));
        const QPoint corner = centredTopLeft(area, frame, available);
        QVERIFY2(corner == expected, qPrintable(QStringLiteral("%1x%2 over %3 on %4")
                                                    .arg(frame.width())
                                                    .arg(frame.height())
                                                    .arg(text(area), text(available))));
        QVERIFY(corner.x() >= available.x() && corner.y() >= available.y());
        at_right_margin += corner.x() + frame.width() == end_x - 1;
        too_large += frame.width() >= available.width() || frame.height() >= available.height();
    }
    // The cases that matter came up.
    QVERIFY2(at_right_margin > 1000 && too_large > 1000 && too_large < rounds - 1000,
             qPrintable(QStringLiteral("%1, %2").arg(at_right_margin).arg(too_large)));
}

void TestWindowGeometry::aMovedWindowKeepsItsPlaceOrGoesToTheEdge_data()
{
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<QPoint>("wanted");
    // From a screen at 0,40 to one that reaches from 1600 to 2879 and from 0 to 1023.
    QTest::newRow("inside") << QPoint(100, 240) << QPoint(1700, 200);
    QTest::newRow("at the corner") << QPoint(0, 40) << QPoint(1600, 0);
    QTest::newRow("left and above") << QPoint(-1, 39) << QPoint(1600, 0);
    QTest::newRow("20 pixels show") << QPoint(1260, 1044) << QPoint(2860, 1004);
    QTest::newRow("19 pixels show") << QPoint(1261, 1045) << QPoint(1600, 0);
    QTest::newRow("each direction by itself") << QPoint(1500, 440) << QPoint(1600, 400);
}

void TestWindowGeometry::aMovedWindowKeepsItsPlaceOrGoesToTheEdge()
{
    QFETCH(QPoint, position);
    QTEST(topLeftOnOtherScreen(position, QRect(0, 40, 1600, 1160), QRect(1600, 0, 1280, 1024)), "wanted");
}

void TestWindowGeometry::movedCornersByWhatShows()
{
    Numbers numbers(4);
    const auto wanted = [](int relative, int origin, int extent) {
        const int shown = relative < 0 ? 0 : extent - relative;
        return shown >= 20 ? origin + relative : origin;
    };
    for (int round = 0; round < rounds; ++round) {
        const QRect from = numbers.rect(3000, 1, 3000);
        const QRect to = numbers.rect(3000, 1, 3000);
        const QPoint relative = {numbers.near({0, to.width() - 19}), numbers.near({0, to.height() - 19})};
        const QPoint expected(wanted(relative.x(), to.x(), to.width()), wanted(relative.y(), to.y(), to.height()));
        QVERIFY2(
            topLeftOnOtherScreen(from.topLeft() + relative, from, to) == expected,
            qPrintable(
                QStringLiteral("%1,%2 of %3 to %4").arg(relative.x()).arg(relative.y()).arg(text(from), text(to))));
    }
}

void TestWindowGeometry::theScreenThatHoldsMost_data()
{
    QTest::addColumn<QVector<QRect>>("screens");
    QTest::addColumn<QRect>("frame");
    QTest::addColumn<int>("wanted");
    const QVector<QRect> two = {{0, 0, 1600, 1200}, {1600, 0, 1280, 1024}};
    const QVector<QRect> twins = {{0, 0, 800, 600}, {0, 0, 800, 600}};
    QTest::newRow("within the first") << two << QRect(100, 100, 400, 300) << 0;
    QTest::newRow("within the second") << two << QRect(1700, 100, 400, 300) << 1;
    QTest::newRow("a pixel more on the second") << two << QRect(1400, 100, 401, 300) << 1;
    QTest::newRow("half and half") << two << QRect(1400, 100, 400, 300) << 0;
    QTest::newRow("off to the left") << two << QRect(-900, 100, 400, 300) << 0;
    QTest::newRow("off to the right") << two << QRect(3000, 100, 400, 300) << 1;
    QTest::newRow("below the second, which ends higher") << two << QRect(2000, 1100, 400, 300) << 1;
    QTest::newRow("below the second, near the first") << two << QRect(1610, 1150, 40, 40) << 0;
    QTest::newRow("across a corner, by the straight line") << two << QRect(1620, 1220, 40, 40) << 0;
    QTest::newRow("a pixel on the second, the rest nowhere") << two << QRect(2879, 1023, 400, 300) << 1;
    QTest::newRow("without an area") << two << QRect(1600, 10, 0, 0) << 1;
    QTest::newRow("mirrored screens") << twins << QRect(10, 10, 100, 100) << 0;
    QTest::newRow("the third of three") << QVector<QRect>{{0, 0, 10, 10}, {10, 0, 10, 10}, {20, 0, 10, 10}}
                                        << QRect(18, 0, 9, 9) << 2;
    QTest::newRow("no screen") << QVector<QRect>() << QRect(0, 0, 10, 10) << 0;
    QTest::newRow("as large as an int allows") << two << QRect(0, 0, INT_MAX, INT_MAX) << 0;
}

void TestWindowGeometry::theScreenThatHoldsMost()
{
    QFETCH(QVector<QRect>, screens);
    QFETCH(QRect, frame);
    QTEST(screenHolding(screens, frame), "wanted");
}

void TestWindowGeometry::screensPixelByPixel()
{
    Numbers numbers(5);
    const auto holds = [](const QRect &rect, int x, int y) {
        return x >= rect.x() && x < rect.x() + rect.width() && y >= rect.y() && y < rect.y() + rect.height();
    };
    int nowhere = 0;
    for (int round = 0; round < rounds / 4; ++round) {
        QVector<QRect> screens;
        for (int count = numbers.from(1, 4); screens.size() < count;)
            screens.append(numbers.rect(20, 1, 25));
        const QRect frame = numbers.rect(30, 1, 12);
        int most = 0;
        int holding = -1;
        int least = INT_MAX;
        int nearest = -1;
        for (int i = 0; i < screens.size(); ++i) {
            int shared = 0;
            int distance = INT_MAX;
            for (int y = frame.y(); y < frame.y() + frame.height(); ++y) {
                for (int x = frame.x(); x < frame.x() + frame.width(); ++x) {
                    shared += holds(screens[i], x, y);
                    // The screen's pixel that is nearest to this one.
                    const int to_x = qBound(screens[i].x(), x, screens[i].x() + screens[i].width() - 1) - x;
                    const int to_y = qBound(screens[i].y(), y, screens[i].y() + screens[i].height() - 1) - y;
                    distance = std::min(distance, to_x * to_x + to_y * to_y);
                }
            }
            if (shared > most) {
                most = shared;
                holding = i;
            }
            if (distance < least) {
                least = distance;
                nearest = i;
            }
        }
        nowhere += holding < 0;
        QVERIFY2(screenHolding(screens, frame) == (holding < 0 ? nearest : holding), qPrintable(text(frame)));
    }
    QVERIFY2(nowhere > 500 && nowhere < rounds / 4 - 500, qPrintable(QString::number(nowhere)));
}

TAVI_TEST_MAIN(TestWindowGeometry)
#include "tst_windowgeometry.moc"
