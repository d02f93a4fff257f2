// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/treefixture.h"

#include <memory>

namespace {

/// An item that does something when its text is asked for, in the middle of a filter walk.
class TrapItem : public TaviTreeItem
{
public:
    using TaviTreeItem::TaviTreeItem;
    QVariant data(int column, int role) const override
    {
        if (role == Qt::DisplayRole && trap) {
            const std::function<void()> once = std::exchange(trap, nullptr);
            once();
        }
        return TaviTreeItem::data(column, role);
    }
    mutable std::function<void()> trap;
};

} // namespace

/// Items, models, views and search windows that go away at bad moments. What it asserts beside, the address
/// sanitizer watches.
class TestTaviTreeViewLifetime : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        delete TaviTreeView::filterFloater();
        TaviTest::cleanup();
    }

    void aModelMayBeDestroyedUnderItsView()
    {
        auto model = std::make_unique<TaviTreeModel>(QList<QVariant>{"name", "inks"});
        TreeProbe view;
        view.setModel(model.get());
        QList<TaviTreeItem *> items;
        for (int i = 0; i < 50; ++i) {
            items.append(makeItem(QString::number(i)));
            addChild(items.last(), "child");
        }
        items[3]->setEditable(0, true);
        model->appendItems(items);
        view.widget()->show();
        QVERIFY(QTest::qWaitForWindowExposed(view.widget()));
        view.expandAll();
        view.filter("1");
        view.selectItem(items[1]);
        view.saveSelections();
        view.saveExpandStates();
        view.edit(view.indexOf(items[3]));
        const QPersistentModelIndex index = view.indexOf(items[1]);
        QWidget *container = view.widget();
        model.reset();
        QVERIFY(!index.isValid());
        QCOMPARE(view.sourceModel(), nullptr);
        QCOMPARE(view.model()->rowCount(), 0);
        QVERIFY(view.selectedItems(0).isEmpty());
        QVERIFY(view.allRows(0).isEmpty());
        QVERIFY(!view.isEditing());
        QCOMPARE(view.statusBar()->currentMessage(), QString("0 item"));
        container->repaint();
        QTest::keyClick(&view, Qt::Key_Down);
        QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, {10, 10});
        view.restoreExpandStates();
        view.filter("");
        TaviTreeModel next({"name"});
        next.appendItem(makeItem("new"));
        view.setModel(&next);
        QCOMPARE(view.shownTexts(), QStringList({"new"}));
        view.setModel(nullptr);
        view.setParent(nullptr);
        delete container;
    }

    void aModelThatIsNoLongerShownMayGoUnseen()
    {
        auto first = std::make_unique<TaviTreeModel>(QList<QVariant>{"name"});
        Tree tree;
        TreeProbe view;
        view.setModel(first.get());
        view.setModel(&tree.model);
        first.reset();
        QCOMPARE(view.sourceModel(), &tree.model);
        QCOMPARE(view.shownTexts().size(), 8);
    }

    void aViewMayBeDestroyedWhileItsFloaterIsOpen()
    {
        TaviTreeModel model({"name"});
        model.appendItem(makeItem("row"));
        auto view = std::make_unique<TreeProbe>();
        view->setModel(&model);
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view.get()));
        view->showFilterFloater();
        const QPointer<TaviTreeViewFilterFloater> floater = TaviTreeView::filterFloater();
        QTest::keyClicks(floater->lineEdit(), "ro");
        view.reset();
        QVERIFY(floater); // it survives
        QCOMPARE(floater->parent(), nullptr);
        QVERIFY(floater->isHidden());
        QTest::keyClicks(floater->lineEdit(), "ws");
        floater->close();
        // The next view makes one of its own.
        TreeProbe next;
        next.setModel(&model);
        next.show();
        QVERIFY(QTest::qWaitForWindowExposed(&next));
        next.showFilterFloater();
        QVERIFY(!floater);
        QVERIFY(TaviTreeView::filterFloater()->isVisible());
    }

    void aViewLetsGoOfItsOwnFloaterOnly()
    {
        Tree tree;
        QVERIFY(tree.show());
        auto other = std::make_unique<TreeProbe>();
        tree.view.showFilterFloater();
        other.reset();
        QVERIFY(TaviTreeView::filterFloater());
        QCOMPARE(TaviTreeView::filterFloater()->parent(), &tree.view);
        QVERIFY(TaviTreeView::filterFloater()->isVisible());
    }

    void aFloaterThatIsDeletedIsForgotten()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.view.showFilterFloater();
        delete TaviTreeView::filterFloater();
        QVERIFY(!TaviTreeView::filterFloater());
        tree.view.closeFilterFloater();
        tree.view.showFilterFloater();
        QVERIFY(TaviTreeView::filterFloater()->isVisible());
    }

    void theFloaterMayBeOpenedElsewhereWhileItIsTakenOver()
    {
        Tree first;
        Tree second;
        Tree third;
        QVERIFY(first.show() && second.show() && third.show());
        first.view.showFilterFloater();
        connect(TaviTreeView::filterFloater(), &TaviTreeViewFilterFloater::closing, this,
                [&] { third.view.showFilterFloater(); });
        second.view.showFilterFloater();
        QCOMPARE(TaviTreeView::filterFloater()->parent(), &second.view);
        QVERIFY(TaviTreeView::filterFloater()->isVisible());
        QCOMPARE(first.view.findChildren<TaviTreeViewFilterFloater *>().size(), 0);
        QCOMPARE(third.view.findChildren<TaviTreeViewFilterFloater *>().size(), 0);
    }

    void theFloaterMayBeDeletedWhileItIsTakenOver()
    {
        Tree first;
        Tree second;
        QVERIFY(first.show() && second.show());
        first.view.showFilterFloater();
        connect(TaviTreeView::filterFloater(), &TaviTreeViewFilterFloater::closing, this,
                [] { delete TaviTreeView::filterFloater(); });
        second.view.showFilterFloater();
        QVERIFY(TaviTreeView::filterFloater() && TaviTreeView::filterFloater()->isVisible());
        QCOMPARE(TaviTreeView::filterFloater()->parent(), &second.view);
    }

    void aViewMayBeDestroyedWhileItTakesTheFloaterOver()
    {
        Tree first;
        QVERIFY(first.show());
        QPointer<TreeProbe> second = new TreeProbe;
        second->setModel(&first.model);
        second->show();
        QVERIFY(QTest::qWaitForWindowExposed(second));
        first.view.showFilterFloater();
        connect(TaviTreeView::filterFloater(), &TaviTreeViewFilterFloater::closing, this, [&] { delete second; });
        second->showFilterFloater();
        QVERIFY(!second);
        QVERIFY(!TaviTreeView::filterFloater() || TaviTreeView::filterFloater()->isHidden());
    }

    void theViewMayBeDestroyedByTheEndOfFiltering()
    {
        TaviTreeModel model({"name"});
        model.appendItem(makeItem("row"));
        QPointer<TreeProbe> view = new TreeProbe;
        view->setModel(&model);
        view->show();
        QVERIFY(QTest::qWaitForWindowExposed(view));
        view->showFilterFloater();
        const QPointer<TaviTreeViewFilterFloater> floater = TaviTreeView::filterFloater();
        connect(floater, &TaviTreeViewFilterFloater::closing, this, [&] { delete view; });
        floater->close();
        QVERIFY(!view);
        QVERIFY(floater);
    }

    void itemsMayBeDeletedByTheSlotOfASelection_data() { howToRemove(); }
    void itemsMayBeDeletedByTheSlotOfASelection()
    {
        QFETCH(int, how);
        Tree tree;
        QVERIFY(tree.show());
        tree.view.selectItem(tree.magenta);
        bool armed = true;
        connect(&tree.view, qOverload<>(&TaviTreeView::selectionChanged), this, [&] {
            if (std::exchange(armed, false))
                removeBlack(tree, how);
        });
        QTest::mouseClick(tree.view.viewport(), Qt::LeftButton, {},
                          tree.view.centreOf(tree.view.indexOf(tree.black)));
        QVERIFY(!armed);
        tree.view.selectItem(tree.cyan, true);
        QVERIFY(tree.view.selectedItems(0).contains(tree.cyan));
        QCOMPARE(tree.view.shownTexts().count("black"), 0);
    }

    void itemsMayBeDeletedWhileTheyAreSelectedInAList()
    {
        Tree tree;
        bool armed = true;
        connect(&tree.view, qOverload<>(&TaviTreeView::selectionChanged), this, [&] {
            if (std::exchange(armed, false))
                tree.model.removeItems({tree.black, tree.cyan});
        });
        tree.view.selectItems({tree.magenta, tree.light_grey, tree.cyan}, true);
        QCOMPARE(tree.view.shownTexts(), QStringList({"magenta", "paper"}));
        armed = true;
        tree.view.selectItemsWithProperty(0, "magenta", Qt::DisplayRole);
    }

    void itemsMayBeDeletedWhileTheyAreRemoved()
    {
        Tree tree;
        tree.view.selectItems({tree.cyan, tree.magenta, tree.paper});
        const QPointer<TaviTreeItem> cyan = tree.cyan;
        bool armed = true;
        connect(&tree.view, qOverload<>(&TaviTreeView::selectionChanged), this, [&] {
            if (std::exchange(armed, false))
                tree.model.removeItem(tree.magenta);
        });
        QCOMPARE(tree.view.removeSelectedItems(false).size(), 3);
        QVERIFY(!cyan);
        QCOMPARE(tree.view.shownTexts(), QStringList({"black", "grey", "light grey"}));
    }

    void theViewMayBeDestroyedByTheSlotOfASelection()
    {
        TaviTreeModel model({"name"});
        QList<TaviTreeItem *> items = {makeItem("a"), makeItem("b"), makeItem("a")};
        addChild(items[0], "c");
        model.appendItems(items);
        for (int operation = 0; operation < 9; ++operation) {
            QPointer<TreeProbe> view = new TreeProbe;
            view->setSelectionMode(QAbstractItemView::ExtendedSelection);
            view->setModel(&model);
            view->widget();
            const std::unique_ptr<QWidget> container(view->widget());
            view->selectItem(items[1]);
            view->saveSelections();
            // Behind the view's own: one that is called first would pull the rug from under Qt itself.
            connect(view, qOverload<>(&TaviTreeView::selectionChanged), this, [&] { delete view; });
            QList<QVariant> list = {items[0]->id(), items[1]->id()};
            switch (operation) {
            case 0:
                view->selectItem(items[0], true);
                break;
            case 1:
                view->clearSelectItem(items[0], true);
                break;
            case 2:
                view->selectItems({items[0], items[2]}, true);
                break;
            case 3:
                view->clearSelectItemsWithProperty(0, "a", Qt::DisplayRole);
                break;
            case 4:
                view->clearSelectItemWithProperty(0, "a", Qt::DisplayRole);
                delete view;
                break;
            case 5:
                view->restoreSelections(0, TaviTreeItem::IdRole, list);
                break;
            case 6:
                view->removeSelectedItems(true);
                break;
            case 7:
                view->removeItems({items[2]}, true);
                break;
            case 8:
                view->selectItemWithProperty(0, "b", Qt::DisplayRole);
                delete view;
                break;
            }
            QVERIFY2(!view, qPrintable(QString::number(operation)));
        }
        QCOMPARE(model.rowCount(), 3);
    }

    void anEditedItemMayBeDeleted_data() { howToRemove(); }
    void anEditedItemMayBeDeleted()
    {
        QFETCH(int, how);
        Tree tree;
        QVERIFY(tree.show());
        tree.black->setEditable(0, true);
        tree.view.setCurrentIndex(tree.view.indexOf(tree.black));
        tree.view.edit(tree.view.indexOf(tree.black));
        QVERIFY(tree.view.isEditing());
        QTest::keyClicks(tree.view.viewport()->findChild<QLineEdit *>(), "blue");
        removeBlack(tree, how);
        QVERIFY(!tree.view.isEditing());
        QTRY_VERIFY(!tree.view.viewport()->findChild<QLineEdit *>());
        tree.view.repaint();
    }

    void itemsMayBeDeletedByTheSlotOfAContextMenu_data() { howToRemove(); }
    void itemsMayBeDeletedByTheSlotOfAContextMenu()
    {
        QFETCH(int, how);
        Tree tree;
        QVERIFY(tree.show());
        connect(&tree.view, &TaviTreeView::contextMenuRequested, this, [&] { removeBlack(tree, how); });
        const QPoint at = tree.view.centreOf(tree.view.indexOf(tree.black));
        QTest::mousePress(tree.view.viewport(), Qt::RightButton, {}, at);
        QContextMenuEvent event(QContextMenuEvent::Mouse, at, tree.view.viewport()->mapToGlobal(at));
        QCoreApplication::sendEvent(tree.view.viewport(), &event);
        QTest::mouseRelease(tree.view.viewport(), Qt::RightButton, {}, at);
        tree.view.repaint();
        QCOMPARE(tree.view.shownTexts().count("black"), 0);
    }

    void theViewMayBeDestroyedByTheSlotOfADoubleClick()
    {
        TaviTreeModel model({"name", "more"});
        TaviTreeItem *item = makeItem("row", "more");
        addChild(item, "child");
        model.appendItem(item);
        QPointer<TreeProbe> view = new TreeProbe;
        view->setModel(&model);
        connect(view, qOverload<>(&TaviTreeView::doubleClicked), this, [&] { delete view; });
        QMouseEvent event(QEvent::MouseButtonDblClick, {30, 8}, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view->viewport(), &event);
        QVERIFY(!view);
    }

    void itemsMayBeDeletedByTheSlotOfARenaming()
    {
        Tree tree;
        tree.view.selectItem(tree.black);
        connect(&tree.view, &TaviTreeView::itemsRenamed, this, [&] { tree.model.removeItems({tree.black}); });
        tree.view.fireItemsRenamed(1);
        QVERIFY(tree.view.selectedItems(0).isEmpty());
        QPointer<TreeProbe> view = new TreeProbe;
        connect(view, &TaviTreeView::itemsRenamed, this, [&] { delete view; });
        view->fireItemsRenamed(1);
        QVERIFY(!view);
    }

    void rowsMayBeRemovedInTheMiddleOfAFilterWalk_data()
    {
        QTest::addColumn<int>("what");
        QTest::newRow("the row itself") << 0;
        QTest::newRow("a later row") << 1;
        QTest::newRow("an earlier row") << 2;
        QTest::newRow("all") << 3;
        QTest::newRow("reset") << 4;
        QTest::newRow("another keyword") << 5;
    }
    void rowsMayBeRemovedInTheMiddleOfAFilterWalk()
    {
        QFETCH(int, what);
        Tree tree;
        tree.view.widget();
        auto *trap = new TrapItem(QList<QVariant>{"trap", "", ""}, nullptr);
        tree.model.insertItem(2, trap);
        trap->trap = [&] {
            switch (what) {
            case 0:
                delete tree.model.takeItem(tree.magenta);
                break; // itself would be deleted while it runs
            case 1:
                tree.model.removeItem(tree.black);
                break;
            case 2:
                tree.model.removeItem(tree.cyan);
                break;
            case 3:
                tree.model.takeItems({tree.cyan, tree.magenta, tree.black, tree.paper});
                break;
            case 4:
                tree.model.resetModel();
                break;
            case 5:
                tree.view.filter("paper");
                break;
            }
        };
        const QList<TaviTreeItem *> taken =
            what == 3 ? QList<TaviTreeItem *>({tree.cyan, tree.magenta, tree.black, tree.paper})
                      : QList<TaviTreeItem *>();
        tree.view.filter("a");
        QVERIFY(!trap->trap);
        tree.view.filter("");
        QCOMPARE(tree.view.visibleRowCount(), tree.model.rowCount());
        tree.view.updateStatusBar();
        QVERIFY(tree.view.updatesEnabled());
        qDeleteAll(taken);
    }

    void rowsMayBeRemovedWhileBranchesAreOpened_data() { howToRemove(); }
    void rowsMayBeRemovedWhileBranchesAreOpened()
    {
        QFETCH(int, how);
        Tree tree;
        tree.view.selectItems({tree.cyan, tree.black, tree.grey});
        bool armed = true;
        connect(&tree.view, &QTreeView::expanded, this, [&] {
            if (std::exchange(armed, false))
                removeBlack(tree, how);
        });
        tree.view.expandSelected();
        QVERIFY(!armed);
        QCOMPARE(tree.view.shownTexts().count("black"), 0);
        QCOMPARE(tree.view.visibleRowCount(), 3);
    }

    void rowsMayBeRemovedWhileBranchesAreClosedAgain_data() { howToRemove(); }
    void rowsMayBeRemovedWhileBranchesAreClosedAgain()
    {
        QFETCH(int, how);
        Tree tree;
        tree.view.saveExpandStates();
        tree.view.filter("light");
        bool armed = true;
        connect(&tree.view, &QTreeView::collapsed, this, [&] {
            if (std::exchange(armed, false))
                removeBlack(tree, how);
        });
        tree.view.filter("");
        QVERIFY(!armed);
        QCOMPARE(tree.view.shownTexts().count("black"), 0);
        QCOMPARE(tree.view.visibleRowCount(), 3);
    }

    void theViewMayBeDestroyedWhileBranchesAreOpened()
    {
        Tree tree;
        QPointer<TreeProbe> view = new TreeProbe;
        view->setModel(&tree.model);
        connect(view, &QTreeView::expanded, this, [&] { delete view; });
        view->setSelectionMode(QAbstractItemView::ExtendedSelection);
        view->selectItems({tree.cyan, tree.black});
        view->expandSelected();
        QVERIFY(!view);
    }

    void aModelOfTwoViewsMayGoWhileOneFilters()
    {
        auto model = std::make_unique<TaviTreeModel>(QList<QVariant>{"name"});
        model->appendItems({makeItem("a"), makeItem("b")});
        TreeProbe first;
        TreeProbe second;
        first.setModel(model.get());
        second.setModel(model.get());
        first.show();
        QVERIFY(QTest::qWaitForWindowExposed(&first));
        first.showFilterFloater();
        TaviTreeView::filterFloater()->lineEdit()->setText("a");
        model.reset();
        TaviTreeView::filterFloater()->lineEdit()->setText("ab");
        first.closeFilterFloater();
        QCOMPARE(first.visibleRowCount(), 0);
        QCOMPARE(second.visibleRowCount(), 0);
    }

private:
    static void howToRemove()
    {
        QTest::addColumn<int>("how");
        QTest::newRow("with row signals") << 0;
        QTest::newRow("with a reset") << 1;
    }
    static void removeBlack(Tree &tree, int how)
    {
        if (how == 0)
            tree.model.removeItem(tree.black);
        else
            tree.model.removeItems({tree.black});
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewLifetime)
#include "tst_tavitreeview_lifetime.moc"
