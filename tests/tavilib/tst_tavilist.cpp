// SPDX-License-Identifier: MIT
#include "tavilib/tavilist.h"
#include "tests/support/tavitest.h"

#include <array>
#include <string>

namespace {

/// A record on the stack; its name is borrowed.
struct Item {
    TAVIPACKETHEADER header = {};
    const char *name = nullptr;
    int number = 0;
};

QString namesOf(const Item *head)
{
    QStringList names;
    for (; head; head = NextInList(head))
        names.append(QString::fromLatin1(head->name ? head->name : "(null)"));
    return names.join(',');
}

} // namespace

class TestTaviList : public TaviTest
{
    Q_OBJECT

    std::array<Item, 5> items_;
    Item *head_ = nullptr;

    /// A list a, b, c, ... of the first @a count items.
    void makeList(int count)
    {
        static const char *const names[] = {"a", "b", "c", "d", "e"};
        head_ = nullptr;
        for (int i = 0; i < int(items_.size()); ++i) {
            items_[size_t(i)] = {{}, names[i], i};
            if (i < count)
                AddList(&head_, &items_[size_t(i)]);
        }
    }

private Q_SLOTS:
    void addListKeepsTheOrderOfInsertion()
    {
        makeList(4);
        QCOMPARE(namesOf(head_), QString("a,b,c,d"));
        QVERIFY(!items_[3].header.next);
    }

    void addListAddsOneItemWhateverItPointsAt()
    {
        makeList(2);
        items_[2].header.next = &items_[3];
        AddList(&head_, &items_[2]);
        QCOMPARE(namesOf(head_), QString("a,b,c"));
    }

    void nullArgumentsAreIgnored()
    {
        makeList(2);
        Item *none = nullptr;
        Item **nowhere = nullptr;
        AddList(&head_, none);
        AddList(nowhere, &items_[2]);
        AddListList(&head_, none);
        AddListList(nowhere, &items_[2]);
        RemoveItemFromList(&head_, none);
        RemoveItemFromList(nowhere, &items_[0]);
        RemoveItemFromList(&none, &items_[0]);
        InsertOrderedList(&head_, none, "a");
        InsertOrderedList(nowhere, &items_[2], "a");
        QCOMPARE(namesOf(head_), QString("a,b"));
        QVERIFY(!none);
        QVERIFY(!items_[2].header.next);
    }

    void addListListAppendsAWholeList()
    {
        makeList(2);
        Item *second = nullptr;
        AddList(&second, &items_[2]);
        AddList(&second, &items_[3]);
        AddListList(&head_, second);
        QCOMPARE(namesOf(head_), QString("a,b,c,d"));
        Item *empty = nullptr;
        AddListList(&empty, head_);
        QCOMPARE(empty, head_);
    }

    void removeUnlinksAndDoesNotFree_data()
    {
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("left");
        QTest::newRow("head") << 0 << QString("b,c");
        QTest::newRow("middle") << 1 << QString("a,c");
        QTest::newRow("tail") << 2 << QString("a,b");
        QTest::newRow("not in the list") << 3 << QString("a,b,c");
    }
    void removeUnlinksAndDoesNotFree()
    {
        QFETCH(int, index);
        QFETCH(QString, left);
        makeList(3);
        Item &item = items_[size_t(index)];
        item.number = 42;
        RemoveItemFromList(&head_, &item);
        QCOMPARE(namesOf(head_), left);
        QVERIFY(!item.header.next);
        QCOMPARE(item.number, 42);
    }

    void anItemOutsideTheListKeepsItsOwnNext()
    {
        makeList(2);
        items_[2].header.next = &items_[3];
        RemoveItemFromList(&head_, &items_[2]);
        QCOMPARE(namesOf(&items_[2]), QString("c,d"));
        QCOMPARE(namesOf(head_), QString("a,b"));
    }

    void removingTheOnlyItemLeavesANullHead()
    {
        makeList(1);
        RemoveItemFromList(&head_, head_);
        QVERIFY(!head_);
        QCOMPARE(ListLength(head_), 0);
    }

    void aQueueIsDrainedFromItsHead()
    {
        makeList(5);
        QStringList drained;
        while (Item *item = head_) {
            RemoveItemFromList(&head_, item);
            drained.append(QString::fromLatin1(item->name));
        }
        QCOMPARE(drained.join(','), QString("a,b,c,d,e"));
    }

    void lengthCountsItems()
    {
        QCOMPARE(ListLength(static_cast<Item *>(nullptr)), 0);
        for (int count = 0; count <= 5; ++count) {
            makeList(count);
            QCOMPARE(ListLength(head_), count);
        }
    }

    void orderedInsertionSortsByTheKey()
    {
        makeList(0);
        for (const int index : {2, 0, 4, 1, 3})
            InsertOrderedList(&head_, &items_[size_t(index)], items_[size_t(index)].name);
        QCOMPARE(namesOf(head_), QString("a,b,c,d,e"));
    }

    void equalKeysStayInTheOrderOfInsertion()
    {
        makeList(0);
        for (Item &item : items_) {
            item.name = item.number == 2 ? "a" : "x";
            InsertOrderedList(&head_, &item, item.name);
        }
        std::vector<int> numbers;
        for (const Item *item = head_; item; item = NextInList(item))
            numbers.push_back(item->number);
        QCOMPARE(numbers, (std::vector<int>{2, 0, 1, 3, 4}));
    }

    void orderIsBytewise()
    {
        makeList(0);
        const std::array<const char *, 5> ordered = {"", "A", "AA", "a", "\xc3\xa4"};
        for (const int index : {4, 2, 0, 3, 1}) {
            items_[size_t(index)].name = ordered[size_t(index)];
            InsertOrderedList(&head_, &items_[size_t(index)], ordered[size_t(index)]);
        }
        int index = 0;
        for (const Item *item = head_; item; item = NextInList(item))
            QCOMPARE(item->name, ordered[size_t(index++)]);
        QCOMPARE(index, 5);
    }

    void aNullKeyCountsAsAnEmptyText()
    {
        makeList(0);
        items_[0].name = "a";
        items_[1].name = nullptr;
        items_[2].name = "";
        for (Item *item : {&items_[0], &items_[1], &items_[2]})
            InsertOrderedList(&head_, item, item->name);
        QCOMPARE(namesOf(head_), QString("(null),,a"));
    }

    void theKeyGivenCountsForTheNewItemOnly()
    {
        makeList(0);
        InsertOrderedList(&head_, &items_[1], "b");
        InsertOrderedList(&head_, &items_[0], "z"); // its name, "a", is not looked at
        QCOMPARE(namesOf(head_), QString("b,a"));
    }

    void anotherKeyThanTheNameMaySort()
    {
        makeList(0);
        static const char *const digits[] = {"4", "3", "2", "1", "0"};
        const auto digit = [](const Item &item) {
            return digits[item.number];
        };
        for (Item &item : items_)
            InsertOrderedList(&head_, &item, digit(item), digit);
        QCOMPARE(namesOf(head_), QString("e,d,c,b,a"));
    }

    void orderedInsertionSetsTheNextOfAReusedItem()
    {
        makeList(0);
        items_[1].header.next = &items_[4];
        InsertOrderedList(&head_, &items_[1], "b");
        QCOMPARE(namesOf(head_), QString("b"));
    }
};

TAVI_TEST_MAIN(TestTaviList)
#include "tst_tavilist.moc"
