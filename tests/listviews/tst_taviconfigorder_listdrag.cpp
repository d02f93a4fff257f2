// SPDX-License-Identifier: MIT
#include "foundation/taviwidgetutil.h"
#include "taviapp/taviregistry.h"
#include "tests/listviews/orderlistuser.h"
#include "tests/support/otherapplication.h"
#include "tests/support/realpointer.h"
#include "tests/support/tavitest.h"

#include <QLabel>
#include <QProcess>
#include <QTimer>

namespace {

bool drag(const TaviConfigOrderListView &from, const QPoint &start, const TaviConfigOrderListView &to,
          const QPoint &end)
{
    return RealPointer::drag(from.viewport(), start, to.viewport(), end);
}

} // namespace

/// The order dialog with classic lists by the real pointer and by real keys.
class TestTaviConfigOrderListDrag : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(QProcess::execute("xdotool", {"version"}) == 0, "xdotool is needed"); }

    void dragFromLeftShowsWhereItIsDropped()
    {
        OrderListRun things;
        prepare(things);
        const int result = things.run([](const OrderListDialog &dialog) {
            selectRows(dialog.left, "D F");
            QVERIFY(drag(dialog.left, inRow(dialog.left, 3), dialog.right, inRow(dialog.right, 1, 0.1)));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A D F B C"));
            QCOMPARE(rowTexts(dialog.left), QString("a b c d E f"));
            QCOMPARE(selectedTexts(dialog.right), QString("D F"));
            QCOMPARE(selectedTexts(dialog.left), QString());
            QTRY_COMPARE(dialog.window.showing_label->text(), QString("<small>2 of 5 selected</small>"));
            QTRY_COMPARE(dialog.window.hidden_label->text(), QString("<small>None selected</small>"));
            // What shows can't be dragged again.
            QVERIFY(drag(dialog.left, inRow(dialog.left, 3), dialog.right, belowAllRows(dialog.right)));
            QCOMPARE(rowTexts(dialog.right), QString("A D F B C"));
            selectRows(dialog.left, "E");
            QVERIFY(drag(dialog.left, inRow(dialog.left, 4), dialog.right, belowAllRows(dialog.right)));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A D F B C E"));
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(result, 1);
        QCOMPARE(things.result(), QString("A D F B C E"));
    }

    void dragFromRightHides()
    {
        OrderListRun things;
        prepare(things);
        things.run([](const OrderListDialog &dialog) {
            selectRows(dialog.right, "A B");
            QVERIFY(drag(dialog.right, inRow(dialog.right, 1), dialog.left, inRow(dialog.left, 4)));
            QTRY_COMPARE(rowTexts(dialog.right), QString("C"));
            QCOMPARE(rowTexts(dialog.left), QString("A B c D E F"));
            QCOMPARE(selectedTexts(dialog.left), QString("A B"));
            QTRY_VERIFY(dialog.window.make_showing_button->isEnabled());
            QTRY_VERIFY(!dialog.window.make_hidden_button->isEnabled());
            QCOMPARE(dialog.window.showing_label->text(), QString("<small>None selected</small>"));
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(things.result(), QString("C a b d e f"));
    }

    void dragWithinRightMoves()
    {
        OrderListRun things("A B C D E");
        prepare(things);
        things.run([](const OrderListDialog &dialog) {
            selectRows(dialog.right, "A B");
            QVERIFY(drag(dialog.right, inRow(dialog.right, 0), dialog.right, inRow(dialog.right, 2, 0.8)));
            QTRY_COMPARE(rowTexts(dialog.right), QString("C A B D E"));
            QCOMPARE(selectedTexts(dialog.right), QString("A B"));
            QVERIFY(drag(dialog.right, inRow(dialog.right, 1), dialog.right, belowAllRows(dialog.right)));
            QTRY_COMPARE(rowTexts(dialog.right), QString("C D E A B"));
            QVERIFY(drag(dialog.right, inRow(dialog.right, 4), dialog.right, inRow(dialog.right, 0, 0.1)));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B C D E"));
            dialog.finish(QDialogButtonBox::Ok);
        });
        QCOMPARE(things.result(), QString("A B C D E f"));
    }

    void theLeftListCannotBeReordered()
    {
        OrderListRun things;
        prepare(things);
        things.run([](const OrderListDialog &dialog) {
            QVERIFY(drag(dialog.left, inRow(dialog.left, 3), dialog.left, inRow(dialog.left, 5, 0.8)));
            QCOMPARE(rowTexts(dialog.left), QString("a b c D E F"));
            QCOMPARE(rowTexts(dialog.right), QString("A B C"));
        });
    }

    void outOfTheApplicationNothingGoes_data()
    {
        QTest::addColumn<bool>("otherapps_move");
        QTest::addColumn<QString>("showing");
        QTest::newRow("as it is") << false << "A B C";
        QTest::newRow("if it is allowed") << true << "A C";
    }
    void outOfTheApplicationNothingGoes()
    {
        QFETCH(bool, otherapps_move);
        QFETCH(QString, showing);
        OtherApplication other("x-orlo/numberlistdrag-conford", true, QPoint(20, 20));
        QVERIFY(other.isReady());
        OrderListRun things;
        prepare(things, QRect(300, 100, 420, 320));
        things.run([&](const OrderListDialog &dialog) {
            dialog.right.setAllowed(DNDListView::DRAG_OTHERAPPS_MOVES, otherapps_move);
            QVERIFY(RealPointer::dragOut(dialog.right.viewport(), inRow(dialog.right, 1), other.middle()));
            QCOMPARE(other.takeDrop(), QByteArray("1"));
            QTRY_COMPARE(rowTexts(dialog.right), showing);
            // The source list never loses a row.
            dialog.left.setAllowed(DNDListView::DRAG_OTHERAPPS_MOVES, otherapps_move);
            QVERIFY(RealPointer::dragOut(dialog.left.viewport(), inRow(dialog.left, 4), other.middle()));
            QCOMPARE(other.takeDrop(), QByteArray("4"));
            QCOMPARE(dialog.left.childCount(), 6);
        });
    }

    void aFixedSetIsOrderedByDrags()
    {
        OrderListRun things;
        prepare(things);
        things.run(
            [](const OrderListDialog &dialog) {
                QVERIFY(drag(dialog.right, inRow(dialog.right, 2), dialog.right, inRow(dialog.right, 0, 0.1)));
                QTRY_COMPARE(rowTexts(dialog.right), QString("C A B"));
                dialog.finish(QDialogButtonBox::Ok);
            },
            true);
        QCOMPARE(things.result(), QString("C A B d e f"));
    }

    void theDialogMayGoDuringADrag_data()
    {
        QTest::addColumn<QString>("what");
        for (const char *what : {"object", "parent", "cancelled"})
            QTest::newRow(what) << QString(what);
    }
    void theDialogMayGoDuringADrag()
    {
        QFETCH(QString, what);
        auto parent = std::make_unique<QWidget>();
        OrderListRun things;
        things.order = std::make_unique<TaviConfigOrder>(parent.get(), "things");
        prepare(things);
        QTimer watch;
        const int result = things.run([&](const OrderListDialog &dialog) {
            const QPointer<DNDIndicator> mark = dialog.right.viewport()->findChild<DNDIndicator *>();
            connect(&watch, &QTimer::timeout, this, [&, mark] {
                if (!mark || !mark->isVisible())
                    return;
                watch.stop();
                if (what == "object")
                    things.order.reset();
                else if (what == "parent")
                    parent.reset();
                else
                    things.order->cancel();
            });
            watch.start(5);
            drag(dialog.left, inRow(dialog.left, 4), dialog.right, inRow(dialog.right, 1));
            QVERIFY(!watch.isActive());
        });
        QCOMPARE(result, 0);
        QCOMPARE(things.result(), QString("A B C"));
    }

    void keysAlone()
    {
        OrderListRun things;
        prepare(things);
        const int result = things.run([](const OrderListDialog &dialog) {
            QVERIFY(dialog.left.hasFocus());
            QVERIFY(RealPointer::key("End"));
            QTRY_COMPARE(selectedTexts(dialog.left), QString("F"));
            QTRY_VERIFY(dialog.window.make_showing_button->isEnabled());
            QVERIFY(RealPointer::key("alt+Right"));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B C F"));
            QVERIFY(dialog.left.hasFocus());
            QVERIFY(RealPointer::key("alt+Up"));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B F C"));
            QVERIFY(RealPointer::key("alt+Down"));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B C F"));
            QVERIFY(RealPointer::key("alt+Left"));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B C"));
            QVERIFY(RealPointer::key("Return"));
        });
        QCOMPARE(result, 1);
        QCOMPARE(things.result(), QString("A B C d e f"));
    }

    void escapeCancels()
    {
        OrderListRun things;
        prepare(things);
        const int result = things.run([](const OrderListDialog &dialog) {
            QVERIFY(RealPointer::key("Escape"));
            QTRY_VERIFY(!dialog.window.isVisible());
        });
        QCOMPARE(result, 0);
    }

    void fromRightToLeft()
    {
        QGuiApplication::setLayoutDirection(Qt::RightToLeft);
        OrderListRun things;
        prepare(things);
        things.run([](const OrderListDialog &dialog) {
            QVERIFY(dialog.left.mapToGlobal(QPoint()).x() > dialog.right.mapToGlobal(QPoint()).x());
            QVERIFY(drag(dialog.left, inRow(dialog.left, 3), dialog.right, belowAllRows(dialog.right)));
            QTRY_COMPARE(rowTexts(dialog.right), QString("A B C D"));
        });
        QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    }

private:
    /// On the first screen in full, whatever the scale.
    void prepare(OrderListRun &things, const QRect &place = QRect(100, 100, 420, 320))
    {
        registry = std::make_unique<TaviRegistry>();
        TaviConfigOrderDLG window;
        window.setGeometry(place);
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        TaviWidgetUtil::saveSizeToRegistry(&window, registry.get(), "drags");
        things.registry = registry.get();
        things.section = "drags";
    }

    std::unique_ptr<TaviRegistry> registry;
};

TAVI_GUI_TEST_MAIN(TestTaviConfigOrderListDrag)
#include "tst_taviconfigorder_listdrag.moc"
