// SPDX-License-Identifier: MIT
#include "tests/listviews/listviewfixture.h"
#include "tests/listviews/orderlistfixture.h"
#include "tests/support/menuuser.h"
#include "tests/support/tavitest.h"
#include "treeviews/taviconfigorder.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QMenu>

#include <functional>

namespace {

template <typename Widget>
using User = PopupUser<Widget>;

/// A click of the right button; true if it was taken.
bool rightClick(QWidget *at, const QPoint &where = QPoint(10, 5))
{
    QContextMenuEvent event(QContextMenuEvent::Mouse, where, at->mapToGlobal(where));
    QCoreApplication::sendEvent(at, &event);
    return event.isAccepted();
}

bool run(TaviListView &list, const std::function<void(QMenu &)> &use)
{
    User<QMenu> user(use);
    rightClick(list.header());
    return user.seen;
}

} // namespace

/// What the user does to the columns.
class TestTaviListViewHeader : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theMenuHasAllColumnsInOrderOfCreation()
    {
        ListProbe list;
        list.fill(2, 1);
        QPixmap red(16, 16);
        red.fill(Qt::red);
        list.addColumnItem(QIcon(red), "Black & White", 60, false);
        QVERIFY(list.showAndWait());
        list.dragHeading(1, 0, -20);
        QStringList seen;
        QVariantList data;
        bool icons[3] = {};
        QVERIFY(run(list, [&](QMenu &menu) {
            seen = entries(menu);
            for (const QAction *action : menu.actions())
                data << action->data();
            for (int i = 0; i < 3; ++i)
                icons[i] = !menu.actions().at(i + 2)->icon().isNull();
            closeMenu(menu);
        }));
        QCOMPARE(seen, QStringList({"Configure Headers...", "-", "[x] A", "[x] B", "[ ] Black && White"}));
        QCOMPARE(data, QVariantList({-1, QVariant(), 0, 1, 2}));
        QVERIFY(!icons[0] && !icons[1] && icons[2]);
        QVERIFY(list.findChildren<QMenu *>().isEmpty());
        QCOMPARE(list.columnTexts(), QString("B A (Black & White)"));
    }

    void anEntryHidesAndShowsItsColumn()
    {
        ListProbe list;
        list.fill(3, 2);
        QVERIFY(list.showAndWait());
        QVERIFY(run(list, [](QMenu &menu) { choose(menu, "B"); }));
        QCOMPARE(list.headings(), QString("A C"));
        QVERIFY(run(list, [](QMenu &menu) { choose(menu, "B"); }));
        QCOMPARE(list.headings(), QString("A B C"));
    }

    void hidingMovesTheCurrentItemToTheLast()
    {
        ListProbe list;
        list.setSelectionMode(Q3ListView::Extended);
        list.fill(2, 100);
        QVERIFY(list.showAndWait());
        list.setCurrentItem(list.at(50));
        list.setSelected(list.at(50), true);
        list.setContentsPos(0, 300);
        QVERIFY(run(list, [](QMenu &menu) { choose(menu, "B"); }));
        QCOMPARE(list.selection(), QString("a50"));
        QCOMPARE(list.contentsY(), 300);
        QCOMPARE(list.currentItem(), list.at(99));
    }

    void withoutHeaderMenuThereIsNone()
    {
        ListProbe list(false);
        list.fill(2, 1);
        QVERIFY(list.showAndWait());
        User<QMenu> user([](QMenu &menu) { menu.close(); });
        QVERIFY(!rightClick(list.header()));
        QCoreApplication::processEvents();
        QVERIFY(!user.seen);
    }

    void onTheRowsItIsTheListsContextMenu()
    {
        ListProbe list;
        list.fill(2, 1);
        QVERIFY(list.showAndWait());
        QSignalSpy requested(&list, SIGNAL(contextMenuRequested(Q3ListViewItem *, QPoint, int)));
        User<QMenu> user([](QMenu &menu) { menu.close(); });
        rightClick(list.viewport());
        QVERIFY(!user.seen);
        QCOMPARE(requested.count(), 1);
        QContextMenuEvent key(QContextMenuEvent::Keyboard, list.viewport()->geometry().center());
        QCoreApplication::sendEvent(&list, &key);
        QCOMPARE(requested.count(), 2);
        QVERIFY(!user.seen);
    }

    void actionsOfTheApplicationComeLast()
    {
        ListProbe list;
        list.fill(1, 1);
        QAction first("First", nullptr), second("Second", nullptr);
        list.appendAction(nullptr);
        list.appendAction(&second);
        list.appendAction(&first);
        list.appendAction(&second);
        list.removeAction(nullptr);
        list.removeAction(&second); // the first entry
        QVERIFY(list.showAndWait());
        QStringList seen;
        QVERIFY(run(list, [&](QMenu &menu) {
            seen = entries(menu);
            closeMenu(menu);
        }));
        QCOMPARE(seen, QStringList({"Configure Headers...", "-", "[x] A", "-", "First", "Second"}));
        list.removeAllActions();
        QVERIFY(run(list, [&](QMenu &menu) {
            seen = entries(menu);
            closeMenu(menu);
        }));
        QCOMPARE(seen, QStringList({"Configure Headers...", "-", "[x] A"}));
    }

    void anActionOfTheApplicationHidesNoColumn_data()
    {
        QTest::addColumn<QVariant>("data");
        QTest::newRow("without data") << QVariant();
        QTest::newRow("with a number of its own") << QVariant(0);
        QTest::newRow("with a text") << QVariant("name");
    }
    void anActionOfTheApplicationHidesNoColumn()
    {
        QFETCH(QVariant, data);
        ListProbe list;
        list.fill(2, 1);
        QAction extra("Extra", nullptr);
        extra.setData(data);
        list.appendAction(&extra);
        QSignalSpy triggered(&extra, SIGNAL(triggered()));
        QVERIFY(list.showAndWait());
        QVERIFY(run(list, [](QMenu &menu) { choose(menu, "Extra"); }));
        QCOMPARE(triggered.count(), 1);
        QCOMPARE(list.headings(), QString("A B"));
    }

    void anActionWithoutANumberIsIgnored()
    {
        ListProbe list;
        list.fill(2, 1);
        QAction none("None", nullptr), text("Text", nullptr), negative("Negative", nullptr), unknown("?", nullptr);
        text.setData("name");
        negative.setData(-1);
        unknown.setData(2);
        for (QAction *action : {static_cast<QAction *>(nullptr), &none, &text, &negative, &unknown}) {
            QVERIFY(QMetaObject::invokeMethod(&list, "changeHeaders", Q_ARG(QAction *, action)));
            QCOMPARE(list.headings(), QString("A B"));
        }
        QVERIFY(QMetaObject::invokeMethod(&list, "changeHeaders", Q_ARG(int, -1)));
        QVERIFY(QMetaObject::invokeMethod(&list, "changeHeaders", Q_ARG(int, 2)));
        QCOMPARE(list.headings(), QString("A B"));
        QVERIFY(QMetaObject::invokeMethod(&list, "changeHeaders", Q_ARG(int, 1)));
        QCOMPARE(list.headings(), QString("A"));
    }

    void aDeletedActionIsForgotten()
    {
        ListProbe list;
        list.fill(1, 1);
        auto *extra = new QAction("Extra", nullptr);
        list.appendAction(extra);
        delete extra;
        QVERIFY(list.showAndWait());
        QStringList seen;
        QVERIFY(run(list, [&](QMenu &menu) {
            seen = entries(menu);
            closeMenu(menu);
        }));
        QCOMPARE(seen, QStringList({"Configure Headers...", "-", "[x] A"}));
    }

    void theListMayBeDeletedWhileItsMenuIsOpen()
    {
        auto *list = new ListProbe;
        list->fill(2, 1);
        QVERIFY(list->showAndWait());
        QVERIFY(run(*list, [&](QMenu &) { delete list; }));
    }

    void aDraggedHeadingMovesItsColumn_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<int>("beyond");
        QTest::addColumn<QString>("headings");
        QTest::addColumn<QString>("columns");
        // All columns: A (B) C D (E)
        QTest::newRow("to the front") << 2 << 0 << -20 << "D A C"
                                      << "D A (B) C (E)";
        QTest::newRow("one to the left") << 2 << 1 << -20 << "A D C"
                                         << "A (B) D C (E)";
        QTest::newRow("one to the right") << 0 << 1 << 20 << "C A D"
                                          << "(B) C A D (E)";
        QTest::newRow("to the end, behind hidden ones") << 0 << 2 << 20 << "C D A"
                                                        << "(B) C D (E) A";
        QTest::newRow("nowhere") << 1 << 1 << 20 << "A C D"
                                 << "A (B) C D (E)";
    }
    void aDraggedHeadingMovesItsColumn()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        QFETCH(int, beyond);
        ListProbe list;
        list.fill(5, 1);
        list.setItemVisible(1, false);
        list.setItemVisible(4, false);
        QVERIFY(list.showAndWait());
        list.dragHeading(from, to, beyond);
        QTEST(list.headings(), "headings");
        QTEST(list.columnTexts(), "columns");
        list.rebuildHeaders();
        QTEST(list.headings(), "headings");
    }

    void fromRightToLeftHeadingsMoveAsTheyAreSeen()
    {
        ListProbe list;
        list.setLayoutDirection(Qt::RightToLeft);
        list.fill(3, 1);
        list.setItemVisible(1, false);
        QVERIFY(list.showAndWait());
        QVERIFY(list.header()->sectionRect(0).left() > list.header()->sectionRect(1).left());
        list.dragHeading(0, 1, -20); // A to the left of C
        QCOMPARE(list.headings(), QString("C A"));
        QCOMPARE(list.columnTexts(), QString("(B) C A"));
    }

    void movesOutOfRangeAreIgnored_data()
    {
        QTest::addColumn<int>("from");
        QTest::addColumn<int>("to");
        QTest::addColumn<QString>("columns");
        QTest::newRow("from before the first") << -1 << 1 << "A B C";
        QTest::newRow("to before the first") << 1 << -1 << "A B C";
        QTest::newRow("from behind the last") << 3 << 0 << "A B C";
        QTest::newRow("from far away") << 9 << 0 << "A B C";
        QTest::newRow("nowhere") << 1 << 1 << "A B C";
        QTest::newRow("to the end") << 0 << 3 << "B C A";
        QTest::newRow("to beyond the end") << 0 << 9 << "B C A";
    }
    void movesOutOfRangeAreIgnored()
    {
        QFETCH(int, from);
        QFETCH(int, to);
        ListProbe list;
        list.fill(3, 1);
        Q_EMIT list.header()->indexChange(0, from, to);
        QTEST(list.columnTexts(), "columns");
    }

    void aWidthSetByTheUserIsKept()
    {
        ListProbe list;
        list.fill(3, 1);
        list.setItemVisible(0, false);
        QVERIFY(list.showAndWait());
        const QRect section = list.header()->sectionRect(0);
        const QPoint edge(section.right(), section.center().y());
        QTest::mousePress(list.header(), Qt::LeftButton, Qt::NoModifier, edge);
        const QPoint to = edge + QPoint(25, 0);
        QMouseEvent move(QEvent::MouseMove, to, list.header()->mapToGlobal(to), Qt::NoButton, Qt::LeftButton,
                         Qt::NoModifier);
        QCoreApplication::sendEvent(list.header(), &move);
        QTest::mouseRelease(list.header(), Qt::LeftButton, Qt::NoModifier, to);
        QCOMPARE(list.columnWidth(0), 85);
        QCOMPARE(list.columnItemAtIndex(0)->title, QString("B"));
        QCOMPARE(list.columnItemAtIndex(0)->width, 85);
        list.setItemVisible(0, true);
        QCOMPARE(list.columnWidth(1), 85);
    }

    void aWidthIsThatOfTheColumnWhereverItStands()
    {
        ListProbe list;
        list.fill(3, 1);
        QVERIFY(list.showAndWait());
        list.dragHeading(2, 0, -20); // C A B
        Q_EMIT list.header()->sizeChange(2, 60, 90);
        QCOMPARE(list.columnItemAtIndex(0)->width, 90);
        QCOMPARE(list.columnItemAtIndex(2)->width, 60);
    }

    void aClickOnAHeadingRepaintsTheHeader()
    {
        class Painted : public QObject
        {
        public:
            int count = 0;

        protected:
            bool eventFilter(QObject *, QEvent *event) override
            {
                count += event->type() == QEvent::Paint ? 1 : 0;
                return false;
            }
        };
        ListProbe list;
        list.fill(2, 1);
        QVERIFY(list.showAndWait());
        Painted painted;
        list.header()->installEventFilter(&painted);
        Q_EMIT list.header()->clicked(0);
        QVERIFY(painted.count > 0); // at once
    }

    void columnsMayChangeWhileTheMenuIsOpen()
    {
        ListProbe list;
        list.fill(3, 2);
        QVERIFY(list.showAndWait());
        QVERIFY(run(list, [&list](QMenu &menu) {
            list.setItemVisible(0, false);
            list.addColumn("D", 60);
            choose(menu, "B");
        }));
        QCOMPARE(list.columnTexts(), QString("(A) (B) C D"));
        // An entry of a column that is no more.
        QVERIFY(run(list, [&list](QMenu &menu) {
            list.setHeaderMenuEnabled(false);
            choose(menu, "D");
        }));
        QCOMPARE(list.headings(), QString("C D"));
    }

    void withoutMenuDragsAndWidthsAreNotKept()
    {
        ListProbe list(false);
        list.fill(2, 1);
        Q_EMIT list.header()->indexChange(0, 0, 2);
        Q_EMIT list.header()->sizeChange(0, 60, 90);
        QVERIFY(list.columnItems().isEmpty());
    }

    void aClickOnAHeadingSorts()
    {
        ListProbe list;
        list.fill(2, 3);
        list.setSorting(0);
        QVERIFY(list.showAndWait());
        QTest::mouseClick(list.header(), Qt::LeftButton, Qt::NoModifier, list.header()->sectionRect(0).center());
        QCOMPARE(list.rows(), QString("a2 a1 a0"));
    }

    void theDialogOrdersShowsAndHides()
    {
        ListProbe list;
        list.fill(4, 2);
        list.setItemVisible(1, false);
        QVERIFY(list.showAndWait());
        bool seen = false;
        QStringList lists;
        User<TaviConfigOrderDLG> hider([&](TaviConfigOrderDLG &dialog) {
            seen = dialog.windowTitle() == "Configure List Headers";
            auto *all = dialog.hidden_frame->findChild<TaviConfigOrderListView *>();
            auto *showing = dialog.showing_frame->findChild<TaviConfigOrderListView *>();
            lists << rowTexts(*all) << rowTexts(*showing);
            selectRows(*showing, "A");
            QTRY_VERIFY(dialog.move_down_button->isEnabled());
            dialog.move_down_button->click();
            dialog.accept();
        });
        QVERIFY(run(list, [](QMenu &menu) { choose(menu, "Configure Headers..."); }));
        QVERIFY(seen);
        QCOMPARE(lists, QStringList({"a B c d", "A C D"}));
        QCOMPARE(list.headings(), QString("C A D"));
        QCOMPARE(list.columnTexts(), QString("C A D (B)"));
    }

    void theDialogMayBeCancelled()
    {
        ListProbe list;
        list.fill(2, 2);
        QVERIFY(list.showAndWait());
        QSignalSpy current(&list, SIGNAL(currentChanged(Q3ListViewItem *)));
        User<TaviConfigOrderDLG> user([](TaviConfigOrderDLG &dialog) { dialog.reject(); });
        QVERIFY(QMetaObject::invokeMethod(&list, "configureHeaders"));
        QVERIFY(user.seen);
        QCOMPARE(list.columnTexts(), QString("A B"));
        QCOMPARE(current.count(), 0);
    }

    void theDialogShowsAndHidesColumns()
    {
        ListProbe list;
        list.fill(4, 2);
        list.setItemVisible(1, false);
        User<TaviConfigOrderDLG> user([](TaviConfigOrderDLG &dialog) {
            auto *all = dialog.hidden_frame->findChild<TaviConfigOrderListView *>();
            auto *showing = dialog.showing_frame->findChild<TaviConfigOrderListView *>();
            selectRows(*showing, "A D");
            QTRY_VERIFY(dialog.make_hidden_button->isEnabled());
            dialog.make_hidden_button->click();
            selectRows(*all, "B");
            showing->clearSelection();
            QTRY_VERIFY(dialog.make_showing_button->isEnabled());
            dialog.make_showing_button->click();
            dialog.accept();
        });
        QVERIFY(QMetaObject::invokeMethod(&list, "configureHeaders"));
        QVERIFY(user.seen);
        QCOMPARE(list.headings(), QString("C B"));
        // The hidden ones come last, in the order of their making.
        QCOMPARE(list.columnTexts(), QString("C B (A) (D)"));
        QCOMPARE(list.itemVisible(0), false);
    }

    void columnsThatComeMeanwhileStay()
    {
        ListProbe list;
        list.fill(2, 2);
        User<TaviConfigOrderDLG> user([&](TaviConfigOrderDLG &dialog) {
            list.addColumnItem("New", 60, true);
            dialog.accept();
        });
        QVERIFY(QMetaObject::invokeMethod(&list, "configureHeaders"));
        QCOMPARE(list.columnTexts(), QString("A B New"));
        QCOMPARE(list.headings(), QString("A B New"));
    }

    void columnsMayGoWhileTheDialogIsOpen()
    {
        ListProbe list;
        list.fill(2, 2);
        QVERIFY(list.showAndWait());
        User<TaviConfigOrderDLG> user([&](TaviConfigOrderDLG &dialog) {
            list.setHeaderMenuEnabled(false);
            QVERIFY(!dialog.isVisible());
            dialog.repaint();
        });
        QVERIFY(QMetaObject::invokeMethod(&list, "configureHeaders"));
        QVERIFY(user.seen);
        QCOMPARE(list.columnItems().size(), 0);
        QCOMPARE(list.headings(), QString("A B"));
    }

    void thereIsOneDialogAtATime()
    {
        ListProbe list;
        list.fill(2, 2);
        int dialogs = 0;
        User<TaviConfigOrderDLG> user([&](TaviConfigOrderDLG &dialog) {
            QVERIFY(QMetaObject::invokeMethod(&list, "configureHeaders"));
            dialogs = list.findChildren<TaviConfigOrderDLG *>().size();
            dialog.reject();
        });
        QVERIFY(QMetaObject::invokeMethod(&list, "configureHeaders"));
        QCOMPARE(dialogs, 1);
        User<TaviConfigOrderDLG> again([](TaviConfigOrderDLG &dialog) { dialog.reject(); });
        QVERIFY(QMetaObject::invokeMethod(&list, "configureHeaders"));
        QVERIFY(again.seen);
    }

    void theListMayBeDeletedWhileTheDialogIsOpen()
    {
        auto *list = new ListProbe;
        list->fill(2, 2);
        User<TaviConfigOrderDLG> user([&](TaviConfigOrderDLG &) { delete list; });
        QVERIFY(QMetaObject::invokeMethod(list, "configureHeaders"));
        QVERIFY(user.seen);
    }
};

TAVI_GUI_TEST_MAIN(TestTaviListViewHeader)
#include "tst_tavilistview_header.moc"
