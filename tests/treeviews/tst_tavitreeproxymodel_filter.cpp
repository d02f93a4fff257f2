// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/filteredview.h"
#include "tests/treeviews/modelsignals.h"

#include <QSignalSpy>

#include <functional>
#include <memory>

/// A text that is no text: it is asked for its words each time it is looked at.
struct Counted {
    static QString toText(const Counted &counted)
    {
        ++*counted.asked;
        return QStringLiteral("counted");
    }
    int *asked = nullptr;
};
Q_DECLARE_METATYPE(Counted)

namespace {

/// Asks itself for its texts, counts that, and lets a test act in the middle.
class AskedItem : public TaviTreeItem
{
public:
    explicit AskedItem(const char *text) : TaviTreeItem({QString::fromUtf8(text), QString()}, nullptr) {}
    QVariant data(int column, int role) const override
    {
        if (role == Qt::DisplayRole) {
            ++asked;
            if (act)
                act();
            if (column == 0 && answer)
                return answer();
        }
        return TaviTreeItem::data(column, role);
    }
    mutable int asked = 0;
    std::function<void()> act;
    std::function<QString()> answer;
};

/// Hides its children from whoever asks for their number.
class ClosedItem : public TaviTreeItem
{
public:
    ClosedItem() : TaviTreeItem({QStringLiteral("closed"), QString()}, nullptr) {}
    int childCount() const override { return open ? TaviTreeItem::childCount() : 0; }
    bool open = false;
};

/// A model whose texts are longer than those of its items.
class ShoutingModel : public TaviTreeModel
{
public:
    ShoutingModel() : TaviTreeModel({QStringLiteral("Name"), QStringLiteral("Note")}, nullptr) {}
    QVariant data(const QModelIndex &index, int role) const override
    {
        const QVariant value = TaviTreeModel::data(index, role);
        return role == Qt::DisplayRole ? QVariant(value.toString() + QLatin1Char('!')) : value;
    }
};

/// Notes each row that it is asked for, and keeps one in sight whatever it holds.
class NotingProxy : public TaviTreeProxyModel
{
public:
    NotingProxy() : TaviTreeProxyModel(nullptr) {}
    bool filterRow(int row, const QModelIndex &parent) override
    {
        const QString text = index(row, 0, parent).data().toString();
        noted.append(text);
        const bool visible = TaviTreeProxyModel::filterRow(row, parent);
        if (text != QLatin1String("c"))
            return visible;
        static_cast<QTreeView *>(QObject::parent())->setRowHidden(row, parent, false);
        return true;
    }
    QStringList noted;
};

/// A proxy of a class of its own is asked row by row.
class DerivedProxy : public TaviTreeProxyModel
{
public:
    DerivedProxy() : TaviTreeProxyModel(nullptr) {}
};

} // namespace

class TestTaviTreeProxyModelFilter : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void keywords_data();
    void keywords();
    void anEmptyKeywordShowsEveryRow();
    void withRegardToCase();
    void hiddenColumnsAreNotSearched();
    void rowsOfBareParentsHaveNoText();
    void aRunTellsTheStatusOnce();
    void updatesAreOffWhileARunLasts();
    void updatesAreOnAfterEveryChange();
    void filterInAFilterDoesNothing();
    void inversionInARunIsOnlyStored();
    void inversionAtTheEndOfARunIsSeenWithTheNextChange();
    void setInvertedRunsAtOnce();
    void rowsAddedAreFiltered();
    void rowsRemovedTakeTheirParentAlong();
    void aChangedTextIsFiltered();
    void aChangedTextBelowReachesTheParents();
    void textsWrittenSilentlyAreSeenWithTheNextChange();
    void manyTextsWrittenSilentlyAreSeenToo();
    void aColumnHiddenSinceIsSeenWithTheNextChange();
    void caseSensitivitySetSinceIsSeenWithTheNextChange();
    void aResetHidesAgain();
    void aResetOfTheViewHidesAgain();
    void rowsHiddenByOthersAreShownAgain();
    void sortedRowsKeepTheirState();
    void selectionAndExpansionSurvive();
    void noRowSignals();
    void visibleTopLevelRows();
    void itemsThatAnswerForThemselves();
    void itemsThatDependOnOthers();
    void itemsThatCloseUp();
    void modelsThatAnswerForThemselves();
    void overriddenFilterRowIsAskedForEveryRow();
    void oneRowByHand();
    void aChangeAsksOnlyTheRowsThatCanBeAffected();
    void anAnswerRemovesRows();
    void anAnswerAddsRows();
    void anAnswerNeverComesToRest();
    void anAnswerRemovesRowsUnderAnOverriddenFilterRow();
    void aSlotRemovesRowsAtTheChangeOfAnother();
    void aCascadeUnderAKeyword();
    void treesOfAnyDepth_data();
    void treesOfAnyDepth();

private:
    std::unique_ptr<TaviTreeModel> model;
    std::unique_ptr<FilteredView> view;
    TaviTreeProxyModel *proxy = nullptr;
    TaviTreeItem *a = nullptr;
    TaviTreeItem *b = nullptr;
    TaviTreeItem *c = nullptr;
};

namespace {

TaviTreeItem *pair(const char *text, const char *note)
{
    return newItem({QString::fromUtf8(text), QString::fromUtf8(note)});
}

} // namespace

void TestTaviTreeProxyModelFilter::init()
{
    TaviTest::init();
    model = std::make_unique<TaviTreeModel>(QList<QVariant>{QStringLiteral("Name"), QStringLiteral("Note")}, nullptr);
    a = pair("a", "Cyan");
    b = pair("b", "x.y");
    c = pair("c", "");
    model->appendItems({a, b, c});
    model->appendItems({pair("b1", "Magenta"), pair("b2", "")}, b);
    model->appendItems({pair("b11", "deep")}, b->child(0));
    view = std::make_unique<FilteredView>(model.get());
    proxy = view->proxy;
}

void TestTaviTreeProxyModelFilter::cleanup()
{
    view.reset();
    model.reset();
    TaviTest::cleanup();
}

void TestTaviTreeProxyModelFilter::keywords_data()
{
    QTest::addColumn<QString>("keyword");
    QTest::addColumn<bool>("inverted");
    QTest::addColumn<QString>("shown");
    const auto row = [](const char *name, const char *keyword, bool inverted, const char *shown) {
        QTest::newRow(name) << QString::fromUtf8(keyword) << inverted << QString::fromUtf8(shown);
    };
    row("none", "", false, "a b(b1(b11) b2) c");
    row("none, inverted", "", true, "a b(b1(b11) b2) c");
    row("other case, second column", "CYA", false, "a");
    row("a parent without matching children", "x.y", false, "b");
    row("a dot is a dot", "x.", false, "b");
    row("no pattern", ".*", false, "");
    row("a child keeps its parents, not its siblings", "magenta", false, "b(b1)");
    row("a grandchild", "deep", false, "b(b1(b11))");
    row("a parent's hit does not keep its children", "b2", false, "b(b2)");
    row("many levels", "b", false, "b(b1(b11) b2)");
    row("nothing", "nowhere", false, "");
    row("inverted", "b", true, "a c");
    row("inverted, a child that lacks it keeps its parent", "x.y", true, "a b(b1(b11) b2) c");
    row("inverted, all but one child", "b1", true, "a b(b2) c");
    row("inverted, nothing lacks it", "", true, "a b(b1(b11) b2) c");
}

void TestTaviTreeProxyModelFilter::keywords()
{
    QFETCH(QString, keyword);
    QFETCH(bool, inverted);
    QFETCH(QString, shown);
    proxy->setInverted(inverted);
    // From every state to every other: shown, filtered before, sorted, and by asking row by row.
    proxy->filter(keyword);
    QCOMPARE(view->shown(), shown);
    QCOMPARE(proxy->filterString(), keyword);
    QCOMPARE(proxy->isFiltering(), !keyword.isEmpty());
    proxy->filter(QStringLiteral("c"));
    proxy->filter(keyword);
    QCOMPARE(view->shown(), shown);
    proxy->filter(QString());
    QCOMPARE(view->shown(), QStringLiteral("a b(b1(b11) b2) c"));
    proxy->sort(0);
    proxy->filter(keyword);
    QCOMPARE(view->shown(), shown);
    proxy->filter();
    QCOMPARE(view->shown(), shown);
    auto *by_row = new DerivedProxy;
    FilteredView other(model.get(), by_row);
    by_row->setInverted(inverted);
    by_row->filter(keyword);
    QCOMPARE(other.shown(), shown);
}

void TestTaviTreeProxyModelFilter::anEmptyKeywordShowsEveryRow()
{
    proxy->filter(QStringLiteral("nowhere"));
    QCOMPARE(view->shown(), QString());
    proxy->filter(QString());
    QCOMPARE(view->shown(), QStringLiteral("a b(b1(b11) b2) c"));
}

void TestTaviTreeProxyModelFilter::withRegardToCase()
{
    proxy->setFilterCaseSensitivity(Qt::CaseSensitive);
    proxy->filter(QStringLiteral("cyan"));
    QCOMPARE(view->shown(), QString());
    proxy->filter(QStringLiteral("Cyan"));
    QCOMPARE(view->shown(), QStringLiteral("a"));
}

void TestTaviTreeProxyModelFilter::hiddenColumnsAreNotSearched()
{
    view->header()->setSectionHidden(1, true);
    proxy->filter(QStringLiteral("cyan"));
    QCOMPARE(view->shown(), QString());
    view->header()->setSectionHidden(1, false);
    proxy->filter();
    QCOMPARE(view->shown(), QStringLiteral("a"));
}

void TestTaviTreeProxyModelFilter::rowsOfBareParentsHaveNoText()
{
    // The columns of children are those of their parent: below an item without columns nothing can be read.
    auto *bare = new TaviTreeItem(nullptr);
    model->appendItem(bare);
    bare->appendChild(newItem("b"));
    proxy->filter(QStringLiteral("b"));
    QCOMPARE(view->shown(), QStringLiteral("b(b1(b11) b2)"));
    proxy->setInverted(true);
    QCOMPARE(view->shown(), QStringLiteral("a c (?)"));
    // Nor in an empty place.
    proxy->setInverted(false);
    delete a;
    proxy->filter(QStringLiteral("cyan"));
    QCOMPARE(view->shown(), QStringLiteral("?"));
    proxy->filter(QString());
}

void TestTaviTreeProxyModelFilter::aRunTellsTheStatusOnce()
{
    view->status_updates = 0;
    proxy->filter(QStringLiteral("b"));
    QCOMPARE(view->status_updates, 1);
    proxy->filter();
    QCOMPARE(view->status_updates, 2);
    proxy->setInverted(true);
    QCOMPARE(view->status_updates, 3);
    proxy->setInverted(true); // also where nothing changes
    QCOMPARE(view->status_updates, 4);
    view->status_updates = 3;
    model->setData(model->index(0, 0), QStringLiteral("aa"), Qt::EditRole);
    QCOMPARE(view->status_updates, 4);
    proxy->filter(QString());
    model->setData(model->index(0, 0), QStringLiteral("a"), Qt::EditRole);
    QCOMPARE(view->status_updates, 6);
    for (const QString &keyword : {QStringLiteral("b"), QString()}) {
        proxy->filter(keyword);
        view->status_updates = 0;
        model->resetModel();
        QCOMPARE(view->status_updates, 1);
        model->removeItem(model->itemAt(0));
        QCOMPARE(view->status_updates, 2);
    }
}

void TestTaviTreeProxyModelFilter::updatesAreOffWhileARunLasts()
{
    auto *asked = new AskedItem("asked");
    model->appendItem(asked);
    bool enabled = true;
    asked->act = [&] {
        enabled = view->updatesEnabled();
    };
    proxy->filter(QStringLiteral("q"));
    QVERIFY(asked->asked > 0);
    QVERIFY(!enabled);
    QVERIFY(view->updatesEnabled());
}

void TestTaviTreeProxyModelFilter::updatesAreOnAfterEveryChange()
{
    for (const QString &keyword : {QString(), QStringLiteral("b")}) {
        proxy->filter(keyword);
        view->setUpdatesEnabled(false);
        a->emitDataChanged();
        QVERIFY(view->updatesEnabled());
    }
}

void TestTaviTreeProxyModelFilter::filterInAFilterDoesNothing()
{
    auto *asked = new AskedItem("asked");
    model->appendItem(asked);
    asked->act = [&] {
        proxy->filter(QStringLiteral("other"));
        proxy->filter();
        asked->emitDataChanged();
    };
    proxy->filter(QStringLiteral("ask"));
    asked->act = nullptr;
    QCOMPARE(proxy->filterString(), QStringLiteral("ask"));
    QCOMPARE(view->shown(), QStringLiteral("asked"));
}

void TestTaviTreeProxyModelFilter::inversionInARunIsOnlyStored()
{
    auto *asked = new AskedItem("asked");
    model->insertItem(0, asked);
    asked->act = [&] {
        proxy->setInverted(true);
    };
    const int before = view->status_updates;
    proxy->filter(QStringLiteral("deep"));
    QCOMPARE(view->status_updates, before + 1);
    QVERIFY(proxy->isInverted());
    asked->act = nullptr;
    a->emitDataChanged(); // the next run goes by it
    QCOMPARE(view->shown(), QStringLiteral("asked a b(b1 b2) c"));
}

void TestTaviTreeProxyModelFilter::inversionAtTheEndOfARunIsSeenWithTheNextChange()
{
    const auto connection =
        connect(view.get(), &FilteredView::statusUpdated, this, [&] { proxy->setInverted(true); });
    proxy->filter(QStringLiteral("deep"));
    disconnect(connection);
    QCOMPARE(view->shown(), QStringLiteral("b(b1(b11))"));
    c->emitDataChanged();
    QCOMPARE(view->shown(), QStringLiteral("a b(b1 b2) c"));
}

void TestTaviTreeProxyModelFilter::setInvertedRunsAtOnce()
{
    proxy->filter(QStringLiteral("b"));
    proxy->setInverted(true);
    QCOMPARE(view->shown(), QStringLiteral("a c"));
    proxy->setInverted(false);
    QCOMPARE(view->shown(), QStringLiteral("b(b1(b11) b2)"));
}

void TestTaviTreeProxyModelFilter::rowsAddedAreFiltered()
{
    proxy->filter(QStringLiteral("deep"));
    model->appendItem(pair("d", ""));
    model->insertItems(0, {pair("e", "deep"), pair("f", "")});
    QCOMPARE(view->shown(), QStringLiteral("e b(b1(b11))"));
    model->appendItem(pair("c1", "deep"), c); // brings its hidden parent back
    QCOMPARE(view->shown(), QStringLiteral("e b(b1(b11)) c(c1)"));
    TaviTreeItem *branch = pair("g", "");
    branch->appendChild(pair("g1", "deep"));
    branch->appendChild(pair("g2", ""));
    model->appendItem(branch, b->child(0));
    QCOMPARE(view->shown(), QStringLiteral("e b(b1(b11 g(g1))) c(c1)"));
    proxy->filter(QString());
    model->appendItem(pair("h", ""));
    QCOMPARE(view->shown(), QStringLiteral("e f a b(b1(b11 g(g1 g2)) b2) c(c1) d h"));
}

void TestTaviTreeProxyModelFilter::rowsRemovedTakeTheirParentAlong()
{
    proxy->filter(QStringLiteral("deep"));
    model->removeItem(b->child(0)->child(0), b->child(0));
    QCOMPARE(view->shown(), QString());
    QCOMPARE(proxy->visibleTopLevelRows(), 0);
    proxy->filter(QStringLiteral("b2"));
    model->removeAllItems(b);
    QCOMPARE(view->shown(), QString());
}

void TestTaviTreeProxyModelFilter::aChangedTextIsFiltered()
{
    proxy->filter(QStringLiteral("cyan"));
    model->setData(model->index(2, 1), QStringLiteral("light cyan"), Qt::EditRole);
    QCOMPARE(view->shown(), QStringLiteral("a c"));
    model->setData(model->index(0, 1), QStringLiteral("black"), Qt::EditRole);
    QCOMPARE(view->shown(), QStringLiteral("c"));
    QCOMPARE(proxy->visibleTopLevelRows(), 1);
}

void TestTaviTreeProxyModelFilter::aChangedTextBelowReachesTheParents()
{
    proxy->filter(QStringLiteral("deep"));
    const QModelIndex b1 = model->index(0, 0, model->index(1, 0));
    model->setData(model->index(0, 1, b1), QStringLiteral("shallow"), Qt::EditRole);
    QCOMPARE(view->shown(), QString());
    model->setData(model->index(0, 1, b1), QStringLiteral("deeper"), Qt::EditRole);
    QCOMPARE(view->shown(), QStringLiteral("b(b1(b11))"));
    model->setData(model->index(1, 0, model->index(1, 0)), QStringLiteral("deep too"), Qt::EditRole);
    QCOMPARE(view->shown(), QStringLiteral("b(b1(b11) deep too)"));
}

void TestTaviTreeProxyModelFilter::textsWrittenSilentlyAreSeenWithTheNextChange()
{
    proxy->filter(QStringLiteral("cyan"));
    c->setData(0, QStringLiteral("cyan as well"), Qt::DisplayRole);
    b->child(1)->setDisplayData({QStringLiteral("cyan below")});
    a->setData(1, QStringLiteral("black"), Qt::EditRole);
    QCOMPARE(view->shown(), QStringLiteral("a"));
    b->child(0)->emitDataChanged();
    QCOMPARE(view->shown(), QStringLiteral("b(cyan below) cyan as well"));
}

void TestTaviTreeProxyModelFilter::manyTextsWrittenSilentlyAreSeenToo()
{
    QList<TaviTreeItem *> items;
    for (int i = 0; i < 500; ++i)
        items.append(pair("x", ""));
    model->appendItems(items);
    proxy->filter(QStringLiteral("cyan"));
    for (TaviTreeItem *item : qAsConst(items))
        item->setData(1, QStringLiteral("cyan"), Qt::DisplayRole);
    QCOMPARE(proxy->visibleTopLevelRows(), 1);
    b->emitDataChanged();
    QCOMPARE(proxy->visibleTopLevelRows(), 501);
}

void TestTaviTreeProxyModelFilter::aColumnHiddenSinceIsSeenWithTheNextChange()
{
    proxy->filter(QStringLiteral("cyan"));
    view->header()->setSectionHidden(1, true);
    QCOMPARE(view->shown(), QStringLiteral("a"));
    c->emitDataChanged();
    QCOMPARE(view->shown(), QString());
}

void TestTaviTreeProxyModelFilter::caseSensitivitySetSinceIsSeenWithTheNextChange()
{
    proxy->filter(QStringLiteral("cyan"));
    proxy->setFilterCaseSensitivity(Qt::CaseSensitive);
    QCOMPARE(view->shown(), QStringLiteral("a"));
    c->emitDataChanged();
    QCOMPARE(view->shown(), QString());
}

void TestTaviTreeProxyModelFilter::aResetHidesAgain()
{
    for (const bool sorted : {false, true}) {
        if (sorted)
            proxy->sort(0);
        proxy->filter(QStringLiteral("deep"));
        model->resetModel();
        QCOMPARE(view->shown(), QStringLiteral("b(b1(b11))"));
        // Also behind a view that does nothing for it.
        QTreeView plain;
        TaviTreeProxyModel of_plain(&plain);
        plain.setModel(&of_plain);
        of_plain.setSourceModel(model.get());
        if (sorted)
            of_plain.sort(0);
        of_plain.filter(QStringLiteral("deep"));
        model->resetModel();
        QVERIFY(plain.isRowHidden(0, QModelIndex()));
        QVERIFY(!plain.isRowHidden(1, QModelIndex()));
        of_plain.setSourceModel(nullptr);
        of_plain.setSourceModel(model.get());
        QVERIFY(plain.isRowHidden(0, QModelIndex()));
        of_plain.QObject::setParent(nullptr);
        plain.setModel(nullptr);
    }
    model->removeItems({c});
    QCOMPARE(view->shown(), QStringLiteral("b(b1(b11))"));
    QCOMPARE(proxy->visibleTopLevelRows(), 1);
}

void TestTaviTreeProxyModelFilter::aResetOfTheViewHidesAgain()
{
    proxy->filter(QStringLiteral("deep"));
    view->reset();
    QCOMPARE(view->shown(), QStringLiteral("b(b1(b11))"));
}

void TestTaviTreeProxyModelFilter::rowsHiddenByOthersAreShownAgain()
{
    view->setRowHidden(0, QModelIndex(), true);
    QCOMPARE(view->shown(), QStringLiteral("b(b1(b11) b2) c"));
    QCOMPARE(proxy->visibleTopLevelRows(), 2);
    c->emitDataChanged(); // any change has every row looked at
    QCOMPARE(view->shown(), QStringLiteral("a b(b1(b11) b2) c"));
    view->setRowHidden(1, view->indexOf(b), true);
    proxy->filter(QString());
    QCOMPARE(view->shown(), QStringLiteral("a b(b1(b11) b2) c"));
    proxy->filter(QStringLiteral("b2"));
    view->setRowHidden(0, QModelIndex(), false);
    view->setRowHidden(1, view->indexOf(b), true);
    c->emitDataChanged();
    QCOMPARE(view->shown(), QStringLiteral("b(b2)"));
    // Where the view does not tell, the proxy looks for itself.
    QTreeView plain;
    auto *of_plain = new TaviTreeProxyModel(&plain);
    plain.setModel(of_plain);
    of_plain->setSourceModel(model.get());
    plain.setRowHidden(0, QModelIndex(), true);
    QCOMPARE(of_plain->visibleTopLevelRows(), 2);
    c->emitDataChanged();
    QVERIFY(!plain.isRowHidden(0, QModelIndex()));
    QCOMPARE(of_plain->visibleTopLevelRows(), 3);
}

void TestTaviTreeProxyModelFilter::sortedRowsKeepTheirState()
{
    proxy->filter(QStringLiteral("b2"));
    proxy->sort(0, Qt::DescendingOrder);
    QCOMPARE(view->shown(), QStringLiteral("b(b2)"));
    model->appendItem(pair("z b2", ""));
    model->setData(model->index(0, 0), QStringLiteral("b2 and a"), Qt::EditRole);
    QCOMPARE(view->shown(), QStringLiteral("z b2 b2 and a b(b2)"));
    proxy->sort(0, Qt::AscendingOrder);
    proxy->filter(QString());
    QCOMPARE(view->shown(), QStringLiteral("b(b1(b11) b2) b2 and a c z b2"));
}

void TestTaviTreeProxyModelFilter::selectionAndExpansionSurvive()
{
    view->setSelectionMode(QAbstractItemView::MultiSelection);
    view->expand(view->indexOf(b));
    const auto select = [&](TaviTreeItem *item) {
        view->selectionModel()->select(view->indexOf(item), QItemSelectionModel::Select | QItemSelectionModel::Rows);
    };
    select(a);
    select(b->child(1));
    proxy->filter(QStringLiteral("c"));
    model->insertItem(0, pair("new", ""));
    proxy->sort(0, Qt::DescendingOrder);
    model->removeItem(c);
    proxy->filter(QString());
    QVERIFY(view->isExpanded(view->indexOf(b)));
    QVERIFY(view->selectionModel()->isSelected(view->indexOf(a)));
    QVERIFY(view->selectionModel()->isSelected(view->indexOf(b->child(1))));
    QCOMPARE(view->selectionModel()->selectedRows().size(), 2);
}

void TestTaviTreeProxyModelFilter::noRowSignals()
{
    ModelSignals told(proxy);
    proxy->filter(QStringLiteral("b"));
    proxy->setInverted(true);
    proxy->filter(QString());
    QCOMPARE(told.take(), QString());
    QCOMPARE(proxy->rowCount(), 3);
}

void TestTaviTreeProxyModelFilter::visibleTopLevelRows()
{
    QCOMPARE(proxy->visibleTopLevelRows(), 3);
    proxy->filter(QStringLiteral("b"));
    QCOMPARE(proxy->visibleTopLevelRows(), 1);
    model->appendItems({pair("bb", ""), pair("q", "")});
    QCOMPARE(proxy->visibleTopLevelRows(), 2);
    a->setData(0, QStringLiteral("ab"), Qt::DisplayRole);
    a->emitDataChanged();
    QCOMPARE(proxy->visibleTopLevelRows(), 3);
    model->removeItem(b);
    QCOMPARE(proxy->visibleTopLevelRows(), 2);
    proxy->sort(0);
    QCOMPARE(proxy->visibleTopLevelRows(), 2);
    proxy->filterRow(0, QModelIndex());
    QCOMPARE(proxy->visibleTopLevelRows(), 2);
    proxy->filter(QString());
    QCOMPARE(proxy->visibleTopLevelRows(), 4);
    model->removeAllItems();
    QCOMPARE(proxy->visibleTopLevelRows(), 0);
}

void TestTaviTreeProxyModelFilter::itemsThatAnswerForThemselves()
{
    auto *asked = new AskedItem("plain");
    asked->answer = [] {
        return QStringLiteral("Answer");
    };
    model->appendItem(asked, c);
    proxy->filter(QStringLiteral("answer"));
    QCOMPARE(view->shown(), QStringLiteral("c(Answer)"));
    proxy->filter(QStringLiteral("plain"));
    QCOMPARE(view->shown(), QString());
}

void TestTaviTreeProxyModelFilter::itemsThatDependOnOthers()
{
    auto *asked = new AskedItem("sum");
    asked->answer = [&] {
        return textOf(a) + textOf(c);
    };
    model->appendItem(asked);
    proxy->filter(QStringLiteral("zz"));
    QCOMPARE(view->shown(), QString());
    model->setData(model->index(0, 0), QStringLiteral("zz"), Qt::EditRole);
    QCOMPARE(view->shown(), QStringLiteral("zz zzc"));
}

void TestTaviTreeProxyModelFilter::itemsThatCloseUp()
{
    auto *closed = new ClosedItem;
    model->appendItem(closed);
    closed->appendChild(pair("needle", ""));
    proxy->filter(QStringLiteral("needle"));
    QCOMPARE(view->shown(), QString());
    closed->open = true;
    c->emitDataChanged();
    QCOMPARE(view->shown(), QStringLiteral("closed(needle)"));
}

void TestTaviTreeProxyModelFilter::modelsThatAnswerForThemselves()
{
    ShoutingModel shouting;
    shouting.appendItems({newItem("quiet"), newItem("loud!")});
    FilteredView shown(&shouting);
    shown.proxy->filter(QStringLiteral("quiet!"));
    QCOMPARE(shown.shown(), QStringLiteral("quiet!"));
    shown.proxy->filter(QStringLiteral("!!"));
    QCOMPARE(shown.shown(), QStringLiteral("loud!!"));
    shown.proxy->sort(0);
    QCOMPARE(shown.proxy->index(0, 0).data().toString(), QStringLiteral("loud!!"));
}

void TestTaviTreeProxyModelFilter::overriddenFilterRowIsAskedForEveryRow()
{
    auto *noting = new NotingProxy;
    FilteredView shown(model.get(), noting);
    const QStringList all{QStringLiteral("a"),   QStringLiteral("b"),  QStringLiteral("b1"),
                          QStringLiteral("b11"), QStringLiteral("b2"), QStringLiteral("c")};
    noting->noted.clear();
    noting->filter(QStringLiteral("a"));
    QCOMPARE(noting->noted, all);
    QCOMPARE(shown.shown(), QStringLiteral("a b(b1) c"));
    noting->noted.clear();
    c->emitDataChanged();
    QCOMPARE(noting->noted, all);
    noting->noted.clear();
    noting->filter(QString());
    b->emitDataChanged();
    QCOMPARE(noting->noted, all + all);
    noting->noted.clear();
    noting->filter(QStringLiteral("zz"));
    model->resetModel();
    QCOMPARE(shown.shown(), QStringLiteral("c"));
}

void TestTaviTreeProxyModelFilter::oneRowByHand()
{
    proxy->filter(QStringLiteral("cyan"));
    c->setData(1, QStringLiteral("cyan"), Qt::DisplayRole);
    QVERIFY(proxy->filterRow(2, QModelIndex()));
    QCOMPARE(view->shown(), QStringLiteral("a c"));
    QVERIFY(!proxy->filterRow(1, QModelIndex()));
    QVERIFY(!proxy->filterRow(0, view->indexOf(b)));
    QVERIFY(!proxy->filterRow(77, QModelIndex()));
    QVERIFY(!proxy->filterRow(-1, QModelIndex()));
}

void TestTaviTreeProxyModelFilter::aChangeAsksOnlyTheRowsThatCanBeAffected()
{
    static const bool registered = QMetaType::registerConverter<Counted, QString>(&Counted::toText);
    QVERIFY(registered);
    int asked = 0;
    const auto counted = [&] {
        TaviTreeItem *item = pair("x", "");
        item->setData(0, QVariant::fromValue(Counted{&asked}), Qt::DisplayRole);
        return item;
    };
    QList<TaviTreeItem *> items;
    for (int i = 0; i < 1000; ++i)
        items.append(counted());
    model->appendItems(items);
    proxy->filter(QStringLiteral("cyan"));
    QCOMPARE(asked, 1000);
    asked = 0;
    items.at(500)->emitDataChanged();
    QCOMPARE(asked, 1);
    a->emitDataChanged();
    QCOMPARE(asked, 1);
    model->appendItem(counted());
    QCOMPARE(asked, 2);
    model->removeItem(items.at(3));
    QCOMPARE(asked, 2);
    asked = 0;
    items.at(10)->setData(1, QStringLiteral("cyan"), Qt::DisplayRole);
    items.at(11)->emitDataChanged();
    QCOMPARE(asked, 2);
    QCOMPARE(proxy->visibleTopLevelRows(), 2);
}

void TestTaviTreeProxyModelFilter::anAnswerRemovesRows()
{
    for (const bool sorted : {false, true}) {
        if (sorted)
            proxy->sort(0);
        auto *asked = new AskedItem("asked deep");
        model->insertItem(1, asked);
        TaviTreeItem *doomed = pair("doomed deep", "");
        model->appendItem(doomed);
        TaviTreeItem *first = pair("first deep", "");
        model->insertItem(0, first);
        bool done = false;
        asked->act = [&] {
            if (done)
                return;
            done = true;
            model->removeItem(first);
            model->removeItem(doomed);
            model->removeAllItems(b);
        };
        proxy->filter(QStringLiteral("deep"));
        QCOMPARE(view->shown(), QStringLiteral("asked deep"));
        asked->act = [&] {
            model->takeAllItems();
        };
        const QList<TaviTreeItem *> all = model->allItems();
        proxy->filter(QStringLiteral("de"));
        QCOMPARE(view->shown(), QString());
        asked->act = nullptr;
        model->appendItems(all);
        model->removeItem(asked);
        proxy->filter(QString());
        model->appendItem(pair("b1", "deep"), b);
        QCOMPARE(view->shown(), QStringLiteral("a b(b1) c"));
    }
}

void TestTaviTreeProxyModelFilter::anAnswerAddsRows()
{
    auto *asked = new AskedItem("asked");
    model->insertItem(0, asked);
    bool done = false;
    asked->act = [&] {
        if (done)
            return;
        done = true;
        model->insertItem(0, pair("new deep", ""));
        model->appendItem(pair("last deep", ""), c);
    };
    proxy->filter(QStringLiteral("deep"));
    QCOMPARE(view->shown(), QStringLiteral("new deep b(b1(b11)) c(last deep)"));
}

void TestTaviTreeProxyModelFilter::anAnswerNeverComesToRest()
{
    auto *asked = new AskedItem("asked");
    model->appendItem(asked);
    int left = 100;
    asked->act = [&] {
        if (--left > 0)
            model->insertItem(0, pair("grown", ""));
    };
    proxy->filter(QStringLiteral("asked"));
    QVERIFY(view->shown().endsWith(QStringLiteral("asked")));
    asked->act = nullptr;
    proxy->filter();
    QCOMPARE(view->shown(), QStringLiteral("asked"));
}

void TestTaviTreeProxyModelFilter::anAnswerRemovesRowsUnderAnOverriddenFilterRow()
{
    auto *noting = new DerivedProxy;
    FilteredView shown(model.get(), noting);
    auto *asked = new AskedItem("asked");
    model->appendItem(asked, b);
    asked->act = [&] {
        asked->act = nullptr;
        model->removeItem(a);
        model->removeItem(c);
        delete model->takeItem(b->child(0), b);
    };
    noting->filter(QStringLiteral("ask"));
    QCOMPARE(shown.shown(), QStringLiteral("b(asked)"));
}

void TestTaviTreeProxyModelFilter::aSlotRemovesRowsAtTheChangeOfAnother()
{
    proxy->filter(QStringLiteral("b"));
    connect(proxy, &QAbstractItemModel::dataChanged, this, [&] {
        if (model->rowCount() == 3)
            model->removeItem(b);
    });
    connect(model.get(), &QAbstractItemModel::dataChanged, this, [&] {
        if (model->rowCount() == 2)
            model->removeItem(c);
    });
    a->emitDataChanged();
    QCOMPARE(model->rowCount(), 1);
    QCOMPARE(view->shown(), QString());
    proxy->filter(QString());
    QCOMPARE(view->shown(), QStringLiteral("a"));
}

void TestTaviTreeProxyModelFilter::aCascadeUnderAKeyword()
{
    proxy->filter(QStringLiteral("b1"));
    for (TaviTreeItem *item : {b, b->child(0), b->child(1)})
        item->setCheckable(0, true, true);
    const QSignalSpy changes(proxy, &QAbstractItemModel::dataChanged);
    QVERIFY(b->setCheckState(0, Qt::Checked));
    QCOMPARE(changes.size(), 3);
    QCOMPARE(view->shown(), QStringLiteral("b(b1(b11))"));
    // A slot that removes what the cascade has yet to reach.
    connect(proxy, &QAbstractItemModel::dataChanged, this, [&](const QModelIndex &index) {
        if (index == view->indexOf(b) && b->childCount() == 2)
            model->removeItem(b->child(1), b);
    });
    QVERIFY(b->setCheckState(0, Qt::Unchecked));
    QCOMPARE(b->childCount(), 1);
    QCOMPARE(b->child(0)->checkState(0), Qt::Unchecked);
}

void TestTaviTreeProxyModelFilter::treesOfAnyDepth_data()
{
    QTest::addColumn<bool>("sorted");
    QTest::newRow("straight") << false;
    QTest::newRow("sorted") << true;
}

void TestTaviTreeProxyModelFilter::treesOfAnyDepth()
{
    QFETCH(bool, sorted);
    TaviTreeItem *const top = pair("top", "");
    TaviTreeItem *deepest = top;
    for (int depth = 0; depth < 50000; ++depth) {
        TaviTreeItem *const next = pair("x", "");
        deepest->appendChild(next);
        deepest = next;
    }
    deepest->setData(0, QStringLiteral("needle"), Qt::DisplayRole);
    model->appendItem(top);
    if (sorted)
        proxy->sort(0);
    const int row = 3; // with and without
    proxy->filter(QStringLiteral("needle"));
    QCOMPARE(proxy->visibleTopLevelRows(), 1);
    QVERIFY(!view->isRowHidden(row, QModelIndex()));
    QVERIFY(proxy->filterRow(row, QModelIndex()));
    QCOMPARE(model->indexFromItem(deepest).data().toString(), QStringLiteral("needle"));
    deepest->setData(0, QStringLiteral("hay"), Qt::DisplayRole);
    proxy->filter();
    QCOMPARE(proxy->visibleTopLevelRows(), 0);
    QVERIFY(!proxy->filterRow(row, QModelIndex()));
    proxy->filter(QString());
    // An expression asks for all rows below one, too.
    TaviTreeModel alone({QStringLiteral("Name")}, nullptr);
    alone.appendItem(model->takeItem(top));
    TaviTreeProxyModel of_alone;
    of_alone.setSourceModel(&alone);
    of_alone.setFilterFixedString(QStringLiteral("hay"));
    QCOMPARE(of_alone.rowCount(), 1);
    of_alone.setFilterFixedString(QStringLiteral("needle"));
    QCOMPARE(of_alone.rowCount(), 0);
}

TAVI_GUI_TEST_MAIN(TestTaviTreeProxyModelFilter)
#include "tst_tavitreeproxymodel_filter.moc"
