// SPDX-License-Identifier: MIT
#include "tests/qt3/listfixture.h"
#include "tests/support/tavitest.h"

namespace {

/// An item that tells how it was activated.
class Activated : public Q3ListViewItem
{
public:
    using Q3ListViewItem::Q3ListViewItem;
    int times = 0;
    bool by_mouse = false;
    QPoint where;
    Q3ListViewItem *other = nullptr; ///< One that is not activated.
    bool other_by_mouse = false;

protected:
    void activate() override
    {
        ++times;
        by_mouse = activatedPos(where);
        QPoint nowhere;
        other_by_mouse = other && static_cast<Activated *>(other)->activatedPos(nowhere);
    }
};

Q3ListViewItem *itemOf(const QList<QVariant> &arguments, int index = 0)
{
    return arguments.at(index).value<Q3ListViewItem *>();
}

} // namespace

class TestQ3ListViewMouse : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void singleClicksSelectOne()
    {
        ListFixture list;
        QVERIFY(list.showAndWait());
        list.click(list.at(2));
        list.click(list.at(4), Qt::ControlModifier);
        QCOMPARE(list.selection(), QStringLiteral("4"));
        QCOMPARE(list.currentItem(), list.at(4));
        list.click(list.at(4), Qt::ControlModifier); // the user cannot unselect it
        QCOMPARE(list.selection(), QStringLiteral("4"));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(250, 5));
        QCOMPARE(list.selection(), QStringLiteral("4"));
    }

    void multiClicksToggle()
    {
        ListFixture list(10, Q3ListView::Multi);
        QVERIFY(list.showAndWait());
        list.click(list.at(2));
        list.click(list.at(4));
        list.click(list.at(2));
        list.click(list.at(5));
        QCOMPARE(list.selection(), QStringLiteral("4 5"));
        QCOMPARE(list.currentItem(), list.at(5));
    }

    void extendedClicks()
    {
        ListFixture list(10, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        list.click(list.at(2));
        list.click(list.at(5), Qt::ShiftModifier);
        QCOMPARE(list.selection(), QStringLiteral("2 3 4 5"));
        list.click(list.at(3), Qt::ShiftModifier);
        QCOMPARE(list.selection(), QStringLiteral("2 3"));
        list.click(list.at(0), Qt::ShiftModifier);
        QCOMPARE(list.selection(), QStringLiteral("0 1 2"));
        list.click(list.at(6), Qt::ControlModifier);
        list.click(list.at(1), Qt::ControlModifier);
        QCOMPARE(list.selection(), QStringLiteral("0 2 6"));
        list.click(list.at(2));
        QCOMPARE(list.selection(), QStringLiteral("2"));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(250, 5));
        QCOMPARE(list.selection(), QString());
    }

    void noSelectionSelectsNothing()
    {
        ListFixture list(10, Q3ListView::NoSelection);
        QVERIFY(list.showAndWait());
        list.click(list.at(2));
        list.dragTo(list.middleOf(list.at(1)), list.middleOf(list.at(5)));
        list.release(list.middleOf(list.at(5)));
        QCOMPARE(list.selection(), QString());
    }

    void theAnchorCanBeSet()
    {
        ListFixture list(10, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        list.setSelectionAnchor(list.at(6));
        list.at(1)->setSelectable(false);
        list.setSelectionAnchor(list.at(1));
        list.click(list.at(4), Qt::ShiftModifier);
        QCOMPARE(list.selection(), QStringLiteral("4 5 6"));
    }

    void rowsThatCannotBeSelected()
    {
        ListFixture list(10, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        list.at(3)->setSelectable(false);
        list.at(4)->setEnabled(false);
        list.click(list.at(2));
        list.click(list.at(5), Qt::ShiftModifier);
        QCOMPARE(list.selection(), QStringLiteral("2 5"));
        QSignalSpy pressed(&list, SIGNAL(pressed(Q3ListViewItem *)));
        QSignalSpy clicked(&list, SIGNAL(clicked(Q3ListViewItem *)));
        list.click(list.at(4));
        QCOMPARE(list.selection(), QStringLiteral("2 5"));
        QCOMPARE(list.currentItem(), list.at(5));
        QCOMPARE(pressed.count() + clicked.count(), 0);
        list.click(list.at(3));
        QCOMPARE(list.currentItem(), list.at(3));
        QCOMPARE(list.selection(), QString());
    }

    void signalsOfAClick()
    {
        ListFixture list;
        QVERIFY(list.showAndWait());
        QSignalSpy pressed(&list, SIGNAL(pressed(Q3ListViewItem *, QPoint, int)));
        QSignalSpy plain(&list, SIGNAL(pressed(Q3ListViewItem *)));
        QSignalSpy clicked(&list, SIGNAL(clicked(Q3ListViewItem *, QPoint, int)));
        QSignalSpy button_pressed(&list, SIGNAL(mouseButtonPressed(int, Q3ListViewItem *, QPoint, int)));
        QSignalSpy button_clicked(&list, SIGNAL(mouseButtonClicked(int, Q3ListViewItem *, QPoint, int)));
        QSignalSpy right_pressed(&list, SIGNAL(rightButtonPressed(Q3ListViewItem *, QPoint, int)));
        QSignalSpy right_clicked(&list, SIGNAL(rightButtonClicked(Q3ListViewItem *, QPoint, int)));
        list.click(list.at(3), Qt::NoModifier, 1);
        QCOMPARE(plain.count(), 1);
        QCOMPARE(itemOf(pressed.at(0)), list.at(3));
        QCOMPARE(pressed.at(0).at(1).toPoint(), list.viewport()->mapToGlobal(list.middleOf(list.at(3), 1)));
        QCOMPARE(pressed.at(0).at(2).toInt(), 1);
        QCOMPARE(clicked.at(0).at(2).toInt(), 1);
        QCOMPARE(button_pressed.at(0).at(0).toInt(), int(Qt::LeftButton));
        QCOMPARE(itemOf(button_clicked.at(0), 1), list.at(3));
        QCOMPARE(right_pressed.count() + right_clicked.count(), 0);
        list.click(list.at(2), Qt::NoModifier, 0, Qt::RightButton);
        QCOMPARE(itemOf(right_pressed.at(0)), list.at(2));
        QCOMPARE(itemOf(right_clicked.at(0)), list.at(2));
        QCOMPARE(list.selection(), QStringLiteral("2"));
        QTest::mouseClick(list.viewport(), Qt::RightButton, Qt::NoModifier, QPoint(250, 5));
        QCOMPARE(itemOf(right_clicked.at(1)), nullptr);
        QCOMPARE(right_clicked.at(1).at(2).toInt(), -1);
    }

    void aPressDraggedAwayIsNoClick()
    {
        ListFixture list;
        QVERIFY(list.showAndWait());
        QSignalSpy clicked(&list, SIGNAL(clicked(Q3ListViewItem *)));
        QTest::mousePress(list.viewport(), Qt::LeftButton, Qt::NoModifier, list.middleOf(list.at(1)));
        list.release(list.middleOf(list.at(2)));
        QCOMPARE(clicked.count(), 0);
    }

    void rightButtonKeepsASelectionThatItIsOn()
    {
        ListFixture list(10, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        list.click(list.at(1));
        list.click(list.at(3), Qt::ShiftModifier);
        list.click(list.at(2), Qt::NoModifier, 0, Qt::RightButton);
        QCOMPARE(list.selection(), QStringLiteral("1 2 3"));
        list.click(list.at(5), Qt::NoModifier, 0, Qt::RightButton);
        QCOMPARE(list.selection(), QStringLiteral("5"));
    }

    void doubleClicks()
    {
        ListFixture list;
        QVERIFY(list.showAndWait());
        QSignalSpy item(&list, SIGNAL(doubleClicked(Q3ListViewItem *)));
        QSignalSpy all(&list, SIGNAL(doubleClicked(Q3ListViewItem *, QPoint, int)));
        QSignalSpy clicked(&list, SIGNAL(clicked(Q3ListViewItem *)));
        list.doubleClick(list.at(3));
        QCOMPARE(item.count(), 1);
        QCOMPARE(itemOf(all.at(0)), list.at(3));
        QCOMPARE(all.at(0).at(2).toInt(), 0);
        QCOMPARE(clicked.count(), 1); // of the first
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(250, 5));
        QCOMPARE(item.count(), 1);
        QCOMPARE(itemOf(all.at(1)), nullptr);
        QCOMPARE(all.at(1).at(2).toInt(), -1);
        list.at(5)->setEnabled(false);
        list.doubleClick(list.at(5));
        QCOMPARE(all.count(), 2);
    }

    void expanders()
    {
        ListFixture list(4);
        auto *child = new Q3ListViewItem(list.at(1), QStringLiteral("child"));
        new Q3ListViewItem(child, QStringLiteral("deep"));
        list.setRootIsDecorated(true);
        QVERIFY(list.showAndWait());
        QSignalSpy expanded(&list, SIGNAL(expanded(Q3ListViewItem *)));
        QSignalSpy collapsed(&list, SIGNAL(collapsed(Q3ListViewItem *)));
        const auto clickExpander = [&list](Q3ListViewItem *item, int level) {
            QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                              QPoint(level * list.treeStepSize() + 10, list.itemRect(item).center().y()));
        };
        clickExpander(list.at(1), 0);
        QVERIFY(list.at(1)->isOpen());
        QCOMPARE(itemOf(expanded.at(0)), list.at(1));
        QCOMPARE(list.selection(), QString());
        clickExpander(child, 0); // a strip too far out
        QVERIFY(!child->isOpen());
        clickExpander(child, 1);
        QVERIFY(child->isOpen());
        clickExpander(list.at(1), 0);
        QVERIFY(!list.at(1)->isOpen());
        QCOMPARE(collapsed.count(), 1);
        list.doubleClick(list.at(1));
        QVERIFY(list.at(1)->isOpen());
        list.setRootIsDecorated(false);
        list.doubleClick(list.at(1));
        QVERIFY(list.at(1)->isOpen()); // the user has no way to it
        clickExpander(list.at(0), 0);
        QCOMPARE(list.selection(), QStringLiteral("0"));
    }

    void draggingSelectsARange()
    {
        ListFixture list(10, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        list.dragTo(list.middleOf(list.at(1)), list.middleOf(list.at(4)));
        QCOMPARE(list.selection(), QStringLiteral("1 2 3 4"));
        list.move(list.middleOf(list.at(2)));
        QCOMPARE(list.selection(), QStringLiteral("1 2"));
        list.release(list.middleOf(list.at(2)));
        QSignalSpy clicked(&list, SIGNAL(clicked(Q3ListViewItem *)));
        list.move(list.middleOf(list.at(6)));
        QCOMPARE(list.selection(), QStringLiteral("1 2"));
        QCOMPARE(clicked.count(), 0);
    }

    void draggingInSingleTakesTheSelectionAlong()
    {
        ListFixture list;
        QVERIFY(list.showAndWait());
        list.dragTo(list.middleOf(list.at(1)), list.middleOf(list.at(4)));
        QCOMPARE(list.selection(), QStringLiteral("4"));
        QCOMPARE(list.currentItem(), list.at(4));
        list.release(list.middleOf(list.at(4)));
    }

    void draggingInMultiDoesAsThePressDid()
    {
        ListFixture list(10, Q3ListView::Multi);
        QVERIFY(list.showAndWait());
        list.dragTo(list.middleOf(list.at(1)), list.middleOf(list.at(4)));
        list.release(list.middleOf(list.at(4)));
        QCOMPARE(list.selection(), QStringLiteral("1 2 3 4"));
        list.dragTo(list.middleOf(list.at(3)), list.middleOf(list.at(6)));
        list.release(list.middleOf(list.at(6)));
        QCOMPARE(list.selection(), QStringLiteral("1 2"));
    }

    void aSelectedRowIsUnselectedOnRelease()
    {
        ListFixture list(10, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        list.click(list.at(1));
        list.click(list.at(3), Qt::ShiftModifier);
        QTest::mousePress(list.viewport(), Qt::LeftButton, Qt::NoModifier, list.middleOf(list.at(2)));
        QCOMPARE(list.selection(), QStringLiteral("1 2 3")); // a drag may begin
        list.release(list.middleOf(list.at(2)));
        QCOMPARE(list.selection(), QStringLiteral("2"));
    }

    void smallMovesSelectNothing()
    {
        ListFixture list(10, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        const QPoint edge(30, list.itemRect(list.at(2)).bottom());
        QTest::mousePress(list.viewport(), Qt::LeftButton, Qt::NoModifier, edge);
        list.move(edge + QPoint(0, QApplication::startDragDistance()));
        QCOMPARE(list.selection(), QStringLiteral("2"));
        list.move(edge + QPoint(0, QApplication::startDragDistance() + 1));
        QCOMPARE(list.selection(), QStringLiteral("2 3"));
        list.release(edge);
    }

    void aRubberBandSelectsWhatItTouches()
    {
        ListFixture list(6, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        list.click(list.at(5));
        const int row = list.at(0)->height();
        list.dragTo(QPoint(250, row + row / 2), QPoint(150, 3 * row + row / 2));
        QCOMPARE(list.selection(), QStringLiteral("1 2 3"));
        list.move(QPoint(230, 3 * row + row / 2)); // beside the columns
        QCOMPARE(list.selection(), QString());
        list.move(QPoint(150, row + row / 2));
        QCOMPARE(list.selection(), QStringLiteral("1"));
        list.release(QPoint(150, row));
        list.dragTo(QPoint(250, 4 * row + 3), QPoint(100, 5 * row + 3), Qt::ControlModifier);
        list.release(QPoint(100, 5 * row));
        QCOMPARE(list.selection(), QStringLiteral("1 4 5"));
    }

    void draggingBeyondTheEdgeScrolls()
    {
        ListFixture list(100, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        list.dragTo(list.middleOf(list.at(2)), QPoint(30, list.viewport()->height() + 40));
        QTRY_VERIFY(list.contentsY() > 200);
        list.release(QPoint(30, 0));
        QVERIFY(list.at(15)->isSelected());
        QVERIFY(!list.at(1)->isSelected());
        const int y = list.contentsY();
        QCoreApplication::processEvents();
        QCOMPARE(list.contentsY(), y);
    }

    void activation()
    {
        ListFixture list(3);
        auto *item = new Activated(&list, list.at(0));
        QVERIFY(list.showAndWait());
        list.click(item);
        QCOMPARE(item->times, 1);
        QVERIFY(item->by_mouse);
        QCOMPARE(item->where.y(), item->height() / 2 - (item->height() % 2 ? 0 : 1));
        QTest::keyClick(&list, Qt::Key_Space);
        QCOMPARE(item->times, 2);
        QVERIFY(!item->by_mouse);
    }

    void hovering()
    {
        ListFixture list;
        QVERIFY(list.showAndWait());
        QSignalSpy on(&list, SIGNAL(onItem(Q3ListViewItem *)));
        QSignalSpy off(&list, SIGNAL(onViewport()));
        const auto move = [&list](const QPoint &to) {
            QMouseEvent event(QEvent::MouseMove, to, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
            QCoreApplication::sendEvent(list.viewport(), &event);
        };
        move(list.middleOf(list.at(1)));
        on.clear();
        off.clear();
        move(list.middleOf(list.at(2)));
        move(list.middleOf(list.at(2), 1));
        QCOMPARE(on.count(), 1);
        QCOMPARE(itemOf(on.at(0)), list.at(2));
        move(QPoint(250, 5));
        move(QPoint(251, 5));
        QCOMPARE(off.count(), 1);
    }

    void contextMenus()
    {
        ListFixture list;
        QVERIFY(list.showAndWait());
        QSignalSpy wanted(&list, SIGNAL(contextMenuRequested(Q3ListViewItem *, QPoint, int)));
        const auto ask = [&list](const QPoint &at) {
            QContextMenuEvent event(QContextMenuEvent::Mouse, at, list.viewport()->mapToGlobal(at));
            QCoreApplication::sendEvent(list.viewport(), &event);
        };
        ask(list.middleOf(list.at(3), 1));
        QCOMPARE(itemOf(wanted.at(0)), list.at(3));
        QCOMPARE(wanted.at(0).at(1).toPoint(), list.viewport()->mapToGlobal(list.middleOf(list.at(3), 1)));
        QCOMPARE(wanted.at(0).at(2).toInt(), 1);
        ask(QPoint(250, 5));
        QCOMPARE(itemOf(wanted.at(1)), nullptr);
        QCOMPARE(wanted.at(1).at(2).toInt(), -1);
        list.setCurrentItem(list.at(2));
        QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(1, 1), list.mapToGlobal(QPoint(1, 1)));
        QCoreApplication::sendEvent(&list, &key);
        QCOMPARE(itemOf(wanted.at(2)), list.at(2));
        QCOMPARE(wanted.at(2).at(2).toInt(), -1);
    }

    void wheelScrolls()
    {
        ListFixture list(100);
        QVERIFY(list.showAndWait());
        QWheelEvent event(QPointF(10, 10), list.viewport()->mapToGlobal(QPoint(10, 10)), QPoint(), QPoint(0, -120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(list.viewport(), &event);
        QCOMPARE(list.contentsY(), QApplication::wheelScrollLines() * list.at(0)->height());
    }

    void rightToLeft()
    {
        ListFixture list(4);
        list.setLayoutDirection(Qt::RightToLeft);
        new Q3ListViewItem(list.at(1));
        list.setRootIsDecorated(true);
        QVERIFY(list.showAndWait());
        const int y = list.itemRect(list.at(1)).center().y();
        const int right = list.viewport()->width();
        QCOMPARE(list.itemAt(QPoint(right - 5, y)), list.at(1));
        QCOMPARE(list.itemAt(QPoint(5, y)), nullptr);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(right - 10, y));
        QVERIFY(list.at(1)->isOpen());
        QSignalSpy clicked(&list, SIGNAL(clicked(Q3ListViewItem *, QPoint, int)));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(right - 130, y));
        QCOMPARE(clicked.at(0).at(2).toInt(), 1);
    }

    void onlyThePressedItemIsActivated()
    {
        ListFixture list(1);
        list.setRootIsDecorated(true);
        auto *item = new Activated(&list, list.at(0));
        item->other = new Activated(&list, item);
        new Q3ListViewItem(item, QStringLiteral("child"));
        QVERIFY(list.showAndWait());
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(10, list.itemRect(item).center().y()));
        QVERIFY(item->isOpen());
        QCOMPARE(item->times, 0); // the mouse was on what opens it
        list.click(item);
        QCOMPARE(item->times, 1);
        QVERIFY(item->by_mouse);
        QVERIFY(!item->other_by_mouse);
    }

    void whatOpensEndsWithItsColumn()
    {
        ListFixture list(2);
        list.setRootIsDecorated(true);
        new Q3ListViewItem(list.at(0), QStringLiteral("child"));
        list.setColumnWidth(0, 5); // narrower than the indentation
        QVERIFY(list.showAndWait());
        const int y = list.itemRect(list.at(0)).center().y();
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(15, y));
        QVERIFY(!list.at(0)->isOpen());
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(3, y));
        QVERIFY(list.at(0)->isOpen());
    }

    void theRightButtonTogglesNothing()
    {
        ListFixture list(4, Q3ListView::Multi);
        QVERIFY(list.showAndWait());
        list.click(list.at(2), Qt::NoModifier, 0, Qt::RightButton);
        QVERIFY(list.selection().isEmpty());
        QCOMPARE(list.currentItem(), list.at(2));
    }

    void aDragOverDisabledRowsIsNoClick()
    {
        ListFixture list(5, Q3ListView::Extended);
        list.at(3)->setEnabled(false);
        QVERIFY(list.showAndWait());
        list.setSelected(list.at(1), true);
        list.setSelected(list.at(2), true);
        QTest::mousePress(list.viewport(), Qt::LeftButton, {}, list.middleOf(list.at(2)));
        list.move(list.middleOf(list.at(3)));
        list.release(list.middleOf(list.at(3)));
        QCOMPARE(list.selection(), QStringLiteral("1 2"));
    }

    void aDragThatComesBackIsNoClick()
    {
        ListFixture list(5, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        QSignalSpy clicked(&list, SIGNAL(clicked(Q3ListViewItem *)));
        list.dragTo(list.middleOf(list.at(1)), list.middleOf(list.at(3)));
        list.move(list.middleOf(list.at(1)));
        list.release(list.middleOf(list.at(1)));
        QCOMPARE(clicked.count(), 0);
    }

    void menusOfDisabledAndOfDistantItems()
    {
        ListFixture list(40);
        list.at(2)->setEnabled(false);
        QVERIFY(list.showAndWait());
        QSignalSpy wanted(&list, SIGNAL(contextMenuRequested(Q3ListViewItem *, QPoint, int)));
        QContextMenuEvent mouse(QContextMenuEvent::Mouse, list.middleOf(list.at(2)), QPoint(7, 7));
        QCoreApplication::sendEvent(list.viewport(), &mouse);
        QCOMPARE(itemOf(wanted.at(0)), nullptr);
        QCOMPARE(wanted.at(0).at(2).toInt(), -1);
        list.setCurrentItem(list.at(0));
        list.setContentsPos(0, 300);
        QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(), QPoint());
        QCoreApplication::sendEvent(list.viewport(), &key);
        QCOMPARE(itemOf(wanted.at(1)), list.at(0));
        QCOMPARE(list.viewport()->mapFromGlobal(wanted.at(1).at(1).toPoint()).y(), 0);
    }

    void shiftWithoutAnAnchorBeginsAtTheCurrentItem()
    {
        ListFixture list(5, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        list.setCurrentItem(list.at(1));
        list.click(list.at(3), Qt::ShiftModifier);
        QCOMPARE(list.selection(), QStringLiteral("1 2 3"));
    }

    void shiftAndCtrlAddARange()
    {
        ListFixture list(8, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        list.click(list.at(0));
        list.click(list.at(4), Qt::ControlModifier);
        list.click(list.at(6), Qt::ShiftModifier | Qt::ControlModifier);
        QCOMPARE(list.selection(), QStringLiteral("0 4 5 6"));
        list.click(list.at(5), Qt::ShiftModifier);
        QCOMPARE(list.selection(), QStringLiteral("4 5"));
    }
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewMouse)

#include "tst_q3listview_mouse.moc"
