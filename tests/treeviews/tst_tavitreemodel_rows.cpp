// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/itemtree.h"
#include "tests/treeviews/modelsignals.h"
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreemodel.h"

#include <QElapsedTimer>
#include <QPointer>

namespace {

/// Deletes another item when it goes.
class VengefulItem : public TaviTreeItem
{
public:
    VengefulItem(TaviTreeItem *parent, TaviTreeItem *item)
        : TaviTreeItem({QStringLiteral("vengeful")}, nullptr), owner(parent), victim(item)
    {}
    ~VengefulItem() override
    {
        owner->takeChild(victim);
        delete victim;
    }
    TaviTreeItem *owner;
    TaviTreeItem *victim;
};

/// Writes down which operations with a parent are called, all of them with null.
class CallsModel : public TaviTreeModel
{
public:
    CallsModel() : TaviTreeModel({QStringLiteral("Name")}, nullptr) {}
    using TaviTreeModel::appendItem;
    using TaviTreeModel::appendItems;
    using TaviTreeModel::insertItem;
    using TaviTreeModel::insertItems;
    using TaviTreeModel::removeAllItems;
    using TaviTreeModel::removeItem;
    using TaviTreeModel::removeItems;
    using TaviTreeModel::takeAllItems;
    using TaviTreeModel::takeItem;
    using TaviTreeModel::takeItems;
    void appendItem(TaviTreeItem *item, TaviTreeItem *parent) override
    {
        note("append", parent);
        TaviTreeModel::appendItem(item, parent);
    }
    void appendItems(QList<TaviTreeItem *> items, TaviTreeItem *parent) override
    {
        note("append+", parent);
        TaviTreeModel::appendItems(items, parent);
    }
    void insertItem(int row, TaviTreeItem *item, TaviTreeItem *parent) override
    {
        note("insert", parent);
        TaviTreeModel::insertItem(row, item, parent);
    }
    void insertItems(int row, const QList<TaviTreeItem *> &items, TaviTreeItem *parent) override
    {
        note("insert+", parent);
        TaviTreeModel::insertItems(row, items, parent);
    }
    void removeItem(TaviTreeItem *item, TaviTreeItem *parent) override
    {
        note("remove", parent);
        TaviTreeModel::removeItem(item, parent);
    }
    void removeItem(int id, TaviTreeItem *parent) override
    {
        note("id", parent);
        TaviTreeModel::removeItem(id, parent);
    }
    void removeItems(QList<TaviTreeItem *> items, TaviTreeItem *parent) override
    {
        note("remove+", parent);
        TaviTreeModel::removeItems(items, parent);
    }
    void removeAllItems() override
    {
        if (clearing)
            made.append(QStringLiteral("clear"));
        TaviTreeModel::removeAllItems();
    }
    void removeAllItems(TaviTreeItem *parent) override
    {
        note("remove*", parent);
        clearing = true; // what comes next is clear()
        TaviTreeModel::removeAllItems(parent);
    }
    TaviTreeItem *takeItem(TaviTreeItem *item, TaviTreeItem *parent) override
    {
        note("take", parent);
        return TaviTreeModel::takeItem(item, parent);
    }
    QList<TaviTreeItem *> takeItems(const QList<TaviTreeItem *> &items, TaviTreeItem *parent) override
    {
        note("take+", parent);
        return TaviTreeModel::takeItems(items, parent);
    }
    QList<TaviTreeItem *> takeAllItems(TaviTreeItem *parent) override
    {
        note("take*", parent);
        return TaviTreeModel::takeAllItems(parent);
    }
    QStringList made;

private:
    void note(const char *name, const TaviTreeItem *parent)
    {
        made.append(QString::fromLatin1(name) + (parent ? QStringLiteral("!") : QString()));
    }
    bool clearing = false;
};

} // namespace

class TestTaviTreeModelRows : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void appendItem();
    void appendItemUnderAParent();
    void appendNullDoesNothing();
    void appendItems();
    void appendItemsLeavesNullsOut();
    void insertItem_data();
    void insertItem();
    void insertItems();
    void insertItemsCountsNullsInTheBracket();
    void insertItemsThatStandInTheListMoves();
    void insertUnderAParent();
    void removeItem();
    void removeItemUnderAParent();
    void removeItemById();
    void removeItemsResets();
    void removeItemsWithAnItemAndItsChild();
    void removeItemsWithRepeatedAndForeignEntries();
    void removeItemsWhoseDestructorsDeleteOthers();
    void removeAllItems();
    void removeAllItemsOfAnEmptyParentBracketsAllTheSame();
    void clearRemovesAll();
    void takeItem();
    void takeItemsKeepsNullsForStrangers();
    void takeItemsKeepsTheOrderOfTheList();
    void takeAllItems();
    void takeAllItemsWithAParentMovesNothing();
    void emptyListsDoNothing();
    void formsWithoutAParentCallThoseWithOne();
    void anItemOfAnotherParentIsNotChecked();
    void resetModel();
    void flattenIsSilent();
    void appendedAgainMovesToTheEnd();
    void manyRowsAreTakenAtOnce();

private:
    QString texts() const { return textsOf(model->allItems()).join(QString()); }

    std::unique_ptr<TaviTreeModel> model;
    std::unique_ptr<ModelSignals> told;
    TaviTreeItem *a = nullptr;
    TaviTreeItem *b = nullptr;
    TaviTreeItem *c = nullptr;
};

void TestTaviTreeModelRows::init()
{
    TaviTest::init();
    told.reset();
    model = std::make_unique<TaviTreeModel>(QList<QVariant>{QStringLiteral("Name")}, nullptr);
    a = newItem("a");
    b = newItem("b");
    c = newItem("c");
    model->appendItems({a, b, c});
    told = std::make_unique<ModelSignals>(model.get());
}

void TestTaviTreeModelRows::appendItem()
{
    model->appendItem(newItem("d"));
    QCOMPARE(told->take(), QStringLiteral("about+ 3-3; + 3-3"));
    QCOMPARE(texts(), QStringLiteral("abcd"));
}

void TestTaviTreeModelRows::appendItemUnderAParent()
{
    model->appendItem(newItem("b1"), b);
    QCOMPARE(told->take(), QStringLiteral("about+ 0-0 in 1; + 0-0 in 1"));
    QCOMPARE(b->childCount(), 1);
    model->appendItem(newItem("b2"), b);
    QCOMPARE(told->take(), QStringLiteral("about+ 1-1 in 1; + 1-1 in 1"));
}

void TestTaviTreeModelRows::appendNullDoesNothing()
{
    model->appendItem(nullptr);
    model->appendItem(nullptr, b);
    model->insertItem(0, nullptr);
    model->removeItem(static_cast<TaviTreeItem *>(nullptr));
    QCOMPARE(model->takeItem(nullptr), nullptr);
    QCOMPARE(told->take(), QString());
}

void TestTaviTreeModelRows::appendItems()
{
    model->appendItems({newItem("d"), newItem("e")});
    QCOMPARE(told->take(), QStringLiteral("about+ 3-4; + 3-4"));
    model->appendItems({newItem("b1"), newItem("b2")}, b);
    QCOMPARE(told->take(), QStringLiteral("about+ 0-1 in 1; + 0-1 in 1"));
    QCOMPARE(texts(), QStringLiteral("abcde"));
}

void TestTaviTreeModelRows::appendItemsLeavesNullsOut()
{
    model->appendItems({nullptr, newItem("d")});
    QCOMPARE(told->take(), QStringLiteral("about+ 3-3; + 3-3"));
    model->appendItems({nullptr, nullptr});
    QCOMPARE(told->take(), QString());
    QCOMPARE(texts(), QStringLiteral("abcd"));
}

void TestTaviTreeModelRows::insertItem_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("place");
    QTest::newRow("negative") << -5 << 0;
    QTest::newRow("front") << 0 << 0;
    QTest::newRow("middle") << 2 << 2;
    QTest::newRow("end") << 3 << 3;
    QTest::newRow("beyond") << 1000 << 3;
}

void TestTaviTreeModelRows::insertItem()
{
    QFETCH(int, row);
    QFETCH(int, place);
    TaviTreeItem *item = newItem("x");
    model->insertItem(row, item);
    QCOMPARE(told->take(), QStringLiteral("about+ %1-%1; + %1-%1").arg(place));
    QCOMPARE(model->itemAt(place), item);
}

void TestTaviTreeModelRows::insertItems()
{
    model->insertItems(1, {newItem("x"), newItem("y")});
    QCOMPARE(told->take(), QStringLiteral("about+ 1-2; + 1-2"));
    QCOMPARE(texts(), QStringLiteral("axybc"));
}

void TestTaviTreeModelRows::insertItemsCountsNullsInTheBracket()
{
    model->insertItems(1, {newItem("x"), nullptr, newItem("y")});
    QCOMPARE(told->take(), QStringLiteral("about+ 1-3; + 1-3"));
    QCOMPARE(texts(), QStringLiteral("axybc"));
}

void TestTaviTreeModelRows::insertItemsThatStandInTheListMoves()
{
    TaviTreeItem *x = newItem("x");
    model->insertItems(1, {c, x, x});
    QCOMPARE(told->take(), QStringLiteral("about+ 1-3; + 1-3"));
    QCOMPARE(texts(), QStringLiteral("acbx"));
    QCOMPARE(x->row(), 3);
    model->resetModel();
}

void TestTaviTreeModelRows::insertUnderAParent()
{
    model->insertItem(7, newItem("b1"), b);
    QCOMPARE(told->take(), QStringLiteral("about+ 0-0 in 1; + 0-0 in 1"));
    model->insertItems(0, {newItem("b2"), newItem("b3")}, b);
    QCOMPARE(told->take(), QStringLiteral("about+ 0-1 in 1; + 0-1 in 1"));
    QCOMPARE(textsOf(b->children()).join(QString()), QStringLiteral("b2b3b1"));
}

void TestTaviTreeModelRows::removeItem()
{
    const QPointer<TaviTreeItem> watched(b);
    bool gone_when_told = false;
    connect(model.get(), &QAbstractItemModel::rowsRemoved, this, [&] { gone_when_told = watched.isNull(); });
    model->removeItem(b);
    QCOMPARE(told->take(), QStringLiteral("about- 1-1; - 1-1"));
    QVERIFY(gone_when_told);
    QCOMPARE(texts(), QStringLiteral("ac"));
}

void TestTaviTreeModelRows::removeItemUnderAParent()
{
    TaviTreeItem *b1 = addItem(b, "b1");
    model->removeItem(b1, b);
    QCOMPARE(told->take(), QStringLiteral("about- 0-0 in 1; - 0-0 in 1"));
    QCOMPARE(b->childCount(), 0);
}

void TestTaviTreeModelRows::removeItemById()
{
    const int deep = addItem(b, "b1")->id();
    model->removeItem(deep); // not on the top level
    QCOMPARE(told->take(), QString());
    model->removeItem(b->id());
    QCOMPARE(told->take(), QStringLiteral("about- 1-1; - 1-1"));
    QCOMPARE(texts(), QStringLiteral("ac"));
}

void TestTaviTreeModelRows::removeItemsResets()
{
    model->removeItems({c, nullptr, a});
    QCOMPARE(told->take(), QStringLiteral("about reset; reset"));
    QCOMPARE(texts(), QStringLiteral("b"));
    addItem(b, "b1");
    addItem(b, "b2");
    model->removeItems({b->child(0)}, b);
    QCOMPARE(told->take(), QStringLiteral("about reset; reset"));
    QCOMPARE(textsOf(b->children()).join(QString()), QStringLiteral("b2"));
}

void TestTaviTreeModelRows::removeItemsWithAnItemAndItsChild()
{
    TaviTreeItem *b1 = addItem(b, "b1");
    model->removeItems({b, b1, c});
    QCOMPARE(texts(), QStringLiteral("a"));
}

void TestTaviTreeModelRows::removeItemsWithRepeatedAndForeignEntries()
{
    TaviTreeItem loose;
    model->removeItems({b, b, &loose, b});
    QCOMPARE(texts(), QStringLiteral("ac"));
}

void TestTaviTreeModelRows::removeItemsWhoseDestructorsDeleteOthers()
{
    auto *vengeful = new VengefulItem(a->parentTreeItem(), c);
    model->appendItem(vengeful);
    model->removeItems({vengeful, c, a});
    QCOMPARE(texts(), QStringLiteral("b"));
}

void TestTaviTreeModelRows::removeAllItems()
{
    addItem(b, "b1");
    model->removeAllItems(b);
    QCOMPARE(told->take(), QStringLiteral("about- 0-0 in 1; - 0-0 in 1"));
    model->removeAllItems();
    QCOMPARE(told->take(), QStringLiteral("about- 0-2; - 0-2"));
    QCOMPARE(model->rowCount(), 0);
}

void TestTaviTreeModelRows::removeAllItemsOfAnEmptyParentBracketsAllTheSame()
{
    model->removeAllItems(b);
    QCOMPARE(told->take(), QStringLiteral("about- 0--1 in 1; - 0--1 in 1"));
}

void TestTaviTreeModelRows::clearRemovesAll()
{
    model->clear();
    QCOMPARE(told->take(), QStringLiteral("about- 0-2; - 0-2"));
    QCOMPARE(model->rowCount(), 0);
}

void TestTaviTreeModelRows::takeItem()
{
    QCOMPARE(model->takeItem(b), b);
    QCOMPARE(told->take(), QStringLiteral("about- 1-1; - 1-1"));
    QCOMPARE(b->parentTreeItem(), nullptr);
    delete b;
    TaviTreeItem *a1 = addItem(a, "a1");
    QCOMPARE(model->takeItem(a1, a), a1);
    QCOMPARE(told->take(), QStringLiteral("about- 0-0 in 0; - 0-0 in 0"));
    delete a1;
}

void TestTaviTreeModelRows::takeItemsKeepsNullsForStrangers()
{
    TaviTreeItem loose;
    const QList<TaviTreeItem *> taken = model->takeItems({&loose, b, nullptr, b});
    QCOMPARE(taken, (QList<TaviTreeItem *>{nullptr, b, nullptr}));
    QCOMPARE(told->take(), QStringLiteral("about reset; reset"));
    QCOMPARE(b->parentTreeItem(), nullptr);
    delete b;
    QCOMPARE(model->takeItems({&loose}), (QList<TaviTreeItem *>{nullptr}));
}

void TestTaviTreeModelRows::takeItemsKeepsTheOrderOfTheList()
{
    const QList<TaviTreeItem *> taken = model->takeItems({c, a});
    QCOMPARE(taken, (QList<TaviTreeItem *>{c, a}));
    QCOMPARE(texts(), QStringLiteral("b"));
    QCOMPARE(b->row(), 0);
    qDeleteAll(taken);
}

void TestTaviTreeModelRows::takeAllItems()
{
    const QList<TaviTreeItem *> taken = model->takeAllItems();
    QCOMPARE(taken, (QList<TaviTreeItem *>{a, b, c}));
    QCOMPARE(told->take(), QStringLiteral("about- 0-2; - 0-2"));
    QCOMPARE(model->rowCount(), 0);
    qDeleteAll(taken);
    QVERIFY(model->takeAllItems().isEmpty());
    QCOMPARE(told->take(), QStringLiteral("about- 0--1; - 0--1"));
}

void TestTaviTreeModelRows::takeAllItemsWithAParentMovesNothing()
{
    addItem(b, "b1");
    const QList<TaviTreeItem *> taken = model->takeAllItems(b);
    QCOMPARE(taken, (QList<TaviTreeItem *>{nullptr, nullptr, nullptr}));
    QCOMPARE(told->take(), QStringLiteral("about- 0-0 in 1; - 0-0 in 1"));
    QCOMPARE(texts(), QStringLiteral("abc"));
    QCOMPARE(b->childCount(), 1);
}

void TestTaviTreeModelRows::emptyListsDoNothing()
{
    model->appendItems({});
    model->insertItems(0, {});
    model->removeItems({});
    QVERIFY(model->takeItems({}).isEmpty());
    QCOMPARE(told->take(), QString());
}

void TestTaviTreeModelRows::formsWithoutAParentCallThoseWithOne()
{
    CallsModel calls;
    TaviTreeItem *const item = newItem("a");
    calls.appendItem(item);
    calls.appendItems({newItem("b")});
    calls.insertItem(0, newItem("c"));
    calls.insertItems(0, {newItem("d")});
    delete calls.takeItem(calls.itemAt(0));
    qDeleteAll(calls.takeItems({calls.itemAt(0)}));
    calls.removeItem(item->id());
    calls.removeItems({calls.itemAt(0)});
    calls.appendItem(newItem("e"));
    calls.removeItem(calls.itemAt(0));
    QVERIFY(calls.takeAllItems().isEmpty());
    calls.removeAllItems();
    calls.clear();
    QCOMPARE(calls.made.join(QLatin1Char(' ')),
             QStringLiteral("append append+ insert insert+ take take+ id remove remove+ append remove take* remove* "
                            "clear remove*"));
}

void TestTaviTreeModelRows::anItemOfAnotherParentIsNotChecked()
{
    TaviTreeItem *b1 = addItem(b, "b1");
    model->removeItem(b1); // told of as a row of the top level, but nothing is removed there
    QCOMPARE(told->take(), QStringLiteral("about- 0-0; - 0-0"));
    QCOMPARE(b->childCount(), 1);
    QCOMPARE(model->takeItem(b1), nullptr);
    QCOMPARE(told->take(), QStringLiteral("about- 0-0; - 0-0"));
    QCOMPARE(texts(), QStringLiteral("abc"));
}

void TestTaviTreeModelRows::resetModel()
{
    model->resetModel();
    QCOMPARE(told->take(), QStringLiteral("about reset; reset"));
}

void TestTaviTreeModelRows::flattenIsSilent()
{
    addItem(addItem(a, "a1"), "a11");
    model->flattenHierarchy();
    QCOMPARE(told->take(), QString());
    QCOMPARE(texts(), QStringLiteral("abca1a11"));
}

void TestTaviTreeModelRows::appendedAgainMovesToTheEnd()
{
    model->appendItem(a);
    QCOMPARE(told->take(), QStringLiteral("about+ 3-3; + 3-3"));
    QCOMPARE(texts(), QStringLiteral("bca"));
    model->resetModel();
}

void TestTaviTreeModelRows::manyRowsAreTakenAtOnce()
{
    // Steps are what would tell linear from quadratic; time only catches the gross: with one search of the list for
    // each row, 50,000 of 100,000 take minutes under the sanitizers.
    QList<TaviTreeItem *> items;
    for (int i = 0; i < 100000; ++i)
        items.append(newItem("x"));
    model->appendItems(items);
    QList<TaviTreeItem *> half;
    for (int i = 0; i < items.size(); i += 2)
        half.append(items.at(i));
    QElapsedTimer clock;
    clock.start();
    const QList<TaviTreeItem *> taken = model->takeItems(half);
    QVERIFY2(clock.elapsed() < 5000, qPrintable(QString::number(clock.elapsed())));
    QCOMPARE(taken, half);
    QCOMPARE(model->rowCount(), 50003);
    QCOMPARE(items.at(99999)->row(), 50002);
    qDeleteAll(taken);
}

TAVI_TEST_MAIN(TestTaviTreeModelRows)
#include "tst_tavitreemodel_rows.moc"
