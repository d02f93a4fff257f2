// SPDX-License-Identifier: MIT
#include "qt3/q3scrollview.h"
#include "tests/support/tavitest.h"

#include <QMimeData>
#include <QPainter>
#include <QPointer>
#include <QScrollBar>
#include <QSignalSpy>

#include <memory>

namespace {

/// Contents of 2000 x 3000, drawn in red, that note what comes.
class View : public Q3ScrollView
{
public:
    View()
    {
        resizeContents(2000, 3000);
        resize(300, 200);
        show();
        updateScrollBars();
    }
    using Q3ScrollView::viewportEvent;
    QVector<QPoint> presses;
    QVector<QPoint> wheels;
    QVector<QPoint> menus;
    QRect drawn;
    bool takes_wheel = false;

protected:
    void drawContents(QPainter *p, int x, int y, int w, int h) override
    {
        drawn |= QRect(x, y, w, h);
        p->fillRect(QRect(x, y, w, h) & QRect(0, 0, 2000, 3000), Qt::red);
        p->fillRect(QRect(500, 600, 10, 10), Qt::blue);
    }
    void contentsMousePressEvent(QMouseEvent *e) override { presses.append(e->pos()); }
    void contentsWheelEvent(QWheelEvent *e) override
    {
        wheels.append(e->position().toPoint());
        e->setAccepted(takes_wheel);
    }
    void contentsContextMenuEvent(QContextMenuEvent *e) override { menus.append(e->pos()); }
    void contentsDragMoveEvent(QDragMoveEvent *e) override { e->acceptProposedAction(); }
};

} // namespace

class TestQ3ScrollView : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        Q3ScrollView view(nullptr, "name");
        QCOMPARE(view.objectName(), QStringLiteral("name"));
        QCOMPARE(view.contentsWidth() + view.contentsHeight() + view.contentsX() + view.contentsY(), 0);
        QCOMPARE(view.resizePolicy(), Q3ScrollView::Default);
        QCOMPARE(view.hScrollBarMode(), Q3ScrollView::Auto);
        QCOMPARE(view.vScrollBarMode(), Q3ScrollView::Auto);
        QVERIFY(view.dragAutoScroll() && !view.hasStaticBackground() && !view.cornerWidget());
        QVERIFY(!view.isHorizontalSliderPressed() && !view.isVerticalSliderPressed());
        QCOMPARE(view.clipper(), view.viewport());
    }

    void positionsAreHeldInside()
    {
        View view;
        view.setContentsPos(100, 150);
        QCOMPARE(QPoint(view.contentsX(), view.contentsY()), QPoint(100, 150));
        view.setContentsPos(-10, 99999);
        QCOMPARE(view.contentsX(), 0);
        QCOMPARE(view.contentsY(), 3000 - view.visibleHeight());
        view.scrollBy(30, -50);
        QCOMPARE(QPoint(view.contentsX(), view.contentsY()), QPoint(30, 2950 - view.visibleHeight()));
        view.scrollBy(-9999, -9999);
        QCOMPARE(QPoint(view.contentsX(), view.contentsY()), QPoint(0, 0));
    }

    void movingIsToldOnceAndBefore()
    {
        View view;
        QSignalSpy moving(&view, SIGNAL(contentsMoving(int, int)));
        QPoint before;
        connect(&view, &Q3ScrollView::contentsMoving, &view,
                [&] { before = QPoint(view.contentsX(), view.contentsY()); });
        view.setContentsPos(100, 150);
        QCOMPARE(moving.count(), 1);
        QCOMPARE(moving.at(0).at(0).toInt(), 100);
        QCOMPARE(moving.at(0).at(1).toInt(), 150);
        QCOMPARE(before, QPoint(0, 0));
        view.setContentsPos(100, 150);
        QCOMPARE(moving.count(), 1);
        view.verticalScrollBar()->setValue(200);
        QCOMPARE(moving.count(), 2);
        QCOMPARE(before, QPoint(100, 150));
    }

    void aSlotMayScrollElsewhere()
    {
        View view;
        connect(&view, &Q3ScrollView::contentsMoving, &view, [&view](int, int y) {
            if (y == 150)
                view.setContentsPos(0, 700);
        });
        view.setContentsPos(0, 150);
        QCOMPARE(view.contentsY(), 700);
        QCOMPARE(view.verticalScrollBar()->value(), 700);
    }

    void coordinates()
    {
        View view;
        view.setContentsPos(100, 150);
        QCOMPARE(view.contentsToViewport(QPoint(110, 170)), QPoint(10, 20));
        QCOMPARE(view.viewportToContents(QPoint(10, 20)), QPoint(110, 170));
        int x = 0;
        int y = 0;
        view.contentsToViewport(110, 170, x, y);
        QCOMPARE(QPoint(x, y), QPoint(10, 20));
        view.viewportToContents(10, 20, x, y);
        QCOMPARE(QPoint(x, y), QPoint(110, 170));
    }

    void drawsWhatIsInSight()
    {
        View view;
        view.setContentsPos(450, 550);
        view.drawn = QRect();
        const QImage image = view.viewport()->grab().toImage();
        QVERIFY(view.drawn.contains(QRect(450, 550, view.visibleWidth(), view.visibleHeight())));
        QVERIFY(view.drawn.width() < 400);
        const qreal ratio = image.devicePixelRatio();
        QCOMPARE(image.pixelColor(QPointF(55 * ratio, 55 * ratio).toPoint()), QColor(Qt::blue));
        QCOMPARE(image.pixelColor(QPointF(45 * ratio, 55 * ratio).toPoint()), QColor(Qt::red));
    }

    void ensureVisible()
    {
        View view;
        const int h = view.visibleHeight();
        view.ensureVisible(0, 1000, 0, 20);
        QCOMPARE(view.contentsY(), 1000 + 20 - h + 1);
        view.ensureVisible(0, view.contentsY() + 30, 0, 20);
        QCOMPARE(view.contentsY(), 1000 + 20 - h + 1);
        view.ensureVisible(0, 500, 0, 20);
        QCOMPARE(view.contentsY(), 480);
        view.ensureVisible(0, 1500, 0, h);
        QCOMPARE(view.contentsY(), 1500 - h / 2);
        view.setContentsPos(0, 0);
        view.ensureVisible(1000, 1000);
        QCOMPARE(view.contentsY(), 1000 + 50 - h + 1);
        QCOMPARE(view.contentsX(), 1000 + 50 - view.visibleWidth() + 1);
    }

    void center()
    {
        View view;
        view.center(1000, 1000);
        QCOMPARE(view.contentsX(), 1000 - view.visibleWidth() / 2);
        QCOMPARE(view.contentsY(), 1000 - view.visibleHeight() / 2);
        const QPoint there(view.contentsX(), view.contentsY());
        view.center(1000 + view.visibleWidth() / 2 - 5, 1000, 0.0F, 0.0F);
        QCOMPARE(QPoint(view.contentsX(), view.contentsY()), there);
        view.center(1000, 1000 + 40, 1.0F, 1.0F);
        QCOMPARE(view.contentsY(), 1040 - view.visibleHeight() / 2);
    }

    void scrollBarsComeAsNeeded()
    {
        Q3ScrollView view;
        view.resize(300, 200);
        view.show();
        const QSize all = view.maximumViewportSize();
        view.resizeContents(all.width(), all.height());
        QVERIFY(!view.horizontalScrollBar()->isVisible() && !view.verticalScrollBar()->isVisible());
        view.resizeContents(all.width(), all.height() + 1);
        QVERIFY(view.verticalScrollBar()->isVisible() && view.horizontalScrollBar()->isVisible());
        QCOMPARE(view.viewportSize(all.width(), all.height() + 1), view.viewport()->size());
        view.resizeContents(10, all.height() + 1);
        QVERIFY(view.verticalScrollBar()->isVisible() && !view.horizontalScrollBar()->isVisible());
        view.setVScrollBarMode(Q3ScrollView::AlwaysOff);
        QVERIFY(!view.verticalScrollBar()->isVisible());
        QCOMPARE(view.vScrollBarMode(), Q3ScrollView::AlwaysOff);
        view.setHScrollBarMode(Q3ScrollView::AlwaysOn);
        QVERIFY(view.horizontalScrollBar()->isVisible());
        view.resizeContents(-5, -5);
        QCOMPARE(view.contentsWidth() + view.contentsHeight(), 0);
    }

    void smallerContentsScrollBack()
    {
        View view;
        view.setContentsPos(0, 2000);
        view.resizeContents(2000, 500);
        QCOMPARE(view.contentsY(), 500 - view.visibleHeight());
    }

    void margins()
    {
        View view;
        view.setMargins(5, 20, 7, 3);
        QCOMPARE(view.leftMargin(), 5);
        QCOMPARE(view.topMargin(), 20);
        QCOMPARE(view.rightMargin(), 7);
        QCOMPARE(view.bottomMargin(), 3);
        QCOMPARE(view.viewport()->pos(), QPoint(view.frameWidth() + 5, view.frameWidth() + 20));
    }

    void childrenScrollAlong()
    {
        View view;
        auto *child = new QWidget;
        child->resize(50, 40);
        view.addChild(child, 120, 130);
        QCOMPARE(child->parentWidget(), view.viewport());
        QVERIFY(child->isVisible());
        view.setContentsPos(100, 100);
        QCOMPARE(child->pos(), QPoint(20, 30));
        QCOMPARE(view.childX(child), 120);
        QCOMPARE(view.childY(child), 130);
        view.moveChild(child, 200, 210);
        QCOMPARE(child->pos(), QPoint(100, 110));
        view.removeChild(child);
        QCOMPARE(view.childX(child), 0);
        view.addChild(child, 1, 2);
        delete child;
        view.setContentsPos(0, 0);
        QCOMPARE(view.contentsWidth(), 2000);
    }

    void aHiddenChildStaysHidden()
    {
        View view;
        auto *child = new QWidget;
        child->hide();
        view.addChild(child, 1, 2);
        QVERIFY(child->isHidden());
    }

    void theContentsFollowOneChild()
    {
        Q3ScrollView view;
        view.resize(300, 200);
        view.show();
        auto *child = new QWidget;
        child->resize(500, 400);
        view.addChild(child);
        QCOMPARE(view.resizePolicy(), Q3ScrollView::AutoOne);
        QCOMPARE(QSize(view.contentsWidth(), view.contentsHeight()), QSize(500, 400));
        child->resize(600, 410);
        QCOMPARE(QSize(view.contentsWidth(), view.contentsHeight()), QSize(600, 410));
        view.setResizePolicy(Q3ScrollView::AutoOneFit);
        QCOMPARE(child->size(), view.maximumViewportSize());
        view.resize(400, 300);
        QCOMPARE(child->size(), view.maximumViewportSize());
    }

    void cornerWidgetsComeBack()
    {
        View view;
        QPointer<QWidget> first = new QWidget;
        auto *second = new QWidget;
        view.setCornerWidget(first);
        QCOMPARE(view.cornerWidget(), first.data());
        view.setCornerWidget(second);
        QVERIFY(first && first->isHidden());
        view.setCornerWidget(first);
        QVERIFY(!first->isHidden());
        view.setCornerWidget(nullptr);
        QCOMPARE(view.cornerWidget(), nullptr);
        QVERIFY(first->isHidden());
    }

    void inputArrivesInContentsCoordinates()
    {
        View view;
        view.setContentsPos(100, 150);
        QTest::mousePress(view.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(10, 20));
        QMouseEvent twice(QEvent::MouseButtonDblClick, QPoint(11, 21), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(view.viewport(), &twice);
        QCOMPARE(view.presses, (QVector<QPoint>{{110, 170}, {111, 171}}));
        QContextMenuEvent menu(QContextMenuEvent::Mouse, QPoint(5, 6), QPoint());
        QCoreApplication::sendEvent(view.viewport(), &menu);
        QCOMPARE(view.menus, QVector<QPoint>{QPoint(105, 156)});
    }

    void theWheelScrollsUnlessTaken()
    {
        View view;
        const auto turn = [&view] {
            QWheelEvent event(QPointF(10, 20), QPointF(10, 20), QPoint(), QPoint(0, -120), Qt::NoButton,
                              Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(view.viewport(), &event);
        };
        turn();
        QCOMPARE(view.wheels, QVector<QPoint>{QPoint(10, 20)});
        const int y = view.contentsY();
        QVERIFY(y > 0);
        view.takes_wheel = true;
        turn();
        QCOMPARE(view.contentsY(), y);
        QCOMPARE(view.wheels.last(), QPoint(10, 20 + y));
    }

    void dragsNearAnEdgeScroll()
    {
        View view;
        view.setAcceptDrops(true);
        QMimeData data;
        data.setText(QStringLiteral("x"));
        const auto dragTo = [&](const QPoint &at) {
            QDragMoveEvent event(at, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
            view.viewportEvent(&event); // the application would want a real drag to go on
            QVERIFY(event.isAccepted());
        };
        dragTo(QPoint(100, view.visibleHeight() - 3));
        QTRY_VERIFY(view.contentsY() > 50);
        dragTo(QPoint(100, 80));
        const int y = view.contentsY();
        QTest::qWait(120); // longer than two steps
        QCOMPARE(view.contentsY(), y);
        view.setDragAutoScroll(false);
        dragTo(QPoint(100, 3));
        QTest::qWait(120);
        QCOMPARE(view.contentsY(), y);
    }

    void sliders()
    {
        View view;
        QSignalSpy pressed(&view, SIGNAL(verticalSliderPressed()));
        QSignalSpy released(&view, SIGNAL(verticalSliderReleased()));
        view.verticalScrollBar()->setSliderDown(true);
        QVERIFY(view.isVerticalSliderPressed() && !view.isHorizontalSliderPressed());
        view.verticalScrollBar()->setSliderDown(false);
        QCOMPARE(pressed.count(), 1);
        QCOMPARE(released.count(), 1);
    }

    void rightToLeftBeginsAtTheRight()
    {
        View view;
        view.setLayoutDirection(Qt::RightToLeft);
        view.updateScrollBars();
        QCOMPARE(view.horizontalScrollBar()->value(), 0);
        QCOMPARE(view.contentsX(), 2000 - view.visibleWidth());
        view.setContentsPos(100, 0);
        QCOMPARE(view.contentsX(), 100);
    }

    void updatesAreClipped()
    {
        View view;
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        view.setContentsPos(100, 100);
        QCoreApplication::processEvents();
        view.drawn = QRect();
        view.repaintContents(0, 0, 50, 50);
        QVERIFY(view.drawn.isNull());
        view.repaintContents(QRect(110, 120, 10, 10));
        QVERIFY(view.drawn.contains(QRect(110, 120, 10, 10)));
        view.updateContents(110, 120, 10, 10);
        view.updateContents();
        view.repaintContents();
        QVERIFY(view.drawn.contains(QRect(100, 100, view.visibleWidth(), view.visibleHeight())));
    }
};

TAVI_GUI_TEST_MAIN(TestQ3ScrollView)

#include "tst_q3scrollview.moc"
