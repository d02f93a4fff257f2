// SPDX-License-Identifier: MIT
#ifndef FOUNDATION_WORKEREVENTQUEUE_H
#define FOUNDATION_WORKEREVENTQUEUE_H

#include "foundation/workereventqueuebase.h"
#include "tavilib/tavipacketchain.h"

#include <QEvent>

#include <mutex>

/// The hand-over of records from a worker thread to the thread of a QObject.
///
/// A worker gives records to post(); each record is followed by one custom event of type QEvent::User (1000), sent
/// to the receiver, which carries nothing and only says: look at the queue. The receiver's `event()` answers it with
/// drain(), which hands out everything that is queued, oldest first. In a long burst the events are spread over
/// several turns of the event loop (see WorkerEventQueueBase); the records do not wait for them.
///
/// @code
/// bool Follower::event(QEvent *event)
/// {
///     if (event->type() != QEvent::User)
///         return QObject::event(event);
///     queue.drain([this](const FollowerRecord *record) { dispatch(*record); });
///     return true;
/// }
/// @endcode
///
/// **Ownership.** The queue owns a record from post() until it is freed, behind its dispatch or by clear(), with the
/// function given at construction. The receiver owns the queue, as a member, and stops its workers before it goes.
///
/// **Memory.** A receiver that is held up lets the queue grow by what is posted. When it has been drained or cleared,
/// the memory of records and events is back where it was, also behind a million of them.
///
/// **Threads.** post() may be called from any thread; everything else from the receiver's thread alone. The lock
/// guards the list of posted records and nothing else: it is never held during a dispatch.
///
/// **Re-entry.** A dispatch may spin an event loop: a nested drain() returns at once and the outer one goes on. It
/// may call clear(): nothing that was queued before is dispatched afterwards. It may destroy the queue (with its
/// receiver): the drain then ends without touching it again.
template <TaviPacket T>
class WorkerEventQueue : private WorkerEventQueueBase
{
public:
    using FreeFunction = void (*)(T *);

    /// A queue that wakes @a receiver and frees records with @a free_record.
    WorkerEventQueue(QObject *receiver, FreeFunction free_record)
        : WorkerEventQueueBase(receiver), free_record_(free_record)
    {}

    /// Frees what is queued. No thread may post any more.
    ~WorkerEventQueue()
    {
        clear();
        if (destroyed_)
            *destroyed_ = true;
    }

    /// Appends @a record, which the queue owns from now on, and wakes the receiver. Null is ignored. O(1).
    void post(T *record)
    {
        if (!record)
            return;
        bool post_event = false;
        {
            const std::scoped_lock lock(mutex_);
            posted_.append(record);
            post_event = expectEvent();
        }
        if (post_event)
            postEvent();
    }

    /// Calls @a dispatch(T *) for every queued record, oldest first, those that arrive meanwhile included, and frees
    /// each behind its dispatch. Does nothing while a drain is under way.
    ///
    /// Every event of the queue is answered with one call, be it nested; calls besides do no harm.
    template <typename Dispatch>
    void drain(Dispatch dispatch)
    {
        bool post_event = false;
        {
            const std::scoped_lock lock(mutex_);
            post_event = takeEvent();
            if (!dispatching_)
                taken_.moveFrom(posted_);
        }
        if (post_event)
            postEvent();
        if (dispatching_)
            return;
        dispatching_ = true;
        bool destroyed = false;
        destroyed_ = &destroyed;
        const FreeFunction free_record = free_record_;
        size_t count = 0;
        do {
            while (T *record = taken_.takeFirst()) {
                dispatch(record);
                free_record(record);
                if (destroyed)
                    return;
                ++count;
            }
        } while (takePosted());
        giveBack(count);
        destroyed_ = nullptr;
        dispatching_ = false;
    }

    /// Frees everything that is queued without dispatching it, also what a drain under way has still in hand.
    void clear()
    {
        takePosted();
        const size_t count = taken_.length();
        for (T *record = taken_.takeAll(); record;) {
            T *next = NextInList(record);
            free_record_(record);
            record = next;
        }
        giveBack(count);
    }

    /// Whether a drain is under way.
    bool isDispatching() const { return dispatching_; }

    /// How many records wait.
    size_t length() const
    {
        const std::scoped_lock lock(mutex_);
        return posted_.length() + taken_.length();
    }

private:
    /// One lock for a whole burst: what is posted moves over to what is dispatched from.
    bool takePosted()
    {
        const std::scoped_lock lock(mutex_);
        taken_.moveFrom(posted_);
        return !taken_.isEmpty();
    }

    const FreeFunction free_record_;
    mutable std::mutex mutex_;
    TaviPacketChain<T> posted_; ///< Guarded by the mutex.
    TaviPacketChain<T> taken_;  ///< The receiver's thread alone.
    bool dispatching_ = false;
    bool *destroyed_ = nullptr; ///< Where a drain under way wants to be told that the queue is gone.
};

#endif
