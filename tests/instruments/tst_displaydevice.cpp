// SPDX-License-Identifier: MIT
#include "foundation/taviscreens.h"
#include "instruments/displaydevice.h"
#include "tests/instruments/cardtables.h"
#include "tests/support/tavitest.h"
#include "tests/support/testdisplay.h"

#include <QScreen>
#include <QWidget>

#include <climits>
#include <limits>
#include <type_traits>
#include <utility>

namespace {

const char *const outputs[] = {"DUMMY0", "DUMMY1"};

QScreen *screenOf(const char *output)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (QScreen *screen : screens)
        if (screen->name() == QLatin1String(output))
            return screen;
    return nullptr;
}

/// A widget, never shown, where only the screen of this output is.
class WidgetOn : public QWidget
{
public:
    explicit WidgetOn(const char *output)
    {
        const QScreen *screen = screenOf(output);
        const QRect area = screen->geometry();
        for (const QPoint &corner : {area.topLeft(), area.topRight() - QPoint(99, 0)}) {
            setGeometry(QRect(corner, QSize(100, 100)));
            if (TaviScreens::screen(TaviScreens::screenNumber(this)) == screen)
                return;
        }
        qWarning("no place is on the screen of %s alone", output);
    }
};

struct Size {
    int result = 1;
    int width = -1;
    int height = -1;
    double dpi_x = -1.0;
    double dpi_y = -1.0;

    QSize pixels() const { return {width, height}; }
};

template <typename Screen>
Size sizeOf(Screen screen, bool use_custom = false)
{
    Size size;
    size.result = DisplayDevice::displaySize(screen, size.width, size.height, size.dpi_x, size.dpi_y, use_custom);
    return size;
}

QString physical(int width, int height)
{
    return QStringLiteral("--output DUMMY1 --set WIDTH_MM %1\n"
                          "xrandr --output DUMMY1 --set HEIGHT_MM %2\n"
                          "xrandr --query >/dev/null")
        .arg(width)
        .arg(height);
}

/// Lets the second monitor report a physical size.
class PhysicalSize : public ChangedDisplay
{
public:
    PhysicalSize(int width, int height) : ChangedDisplay(physical(width, height), physical(0, 0)) {}
};

/// Whether a reset takes this argument alone.
template <typename Argument, typename = void>
constexpr bool resets_by = false;
template <typename Argument>
constexpr bool resets_by<
    Argument, std::void_t<decltype(DisplayDevice::resetDisplayToNativeSettings(std::declval<Argument>())),
                          decltype(DisplayDevice::resetDisplayToDefaultSettings(std::declval<Argument>()))>> = true;

} // namespace

/// On the two monitors of the test display; each has a table of its own when a test begins.
class TestDisplayDevice : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanupTestCase() { keeper_.reset(); }

    // First: afterwards there are saved tables.
    void restoringBeforeAnyResetLeavesTheDisplayAlone();
    void anUnpluggedMonitorGetsItsTableLater();

    void aNeutralTableIsAStraightLine_data() { bothOutputs(); }
    void aNeutralTableIsAStraightLine();
    void restoringGivesTheCardItsOwnTable_data() { bothOutputs(); }
    void restoringGivesTheCardItsOwnTable();
    void aSecondResetKeepsTheFirstTable();
    void theSavedTableIsThereAgainAndAgain();
    void twoMonitorsKeepApart();
    void monitorsThatChangePlacesKeepTheirTables();
    void withChangesDisabledResetsDoNothing();
    void forcedResetsPassTheGate();
    void changesAreAllowedAtTheStartAndByTheGate();
    void withoutAWidgetNeutralIsNothing();
    void withoutAWidgetThePrimaryMonitorIsRestored();
    void noWidgetStandsForThePrimaryMonitor();
    void aWidgetAloneIsNoForce();
    void theNativeGammaIsFixed();
    void monitorsHaveTables() { QVERIFY(DisplayDevice::hasVCGTSupport()); }

    void withoutAPhysicalSizeTheResolutionIs72();
    void theResolutionIsMeasuredOnce();
    void onePhysicalSideAloneIsNone_data();
    void onePhysicalSideAloneIsNone();
    void aWidgetsScreenIsMeasured();
    void anotherModeIsMeasuredAgain();
    void anotherMonitorIsMeasuredAgain();
    void aCustomResolutionIsUsedWhenAskedFor();
    void aCustomResolutionThatIsNoneIsNotUsed_data();
    void aCustomResolutionThatIsNoneIsNotUsed();
    void aCustomResolutionNeedsNoHeight_data();
    void aCustomResolutionNeedsNoHeight();
    void eachOfFourScreensHasACustomResolution();
    void otherNumbersCountAsTheFirst_data();
    void otherNumbersCountAsTheFirst();
    void numbersWithoutAScreenStandForThePrimaryOne();

private:
    static void bothOutputs();

    const CardTables::Table own_[2] = {CardTables::curves(256, 1.8), CardTables::curves(256, 0.6)};
    const CardTables::Table other_ = CardTables::curves(256, 1.1);
    const CardTables::Table straight_ = CardTables::straight(256);
    std::unique_ptr<CardTables::Keeper> keeper_;
};

void TestDisplayDevice::initTestCase()
{
    TAVI_NEED_TWO_SCREENS();
    keeper_ = std::make_unique<CardTables::Keeper>();
    QCOMPARE(CardTables::read("DUMMY0")[0].size(), std::size_t(256));
}

void TestDisplayDevice::init()
{
    TaviTest::init();
    for (int at = 0; at < 2; ++at)
        CardTables::write(outputs[at], own_[at]);
    DisplayDevice::enableChanges();
}

void TestDisplayDevice::bothOutputs()
{
    QTest::addColumn<int>("at");
    QTest::newRow("first") << 0;
    QTest::newRow("second") << 1;
}

void TestDisplayDevice::restoringBeforeAnyResetLeavesTheDisplayAlone()
{
    WidgetOn widget("DUMMY0");
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget, false), 0);
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget, true), 0);
    QVERIFY(CardTables::read("DUMMY0") == own_[0]);
    QVERIFY(CardTables::read("DUMMY1") == own_[1]);
}

void TestDisplayDevice::anUnpluggedMonitorGetsItsTableLater()
{
    WidgetOn widget("DUMMY1");
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, false), 0);
    {
        const UnpluggedScreen unplugged;
        QVERIFY(unplugged.isUnplugged());
        // The widget is on the first monitor now, which was not reset.
        QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget, false), 0);
        QVERIFY(CardTables::read("DUMMY0") == own_[0]);
        QVERIFY(CardTables::read("DUMMY1")[0].empty());
    }
    CardTables::write("DUMMY1", other_); // whatever it wakes up with
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget, false), 0);
    QVERIFY(CardTables::read("DUMMY0") == own_[0]);
    QVERIFY(CardTables::read("DUMMY1") == own_[1]);
}

void TestDisplayDevice::aNeutralTableIsAStraightLine()
{
    QFETCH(int, at);
    WidgetOn widget(outputs[at]);
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, false), 0);
    QVERIFY(CardTables::read(outputs[at]) == straight_);
    QVERIFY(CardTables::read(outputs[1 - at]) == own_[1 - at]);
}

void TestDisplayDevice::restoringGivesTheCardItsOwnTable()
{
    QFETCH(int, at);
    WidgetOn widget(outputs[at]);
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, false), 0);
    CardTables::write(outputs[1 - at], other_);
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget, false), 0);
    QVERIFY(CardTables::read(outputs[at]) == own_[at]);
    QVERIFY(CardTables::read(outputs[1 - at]) == other_);
}

void TestDisplayDevice::aSecondResetKeepsTheFirstTable()
{
    WidgetOn widget("DUMMY0");
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, false), 0);
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, false), 0);
    CardTables::write("DUMMY0", other_);
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, false), 0);
    QVERIFY(CardTables::read("DUMMY0") == straight_);
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget, false), 0);
    QVERIFY(CardTables::read("DUMMY0") == own_[0]);
}

void TestDisplayDevice::theSavedTableIsThereAgainAndAgain()
{
    WidgetOn widget("DUMMY0");
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, false), 0);
    for (int round = 0; round < 3; ++round) {
        CardTables::write("DUMMY0", other_);
        QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget, false), 0);
        QVERIFY(CardTables::read("DUMMY0") == own_[0]);
    }
}

void TestDisplayDevice::twoMonitorsKeepApart()
{
    WidgetOn first("DUMMY0");
    WidgetOn second("DUMMY1");
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&first, false), 0);
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&second, false), 0);
    QVERIFY(CardTables::read("DUMMY0") == straight_);
    QVERIFY(CardTables::read("DUMMY1") == straight_);
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&first, false), 0);
    QVERIFY(CardTables::read("DUMMY0") == own_[0]);
    QVERIFY(CardTables::read("DUMMY1") == straight_);
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&second, false), 0);
    QVERIFY(CardTables::read("DUMMY0") == own_[0]);
    QVERIFY(CardTables::read("DUMMY1") == own_[1]);
}

void TestDisplayDevice::monitorsThatChangePlacesKeepTheirTables()
{
    WidgetOn right("DUMMY1");
    WidgetOn left("DUMMY0");
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&right, false), 0);
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&left, false), 0);
    {
        const ChangedDisplay swapped(QStringLiteral("--output DUMMY1 --pos 0x0 --output DUMMY0 --pos 1280x0"),
                                     QStringLiteral("--output DUMMY0 --pos 0x0 --output DUMMY1 --pos 1600x0"));
        QTRY_COMPARE(screenOf("DUMMY0")->geometry().topLeft(), QPoint(1280, 0));
        QTRY_COMPARE(screenOf("DUMMY1")->geometry().topLeft(), QPoint(0, 0));
        WidgetOn left_now("DUMMY1");
        QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&left_now, false), 0);
        QVERIFY(CardTables::read("DUMMY0") == straight_);
        QVERIFY(CardTables::read("DUMMY1") == own_[1]);
        WidgetOn right_now("DUMMY0");
        QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&right_now, false), 0);
        QVERIFY(CardTables::read("DUMMY0") == own_[0]);
    }
    QTRY_COMPARE(screenOf("DUMMY0")->geometry().topLeft(), QPoint(0, 0));
    QTRY_COMPARE(screenOf("DUMMY1")->geometry().topLeft(), QPoint(1600, 0));
}

void TestDisplayDevice::withChangesDisabledResetsDoNothing()
{
    WidgetOn widget("DUMMY0");
    DisplayDevice::disableChanges();
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, false), 0);
    QVERIFY(CardTables::read("DUMMY0") == own_[0]);
    DisplayDevice::enableChanges();
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, false), 0);
    DisplayDevice::disableChanges();
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget, false), 0);
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(false), 0);
    QVERIFY(CardTables::read("DUMMY0") == straight_);
}

void TestDisplayDevice::forcedResetsPassTheGate()
{
    WidgetOn widget("DUMMY0");
    DisplayDevice::disableChanges();
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, true), 0);
    QVERIFY(CardTables::read("DUMMY0") == straight_);
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget, true), 0);
    QVERIFY(CardTables::read("DUMMY0") == own_[0]);
    QVERIFY(!DisplayDevice::changesAllowed(false));
}

void TestDisplayDevice::changesAreAllowedAtTheStartAndByTheGate()
{
    DisplayDevice::disableChanges();
    QVERIFY(!DisplayDevice::changesAllowed(false));
    QVERIFY(DisplayDevice::changesAllowed(true));
    DisplayDevice::enableChanges();
    QVERIFY(DisplayDevice::changesAllowed(false));
    QVERIFY(DisplayDevice::changesAllowed(true));
}

void TestDisplayDevice::withoutAWidgetNeutralIsNothing()
{
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(false), 0);
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(true), 0);
    QVERIFY(CardTables::read("DUMMY0") == own_[0]);
    QVERIFY(CardTables::read("DUMMY1") == own_[1]);
}

void TestDisplayDevice::withoutAWidgetThePrimaryMonitorIsRestored()
{
    WidgetOn first("DUMMY0");
    WidgetOn second("DUMMY1");
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&first, false), 0);
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&second, false), 0);
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(false), 0);
    QVERIFY(CardTables::read("DUMMY0") == own_[0]);
    QVERIFY(CardTables::read("DUMMY1") == straight_);
    CardTables::write("DUMMY0", other_);
    DisplayDevice::disableChanges();
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(true), 0);
    QVERIFY(CardTables::read("DUMMY0") == own_[0]);
}

void TestDisplayDevice::noWidgetStandsForThePrimaryMonitor()
{
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(nullptr, false), 0);
    QVERIFY(CardTables::read("DUMMY0") == straight_);
    QVERIFY(CardTables::read("DUMMY1") == own_[1]);
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(nullptr, false), 0);
    QVERIFY(CardTables::read("DUMMY0") == own_[0]);
}

void TestDisplayDevice::aWidgetAloneIsNoForce()
{
    QVERIFY(resets_by<bool>);
    QVERIFY(!resets_by<QWidget *>);
    QVERIFY(!resets_by<const QWidget *>);
    QVERIFY(!resets_by<std::nullptr_t>);
}

void TestDisplayDevice::theNativeGammaIsFixed()
{
    const WidgetOn widget("DUMMY1");
    for (const QWidget *any : {static_cast<const QWidget *>(&widget), static_cast<const QWidget *>(nullptr)}) {
        double r = 0.0;
        double g = 0.0;
        double b = 0.0;
        QCOMPARE(DisplayDevice::nativeGamma(any, r, g, b), 0);
        QCOMPARE(r, 1.801);
        QCOMPARE(g, 1.801);
        QCOMPARE(b, 1.801);
    }
}

void TestDisplayDevice::withoutAPhysicalSizeTheResolutionIs72()
{
    const Size size = sizeOf(0);
    QCOMPARE(size.result, -1);
    QCOMPARE(size.pixels(), screenOf("DUMMY0")->size());
    QCOMPARE(size.dpi_x, 72.0);
    QCOMPARE(size.dpi_y, 72.0);
}

void TestDisplayDevice::onePhysicalSideAloneIsNone_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("width") << 300 << 0;
    QTest::newRow("height") << 0 << 240;
}

void TestDisplayDevice::onePhysicalSideAloneIsNone()
{
    QFETCH(int, width);
    QFETCH(int, height);
    {
        const UnpluggedScreen measured_anew; // nothing measured before counts
    }
    const PhysicalSize reported(width, height);
    const Size size = sizeOf(1);
    QCOMPARE(size.result, -1);
    QCOMPARE(size.dpi_x, 72.0);
    QCOMPARE(size.dpi_y, 72.0);
}

void TestDisplayDevice::theResolutionIsMeasuredOnce()
{
    {
        const UnpluggedScreen measured_anew;
    }
    const QSize pixels = screenOf("DUMMY1")->size();
    {
        const PhysicalSize reported(300, 200);
        const Size size = sizeOf(1);
        QCOMPARE(size.result, 0);
        QCOMPARE(size.pixels(), pixels);
        QCOMPARE(size.dpi_x, pixels.width() / 300.0 * 25.4);
        QCOMPARE(size.dpi_y, pixels.height() / 200.0 * 25.4);
    }
    // It reports nothing any more.
    const Size again = sizeOf(1);
    QCOMPARE(again.result, 0);
    QCOMPARE(again.pixels(), pixels);
    QCOMPARE(again.dpi_x, pixels.width() / 300.0 * 25.4);
    QCOMPARE(again.dpi_y, pixels.height() / 200.0 * 25.4);
    QCOMPARE(sizeOf(0).result, -1);
}

void TestDisplayDevice::aWidgetsScreenIsMeasured()
{
    {
        const UnpluggedScreen measured_anew;
    }
    const PhysicalSize reported(500, 400);
    WidgetOn first("DUMMY0");
    WidgetOn second("DUMMY1");
    const QSize pixels = screenOf("DUMMY1")->size();
    const Size size = sizeOf(static_cast<QWidget *>(&second));
    QCOMPARE(size.result, 0);
    QCOMPARE(size.pixels(), pixels);
    QCOMPARE(size.dpi_x, pixels.width() / 500.0 * 25.4);
    const Size of_first = sizeOf(static_cast<QWidget *>(&first));
    QCOMPARE(of_first.result, -1);
    QCOMPARE(of_first.pixels(), screenOf("DUMMY0")->size());
    DisplayDevice::setCustomDPI(1, 140.0, 150.0);
    QCOMPARE(sizeOf(static_cast<QWidget *>(&second), true).dpi_x, 140.0);
    DisplayDevice::setCustomDPI(1, 0.0, 0.0);
    QCOMPARE(sizeOf(static_cast<QWidget *>(nullptr)).pixels(), screenOf("DUMMY0")->size());
}

void TestDisplayDevice::anotherModeIsMeasuredAgain()
{
    {
        const UnpluggedScreen measured_anew;
    }
    const PhysicalSize reported(300, 200);
    const QSize before = screenOf("DUMMY1")->size();
    QCOMPARE(sizeOf(1).dpi_x, before.width() / 300.0 * 25.4);
    {
        const ChangedDisplay coarse(QStringLiteral("--output DUMMY1 --mode 1024x768"),
                                    QStringLiteral("--output DUMMY1 --mode 1280x1024"));
        QTRY_VERIFY(screenOf("DUMMY1")->size() != before);
        const Size size = sizeOf(1);
        QCOMPARE(size.pixels(), screenOf("DUMMY1")->size());
        QCOMPARE(size.dpi_x, size.width / 300.0 * 25.4);
        QCOMPARE(size.dpi_y, size.height / 200.0 * 25.4);
    }
    QTRY_COMPARE(screenOf("DUMMY1")->size(), before);
    QCOMPARE(sizeOf(1).dpi_x, before.width() / 300.0 * 25.4);
}

void TestDisplayDevice::anotherMonitorIsMeasuredAgain()
{
    const double width = screenOf("DUMMY1")->size().width();
    for (const int mm : {310, 620}) {
        {
            const UnpluggedScreen plugged_anew;
        }
        const PhysicalSize reported(mm, 200);
        QCOMPARE(sizeOf(1).dpi_x, width / mm * 25.4);
    }
}

void TestDisplayDevice::aCustomResolutionIsUsedWhenAskedFor()
{
    {
        const UnpluggedScreen measured_anew;
    }
    const PhysicalSize reported(300, 200);
    const QSize pixels = screenOf("DUMMY1")->size();
    DisplayDevice::setCustomDPI(1, 101.5, 99.25);
    const Size custom = sizeOf(1, true);
    QCOMPARE(custom.result, 0);
    QCOMPARE(custom.pixels(), pixels);
    QCOMPARE(custom.dpi_x, 101.5);
    QCOMPARE(custom.dpi_y, 99.25);
    QCOMPARE(sizeOf(1, false).dpi_x, pixels.width() / 300.0 * 25.4); // measured
    QCOMPARE(sizeOf(1, false).dpi_x, pixels.width() / 300.0 * 25.4); // kept
    QCOMPARE(sizeOf(1, true).dpi_x, 101.5);
    DisplayDevice::setCustomDPI(1, 0.0, 0.0);
    QCOMPARE(sizeOf(1, true).dpi_x, pixels.width() / 300.0 * 25.4);
}

void TestDisplayDevice::aCustomResolutionThatIsNoneIsNotUsed_data()
{
    QTest::addColumn<double>("x");
    QTest::newRow("0") << 0.0;
    QTest::newRow("below 0") << -100.0;
    QTest::newRow("no number") << std::numeric_limits<double>::quiet_NaN();
    QTest::newRow("infinite") << std::numeric_limits<double>::infinity();
}

void TestDisplayDevice::aCustomResolutionThatIsNoneIsNotUsed()
{
    QFETCH(double, x);
    DisplayDevice::setCustomDPI(0, x, 100.0);
    const Size size = sizeOf(0, true);
    QCOMPARE(size.result, -1);
    QCOMPARE(size.dpi_x, 72.0);
    QCOMPARE(size.dpi_y, 72.0);
    DisplayDevice::setCustomDPI(0, 0.0, 0.0);
}

void TestDisplayDevice::aCustomResolutionNeedsNoHeight_data()
{
    aCustomResolutionThatIsNoneIsNotUsed_data();
}

void TestDisplayDevice::aCustomResolutionNeedsNoHeight()
{
    QFETCH(double, x);
    DisplayDevice::setCustomDPI(0, 100.0, x);
    const Size size = sizeOf(0, true);
    QCOMPARE(size.result, 0);
    QCOMPARE(size.dpi_x, 100.0);
    QCOMPARE(size.dpi_y, 72.0);
    DisplayDevice::setCustomDPI(0, 0.0, 0.0);
}

void TestDisplayDevice::eachOfFourScreensHasACustomResolution()
{
    for (int screen = 0; screen < 4; ++screen)
        DisplayDevice::setCustomDPI(screen, 100.0 + screen, 200.0 + screen);
    for (const int beside : {-1, 4, INT_MAX, INT_MIN})
        DisplayDevice::setCustomDPI(beside, 999.0, 999.0);
    for (int screen = 0; screen < 4; ++screen) {
        const Size size = sizeOf(screen, true);
        QCOMPARE(size.result, 0);
        QCOMPARE(size.dpi_x, 100.0 + screen);
        QCOMPARE(size.dpi_y, 200.0 + screen);
    }
    for (int screen = 0; screen < 4; ++screen)
        DisplayDevice::setCustomDPI(screen, 0.0, 0.0);
}

void TestDisplayDevice::otherNumbersCountAsTheFirst_data()
{
    QTest::addColumn<int>("screen");
    for (const int screen : {4, 5, INT_MAX, -1, INT_MIN})
        QTest::addRow("%d", screen) << screen;
}

void TestDisplayDevice::otherNumbersCountAsTheFirst()
{
    QFETCH(int, screen);
    // A primary screen that is not the first tells them apart from numbers without a screen.
    const ChangedDisplay second_is_primary(QStringLiteral("--output DUMMY1 --primary"),
                                           QStringLiteral("--output DUMMY0 --primary"));
    QTRY_COMPARE(QGuiApplication::primaryScreen(), screenOf("DUMMY1"));
    DisplayDevice::setCustomDPI(0, 88.0, 99.0);
    const Size size = sizeOf(screen, true);
    DisplayDevice::setCustomDPI(0, 0.0, 0.0);
    QCOMPARE(size.result, 0);
    QCOMPARE(size.pixels(), QGuiApplication::screens().at(0)->size());
    QCOMPARE(size.dpi_x, 88.0);
    QCOMPARE(size.dpi_y, 99.0);
}

void TestDisplayDevice::numbersWithoutAScreenStandForThePrimaryOne()
{
    QTRY_COMPARE(QGuiApplication::primaryScreen(), screenOf("DUMMY0"));
    for (const int screen : {2, 3}) {
        const Size size = sizeOf(screen);
        QCOMPARE(size.result, -1);
        QCOMPARE(size.pixels(), screenOf("DUMMY0")->size());
        QCOMPARE(size.dpi_x, 72.0);
    }
}

TAVI_GUI_TEST_MAIN(TestDisplayDevice)
#include "tst_displaydevice.moc"
