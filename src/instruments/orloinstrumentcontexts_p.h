// SPDX-License-Identifier: MIT
#ifndef INSTRUMENTS_ORLOINSTRUMENTCONTEXTS_P_H
#define INSTRUMENTS_ORLOINSTRUMENTCONTEXTS_P_H

#include <cstdint>
#include <mutex>
#include <unordered_map>
#include <unordered_set>

class OrloInstrument;

/// Whom the contexts stand for that plug-ins hand back with their callbacks.
///
/// A plug-in may have threads of its own and call back when its read is long over, or its driver gone. So a context
/// is looked up and never followed. Each read has one of its own, which no other read will have: what comes late
/// cannot be taken for a value of the next. A driver's own address is a context as long as the driver lives.
///
/// Usable from any thread.
class OrloInstrumentContexts
{
public:
    /// The one there is. It is never destroyed, because threads of a plug-in may outlive main().
    static OrloInstrumentContexts &instance()
    {
        static auto *const contexts = new OrloInstrumentContexts;
        return *contexts;
    }

    void addDriver(OrloInstrument *driver)
    {
        const std::scoped_lock lock(mutex_);
        drivers_.emplace(driver, driver);
    }
    /// A new context for a read of @a driver.
    void *addRead(OrloInstrument *driver)
    {
        const std::scoped_lock lock(mutex_);
        last_read_ += 2; // odd, so that it is nobody's address
        auto *context = reinterpret_cast<void *>(last_read_);
        drivers_.emplace(context, driver);
        return context;
    }
    /// When this has returned, no use() of @a context is under way any more. Null is ignored.
    void remove(const void *context)
    {
        const std::scoped_lock lock(mutex_);
        drivers_.erase(context);
    }

    /// Calls @a function(OrloInstrument &) with the driver that @a context stands for, which lives that long, and
    /// returns true; false if it stands for nobody any more. The function must neither call back nor wait.
    template <typename Function>
    bool use(const void *context, Function function)
    {
        const std::scoped_lock lock(mutex_);
        const auto found = drivers_.find(context);
        if (found == drivers_.end())
            return false;
        function(*found->second);
        return true;
    }

    /// Whether nobody has asked this before of @a context, that of a read. All that never was one counts as one.
    bool isFirstLateCall(const void *context)
    {
        const std::scoped_lock lock(mutex_);
        const auto number = reinterpret_cast<uintptr_t>(context);
        const bool was_read = number % 2 == 1 && number > 1 && number <= last_read_;
        return late_reads_.insert(was_read ? number : 0).second;
    }

private:
    std::mutex mutex_;
    std::unordered_map<const void *, OrloInstrument *> drivers_;
    std::unordered_set<uintptr_t> late_reads_; ///< No more than there were reads.
    uintptr_t last_read_ = 1;
};

#endif
