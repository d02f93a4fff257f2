// SPDX-License-Identifier: MIT
#include "tests/listviews/dndfixture.h"
#include "tests/support/otherapplication.h"
#include "tests/support/realpointer.h"
#include "tests/support/tavitest.h"

#include <QDrag>
#include <QProcess>
#include <QTimer>

#include <utility>

namespace {

/// From a row to a place in another one.
bool drag(DNDProbe &from, int row, DNDProbe &to, int to_row, double down)
{
    return RealPointer::drag(from.viewport(), from.inRow(row), to.viewport(), to.inRow(to_row, down));
}

} // namespace

/// Drags of a list by the real pointer: where they end decides which rule holds.
class TestDNDListViewDrag : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { QVERIFY2(QProcess::execute("xdotool", {"version"}) == 0, "xdotool is needed"); }
    void init()
    {
        TaviTest::init();
        list = new DNDProbe;
        list->resize(200, 200);
        QVERIFY(list->showAndWait(QPoint(50, 60)));
    }
    void cleanup()
    {
        delete list;
        TaviTest::cleanup();
    }

    void toAnotherList_data()
    {
        QTest::addColumn<bool>("others_move");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("removes") << true << QStringList{"remove"};
        QTest::newRow("does not") << false << QStringList();
    }
    void toAnotherList()
    {
        QFETCH(bool, others_move);
        QFETCH(QStringList, calls);
        list->setAllowed(DNDListView::DRAG_OTHERS_MOVES, others_move);
        list->setAllowed(DNDListView::DRAG_SELF_MOVES, !others_move);
        list->setAllowed(DNDListView::DRAG_OTHERAPPS_MOVES, !others_move);
        DNDProbe other;
        other.resize(200, 200);
        QVERIFY(other.showAndWait(QPoint(350, 60)));
        QVERIFY(drag(*list, 1, other, 2, 0.9));
        QTRY_COMPARE(other.calls, QStringList{"decode cyan after c"});
        QCOMPARE(list->asked, 1);
        QCOMPARE(list->calls, calls);
        QVERIFY(other.mark()->isHidden());
        QVERIFY(list->mark()->isHidden());
    }

    void toAnotherListThatRefuses()
    {
        DNDProbe other;
        other.resize(200, 200);
        other.setAllowed(DNDListView::DROP_FROM_OTHERS, false);
        QVERIFY(other.showAndWait(QPoint(350, 60)));
        QVERIFY(drag(*list, 1, other, 2, 0.9));
        QTRY_COMPARE(list->calls, QStringList{"keep"});
        QCOMPARE(other.calls, QStringList());
    }

    void withinTheList_data()
    {
        QTest::addColumn<bool>("from_self");
        QTest::addColumn<bool>("self_moves");
        QTest::addColumn<bool>("others_move");
        QTest::addColumn<QStringList>("calls");
        const QString decoded = "decode cyan after c";
        QTest::newRow("moves") << true << true << true << QStringList{decoded, "remove", "remove"};
        QTest::newRow("moves, others do not") << true << true << false << QStringList{decoded, "remove"};
        QTest::newRow("stays") << true << false << true << QStringList{decoded};
        QTest::newRow("stays, others too") << true << false << false << QStringList{decoded};
        QTest::newRow("not allowed") << false << true << true << QStringList{"keep"};
    }
    void withinTheList()
    {
        QFETCH(bool, from_self);
        QFETCH(bool, self_moves);
        QFETCH(bool, others_move);
        QFETCH(QStringList, calls);
        list->setAllowed(DNDListView::DROP_FROM_OTHERS, !from_self);
        list->setAllowed(DNDListView::DROP_FROM_SELF, from_self);
        list->setAllowed(DNDListView::DRAG_SELF_MOVES, self_moves);
        list->setAllowed(DNDListView::DRAG_OTHERS_MOVES, others_move);
        QVERIFY(drag(*list, 0, *list, 2, 0.9));
        QTRY_COMPARE(list->calls, calls);
        QVERIFY(list->mark()->isHidden());
    }

    void toAnotherApplication_data()
    {
        QTest::addColumn<bool>("otherapps_move");
        QTest::addColumn<QStringList>("calls");
        QTest::newRow("removes") << true << QStringList{"remove"};
        QTest::newRow("does not") << false << QStringList();
    }
    void toAnotherApplication()
    {
        QFETCH(bool, otherapps_move);
        QFETCH(QStringList, calls);
        // Only the last rule counts.
        list->setAllowed(DNDListView::DRAG_SELF_MOVES, !otherapps_move);
        list->setAllowed(DNDListView::DRAG_OTHERS_MOVES, !otherapps_move);
        list->setAllowed(DNDListView::DRAG_OTHERAPPS_MOVES, otherapps_move);
        OtherApplication other(DNDProbe::type, true, QPoint(350, 60));
        QVERIFY(other.isReady());
        QVERIFY(RealPointer::dragOut(list->viewport(), list->inRow(1), other.middle()));
        QCOMPARE(other.takeDrop(), QByteArray("cyan"));
        QTRY_COMPARE(list->calls, calls);
    }

    void toNowhere()
    {
        QWidget nothing;
        nothing.setGeometry(350, 60, 200, 200);
        nothing.show();
        QVERIFY(QTest::qWaitForWindowExposed(&nothing));
        QVERIFY(RealPointer::drag(list->viewport(), list->inRow(1), &nothing, QPoint(100, 100)));
        QTRY_COMPARE(list->calls, QStringList{"keep"});
    }

    void afterADragThereIsNoClick()
    {
        list->setSelectionMode(Q3ListView::Extended);
        for (int row = 0; row < 3; ++row)
            list->setSelected(list->at(row), true);
        int clicks = 0;
        connect(list, QOverload<Q3ListViewItem *>::of(&Q3ListView::clicked), list, [&clicks] { ++clicks; });
        QVERIFY(drag(*list, 1, *list, 3, 0.9));
        QTRY_VERIFY(list->calls.contains("remove"));
        QCOMPARE(clicks, 0);
        for (int row = 0; row < 5; ++row)
            QCOMPARE(list->at(row)->isSelected(), row < 3);
        // The next press is one like the first.
        QVERIFY(RealPointer::click(list->viewport(), list->inRow(4)));
        QTRY_COMPARE(clicks, 1);
        for (int row = 0; row < 5; ++row)
            QCOMPARE(list->at(row)->isSelected(), row == 4);
        QVERIFY(drag(*list, 3, *list, 0, 0.1));
        QTRY_COMPARE(list->calls.filter("decode"), QStringList({"decode cyan after d", "decode cyan after null"}));
    }

    void itMayBeStartedByTheProgram()
    {
        QTimer::singleShot(0, list, [this] {
            list->initDrag(); // while one goes on
            QDrag::cancel();
        });
        list->initDrag();
        QCOMPARE(list->asked, 1);
        QCOMPARE(list->calls, QStringList{"keep"});
        QTimer::singleShot(0, list, &QDrag::cancel);
        list->initDrag();
        QCOMPARE(list->asked, 2);
    }

    void theListMayBeDeletedDuringADrag_data()
    {
        QTest::addColumn<bool>("over_itself");
        QTest::newRow("over itself") << true;
        QTest::newRow("over another list") << false;
    }
    void theListMayBeDeletedDuringADrag()
    {
        QFETCH(bool, over_itself);
        DNDProbe other;
        other.resize(200, 200);
        QVERIFY(other.showAndWait(QPoint(350, 60)));
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [&] {
            const DNDProbe &over = over_itself ? *list : other;
            if (!over.mark()->isVisible())
                return;
            watch.stop();
            delete list;
            list = nullptr;
        });
        watch.start(5);
        QVERIFY(drag(*list, 1, other, 2, 0.9));
        QTRY_VERIFY(!list);
        QCOMPARE(other.calls, QStringList());
        QVERIFY(other.mark()->isHidden());
    }

    void theTargetMayBeDeletedDuringADrag()
    {
        QWidget behind;
        behind.setGeometry(350, 60, 200, 200);
        behind.show();
        QVERIFY(QTest::qWaitForWindowExposed(&behind));
        auto *other = new DNDProbe(5, &behind);
        other->resize(200, 200);
        other->show();
        QTRY_VERIFY(other->itemRect(other->at(2)).isValid());
        QTimer watch;
        connect(&watch, &QTimer::timeout, this, [&] {
            if (!other->mark()->isVisible())
                return;
            watch.stop();
            delete other;
        });
        watch.start(5);
        QVERIFY(drag(*list, 1, *other, 2, 0.9));
        QTRY_COMPARE(list->calls, QStringList{"keep"});
    }

    void theListMayBeDeletedByItsOwnDrop()
    {
        const QPointer<DNDProbe> alive(list);
        list->during_decode = [this] {
            std::exchange(list, nullptr)->deleteLater();
        };
        QVERIFY(drag(*list, 0, *list, 2, 0.9));
        QTRY_VERIFY(!alive);
    }

private:
    DNDProbe *list = nullptr;
};

TAVI_GUI_TEST_MAIN(TestDNDListViewDrag)
#include "tst_dndlistview_drag.moc"
