// SPDX-License-Identifier: MIT
#include "tests/qt3/numberlist.h"
#include "tests/support/tavitest.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <vector>

static_assert(std::bidirectional_iterator<Q3PtrList<Number>::iterator>);
static_assert(std::bidirectional_iterator<Q3PtrList<const Number>::const_iterator>);
static_assert(std::is_same_v<std::iter_value_t<Q3PtrList<const Number>::iterator>, const Number *>);

/// Both kinds of iterators over a list of pointers.
class TestQ3PtrListIterators : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        TaviTest::init();
        list = std::make_unique<Q3PtrList<Number>>();
        list->setAutoDelete(true);
        appendNew(*list, {1, 2, 3, 4});
        list->at(1);
    }

    void cleanup()
    {
        list.reset();
        QCOMPARE(Number::alive, 0);
        TaviTest::cleanup();
    }

    void anIteratorBeginsAtTheFirst()
    {
        const Q3PtrListIterator<Number> it(*list);
        QCOMPARE(it.current()->value, 1);
        QVERIFY(it.atFirst() && !it.atLast());
        QCOMPARE(it.count(), 4u);
        QVERIFY(!it.isEmpty());
        QCOMPARE((*it)->value, 1);
        const Number *by_cast = it;
        QCOMPARE(by_cast->value, 1);
    }

    void ofAnEmptyListItStandsOnNone()
    {
        const Q3PtrList<Number> empty;
        Q3PtrListIterator<Number> it(empty);
        QVERIFY(it.isEmpty() && !it.current() && !it.atFirst() && !it.atLast());
        QVERIFY(!it.toFirst() && !it.toLast() && !++it && !--it && !it() && !(it += 1) && !(it -= 1));
    }

    void itWalksBothWays()
    {
        Q3PtrListIterator<Number> it(*list);
        QCOMPARE((++it)->value, 2);
        QCOMPARE((it += 2)->value, 4);
        QVERIFY(it.atLast() && !it.atFirst());
        QVERIFY(!++it); // past the end
        QVERIFY(!it.current());
        QVERIFY(!--it); // and from none nothing leads back
        QCOMPARE(it.toLast()->value, 4);
        QCOMPARE((--it)->value, 3);
        QCOMPARE((it -= 2)->value, 1);
        QVERIFY(!(it -= 1));
        QCOMPARE(it.toFirst()->value, 1);
        QVERIFY(!(it += 4));
        QCOMPARE(it.toFirst()->value, 1);
        QVERIFY(it += 0);
        QCOMPARE(it.current()->value, 1);
        QCOMPARE(listText(*list), QString("1 [2] 3 4")); // the list's own current item does not move
    }

    void theCallOperatorReturnsTheItemLeft()
    {
        Q3PtrListIterator<Number> it(*list);
        std::vector<int> seen;
        while (const Number *number = it())
            seen.push_back(number->value);
        QCOMPARE(seen, (std::vector<int>{1, 2, 3, 4}));
    }

    void severalWalkIndependently()
    {
        Q3PtrListIterator<Number> a(*list);
        ++a;
        Q3PtrListIterator<Number> b(a);
        ++b;
        QCOMPARE(a.current()->value, 2);
        QCOMPARE(b.current()->value, 3);
        a = b;
        QCOMPARE(a.current()->value, 3);
        Q3PtrList<Number> other;
        other.setAutoDelete(true);
        appendNew(other, {9});
        const Q3PtrListIterator<Number> c(other);
        a = c;
        QCOMPARE(a.current()->value, 9);
        QCOMPARE(a.count(), 1u);
        const auto &same = a;
        a = same;
        QCOMPARE(a.current()->value, 9);
        list->removeFirst(); // does not concern it any more
        other.removeFirst(); // this does
        QVERIFY(!a.current() && !c.current());
        QCOMPARE(b.current()->value, 3);
    }

    void removalMovesTheIteratorsOn_data()
    {
        QTest::addColumn<int>("removed");
        QTest::addColumn<int>("then");
        QTest::newRow("first") << 0 << 2;
        QTest::newRow("middle") << 2 << 4;
        QTest::newRow("last") << 3 << 3;
    }

    void removalMovesTheIteratorsOn()
    {
        QFETCH(int, removed);
        QFETCH(int, then);
        const uint index = static_cast<uint>(removed);
        Q3PtrListIterator<Number> on_it(*list);
        on_it += index;
        Q3PtrListIterator<Number> also_on_it(on_it);
        Q3PtrListIterator<Number> elsewhere(*list);
        ++elsewhere;
        QVERIFY(list->remove(index));
        QCOMPARE(on_it.current()->value, then);
        QVERIFY(on_it.current() == list->current());
        QCOMPARE(also_on_it.current()->value, then);
        QCOMPARE(elsewhere.current()->value, 2);
    }

    void removalOfANodeMovesTheIteratorsOn()
    {
        Q3PtrListIterator<Number> on_second(*list);
        ++on_second;
        list->removeNode(list->currentNode());
        QCOMPARE(on_second.current()->value, 3);
        QCOMPARE(list->current()->value, 1); // here the list goes to its first
        Q3PtrListIterator<Number> on_last(*list);
        on_last.toLast();
        list->last();
        delete list->takeNode(list->currentNode());
        QCOMPARE(on_last.current()->value, 3);
    }

    void allMayBeRemovedInAWalk()
    {
        const Q3PtrListIterator<Number> it(*list);
        int removed = 0;
        while (const Number *number = it.current()) {
            QVERIFY(list->removeRef(number));
            ++removed;
        }
        QCOMPARE(removed, 4);
        QVERIFY(list->isEmpty());
    }

    void insertionIsSeen()
    {
        Q3PtrListIterator<Number> it(*list);
        list->insert(1, new Number(15));
        QCOMPARE((++it)->value, 15);
        QCOMPARE(it.count(), 5u);
    }

    void sortingKeepsThemOnTheirItems()
    {
        ValueList values;
        values.setAutoDelete(true);
        appendNew(values, {3, 1, 2});
        Q3PtrListIterator<Number> it(values);
        values.sort();
        QCOMPARE(it.current()->value, 3);
        QVERIFY(it.atLast());
        QCOMPARE((--it)->value, 2);
    }

    void clearLeavesThemOnNone()
    {
        Q3PtrListIterator<Number> it(*list);
        list->clear();
        QVERIFY(!it.current());
        QVERIFY(it.isEmpty());
        appendNew(*list, {7});
        QVERIFY(!it.current());
        QCOMPARE(it.toFirst()->value, 7);
    }

    void theyOutliveTheList()
    {
        Q3PtrListIterator<Number> first(*list);
        Q3PtrListIterator<Number> second(first);
        list.reset();
        for (Q3PtrListIterator<Number> *it : {&first, &second}) {
            QVERIFY(!it->current());
            QCOMPARE(it->count(), 0u);
            QVERIFY(it->isEmpty() && !it->toFirst() && !it->toLast() && !++*it && !--*it);
        }
        const Q3PtrListIterator<Number> of_none(first);
        QVERIFY(!of_none.current());
    }

    void theyMayGoInAnyOrder()
    {
        auto a = std::make_unique<Q3PtrListIterator<Number>>(*list);
        auto b = std::make_unique<Q3PtrListIterator<Number>>(*list);
        auto c = std::make_unique<Q3PtrListIterator<Number>>(*list);
        b.reset();
        list->removeFirst();
        QCOMPARE(a->current()->value, 2);
        QCOMPARE(c->current()->value, 2);
        a.reset();
        c.reset();
        list->removeFirst();
        const Q3PtrListIterator<Number> d(*list);
        QCOMPARE(d.current()->value, 3);
    }

    void loopsLeaveTheCurrentItemAlone()
    {
        int sum = 0;
        for (const Number *number : *list)
            sum += number->value;
        QCOMPARE(sum, 10);
        QCOMPARE(listText(*list), QString("1 [2] 3 4"));
    }

    void algorithmsWork()
    {
        const Q3PtrList<Number> &constant = *list;
        const auto is_three = [](const Number *number) {
            return number->value == 3;
        };
        QCOMPARE((*std::find_if(constant.begin(), constant.end(), is_three))->value, 3);
        QCOMPARE(std::distance(constant.constBegin(), constant.constEnd()), std::ptrdiff_t(4));
        std::vector<int> backwards;
        for (auto it = std::make_reverse_iterator(list->end()); it != std::make_reverse_iterator(list->begin()); ++it)
            backwards.push_back((*it)->value);
        QCOMPARE(backwards, (std::vector<int>{4, 3, 2, 1}));
        Q3PtrList<Number>::ConstIterator it = list->begin();
        QCOMPARE((*it++)->value, 1);
        QCOMPARE((*it--)->value, 2);
        QCOMPARE((*it)->value, 1);
        Q3PtrList<Number>::Iterator by_default;
        by_default = it;
        QVERIFY(by_default == it && it != list->end());
    }

    void eraseReturnsThePositionBehind()
    {
        auto it = list->begin();
        ++it;
        it = list->erase(it);
        QCOMPARE((*it)->value, 3);
        QCOMPARE(Number::alive, 3);
        ++it;
        it = list->erase(it);
        QVERIFY(it == list->end());
        QCOMPARE(listText(*list), QString("[1] 3"));
    }

private:
    std::unique_ptr<Q3PtrList<Number>> list;
};

TAVI_TEST_MAIN(TestQ3PtrListIterators)
#include "tst_q3ptrlist_iterators.moc"
