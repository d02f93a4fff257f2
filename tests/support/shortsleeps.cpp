// SPDX-License-Identifier: MIT
#include "tests/support/shortsleeps.h"

#include <cstdio>
#include <cstdlib>
#include <unistd.h>

namespace {

constexpr long interval_ns = 2000000;

void require(int result, const char *what)
{
    if (result == 0)
        return;
    std::perror(what);
    std::abort();
}

} // namespace

ShortSleeps::ShortSleeps()
{
    struct sigaction action = {};
    action.sa_handler = [](int) {
    };
    action.sa_flags = SA_RESTART; // other calls go on; a sleep ends all the same
    require(sigaction(SIGALRM, &action, &former_), "sigaction");
    sigevent event = {};
    event.sigev_notify = SIGEV_THREAD_ID;
    event.sigev_signo = SIGALRM;
    event._sigev_un._tid = gettid(); // this thread alone: a worker's own sleeps are not touched
    require(timer_create(CLOCK_MONOTONIC, &event, &timer_), "timer_create");
    const itimerspec often = {{0, interval_ns}, {0, interval_ns}};
    require(timer_settime(timer_, 0, &often, nullptr), "timer_settime");
}

ShortSleeps::~ShortSleeps()
{
    timer_delete(timer_);
    sigaction(SIGALRM, &former_, nullptr);
}
