// SPDX-License-Identifier: MIT
#include "tavilib/tavialloc_p.h"

#include <atomic>
#include <cstdlib>

namespace {
std::atomic<TaviAllocHook> alloc_hook{nullptr};
std::atomic<void *> alloc_context{nullptr};
} // namespace

void *TaviAllocZeroed(size_t size)
{
    if (const TaviAllocHook hook = alloc_hook.load(std::memory_order_acquire)) {
        if (!hook(size, alloc_context.load(std::memory_order_relaxed)))
            return nullptr;
    }
    return std::calloc(1, size);
}

void TaviAllocSetHook(TaviAllocHook hook, void *context)
{
    alloc_context.store(context, std::memory_order_relaxed);
    alloc_hook.store(hook, std::memory_order_release);
}
