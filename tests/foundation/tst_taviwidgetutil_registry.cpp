// SPDX-License-Identifier: MIT
#include "foundation/taviscreens.h"
#include "foundation/taviwidgetutil.h"
#include "taviapp/taviregistry.h"
#include "tests/foundation/panel.h"
#include "tests/support/tavitest.h"
#include "tests/support/testdisplay.h"

#include <QDialog>

#include <climits>

namespace {

/// A window that needs some room.
class Roomy : public QWidget
{
public:
    using QWidget::QWidget;
    QSize minimumSizeHint() const override { return {300, 100}; }
};

/// What is stored under the standard keys, and the screen.
struct Stored {
    QRect client;
    int screen;
    bool operator==(const Stored &) const = default;
};

char *toString(const Stored &stored)
{
    const QRect &r = stored.client;
    return qstrdup(qPrintable(
        QStringLiteral("%1,%2 %3x%4 on %5").arg(r.x()).arg(r.y()).arg(r.width()).arg(r.height()).arg(stored.screen)));
}

} // namespace

/// Restoring and saving window geometry.
class TestTaviWidgetUtilRegistry : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        registry = std::make_unique<TaviRegistry>();
    }

    void nullsAreTakenQuietly();
    void fiveNumbersAreStored();
    void keysOfTheCallersOwn();
    void nothingStoredMeansCentred();
    void yWithoutXMeansCentred();
    void withoutRestoreNothingIsDone();
    void aWindowComesBack();
    void aSectionMayBeAStdString();
    void aPlaceOffTheScreenGoesToTheEdge_data();
    void aPlaceOffTheScreenGoesToTheEdge();
    void aSizeBelowTheMinimumSizeHintIsRaised_data();
    void aSizeBelowTheMinimumSizeHintIsRaised();
    void aWindowTooHighIsCutAtTheBottom_data();
    void aWindowTooHighIsCutAtTheBottom();
    void theCutCountsFromWhereTheClientWasPut();
    void widthIsNeverCut();
    void aFrameAboveTheScreenComesDown();
    void aClientThatBeginsAtTheTopStaysThere();
    void anyStoredNumberIsGood_data();
    void anyStoredNumberIsGood();
    void aRectangleIsRelativeToo();
    void placesAreRelativeToWhatPanelsLeave();
    void aWindowComesBackToTheSecondScreen();
    void aRectangleComesBackToTheFirstScreen();
    void withoutAScreenKeyItIsTheFirstScreen();
    void aHiddenWindowIsStoredByItsGeometry();
    void aScreenThatDoesNotExistMeansThePrimaryOne();
    void aWindowOfTheSecondScreenIsRestoredWithOne();
    void aScreenMayGoAndComeBackBetweenSaveAndRestore();
    void aDialogFollowsItsParent();
    void aDialogMayStayWhereItWas();
    void aDialogThatFollowedKeepsTheHeightOfTheScreenAskedFor();
    void aWindowWithoutAParentFollowsNobody();
    void withOneScreenNobodyFollows();

private:
    Stored stored(const char *section) const
    {
        const auto number = [&](const char *key) {
            return static_cast<int>(registry->getlong(section, key));
        };
        return {{number("WinX"), number("WinY"), number("WinWidth"), number("WinHeight")}, number("WinScreen")};
    }
    void store(const char *section, const Stored &values)
    {
        registry->putlong(section, "WinX", values.client.x());
        registry->putlong(section, "WinY", values.client.y());
        registry->putlong(section, "WinWidth", values.client.width());
        registry->putlong(section, "WinHeight", values.client.height());
        registry->putlong(section, "WinScreen", values.screen);
    }

    std::unique_ptr<TaviRegistry> registry;
};

void TestTaviWidgetUtilRegistry::nullsAreTakenQuietly()
{
    const std::string section = "window";
    const char *const none = nullptr;
    QWidget window;
    window.setGeometry(10, 20, 300, 200);
    TaviWidgetUtil::saveSizeToRegistry(nullptr, registry.get(), "window");
    TaviWidgetUtil::saveSizeToRegistry(nullptr, registry.get(), section);
    TaviWidgetUtil::saveSizeToRegistry(&window, nullptr, "window");
    TaviWidgetUtil::saveSizeToRegistry(&window, nullptr, section);
    TaviWidgetUtil::saveSizeToRegistry(&window, registry.get(), none);
    QCOMPARE(registry->size("window"), size_t(0));
    QCOMPARE(registry->size(""), size_t(0));

    TaviWidgetUtil::restoreSizeFromRegistry(nullptr, registry.get(), "window", true, true);
    TaviWidgetUtil::restoreSizeFromRegistry(&window, nullptr, "window", true, true);
    TaviWidgetUtil::restoreSizeFromRegistry(&window, nullptr, section, true, true);
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), none, true, true);
    TaviWidgetUtil::restoreSize(nullptr, 1, 2, 3, 4, true, true, 0);
    TaviWidgetUtil::restoreSize(nullptr, QRect(1, 2, 3, 4), true, true);
    QCOMPARE(window.geometry(), QRect(10, 20, 300, 200));

    QRect rect(1, 2, 3, 4);
    TaviWidgetUtil::saveSizeToRect(nullptr, rect);
    QCOMPARE(rect, QRect(1, 2, 3, 4));
}

void TestTaviWidgetUtilRegistry::fiveNumbersAreStored()
{
    QWidget window;
    window.setGeometry(110, 220, 330, 240);
    TaviWidgetUtil::saveSizeToRegistry(&window, registry.get(), "window");
    QCOMPARE(registry->size("window"), size_t(5));
    QCOMPARE(registry->getstring("window", "WinX"), std::string("110"));
    QCOMPARE(registry->getstring("window", "WinY"), std::string("220"));
    QCOMPARE(registry->getstring("window", "WinWidth"), std::string("330"));
    QCOMPARE(registry->getstring("window", "WinHeight"), std::string("240"));
    QCOMPARE(registry->getstring("window", "WinScreen"), std::string("0"));
}

void TestTaviWidgetUtilRegistry::keysOfTheCallersOwn()
{
    QWidget window;
    window.setGeometry(110, 220, 330, 240);
    TaviWidgetUtil::saveSizeToRegistry(&window, registry.get(), "s", "x", "y", "w", "h", nullptr);
    QCOMPARE(registry->size("s"), size_t(4));
    TaviWidgetUtil::saveSizeToRegistry(&window, registry.get(), "s", "x", "y", "w", "h", "screen");
    QCOMPARE(registry->size("s"), size_t(5));
    QVERIFY(registry->exists("s", "screen"));

    QWidget again;
    TaviWidgetUtil::restoreSizeFromRegistry(&again, registry.get(), "s", "x", "y", "w", "h", true, false, "screen");
    QCOMPARE(again.geometry(), window.geometry());
    // Each key does what it is for.
    TaviWidgetUtil::restoreSizeFromRegistry(&again, registry.get(), "s", "y", "x", "h", "w", true, false, nullptr);
    QCOMPARE(again.geometry(), QRect(220, 110, 240, 330));
}

void TestTaviWidgetUtilRegistry::nothingStoredMeansCentred()
{
    QWidget window;
    window.setGeometry(10, 20, 400, 300);
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, true);
    QCOMPARE(window.geometry(), QRect(600, 450, 400, 300));
}

void TestTaviWidgetUtilRegistry::yWithoutXMeansCentred()
{
    registry->putlong("window", "WinY", 7);
    registry->putlong("window", "WinWidth", 700);
    QWidget window;
    window.setGeometry(10, 20, 400, 300);
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, false);
    QCOMPARE(window.geometry(), QRect(600, 450, 400, 300));
    // And x alone is enough: what is missing reads as 0.
    registry->clearsection("window");
    registry->putlong("window", "WinX", 7);
    Roomy roomy;
    TaviWidgetUtil::restoreSizeFromRegistry(&roomy, registry.get(), "window", true, false);
    QCOMPARE(roomy.geometry(), QRect(7, 0, 300, 100));
}

void TestTaviWidgetUtilRegistry::withoutRestoreNothingIsDone()
{
    store("window", {{500, 600, 700, 200}, 0});
    QWidget parent;
    QWidget window(&parent, Qt::Window);
    window.setGeometry(10, 20, 300, 200);
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", false, true);
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), std::string("window"), false, true);
    // Not centred either.
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "empty", false, true);
    TaviWidgetUtil::restoreSize(&window, 500, 600, 700, 200, false, true, 0);
    TaviWidgetUtil::restoreSize(&window, QRect(500, 600, 700, 200), false, true);
    QCOMPARE(window.geometry(), QRect(10, 20, 300, 200));
    QVERIFY(!window.isVisible() && !parent.isVisible());
}

void TestTaviWidgetUtilRegistry::aWindowComesBack()
{
    const QRect client(310, 220, 430, 340);
    {
        QWidget window;
        window.setGeometry(client);
        QVERIFY(showWithFrame(window));
        TaviWidgetUtil::saveSizeToRegistry(&window, registry.get(), "window");
    }
    QCOMPARE(stored("window"), (Stored{client, 0}));
    QWidget window;
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, false);
    QCOMPARE(window.geometry(), client);
    QVERIFY(showWithFrame(window));
    QCOMPARE(window.geometry(), client);
    // The window system says the same.
    QTRY_COMPARE(window.mapToGlobal(QPoint(0, 0)), client.topLeft());

    // A shown one goes back as well.
    window.setGeometry(700, 700, 100, 100);
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, false);
    QCOMPARE(window.geometry(), client);
    QTRY_COMPARE(window.windowHandle()->geometry(), client);
}

void TestTaviWidgetUtilRegistry::aSectionMayBeAStdString()
{
    const std::string section = "window";
    QWidget window;
    window.setGeometry(110, 220, 330, 240);
    TaviWidgetUtil::saveSizeToRegistry(&window, registry.get(), section);
    QCOMPARE(stored("window"), (Stored{{110, 220, 330, 240}, 0}));
    QWidget again;
    TaviWidgetUtil::restoreSizeFromRegistry(&again, registry.get(), section, true, false);
    QCOMPARE(again.geometry(), window.geometry());
}

void TestTaviWidgetUtilRegistry::aPlaceOffTheScreenGoesToTheEdge_data()
{
    QTest::addColumn<QPoint>("place");
    QTest::addColumn<QPoint>("wanted");
    QTest::newRow("x far to the right") << QPoint(5000, 100) << QPoint(0, 100);
    QTest::newRow("x to the left") << QPoint(-1, 100) << QPoint(0, 100);
    QTest::newRow("y far below") << QPoint(100, 5000) << QPoint(100, 0);
    QTest::newRow("y above") << QPoint(100, -200) << QPoint(100, 0);
    QTest::newRow("the last pixel") << QPoint(1599, 1199) << QPoint(1599, 1199);
    QTest::newRow("one past the last pixel") << QPoint(1600, 1200) << QPoint(1600, 1200);
    QTest::newRow("two past the last pixel") << QPoint(1601, 1201) << QPoint(0, 0);
}

void TestTaviWidgetUtilRegistry::aPlaceOffTheScreenGoesToTheEdge()
{
    // On one screen alone, so that a window there does not belong to another one.
    const UnpluggedScreen unplugged;
    QVERIFY(unplugged.isUnplugged());
    QFETCH(QPoint, place);
    store("window", {QRect(place, QSize(1, 1)), 0});
    QWidget window;
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, false);
    QTEST(window.geometry().topLeft(), "wanted");
}

void TestTaviWidgetUtilRegistry::aSizeBelowTheMinimumSizeHintIsRaised_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("wanted");
    QTest::newRow("width") << QSize(200, 400) << QSize(300, 400);
    QTest::newRow("height") << QSize(400, 50) << QSize(400, 100);
    QTest::newRow("both") << QSize(0, 0) << QSize(300, 100);
    QTest::newRow("none") << QSize(301, 101) << QSize(301, 101);
}

void TestTaviWidgetUtilRegistry::aSizeBelowTheMinimumSizeHintIsRaised()
{
    QFETCH(QSize, size);
    Roomy window;
    TaviWidgetUtil::restoreSize(&window, 10, 20, size.width(), size.height(), true, false, 0);
    QTEST(window.size(), "wanted");
    QCOMPARE(window.pos(), QPoint(10, 20));
}

void TestTaviWidgetUtilRegistry::aWindowTooHighIsCutAtTheBottom_data()
{
    QTest::addColumn<int>("y");
    QTest::addColumn<int>("height");
    QTest::addColumn<int>("wanted");
    QTest::newRow("2000 pixels") << 0 << 2000 << 1201;
    QTest::newRow("2000 pixels further down") << 100 << 2000 << 1101;
    QTest::newRow("2000 pixels from off the screen") << -50 << 2000 << 1201;
    QTest::newRow("one pixel past the screen") << 100 << 1101 << 1101;
    QTest::newRow("two pixels past the screen") << 100 << 1102 << 1101;
    QTest::newRow("up to the edge") << 100 << 1100 << 1100;
}

void TestTaviWidgetUtilRegistry::aWindowTooHighIsCutAtTheBottom()
{
    QFETCH(int, y);
    QFETCH(int, height);
    QFETCH(int, wanted);
    store("window", {{200, y, 400, height}, 0});
    QWidget window;
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, false);
    QCOMPARE(window.geometry(), QRect(200, qMax(y, 0), 400, wanted));
}

/// Not from where it stands by then, if its frame had to come down.
void TestTaviWidgetUtilRegistry::theCutCountsFromWhereTheClientWasPut()
{
    QWidget window;
    window.setGeometry(300, 300, 400, 300);
    QVERIFY(showWithFrame(window));
    const int title = window.geometry().top() - window.frameGeometry().top();
    QVERIFY(title > 5);
    TaviWidgetUtil::restoreSize(&window, 100, 5, 400, 2000, true, false, 0);
    QCOMPARE(window.geometry(), QRect(100, title, 400, 1196));
}

void TestTaviWidgetUtilRegistry::widthIsNeverCut()
{
    QWidget window;
    TaviWidgetUtil::restoreSize(&window, 200, 100, 3000, 400, true, false, 0);
    QCOMPARE(window.geometry(), QRect(200, 100, 3000, 400));
}

void TestTaviWidgetUtilRegistry::aFrameAboveTheScreenComesDown()
{
    QWidget window;
    window.setGeometry(300, 300, 400, 300);
    QVERIFY(showWithFrame(window));
    const QPoint client = window.geometry().topLeft() - window.frameGeometry().topLeft();
    QVERIFY(client.y() > 5);
    TaviWidgetUtil::restoreSize(&window, 100, 5, 400, 300, true, false, 0);
    QCOMPARE(window.frameGeometry().top(), 0);
    QCOMPARE(window.geometry(), QRect(100, client.y(), 400, 300));
    QTRY_COMPARE(window.windowHandle()->geometry(), QRect(100, client.y(), 400, 300));
    // A frame that just fits is left alone.
    TaviWidgetUtil::restoreSize(&window, 100, client.y(), 400, 300, true, false, 0);
    QCOMPARE(window.geometry(), QRect(100, client.y(), 400, 300));
}

/// It is placed by its client until there is a frame: moved by then, it would stand there with its frame.
void TestTaviWidgetUtilRegistry::aClientThatBeginsAtTheTopStaysThere()
{
    QWidget window;
    TaviWidgetUtil::restoreSize(&window, 100, 0, 400, 300, true, false, 0);
    QVERIFY(showWithFrame(window));
    QCOMPARE(window.geometry(), QRect(100, 0, 400, 300));
}

void TestTaviWidgetUtilRegistry::anyStoredNumberIsGood_data()
{
    QTest::addColumn<QString>("number");
    QTest::addColumn<QRect>("wanted"); // when all five are that number
    QTest::newRow("no number") << "left" << QRect(0, 0, 300, 100);
    QTest::newRow("minus one") << "-1" << QRect(0, 0, 300, 100);
    QTest::newRow("the largest int") << "2147483647" << QRect(0, 0, QWIDGETSIZE_MAX, 1201);
    QTest::newRow("the smallest int") << "-2147483648" << QRect(0, 0, 300, 100);
    // 5 and 100 if cut down to 32 bits.
    QTest::newRow("5 past 32 bits") << "4294967301" << QRect(0, 0, QWIDGETSIZE_MAX, 1201);
    QTest::newRow("100 below 32 bits") << "-4294967196" << QRect(0, 0, 300, 100);
}

void TestTaviWidgetUtilRegistry::anyStoredNumberIsGood()
{
    QFETCH(QString, number);
    for (const char *key : {"WinX", "WinY", "WinWidth", "WinHeight", "WinScreen"})
        registry->putstring("window", key, qPrintable(number));
    Roomy window;
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, false);
    QTEST(window.geometry(), "wanted");
}

void TestTaviWidgetUtilRegistry::aRectangleIsRelativeToo()
{
    const Panel panel;
    QVERIFY(panel.isMinded());
    QWidget window;
    window.setGeometry(110, 220, 330, 240);
    QRect rect;
    TaviWidgetUtil::saveSizeToRect(&window, rect);
    QCOMPARE(rect, QRect(110, 180, 330, 240));
    QWidget again;
    TaviWidgetUtil::restoreSize(&again, rect, true, false);
    QCOMPARE(again.geometry(), window.geometry());
}

void TestTaviWidgetUtilRegistry::placesAreRelativeToWhatPanelsLeave()
{
    QWidget window;
    window.setGeometry(110, 220, 330, 240);
    TaviWidgetUtil::saveSizeToRegistry(&window, registry.get(), "window");
    const Panel panel;
    QVERIFY(panel.isMinded());
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, false);
    QCOMPARE(window.geometry(), QRect(110, 260, 330, 240));
    TaviWidgetUtil::saveSizeToRegistry(&window, registry.get(), "window");
    QCOMPARE(stored("window"), (Stored{{110, 220, 330, 240}, 0}));
    // The height is cut to the free 1160.
    TaviWidgetUtil::restoreSize(&window, 0, 100, 400, 2000, true, false, 0);
    QCOMPARE(window.geometry(), QRect(0, 140, 400, 1061));
}

void TestTaviWidgetUtilRegistry::aWindowComesBackToTheSecondScreen()
{
    TAVI_NEED_TWO_SCREENS();
    const QRect client(1910, 220, 430, 340);
    {
        QWidget window;
        window.setGeometry(client);
        QVERIFY(showWithFrame(window));
        TaviWidgetUtil::saveSizeToRegistry(&window, registry.get(), "window");
    }
    QCOMPARE(stored("window"), (Stored{{310, 220, 430, 340}, 1}));
    QWidget window;
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, false);
    QCOMPARE(window.geometry(), client);
    QVERIFY(showWithFrame(window));
    QCOMPARE(window.geometry(), client);
    QTRY_COMPARE(window.windowHandle()->screen(), TaviScreens::screen(1));
}

void TestTaviWidgetUtilRegistry::aRectangleComesBackToTheFirstScreen()
{
    TAVI_NEED_TWO_SCREENS();
    QWidget window;
    window.setGeometry(1910, 220, 430, 340);
    QRect rect;
    TaviWidgetUtil::saveSizeToRect(&window, rect);
    QCOMPARE(rect, QRect(310, 220, 430, 340));
    TaviWidgetUtil::restoreSize(&window, rect, true, false);
    QCOMPARE(window.geometry(), QRect(310, 220, 430, 340));
}

void TestTaviWidgetUtilRegistry::withoutAScreenKeyItIsTheFirstScreen()
{
    TAVI_NEED_TWO_SCREENS();
    QWidget window;
    window.setGeometry(1910, 220, 430, 340);
    TaviWidgetUtil::saveSizeToRegistry(&window, registry.get(), "window");
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", "WinX", "WinY", "WinWidth",
                                            "WinHeight", true, false, nullptr);
    QCOMPARE(window.geometry(), QRect(310, 220, 430, 340));
}

void TestTaviWidgetUtilRegistry::aHiddenWindowIsStoredByItsGeometry()
{
    TAVI_NEED_TWO_SCREENS();
    QWidget window;
    window.setGeometry(1500, 220, 430, 340); // most of it on the second: x is to the left of that
    TaviWidgetUtil::saveSizeToRegistry(&window, registry.get(), "window");
    QCOMPARE(stored("window"), (Stored{{-100, 220, 430, 340}, 1}));
    // Off its screen, it comes back at the edge.
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, false);
    QCOMPARE(window.geometry(), QRect(1600, 220, 430, 340));
}

void TestTaviWidgetUtilRegistry::aScreenThatDoesNotExistMeansThePrimaryOne()
{
    for (const int screen : {-1, TaviScreens::count(), INT_MAX}) {
        store("window", {{310, 220, 430, 340}, screen});
        QWidget window;
        TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, false);
        QCOMPARE(window.geometry(), QRect(310, 220, 430, 340));
    }
}

void TestTaviWidgetUtilRegistry::aWindowOfTheSecondScreenIsRestoredWithOne()
{
    store("window", {{1200, 900, 430, 340}, 1});
    const UnpluggedScreen unplugged;
    QVERIFY(unplugged.isUnplugged());
    QWidget window;
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, true);
    // At the same place of the primary screen, and cut to its height.
    QCOMPARE(window.geometry(), QRect(1200, 900, 430, 301));
    QVERIFY(showWithFrame(window));
    QCOMPARE(TaviScreens::screenNumber(&window), 0);
}

void TestTaviWidgetUtilRegistry::aScreenMayGoAndComeBackBetweenSaveAndRestore()
{
    TAVI_NEED_TWO_SCREENS();
    const QRect client(1910, 220, 430, 340);
    QWidget window;
    window.setGeometry(client);
    QVERIFY(showWithFrame(window));
    TaviWidgetUtil::saveSizeToRegistry(&window, registry.get(), "window");
    QCOMPARE(stored("window").screen, 1);

    UnpluggedScreen unplugged;
    QVERIFY(unplugged.isUnplugged());
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, false);
    QCOMPARE(window.geometry(), QRect(310, 220, 430, 340));
    QTRY_COMPARE(window.windowHandle()->geometry(), QRect(310, 220, 430, 340));
    QCOMPARE(TaviScreens::screenNumber(&window), 0);

    QVERIFY(unplugged.plugIn());
    TaviWidgetUtil::restoreSizeFromRegistry(&window, registry.get(), "window", true, false);
    QCOMPARE(window.geometry(), client);
    QTRY_COMPARE(window.windowHandle()->geometry(), client);
    QTRY_COMPARE(window.windowHandle()->screen(), TaviScreens::screen(1));
}

void TestTaviWidgetUtilRegistry::aDialogFollowsItsParent()
{
    TAVI_NEED_TWO_SCREENS();
    QWidget parent;
    parent.setGeometry(2000, 100, 600, 400);
    QVERIFY(showWithFrame(parent));
    store("dialog", {{100, 200, 300, 250}, 0});
    QDialog dialog(&parent);
    TaviWidgetUtil::restoreSizeFromRegistry(&dialog, registry.get(), "dialog", true, true);
    QCOMPARE(dialog.geometry(), QRect(1700, 200, 300, 250));
    QVERIFY(!dialog.isVisible());
    // A rectangle, too.
    TaviWidgetUtil::restoreSize(&dialog, QRect(150, 200, 300, 250), true, true);
    QCOMPARE(dialog.geometry(), QRect(1750, 200, 300, 250));
    // Where its place there would hardly show, it stands at the edge.
    TaviWidgetUtil::restoreSize(&dialog, 1300, 200, 300, 250, true, true, 0);
    QCOMPARE(dialog.geometry(), QRect(1600, 200, 300, 250));
    // One that is there already stays.
    TaviWidgetUtil::restoreSize(&dialog, 1270, 200, 300, 250, true, true, 1);
    QCOMPARE(dialog.geometry(), QRect(2870, 200, 300, 250));
}

void TestTaviWidgetUtilRegistry::aDialogMayStayWhereItWas()
{
    TAVI_NEED_TWO_SCREENS();
    QWidget parent;
    parent.setGeometry(2000, 100, 600, 400);
    QVERIFY(showWithFrame(parent));
    store("dialog", {{100, 200, 300, 250}, 0});
    QDialog dialog(&parent);
    TaviWidgetUtil::restoreSizeFromRegistry(&dialog, registry.get(), "dialog", true, false);
    QCOMPARE(dialog.geometry(), QRect(100, 200, 300, 250));
}

void TestTaviWidgetUtilRegistry::aDialogThatFollowedKeepsTheHeightOfTheScreenAskedFor()
{
    TAVI_NEED_TWO_SCREENS();
    QWidget on_second;
    on_second.setGeometry(2000, 100, 600, 400);
    QVERIFY(showWithFrame(on_second));
    QDialog dialog(&on_second);
    // It fits on the first, which is 1200 high, and keeps that on the second, which is 1024 high.
    TaviWidgetUtil::restoreSize(&dialog, 100, 0, 300, 1150, true, true, 0);
    QCOMPARE(dialog.geometry(), QRect(1700, 0, 300, 1150));

    QWidget on_first;
    on_first.setGeometry(200, 100, 600, 400);
    QVERIFY(showWithFrame(on_first));
    QDialog other(&on_first);
    TaviWidgetUtil::restoreSize(&other, 100, 0, 300, 1150, true, true, 1);
    QCOMPARE(other.geometry(), QRect(100, 0, 300, 1025));
}

void TestTaviWidgetUtilRegistry::aWindowWithoutAParentFollowsNobody()
{
    QWidget window;
    TaviWidgetUtil::restoreSize(&window, 100, 200, 300, 250, true, true, 0);
    QCOMPARE(window.geometry(), QRect(100, 200, 300, 250));
    QVERIFY(!window.isVisible());
}

void TestTaviWidgetUtilRegistry::withOneScreenNobodyFollows()
{
    const UnpluggedScreen unplugged;
    QVERIFY(unplugged.isUnplugged());
    QWidget parent;
    parent.setGeometry(5000, 100, 600, 400);
    QWidget window(&parent, Qt::Window);
    TaviWidgetUtil::restoreSize(&window, 100, 200, 300, 250, true, true, 0);
    QCOMPARE(window.geometry(), QRect(100, 200, 300, 250));
    QVERIFY(!window.isVisible() && !parent.isVisible());
}

TAVI_GUI_TEST_MAIN(TestTaviWidgetUtilRegistry)
#include "tst_taviwidgetutil_registry.moc"
