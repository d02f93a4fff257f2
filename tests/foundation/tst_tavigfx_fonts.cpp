// SPDX-License-Identifier: MIT
#include "foundation/tavigfx.h"
#include "qt3/q3scrollview.h"
#include "tests/support/tavitest.h"

#include <QCheckBox>
#include <QComboBox>
#include <QFontInfo>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollArea>
#include <QSpinBox>
#include <QToolButton>

#include <climits>
#include <memory>

namespace {

QFont fontOf(int points)
{
    return QFont(QStringLiteral("DejaVu Sans"), points);
}

/// Whether a widget was given a font, rather than inheriting its parent's.
bool hasOwnFont(const QWidget &widget)
{
    return widget.testAttribute(Qt::WA_SetFont);
}

int heightOfPlainButton()
{
    return QPushButton(QStringLiteral("HqpH")).sizeHint().height();
}

/// Deletes an object when a widget has another font.
class DeletesOnFontChange : public QObject
{
public:
    DeletesOnFontChange(QWidget *watched, QObject *victim) : victim_(victim) { watched->installEventFilter(this); }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::FontChange && victim_) {
            watched->removeEventFilter(this);
            delete victim_;
        }
        return false;
    }

private:
    QPointer<QObject> victim_;
};

} // namespace

/// The fonts of widget trees.
class TestTaviGfxFonts : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        QApplication::setFont(fontOf(10));
        TaviGfx::default_font_point_size = 0;
        TaviGfx::normal_button_height = 0;
    }

    void nullsAreTakenQuietly()
    {
        TaviGfx::applyFont(nullptr, fontOf(12), true);
        TaviGfx::applyFont(nullptr, fontOf(12), false);
        TaviGfx::adjustFontSize(nullptr, 2);
        TaviGfx::applyFontSize(nullptr, 12);
        TaviGfx::resetFontSize(nullptr);
        QCOMPARE(TaviGfx::fontDeltaPoints(nullptr), 0);
        QCOMPARE(TaviGfx::default_font_point_size, 0);
        QCOMPARE(TaviGfx::normal_button_height, 0);
    }

    void theTopTakesTheFontWhateverItIs()
    {
        QCheckBox box;
        TaviGfx::applyFont(&box, fontOf(13), false);
        QVERIFY(!hasOwnFont(box));
        TaviGfx::applyFont(&box, fontOf(13), true);
        QCOMPARE(box.font().pointSize(), 13);
        QVERIFY(hasOwnFont(box));
    }

    void theTopMeasuresThePlainButton()
    {
        QWidget widget;
        TaviGfx::applyFont(&widget, fontOf(20), false);
        QCOMPARE(TaviGfx::normal_button_height, 0);
        QCOMPARE(TaviGfx::default_font_point_size, 0);
        TaviGfx::applyFont(&widget, fontOf(20), true);
        QCOMPARE(TaviGfx::default_font_point_size, 10);
        QCOMPARE(TaviGfx::normal_button_height, heightOfPlainButton());
        QApplication::setFont(fontOf(16));
        TaviGfx::applyFont(&widget, fontOf(20), true);
        QCOMPARE(TaviGfx::default_font_point_size, 16);
        QCOMPARE(TaviGfx::normal_button_height, heightOfPlainButton());
    }

    void theMeasuredButtonIsGone()
    {
        const int before = QApplication::allWidgets().size();
        QWidget widget;
        TaviGfx::applyFont(&widget, fontOf(20), true);
        QCOMPARE(QApplication::allWidgets().size(), before + 1);
    }

    void someKindsOfWidgetsTakeTheFont_data()
    {
        QTest::addColumn<QByteArray>("kind");
        QTest::addColumn<bool>("takes");
        for (const char *const kind :
             {"QPushButton", "QLabel", "QComboBox", "QLineEdit", "QScrollArea", "Q3ScrollView"})
            QTest::newRow(kind) << QByteArray(kind) << true;
        for (const char *const kind : {"QWidget", "QGroupBox", "QCheckBox", "QToolButton", "QFrame"})
            QTest::newRow(kind) << QByteArray(kind) << false;
    }

    void someKindsOfWidgetsTakeTheFont()
    {
        QFETCH(QByteArray, kind);
        QFETCH(bool, takes);
        QWidget top;
        QWidget *child = nullptr;
        if (kind == "QPushButton")
            child = new QPushButton(&top);
        else if (kind == "QLabel")
            child = new QLabel(&top);
        else if (kind == "QComboBox")
            child = new QComboBox(&top);
        else if (kind == "QLineEdit")
            child = new QLineEdit(&top);
        else if (kind == "QScrollArea")
            child = new QScrollArea(&top);
        else if (kind == "Q3ScrollView")
            child = new Q3ScrollView(&top);
        else if (kind == "QGroupBox")
            child = new QGroupBox(&top);
        else if (kind == "QCheckBox")
            child = new QCheckBox(&top);
        else if (kind == "QToolButton")
            child = new QToolButton(&top);
        else if (kind == "QFrame")
            child = new QFrame(&top);
        else
            child = new QWidget(&top);
        QVERIFY(child->inherits(kind.constData()));
        auto *const grandchild = new QLabel(child);
        TaviGfx::applyFont(&top, fontOf(14), true);
        QCOMPARE(hasOwnFont(*child), takes);
        // What is passed through is no end.
        QVERIFY(hasOwnFont(*grandchild));
        QCOMPARE(grandchild->font().pointSize(), 14);
    }

    void objectsThatAreNoWidgetsArePassedOver()
    {
        QWidget top;
        new QObject(&top);
        auto *const label = new QLabel(&top);
        TaviGfx::applyFont(&top, fontOf(14), true);
        QCOMPARE(label->font().pointSize(), 14);
    }

    void aButtonOfALargeFontIsAsHighAsItWants()
    {
        QWidget top;
        auto *const button = new QPushButton(QStringLiteral("Measure"), &top);
        TaviGfx::applyFont(&top, fontOf(30), true);
        QCOMPARE(button->minimumHeight(), button->sizeHint().height());
        QCOMPARE(button->maximumHeight(), button->sizeHint().height());
        QVERIFY(button->minimumHeight() > TaviGfx::normal_button_height);
    }

    void aButtonOfASmallerFontIsAsHighAsAPlainOne()
    {
        for (const int points : {10, 7}) {
            QWidget top;
            auto *const button = new QPushButton(QStringLiteral("Measure"), &top);
            TaviGfx::applyFont(&top, fontOf(points), true);
            QCOMPARE(button->minimumHeight(), TaviGfx::normal_button_height);
            QCOMPARE(button->maximumHeight(), TaviGfx::normal_button_height);
            QVERIFY(TaviGfx::normal_button_height > 0);
        }
    }

    void aLargerApplicationFontMakesTheButtonPlainAgain()
    {
        QApplication::setFont(fontOf(30));
        QWidget top;
        auto *const button = new QPushButton(QStringLiteral("Measure"), &top);
        TaviGfx::applyFont(&top, fontOf(20), true);
        QCOMPARE(button->minimumHeight(), heightOfPlainButton());
        QVERIFY(button->minimumHeight() > button->sizeHint().height());
    }

    void aButtonAtTheTopKeepsItsHeight()
    {
        QPushButton button(QStringLiteral("Measure"));
        TaviGfx::applyFont(&button, fontOf(30), true);
        QCOMPARE(button.minimumHeight(), 0);
        QVERIFY(button.maximumHeight() > 10000);
    }

    void widgetsMayGoMeanwhile()
    {
        QWidget top;
        auto *const first = new QLabel(&top);
        auto *const second = new QLabel(&top);
        auto *const third = new QLabel(&top);
        const DeletesOnFontChange deletes(first, second);
        TaviGfx::applyFont(&top, fontOf(14), true);
        QCOMPARE(third->font().pointSize(), 14);
        QCOMPARE(top.children().size(), 2);
    }

    void fontsGrowByPoints()
    {
        QWidget top;
        auto *const label = new QLabel(&top);
        TaviGfx::adjustFontSize(&top, 3);
        QCOMPARE(top.font().pointSize(), 13);
        QCOMPARE(label->font().pointSize(), 13);
        TaviGfx::adjustFontSize(&top, -5);
        QCOMPARE(top.font().pointSize(), 8);
        QCOMPARE(label->font().pointSize(), 8);
        QCOMPARE(TaviGfx::default_font_point_size, 10);
    }

    void growingByNothingDoesNothing()
    {
        QWidget top;
        TaviGfx::adjustFontSize(&top, 0);
        QVERIFY(!hasOwnFont(top));
        QCOMPARE(TaviGfx::default_font_point_size, 0);
    }

    void fontsNeverGrowBelowSixPoints()
    {
        QWidget top;
        TaviGfx::adjustFontSize(&top, -5);
        QVERIFY(!hasOwnFont(top));
        TaviGfx::adjustFontSize(&top, INT_MIN);
        TaviGfx::adjustFontSize(&top, INT_MAX);
        QVERIFY(!hasOwnFont(top));
        TaviGfx::adjustFontSize(&top, -4);
        QCOMPARE(top.font().pointSize(), 6);
    }

    void fontsOfPixelsGrowByPoints()
    {
        QWidget top;
        QFont font = fontOf(10);
        font.setPixelSize(32);
        top.setFont(font);
        QCOMPARE(top.font().pointSize(), -1);
        const int points = QFontInfo(top.font()).pointSize();
        QVERIFY(points > 6);
        TaviGfx::adjustFontSize(&top, 2);
        QCOMPARE(top.font().pointSize(), points + 2);
    }

    void theRestOfTheFontStays()
    {
        QWidget top;
        QFont font = fontOf(10);
        font.setBold(true);
        top.setFont(font);
        TaviGfx::adjustFontSize(&top, 2);
        QVERIFY(top.font().bold());
        TaviGfx::applyFontSize(&top, 9);
        QVERIFY(top.font().bold());
        QCOMPARE(top.font().family(), QStringLiteral("DejaVu Sans"));
    }

    void fontsAreSetToASize()
    {
        QWidget top;
        auto *const label = new QLabel(&top);
        TaviGfx::applyFontSize(&top, 17);
        QCOMPARE(top.font().pointSize(), 17);
        QCOMPARE(label->font().pointSize(), 17);
        QCOMPARE(TaviGfx::default_font_point_size, 10);
    }

    void noSizeDoesNothing()
    {
        QWidget top;
        for (const int points : {0, -1, INT_MIN})
            TaviGfx::applyFontSize(&top, points);
        QVERIFY(!hasOwnFont(top));
        QCOMPARE(TaviGfx::default_font_point_size, 0);
    }

    void theSmallestSizeIsInPixels()
    {
        // The first size of six pixels or more is fewer than six points on any display of today.
        int points = 1;
        while (QFontInfo(fontOf(points)).pixelSize() < 6)
            ++points;
        QVERIFY(points > 1 && points < 6);
        QWidget top;
        top.setFont(fontOf(10));
        TaviGfx::applyFontSize(&top, points - 1);
        QCOMPARE(top.font().pointSize(), 10);
        TaviGfx::applyFontSize(&top, points);
        QCOMPARE(top.font().pointSize(), points);
    }

    void theApplicationFontComesBack()
    {
        QWidget top;
        auto *const label = new QLabel(&top);
        QFont font = fontOf(18);
        font.setBold(true);
        TaviGfx::applyFont(&top, font, true);
        TaviGfx::resetFontSize(&top);
        for (const QFont &back : {top.font(), label->font()}) {
            QCOMPARE(back.pointSize(), 10);
            QVERIFY(!back.bold());
            QCOMPARE(back.family(), QApplication::font().family());
        }
    }

    void aFontOfTheApplicationsSizeStays()
    {
        QWidget top;
        QFont font = fontOf(10);
        font.setBold(true);
        top.setFont(font);
        TaviGfx::resetFontSize(&top);
        QVERIFY(top.font().bold());
        QCOMPARE(TaviGfx::default_font_point_size, 0);
    }

    void theDifferenceIsInPoints()
    {
        QWidget top;
        QCOMPARE(TaviGfx::fontDeltaPoints(&top), 0);
        top.setFont(fontOf(14));
        QCOMPARE(TaviGfx::fontDeltaPoints(&top), 4);
        top.setFont(fontOf(7));
        QCOMPARE(TaviGfx::fontDeltaPoints(&top), -3);
    }

    void fontsOfPixelsHavePointsToo()
    {
        QWidget top;
        QFont font = fontOf(10);
        font.setPixelSize(32);
        const int points = QFontInfo(font).pointSize();
        top.setFont(font);
        QCOMPARE(TaviGfx::fontDeltaPoints(&top), points - 10);
        QApplication::setFont(font);
        top.setFont(fontOf(10));
        QCOMPARE(TaviGfx::fontDeltaPoints(&top), 10 - points);
        auto *const button = new QPushButton(&top);
        QFont large = font;
        large.setPixelSize(64);
        TaviGfx::applyFont(&top, large, true);
        QCOMPARE(TaviGfx::default_font_point_size, points);
        QCOMPARE(button->minimumHeight(), button->sizeHint().height());
    }
};

TAVI_GUI_TEST_MAIN(TestTaviGfxFonts)
#include "tst_tavigfx_fonts.moc"
