// SPDX-License-Identifier: MIT
#include "tavilib/tavialloc_p.h"

#include <atomic>
#include <cstdlib>

namespace {
std::atomic<TaviAllocHook> alloc_hook{nullptr};
std::atomic<void *> alloc_context{nullptr};

bool allowed(size_t size)
{
    const TaviAllocHook hook = alloc_hook.load(std::memory_order_acquire);
    return !hook || hook(size, alloc_context.load(std::memory_order_relaxed));
}
} // namespace

void *TaviAllocZeroed(size_t size)
{
    return allowed(size) ? std::calloc(1, size) : nullptr;
}

void *TaviRealloc(void *memory, size_t size)
{
    return size > 0 && allowed(size) ? std::realloc(memory, size) : nullptr;
}

void TaviAllocSetHook(TaviAllocHook hook, void *context)
{
    alloc_context.store(context, std::memory_order_relaxed);
    alloc_hook.store(hook, std::memory_order_release);
}
