// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/listviews/listviewfixture.h"
#include "tests/support/tavitest.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QStackedWidget>

#include <functional>
#include <initializer_list>
#include <memory>
#include <utility>
#include <vector>

namespace {

using Action = std::function<void(ListProbe &)>;

/// A list with branches that are closed: a(a1) b(b1) c; two columns.
ListProbe *makeList()
{
    auto *list = new ListProbe;
    list->setSelectionMode(Q3ListView::Multi);
    list->fill(2, 3);
    new Q3ListViewItem(list->at(0), "child 0", "hit");
    new Q3ListViewItem(list->at(1), "child 1", "hit");
    return list;
}

void pressKey(ListProbe &list, int key, const QString &text, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    QKeyEvent event(QEvent::KeyPress, key, modifiers, text);
    list.keyPressEvent(&event);
}

} // namespace

Q_DECLARE_METATYPE(Action)

/// The list while slots delete it, its items, or what belongs to it.
class TestTaviListViewLifetime : public TaviTest
{
    Q_OBJECT

private:
    /// What the list does, and the signal of it whose slot does harm.
    static void actions()
    {
        QTest::addColumn<Action>("act");
        QTest::addColumn<QByteArray>("signal");
        const auto row = [](const char *name, const char *signal, const Action &act) {
            QTest::newRow(name) << act << QByteArray(signal);
        };
        const char *const current = SIGNAL(currentChanged(Q3ListViewItem *));
        const char *const selection = SIGNAL(selectionChanged());
        const char *const expanded = SIGNAL(expanded(Q3ListViewItem *));
        const char *const collapsed = SIGNAL(collapsed(Q3ListViewItem *));
        const char *const filtered = SIGNAL(filterApplied());
        row("columns made anew, current item", current, [](ListProbe &list) { list.rebuildHeaders(); });
        row("columns made anew, selection", selection, [](ListProbe &list) { list.rebuildHeaders(); });
        row("a column hidden", selection, [](ListProbe &list) { list.setItemVisible(0, false); });
        row("a column hidden by the menu", selection,
            [](ListProbe &list) { QMetaObject::invokeMethod(&list, "changeHeaders", Q_ARG(int, 0)); });
        row("a state restored", selection, [](ListProbe &list) {
            list.setSorting(0);
            TaviRegistry registry;
            std::string section = "list";
            registry.putstring("list", "column_000", "1 1 50");
            registry.putstring("list", "sorting", "1 0");
            list.restoreHeaderState(registry, section);
        });
        row("filtered, a branch opened", expanded, [](ListProbe &list) { list.filterItems("hit", false); });
        row("filtered", filtered, [](ListProbe &list) { list.filterItems("hit", false); });
        row("filtered anew", filtered, [](ListProbe &list) { list.setFilterKeyword("hit"); });
        row("filtered by a line edit", filtered, [](ListProbe &list) {
            QLineEdit edit;
            list.filterBuddy()->addFilterLineEdit(&edit);
            edit.setText("hit");
        });
        row("one item filtered", expanded, [](ListProbe &list) {
            list.blockSignals(true);
            list.filterItems("hit", false);
            list.at(0)->setOpen(false);
            list.blockSignals(false);
            list.filterItem(list.at(0));
        });
        row("the filter ended", collapsed, [](ListProbe &list) {
            list.filterItems("hit", false);
            list.filterItems("", false);
        });
        row("the filter ended by a line edit", filtered, [](ListProbe &list) {
            QLineEdit edit;
            list.blockSignals(true);
            list.filterBuddy()->addFilterLineEdit(&edit);
            edit.setText("hit");
            list.blockSignals(false);
            edit.clear();
        });
        row("the filter inverted", filtered, [](ListProbe &list) {
            QLineEdit edit;
            list.blockSignals(true);
            list.filterBuddy()->addFilterLineEdit(&edit);
            edit.setText("hit");
            list.blockSignals(false);
            list.filterBuddy()->setInverted(&edit, true);
        });
        row("branches opened", expanded, [](ListProbe &list) {
            list.blockSignals(true);
            list.selectAll(true);
            list.blockSignals(false);
            list.setSelectedOpen(true);
        });
        row("a text found, current item", current, [](ListProbe &list) { pressKey(list, 'A', "a"); });
        row("a text found, selection", selection, [](ListProbe &list) { pressKey(list, 'A', "a"); });
        row("the first selected made current", current, [](ListProbe &list) {
            list.blockSignals(true);
            list.setSelected(list.at(2), true);
            list.blockSignals(false);
            list.setFirstSelectedAsCurrent(true);
        });
        row("cleared, selection", selection, [](ListProbe &list) {
            list.blockSignals(true);
            list.setSelectionMode(Q3ListView::Single);
            list.setSelected(list.at(1), true);
            list.blockSignals(false);
            list.clear();
        });
        row("cleared, current item", current, [](ListProbe &list) { list.clear(); });
        row("cleared", SIGNAL(cleared()), [](ListProbe &list) { list.clear(); });
    }

    ListProbe *list = nullptr;
    bool destroys = false;

protected Q_SLOTS: // which are no tests
    /// The slot that does harm, once.
    void harm()
    {
        if (!list)
            return;
        list->disconnect(this);
        if (destroys)
            delete std::exchange(list, nullptr);
        else
            list->clear();
    }

    void hideFirst() { list->setItemVisible(0, false); }

private Q_SLOTS:
    void cleanup()
    {
        delete std::exchange(list, nullptr);
        delete TaviListView::filterFloater();
        TaviTest::cleanup();
    }

    void aSlotMayDeleteTheList_data() { actions(); }
    void aSlotMayDeleteTheList()
    {
        QFETCH(Action, act);
        QFETCH(QByteArray, signal);
        list = makeList();
        list->setCurrentItem(list->at(1));
        destroys = true;
        connect(list, signal.constData(), this, SLOT(harm()));
        act(*list);
        QVERIFY(!list);
    }

    void aSlotMayDeleteTheItems_data() { actions(); }
    void aSlotMayDeleteTheItems()
    {
        QFETCH(Action, act);
        QFETCH(QByteArray, signal);
        list = makeList();
        list->setCurrentItem(list->at(1));
        destroys = false;
        connect(list, signal.constData(), this, SLOT(harm()));
        act(*list);
        QCOMPARE(list->childCount(), 0);
        QVERIFY(!list->currentItem());
    }

    void aSlotMayDeleteTheListThatIsInUse_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<Action>("act");
        const auto row = [](const char *signal, const Action &act) {
            QTest::newRow(signal + 1) << QByteArray(signal) << act;
        };
        // As far as the list is there; QTest uses a widget that it has clicked once more.
        const auto mouse = [](std::initializer_list<QEvent::Type> types) {
            return [events = std::vector<QEvent::Type>(types)](ListProbe &used) {
                const QPointer<QWidget> port = used.viewport();
                const QPoint at = used.itemRect(used.at(0)).topLeft() + QPoint(40, 5);
                for (const QEvent::Type type : events) {
                    if (!port)
                        return;
                    const bool released = type == QEvent::MouseButtonRelease;
                    QMouseEvent event(type, at, port->mapToGlobal(at), Qt::LeftButton,
                                      released ? Qt::NoButton : Qt::LeftButton, Qt::NoModifier);
                    QCoreApplication::sendEvent(port, &event);
                }
            };
        };
        const Action click = mouse({QEvent::MouseButtonPress, QEvent::MouseButtonRelease});
        const auto key = [](Qt::Key code) {
            return [code](ListProbe &used) {
                QKeyEvent event(QEvent::KeyPress, code, Qt::NoModifier);
                QCoreApplication::sendEvent(&used, &event);
            };
        };
        row(SIGNAL(pressed(Q3ListViewItem *)), click);
        row(SIGNAL(clicked(Q3ListViewItem *)), click);
        row(SIGNAL(selectionChanged()), click);
        row(SIGNAL(doubleClicked(Q3ListViewItem *, QPoint, int)),
            mouse({QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonDblClick}));
        row(SIGNAL(contextMenuRequested(Q3ListViewItem *, QPoint, int)), [](ListProbe &used) {
            const QPoint at = used.itemRect(used.at(0)).topLeft() + QPoint(40, 5);
            QContextMenuEvent event(QContextMenuEvent::Mouse, at, used.viewport()->mapToGlobal(at));
            QCoreApplication::sendEvent(used.viewport(), &event);
        });
        row(SIGNAL(returnPressed(Q3ListViewItem *)), key(Qt::Key_Return));
        row(SIGNAL(spacePressed(Q3ListViewItem *)), key(Qt::Key_Space));
        row(SIGNAL(currentChanged(Q3ListViewItem *)), key(Qt::Key_End));
        row(SIGNAL(expanded(Q3ListViewItem *)), key(Qt::Key_Plus));
        row(SIGNAL(itemRenamed(Q3ListViewItem *, int)), [](ListProbe &used) {
            used.at(0)->setRenameEnabled(0, true);
            used.at(0)->startRename(0);
            QKeyEvent event(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
            QCoreApplication::sendEvent(used.viewport()->findChild<QLineEdit *>(), &event);
        });
    }
    void aSlotMayDeleteTheListThatIsInUse()
    {
        QFETCH(QByteArray, signal);
        QFETCH(Action, act);
        list = makeList();
        list->setRootIsDecorated(true);
        QVERIFY(list->showAndWait());
        list->setCurrentItem(list->at(0));
        destroys = true;
        connect(list, signal.constData(), this, SLOT(harm()));
        act(*list);
        QVERIFY(!list);
    }

    void aSlotMayDeleteTheEditThatInverts_data()
    {
        QTest::addColumn<bool>("by_key");
        QTest::newRow("by the key") << true;
        QTest::newRow("by a call") << false;
    }
    void aSlotMayDeleteTheEditThatInverts()
    {
        QFETCH(bool, by_key);
        list = makeList();
        auto *edit = new QLineEdit;
        const QPointer<QLineEdit> watch(edit);
        list->filterBuddy()->addFilterLineEdit(edit);
        edit->setText("hit");
        connect(list, &TaviListView::filterApplied, edit, [edit] { delete edit; });
        if (by_key) {
            QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
            QCoreApplication::sendEvent(edit, &event);
        } else {
            list->filterBuddy()->setInverted(edit, true);
        }
        QVERIFY(!watch);
        QVERIFY(list->isFilteringItems());
    }

    void theKeyMayDeleteTheListWithItsSearchWindow()
    {
        list = makeList();
        QVERIFY(list->showAndWait());
        list->showFilterFloater();
        QLineEdit *edit = TaviListView::filterFloater()->lineEdit();
        edit->setText("hit");
        destroys = true;
        connect(list, SIGNAL(filterApplied()), this, SLOT(harm()));
        QKeyEvent event(QEvent::ShortcutOverride, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
        QCoreApplication::sendEvent(edit, &event);
        QVERIFY(!list);
        QVERIFY(!TaviListView::filterFloater());
    }

    void theListMayGoWhenItTakesTheSearchWindowOver()
    {
        ListProbe other;
        other.fill(1, 3);
        other.show();
        other.showFilterFloater();
        TaviListView::filterFloater()->lineEdit()->setText("a1");
        list = makeList();
        QVERIFY(list->showAndWait());
        destroys = true;
        connect(&other, SIGNAL(filterApplied()), this, SLOT(harm()));
        pressKey(*list, Qt::Key_Question, "?", Qt::ShiftModifier);
        QVERIFY(!list);
        QCOMPARE(other.rows(), QString("a0 a1 a2"));
        QVERIFY(!TaviListView::filterFloater());
    }

    void theListMayGoWhenItsSearchWindowHasClosed()
    {
        list = makeList();
        QVERIFY(list->showAndWait());
        list->showFilterFloater();
        destroys = true;
        connect(TaviListView::filterFloater(), SIGNAL(closed()), this, SLOT(harm()));
        pressKey(*list, Qt::Key_Escape, "\x1b");
        QVERIFY(!list);
        QVERIFY(!TaviListView::filterFloater());
    }

    void theListMayGoWithTheOneWhosePlaceItTakes_data()
    {
        QTest::addColumn<bool>("with_stack");
        QTest::newRow("alone") << false;
        QTest::newRow("with its stack") << true;
    }
    void theListMayGoWithTheOneWhosePlaceItTakes()
    {
        QFETCH(bool, with_stack);
        QPointer<QStackedWidget> stack = new QStackedWidget;
        auto *old = new Q3ListView;
        old->addColumn("A");
        list = makeList();
        list->setWantStatusBar(true);
        destroys = !with_stack;
        connect(old, SIGNAL(destroyed()), this, SLOT(harm()));
        if (with_stack)
            connect(old, &QObject::destroyed, stack, [&stack] { delete stack; });
        list->hotSwap(old, stack, true);
        QCOMPARE(bool(list), with_stack);
        QCOMPARE(stack.isNull(), with_stack);
        delete stack;
    }

    void aSearchWindowStaysOverAListThatGetsAContainer()
    {
        list = makeList();
        QVERIFY(list->showAndWait());
        list->showFilterFloater();
        const QPointer<FilterFloater> floater = TaviListView::filterFloater();
        floater->lineEdit()->setText("hit");
        list->setWantStatusBar(true);
        const std::unique_ptr<QWidget> container(list->getListWidget());
        QVERIFY(floater);
        list->showFilterFloater();
        QCOMPARE(TaviListView::filterFloater(), floater);
        QVERIFY(floater->isVisible());
        list->closeFilterFloater();
        QCOMPARE(list->rows(), QString("a0 a1 a2"));
        list = nullptr; // the container's
    }

    void aSignalBuddyMayGoInItsSlot()
    {
        list = makeList();
        auto *buddy = new TaviListViewSignalBuddy;
        buddy->setListView(list);
        Q_EMIT list->clicked(list->at(0));
        Q_EMIT list->returnPressed(list->at(0));
        const QPointer<TaviListViewSignalBuddy> watch(buddy);
        connect(buddy, &TaviListViewSignalBuddy::clicked, buddy, [buddy] { delete buddy; });
        QCoreApplication::processEvents();
        QVERIFY(!watch);
        Q_EMIT list->clicked(list->at(0));
        QCoreApplication::processEvents();
    }

    void aSlotMayHideTheHeadingThatIsInUse_data()
    {
        QTest::addColumn<QByteArray>("signal");
        QTest::addColumn<bool>("at_edge");
        QTest::newRow("dragged") << QByteArray(SIGNAL(indexChange(int, int, int))) << false;
        QTest::newRow("resized") << QByteArray(SIGNAL(sizeChange(int, int, int))) << true;
        QTest::newRow("pressed") << QByteArray(SIGNAL(pressed(int))) << false;
        QTest::newRow("released") << QByteArray(SIGNAL(released(int))) << false;
    }
    void aSlotMayHideTheHeadingThatIsInUse()
    {
        QFETCH(QByteArray, signal);
        QFETCH(bool, at_edge);
        list = makeList();
        list->addColumn("C", 60);
        QVERIFY(list->showAndWait());
        connect(list->header(), signal.constData(), this, SLOT(hideFirst()));
        if (at_edge) {
            const QRect first = list->header()->sectionRect(0);
            const QPoint edge(first.right(), first.center().y());
            QTest::mousePress(list->header(), Qt::LeftButton, Qt::NoModifier, edge);
            for (int step = 1; step <= 3; ++step) {
                const QPoint at = edge + QPoint(10 * step, 0);
                QMouseEvent move(QEvent::MouseMove, at, list->header()->mapToGlobal(at), Qt::NoButton, Qt::LeftButton,
                                 Qt::NoModifier);
                QCoreApplication::sendEvent(list->header(), &move);
            }
            QTest::mouseRelease(list->header(), Qt::LeftButton, Qt::NoModifier, edge + QPoint(30, 0));
        } else {
            list->dragHeading(0, 2, 20);
        }
        QVERIFY(!list->itemVisible(0));
        QVERIFY(!list->headings().contains('A'));
        QCOMPARE(list->columns(), 2);
        for (const ColumnItem *item : list->columnItems())
            QVERIFY(item->width >= 0 && item->width < 200);
        list->rebuildHeaders();
        QCOMPARE(list->columns(), 2);
    }

    void columnsMayChangeWhileAnItemIsRenamed()
    {
        list = makeList();
        QVERIFY(list->showAndWait());
        list->at(1)->setRenameEnabled(0, true);
        list->at(1)->startRename(0);
        QVERIFY(list->viewport()->findChild<QLineEdit *>());
        list->setItemVisible(1, false);
        QCOMPARE(list->rows(), QString("a0 a1 a2"));
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        QVERIFY(!list->viewport()->findChild<QLineEdit *>());
    }

    void theMenusEntryMayDeleteTheList()
    {
        list = makeList();
        QVERIFY(list->showAndWait());
        QAction remove("Remove", nullptr);
        list->appendAction(&remove);
        destroys = true;
        connect(&remove, SIGNAL(triggered()), this, SLOT(harm()));
        QTimer::singleShot(0, this, [] {
            auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
            QVERIFY(menu);
            menu->setActiveAction(menu->actions().last());
            QTest::keyClick(menu, Qt::Key_Return);
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(10, 5), list->header()->mapToGlobal(QPoint(10, 5)));
        QCoreApplication::sendEvent(list->header(), &event);
        QVERIFY(!list);
    }
};

TAVI_GUI_TEST_MAIN(TestTaviListViewLifetime)
#include "tst_tavilistview_lifetime.moc"
