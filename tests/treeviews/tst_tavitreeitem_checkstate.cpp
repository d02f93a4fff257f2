// SPDX-License-Identifier: MIT
#include "tests/support/tavitest.h"
#include "tests/treeviews/itemtree.h"
#include "treeviews/tavitreeitem.h"

#include <functional>
#include <memory>

namespace {

/// Records the items that tell of a change, and lets a test act in the middle of it.
class ChangeRecorder : public QObject
{
    Q_OBJECT

public:
    ChangeRecorder() { TaviTreeItem::subscribeDataChanged(this, SLOT(changed(int))); }

    QList<int> numbers;
    std::function<void(int)> act;

public Q_SLOTS:
    void changed(int id)
    {
        numbers.append(id);
        if (act)
            act(id);
    }
};

TaviTreeItem *addCheckable(TaviTreeItem *parent, const char *text, Qt::CheckState state = Qt::Unchecked)
{
    TaviTreeItem *item = addItem(parent, text);
    item->setCheckable(0, true, true);
    if (state != Qt::Unchecked)
        item->setCheckState(0, state, false);
    return item;
}

/// Hides its children from whoever asks for their number.
class ClosedItem : public TaviTreeItem
{
public:
    ClosedItem() : TaviTreeItem({QStringLiteral("closed")}, nullptr) {}
    int childCount() const override { return 0; }
};

} // namespace

class TestTaviTreeItemCheckState : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void notCheckableRefuses();
    void notCheckableReadsAsNothing();
    void leafIsSetAndTold();
    void sameStateIsNotToldButGoesDown();
    void partialStoresNothing();
    void unknownStatesAreRefused();
    void dataRoleIsTheSame();
    void childrenFollowFirstToLast();
    void childrenThatAreNotCheckableKeepTheirBranch();
    void parentsFollowUpwards();
    void parentsFollowOnlyIfWanted();
    void lastUncheckedChildChecksTheParent();
    void mixedChildrenMakeAPartialParent();
    void partialChildrenLeaveParentAlone();
    void climbingEndsWhereNothingChanges();
    void parentThatIsNotCheckableIsWrittenAllTheSame();
    void noCheckableChildMeansChecked();
    void updateWithoutChildrenDoesNothing();
    void setAllLeavesTheItemItselfAlone();
    void aStateOfEachColumn();
    void childCountDecidesWhetherThereAreChildren();
    void toldOncePerChange();
    void resultTellsOfAnyChange();
    void aSlotDeletesTheNextChild();
    void aSlotDeletesTheItemItself();
    void aSlotDeletesTheParent();
    void aSlotEmptiesTheTree();
    void aSlotAddsChildren();
    void aSlotSetsAnotherState();
    void aChainOfAnyDepthIsChecked();
    void aHundredThousandChildrenCostTenTimesTenThousand();
};

void TestTaviTreeItemCheckState::notCheckableRefuses()
{
    ChangeRecorder recorder;
    TaviTreeItem item;
    QVERIFY(!item.setCheckState(0, Qt::Checked));
    QVERIFY(!item.setCheckState(0, Qt::Checked, false));
    QVERIFY(!item.setAllCheckState(0, Qt::Checked));
    QVERIFY(!item.setData(0, Qt::Checked, Qt::CheckStateRole));
    QCOMPARE(item.checkState(0), Qt::Unchecked);
    QCOMPARE(item.columnCount(), 0);
    QVERIFY(recorder.numbers.isEmpty());
}

void TestTaviTreeItemCheckState::notCheckableReadsAsNothing()
{
    TaviTreeItem item;
    item.setCheckable(0, true);
    QVERIFY(item.setCheckState(0, Qt::Checked));
    item.setCheckable(0, false);
    QVERIFY(!item.data(0, Qt::CheckStateRole).isValid());
    QCOMPARE(item.checkState(0), Qt::Checked); // what is stored stays
    item.setCheckable(0, true);
    QCOMPARE(item.data(0, Qt::CheckStateRole), QVariant(int(Qt::Checked)));
    item.setCheckable(1, true);
    QCOMPARE(item.data(1, Qt::CheckStateRole), QVariant(int(Qt::Unchecked)));
}

void TestTaviTreeItemCheckState::leafIsSetAndTold()
{
    ChangeRecorder recorder;
    TaviTreeItem item;
    item.setCheckable(0, true);
    QVERIFY(item.setCheckState(0, Qt::Checked));
    QCOMPARE(item.checkState(0), Qt::Checked);
    QVERIFY(!item.setCheckState(0, Qt::Checked));
    QVERIFY(item.setCheckState(0, Qt::Unchecked));
    QCOMPARE(recorder.numbers, (QList<int>{item.id(), item.id()}));
}

void TestTaviTreeItemCheckState::sameStateIsNotToldButGoesDown()
{
    TaviTreeItem root;
    TaviTreeItem *parent = addCheckable(&root, "p", Qt::Checked);
    TaviTreeItem *child = addCheckable(parent, "c");
    ChangeRecorder recorder;
    QVERIFY(parent->setCheckState(0, Qt::Checked));
    QCOMPARE(child->checkState(0), Qt::Checked);
    QCOMPARE(recorder.numbers.value(0), child->id());
    QVERIFY(!recorder.numbers.contains(parent->id()));
}

void TestTaviTreeItemCheckState::partialStoresNothing()
{
    ChangeRecorder recorder;
    TaviTreeItem item;
    item.setCheckable(0, true, true);
    const int columns = item.columnCount();
    QVERIFY(!item.setCheckState(0, Qt::PartiallyChecked));
    QCOMPARE(item.checkState(0), Qt::Unchecked);
    QCOMPARE(item.columnCount(), columns);
    TaviTreeItem *child = addCheckable(&item, "c");
    QVERIFY(!item.setAllCheckState(0, Qt::PartiallyChecked));
    QCOMPARE(child->checkState(0), Qt::Unchecked);
    QVERIFY(recorder.numbers.isEmpty());
}

void TestTaviTreeItemCheckState::unknownStatesAreRefused()
{
    TaviTreeItem item;
    item.setCheckable(0, true, true);
    QVERIFY(!item.setData(0, 3, Qt::CheckStateRole));
    QVERIFY(!item.setData(0, -1, Qt::CheckStateRole));
    QCOMPARE(item.checkState(0), Qt::Unchecked);
}

void TestTaviTreeItemCheckState::dataRoleIsTheSame()
{
    TaviTreeItem root;
    TaviTreeItem *parent = addCheckable(&root, "p");
    TaviTreeItem *child = addCheckable(parent, "c");
    QVERIFY(child->setData(0, int(Qt::Checked), Qt::CheckStateRole));
    QCOMPARE(parent->checkState(0), Qt::Checked);
    QVERIFY(!child->setData(0, int(Qt::Checked), Qt::CheckStateRole));
    QVERIFY(parent->setData(0, int(Qt::Unchecked), Qt::CheckStateRole));
    QCOMPARE(child->checkState(0), Qt::Unchecked);
}

void TestTaviTreeItemCheckState::childrenFollowFirstToLast()
{
    TaviTreeItem root;
    TaviTreeItem *parent = addCheckable(&root, "p");
    TaviTreeItem *a = addCheckable(parent, "a");
    TaviTreeItem *a1 = addCheckable(a, "a1");
    TaviTreeItem *b = addCheckable(parent, "b", Qt::Checked);
    TaviTreeItem *b1 = addCheckable(b, "b1");
    TaviTreeItem *c = addCheckable(parent, "c");
    ChangeRecorder recorder;
    QVERIFY(parent->setCheckState(0, Qt::Checked));
    QCOMPARE(recorder.numbers, (QList<int>{parent->id(), a->id(), a1->id(), b1->id(), c->id(), root.id()}));
}

void TestTaviTreeItemCheckState::childrenThatAreNotCheckableKeepTheirBranch()
{
    TaviTreeItem root;
    TaviTreeItem *parent = addCheckable(&root, "p");
    TaviTreeItem *plain = addItem(parent, "plain");
    TaviTreeItem *below = addCheckable(plain, "below");
    const ChangeRecorder recorder;
    QVERIFY(parent->setCheckState(0, Qt::Checked));
    QCOMPARE(below->checkState(0), Qt::Unchecked);
    QCOMPARE(plain->checkState(0), Qt::Unchecked);
    QVERIFY(!recorder.numbers.contains(plain->id()));
}

void TestTaviTreeItemCheckState::parentsFollowUpwards()
{
    TaviTreeItem root;
    TaviTreeItem *top = addCheckable(&root, "top");
    TaviTreeItem *parent = addCheckable(top, "p");
    TaviTreeItem *a = addCheckable(parent, "a");
    TaviTreeItem *b = addCheckable(parent, "b");
    ChangeRecorder recorder;
    QVERIFY(a->setCheckState(0, Qt::Checked));
    QCOMPARE(parent->checkState(0), Qt::PartiallyChecked);
    // Below the top only a partial child: neither partial, nor all checked, nor all unchecked.
    QCOMPARE(top->checkState(0), Qt::Unchecked);
    QCOMPARE(recorder.numbers, (QList<int>{a->id(), parent->id()}));
    recorder.numbers.clear();
    QVERIFY(b->setCheckState(0, Qt::Checked));
    QCOMPARE(parent->checkState(0), Qt::Checked);
    QCOMPARE(top->checkState(0), Qt::Checked);
    QCOMPARE(recorder.numbers, (QList<int>{b->id(), parent->id(), top->id(), root.id()}));
}

void TestTaviTreeItemCheckState::parentsFollowOnlyIfWanted()
{
    TaviTreeItem root;
    TaviTreeItem *parent = addCheckable(&root, "p");
    TaviTreeItem *child = addCheckable(parent, "c");
    QVERIFY(child->setCheckState(0, Qt::Checked, false));
    QCOMPARE(parent->checkState(0), Qt::Unchecked);
    QVERIFY(parent->updateCheckStateFromChildren(0));
    QCOMPARE(parent->checkState(0), Qt::Checked);
    QVERIFY(!parent->updateCheckStateFromChildren(0));
}

void TestTaviTreeItemCheckState::lastUncheckedChildChecksTheParent()
{
    TaviTreeItem root;
    TaviTreeItem *parent = addCheckable(&root, "p");
    addCheckable(parent, "a", Qt::Checked);
    TaviTreeItem *b = addCheckable(parent, "b");
    QVERIFY(b->setCheckState(0, Qt::Checked));
    QCOMPARE(parent->checkState(0), Qt::Checked);
    QVERIFY(b->setCheckState(0, Qt::Unchecked));
    QCOMPARE(parent->checkState(0), Qt::PartiallyChecked);
}

void TestTaviTreeItemCheckState::mixedChildrenMakeAPartialParent()
{
    TaviTreeItem parent;
    parent.setCheckable(0, true);
    addCheckable(&parent, "a", Qt::Checked);
    addCheckable(&parent, "b");
    QVERIFY(parent.isPartiallyChecked(0));
    QVERIFY(!parent.isAllCheckState(0, Qt::Checked));
    QVERIFY(!parent.isAllCheckState(0, Qt::Unchecked));
    QVERIFY(parent.updateCheckStateFromChildren(0));
    QCOMPARE(parent.checkState(0), Qt::PartiallyChecked);
    // A child without a check box is none of those that are not checked.
    parent.child(1)->setCheckable(0, false);
    QVERIFY(!parent.isPartiallyChecked(0));
    QVERIFY(parent.isAllCheckState(0, Qt::Checked));
}

void TestTaviTreeItemCheckState::partialChildrenLeaveParentAlone()
{
    for (const Qt::CheckState before : {Qt::Unchecked, Qt::Checked}) {
        TaviTreeItem parent;
        parent.setCheckable(0, true);
        TaviTreeItem *partial = addCheckable(&parent, "partial");
        addCheckable(partial, "x", Qt::Checked);
        addCheckable(partial, "y");
        QVERIFY(partial->updateCheckStateFromChildren(0) || before == Qt::Checked);
        addCheckable(&parent, "unchecked");
        QCOMPARE(partial->checkState(0), Qt::PartiallyChecked);
        parent.setCheckState(0, before, false);
        partial->child(1)->setCheckState(0, Qt::Unchecked, false);
        partial->child(0)->setCheckState(0, Qt::Checked, false);
        partial->updateCheckStateFromChildren(0);
        parent.child(1)->setCheckState(0, Qt::Unchecked, false);
        const Qt::CheckState now = parent.checkState(0);
        QVERIFY(!parent.isPartiallyChecked(0));
        QVERIFY(!parent.isAllCheckState(0, Qt::Checked));
        QVERIFY(!parent.isAllCheckState(0, Qt::Unchecked));
        QVERIFY(!parent.updateCheckStateFromChildren(0));
        QCOMPARE(parent.checkState(0), now);
    }
}

void TestTaviTreeItemCheckState::climbingEndsWhereNothingChanges()
{
    TaviTreeItem root;
    TaviTreeItem *top = addCheckable(&root, "top");
    TaviTreeItem *parent = addCheckable(top, "p");
    TaviTreeItem *a = addCheckable(parent, "a");
    addCheckable(parent, "b");
    addCheckable(parent, "c");
    QVERIFY(a->setCheckState(0, Qt::Checked));
    ChangeRecorder recorder;
    QVERIFY(parent->child(1)->setCheckState(0, Qt::Checked));
    QCOMPARE(parent->checkState(0), Qt::PartiallyChecked);
    QCOMPARE(recorder.numbers, QList<int>{parent->child(1)->id()});
}

void TestTaviTreeItemCheckState::parentThatIsNotCheckableIsWrittenAllTheSame()
{
    TaviTreeItem root;
    TaviTreeItem *parent = addItem(&root, "p");
    TaviTreeItem *child = addCheckable(parent, "c");
    QVERIFY(!parent->setAllCheckState(0, Qt::Checked));
    QCOMPARE(child->checkState(0), Qt::Unchecked);
    ChangeRecorder recorder;
    QVERIFY(child->setCheckState(0, Qt::Checked));
    QCOMPARE(parent->checkState(0), Qt::Checked);
    QVERIFY(!parent->data(0, Qt::CheckStateRole).isValid());
    QVERIFY(recorder.numbers.contains(parent->id()));
}

void TestTaviTreeItemCheckState::noCheckableChildMeansChecked()
{
    TaviTreeItem parent;
    addItem(&parent, "plain");
    QVERIFY(parent.isAllCheckState(0, Qt::Checked));
    QVERIFY(parent.isAllCheckState(0, Qt::Unchecked));
    QVERIFY(parent.isAllCheckState(0, Qt::PartiallyChecked));
    QVERIFY(parent.updateCheckStateFromChildren(0));
    QCOMPARE(parent.checkState(0), Qt::Checked);
}

void TestTaviTreeItemCheckState::updateWithoutChildrenDoesNothing()
{
    TaviTreeItem item;
    item.setCheckable(0, true);
    QVERIFY(!item.updateCheckStateFromChildren(0));
    QCOMPARE(item.columnCount(), 0);
}

void TestTaviTreeItemCheckState::setAllLeavesTheItemItselfAlone()
{
    TaviTreeItem parent;
    parent.setCheckable(0, true);
    TaviTreeItem *child = addCheckable(&parent, "c");
    TaviTreeItem *deep = addCheckable(child, "d");
    QVERIFY(parent.setAllCheckState(0, Qt::Checked));
    QCOMPARE(parent.checkState(0), Qt::Unchecked);
    QCOMPARE(child->checkState(0), Qt::Checked);
    QCOMPARE(deep->checkState(0), Qt::Checked);
    QVERIFY(!parent.setAllCheckState(0, Qt::Checked));
}

void TestTaviTreeItemCheckState::aStateOfEachColumn()
{
    TaviTreeItem parent;
    TaviTreeItem *child = addCheckable(&parent, "c");
    child->setCheckable(2, true);
    QVERIFY(child->setCheckState(2, Qt::Checked));
    QCOMPARE(child->checkState(0), Qt::Unchecked);
    QCOMPARE(parent.checkState(2), Qt::Checked);
    QCOMPARE(parent.checkState(0), Qt::Unchecked);
}

void TestTaviTreeItemCheckState::childCountDecidesWhetherThereAreChildren()
{
    TaviTreeItem root;
    auto *closed = new ClosedItem;
    closed->setCheckable(0, true);
    root.appendChild(closed);
    TaviTreeItem *child = addCheckable(closed, "c");
    QVERIFY(closed->setCheckState(0, Qt::Checked));
    QCOMPARE(child->checkState(0), Qt::Unchecked);
    root.setCheckable(0, true);
    QVERIFY(root.setAllCheckState(0, Qt::Unchecked));
    QVERIFY(root.setAllCheckState(0, Qt::Checked));
    QCOMPARE(closed->checkState(0), Qt::Checked);
    QCOMPARE(child->checkState(0), Qt::Unchecked);
    QVERIFY(!closed->updateCheckStateFromChildren(0));
    QVERIFY(child->setCheckState(0, Qt::Checked));
    QVERIFY(child->setCheckState(0, Qt::Unchecked));
    QCOMPARE(closed->checkState(0), Qt::Checked);
}

void TestTaviTreeItemCheckState::toldOncePerChange()
{
    TaviTreeItem root;
    TaviTreeItem *parent = addCheckable(&root, "p");
    for (int i = 0; i < 50; ++i)
        addCheckable(parent, "c");
    ChangeRecorder recorder;
    QVERIFY(parent->setCheckState(0, Qt::Checked));
    QCOMPARE(recorder.numbers.size(), 52);
    QCOMPARE(QSet<int>(recorder.numbers.begin(), recorder.numbers.end()).size(), 52);
}

void TestTaviTreeItemCheckState::resultTellsOfAnyChange()
{
    TaviTreeItem root;
    TaviTreeItem *parent = addCheckable(&root, "p", Qt::Checked);
    TaviTreeItem *child = addCheckable(parent, "c", Qt::Checked);
    addCheckable(parent, "d");
    // Nothing changes in the child, but the parent, which was wrong, follows.
    QVERIFY(child->setCheckState(0, Qt::Checked));
    QCOMPARE(parent->checkState(0), Qt::PartiallyChecked);
    QVERIFY(!child->setCheckState(0, Qt::Checked));
}

void TestTaviTreeItemCheckState::aSlotDeletesTheNextChild()
{
    TaviTreeItem root;
    TaviTreeItem *parent = addCheckable(&root, "p");
    TaviTreeItem *a = addCheckable(parent, "a");
    TaviTreeItem *b = addCheckable(parent, "b");
    addCheckable(b, "b1");
    TaviTreeItem *c = addCheckable(parent, "c");
    ChangeRecorder recorder;
    const int first = a->id();
    recorder.act = [&](int id) {
        if (id == first)
            parent->removeChild(b);
    };
    QVERIFY(parent->setCheckState(0, Qt::Checked));
    QCOMPARE(parent->childCount(), 2);
    QCOMPARE(a->checkState(0), Qt::Checked);
    QCOMPARE(c->checkState(0), Qt::Checked);
}

void TestTaviTreeItemCheckState::aSlotDeletesTheItemItself()
{
    TaviTreeItem root;
    TaviTreeItem *parent = addCheckable(&root, "p");
    TaviTreeItem *child = addCheckable(parent, "c");
    addCheckable(child, "d");
    ChangeRecorder recorder;
    const int doomed = child->id();
    recorder.act = [&](int id) {
        if (id == doomed)
            parent->removeChild(child);
    };
    QVERIFY(child->setCheckState(0, Qt::Checked));
    QCOMPARE(parent->childCount(), 0);
    QCOMPARE(parent->checkState(0), Qt::Unchecked);
}

void TestTaviTreeItemCheckState::aSlotDeletesTheParent()
{
    TaviTreeItem root;
    TaviTreeItem *top = addCheckable(&root, "top");
    TaviTreeItem *parent = addCheckable(top, "p");
    TaviTreeItem *child = addCheckable(parent, "c");
    ChangeRecorder recorder;
    const int doomed = parent->id();
    recorder.act = [&](int id) {
        if (id == doomed)
            top->removeChild(parent);
    };
    QVERIFY(child->setCheckState(0, Qt::Checked));
    QCOMPARE(top->childCount(), 0);
}

void TestTaviTreeItemCheckState::aSlotEmptiesTheTree()
{
    auto root = std::make_unique<TaviTreeItem>();
    TaviTreeItem *parent = addCheckable(root.get(), "p");
    for (int i = 0; i < 10; ++i)
        addCheckable(addCheckable(parent, "c"), "d");
    ChangeRecorder recorder;
    const int when = parent->child(4)->child(0)->id();
    recorder.act = [&](int id) {
        if (id == when)
            root.reset();
    };
    QVERIFY(parent->setCheckState(0, Qt::Checked));
    QCOMPARE(recorder.numbers.last(), when);
}

void TestTaviTreeItemCheckState::aSlotAddsChildren()
{
    TaviTreeItem root;
    TaviTreeItem *parent = addCheckable(&root, "p");
    TaviTreeItem *a = addCheckable(parent, "a");
    ChangeRecorder recorder;
    const int when = a->id();
    recorder.act = [&](int id) {
        if (id == when)
            addCheckable(parent, "new");
    };
    QVERIFY(parent->setCheckState(0, Qt::Checked));
    QCOMPARE(parent->childCount(), 2);
    QCOMPARE(parent->child(1)->checkState(0), Qt::Unchecked); // the children of the moment of the call
}

void TestTaviTreeItemCheckState::aSlotSetsAnotherState()
{
    TaviTreeItem root;
    TaviTreeItem *parent = addCheckable(&root, "p");
    TaviTreeItem *a = addCheckable(parent, "a");
    TaviTreeItem *b = addCheckable(parent, "b");
    ChangeRecorder recorder;
    bool done = false;
    recorder.act = [&](int id) {
        if (id == b->id() && !done) {
            done = true;
            a->setCheckState(0, Qt::Unchecked);
        }
    };
    QVERIFY(parent->setCheckState(0, Qt::Checked));
    QCOMPARE(a->checkState(0), Qt::Unchecked);
    QCOMPARE(b->checkState(0), Qt::Checked);
    QCOMPARE(parent->checkState(0), Qt::PartiallyChecked);
}

void TestTaviTreeItemCheckState::aChainOfAnyDepthIsChecked()
{
    TaviTreeItem root;
    TaviTreeItem *deepest = &root;
    root.setCheckable(0, true);
    for (int depth = 0; depth < 50000; ++depth)
        deepest = addCheckable(deepest, "x");
    ChangeRecorder recorder;
    QVERIFY(root.setCheckState(0, Qt::Checked));
    QCOMPARE(deepest->checkState(0), Qt::Checked);
    QCOMPARE(recorder.numbers.size(), 50001);
    QVERIFY(deepest->setCheckState(0, Qt::Unchecked));
    QCOMPARE(root.checkState(0), Qt::Unchecked);
    QCOMPARE(recorder.numbers.size(), 100002);
    QCOMPARE(recorder.numbers.last(), root.id());
}

void TestTaviTreeItemCheckState::aHundredThousandChildrenCostTenTimesTenThousand()
{
    // Counted in announcements, not in time: one for each item, whatever the size.
    for (const int count : {1000, 10000}) {
        TaviTreeItem root;
        TaviTreeItem *parent = addCheckable(&root, "p");
        for (int i = 0; i < count; ++i)
            addCheckable(parent, "c");
        ChangeRecorder recorder;
        QVERIFY(parent->setCheckState(0, Qt::Checked));
        QCOMPARE(recorder.numbers.size(), count + 2);
    }
}

TAVI_TEST_MAIN(TestTaviTreeItemCheckState)
#include "tst_tavitreeitem_checkstate.moc"
