// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/itemtree.h"
#include "treeviews/tavitreeitem.h"

#include <QPointer>
#include <QSignalSpy>
#include <QThread>
#include <QTranslator>

#include <functional>
#include <limits>
#include <memory>
#include <utility>

namespace {

/// Counts how many of it are alive.
class CountedItem : public TaviTreeItem
{
public:
    explicit CountedItem(const char *text) : TaviTreeItem({QString::fromUtf8(text)}, nullptr) { ++alive; }
    ~CountedItem() override
    {
        --alive;
        order.append(textOf(this));
    }

    static int alive;
    static QStringList order;
};
int CountedItem::alive = 0;
QStringList CountedItem::order;

/// Writes down what it is asked for.
class AskedItem : public TaviTreeItem
{
public:
    AskedItem() : TaviTreeItem(nullptr) {}
    QVariant data(int column, int role) const override
    {
        read.append(QStringLiteral("%1:%2").arg(column).arg(role));
        return TaviTreeItem::data(column, role);
    }
    bool setData(int column, const QVariant &value, int role) override
    {
        written.append(QStringLiteral("%1:%2").arg(column).arg(role));
        return TaviTreeItem::setData(column, value, role);
    }
    QString getUniqueName(int column, const QString &name, int field_width, const QChar &fill) const override
    {
        return QStringLiteral("%1 %2 %3 %4").arg(column).arg(name).arg(field_width).arg(fill);
    }
    mutable QStringList read;
    QStringList written;
};

/// Deletes others when it goes.
class RevengefulItem : public TaviTreeItem
{
public:
    explicit RevengefulItem(std::function<void()> revenge) : TaviTreeItem(nullptr), last_act(std::move(revenge)) {}
    ~RevengefulItem() override { last_act(); }

private:
    std::function<void()> last_act;
};

/// The deepest of a chain of @a count items below @a root.
TaviTreeItem *addChain(TaviTreeItem *root, int count)
{
    for (; count > 0; --count) {
        auto *const next = new TaviTreeItem;
        root->appendChild(next);
        root = next;
    }
    return root;
}

class NumberRecorder : public QObject
{
    Q_OBJECT

public:
    QList<int> numbers;

public Q_SLOTS:
    void changed(int id) { numbers.append(id); }
};

class OneTranslation : public QTranslator
{
public:
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return qstrcmp(context, "TaviTreeItem") == 0 && qstrcmp(source, "Untitled") == 0
                   ? QStringLiteral("Ohne Titel")
                   : QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class TestTaviTreeItem : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void theFirstItemOfAProcessHasNumberOne();
    void numbersRiseAndAreNeverUsedAgain();
    void construction();
    void displayDataFillColumnsFromZero();
    void displayDataLeaveTheRestAlone();
    void roles_data();
    void roles();
    void toolTipIsTheTextWhateverIsStored();
    void editRoleIsTheText();
    void numberAndAddressCannotBeWritten();
    void userDataSlotsBeginAtThirtyFour();
    void rowDefaultIsReadWhereAColumnHasNothing();
    void columnCountCountsEveryColumnOnce();
    void columnCountNeverShrinks();
    void valuesAreKeptByColumnsBelowTheRowDefault();
    void derivedClassesAreAsked();
    void foregroundOfRowAndColumn();
    void foregroundOfAnythingElseIsADefaultBrush();
    void flags_data();
    void flags();
    void columnFlagsIgnoreNegativeColumns();
    void checkableTellsOfThreeStates();
    void flagHelpersWorkOnValues();
    void constructorsDoNotAppend();
    void appendedTwiceMovesToTheEnd();
    void appendDoesNotTakeFromAnotherParent();
    void insertAtAnyRow_data();
    void insertAtAnyRow();
    void insertWithinTheSameListCountsWithoutTheItem();
    void takeAndRemove();
    void nullChildrenAreIgnored();
    void childOutsideTheRowsIsNull();
    void childrenAreDeletedFirstToLast();
    void aChainOfAnyDepthIsDeleted();
    void whoeverDestroysADeepTreeFindsItWhole();
    void anItemDeletedInPlaceLeavesAnEmptyPlace();
    void rowFollowsEveryChange();
    void rowIsRightAfterAnyChanges();
    void siblings();
    void topLevelParent();
    void flattenHierarchy();
    void flattenUnderAnotherRoot();
    void aChainOfAnyDepthIsFlattened();
    void flatteningLeavesEmptyPlaces();
    void uniqueNames();
    void uniqueNameHasAWidth();
    void uniqueNameOfARootIsTheName();
    void uniqueNameKeepsPercentSigns();
    void newNameBase();
    void newNameBaseIsTranslated();
    void changesReachSubscribers();
    void subscribersInOtherThreadsHearLater();
    void subscribingWithNullDoesNothing();
    void mapperEmitsAnyNumber();
};

void TestTaviTreeItem::theFirstItemOfAProcessHasNumberOne()
{
    const TaviTreeItem item;
    QCOMPARE(item.id(), 1);
}

void TestTaviTreeItem::numbersRiseAndAreNeverUsedAgain()
{
    auto first = std::make_unique<TaviTreeItem>();
    const int number = first->id();
    first.reset();
    const TaviTreeItem second;
    const TaviTreeItem third;
    QCOMPARE(second.id(), number + 1);
    QCOMPARE(third.id(), number + 2);
}

void TestTaviTreeItem::construction()
{
    TaviTreeItem item;
    QCOMPARE(item.columnCount(), 0);
    QCOMPARE(item.childCount(), 0);
    QCOMPARE(int(item.flags(0)), 33);
    QCOMPARE(int(item.flags(-1)), 33);
    QVERIFY(item.isEnabled());
    QVERIFY(item.isSelectable());
    QVERIFY(!item.isDraggable());
    QVERIFY(!item.isDroppable());
    QVERIFY(!item.isEditable(0));
    QVERIFY(!item.isCheckable(0));
    QVERIFY(!item.columnHasFlags(0));
    QCOMPARE(item.checkState(0), Qt::Unchecked);
    QCOMPARE(item.newNameBase(), QStringLiteral("Untitled"));
    QCOMPARE(item.parentTreeItem(), nullptr);
    QCOMPARE(item.topLevelParent(), &item);
    QCOMPARE(item.row(), 0);
    QCOMPARE(item.nextSibling(), nullptr);
    QCOMPARE(item.prevSibling(), nullptr);
    QVERIFY(item.children().isEmpty());
    QVERIFY(!item.data(0, Qt::DisplayRole).isValid());
    QCOMPARE(item.QObject::parent(), nullptr);
}

void TestTaviTreeItem::displayDataFillColumnsFromZero()
{
    const TaviTreeItem item({QStringLiteral("a"), 7, QVariant()}, nullptr);
    QCOMPARE(item.columnCount(), 3);
    QCOMPARE(item.data(0, Qt::DisplayRole), QVariant(QStringLiteral("a")));
    QCOMPARE(item.data(1, Qt::DisplayRole), QVariant(7));
    QVERIFY(!item.data(2, Qt::DisplayRole).isValid());
    QVERIFY(!item.data(3, Qt::DisplayRole).isValid());
}

void TestTaviTreeItem::displayDataLeaveTheRestAlone()
{
    TaviTreeItem item({1, 2, 3}, nullptr);
    item.setData(0, QStringLiteral("icon"), Qt::DecorationRole);
    item.setDisplayData({10});
    QCOMPARE(item.data(0, Qt::DisplayRole).toInt(), 10);
    QCOMPARE(item.data(2, Qt::DisplayRole).toInt(), 3);
    QCOMPARE(item.data(0, Qt::DecorationRole).toString(), QStringLiteral("icon"));
}

void TestTaviTreeItem::roles_data()
{
    QTest::addColumn<int>("column");
    QTest::addColumn<int>("role");
    const int roles[] = {Qt::DisplayRole,
                         Qt::DecorationRole,
                         Qt::StatusTipRole,
                         Qt::FontRole,
                         Qt::BackgroundRole,
                         Qt::ForegroundRole,
                         Qt::SizeHintRole,
                         34,
                         1000,
                         -5};
    for (const int column : {-1, 0, 3, 100000}) {
        for (const int role : roles)
            QTest::addRow("column %d role %d", column, role) << column << role;
    }
}

void TestTaviTreeItem::roles()
{
    QFETCH(int, column);
    QFETCH(int, role);
    TaviTreeItem item;
    QVERIFY(item.setData(column, 41, role));
    QVERIFY(item.setData(column, 42, role));
    QCOMPARE(item.data(column, role), QVariant(42));
    QCOMPARE(item.columnCount(), 1);
    QVERIFY(!item.data(column, role + 50).isValid());
}

void TestTaviTreeItem::toolTipIsTheTextWhateverIsStored()
{
    TaviTreeItem item({QStringLiteral("text")}, nullptr);
    QCOMPARE(item.data(0, Qt::ToolTipRole).toString(), QStringLiteral("text"));
    QVERIFY(item.setData(0, QStringLiteral("x"), Qt::ToolTipRole));
    QCOMPARE(item.data(0, Qt::ToolTipRole).toString(), QStringLiteral("text"));
    QVERIFY(item.setData(5, QStringLiteral("x"), Qt::ToolTipRole));
    QVERIFY(!item.data(5, Qt::ToolTipRole).isValid());
    QCOMPARE(item.columnCount(), 2);
}

void TestTaviTreeItem::editRoleIsTheText()
{
    TaviTreeItem item;
    QVERIFY(item.setData(1, QStringLiteral("typed"), Qt::EditRole));
    QCOMPARE(item.data(1, Qt::DisplayRole).toString(), QStringLiteral("typed"));
    QCOMPARE(item.data(1, Qt::EditRole).toString(), QStringLiteral("typed"));
}

void TestTaviTreeItem::numberAndAddressCannotBeWritten()
{
    TaviTreeItem item;
    QVERIFY(!item.setData(0, 5, 32));
    QVERIFY(!item.setData(0, 5, 33));
    QCOMPARE(item.columnCount(), 0);
    QCOMPARE(item.data(0, 32), QVariant(item.id()));
    const QVariant address = item.data(7, 33);
    QCOMPARE(address.userType(), int(QMetaType::VoidStar));
    QCOMPARE(address.value<void *>(), static_cast<void *>(&item));
}

void TestTaviTreeItem::userDataSlotsBeginAtThirtyFour()
{
    QCOMPARE(TaviTreeItem::getUserDataRole(0), 34);
    QCOMPARE(TaviTreeItem::getUserDataRole(8), 42);
    QCOMPARE(TaviTreeItem::getUserDataRole(0x7fffffffU), std::numeric_limits<int>::min() + 33); // no overflow
    TaviTreeItem item;
    QVERIFY(item.setUserData(1, QStringLiteral("free"), 3));
    QCOMPARE(item.userData(1, 3).toString(), QStringLiteral("free"));
    QCOMPARE(item.data(1, 37).toString(), QStringLiteral("free"));
}

void TestTaviTreeItem::rowDefaultIsReadWhereAColumnHasNothing()
{
    TaviTreeItem item({QStringLiteral("own")}, nullptr);
    item.setData(-1, QStringLiteral("default"), Qt::DisplayRole);
    item.setData(-1, QStringLiteral("font"), Qt::FontRole);
    QCOMPARE(item.data(0, Qt::DisplayRole).toString(), QStringLiteral("own"));
    QCOMPARE(item.data(9, Qt::DisplayRole).toString(), QStringLiteral("default"));
    QCOMPARE(item.data(9, Qt::ToolTipRole).toString(), QStringLiteral("default"));
    QCOMPARE(item.data(0, Qt::FontRole).toString(), QStringLiteral("font"));
    QCOMPARE(item.data(-1, Qt::FontRole).toString(), QStringLiteral("font"));
    // A stored value counts even if it is an invalid one.
    item.setData(0, QVariant(), Qt::FontRole);
    QVERIFY(!item.data(0, Qt::FontRole).isValid());
}

void TestTaviTreeItem::columnCountCountsEveryColumnOnce()
{
    TaviTreeItem item;
    item.setForeground(QBrush(Qt::red));
    QCOMPARE(item.columnCount(), 1);
    for (const int column : {4, 0, 4, 2}) {
        for (const int role : {0, 5, 1, 40})
            item.setData(column, role, role);
    }
    QCOMPARE(item.columnCount(), 4);
    item.setEditable(7, true); // flags are no values
    QCOMPARE(item.columnCount(), 4);
}

void TestTaviTreeItem::columnCountNeverShrinks()
{
    TaviTreeItem item({1, 2}, nullptr);
    item.setData(1, QVariant(), Qt::DisplayRole);
    item.setDisplayData({});
    QCOMPARE(item.columnCount(), 2);
}

void TestTaviTreeItem::valuesAreKeptByColumnsBelowTheRowDefault()
{
    TaviTreeItem item;
    item.setData(-1, QStringLiteral("default"), Qt::DisplayRole);
    item.setData(-3, QStringLiteral("own"), Qt::DisplayRole);
    item.setData(-4, QStringLiteral("font"), Qt::FontRole);
    QCOMPARE(item.data(-3, Qt::DisplayRole).toString(), QStringLiteral("own"));
    QCOMPARE(item.data(-2, Qt::DisplayRole).toString(), QStringLiteral("default"));
    QCOMPARE(item.data(-4, Qt::DisplayRole).toString(), QStringLiteral("default"));
    QCOMPARE(item.data(0, Qt::DisplayRole).toString(), QStringLiteral("default"));
    QVERIFY(!item.data(-3, Qt::FontRole).isValid());
    QCOMPARE(item.columnCount(), 3);
}

void TestTaviTreeItem::derivedClassesAreAsked()
{
    TaviTreeItem root;
    auto *const asked = new AskedItem;
    root.appendChild(asked);
    asked->setUserData(3, 7, 2);
    asked->setForeground(QBrush(Qt::red));
    asked->setForeground(4, QBrush(Qt::green));
    QCOMPARE(asked->written, (QStringList{QStringLiteral("3:36"), QStringLiteral("-1:9"), QStringLiteral("4:9")}));
    asked->userData(3, 2);
    asked->foreground();
    asked->foreground(4);
    QCOMPARE(asked->read, (QStringList{QStringLiteral("3:36"), QStringLiteral("-1:9"), QStringLiteral("4:9")}));
    asked->read.clear();
    QVERIFY(!addItem(&root, "new")->isNameTakenBySibling(1, QStringLiteral("x")));
    QCOMPARE(asked->read, QStringList(QStringLiteral("1:0")));
    QCOMPARE(asked->getUniqueNewName(5, 3, u'x'), QStringLiteral("5 Untitled 3 x"));
}

void TestTaviTreeItem::foregroundOfRowAndColumn()
{
    TaviTreeItem item;
    item.setForeground(QBrush(Qt::red));
    item.setForeground(2, QBrush(Qt::green));
    QCOMPARE(item.foreground(), QBrush(Qt::red));
    QCOMPARE(item.foreground(0), QBrush(Qt::red));
    QCOMPARE(item.foreground(2), QBrush(Qt::green));
    item.setForeground(0, QBrush(Qt::blue));
    QCOMPARE(item.foreground(0), QBrush(Qt::blue));
    QCOMPARE(item.foreground(), QBrush(Qt::red));
    QCOMPARE(item.data(-1, Qt::ForegroundRole).value<QBrush>(), QBrush(Qt::red));
}

void TestTaviTreeItem::foregroundOfAnythingElseIsADefaultBrush()
{
    TaviTreeItem item;
    QCOMPARE(item.foreground(), QBrush());
    item.setData(0, QStringLiteral("red"), Qt::ForegroundRole);
    QCOMPARE(item.foreground(0), QBrush());
}

void TestTaviTreeItem::flags_data()
{
    QTest::addColumn<int>("bit");
    QTest::newRow("selectable") << 1;
    QTest::newRow("editable") << 2;
    QTest::newRow("draggable") << 4;
    QTest::newRow("droppable") << 8;
    QTest::newRow("checkable") << 16;
    QTest::newRow("enabled") << 32;
    QTest::newRow("tristate") << 64;
}

void TestTaviTreeItem::flags()
{
    QFETCH(int, bit);
    TaviTreeItem item;
    const auto set = [&](bool on) {
        switch (bit) {
        case 1:
            item.setSelectable(on);
            return item.isSelectable();
        case 2:
            item.setEditable(3, on);
            return item.isEditable(3);
        case 4:
            item.setDraggable(on);
            return item.isDraggable();
        case 8:
            item.setDroppable(on);
            return item.isDroppable();
        case 16:
            item.setCheckable(3, on, false);
            return item.isCheckable(3);
        case 32:
            item.setEnabled(on);
            return item.isEnabled();
        default: {
            bool tristate = false;
            item.setCheckable(3, false, on);
            item.isCheckable(3, &tristate);
            return tristate;
        }
        }
    };
    for (const bool on : {true, false, true}) {
        QCOMPARE(set(on), on);
        QCOMPARE(int(item.flags(3)), on ? 33 | bit : 33 & ~bit);
    }
    const bool one_column = bit == 2 || bit == 16 || bit == 64;
    QCOMPARE((int(item.flags(0)) & bit) != 0, !one_column);
    QCOMPARE(item.columnHasFlags(3), one_column);
    QVERIFY(!item.columnHasFlags(0));
}

void TestTaviTreeItem::columnFlagsIgnoreNegativeColumns()
{
    TaviTreeItem item;
    item.setEditable(-1, true);
    item.setCheckable(-1, true, true);
    QVERIFY(!item.columnHasFlags(-1));
    QCOMPARE(int(item.flags(-1)), 33);
}

void TestTaviTreeItem::checkableTellsOfThreeStates()
{
    TaviTreeItem item;
    bool tristate = true;
    QVERIFY(!item.isCheckable(0, &tristate));
    QVERIFY(!tristate);
    item.setCheckable(0, true, true);
    QVERIFY(item.isCheckable(0, &tristate));
    QVERIFY(tristate);
    item.setCheckable(0, false, false);
    QVERIFY(!item.isCheckable(0, &tristate));
    QVERIFY(!tristate);
    QVERIFY(item.columnHasFlags(0));
    // Taken from a column without flags, setCheckable makes an entry all the same.
    item.setCheckable(1, false, false);
    QVERIFY(item.columnHasFlags(1));
}

void TestTaviTreeItem::flagHelpersWorkOnValues()
{
    const TaviTreeItem item;
    const Qt::ItemFlags none;
    QCOMPARE(int(item.setItemFlag(none, Qt::ItemIsDragEnabled, true)), 4);
    QCOMPARE(int(item.setItemFlag(Qt::ItemFlags(36), Qt::ItemIsDragEnabled, false)), 32);
    QVERIFY(item.checkItemFlag(Qt::ItemFlags(36), Qt::ItemIsDragEnabled));
    QVERIFY(!item.checkItemFlag(Qt::ItemFlags(32), Qt::ItemIsDragEnabled));
    QCOMPARE(int(item.flags(0)), 33);
}

void TestTaviTreeItem::constructorsDoNotAppend()
{
    TaviTreeItem root;
    TaviTreeItem item(&root);
    QCOMPARE(item.parentTreeItem(), &root);
    QCOMPARE(root.childCount(), 0);
    QCOMPARE(item.row(), -1);
    addItem(&root, "first");
    QCOMPARE(item.row(), -1);
    QCOMPARE(textOf(item.nextSibling()), QStringLiteral("first"));
    QCOMPARE(item.prevSibling(), nullptr);
    QCOMPARE(root.takeChild(&item), nullptr);
}

void TestTaviTreeItem::appendedTwiceMovesToTheEnd()
{
    TaviTreeItem root;
    TaviTreeItem *a = addItem(&root, "a");
    addItem(&root, "b");
    root.appendChild(a);
    QCOMPARE(textsOf(root.children()), (QStringList{QStringLiteral("b"), QStringLiteral("a")}));
    QCOMPARE(a->row(), 1);
    QCOMPARE(a->parentTreeItem(), &root);
}

void TestTaviTreeItem::appendDoesNotTakeFromAnotherParent()
{
    TaviTreeItem here;
    TaviTreeItem there;
    TaviTreeItem *item = addItem(&here, "x");
    there.appendChild(item);
    QCOMPARE(here.childCount(), 1);
    QCOMPARE(there.childCount(), 1);
    QCOMPARE(item->parentTreeItem(), &there);
    // Taken from the first list the item has no parent any more, though the second still lists it.
    QCOMPARE(here.takeChild(item), item);
    QCOMPARE(item->parentTreeItem(), nullptr);
    QCOMPARE(there.childCount(), 1);
    there.appendChild(item);
    QCOMPARE(there.childCount(), 1);
    QCOMPARE(item->parentTreeItem(), &there);
    QCOMPARE(here.takeChild(item), nullptr);
}

void TestTaviTreeItem::insertAtAnyRow_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("place");
    QTest::newRow("front") << 0 << 0;
    QTest::newRow("middle") << 1 << 1;
    QTest::newRow("end") << 2 << 2;
    QTest::newRow("beyond") << 1000 << 2;
    QTest::newRow("negative") << -3 << 0;
}

void TestTaviTreeItem::insertAtAnyRow()
{
    QFETCH(int, row);
    QFETCH(int, place);
    TaviTreeItem root;
    addItem(&root, "a");
    addItem(&root, "b");
    TaviTreeItem *item = newItem("x");
    root.insertChild(row, item);
    QCOMPARE(root.childCount(), 3);
    QCOMPARE(root.child(place), item);
    QCOMPARE(item->row(), place);
    QCOMPARE(item->parentTreeItem(), &root);
}

void TestTaviTreeItem::insertWithinTheSameListCountsWithoutTheItem()
{
    TaviTreeItem root;
    TaviTreeItem *a = addItem(&root, "a");
    addItem(&root, "b");
    addItem(&root, "c");
    root.insertChild(1, a);
    QCOMPARE(textsOf(root.children()).join(QString()), QStringLiteral("bac"));
    root.insertChild(3, a);
    QCOMPARE(textsOf(root.children()).join(QString()), QStringLiteral("bca"));
    QCOMPARE(a->row(), 2);
}

void TestTaviTreeItem::takeAndRemove()
{
    CountedItem::alive = 0;
    TaviTreeItem root;
    auto *a = new CountedItem("a");
    auto *b = new CountedItem("b");
    root.appendChild(a);
    root.appendChild(b);
    QCOMPARE(root.takeChild(a), a);
    QCOMPARE(a->parentTreeItem(), nullptr);
    QCOMPARE(a->row(), 0);
    QCOMPARE(root.takeChild(a), nullptr);
    root.removeChild(a); // not in the list: stays alive
    QCOMPARE(CountedItem::alive, 2);
    root.removeChild(b);
    QCOMPARE(CountedItem::alive, 1);
    QCOMPARE(root.childCount(), 0);
    delete a;
}

void TestTaviTreeItem::nullChildrenAreIgnored()
{
    TaviTreeItem root;
    root.appendChild(nullptr);
    root.insertChild(0, nullptr);
    QCOMPARE(root.childCount(), 0);
    QCOMPARE(root.takeChild(nullptr), nullptr);
    root.removeChild(nullptr);
}

void TestTaviTreeItem::childOutsideTheRowsIsNull()
{
    TaviTreeItem root;
    TaviTreeItem *a = addItem(&root, "a");
    QCOMPARE(root.child(0), a);
    QCOMPARE(root.child(1), nullptr);
    QCOMPARE(root.child(-1), nullptr);
}

void TestTaviTreeItem::childrenAreDeletedFirstToLast()
{
    const QStringList expected{QStringLiteral("a"), QStringLiteral("b"), QStringLiteral("c")};
    CountedItem::order.clear();
    {
        TaviTreeItem root;
        for (const char *text : {"a", "b", "c"})
            root.appendChild(new CountedItem(text));
    }
    QCOMPARE(CountedItem::order, expected);
    CountedItem::order.clear();
    TaviTreeItem root;
    for (const char *text : {"a", "b", "c"})
        root.appendChild(new CountedItem(text));
    root.removeAllChildren();
    QCOMPARE(CountedItem::order, expected);
    QCOMPARE(root.childCount(), 0);
}

void TestTaviTreeItem::aChainOfAnyDepthIsDeleted()
{
    CountedItem::alive = 0;
    {
        TaviTreeItem root;
        TaviTreeItem *deepest = addChain(&root, 50000);
        deepest->appendChild(new CountedItem("deep"));
        deepest->appendChild(new CountedItem("deep"));
        QCOMPARE(deepest->topLevelParent(), &root);
    }
    QCOMPARE(CountedItem::alive, 0);
    TaviTreeItem root;
    addChain(&root, 50000)->appendChild(new CountedItem("deep"));
    root.removeAllChildren();
    QCOMPARE(CountedItem::alive, 0);
    QCOMPARE(root.childCount(), 0);
}

void TestTaviTreeItem::whoeverDestroysADeepTreeFindsItWhole()
{
    // At every depth the one that goes may delete or take out what stands around it.
    for (const int depth : {1, 100, 300, 1000}) {
        CountedItem::alive = 0;
        auto root = std::make_unique<TaviTreeItem>();
        TaviTreeItem *const deepest = addChain(root.get(), depth);
        TaviTreeItem *const above = deepest->parentTreeItem();
        auto *const sibling = new CountedItem("sibling");
        auto *const taken = new CountedItem("taken");
        auto *const below = new CountedItem("below");
        bool whole = false;
        deepest->appendChild(new RevengefulItem([&] {
            whole = deepest->childCount() == 2 && sibling->parentTreeItem() == deepest;
            delete deepest->takeChild(sibling);
            deepest->takeChild(taken);
            delete above->takeChild(deepest->childCount() == 0 ? nullptr : below);
        }));
        deepest->appendChild(sibling);
        deepest->appendChild(taken);
        above->appendChild(below);
        root.reset();
        QVERIFY(whole);
        QCOMPARE(CountedItem::alive, 1);
        delete taken;
    }
    // One that deletes the branch it stands in leaves nothing for the others to do.
    auto root = std::make_unique<TaviTreeItem>();
    TaviTreeItem *const middle = addChain(root.get(), 900);
    TaviTreeItem *const deepest = addChain(middle, 100);
    deepest->appendChild(new RevengefulItem([&] { middle->parentTreeItem()->removeChild(middle); }));
    const QPointer<TaviTreeItem> watched(middle);
    root.reset();
    QVERIFY(watched.isNull());
}

void TestTaviTreeItem::anItemDeletedInPlaceLeavesAnEmptyPlace()
{
    TaviTreeItem root;
    addItem(&root, "a");
    TaviTreeItem *b = addItem(&root, "b");
    TaviTreeItem *c = addItem(&root, "c");
    b->setCheckable(0, true);
    delete b;
    QCOMPARE(root.childCount(), 3);
    QCOMPARE(root.child(1), nullptr);
    QCOMPARE(c->row(), 2);
    QCOMPARE(c->prevSibling(), nullptr);
    // Every walk passes over it.
    root.setCheckable(0, true);
    c->setCheckable(0, true);
    QVERIFY(root.setCheckState(0, Qt::Checked));
    QVERIFY(root.isAllCheckState(0, Qt::Checked));
    QVERIFY(!root.isPartiallyChecked(0));
    QVERIFY(c->isNameTakenBySibling(0, QStringLiteral("a")));
    root.flattenHierarchy(nullptr);
    QCOMPARE(root.childCount(), 3);
}

void TestTaviTreeItem::rowFollowsEveryChange()
{
    TaviTreeItem root;
    QList<TaviTreeItem *> items;
    for (int i = 0; i < 100; ++i)
        items.append(addItem(&root, "x"));
    for (int i = 0; i < 100; ++i)
        QCOMPARE(items.at(i)->row(), i);
    root.removeChild(items.takeFirst());
    for (int i = 0; i < items.size(); ++i)
        QCOMPARE(items.at(i)->row(), i);
    TaviTreeItem *front = newItem("front");
    root.insertChild(0, front);
    items.prepend(front);
    for (int i = items.size() - 1; i >= 0; --i)
        QCOMPARE(items.at(i)->row(), i);
}

void TestTaviTreeItem::rowIsRightAfterAnyChanges()
{
    const quint32 seed = QRandomGenerator::global()->generate();
    QRandomGenerator random(seed);
    TaviTreeItem root;
    QList<TaviTreeItem *> expected;
    for (int step = 0; step < 3000; ++step) {
        const int size = expected.size();
        switch (random.bounded(size > 200 ? 5 : 3)) {
        case 0:
        case 1: {
            TaviTreeItem *item = newItem("x");
            const int row = random.bounded(size + 1);
            root.insertChild(row, item);
            expected.insert(row, item);
            break;
        }
        case 2:
            if (size > 0) {
                TaviTreeItem *item = expected.at(random.bounded(size));
                root.appendChild(item);
                expected.removeOne(item);
                expected.append(item);
            }
            break;
        default:
            root.removeChild(expected.takeAt(random.bounded(size)));
            break;
        }
        if (!expected.isEmpty()) {
            const int row = random.bounded(expected.size());
            QVERIFY2(expected.at(row)->row() == row,
                     qPrintable(QStringLiteral("seed %1 step %2").arg(seed).arg(step)));
        }
    }
    QCOMPARE(root.children(), expected);
}

void TestTaviTreeItem::siblings()
{
    TaviTreeItem root;
    TaviTreeItem *a = addItem(&root, "a");
    TaviTreeItem *b = addItem(&root, "b");
    QCOMPARE(a->nextSibling(), b);
    QCOMPARE(a->prevSibling(), nullptr);
    QCOMPARE(b->nextSibling(), nullptr);
    QCOMPARE(b->prevSibling(), a);
}

void TestTaviTreeItem::topLevelParent()
{
    TaviTreeItem root;
    TaviTreeItem *deep = addItem(addItem(addItem(&root, "a"), "b"), "c");
    QCOMPARE(deep->topLevelParent(), &root);
    QCOMPARE(root.topLevelParent(), &root);
}

void TestTaviTreeItem::flattenHierarchy()
{
    TaviTreeItem root;
    TaviTreeItem *a = addItem(&root, "a");
    TaviTreeItem *b = addItem(&root, "b");
    TaviTreeItem *a1 = addItem(a, "a1");
    addItem(a, "a2");
    addItem(a1, "a11");
    addItem(b, "b1");
    root.flattenHierarchy(nullptr);
    QCOMPARE(textsOf(root.children()).join(QLatin1Char(' ')), QStringLiteral("a b a1 a11 a2 b1"));
    QCOMPARE(a->childCount(), 0);
    QCOMPARE(a1->parentTreeItem(), &root);
    QCOMPARE(a1->row(), 2);
}

void TestTaviTreeItem::flattenUnderAnotherRoot()
{
    TaviTreeItem root;
    TaviTreeItem other;
    addItem(&other, "o");
    TaviTreeItem *a = addItem(&root, "a");
    addItem(a, "a1");
    addItem(&root, "b");
    root.flattenHierarchy(&other);
    QCOMPARE(root.childCount(), 0);
    QCOMPARE(textsOf(other.children()).join(QLatin1Char(' ')), QStringLiteral("o a a1 b"));
}

void TestTaviTreeItem::aChainOfAnyDepthIsFlattened()
{
    TaviTreeItem root;
    TaviTreeItem *const deepest = addChain(&root, 50000);
    root.flattenHierarchy(nullptr);
    QCOMPARE(root.childCount(), 50000);
    QCOMPARE(deepest->row(), 49999);
    QCOMPARE(root.child(1)->childCount(), 0);
}

void TestTaviTreeItem::flatteningLeavesEmptyPlaces()
{
    TaviTreeItem root;
    TaviTreeItem *const a = addItem(&root, "a");
    delete addItem(a, "gone");
    addItem(a, "a1");
    delete addItem(a, "gone");
    root.flattenHierarchy(nullptr);
    QCOMPARE(textsOf(root.children()).join(QLatin1Char(' ')), QStringLiteral("a a1"));
    QCOMPARE(a->children(), (QList<TaviTreeItem *>{nullptr, nullptr}));
}

void TestTaviTreeItem::uniqueNames()
{
    TaviTreeItem root;
    TaviTreeItem *item = addItem(&root, "new");
    const auto unique = [&](const char *name) {
        return item->getUniqueName(0, QString::fromUtf8(name), 0, u' ');
    };
    QCOMPARE(unique("Chart"), QStringLiteral("Chart"));
    addItem(&root, "Chart");
    QCOMPARE(unique("Chart"), QStringLiteral("Chart (2)"));
    QCOMPARE(unique("chart"), QStringLiteral("chart"));
    addItem(&root, "Chart (2)");
    addItem(&root, "Chart (4)");
    QCOMPARE(unique("Chart"), QStringLiteral("Chart (3)"));
    QCOMPARE(unique("new"), QStringLiteral("new")); // the item itself does not count
    QVERIFY(item->isNameTakenBySibling(0, QStringLiteral("Chart (4)")));
    QVERIFY(!item->isNameTakenBySibling(1, QStringLiteral("Chart (4)")));
}

void TestTaviTreeItem::uniqueNameHasAWidth()
{
    TaviTreeItem root;
    TaviTreeItem *item = addItem(&root, "new");
    addItem(&root, "Chart");
    QCOMPARE(item->getUniqueName(0, QStringLiteral("Chart"), 3, u'0'), QStringLiteral("Chart (002)"));
}

void TestTaviTreeItem::uniqueNameOfARootIsTheName()
{
    TaviTreeItem root({QStringLiteral("Chart")}, nullptr);
    QCOMPARE(root.getUniqueName(0, QStringLiteral("Chart"), 0, u' '), QStringLiteral("Chart"));
    QVERIFY(!root.isNameTakenBySibling(0, QStringLiteral("Chart")));
}

void TestTaviTreeItem::uniqueNameKeepsPercentSigns()
{
    TaviTreeItem root;
    TaviTreeItem *item = addItem(&root, "new");
    addItem(&root, "100%1 K");
    QCOMPARE(item->getUniqueName(0, QStringLiteral("100%1 K"), 0, u' '), QStringLiteral("100%1 K (2)"));
}

void TestTaviTreeItem::newNameBase()
{
    TaviTreeItem root;
    TaviTreeItem *item = addItem(&root, "x");
    QCOMPARE(item->getUniqueNewName(0, 0, u' '), QStringLiteral("Untitled"));
    addItem(&root, "Untitled");
    QCOMPARE(item->getUniqueNewName(0, 0, u' '), QStringLiteral("Untitled (2)"));
    item->setNewNameBase(QStringLiteral("Ink"));
    QCOMPARE(item->newNameBase(), QStringLiteral("Ink"));
    QCOMPARE(item->getUniqueNewName(0, 0, u' '), QStringLiteral("Ink"));
}

void TestTaviTreeItem::newNameBaseIsTranslated()
{
    TaviTreeItem root;
    const TaviTreeItem *const before = addItem(&root, "x");
    TaviTreeItem named;
    named.setNewNameBase(QString());
    OneTranslation translation;
    QVERIFY(QCoreApplication::installTranslator(&translation));
    const TaviTreeItem item;
    QCOMPARE(item.newNameBase(), QStringLiteral("Ohne Titel"));
    QCOMPARE(before->newNameBase(), QStringLiteral("Ohne Titel"));
    QCOMPARE(before->getUniqueNewName(0, 0, u' '), QStringLiteral("Ohne Titel"));
    QVERIFY(named.newNameBase().isEmpty()); // what was set stays, an empty text too
    QCoreApplication::removeTranslator(&translation);
    QCOMPARE(item.newNameBase(), QStringLiteral("Untitled"));
}

void TestTaviTreeItem::changesReachSubscribers()
{
    NumberRecorder recorder;
    TaviTreeItem::subscribeDataChanged(&recorder, SLOT(changed(int)));
    TaviTreeItem a;
    TaviTreeItem b;
    b.emitDataChanged();
    a.emitDataChanged();
    b.emitDataChanged();
    QCOMPARE(recorder.numbers, (QList<int>{b.id(), a.id(), b.id()}));
    a.setData(0, 1, Qt::DisplayRole); // storing alone tells nobody
    QCOMPARE(recorder.numbers.size(), 3);
}

void TestTaviTreeItem::subscribersInOtherThreadsHearLater()
{
    QThread elsewhere; // is not started, so that nothing is delivered
    NumberRecorder recorder;
    recorder.moveToThread(&elsewhere);
    TaviTreeItem::subscribeDataChanged(&recorder, SLOT(changed(int)));
    TaviTreeItem().emitDataChanged();
    QVERIFY(recorder.numbers.isEmpty());
}

void TestTaviTreeItem::subscribingWithNullDoesNothing()
{
    NumberRecorder recorder;
    TaviTreeItem::subscribeDataChanged(nullptr, SLOT(changed(int)));
    TaviTreeItem::subscribeDataChanged(&recorder, nullptr);
    TaviTreeItem().emitDataChanged();
    QVERIFY(recorder.numbers.isEmpty());
}

void TestTaviTreeItem::mapperEmitsAnyNumber()
{
    TaviTreeItemSignalMapper mapper(nullptr);
    NumberRecorder recorder;
    connect(&mapper, SIGNAL(mapped(int)), &recorder, SLOT(changed(int)));
    mapper.emitMapped(-7);
    mapper.emitMapped(12);
    QCOMPARE(recorder.numbers, (QList<int>{-7, 12}));
}

TAVI_TEST_MAIN(TestTaviTreeItem)
#include "tst_tavitreeitem.moc"
