// SPDX-License-Identifier: MIT
#include "foundation/taviscreens.h"
#include "foundation/taviwidgetutil.h"
#include "tests/foundation/panel.h"
#include "tests/support/tavitest.h"
#include "tests/support/testdisplay.h"

#include <QDialog>
#include <QPointer>

#include <climits>

namespace {

/// A window that starts anew when it is shown: its dialog goes.
class DialogCloser : public QWidget
{
public:
    QPointer<QDialog> dialog;

protected:
    void showEvent(QShowEvent *) override { delete dialog; }
};

} // namespace

/// Centring windows and moving them between screens.
class TestTaviWidgetUtilPlacing : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void nullsAreTakenQuietly()
    {
        QWidget window;
        TaviWidgetUtil::centerPlaceWidget(nullptr, nullptr);
        TaviWidgetUtil::centerPlaceWidget(nullptr, &window);
        QVERIFY(!TaviWidgetUtil::moveToScreen(nullptr, 0));
        QVERIFY(!TaviWidgetUtil::moveToScreen(&window, nullptr));
        QVERIFY(!TaviWidgetUtil::moveToScreen(nullptr, &window));
        QVERIFY(!window.isVisible());
    }

    void aHiddenWindowIsCentredOnItsScreen()
    {
        QWidget window;
        window.setGeometry(10, 20, 400, 301);
        TaviWidgetUtil::centerPlaceWidget(&window, nullptr);
        QCOMPARE(window.geometry(), QRect(600, 449, 400, 301));
        QVERIFY(!window.isVisible());
    }

    void theWidgetsOwnScreenCounts()
    {
        TAVI_NEED_TWO_SCREENS();
        QWidget window;
        window.setGeometry(2500, 20, 400, 300);
        TaviWidgetUtil::centerPlaceWidget(&window, nullptr);
        QCOMPARE(window.pos(), QPoint(2040, 362));

        // Over a window of the other screen it goes to the edge of its own.
        QWidget parent;
        parent.setGeometry(100, 100, 400, 300);
        TaviWidgetUtil::centerPlaceWidget(&window, &parent);
        QCOMPARE(window.pos(), QPoint(1600, 100));
    }

    void aShownWindowIsCentredWithItsFrame()
    {
        QWidget window;
        window.setGeometry(10, 50, 400, 300);
        QVERIFY(showWithFrame(window));
        const QSize frame = window.frameSize();
        QVERIFY(frame.height() > 300);
        TaviWidgetUtil::centerPlaceWidget(&window, nullptr);
        const QPoint wanted((1600 - frame.width()) / 2, (1200 - frame.height()) / 2);
        QCOMPARE(window.pos(), wanted);
        QTRY_COMPARE(window.frameGeometry(), QRect(wanted, frame));
    }

    void aDialogIsCentredOverItsParentsFrame()
    {
        QWidget parent;
        parent.setGeometry(300, 300, 600, 400);
        QVERIFY(showWithFrame(parent));
        const QRect below = parent.frameGeometry();
        QVERIFY(below.height() > 400);
        QDialog dialog(&parent);
        dialog.setGeometry(0, 0, 200, 100);
        TaviWidgetUtil::centerPlaceWidget(&dialog, &parent);
        QCOMPARE(dialog.pos(), below.topLeft() + QPoint((below.width() - 200) / 2, (below.height() - 100) / 2));
    }

    void aDialogStaysOnTheScreen_data()
    {
        QTest::addColumn<QRect>("parent");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QPoint>("wanted");
        QTest::newRow("left and top") << QRect(0, 0, 100, 100) << QSize(400, 300) << QPoint(0, 0);
        QTest::newRow("bottom") << QRect(500, 1150, 400, 100) << QSize(400, 300) << QPoint(500, 900);
        QTest::newRow("higher than the screen") << QRect(500, 0, 400, 100) << QSize(400, 2000) << QPoint(500, 0);
        QTest::newRow("wider than the screen") << QRect(0, 500, 400, 300) << QSize(2000, 300) << QPoint(0, 500);
    }

    void aDialogStaysOnTheScreen()
    {
        QFETCH(QRect, parent);
        QFETCH(QSize, size);
        QWidget below;
        below.setGeometry(parent);
        QWidget window;
        window.setGeometry(QRect(QPoint(0, 0), size));
        TaviWidgetUtil::centerPlaceWidget(&window, &below);
        QTEST(window.pos(), "wanted");
    }

    /// The right edge of the last screen, which on two screens is that of the second.
    void theRightEdgeHasAMargin()
    {
        const QRect available = TaviScreens::availableGeometry(TaviScreens::count() - 1);
        for (const int past_margin : {0, 1}) {
            QWidget below;
            below.setGeometry(available.right() - 20 - 399 + past_margin, 100, 400, 300);
            QWidget window;
            window.setGeometry(below.geometry());
            TaviWidgetUtil::centerPlaceWidget(&window, &below);
            QCOMPARE(window.x(), past_margin ? available.right() - 400 : below.x());
        }
    }

    void panelsAreKeptFree()
    {
        const Panel panel;
        QVERIFY(panel.isMinded());
        QWidget window;
        window.setGeometry(10, 100, 400, 300);
        TaviWidgetUtil::centerPlaceWidget(&window, nullptr);
        QCOMPARE(window.pos(), QPoint(600, 40 + (1160 - 300) / 2));
        QWidget at_top;
        at_top.setGeometry(600, 0, 400, 100);
        TaviWidgetUtil::centerPlaceWidget(&window, &at_top);
        QCOMPARE(window.pos(), QPoint(600, 40));
    }

    void aWindowMovesToTheSamePlaceOfAnotherScreen()
    {
        TAVI_NEED_TWO_SCREENS();
        QWidget window;
        window.setGeometry(100, 200, 400, 300);
        QVERIFY(showWithFrame(window));
        const QRect frame = window.frameGeometry();
        QVERIFY(TaviWidgetUtil::moveToScreen(&window, 1));
        QCOMPARE(window.frameGeometry(), frame.translated(1600, 0));
        QCOMPARE(TaviScreens::screenNumber(&window), 1);
        QTRY_COMPARE(window.windowHandle()->screen(), TaviScreens::screen(1));
        QTRY_COMPARE(window.frameGeometry(), frame.translated(1600, 0));
        QVERIFY(TaviWidgetUtil::moveToScreen(&window, 0));
        QTRY_COMPARE(window.frameGeometry(), frame);
    }

    void aWindowThatIsThereDoesNotMove()
    {
        TAVI_NEED_TWO_SCREENS();
        QWidget window;
        window.setGeometry(100, 200, 400, 300);
        QVERIFY(showWithFrame(window));
        const QPoint position = window.pos();
        QVERIFY(!TaviWidgetUtil::moveToScreen(&window, 0));
        QCOMPARE(window.pos(), position);
    }

    void aScreenThatDoesNotExistMovesNothing_data()
    {
        QTest::addColumn<int>("screen");
        QTest::newRow("-1") << -1;
        QTest::newRow("the number of screens") << TaviScreens::count();
        QTest::newRow("the largest number") << INT_MAX;
    }

    void aScreenThatDoesNotExistMovesNothing()
    {
        QFETCH(int, screen);
        QWidget window;
        window.setGeometry(100, 200, 400, 300);
        QVERIFY(!TaviWidgetUtil::moveToScreen(&window, screen));
        QCOMPARE(window.geometry(), QRect(100, 200, 400, 300));
        QVERIFY(!window.isVisible());
    }

    void aHiddenWindowIsShownAndAHiddenDialogIsNot()
    {
        TAVI_NEED_TWO_SCREENS();
        QWidget window;
        window.setGeometry(100, 200, 400, 300);
        QVERIFY(TaviWidgetUtil::moveToScreen(&window, 1));
        QVERIFY(window.isVisible());
        QTRY_COMPARE(TaviScreens::screenNumber(&window), 1);

        QDialog dialog;
        dialog.setGeometry(100, 200, 400, 300);
        QVERIFY(TaviWidgetUtil::moveToScreen(&dialog, 1));
        QVERIFY(!dialog.isVisible());
        QCOMPARE(dialog.pos(), QPoint(1700, 200));
    }

    /// Shown first and asked for its screen then: where it is, is not known for sure before.
    void aHiddenWindowOfThatScreenIsShownAllTheSame()
    {
        TAVI_NEED_TWO_SCREENS();
        QWidget window;
        window.setGeometry(2000, 200, 400, 300);
        QVERIFY(!TaviWidgetUtil::moveToScreen(&window, 1));
        QVERIFY(window.isVisible());
    }

    void aCornerThatWouldHardlyShowGoesToTheEdge_data()
    {
        QTest::addColumn<QPoint>("position");
        QTest::addColumn<QPoint>("wanted");
        QTest::newRow("20 pixels show") << QPoint(1260, 1004) << QPoint(2860, 1004);
        QTest::newRow("19 pixels show") << QPoint(1261, 1005) << QPoint(1600, 0);
        QTest::newRow("beyond the left edge") << QPoint(-10, 100) << QPoint(1600, 100);
        QTest::newRow("above") << QPoint(100, -10) << QPoint(1700, 0);
    }

    void aCornerThatWouldHardlyShowGoesToTheEdge()
    {
        TAVI_NEED_TWO_SCREENS();
        QFETCH(QPoint, position);
        QDialog dialog;
        dialog.setGeometry(QRect(position, QSize(200, 150)));
        QVERIFY(TaviWidgetUtil::moveToScreen(&dialog, 1));
        QTEST(dialog.pos(), "wanted");
    }

    void availableAreasAreWhatPlacesAreRelativeTo()
    {
        TAVI_NEED_TWO_SCREENS();
        const Panel panel;
        QVERIFY(panel.isMinded());
        QDialog dialog;
        dialog.setGeometry(100, 30, 200, 150); // below the panel
        QVERIFY(TaviWidgetUtil::moveToScreen(&dialog, 1));
        QCOMPARE(dialog.pos(), QPoint(1700, 40));
    }

    void aDialogMovesToItsParent()
    {
        TAVI_NEED_TWO_SCREENS();
        QDialog parent;
        parent.setGeometry(2000, 100, 600, 400);
        QDialog dialog(&parent);
        dialog.setGeometry(100, 200, 300, 200);
        QVERIFY(TaviWidgetUtil::moveToScreen(&dialog, &parent));
        QCOMPARE(dialog.pos(), QPoint(1700, 200));
        QVERIFY(!parent.isVisible());
        QVERIFY(!TaviWidgetUtil::moveToScreen(&dialog, &parent));
    }

    void aHiddenParentIsShown()
    {
        TAVI_NEED_TWO_SCREENS();
        QWidget parent;
        parent.setGeometry(2000, 100, 600, 400);
        QDialog dialog(&parent);
        dialog.setGeometry(100, 200, 300, 200);
        QVERIFY(TaviWidgetUtil::moveToScreen(&dialog, &parent));
        QVERIFY(parent.isVisible());
        QVERIFY(!dialog.isVisible());
    }

    void aDialogMayGoWhenItsParentIsShown()
    {
        TAVI_NEED_TWO_SCREENS();
        DialogCloser parent;
        parent.setGeometry(2000, 100, 600, 400);
        parent.dialog = new QDialog(&parent);
        QVERIFY(!TaviWidgetUtil::moveToScreen(parent.dialog, &parent));
        QVERIFY(parent.isVisible() && !parent.dialog);
        parent.hide();
        parent.dialog = new QDialog(&parent);
        TaviWidgetUtil::restoreSize(parent.dialog, 100, 200, 300, 200, true, true, 0);
        QVERIFY(parent.isVisible() && !parent.dialog);
    }

    void withOneScreenNothingMoves()
    {
        const UnpluggedScreen unplugged;
        QVERIFY(unplugged.isUnplugged());
        QWidget parent;
        parent.setGeometry(700, 100, 600, 400);
        QWidget window(&parent, Qt::Window);
        window.setGeometry(100, 200, 300, 200);
        for (const int screen : {0, 1})
            QVERIFY(!TaviWidgetUtil::moveToScreen(&window, screen));
        QVERIFY(!TaviWidgetUtil::moveToScreen(&window, &parent));
        QCOMPARE(window.geometry(), QRect(100, 200, 300, 200));
        QVERIFY(!window.isVisible() && !parent.isVisible());
    }
};

TAVI_GUI_TEST_MAIN(TestTaviWidgetUtilPlacing)
#include "tst_taviwidgetutil_placing.moc"
