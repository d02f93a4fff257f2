// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/realpointer.h"
#include "tests/support/tavitest.h"
#include "tests/treeviews/orderdialoguser.h"

#include <QHeaderView>
#include <QPushButton>

#include <functional>

namespace {

/// A point in a row: 0.0 is its upper edge, 1.0 the lower one.
QPoint inRow(const ConfigOrderTree &tree, int row, double down = 0.5)
{
    const QRect rect = tree.visualRect(tree.model()->index(row, 0));
    return {rect.left() + 30, rect.top() + int(rect.height() * down)};
}

QPoint belowAllRows(const ConfigOrderTree &tree)
{
    return inRow(tree, tree.model()->rowCount() - 1) + QPoint(0, 60);
}

/// A drag by events of the test: the loop that runs while something is dragged gets them from timers.
void dragByTest(const ConfigOrderTree &from, const QPoint &start, const ConfigOrderTree &to, const QPoint &end)
{
    QWidget *source = from.viewport();
    QWidget *target = to.viewport();
    QWindow *window = source->window()->windowHandle();
    const QPoint from_place = source->mapTo(source->window(), start);
    const QPoint to_place = target->mapTo(target->window(), end);
    QTest::mousePress(window, Qt::LeftButton, {}, from_place);
    int step = 0;
    // A timer of its own for each step: one that is being served does not come again in the loop of the drag.
    std::function<void()> go_on = [&] {
        constexpr int steps = 8;
        ++step;
        if (step < steps + 5)
            QTimer::singleShot(30, window, [&] { go_on(); });
        if (step <= steps)
            QTest::mouseMove(window, from_place + (to_place - from_place) * step / steps);
        else if (step == steps + 1)
            QTest::mouseMove(window, to_place + QPoint(1, 0));
        else if (step == steps + 3)
            QTest::mouseRelease(window, Qt::LeftButton, {}, to_place);
    };
    go_on();
    QVERIFY(QTest::qWaitFor([&] { return step == 13; }));
}

enum class By { Test, Pointer };

void drag(By by, const ConfigOrderTree &from, const QPoint &start, const ConfigOrderTree &to, const QPoint &end)
{
    if (by == By::Pointer)
        QVERIFY(RealPointer::drag(from.viewport(), start, to.viewport(), end));
    else
        dragByTest(from, start, to, end);
}

} // namespace

Q_DECLARE_METATYPE(By)

/// The order dialog by mouse and by keys.
class TestTaviConfigOrderInput : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void dragFromLeftShowsWhereItIsDropped_data() { ways(); }
    void dragFromLeftShowsWhereItIsDropped()
    {
        QFETCH(By, by);
        OrderRun things;
        prepare(things);
        const int result = things.run([by](const OrderDialog &dialog) {
            selectRows(dialog.left, {3, 5});
            drag(by, dialog.left, inRow(dialog.left, 3), dialog.right, inRow(dialog.right, 1, 0.2));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A D F B C"));
            QCOMPARE(rowTexts(dialog.left), QString("a b c d E f"));
            QCOMPARE(selectedTexts(dialog.right), QString("D F"));
            drag(by, dialog.left, inRow(dialog.left, 4), dialog.right, belowAllRows(dialog.right));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A D F B C E"));
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(result, 1);
        QCOMPARE(things.result(), QString("A D F B C E"));
    }

    void dragFromRightHides_data() { ways(); }
    void dragFromRightHides()
    {
        QFETCH(By, by);
        OrderRun things;
        prepare(things);
        things.run([by](const OrderDialog &dialog) {
            selectRows(dialog.right, {0, 1});
            drag(by, dialog.right, inRow(dialog.right, 1), dialog.left, inRow(dialog.left, 4));
            QTRY_COMPARE(rowTexts(dialog.right), QString("C"));
            QCOMPARE(rowTexts(dialog.left), QString("A B c D E F"));
            QCOMPARE(selectedTexts(dialog.left), QString("A B"));
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(things.result(), QString("C"));
        QCOMPARE(things.visible(), QString("C"));
    }

    void dragWithinRightMoves_data() { ways(); }
    void dragWithinRightMoves()
    {
        QFETCH(By, by);
        OrderRun things("A B C D E");
        prepare(things);
        things.run([by](const OrderDialog &dialog) {
            selectRows(dialog.right, {0, 1});
            drag(by, dialog.right, inRow(dialog.right, 0), dialog.right, inRow(dialog.right, 2, 0.8));
            QTRY_COMPARE(rowTexts(dialog.right), QString("C A B D E"));
            QCOMPARE(selectedTexts(dialog.right), QString("A B"));
            drag(by, dialog.right, inRow(dialog.right, 1), dialog.right, belowAllRows(dialog.right));
            QTRY_COMPARE(rowTexts(dialog.right), QString("C D E A B"));
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(things.result(), QString("C D E A B"));
    }

    void theLeftListCannotBeReordered_data() { ways(); }
    void theLeftListCannotBeReordered()
    {
        QFETCH(By, by);
        OrderRun things;
        prepare(things);
        things.run([by](const OrderDialog &dialog) {
            drag(by, dialog.left, inRow(dialog.left, 3), dialog.left, inRow(dialog.left, 5, 0.8));
            QCOMPARE(rowTexts(dialog.left), QString("a b c D E F"));
            QCOMPARE(rowTexts(dialog.right), QString("A B C"));
            // What shows can't be dragged.
            drag(by, dialog.left, inRow(dialog.left, 0), dialog.right, belowAllRows(dialog.right));
            QCOMPARE(rowTexts(dialog.right), QString("A B C"));
        });
    }

    void aFixedSetIsOrderedByDrags()
    {
        OrderRun things;
        prepare(things);
        things.run(
            [](const OrderDialog &dialog) {
                drag(By::Pointer, dialog.right, inRow(dialog.right, 2), dialog.right, inRow(dialog.right, 0, 0.2));
                QTRY_COMPARE(rowTexts(dialog.right), QString("C A B"));
                dialog.finish(QDialogButtonBox::Ok);
            },
            true);
        QCOMPARE(things.result(), QString("C A B"));
    }

    void theRealMouse()
    {
        OrderRun things;
        prepare(things);
        const int result = things.run([](const OrderDialog &dialog) {
            QVERIFY(RealPointer::doubleClick(dialog.left.viewport(), inRow(dialog.left, 4)));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B C E"));
            QVERIFY(RealPointer::doubleClick(dialog.right.viewport(), inRow(dialog.right, 0)));
            QTRY_COMPARE(rowTexts(dialog.right), QString("B C E"));
            const auto press = [](QWidget *button) {
                return RealPointer::click(button, button->rect().center());
            };
            QVERIFY(RealPointer::click(dialog.right.viewport(), inRow(dialog.right, 2)));
            QTRY_VERIFY(dialog.window.move_up_button->isEnabled());
            QVERIFY(press(dialog.window.move_up_button));
            QTRY_COMPARE(rowTexts(dialog.right), QString("B E C"));
            QVERIFY(press(dialog.window.move_down_button));
            QTRY_COMPARE(rowTexts(dialog.right), QString("B C E"));
            QVERIFY(press(dialog.window.make_hidden_button));
            QTRY_COMPARE(rowTexts(dialog.right), QString("B C"));
            QVERIFY(press(dialog.window.make_showing_button));
            QTRY_COMPARE(rowTexts(dialog.right), QString("B C E"));
            QVERIFY(press(dialog.window.bbox->button(QDialogButtonBox::Ok)));
        });
        QCOMPARE(result, 1);
        QCOMPARE(things.result(), QString("B C E"));
    }

    void keysAlone()
    {
        OrderRun things;
        const int result = things.run([](const OrderDialog &dialog) {
            QVERIFY(dialog.left.hasFocus());
            QVERIFY(RealPointer::key("End"));
            QTRY_COMPARE(selectedTexts(dialog.left), QString("F"));
            QVERIFY(RealPointer::key("alt+Right"));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B C F"));
            QVERIFY(dialog.left.hasFocus());
            QVERIFY(RealPointer::key("alt+Up"));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B F C"));
            QVERIFY(RealPointer::key("alt+Up"));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A F B C"));
            QVERIFY(RealPointer::key("alt+Down"));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B F C"));
            QVERIFY(RealPointer::key("alt+Left"));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B C"));
            QVERIFY(RealPointer::key("alt+Right"));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B C F"));
            QVERIFY(RealPointer::key("Return"));
        });
        QCOMPARE(result, 1);
        QCOMPARE(things.result(), QString("A B C F"));
    }

    void escapeCancels()
    {
        OrderRun things;
        const int result = things.run([](const OrderDialog &dialog) {
            dialog.right.setFocus();
            QVERIFY(RealPointer::key("Escape"));
            QTRY_VERIFY(!dialog.window.isVisible());
        });
        QCOMPARE(result, 0);
    }

    void tabGoesFromTheListToWhatActsOnIt()
    {
        OrderRun things;
        things.run([](const OrderDialog &dialog) {
            selectRows(dialog.left, {3});
            selectRows(dialog.right, {1});
            const QVector<QWidget *> order{dialog.left.header(),
                                           &dialog.left,
                                           dialog.window.make_showing_button,
                                           dialog.window.make_hidden_button,
                                           dialog.right.header(),
                                           &dialog.right,
                                           dialog.window.move_up_button,
                                           dialog.window.move_down_button};
            dialog.left.header()->setFocus();
            for (QWidget *widget : order) {
                QCOMPARE(QApplication::focusWidget(), widget);
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            }
            QVERIFY(dialog.window.bbox->isAncestorOf(QApplication::focusWidget()));
        });
    }

    void aButtonThatWorksKeepsTheFocus()
    {
        OrderRun things("A B C D");
        things.run([](const OrderDialog &dialog) {
            selectRows(dialog.right, {3});
            dialog.window.move_up_button->setFocus();
            for (int time = 0; time < 2; ++time)
                QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
            QCOMPARE(rowTexts(dialog.right), QString("A D B C"));
            QCOMPARE(QApplication::focusWidget(), dialog.window.move_up_button);
            // One that has nothing more to do hands it to the list.
            dialog.window.make_hidden_button->setFocus();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
            QCOMPARE(rowTexts(dialog.right), QString("A B C"));
            QVERIFY(!dialog.window.make_hidden_button->isEnabled());
            QCOMPARE(QApplication::focusWidget(), &dialog.right);
            // Where it was, so that one goes on from there.
            QCOMPARE(dialog.right.currentIndex().row(), 1);
            dialog.window.make_showing_button->setFocus();
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
            QCOMPARE(rowTexts(dialog.right), QString("A B C D"));
            QCOMPARE(QApplication::focusWidget(), &dialog.left);
        });
    }

    void theListsHaveNames()
    {
        OrderRun things;
        things.run([](const OrderDialog &dialog) {
            QCOMPARE(dialog.left.accessibleName(), QString("All Items"));
            QCOMPARE(dialog.right.accessibleName(), QString("Showing"));
        });
    }

    // The lists are tree views like all others: their headers have the menu, and so a dialog of their own.
    void theListsHaveTheMenuOfAHeader()
    {
        OrderRun things;
        QStringList titles;
        things.run([&titles](const OrderDialog &dialog) {
            for (ConfigOrderTree *list : {&dialog.left, &dialog.right})
                QVERIFY(list->isHeaderMenuEnabled());
            OrderDialogUser inner([&titles](const OrderDialog &nested) {
                titles << nested.window.windowTitle() << rowTexts(nested.left) << rowTexts(nested.right);
                selectRows(nested.right, {0});
                nested.press(nested.window.make_hidden_button);
                nested.finish(QDialogButtonBox::Ok);
            });
            QVERIFY(QMetaObject::invokeMethod(dialog.right.header(), "configureHeaders"));
            QVERIFY(inner.seen);
            QVERIFY(dialog.right.header()->isSectionHidden(0));
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(titles, QStringList({"Configure List Headers", "showing", "Showing"}));
        QCOMPARE(things.result(), QString("A B C"));
    }

    void fromRightToLeft()
    {
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        OrderRun things;
        prepare(things);
        things.run([](const OrderDialog &dialog) {
            QVERIFY(dialog.left.mapToGlobal(QPoint()).x() > dialog.right.mapToGlobal(QPoint()).x());
            const QPoint start = centreOfRow(dialog.left, 3);
            drag(By::Pointer, dialog.left, start, dialog.right, centreOfRow(dialog.right, 2) + QPoint(0, 70));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B C D"));
            QVERIFY(RealPointer::key("alt+Right"));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B C"));
            QVERIFY(RealPointer::key("alt+Left"));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B C D"));
        });
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    }

private:
    static void ways()
    {
        QTest::addColumn<By>("by");
        QTest::newRow("events of the test") << By::Test;
        QTest::newRow("the real pointer") << By::Pointer;
    }

    /// On the first screen in full, whatever the scale.
    static void prepare(OrderRun &things)
    {
        static TaviRegistry registry;
        things.registry = &registry;
        things.section = "drags";
    }
};

TAVI_GUI_TEST_MAIN(TestTaviConfigOrderInput)
#include "tst_taviconfigorder_input.moc"
