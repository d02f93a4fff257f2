// SPDX-License-Identifier: MIT
#include "tavilib/tavifile.h"

#include "tavilib/tavialloc_p.h"
#include "tavilib/tavilist.h"
#include "tavilib/tavistring.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

FILE *Tavi_fopen(const char *path, const char *mode)
{
    if (!path || !mode)
        return nullptr;
    FILE *file = std::fopen(path, mode);
    if (!file)
        return nullptr;
    struct stat status = {};
    if (fstat(fileno(file), &status) == 0 && S_ISDIR(status.st_mode)) {
        std::fclose(file);
        errno = EISDIR;
        return nullptr;
    }
    return file;
}

void Tavi_fclose(FILE *file)
{
    if (file)
        std::fclose(file);
}

void Tavi_rewind(FILE *file)
{
    if (file)
        std::rewind(file);
}

int GetLineEOFOKLevel2(FILE *file, char *buffer, int size)
{
    if (!file || !buffer || size < 2)
        return 1;
    // One lock for the line in place of one for each character.
    flockfile(file);
    int length = 0;
    int c = EOF;
    while (length < size - 1) {
        c = getc_unlocked(file);
        if (c == EOF || c == '\n')
            break;
        if (c == '\r') {
            const int next = getc_unlocked(file);
            if (next == '\n') {
                c = next;
                break;
            }
            if (next != EOF)
                ungetc(next, file);
        }
        buffer[length++] = static_cast<char>(c);
    }
    // A line that fills the buffer to the byte takes its line end along, so that no empty piece follows it.
    if (length == size - 1) {
        int next = getc_unlocked(file);
        if (next == '\r') {
            const int after = getc_unlocked(file);
            if (after == '\n')
                next = after;
            else if (after != EOF)
                ungetc(after, file); // with the one below two characters: the GNU C library keeps them
        }
        if (next != '\n' && next != EOF)
            ungetc(next, file);
    }
    funlockfile(file);
    buffer[length] = '\0';
    return length == 0 && c == EOF ? 1 : 0;
}

bool TaviCheckExtension(const char *name, const char *extension)
{
    return name && extension && std::string_view(name).ends_with(extension);
}

namespace {

bool isResourceForkEntry(std::string_view name)
{
    return name.starts_with("._") || name == ".DS_Store" || name == ".AppleDouble" || name == "__MACOSX";
}

void freeEntry(TAVIDIRENTRY *entry)
{
    if (entry)
        std::free(entry->name);
    std::free(entry);
}

} // namespace

int TaviGetDirListIgnoringMacResources(TAVIDIRENTRY **list, const char *path, int /*reserved*/)
{
    if (!list)
        return -1;
    *list = nullptr;
    const std::unique_ptr<DIR, int (*)(DIR *)> directory(opendir(path ? path : ""), closedir);
    if (!directory) {
        // ENOTDIR is also what a path below a plain file gives, which is not there.
        struct stat status = {};
        return path && stat(path, &status) != 0 && (errno == ENOENT || errno == ENOTDIR) ? 0 : -1;
    }

    std::vector<TAVIDIRENTRY *> entries;
    const auto next = [&directory] {
        errno = 0; // only this tells a failed read from the end
        return readdir(directory.get());
    };
    while (const dirent *found = next()) {
        const std::string_view name = found->d_name;
        if (name == "." || name == ".." || isResourceForkEntry(name))
            continue;
        struct stat status = {};
        if (fstatat(dirfd(directory.get()), found->d_name, &status, 0) != 0
            && fstatat(dirfd(directory.get()), found->d_name, &status, AT_SYMLINK_NOFOLLOW) != 0)
            continue; // gone since it was listed
        auto *entry = TaviAllocRecord<TAVIDIRENTRY>();
        if (entry)
            entry->name = AllocateAndCopyStringConst(found->d_name);
        if (!entry || !entry->name) {
            freeEntry(entry);
            std::for_each(entries.begin(), entries.end(), freeEntry);
            return -1;
        }
        entry->mode = status.st_mode;
        entries.push_back(entry);
    }
    // No part of a list: who takes it for the whole misses the rest. A file system that fails here cannot be had in a
    // test.
    if (errno != 0) {
        std::for_each(entries.begin(), entries.end(), freeEntry);
        return -1;
    }
    std::sort(entries.begin(), entries.end(),
              [](const TAVIDIRENTRY *a, const TAVIDIRENTRY *b) { return std::strcmp(a->name, b->name) < 0; });
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        (*entry)->header.next = *list;
        *list = *entry;
    }
    return 0;
}

void TaviFreeDirList(TAVIDIRENTRY **list)
{
    if (!list)
        return;
    while (TAVIDIRENTRY *entry = *list) {
        *list = NextInList(entry);
        freeEntry(entry);
    }
}
