// SPDX-License-Identifier: MIT
#include "foundation/workereventqueuebase.h"

#include <QCoreApplication>
#include <QEvent>

#ifdef __GLIBC__
#include <malloc.h>
#endif

namespace {

/// How many events may stand in Qt's list. Two would do for the order.
constexpr size_t posted_limit = 1024;
constexpr size_t long_burst = 100000;

void postTo(QObject *receiver)
{
    QCoreApplication::postEvent(receiver, new QEvent(QEvent::User));
}

} // namespace

void WorkerEventQueueBase::wake()
{
    if (expected_.fetch_add(1) < posted_limit)
        postTo(receiver_);
}

void WorkerEventQueueBase::wasWoken()
{
    // Only this thread takes away, so that it cannot fall below zero.
    if (expected_.load() > 0 && expected_.fetch_sub(1) > posted_limit)
        postTo(receiver_);
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
