// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/itemtree.h"
#include "tests/treeviews/modelsignals.h"
#include "treeviews/tavitreeitem.h"
#include "treeviews/tavitreemodel.h"

#include <QIdentityProxyModel>
#include <QMimeData>
#include <QPointer>
#include <QSignalSpy>
#include <QStandardItemModel>

#include <functional>
#include <memory>

/// A value that no stream takes.
struct Unwritable {
    int number = 0;
};
Q_DECLARE_METATYPE(Unwritable)

namespace {

const QList<QVariant> two_columns{QStringLiteral("Name"), QStringLiteral("Value")};

/// Shows only some of its children.
class ShortItem : public TaviTreeItem
{
public:
    ShortItem() : TaviTreeItem({QStringLiteral("short"), 0}, nullptr) {}
    int childCount() const override { return std::min(shown, TaviTreeItem::childCount()); }
    int shown = 1;
};

/// Speaks for another item.
class MirrorItem : public TaviTreeItem
{
public:
    explicit MirrorItem(TaviTreeItem *mirrored)
        : TaviTreeItem({QStringLiteral("mirror"), 0}, nullptr), target(mirrored)
    {}
    QVariant data(int column, int role) const override { return target->data(column, role); }
    TaviTreeItem *target;
};

/// Has a number of its own choice.
class NumberedItem : public TaviTreeItem
{
public:
    explicit NumberedItem(int number) : TaviTreeItem({QStringLiteral("numbered"), 0}, nullptr), own_number(number) {}
    QVariant data(int column, int role) const override
    {
        ++asked;
        return role == 32 ? QVariant(own_number) : TaviTreeItem::data(column, role);
    }
    int own_number;
    mutable int asked = 0;
};

/// Acts when it is written to.
class ActingItem : public TaviTreeItem
{
public:
    ActingItem() : TaviTreeItem({QStringLiteral("acting"), 0}, nullptr) {}
    bool setData(int column, const QVariant &value, int role) override
    {
        const bool taken = TaviTreeItem::setData(column, value, role);
        act();
        return taken;
    }
    std::function<void()> act;
};

/// A model in which every number is raised by a million.
class RaisedModel : public TaviTreeModel
{
public:
    RaisedModel() : TaviTreeModel(two_columns, nullptr) {}
    QVariant data(const QModelIndex &index, int role) const override
    {
        const QVariant value = TaviTreeModel::data(index, role);
        return role == 32 && value.isValid() ? QVariant(value.toInt() + 1000000) : value;
    }
};

/// A model that keeps its second row to itself.
class OneRowModel : public TaviTreeModel
{
public:
    OneRowModel() : TaviTreeModel(two_columns, nullptr) {}
    int rowCount(const QModelIndex &parent = QModelIndex()) const override
    {
        return std::min(1, TaviTreeModel::rowCount(parent));
    }
};

} // namespace

class TestTaviTreeModel : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstModelOfAProcessHasNumberOne();
    void construction();
    void headerIsTheRootsData();
    void setHeaderData();
    void withoutColumnsThereIsNoIndex();
    void indexAndParent();
    void indexOutsideIsInvalid();
    void onlyColumnZeroHasChildren();
    void eachParentDecidesTheColumnsOfItsChildren();
    void flags();
    void dataComesFromTheItem();
    void setDataTells();
    void setDataWithThePresentValueIsNoChange();
    void setDataRefusedTellsNothing();
    void checkStateThroughTheModelTellsTwice();
    void aSlotRemovesTheRowThatIsWritten_data();
    void aSlotRemovesTheRowThatIsWritten();
    void aSlotMovesTheRowThatIsWritten();
    void aProxysIndexServesToo();
    void anIndexWithoutAnItem();
    void anItemThatSpeaksForAnotherAnswersForIt();
    void itemFromIndexOfAForeignModelIsNull();
    void itemFromIdSeesTheTopLevel();
    void indexFromIdSeesTheWholeTree();
    void indexFromIdKnowsOnlyItsOwnTree();
    void indexFromIdLeavesOutWhatIsNotShown();
    void anItemThatSpeaksForAnotherIsFound();
    void anItemsOwnNumberIsFound();
    void aModelsOwnNumbersAreFound();
    void aModelsOwnRowsHold();
    void aPlainTreeIsNotWalked();
    void itemLists();
    void itemChangedTellsColumnZero();
    void changesOfItemsElsewhereStayQuiet();
    void twoModelsHearOfEveryItem();
    void aDragCarriesWhatCanBeWritten();
    void mimeDataCarriesTheModelsNumber();
    void destructionDeletesTheItems();
    void comparerHasAParent();
};

void TestTaviTreeModel::theFirstModelOfAProcessHasNumberOne()
{
    const TaviTreeModel first;
    QCOMPARE(first.modelID(), 1);
    const TaviTreeModel second;
    QCOMPARE(second.modelID(), 2);
}

void TestTaviTreeModel::construction()
{
    QObject owner;
    auto *model = new TaviTreeModel(two_columns, &owner);
    QCOMPARE(model->QObject::parent(), &owner);
    QCOMPARE(model->rowCount(), 0);
    QCOMPARE(model->columnCount(), 2);
    QVERIFY(model->allItems().isEmpty());
    QCOMPARE(model->itemAt(0), nullptr);
    QCOMPARE(model->itemAt(-1), nullptr);
    QCOMPARE(QLatin1String(TaviTreeModel::PROP_MODEL_ID), QLatin1String("TaviTreeModel::model_id"));
}

void TestTaviTreeModel::headerIsTheRootsData()
{
    const TaviTreeModel model(two_columns, nullptr);
    QCOMPARE(model.headerData(1, Qt::Horizontal, Qt::DisplayRole), QVariant(QStringLiteral("Value")));
    QVERIFY(!model.headerData(2, Qt::Horizontal, Qt::DisplayRole).isValid());
    QVERIFY(!model.headerData(0, Qt::Vertical, Qt::DisplayRole).isValid());
}

void TestTaviTreeModel::setHeaderData()
{
    TaviTreeModel model(two_columns, nullptr);
    ModelSignals told(&model);
    model.setHeaderData(1, QStringLiteral("Lab"), Qt::DisplayRole);
    QCOMPARE(told.take(), QStringLiteral("header 1 1-1"));
    QCOMPARE(model.headerData(1, Qt::Horizontal).toString(), QStringLiteral("Lab"));
    model.setHeaderData(0, 5, static_cast<Qt::ItemDataRole>(32)); // refused, and told
    QCOMPARE(told.take(), QStringLiteral("header 1 0-0"));
    model.setHeaderData({QStringLiteral("a"), QStringLiteral("b")});
    QCOMPARE(told.take(), QStringLiteral("header 1 0-1"));
    QCOMPARE(model.headerData(0, Qt::Horizontal).toString(), QStringLiteral("a"));
}

void TestTaviTreeModel::withoutColumnsThereIsNoIndex()
{
    TaviTreeModel model;
    model.appendItem(newItem("a"));
    QCOMPARE(model.rowCount(), 1);
    QCOMPARE(model.columnCount(), 0);
    QVERIFY(!model.index(0, 0).isValid());
    QVERIFY(!model.indexFromItem(model.itemAt(0)).isValid());
    model.setHeaderData({QStringLiteral("Name")});
    QVERIFY(model.index(0, 0).isValid());
    QVERIFY(model.indexFromItem(model.itemAt(0)).isValid());
}

void TestTaviTreeModel::indexAndParent()
{
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeItem *a = newItem({QStringLiteral("a"), QStringLiteral("1")});
    model.appendItem(a);
    TaviTreeItem *b = newItem({QStringLiteral("b"), QStringLiteral("2")});
    model.appendItem(b);
    TaviTreeItem *b1 = newItem({QStringLiteral("b1"), QStringLiteral("3")});
    model.appendItem(b1, b);
    const QModelIndex of_b = model.index(1, 0);
    QCOMPARE(of_b.internalPointer(), static_cast<void *>(b));
    const QModelIndex of_b1 = model.index(0, 1, of_b);
    QCOMPARE(of_b1.internalPointer(), static_cast<void *>(b1));
    QCOMPARE(of_b1.column(), 1);
    QCOMPARE(model.parent(of_b1), of_b);
    QVERIFY(!model.parent(of_b).isValid());
    QVERIFY(!model.parent(QModelIndex()).isValid());
    QCOMPARE(model.rowCount(of_b), 1);
    QCOMPARE(TaviTreeModel::itemFromIndex(of_b1), b1);
}

void TestTaviTreeModel::indexOutsideIsInvalid()
{
    TaviTreeModel model(two_columns, nullptr);
    model.appendItem(newItem("a"));
    for (const auto &[row, column] : {std::pair(-1, 0), {0, -1}, {1, 0}, {0, 2}})
        QVERIFY(!model.index(row, column).isValid());
    QVERIFY(!model.index(0, 0, model.index(0, 1)).isValid());
}

void TestTaviTreeModel::onlyColumnZeroHasChildren()
{
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeItem *a = newItem({QStringLiteral("a"), QStringLiteral("1")});
    model.appendItem(a);
    model.appendItem(newItem("child"), a);
    QCOMPARE(model.rowCount(model.index(0, 0)), 1);
    QCOMPARE(model.rowCount(model.index(0, 1)), 0);
    QVERIFY(!model.hasChildren(model.index(0, 1)));
    QVERIFY(!model.index(0, 0, model.index(0, 1)).isValid());
}

void TestTaviTreeModel::eachParentDecidesTheColumnsOfItsChildren()
{
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeItem *narrow = newItem("one column");
    model.appendItem(narrow);
    model.appendItem(newItem({QStringLiteral("x"), QStringLiteral("y")}), narrow);
    const QModelIndex parent = model.index(0, 0);
    QCOMPARE(model.columnCount(parent), 1);
    QVERIFY(model.index(0, 0, parent).isValid());
    QVERIFY(!model.index(0, 1, parent).isValid());
    QCOMPARE(model.columnCount(), 2);
}

void TestTaviTreeModel::flags()
{
    TaviTreeModel model(two_columns, nullptr);
    QCOMPARE(model.flags(QModelIndex()), Qt::ItemFlags(Qt::ItemIsDropEnabled));
    TaviTreeItem *a = newItem("a");
    a->setEditable(1, true);
    model.appendItem(a);
    QCOMPARE(int(model.flags(model.index(0, 0))), 33);
    QCOMPARE(int(model.flags(model.index(0, 1))), 35);
}

void TestTaviTreeModel::dataComesFromTheItem()
{
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeItem *a = newItem("a");
    model.appendItem(a);
    QCOMPARE(model.data(model.index(0, 0)), QVariant(QStringLiteral("a")));
    QCOMPARE(model.data(model.index(0, 1), 32), QVariant(a->id()));
    QVERIFY(!model.data(QModelIndex()).isValid());
}

void TestTaviTreeModel::setDataTells()
{
    TaviTreeModel model(two_columns, nullptr);
    model.appendItem(newItem("a"));
    ModelSignals told(&model);
    QVERIFY(model.setData(model.index(0, 1), QStringLiteral("new"), Qt::EditRole));
    QCOMPARE(told.take(), QStringLiteral("data 0,1-0,1"));
    QCOMPARE(model.data(model.index(0, 1)).toString(), QStringLiteral("new"));
}

void TestTaviTreeModel::setDataWithThePresentValueIsNoChange()
{
    TaviTreeModel model(two_columns, nullptr);
    model.appendItem(newItem("a"));
    ModelSignals told(&model);
    QVERIFY(!model.setData(model.index(0, 0), QStringLiteral("a"), Qt::EditRole));
    QVERIFY(!model.setData(QModelIndex(), QStringLiteral("a"), Qt::EditRole));
    QCOMPARE(told.take(), QString());
}

void TestTaviTreeModel::setDataRefusedTellsNothing()
{
    TaviTreeModel model(two_columns, nullptr);
    model.appendItem(newItem("a"));
    ModelSignals told(&model);
    QVERIFY(!model.setData(model.index(0, 0), 5, 32));
    QVERIFY(!model.setData(model.index(0, 0), int(Qt::Checked), Qt::CheckStateRole));
    QCOMPARE(told.take(), QString());
}

void TestTaviTreeModel::checkStateThroughTheModelTellsTwice()
{
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeItem *a = newItem({QStringLiteral("a"), QStringLiteral("1")});
    a->setCheckable(1, true);
    model.appendItem(a);
    ModelSignals told(&model);
    QVERIFY(model.setData(model.index(0, 1), int(Qt::Checked), Qt::CheckStateRole));
    QCOMPARE(told.take(), QStringLiteral("data 0,0-0,0; data 0,1-0,1"));
}

void TestTaviTreeModel::aSlotRemovesTheRowThatIsWritten_data()
{
    QTest::addColumn<bool>("by_reset");
    QTest::newRow("with row signals") << false;
    QTest::newRow("with a reset") << true;
}

void TestTaviTreeModel::aSlotRemovesTheRowThatIsWritten()
{
    QFETCH(bool, by_reset);
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeItem *const a = newItem({QStringLiteral("a"), QStringLiteral("1")});
    a->setCheckable(0, true);
    model.appendItems({newItem("b"), a});
    QStringList texts;
    connect(&model, &QAbstractItemModel::dataChanged, this, [&](const QModelIndex &index) {
        texts.append(index.data().toString());
        if (model.rowCount() < 2)
            return;
        if (by_reset)
            model.removeItems({a});
        else
            model.removeItem(a);
    });
    QVERIFY(model.setData(model.index(1, 0), int(Qt::Checked), Qt::CheckStateRole));
    QCOMPARE(texts, QStringList(QStringLiteral("a"))); // what is gone is not told of once more
}

void TestTaviTreeModel::aSlotMovesTheRowThatIsWritten()
{
    TaviTreeModel model(two_columns, nullptr);
    auto *const acting = new ActingItem;
    model.appendItem(acting);
    ModelSignals told(&model);
    acting->act = [&] {
        model.insertItem(0, newItem("above"));
    };
    QVERIFY(model.setData(model.index(0, 1), QStringLiteral("new"), Qt::EditRole));
    QCOMPARE(told.take(), QStringLiteral("about+ 0-0; + 0-0; data 1,1-1,1"));
    acting->act = [&] {
        model.insertItem(0, newItem("more"));
        model.resetModel();
    };
    QVERIFY(model.setData(model.index(1, 1), QStringLiteral("newer"), Qt::EditRole));
    QCOMPARE(told.take(), QStringLiteral("about+ 0-0; + 0-0; about reset; reset; data 2,1-2,1"));
}

void TestTaviTreeModel::aProxysIndexServesToo()
{
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeItem *a = newItem({QStringLiteral("a"), QStringLiteral("1")});
    model.appendItem(a);
    TaviTreeItem *a1 = newItem({QStringLiteral("a1"), QStringLiteral("2")});
    model.appendItem(a1, a);
    QIdentityProxyModel proxy;
    proxy.setSourceModel(&model);
    const QModelIndex through = proxy.index(0, 0);
    QCOMPARE(TaviTreeModel::itemFromIndex(through), a);
    QCOMPARE(model.rowCount(through), 1);
    QCOMPARE(model.columnCount(through), 2);
    QCOMPARE(model.index(0, 1, through).internalPointer(), static_cast<void *>(a1));
    QCOMPARE(model.parent(proxy.index(0, 0, through)), model.index(0, 0));
    QCOMPARE(int(model.flags(through)), 33);
    QCOMPARE(model.itemsFromIndexList({through, proxy.index(0, 1), model.index(0, 0)}),
             (QList<TaviTreeItem *>{a, a, a}));
}

void TestTaviTreeModel::anIndexWithoutAnItem()
{
    TaviTreeModel model(two_columns, nullptr);
    model.appendItem(newItem("a"));
    QStandardItemModel foreign(1, 1);
    const QModelIndex index = foreign.index(0, 0);
    QCOMPARE(int(model.flags(index)), 33);
    QCOMPARE(model.rowCount(index), 0);
    QCOMPARE(model.columnCount(index), 0);
    QVERIFY(!model.index(0, 0, index).isValid());
    QVERIFY(!model.parent(index).isValid());
}

void TestTaviTreeModel::anItemThatSpeaksForAnotherAnswersForIt()
{
    // The item is the one whose address role 33 gives.
    TaviTreeItem original({QStringLiteral("original")}, nullptr);
    original.setEditable(0, true);
    TaviTreeItem *const child = newItem("child");
    original.appendChild(child);
    TaviTreeModel model(two_columns, nullptr);
    model.appendItem(new MirrorItem(&original));
    const QModelIndex of_mirror = model.index(0, 0);
    QCOMPARE(TaviTreeModel::itemFromIndex(of_mirror), &original);
    QCOMPARE(int(model.flags(of_mirror)), 35);
    QCOMPARE(model.rowCount(of_mirror), 1);
    QCOMPARE(model.columnCount(of_mirror), 1);
    QCOMPARE(model.index(0, 0, of_mirror).internalPointer(), static_cast<void *>(child));
    QVERIFY(model.setData(of_mirror, QStringLiteral("new"), Qt::EditRole));
    QCOMPARE(textOf(&original), QStringLiteral("new"));
}

void TestTaviTreeModel::itemFromIndexOfAForeignModelIsNull()
{
    QStandardItemModel foreign(1, 1);
    QCOMPARE(TaviTreeModel::itemFromIndex(foreign.index(0, 0)), nullptr);
    foreign.setData(foreign.index(0, 0), 5, 33);
    QCOMPARE(TaviTreeModel::itemFromIndex(foreign.index(0, 0)), nullptr);
    const TaviTreeModel model;
    QVERIFY(model.itemsFromIndexList({foreign.index(0, 0)}).isEmpty());
}

void TestTaviTreeModel::itemFromIdSeesTheTopLevel()
{
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeItem *a = newItem("a");
    model.appendItem(a);
    TaviTreeItem *a1 = newItem("a1");
    model.appendItem(a1, a);
    QCOMPARE(model.itemFromId(a->id()), a);
    QCOMPARE(model.itemFromId(a1->id()), nullptr);
    QCOMPARE(model.itemFromId(-1), nullptr);
    QCOMPARE(model.itemFromId(0), nullptr);
    QCOMPARE(model.itemFromId(1 << 30), nullptr);
    QVERIFY(model.indexFromId(a1->id()).isValid());
    // Also an item that calls another one its parent is a row of the top level if it is listed there.
    TaviTreeItem other;
    other.appendChild(a);
    QCOMPARE(model.itemFromId(a->id()), a);
    other.takeChild(a);
}

void TestTaviTreeModel::indexFromIdSeesTheWholeTree()
{
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeItem *a = newItem("a");
    TaviTreeItem *b = newItem("b");
    model.appendItems({a, b});
    TaviTreeItem *b1 = newItem("b1");
    model.appendItem(b1, b);
    TaviTreeItem *b11 = newItem("b11");
    model.appendItem(b11, b1);
    QCOMPARE(model.indexFromId(b->id()), model.index(1, 0));
    QCOMPARE(model.indexFromId(b11->id()), model.index(0, 0, model.index(0, 0, model.index(1, 0))));
    QCOMPARE(model.indexFromItem(b11), model.indexFromId(b11->id()));
    QVERIFY(!model.indexFromItem(nullptr).isValid());
    QVERIFY(!model.indexFromId(0).isValid());
    QVERIFY(!model.indexFromId(-5).isValid());
    // The hidden root has a number and no index.
    QVERIFY(!model.indexFromItem(a->topLevelParent()).isValid());
}

void TestTaviTreeModel::indexFromIdKnowsOnlyItsOwnTree()
{
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeModel other(two_columns, nullptr);
    TaviTreeItem *there = newItem("there");
    other.appendItem(there);
    model.appendItem(newItem("here"));
    QVERIFY(!model.indexFromItem(there).isValid());
    TaviTreeItem *taken = other.takeItem(there);
    QVERIFY(!other.indexFromItem(taken).isValid());
    model.appendItem(taken);
    QCOMPARE(model.indexFromItem(taken), model.index(1, 0));
}

void TestTaviTreeModel::indexFromIdLeavesOutWhatIsNotShown()
{
    TaviTreeModel model(two_columns, nullptr);
    auto *part = new ShortItem;
    model.appendItem(part);
    TaviTreeItem *shown = newItem("shown");
    TaviTreeItem *kept = newItem("kept");
    part->appendChild(shown);
    part->appendChild(kept);
    kept->appendChild(newItem("below"));
    QVERIFY(model.indexFromItem(shown).isValid());
    QVERIFY(!model.indexFromItem(kept).isValid());
    QVERIFY(!model.indexFromItem(kept->child(0)).isValid());
    part->shown = 2;
    QVERIFY(model.indexFromItem(kept).isValid());
    // An item without columns shows no children either.
    TaviTreeItem *bare = new TaviTreeItem(nullptr);
    model.appendItem(bare);
    bare->appendChild(newItem("x"));
    QVERIFY(!model.indexFromItem(bare->child(0)).isValid());
}

void TestTaviTreeModel::anItemThatSpeaksForAnotherIsFound()
{
    TaviTreeModel originals(two_columns, nullptr);
    TaviTreeItem *original = newItem("original");
    originals.appendItem(original);
    TaviTreeModel mirrors(two_columns, nullptr);
    mirrors.appendItem(newItem("plain"));
    auto *mirror = new MirrorItem(original);
    mirrors.appendItem(mirror);
    QCOMPARE(mirrors.indexFromId(original->id()), mirrors.index(1, 0));
    QVERIFY(!mirrors.indexFromId(mirror->id()).isValid());
    // So a change of the original is seen where its mirror stands.
    ModelSignals told(&mirrors);
    original->emitDataChanged();
    QCOMPARE(told.take(), QStringLiteral("data 1,0-1,0"));
}

void TestTaviTreeModel::anItemsOwnNumberIsFound()
{
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeItem *parent = newItem({QStringLiteral("p"), QStringLiteral("q")});
    model.appendItem(parent);
    auto *numbered = new NumberedItem(-17);
    model.appendItem(numbered, parent);
    QCOMPARE(model.indexFromId(-17), model.index(0, 0, model.index(0, 0)));
    QVERIFY(!model.indexFromId(numbered->id()).isValid());
    QCOMPARE(model.indexFromId(parent->id()), model.index(0, 0));
}

void TestTaviTreeModel::aModelsOwnNumbersAreFound()
{
    RaisedModel model;
    TaviTreeItem *a = newItem("a");
    model.appendItem(a);
    QCOMPARE(model.indexFromId(a->id() + 1000000), model.index(0, 0));
    QVERIFY(!model.indexFromId(a->id()).isValid());
}

void TestTaviTreeModel::aModelsOwnRowsHold()
{
    OneRowModel model;
    TaviTreeItem *a = newItem("a");
    TaviTreeItem *b = newItem("b");
    model.appendItem(a);
    model.TaviTreeModel::appendItem(b, nullptr);
    QCOMPARE(model.indexFromItem(a), model.index(0, 0));
    QVERIFY(!model.indexFromItem(b).isValid());
    QVERIFY(!model.index(1, 0).isValid());
    QCOMPARE(model.itemAt(0), a);
    QCOMPARE(model.itemAt(1), nullptr);
}

void TestTaviTreeModel::aPlainTreeIsNotWalked()
{
    TaviTreeModel model(two_columns, nullptr);
    auto *witness = new NumberedItem(-1);
    QList<TaviTreeItem *> items;
    for (int i = 0; i < 100; ++i)
        items.append(newItem("x"));
    model.appendItems(items);
    model.appendItem(witness);
    witness->asked = 0;
    for (TaviTreeItem *item : qAsConst(items))
        QVERIFY(model.indexFromItem(item).isValid());
    QCOMPARE(witness->asked, 0);
}

void TestTaviTreeModel::itemLists()
{
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeItem *a = newItem({QStringLiteral("a"), QStringLiteral("1")});
    TaviTreeItem *b = newItem("b");
    model.appendItems({a, b});
    model.appendItem(newItem("child"), a);
    QCOMPARE(model.allItems(), (QList<TaviTreeItem *>{a, b}));
    QCOMPARE(model.itemAt(1), b);
    QCOMPARE(model.itemAt(2), nullptr);
    const QList<QModelIndex> all{model.index(1, 0), model.index(0, 0), model.index(0, 1), model.index(1, 1)};
    QCOMPARE(model.indexesToRows(all, 0), (QList<QModelIndex>{model.index(1, 0), model.index(0, 0)}));
    QCOMPARE(model.itemsFromIndexList(all), (QList<TaviTreeItem *>{b, a, a, b}));
    QCOMPARE(model.variantsFromIndexList(all, Qt::DisplayRole),
             (QList<QVariant>{QStringLiteral("b"), QStringLiteral("a"), QStringLiteral("1")}));
}

void TestTaviTreeModel::itemChangedTellsColumnZero()
{
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeItem *a = newItem("a");
    TaviTreeItem *b = newItem("b");
    model.appendItems({a, b});
    ModelSignals told(&model);
    model.itemChanged(b);
    QCOMPARE(told.take(), QStringLiteral("data 1,0-1,0"));
    model.itemChanged(nullptr);
    QCOMPARE(told.take(), QString());
    b->emitDataChanged();
    QCOMPARE(told.take(), QStringLiteral("data 1,0-1,0"));
}

void TestTaviTreeModel::changesOfItemsElsewhereStayQuiet()
{
    TaviTreeModel model(two_columns, nullptr);
    model.appendItem(newItem("a"));
    ModelSignals told(&model);
    TaviTreeItem loose;
    loose.emitDataChanged();
    model.itemChanged(&loose);
    QCOMPARE(told.take(), QString());
}

void TestTaviTreeModel::twoModelsHearOfEveryItem()
{
    TaviTreeModel one(two_columns, nullptr);
    TaviTreeModel two(two_columns, nullptr);
    TaviTreeItem *a = newItem("a");
    one.appendItem(a);
    ModelSignals told_one(&one);
    ModelSignals told_two(&two);
    a->emitDataChanged();
    QCOMPARE(told_one.take(), QStringLiteral("data 0,0-0,0"));
    QCOMPARE(told_two.take(), QString());
    two.appendItem(one.takeItem(a));
    told_one.take();
    told_two.take();
    a->emitDataChanged();
    QCOMPARE(told_one.take(), QString());
    QCOMPARE(told_two.take(), QStringLiteral("data 0,0-0,0"));
}

void TestTaviTreeModel::aDragCarriesWhatCanBeWritten()
{
    // An address means nothing elsewhere; nor do values of a type without a form in a stream.
    TaviTreeModel model(two_columns, nullptr);
    TaviTreeItem *a = newItem({QStringLiteral("a"), QStringLiteral("1")});
    a->setUserData(0, QStringLiteral("free"), 0);
    a->setUserData(0, QVariant::fromValue(Unwritable{}), 1);
    a->setUserData(0, QVariant::fromValue<QObject *>(&model), 2);
    model.appendItem(a);
    const QMap<int, QVariant> values = model.itemData(model.index(0, 0));
    QCOMPARE(values.keys(), (QList<int>{0, 2, 3, 32, 34}));
    QCOMPARE(values.value(34).toString(), QStringLiteral("free"));
    QVERIFY(model.itemData(QModelIndex()).isEmpty());
    const std::unique_ptr<QMimeData> dragged(model.mimeData({model.index(0, 0), model.index(0, 1)}));
    QStandardItemModel standard;
    QVERIFY(standard.dropMimeData(dragged.get(), Qt::CopyAction, 0, 0, QModelIndex()));
    QCOMPARE(standard.item(0, 0)->text(), QStringLiteral("a"));
    QCOMPARE(standard.item(0, 1)->text(), QStringLiteral("1"));
    QCOMPARE(standard.item(0, 0)->data(34).toString(), QStringLiteral("free"));
}

void TestTaviTreeModel::mimeDataCarriesTheModelsNumber()
{
    const TaviTreeModel model;
    QMimeData data;
    QCOMPARE(model.getMimeDataSourceModelID(&data), -1);
    QCOMPARE(model.getMimeDataSourceModelID(nullptr), -1);
    model.setMimeDataSourceModelID(&data, 17);
    QCOMPARE(model.getMimeDataSourceModelID(&data), 17);
    QCOMPARE(data.property("TaviTreeModel::model_id"), QVariant(17));
    data.setProperty("TaviTreeModel::model_id", QStringLiteral("none"));
    QCOMPARE(model.getMimeDataSourceModelID(&data), -1);
    model.setMimeDataSourceModelID(nullptr, 1);
}

void TestTaviTreeModel::destructionDeletesTheItems()
{
    QPointer<TaviTreeItem> a(newItem("a"));
    QPointer<TaviTreeItem> a1(newItem("a1"));
    {
        TaviTreeModel model(two_columns, nullptr);
        model.appendItem(a);
        model.appendItem(a1, a);
    }
    QVERIFY(a.isNull());
    QVERIFY(a1.isNull());
}

void TestTaviTreeModel::comparerHasAParent()
{
    class Comparer : public TaviModelIndexComparer
    {
    public:
        using TaviModelIndexComparer::TaviModelIndexComparer;
        int compare(const QModelIndex &, const QModelIndex &) override { return 0; }
    };
    QObject owner;
    const auto *comparer = new Comparer(&owner);
    QCOMPARE(comparer->parent(), &owner);
}

TAVI_TEST_MAIN(TestTaviTreeModel)
#include "tst_tavitreemodel.moc"
