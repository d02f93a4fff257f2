// SPDX-License-Identifier: MIT
#include "qt3/q3header.h"
#include "tests/support/tavitest.h"

#include <QHelpEvent>
#include <QProxyStyle>
#include <QSignalSpy>
#include <QStyleOptionHeader>
#include <QToolTip>

#include <memory>

namespace {

/// A style that notes what it is asked to paint.
class NotingStyle : public QProxyStyle
{
public:
    void drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                     const QWidget *widget) const override
    {
        if (const auto *header = qstyleoption_cast<const QStyleOptionHeader *>(option);
            header && element == CE_HeaderSection) {
            sections.append(header->section);
            if (header->state & State_MouseOver)
                hovered.append(header->section);
            if (header->state & State_Sunken)
                sunken.append(header->section);
            arrow = header->sortIndicator != QStyleOptionHeader::None ? header->sortIndicator : arrow;
        }
        QProxyStyle::drawControl(element, option, painter, widget);
    }
    void drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                       const QWidget *widget) const override
    {
        if (element == PE_FrameFocusRect)
            focus.append(option->rect.center().x() / 60);
        QProxyStyle::drawPrimitive(element, option, painter, widget);
    }
    /// Paints a header and forgets what was before.
    void paint(QWidget *header)
    {
        for (QVector<int> *list : {&sections, &hovered, &sunken, &focus})
            list->clear();
        arrow = QStyleOptionHeader::None;
        header->grab();
    }
    mutable QVector<int> sections;
    mutable QVector<int> hovered;
    mutable QVector<int> sunken;
    mutable QVector<int> focus;
    mutable QStyleOptionHeader::SortIndicator arrow = QStyleOptionHeader::None;
};

/// A header of four sections of 60 pixels.
class Header : public Q3Header
{
public:
    Header()
    {
        for (const char *label : {"a", "b", "c", "d"})
            addLabel(QString::fromLatin1(label), 60);
        resize(300, 24);
        show();
    }
    QString order() const
    {
        QString labels;
        for (int index = 0; index < count(); ++index)
            labels += label(mapToSection(index));
        return labels;
    }
    void drag(int from, int to, bool let_go = true)
    {
        QTest::mousePress(this, Qt::LeftButton, Qt::NoModifier, QPoint(from, 10));
        for (int step = 1; step <= 4; ++step) {
            const QPoint at(from + (to - from) * step / 4, 10);
            QMouseEvent event(QEvent::MouseMove, at, Qt::NoButton, Qt::LeftButton, Qt::NoModifier);
            QCoreApplication::sendEvent(this, &event);
        }
        if (let_go)
            QTest::mouseRelease(this, Qt::LeftButton, Qt::NoModifier, QPoint(to, 10));
    }
};

} // namespace

class TestQ3Header : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        Q3Header header(nullptr, "name");
        QCOMPARE(header.objectName(), QStringLiteral("name"));
        QCOMPARE(header.count(), 0);
        QCOMPARE(header.orientation(), Qt::Horizontal);
        QCOMPARE(header.offset(), 0);
        QCOMPARE(header.sortIndicatorSection(), -1);
        QVERIFY(!header.tracking() && header.isMovingEnabled() && !header.isStretchEnabled());
        QVERIFY(header.isClickEnabled() && header.isResizeEnabled());
        QCOMPARE(Q3Header(3).count(), 3);
    }

    void sectionsWithoutSizeFitTheirText()
    {
        Q3Header header;
        const int narrow = header.addLabel(QStringLiteral("x"));
        const int wide = header.addLabel(QStringLiteral("a rather long heading"));
        const int with_icon = header.addLabel(QIcon(QPixmap(16, 16)), QStringLiteral("x"));
        QVERIFY(header.sectionSize(narrow) > 0);
        QVERIFY(header.sectionSize(wide) > header.sectionSize(narrow) + 20);
        QVERIFY(header.sectionSize(with_icon) > header.sectionSize(narrow));
        QVERIFY(header.iconSet(with_icon) && !header.iconSet(narrow) && !header.iconSet(7));
    }

    void labels()
    {
        Header header;
        header.setLabel(1, QStringLiteral("x"));
        QCOMPARE(header.sectionSize(1), 60);
        header.setLabel(1, QIcon(QPixmap(8, 8)), QStringLiteral("y"), 70);
        header.setLabel(1, QStringLiteral("z"));
        QVERIFY(header.iconSet(1));
        QCOMPARE(header.label(1), QStringLiteral("z"));
        QCOMPARE(header.sectionSize(1), 70);
        header.setLabel(4, QStringLiteral("none"));
        header.setLabel(-1, QStringLiteral("none"));
        QCOMPARE(header.label(4), QString());
        QCOMPARE(header.count(), 4);
    }

    void positions()
    {
        Header header;
        header.resizeSection(1, 100);
        QCOMPARE(header.sectionPos(2), 160);
        QCOMPARE(header.headerWidth(), 280);
        QCOMPARE(header.sectionAt(159), 1);
        QCOMPARE(header.sectionAt(160), 2);
        QCOMPARE(header.sectionAt(-1), -1);
        QCOMPARE(header.sectionAt(280), -1);
        header.setOffset(50);
        QCOMPARE(header.sectionPos(2), 160);
        QCOMPARE(header.sectionRect(2), QRect(110, 0, 60, 24));
        QCOMPARE(header.cellAt(110), 2);
        QCOMPARE(header.sectionSize(9), 0);
        QCOMPARE(header.sectionRect(9), QRect());
        header.resizeSection(1, -5);
        QCOMPARE(header.sectionSize(1), 0);
    }

    void indicesAndSections()
    {
        Header header;
        header.moveSection(1, 3);
        QCOMPARE(header.order(), QStringLiteral("acdb"));
        const int to_section[] = {0, 2, 3, 1};
        const int to_index[] = {0, 3, 1, 2};
        for (int k = 0; k < 4; ++k) {
            QCOMPARE(header.mapToSection(k), to_section[k]);
            QCOMPARE(header.mapToIndex(k), to_index[k]);
            QCOMPARE(header.mapToActual(k), to_index[k]);
            QCOMPARE(header.mapToLogical(k), to_section[k]);
        }
        header.moveCell(3, 0);
        QCOMPARE(header.order(), QStringLiteral("bacd"));
        QCOMPARE(header.cellPos(1), 60);
        QCOMPARE(header.mapToIndex(4), -1);
        QCOMPARE(header.mapToSection(-1), -1);
        header.moveSection(7, 0);
        QCOMPARE(header.order(), QStringLiteral("bacd"));
    }

    void removingRenumbers()
    {
        Header header;
        header.moveSection(3, 0); // d a b c
        header.setSortIndicator(2);
        header.removeLabel(1);
        QCOMPARE(header.order(), QStringLiteral("dac"));
        QCOMPARE(header.mapToIndex(2), 0);
        QCOMPARE(header.sortIndicatorSection(), 1);
        header.removeLabel(1);
        QCOMPARE(header.sortIndicatorSection(), -1);
        header.removeLabel(9);
        QCOMPARE(header.count(), 2);
    }

    void clicks()
    {
        Header header;
        header.moveSection(0, 1); // b a c d
        QSignalSpy pressed(&header, SIGNAL(pressed(int)));
        QSignalSpy released(&header, SIGNAL(released(int)));
        QSignalSpy clicked(&header, SIGNAL(clicked(int)));
        QSignalSpy index(&header, SIGNAL(sectionClicked(int)));
        QTest::mouseClick(&header, Qt::LeftButton, Qt::NoModifier, QPoint(30, 10));
        QCOMPARE(pressed.at(0).at(0).toInt(), 1);
        QCOMPARE(released.at(0).at(0).toInt(), 1);
        QCOMPARE(clicked.at(0).at(0).toInt(), 1);
        QCOMPARE(index.at(0).at(0).toInt(), 0);
        header.setClickEnabled(false, 1);
        QTest::mouseClick(&header, Qt::LeftButton, Qt::NoModifier, QPoint(30, 10));
        QTest::mouseClick(&header, Qt::RightButton, Qt::NoModifier, QPoint(90, 10));
        QTest::mouseClick(&header, Qt::LeftButton, Qt::NoModifier, QPoint(290, 10));
        QCOMPARE(clicked.count(), 1);
        QVERIFY(!header.isClickEnabled() && header.isClickEnabled(0) && !header.isClickEnabled(1));
        header.setClickEnabled(false);
        QVERIFY(!header.isClickEnabled(header.addLabel(QString())));
    }

    void resizing_data()
    {
        QTest::addColumn<bool>("tracking");
        QTest::newRow("in one go") << false;
        QTest::newRow("as it goes") << true;
    }
    void resizing()
    {
        QFETCH(bool, tracking);
        Header header;
        header.setTracking(tracking);
        QSignalSpy sizes(&header, SIGNAL(sizeChange(int, int, int)));
        QSignalSpy clicked(&header, SIGNAL(clicked(int)));
        header.drag(119, 159);
        QCOMPARE(header.sectionSize(1), 100);
        QCOMPARE(sizes.count(), tracking ? 4 : 1);
        QCOMPARE(sizes.first().at(0).toInt(), 1);
        QCOMPARE(sizes.first().at(1).toInt(), 60);
        QCOMPARE(sizes.last().at(2).toInt(), 100);
        header.drag(60, -100);
        QVERIFY(header.sectionSize(0) > 0);
        header.setResizeEnabled(false, 0);
        const int size = header.sectionSize(0);
        header.drag(size, size + 50);
        QCOMPARE(header.sectionSize(0), size);
        QVERIFY(!header.isResizeEnabled() && header.isResizeEnabled(1));
    }

    void aHiddenSectionIsDrawnOut()
    {
        Header header;
        header.resizeSection(1, 0);
        header.drag(60, 90);
        QCOMPARE(header.sectionSize(0), 60);
        QCOMPARE(header.sectionSize(1), 30);
    }

    void moving_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<QString>("order");
        QTest::addColumn<int>("toIndex");
        QTest::newRow("one to the right") << 30 << 140 << "bacd" << 2;
        QTest::newRow("to the end") << 30 << 235 << "bcda" << 4;
        QTest::newRow("to the beginning") << 210 << 5 << "dabc" << 0;
        QTest::newRow("nowhere") << 90 << 120 << "abcd" << -1;
    }
    void moving()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        Header header;
        QSignalSpy moved(&header, SIGNAL(indexChange(int, int, int)));
        QSignalSpy older(&header, SIGNAL(moved(int, int)));
        QSignalSpy clicked(&header, SIGNAL(clicked(int)));
        header.drag(from, to);
        QTEST(header.order(), "order");
        QFETCH(int, toIndex);
        QCOMPARE(moved.count(), toIndex < 0 ? 0 : 1);
        QCOMPARE(older.count(), moved.count());
        if (toIndex >= 0) {
            QCOMPARE(moved.at(0).at(0).toInt(), from / 60);
            QCOMPARE(moved.at(0).at(1).toInt(), from / 60);
            QCOMPARE(moved.at(0).at(2).toInt(), toIndex);
        }
        QCOMPARE(clicked.count(), 0);
    }

    void movingCanBeTurnedOff()
    {
        Header header;
        header.setMovingEnabled(false);
        header.drag(30, 235);
        QCOMPARE(header.order(), QStringLiteral("abcd"));
    }

    void stretching()
    {
        Header header;
        header.setStretchEnabled(true, 3);
        QCOMPARE(header.sectionSize(3), 120);
        QVERIFY(!header.isStretchEnabled() && header.isStretchEnabled(3));
        header.resize(400, 24);
        QCOMPARE(header.sectionSize(3), 220);
        header.setStretchEnabled(true);
        QVERIFY(header.isStretchEnabled());
        header.resize(402, 24);
        QCOMPARE(header.headerWidth(), 402);
        for (int section = 0; section < 4; ++section)
            QVERIFY(qAbs(header.sectionSize(section) - 100) <= 1);
    }

    void sortIndicator()
    {
        Header header;
        const QImage plain = header.grab().toImage();
        header.setSortIndicator(1, Qt::DescendingOrder);
        QCOMPARE(header.sortIndicatorSection(), 1);
        QCOMPARE(header.sortIndicatorOrder(), Qt::DescendingOrder);
        const QImage down = header.grab().toImage();
        header.setSortIndicator(1);
        QCOMPARE(header.sortIndicatorOrder(), Qt::AscendingOrder);
        QVERIFY(plain != down);
        QVERIFY(header.grab().toImage() != down);
        header.setSortIndicator(-1);
        QCOMPARE(header.grab().toImage(), plain);
    }

    void doubleClickOnAnEdge()
    {
        Header header;
        QSignalSpy edge(&header, SIGNAL(sectionHandleDoubleClicked(int)));
        QTest::mouseDClick(&header, Qt::LeftButton, Qt::NoModifier, QPoint(120, 10));
        QCOMPARE(edge.count(), 1);
        QCOMPARE(edge.at(0).at(0).toInt(), 1);
        QTest::mouseDClick(&header, Qt::LeftButton, Qt::NoModifier, QPoint(90, 10));
        QCOMPARE(edge.count(), 1);
    }

    void keys()
    {
        Header header;
        QSignalSpy clicked(&header, SIGNAL(clicked(int)));
        QSignalSpy moved(&header, SIGNAL(indexChange(int, int, int)));
        QTest::keyClick(&header, Qt::Key_Right);
        QTest::keyClick(&header, Qt::Key_Space);
        QCOMPARE(clicked.at(0).at(0).toInt(), 1);
        QTest::keyClick(&header, Qt::Key_Right, Qt::ControlModifier);
        QCOMPARE(header.order(), QStringLiteral("acbd"));
        QCOMPARE(moved.at(0).at(2).toInt(), 3);
        QTest::keyClick(&header, Qt::Key_Left, Qt::ControlModifier);
        QCOMPARE(header.order(), QStringLiteral("abcd"));
        QCOMPARE(moved.at(1).at(2).toInt(), 1);
    }

    void rightToLeft()
    {
        Header header;
        header.setLayoutDirection(Qt::RightToLeft);
        QCOMPARE(header.sectionRect(0), QRect(240, 0, 60, 24));
        QCOMPARE(header.cellAt(299), 0);
        QCOMPARE(header.cellAt(59), -1);
        QSignalSpy clicked(&header, SIGNAL(clicked(int)));
        QTest::mouseClick(&header, Qt::LeftButton, Qt::NoModifier, QPoint(210, 10));
        QCOMPARE(clicked.at(0).at(0).toInt(), 1);
        header.drag(180, 160); // the edge at the end of section 1
        QCOMPARE(header.sectionSize(1), 80);
    }

    void vertical()
    {
        Q3Header header;
        header.setOrientation(Qt::Vertical);
        header.addLabel(QStringLiteral("a"), 20);
        header.addLabel(QStringLiteral("b"), 30);
        header.resize(50, 100);
        header.show();
        QCOMPARE(header.sectionRect(1), QRect(0, 20, 50, 30));
        QSignalSpy clicked(&header, SIGNAL(clicked(int)));
        QTest::mouseClick(&header, Qt::LeftButton, Qt::NoModifier, QPoint(10, 35));
        QCOMPARE(clicked.at(0).at(0).toInt(), 1);
        QVERIFY(header.sizeHint().height() == 50);
    }

    void negativeNumbersButOneAreNoSections()
    {
        Header header;
        header.setClickEnabled(false, -2);
        header.setClickEnabled(false, 9);
        QVERIFY(header.isClickEnabled());
        header.setResizeEnabled(false);
        QVERIFY(!header.isResizeEnabled(header.addLabel(QStringLiteral("new"))));
        header.setStretchEnabled(true);
        QVERIFY(header.isStretchEnabled(header.addLabel(QStringLiteral("new"))));
    }

    void aPressEndsWithItsSection()
    {
        Header header;
        QSignalSpy released(&header, SIGNAL(released(int)));
        QSignalSpy clicked(&header, SIGNAL(clicked(int)));
        QTest::mousePress(&header, Qt::LeftButton, Qt::NoModifier, QPoint(30, 10));
        header.removeLabel(3);
        QTest::mouseRelease(&header, Qt::LeftButton, Qt::NoModifier, QPoint(30, 10));
        QCOMPARE(released.count(), 0);
        QCOMPARE(clicked.count(), 0);
    }

    void aSecondPressIsNone()
    {
        Header header;
        QSignalSpy pressed(&header, SIGNAL(pressed(int)));
        for (const int x : {30, 90}) {
            QMouseEvent press(QEvent::MouseButtonPress, QPoint(x, 10), Qt::LeftButton, Qt::LeftButton, {});
            QCoreApplication::sendEvent(&header, &press);
        }
        QCOMPARE(pressed.count(), 1);
    }

    void clicksEndInTheHeader()
    {
        Header header;
        QSignalSpy released(&header, SIGNAL(released(int)));
        QSignalSpy clicked(&header, SIGNAL(clicked(int)));
        QTest::mousePress(&header, Qt::LeftButton, Qt::NoModifier, QPoint(30, 10));
        QTest::mouseRelease(&header, Qt::LeftButton, Qt::NoModifier, QPoint(30, 100));
        QCOMPARE(released.count(), 1);
        QCOMPARE(clicked.count(), 0);
        header.drag(30, 33); // a hand that trembles
        QCOMPARE(clicked.count(), 1);
    }

    void theMouseChoosesForTheKeys()
    {
        Header header;
        QTest::mouseClick(&header, Qt::LeftButton, Qt::NoModifier, QPoint(150, 10));
        QSignalSpy pressed(&header, SIGNAL(pressed(int)));
        QSignalSpy clicked(&header, SIGNAL(clicked(int)));
        QTest::keyClick(&header, Qt::Key_Right);
        QTest::keyPress(&header, Qt::Key_Space);
        QKeyEvent again(QEvent::KeyPress, Qt::Key_Space, {}, QString(), true);
        QCoreApplication::sendEvent(&header, &again);
        QCOMPARE(pressed.count(), 1);
        QCOMPARE(pressed.at(0).at(0).toInt(), 3);
        QTest::keyRelease(&header, Qt::Key_Space);
        QCOMPARE(clicked.count(), 1);
    }

    void stretchingNeedsRoom()
    {
        Header header;
        header.setStretchEnabled(true, 3);
        header.resize(100, 24);
        QCOMPARE(header.sectionSize(3), 120);
        Q3Header never_placed;
        never_placed.addLabel(QStringLiteral("a"), 60);
        never_placed.setStretchEnabled(true);
        QCOMPARE(never_placed.sectionSize(0), 60);
    }

    void narrowSectionsTellTheirTexts()
    {
        Header header;
        header.setLabel(1, QStringLiteral("a rather long heading"));
        const auto ask = [&header](int x) {
            QToolTip::hideText();
            QHelpEvent help(QEvent::ToolTip, QPoint(x, 10), header.mapToGlobal(QPoint(x, 10)));
            QCoreApplication::sendEvent(&header, &help);
            return QToolTip::text();
        };
        QCOMPARE(ask(90), QStringLiteral("a rather long heading"));
        QToolTip::hideText();
        QTRY_VERIFY(!QToolTip::isVisible());
        ask(30);
        QVERIFY(!QToolTip::isVisible());
    }

    void sectionsShowWhatTheMouseDoes()
    {
        NotingStyle style;
        Header header;
        header.setStyle(&style);
        const auto move = [&header](int x) {
            QMouseEvent event(QEvent::MouseMove, QPoint(x, 10), Qt::NoButton, Qt::NoButton, {});
            QCoreApplication::sendEvent(&header, &event);
        };
        header.setAttribute(Qt::WA_UnderMouse);
        move(90);
        style.paint(&header);
        QCOMPARE(style.hovered, QVector<int>{1});
        QVERIFY(style.sunken.isEmpty());
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(&header, &leave);
        header.setAttribute(Qt::WA_UnderMouse);
        style.paint(&header);
        QVERIFY(style.hovered.isEmpty());
        QTest::mousePress(&header, Qt::LeftButton, Qt::NoModifier, QPoint(150, 10));
        style.paint(&header);
        QCOMPARE(style.sunken, QVector<int>{2});
        QTest::mouseRelease(&header, Qt::LeftButton, Qt::NoModifier, QPoint(150, 10));
        style.paint(&header);
        QVERIFY(style.sunken.isEmpty());
        QTest::mousePress(&header, Qt::LeftButton, Qt::NoModifier, QPoint(119, 10));
        style.paint(&header);
        QVERIFY(style.sunken.isEmpty()); // it resizes
        QTest::mouseRelease(&header, Qt::LeftButton, Qt::NoModifier, QPoint(119, 10));
        header.setStyle(nullptr);
    }

    void arrowsFocusAndSectionsInSight()
    {
        NotingStyle style;
        Header header;
        header.setStyle(&style);
        header.setSortIndicator(1, Qt::AscendingOrder);
        style.paint(&header);
        QCOMPARE(style.arrow, QStyleOptionHeader::SortDown);
        header.setSortIndicator(1, Qt::DescendingOrder);
        style.paint(&header);
        QCOMPARE(style.arrow, QStyleOptionHeader::SortUp);
        header.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&header));
        header.setFocusPolicy(Qt::StrongFocus);
        header.setFocus();
        QTest::keyClick(&header, Qt::Key_Right);
        style.paint(&header);
        QCOMPARE(style.focus, QVector<int>{1});
        header.clearFocus();
        style.paint(&header);
        QVERIFY(style.focus.isEmpty());
        header.resize(100, 24);
        style.paint(&header);
        QCOMPARE(style.sections, (QVector<int>{0, 1}));
        header.setStyle(nullptr);
    }

    void theGapIsMarked_data()
    {
        QTest::addColumn<bool>("mirrored");
        QTest::addColumn<int>("to");
        QTest::addColumn<int>("mark");
        QTest::newRow("left to right") << false << 149 << 120;
        QTest::newRow("left to right, the end") << false << 235 << 239;
        QTest::newRow("right to left") << true << 150 << 179;
        QTest::newRow("right to left, the end") << true << 62 << 60;
    }
    void theGapIsMarked()
    {
        QFETCH(bool, mirrored);
        QFETCH(int, to);
        QFETCH(int, mark);
        Header header;
        header.setLayoutDirection(mirrored ? Qt::RightToLeft : Qt::LeftToRight);
        QPalette palette = header.palette();
        palette.setColor(QPalette::Highlight, QColor(1, 200, 3));
        header.setPalette(palette);
        header.drag(mirrored ? 270 : 30, to, false);
        const QPixmap shown = header.grab();
        const QImage image = shown.toImage();
        const qreal ratio = shown.devicePixelRatioF();
        const auto marked = [&](int x) {
            return image.pixelColor(qFloor(x * ratio), image.height() / 2) == QColor(1, 200, 3);
        };
        QVERIFY(marked(mark));
        QVERIFY(!marked(mark + 4) && !marked(mark - 4));
        QTest::mouseRelease(&header, Qt::LeftButton, Qt::NoModifier, QPoint(to, 10));
    }

    void anEmptyHeaderHasAHeight()
    {
        Q3Header header;
        QVERIFY(header.sizeHint().height() > header.fontMetrics().height());
        QCOMPARE(header.sizeHint().width(), 0);
    }

    void aWideHeaderBeginsAtTheRight()
    {
        Header header;
        header.setLayoutDirection(Qt::RightToLeft);
        header.resize(100, 24);
        QCOMPARE(header.sectionRect(0).left(), 180);
        header.setOffset(140);
        QCOMPARE(header.sectionRect(0).left(), 40);
        QCOMPARE(header.cellAt(50), 0);
    }

    void sectionsMayGoInSlots()
    {
        Header header;
        connect(&header, &Q3Header::pressed, &header, [&header] { header.removeLabel(0); });
        connect(&header, &Q3Header::released, &header, [&header] { header.removeLabel(0); });
        QTest::mouseClick(&header, Qt::LeftButton, Qt::NoModifier, QPoint(200, 10));
        QVERIFY(header.count() >= 2);
        auto gone = std::make_unique<Header>();
        connect(gone.get(), &Q3Header::released, gone.get(), [&gone] { gone.release()->deleteLater(); });
        QTest::mouseClick(gone.get(), Qt::LeftButton, Qt::NoModifier, QPoint(200, 10));
        QVERIFY(!gone);
    }
};

TAVI_GUI_TEST_MAIN(TestQ3Header)

#include "tst_q3header.moc"
