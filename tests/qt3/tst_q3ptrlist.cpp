// SPDX-License-Identifier: MIT
#include "tests/qt3/numberlist.h"
#include "tests/support/tavitest.h"

#include <memory>
#include <vector>

namespace {

/// Puts copies in, which it owns.
class CopyingList : public Q3PtrList<Number>
{
public:
    CopyingList() { setAutoDelete(true); }

protected:
    Item newItem(Item item) override { return new Number(*static_cast<Number *>(item)); }
};

/// Says what it deletes.
class TellingList : public Q3PtrList<Number>
{
public:
    ~TellingList() override { TellingList::clear(); }
    QStringList *told = nullptr;

protected:
    void deleteItem(Item item) override
    {
        if (told)
            told->append(QString::number(static_cast<Number *>(item)->value));
        Q3PtrList::deleteItem(item);
    }
};

} // namespace

class TestQ3PtrList : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QCOMPARE(Number::alive, 0);
        TaviTest::cleanup();
    }

    void construction()
    {
        Q3PtrList<Number> list;
        QCOMPARE(list.count(), 0u);
        QVERIFY(list.isEmpty());
        QVERIFY(!list.autoDelete());
        QCOMPARE(list.at(), -1);
        QVERIFY(!list.current() && !list.currentNode());
        QVERIFY(!list.getFirst() && !list.getLast());
        QVERIFY(!list.first() && !list.last() && !list.next() && !list.prev());
        QVERIFY(!list.at(0) && !list.take() && !list.take(0));
        QVERIFY(!list.remove() && !list.remove(0u) && !list.removeFirst() && !list.removeLast());
        QVERIFY(list.begin() == list.end());
    }

    void whatIsInsertedBecomesCurrent()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        list.append(new Number(2));
        QCOMPARE(listText(list), QString("[2]"));
        list.append(new Number(4));
        QCOMPARE(listText(list), QString("2 [4]"));
        list.prepend(new Number(1));
        QCOMPARE(listText(list), QString("[1] 2 4"));
        QVERIFY(list.insert(2, new Number(3)));
        QCOMPARE(listText(list), QString("1 2 [3] 4"));
        QVERIFY(list.insert(4, new Number(5)));
        QCOMPARE(listText(list), QString("1 2 3 4 [5]"));
        QVERIFY(list.insert(0, new Number(0)));
        QCOMPARE(listText(list), QString("[0] 1 2 3 4 5"));
        QCOMPARE(list.count(), 6u);
        QVERIFY(!list.isEmpty());
    }

    void insertionBeyondTheEndIsRefused()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        appendNew(list, {1, 2});
        list.first();
        Number number(9);
        QVERIFY(!list.insert(3, &number));
        QVERIFY(!list.insert(static_cast<uint>(-1), &number));
        QCOMPARE(listText(list), QString("[1] 2"));
    }

    void aNullItemIsNotInserted()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        appendNew(list, {1, 2});
        list.first();
        expectLog("a null item is not inserted", 5);
        list.append(nullptr);
        list.prepend(nullptr);
        list.inSort(nullptr);
        QVERIFY(!list.insert(0, nullptr));
        QVERIFY(!list.replace(0, nullptr));
        QCOMPARE(listText(list), QString("[1] 2"));
    }

    void replaceKeepsTheCurrentPosition()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        appendNew(list, {1, 2, 3});
        list.at(1);
        QVERIFY(list.replace(2, new Number(30)));
        QCOMPARE(listText(list), QString("1 [2] 30"));
        QCOMPARE(Number::alive, 3);
        QVERIFY(list.replace(1, new Number(20)));
        QCOMPARE(listText(list), QString("1 [20] 30"));
        QCOMPARE(list.current()->value, 20);
        QCOMPARE(Number::alive, 3);
        Number number(9);
        QVERIFY(!list.replace(3, &number));
    }

    void replaceByItselfDeletesNothing()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        appendNew(list, {1});
        QVERIFY(list.replace(0, list.getFirst()));
        QCOMPARE(Number::alive, 1);
        QCOMPARE(list.getFirst()->value, 1);
    }

    void removalMakesTheSuccessorCurrent_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("left");
        QTest::newRow("first") << 0 << "[2] 3";
        QTest::newRow("middle") << 1 << "1 [3]";
        QTest::newRow("last") << 2 << "1 [2]";
    }

    void removalMakesTheSuccessorCurrent()
    {
        QFETCH(int, index);
        QFETCH(QString, left);
        const auto fill = [](Q3PtrList<Number> &list) {
            list.setAutoDelete(true);
            appendNew(list, {1, 2, 3});
        };
        const uint at = static_cast<uint>(index);
        Q3PtrList<Number> by_index, by_current, by_item, by_reference, taken, taken_current;
        fill(by_index);
        QVERIFY(by_index.remove(at));
        QCOMPARE(listText(by_index), left);
        fill(by_current);
        by_current.at(at);
        QVERIFY(by_current.remove());
        QCOMPARE(listText(by_current), left);
        fill(by_item);
        QVERIFY(by_item.remove(by_item.at(at)));
        QCOMPARE(listText(by_item), left);
        fill(by_reference);
        QVERIFY(by_reference.removeRef(by_reference.at(at)));
        QCOMPARE(listText(by_reference), left);
        QCOMPARE(Number::alive, 4 * 2);
        fill(taken);
        const std::unique_ptr<Number> first_taken(taken.take(at));
        QCOMPARE(first_taken->value, index + 1);
        QCOMPARE(listText(taken), left);
        fill(taken_current);
        taken_current.at(at);
        const std::unique_ptr<Number> second_taken(taken_current.take());
        QCOMPARE(second_taken->value, index + 1);
        QCOMPARE(listText(taken_current), left);
        QCOMPARE(Number::alive, 6 * 2 + 2); // what is taken is not deleted
    }

    void removalAtTheEnds()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        appendNew(list, {1, 2, 3, 4});
        QVERIFY(list.removeFirst());
        QCOMPARE(listText(list), QString("[2] 3 4"));
        QVERIFY(list.removeLast());
        QCOMPARE(listText(list), QString("2 [3]"));
        QVERIFY(list.removeFirst());
        QVERIFY(list.removeLast());
        QVERIFY(list.isEmpty());
        QCOMPARE(list.at(), -1);
        QVERIFY(!list.current());
        QCOMPARE(Number::alive, 0);
    }

    void removalOfWhatIsNotThere()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        appendNew(list, {1, 2});
        QVERIFY(!list.remove(2u));
        QVERIFY(!list.take(2));
        QCOMPARE(listText(list), QString("1 [2]")); // an index out of range leaves the current item alone
        Number number(1);
        QVERIFY(!list.remove(&number));
        QCOMPARE(listText(list), QString("1 2")); // as after a search in vain
        list.first();
        QVERIFY(!list.removeRef(&number));
        QCOMPARE(listText(list), QString("1 2"));
        QVERIFY(!list.remove()); // none is current
        QVERIFY(!list.take());
        QCOMPARE(list.count(), 2u);
    }

    void removalOfNullIsThatOfTheCurrentItem()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        appendNew(list, {1, 2, 3});
        list.at(1);
        QVERIFY(list.remove(static_cast<const Number *>(nullptr)));
        QCOMPARE(listText(list), QString("1 [3]"));
        QVERIFY(!list.removeRef(nullptr));
        QCOMPARE(list.count(), 2u);
    }

    void nodesAreRemovedAndTakenFromAnywhere()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        appendNew(list, {1, 2, 3, 4});
        list.at(1);
        Q3LNode *second = list.currentNode();
        QCOMPARE(static_cast<Number *>(second->getData())->value, 2);
        list.at(2);
        Q3LNode *third = list.currentNode();
        list.last();
        list.removeNode(second);
        QCOMPARE(listText(list), QString("[1] 3 4")); // the first one is current
        QCOMPARE(Number::alive, 3);
        list.last();
        const std::unique_ptr<Number> taken(list.takeNode(third));
        QCOMPARE(taken->value, 3);
        QCOMPARE(listText(list), QString("[1] 4"));
        list.removeNode(list.currentNode());
        list.removeNode(list.currentNode());
        QVERIFY(list.isEmpty());
        QVERIFY(!list.currentNode());
        QCOMPARE(list.at(), -1);
    }

    void walkingMovesTheCurrentItem()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        appendNew(list, {1, 2, 3});
        QCOMPARE(list.first()->value, 1);
        QCOMPARE(list.at(), 0);
        QVERIFY(list.prev() == nullptr); // before the first there is none
        QCOMPARE(list.at(), -1);
        QVERIFY(list.next() == nullptr); // and from there nothing leads back
        QCOMPARE(list.at(), -1);
        QCOMPARE(list.last()->value, 3);
        QCOMPARE(list.at(), 2);
        QCOMPARE(list.prev()->value, 2);
        QCOMPARE(list.at(), 1);
        QCOMPARE(list.next()->value, 3);
        QVERIFY(list.next() == nullptr);
        QVERIFY(list.current() == nullptr);
        QVERIFY(list.prev() == nullptr);
        QCOMPARE(list.at(1)->value, 2);
        QCOMPARE(list.at(), 1);
        QVERIFY(list.at(3) == nullptr);
        QCOMPARE(list.at(), 1); // stays
        QCOMPARE(list.getFirst()->value, 1);
        QCOMPARE(list.getLast()->value, 3);
        QCOMPARE(list.at(), 1);
    }

    void everyIndexIsReachedFromEveryOther()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        constexpr int size = 12;
        for (int i = 0; i < size; ++i)
            list.append(new Number(i));
        for (uint from = 0; from < size; ++from) {
            for (uint to = 0; to < size; ++to) {
                list.at(from);
                QCOMPARE(list.at(to)->value, static_cast<int>(to));
                QCOMPARE(list.at(), static_cast<int>(to));
            }
        }
    }

    void aSearchComparesItemsOrAddresses()
    {
        ValueList list;
        list.setAutoDelete(true);
        appendNew(list, {5, 7, 5, 9, 5});
        const Number five(5);
        QCOMPARE(list.find(&five), 0);
        QCOMPARE(list.findNext(&five), 0); // the current item is looked at first
        list.next();
        QCOMPARE(list.findNext(&five), 2);
        QCOMPARE(listText(list), QString("5 7 [5] 9 5"));
        list.next();
        QCOMPARE(list.findNext(&five), 4);
        list.next();
        QCOMPARE(list.findNext(&five), -1);
        QCOMPARE(list.at(), -1);
        QVERIFY(!list.current());

        QCOMPARE(list.findRef(&five), -1); // equal, but not the same
        const Number *third = list.at(2);
        list.first();
        QCOMPARE(list.findRef(third), 2);
        QCOMPARE(list.findNextRef(third), 2);
        list.next();
        QCOMPARE(list.findNextRef(third), -1);
        QCOMPARE(list.find(third), 0); // equal comes first

        QCOMPARE(list.contains(&five), 3u);
        QCOMPARE(list.containsRef(&five), 0u);
        QCOMPARE(list.containsRef(third), 1u);
        QCOMPARE(list.at(), 0); // counting moves nothing
        QVERIFY(list.remove(&five));
        QCOMPARE(listText(list), QString("[7] 5 9 5"));
    }

    void withoutAComparisonAddressesAreCompared()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        appendNew(list, {5, 5});
        const Number five(5);
        QCOMPARE(list.find(&five), -1);
        QCOMPARE(list.contains(&five), 0u);
        QCOMPARE(list.find(list.getLast()), 1);
        QCOMPARE(list.contains(list.getLast()), 1u);
    }

    void nullIsNeverFound()
    {
        ValueList list;
        list.setAutoDelete(true);
        appendNew(list, {1});
        QCOMPARE(list.find(nullptr), -1);
        QVERIFY(!list.current());
        list.first();
        QCOMPARE(list.findNext(nullptr), -1);
        QCOMPARE(list.findRef(nullptr), -1);
        QCOMPARE(list.findNextRef(nullptr), -1);
        QCOMPARE(list.contains(nullptr), 0u);
        QCOMPARE(list.containsRef(nullptr), 0u);
    }

    void theSameItemMayBeThereTwice()
    {
        Number number(1);
        Q3PtrList<Number> list;
        list.append(&number);
        list.append(&number);
        QCOMPARE(list.containsRef(&number), 2u);
        QVERIFY(list.removeRef(&number));
        QCOMPARE(list.count(), 1u);
    }

    void sortOrdersByComparisonAndKeepsEqualOnes()
    {
        ValueList list;
        list.setAutoDelete(true);
        appendNew(list, {3, 1, 2, 1, 3, 2});
        const Number *first_one = list.at(1);
        const Number *second_one = list.at(3);
        const Number *current = list.at(4);
        list.sort();
        QCOMPARE(listText(list), QString("1 1 2 2 3 [3]"));
        QVERIFY(list.current() == current);
        QVERIFY(list.at(0) == first_one);
        QVERIFY(list.at(1) == second_one);
        QCOMPARE(list.last()->value, 3);
        QCOMPARE(list.prev()->value, 3);
        QCOMPARE(list.prev()->value, 2); // backwards too

        ValueList many;
        many.setAutoDelete(true);
        for (int i = 0; i < 300; ++i)
            many.append(new Number(i % 3));
        const std::vector<Number *> before(many.begin(), many.end());
        many.sort();
        auto sorted = many.begin();
        for (size_t value = 0; value < 3; ++value) {
            for (size_t i = value; i < before.size(); i += 3)
                QVERIFY(*sorted++ == before[i]);
        }

        ValueList empty;
        empty.sort();
        QVERIFY(empty.isEmpty());
    }

    void sortWithoutAComparisonOrdersAddresses()
    {
        Number numbers[] = {Number(0), Number(1), Number(2)};
        Q3PtrList<Number> list;
        for (const int i : {2, 0, 1})
            list.append(&numbers[i]);
        list.sort();
        QCOMPARE(listText(list), QString("0 [1] 2"));
    }

    void inSortKeepsOrder()
    {
        ValueList list;
        list.setAutoDelete(true);
        for (const int value : {3, 1, 2})
            list.inSort(new Number(value));
        QCOMPARE(listText(list), QString("1 [2] 3"));
        auto *two = new Number(2);
        list.inSort(two);
        QCOMPARE(listText(list), QString("1 2 [2] 3")); // behind its equal
        QVERIFY(list.current() == two);
        list.inSort(new Number(4));
        QCOMPARE(listText(list), QString("1 2 2 3 [4]"));
    }

    void listsAreEqualByTheirItems()
    {
        Number one(1), other_one(1), two(2);
        Q3PtrList<Number> a, b;
        QVERIFY(a == b);
        a.append(&one);
        QVERIFY(a != b);
        b.append(&one);
        QVERIFY(a == b);
        a.append(&two);
        b.prepend(&two);
        QVERIFY(a != b); // the order counts
        ValueList c, d;
        c.append(&one);
        d.append(&other_one);
        QVERIFY(c == d); // by value here
        QVERIFY(!(c != d));
        d.append(&two);
        QVERIFY(c != d);
    }

    void aCopySharesTheItemsAndOwnsNone()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        appendNew(list, {1, 2});
        list.first();
        {
            Q3PtrList<Number> copy(list);
            QVERIFY(!copy.autoDelete());
            QVERIFY(copy == list);
            QCOMPARE(listText(copy), QString("1 [2]"));
            copy.removeFirst();
            QCOMPARE(listText(list), QString("[1] 2"));
        }
        QCOMPARE(Number::alive, 2);
    }

    void assignmentReplacesTheItems()
    {
        Number one(1), two(2);
        Q3PtrList<Number> source;
        source.append(&one);
        source.append(&two);
        Q3PtrList<Number> target;
        target.setAutoDelete(true);
        appendNew(target, {7, 8, 9});
        target = source;
        QCOMPARE(Number::alive, 2);   // its own were deleted
        QVERIFY(target.autoDelete()); // ownership is not assigned
        QCOMPARE(listText(target), QString("1 [2]"));
        const auto &same = target;
        target = same;
        QCOMPARE(listText(target), QString("1 [2]"));
        target.setAutoDelete(false);
    }

    void clearDeletesOnlyWhatIsOwned()
    {
        Number one(1);
        Q3PtrList<Number> list;
        list.append(&one);
        list.clear();
        QVERIFY(list.isEmpty());
        QCOMPARE(list.at(), -1);
        QCOMPARE(Number::alive, 1);
        list.setAutoDelete(true);
        QVERIFY(list.autoDelete());
        appendNew(list, {1, 2, 3});
        list.clear();
        QCOMPARE(Number::alive, 1);
        appendNew(list, {4});
        QCOMPARE(listText(list), QString("[4]"));
    }

    void theDestructorDeletesWhatIsOwned()
    {
        {
            Q3PtrList<Number> list;
            appendNew(list, {1, 2});
            list.setAutoDelete(true); // for those that are there already, too
        }
        QCOMPARE(Number::alive, 0);
    }

    void anItemMayUseTheListWhenItIsDeleted()
    {
        Q3PtrList<Number> list;
        list.setAutoDelete(true);
        appendNew(list, {1, 2, 3});
        Number *second = list.at(1);
        uint seen = 99;
        second->on_deletion = [&] {
            seen = list.count();
            QVERIFY(!list.removeRef(second)); // it has left already
        };
        QVERIFY(list.remove(1u));
        QCOMPARE(seen, 2u);
        list.getFirst()->on_deletion = [&] {
            seen = list.count();
        };
        list.clear();
        QCOMPARE(seen, 0u);
    }

    void anItemPutInWhileTheListGoesIsNotLost()
    {
        Number outside(9);
        {
            Q3PtrList<Number> list;
            list.setAutoDelete(true);
            appendNew(list, {1});
            list.getFirst()->on_deletion = [&] {
                list.append(&outside);
            };
        }
        QCOMPARE(Number::alive, 1); // neither deleted nor its node leaked
    }

    void constItemsAreDeletedToo()
    {
        Q3PtrList<const Number> list;
        list.setAutoDelete(true);
        list.append(new Number(1));
        const Number *number = list.getFirst();
        QCOMPARE(list.findRef(number), 0);
        QVERIFY(list.removeFirst());
        QCOMPARE(Number::alive, 0);
    }

    void aListMayKeepCopies()
    {
        Number one(1);
        CopyingList list;
        list.append(&one);
        list.prepend(&one);
        QVERIFY(list.replace(1, &one));
        QCOMPARE(Number::alive, 1 + 2);
        QVERIFY(list.getFirst() != &one);
        Q3PtrList<Number> copy(list); // a plain list copies pointers
        QCOMPARE(Number::alive, 1 + 2);
        QVERIFY(copy.getFirst() == list.getFirst());
    }

    void deletionMayBeOverridden()
    {
        QStringList told;
        {
            TellingList list;
            list.told = &told;
            list.setAutoDelete(true);
            appendNew(list, {1, 2, 3, 4, 5});
            list.removeFirst();
            list.replace(0, new Number(20));
            delete list.takeNode(list.currentNode());
        }
        QCOMPARE(told, (QStringList{"1", "2", "3", "4", "5"}));
    }
};

TAVI_TEST_MAIN(TestQ3PtrList)
#include "tst_q3ptrlist.moc"
