// SPDX-License-Identifier: MIT
#include "tavilib/tavidll.h"

#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <link.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace {

/// How an object begins whose records are laid out like the program's own.
constexpr unsigned char native_ident[] = {ELFMAG0,
                                          ELFMAG1,
                                          ELFMAG2,
                                          ELFMAG3,
                                          sizeof(void *) == 8 ? ELFCLASS64 : ELFCLASS32,
                                          __BYTE_ORDER__ == __ORDER_LITTLE_ENDIAN__ ? ELFDATA2LSB : ELFDATA2MSB};

/// The words for a refusal of our own; null where the loader has its own.
thread_local const char *own_error = nullptr;

class OpenFile
{
public:
    // Nothing is waited for: a path may name a pipe.
    explicit OpenFile(const char *path) : descriptor_(::open(path, O_RDONLY | O_CLOEXEC | O_NONBLOCK)) {}
    ~OpenFile()
    {
        if (descriptor_ >= 0)
            ::close(descriptor_);
    }
    OpenFile(const OpenFile &) = delete;
    OpenFile &operator=(const OpenFile &) = delete;

    /// Zero if there is no such regular file.
    ElfW(Off) size() const
    {
        struct stat status = {};
        return ::fstat(descriptor_, &status) == 0 && S_ISREG(status.st_mode) ? static_cast<ElfW(Off)>(status.st_size)
                                                                             : 0;
    }
    template <typename T>
    bool readAt(ElfW(Off) offset, T &record) const
    {
        return ::pread(descriptor_, &record, sizeof record, static_cast<off_t>(offset)) == sizeof record;
    }

private:
    const int descriptor_;
};

/// Whether the file lacks a part of what is loaded from it. The loader maps that without a look at the file's length,
/// and to touch a page behind the end ends the program. What is no object of
/// this program's kind is left to the loader.
bool isCutShort(const char *path)
{
    const OpenFile file(path);
    const ElfW(Off) size = file.size();
    ElfW(Ehdr) header = {};
    if (!file.readAt(0, header) || std::memcmp(header.e_ident, native_ident, sizeof native_ident) != 0)
        return false;
    for (ElfW(Half) i = 0; i < header.e_phnum; ++i) {
        ElfW(Phdr) segment = {};
        if (!file.readAt(header.e_phoff + i * sizeof segment, segment))
            return true;
        if (segment.p_type == PT_LOAD && (segment.p_offset > size || segment.p_filesz > size - segment.p_offset))
            return true;
    }
    return false;
}

} // namespace

void *TaviDllOpen(const char *path)
{
    own_error = nullptr;
    // An empty path would give the program itself.
    if (!path || !*path)
        return nullptr;
    // The loader looks for a name without a folder in places of its own.
    if (std::strchr(path, '/') && isCutShort(path)) {
        own_error = "the file is cut short";
        return nullptr;
    }
    return dlopen(path, RTLD_NOW | RTLD_LOCAL);
}

void *TaviDllGetProcAddress(void *handle, const char *name)
{
    own_error = nullptr;
    return handle && name ? dlsym(handle, name) : nullptr;
}

void TaviDllClose(void *handle)
{
    if (handle)
        dlclose(handle);
}

const char *TaviDllError()
{
    if (own_error)
        return std::exchange(own_error, nullptr);
    const char *error = dlerror();
    return error ? error : "";
}
