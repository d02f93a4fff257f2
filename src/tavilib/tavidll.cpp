// SPDX-License-Identifier: MIT
#include "tavilib/tavidll.h"

#include <dlfcn.h>

void *TaviDllOpen(const char *path)
{
    // An empty path would give the program itself.
    return path && *path ? dlopen(path, RTLD_NOW | RTLD_LOCAL) : nullptr;
}

void *TaviDllGetProcAddress(void *handle, const char *name)
{
    return handle && name ? dlsym(handle, name) : nullptr;
}

void TaviDllClose(void *handle)
{
    if (handle)
        dlclose(handle);
}

const char *TaviDllError()
{
    const char *error = dlerror();
    return error ? error : "";
}
