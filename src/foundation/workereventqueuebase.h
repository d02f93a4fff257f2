// SPDX-License-Identifier: MIT
#ifndef FOUNDATION_WORKEREVENTQUEUEBASE_H
#define FOUNDATION_WORKEREVENTQUEUEBASE_H

#include "foundation/taviwidgets_export.h"

#include <cstddef>
#include <memory>

class QObject;

/// What of a WorkerEventQueue does not depend on the kind of its records: the events that wake the receiver, and the
/// memory that a burst leaves behind. Of no use but as its base.
///
/// **Events.** Each wake() comes to one event of type QEvent::User at the receiver. No more than a thousand or so
/// stand in Qt's list of posted events at a time, because that list grows as needed and never shrinks: the others
/// follow as those are delivered. Between them other events have their turn, so that a long burst does not hold up
/// the user interface. While one event waits, all records that were queued before it was delivered are handed out
/// with it; an event that is posted to the receiver behind a wake() therefore still arrives behind its record.
class TAVIWIDGETS_EXPORT WorkerEventQueueBase
{
public:
    WorkerEventQueueBase(const WorkerEventQueueBase &) = delete;
    WorkerEventQueueBase &operator=(const WorkerEventQueueBase &) = delete;

protected:
    /// Events go to @a receiver, which lives at least as long as this object.
    explicit WorkerEventQueueBase(QObject *receiver);
    /// In the receiver's thread. Events that are still on their way are dropped with the receiver.
    ~WorkerEventQueueBase();

    /// Sends one event. From any thread; O(1).
    void wake();

    /// Tells that @a count records were freed in one go. Behind a long burst the memory allocator would keep their
    /// memory for more of the same: it is asked to give it back to the system. O(1) for fewer than 100,000 records,
    /// else O(memory that the allocator holds).
    static void giveBack(size_t count);

private:
    struct Line;
    class WakeEvent;
    std::shared_ptr<Line> line_;
};

#endif
