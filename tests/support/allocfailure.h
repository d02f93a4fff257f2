// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_ALLOCFAILURE_H
#define TESTS_SUPPORT_ALLOCFAILURE_H

#include "tavilib/tavialloc_p.h"

/// Makes one allocation of a record or of one of its strings fail while it lives: the one with the given number,
/// counted from 1; with 0 none fails, and they are only counted. Only allocations by way of `tavialloc_p.h` count.
class AllocFailure
{
public:
    explicit AllocFailure(int number) : number_(number) { TaviAllocSetHook(ask, this); }
    ~AllocFailure() { TaviAllocSetHook(nullptr, nullptr); }
    AllocFailure(const AllocFailure &) = delete;
    AllocFailure &operator=(const AllocFailure &) = delete;

    /// How many allocations were asked for.
    int count() const { return count_; }
    /// Whether it came to the one that failed.
    bool happened() const { return number_ > 0 && count_ >= number_; }

private:
    static bool ask(size_t, void *context)
    {
        auto *self = static_cast<AllocFailure *>(context);
        return ++self->count_ != self->number_;
    }

    int number_;
    int count_ = 0;
};

#endif
