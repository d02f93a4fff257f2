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

} // namespace

bool WorkerEventQueueBase::expectEvent()
{
    return expected_++ < posted_limit;
}

bool WorkerEventQueueBase::takeEvent()
{
    return expected_ > 0 && expected_-- > posted_limit;
}

void WorkerEventQueueBase::postEvent()
{
    QCoreApplication::postEvent(receiver_, new QEvent(QEvent::User));
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
