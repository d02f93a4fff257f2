// SPDX-License-Identifier: MIT
#ifndef FOUNDATION_WORKEREVENTQUEUEBASE_H
#define FOUNDATION_WORKEREVENTQUEUEBASE_H

#include "foundation/taviwidgets_export.h"

#include <cstddef>

class QObject;

/// What of a WorkerEventQueue does not depend on the kind of its records: the events that wake the receiver, and the
/// memory that a burst leaves behind. Of no use but as its base.
///
/// **Events.** Each record comes to one event of type QEvent::User at the receiver. No more than a thousand or so
/// stand in Qt's list of posted events at a time, because that list grows as needed and never shrinks: the others
/// follow as those come. Between them other events have their turn, so that a long burst does not hold up the user
/// interface. Some event is always on its way while one is owed; what is posted to the receiver behind a record
/// therefore arrives behind an event that was.
class TAVIWIDGETS_EXPORT WorkerEventQueueBase
{
public:
    WorkerEventQueueBase(const WorkerEventQueueBase &) = delete;
    WorkerEventQueueBase &operator=(const WorkerEventQueueBase &) = delete;

protected:
    /// Events go to @a receiver, which lives at least as long as this object.
    explicit WorkerEventQueueBase(QObject *receiver) : receiver_(receiver) {}
    ~WorkerEventQueueBase() = default;

    /// Under the queue's lock: one more event is to come. Whether it is to be posted now.
    bool expectEvent();
    /// Under the queue's lock: one event has come; that one more is said to have come does no harm. Whether one that
    /// is owed is to be posted now.
    bool takeEvent();
    /// Without the lock. From any thread; O(1).
    void postEvent();

    /// Tells that @a count records were freed in one go. Behind a long burst the memory allocator would keep their
    /// memory for more of the same: it is asked to give it back to the system. O(1) for fewer than 100,000 records,
    /// else O(memory that the allocator holds).
    static void giveBack(size_t count);

private:
    QObject *const receiver_;
    size_t expected_ = 0; ///< Events that have not come yet. Those up to the limit are posted, the rest is owed.
};

#endif
