// SPDX-License-Identifier: MIT
#include "foundation/taviscreens.h"
#include "tests/foundation/panel.h"
#include "tests/support/tavitest.h"
#include "tests/support/testdisplay.h"

#include <QScreen>

#include <climits>

class TestTaviScreens : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void numbersAreThoseOfTheApplication()
    {
        const QList<QScreen *> screens = QGuiApplication::screens();
        QVERIFY(!screens.isEmpty());
        QCOMPARE(TaviScreens::count(), screens.size());
        for (int i = 0; i < screens.size(); ++i) {
            QCOMPARE(TaviScreens::screen(i), screens[i]);
            QCOMPARE(TaviScreens::availableGeometry(i), screens[i]->availableGeometry());
        }
    }

    void aNumberThatDoesNotExistMeansThePrimaryScreen()
    {
        for (const int number : {-1, TaviScreens::count(), 1000, INT_MAX, INT_MIN}) {
            QCOMPARE(TaviScreens::screen(number), QGuiApplication::primaryScreen());
            QCOMPARE(TaviScreens::availableGeometry(number), QGuiApplication::primaryScreen()->availableGeometry());
        }
    }

    void availableIsWhatPanelsLeave()
    {
        const QRect before = TaviScreens::availableGeometry(0);
        {
            const Panel panel;
            QVERIFY(panel.isMinded());
            QCOMPARE(TaviScreens::availableGeometry(0), QRect(0, 40, 1600, 1160));
            if (hasTwoScreens())
                QCOMPARE(TaviScreens::availableGeometry(1), QRect(1600, 40, 1280, 984));
        }
        QCOMPARE(TaviScreens::availableGeometry(0), before);
    }

    void noWidgetMeansThePrimaryScreen() { QCOMPARE(TaviScreens::screenNumber(nullptr), 0); }

    void aHiddenWidgetHasTheScreenOfItsGeometry_data()
    {
        QTest::addColumn<QRect>("geometry");
        QTest::addColumn<int>("number");
        QTest::newRow("on the first") << QRect(100, 100, 400, 300) << 0;
        QTest::newRow("on the second") << QRect(2000, 100, 400, 300) << 1;
        QTest::newRow("most of it on the second") << QRect(1450, 100, 400, 300) << 1;
        QTest::newRow("off to the left") << QRect(-5000, 100, 400, 300) << 0;
        QTest::newRow("off to the right") << QRect(5000, 100, 400, 300) << 1;
        QTest::newRow("below the second") << QRect(2000, 1150, 400, 300) << 1;
    }

    void aHiddenWidgetHasTheScreenOfItsGeometry()
    {
        TAVI_NEED_TWO_SCREENS();
        QFETCH(QRect, geometry);
        QWidget widget;
        widget.setGeometry(geometry);
        QTEST(TaviScreens::screenNumber(&widget), "number");
        // The same when the window system knows of it, but has not been asked to show it.
        widget.winId();
        QTEST(TaviScreens::screenNumber(&widget), "number");
        QVERIFY(!widget.isVisible());
    }

    void aWidgetThatWasNeverPlacedIsOnTheFirstScreen()
    {
        const QWidget widget;
        QCOMPARE(TaviScreens::screenNumber(&widget), 0);
    }

    void partOfAWindowHasAScreenOfItsOwn_data()
    {
        QTest::addColumn<bool>("shown");
        QTest::newRow("hidden") << false;
        QTest::newRow("shown") << true;
    }

    void partOfAWindowHasAScreenOfItsOwn()
    {
        TAVI_NEED_TWO_SCREENS();
        QFETCH(bool, shown);
        QWidget window;
        window.setGeometry(1200, 100, 1000, 300); // 600 pixels on the second
        QWidget left(&window);
        left.setGeometry(0, 0, 300, 300);
        QWidget inner(&left);
        inner.setGeometry(10, 10, 50, 50);
        QWidget right(&window);
        right.setGeometry(700, 0, 300, 300);
        if (shown)
            QVERIFY(showWithFrame(window));
        QCOMPARE(TaviScreens::screenNumber(&window), 1);
        QCOMPARE(TaviScreens::screenNumber(&left), 0);
        QCOMPARE(TaviScreens::screenNumber(&inner), 0);
        QCOMPARE(TaviScreens::screenNumber(&right), 1);
    }

    void aMoveCountsAtOnce()
    {
        TAVI_NEED_TWO_SCREENS();
        QWidget window;
        window.setGeometry(100, 100, 400, 300);
        QVERIFY(showWithFrame(window));
        QCOMPARE(TaviScreens::screenNumber(&window), 0);
        window.move(2000, 100);
        QCOMPARE(TaviScreens::screenNumber(&window), 1);
        QTRY_COMPARE(window.windowHandle()->screen(), TaviScreens::screen(1));
        QCOMPARE(TaviScreens::screenNumber(&window), 1);
    }

    /// A narrow strip of the client is on the first screen, the rest lies below the second, which the title bar is
    /// on.
    void theFrameCounts()
    {
        TAVI_NEED_TWO_SCREENS();
        QWidget window;
        window.setGeometry(1595, 1024, 300, 50);
        QCOMPARE(TaviScreens::screenNumber(&window), 0);
        QVERIFY(showWithFrame(window));
        QCOMPARE(window.geometry(), QRect(1595, 1024, 300, 50));
        QCOMPARE(TaviScreens::screenNumber(&window), 1);
    }

    void anUnpluggedScreenHasNoNumber()
    {
        TAVI_NEED_TWO_SCREENS();
        QWidget widget;
        widget.setGeometry(2000, 100, 400, 300);
        QCOMPARE(TaviScreens::screenNumber(&widget), 1);
        UnpluggedScreen unplugged;
        QVERIFY(unplugged.isUnplugged());
        QCOMPARE(TaviScreens::count(), 1);
        QCOMPARE(TaviScreens::screenNumber(&widget), 0);
        QCOMPARE(TaviScreens::availableGeometry(1), TaviScreens::availableGeometry(0));
        QVERIFY(unplugged.plugIn());
        QCOMPARE(TaviScreens::count(), 2);
        QCOMPARE(TaviScreens::screenNumber(&widget), 1);
        QCOMPARE(TaviScreens::availableGeometry(1), QRect(1600, 0, 1280, 1024));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviScreens)
#include "tst_taviscreens.moc"
