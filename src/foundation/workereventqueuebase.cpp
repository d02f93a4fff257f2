// SPDX-License-Identifier: MIT
#include "foundation/workereventqueuebase.h"

#include <QCoreApplication>
#include <QEvent>

#include <atomic>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

/// How many events may stand in Qt's list. Two would do for the order.
constexpr size_t line_limit = 1024;
constexpr size_t long_burst = 100000;

} // namespace

/// The events of one queue that are not delivered yet. The first of them, up to the limit, are posted.
struct WorkerEventQueueBase::Line {
    QObject *receiver = nullptr; ///< Null when the queue is gone.
    std::atomic<size_t> length = 0;
};

/// Makes room for the next one when it is destroyed, which Qt does behind its delivery.
class WorkerEventQueueBase::WakeEvent : public QEvent
{
public:
    explicit WakeEvent(std::shared_ptr<Line> line) : QEvent(QEvent::User), line_(std::move(line)) {}
    ~WakeEvent() override
    {
        if (line_->length.fetch_sub(1) > line_limit && line_->receiver)
            QCoreApplication::postEvent(line_->receiver, new WakeEvent(line_));
    }
    WakeEvent(const WakeEvent &) = delete;
    WakeEvent &operator=(const WakeEvent &) = delete;

private:
    std::shared_ptr<Line> line_;
};

WorkerEventQueueBase::WorkerEventQueueBase(QObject *receiver) : line_(std::make_shared<Line>())
{
    line_->receiver = receiver;
}

WorkerEventQueueBase::~WorkerEventQueueBase()
{
    line_->receiver = nullptr;
}

void WorkerEventQueueBase::wake()
{
    if (line_->length.fetch_add(1) < line_limit)
        QCoreApplication::postEvent(line_->receiver, new WakeEvent(line_));
}

void WorkerEventQueueBase::giveBack(size_t count)
{
#ifdef __GLIBC__
    // Small pieces that were freed stay apart, and with them the pages, until the allocator is told to tidy up.
    if (count >= long_burst)
        malloc_trim(0);
#else
    static_cast<void>(count);
#endif
}
