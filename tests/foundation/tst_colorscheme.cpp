// SPDX-License-Identifier: MIT
#include "foundation/colorscheme.h"
#include "tests/foundation/colorschemereference.h"
#include "tests/support/tavitest.h"

#include <QImage>
#include <QLabel>
#include <QPainter>
#include <QPalette>
#include <QVBoxLayout>

#include <random>

namespace {

const QColor groups_apart[] = {QColor(1, 2, 3), QColor(4, 5, 6), QColor(7, 8, 9)};

QImage iconImage(const QIcon &icon, QIcon::Mode mode = QIcon::Normal, QIcon::State state = QIcon::Off)
{
    return icon.pixmap(16, 16, mode, state).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// "row y: ..." where the image differs from what @a wanted says of each pixel; empty if it does not.
template <typename Wanted>
QString difference(const QImage &image, Wanted wanted)
{
    if (image.size() != QSize(16, 16))
        return QStringLiteral("%1 by %2").arg(image.width()).arg(image.height());
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 16; ++x) {
            const QColor there = image.pixelColor(x, y), expected = wanted(x, y);
            if (there.rgba() != expected.rgba())
                return QStringLiteral("(%1, %2): %3, not %4").arg(x).arg(y).arg(there.name(), expected.name());
        }
    }
    return QString();
}

QString differenceFromPlain(const QImage &image, const QColor &colour)
{
    return difference(image, [&colour](int, int) { return colour; });
}

QString differenceFromStripes(const QImage &image, const QColor (&stripes)[4])
{
    return difference(image, [&stripes](int, int y) { return stripes[y % 4]; });
}

std::array<int, 3> channels(const QColor &colour)
{
    return {colour.red(), colour.green(), colour.blue()};
}

} // namespace

class TestColorScheme : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        const char *id = "proof";
        const ColorScheme scheme("Contract proof", id, 0, 160, 255, QColor::Rgb);
        QCOMPARE(scheme.displayName(), QString("Contract proof"));
        QVERIFY(scheme.idName() == id); // not a copy
        QVERIFY(!scheme.isDefault());
        QCOMPARE(scheme.baseColour(), QColor(0, 160, 255));
        QCOMPARE(scheme.baseColour().alpha(), 255);
        QCOMPARE(scheme.white(), QColor(Qt::white));
        QCOMPARE(scheme.halfColour(), QColor(228, 237, 254));
        QCOMPARE(scheme.lightColour(), QColor::fromHsv(QColor(0, 160, 255).hue(), 20, 255));
        QCOMPARE(scheme.themeYValue(), 82);
    }

    void numbersMayBeHueSaturationAndValue()
    {
        const ColorScheme scheme("x", "x", 200, 100, 50, QColor::Hsv);
        QCOMPARE(scheme.baseColour(), QColor::fromHsv(200, 100, 50));
        QCOMPARE(scheme.baseColour().alpha(), 255);
        QCOMPARE(scheme.lightColour(), QColor::fromHsv(200, 20, 255));
        const ColorScheme grey("x", "x", -1, 0, 50, QColor::Hsv);
        QCOMPARE(grey.baseColour(), QColor::fromHsv(-1, 0, 50));
    }

    void numbersMayBeDegreesAndPercent()
    {
        const ColorScheme top("x", "x", 360.0, 100.0, 100.0);
        QCOMPARE(top.baseColour(), QColor::fromHsv(359, 255, 255));
        QCOMPARE(top.baseColour().alpha(), 255);
        const ColorScheme grey("x", "x", -1.0, 100.0, 40.0);
        QCOMPARE(grey.baseColour().hue(), -1);
        QCOMPARE(channels(grey.baseColour()), (std::array<int, 3>{102, 102, 102}));
        const ColorScheme middle("x", "x", 120.0, 50.0, 75.0);
        QCOMPARE(middle.baseColour(), QColor::fromHsv(120, 128, 191));
    }

    void aColourIsTakenAsItIs()
    {
        const QColor translucent(10, 20, 30, 40);
        QCOMPARE(ColorScheme("x", "x", translucent).baseColour(), translucent);
        const QColor hsv = QColor::fromHsv(300, 7, 0);
        QCOMPARE(ColorScheme("x", "x", hsv).baseColour(), hsv);
        QVERIFY(!ColorScheme("x", "x", QColor()).baseColour().isValid());
    }

    void anotherSpecLeavesTheBaseInvalid_data()
    {
        QTest::addColumn<int>("spec");
        QTest::newRow("none") << int(QColor::Invalid);
        QTest::newRow("cmyk") << int(QColor::Cmyk);
        QTest::newRow("hsl") << int(QColor::Hsl);
        QTest::newRow("extended") << int(QColor::ExtendedRgb);
        QTest::newRow("unknown") << 99;
    }

    void anotherSpecLeavesTheBaseInvalid()
    {
        QFETCH(int, spec);
        const ColorScheme scheme("x", "x", 10, 20, 30, static_cast<QColor::Spec>(spec));
        QVERIFY(!scheme.baseColour().isValid());
        QCOMPARE(scheme.themeYValue(), 0);
        QCOMPARE(scheme.halfColour(), QColor::fromHsv(-1, 0, 220)); // a grey
        for (const auto type : {ColorScheme::FULL_COLOUR, ColorScheme::HALF_COLOUR, ColorScheme::RASTER})
            QVERIFY(!scheme.iconSet(type).isNull());
    }

    void numbersOutOfRangeLeaveTheBaseInvalid()
    {
        expectLog("RGB parameters out of range");
        QVERIFY(!ColorScheme("x", "x", 256, 0, 0, QColor::Rgb).baseColour().isValid());
        expectLog("HSV parameters out of range");
        QVERIFY(!ColorScheme("x", "x", 0, -1, 0, QColor::Hsv).baseColour().isValid());
        // A hue goes round.
        QCOMPARE(ColorScheme("x", "x", 400, 100, 50, QColor::Hsv).baseColour(), QColor::fromHsv(40, 100, 50));
    }

    void theDefaultIsToldByItsId()
    {
        QCOMPARE(ColorScheme::DEFAULT_NAME(), "default");
        QVERIFY(ColorScheme("x", "default", Qt::red).isDefault());
        const std::string copied("default");
        QVERIFY(ColorScheme("x", copied.c_str(), Qt::red).isDefault());
        QVERIFY(!ColorScheme("default", "x", Qt::red).isDefault());
        QVERIFY(!ColorScheme("x", "Default", Qt::red).isDefault());
        QVERIFY(!ColorScheme("x", "default2", Qt::red).isDefault());
        QVERIFY(!ColorScheme("x", "", Qt::red).isDefault());
        const ColorScheme without("x", nullptr, Qt::red);
        QVERIFY(!without.isDefault());
        QVERIFY(!without.idName());
    }

    void theHalfColourOfAGreyIsTheGreyOfValue220()
    {
        const ColorScheme scheme("x", "x", QColor(128, 128, 128));
        QCOMPARE(scheme.halfColour(), QColor::fromHsv(-1, 0, 220, 255));
        QCOMPARE(channels(scheme.halfColour()), (std::array<int, 3>{220, 220, 220}));
        QCOMPARE(scheme.halfColour().hue(), -1);
        // Black with a saturation is a grey all the same, and keeps that.
        const ColorScheme black("x", "x", 120, 200, 0, QColor::Hsv);
        QCOMPARE(black.halfColour(), QColor::fromHsv(-1, 200, 220, 255));
        QCOMPARE(channels(black.halfColour()), (std::array<int, 3>{220, 220, 220}));
    }

    void theHalfColourOfRedIsAPaleRed()
    {
        const ColorScheme scheme("x", "x", Qt::red);
        QCOMPARE(scheme.halfColour(), QColor(253, 229, 229));
        QCOMPARE(scheme.halfColour().alpha(), 255);
        // The alpha of the base does not come along.
        QCOMPARE(ColorScheme("x", "x", QColor(255, 0, 0, 9)).halfColour(), QColor(253, 229, 229));
    }

    void luminanceOfWhiteAndBlack()
    {
        const ColorScheme white("x", "x", Qt::white), black("x", "x", Qt::black);
        QCOMPARE(white.themeYValue(), 255);
        QCOMPARE(black.themeYValue(), 0);
        QCOMPARE(white.themeYValue(), 255); // and again
        QCOMPARE(black.themeYValue(), 0);
    }

    void initDerivesTheSameAgain()
    {
        ColorScheme scheme("x", "default", 200, 120, 40, QColor::Rgb);
        QCOMPARE(scheme.themeYValue(), 73);
        scheme.init();
        QVERIFY(scheme.isDefault());
        QCOMPARE(scheme.halfColour(), QColor(254, 230, 219));
        scheme.initHalf();
        QCOMPARE(scheme.halfColour(), QColor(254, 230, 219));
        QCOMPARE(scheme.lightColour().value(), 255);
        QCOMPARE(scheme.white(), QColor(Qt::white));
        QCOMPARE(scheme.themeYValue(), 73);
    }

    void anySchemeAgreesWithTheReference()
    {
        std::mt19937 random(13);
        for (int n = 0; n < 2000; ++n) {
            const QColor base(int(random() & 255), int(random() & 255), int(random() & 255));
            if (base.red() == base.green() && base.green() == base.blue())
                continue;
            const ColorScheme scheme("x", "x", base);
            QVERIFY2(reference::half(channels(base)).agreesWith(channels(scheme.halfColour())),
                     qPrintable(base.name()));
            QVERIFY(std::fabs(reference::luminance(channels(base)) - scheme.themeYValue()) <= 0.5L + 1e-9L);
            QCOMPARE(scheme.lightColour(), QColor::fromHsv(base.hue(), 20, 255));
        }
    }

    void theFullIconIsOfTheBaseColour()
    {
        const QColor base(0, 160, 255);
        const ColorScheme scheme("x", "x", base);
        QCOMPARE(differenceFromPlain(iconImage(scheme.iconSet(ColorScheme::FULL_COLOUR)), base), QString());
        QCOMPARE(differenceFromPlain(iconImage(scheme.iconSet(false)), base), QString());
        for (const int other : {-1, 3, 99})
            QCOMPARE(
                differenceFromPlain(iconImage(scheme.iconSet(static_cast<ColorScheme::IconSetType>(other))), base),
                QString());
    }

    void theHalfIconIsATriangleOnWhite()
    {
        const QColor base(0, 160, 255);
        const ColorScheme scheme("x", "x", base);
        const auto wanted = [&base](int x, int y) {
            const bool on_outline = x == 0 || y == 0 || x + y == 15; // drawn in white
            return x + y > 15 || on_outline ? QColor(Qt::white) : base;
        };
        QCOMPARE(difference(iconImage(scheme.iconSet(ColorScheme::HALF_COLOUR)), wanted), QString());
        QCOMPARE(difference(iconImage(scheme.iconSet(true)), wanted), QString());
    }

    void theRasterIconIsOfFourStripes()
    {
        const ColorScheme ochre("x", "x", 200, 120, 40, QColor::Rgb);
        const QColor stripes[4] = {{255, 254, 255}, {254, 245, 240}, {254, 240, 233}, {254, 245, 240}};
        QCOMPARE(differenceFromStripes(iconImage(ochre.iconSet(ColorScheme::RASTER)), stripes), QString());
        const ColorScheme grey("x", "x", 128, 128, 128, QColor::Rgb);
        const QColor greys[4] = {{255, 255, 255}, {245, 245, 245}, {240, 240, 240}, {245, 245, 245}};
        QCOMPARE(differenceFromStripes(iconImage(grey.iconSet(ColorScheme::RASTER)), greys), QString());
    }

    void theRasterOfAnyColourAgreesWithTheReference()
    {
        std::mt19937 random(17);
        constexpr int levels[4] = {255, 239, 231, 239};
        for (int n = 0; n < 300; ++n) {
            const QColor base(int(random() & 255), int(random() & 255), int(random() & 127));
            if (base.red() == base.green() && base.green() == base.blue())
                continue;
            const QImage image = iconImage(ColorScheme("x", "x", base).iconSet(ColorScheme::RASTER));
            for (int y = 0; y < 16; ++y) {
                const reference::Colour wanted = reference::stripe(channels(base), levels[y % 4]);
                for (const int x : {0, 7, 15})
                    QVERIFY2(wanted.agreesWith(channels(image.pixelColor(x, y))), qPrintable(base.name()));
            }
        }
    }

    void theOtherRasterVariesTheValueOfTheBase()
    {
        const ColorScheme scheme("x", "x", 200, 100, 50, QColor::Hsv);
        scheme.generateRasterHSV();
        const QColor stripes[4] = {QColor::fromHsv(200, 100, 255), QColor::fromHsv(200, 100, 239),
                                   QColor::fromHsv(200, 100, 231), QColor::fromHsv(200, 100, 239)};
        // What was made first stays.
        scheme.generateRasterYIQ();
        QCOMPARE(differenceFromStripes(iconImage(scheme.iconSet(ColorScheme::RASTER)), stripes), QString());

        const ColorScheme grey("x", "x", 128, 128, 128, QColor::Rgb);
        grey.generateRasterHSV();
        const QColor greys[4] = {{255, 255, 255}, {239, 239, 239}, {231, 231, 231}, {239, 239, 239}};
        QCOMPARE(differenceFromStripes(iconImage(grey.iconSet(ColorScheme::RASTER)), greys), QString());
    }

    void theFirstRasterStaysWhicheverItIs()
    {
        const ColorScheme scheme("x", "x", 200, 120, 40, QColor::Rgb);
        QVERIFY(!scheme.iconSet(false).isNull()); // any first call makes the raster too
        scheme.generateRasterHSV();
        QCOMPARE(iconImage(scheme.iconSet(ColorScheme::RASTER)).pixelColor(5, 1), QColor(254, 245, 240));
    }

    void iconsAreMadeOnce()
    {
        const ColorScheme scheme("x", "x", Qt::red);
        for (const auto type : {ColorScheme::FULL_COLOUR, ColorScheme::HALF_COLOUR, ColorScheme::RASTER}) {
            const qint64 key = scheme.iconSet(type).cacheKey();
            QCOMPARE(scheme.iconSet(type).cacheKey(), key);
        }
    }

    void adjustIQFitsAndCodes()
    {
        const ColorScheme scheme("x", "x", Qt::red);
        constexpr double identity[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
        double yiq[3] = {0.25, 1.2, -0.5}, rgb[3];
        scheme.adjustIQ(yiq, rgb, identity, 2.0);
        QCOMPARE(yiq[0], 0.25);
        QCOMPARE(yiq[1], 1.2 * 0.9 * 0.9);
        QCOMPARE(yiq[2], -0.5 * 0.9 * 0.9);
        QCOMPARE(rgb[0], 127.5); // not truncated
        QCOMPARE(rgb[1], 255.0 * std::sqrt(1.2 * 0.9 * 0.9));
        QCOMPARE(rgb[2], 255.0 * std::sqrt(0.5 * 0.9 * 0.9)); // of the absolute value
        double bright[3] = {4.0, 1.0, 1.0};
        scheme.adjustIQ(bright, rgb, identity, 1.0);
        QCOMPARE(rgb[0], 255.0); // capped
        QVERIFY(std::fabs(bright[1] / std::pow(0.9, 101) - 1.0) < 1e-12);
        QVERIFY(std::fabs(rgb[1] / (255.0 * std::pow(0.9, 101)) - 1.0) < 1e-12);
    }

    void applyPaintsTheWindow_data()
    {
        QTest::addColumn<int>("type");
        QTest::addColumn<QColor>("colour");
        QTest::newRow("full") << 0 << QColor(200, 120, 40);
        QTest::newRow("half") << 1 << QColor(254, 230, 219);
        QTest::newRow("unknown") << 3 << QColor(200, 120, 40);
        QTest::newRow("negative") << -1 << QColor(200, 120, 40);
    }

    void applyPaintsTheWindow()
    {
        QFETCH(int, type);
        QFETCH(QColor, colour);
        const ColorScheme scheme("x", "x", 200, 120, 40, QColor::Rgb);
        QWidget widget;
        widget.resize(40, 40);
        const QPalette before = widget.palette();
        scheme.apply(&widget, static_cast<ColorScheme::IconSetType>(type));
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            QCOMPARE(widget.palette().brush(group, QPalette::Window), QBrush(colour, Qt::SolidPattern));
            for (const auto role : {QPalette::Base, QPalette::Button, QPalette::WindowText, QPalette::Text})
                QCOMPARE(widget.palette().brush(group, role), before.brush(group, role));
        }
        const QImage image = widget.grab().toImage();
        QCOMPARE(image.pixelColor(0, 0), colour);
        QCOMPARE(image.pixelColor(39, 39), colour);
    }

    void theRasterTilesOverTheBackground()
    {
        const ColorScheme scheme("x", "x", 200, 120, 40, QColor::Rgb);
        QWidget widget;
        widget.resize(40, 40);
        scheme.apply(&widget, ColorScheme::RASTER); // no icon was asked for before
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            const QBrush brush = widget.palette().brush(group, QPalette::Window);
            QCOMPARE(brush.style(), Qt::TexturePattern);
            QCOMPARE(brush.texture().size(), QSize(16, 16));
        }
        const QColor stripes[4] = {{255, 254, 255}, {254, 245, 240}, {254, 240, 233}, {254, 245, 240}};
        const QImage image = widget.grab().toImage();
        for (int y = 0; y < 40; ++y) {
            for (const int x : {0, 15, 16, 39})
                QCOMPARE(image.pixelColor(x, y), stripes[y % 4]);
        }
    }

    void theRasterFillsTheWidgetsOwnRole()
    {
        const ColorScheme scheme("x", "x", Qt::red);
        QWidget widget;
        widget.setBackgroundRole(QPalette::Base);
        const QBrush window = widget.palette().brush(QPalette::Window);
        scheme.apply(&widget, ColorScheme::RASTER);
        QCOMPARE(widget.palette().brush(QPalette::Base).style(), Qt::TexturePattern);
        QCOMPARE(widget.palette().brush(QPalette::Window), window);
        // A plain colour goes to the window's role all the same.
        scheme.apply(&widget, ColorScheme::FULL_COLOUR);
        QCOMPARE(widget.palette().brush(QPalette::Window), QBrush(Qt::red));
        QCOMPARE(widget.palette().brush(QPalette::Base).style(), Qt::TexturePattern);
    }

    void oneSchemeFollowsAnother()
    {
        QWidget widget;
        widget.resize(20, 20);
        const ColorScheme red("x", "x", Qt::red), blue("x", "x", Qt::blue);
        red.apply(&widget, ColorScheme::RASTER);
        blue.apply(&widget, ColorScheme::HALF_COLOUR);
        QCOMPARE(widget.grab().toImage().pixelColor(3, 3), blue.halfColour());
        red.apply(&widget, ColorScheme::RASTER);
        QCOMPARE(widget.grab().toImage().pixelColor(3, 2), QColor(253, 239, 239));
        blue.apply(&widget, ColorScheme::FULL_COLOUR);
        QCOMPARE(widget.grab().toImage().pixelColor(3, 3), QColor(Qt::blue));
    }

    void whatTheWidgetHadOfItsOwnStays()
    {
        QWidget widget;
        QPalette palette = widget.palette();
        const QPalette::ColorGroup groups[] = {QPalette::Active, QPalette::Inactive, QPalette::Disabled};
        for (size_t i = 0; i < 3; ++i) {
            palette.setColor(groups[i], QPalette::Text, groups_apart[i]);
            palette.setColor(groups[i], QPalette::Window, groups_apart[i]);
        }
        widget.setPalette(palette);
        ColorScheme("x", "x", Qt::red).apply(&widget, ColorScheme::FULL_COLOUR);
        for (size_t i = 0; i < 3; ++i) {
            QCOMPARE(widget.palette().color(groups[i], QPalette::Text), groups_apart[i]);
            QCOMPARE(widget.palette().color(groups[i], QPalette::Window), QColor(Qt::red));
        }
    }

    void childrenAreReachedByInheritance()
    {
        QWidget window;
        auto *layout = new QVBoxLayout(&window);
        auto *child = new QWidget(&window);
        auto *grandchild = new QWidget(child);
        auto *own = new QWidget(&window);
        layout->addWidget(child);
        layout->addWidget(own);
        QPalette palette = own->palette();
        palette.setColor(QPalette::Window, Qt::green);
        own->setPalette(palette);
        const ColorScheme scheme("x", "x", Qt::red);
        scheme.apply(&window, ColorScheme::HALF_COLOUR);
        QCOMPARE(grandchild->palette().color(QPalette::Window), scheme.halfColour());
        QCOMPARE(own->palette().color(QPalette::Window), QColor(Qt::green)); // what a child set itself stays
        auto *later = new QWidget(&window);
        QCOMPARE(later->palette().color(QPalette::Window), scheme.halfColour());
    }

    void applyDeeplyTakesAPixmapOrAColour()
    {
        const ColorScheme scheme("x", "x", Qt::red);
        QPixmap pixmap(8, 8);
        pixmap.fill(Qt::magenta);
        QWidget widget;
        widget.resize(20, 20);
        scheme.applyDeeply(&widget, nullptr, Qt::cyan);
        QCOMPARE(widget.palette().brush(QPalette::Disabled, QPalette::Window), QBrush(Qt::cyan));
        QCOMPARE(widget.grab().toImage().pixelColor(9, 9), QColor(Qt::cyan));
        scheme.applyDeeply(&widget, &pixmap, Qt::cyan); // the pixmap comes first
        QCOMPARE(widget.palette().brush(QPalette::Disabled, QPalette::Window).style(), Qt::TexturePattern);
        QCOMPARE(widget.grab().toImage().pixelColor(9, 9), QColor(Qt::magenta));
    }

    void nothingIsDoneToNullAndToOtherObjects()
    {
        const ColorScheme scheme("x", "x", Qt::red);
        QPixmap pixmap(8, 8);
        pixmap.fill(Qt::magenta);
        for (const auto type : {ColorScheme::FULL_COLOUR, ColorScheme::HALF_COLOUR, ColorScheme::RASTER})
            scheme.apply(nullptr, type);
        scheme.applyDeeply(nullptr, nullptr, Qt::cyan);
        scheme.applyDeeply(nullptr, &pixmap, Qt::cyan);
        QObject object;
        object.setObjectName("object");
        scheme.applyDeeply(&object, nullptr, Qt::cyan);
        scheme.applyDeeply(&object, &pixmap, Qt::cyan);
        scheme.applyDeeply(QCoreApplication::instance(), &pixmap, Qt::cyan);
        QVERIFY(object.dynamicPropertyNames().isEmpty());
        QVERIFY(QApplication::palette().color(QPalette::Window) != QColor(Qt::cyan));
    }

    void aHolderKeepsOrder()
    {
        ColorSchemeHolder holder;
        QVERIFY(holder.autoDelete());
        QCOMPARE(holder.count(), 0u);
        QVERIFY(!holder.find(0));
        auto *one = new ColorScheme("One", "one", Qt::red);
        auto *two = new ColorScheme("Two", "two", Qt::green);
        holder.add(one);
        holder.add(nullptr);
        holder.add(two);
        QCOMPARE(holder.count(), 2u);
        QVERIFY(holder.find(0) == one);
        QVERIFY(holder.find(1) == two);
        QVERIFY(!holder.find(2));
        QVERIFY(!holder.find(3));
        QVERIFY(!holder.find(-1));
        QVERIFY(!holder.find(std::numeric_limits<int>::min()) && !holder.find(std::numeric_limits<int>::max()));
        QStringList names;
        for (const ColorScheme *scheme : holder)
            names.append(scheme->displayName());
        QCOMPARE(names, (QStringList{"One", "Two"}));
    }

    void aHolderFindsByIdName()
    {
        ColorSchemeHolder holder;
        auto *one = new ColorScheme("One", "one", Qt::red);
        holder.add(new ColorScheme("Nameless", nullptr, Qt::red));
        holder.add(one);
        holder.add(new ColorScheme("Empty", "", Qt::blue));
        const auto by_text = [&holder](std::string id) {
            return holder.find(id);
        };
        QVERIFY(holder.find("one") == one);
        QVERIFY(by_text("one") == one);
        for (const char *unknown : {"One", "on", "ones", "two", "default"}) {
            QVERIFY(!holder.find(unknown));
            QVERIFY(!by_text(unknown));
        }
        QVERIFY(!by_text(std::string("one\0", 4)));
        QVERIFY(!by_text(std::string("one\0two", 7)));
        QVERIFY(!holder.find(static_cast<const char *>(nullptr)));
        QCOMPARE(holder.find("")->displayName(), QString("Empty"));
        QCOMPARE(by_text("")->displayName(), QString("Empty"));
        // Finding does not move the list's current item.
        holder.first();
        QVERIFY(holder.find("one") && holder.find(2));
        QCOMPARE(holder.at(), 0);
    }

    void aLaterSchemeOfTheSameIdIsShadowed()
    {
        ColorSchemeHolder holder;
        auto *first = new ColorScheme("First", "same", Qt::red);
        auto *second = new ColorScheme("Second", "same", Qt::blue);
        holder.add(first);
        holder.add(second);
        std::string id("same");
        QCOMPARE(holder.count(), 2u);
        QVERIFY(holder.find("same") == first);
        QVERIFY(holder.find(id) == first);
        QVERIFY(holder.find(1) == second);
        QVERIFY(holder.removeFirst());
        QVERIFY(holder.find("same") == second);
    }

    void aHolderDeletesItsSchemes()
    {
        // The leak checker tells of a scheme that is not deleted; that it was, the shared name tells.
        const QString name = QString("shared").append("name");
        auto *holder = new ColorSchemeHolder;
        holder->add(new ColorScheme(name, "one", Qt::red));
        holder->add(new ColorScheme(name, "two", Qt::green));
        QVERIFY(!name.isDetached());
        delete holder;
        QVERIFY(name.isDetached());
    }

    void whatIsTakenFromAHolderIsTheCallersOwn()
    {
        std::unique_ptr<const ColorScheme> taken;
        {
            ColorSchemeHolder holder;
            holder.add(new ColorScheme("One", "one", Qt::red));
            taken.reset(holder.take(0));
        }
        QCOMPARE(taken->displayName(), QString("One"));
    }
};

TAVI_GUI_TEST_MAIN(TestColorScheme)
#include "tst_colorscheme.moc"
