// SPDX-License-Identifier: MIT
#ifndef FUZZ_MEMORYFILE_H
#define FUZZ_MEMORYFILE_H

#include "fuzz/fuzzcheck.h"

#include <string>
#include <string_view>

#include <sys/mman.h>
#include <unistd.h>

/// A file in memory that has a path.
class MemoryFile
{
public:
    explicit MemoryFile(const char *name) : descriptor_(memfd_create(name, 0)) { FUZZ_CHECK(descriptor_ >= 0); }
    MemoryFile(const MemoryFile &) = delete;
    MemoryFile &operator=(const MemoryFile &) = delete;
    ~MemoryFile() { close(descriptor_); }

    std::string path() const { return "/proc/self/fd/" + std::to_string(descriptor_); }
    void fill(std::string_view bytes) const
    {
        FUZZ_CHECK(ftruncate(descriptor_, 0) == 0);
        FUZZ_CHECK(pwrite(descriptor_, bytes.data(), bytes.size(), 0) == static_cast<ssize_t>(bytes.size()));
    }

private:
    int descriptor_;
};

#endif
