// SPDX-License-Identifier: MIT
#include "taviapp/taviregistry.h"
#include "tests/support/tavitest.h"
#include "tests/treeviews/treefixture.h"
#include "treeviews/taviheaderview.h"

#include <QScrollBar>

namespace {

/// A view that notes what a sort asks of it and what it scrolls to.
class StateProbe : public TreeProbe
{
    Q_OBJECT

public:
    void saveExpandStates() override
    {
        calls.append("save");
        TreeProbe::saveExpandStates();
    }
    void restoreExpandStates() override
    {
        calls.append("restore");
        TreeProbe::restoreExpandStates();
    }
    using TreeProbe::restoreSelections;
    using TreeProbe::saveSelections;

    QStringList calls;
};

class ScrollProbe : public TreeProbe
{
public:
    void scrollTo(const QModelIndex &index, ScrollHint hint = EnsureVisible) override
    {
        QCOMPARE(hint, PositionAtCenter);
        scrolled.append(index.data().toString());
        TreeProbe::scrollTo(index, hint);
    }
    QStringList scrolled;
};

std::string section_name = "patches";
std::string bare_key = "header_state";
std::string view_key = "header_state_TaviTreeView_TaviTreeView";

} // namespace

/// What a tree view keeps: expansion, selection, columns.
class TestTaviTreeViewState : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void branchesStayOpenWhenAHeaderClickSorts()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.view.setSortingEnabled(true);
        tree.view.setItemExpanded(tree.black, true);
        tree.view.setItemExpanded(tree.grey, true);
        const QHeaderView *header = tree.view.header();
        const QPoint at(header->sectionViewportPosition(0) + 20, header->height() / 2);
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, at);
        const QStringList once = tree.view.shownTexts();
        QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, at);
        QVERIFY(tree.view.shownTexts() != once);
        QVERIFY(tree.view.isItemExpanded(tree.black));
        QVERIFY(tree.view.isItemExpanded(tree.grey));
        QVERIFY(!tree.view.isItemExpanded(tree.cyan));
    }

    void aSortSavesAndRestores()
    {
        const Tree tree;
        StateProbe view;
        view.setModel(const_cast<TaviTreeModel *>(&tree.model));
        view.setSortingEnabled(true);
        view.calls.clear();
        view.sortByColumn(1, Qt::DescendingOrder);
        QCOMPARE(view.calls, QStringList({"save", "restore"}));
    }

    void nothingRememberedChangesNothing()
    {
        Tree tree;
        tree.view.setItemExpanded(tree.cyan, true);
        tree.view.restoreExpandStates();
        QVERIFY(tree.view.isItemExpanded(tree.cyan));
        QVERIFY(!tree.view.isItemExpanded(tree.black));
    }

    void restoringTwiceGivesTheSame()
    {
        Tree tree;
        tree.view.setItemExpanded(tree.cyan, true);
        tree.view.saveExpandStates();
        for (int i = 0; i < 2; ++i) {
            tree.view.setItemExpanded(tree.cyan, false);
            tree.view.expandAll();
            tree.view.restoreExpandStates();
            QVERIFY(tree.view.isItemExpanded(tree.cyan));
            QVERIFY(!tree.view.isItemExpanded(tree.black));
            QVERIFY(!tree.view.isItemExpanded(tree.grey));
        }
    }

    void whatIsRememberedReplacesWhatWas()
    {
        Tree tree;
        tree.view.setItemExpanded(tree.cyan, true);
        tree.view.saveExpandStates();
        tree.view.setRowHidden(0, QModelIndex(), true);
        tree.view.saveExpandStates();
        tree.view.setRowHidden(0, QModelIndex(), false);
        tree.view.setItemExpanded(tree.cyan, false);
        tree.view.restoreExpandStates();
        QVERIFY(!tree.view.isItemExpanded(tree.cyan)); // it was not in sight the second time
    }

    void hiddenRowsAreNotRemembered()
    {
        Tree tree;
        tree.view.setRowHidden(2, QModelIndex(), true);
        tree.view.saveExpandStates();
        tree.view.setRowHidden(2, QModelIndex(), false);
        tree.view.expandAll();
        tree.view.restoreExpandStates();
        QVERIFY(!tree.view.isItemExpanded(tree.cyan));
        QVERIFY(tree.view.isItemExpanded(tree.black));
        QVERIFY(tree.view.isItemExpanded(tree.grey));
    }

    void rowsThatAreGoneArePassedOverAndTheOthersGetTheirState()
    {
        Tree tree;
        tree.view.setItemExpanded(tree.black, true);
        tree.view.setItemExpanded(tree.grey, true);
        tree.view.saveExpandStates();
        tree.model.removeItem(tree.cyan);
        tree.model.insertItem(0, makeItem("new"));
        TaviTreeItem *other = tree.model.takeItem(tree.magenta);
        tree.view.collapseAll();
        tree.view.restoreExpandStates();
        QVERIFY(tree.view.isItemExpanded(tree.black));
        QVERIFY(tree.view.isItemExpanded(tree.grey));
        // A reset, too, leaves the items known.
        tree.model.resetModel();
        QVERIFY(!tree.view.isItemExpanded(tree.black));
        tree.view.restoreExpandStates();
        QVERIFY(tree.view.isItemExpanded(tree.black));
        QVERIFY(tree.view.isItemExpanded(tree.grey));
        delete other;
        tree.view.setModel(nullptr);
        tree.view.restoreExpandStates();
    }

    void selectionsAreValuesOfTheSelectedItems()
    {
        Tree tree;
        QList<QVariant> list = {"left over"};
        tree.view.saveSelections(0, TaviTreeItem::IdRole, list);
        QVERIFY(list.isEmpty());
        tree.view.selectItems({tree.paper, tree.magenta});
        tree.view.saveSelections(0, TaviTreeItem::IdRole, list);
        QCOMPARE(list, QList<QVariant>({tree.magenta->id(), tree.paper->id()}));
        tree.view.saveSelections(1, Qt::DisplayRole, list);
        QCOMPARE(list, QList<QVariant>({"M 100", ""}));
    }

    void selectionsComeBackByNumberAlsoAfterASort()
    {
        Tree tree;
        QList<QVariant> list;
        tree.view.selectItems({tree.paper, tree.light_grey});
        tree.view.saveSelections(0, TaviTreeItem::IdRole, list);
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(0, Qt::DescendingOrder);
        tree.view.setCurrentIndex(tree.view.indexOf(tree.cyan));
        tree.view.restoreSelections(0, TaviTreeItem::IdRole, list);
        QCOMPARE(tree.view.selectedItems(0).size(), 2);
        QVERIFY(tree.view.selectedItems(0).contains(tree.paper));
        QVERIFY(tree.view.selectedItems(0).contains(tree.light_grey));
        QCOMPARE(tree.view.selectionModel()->selectedIndexes().size(), 6); // whole rows
        QVERIFY(!tree.view.currentIndex().isValid());
    }

    void anyOtherRoleIsSearchedForInTheFirstColumn()
    {
        Tree tree;
        tree.model.appendItem(makeItem("paper"), tree.black);
        QList<QVariant> list = {"paper", "no such", "light cyan"};
        tree.view.restoreSelections(2, Qt::DisplayRole, list);
        QStringList texts = tree.view.selectedTexts();
        texts.sort();
        QCOMPARE(texts, QStringList({"light cyan", "paper", "paper"}));
        list = {"solid"};
        tree.view.restoreSelections(2, Qt::DisplayRole, list);
        QVERIFY(tree.view.selectedTexts().isEmpty());
    }

    void numbersAreReadAsAMatchWouldReadThem_data()
    {
        QTest::addColumn<int>("kind");
        QTest::addColumn<bool>("found");
        QTest::newRow("int") << 0 << true;
        QTest::newRow("text of a number") << 1 << true;
        QTest::newRow("long") << 2 << true;
        QTest::newRow("no number") << 3 << false;
        QTest::newRow("a fraction") << 4 << false;
        QTest::newRow("invalid") << 5 << false;
        QTest::newRow("unknown") << 6 << false;
    }
    void numbersAreReadAsAMatchWouldReadThem()
    {
        QFETCH(int, kind);
        QFETCH(bool, found);
        Tree tree;
        const int id = tree.grey->id();
        const QList<QVariant> kinds = {id, QString::number(id), qlonglong(id), "grey", id + 0.25, QVariant(), -1};
        QList<QVariant> list = {kinds[kind]};
        const QAbstractItemModel *rows = tree.view.model();
        QCOMPARE(
            !rows->match(rows->index(0, 0), TaviTreeItem::IdRole, kinds[kind], -1, Qt::MatchWrap | Qt::MatchRecursive)
                 .isEmpty(),
            found);
        tree.view.restoreSelections(0, TaviTreeItem::IdRole, list);
        QCOMPARE(tree.view.selectedItem(), found ? tree.grey : nullptr);
    }

    void hiddenRowsAreFound()
    {
        Tree tree;
        QList<QVariant> list = {tree.paper->id()};
        tree.view.filter("cyan");
        tree.view.restoreSelections(0, TaviTreeItem::IdRole, list);
        QCOMPARE(tree.view.selectedItem(), tree.paper);
    }

    void theLastValueThatIsFoundIsScrolledTo()
    {
        TaviTreeModel model({"name"});
        QList<TaviTreeItem *> items;
        for (int i = 0; i < 200; ++i) {
            items.append(makeItem(QString::number(i)));
            addChild(items.last(), "child");
        }
        model.appendItems(items);
        // As one view scrolls to each hit and another only to the last: both end up the same.
        TreeProbe view;
        ScrollProbe watched;
        QList<QVariant> list = {items[3]->child(0)->id(), items[190]->id(), items[100]->child(0)->id(), -7};
        for (TreeProbe *one : {&view, static_cast<TreeProbe *>(&watched)}) {
            one->setModel(&model);
            one->resize(200, 300);
            one->show();
            QVERIFY(QTest::qWaitForWindowExposed(one));
            one->restoreSelections(0, TaviTreeItem::IdRole, list);
            QVERIFY(one->isItemExpanded(items[3]));
            QVERIFY(!one->isItemExpanded(items[190]));
            QVERIFY(one->isItemExpanded(items[100]));
            const QRect rect = one->visualRect(one->indexOf(items[100]->child(0)));
            QVERIFY(qAbs(rect.center().y() - one->viewport()->height() / 2) <= rect.height());
        }
        QCOMPARE(watched.scrolled, QStringList({"child", "190", "child"}));
        QCOMPARE(view.verticalScrollBar()->value(), watched.verticalScrollBar()->value());
    }

    void theFormWithoutArgumentsKeepsASelection()
    {
        Tree tree;
        tree.view.selectItem(tree.paper);
        static_cast<TaviTreeView &>(tree.view).saveSelections();
        tree.view.clearSelectItem(tree.cyan);
        static_cast<TaviTreeView &>(tree.view).restoreSelections();
        QCOMPARE(tree.view.selectedItem(), tree.cyan);
        tree.view.clearSelection();
        static_cast<TaviTreeView &>(tree.view).restoreSelections();
        QCOMPARE(tree.view.selectedItem(), tree.paper);
    }

    void anEmptyViewSelectsNothing()
    {
        TreeProbe view;
        QList<QVariant> list = {1, 2};
        view.restoreSelections(0, TaviTreeItem::IdRole, list);
        view.saveSelections(0, TaviTreeItem::IdRole, list);
        QVERIFY(list.isEmpty());
        view.saveExpandStates();
        view.restoreExpandStates();
    }

    void theKeyNamesClassAndObject()
    {
        TaviTreeView view;
        QCOMPARE(view.getHeaderRegistryKey(), std::string("header_state_TaviTreeView_TaviTreeView"));
        view.setObjectName("patches");
        QCOMPARE(view.getHeaderRegistryKey(), std::string("header_state_TaviTreeView_patches"));
        const StateProbe other;
        QVERIFY(other.getHeaderRegistryKey().find("StateProbe_TaviTreeView") != std::string::npos);
    }

    void columnsComeBack()
    {
        TaviRegistry registry;
        TaviTreeModel model({"a", "b", "c"});
        TaviTreeView view;
        view.setModel(&model);
        view.header()->resizeSection(0, 77);
        view.header()->moveSection(0, 1);
        view.header()->hideSection(1);
        view.saveHeaderState(registry, "patches");
        QVERIFY(registry.exists(section_name, view_key));
        QCOMPARE(QByteArray::fromHex(registry.getstring(section_name, view_key).c_str()),
                 static_cast<TaviHeaderView *>(view.header())->saveState());
        TaviTreeView again;
        again.setModel(&model);
        again.restoreHeaderState(registry, section_name);
        QCOMPARE(again.header()->sectionSize(0), 77);
        QCOMPARE(again.header()->visualIndex(0), 1);
        QVERIFY(again.header()->isSectionHidden(1));
    }

    void viewsOfOneNameShareAState()
    {
        TaviRegistry registry;
        TaviTreeModel model({"a", "b", "c"});
        TaviTreeView first;
        TaviTreeView second;
        TaviTreeView other;
        other.setObjectName("other");
        for (TaviTreeView *view : {&first, &second, &other})
            view->setModel(&model);
        first.header()->resizeSection(0, 66);
        first.saveHeaderState(registry, section_name);
        other.header()->resizeSection(0, 99);
        other.saveHeaderState(registry, section_name);
        second.restoreHeaderState(registry, "patches");
        QCOMPARE(second.header()->sectionSize(0), 66);
        QCOMPARE(registry.size(section_name), size_t(2));
    }

    void aNullSectionAndAnotherHeaderDoNothing()
    {
        TaviRegistry registry;
        TaviTreeView view;
        view.saveHeaderState(registry, static_cast<const char *>(nullptr));
        view.restoreHeaderState(registry, static_cast<const char *>(nullptr));
        QCOMPARE(registry.size(""), size_t(0));
        view.setHeader(new QHeaderView(Qt::Horizontal));
        view.saveHeaderState(registry, "patches");
        view.restoreHeaderState(registry, "patches");
        QCOMPARE(registry.size("patches"), size_t(0));
    }

    void unusableValuesArePassedOver_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("no hexadecimal digits") << QByteArray("xyz");
    }
    void unusableValuesArePassedOver()
    {
        QFETCH(QByteArray, value);
        for (std::string *key : {&bare_key, &view_key}) {
            TaviRegistry registry;
            registry.putstring(section_name, *key, value.toStdString());
            TaviTreeModel model({"a", "b", "c"});
            TaviTreeView view;
            view.setModel(&model);
            const QByteArray before = static_cast<TaviHeaderView *>(view.header())->saveState();
            view.restoreHeaderState(registry, section_name);
            QCOMPARE(static_cast<TaviHeaderView *>(view.header())->saveState(), before);
            QCOMPARE(registry.getstring(section_name, *key), value.toStdString());
            QCOMPARE(registry.size(section_name), size_t(1));
        }
    }

    void aBareKeyIsAppliedAndMoved()
    {
        TaviRegistry registry;
        TaviTreeModel model({"a", "b", "c"});
        TaviTreeView view;
        view.setModel(&model);
        view.header()->resizeSection(0, 123);
        const QByteArray state = static_cast<TaviHeaderView *>(view.header())->saveState();
        registry.putstring(section_name, bare_key, state.toHex().toStdString());
        registry.putstring(section_name, view_key, "00"); // is not asked
        TaviTreeView again;
        again.setModel(&model);
        again.restoreHeaderState(registry, section_name);
        QCOMPARE(again.header()->sectionSize(0), 123);
        QVERIFY(!registry.exists(section_name, bare_key));
        // What stands under the new key is no state: the bytes themselves up to the first zero, which is the first.
        QVERIFY(registry.exists(section_name, view_key));
        QCOMPARE(registry.getstring(section_name, view_key), std::string());
        again.header()->resizeSection(0, 55);
        again.restoreHeaderState(registry, section_name);
        QCOMPARE(again.header()->sectionSize(0), 55);
        again.saveHeaderState(registry, section_name);
        view.restoreHeaderState(registry, section_name);
        QCOMPARE(view.header()->sectionSize(0), 55);
    }

    void settingsOfOneKeyAColumnAreConvertedForTheNextRestore()
    {
        TaviRegistry registry;
        registry.putstring("patches", "column_0", "1 1 90");
        registry.putstring("patches", "column_1", "0 1 80");
        registry.putstring("patches", "column_2", "2 0 70");
        registry.putstring("patches", "sorting", "1 1");
        TaviTreeModel model({"a", "b", "c"});
        TaviTreeView view;
        view.setModel(&model);
        const QByteArray before = static_cast<TaviHeaderView *>(view.header())->saveState();
        view.restoreHeaderState(registry, section_name);
        QCOMPARE(static_cast<TaviHeaderView *>(view.header())->saveState(), before);
        QCOMPARE(registry.size(section_name), size_t(1));
        QVERIFY(registry.exists(section_name, view_key));
        view.restoreHeaderState(registry, section_name);
        QCOMPARE(view.header()->sectionSize(0), 90);
        QCOMPARE(view.header()->visualIndex(0), 1);
        QVERIFY(view.header()->isSectionHidden(2));
    }

    void tooFewOldKeysLeaveNothing()
    {
        TaviRegistry registry;
        registry.putstring("patches", "column_0", "1 1 90");
        TaviTreeModel model({"a", "b", "c"});
        TaviTreeView view;
        view.setModel(&model);
        view.restoreHeaderState(registry, section_name);
        QCOMPARE(registry.size(section_name), size_t(0));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeViewState)
#include "tst_tavitreeview_state.moc"
