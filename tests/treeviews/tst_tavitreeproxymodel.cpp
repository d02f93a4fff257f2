// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/filteredview.h"
#include "tests/treeviews/modelsignals.h"
#include "treeviews/tavitreeproxymodel_p.h"
#include "treeviews/tavitreeview.h"

#include <QAbstractItemModelTester>
#include <QLineEdit>
#include <QMimeData>
#include <QSignalSpy>
#include <QStandardItemModel>

#include <memory>

namespace {

/// Orders by the numbers in column 1, as far as it decides at all.
class NumberComparer : public TaviModelIndexComparer
{
public:
    using TaviModelIndexComparer::TaviModelIndexComparer;
    int compare(const QModelIndex &left, const QModelIndex &right) override
    {
        ++asked;
        const int a = left.sibling(left.row(), 1).data().toInt();
        const int b = right.sibling(right.row(), 1).data().toInt();
        return !decides || a == b ? undecided : a < b ? -1 : 1;
    }
    int asked = 0;
    int undecided = 0;
    bool decides = true;
};

/// Moves rows and turns their order around, as applications' models may.
class MovingModel : public TaviTreeModel
{
public:
    MovingModel() : TaviTreeModel({QStringLiteral("Name"), QStringLiteral("Note")}, nullptr) {}
    void move(int row, TaviTreeItem *to)
    {
        TaviTreeItem *const root = to->parentTreeItem();
        beginMoveRows(QModelIndex(), row, row, indexFromItem(to), to->childCount());
        to->appendChild(root->takeChild(root->child(row)));
        endMoveRows();
    }
    void turnAround()
    {
        Q_EMIT layoutAboutToBeChanged();
        const QModelIndexList before = persistentIndexList();
        TaviTreeItem *const root = itemAt(0)->parentTreeItem();
        const QList<TaviTreeItem *> items = root->children();
        for (TaviTreeItem *item : items)
            root->insertChild(0, item);
        QModelIndexList now;
        for (const QModelIndex &index : before) {
            auto *const item = static_cast<TaviTreeItem *>(index.internalPointer());
            now.append(createIndex(item->row(), index.column(), item));
        }
        changePersistentIndexList(before, now);
        Q_EMIT layoutChanged();
    }
};

/// Says yes to everything, and does nothing.
class ObligingModel : public TaviTreeModel
{
public:
    ObligingModel() : TaviTreeModel({QStringLiteral("Name"), QStringLiteral("Note")}, nullptr)
    {
        appendItem(newItem({QString(), QString()}));
    }
    bool insertRows(int row, int count, const QModelIndex &parent) override
    {
        return note("rows+", row, count, parent);
    }
    bool removeRows(int row, int count, const QModelIndex &parent) override
    {
        return note("rows-", row, count, parent);
    }
    bool insertColumns(int column, int count, const QModelIndex &parent) override
    {
        return note("columns+", column, count, parent);
    }
    bool removeColumns(int column, int count, const QModelIndex &parent) override
    {
        return note("columns-", column, count, parent);
    }
    using TaviTreeModel::setHeaderData;
    bool setHeaderData(int section, Qt::Orientation, const QVariant &, int role) override
    {
        return note("header", section, role, last_parent);
    }
    QStringList asked;
    QModelIndex last_parent;

private:
    bool note(const char *what, int first, int count, const QModelIndex &parent)
    {
        last_parent = parent;
        asked.append(QStringLiteral("%1%2:%3").arg(QLatin1String(what)).arg(first).arg(count));
        return true;
    }
};

class Comparing : public TaviTreeProxyModel
{
public:
    using TaviTreeProxyModel::lessThan;
};

} // namespace

class TestTaviTreeProxyModel : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void construction();
    void theViewIsTheParent();
    void withoutAViewNothingIsHidden();
    void rowsAreMapped();
    void listsAreMappedInOrder();
    void aForeignSourceIsShown();
    void columnsThatComeAndGoAreFiltered();
    void rowsThatMoveAreCounted();
    void rowsThatComeAndGoAreTold();
    void emptyBracketsAreNotPassedOn();
    void sortKeepsIndexes();
    void sortIsToldOnce();
    void sortedRowsStaySorted();
    void sortAndBackToTheSourcesOrder();
    void settingsBeforeTheFirstSortKeepIndexes();
    void comparerDecides();
    void comparerThatLeavesItOpen_data();
    void comparerThatLeavesItOpen();
    void setComparerSortsNothing();
    void textsSortWithoutRegardToCase();
    void numbersSortAsNumbers();
    void expressionRemovesRows();
    void expressionInverted();
    void expressionKeepsParentsOfHits();
    void expressionSkipsHiddenColumns();
    void expressionFindsNothingBelowBareParents();
    void expressionKeepsIndexesThatStay();
    void expressionThroughTheBaseClass_data();
    void expressionThroughTheBaseClass();
    void expressionThroughTheBaseClassIsToldByTheEventLoop();
    void expressionThroughTheBaseClassHoldsForWhatComes_data();
    void expressionThroughTheBaseClassHoldsForWhatComes();
    void expressionThroughTheBaseClassAfterOneThatFoundNoRows();
    void otherSettingsThroughTheBaseClassChangeNothing();
    void anUnknownBaseClassIsLeftAlone();
    void headerGoesThrough();
    void writingGoesThrough();
    void aDragCarriesWhatCanBeWritten();
    void anotherSource();
    void theSourceIsDestroyed();
    void theProxyMayGoWhenItTellsOfRows_data();
    void theProxyMayGoWhenItTellsOfRows();
    void lineEditIsRegistered();
    void aLineEditThatIsGoneIsForgotten();
    void aLineEditMayGoWhenItsShortcutIsPressed();
    void lineEditLook();
    void shortcutTogglesTheInversion();
    void shortcutNeedsExactlyItsModifiers_data();
    void shortcutNeedsExactlyItsModifiers();
    void eachLineEditHasItsOwnFlag();
    void foreignEventsPass();

private:
    std::unique_ptr<TaviTreeModel> model;
    std::unique_ptr<FilteredView> view;
    TaviTreeProxyModel *proxy = nullptr;
    TaviTreeItem *b = nullptr;
    TaviTreeItem *a = nullptr;
};

void TestTaviTreeProxyModel::init()
{
    TaviTest::init();
    model =
        std::make_unique<TaviTreeModel>(QList<QVariant>{QStringLiteral("Name"), QStringLiteral("Number")}, nullptr);
    b = newItem({QStringLiteral("b"), QStringLiteral("1")});
    a = newItem({QStringLiteral("A"), QStringLiteral("3")});
    model->appendItems({b, a, newItem({QStringLiteral("c"), QStringLiteral("2")})});
    model->appendItems(
        {newItem({QStringLiteral("b2"), QStringLiteral("5")}), newItem({QStringLiteral("b1"), QStringLiteral("4")})},
        b);
    view = std::make_unique<FilteredView>(model.get());
    proxy = view->proxy;
}

void TestTaviTreeProxyModel::cleanup()
{
    view.reset();
    model.reset();
    TaviTest::cleanup();
}

void TestTaviTreeProxyModel::construction()
{
    QObject owner;
    auto *made = new TaviTreeProxyModel(&owner);
    QCOMPARE(made->QObject::parent(), &owner);
    QVERIFY(!made->isInverted());
    QVERIFY(!made->isFiltering());
    QVERIFY(made->filterString().isEmpty());
    QCOMPARE(made->treeView(), nullptr);
    QCOMPARE(made->rowCount(), 0);
    QCOMPARE(made->visibleTopLevelRows(), 0);
    QVERIFY(!made->hasLineEdit(nullptr));
    QVERIFY(!made->index(0, 0).isValid());
}

void TestTaviTreeProxyModel::theViewIsTheParent()
{
    TaviTreeView shown;
    auto *const made = new TaviTreeProxyModel(&shown);
    QCOMPARE(made->treeView(), &shown);
    QCOMPARE(proxy->treeView(), nullptr); // a view of another kind
    made->QObject::setParent(nullptr);
    QCOMPARE(made->treeView(), nullptr);
    delete made;
}

void TestTaviTreeProxyModel::withoutAViewNothingIsHidden()
{
    TaviTreeProxyModel alone;
    alone.setSourceModel(model.get());
    alone.filter(QStringLiteral("nowhere"));
    QVERIFY(alone.isFiltering());
    QCOMPARE(alone.rowCount(), 3);
    QVERIFY(!alone.filterRow(0, QModelIndex()));
    alone.filter(QStringLiteral("b1"));
    QVERIFY(alone.filterRow(0, QModelIndex()));
    model->appendItem(newItem("d"));
    model->removeItem(model->itemAt(3));
    QCOMPARE(alone.visibleTopLevelRows(), 3);
}

void TestTaviTreeProxyModel::rowsAreMapped()
{
    const QAbstractItemModelTester tester(proxy, QAbstractItemModelTester::FailureReportingMode::Fatal);
    for (const bool sorted : {false, true}) {
        if (sorted)
            proxy->sort(0);
        QCOMPARE(proxy->rowCount(), 3);
        QCOMPARE(proxy->columnCount(), 2);
        const QModelIndex of_b = view->indexOf(b);
        QCOMPARE(of_b.row(), sorted ? 1 : 0);
        QCOMPARE(TaviTreeModel::itemFromIndex(of_b), b);
        QVERIFY(proxy->hasChildren(of_b));
        QVERIFY(!proxy->hasChildren(of_b.sibling(of_b.row(), 1)));
        QCOMPARE(proxy->rowCount(of_b), 2);
        const QModelIndex child = proxy->index(sorted ? 1 : 0, 1, of_b);
        QCOMPARE(child.data().toInt(), 5);
        QCOMPARE(proxy->parent(child), of_b);
        QCOMPARE(proxy->mapFromSource(proxy->mapToSource(child)), child);
        QCOMPARE(child.sibling(sorted ? 0 : 1, 0).data().toString(), QStringLiteral("b1"));
        QCOMPARE(child.sibling(child.row(), 0).data().toString(), QStringLiteral("b2"));
        QVERIFY(!child.sibling(child.row(), 2).isValid());
        QVERIFY(!child.sibling(2, 0).isValid());
        QVERIFY(!child.sibling(-1, 0).isValid());
        QVERIFY(!proxy->mapToSource(QModelIndex()).isValid());
        QVERIFY(!proxy->mapFromSource(QModelIndex()).isValid());
        QVERIFY(!proxy->index(3, 0).isValid());
        QCOMPARE(proxy->data(of_b, 32).toInt(), b->id());
        QCOMPARE(int(proxy->flags(of_b)), 33);
        QCOMPARE(int(proxy->flags(QModelIndex())), 8);
    }
}

void TestTaviTreeProxyModel::listsAreMappedInOrder()
{
    const QModelIndex first = model->index(0, 0);
    const QModelIndex second = model->index(1, 1);
    const QList<QModelIndex> mapped = proxy->mapFromSources({second, QModelIndex(), first});
    QCOMPARE(mapped, (QList<QModelIndex>{proxy->index(1, 1), QModelIndex(), proxy->index(0, 0)}));
    QCOMPARE(proxy->mapToSources(mapped), (QList<QModelIndex>{second, QModelIndex(), first}));
    QVERIFY(proxy->mapToSources({}).isEmpty());
}

void TestTaviTreeProxyModel::aForeignSourceIsShown()
{
    QStandardItemModel foreign(2, 1);
    foreign.setData(foreign.index(0, 0), QStringLiteral("one"));
    foreign.setData(foreign.index(1, 0), QStringLiteral("two"));
    proxy->setSourceModel(&foreign);
    QCOMPARE(view->shown(), QStringLiteral("one two"));
    proxy->filter(QStringLiteral("TWO"));
    QCOMPARE(view->shown(), QStringLiteral("two"));
    foreign.setData(foreign.index(0, 0), QStringLiteral("twofold"));
    QCOMPARE(view->shown(), QStringLiteral("twofold two"));
    proxy->setSourceModel(model.get());
    QCOMPARE(view->shown(), QString());
}

void TestTaviTreeProxyModel::columnsThatComeAndGoAreFiltered()
{
    QStandardItemModel foreign(1, 2);
    foreign.setData(foreign.index(0, 0), QStringLiteral("one"));
    foreign.setData(foreign.index(0, 1), QStringLiteral("two"));
    proxy->setSourceModel(&foreign);
    proxy->filter(QStringLiteral("two"));
    QCOMPARE(view->shown(), QStringLiteral("one"));
    view->status_updates = 0;
    foreign.insertColumn(0);
    QCOMPARE(view->status_updates, 1);
    foreign.removeColumn(2);
    QCOMPARE(view->status_updates, 2);
    QCOMPARE(view->shown(), QString());
    proxy->setSourceModel(model.get());
}

void TestTaviTreeProxyModel::rowsThatMoveAreCounted()
{
    MovingModel moving;
    for (const char *text : {"a", "b", "c"})
        moving.appendItem(newItem({QString::fromUtf8(text), QString()}));
    FilteredView shown(&moving);
    shown.reset();
    QCOMPARE(shown.proxy->visibleTopLevelRows(), 3);
    const QPersistentModelIndex kept(shown.proxy->index(2, 1));
    ModelSignals told(shown.proxy);
    moving.move(0, moving.itemAt(1)); // a under b
    QCOMPARE(shown.shown(), QStringLiteral("b(a) c"));
    QCOMPARE(kept.row(), 1);
    QCOMPARE(shown.proxy->visibleTopLevelRows(), 2);
    QCOMPARE(told.take(), QString()); // a move is no coming and going
    moving.turnAround();
    QCOMPARE(told.take(), QStringLiteral("about layout; layout"));
    QCOMPARE(shown.shown(), QStringLiteral("c b(a)"));
    QCOMPARE(kept.row(), 0);
    QCOMPARE(TaviTreeModel::itemFromIndex(kept), moving.itemAt(0));
}

void TestTaviTreeProxyModel::rowsThatComeAndGoAreTold()
{
    ModelSignals told(proxy);
    TaviTreeItem *item = newItem({QStringLiteral("d"), QStringLiteral("9")});
    model->insertItem(1, item);
    QCOMPARE(told.take(), QStringLiteral("about+ 1-1; + 1-1"));
    model->appendItem(newItem("b3"), b);
    QCOMPARE(told.take(), QStringLiteral("about+ 2-2 in 0; + 2-2 in 0"));
    model->removeItem(item);
    QCOMPARE(told.take(), QStringLiteral("about- 1-1; - 1-1"));
    a->emitDataChanged();
    QCOMPARE(told.take(), QStringLiteral("data 1,0-1,0"));
    model->setHeaderData(1, QStringLiteral("Lab"), Qt::DisplayRole);
    QCOMPARE(told.take(), QStringLiteral("header 1 1-1"));
    model->removeItems({a});
    QCOMPARE(told.take(), QStringLiteral("about reset; reset"));
}

void TestTaviTreeProxyModel::emptyBracketsAreNotPassedOn()
{
    ModelSignals told(proxy);
    model->removeAllItems(a);
    QCOMPARE(told.take(), QString());
    model->removeAllItems();
    QCOMPARE(told.take(), QStringLiteral("about- 0-2; - 0-2"));
    model->removeAllItems();
    QCOMPARE(told.take(), QString());
    model->appendItem(newItem("x"));
    QCOMPARE(told.take(), QStringLiteral("about+ 0-0; + 0-0"));
}

void TestTaviTreeProxyModel::sortKeepsIndexes()
{
    view->expand(view->indexOf(b));
    view->selectionModel()->select(view->indexOf(b->child(1)), QItemSelectionModel::ClearAndSelect);
    const QPersistentModelIndex kept(view->indexOf(a).sibling(1, 1));
    for (const Qt::SortOrder order : {Qt::DescendingOrder, Qt::AscendingOrder, Qt::DescendingOrder}) {
        proxy->sort(0, order);
        QVERIFY(view->isExpanded(view->indexOf(b)));
        QVERIFY(view->selectionModel()->isSelected(view->indexOf(b->child(1))));
        QCOMPARE(view->selectionModel()->selectedIndexes().size(), 1);
        QCOMPARE(kept.data().toInt(), 3);
        QCOMPARE(kept.row(), order == Qt::AscendingOrder ? 0 : 2);
    }
    QCOMPARE(view->shown(), QStringLiteral("c b(b2 b1) A"));
}

void TestTaviTreeProxyModel::sortIsToldOnce()
{
    ModelSignals told(proxy);
    proxy->sort(0);
    QCOMPARE(told.take(), QStringLiteral("about layout; layout"));
    proxy->sort(1);
    QCOMPARE(told.take(), QStringLiteral("about layout; layout"));
    QCOMPARE(proxy->sortColumn(), 1);
}

void TestTaviTreeProxyModel::sortedRowsStaySorted()
{
    proxy->sort(0);
    model->appendItem(newItem({QStringLiteral("aa"), QStringLiteral("0")}));
    QCOMPARE(view->shown(), QStringLiteral("A aa b(b1 b2) c"));
    QVERIFY(model->setData(model->index(1, 0), QStringLiteral("z"), Qt::EditRole));
    QCOMPARE(view->shown(), QStringLiteral("aa b(b1 b2) c z"));
    model->removeItems({a});
    QCOMPARE(view->shown(), QStringLiteral("aa b(b1 b2) c"));
}

void TestTaviTreeProxyModel::sortAndBackToTheSourcesOrder()
{
    proxy->sort(-1);
    QCOMPARE(view->shown(), QStringLiteral("b(b2 b1) A c"));
    proxy->sort(0);
    proxy->sort(-1);
    QCOMPARE(view->shown(), QStringLiteral("b(b2 b1) A c"));
    model->appendItem(newItem("d"));
    QCOMPARE(view->shown(), QStringLiteral("b(b2 b1) A c d"));
}

void TestTaviTreeProxyModel::settingsBeforeTheFirstSortKeepIndexes()
{
    view->expand(view->indexOf(b));
    const QPersistentModelIndex kept(view->indexOf(b->child(0)));
    proxy->setSortRole(Qt::DisplayRole + 1);
    proxy->setSortRole(Qt::DisplayRole);
    proxy->setSortCaseSensitivity(Qt::CaseSensitive);
    proxy->setDynamicSortFilter(false);
    proxy->setDynamicSortFilter(true);
    proxy->setFilterCaseSensitivity(Qt::CaseSensitive);
    proxy->invalidate();
    model->insertItem(0, newItem("front"));
    QCOMPARE(kept.data().toString(), QStringLiteral("b2"));
    QVERIFY(view->isExpanded(view->indexOf(b)));
    proxy->sort(0);
    QCOMPARE(kept.data().toString(), QStringLiteral("b2"));
    QCOMPARE(kept.row(), 1);
    QVERIFY(view->isExpanded(view->indexOf(b)));
    QCOMPARE(view->shown(), QStringLiteral("A b(b1 b2) c front"));
}

void TestTaviTreeProxyModel::comparerDecides()
{
    NumberComparer comparer(nullptr);
    proxy->setComparer(&comparer);
    proxy->sort(0);
    QCOMPARE(view->shown(), QStringLiteral("b(b1 b2) c A"));
    proxy->sort(0, Qt::DescendingOrder);
    QCOMPARE(view->shown(), QStringLiteral("A c b(b2 b1)"));
    QVERIFY(comparer.asked > 0);
    proxy->setComparer(nullptr);
    proxy->sort(0);
    QCOMPARE(view->shown(), QStringLiteral("A b(b1 b2) c"));
}

void TestTaviTreeProxyModel::comparerThatLeavesItOpen_data()
{
    QTest::addColumn<int>("answer");
    for (const int answer : {0, 2, -2, 100})
        QTest::addRow("%d", answer) << answer;
}

void TestTaviTreeProxyModel::comparerThatLeavesItOpen()
{
    QFETCH(int, answer);
    NumberComparer comparer(nullptr);
    comparer.decides = false;
    comparer.undecided = answer;
    proxy->setComparer(&comparer);
    proxy->sort(0);
    QCOMPARE(view->shown(), QStringLiteral("A b(b1 b2) c"));
    QVERIFY(comparer.asked > 0);
}

void TestTaviTreeProxyModel::setComparerSortsNothing()
{
    proxy->sort(0);
    NumberComparer comparer(nullptr);
    proxy->setComparer(&comparer);
    QCOMPARE(comparer.asked, 0);
    QCOMPARE(view->shown(), QStringLiteral("A b(b1 b2) c"));
}

void TestTaviTreeProxyModel::textsSortWithoutRegardToCase()
{
    Comparing comparing;
    comparing.setSourceModel(model.get());
    comparing.setSortCaseSensitivity(Qt::CaseInsensitive);
    const QModelIndex of_b = model->index(0, 0);
    const QModelIndex of_a = model->index(1, 0);
    QVERIFY(comparing.lessThan(of_a, of_b));
    QVERIFY(!comparing.lessThan(of_b, of_a));
    QVERIFY(!comparing.lessThan(of_a, of_a));
    b->setData(0, QStringLiteral("B"), Qt::DisplayRole);
    a->setData(0, QStringLiteral("a"), Qt::DisplayRole);
    QVERIFY(comparing.lessThan(of_a, of_b));
    comparing.setSortCaseSensitivity(Qt::CaseSensitive);
    QVERIFY(comparing.lessThan(of_b, of_a));
    comparing.setSortLocaleAware(true);
    comparing.setSortCaseSensitivity(Qt::CaseInsensitive);
    QCOMPARE(comparing.lessThan(of_a, of_b),
             QString::localeAwareCompare(QStringLiteral("a"), QStringLiteral("B")) < 0);
    comparing.setSortLocaleAware(false);
    comparing.setSortRole(34);
    QVERIFY(!comparing.lessThan(of_a, of_b));
    a->setUserData(0, 1, 0);
    b->setUserData(0, 2, 0);
    QVERIFY(comparing.lessThan(of_a, of_b));
}

void TestTaviTreeProxyModel::numbersSortAsNumbers()
{
    a->setData(1, 9, Qt::DisplayRole);
    b->setData(1, 10, Qt::DisplayRole);
    model->itemAt(2)->setData(1, QVariant(), Qt::DisplayRole);
    proxy->sort(1);
    QCOMPARE(view->shown(), QStringLiteral("A b(b1 b2) c"));
}

void TestTaviTreeProxyModel::expressionRemovesRows()
{
    proxy->setFilterRegExp(QStringLiteral("^[ac]$"));
    QCOMPARE(proxy->rowCount(), 2);
    QCOMPARE(view->shown(), QStringLiteral("A c"));
    proxy->setFilterRegExp(QRegExp(QStringLiteral("c")));
    QCOMPARE(view->shown(), QStringLiteral("c"));
    proxy->setFilterWildcard(QStringLiteral("A*"));
    QCOMPARE(view->shown(), QStringLiteral("A"));
    proxy->setFilterFixedString(QString());
    QCOMPARE(view->shown(), QStringLiteral("b(b2 b1) A c"));
    model->appendItem(newItem("d"));
    QCOMPARE(proxy->rowCount(), 4);
    QVERIFY(QMetaObject::invokeMethod(proxy, "setFilterFixedString", Q_ARG(QString, QStringLiteral("d"))));
    QCOMPARE(view->shown(), QStringLiteral("d"));
}

void TestTaviTreeProxyModel::expressionInverted()
{
    proxy->setInverted(true);
    proxy->setFilterFixedString(QStringLiteral("b"));
    QCOMPARE(view->shown(), QStringLiteral("A c"));
}

void TestTaviTreeProxyModel::expressionKeepsParentsOfHits()
{
    proxy->setFilterFixedString(QStringLiteral("b1"));
    QCOMPARE(view->shown(), QStringLiteral("b(b1)"));
}

void TestTaviTreeProxyModel::expressionSkipsHiddenColumns()
{
    view->header()->setSectionHidden(1, true);
    proxy->setFilterFixedString(QStringLiteral("3"));
    QCOMPARE(view->shown(), QString());
    view->header()->setSectionHidden(1, false);
    proxy->setFilterFixedString(QStringLiteral("3 "));
    proxy->setFilterFixedString(QStringLiteral("3"));
    QCOMPARE(view->shown(), QStringLiteral("A"));
}

void TestTaviTreeProxyModel::expressionFindsNothingBelowBareParents()
{
    // The columns of children are those of their parent.
    auto *const bare = new TaviTreeItem(nullptr);
    model->appendItem(bare);
    bare->appendChild(newItem("A"));
    const QModelIndex of_bare = model->index(3, 0);
    for (const bool derived : {false, true}) {
        Comparing other;
        TaviTreeProxyModel &asked = derived ? other : *proxy;
        asked.setSourceModel(model.get());
        asked.setFilterFixedString(QStringLiteral("A"));
        QCOMPARE(asked.rowCount(), 1);
        asked.setInverted(true);
        asked.setFilterFixedString(QStringLiteral("A")); // to look again
        QCOMPARE(asked.rowCount(), 3);
        QCOMPARE(asked.rowCount(asked.mapFromSource(of_bare)), 1);
    }
}

void TestTaviTreeProxyModel::expressionKeepsIndexesThatStay()
{
    view->expand(view->indexOf(b));
    const QPersistentModelIndex kept(view->indexOf(b->child(1)));
    proxy->setFilterFixedString(QStringLiteral("b1"));
    QCOMPARE(kept.data().toString(), QStringLiteral("b1"));
    QCOMPARE(kept.row(), 0);
    QVERIFY(view->isExpanded(view->indexOf(b)));
}

void TestTaviTreeProxyModel::expressionThroughTheBaseClass_data()
{
    QTest::addColumn<int>("how");
    QTest::newRow("a text") << 0;
    QTest::newRow("an expression") << 1;
    QTest::newRow("a pattern") << 2;
    QTest::newRow("a property") << 3;
    QTest::newRow("after other settings") << 4;
}

void TestTaviTreeProxyModel::expressionThroughTheBaseClass()
{
    QFETCH(int, how);
    proxy->setSourceModel(nullptr); // not the first source, either
    proxy->setSourceModel(model.get());
    const QAbstractItemModelTester tester(proxy, QAbstractItemModelTester::FailureReportingMode::Fatal);
    view->expand(view->indexOf(b));
    const QPersistentModelIndex kept(view->indexOf(b->child(1)));
    const QPersistentModelIndex doomed(view->indexOf(a));
    QSortFilterProxyModel *const base = proxy;
    switch (how) {
    case 0:
        base->setFilterFixedString(QStringLiteral("b1"));
        break;
    case 1:
        base->setFilterRegExp(QRegExp(QStringLiteral("^b1$")));
        break;
    case 2:
        base->setFilterWildcard(QStringLiteral("b1"));
        break;
    case 3:
        QVERIFY(base->setProperty("filterRegExp", QRegExp(QStringLiteral("b1"))));
        break;
    default:
        base->setFilterKeyColumn(0);
        base->setFilterRole(34);
        base->setDynamicSortFilter(false);
        base->setRecursiveFilteringEnabled(true);
        base->setRecursiveFilteringEnabled(false);
        base->invalidate();
        model->insertItem(0, newItem("front"));
        base->setFilterRegExp(QStringLiteral("b1"));
        base->setDynamicSortFilter(true);
        break;
    }
    QCOMPARE(proxy->rowCount(), 1);
    QCOMPARE(view->shown(), QStringLiteral("b(b1)"));
    QCOMPARE(kept.data().toString(), QStringLiteral("b1"));
    QCOMPARE(kept.row(), 0);
    QVERIFY(!doomed.isValid());
    QVERIFY(view->isExpanded(view->indexOf(b)));
    QCOMPARE(proxy->mapToSource(kept), model->indexFromItem(b->child(1)));
    QVERIFY(!proxy->mapFromSource(model->indexFromItem(a)).isValid());
    base->setFilterFixedString(QString());
    QCOMPARE(proxy->rowCount(), model->rowCount());
}

void TestTaviTreeProxyModel::expressionThroughTheBaseClassIsToldByTheEventLoop()
{
    const QModelIndex of_b = proxy->index(0, 0); // an index of before may be what is asked with
    TaviTreeProxyModel asked;
    asked.setSourceModel(model.get());
    const QModelIndex asked_b = asked.index(0, 0);
    static_cast<QSortFilterProxyModel &>(asked).setFilterFixedString(QStringLiteral("b1"));
    QCOMPARE(asked.rowCount(asked_b), 1);
    QCOMPARE(proxy->rowCount(of_b), 2);
    QSortFilterProxyModel *const base = proxy;
    base->setFilterFixedString(QStringLiteral("A"));
    ModelSignals told(proxy);
    QCoreApplication::processEvents();
    QCOMPARE(told.take(), QStringLiteral("about layout; layout; about- 2-2; - 2-2; about- 0-0; - 0-0"));
    QCOMPARE(view->shown(), QStringLiteral("A"));
    // Also where nobody has asked for rows yet.
    TaviTreeProxyModel unasked;
    unasked.setSourceModel(model.get());
    ModelSignals told_unasked(&unasked);
    static_cast<QSortFilterProxyModel &>(unasked).setFilterFixedString(QStringLiteral("A"));
    QCoreApplication::processEvents();
    QCOMPARE(told_unasked.take(), QStringLiteral("about layout; layout; about- 2-2; - 2-2; about- 0-0; - 0-0"));
    // Set and taken back in one go it leaves everything as it was.
    TaviTreeProxyModel other;
    other.setSourceModel(model.get());
    QSortFilterProxyModel &other_base = other;
    other_base.setFilterFixedString(QStringLiteral("A"));
    other_base.setFilterFixedString(QString());
    ModelSignals told_other(&other);
    QCoreApplication::processEvents();
    QCOMPARE(told_other.take(), QString());
    QCOMPARE(other.rowCount(), 3);
    QCOMPARE(other.index(0, 0).internalPointer(), static_cast<void *>(b));
}

void TestTaviTreeProxyModel::expressionThroughTheBaseClassAfterOneThatFoundNoRows()
{
    TaviTreeModel source({"text"});
    TaviTreeProxyModel straight;
    straight.setSourceModel(&source);
    QSortFilterProxyModel *const base = &straight;
    base->setFilterRegExp(QRegExp("cyan"));
    base->setFilterRegExp(QRegExp());
    source.appendItem(newItem("cyan"));
    source.appendItem(newItem("black"));
    QCOMPARE(straight.rowCount(), 2);
    base->setFilterRegExp(QRegExp("cyan"));
    QCOMPARE(straight.rowCount(), 1);
}

void TestTaviTreeProxyModel::expressionThroughTheBaseClassHoldsForWhatComes_data()
{
    QTest::addColumn<int>("what");
    QTest::addColumn<QString>("shown");
    QTest::newRow("rows") << 0 << QStringLiteral("A Ab");
    QTest::newRow("rows below") << 1 << QStringLiteral("b(Ab) A");
    QTest::newRow("rows go") << 2 << QString();
    QTest::newRow("a text changes") << 3 << QStringLiteral("b(Ab) A");
    QTest::newRow("a reset") << 4 << QStringLiteral("A");
    QTest::newRow("rows in an empty model") << 5 << QStringLiteral("Ab");
    QTest::newRow("a reset of an empty model") << 6 << QStringLiteral("Ab");
    QTest::newRow("a sort") << 7 << QStringLiteral("A");
}

void TestTaviTreeProxyModel::expressionThroughTheBaseClassHoldsForWhatComes()
{
    QFETCH(int, what);
    QFETCH(QString, shown);
    const QAbstractItemModelTester tester(proxy, QAbstractItemModelTester::FailureReportingMode::Fatal);
    if (what == 5 || what == 6) { // empty from the beginning
        proxy->setSourceModel(nullptr);
        model->clear();
        proxy->setSourceModel(model.get());
    }
    QSortFilterProxyModel *const base = proxy;
    base->setFilterRegExp(QStringLiteral("^A"));
    const auto row = [](const char *text) {
        return newItem({QString::fromUtf8(text), QString()});
    };
    switch (what) {
    case 0:
        model->appendItems({row("d"), row("Ab")});
        break;
    case 1:
        model->appendItem(row("Ab"), b);
        break;
    case 2:
        model->removeItem(a);
        break;
    case 3:
        model->setData(model->index(0, 0, model->index(0, 0)), QStringLiteral("Ab"), Qt::EditRole);
        model->setData(model->index(1, 0, model->index(0, 0)), QStringLiteral("Ac"), Qt::EditRole);
        model->setData(model->index(1, 0, model->index(0, 0)), QStringLiteral("b1"), Qt::EditRole);
        break;
    case 4:
        model->resetModel();
        break;
    case 5:
        model->appendItems({row("d"), row("Ab")});
        break;
    case 6:
        a = row("Ab");
        model->appendItems({row("x"), a});
        model->resetModel();
        break;
    default:
        proxy->sort(0);
        break;
    }
    QCOMPARE(view->shown(), shown);
    model->appendItem(row("z"));
    QCOMPARE(view->shown(), shown);
}

void TestTaviTreeProxyModel::otherSettingsThroughTheBaseClassChangeNothing()
{
    // All columns are searched for an expression, and the texts, whatever key column and role say.
    QSortFilterProxyModel *const base = proxy;
    ModelSignals told(proxy);
    base->setFilterKeyColumn(0);
    base->setFilterRole(40);
    base->setFilterCaseSensitivity(Qt::CaseSensitive);
    QCOMPARE(told.take(), QString());
    QCOMPARE(proxy->index(0, 0).internalPointer(), static_cast<void *>(b)); // still one to one
    base->setFilterFixedString(QStringLiteral("3"));
    QCOMPARE(view->shown(), QStringLiteral("A"));
}

void TestTaviTreeProxyModel::anUnknownBaseClassIsLeftAlone()
{
    requireSlotOfBaseClass("_q_sourceReset()");
    proxy->setSourceModel(nullptr);
    proxy->setSourceModel(model.get());
    QCOMPARE(proxy->index(0, 0).internalPointer(), static_cast<void *>(b));
    requireSlotOfBaseClass("_q_noSuchSlot()");
    proxy->setSourceModel(nullptr);
    proxy->setSourceModel(model.get());
    requireSlotOfBaseClass(nullptr);
    const QAbstractItemModelTester tester(proxy, QAbstractItemModelTester::FailureReportingMode::Fatal);
    QVERIFY(proxy->index(0, 0).internalPointer() != static_cast<void *>(b));
    QCOMPARE(view->shown(), QStringLiteral("b(b2 b1) A c"));
    ModelSignals told(proxy);
    model->appendItem(newItem({QStringLiteral("d"), QString()}));
    model->removeItem(a);
    QCOMPARE(told.take(), QStringLiteral("about+ 3-3; + 3-3; about- 1-1; - 1-1"));
    b->emitDataChanged();
    QCOMPARE(told.take(), QStringLiteral("data 0,0-0,0"));
    proxy->filter(QStringLiteral("b1"));
    QCOMPARE(view->shown(), QStringLiteral("b(b1)"));
    proxy->filter(QString());
    proxy->sort(0, Qt::DescendingOrder);
    QCOMPARE(view->shown(), QStringLiteral("d c b(b2 b1)"));
    QSortFilterProxyModel *const base = proxy;
    base->setFilterFixedString(QStringLiteral("b2"));
    QCOMPARE(view->shown(), QStringLiteral("b(b2)"));
    base->setFilterFixedString(QString());
    model->resetModel();
    QCOMPARE(proxy->rowCount(), 3);
}

void TestTaviTreeProxyModel::headerGoesThrough()
{
    for (const bool sorted : {false, true}) {
        if (sorted)
            proxy->sort(0);
        QCOMPARE(proxy->headerData(1, Qt::Horizontal).toString(), QStringLiteral("Number"));
        QVERIFY(!proxy->headerData(0, Qt::Vertical).isValid());
        QVERIFY(!proxy->setHeaderData(0, Qt::Horizontal, QStringLiteral("x")));
    }
}

void TestTaviTreeProxyModel::writingGoesThrough()
{
    QVERIFY(proxy->setData(view->indexOf(a), QStringLiteral("new")));
    QCOMPARE(textOf(a), QStringLiteral("new"));
    QVERIFY(!proxy->insertRows(0, 1));
    QVERIFY(!proxy->removeRows(0, 1));
    QVERIFY(!proxy->insertColumns(0, 1));
    QVERIFY(!proxy->removeColumns(0, 1));
    QCOMPARE(proxy->rowCount(), 3);
    for (const bool sorted : {false, true}) {
        ObligingModel obliging;
        TaviTreeProxyModel other;
        other.setSourceModel(&obliging);
        if (sorted)
            other.sort(0);
        const QModelIndex parent = other.index(0, 0);
        QVERIFY(other.insertRows(0, 2, parent));
        QVERIFY(other.insertColumns(1, 3, parent));
        QVERIFY(other.removeColumns(0, 1, parent));
        QVERIFY(other.setHeaderData(1, Qt::Horizontal, 5, 40));
        QCOMPARE(obliging.asked.join(QLatin1Char(' ')),
                 QStringLiteral("rows+0:2 columns+1:3 columns-0:1 header1:40"));
        QVERIFY(parent.isValid() && obliging.last_parent == obliging.index(0, 0));
        obliging.asked.clear();
        QVERIFY(other.removeRows(0, 1));
        QCOMPARE(obliging.asked, QStringList(QStringLiteral("rows-0:1")));
    }
}

void TestTaviTreeProxyModel::aDragCarriesWhatCanBeWritten()
{
    for (const bool sorted : {false, true}) {
        if (sorted)
            proxy->sort(0);
        const std::unique_ptr<QMimeData> dragged(proxy->mimeData({view->indexOf(a)}));
        QStandardItemModel target;
        QVERIFY(target.dropMimeData(dragged.get(), Qt::CopyAction, 0, 0, QModelIndex()));
        QCOMPARE(target.item(0)->text(), QStringLiteral("A"));
    }
}

void TestTaviTreeProxyModel::anotherSource()
{
    TaviTreeModel other({QStringLiteral("One")}, nullptr);
    other.appendItem(newItem("x"));
    proxy->filter(QStringLiteral("x"));
    QCOMPARE(view->shown(), QString());
    const QPersistentModelIndex kept(view->indexOf(a));
    proxy->setSourceModel(&other);
    QVERIFY(!kept.isValid());
    QCOMPARE(view->shown(), QStringLiteral("x"));
    model->appendItem(newItem("xx")); // of no interest any more
    QCOMPARE(view->shown(), QStringLiteral("x"));
    proxy->sort(0);
    proxy->setSourceModel(model.get());
    QCOMPARE(proxy->rowCount(), 4);
    QCOMPARE(view->shown(), QStringLiteral("xx"));
    // Order and expression hold for the next source, too.
    other.appendItem(newItem("a"));
    proxy->filter(QString());
    proxy->setSourceModel(&other);
    QCOMPARE(view->shown(), QStringLiteral("a x"));
    proxy->sort(-1);
    proxy->setFilterFixedString(QStringLiteral("A"));
    proxy->setSourceModel(model.get());
    QCOMPARE(view->shown(), QStringLiteral("A"));
    proxy->setFilterFixedString(QString());
    proxy->setSourceModel(&other);
    QCOMPARE(view->shown(), QStringLiteral("x a"));
    QVERIFY(!proxy->mapFromSource(model->index(0, 0)).isValid()); // of another source
    proxy->setSourceModel(nullptr);
    QCOMPARE(proxy->rowCount(), 0);
    QVERIFY(!proxy->index(0, 0).isValid());
    proxy->filter(QString());
}

void TestTaviTreeProxyModel::theSourceIsDestroyed()
{
    for (const bool sorted : {false, true}) {
        auto source = std::make_unique<TaviTreeModel>(QList<QVariant>{QStringLiteral("One")}, nullptr);
        source->appendItems({newItem("x"), newItem("y")});
        FilteredView shown(source.get());
        if (sorted)
            shown.proxy->sort(0);
        shown.resize(200, 200);
        shown.show();
        shown.setCurrentIndex(shown.proxy->index(1, 0));
        shown.proxy->filter(QStringLiteral("x"));
        QCoreApplication::processEvents();
        source.reset();
        QCOMPARE(shown.proxy->rowCount(), 0);
        QVERIFY(!shown.currentIndex().isValid());
        shown.grab();
        QCoreApplication::processEvents();
        shown.proxy->filter(QString());
        QCOMPARE(shown.status_updates > 0, true);
    }
}

void TestTaviTreeProxyModel::theProxyMayGoWhenItTellsOfRows_data()
{
    QTest::addColumn<int>("what");
    QTest::newRow("rows come") << 0;
    QTest::newRow("rows go") << 1;
    QTest::newRow("a reset") << 2;
    QTest::newRow("a text changes") << 3;
}

void TestTaviTreeProxyModel::theProxyMayGoWhenItTellsOfRows()
{
    QFETCH(int, what);
    // With rows one to one: the base class goes on in its tables after it has told.
    QPointer<TaviTreeProxyModel> doomed = new TaviTreeProxyModel;
    doomed->setSourceModel(model.get());
    const auto kill = [&] {
        delete doomed;
    };
    connect(doomed, &QAbstractItemModel::rowsInserted, this, kill);
    connect(doomed, &QAbstractItemModel::rowsRemoved, this, kill);
    connect(doomed, &QAbstractItemModel::modelReset, this, kill);
    connect(doomed, &QAbstractItemModel::dataChanged, this, kill);
    switch (what) {
    case 0:
        model->appendItem(newItem("new"));
        break;
    case 1:
        model->removeItem(a);
        break;
    case 2:
        model->resetModel();
        break;
    default:
        a->emitDataChanged();
        break;
    }
    QVERIFY(!doomed);
    QCOMPARE(proxy->rowCount(), model->rowCount());
}

void TestTaviTreeProxyModel::lineEditIsRegistered()
{
    QLineEdit line_edit;
    proxy->addFilterLineEdit(nullptr);
    QVERIFY(!proxy->hasLineEdit(&line_edit));
    proxy->addFilterLineEdit(&line_edit);
    QVERIFY(proxy->hasLineEdit(&line_edit));
    QCOMPARE(line_edit.toolTip(), QStringLiteral("Press Ctrl+Shift+I to invert filter result."));
    line_edit.setText(QStringLiteral("c")); // not connected
    QVERIFY(!proxy->isFiltering());
}

void TestTaviTreeProxyModel::aLineEditThatIsGoneIsForgotten()
{
    // The address of one that is gone may be that of the next one.
    auto line_edit = std::make_unique<QLineEdit>();
    const QLineEdit *const address = line_edit.get();
    proxy->addFilterLineEdit(line_edit.get());
    line_edit.reset();
    QVERIFY(!proxy->hasLineEdit(address));
}

void TestTaviTreeProxyModel::aLineEditMayGoWhenItsShortcutIsPressed()
{
    QPointer<QLineEdit> line_edit = new QLineEdit;
    proxy->addFilterLineEdit(line_edit);
    connect(view.get(), &FilteredView::statusUpdated, this, [&] { delete line_edit; });
    QKeyEvent offer(QEvent::ShortcutOverride, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(proxy->eventFilter(line_edit, &offer));
    QVERIFY(!line_edit);
    QVERIFY(proxy->isInverted());
}

void TestTaviTreeProxyModel::lineEditLook()
{
    QLineEdit line_edit;
    const auto colour = [&](QPalette::ColorRole role, QPalette::ColorGroup group) {
        return line_edit.palette().brush(group, role);
    };
    for (const bool inverted : {true, false}) {
        proxy->setFilterLineEditLook(&line_edit, inverted);
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
            QCOMPARE(colour(line_edit.foregroundRole(), group), QBrush(inverted ? Qt::white : Qt::black));
            QCOMPARE(colour(line_edit.backgroundRole(), group), QBrush(inverted ? Qt::black : Qt::white));
        }
    }
}

void TestTaviTreeProxyModel::shortcutTogglesTheInversion()
{
    QLineEdit line_edit;
    proxy->addFilterLineEdit(&line_edit);
    line_edit.show();
    proxy->filter(QStringLiteral("c"));
    QCOMPARE(view->shown(), QStringLiteral("c"));
    QTest::keyClick(&line_edit, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(line_edit.text().isEmpty());
    // Through the window system a key comes as an offer of a shortcut first.
    QKeyEvent offer(QEvent::ShortcutOverride, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
    const bool inverted = proxy->isInverted();
    QCoreApplication::sendEvent(&line_edit, &offer);
    QCOMPARE(proxy->isInverted(), !inverted);
    QVERIFY(line_edit.text().isEmpty());
    if (!proxy->isInverted())
        QCoreApplication::sendEvent(&line_edit, &offer);
    QCOMPARE(view->shown(), QStringLiteral("b(b2 b1) A"));
    QCOMPARE(line_edit.palette().brush(QPalette::Active, line_edit.backgroundRole()), QBrush(Qt::black));
    QCoreApplication::sendEvent(&line_edit, &offer);
    QCOMPARE(view->shown(), QStringLiteral("c"));
    QCOMPARE(line_edit.palette().brush(QPalette::Active, line_edit.backgroundRole()), QBrush(Qt::white));
}

void TestTaviTreeProxyModel::shortcutNeedsExactlyItsModifiers_data()
{
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<int>("key");
    QTest::addColumn<bool>("taken");
    const int wanted = Qt::ControlModifier | Qt::ShiftModifier;
    QTest::newRow("both") << wanted << int(Qt::Key_I) << true;
    QTest::newRow("on the key pad") << int(wanted | Qt::KeypadModifier) << int(Qt::Key_I) << true;
    QTest::newRow("with Alt") << int(wanted | Qt::AltModifier) << int(Qt::Key_I) << false;
    QTest::newRow("with Meta") << int(wanted | Qt::MetaModifier) << int(Qt::Key_I) << false;
    QTest::newRow("without Shift") << int(Qt::ControlModifier) << int(Qt::Key_I) << false;
    QTest::newRow("without Ctrl") << int(Qt::ShiftModifier) << int(Qt::Key_I) << false;
    QTest::newRow("another key") << wanted << int(Qt::Key_J) << false;
}

void TestTaviTreeProxyModel::shortcutNeedsExactlyItsModifiers()
{
    QFETCH(int, modifiers);
    QFETCH(int, key);
    QFETCH(bool, taken);
    QLineEdit line_edit;
    proxy->addFilterLineEdit(&line_edit);
    QKeyEvent offer(QEvent::ShortcutOverride, key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(proxy->eventFilter(&line_edit, &offer), taken);
    QCOMPARE(proxy->isInverted(), taken);
    QKeyEvent press(QEvent::KeyPress, key, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(proxy->eventFilter(&line_edit, &press), taken);
    QCOMPARE(proxy->isInverted(), taken);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::KeyboardModifiers(modifiers));
    QVERIFY(!proxy->eventFilter(&line_edit, &release));
}

void TestTaviTreeProxyModel::eachLineEditHasItsOwnFlag()
{
    QLineEdit one;
    QLineEdit two;
    proxy->addFilterLineEdit(&one);
    proxy->addFilterLineEdit(&two);
    QKeyEvent offer(QEvent::ShortcutOverride, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(proxy->eventFilter(&one, &offer));
    QVERIFY(proxy->isInverted());
    QVERIFY(proxy->eventFilter(&two, &offer)); // its own flag goes on, so the inversion stays
    QVERIFY(proxy->isInverted());
    QVERIFY(proxy->eventFilter(&one, &offer));
    QVERIFY(!proxy->isInverted());
    QCOMPARE(two.palette().brush(QPalette::Active, two.backgroundRole()), QBrush(Qt::black));
}

void TestTaviTreeProxyModel::foreignEventsPass()
{
    QLineEdit registered;
    QLineEdit stranger;
    proxy->addFilterLineEdit(&registered);
    QKeyEvent offer(QEvent::ShortcutOverride, Qt::Key_I, Qt::ControlModifier | Qt::ShiftModifier);
    QVERIFY(!proxy->eventFilter(nullptr, &offer));
    QVERIFY(!proxy->eventFilter(&registered, nullptr));
    QVERIFY(!proxy->eventFilter(&stranger, &offer));
    QVERIFY(!proxy->eventFilter(view.get(), &offer));
    QEvent other(QEvent::FocusIn);
    QVERIFY(!proxy->eventFilter(&registered, &other));
    QVERIFY(!proxy->isInverted());
}

TAVI_GUI_TEST_MAIN(TestTaviTreeProxyModel)
#include "tst_tavitreeproxymodel.moc"
