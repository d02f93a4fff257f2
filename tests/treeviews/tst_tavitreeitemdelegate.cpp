// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "treeviews/tavitreeitemdelegate.h"

#include <QImage>
#include <QPainter>
#include <QStandardItemModel>
#include <QTreeView>

#include <climits>

namespace {

/// The delegate with its drawing operations open, and the rectangles that texts came with.
class OpenDelegate : public TaviTreeItemDelegate
{
public:
    using TaviTreeItemDelegate::drawCheck;
    using TaviTreeItemDelegate::drawDecoration;
    using TaviTreeItemDelegate::drawDisplay;
    using TaviTreeItemDelegate::drawFocus;

    void drawText(QPainter *painter, const QStyleOptionViewItem &option, const QRect &rect,
                  const QString &text) const override
    {
        texts << QStringLiteral("%1 at %2,%3 %4x%5")
                     .arg(text)
                     .arg(rect.x())
                     .arg(rect.y())
                     .arg(rect.width())
                     .arg(rect.height());
        TaviTreeItemDelegate::drawText(painter, option, rect, text);
    }

    mutable QStringList texts;
};

/// A white picture, with a painter on it.
struct Paper {
    explicit Paper(QSize size = QSize(120, 40), double scale = 1.0) : image(size * scale, QImage::Format_RGB32)
    {
        image.setDevicePixelRatio(scale);
        image.fill(Qt::white);
        painter.begin(&image);
    }

    /// The rectangle that holds all pixels for which @a wanted is true.
    template <typename Wanted>
    QRect extent(Wanted wanted) const
    {
        QRect all;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x) {
                if (wanted(image.pixelColor(x, y)))
                    all |= QRect(x, y, 1, 1);
            }
        }
        return all;
    }
    QRect extent(const QColor &colour) const
    {
        return extent([&colour](const QColor &pixel) { return pixel == colour; });
    }
    QRect painted() const
    {
        return extent([](const QColor &pixel) { return pixel != QColor(Qt::white); });
    }

    QImage image;
    QPainter painter;
};

QStyleOptionViewItem optionOf(const QRect &rect)
{
    QStyleOptionViewItem option;
    option.rect = rect;
    option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    option.textElideMode = Qt::ElideRight;
    return option;
}

} // namespace

class TestTaviTreeItemDelegate : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        model_.clear();
        model_.appendRow(new QStandardItem("patch"));
    }

    void construction()
    {
        QObject parent;
        const auto *delegate = new TaviTreeItemDelegate(&parent);
        QCOMPARE(delegate->margin(), 0);
        QCOMPARE(delegate->parent(), &parent);
    }

    void aMarginMakesCellsLarger_data()
    {
        QTest::addColumn<int>("margin");
        QTest::newRow("none") << 0;
        QTest::newRow("four") << 4;
        QTest::newRow("large") << 100;
    }
    void aMarginMakesCellsLarger()
    {
        QFETCH(const int, margin);
        TaviTreeItemDelegate delegate;
        const QItemDelegate plain;
        delegate.setMargin(margin);
        QCOMPARE(delegate.margin(), margin);
        const QStyleOptionViewItem option = optionOf(QRect(0, 0, 100, 20));
        QCOMPARE(delegate.sizeHint(option, index()), plain.sizeHint(option, index()) + QSize(2 * margin, 2 * margin));
        model_.item(0)->setSizeHint(QSize(30, 31));
        QCOMPARE(delegate.sizeHint(option, index()), QSize(30 + 2 * margin, 31 + 2 * margin));
    }

    void aMarginOfFourMakesRowsHigherByEight()
    {
        TaviTreeItemDelegate delegate;
        QTreeView view;
        view.setItemDelegate(&delegate);
        view.setModel(&model_);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        const int before = view.visualRect(index()).height();
        delegate.setMargin(4);
        view.doItemsLayout();
        view.updateGeometry();
        QCOMPARE(view.visualRect(index()).height(), before + 8);
    }

    void anInvalidIndexPaintsNothing()
    {
        const TaviTreeItemDelegate delegate;
        Paper paper;
        QStyleOptionViewItem option = optionOf(QRect(0, 0, 100, 20));
        option.state |= QStyle::State_Selected | QStyle::State_Enabled | QStyle::State_Active;
        delegate.paint(&paper.painter, option, QModelIndex());
        QVERIFY(paper.painted().isNull());
        QVERIFY(!paper.painter.testRenderHint(QPainter::Antialiasing));
        delegate.paint(&paper.painter, option, index());
        QVERIFY(!paper.painted().isNull());
        QVERIFY(paper.painter.testRenderHint(QPainter::Antialiasing));
    }

    void anItemsOwnColourStaysWhenItIsSelected_data()
    {
        QTest::addColumn<QVariant>("foreground");
        QTest::addColumn<bool>("own");
        QTest::newRow("brush") << QVariant(QBrush(Qt::red)) << true;
        QTest::newRow("colour") << QVariant(QColor(Qt::red)) << true;
        QTest::newRow("none") << QVariant() << false;
        QTest::newRow("text, which is no brush") << QVariant("red") << false;
    }
    void anItemsOwnColourStaysWhenItIsSelected()
    {
        QFETCH(const QVariant, foreground);
        QFETCH(const bool, own);
        model_.item(0)->setData(foreground, Qt::ForegroundRole);
        const TaviTreeItemDelegate delegate;
        QStyleOptionViewItem option = optionOf(QRect(0, 0, 120, 40));
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            option.palette.setColor(group, QPalette::HighlightedText, Qt::blue);
        const QStyleOptionViewItem used = delegate.initStyleOption(index(), option);
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            QCOMPARE(used.palette.color(group, QPalette::HighlightedText), QColor(own ? Qt::red : Qt::blue));
        QCOMPARE(used.rect, option.rect);

        // And so it is painted: on green, everything that isn't green is text.
        option.palette.setColor(QPalette::Highlight, Qt::green);
        option.state |= QStyle::State_Selected | QStyle::State_Enabled | QStyle::State_Active;
        Paper paper;
        delegate.paint(&paper.painter, option, index());
        const auto is_reddish = [](const QColor &pixel) {
            return pixel.red() > 200 && pixel.green() < 100;
        };
        const auto is_bluish = [](const QColor &pixel) {
            return pixel.blue() > 200 && pixel.green() < 100;
        };
        QCOMPARE(!paper.extent(is_reddish).isNull(), own);
        QCOMPARE(!paper.extent(is_bluish).isNull(), !own);
    }

    void theItemsFontAndAlignmentAreInTheOption()
    {
        QFont font;
        font.setPointSize(31);
        model_.item(0)->setFont(font);
        model_.item(0)->setTextAlignment(Qt::AlignRight | Qt::AlignTop);
        const TaviTreeItemDelegate delegate;
        const QStyleOptionViewItem used = delegate.initStyleOption(index(), optionOf(QRect(0, 0, 9, 9)));
        QCOMPARE(used.font.pointSize(), 31);
        QCOMPARE(used.displayAlignment, Qt::AlignRight | Qt::AlignTop);
    }

    void anOptionForNoIndexIsTheGivenOne()
    {
        const TaviTreeItemDelegate delegate;
        const QStyleOptionViewItem option = optionOf(QRect(1, 2, 3, 4));
        const QStyleOptionViewItem used = delegate.initStyleOption(QModelIndex(), option);
        QCOMPARE(used.rect, option.rect);
        QCOMPARE(used.palette.color(QPalette::HighlightedText), option.palette.color(QPalette::HighlightedText));
    }

    void textsStandBetweenTheSideMargins_data()
    {
        QTest::addColumn<int>("margin");
        QTest::newRow("none") << 0;
        QTest::newRow("ten") << 10;
        QTest::newRow("negative") << -10;
    }
    void textsStandBetweenTheSideMargins()
    {
        QFETCH(const int, margin);
        OpenDelegate delegate;
        delegate.setMargin(margin);
        QStyleOptionViewItem option = optionOf(QRect(0, 0, 100, 30));
        // The highlight behind a text shows the rectangle that it has.
        option.state |= QStyle::State_Selected | QStyle::State_Enabled | QStyle::State_Active;
        option.palette.setColor(QPalette::Highlight, Qt::green);
        Paper paper;
        delegate.drawDisplay(&paper.painter, option, QRect(5, 6, 90, 20), "x");
        QCOMPARE(paper.painted(), QRect(5 + qMax(0, margin), 6, 90 - 2 * qMax(0, margin), 20));
    }

    void aCellNarrowerThanItsMarginsDoesNoHarm()
    {
        OpenDelegate delegate;
        delegate.setMargin(50);
        Paper paper;
        const QStyleOptionViewItem option = optionOf(QRect(10, 10, 20, 10));
        delegate.drawDisplay(&paper.painter, option, option.rect, "some text");
        delegate.drawSwatch(&paper.painter, option, &swatch_);
        QVERIFY(paper.extent(QColor(0x336699)).isNull());
        delegate.drawProgressBar(&paper.painter, option, index(), 50, Qt::red, "x");
        QCOMPARE(delegate.texts.size(), 1);
    }

    void aSwatchFillsTheCellLessItsMargins_data()
    {
        QTest::addColumn<int>("margin");
        QTest::addColumn<QRect>("filled");
        QTest::newRow("none") << 0 << QRect(10, 5, 100, 30);
        QTest::newRow("four") << 4 << QRect(14, 9, 92, 22);
        QTest::newRow("negative") << -4 << QRect(10, 5, 100, 30);
    }
    void aSwatchFillsTheCellLessItsMargins()
    {
        QFETCH(const int, margin);
        QFETCH(const QRect, filled);
        TaviTreeItemDelegate delegate;
        delegate.setMargin(margin);
        Paper paper;
        delegate.drawSwatch(&paper.painter, optionOf(QRect(10, 5, 100, 30)), &swatch_);
        QCOMPARE(paper.painted(), filled);
        QCOMPARE(paper.extent(QColor(0x336699)), filled);
    }

    void aSwatchNeedsPainterAndColour()
    {
        const TaviTreeItemDelegate delegate;
        Paper paper;
        delegate.drawSwatch(&paper.painter, optionOf(QRect(0, 0, 50, 20)), nullptr);
        QVERIFY(paper.painted().isNull());
        delegate.drawSwatch(nullptr, optionOf(QRect(0, 0, 50, 20)), &swatch_);
    }

    void swatchesFillTheirPixelsAtEveryScale_data()
    {
        QTest::addColumn<double>("scale");
        QTest::newRow("1") << 1.0;
        QTest::newRow("1.5") << 1.5;
        QTest::newRow("2") << 2.0;
    }
    void swatchesFillTheirPixelsAtEveryScale()
    {
        QFETCH(const double, scale);
        TaviTreeItemDelegate delegate;
        delegate.setMargin(2);
        Paper paper(QSize(120, 40), scale);
        delegate.drawSwatch(&paper.painter, optionOf(QRect(10, 6, 100, 28)), &swatch_);
        QCOMPARE(paper.extent(QColor(0x336699)), QRect(QPoint(12, 8) * scale, QSize(96, 24) * scale));
    }

    void aTextIsInTheTextColourOfTheGroup()
    {
        const TaviTreeItemDelegate delegate;
        QStyleOptionViewItem option = optionOf(QRect(0, 0, 100, 30));
        option.palette.setColor(QPalette::Active, QPalette::Text, Qt::red);
        option.palette.setColor(QPalette::Disabled, QPalette::Text, Qt::blue);
        for (const bool enabled : {true, false}) {
            option.palette.setCurrentColorGroup(enabled ? QPalette::Active : QPalette::Disabled);
            Paper paper;
            delegate.drawText(&paper.painter, option, option.rect, "MMM");
            QCOMPARE(paper.extent([](const QColor &pixel) { return pixel.blue() < 100; }).isNull(), !enabled);
            QCOMPARE(paper.extent([](const QColor &pixel) { return pixel.red() < 100; }).isNull(), enabled);
        }
    }

    void aTextIsShortenedToItsRectangle_data()
    {
        QTest::addColumn<int>("mode");
        QTest::newRow("right") << int(Qt::ElideRight);
        QTest::newRow("middle") << int(Qt::ElideMiddle);
        QTest::newRow("left") << int(Qt::ElideLeft);
    }
    void aTextIsShortenedToItsRectangle()
    {
        QFETCH(const int, mode);
        const TaviTreeItemDelegate delegate;
        QStyleOptionViewItem option = optionOf(QRect(10, 5, 60, 30));
        option.textElideMode = static_cast<Qt::TextElideMode>(mode);
        const QString text = "a text much too long for this rectangle";
        Paper paper, expected;
        delegate.drawText(&paper.painter, option, option.rect, text);
        delegate.drawText(&expected.painter, option, option.rect,
                          option.fontMetrics.elidedText(text, option.textElideMode, 60));
        QCOMPARE(paper.image, expected.image);
        QVERIFY(option.rect.adjusted(-1, 0, 1, 0).contains(paper.painted()));
    }

    void aTextIsAlignedWhereReadingStarts_data()
    {
        QTest::addColumn<int>("direction");
        QTest::addColumn<int>("alignment");
        QTest::addColumn<bool>("at_left");
        QTest::newRow("left") << int(Qt::LeftToRight) << int(Qt::AlignLeft) << true;
        QTest::newRow("right") << int(Qt::LeftToRight) << int(Qt::AlignRight) << false;
        QTest::newRow("left, right to left") << int(Qt::RightToLeft) << int(Qt::AlignLeft) << false;
        QTest::newRow("right, right to left") << int(Qt::RightToLeft) << int(Qt::AlignRight) << true;
    }
    void aTextIsAlignedWhereReadingStarts()
    {
        QFETCH(const int, direction);
        QFETCH(const int, alignment);
        QFETCH(const bool, at_left);
        const TaviTreeItemDelegate delegate;
        QStyleOptionViewItem option = optionOf(QRect(0, 0, 120, 40));
        option.direction = static_cast<Qt::LayoutDirection>(direction);
        option.displayAlignment = static_cast<Qt::Alignment>(alignment);
        Paper paper;
        delegate.drawText(&paper.painter, option, option.rect, "M");
        QCOMPARE(paper.painted().center().x() < 60, at_left);
    }

    void aTextNeedsPainterAndLetters()
    {
        const TaviTreeItemDelegate delegate;
        Paper paper;
        delegate.drawText(&paper.painter, optionOf(QRect(0, 0, 50, 20)), QRect(0, 0, 50, 20), QString());
        QVERIFY(paper.painted().isNull());
        delegate.drawText(nullptr, optionOf(QRect(0, 0, 50, 20)), QRect(0, 0, 50, 20), "x");
    }

    void thePaintersStateIsKept()
    {
        const TaviTreeItemDelegate delegate;
        Paper paper;
        paper.painter.setPen(Qt::magenta);
        paper.painter.setBrush(Qt::cyan);
        const QStyleOptionViewItem option = optionOf(QRect(0, 0, 100, 30));
        delegate.drawText(&paper.painter, option, option.rect, "x");
        delegate.drawSwatch(&paper.painter, option, &swatch_);
        delegate.drawProgressBar(&paper.painter, option, index(), 50, Qt::red, "x");
        QCOMPARE(paper.painter.pen().color(), QColor(Qt::magenta));
        QCOMPARE(paper.painter.brush().color(), QColor(Qt::cyan));
    }

    void aProgressBarFillsItsShare_data()
    {
        QTest::addColumn<int>("percent");
        QTest::addColumn<int>("width"); // of the bar, in a frame 80 wide
        QTest::newRow("none") << 0 << 0;
        QTest::newRow("a tenth") << 10 << 8;
        QTest::newRow("rounded up") << 12 << 10;   // 9.6
        QTest::newRow("rounded down") << 14 << 11; // 11.2
        QTest::newRow("half") << 50 << 40;
        QTest::newRow("all") << 100 << 80;
    }
    void aProgressBarFillsItsShare()
    {
        QFETCH(const int, percent);
        QFETCH(const int, width);
        for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
            const TaviTreeItemDelegate delegate;
            QStyleOptionViewItem option = optionOf(QRect(10, 5, 82, 22));
            option.direction = direction;
            Paper paper;
            delegate.drawProgressBar(&paper.painter, option, index(), percent, Qt::red, QString());
            int filled = 0;
            for (int x = 0; x < 120; ++x)
                filled += paper.image.pixelColor(x, 15) == QColor(Qt::red) ? 1 : 0;
            // The right side of the frame lies behind the last pixel of the bar, the left one on its first.
            const int sides = (direction == Qt::LeftToRight ? width == 0 : width < 80) ? 2 : 1;
            QCOMPARE(filled, width + sides);
            if (width > 10 && width < 70) {
                QCOMPARE(paper.image.pixelColor(20, 15) == QColor(Qt::red), direction == Qt::LeftToRight);
                QCOMPARE(paper.image.pixelColor(80, 15) == QColor(Qt::red), direction == Qt::RightToLeft);
            }
        }
    }

    void aProgressBarHasFrameShadowAndGround()
    {
        const TaviTreeItemDelegate delegate;
        QStyleOptionViewItem option = optionOf(QRect(10, 5, 82, 22));
        option.palette.setColor(QPalette::Base, QColor(30, 31, 32)); // as on a dark desktop
        Paper paper;
        const QColor colour(200, 100, 50);
        delegate.drawProgressBar(&paper.painter, option, index(), 50, colour, QString());
        QCOMPARE(paper.image.pixelColor(11, 15), colour); // frame
        QCOMPARE(paper.image.pixelColor(40, 6), colour);
        QCOMPARE(paper.image.pixelColor(20, 15), colour);             // bar
        QCOMPARE(paper.image.pixelColor(80, 15), QColor(30, 31, 32)); // ground
        QCOMPARE(paper.image.pixelColor(51, 15), colour.darker(125)); // shadow of the bar
        QCOMPARE(paper.image.pixelColor(52, 15), QColor(30, 31, 32));
        QCOMPARE(paper.image.pixelColor(92, 15), colour.darker(125)); // shadow of the frame, one to the right
        QCOMPARE(paper.image.pixelColor(40, 27), colour.darker(125)); // and one below
        QCOMPARE(paper.painted(), QRect(QPoint(11, 6), QPoint(92, 27)));
    }

    void theGroundOfAProgressBarIsThatOfTheGroup()
    {
        const TaviTreeItemDelegate delegate;
        QStyleOptionViewItem option = optionOf(QRect(10, 5, 82, 22));
        option.palette.setColor(QPalette::Active, QPalette::Base, Qt::yellow);
        option.palette.setColor(QPalette::Disabled, QPalette::Base, Qt::gray);
        for (const bool enabled : {true, false}) {
            option.palette.setCurrentColorGroup(enabled ? QPalette::Active : QPalette::Disabled);
            Paper paper;
            delegate.drawProgressBar(&paper.painter, option, index(), 50, Qt::red, QString());
            QCOMPARE(paper.image.pixelColor(80, 15), QColor(enabled ? Qt::yellow : Qt::gray));
        }
    }

    void theFrameHasRoundCorners()
    {
        TaviTreeItemDelegate delegate;
        delegate.setMargin(24); // a line of 8 pixels
        Paper paper(QSize(120, 80));
        paper.painter.setRenderHint(QPainter::Antialiasing);
        delegate.drawProgressBar(&paper.painter, optionOf(QRect(0, 0, 100, 70)), index(), 0, Qt::red, QString());
        // The line is centred at 8: it begins at 4, but not in the corner.
        QCOMPARE(paper.image.pixelColor(40, 4), QColor(Qt::red));
        QCOMPARE(paper.image.pixelColor(4, 40), QColor(Qt::red));
        QCOMPARE(paper.image.pixelColor(4, 4), QColor(Qt::white));
    }

    void theFrameIsAThirdOfTheMargin_data()
    {
        QTest::addColumn<int>("margin");
        QTest::addColumn<int>("line");
        QTest::newRow("none") << 0 << 1;
        QTest::newRow("two") << 2 << 1;
        QTest::newRow("five") << 5 << 1;
        QTest::newRow("six") << 6 << 2;
        QTest::newRow("twelve") << 12 << 4;
        QTest::newRow("negative") << -9 << 1;
    }
    void theFrameIsAThirdOfTheMargin()
    {
        QFETCH(const int, margin);
        QFETCH(const int, line);
        OpenDelegate delegate;
        delegate.setMargin(margin);
        QStyleOptionViewItem option = optionOf(QRect(10, 5, 82, 30));
        Paper paper;
        delegate.drawProgressBar(&paper.painter, option, index(), 0, Qt::red, "text");
        // Straight down through the upper side of the frame, which is centred on its line.
        int thick = 0;
        for (int y = 0; y < 20; ++y)
            thick += paper.image.pixelColor(85, y) == QColor(Qt::red) ? 1 : 0;
        QCOMPARE(thick, line);
        QCOMPARE(paper.extent(QColor(Qt::red)).left(), 10 + line - line / 2);
        const int side = qMax(0, margin);
        QCOMPARE(delegate.texts, QStringList(QString("text at %1,5 %2x30").arg(10 + side).arg(82 - 2 * side)));
    }

    void aProgressBarOutOfRangeDrawsNothingAtAll_data()
    {
        QTest::addColumn<int>("percent");
        QTest::addColumn<bool>("drawn");
        QTest::newRow("-1") << -1 << false;
        QTest::newRow("0") << 0 << true;
        QTest::newRow("100") << 100 << true;
        QTest::newRow("101") << 101 << false;
        QTest::newRow("huge") << INT_MAX << false;
    }
    void aProgressBarOutOfRangeDrawsNothingAtAll()
    {
        QFETCH(const int, percent);
        QFETCH(const bool, drawn);
        const OpenDelegate delegate;
        Paper paper;
        const QStyleOptionViewItem option = optionOf(QRect(10, 5, 82, 22));
        delegate.drawProgressBar(&paper.painter, option, index(), percent, Qt::red, "text");
        QCOMPARE(!paper.painted().isNull(), drawn);
        QCOMPARE(!delegate.texts.isEmpty(), drawn);
    }

    void aProgressBarNeedsPainterAndIndex()
    {
        const OpenDelegate delegate;
        Paper paper;
        const QStyleOptionViewItem option = optionOf(QRect(10, 5, 82, 22));
        delegate.drawProgressBar(&paper.painter, option, QModelIndex(), 50, Qt::red, "text");
        QVERIFY(paper.painted().isNull());
        delegate.drawProgressBar(nullptr, option, index(), 50, Qt::red, "text");
        delegate.drawProgressBar(&paper.painter, option, index(), 50, Qt::red, QString());
        QCOMPARE(delegate.texts, QStringList()); // an empty text isn't handed on
    }

    void theRestIsDrawnAsUsual()
    {
        const OpenDelegate delegate;
        QStyleOptionViewItem option = optionOf(QRect(0, 0, 60, 30));
        QPixmap pixmap(10, 10);
        pixmap.fill(Qt::red);
        Paper decoration;
        delegate.drawDecoration(&decoration.painter, option, QRect(20, 10, 10, 10), pixmap);
        QCOMPARE(decoration.extent(QColor(Qt::red)), QRect(20, 10, 10, 10));
        Paper check;
        option.state |= QStyle::State_Enabled;
        delegate.drawCheck(&check.painter, option, QRect(20, 10, 16, 16), Qt::Checked);
        QVERIFY(!check.painted().isNull());
        Paper focus, none;
        delegate.drawFocus(&none.painter, option, QRect(5, 5, 40, 20));
        QVERIFY(none.painted().isNull());
        option.state |= QStyle::State_HasFocus | QStyle::State_KeyboardFocusChange;
        delegate.drawFocus(&focus.painter, option, QRect(5, 5, 40, 20));
        QVERIFY(!focus.painted().isNull());
    }

private:
    static TAVICOMBOCOLOUR newSwatch()
    {
        TAVICOMBOCOLOUR swatch = {};
        swatch.rgb = 0x00336699; // an alpha of 0 is of no account
        return swatch;
    }

    QModelIndex index() const { return model_.index(0, 0); }

    QStandardItemModel model_;
    const TAVICOMBOCOLOUR swatch_ = newSwatch();
};

TAVI_GUI_TEST_MAIN(TestTaviTreeItemDelegate)
#include "tst_tavitreeitemdelegate.moc"
