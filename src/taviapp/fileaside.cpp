// SPDX-License-Identifier: MIT
#include "taviapp/fileaside_p.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>

DirectoryLock::DirectoryLock(const std::string &filePath, std::chrono::milliseconds patience)
{
    const std::string directory = filePath.substr(0, filePath.rfind('/') + 1);
    directory_ = ::open(directory.empty() ? "." : directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (directory_ < 0)
        return;
    const auto give_up = std::chrono::steady_clock::now() + patience;
    while (::flock(directory_, LOCK_EX | LOCK_NB) != 0) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || std::chrono::steady_clock::now() > give_up)
            return;
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
}

DirectoryLock::~DirectoryLock()
{
    if (directory_ >= 0)
        ::close(directory_);
}

namespace {

constexpr const char *companions[] = {"-wal", "-shm", "-journal"};

bool isFree(const std::string &path)
{
    struct stat status = {};
    return ::lstat(path.c_str(), &status) != 0 && errno == ENOENT;
}

bool allFree(const std::string &path)
{
    bool free = isFree(path);
    for (const char *companion : companions)
        free = free && isFree(path + companion);
    return free;
}

/// Not every file system can rename without replacing; there the look before has to do.
bool renameWithoutReplacing(const std::string &from, const std::string &to)
{
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    return (errno == EINVAL || errno == ENOSYS) && isFree(to) && ::rename(from.c_str(), to.c_str()) == 0;
}

/// Empty if there is none.
std::string freeName(const std::string &path)
{
    for (int number = 1; number <= 100000; ++number) {
        std::string name = path + ".damaged-" + std::to_string(number);
        if (allFree(name))
            return name;
    }
    return {};
}

} // namespace

std::string moveDatabaseAside(const std::string &path, std::string &reason)
{
    const std::string aside = freeName(path);
    if (aside.empty()) {
        reason = "there are too many files of that name";
        return {};
    }
    // The database first: if the process ends before its companions have followed, the next start finds a log without
    // a database, which it moves aside too, and never an older state that looks sound.
    bool any = renameWithoutReplacing(path, aside);
    const int error = errno;
    for (const char *companion : companions)
        any = (isFree(path) && renameWithoutReplacing(path + companion, aside + companion)) || any;
    if (any)
        return aside;
    reason = std::strerror(error);
    return {};
}

std::string copyAside(const std::string &path, const char *companion)
{
    const std::string aside = freeName(path);
    std::error_code error;
    const bool copied = !aside.empty() && std::filesystem::copy_file(path + companion, aside + companion, error);
    return copied ? aside + companion : std::string();
}
