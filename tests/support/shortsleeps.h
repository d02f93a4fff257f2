// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_SHORTSLEEPS_H
#define TESTS_SUPPORT_SHORTSLEEPS_H

#include <csignal>
#include <ctime>

/// Lets a `sleep()` of the thread that makes one end after two milliseconds, as any signal does; at most one at a
/// time in a program. For tests that stop a read many times: the driver asks in steps of a second whether the read
/// has ended, and a step that is cut short asks earlier and is otherwise the same step.
class ShortSleeps
{
public:
    ShortSleeps();
    ~ShortSleeps();
    ShortSleeps(const ShortSleeps &) = delete;
    ShortSleeps &operator=(const ShortSleeps &) = delete;

private:
    struct sigaction former_ = {};
    timer_t timer_ = {};
};

#endif
