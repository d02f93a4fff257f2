// SPDX-License-Identifier: MIT
#include "tests/listviews/listviewfixture.h"
#include "tests/support/tavitest.h"

#include <QWheelEvent>

namespace {

class FloaterProbe : public ListProbe
{
public:
    void showFilterFloater() override { ++shown; }
    void closeFilterFloater() override { ++closed; }
    int shown = 0;
    int closed = 0;
};

/// A list of inks, searched by keys.
template <typename List>
struct Inks {
    Inks()
    {
        list.addColumn("Ink", 60);
        list.addColumn("Name", 60);
        Q3ListViewItem *last = nullptr;
        for (const char *name : {"Black", "cyan", "Magenta", "Cyan light", "yellow"})
            last = new Q3ListViewItem(&list, last, name, QString("No ") + name);
    }
    void key(int code, const QString &text = {}, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QKeyEvent event(QEvent::KeyPress, code, modifiers, text);
        list.keyPressEvent(&event);
    }
    void type(const QString &text)
    {
        for (const QChar letter : text)
            key(letter.toUpper().unicode(), letter);
    }
    List list;
};

/// Over the middle; true if it was taken.
bool turnWheel(TaviListView &list, const QPoint &angle, Qt::KeyboardModifiers modifiers)
{
    const QPoint middle = list.viewport()->rect().center();
    QWheelEvent event(middle, list.viewport()->mapToGlobal(middle), QPoint(), angle, Qt::NoButton, modifiers,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(list.viewport(), &event);
    return event.isAccepted();
}

/// Longer than a search waits.
void outwaitTheSearch()
{
    QElapsedTimer time;
    time.start();
    while (time.elapsed() <= 401)
        QTest::qSleep(5);
}

} // namespace

/// Keys and wheel.
class TestTaviListViewInput : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void lettersSearchTogether()
    {
        Inks<ListProbe> inks;
        inks.key('C', "c");
        QCOMPARE(inks.list.selection(), QString("cyan"));
        QCOMPARE(inks.list.currentItem(), inks.list.at(1));
        inks.type("yan l");
        QCOMPARE(inks.list.selection(), QString("Cyan light"));
    }

    void afterAPauseTheSearchStartsOver()
    {
        Inks<ListProbe> inks;
        inks.key('C', "c");
        outwaitTheSearch();
        inks.key('Y', "y");
        QCOMPARE(inks.list.selection(), QString("yellow"));
    }

    void everyKeyHoldsThePauseOff()
    {
        Inks<ListProbe> inks;
        inks.key('C', "c");
        QElapsedTimer time;
        time.start();
        while (time.elapsed() <= 300)
            QTest::qSleep(5);
        inks.key(Qt::Key_Shift); // brings no text, but counts as a key
        while (time.elapsed() <= 600)
            QTest::qSleep(5);
        inks.key('Y', "y");
        QCOMPARE(inks.list.selection(), QString("cyan"));
    }

    void capitalsFindSmallLetters()
    {
        Inks<ListProbe> inks;
        inks.type("MAG");
        QCOMPARE(inks.list.selection(), QString("Magenta"));
    }

    void beginningsComeBeforeMiddles()
    {
        Inks<ListProbe> inks;
        inks.key('L', "l"); // in Black, first, but none begins with it
        QCOMPARE(inks.list.selection(), QString("Black"));
        outwaitTheSearch();
        inks.key('M', "m");
        QCOMPARE(inks.list.selection(), QString("Magenta"));
    }

    void beginningsComeBeforeMiddlesInTheSortedColumn()
    {
        Inks<ListProbe> inks;
        inks.list.setSorting(0); // Black, which has a c, comes first
        QCOMPARE(inks.list.at(0)->text(0), QString("Black"));
        inks.key('C', "c");
        QVERIFY(inks.list.selection().startsWith('c', Qt::CaseInsensitive));
    }

    void lettersOfAllAlphabetsAreSearchedFor()
    {
        Inks<ListProbe> inks;
        inks.list.at(3)->setText(0, QString::fromUtf8("\xC3\x84pfel")); // a capital with two dots
        inks.key(0xC4, QString(QChar(0xE4)));
        QCOMPARE(inks.list.currentItem(), inks.list.at(3));
    }

    void withoutItemsOrColumnsNothingIsFound()
    {
        ListProbe list;
        QTest::keyClick(&list, 'a');
        list.addColumn("A", 60);
        QTest::keyClick(&list, 'a');
        ListProbe bare;
        new Q3ListViewItem(&bare, "a");
        QTest::keyClick(&bare, 'a');
        QVERIFY(!list.currentItem() && bare.selection().isEmpty());
    }

    void theSortedColumnIsSearchedFirst()
    {
        Inks<ListProbe> inks;
        inks.list.at(4)->setText(1, "b");
        inks.key('B', "b");
        QCOMPARE(inks.list.selection(), QString("Black"));
        outwaitTheSearch();
        inks.list.setSorting(1);
        inks.key('B', "b");
        QCOMPARE(inks.list.selection(), QString("yellow"));
    }

    void otherColumnsAreSearchedInOrder()
    {
        Inks<ListProbe> inks;
        inks.type("no m");
        QCOMPARE(inks.list.selection(), QString("Magenta"));
    }

    void aHitIsTheOnlySelection()
    {
        Inks<ListProbe> inks;
        inks.list.setSelectionMode(Q3ListView::Extended);
        inks.list.selectAll(true);
        inks.type("mag");
        QCOMPARE(inks.list.selection(), QString("Magenta"));
        QCOMPARE(inks.list.currentItem(), inks.list.at(2));
    }

    void aHitIsScrolledTo()
    {
        ListProbe list;
        list.fill(1, 300);
        QVERIFY(list.showAndWait());
        for (const char letter : {'a', '2', '9', '0'})
            QTest::keyClick(&list, letter);
        QCOMPARE(list.selection(), QString("a290"));
        QVERIFY(list.itemRect(list.at(290)).isValid());
    }

    void withoutAHitNothingHappens()
    {
        Inks<ListProbe> inks;
        inks.list.setSelected(inks.list.at(0), true);
        QKeyEvent event(QEvent::KeyPress, Qt::Key_Q, Qt::NoModifier, "q");
        inks.list.keyPressEvent(&event);
        QCOMPARE(inks.list.selection(), QString("Black"));
        QVERIFY(event.isAccepted());
    }

    void aSlotMayClearTheListThatIsSearched()
    {
        Inks<ListProbe> inks;
        inks.list.setSelectionMode(Q3ListView::Multi);
        connect(&inks.list, SIGNAL(selectionChanged()), &inks.list, SLOT(clear()));
        inks.key('C', "c");
        QCOMPARE(inks.list.childCount(), 0);
    }

    void aQuestionMarkOpensTheSearchWindow()
    {
        Inks<FloaterProbe> inks;
        inks.list.at(2)->setText(0, "really?");
        inks.key(Qt::Key_Question, "?", Qt::ShiftModifier);
        QCOMPARE(inks.list.shown, 1);
        QCOMPARE(inks.list.selection(), QString("really?")); // and is searched for
    }

    void aQuestionMarkWithOtherModifiersIsALetter_data()
    {
        QTest::addColumn<int>("modifiers");
        QTest::newRow("none") << int(Qt::NoModifier);
        QTest::newRow("Control") << int(Qt::ShiftModifier | Qt::ControlModifier);
        QTest::newRow("Alt") << int(Qt::ShiftModifier | Qt::AltModifier);
        QTest::newRow("Meta") << int(Qt::ShiftModifier | Qt::MetaModifier);
    }
    void aQuestionMarkWithOtherModifiersIsALetter()
    {
        QFETCH(int, modifiers);
        Inks<FloaterProbe> inks;
        inks.list.at(2)->setText(0, "really?");
        inks.key(Qt::Key_Question, "?", Qt::KeyboardModifiers(modifiers));
        QCOMPARE(inks.list.shown, 0);
        QCOMPARE(inks.list.selection(), QString("really?"));
    }

    void escapeClosesTheSearchWindow()
    {
        Inks<FloaterProbe> inks;
        inks.key(Qt::Key_Escape, "\x1b", Qt::ShiftModifier);
        QCOMPARE(inks.list.closed, 0);
        inks.key(Qt::Key_Escape, "\x1b");
        QCOMPARE(inks.list.closed, 1);
    }

    void theKeysOfAListAreNotSearchedFor_data()
    {
        QTest::addColumn<int>("code");
        QTest::addColumn<QString>("text");
        QTest::newRow("+") << int(Qt::Key_Plus) << "+";
        QTest::newRow("-") << int(Qt::Key_Minus) << "-";
        QTest::newRow("blank") << int(Qt::Key_Space) << " ";
        QTest::newRow("Return") << int(Qt::Key_Return) << "\r";
        QTest::newRow("Delete") << int(Qt::Key_Delete) << "\x7f";
        QTest::newRow("F2") << int(Qt::Key_F2) << "";
    }
    void theKeysOfAListAreNotSearchedFor()
    {
        QFETCH(int, code);
        QFETCH(QString, text);
        Inks<ListProbe> inks;
        inks.list.at(2)->setText(0, "a+b- c");
        inks.key(code, text);
        QCOMPARE(inks.list.selection(), QString());
    }

    void theListsOwnKeysWork()
    {
        Inks<ListProbe> inks;
        QVERIFY(inks.list.showAndWait());
        inks.list.setCurrentItem(inks.list.at(0));
        QTest::keyClick(&inks.list, Qt::Key_Down);
        QCOMPARE(inks.list.currentItem(), inks.list.at(1));
        QTest::keyClick(&inks.list, Qt::Key_End);
        QCOMPARE(inks.list.currentItem(), inks.list.at(4));
        QTest::keyClick(&inks.list, Qt::Key_Home);
        QCOMPARE(inks.list.currentItem(), inks.list.at(0));
        QSignalSpy returned(&inks.list, SIGNAL(returnPressed(Q3ListViewItem *)));
        QTest::keyClick(&inks.list, Qt::Key_Return);
        QCOMPARE(returned.count(), 1);
        inks.list.setSelectionMode(Q3ListView::Extended);
        inks.key(Qt::Key_A, "\x01", Qt::ControlModifier); // as a keyboard brings it
        QCOMPARE(inks.list.selectedChildCount(), 5);
    }

    void rightAndLeftOpenAndCloseWhatIsSelected()
    {
        Inks<ListProbe> inks;
        inks.list.setSelectionMode(Q3ListView::Multi);
        for (int row = 0; row < 3; ++row)
            new Q3ListViewItem(inks.list.at(row), "child");
        inks.list.setSelected(inks.list.at(0), true);
        inks.list.setSelected(inks.list.at(2), true);
        inks.list.setCurrentItem(inks.list.at(1));
        inks.key(Qt::Key_Right);
        QVERIFY(inks.list.at(0)->isOpen() && inks.list.at(2)->isOpen());
        QVERIFY(!inks.list.at(1)->isOpen()); // the base has not seen the key
        inks.list.at(1)->setOpen(true);
        inks.key(Qt::Key_Left);
        QVERIFY(!inks.list.at(0)->isOpen() && !inks.list.at(2)->isOpen());
        QVERIFY(inks.list.at(1)->isOpen());
    }

    void rightOpensFromRightToLeftToo()
    {
        Inks<ListProbe> inks;
        inks.list.setLayoutDirection(Qt::RightToLeft);
        new Q3ListViewItem(inks.list.at(0), "child");
        inks.list.setSelected(inks.list.at(0), true);
        inks.key(Qt::Key_Right);
        QVERIFY(inks.list.at(0)->isOpen());
        inks.key(Qt::Key_Left);
        QVERIFY(!inks.list.at(0)->isOpen());
    }

    void theWheelScrollsSidewaysWithShiftOrAlt_data()
    {
        QTest::addColumn<QPoint>("angle");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QPoint>("position");
        QTest::newRow("Shift") << QPoint(0, -120) << int(Qt::ShiftModifier) << QPoint(120, 0);
        QTest::newRow("Alt, turned by the platform") << QPoint(-120, 0) << int(Qt::AltModifier) << QPoint(120, 0);
        QTest::newRow("both") << QPoint(0, -120) << int(Qt::ShiftModifier | Qt::AltModifier) << QPoint(120, 0);
        QTest::newRow("backwards at the edge") << QPoint(0, 120) << int(Qt::ShiftModifier) << QPoint(0, 0);
    }
    void theWheelScrollsSidewaysWithShiftOrAlt()
    {
        QFETCH(QPoint, angle);
        QFETCH(int, modifiers);
        ListProbe list;
        list.fill(12, 100);
        QVERIFY(list.showAndWait());
        QVERIFY(turnWheel(list, angle, Qt::KeyboardModifiers(modifiers)));
        QTEST(QPoint(list.contentsX(), list.contentsY()), "position");
    }

    void theWheelAloneScrollsDown()
    {
        ListProbe list;
        list.fill(12, 100);
        QVERIFY(list.showAndWait());
        turnWheel(list, QPoint(0, -120), Qt::NoModifier);
        QCOMPARE(list.contentsX(), 0);
        QVERIFY(list.contentsY() > 0);
    }
};

TAVI_GUI_TEST_MAIN(TestTaviListViewInput)
#include "tst_tavilistview_input.moc"
