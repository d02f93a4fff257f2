// SPDX-License-Identifier: MIT
#include "qt3/q3header.h"
#include "tests/listviews/dndfixture.h"
#include "tests/support/helddrag.h"
#include "tests/support/standardoutput.h"
#include "tests/support/tavitest.h"

using Rule = DNDListView::DNDAllow;
Q_DECLARE_METATYPE(Rule)

/// The list whose items are dragged and dropped: its rules, its mark, its drops.
class TestDNDListView : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        QWidget parent;
        DNDListView list(&parent, "list");
        QCOMPARE(list.objectName(), QString("list"));
        QCOMPARE(list.parentWidget(), &parent);
        QVERIFY(!list.headerMenuEnabled());
        QCOMPARE(list.resizeMode(), Q3ListView::LastColumn);
        QCOMPARE(list.selectionMode(), Q3ListView::Single);
        QCOMPARE(list.sortColumn(), -1);
        QVERIFY(list.acceptDrops());
        QVERIFY(list.viewport()->acceptDrops());
        QVERIFY(list.dragAutoScroll());
        QVERIFY(list.isMouseClicksEnabled());
        QVERIFY(list.isDropBetweenMode());
        const auto *mark = list.viewport()->findChild<DNDIndicator *>("DNDindicator");
        QVERIFY(mark && mark->isHidden());
        QVERIFY(mark->isDropBetweenMode());
    }

    void withoutASubclassNothingTravels()
    {
        DNDListView list;
        const Ink ink;
        const QDropEvent event(QPointF(), Qt::MoveAction, &ink, Qt::LeftButton, Qt::NoModifier);
        QVERIFY(!list.canDecode(&event));
        QVERIFY(!list.encode());
        QCOMPARE(list.decode(nullptr, &event), 0);
        list.clearSources(true);
        list.initDrag();
    }

    void theLastColumnFillsTheWidth()
    {
        DNDListView list;
        list.addColumn("A", 50);
        list.addColumn("B", 50);
        list.resize(300, 200);
        list.show();
        QVERIFY(QTest::qWaitForWindowExposed(&list));
        QTRY_COMPARE(list.columnWidth(1), list.visibleWidth() - 50);
    }

    void rulesAtFirst_data()
    {
        QTest::addColumn<Rule>("rule");
        QTest::addColumn<int>("number");
        QTest::addColumn<bool>("allowed");
        QTest::newRow("from others") << DNDListView::DROP_FROM_OTHERS << 0 << true;
        QTest::newRow("from self") << DNDListView::DROP_FROM_SELF << 1 << true;
        QTest::newRow("self moves") << DNDListView::DRAG_SELF_MOVES << 2 << true;
        QTest::newRow("others move") << DNDListView::DRAG_OTHERS_MOVES << 3 << true;
        QTest::newRow("other applications move") << DNDListView::DRAG_OTHERAPPS_MOVES << 4 << false;
    }
    void rulesAtFirst()
    {
        QFETCH(Rule, rule);
        QFETCH(int, number);
        QFETCH(bool, allowed);
        QCOMPARE(int(rule), number);
        DNDListView list;
        QCOMPARE(list.isAllowed(rule), allowed);
        // Each is a rule of its own.
        list.setAllowed(rule, !allowed);
        for (int other = 0; other < 5; ++other)
            QCOMPARE(list.isAllowed(Rule(other)), other == number ? !allowed : other != 4);
    }

    void numbersThatAreNoRulesChangeNothing()
    {
        DNDListView list;
        const QString before = list.sprintAllowed(false);
        for (const int none : {-1, 5, 7}) {
            list.setAllowed(Rule(none), true);
            QVERIFY(!list.isAllowed(Rule(none)));
        }
        QCOMPARE(list.sprintAllowed(false), before);
    }

    void sourcesAreThisViewOrOthers()
    {
        DNDListView list;
        QWidget other;
        const auto allows = [&list](const QWidget *source) {
            return list.isAllowed(source);
        };
        QVERIFY(allows(&list) && allows(&other) && allows(nullptr));
        list.setAllowed(DNDListView::DROP_FROM_SELF, false);
        QVERIFY(!allows(&list) && allows(&other) && allows(nullptr));
        list.setAllowed(DNDListView::DROP_FROM_SELF, true);
        list.setAllowed(DNDListView::DROP_FROM_OTHERS, false);
        QVERIFY(allows(&list) && !allows(&other) && !allows(nullptr));
    }

    void rulesAsText()
    {
        DNDListView list;
        QCOMPARE(list.sprintAllowed(false),
                 QString("DROP_FROM_OTHERS:true DROP_FROM_SELF:true DRAG_SELF_MOVES:true DRAG_OTHERS_MOVES:true "
                         "DRAG_OTHERAPPS_MOVES:false"));
        list.setAllowed(DNDListView::DRAG_SELF_MOVES, false);
        QCOMPARE(list.sprintAllowed(true),
                 QString("DROP_FROM_OTHERS:true<br>DROP_FROM_SELF:true<br>DRAG_SELF_MOVES:false<br>"
                         "DRAG_OTHERS_MOVES:true<br>DRAG_OTHERAPPS_MOVES:false"));
    }

    void rulesArePrinted()
    {
        const DNDListView list(nullptr, "swatches");
        StandardOutput output;
        list.printAllowed();
        QCOMPARE(output.text(), "DNDListView::printAllowed() -- swatches -- " + list.sprintAllowed(false) + "\n");
    }

    void theModeGoesToTheMark()
    {
        DNDProbe list;
        QVERIFY(list.showAndWait());
        list.mark()->resize(50, 60);
        list.setDropBetweenMode(false);
        QVERIFY(!list.isDropBetweenMode());
        QVERIFY(!list.mark()->isDropBetweenMode());
        QCOMPARE(list.mark()->size(), QSize(50, 60));
        list.setDropBetweenMode(true);
        QVERIFY(list.mark()->isDropBetweenMode());
        QCOMPARE(list.mark()->size(), QSize(list.visibleWidth(), 11));
    }

    void whatEntersIsAcceptedIfUnderstoodAndAllowed()
    {
        DNDProbe list;
        QVERIFY(list.showAndWait());
        const Ink ink;
        list.mark()->show();
        QVERIFY(list.enter(ink));
        QVERIFY(list.mark()->isHidden());
        QCOMPARE(list.mark()->size(), QSize(list.visibleWidth(), 11));
        list.understands = false;
        QVERIFY(!list.enter(ink));
        list.understands = true;
        list.setAllowed(DNDListView::DROP_FROM_OTHERS, false);
        QVERIFY(!list.enter(ink));
        QMimeData other;
        other.setText("cyan");
        list.setAllowed(DNDListView::DROP_FROM_OTHERS, true);
        QVERIFY(!list.enter(other));
    }

    void ontoItemsTheMarkKeepsItsSizeAtFirst()
    {
        DNDProbe list;
        list.setDropBetweenMode(false);
        QVERIFY(list.showAndWait());
        list.mark()->resize(50, 60);
        const Ink ink;
        QVERIFY(list.enter(ink));
        QCOMPARE(list.mark()->size(), QSize(50, 60));
    }

    void aDragThatIsRefusedHidesTheMark()
    {
        DNDProbe list;
        QVERIFY(list.showAndWait());
        const Ink ink;
        QVERIFY(list.moveOver(ink, list.inRow(1)));
        QVERIFY(list.mark()->isVisible());
        list.understands = false;
        QVERIFY(!list.moveOver(ink, list.inRow(1)));
        QVERIFY(list.mark()->isHidden());
        list.understands = true;
        QVERIFY(list.moveOver(ink, list.inRow(1)));
        list.setAllowed(DNDListView::DROP_FROM_OTHERS, false);
        QVERIFY(!list.moveOver(ink, list.inRow(1)));
        QVERIFY(list.mark()->isHidden());
    }

    void leavingHidesTheMark()
    {
        DNDProbe list;
        QVERIFY(list.showAndWait());
        const Ink ink;
        QVERIFY(list.moveOver(ink, list.inRow(1)));
        QVERIFY(list.mark()->isVisible());
        list.leave();
        QVERIFY(list.mark()->isHidden());
    }

    void betweenRowsTheMarkIsOnTheirLine_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<double>("down");
        QTest::addColumn<int>("line"); // above the row of this number
        QTest::newRow("first row, upper half") << 0 << 0.0 << 0;
        QTest::newRow("first row, lower half") << 0 << 0.9 << 1;
        QTest::newRow("third row, upper half") << 2 << 0.2 << 2;
        QTest::newRow("third row, lower half") << 2 << 0.8 << 3;
        QTest::newRow("last row, lower half") << 4 << 0.8 << 5;
    }
    void betweenRowsTheMarkIsOnTheirLine()
    {
        QFETCH(int, row);
        QFETCH(double, down);
        QFETCH(int, line);
        DNDProbe list;
        QVERIFY(list.showAndWait());
        const Ink ink;
        list.enter(ink);
        QVERIFY(list.moveOver(ink, list.inRow(row, down)));
        const int height = list.itemRect(list.at(0)).height();
        QVERIFY(list.mark()->isVisible());
        // Its middle is on the first pixel below the line.
        QCOMPARE(list.mark()->geometry(), QRect(0, height * line - 5, list.visibleWidth(), 11));
    }

    void theMiddleOfARowIsItsLowerHalf()
    {
        DNDProbe list;
        QVERIFY(list.showAndWait());
        const Ink ink;
        const QRect row = list.itemRect(list.at(2));
        const int middle = row.top() + row.height() / 2;
        list.moveOver(ink, QPoint(30, middle));
        QCOMPARE(list.mark()->y(), row.bottom() - 4);
        list.moveOver(ink, QPoint(30, middle - 1));
        QCOMPARE(list.mark()->y(), row.top() - 5);
    }

    void belowAllRowsTheMarkIsBelowTheLast()
    {
        DNDProbe list;
        QVERIFY(list.showAndWait());
        const Ink ink;
        QVERIFY(list.moveOver(ink, QPoint(30, list.visibleHeight() - 5)));
        QCOMPARE(list.mark()->y(), list.itemRect(list.at(4)).bottom() - 4);
    }

    void inAnEmptyListTheMarkIsAtTheTop()
    {
        DNDProbe list(0);
        QVERIFY(list.showAndWait());
        const Ink ink;
        list.enter(ink);
        list.mark()->move(7, 7);
        QVERIFY(list.moveOver(ink, QPoint(30, 50)));
        QCOMPARE(list.mark()->pos(), QPoint(0, 0));
        QVERIFY(list.mark()->isVisible());
    }

    void theMarkIsWhereTheRowIsSeen()
    {
        DNDProbe list(26);
        QVERIFY(list.showAndWait());
        list.setContentsPos(0, 45);
        const Ink ink;
        const Q3ListViewItem *item = list.itemAt(QPoint(30, 60));
        const QRect row = list.itemRect(item);
        QVERIFY(row.top() != list.contentsToViewport(QPoint()).y());
        list.moveOver(ink, QPoint(30, row.top()));
        QCOMPARE(list.mark()->y(), row.top() - 5);
        list.setDropBetweenMode(false);
        list.moveOver(ink, QPoint(30, row.top()));
        QCOMPARE(list.mark()->geometry(), row);
    }

    void ontoARowTheMarkCoversIt()
    {
        DNDProbe list;
        list.setDropBetweenMode(false);
        QVERIFY(list.showAndWait());
        const Ink ink;
        list.enter(ink);
        for (const double down : {0.1, 0.9}) {
            QVERIFY(list.moveOver(ink, list.inRow(3, down)));
            QCOMPARE(list.mark()->geometry(), list.itemRect(list.at(3)));
            QCOMPARE(list.mark()->width(), list.visibleWidth());
        }
        QVERIFY(list.mark()->isVisible());
    }

    void ontoNothingTheMarkCoversTheRest()
    {
        DNDProbe list;
        list.setDropBetweenMode(false);
        QVERIFY(list.showAndWait());
        const Ink ink;
        QVERIFY(list.moveOver(ink, QPoint(30, list.visibleHeight() - 5)));
        const int top = list.itemRect(list.at(4)).bottom();
        QCOMPARE(list.mark()->geometry(), QRect(0, top, list.visibleWidth(), list.visibleHeight() - top));
        DNDProbe empty(0);
        empty.setDropBetweenMode(false);
        QVERIFY(empty.showAndWait());
        QVERIFY(empty.moveOver(ink, QPoint(30, 50)));
        QCOMPARE(empty.mark()->geometry(), QRect(0, 0, empty.visibleWidth(), empty.visibleHeight()));
    }

    void aDropGoesWhereTheMarkWas_data()
    {
        QTest::addColumn<bool>("between");
        QTest::addColumn<int>("row");
        QTest::addColumn<double>("down");
        QTest::addColumn<QString>("after");
        QTest::newRow("first row, upper half") << true << 0 << 0.1 << "null";
        QTest::newRow("first row, lower half") << true << 0 << 0.9 << "a";
        QTest::newRow("third row, upper half") << true << 2 << 0.1 << "b";
        QTest::newRow("third row, lower half") << true << 2 << 0.9 << "c";
        QTest::newRow("below all rows") << true << 4 << 2.5 << "e";
        QTest::newRow("onto, upper half") << false << 2 << 0.1 << "c";
        QTest::newRow("onto, lower half") << false << 2 << 0.9 << "c";
        QTest::newRow("onto nothing") << false << 4 << 2.5 << "e";
    }
    void aDropGoesWhereTheMarkWas()
    {
        QFETCH(bool, between);
        QFETCH(int, row);
        QFETCH(double, down);
        QFETCH(QString, after);
        DNDProbe list;
        list.setDropBetweenMode(between);
        QVERIFY(list.showAndWait());
        const Ink ink;
        QVERIFY(list.dragAndDrop(ink, list.inRow(row, down)));
        QCOMPARE(list.calls, QStringList{"decode cyan after " + after});
        QVERIFY(list.mark()->isHidden());
    }

    void aDropInAnEmptyListIsAfterNothing()
    {
        for (const bool between : {true, false}) {
            DNDProbe list(0);
            list.setDropBetweenMode(between);
            QVERIFY(list.showAndWait());
            const Ink ink;
            QVERIFY(list.dragAndDrop(ink, QPoint(30, 50)));
            QCOMPARE(list.calls, QStringList{"decode cyan after null"});
        }
    }

    void ontoItemsTheLineOfBeforeDoesNotCount()
    {
        DNDProbe list;
        QVERIFY(list.showAndWait());
        const Ink ink;
        QVERIFY(list.moveOver(ink, list.inRow(2, 0.1)));
        list.setDropBetweenMode(false);
        QVERIFY(list.dragAndDrop(ink, list.inRow(2, 0.1)));
        QCOMPARE(list.calls, QStringList{"decode cyan after c"});
    }

    void rowsThatAreHiddenAreNotDroppedOn()
    {
        DNDProbe list;
        list.at(1)->setVisible(false);
        list.at(4)->setVisible(false);
        QVERIFY(list.showAndWait());
        const Ink ink;
        QVERIFY(list.dragAndDrop(ink, list.inRow(2, 0.1)));
        QVERIFY(list.dragAndDrop(ink, list.inRow(3, 3.5)));
        QCOMPARE(list.calls, QStringList({"decode cyan after a", "decode cyan after d"}));
    }

    void aDropThatIsRefusedIsNotDecoded()
    {
        DNDProbe list;
        QVERIFY(list.showAndWait());
        const Ink ink;
        list.mark()->show();
        list.understands = false;
        QVERIFY(!list.drop(ink, list.inRow(1)));
        QVERIFY(list.mark()->isHidden());
        list.understands = true;
        list.setAllowed(DNDListView::DROP_FROM_OTHERS, false);
        QVERIFY(!list.drop(ink, list.inRow(1)));
        QCOMPARE(list.calls, QStringList());
    }

    void aDropFromAnotherWidgetRemovesNothingHere()
    {
        DNDProbe list;
        QWidget other;
        QVERIFY(list.showAndWait(QPoint(300, 300)));
        const Ink ink;
        QVERIFY(list.drop(ink, list.inRow(1)));
        QVERIFY(holdDrag(&other, DNDProbe::type, "cyan", [&] { QVERIFY(list.drop(ink, list.inRow(1))); }));
        QCOMPARE(list.calls, QStringList({"decode cyan after b", "decode cyan after b"}));
    }

    void aDropFromTheViewItself_data()
    {
        QTest::addColumn<bool>("from_self");
        QTest::addColumn<bool>("self_moves");
        QTest::addColumn<bool>("move");
        QTest::addColumn<QStringList>("calls");
        const QString decoded = "decode cyan after b";
        QTest::newRow("moves") << true << true << true << QStringList({decoded, "remove"});
        QTest::newRow("stays") << true << false << true << QStringList({decoded});
        QTest::newRow("is a copy") << true << true << false << QStringList({decoded});
        QTest::newRow("is not allowed") << false << true << true << QStringList();
    }
    void aDropFromTheViewItself()
    {
        QFETCH(bool, from_self);
        QFETCH(bool, self_moves);
        QFETCH(bool, move);
        QFETCH(QStringList, calls);
        DNDProbe list;
        list.setAllowed(DNDListView::DROP_FROM_SELF, from_self);
        list.setAllowed(DNDListView::DRAG_SELF_MOVES, self_moves);
        QVERIFY(list.showAndWait(QPoint(300, 300)));
        const Ink ink;
        QVERIFY(holdDrag(&list, DNDProbe::type, "cyan", [&] {
            QCOMPARE(list.drop(ink, list.inRow(1), move ? Qt::MoveAction : Qt::CopyAction), from_self);
            QCOMPARE(list.enter(ink), from_self);
            QCOMPARE(list.moveOver(ink, list.inRow(1)), from_self);
        }));
        QCOMPARE(list.calls, calls);
    }

    void theViewMayBeDeletedByADrop()
    {
        auto *list = new DNDProbe;
        QVERIFY(list->showAndWait());
        list->during_decode = [list] {
            list->deleteLater();
        };
        const QPointer<DNDProbe> alive(list);
        const Ink ink;
        QVERIFY(list->drop(ink, list->inRow(1)));
        QTRY_VERIFY(!alive);
    }

    void withoutClicksTheMouseDoesNothing()
    {
        DNDProbe list;
        QVERIFY(list.showAndWait());
        list.setMouseClicksEnabled(false);
        QVERIFY(!list.isMouseClicksEnabled());
        int signals_seen = 0;
        const auto note = [&signals_seen] {
            ++signals_seen;
        };
        connect(&list, QOverload<>::of(&Q3ListView::selectionChanged), &list, note);
        connect(&list, QOverload<Q3ListViewItem *>::of(&Q3ListView::pressed), &list, note);
        connect(&list, QOverload<Q3ListViewItem *>::of(&Q3ListView::clicked), &list, note);
        connect(&list, QOverload<Q3ListViewItem *>::of(&Q3ListView::doubleClicked), &list, note);
        connect(&list, &Q3ListView::contextMenuRequested, &list, note);
        connect(&list, &Q3ListView::onItem, &list, note);
        const QPoint place = list.inRow(2);
        QWidget *const area = list.viewport();
        QTest::mouseClick(area, Qt::LeftButton, {}, place);
        QTest::mouseClick(area, Qt::RightButton, {}, place);
        QTest::mouseDClick(area, Qt::LeftButton, {}, place);
        pressAndMove(list, list.inRow(2), QPoint(0, 60));
        QTest::mouseRelease(area, Qt::LeftButton, {}, place);
        QMouseEvent hover(QEvent::MouseMove, place, area->mapToGlobal(place), Qt::NoButton, Qt::NoButton, {});
        QCoreApplication::sendEvent(area, &hover);
        QContextMenuEvent menu(QContextMenuEvent::Mouse, place, area->mapToGlobal(place));
        QCoreApplication::sendEvent(area, &menu);
        QCOMPARE(signals_seen, 0);
        QCOMPARE(list.asked, 0);
        QVERIFY(!list.selectedItem());
        // The keyboard still does.
        QContextMenuEvent key(QContextMenuEvent::Keyboard, place, area->mapToGlobal(place));
        QCoreApplication::sendEvent(area, &key);
        QCOMPARE(signals_seen, 1);
        list.setMouseClicksEnabled(true);
        QTest::mouseClick(area, Qt::LeftButton, {}, place);
        QCOMPARE(list.selectedItem(), list.at(2));
    }

    void aDragBeginsBeyondTheDistanceOfEachAxis_data()
    {
        QTest::addColumn<QPoint>("way");
        QTest::addColumn<bool>("begins");
        const int far = QApplication::startDragDistance();
        QTest::newRow("as far") << QPoint(far, far) << false;
        QTest::newRow("right") << QPoint(far + 1, 0) << true;
        QTest::newRow("left") << QPoint(-far - 1, 0) << true;
        QTest::newRow("down") << QPoint(0, far + 1) << true;
        QTest::newRow("up") << QPoint(0, -far - 1) << true;
    }
    void aDragBeginsBeyondTheDistanceOfEachAxis()
    {
        QFETCH(QPoint, way);
        QFETCH(bool, begins);
        DNDProbe list;
        list.has_something = false;
        QVERIFY(list.showAndWait());
        pressAndMove(list, list.inRow(2), way);
        QCOMPARE(list.asked, begins ? 1 : 0);
        QTest::mouseRelease(list.viewport(), Qt::LeftButton);
    }

    void onlyTheLeftButtonDrags()
    {
        DNDProbe list;
        list.has_something = false;
        QVERIFY(list.showAndWait());
        pressAndMove(list, list.inRow(2), QPoint(0, 40), Qt::RightButton);
        moveTo(list, list.inRow(3), Qt::LeftButton); // which was pressed elsewhere
        QTest::mouseRelease(list.viewport(), Qt::RightButton);
        QCOMPARE(list.asked, 0);
        // Nor one that was not pressed here.
        moveTo(list, list.inRow(3), Qt::LeftButton);
        QCOMPARE(list.asked, 0);
    }

    void aReleaseEndsIt()
    {
        DNDProbe list;
        list.has_something = false;
        QVERIFY(list.showAndWait());
        QTest::mousePress(list.viewport(), Qt::LeftButton, {}, list.inRow(0));
        list.mark()->show();
        QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, list.inRow(0));
        QVERIFY(list.mark()->isHidden());
        moveTo(list, list.inRow(3), Qt::LeftButton);
        QCOMPARE(list.asked, 0);
    }

    void endDragForgetsThePress()
    {
        DNDProbe list;
        list.has_something = false;
        QVERIFY(list.showAndWait());
        QTest::mousePress(list.viewport(), Qt::LeftButton, {}, list.inRow(0));
        list.mark()->show();
        list.endDrag();
        QVERIFY(list.mark()->isHidden());
        moveTo(list, list.inRow(3), Qt::LeftButton);
        QCOMPARE(list.asked, 0);
        QTest::mouseRelease(list.viewport(), Qt::LeftButton);
    }

    void withNothingToDragTheListSelectsAsUsual()
    {
        DNDProbe list;
        list.setSelectionMode(Q3ListView::Extended);
        list.has_something = false;
        QVERIFY(list.showAndWait());
        pressAndMove(list, list.inRow(1), list.inRow(3) - list.inRow(1));
        for (int row = 0; row < 5; ++row)
            QCOMPARE(list.at(row)->isSelected(), row >= 1 && row <= 3);
        QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, list.inRow(3));
    }

    void aPressOnADisabledItemDragsWhatIsSelected()
    {
        DNDProbe list;
        list.has_something = false;
        QVERIFY(list.showAndWait());
        list.setSelected(list.at(3), true);
        list.at(1)->setEnabled(false);
        pressAndMove(list, list.inRow(1), QPoint(0, 40));
        QCOMPARE(list.asked, 1);
        QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, list.inRow(1));
    }

    void theViewMayBeDeletedByASlotOfThePress()
    {
        auto *list = new DNDProbe;
        QVERIFY(list->showAndWait());
        const QPointer<DNDProbe> alive(list);
        connect(list, QOverload<Q3ListViewItem *>::of(&Q3ListView::pressed), list, &QObject::deleteLater);
        QTest::mousePress(list->viewport(), Qt::LeftButton, {}, list->inRow(1));
        QTRY_VERIFY(!alive);
    }

private:
    static void moveTo(DNDListView &list, const QPoint &place, Qt::MouseButton button)
    {
        QMouseEvent move(QEvent::MouseMove, place, list.viewport()->mapToGlobal(place), Qt::NoButton, button, {});
        QCoreApplication::sendEvent(list.viewport(), &move);
    }
    static void pressAndMove(DNDListView &list, const QPoint &from, const QPoint &way,
                             Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mousePress(list.viewport(), button, {}, from);
        moveTo(list, from + way, button);
    }
};

TAVI_GUI_TEST_MAIN(TestDNDListView)
#include "tst_dndlistview.moc"
