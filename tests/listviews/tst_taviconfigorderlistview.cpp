// SPDX-License-Identifier: MIT
#include "qt3/q3dragobject.h"
#include "qt3/q3header.h"
#include "tests/listviews/dndfixture.h"
#include "tests/listviews/orderlistfixture.h"
#include "tests/support/helddrag.h"
#include "tests/support/tavitest.h"
#include "treeviews/numberlistdrag.h"

#include <QElapsedTimer>

#include <algorithm>

namespace {

using OrderList = DragTarget<TaviConfigOrderListView>;
const QString type = QStringLiteral("x-orlo/numberlistdrag-conford");

/// What a drag of a list would bring; empty if there is nothing to drag.
QByteArray encoded(TaviConfigOrderListView &list)
{
    const std::unique_ptr<Q3DragObject> drag(list.encode());
    return drag ? drag->encodedData(drag->format(0)) : QByteArray();
}

/// A list of all things and one of those that show, without a dialog.
struct Pair {
    explicit Pair(int count = 6, const QString &showing_names = "A B C") : things(makeThings(count, showing_names))
    {
        all.setBuddy(&showing);
        showing.setBuddy(&all);
        all.resize(200, 300);
        showing.resize(200, 300);
        Q3ListViewItem *last = nullptr;
        Q3ListViewItem *last_showing = nullptr;
        for (const auto &thing : things) {
            const bool shows = thing->isItemVisible();
            thing->setItemInShowList(shows);
            last = new TaviConfigOrderListItem(&all, last, thing.get());
            last->setEnabled(!shows);
            if (shows)
                last_showing = new TaviConfigOrderListItem(&showing, last_showing, thing.get());
        }
    }
    bool showAndWait() { return all.showAndWait(QPoint(100, 100)) && showing.showAndWait(QPoint(400, 100)); }

    /// Drops data on a list while a drag of a source goes on.
    static bool dropFrom(QWidget *source, const QByteArray &data, OrderList &target, const QPoint &at)
    {
        QMimeData dragged;
        dragged.setData(type, data);
        bool taken = false;
        if (!holdDrag(source, type, data, [&] { taken = target.dragAndDrop(dragged, at); }))
            QTest::qFail("there was no drag", __FILE__, __LINE__);
        return taken;
    }
    /// All of a drag: what is selected, the drop, and its end.
    static bool drag(OrderList &source, OrderList &target, const QPoint &at)
    {
        const QByteArray data = encoded(source);
        if (data.isEmpty())
            return false;
        const bool taken = dropFrom(&source, data, target, at);
        if (source.isAllowed(DNDListView::DRAG_OTHERS_MOVES))
            source.clearSources(taken);
        return taken;
    }
    QString flags() const
    {
        QString names;
        for (const auto &thing : things)
            names += thing->isItemInShowList() ? thing->name : thing->name.toLower();
        return names;
    }

    std::vector<std::unique_ptr<Thing>> things;
    OrderList all{true};
    OrderList showing{false};
};

} // namespace

/// The pair of lists of the order dialog.
class TestTaviConfigOrderListView : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction_data()
    {
        QTest::addColumn<bool>("is_source");
        QTest::addColumn<QString>("heading");
        QTest::addColumn<QString>("rules");
        QTest::newRow("all") << true << "All Items"
                             << "DROP_FROM_OTHERS:true DROP_FROM_SELF:false DRAG_SELF_MOVES:false "
                                "DRAG_OTHERS_MOVES:false DRAG_OTHERAPPS_MOVES:false";
        QTest::newRow("showing") << false << "Showing"
                                 << "DROP_FROM_OTHERS:true DROP_FROM_SELF:true DRAG_SELF_MOVES:true "
                                    "DRAG_OTHERS_MOVES:true DRAG_OTHERAPPS_MOVES:false";
    }
    void construction()
    {
        QFETCH(bool, is_source);
        QWidget parent;
        const TaviConfigOrderListView list(is_source, &parent, "list");
        QCOMPARE(list.objectName(), QString("list"));
        QCOMPARE(list.parentWidget(), &parent);
        QCOMPARE(list.isSource(), is_source);
        QVERIFY(!list.buddy());
        QCOMPARE(list.columns(), 1);
        QTEST(list.columnText(0), "heading");
        QTEST(list.accessibleName(), "heading");
        QCOMPARE(list.columnWidthMode(0), Q3ListView::Maximum);
        QVERIFY(list.header()->isStretchEnabled(0));
        QTEST(list.sprintAllowed(false), "rules");
        QVERIFY(list.isDropBetweenMode());
        QCOMPARE(list.selectionMode(), Q3ListView::Extended);
        QCOMPARE(TaviConfigOrderListView::MIME_SUFFIX, QByteArray("-conford"));
    }

    void rowsTellOfTheirThing()
    {
        Thing thing("A");
        thing.pixmap = QPixmap(12, 10);
        TaviConfigOrderListView list(false);
        const auto *row = new TaviConfigOrderListItem(&list, nullptr, &thing);
        auto *second = new TaviConfigOrderListItem(&list, list.firstChild(), nullptr);
        QCOMPARE(row->configOrderItem(), &thing);
        QCOMPARE(row->text(0), QString("A"));
        QCOMPARE(row->text(1), QString());
        QCOMPARE(row->pixmap(0)->size(), QSize(12, 10));
        thing.name = "B";
        QCOMPARE(row->text(0), QString("B"));
        QCOMPARE(rowAt(list, 1), second);
        QCOMPARE(second->text(0), QString());
        QVERIFY(!second->pixmap(0));
        const Q3ListViewItem *other = new Q3ListViewItem(&list, "other");
        QCOMPARE(TaviConfigOrderListItem::configOrderItemOf(row), &thing);
        QVERIFY(!TaviConfigOrderListItem::configOrderItemOf(second));
        QVERIFY(!TaviConfigOrderListItem::configOrderItemOf(other));
        QVERIFY(!TaviConfigOrderListItem::configOrderItemOf(nullptr));
    }

    void aThingIsNotInTheShowListAtFirst()
    {
        const TaviConfigOrderItem thing;
        QVERIFY(!thing.isItemInShowList());
    }

    void whatIsDraggedAreIndicesInTheSourceList()
    {
        Pair pair(6, "E B");
        pair.showing.at(0)->moveItem(pair.showing.at(1)); // E B
        QCOMPARE(rowTexts(pair.showing), QString("E B"));
        selectRows(pair.all, "A C F");
        QCOMPARE(encoded(pair.all), QByteArray("0 2 5"));
        selectRows(pair.showing, "E B");
        QCOMPARE(encoded(pair.showing), QByteArray("4 1"));
        selectRows(pair.showing, "B");
        QCOMPARE(encoded(pair.showing), QByteArray("1"));
    }

    void theDragObject()
    {
        Pair pair;
        selectRows(pair.all, "D");
        const std::unique_ptr<Q3DragObject> drag(pair.all.encode());
        QVERIFY(drag);
        QCOMPARE(drag->format(0), "x-orlo/numberlistdrag-conford");
        QCOMPARE(drag->source(), &pair.all);
        QCOMPARE(drag->objectName(), QString("TaviConfigOrderList numbers"));
        QVERIFY(pair.all.findChildren<NumberListDrag *>().isEmpty());
    }

    void whatCannotBeDragged()
    {
        Pair pair;
        QCOMPARE(encoded(pair.all), QByteArray());
        selectRows(pair.all, "A"); // disabled
        QCOMPARE(encoded(pair.all), QByteArray());
        (new Q3ListViewItem(&pair.all, "other"))->setSelected(true);
        (new TaviConfigOrderListItem(&pair.all, nullptr, nullptr))->setSelected(true);
        QCOMPARE(encoded(pair.all), QByteArray());
        // They count all the same.
        pair.all.setSelected(rowOf(pair.all, "E"), true);
        QCOMPARE(encoded(pair.all), QByteArray("6"));
        // A thing that the source list does not have.
        Thing stray("X");
        (new TaviConfigOrderListItem(&pair.showing, nullptr, &stray))->setSelected(true);
        QCOMPARE(encoded(pair.showing), QByteArray());
        pair.showing.setBuddy(nullptr);
        selectRows(pair.showing, "A");
        QCOMPARE(encoded(pair.showing), QByteArray());
    }

    void whoIsUnderstood()
    {
        Pair pair;
        QWidget other;
        QVERIFY(pair.showAndWait());
        QMimeData numbers;
        numbers.setData(type, "1");
        QMimeData foreign;
        foreign.setData("x-orlo/numberlistdrag-tabs", "1");
        const QDropEvent event(QPointF(), Qt::MoveAction, &numbers, Qt::LeftButton, Qt::NoModifier);
        const QDropEvent of_others(QPointF(), Qt::MoveAction, &foreign, Qt::LeftButton, Qt::NoModifier);
        const auto understood = [&](QWidget *source, const QDropEvent &by) {
            QString names;
            if (!holdDrag(source, type, "1", [&] {
                    names = QString(pair.all.canDecode(&by) ? "all" : "")
                            + QString(pair.showing.canDecode(&by) ? " showing" : "");
                }))
                QTest::qFail("there was no drag", __FILE__, __LINE__);
            return names.trimmed();
        };
        QCOMPARE(understood(&pair.all, event), QString("showing"));
        QCOMPARE(understood(&pair.showing, event), QString("all showing"));
        QCOMPARE(understood(&other, event), QString());
        QCOMPARE(understood(&pair.all, of_others), QString());
        QCOMPARE(understood(&pair.showing, of_others), QString());
        // Without a source widget it comes from another process.
        QVERIFY(!pair.all.canDecode(&event) && !pair.showing.canDecode(&event));
        QVERIFY(!pair.all.canDecode(nullptr));
    }

    void withoutABuddyNothingComesFromNowhere()
    {
        Pair pair;
        pair.all.setBuddy(nullptr);
        pair.showing.setBuddy(nullptr);
        QVERIFY(pair.showAndWait());
        QMimeData numbers;
        numbers.setData(type, "4");
        const QDropEvent event(QPointF(), Qt::MoveAction, &numbers, Qt::LeftButton, Qt::NoModifier);
        for (OrderList *list : {&pair.all, &pair.showing}) {
            QVERIFY(!list->canDecode(&event));
            QCOMPARE(list->decode(nullptr, &event), 0);
            QVERIFY(!list->dragAndDrop(numbers, QPoint(30, 30)));
        }
        QCOMPARE(rowTexts(pair.showing), QString("A B C"));
        QCOMPARE(rowTexts(pair.all), QString("a b c D E F"));
        // The list of what shows understands itself, but knows no numbers.
        QVERIFY(holdDrag(&pair.showing, type, "1", [&] {
            QVERIFY(pair.showing.canDecode(&event));
            QCOMPARE(pair.showing.decode(nullptr, &event), 0);
        }));
        QCOMPARE(rowTexts(pair.showing), QString("A B C"));
    }

    void fromTheSourceListThingsShow_data()
    {
        QTest::addColumn<QString>("dragged");
        QTest::addColumn<int>("row");
        QTest::addColumn<double>("down");
        QTest::addColumn<QString>("showing");
        QTest::addColumn<QString>("all");
        QTest::newRow("at the top") << "E" << 0 << 0.1 << "E A B C"
                                    << "a b c D e F";
        QTest::newRow("in the middle") << "F D" << 1 << 0.9 << "A B D F C"
                                       << "a b c d E f";
        QTest::newRow("at the end") << "D E F" << 2 << 2.5 << "A B C D E F"
                                    << "a b c d e f";
    }
    void fromTheSourceListThingsShow()
    {
        QFETCH(QString, dragged);
        QFETCH(int, row);
        QFETCH(double, down);
        Pair pair;
        QVERIFY(pair.showAndWait());
        selectRows(pair.all, dragged);
        selectRows(pair.showing, "A");
        QVERIFY(Pair::drag(pair.all, pair.showing, pair.showing.inRow(row, down)));
        QTEST(rowTexts(pair.showing), "showing");
        QTEST(rowTexts(pair.all), "all");
        QCOMPARE(selectedTexts(pair.all), QString());
        QStringList selected = selectedTexts(pair.showing).split(' ');
        QStringList wanted = dragged.split(' ');
        std::sort(selected.begin(), selected.end());
        std::sort(wanted.begin(), wanted.end());
        QCOMPARE(selected, wanted);
        for (const QString &name : qAsConst(wanted))
            QVERIFY(pair.flags().contains(name));
    }

    void intoAnEmptyList()
    {
        Pair pair(3, "");
        QVERIFY(pair.showAndWait());
        selectRows(pair.all, "A C");
        QVERIFY(Pair::drag(pair.all, pair.showing, QPoint(30, 100)));
        QCOMPARE(rowTexts(pair.showing), QString("A C"));
    }

    void backToTheSourceListThingsHide()
    {
        Pair pair(6, "A B C D");
        QVERIFY(pair.showAndWait());
        selectRows(pair.showing, "B D");
        selectRows(pair.all, "E");
        QVERIFY(Pair::drag(pair.showing, pair.all, pair.all.inRow(5)));
        QCOMPARE(rowTexts(pair.showing), QString("A C"));
        QCOMPARE(rowTexts(pair.all), QString("a B c D E F"));
        QCOMPARE(selectedTexts(pair.all), QString("B D"));
        QCOMPARE(pair.flags(), QString("AbCdef"));
    }

    void withinTheShowingListThingsMove_data()
    {
        QTest::addColumn<QString>("dragged");
        QTest::addColumn<int>("row");
        QTest::addColumn<double>("down");
        QTest::addColumn<QString>("showing");
        QTest::newRow("down") << "A" << 2 << 0.9 << "B C A D E";
        QTest::newRow("up") << "D" << 1 << 0.1 << "A D B C E";
        QTest::newRow("to the top") << "B E" << 0 << 0.1 << "B E A C D";
        QTest::newRow("several to the end") << "A C" << 4 << 2.5 << "B D E A C";
        QTest::newRow("onto itself") << "C" << 2 << 0.9 << "A B C D E";
        QTest::newRow("behind one that is moved") << "B C" << 1 << 0.9 << "A B C D E";
        QTest::newRow("all") << "A B C D E" << 2 << 0.9 << "A B C D E";
    }
    void withinTheShowingListThingsMove()
    {
        QFETCH(QString, dragged);
        QFETCH(int, row);
        QFETCH(double, down);
        Pair pair(6, "A B C D E");
        QVERIFY(pair.showAndWait());
        selectRows(pair.showing, dragged);
        const Q3ListViewItem *old = rowOf(pair.showing, dragged.left(1));
        Q3ListViewItemIterator place(rowOf(pair.showing, dragged.left(1)));
        QVERIFY(Pair::drag(pair.showing, pair.showing, pair.showing.inRow(row, down)));
        QTEST(rowTexts(pair.showing), "showing");
        QVERIFY(place.current() != old); // the rows are new ones
        QCOMPARE(selectedTexts(pair.showing), dragged);
        QCOMPARE(rowTexts(pair.all), QString("a b c d e F"));
        QCOMPARE(pair.flags(), QString("ABCDEf"));
    }

    void aDropClearsTheSelectionOfBoth()
    {
        Pair pair(6, "A B C D");
        QVERIFY(pair.showAndWait());
        selectRows(pair.all, "A E"); // A is greyed out
        selectRows(pair.showing, "B");
        QVERIFY(Pair::dropFrom(&pair.all, "4", pair.showing, pair.showing.inRow(3, 0.9)));
        QCOMPARE(selectedTexts(pair.all), QString());
        QCOMPARE(selectedTexts(pair.showing), QString("E"));
        selectRows(pair.all, "F");
        QVERIFY(Pair::dropFrom(&pair.showing, "0", pair.all, pair.all.inRow(0)));
        QCOMPARE(selectedTexts(pair.all), QString("A"));
        QCOMPARE(selectedTexts(pair.showing), QString());
        // A move leaves the other list alone.
        selectRows(pair.showing, "C");
        QVERIFY(Pair::dropFrom(&pair.showing, "2", pair.showing, pair.showing.inRow(0, 0.1)));
        QCOMPARE(selectedTexts(pair.all), QString("A"));
    }

    void whatWasDroppedIsInSight()
    {
        Pair pair(26, "");
        QVERIFY(pair.showAndWait());
        pair.all.selectAll(true);
        QVERIFY(Pair::drag(pair.all, pair.showing, QPoint(30, 30)));
        QVERIFY(pair.showing.itemRect(rowOf(pair.showing, "Z")).isValid());
        QVERIFY(!pair.showing.itemRect(rowOf(pair.showing, "A")).isValid());
        QCOMPARE(pair.showing.currentItem(), rowOf(pair.showing, "Z"));
    }

    void theSourceListTakesNothingFromItself()
    {
        Pair pair;
        QVERIFY(pair.showAndWait());
        selectRows(pair.all, "D");
        QVERIFY(!Pair::dropFrom(&pair.all, encoded(pair.all), pair.all, pair.all.inRow(0)));
        QMimeData numbers;
        numbers.setData(type, "3");
        const QDropEvent event(QPointF(), Qt::MoveAction, &numbers, Qt::LeftButton, Qt::NoModifier);
        QVERIFY(holdDrag(&pair.all, type, "3", [&] { QCOMPARE(pair.all.decode(nullptr, &event), 0); }));
        QCOMPARE(rowTexts(pair.all), QString("a b c D E F"));
    }

    void decodeCountsWhatItTook_data()
    {
        QTest::addColumn<QByteArray>("data");
        QTest::addColumn<int>("taken");
        QTest::addColumn<QString>("showing");
        const auto row = [](const char *name, const QByteArray &data, int taken, const QString &showing) {
            QTest::newRow(name) << data << taken << showing;
        };
        row("two", "3 5", 2, "D F A B C");
        row("in their order", "5 3", 2, "F D A B C");
        row("nothing", "", 0, "A B C");
        row("no number", "cyan", 0, "A B C");
        row("negative", "-1 -9223372036854775808 4", 1, "E A B C");
        row("too large", "6 9223372036854775807 4", 1, "E A B C");
        row("beyond all numbers", "4 99999999999999999999 5", 1, "E A B C");
        row("one twice", "4 4 5 4", 2, "E F A B C");
        row("one that shows", "0 4", 1, "E A B C");
        row("cut off", "4 5 ", 2, "E F A B C");
        row("a null byte", QByteArray("4\0 5", 4), 1, "E A B C");
        row("very many", QByteArray("4 ").repeated(200000), 1, "E A B C");
    }
    void decodeCountsWhatItTook()
    {
        QFETCH(QByteArray, data);
        Pair pair;
        QVERIFY(pair.showAndWait());
        QMimeData dragged;
        dragged.setData(type, data);
        const QDropEvent event(QPointF(), Qt::MoveAction, &dragged, Qt::LeftButton, Qt::NoModifier);
        int taken = -1;
        QVERIFY(holdDrag(&pair.all, type, data, [&] { taken = pair.showing.decode(nullptr, &event); }));
        QTEST(taken, "taken");
        QTEST(rowTexts(pair.showing), "showing");
    }

    void hostileNumbersInTheOtherDirections()
    {
        Pair pair;
        QVERIFY(pair.showAndWait());
        // A move of things that do not show, and of one twice.
        QVERIFY(Pair::dropFrom(&pair.showing, "4 1 1 77 -5", pair.showing, pair.showing.inRow(2, 0.9)));
        QCOMPARE(rowTexts(pair.showing), QString("A B C B")); // nothing was told to go
        Pair second;
        QVERIFY(second.showAndWait());
        QVERIFY(Pair::dropFrom(&second.showing, "1 1 77 -5", second.all, second.all.inRow(2)));
        QCOMPARE(rowTexts(second.all), QString("a B c D E F"));
        QCOMPARE(second.flags(), QString("AbCdef"));
    }

    void rowsWithoutAThingAreNotTaken()
    {
        Pair pair;
        new TaviConfigOrderListItem(&pair.all, nullptr, nullptr);
        new Q3ListViewItem(&pair.all, "other");
        QVERIFY(pair.showAndWait());
        QVERIFY(Pair::dropFrom(&pair.all, "0 1 5", pair.showing, pair.showing.inRow(0, 0.1)));
        QCOMPARE(rowTexts(pair.showing), QString("D A B C"));
    }

    void aSignalForEachListThatChanged()
    {
        Pair pair;
        QVERIFY(pair.showAndWait());
        selectRows(pair.all, "D");
        QStringList told;
        for (OrderList *list : {&pair.all, &pair.showing}) {
            connect(list, QOverload<>::of(&Q3ListView::selectionChanged), this, [&told, list, &pair] {
                // By then all is done.
                told << list->columnText(0) + ": " + rowTexts(pair.showing);
            });
        }
        QVERIFY(Pair::dropFrom(&pair.all, encoded(pair.all), pair.showing, pair.showing.inRow(0, 0.1)));
        QCOMPARE(told, QStringList({"Showing: D A B C", "All Items: D A B C"}));
        told.clear();
        selectRows(pair.showing, "A");
        told.clear();
        QVERIFY(Pair::dropFrom(&pair.showing, encoded(pair.showing), pair.showing, pair.showing.inRow(3, 0.9)));
        QCOMPARE(told, QStringList({"Showing: D A B C A"}));
        pair.showing.clearSources(true);
        QCOMPARE(told, QStringList({"Showing: D A B C A"})); // what went was not selected any more
    }

    void removedRowsThatWereSelectedAreTold()
    {
        Pair pair;
        selectRows(pair.showing, "A B");
        encoded(pair.showing);
        int told = 0;
        connect(&pair.showing, QOverload<>::of(&Q3ListView::selectionChanged), this, [&told] { ++told; });
        pair.showing.clearSources(true);
        QCOMPARE(rowTexts(pair.showing), QString("C"));
        QCOMPARE(told, 1);
        pair.showing.clearSources(true);
        QCOMPARE(rowTexts(pair.showing), QString("C"));
        QCOMPARE(told, 1);
    }

    void sourcesAreForgottenInAnyCase()
    {
        Pair pair;
        selectRows(pair.showing, "A");
        encoded(pair.showing);
        pair.showing.clearSources(false);
        pair.showing.clearSources(true);
        QCOMPARE(rowTexts(pair.showing), QString("A B C"));
        selectRows(pair.all, "E");
        encoded(pair.all);
        pair.all.clearSources(true);
        QCOMPARE(pair.all.childCount(), 6);
    }

    void rowsMayGoWhileTheyAreDragged()
    {
        Pair pair(6, "A B C D E");
        QVERIFY(pair.showAndWait());
        selectRows(pair.showing, "A B D");
        const QByteArray data = encoded(pair.showing);
        QCOMPARE(data, QByteArray("0 1 3"));
        delete rowOf(pair.showing, "B");
        Q3ListViewItem *taken = rowOf(pair.showing, "D");
        pair.showing.takeItem(taken);
        delete taken;
        QVERIFY(Pair::dropFrom(&pair.showing, data, pair.showing, pair.showing.inRow(2, 0.9)));
        pair.showing.clearSources(true);
        QCOMPARE(rowTexts(pair.showing), QString("C E A"));
        // All of them.
        selectRows(pair.showing, "C A");
        encoded(pair.showing);
        pair.showing.clear();
        pair.showing.clearSources(true);
        QCOMPARE(pair.showing.childCount(), 0);
    }

    void aThingShownMeanwhileDoesNotShowTwice()
    {
        Pair pair;
        QVERIFY(pair.showAndWait());
        selectRows(pair.all, "D E");
        const QByteArray data = encoded(pair.all);
        new TaviConfigOrderListItem(&pair.showing, nullptr, pair.things[3].get());
        QVERIFY(Pair::dropFrom(&pair.all, data, pair.showing, pair.showing.inRow(3, 0.9)));
        QCOMPARE(rowTexts(pair.showing), QString("D A B C E"));
    }

    void numbersOfRowsThatWentMeanNothingElse()
    {
        Pair pair;
        QVERIFY(pair.showAndWait());
        selectRows(pair.all, "D E");
        const QByteArray data = encoded(pair.all);
        delete rowOf(pair.all, "D"); // E is number 3 now, and F number 4
        QVERIFY(Pair::dropFrom(&pair.all, data, pair.showing, pair.showing.inRow(2, 0.9)));
        QCOMPARE(rowTexts(pair.showing), QString("A B C E"));
    }

    void slotsMayDeleteRowsAndLists()
    {
        auto pair = std::make_unique<Pair>();
        QVERIFY(pair->showAndWait());
        selectRows(pair->showing, "A B");
        const QByteArray data = encoded(pair->showing);
        // The current row goes first, and its slot deletes another one that is dragged.
        pair->showing.setCurrentItem(rowOf(pair->showing, "A"));
        int calls = 0;
        connect(&pair->showing, &Q3ListView::currentChanged, this, [&] {
            if (++calls == 1)
                delete rowOf(pair->showing, "B");
        });
        pair->showing.clearSources(true);
        QCOMPARE(calls, 2); // B was current by then
        QCOMPARE(rowTexts(pair->showing), QString("C"));

        auto all = std::make_unique<TaviConfigOrderListView>(true);
        pair->showing.setBuddy(all.get());
        all.reset();
        QVERIFY(!pair->showing.buddy());
        QVERIFY(!Pair::dropFrom(&pair->all, "4", pair->showing, pair->showing.inRow(0)));
        // The list goes in the slot of its own drop.
        Pair second;
        auto *showing = new OrderList(false);
        second.all.setBuddy(showing);
        showing->setBuddy(&second.all);
        QVERIFY(second.showAndWait());
        QVERIFY(showing->showAndWait(QPoint(700, 100)));
        const QPointer<OrderList> alive(showing);
        connect(showing, QOverload<>::of(&Q3ListView::selectionChanged), this, [&] { delete showing; });
        QVERIFY(Pair::dropFrom(&second.all, "4", *showing, QPoint(30, 30)));
        QVERIFY(!alive);
        QCOMPARE(selectedTexts(second.all), QString());
    }

    void aFilterLeavesWhatShowsGreyedOut()
    {
        Pair pair;
        pair.all.filterItems("B", false);
        QVERIFY(!rowOf(pair.all, "B")->isEnabled());
        pair.all.setFilterKeyword("E");
        QVERIFY(rowOf(pair.all, "E")->isEnabled());
        pair.all.setFilterKeyword("");
        QCOMPARE(rowTexts(pair.all), QString("a b c D E F"));
        pair.showing.setFilterKeyword("A");
        pair.showing.setFilterKeyword("");
        QCOMPARE(rowTexts(pair.showing), QString("A B C"));
    }

    void manyThings()
    {
        constexpr int count = 100000;
        Pair pair(count, "");
        QVERIFY(pair.showAndWait());
        QElapsedTimer timer;
        timer.start();
        pair.all.selectAll(true);
        QVERIFY(Pair::drag(pair.all, pair.showing, QPoint(30, 30)));
        QCOMPARE(pair.showing.childCount(), count);
        pair.showing.selectAll(true);
        QVERIFY(Pair::drag(pair.showing, pair.showing, pair.showing.inRow(0, 0.1)));
        QCOMPARE(pair.showing.childCount(), count);
        QCOMPARE(pair.showing.firstChild()->text(0), QString("A"));
        QVERIFY(Pair::drag(pair.showing, pair.all, QPoint(30, 30)));
        QCOMPARE(pair.showing.childCount(), 0);
        // A search of one list for each row of the other would be ten thousand million steps.
        QVERIFY2(timer.elapsed() < 60000, qPrintable(QString::number(timer.elapsed())));
        qInfo("%d things to and fro: %lld ms", count, timer.elapsed());
    }
};

TAVI_GUI_TEST_MAIN(TestTaviConfigOrderListView)
#include "tst_taviconfigorderlistview.moc"
