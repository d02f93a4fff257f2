// SPDX-License-Identifier: MIT
#include "tests/listviews/listviewfixture.h"
#include "tests/support/tavitest.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QWindow>

#include <utility>

namespace {

/// A buddy's signals, noted as they come.
class Listener : public QObject
{
    Q_OBJECT

public:
    explicit Listener(TaviListViewSignalBuddy *buddy)
    {
        connect(buddy, SIGNAL(contextMenuRequested(Q3ListViewItem *, QPoint, int)), this,
                SLOT(menu(Q3ListViewItem *, QPoint, int)));
        connect(buddy, SIGNAL(doubleClicked(Q3ListViewItem *, QPoint, int)), this,
                SLOT(twice(Q3ListViewItem *, QPoint, int)));
        connect(buddy, SIGNAL(selectionChanged(Q3ListViewItem *)), this, SLOT(selection(Q3ListViewItem *)));
        connect(buddy, SIGNAL(selectionChanged()), this, SLOT(selection()));
        connect(buddy, SIGNAL(currentChanged(Q3ListViewItem *)), this, SLOT(current(Q3ListViewItem *)));
        connect(buddy, SIGNAL(clicked(Q3ListViewItem *)), this, SLOT(click(Q3ListViewItem *)));
        connect(buddy, SIGNAL(returnPressed(Q3ListViewItem *)), this, SLOT(enter(Q3ListViewItem *)));
    }
    /// What has come since the last call.
    QString take() { return std::exchange(told_, {}).join(", "); }

private Q_SLOTS:
    void menu(Q3ListViewItem *item, const QPoint &pos, int col) { note("menu", item, place(pos, col)); }
    void twice(Q3ListViewItem *item, const QPoint &pos, int col) { note("twice", item, place(pos, col)); }
    void selection(Q3ListViewItem *item) { note("selected", item); }
    void selection() { told_ << "selection"; }
    void current(Q3ListViewItem *item) { note("current", item); }
    void click(Q3ListViewItem *item) { note("click", item); }
    void enter(Q3ListViewItem *item) { note("return", item); }

private:
    static QString place(const QPoint &pos, int col)
    {
        return QString(" %1,%2 in %3").arg(pos.x()).arg(pos.y()).arg(col);
    }
    void note(const char *what, Q3ListViewItem *item, const QString &more = {})
    {
        told_ << QString(what) + " " + (item ? item->text(0) : "null") + more;
    }

    QStringList told_;
};

/// A list of one column, and a buddy that tells a listener of it.
struct WatchedList : ListProbe {
    explicit WatchedList(int rows)
    {
        fill(1, rows);
        buddy.setListView(this);
    }
    TaviListViewSignalBuddy buddy;
    Listener listener{&buddy};
};

/// A list of one column, and a line edit that filters it.
struct FilteredList : ListProbe {
    explicit FilteredList(int rows)
    {
        fill(1, rows);
        filterBuddy()->addFilterLineEdit(&edit);
    }
    QLineEdit edit;
};

/// Ctrl+Shift+I as a line edit gets it, before its shortcut.
void pressInvert(QWidget *edit, Qt::KeyboardModifiers modifiers = Qt::ControlModifier | Qt::ShiftModifier,
                 int key = Qt::Key_I)
{
    QKeyEvent event(QEvent::ShortcutOverride, key, modifiers);
    QCoreApplication::sendEvent(edit, &event);
}

QString look(const QLineEdit &edit)
{
    const auto name = [](const QColor &colour) {
        return colour == QColor(Qt::black) ? "black" : colour == QColor(Qt::white) ? "white" : "?";
    };
    QStringList looks;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        looks << QString(name(edit.palette().color(group, edit.foregroundRole()))) + " on "
                     + name(edit.palette().color(group, edit.backgroundRole()));
    }
    looks.removeDuplicates();
    return looks.join(", ");
}

} // namespace

/// The companions of the list.
class TestTaviListViewBuddies : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void aSignalBuddyStandsAlone()
    {
        TaviListViewSignalBuddy buddy;
        QVERIFY(!buddy.parent());
        QCOMPARE(buddy.objectName(), QString("TaviListViewSignalBuddy"));
        QVERIFY(!buddy.listView());
        buddy.init();
        buddy.setListView(nullptr);
        QVERIFY(!buddy.listView());
    }

    void signalsComeOneTurnLater()
    {
        WatchedList list(3);
        QCOMPARE(list.buddy.listView(), &list);
        list.setSelected(list.at(1), true);
        QCOMPARE(list.listener.take(), QString());
        QCoreApplication::processEvents();
        QCOMPARE(list.listener.take(), QString("current a1, selection, selected a1"));
        QCoreApplication::processEvents();
        QCOMPARE(list.listener.take(), QString());
    }

    void allSevenSignalsAreToldOn()
    {
        WatchedList list(3);
        Q_EMIT list.contextMenuRequested(list.at(0), QPoint(1, 2), 3);
        Q_EMIT list.doubleClicked(list.at(1), QPoint(4, 5), 6);
        Q_EMIT list.selectionChanged(list.at(2));
        Q_EMIT list.selectionChanged();
        Q_EMIT list.currentChanged(list.at(0));
        Q_EMIT list.clicked(list.at(1));
        Q_EMIT list.returnPressed(list.at(2));
        QCOMPARE(list.listener.take(), QString());
        QCoreApplication::processEvents();
        QCOMPARE(list.listener.take(),
                 QString("menu a0 1,2 in 3, twice a1 4,5 in 6, selected a2, selection, current a0, "
                         "click a1, return a2"));
    }

    void twoInOneTurnAreTwoWithTheLastArguments()
    {
        WatchedList list(3);
        Q_EMIT list.clicked(list.at(0));
        Q_EMIT list.clicked(list.at(2));
        QCoreApplication::processEvents();
        QCOMPARE(list.listener.take(), QString("click a2, click a2"));
    }

    void aSlotMayDeleteTheItems()
    {
        ListProbe list;
        list.setSelectionMode(Q3ListView::Extended);
        list.fill(1, 5);
        QVERIFY(list.showAndWait());
        TaviListViewSignalBuddy buddy;
        buddy.setListView(&list);
        connect(&buddy, SIGNAL(selectionChanged()), &list, SLOT(clear()));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, Qt::NoModifier,
                          list.itemRect(list.at(2)).topLeft() + QPoint(20, 5));
        QTRY_COMPARE(list.childCount(), 0);
    }

    void anItemThatHasGoneIsToldAsNull()
    {
        WatchedList list(3);
        Q_EMIT list.clicked(list.at(1));
        delete list.at(1);
        QCoreApplication::processEvents();
        QCOMPARE(list.listener.take(), QString("click null"));
    }

    void aViewMayGoWhileASignalIsPending()
    {
        TaviListViewSignalBuddy buddy;
        Listener listener(&buddy);
        auto *list = new ListProbe;
        list->fill(1, 3);
        buddy.setListView(list);
        Q_EMIT list->clicked(list->at(1));
        buddy.setListView(nullptr);
        delete list;
        QCoreApplication::processEvents();
        QCOMPARE(listener.take(), QString("click null"));
        list = new ListProbe;
        list->fill(1, 3);
        buddy.setListView(list);
        Q_EMIT list->clicked(list->at(1));
        delete list; // without a word to the buddy
        QVERIFY(!buddy.listView());
        QCoreApplication::processEvents();
        QVERIFY(listener.take().startsWith("click null"));
    }

    void initStopsWatchingAndKeepsTheView()
    {
        WatchedList list(3);
        Q_EMIT list.clicked(list.at(1));
        list.buddy.init();
        QCOMPARE(list.buddy.listView(), &list);
        Q_EMIT list.returnPressed(list.at(1));
        QCoreApplication::processEvents();
        QCOMPARE(list.listener.take(), QString("click null")); // the item was forgotten
        list.buddy.setListView(&list);
        Q_EMIT list.returnPressed(list.at(1));
        QCoreApplication::processEvents();
        QCOMPARE(list.listener.take(), QString("return a1"));
    }

    void anotherViewTakesThePlaceOfTheFormer()
    {
        ListProbe first, second;
        first.fill(1, 1);
        second.fill(1, 2);
        TaviListViewSignalBuddy buddy;
        Listener listener(&buddy);
        buddy.setListView(&first);
        buddy.setListView(&second);
        Q_EMIT first.clicked(first.at(0));
        Q_EMIT second.clicked(second.at(1));
        QCoreApplication::processEvents();
        QCOMPARE(listener.take(), QString("click a1"));
        buddy.setListView(&second); // the same again is not watched twice
        Q_EMIT second.clicked(second.at(1));
        QCoreApplication::processEvents();
        QCOMPARE(listener.take(), QString("click a1"));
    }

    void aRegisteredEditFilters()
    {
        ListProbe list;
        list.fill(1, 3);
        QLineEdit edit;
        TaviListViewFilterBuddy *buddy = list.filterBuddy();
        QVERIFY(!buddy->hasLineEdit(&edit));
        buddy->addFilterLineEdit(&edit);
        QVERIFY(buddy->hasLineEdit(&edit));
        QVERIFY(!buddy->inverted(&edit));
        QCOMPARE(edit.toolTip(), QString("Press Ctrl+Shift+I to invert filter result."));
        edit.setText("a1");
        QCOMPARE(list.rows(), QString("a1"));
        edit.clear();
        QCOMPARE(list.rows(), QString("a0 a1 a2"));
    }

    void anEditThatIsAddedAgainIsNotInverted()
    {
        ListProbe list;
        list.fill(1, 3);
        QLineEdit edit;
        QSignalSpy applied(&list, SIGNAL(filterApplied()));
        list.filterBuddy()->addFilterLineEdit(&edit);
        list.filterBuddy()->setInverted(&edit, true);
        list.filterBuddy()->addFilterLineEdit(&edit);
        QVERIFY(!list.filterBuddy()->inverted(&edit));
        edit.setText("a1");
        QCOMPARE(applied.count(), 1); // once, not twice
    }

    void nullIsIgnored()
    {
        ListProbe list;
        list.fill(1, 1);
        TaviListViewFilterBuddy *buddy = list.filterBuddy();
        buddy->addFilterLineEdit(nullptr);
        QVERIFY(!buddy->hasLineEdit(nullptr));
        QVERIFY(!buddy->inverted(nullptr));
        QVERIFY(!buddy->hasLineEdit(nullptr));
        buddy->setInverted(nullptr, true);
        buddy->setFilterLineEditLook(nullptr, true);
        QVERIFY(!buddy->eventFilter(nullptr, nullptr));
        QEvent event(QEvent::ShortcutOverride);
        QVERIFY(!buddy->eventFilter(nullptr, &event));

        TaviListViewFilterBuddy lonely(nullptr);
        QLineEdit edit;
        lonely.addFilterLineEdit(&edit);
        QVERIFY(!lonely.hasLineEdit(&edit));
        lonely.setInverted(&edit, true);
        QVERIFY(!lonely.hasLineEdit(&edit));
        QVERIFY(edit.toolTip().isEmpty());
    }

    void askingForAnUnknownEditRegistersNothingElse()
    {
        ListProbe list;
        list.fill(1, 3);
        QLineEdit edit;
        TaviListViewFilterBuddy *buddy = list.filterBuddy();
        QVERIFY(!buddy->inverted(&edit));
        QVERIFY(buddy->hasLineEdit(&edit));
        edit.setText("a1");
        QCOMPARE(list.rows(), QString("a0 a1 a2"));
        pressInvert(&edit);
        QVERIFY(!buddy->inverted(&edit));
        QVERIFY(edit.toolTip().isEmpty());
        auto *unknown = new QLineEdit;
        QVERIFY(!buddy->inverted(unknown));
        const QLineEdit *const address = unknown;
        delete unknown;
        QVERIFY(!buddy->hasLineEdit(address));
    }

    void anEditThatIsNotRegisteredFiltersNothing()
    {
        ListProbe list;
        list.fill(1, 3);
        QLineEdit edit;
        connect(&edit, SIGNAL(textChanged(QString)), list.filterBuddy(), SLOT(filterTextChanged(QString)));
        edit.setText("a1");
        QCOMPARE(list.rows(), QString("a0 a1 a2"));
        QVERIFY(!list.filterBuddy()->hasLineEdit(&edit));
    }

    void twoBuddiesMayServeOneList()
    {
        ListProbe list;
        list.fill(1, 3);
        TaviListViewFilterBuddy second(&list);
        QLineEdit of_first, of_second;
        list.filterBuddy()->addFilterLineEdit(&of_first);
        second.addFilterLineEdit(&of_second);
        second.setInverted(&of_second, true);
        of_first.setText("a1");
        QCOMPARE(list.rows(), QString("a1"));
        of_second.setText("a1");
        QCOMPARE(list.rows(), QString("a0 a2"));
        QVERIFY(!second.hasLineEdit(&of_first));
        of_second.clear();
        QCOMPARE(list.rows(), QString("a0 a1 a2"));
        TaviListViewSignalBuddy one, other;
        Listener to_one(&one), to_other(&other);
        one.setListView(&list);
        other.setListView(&list);
        Q_EMIT list.clicked(list.at(1));
        one.init();
        Q_EMIT list.clicked(list.at(2));
        QCoreApplication::processEvents();
        QCOMPARE(to_one.take(), QString("click null"));
        QCOMPARE(to_other.take(), QString("click a2, click a2"));
    }

    void invertingSetsFlagFilterAndLook()
    {
        FilteredList list(3);
        list.edit.setText("a1");
        list.filterBuddy()->setInverted(&list.edit, true);
        QVERIFY(list.filterBuddy()->inverted(&list.edit));
        QCOMPARE(list.rows(), QString("a0 a2"));
        QCOMPARE(look(list.edit), QString("white on black"));
        list.filterBuddy()->setInverted(&list.edit, false);
        QCOMPARE(list.rows(), QString("a1"));
        QCOMPARE(look(list.edit), QString("black on white"));
    }

    void theKeyInverts()
    {
        FilteredList list(3);
        QSignalSpy applied(&list, SIGNAL(filterApplied()));
        pressInvert(&list.edit);
        QCOMPARE(look(list.edit), QString("white on black"));
        QCOMPARE(applied.count(), 0); // there is no keyword
        list.edit.setText("a1");
        QCOMPARE(list.rows(), QString("a0 a2"));
        pressInvert(&list.edit);
        QCOMPARE(list.rows(), QString("a1"));
        QCOMPARE(look(list.edit), QString("black on white"));
        QCOMPARE(list.edit.text(), QString("a1"));
        QKeyEvent key(QEvent::ShortcutOverride, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(!list.filterBuddy()->eventFilter(&list.edit, &key)); // the edit sees it as well
        QVERIFY(list.filterBuddy()->inverted(&list.edit));
    }

    void theRealKeyInvertsOnce()
    {
        FilteredList list(3);
        list.edit.show();
        QVERIFY(QTest::qWaitForWindowActive(&list.edit));
        list.edit.setFocus();
        QTest::keyClick(list.edit.window()->windowHandle(), Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(look(list.edit), QString("white on black"));
        QVERIFY(list.filterBuddy()->inverted(&list.edit));
    }

    void otherKeysDoNotInvert_data()
    {
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<int>("key");
        QTest::addColumn<bool>("inverts");
        QTest::newRow("the key") << int(Qt::ControlModifier | Qt::ShiftModifier) << int(Qt::Key_I) << true;
        QTest::newRow("on a key pad") << int(Qt::ControlModifier | Qt::ShiftModifier | Qt::KeypadModifier)
                                      << int(Qt::Key_I) << true;
        QTest::newRow("Control") << int(Qt::ControlModifier) << int(Qt::Key_I) << false;
        QTest::newRow("Shift") << int(Qt::ShiftModifier) << int(Qt::Key_I) << false;
        QTest::newRow("Alt too") << int(Qt::ControlModifier | Qt::ShiftModifier | Qt::AltModifier) << int(Qt::Key_I)
                                 << false;
        QTest::newRow("Meta too") << int(Qt::ControlModifier | Qt::ShiftModifier | Qt::MetaModifier) << int(Qt::Key_I)
                                  << false;
        QTest::newRow("another letter") << int(Qt::ControlModifier | Qt::ShiftModifier) << int(Qt::Key_J) << false;
    }
    void otherKeysDoNotInvert()
    {
        QFETCH(int, modifiers);
        QFETCH(int, key);
        ListProbe list;
        QLineEdit edit;
        list.filterBuddy()->addFilterLineEdit(&edit);
        pressInvert(&edit, Qt::KeyboardModifiers(modifiers), key);
        QTEST(list.filterBuddy()->inverted(&edit), "inverts");
    }

    void anUnregisteredEditIsLeftAlone()
    {
        ListProbe list;
        QLineEdit edit;
        const QPalette before = edit.palette();
        pressInvert(&edit);
        QCOMPARE(edit.palette(), before);
        QVERIFY(!list.filterBuddy()->hasLineEdit(&edit));
        QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(!list.filterBuddy()->eventFilter(&edit, &event));
        QVERIFY(!list.filterBuddy()->hasLineEdit(&edit));
        list.filterBuddy()->filterTextChanged("a"); // nobody sent it
        QVERIFY(!list.isFilteringItems());
    }

    void everyEditHasAFlagOfItsOwn()
    {
        ListProbe list;
        list.fill(1, 3);
        QLineEdit first, second;
        list.filterBuddy()->addFilterLineEdit(&first);
        list.filterBuddy()->addFilterLineEdit(&second);
        list.filterBuddy()->setInverted(&first, true);
        second.setText("a1");
        QCOMPARE(list.rows(), QString("a1"));
        first.setText("a1");
        QCOMPARE(list.rows(), QString("a0 a2"));
        second.setText("a2");
        QCOMPARE(list.rows(), QString("a2"));
    }

    void anEditMayBeDeleted()
    {
        ListProbe list;
        list.fill(1, 3);
        auto *edit = new QLineEdit;
        list.filterBuddy()->addFilterLineEdit(edit);
        edit->setText("a1");
        const QLineEdit *const address = edit;
        delete edit;
        QVERIFY(!list.filterBuddy()->hasLineEdit(address));
        QCOMPARE(list.rows(), QString("a1"));
    }

    void aViewMayBeDeletedBeforeItsEdits()
    {
        QLineEdit edit;
        auto *list = new ListProbe;
        list->fill(1, 3);
        TaviListViewFilterBuddy buddy(list);
        buddy.addFilterLineEdit(&edit);
        edit.setText("a");
        delete list;
        edit.setText("b");
        pressInvert(&edit);
        buddy.setInverted(&edit, true);
        QVERIFY(!buddy.inverted(&edit));
    }

    void aHiddenSelectionComesBack()
    {
        FilteredList list(300);
        QVERIFY(list.showAndWait());
        list.setSelected(list.at(200), true);
        list.edit.setText("a1");
        list.clearSelection();
        list.setContentsPos(0, 0);
        list.edit.setText("a");
        list.edit.clear();
        QCOMPARE(list.selection(), QString("a200"));
        QVERIFY(list.itemRect(list.at(200)).isValid());
    }

    void anotherSelectionStays()
    {
        FilteredList list(5);
        list.setSelectionMode(Q3ListView::Multi);
        list.setSelected(list.at(3), true);
        list.edit.setText("a1");
        list.clearSelection();
        list.setSelected(list.at(1), true);
        list.edit.clear();
        QCOMPARE(list.selection(), QString("a1"));
    }

    void aSelectionComesBackOnlyWhenTheFilterEnds()
    {
        FilteredList list(5);
        list.setSelected(list.at(3), true);
        list.edit.setText("a");
        list.clearSelection();
        list.edit.setText("a1");
        QCOMPARE(list.selection(), QString());
        list.filterItems("", false); // ended by the application
        list.edit.clear();
        QCOMPARE(list.selection(), QString());
        list.filterItems("a", false);
        list.edit.setText("a1");
        list.edit.clear();
        QCOMPARE(list.selection(), QString("a3"));
    }

    void aDeletedSelectionIsForgotten()
    {
        FilteredList list(5);
        list.setSelected(list.at(3), true);
        list.edit.setText("a1");
        delete list.at(3);
        list.edit.clear();
        QCOMPARE(list.selection(), QString());
    }

    void slotsMayClearTheListWhenTheFilterEnds()
    {
        FilteredList list(5);
        list.setSelectionMode(Q3ListView::Multi);
        list.setSelected(list.at(3), true);
        list.edit.setText("a1");
        list.clearSelection();
        connect(&list, SIGNAL(selectionChanged()), &list, SLOT(clear()));
        list.edit.clear();
        QCOMPARE(list.childCount(), 0);
    }

    void theFloaterIsASearchBox()
    {
        ListProbe list;
        list.fill(1, 3);
        FilterFloater floater(&list);
        QCOMPARE(floater.parentWidget(), &list);
        QCOMPARE(floater.windowType(), Qt::Tool);
        QCOMPARE(floater.objectName(), QString("filter_floater"));
        QCOMPARE(floater.windowTitle(), QString("Search"));
        QVERIFY(!floater.isVisible());
        QVERIFY(list.filterBuddy()->hasLineEdit(floater.lineEdit()));
        QVERIFY(!floater.lineEdit()->accessibleName().isEmpty());
        auto *row = qobject_cast<QHBoxLayout *>(floater.layout());
        QVERIFY(row);
        QVERIFY(qobject_cast<QLabel *>(row->itemAt(0)->widget()));
        QVERIFY(!qobject_cast<QLabel *>(row->itemAt(0)->widget())->pixmap(Qt::ReturnByValue).isNull());
        QCOMPARE(row->itemAt(1)->widget(), floater.lineEdit());
        QCOMPARE(row->stretch(0), 0);
        QCOMPARE(row->stretch(1), 1);
    }

    void aFloaterWithoutAViewFiltersNothing()
    {
        FilterFloater floater(nullptr);
        floater.lineEdit()->setText("a");
        QVERIFY(floater.lineEdit()->toolTip().isEmpty());
    }

    void closingTheFloaterEndsTheFilterAndIsTold()
    {
        ListProbe list;
        list.fill(1, 3);
        FilterFloater floater(&list);
        floater.show();
        floater.lineEdit()->setText("a1");
        QSignalSpy closed(&floater, SIGNAL(closed()));
        bool filtering = true;
        connect(&floater, &FilterFloater::closed, this, [&] { filtering = list.isFilteringItems(); });
        QTest::keyClick(&floater, Qt::Key_Escape, Qt::ShiftModifier);
        QCOMPARE(closed.count(), 0);
        QKeyEvent letter(QEvent::KeyPress, Qt::Key_X, Qt::NoModifier, "x");
        QCoreApplication::sendEvent(&floater, &letter);
        QVERIFY(!letter.isAccepted());
        QCOMPARE(closed.count(), 0);
        QTest::keyClick(&floater, Qt::Key_Escape);
        QCOMPARE(closed.count(), 1);
        QVERIFY(!filtering); // by the time it is told
        QVERIFY(!floater.isVisible());
        QCOMPARE(floater.lineEdit()->text(), QString());
        QCOMPARE(list.rows(), QString("a0 a1 a2"));
    }

    void aSlotMayDeleteTheFloaterThatCloses()
    {
        ListProbe list;
        list.fill(1, 3);
        auto *floater = new FilterFloater(&list);
        floater->show();
        floater->lineEdit()->setText("a1");
        QPointer<FilterFloater> watch(floater);
        connect(&list, &TaviListView::filterApplied, floater, &QObject::deleteLater);
        floater->close();
        QTRY_VERIFY(!watch);
        QCOMPARE(list.rows(), QString("a0 a1 a2"));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviListViewBuddies)
#include "tst_tavilistviewbuddies.moc"
