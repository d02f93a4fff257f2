// SPDX-License-Identifier: MIT
#include "taviapp/tavidir.h"

#include "tavilib/tavifile.h"
#include "tavilib/tavilist.h"

TaviDir::TaviDir(const char *path, bool /*reserved*/)
{
    TAVIDIRENTRY *list = nullptr;
    TaviGetDirListIgnoringMacResources(&list, path ? path : "", 0);
    for (const TAVIDIRENTRY *entry = list; entry; entry = NextInList(entry))
        entries_.push_back({entry->name, entry->mode});
    TaviFreeDirList(&list);
}

TaviDir::TaviDir(const std::string &path, bool reserved) : TaviDir(path.c_str(), reserved) {}
