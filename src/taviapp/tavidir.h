// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_TAVIDIR_H
#define TAVIAPP_TAVIDIR_H

#include "taviapp/taviapp_export.h"

#include <cstdint>
#include <string>
#include <vector>

/// One entry of a TaviDir.
struct TaviDirEntry {
    std::string name;  ///< Name without directory.
    uint32_t mode = 0; ///< Mode bits as in a file status; masked with 0xf000, 0x8000 is a regular file.
};

/// Reads a directory once, at construction. A directory that is not there or cannot be read has no entries.
class TAVIAPP_EXPORT TaviDir
{
public:
    using EntryList = std::vector<TaviDirEntry>;

    /// The second argument is false in all callers and not looked at. A null path is an empty one.
    TaviDir(const char *path, bool reserved);
    TaviDir(const std::string &path, bool reserved);

    /// The entries, sorted by name, without "." and "..". Valid as long as the object lives.
    const EntryList &entrylist() const { return entries_; }

private:
    EntryList entries_;
};

#endif
