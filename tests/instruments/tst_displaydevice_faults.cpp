// SPDX-License-Identifier: MIT
#include "instruments/displaydevice.h"
#include "instruments/displayservices_p.h"
#include "instruments/gammatable_p.h"
#include "tests/instruments/cardtables.h"
#include "tests/support/allocfailure.h"
#include "tests/support/tavitest.h"
#include "tests/support/testdisplay.h"

#include <QScreen>
#include <QWidget>

#include <dlfcn.h>
#include <utility>

// Xlib last: its macros take everyday words.
#include <X11/Xlib.h>
#include <X11/extensions/Xrandr.h>

namespace {

/// What the display server and its card have of their own while it stands; nothing at first.
struct Faults {
    int size = -1;                ///< Of a card that is only played; below 0 the real one answers.
    int answered_size = -1;       ///< Of the table that the played card gives; below 0 as many as it should.
    CardTables::Table table;      ///< Of the played card.
    bool without_randr = false;   ///< The server has no RandR,
    int randr_minor = -1;         ///< or this version 1.x of it.
    bool refuses_reading = false; ///< The server answers with an error of its own,
    bool refuses_writing = false; ///< or here.
    bool rotated = false;         ///< By a quarter.
    bool flipped = false;         ///< By half.
    int crtc = -1;                ///< Which drives every output.
    bool orphaned = false;        ///< No CRTC drives an output.
    RROutput primary = None;      ///< The primary one; the real one for none.
    Display *bystander = nullptr; ///< A connection that meets an error meanwhile.
};
Faults faults;

/// The real server while it lives.
class NoFaults
{
public:
    NoFaults() { std::swap(kept_, faults); }
    ~NoFaults() { std::swap(kept_, faults); }
    NoFaults(const NoFaults &) = delete;
    NoFaults &operator=(const NoFaults &) = delete;

private:
    Faults kept_;
};

template <typename Operation>
Operation *real(const char *name)
{
    return reinterpret_cast<Operation *>(dlsym(RTLD_NEXT, name));
}
#define REAL(operation) real<decltype(operation)>(#operation)

constexpr RRCrtc no_such_crtc = 1;

CardTables::Table readReal(const char *output)
{
    const NoFaults none;
    return CardTables::read(output);
}

int met_by_others = 0;

int countError(Display *, XErrorEvent *)
{
    ++met_by_others;
    return 0;
}

} // namespace

#define INTERPOSED extern "C" __attribute__((visibility("default")))

INTERPOSED Bool XRRQueryExtension(Display *connection, int *event, int *error)
{
    return faults.without_randr ? False : REAL(XRRQueryExtension)(connection, event, error);
}

INTERPOSED Status XRRQueryVersion(Display *connection, int *major, int *minor)
{
    const Status status = REAL(XRRQueryVersion)(connection, major, minor);
    if (faults.randr_minor >= 0)
        *minor = faults.randr_minor;
    return status;
}

INTERPOSED int XRRGetCrtcGammaSize(Display *connection, RRCrtc crtc)
{
    if (faults.bystander) {
        REAL(XRRGetCrtcGammaSize)(faults.bystander, no_such_crtc);
        XSync(faults.bystander, False);
    }
    return faults.size >= 0 ? faults.size : REAL(XRRGetCrtcGammaSize)(connection, crtc);
}

INTERPOSED XRRCrtcGamma *XRRGetCrtcGamma(Display *connection, RRCrtc crtc)
{
    if (faults.refuses_reading)
        return REAL(XRRGetCrtcGamma)(connection, no_such_crtc);
    if (faults.size < 0)
        return REAL(XRRGetCrtcGamma)(connection, crtc);
    XRRCrtcGamma *gamma = XRRAllocGamma(faults.answered_size >= 0 ? faults.answered_size : faults.size);
    for (std::size_t at = 0; at < std::size_t(gamma->size); ++at) {
        gamma->red[at] = faults.table[0].at(at);
        gamma->green[at] = faults.table[1].at(at);
        gamma->blue[at] = faults.table[2].at(at);
    }
    return gamma;
}

INTERPOSED void XRRSetCrtcGamma(Display *connection, RRCrtc crtc, XRRCrtcGamma *gamma)
{
    if (faults.size < 0)
        return REAL(XRRSetCrtcGamma)(connection, faults.refuses_writing ? no_such_crtc : crtc, gamma);
    if (gamma->size != faults.size)
        qWarning("a table of %d entries for a card of %d", gamma->size, faults.size);
    faults.table[0].assign(gamma->red, gamma->red + gamma->size);
    faults.table[1].assign(gamma->green, gamma->green + gamma->size);
    faults.table[2].assign(gamma->blue, gamma->blue + gamma->size);
}

INTERPOSED XRRCrtcInfo *XRRGetCrtcInfo(Display *connection, XRRScreenResources *resources, RRCrtc crtc)
{
    XRRCrtcInfo *info = REAL(XRRGetCrtcInfo)(connection, resources, crtc);
    if (faults.orphaned)
        info->noutput = 0;
    if (faults.rotated)
        info->rotation = RR_Rotate_90;
    if (faults.flipped)
        info->rotation = faults.rotated ? RR_Rotate_270 : RR_Rotate_180;
    return info;
}

INTERPOSED RROutput XRRGetOutputPrimary(Display *connection, Window window)
{
    return faults.primary != None ? faults.primary : REAL(XRRGetOutputPrimary)(connection, window);
}

INTERPOSED XRROutputInfo *XRRGetOutputInfo(Display *connection, XRRScreenResources *resources, RROutput output)
{
    XRROutputInfo *info = REAL(XRRGetOutputInfo)(connection, resources, output);
    if (info && faults.crtc >= 0)
        info->crtc = resources->crtcs[faults.crtc];
    return info;
}

/// Cards and display servers that the test display does not have, played by what stands between it and the library.
class TestDisplayDeviceFaults : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase() { keeper_.reset(); }

    // First: none of these may save a table.
    void withoutGammaControlNothingChanges_data();
    void withoutGammaControlNothingChanges();
    void aTableThatCannotBeReadChangesNothing();
    void aTableThatIsNoneChangesNothing();
    void withoutMemoryNothingChanges();
    void withoutServicesNothingIsFound_data();
    void withoutServicesNothingIsFound();

    void aRefusedLineIsAnError();
    void aRefusedTableIsAnErrorAndStaysSaved();
    void aTableFollowsItsOutputToAnotherCrtc();
    void aLargeTableComesBackEntryByEntry();
    void onACardOfAnotherSizeTheTableIsMapped();
    void gammaControlThatGoesIsAnError();

    void aDisplayIsFoundByItsPixels_data();
    void aDisplayIsFoundByItsPixels();
    void ofMirroredDisplaysThePrimaryIsFound_data();
    void ofMirroredDisplaysThePrimaryIsFound();
    void aDisplayThatIsNotThereIsNoDisplay_data();
    void aDisplayThatIsNotThereIsNoDisplay();
    void aTurnedMonitorHasItsSidesTurned_data();
    void aTurnedMonitorHasItsSidesTurned();
    void errorsOfOtherConnectionsGoWhereTheyWent();

private:
    /// Resets, and finds that nothing happened and nothing was saved.
    void nothingChangesAt(const char *logged);

    const CardTables::Table own_ = CardTables::curves(256, 1.8);
    const CardTables::Table other_ = CardTables::curves(256, 1.1);
    const CardTables::Table straight_ = CardTables::straight(256);
    std::unique_ptr<CardTables::Keeper> keeper_;
    QWidget widget_; // on the first monitor
};

void TestDisplayDeviceFaults::initTestCase()
{
    TAVI_NEED_TWO_SCREENS();
    keeper_ = std::make_unique<CardTables::Keeper>();
    widget_.setGeometry(100, 100, 100, 100);
}

void TestDisplayDeviceFaults::init()
{
    TaviTest::init();
    CardTables::write("DUMMY0", own_);
    CardTables::write("DUMMY1", other_);
}

void TestDisplayDeviceFaults::cleanup()
{
    faults = Faults();
    TaviTest::cleanup();
}

void TestDisplayDeviceFaults::nothingChangesAt(const char *logged)
{
    const CardTables::Table played = faults.table;
    expectLog(QStringLiteral("displaydevice: resetDisplayToNativeSettings: ") + QLatin1String(logged));
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget_, false), -1);
    QCOMPARE(recorder().kinds(), QVector<int>{2});
    QVERIFY(faults.table == played);
    QVERIFY(readReal("DUMMY0") == own_);
    faults = Faults();
    CardTables::write("DUMMY0", other_);
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget_, false), 0);
    QVERIFY(CardTables::read("DUMMY0") == other_);
}

void TestDisplayDeviceFaults::withoutGammaControlNothingChanges_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("none") << 0;
    QTest::newRow("one entry") << 1;
}

void TestDisplayDeviceFaults::withoutGammaControlNothingChanges()
{
    QFETCH(int, size);
    faults.size = size;
    faults.table = CardTables::curves(256, 1.0);
    nothingChangesAt("Error 3 while trying to retrieve video card lookup table");
}

void TestDisplayDeviceFaults::aTableThatCannotBeReadChangesNothing()
{
    faults.refuses_reading = true;
    nothingChangesAt("Error 4 while trying to retrieve video card lookup table");
}

void TestDisplayDeviceFaults::aTableThatIsNoneChangesNothing()
{
    faults.size = 256;
    faults.answered_size = 1;
    faults.table = CardTables::curves(256, 1.0);
    nothingChangesAt("Error 3 while trying to retrieve video card lookup table");
}

void TestDisplayDeviceFaults::withoutMemoryNothingChanges()
{
    const AllocFailure failure(1);
    nothingChangesAt("Cannot allocate memory");
    QVERIFY(failure.happened());
}

void TestDisplayDeviceFaults::withoutServicesNothingIsFound_data()
{
    QTest::addColumn<bool>("without_randr");
    QTest::addColumn<int>("randr_minor");
    QTest::addColumn<QByteArray>("display");
    QTest::newRow("no RandR") << true << -1 << qgetenv("DISPLAY");
    QTest::newRow("RandR 1.2") << false << 2 << qgetenv("DISPLAY");
    QTest::newRow("no server") << false << -1 << QByteArray("nowhere");
}

void TestDisplayDeviceFaults::withoutServicesNothingIsFound()
{
    QFETCH(bool, without_randr);
    QFETCH(int, randr_minor);
    QFETCH(QByteArray, display);
    const QByteArray real_display = qgetenv("DISPLAY");
    faults.without_randr = without_randr;
    faults.randr_minor = randr_minor;
    qputenv("DISPLAY", display);
    DisplayServices::DisplayId id = 0;
    const auto found = DisplayServices::displayAtPoint(10, 10, id);
    expectLog("displaydevice: resetDisplayToNativeSettings: Cannot get display id");
    const int reset = DisplayDevice::resetDisplayToNativeSettings(&widget_, false);
    qputenv("DISPLAY", real_display);
    QCOMPARE(found, DisplayServices::NoServices);
    QCOMPARE(reset, -1);
    QVERIFY(readReal("DUMMY0") == own_);
    faults = Faults();
    faults.randr_minor = 3;
    QCOMPARE(DisplayServices::displayAtPoint(10, 10, id), DisplayServices::Done);
}

void TestDisplayDeviceFaults::aRefusedLineIsAnError()
{
    faults.refuses_writing = true;
    expectLog(
        "displaydevice: resetDisplayToNativeSettings: Error 4 while trying to set a linear video card lookup table");
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget_, false), -1);
    QCOMPARE(recorder().kinds(), QVector<int>{2});
    QVERIFY(readReal("DUMMY0") == own_);
    // The table was kept.
    faults = Faults();
    CardTables::write("DUMMY0", other_);
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget_, false), 0);
    QVERIFY(CardTables::read("DUMMY0") == own_);
}

void TestDisplayDeviceFaults::aRefusedTableIsAnErrorAndStaysSaved()
{
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget_, false), 0);
    faults.refuses_writing = true;
    expectLog(
        "displaydevice: resetDisplayToDefaultSettings: Error 4 while trying to restore video card lookup table");
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget_, false), -1);
    QCOMPARE(recorder().kinds(), QVector<int>{2});
    QVERIFY(readReal("DUMMY0") == straight_);
    faults = Faults();
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget_, false), 0);
    QVERIFY(CardTables::read("DUMMY0") == own_);
}

void TestDisplayDeviceFaults::aTableFollowsItsOutputToAnotherCrtc()
{
    const CardTables::Table before = CardTables::readCrtc(2);
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget_, false), 0);
    faults.crtc = 2;
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget_, false), 0);
    QVERIFY(CardTables::readCrtc(2) == own_);
    QVERIFY(CardTables::readCrtc(0) == straight_);
    CardTables::writeCrtc(2, before);
}

void TestDisplayDeviceFaults::aLargeTableComesBackEntryByEntry()
{
    const CardTables::Table large = CardTables::curves(4096, 1.3);
    faults.size = 4096;
    faults.table = large;
    QWidget widget;
    widget.setGeometry(1700, 100, 100, 100);
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget, false), 0);
    QVERIFY(faults.table == CardTables::straight(4096));
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget, false), 0);
    QVERIFY(faults.table == large);
    // On a card of another size it is mapped.
    const auto samples = std::make_unique<GammaSamples>();
    samples->count = GammaSamples::capacity;
    samplesOfCardTable({large}, *samples);
    faults.size = 300;
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget, false), 0);
    QVERIFY(faults.table == cardTableOfSamples(*samples, 300).channels);
    QVERIFY(readReal("DUMMY1") == other_);
}

void TestDisplayDeviceFaults::onACardOfAnotherSizeTheTableIsMapped()
{
    const auto monitor = CardTables::outputId("DUMMY1");
    GammaSamples samples{};
    samples.count = GammaSamples::capacity;
    CardTable card;
    faults.size = 1000;
    faults.table = CardTables::curves(1000, 1.3);
    QCOMPARE(DisplayServices::readTable(monitor, samples, card), DisplayServices::Done);
    QVERIFY(card.channels == faults.table);
    QCOMPARE(samples.returned, 1024u);
    faults.size = 256;
    QCOMPARE(DisplayServices::writeTable(monitor, samples, card), DisplayServices::Done);
    QVERIFY(faults.table == cardTableOfSamples(samples, 256).channels);
    faults.size = 1000;
    QCOMPARE(DisplayServices::writeTable(monitor, samples, card), DisplayServices::Done);
    QVERIFY(faults.table == card.channels);
    // Of the right size the card's own counts, not the samples.
    samples.channels[0].fill(0.5f);
    QCOMPARE(DisplayServices::writeTable(monitor, samples, card), DisplayServices::Done);
    QVERIFY(faults.table == card.channels);
}

void TestDisplayDeviceFaults::gammaControlThatGoesIsAnError()
{
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget_, false), 0);
    faults.size = 1;
    expectLog("resetDisplayToNativeSettings: Error 3 while trying to set a linear video card lookup table");
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget_, false), -1);
    expectLog("resetDisplayToDefaultSettings: Error 3 while trying to restore video card lookup table");
    QCOMPARE(DisplayDevice::resetDisplayToDefaultSettings(&widget_, false), -1);
    QVERIFY(faults.table[0].empty());
    QVERIFY(readReal("DUMMY0") == straight_);
    // Two entries are a line.
    faults.size = 2;
    QCOMPARE(DisplayDevice::resetDisplayToNativeSettings(&widget_, false), 0);
    QVERIFY(faults.table == CardTables::straight(2));
    GammaSamples samples{};
    samples.count = GammaSamples::capacity;
    CardTable card;
    QCOMPARE(DisplayServices::readTable(CardTables::outputId("DUMMY1"), samples, card), DisplayServices::Done);
}

void TestDisplayDeviceFaults::aDisplayIsFoundByItsPixels_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<QByteArray>("output");
    const auto add = [](int x, int y, const char *output) {
        QTest::addRow("%d, %d", x, y) << QPoint(x, y) << QByteArray(output);
    };
    add(0, 0, "DUMMY0");
    add(1599, 1199, "DUMMY0");
    add(0, 1199, "DUMMY0");
    add(1600, 0, "DUMMY1");
    add(2879, 1023, "DUMMY1");
    for (const QPoint &point : {QPoint(-1, 0), QPoint(0, -1), QPoint(0, 1200), QPoint(1599, 1200), QPoint(1600, 1024),
                                QPoint(2880, 0), QPoint(2879, 1024), QPoint(1600, -1), QPoint(-2000, -2000)})
        add(point.x(), point.y(), "");
}

void TestDisplayDeviceFaults::aDisplayIsFoundByItsPixels()
{
    QFETCH(QPoint, point);
    QFETCH(QByteArray, output);
    DisplayServices::DisplayId found = 7;
    QCOMPARE(DisplayServices::displayAtPoint(point.x(), point.y(), found),
             output.isEmpty() ? DisplayServices::NoDisplay : DisplayServices::Done);
    QCOMPARE(found, CardTables::outputId(output));
    faults.orphaned = true;
    QCOMPARE(DisplayServices::displayAtPoint(point.x(), point.y(), found), DisplayServices::NoDisplay);
}

void TestDisplayDeviceFaults::ofMirroredDisplaysThePrimaryIsFound_data()
{
    QTest::addColumn<QString>("change");
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("first") << "--output DUMMY1 --same-as DUMMY0" << QByteArray("DUMMY0");
    QTest::newRow("second") << "--output DUMMY1 --primary --same-as DUMMY0" << QByteArray("DUMMY1");
    QTest::newRow("none") << "--noprimary --output DUMMY1 --same-as DUMMY0" << QByteArray("DUMMY0");
}

void TestDisplayDeviceFaults::ofMirroredDisplaysThePrimaryIsFound()
{
    QFETCH(QString, change);
    QFETCH(QByteArray, output);
    {
        const ChangedDisplay mirrored(change,
                                      QStringLiteral("--output DUMMY0 --primary --output DUMMY1 --pos 1600x0"));
        DisplayServices::DisplayId found = 0;
        QCOMPARE(DisplayServices::displayAtPoint(640, 512, found), DisplayServices::Done);
        QCOMPARE(found, CardTables::outputId(output));
        // Servers name the primary one first; that is not relied upon.
        for (const char *primary : {"DUMMY0", "DUMMY1"}) {
            faults.primary = CardTables::outputId(primary);
            QCOMPARE(DisplayServices::displayAtPoint(640, 512, found), DisplayServices::Done);
            QCOMPARE(found, CardTables::outputId(primary));
        }
        QCOMPARE(DisplayServices::displayAtPoint(1599, 1199, found), DisplayServices::Done);
        QCOMPARE(found, CardTables::outputId("DUMMY0"));
    }
    QTRY_COMPARE(QGuiApplication::screens().size(), 2);
    QTRY_COMPARE(QGuiApplication::screens().at(0)->geometry(), QRect(0, 0, 1600, 1200));
    QTRY_COMPARE(QGuiApplication::screens().at(1)->geometry(), QRect(1600, 0, 1280, 1024));
}

void TestDisplayDeviceFaults::aDisplayThatIsNotThereIsNoDisplay_data()
{
    QTest::addColumn<uint>("display");
    QTest::newRow("none") << 0u;
    QTest::newRow("no output") << 1u;
    QTest::newRow("switched off") << uint(CardTables::outputId("DUMMY2"));
}

void TestDisplayDeviceFaults::aDisplayThatIsNotThereIsNoDisplay()
{
    using namespace DisplayServices;
    QFETCH(uint, display);
    GammaSamples samples{};
    samples.count = GammaSamples::capacity;
    samples.returned = GammaSamples::capacity;
    CardTable card;
    double width = 5.0;
    double height = 5.0;
    QCOMPARE(physicalSize(display, width, height), NoDisplay);
    QCOMPARE(readTable(display, samples, card), NoDisplay);
    QCOMPARE(writeTable(display, samples, card), NoDisplay);
    QCOMPARE(writeLinearRamp(display), NoDisplay);
    QVERIFY(CardTables::read("DUMMY0") == own_);
    QVERIFY(CardTables::read("DUMMY1") == other_);
}

void TestDisplayDeviceFaults::aTurnedMonitorHasItsSidesTurned_data()
{
    QTest::addColumn<bool>("rotated");
    QTest::addColumn<bool>("flipped");
    QTest::newRow("upright") << false << false;
    QTest::newRow("by a quarter") << true << false;
    QTest::newRow("by half") << false << true;
    QTest::newRow("by three quarters") << true << true;
}

void TestDisplayDeviceFaults::aTurnedMonitorHasItsSidesTurned()
{
    QFETCH(bool, rotated);
    QFETCH(bool, flipped);
    const auto sides = [](int width, int height) {
        return QStringLiteral("--output DUMMY1 --set WIDTH_MM %1\n"
                              "xrandr --output DUMMY1 --set HEIGHT_MM %2\n"
                              "xrandr --query >/dev/null")
            .arg(width)
            .arg(height);
    };
    const ChangedDisplay reported(sides(300, 200), sides(0, 0));
    faults.rotated = rotated;
    faults.flipped = flipped;
    double width = 0.0;
    double height = 0.0;
    QCOMPARE(DisplayServices::physicalSize(CardTables::outputId("DUMMY1"), width, height), DisplayServices::Done);
    QCOMPARE(width, rotated ? 200.0 : 300.0);
    QCOMPARE(height, rotated ? 300.0 : 200.0);
}

void TestDisplayDeviceFaults::errorsOfOtherConnectionsGoWhereTheyWent()
{
    Display *bystander = XOpenDisplay(nullptr);
    QVERIFY(bystander);
    met_by_others = 0;
    const XErrorHandler former = XSetErrorHandler(countError);
    faults.bystander = bystander;
    const int reset = DisplayDevice::resetDisplayToNativeSettings(&widget_, false);
    const int met = met_by_others;
    faults.refuses_writing = true;
    expectLog("Error 4 while trying to restore video card lookup table");
    const int restored = DisplayDevice::resetDisplayToDefaultSettings(&widget_, false);
    const XErrorHandler afterwards = XSetErrorHandler(former);
    XCloseDisplay(bystander);
    faults.bystander = nullptr;
    QCOMPARE(reset, 0);
    QVERIFY(met > 0);
    QCOMPARE(restored, -1);
    QCOMPARE(met_by_others, met + 1); // the refusal was none of theirs
    QVERIFY(afterwards == countError);
}

TAVI_GUI_TEST_MAIN(TestDisplayDeviceFaults)
#include "tst_displaydevice_faults.moc"
