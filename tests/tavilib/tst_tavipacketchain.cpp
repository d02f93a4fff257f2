// SPDX-License-Identifier: MIT
#include "tavilib/tavialloc_p.h"
#include "tavilib/tavipacketchain.h"
#include "tests/support/tavitest.h"

namespace {

PATCHDENSITY *newReading(int number)
{
    auto *reading = TaviAllocRecord<PATCHDENSITY>();
    reading->patch_index = number;
    return reading;
}

/// The readings of a list by their numbers; frees the list.
std::vector<int> freedNumbers(PATCHDENSITY *list)
{
    std::vector<int> numbers;
    for (const PATCHDENSITY *reading = list; reading; reading = NextInList(reading))
        numbers.push_back(reading->patch_index);
    TaviPacketFreeList(&list, TAVIPACKET_PATCHDENSITY);
    return numbers;
}

using Chain = TaviPacketChain<PATCHDENSITY>;
using Numbers = std::vector<int>;

} // namespace

class TestTaviPacketChain : public TaviTest
{
    Q_OBJECT

    static void fill(Chain &chain, int count)
    {
        for (int i = 0; i < count; ++i)
            chain.append(newReading(i));
    }

private Q_SLOTS:
    void aNewChainIsEmpty()
    {
        Chain chain;
        QVERIFY(chain.isEmpty());
        QVERIFY(!chain.head());
        QCOMPARE(chain.length(), size_t(0));
        QVERIFY(!chain.takeFirst());
        QVERIFY(!chain.takeFront(3));
        QVERIFY(!chain.takeAll());
        chain.freeAll(TAVIPACKET_PATCHDENSITY);
        chain.append(nullptr);
        chain.appendList(nullptr);
        QVERIFY(chain.isEmpty());
    }

    void appendKeepsOrderAndCounts()
    {
        Chain chain;
        fill(chain, 3);
        QVERIFY(!chain.isEmpty());
        QCOMPARE(chain.length(), size_t(3));
        QCOMPARE(chain.head()->patch_index, 0);
        QCOMPARE(freedNumbers(chain.takeAll()), (Numbers{0, 1, 2}));
        QCOMPARE(chain.length(), size_t(0));
        // It can be filled again.
        chain.append(newReading(7));
        QCOMPARE(freedNumbers(chain.takeAll()), (Numbers{7}));
    }

    void appendTakesOneRecordWhateverItPointsAt()
    {
        Chain chain;
        PATCHDENSITY *rest = newReading(2);
        PATCHDENSITY *first = newReading(1);
        first->header.next = rest;
        chain.append(first);
        chain.append(rest);
        QCOMPARE(freedNumbers(chain.takeAll()), (Numbers{1, 2}));
    }

    void aListIsTakenOver()
    {
        PATCHDENSITY *list = nullptr;
        for (int i = 0; i < 3; ++i)
            AddList(&list, newReading(i));
        Chain chain(list);
        QCOMPARE(chain.length(), size_t(3));
        PATCHDENSITY *more = newReading(3);
        more->header.next = newReading(4);
        chain.appendList(more);
        chain.append(newReading(5));
        QCOMPARE(chain.length(), size_t(6));
        QCOMPARE(freedNumbers(chain.takeAll()), (Numbers{0, 1, 2, 3, 4, 5}));
        QVERIFY(Chain(nullptr).isEmpty());
    }

    void takeFirstUnlinks()
    {
        Chain chain;
        fill(chain, 2);
        PATCHDENSITY *first = chain.takeFirst();
        QVERIFY(!first->header.next);
        QCOMPARE(chain.length(), size_t(1));
        chain.append(first);
        QCOMPARE(chain.head()->patch_index, 1);
        // Down to none and up again: the tail is forgotten with the last one.
        freedNumbers(chain.takeFirst());
        freedNumbers(chain.takeFirst());
        QVERIFY(chain.isEmpty());
        chain.append(newReading(9));
        QCOMPARE(freedNumbers(chain.takeAll()), (Numbers{9}));
    }

    void takeFrontTakesUpToSoMany_data()
    {
        QTest::addColumn<int>("count");
        for (const int count : {0, 1, 3, 4, 5, 100})
            QTest::addRow("%d", count) << count;
    }
    void takeFrontTakesUpToSoMany()
    {
        QFETCH(int, count);
        Chain chain;
        fill(chain, 4);
        const Numbers taken = freedNumbers(chain.takeFront(size_t(count)));
        const int expected = std::min(count, 4);
        QCOMPARE(int(taken.size()), expected);
        QCOMPARE(int(chain.length()), 4 - expected);
        chain.append(newReading(4));
        Numbers all = taken;
        for (const int number : freedNumbers(chain.takeAll()))
            all.push_back(number);
        QCOMPARE(all, (Numbers{0, 1, 2, 3, 4}));
    }

    void freeAllFreesAll()
    {
        Chain chain;
        fill(chain, 3);
        chain.freeAll(TAVIPACKET_PATCHDENSITY);
        QVERIFY(chain.isEmpty());
        QCOMPARE(chain.length(), size_t(0));
        chain.append(newReading(1));
        chain.freeAll(TAVIPACKET_PATCHDENSITY);
    }

    void aMovedChainIsEmpty()
    {
        Chain chain;
        fill(chain, 2);
        Chain other(std::move(chain));
        QVERIFY(chain.isEmpty()); // NOLINT(bugprone-use-after-move): that is the promise
        QCOMPARE(chain.length(), size_t(0));
        chain.append(newReading(8));
        QCOMPARE(freedNumbers(other.takeAll()), (Numbers{0, 1}));
        QCOMPARE(freedNumbers(chain.takeAll()), (Numbers{8}));
    }

    void aMillionRecordsAreAppendedInNoTime()
    {
        // With a walk to the tail for each this would take hours.
        std::vector<PATCHDENSITY> readings(1000000);
        Chain chain;
        for (PATCHDENSITY &reading : readings)
            chain.append(&reading);
        QCOMPARE(chain.length(), readings.size());
        QCOMPARE(ListLength(chain.takeAll()), 1000000);
    }
};

TAVI_TEST_MAIN(TestTaviPacketChain)
#include "tst_tavipacketchain.moc"
