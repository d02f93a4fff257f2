// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/treefixture.h"
#include "treeviews/taviheaderview.h"
#include "treeviews/tavitreeitemdelegate.h"

#include <QGridLayout>
#include <QStandardItemModel>

namespace {

/// A view that notes the models that it is given.
class ModelProbe : public TreeProbe
{
public:
    using TreeProbe::setModel;
    void setModel(TaviTreeModel *model) override
    {
        given.append(model);
        TreeProbe::setModel(model);
    }
    QList<TaviTreeModel *> given;
};

} // namespace

/// Construction of a tree view, its container, and what it forwards.
class TestTaviTreeView : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void construction()
    {
        const TreeProbe view;
        QCOMPARE(view.objectName(), QString("TaviTreeView"));
        QVERIFY(view.uniformRowHeights());
        QVERIFY(!view.wordWrap());
        QCOMPARE(int(view.editTriggers()), 12);
        QVERIFY(view.alternatingRowColors());
        QCOMPARE(view.textElideMode(), Qt::ElideMiddle);
        QVERIFY(!view.isSortingEnabled());
        QCOMPARE(view.selectionBehavior(), QAbstractItemView::SelectRows);
        QCOMPARE(view.selectionMode(), QAbstractItemView::SingleSelection);
        QVERIFY(!view.rootIsDecorated());
        QVERIFY(!view.dragDropOverwriteMode());
        QVERIFY(qobject_cast<TaviTreeItemDelegate *>(view.itemDelegate()));
        QCOMPARE(view.itemDelegate()->parent(), &view);
        auto *header = qobject_cast<TaviHeaderView *>(view.header());
        QVERIFY(header);
        QCOMPARE(header->orientation(), Qt::Horizontal);
        QCOMPARE(view.dndFlags(), 0L);
        QCOMPARE(int(view.invalidIndexSelectionCommand()), 1);
        QCOMPARE(view.sourceModel(), nullptr);
        QCOMPARE(view.sortColumn(), -1);
        QVERIFY(!view.isEditing());
        QVERIFY(TaviTreeView::filterFloater() == nullptr);
    }

    void theProxyIsSetUp()
    {
        const TreeProbe view;
        const TaviTreeProxyModel *proxy = view.proxyModel();
        QVERIFY(proxy);
        QCOMPARE(view.model(), proxy);
        QCOMPARE(proxy->QObject::parent(), &view);
        QVERIFY(proxy->dynamicSortFilter());
        QCOMPARE(proxy->filterCaseSensitivity(), Qt::CaseInsensitive);
        QCOMPARE(proxy->sortCaseSensitivity(), Qt::CaseInsensitive);
        QCOMPARE(proxy->filterKeyColumn(), -1);
    }

    void selectedRowsAreLightBlueInEveryGroup()
    {
        const TreeProbe view;
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            QCOMPARE(view.palette().color(group, QPalette::Highlight), QColor(191, 216, 250));
            QCOMPARE(view.palette().color(group, QPalette::HighlightedText),
                     group == QPalette::Disabled ? QColor(Qt::gray) : QColor(Qt::black));
        }
        QCOMPARE(view.palette().color(QPalette::Disabled, QPalette::Text), QColor(Qt::gray));
    }

    void getSetCheck()
    {
        TreeProbe view;
        view.setDNDFlags(9);
        QCOMPARE(view.dndFlags(), 9L);
        view.setDNDFlags(LONG_MAX);
        QCOMPARE(view.dndFlags(), LONG_MAX);
        view.setInvalidIndexSelectionCommand(QItemSelectionModel::NoUpdate);
        QCOMPARE(view.invalidIndexSelectionCommand(), QItemSelectionModel::NoUpdate);
        QVERIFY(view.isHeaderMenuEnabled());
        view.setHeaderMenuEnabled(false);
        QVERIFY(!view.isHeaderMenuEnabled());
        QVERIFY(!qobject_cast<TaviHeaderView *>(view.header())->isMenuEnabled());
        QVERIFY(view.isStatusBarEnabled());
        view.setStatusBarEnabled(false);
        QVERIFY(!view.isStatusBarEnabled());
    }

    void anotherHeaderHasNoMenu()
    {
        TreeProbe view;
        view.setHeader(new QHeaderView(Qt::Horizontal));
        view.setHeaderMenuEnabled(true);
        QVERIFY(!view.isHeaderMenuEnabled());
    }

    void theModelIsShownThroughTheProxy()
    {
        const Tree tree;
        QCOMPARE(tree.view.sourceModel(), &tree.model);
        QCOMPARE(tree.view.proxyModel()->sourceModel(), &tree.model);
        QCOMPARE(tree.view.model(), tree.view.proxyModel());
        const QModelIndex source = tree.model.indexFromItem(tree.grey);
        const QModelIndex index = tree.view.mapFromSource(source);
        QCOMPARE(index.model(), tree.view.proxyModel());
        QCOMPARE(index.data().toString(), QString("grey"));
        QCOMPARE(tree.view.mapToSource(index), source);
        tree.view.setModel(nullptr);
        QCOMPARE(tree.view.sourceModel(), nullptr);
        QCOMPARE(tree.view.model()->rowCount(), 0);
    }

    void aPlainPointerToTheViewSetsTheModelBehindTheProxy()
    {
        TaviTreeModel model({"name"});
        model.appendItem(makeItem("row"));
        ModelProbe view;
        QTreeView *plain = &view;
        plain->setModel(&model);
        QCOMPARE(view.model(), view.proxyModel());
        QCOMPARE(view.sourceModel(), &model);
        QCOMPARE(view.given, QList<TaviTreeModel *>({&model}));
        QCOMPARE(view.shownTexts(), QStringList({"row"}));
        // It is in front already.
        plain->setModel(view.proxyModel());
        QCOMPARE(view.sourceModel(), &model);
        QCOMPARE(view.given.size(), 1);
        plain->setModel(nullptr);
        QCOMPARE(view.model(), view.proxyModel());
        QCOMPARE(view.model()->rowCount(), 0);
        QCOMPARE(view.given.size(), 2);
        view.setModel(nullptr);
        QCOMPARE(view.given.size(), 3);
    }

    void aModelOfAnotherClassIsShownWithoutItems()
    {
        Tree tree;
        ModelProbe view;
        view.setModel(&tree.model);
        QStandardItemModel other;
        auto *parent = new QStandardItem("cyan");
        parent->appendRow(new QStandardItem("light cyan"));
        other.appendRow(parent);
        other.appendRow(new QStandardItem("paper"));
        static_cast<QTreeView &>(view).setModel(&other);
        QCOMPARE(view.given, QList<TaviTreeModel *>({&tree.model, nullptr})); // who knew the one before, lets go
        QCOMPARE(view.model(), view.proxyModel());
        QCOMPARE(view.proxyModel()->sourceModel(), &other);
        QCOMPARE(view.sourceModel(), nullptr);
        QCOMPARE(view.shownTexts(), QStringList({"cyan", "light cyan", "paper"}));
        QVERIFY(view.allItems(0).isEmpty());
        view.filter("light");
        QCOMPARE(view.shownTexts(), QStringList({"cyan", "light cyan"}));
        QVERIFY(view.isExpanded(view.model()->index(0, 0)));
        QCOMPARE(view.statusString(), QString("1 item"));
        view.filter("");
        view.saveExpandStates();
        view.restoreExpandStates();
        QVERIFY(view.removeSelectedItems(true).isEmpty());
        QCOMPARE(view.shownTexts().size(), 3);
    }

    void aResetOfTheViewForgetsWhatWasSelected()
    {
        Tree tree;
        tree.view.selectItem(tree.paper);
        tree.view.reset();
        QVERIFY(tree.view.selectedItems(0).isEmpty());
        QCOMPARE(tree.view.statusString(), QString("4 items"));
    }

    void withoutStatusLineTheViewIsItsOwnWidget()
    {
        QWidget window;
        auto *view = new TreeProbe(&window);
        view->setStatusBarEnabled(false);
        QCOMPARE(view->widget(), view);
        QCOMPARE(view->statusBar(), nullptr);
        QCOMPARE(window.findChild<QStatusBar *>(), nullptr);
        QCOMPARE(view->parentWidget(), &window);
    }

    void theContainerHoldsViewAndStatusLine()
    {
        QWidget window;
        auto *view = new TreeProbe(&window);
        QCOMPARE(view->statusBar(), nullptr);
        QWidget *container = view->widget();
        QCOMPARE(container->objectName(), QString("tavitreeview_container"));
        QCOMPARE(container->parentWidget(), &window);
        QCOMPARE(view->parentWidget(), container);
        QCOMPARE(view->widget(), container);
        auto *layout = qobject_cast<QGridLayout *>(container->layout());
        QVERIFY(layout);
        QCOMPARE(layout->contentsMargins(), QMargins());
        QCOMPARE(layout->spacing(), 0);
        QCOMPARE(layout->itemAtPosition(0, 0)->widget(), view);
        QCOMPARE(layout->itemAtPosition(1, 0)->widget(), view->statusBar());
        QCOMPARE(layout->rowStretch(0), 1);
        QCOMPARE(layout->rowStretch(1), 0);
        QVERIFY(!view->statusBar()->isSizeGripEnabled());
    }

    void aDisabledStatusLineIsHiddenAndComesBackUpToDate()
    {
        Tree tree;
        QWidget *container = tree.view.widget();
        QStatusBar *bar = tree.view.statusBar();
        tree.view.setStatusBarEnabled(false);
        QCOMPARE(tree.view.statusBar(), nullptr);
        QVERIFY(bar->isHidden());
        QCOMPARE(tree.view.widget(), &tree.view); // as documented: the container is for views with a status line
        bar->showMessage("before");
        tree.model.appendItem(makeItem("one more"));
        tree.view.updateStatusBar();
        QCOMPARE(bar->currentMessage(), QString("before"));
        tree.view.setStatusBarEnabled(true);
        QCOMPARE(tree.view.statusBar(), bar);
        QVERIFY(!bar->isHidden());
        QCOMPARE(bar->currentMessage(), QString("5 items"));
        QCOMPARE(tree.view.widget(), container);
    }

    void aContainerThatIsGoneIsMadeAnew()
    {
        TreeProbe view;
        QWidget *container = view.widget();
        view.setParent(nullptr);
        delete container;
        QCOMPARE(view.statusBar(), nullptr);
        view.updateStatusBar();
        container = view.widget();
        QVERIFY(container && view.statusBar());
        view.setParent(nullptr);
        delete container;
    }

    void theSortColumnIsThatOfTheHeader()
    {
        Tree tree;
        QCOMPARE(tree.view.sortColumn(), -1);
        tree.view.setSortingEnabled(true);
        tree.view.sortByColumn(2, Qt::AscendingOrder);
        QCOMPARE(tree.view.sortColumn(), 2);
        tree.view.setSortingEnabled(false);
        QCOMPARE(tree.view.sortColumn(), -1);
    }

    void editingIsTold()
    {
        Tree tree;
        QVERIFY(tree.show());
        tree.cyan->setEditable(0, true);
        const QModelIndex index = tree.view.indexOf(tree.cyan);
        tree.view.setCurrentIndex(index);
        tree.view.edit(index);
        QVERIFY(tree.view.isEditing());
        QTest::keyClick(tree.view.viewport()->findChild<QLineEdit *>(), Qt::Key_Escape);
        QTRY_VERIFY(!tree.view.isEditing());
        tree.view.pretendDragging();
        QVERIFY(!tree.view.isEditing());
    }

    void anotherSelectionModelIsListenedTo()
    {
        Tree tree;
        QSignalSpy spy(&tree.view, SIGNAL(selectionChanged()));
        QItemSelectionModel *old = tree.view.selectionModel();
        tree.view.selectItem(tree.paper);
        QCOMPARE(spy.count(), 1);
        QItemSelectionModel other(tree.view.model());
        other.select(tree.view.indexOf(tree.cyan), QItemSelectionModel::Select | QItemSelectionModel::Rows);
        tree.view.setSelectionModel(&other);
        QCOMPARE(tree.view.selectedItem(), tree.cyan);
        old->clear();
        QCOMPARE(spy.count(), 1);
        tree.view.clearSelectItem(tree.magenta);
        QCOMPARE(spy.count(), 2);
        QCOMPARE(tree.view.selectedItem(), tree.magenta);
        // The same one twice is heard once.
        tree.view.setSelectionModel(&other);
        tree.view.clearSelectItem(tree.black);
        QCOMPARE(spy.count(), 3);
        tree.view.setSelectionModel(old);
    }

    void twoViewsOfOneModelStandForThemselves()
    {
        Tree tree;
        TreeProbe second;
        second.setModel(&tree.model);
        second.filter("cyan");
        tree.view.selectItem(tree.paper);
        QCOMPARE(second.shownTexts(), QStringList({"cyan", "light cyan", "pale cyan"}));
        QCOMPARE(tree.view.shownTexts().size(), 8);
        QVERIFY(second.selectedTexts().isEmpty());
        second.setSortingEnabled(true);
        second.sortByColumn(0, Qt::DescendingOrder);
        QCOMPARE(second.shownTexts(), QStringList({"cyan", "pale cyan", "light cyan"}));
        QCOMPARE(tree.view.selectedTexts(), QStringList({"paper"}));
        tree.model.removeItem(tree.cyan);
        QVERIFY(second.shownTexts().isEmpty());
        QCOMPARE(tree.view.selectedTexts(), QStringList({"paper"}));
    }
};

TAVI_GUI_TEST_MAIN(TestTaviTreeView)
#include "tst_tavitreeview.moc"
