// SPDX-License-Identifier: MIT
#include "qt3/q3header.h"
#include "taviapp/taviregistry.h"
#include "tests/listviews/orderlistuser.h"
#include "tests/support/tavitest.h"

#include <QElapsedTimer>
#include <QLabel>

namespace {

/// Calls a slot of the dialog by its name, as the buttons do.
void call(const OrderListRun &things, const char *slot)
{
    QVERIFY(QMetaObject::invokeMethod(things.order.get(), slot));
}

} // namespace

/// The order dialog with classic lists: what it shows, what it does, what it hands back.
class TestTaviConfigOrderList : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theDialogStandsReady()
    {
        OrderListRun things;
        things.things[3]->pixmap = QPixmap(12, 10);
        things.run([](const OrderListDialog &dialog) {
            QCOMPARE(dialog.window.windowTitle(), QString("Order of Things"));
            QVERIFY(dialog.window.isModal());
            QVERIFY(dialog.window.help_button->isHidden());
            for (const QLabel *label : {dialog.window.hidden_label, dialog.window.showing_label}) {
                QVERIFY(label->isVisible());
                QCOMPARE(label->text(), QString("<small>None selected</small>"));
            }
            QVERIFY(dialog.window.hidden_frame->isVisible());
            for (const QToolButton *button : {dialog.window.make_showing_button, dialog.window.make_hidden_button,
                                              dialog.window.move_up_button, dialog.window.move_down_button}) {
                QVERIFY(button->isVisible());
                QVERIFY(!button->isEnabled());
            }
            QVERIFY(dialog.left.isSource() && !dialog.right.isSource());
            QCOMPARE(dialog.left.buddy(), &dialog.right);
            QCOMPARE(dialog.right.buddy(), &dialog.left);
            QCOMPARE(dialog.left.columnText(0), QString("All Items"));
            QCOMPARE(dialog.right.columnText(0), QString("Showing"));
            QVERIFY(dialog.right.header()->isVisible());
            QCOMPARE(rowTexts(dialog.left), QString("a b c D E F"));
            QCOMPARE(rowTexts(dialog.right), QString("A B C"));
            QCOMPARE(rowOf(dialog.left, "D")->pixmap(0)->size(), QSize(12, 10));
            for (TaviConfigOrderListView *list : {&dialog.left, &dialog.right}) {
                QCOMPARE(list->sortColumn(), -1);
                auto *layout = qobject_cast<QHBoxLayout *>(list->parentWidget()->layout());
                QVERIFY(layout);
                QCOMPARE(layout->contentsMargins(), QMargins());
                QCOMPARE(layout->stretch(layout->indexOf(list)), 1);
            }
            QVERIFY(dialog.left.hasFocus());
        });
    }

    void fixedOnlyTheOrderCanChange()
    {
        OrderListRun things;
        const int result = things.run(
            [](const OrderListDialog &dialog) {
                QVERIFY(dialog.window.hidden_frame->isHidden());
                QVERIFY(dialog.window.make_showing_button->isHidden());
                QVERIFY(dialog.window.make_hidden_button->isHidden());
                QVERIFY(dialog.window.hidden_label->isHidden());
                QVERIFY(dialog.window.showing_label->isHidden());
                QVERIFY(dialog.right.header()->isHidden());
                QVERIFY(dialog.right.hasFocus());
                QTest::mouseDClick(dialog.right.viewport(), Qt::LeftButton, {}, inRow(dialog.right, 1));
                selectRows(dialog.right, "C");
                QTRY_VERIFY(dialog.window.move_up_button->isEnabled());
                dialog.press(dialog.window.move_up_button);
                QCOMPARE(rowTexts(dialog.right), QString("A C B"));
                dialog.finish(QDialogButtonBox::Ok);
            },
            true);
        QCOMPARE(result, 1);
        QCOMPARE(things.result(), QString("A C B d e f"));
    }

    void acceptHandsAllThingsBack()
    {
        OrderListRun things("C A");
        const int result = things.run([](const OrderListDialog &dialog) { dialog.finish(QDialogButtonBox::Ok); });
        QCOMPARE(result, 1);
        QCOMPARE(things.result(), QString("C A b d e f"));
    }

    void whatIsAcceptedBecomesVisible()
    {
        OrderListRun things("A B");
        things.run([&](const OrderListDialog &dialog) {
            selectRows(dialog.right, "A");
            call(things, "makeHidden");
            selectRows(dialog.left, "E");
            call(things, "makeShowing");
            // Not before the user accepts.
            QVERIFY(things.things[0]->isItemVisible());
            QVERIFY(!things.things[4]->isItemVisible());
            QVERIFY(!things.things[0]->isItemInShowList());
            QVERIFY(things.things[4]->isItemInShowList());
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(things.result(), QString("B E a c d f"));
    }

    void cancelLeavesAllAsItWas()
    {
        OrderListRun things("B A");
        const int result = things.run([&](const OrderListDialog &dialog) {
            selectRows(dialog.right, "B");
            call(things, "makeHidden");
            dialog.finish(QDialogButtonBox::Cancel);
        });
        QCOMPARE(result, 0);
        QCOMPARE(things.result(), QString("B A"));
        QVERIFY(things.things[1]->isItemVisible());
    }

    void nullsAndHiddenThingsArePassedOver()
    {
        OrderListRun things("B A", 4);
        things.all.insert(1, nullptr);
        things.shown.prepend(nullptr);
        things.shown.append(things.things[3].get()); // is not visible
        things.run([](const OrderListDialog &dialog) {
            QCOMPARE(rowTexts(dialog.left), QString("a b C D"));
            QCOMPARE(rowTexts(dialog.right), QString("B A"));
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(things.result(), QString("B A c d"));
    }

    void noThingsAtAll()
    {
        OrderListRun things("", 0);
        QCOMPARE(things.run([&](const OrderListDialog &dialog) {
            for (const char *slot : {"makeShowing", "makeHidden", "moveUp", "moveDown"})
                call(things, slot);
            dialog.finish(QDialogButtonBox::Ok);
        }),
                 1);
        QCOMPARE(things.result(), QString());
    }

    void slotsWithoutADialogDoNothing()
    {
        const OrderListRun things;
        for (const char *slot : {"makeShowing", "makeHidden", "moveUp", "moveDown", "hiddenSelectionsChanged",
                                 "showingSelectionsChanged"})
            call(things, slot);
        things.order->cancel();
        things.order->doubleClicked(nullptr, QPoint(), 0);
    }

    void thingsAreShownBehindTheLastSelectedOne_data()
    {
        QTest::addColumn<QString>("left");
        QTest::addColumn<QString>("right");
        QTest::addColumn<QString>("showing");
        QTest::addColumn<QString>("next");
        QTest::newRow("none selected") << "D"
                                       << ""
                                       << "A B C D"
                                       << "E";
        QTest::newRow("one selected") << "E"
                                      << "A"
                                      << "A E B C"
                                      << "F";
        QTest::newRow("several selected") << "D F"
                                          << "A B"
                                          << "A B D F C"
                                          << "E";
        QTest::newRow("the last") << "F"
                                  << ""
                                  << "A B C F"
                                  << "D";
        QTest::newRow("all") << "D E F"
                             << "C"
                             << "A B C D E F"
                             << "";
    }
    void thingsAreShownBehindTheLastSelectedOne()
    {
        QFETCH(QString, left);
        QFETCH(QString, right);
        OrderListRun things;
        things.run([&](const OrderListDialog &dialog) {
            selectRows(dialog.left, left);
            selectRows(dialog.right, right);
            call(things, "makeShowing");
            QTEST(rowTexts(dialog.right), "showing");
            QCOMPARE(selectedTexts(dialog.right), left);
            QTEST(selectedTexts(dialog.left), "next");
            for (const QString &name : left.split(' '))
                QVERIFY(!rowOf(dialog.left, name)->isEnabled());
            QCOMPARE(dialog.window.make_showing_button->isEnabled(), !selectedTexts(dialog.left).isEmpty());
            QVERIFY(dialog.window.make_hidden_button->isEnabled());
            QVERIFY(dialog.window.showing_label->text().contains(
                QString("%1 of %2 selected").arg(left.split(' ').size()).arg(dialog.right.childCount())));
        });
    }

    void whatShowsIsNotShownTwice()
    {
        OrderListRun things;
        things.run([&](const OrderListDialog &dialog) {
            selectRows(dialog.left, "A"); // greyed out
            selectRows(dialog.right, "B");
            call(things, "makeShowing");
            QCOMPARE(rowTexts(dialog.right), QString("A B C"));
            QCOMPARE(selectedTexts(dialog.right), QString("B"));
        });
    }

    void repeatedShowingWorksDownTheList()
    {
        OrderListRun things("C", 5);
        things.run([&](const OrderListDialog &dialog) {
            selectRows(dialog.left, "D");
            QTRY_VERIFY(dialog.window.make_showing_button->isEnabled());
            for (int time = 0; time < 4; ++time)
                dialog.press(dialog.window.make_showing_button);
            QCOMPARE(rowTexts(dialog.right), QString("C D E A B"));
            QCOMPARE(rowTexts(dialog.left), QString("a b c d e"));
            QVERIFY(!dialog.window.make_showing_button->isEnabled());
            QCOMPARE(dialog.window.hidden_label->text(), QString("<small>None selected</small>"));
        });
    }

    void thingsAreHidden_data()
    {
        QTest::addColumn<QString>("selected");
        QTest::addColumn<QString>("showing");
        QTest::addColumn<QString>("next");
        QTest::newRow("the first") << "A"
                                   << "B C D"
                                   << "B";
        QTest::newRow("the last") << "D"
                                  << "A B C"
                                  << "C";
        QTest::newRow("several") << "A C"
                                 << "B D"
                                 << "D";
        QTest::newRow("the last ones") << "B D"
                                       << "A C"
                                       << "C";
        QTest::newRow("all") << "A B C D"
                             << ""
                             << "";
    }
    void thingsAreHidden()
    {
        QFETCH(QString, selected);
        OrderListRun things("A B C D");
        things.run([&](const OrderListDialog &dialog) {
            selectRows(dialog.left, "E");
            selectRows(dialog.right, selected);
            call(things, "makeHidden");
            QTEST(rowTexts(dialog.right), "showing");
            QTEST(selectedTexts(dialog.right), "next");
            QCOMPARE(selectedTexts(dialog.left), selected);
            for (const QString &name : selected.split(' ')) {
                QVERIFY(rowOf(dialog.left, name)->isEnabled());
                QVERIFY(!TaviConfigOrderListItem::configOrderItemOf(rowOf(dialog.left, name))->isItemInShowList());
            }
            QVERIFY(dialog.window.make_showing_button->isEnabled());
            QCOMPARE(dialog.window.make_hidden_button->isEnabled(), !selectedTexts(dialog.right).isEmpty());
        });
    }

    void aRowThatNoRowAtTheLeftKnowsGoesAlone()
    {
        Thing stray("X");
        OrderListRun things;
        things.shown.append(&stray);
        things.run([&](const OrderListDialog &dialog) {
            QCOMPARE(rowTexts(dialog.right), QString("A B C X"));
            selectRows(dialog.left, "E");
            selectRows(dialog.right, "X");
            call(things, "makeHidden");
            QCOMPARE(rowTexts(dialog.right), QString("A B C"));
            QCOMPARE(selectedTexts(dialog.left), QString("E"));
            QVERIFY(!dialog.window.make_hidden_button->isEnabled());
            // Rows of others are nobody's.
            (new Q3ListViewItem(&dialog.right, "other"))->setSelected(true);
            (new Q3ListViewItem(&dialog.left, "other"))->setSelected(true);
            call(things, "makeHidden");
            QCOMPARE(rowTexts(dialog.right), QString("other A B C"));
            selectRows(dialog.left, "other");
            call(things, "makeShowing");
            QCOMPARE(rowTexts(dialog.right), QString("other A B C"));
        });
    }

    void rowsMove_data()
    {
        QTest::addColumn<QString>("selected");
        QTest::addColumn<QString>("up");
        QTest::addColumn<QString>("down");
        const auto row = [](const char *selected, const char *up, const char *down) {
            QTest::newRow(selected) << QString(selected) << QString(up) << QString(down);
        };
        row("", "A B C D E F", "A B C D E F");
        row("A", "A B C D E F", "B A C D E F");
        row("B", "B A C D E F", "A C B D E F");
        row("C", "A C B D E F", "A B D C E F");
        row("F", "A B C D F E", "A B C D E F");
        row("B C", "B C A D E F", "A D B C E F");
        // Those that are not adjacent close up.
        row("B D", "B D A C E F", "A C B D E F");
        row("C E", "A C E B D F", "A B D C E F");
        row("A C", "A B C D E F", "B A C D E F");
        row("D F", "A B D F C E", "A B C E D F");
        row("E F", "A B C E F D", "A B C D E F");
        row("A B C D E F", "A B C D E F", "A B C D E F");
    }
    void rowsMove()
    {
        QFETCH(QString, selected);
        for (const bool up : {true, false}) {
            OrderListRun things("A B C D E F");
            things.run([&](const OrderListDialog &dialog) {
                selectRows(dialog.right, selected);
                const QString first = selected.left(1);
                dialog.right.setCurrentItem(rowOf(dialog.right, first));
                call(things, up ? "moveUp" : "moveDown");
                if (up)
                    QTEST(rowTexts(dialog.right), "up");
                else
                    QTEST(rowTexts(dialog.right), "down");
                QCOMPARE(selectedTexts(dialog.right), selected);
                if (!first.isEmpty())
                    QCOMPARE(dialog.right.currentItem(), rowOf(dialog.right, first));
            });
        }
    }

    void movedRowsStayInSight()
    {
        OrderListRun things("A B C D E F G H I J K L M N O P Q R S T U V W X Y Z", 26);
        things.run([&](const OrderListDialog &dialog) {
            dialog.window.resize(400, 240);
            QTRY_VERIFY(!dialog.right.itemRect(rowOf(dialog.right, "Z")).isValid());
            selectRows(dialog.right, "B");
            for (int time = 0; time < 22; ++time)
                call(things, "moveDown");
            QVERIFY(dialog.right.itemRect(rowOf(dialog.right, "B")).isValid());
            for (int time = 0; time < 30; ++time)
                call(things, "moveUp");
            QCOMPARE(dialog.right.firstChild()->text(0), QString("B"));
            QVERIFY(dialog.right.itemRect(dialog.right.firstChild()).isValid());
        });
    }

    void labelsCountWhatCanBePicked()
    {
        OrderListRun things;
        things.run([](const OrderListDialog &dialog) {
            selectRows(dialog.left, "A D E"); // A is greyed out
            QTRY_COMPARE(dialog.window.hidden_label->text(), QString("<small>2 of 6 selected</small>"));
            QVERIFY(dialog.window.make_showing_button->isEnabled());
            selectRows(dialog.right, "A");
            QTRY_COMPARE(dialog.window.showing_label->text(), QString("<small>1 of 3 selected</small>"));
            for (const QToolButton *button :
                 {dialog.window.move_up_button, dialog.window.move_down_button, dialog.window.make_hidden_button})
                QVERIFY(button->isEnabled());
            dialog.left.clearSelection();
            dialog.right.clearSelection();
            QTRY_VERIFY(!dialog.window.make_showing_button->isEnabled());
            QTRY_VERIFY(!dialog.window.make_hidden_button->isEnabled());
            QVERIFY(!dialog.window.move_up_button->isEnabled());
            QCOMPARE(dialog.window.hidden_label->text(), QString("<small>None selected</small>"));
        });
    }

    void doubleClicksShowAndHide()
    {
        OrderListRun things;
        things.run([&](const OrderListDialog &dialog) {
            const auto twice = [](TaviConfigOrderListView &list, const QString &row) {
                const QPoint at = list.itemRect(rowOf(list, row)).center();
                QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, at);
                QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, at);
            };
            twice(dialog.left, "E");
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B C E"));
            twice(dialog.right, "B");
            QTRY_COMPARE(rowTexts(dialog.right), QString("A C E"));
            QCOMPARE(rowTexts(dialog.left), QString("a B c D e F"));
            twice(dialog.left, "A"); // greyed out
            QCoreApplication::processEvents();
            QCOMPARE(rowTexts(dialog.right), QString("A C E"));
            things.order->doubleClicked(nullptr, QPoint(), 0);
            QCOMPARE(rowTexts(dialog.right), QString("A C E"));
        });
    }

    void theGeometryIsThatOfTheOtherForm()
    {
        TaviRegistry registry;
        OrderListRun things;
        things.registry = &registry;
        things.section = "lists";
        things.run([](const OrderListDialog &dialog) { dialog.window.resize(432, 321); });
        OrderRun trees;
        trees.registry = &registry;
        trees.section = "lists";
        QSize size;
        trees.run([&size](const OrderDialog &dialog) { size = dialog.window.size(); });
        QCOMPARE(size, QSize(432, 321));
        // Without a store it is kept for the run of the process.
        OrderListRun stored;
        stored.run([](const OrderListDialog &dialog) { dialog.window.resize(444, 333); });
        OrderRun others;
        others.run([&size](const OrderDialog &dialog) { size = dialog.window.size(); });
        QCOMPARE(size, QSize(444, 333));
    }

    void tabGoesFromTheListToWhatActsOnIt()
    {
        OrderListRun things;
        things.run([](const OrderListDialog &dialog) {
            selectRows(dialog.left, "D");
            selectRows(dialog.right, "B");
            QTRY_VERIFY(dialog.window.move_down_button->isEnabled());
            const QVector<QWidget *> order{
                &dialog.left,  dialog.window.make_showing_button, dialog.window.make_hidden_button,
                &dialog.right, dialog.window.move_up_button,      dialog.window.move_down_button};
            for (QWidget *widget : order) {
                QCOMPARE(QApplication::focusWidget(), widget);
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            }
            QVERIFY(dialog.window.bbox->isAncestorOf(QApplication::focusWidget()));
        });
    }

    void aButtonThatWorksKeepsTheFocus()
    {
        OrderListRun things("A B C D");
        things.run([](const OrderListDialog &dialog) {
            selectRows(dialog.right, "D");
            QTRY_VERIFY(dialog.window.move_up_button->isEnabled());
            dialog.window.move_up_button->setFocus();
            for (int time = 0; time < 2; ++time)
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
            QCOMPARE(rowTexts(dialog.right), QString("A D B C"));
            QCOMPARE(QApplication::focusWidget(), dialog.window.move_up_button);
            selectRows(dialog.left, "E F");
            QTRY_VERIFY(dialog.window.make_showing_button->isEnabled());
            dialog.window.make_showing_button->setFocus();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
            QVERIFY(!dialog.window.make_showing_button->isEnabled());
            QCOMPARE(QApplication::focusWidget(), &dialog.left);
        });
    }

    void aFilterDoesNotBringWhatShowsBack()
    {
        OrderListRun things;
        things.run([&](const OrderListDialog &dialog) {
            dialog.left.setFilterKeyword("B");
            dialog.left.setFilterKeyword("");
            QCOMPARE(rowTexts(dialog.left), QString("a b c D E F"));
            selectRows(dialog.left, "B E");
            call(things, "makeShowing");
            QCOMPARE(rowTexts(dialog.right), QString("A B C E"));
        });
    }

    void allMayGoWhileItIsOpen_data()
    {
        QTest::addColumn<QString>("what");
        for (const char *what : {"dialog", "object", "left list", "right list", "cancelled"})
            QTest::newRow(what) << QString(what);
    }
    void allMayGoWhileItIsOpen()
    {
        QFETCH(QString, what);
        OrderListRun things;
        const int result = things.run([&](const OrderListDialog &dialog) {
            const QPointer<TaviConfigOrderDLG> window = &dialog.window;
            selectRows(dialog.left, "E"); // its signal is still to come
            if (what == "dialog") {
                delete window;
            } else if (what == "object") {
                things.order.reset();
                QVERIFY(!window);
            } else if (what == "cancelled") {
                things.order->cancel();
                QCOMPARE(dialog.left.childCount() + dialog.right.childCount(), 0);
                things.things.clear();
                things.all.clear();
                things.shown.clear();
            } else {
                delete (what == "left list" ? &dialog.left : &dialog.right);
                for (const char *slot : {"makeShowing", "makeHidden", "moveUp", "hiddenSelectionsChanged"})
                    call(things, slot);
                window->accept();
            }
        });
        QCOMPARE(result, 0);
        const QWidgetList windows = QApplication::topLevelWidgets();
        for (QWidget *window : windows)
            QVERIFY2(!qobject_cast<TaviConfigOrderDLG *>(window), "the dialog stays behind");
        if (what != "cancelled")
            QCOMPARE(things.result(), QString("A B C"));
    }

    void theCallersListsMayChangeMeanwhile()
    {
        OrderListRun things;
        things.run([&](const OrderListDialog &dialog) {
            things.all.clear();
            things.shown.clear();
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(things.result(), QString("A B C d e f"));
    }

    void manyThings()
    {
        constexpr int count = 100000;
        OrderListRun things("", count);
        things.run([&](const OrderListDialog &dialog) {
            QElapsedTimer timer;
            timer.start();
            dialog.left.selectAll(true);
            call(things, "makeShowing");
            QCOMPARE(dialog.right.childCount(), count);
            dialog.right.selectAll(true);
            dialog.right.setSelected(dialog.right.firstChild(), false);
            call(things, "moveUp");
            QCOMPARE(dialog.right.lastItem()->text(0), QString("A"));
            dialog.right.selectAll(true);
            call(things, "makeHidden");
            QCOMPARE(dialog.right.childCount(), 0);
            QVERIFY2(timer.elapsed() < 60000, qPrintable(QString::number(timer.elapsed())));
            qInfo("%d things: %lld ms", count, timer.elapsed());
        });
    }
};

TAVI_GUI_TEST_MAIN(TestTaviConfigOrderList)
#include "tst_taviconfigorder_list.moc"
