// SPDX-License-Identifier: MIT
#include "foundation/workereventqueue.h"
#include "tests/support/tavitest.h"

#include <atomic>
#include <functional>
#include <thread>
#include <vector>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
/// Of the sanitizers' interface, whose header does not come with every compiler.
extern "C" size_t __sanitizer_get_current_allocated_bytes();
#else
#include <malloc.h>
#endif

#ifdef __SANITIZE_ADDRESS__
/// What is freed is not held back, so that it does not count as allocated.
extern "C" const char *__asan_default_options()
{
    return "quarantine_size_mb=0:thread_local_quarantine_size_kb=0";
}
#endif

namespace {

/// Bytes of the whole process that are allocated and not freed.
size_t allocatedBytes()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return __sanitizer_get_current_allocated_bytes();
#else
    const struct mallinfo2 info = mallinfo2();
    return info.uordblks + info.hblkhd;
#endif
}

struct Record {
    TAVIPACKETHEADER header;
    int producer;
    int number;
};

std::atomic<int> records_alive{0};

Record *newRecord(int producer, int number)
{
    ++records_alive;
    return new Record{{}, producer, number};
}

void freeRecord(Record *record)
{
    --records_alive;
    delete record;
}

/// A receiver as the queue's documentation shows it.
class Receiver : public QObject
{
public:
    Receiver() : queue(this, freeRecord) {}

    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::User)
            return QObject::event(event);
        ++events;
        queue.drain([this](const Record *record) {
            seen.emplace_back(record->producer, record->number);
            if (on_record)
                on_record(*record);
        });
        return true;
    }

    WorkerEventQueue<Record> queue;
    std::vector<std::pair<int, int>> seen;
    std::function<void(const Record &)> on_record;
    int events = 0;
};

} // namespace

class TestWorkerEventQueue : public TaviTest
{
    Q_OBJECT

private Q_SLOTS:
    void cleanup()
    {
        QCOMPARE(records_alive.load(), 0);
        TaviTest::cleanup();
    }

    void recordsArriveInOrderFromTheEventLoop()
    {
        Receiver receiver;
        for (int i = 0; i < 3; ++i)
            receiver.queue.post(newRecord(0, i));
        QVERIFY(receiver.seen.empty());
        QCOMPARE(receiver.queue.length(), size_t(3));
        QCoreApplication::processEvents();
        const std::vector<std::pair<int, int>> expected = {{0, 0}, {0, 1}, {0, 2}};
        QCOMPARE(receiver.seen, expected);
        QCOMPARE(receiver.queue.length(), size_t(0));
    }

    void everyRecordPostsAnEventOfItsOwn_data()
    {
        QTest::addColumn<int>("count");
        for (const int count : {1, 5, 1023, 1024, 1025, 10000})
            QTest::addRow("%d", count) << count;
    }

    void everyRecordPostsAnEventOfItsOwn()
    {
        QFETCH(int, count);
        Receiver receiver;
        for (int i = 0; i < count; ++i)
            receiver.queue.post(newRecord(0, i));
        QTRY_VERIFY(receiver.events >= count);
        QCoreApplication::processEvents();
        QCOMPARE(receiver.events, count);
        QCOMPARE(receiver.seen.size(), size_t(count));
    }

    void recordsArriveBeforeAnEventThatWasPostedBehindThem()
    {
        Receiver receiver;
        size_t seen_at_the_end = 0;
        for (int i = 0; i < 5000; ++i)
            receiver.queue.post(newRecord(0, i));
        const auto end = [&] {
            seen_at_the_end = receiver.seen.size();
        };
        QMetaObject::invokeMethod(&receiver, end, Qt::QueuedConnection);
        QTRY_VERIFY(seen_at_the_end > 0);
        QCOMPARE(seen_at_the_end, size_t(5000));
    }

    void aLongBurstLeavesOtherEventsTheirTurn()
    {
        Receiver receiver;
        for (int i = 0; i < 5000; ++i)
            receiver.queue.post(newRecord(0, i));
        QCoreApplication::sendPostedEvents();
        QCOMPARE(receiver.seen.size(), size_t(5000));
        QVERIFY(receiver.events < 5000);
        QTRY_COMPARE(receiver.events, 5000);
    }

    void drainsWithoutAnEventDoNoHarm()
    {
        Receiver receiver;
        const auto drain = [&receiver] {
            receiver.queue.drain(
                [&receiver](const Record *record) { receiver.seen.emplace_back(record->producer, record->number); });
        };
        drain();
        for (int i = 0; i < 5000; ++i) {
            receiver.queue.post(newRecord(0, i));
            if (i % 2 == 0)
                drain();
        }
        QTRY_COMPARE(receiver.events, 5000);
        QCOMPARE(receiver.seen.size(), size_t(5000));
    }

    void memoryIsWhereItWasAfterTheReceiverWasHeldUp()
    {
        constexpr int count = 200000;
        Receiver receiver;
        const auto heldUp = [&receiver](int length) {
            receiver.events = 0;
            std::thread worker([&receiver, length] {
                for (int i = 0; i < length; ++i)
                    receiver.queue.post(newRecord(0, i));
            });
            worker.join();
            QTRY_COMPARE_WITH_TIMEOUT(receiver.events, length, 60000);
            QCOMPARE(receiver.seen.size(), size_t(length));
            std::vector<std::pair<int, int>>().swap(receiver.seen);
        };
        heldUp(100); // what is made once is made
        const size_t before = allocatedBytes();
        heldUp(count);
        const size_t after = allocatedBytes();
        QVERIFY2(after <= before + 100000, qPrintable(QStringLiteral("%1 to %2 bytes").arg(before).arg(after)));
    }

    void aNullRecordIsIgnored()
    {
        Receiver receiver;
        receiver.queue.post(nullptr);
        QCoreApplication::processEvents();
        QCOMPARE(receiver.events, 0);
        QCOMPARE(receiver.queue.length(), size_t(0));
    }

    void nothingIsLostOrDoubledBetweenThreads()
    {
        constexpr int producers = 4;
        constexpr int each = 5000;
        Receiver receiver;
        std::vector<std::thread> threads;
        for (int producer = 0; producer < producers; ++producer) {
            threads.emplace_back([&receiver, producer] {
                for (int i = 0; i < each; ++i)
                    receiver.queue.post(newRecord(producer, i));
            });
        }
        QTRY_COMPARE_WITH_TIMEOUT(receiver.seen.size(), size_t(producers * each), 60000);
        for (std::thread &thread : threads)
            thread.join();
        std::vector<int> next(producers, 0);
        for (const auto &[producer, number] : receiver.seen)
            QCOMPARE(number, next[static_cast<size_t>(producer)]++);
    }

    void aRecordPostedDuringADispatchIsHandedOutByTheSameDrain()
    {
        Receiver receiver;
        receiver.on_record = [&receiver](const Record &record) {
            if (record.number < 3)
                receiver.queue.post(newRecord(1, record.number + 1));
        };
        receiver.queue.post(newRecord(0, 0));
        QCoreApplication::sendPostedEvents(&receiver, QEvent::User);
        QCOMPARE(receiver.seen.size(), size_t(4));
    }

    void aNestedEventLoopLeavesTheRestToTheOuterDrain()
    {
        Receiver receiver;
        std::vector<int> order;
        receiver.on_record = [&](const Record &record) {
            order.push_back(record.number);
            if (record.number == 0)
                QCoreApplication::sendPostedEvents(&receiver, QEvent::User); // must not dispatch 1 and 2 inside 0
            order.push_back(-record.number);
        };
        for (int i = 0; i < 3; ++i)
            receiver.queue.post(newRecord(0, i));
        QCoreApplication::processEvents();
        const std::vector<int> expected = {0, 0, 1, -1, 2, -2};
        QCOMPARE(order, expected);
    }

    void clearDropsWhatIsQueued()
    {
        Receiver receiver;
        receiver.queue.post(newRecord(0, 0));
        receiver.queue.clear();
        QCOMPARE(records_alive.load(), 0);
        QCoreApplication::processEvents();
        QVERIFY(receiver.seen.empty());
    }

    void clearInADispatchDropsWhatTheDrainHasInHand()
    {
        Receiver receiver;
        receiver.on_record = [&receiver](const Record &record) {
            if (record.number == 1)
                receiver.queue.clear();
        };
        for (int i = 0; i < 5; ++i)
            receiver.queue.post(newRecord(0, i));
        QCoreApplication::processEvents();
        QCOMPARE(receiver.seen.size(), size_t(2));
        QCOMPARE(receiver.queue.length(), size_t(0));
    }

    void whatIsPostedAfterAClearInADispatchStillArrives()
    {
        Receiver receiver;
        receiver.on_record = [&receiver](const Record &record) {
            if (record.number == 1) {
                receiver.queue.clear();
                receiver.queue.post(newRecord(7, 7));
            }
        };
        for (int i = 0; i < 5; ++i)
            receiver.queue.post(newRecord(0, i));
        QCoreApplication::processEvents();
        const std::vector<std::pair<int, int>> expected = {{0, 0}, {0, 1}, {7, 7}};
        QCOMPARE(receiver.seen, expected);
    }

    void aDispatchMayDestroyTheReceiver()
    {
        auto *receiver = new Receiver;
        int dispatched = 0;
        receiver->on_record = [receiver, &dispatched](const Record &) {
            ++dispatched;
            // Not a thing of the receiver's is used behind this, this function object included.
            delete receiver;
        };
        for (int i = 0; i < 3; ++i)
            receiver->queue.post(newRecord(0, i));
        QCoreApplication::processEvents();
        QCOMPARE(dispatched, 1);
    }

    void destructionFreesWhatWasNeverDispatched()
    {
        {
            Receiver receiver;
            for (int i = 0; i < 10; ++i)
                receiver.queue.post(newRecord(0, i));
        }
        QCOMPARE(records_alive.load(), 0);
        QCoreApplication::processEvents(); // the events went with the receiver
    }

    void aReceiverMayGoWithManyEventsOnTheirWay()
    {
        auto receiver = std::make_unique<Receiver>();
        for (int i = 0; i < 5000; ++i)
            receiver->queue.post(newRecord(0, i));
        QCoreApplication::sendPostedEvents(receiver.get(), QEvent::User);
        receiver->queue.post(newRecord(0, 5000));
        receiver.reset();
        QCOMPARE(records_alive.load(), 0);
        QCoreApplication::processEvents();
    }
};

TAVI_TEST_MAIN(TestWorkerEventQueue)
#include "tst_workereventqueue.moc"
