// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/tavitest.h"
#include "tests/treeviews/treefixture.h"

#include <QDropEvent>
#include <QMimeData>

Q_DECLARE_METATYPE(Qt::DropAction)

namespace {

/// A model that takes everything and notes what is dropped on it.
class DropModel : public TaviTreeModel
{
public:
    using TaviTreeModel::TaviTreeModel;

    bool dropMimeData(const QMimeData *, Qt::DropAction action, int, int, const QModelIndex &) override
    {
        drops.append(action);
        return true;
    }
    bool canDropMimeData(const QMimeData *, Qt::DropAction, int, int, const QModelIndex &) const override
    {
        return true;
    }
    Qt::DropActions supportedDropActions() const override { return Qt::CopyAction | Qt::MoveAction; }

    QList<Qt::DropAction> drops;
};

class InputView : public TreeProbe
{
public:
    void setSelectedExpanded(bool on) override
    {
        expansions.append(on);
        TreeProbe::setSelectedExpanded(on);
    }
    void showFilterFloater() override
    {
        ++floaters;
        if (really_show)
            TreeProbe::showFilterFloater();
    }
    void closeFilterFloater() override { --floaters; }

    QList<bool> expansions;
    int floaters = 0;
    bool really_show = false;
};

} // namespace

/// Keys, mouse and drags of a tree view.
class TestTaviTreeViewInput : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        delete TaviTreeView::filterFloater();
        TaviTest::cleanup();
    }

    void lettersSearch()
    {
        Tree tree;
        QVERIFY(tree.show());
        setCurrent(tree, tree.cyan);
        QTest::keyClicks(&tree.view, "pap");
        QCOMPARE(tree.view.selectedItem(), tree.paper);
        QCOMPARE(tree.view.selectionModel()->selectedIndexes().size(), 3);
        QCOMPARE(tree.view.currentIndex(), tree.view.indexOf(tree.cyan)); // the selection moves, not the current row
    }

    void lettersThatFollowSoonAreSearchedTogether()
    {
        Tree tree;
        QVERIFY(tree.show());
        setCurrent(tree, tree.cyan);
        QTest::keyClick(&tree.view, 'g');
        QTest::qWait(300); // below the pause of 400 ms
        QTest::keyClick(&tree.view, 'e');
        QCOMPARE(tree.view.selectedItem(), tree.magenta); // ma"ge"nta
    }

    void aPauseBeginsAnew()
    {
        Tree tree;
        QVERIFY(tree.show());
        setCurrent(tree, tree.cyan);
        QTest::keyClick(&tree.view, 'm');
        QTest::qWait(500); // above the pause of 400 ms
        QTest::keyClick(&tree.view, 'p');
        QCOMPARE(tree.view.selectedItem(), tree.pale_cyan);
    }

    void otherKeysRestartThePauseAndKeepTheText()
    {
        Tree tree;
        QVERIFY(tree.show());
        setCurrent(tree, tree.cyan);
        QTest::keyClick(&tree.view, 'g');
        QTest::qWait(250);
        QTest::keyClick(&tree.view, Qt::Key_Shift);
        QTest::qWait(250);
        QTest::keyClick(&tree.view, 'e');
        QCOMPARE(tree.view.selectedItem(), tree.magenta); // "ge", 500 ms apart
    }

    void theSearchIsForAnyPartInAnyCase_data()
    {
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("found");
        QTest::newRow("at its start") << "pa"
                                      << "pale cyan";
        QTest::newRow("inside") << "ENTA"
                                << "magenta";
        QTest::newRow("deep") << "grey"
                              << "grey";
        QTest::newRow("first column before the second") << "k"
                                                        << "black";
        QTest::newRow("second column") << "k 50"
                                       << "grey";
        QTest::newRow("third column") << "solid"
                                      << "cyan";
        QTest::newRow("nowhere") << "zz"
                                 << "";
    }
    void theSearchIsForAnyPartInAnyCase()
    {
        QFETCH(QString, typed);
        QFETCH(QString, found);
        Tree tree;
        QVERIFY(tree.show());
        setCurrent(tree, tree.cyan);
        tree.view.clearSelection();
        // In one event: letter by letter, each would be found by itself first.
        QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, typed);
        QCoreApplication::sendEvent(&tree.view, &key);
        const TaviTreeItem *item = tree.view.selectedItem();
        QCOMPARE(item ? item->data(0, Qt::DisplayRole).toString() : QString(), found);
    }

    void theSortedColumnIsSearchedFirst()
    {
        Tree tree;
        QVERIFY(tree.show());
        setCurrent(tree, tree.magenta);
        QTest::keyClick(&tree.view, 'k');
        QCOMPARE(tree.view.selectedItem(), tree.black); // by its name
        tree.magenta->setData(1, "K 10 M 100", Qt::DisplayRole);
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(1, Qt::AscendingOrder);
        QTest::qWait(450); // a new search
        setCurrent(tree, tree.magenta);
        QTest::keyClick(&tree.view, 'k');
        QCOMPARE(tree.view.selectedItem(), tree.magenta); // by its inks
        QTest::qWait(450);
        QTest::keyClick(&tree.view, 'b'); // no inks of that letter: the other columns
        QCOMPARE(tree.view.selectedItem(), tree.black);
    }

    void theSearchBeginsAtTheCurrentRowAndGoesRound()
    {
        Tree tree;
        QVERIFY(tree.show());
        setCurrent(tree, tree.magenta);
        QTest::keyClick(&tree.view, 'c'); // "magenta" has none; next is "black"
        QCOMPARE(tree.view.selectedItem(), tree.black);
        QTest::qWait(450);
        setCurrent(tree, tree.paper);
        QTest::keyClicks(&tree.view, "cy");
        QCOMPARE(tree.view.selectedItem(), tree.cyan);
    }

    void aCurrentRowBelowCountsAsOneOfTheTopLevel()
    {
        Tree tree;
        QVERIFY(tree.show());
        setCurrent(tree, tree.pale_cyan); // the second below its parent
        QTest::keyClick(&tree.view, 'a');
        QCOMPARE(tree.view.selectedItem(), tree.magenta); // the second of the top level
    }

    void withoutCurrentRowNothingIsFound()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.view.selectionModel()->clearCurrentIndex();
        tree.view.selectItem(tree.paper);
        QTest::keyClick(&tree.view, 'm');
        QCOMPARE(tree.view.selectedItem(), tree.paper);
    }

    void theHitIsScrolledTo()
    {
        Tree tree;
        QVERIFY(tree.show());
        setCurrent(tree, tree.cyan);
        QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, "light grey");
        QCoreApplication::sendEvent(&tree.view, &key);
        QVERIFY(tree.view.isItemExpanded(tree.grey));
        QVERIFY(tree.view.viewport()->rect().contains(tree.view.centreOf(tree.view.indexOf(tree.light_grey))));
    }

    void arrowsOpenAndCloseAllSelectedRows()
    {
        Tree tree;
        QVERIFY(tree.show());
        setCurrent(tree, tree.paper);
        tree.view.selectItems({tree.cyan, tree.black, tree.paper});
        QTest::keyClick(&tree.view, Qt::Key_Right);
        QVERIFY(tree.view.isItemExpanded(tree.cyan));
        QVERIFY(tree.view.isItemExpanded(tree.black));
        QCOMPARE(tree.view.currentIndex(), tree.view.indexOf(tree.paper));
        QTest::keyClick(&tree.view, Qt::Key_Left);
        QVERIFY(!tree.view.isItemExpanded(tree.cyan));
        QVERIFY(!tree.view.isItemExpanded(tree.black));
        QCOMPARE(tree.view.currentIndex(), tree.view.indexOf(tree.paper));
        QCOMPARE(tree.view.selectedItems(0).size(), 3);
    }

    void arrowsOpenNothingWhereNothingMayBeOpened()
    {
        Tree tree;
        tree.view.selectItem(tree.cyan);
        tree.view.setItemsExpandable(false);
        tree.view.expandSelected();
        QVERIFY(!tree.view.isItemExpanded(tree.cyan));
        tree.view.setItemsExpandable(true);
        tree.view.expandSelected();
        QVERIFY(tree.view.isItemExpanded(tree.cyan));
        tree.view.collapseSelected();
        QVERIFY(!tree.view.isItemExpanded(tree.cyan));
    }

    void whichKeyGoesWhere_data()
    {
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("modifiers");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("floaters");
        QTest::addColumn<int>("expansions");
        QTest::newRow("?") << int(Qt::Key_Question) << int(Qt::ShiftModifier) << "?" << 1 << 0;
        QTest::newRow("? without Shift") << int(Qt::Key_Question) << 0 << "?" << 0 << 0;
        QTest::newRow("Ctrl ?") << int(Qt::Key_Question) << int(Qt::ShiftModifier | Qt::ControlModifier) << "" << 0
                                << 0;
        QTest::newRow("Alt ?") << int(Qt::Key_Question) << int(Qt::ShiftModifier | Qt::AltModifier) << "?" << 0 << 0;
        QTest::newRow("Meta ?") << int(Qt::Key_Question) << int(Qt::ShiftModifier | Qt::MetaModifier) << "?" << 0
                                << 0;
        QTest::newRow("Esc") << int(Qt::Key_Escape) << 0 << "\x1b" << -1 << 0;
        QTest::newRow("Shift Esc") << int(Qt::Key_Escape) << int(Qt::ShiftModifier) << "\x1b" << 0 << 0;
        QTest::newRow("Right") << int(Qt::Key_Right) << 0 << "" << 0 << 1;
        QTest::newRow("Ctrl Left") << int(Qt::Key_Left) << int(Qt::ControlModifier) << "" << 0 << 1;
        QTest::newRow("+") << int(Qt::Key_Plus) << 0 << "+" << 0 << 0;
    }
    void whichKeyGoesWhere()
    {
        QFETCH(int, key);
        QFETCH(int, modifiers);
        QFETCH(QString, text);
        QFETCH(int, floaters);
        QFETCH(int, expansions);
        Tree tree;
        InputView view;
        view.setModel(&tree.model);
        QKeyEvent event(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers), text);
        QCoreApplication::sendEvent(&view, &event);
        QCOMPARE(view.floaters, floaters);
        QCOMPARE(view.expansions.size(), expansions);
    }

    void shiftQuestionMarkOpensTheFloaterAndSearches()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.paper->setData(0, "paper?", Qt::DisplayRole);
        setCurrent(tree, tree.cyan);
        QTest::keyClick(&tree.view, '?', Qt::ShiftModifier);
        QVERIFY(TaviTreeView::filterFloater() && TaviTreeView::filterFloater()->isVisible());
        QCOMPARE(tree.view.selectedItem(), tree.paper);
        QTest::keyClick(&tree.view, Qt::Key_Escape);
        QVERIFY(TaviTreeView::filterFloater()->isHidden());
    }

    void keysOfEveryItemViewWork()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.magenta->setEditable(0, true);
        setCurrent(tree, tree.cyan);
        QTest::keyClick(&tree.view, Qt::Key_Plus, Qt::NoModifier);
        QVERIFY(tree.view.isItemExpanded(tree.cyan));
        QTest::keyClick(&tree.view, Qt::Key_Minus, Qt::NoModifier);
        QVERIFY(!tree.view.isItemExpanded(tree.cyan));
        QTest::keyClick(&tree.view, Qt::Key_Down);
        QCOMPARE(tree.view.selectedItem(), tree.magenta);
        QTest::keyClick(&tree.view, Qt::Key_F2);
        QVERIFY(tree.view.isEditing());
        QTest::keyClick(tree.view.viewport()->findChild<QLineEdit *>(), Qt::Key_Escape);
        QTest::keyClick(&tree.view, Qt::Key_End);
        QCOMPARE(tree.view.selectedItem(), tree.paper);
        // With the text that the window system gives it.
        QKeyEvent select_all(QEvent::KeyPress, Qt::Key_A, Qt::ControlModifier, "\x01");
        QCoreApplication::sendEvent(&tree.view, &select_all);
        QCOMPARE(tree.view.selectedItems(0).size(), 4);
    }

    void theKeysOfEveryItemViewNeverSearch_data()
    {
        QTest::addColumn<int>("key");
        for (const Qt::Key key : {Qt::Key_Backspace, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Delete, Qt::Key_Down,
                                  Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_Up, Qt::Key_Home, Qt::Key_End,
                                  Qt::Key_Plus, Qt::Key_Minus, Qt::Key_Space, Qt::Key_Escape, Qt::Key_F2})
            QTest::newRow(qPrintable(QKeySequence(key).toString())) << int(key);
    }
    void theKeysOfEveryItemViewNeverSearch()
    {
        QFETCH(int, key);
        Tree tree;
        QVERIFY(tree.show());
        setCurrent(tree, tree.cyan);
        // Whatever text the keyboard gives them. Only a search gets at a row in a closed branch.
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, "light grey");
        QCoreApplication::sendEvent(&tree.view, &event);
        QVERIFY(!tree.view.selectedItems(0).contains(tree.light_grey));
    }

    void aClickIntoEmptySpace()
    {
        Tree tree;
        QVERIFY(tree.show());
        const QPoint empty(20, tree.view.viewport()->height() - 5);
        QVERIFY(!tree.view.indexAt(empty).isValid());
        tree.view.selectItems({tree.paper, tree.cyan});
        tree.view.setInvalidIndexSelectionCommand(QItemSelectionModel::NoUpdate);
        QTest::mouseClick(tree.view.viewport(), Qt::LeftButton, {}, empty);
        QCOMPARE(tree.view.selectedItems(0).size(), 2);
        tree.view.setInvalidIndexSelectionCommand(QItemSelectionModel::Clear);
        QTest::mouseClick(tree.view.viewport(), Qt::LeftButton, {}, empty);
        QVERIFY(tree.view.selectedItems(0).isEmpty());
    }

    void selectionCommands()
    {
        Tree tree;
        const QContextMenuEvent menu(QContextMenuEvent::Mouse, {5, 5});
        const QMouseEvent press(QEvent::MouseButtonPress, {5, 5}, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        const QModelIndex index = tree.view.indexOf(tree.cyan);
        QCOMPARE(tree.view.selectionCommand(QModelIndex(), &press), QItemSelectionModel::Clear);
        QCOMPARE(tree.view.selectionCommand(QModelIndex()), QItemSelectionModel::Clear);
        QVERIFY(tree.view.selectionCommand(index, &menu) != QItemSelectionModel::NoUpdate);
        tree.view.selectItem(tree.cyan);
        QCOMPARE(tree.view.selectionCommand(index, &menu), QItemSelectionModel::NoUpdate);
    }

    void aRightClickSelectsWhatIsNotSelectedYet()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.view.selectItems({tree.paper, tree.magenta});
        QModelIndex asked;
        QList<TaviTreeItem *> selected;
        connect(&tree.view, &TaviTreeView::contextMenuRequested, this, [&](const QModelIndex &index) {
            asked = index;
            selected = tree.view.selectedItems(0);
        });
        rightClick(tree, tree.view.centreOf(tree.view.indexOf(tree.paper)));
        QCOMPARE(asked, tree.view.indexOf(tree.paper));
        QCOMPARE(selected.size(), 2);
        rightClick(tree, tree.view.centreOf(tree.view.indexOf(tree.cyan)));
        QCOMPARE(asked, tree.view.indexOf(tree.cyan));
        QCOMPARE(selected, QList<TaviTreeItem *>({tree.cyan}));
        rightClick(tree, {20, tree.view.viewport()->height() - 5});
        QVERIFY(!asked.isValid());
    }

    void theMenuKeyAsksForTheCurrentRow()
    {
        Tree tree;
        QVERIFY(tree.show());
        setCurrent(tree, tree.black);
        QModelIndex asked;
        connect(&tree.view, &TaviTreeView::contextMenuRequested, this,
                [&](const QModelIndex &index) { asked = index; });
        // As the window system's event leads to it: at the centre of what the focus widget calls its cursor.
        const QPoint at = tree.view.inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, at, tree.view.mapToGlobal(at));
        QCoreApplication::sendEvent(&tree.view, &event);
        QCOMPARE(asked, tree.view.indexOf(tree.black));
        QVERIFY(event.isAccepted());
    }

    void aDoubleClickTogglesWhicheverColumnItHits_data()
    {
        QTest::addColumn<int>("column");
        for (int column = 0; column < 3; ++column)
            QTest::addRow("column %d", column) << column;
    }
    void aDoubleClickTogglesWhicheverColumnItHits()
    {
        QFETCH(int, column);
        Tree tree;
        QVERIFY(tree.show());
        QSignalSpy plain(&tree.view, SIGNAL(doubleClicked()));
        QSignalSpy with_index(&tree.view, SIGNAL(doubleClicked(QModelIndex)));
        for (const bool open : {true, false}) {
            const QPoint at = tree.view.centreOf(tree.view.indexOf(tree.black, column));
            QTest::mouseClick(tree.view.viewport(), Qt::LeftButton, {}, at);
            QTest::mouseDClick(tree.view.viewport(), Qt::LeftButton, {}, at);
            QCOMPARE(tree.view.isItemExpanded(tree.black), open);
        }
        QCOMPARE(plain.count(), 2);
        QCOMPARE(with_index.count(), 2);
        QTest::mouseDClick(tree.view.viewport(), Qt::LeftButton, {}, {20, tree.view.viewport()->height() - 5});
        QCOMPARE(plain.count(), 3); // anywhere
        QCOMPARE(with_index.count(), 2);
    }

    void aDoubleClickIsToldAfterItsEffect()
    {
        Tree tree;
        QVERIFY(tree.show());
        bool open = false;
        connect(&tree.view, qOverload<>(&TaviTreeView::doubleClicked), this,
                [&] { open = tree.view.isItemExpanded(tree.black); });
        const QPoint at = tree.view.centreOf(tree.view.indexOf(tree.black, 1));
        QTest::mouseClick(tree.view.viewport(), Qt::LeftButton, {}, at);
        QTest::mouseDClick(tree.view.viewport(), Qt::LeftButton, {}, at);
        QVERIFY(open);
    }

    void onlyOtherColumnsToggle()
    {
        Tree tree;
        tree.view.toggleExpandAnyColumn(tree.view.indexOf(tree.cyan, 0));
        QVERIFY(!tree.view.isItemExpanded(tree.cyan));
        tree.view.toggleExpandAnyColumn(tree.view.indexOf(tree.cyan, 2));
        QVERIFY(tree.view.isItemExpanded(tree.cyan));
        tree.view.toggleExpandAnyColumn(QModelIndex());
    }

    void dragsFromOutsideNeedTheirPermission_data()
    {
        QTest::addColumn<long>("flags");
        QTest::addColumn<bool>("taken");
        QTest::addColumn<Qt::DropAction>("action");
        QTest::newRow("none") << 0L << false << Qt::CopyAction;
        QTest::newRow("others") << 3L << false << Qt::CopyAction;
        QTest::newRow("others, forced") << (3L | 32L) << false << Qt::CopyAction;
        QTest::newRow("outside") << 4L << true << Qt::CopyAction;
        QTest::newRow("outside, others forced") << (4L | 8L | 16L) << true << Qt::CopyAction;
        QTest::newRow("outside, forced") << (4L | 32L) << true << Qt::MoveAction;
    }
    void dragsFromOutsideNeedTheirPermission()
    {
        QFETCH(long, flags);
        QFETCH(bool, taken);
        QFETCH(Qt::DropAction, action);
        DropModel model(QList<QVariant>{"name"});
        model.appendItem(makeItem("row"));
        TreeProbe view;
        view.setModel(&model);
        view.setAcceptDrops(true);
        view.setDragDropMode(QAbstractItemView::DragDrop);
        view.setDNDFlags(flags);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QMimeData data;
        data.setText("row");
        const Qt::DropActions possible = Qt::CopyAction | Qt::MoveAction;
        const QPoint at(10, view.viewport()->height() - 10);

        QDragEnterEvent enter(at, possible, &data, Qt::LeftButton, Qt::NoModifier);
        enter.setDropAction(Qt::CopyAction);
        view.dragEnterEvent(&enter);
        QVERIFY(enter.isAccepted());
        QCOMPARE(view.state() == 1, taken);                                            // dragging
        QDragMoveEvent move(at, possible, &data, Qt::LeftButton, Qt::ControlModifier); // the user wants a copy
        move.setDropAction(Qt::CopyAction);
        view.dragMoveEvent(&move);
        QCOMPARE(move.isAccepted(), taken);
        QDropEvent drop(at, possible, &data, Qt::LeftButton, Qt::ControlModifier);
        drop.setDropAction(Qt::CopyAction);
        view.dropEvent(&drop);
        QCOMPARE(drop.isAccepted(), taken);
        QCOMPARE(model.drops, taken ? QList<Qt::DropAction>({action}) : QList<Qt::DropAction>());
        if (taken) {
            QCOMPARE(enter.dropAction(), action);
            QCOMPARE(move.dropAction(), action);
            QCOMPARE(drop.dropAction(), action); // what the source is told
        }
        QDragLeaveEvent leave;
        view.dragLeaveEvent(&leave);
    }

    void renamingAnnouncesItself()
    {
        Tree tree;
        QSignalSpy counted(&tree.view, SIGNAL(itemsRenamed(int)));
        QSignalSpy plain(&tree.view, SIGNAL(itemsRenamed()));
        tree.view.fireItemsRenamed(3);
        QCOMPARE(counted.count(), 1);
        QCOMPARE(counted[0][0].toInt(), 3);
        QCOMPARE(plain.count(), 1);
        tree.view.dismissRenameDialog(); // without one nothing happens
    }

private:
    static void setCurrent(Tree &tree, TaviTreeItem *item)
    {
        tree.view.setFocus();
        tree.view.selectionModel()->setCurrentIndex(tree.view.indexOf(item),
                                                    QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    }
    /// Press, release and the window system's event.
    static void rightClick(Tree &tree, const QPoint &at)
    {
        QWidget *viewport = tree.view.viewport();
        QTest::mousePress(viewport, Qt::RightButton, {}, at);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, viewport->mapToGlobal(at));
        QCoreApplication::sendEvent(viewport, &event);
        QTest::mouseRelease(viewport, Qt::RightButton, {}, at);
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewInput)
#include "tst_tavitreeview_input.moc"
