// SPDX-License-Identifier: MIT
#include "tests/qt3/listfixture.h"
#include "tests/support/tavitest.h"

#include <QScrollBar>

class TestQ3ListViewKeyboard : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void focusMakesTheFirstItemCurrent()
    {
        ListFixture list;
        list.at(0)->setVisible(false);
        list.at(1)->setEnabled(false);
        QVERIFY(list.showAndWait());
        QCOMPARE(list.currentItem(), list.at(2));
        QCOMPARE(list.selection(), QString());
    }

    void rowsByKeys()
    {
        ListFixture list(100);
        QVERIFY(list.showAndWait());
        QTest::keyClick(&list, Qt::Key_Down);
        QCOMPARE(list.currentItem(), list.at(1));
        QCOMPARE(list.selection(), QStringLiteral("1"));
        QTest::keyClick(&list, Qt::Key_Up);
        QTest::keyClick(&list, Qt::Key_Up);
        QCOMPARE(list.currentItem(), list.at(0));
        QTest::keyClick(&list, Qt::Key_End);
        QCOMPARE(list.currentItem(), list.at(99));
        QVERIFY(list.viewport()->rect().contains(list.itemRect(list.at(99))));
        QTest::keyClick(&list, Qt::Key_Down);
        QCOMPARE(list.currentItem(), list.at(99));
        QTest::keyClick(&list, Qt::Key_Home);
        QCOMPARE(list.currentItem(), list.at(0));
        QCOMPARE(list.contentsY(), 0);
        const int page = list.visibleHeight() / list.at(0)->height();
        QTest::keyClick(&list, Qt::Key_PageDown);
        const int reached = list.currentItem()->text(1).toInt();
        QVERIFY2(reached >= page - 1 && reached <= page, qPrintable(QString::number(reached)));
        QVERIFY(list.viewport()->rect().contains(list.itemRect(list.currentItem())));
        QTest::keyClick(&list, Qt::Key_PageUp);
        QCOMPARE(list.currentItem(), list.at(0));
    }

    void disabledAndHiddenRowsAreLeftOut()
    {
        ListFixture list(6);
        list.at(1)->setEnabled(false);
        list.at(2)->setVisible(false);
        list.at(5)->setEnabled(false);
        QVERIFY(list.showAndWait());
        QTest::keyClick(&list, Qt::Key_Down);
        QCOMPARE(list.currentItem(), list.at(3));
        QTest::keyClick(&list, Qt::Key_Up);
        QCOMPARE(list.currentItem(), list.at(0));
        QTest::keyClick(&list, Qt::Key_End);
        QCOMPARE(list.currentItem(), list.at(4));
        QTest::keyClick(&list, Qt::Key_Down);
        QCOMPARE(list.currentItem(), list.at(4));
    }

    void extendedKeys()
    {
        ListFixture list(10, Q3ListView::Extended);
        QVERIFY(list.showAndWait());
        QTest::keyClick(&list, Qt::Key_Down);
        QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier);
        QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(list.selection(), QStringLiteral("1 2 3"));
        QTest::keyClick(&list, Qt::Key_Up, Qt::ShiftModifier);
        QCOMPARE(list.selection(), QStringLiteral("1 2"));
        QTest::keyClick(&list, Qt::Key_Home, Qt::ShiftModifier);
        QCOMPARE(list.selection(), QStringLiteral("0 1"));
        QTest::keyClick(&list, Qt::Key_End, Qt::ControlModifier);
        QCOMPARE(list.selection(), QStringLiteral("0 1"));
        QCOMPARE(list.currentItem(), list.at(9));
        QTest::keyClick(&list, Qt::Key_Space, Qt::ControlModifier);
        QCOMPARE(list.selection(), QStringLiteral("0 1 9"));
        QTest::keyClick(&list, Qt::Key_Up);
        QCOMPARE(list.selection(), QStringLiteral("8"));
        QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(list.selection(), QStringLiteral("0 1 2 3 4 5 6 7 8 9"));
    }

    void multiKeys()
    {
        ListFixture list(10, Q3ListView::Multi);
        QVERIFY(list.showAndWait());
        QTest::keyClick(&list, Qt::Key_Down);
        QCOMPARE(list.selection(), QString());
        QSignalSpy space(&list, SIGNAL(spacePressed(Q3ListViewItem *)));
        QTest::keyClick(&list, Qt::Key_Space);
        QCOMPARE(list.selection(), QStringLiteral("1"));
        QCOMPARE(space.count(), 1);
        QTest::keyClick(&list, Qt::Key_Down, Qt::ShiftModifier);
        QCOMPARE(list.selection(), QStringLiteral("1 2"));
        QTest::keyClick(&list, Qt::Key_Space);
        QCOMPARE(list.selection(), QStringLiteral("1"));
    }

    void noSelectionKeysOnlyGo()
    {
        ListFixture list(10, Q3ListView::NoSelection);
        QVERIFY(list.showAndWait());
        QTest::keyClick(&list, Qt::Key_Down);
        QTest::keyClick(&list, Qt::Key_Space);
        QTest::keyClick(&list, Qt::Key_A, Qt::ControlModifier);
        QCOMPARE(list.currentItem(), list.at(1));
        QCOMPARE(list.selection(), QString());
    }

    void leftAndRightWalkTheTree_data()
    {
        QTest::addColumn<Qt::LayoutDirection>("direction");
        QTest::newRow("left to right") << Qt::LeftToRight;
        QTest::newRow("right to left") << Qt::RightToLeft;
    }
    void leftAndRightWalkTheTree()
    {
        QFETCH(Qt::LayoutDirection, direction);
        const Qt::Key in = direction == Qt::LeftToRight ? Qt::Key_Right : Qt::Key_Left;
        const Qt::Key out = direction == Qt::LeftToRight ? Qt::Key_Left : Qt::Key_Right;
        ListFixture list(3);
        list.setLayoutDirection(direction);
        list.setRootIsDecorated(true);
        auto *child = new Q3ListViewItem(list.at(1), QStringLiteral("child"));
        QVERIFY(list.showAndWait());
        list.setCurrentItem(list.at(1));
        QTest::keyClick(&list, in);
        QVERIFY(list.at(1)->isOpen());
        QCOMPARE(list.currentItem(), list.at(1));
        QTest::keyClick(&list, in);
        QCOMPARE(list.currentItem(), child);
        QTest::keyClick(&list, out);
        QCOMPARE(list.currentItem(), list.at(1));
        QTest::keyClick(&list, out);
        QVERIFY(!list.at(1)->isOpen());
        QTest::keyClick(&list, Qt::Key_Plus);
        QVERIFY(list.at(1)->isOpen());
        QTest::keyClick(&list, Qt::Key_Minus);
        QVERIFY(!list.at(1)->isOpen());
    }

    void leftAndRightScrollWhereThereIsNoTree()
    {
        ListFixture list(3);
        list.setColumnWidth(0, 500);
        QVERIFY(list.showAndWait());
        QTest::keyClick(&list, Qt::Key_Right);
        QCOMPARE(list.contentsX(), list.horizontalScrollBar()->singleStep());
        QTest::keyClick(&list, Qt::Key_Left);
        QCOMPARE(list.contentsX(), 0);
    }

    void returnTellsTheCurrentItem()
    {
        ListFixture list;
        QVERIFY(list.showAndWait());
        QSignalSpy returned(&list, SIGNAL(returnPressed(Q3ListViewItem *)));
        list.setCurrentItem(list.at(2));
        QTest::keyClick(&list, Qt::Key_Return);
        QTest::keyClick(&list, Qt::Key_Enter);
        QCOMPARE(returned.count(), 2);
        QCOMPARE(returned.at(0).at(0).value<Q3ListViewItem *>(), list.at(2));
        list.at(2)->setEnabled(false);
        QTest::keyClick(&list, Qt::Key_Return);
        QCOMPARE(returned.count(), 2);
    }

    void typingFindsRows()
    {
        ListFixture list(0, Q3ListView::Extended);
        Q3ListViewItem *last = nullptr;
        for (const char *ink : {"Cyan", "Magenta", "Mauve", "Black", "black two"})
            last = new Q3ListViewItem(&list, last, QString::fromLatin1(ink), QString::fromLatin1(ink));
        QVERIFY(list.showAndWait());
        QTest::keyClick(&list, Qt::Key_M);
        QCOMPARE(list.selection(), QStringLiteral("Magenta"));
        QTest::keyClick(&list, Qt::Key_A);
        QTest::keyClick(&list, Qt::Key_U);
        QCOMPARE(list.selection(), QStringLiteral("Mauve"));
        QTest::keyClick(&list, Qt::Key_Q);
        QCOMPARE(list.selection(), QStringLiteral("Mauve"));
        QTest::keyClick(&list, Qt::Key_Escape); // forgets what was typed
        QTest::keyClicks(&list, QStringLiteral("black t"));
        QCOMPARE(list.selection(), QStringLiteral("black two"));
    }

    void typingBeginsAnewAfterAWhile()
    {
        const int before = QApplication::keyboardInputInterval();
        QApplication::setKeyboardInputInterval(1);
        ListFixture list(0);
        Q3ListViewItem *last = nullptr;
        for (const char *ink : {"Cyan", "Magenta", "Yellow"})
            last = new Q3ListViewItem(&list, last, QString::fromLatin1(ink), QString::fromLatin1(ink));
        QVERIFY(list.showAndWait());
        QTest::keyClick(&list, Qt::Key_M);
        QTest::keyClick(&list, Qt::Key_Y, Qt::NoModifier, 20);
        QCOMPARE(list.selection(), QStringLiteral("Yellow"));
        QApplication::setKeyboardInputInterval(before);
    }

    void typingLooksInTheSortedColumn()
    {
        ListFixture list(0);
        new Q3ListViewItem(&list, QStringLiteral("a"), QStringLiteral("z"));
        auto *second = new Q3ListViewItem(&list, QStringLiteral("z"), QStringLiteral("a"));
        list.setSorting(1);
        QVERIFY(list.showAndWait());
        QTest::keyClick(&list, Qt::Key_A);
        QCOMPARE(list.selectedItem(), second);
    }

    void otherKeysAreLeftToOthers()
    {
        struct Window : QWidget {
            void keyPressEvent(QKeyEvent *e) override { keys.append(e->key()); }
            QVector<int> keys;
        };
        Window window;
        ListFixture list;
        list.setParent(&window);
        window.show();
        QTest::keyClick(&list, Qt::Key_Escape);
        QTest::keyClick(&list, Qt::Key_F5);
        QTest::keyClick(&list, Qt::Key_S, Qt::ControlModifier);
        QTest::keyClick(&list, Qt::Key_Down);
        QCOMPARE(window.keys, (QVector<int>{Qt::Key_Escape, Qt::Key_F5, Qt::Key_Control, Qt::Key_S}));
    }

    void aClickBeginsTheSearchAnew()
    {
        ListFixture list(0);
        auto *both = new Q3ListViewItem(&list, QStringLiteral("ab"));
        auto *second = new Q3ListViewItem(&list, QStringLiteral("b"));
        auto *first = new Q3ListViewItem(&list, QStringLiteral("a"));
        QVERIFY(list.showAndWait());
        QTest::keyClick(&list, Qt::Key_A);
        QCOMPARE(list.currentItem(), first);
        list.click(both);
        QTest::keyClick(&list, Qt::Key_B);
        QCOMPARE(list.currentItem(), second);
    }
};

TAVI_GUI_TEST_MAIN(TestQ3ListViewKeyboard)

#include "tst_q3listview_keyboard.moc"
