// SPDX-License-Identifier: MIT
#include "qt3/q3header.h"
#include "tests/support/tavitest.h"

#include <QSignalSpy>
#include <QStyle>

#include <memory>

namespace {

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
