// SPDX-License-Identifier: MIT
#include "instruments/displaydevice.h"
#include "tests/support/tavitest.h"

#include <QScreen>
#include <QWidget>

/// On a platform without display services.
class TestDisplayDeviceNoDisplay : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void thePlatformHasScreensButNoServices()
    {
        QCOMPARE(QGuiApplication::platformName(), QStringLiteral("offscreen"));
        QVERIFY(!QGuiApplication::screens().isEmpty());
    }

    void resetsFailAndSayWhy()
    {
        QWidget widget;
        expectLog("displaydevice: resetDisplayToNativeSettings: Cannot get display id");
        QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, false), -1);
        expectLog("displaydevice: resetDisplayToDefaultSettings: Cannot get display id", 2);
        QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget, false), -1);
        QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(false), -1);
        QCOMPARE(recorder().kinds(), (QVector<int>{2, 2, 2}));
    }

    void closedToChangesTheyDoNothing()
    {
        QWidget widget;
        DisplayDevice::disableChanges();
        QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, false), 0);
        QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget, false), 0);
        expectLog("displaydevice: resetDisplayToNativeSettings: Cannot get display id");
        QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, true), -1);
        DisplayDevice::enableChanges();
    }

    void theSizeIsKnownTheResolutionIsNot()
    {
        QWidget widget;
        int width = -1;
        int height = -1;
        double dpi_x = -1.0;
        double dpi_y = -1.0;
        expectLog("displaydevice: displaySize: Cannot get display id");
        QCOMPARE(DisplayDevice::displaySize(&widget, width, height, dpi_x, dpi_y, false), -1);
        QCOMPARE(QSize(width, height), QGuiApplication::primaryScreen()->size());
        QCOMPARE(dpi_x, 72.0);
        QCOMPARE(dpi_y, 72.0);
        QCOMPARE(recorder().kinds(), QVector<int>{2});
    }

    void aCustomResolutionNeedsNoServices()
    {
        DisplayDevice::setCustomDPI(0, 110.0, 120.0);
        int width = -1;
        int height = -1;
        double dpi_x = -1.0;
        double dpi_y = -1.0;
        QCOMPARE(DisplayDevice::displaySize(0, width, height, dpi_x, dpi_y, true), 0);
        QCOMPARE(dpi_x, 110.0);
        QCOMPARE(dpi_y, 120.0);
        DisplayDevice::setCustomDPI(0, 0.0, 0.0);
    }
};

TAVI_GUI_TEST_MAIN(TestDisplayDeviceNoDisplay)
#include "tst_displaydevice_nodisplay.moc"
