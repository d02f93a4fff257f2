// SPDX-License-Identifier: MIT
#ifndef TAVILIB_TAVIDLL_H
#define TAVILIB_TAVIDLL_H

#include "tavilib/tavilib_export.h"

/// @file
/// The dynamic loader. A plug-in that fails to load is no hard failure: the caller skips it.

/// Loads the shared object at @a path, all symbols resolved, none made visible to others. Null if it cannot be
/// loaded, also because a part of the file is missing; TaviDllError() then tells why.
TAVILIB_EXPORT void *TaviDllOpen(const char *path);

/// The address of @a name in the object, or null.
TAVILIB_EXPORT void *TaviDllGetProcAddress(void *handle, const char *name);

/// Unloads. Nothing that the object handed out as code or static data may be used afterwards. Null is ignored.
TAVILIB_EXPORT void TaviDllClose(void *handle);

/// The loader's words for the calling thread's last failure; empty if there was none since the last call.
TAVILIB_EXPORT const char *TaviDllError();

#endif
