// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/support/testdisplay.h"

#include <QLineEdit>
#include <QScreen>
#include <QStyle>

/// What script/with-display promises to the tests that run inside.
class TestTestDisplay : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void twoScreensStandSideBySide();
    void theFirstScreenIsPrimary();
    void aShownWindowBecomesActive();
    void aClosedWindowHandsActivationBack();
    void typedKeysReachTheFocusWidget();
    void fontsAndScaleArePinned();
};

void TestTestDisplay::twoScreensStandSideBySide()
{
    TAVI_NEED_TWO_SCREENS();
    const QList<QScreen *> screens = QGuiApplication::screens();
    QCOMPARE(screens.size(), 2);
    QCOMPARE(screens[0]->geometry(), QRect(0, 0, 1600, 1200));
    QCOMPARE(screens[1]->geometry(), QRect(1600, 0, 1280, 1024));
}

void TestTestDisplay::theFirstScreenIsPrimary()
{
    QVERIFY(!QGuiApplication::screens().isEmpty());
    QCOMPARE(QGuiApplication::primaryScreen(), QGuiApplication::screens().constFirst());
}

void TestTestDisplay::aShownWindowBecomesActive()
{
    QWidget window;
    window.resize(200, 100);
    window.show();
    QVERIFY(QTest::qWaitForWindowActive(&window));
    QCOMPARE(QApplication::activeWindow(), &window);
    // A frame around it: only a window manager draws one.
    QTRY_VERIFY(window.frameGeometry().height() > window.geometry().height());
}

void TestTestDisplay::aClosedWindowHandsActivationBack()
{
    QWidget first;
    first.show();
    QVERIFY(QTest::qWaitForWindowActive(&first));
    {
        QWidget second;
        second.show();
        QVERIFY(QTest::qWaitForWindowActive(&second));
        QVERIFY(!first.isActiveWindow());
    }
    QTRY_VERIFY(first.isActiveWindow());
}

void TestTestDisplay::typedKeysReachTheFocusWidget()
{
    QLineEdit edit;
    edit.show();
    QVERIFY(QTest::qWaitForWindowActive(&edit));
    QTRY_VERIFY(edit.hasFocus());
    QTest::keyClicks(&edit, QStringLiteral("Lab"));
    QCOMPARE(edit.text(), QStringLiteral("Lab"));
}

void TestTestDisplay::fontsAndScaleArePinned()
{
    if (!qEnvironmentVariableIsSet("TAVI_DISPLAY_SCREENS"))
        QSKIP("not run under script/with-display: fonts and scale are this desktop's");
    QCOMPARE(QFontInfo(QApplication::font()).family(), QStringLiteral("DejaVu Sans"));
    QCOMPARE(QGuiApplication::primaryScreen()->logicalDotsPerInch(), 96.0);
    QCOMPARE(qApp->devicePixelRatio(), 1.0);
    QCOMPARE(QApplication::style()->objectName(), QStringLiteral("fusion"));
}

TAVI_GUI_TEST_MAIN(TestTestDisplay)
#include "tst_testdisplay.moc"
