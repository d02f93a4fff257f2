// SPDX-License-Identifier: MIT
#ifndef TAVILIB_TAVIALLOC_P_H
#define TAVILIB_TAVIALLOC_P_H

#include "tavilib/tavilib_export.h"

#include <cstddef>

/// @file
/// Where records and their strings get their memory: `calloc`, so that plug-ins and the library can free each
/// other's records, with one hook by which tests make an allocation fail. Not installed.

/// Zeroed memory, released with `free`; null if there is none.
TAVILIB_EXPORT void *TaviAllocZeroed(size_t size);

/// `realloc`: @a memory, which may be null, at a new size; what is new in it is not cleared. Null if there is none,
/// or for a size of 0; @a memory then stands as it was. Released with `free`.
TAVILIB_EXPORT void *TaviRealloc(void *memory, size_t size);

/// Asked before each allocation, on the allocating thread; false makes it fail. Null removes the hook.
using TaviAllocHook = bool (*)(size_t size, void *context);
TAVILIB_EXPORT void TaviAllocSetHook(TaviAllocHook hook, void *context);

/// A zeroed record.
template <typename T>
T *TaviAllocRecord()
{
    return static_cast<T *>(TaviAllocZeroed(sizeof(T)));
}

#endif
