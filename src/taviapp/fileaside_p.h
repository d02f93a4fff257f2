// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_FILEASIDE_P_H
#define TAVIAPP_FILEASIDE_P_H

#include <chrono>
#include <string>

/// @file
/// Renaming a database that cannot be used, so that nothing of it is lost. Not installed.

/// Keeps other stores from opening, closing or renaming a file of the same directory while it lives: they take the
/// same lock, which is one on the directory itself and leaves no file behind. Waits for it no longer than given and
/// then goes on without.
class DirectoryLock
{
public:
    DirectoryLock(const std::string &filePath, std::chrono::milliseconds patience);
    ~DirectoryLock();
    DirectoryLock(const DirectoryLock &) = delete;
    DirectoryLock &operator=(const DirectoryLock &) = delete;

private:
    int directory_ = -1;
};

/// Renames the database at @a path to "<path>.damaged-N", N being the lowest number that is free, and its companions
/// ("-wal", "-shm", "-journal") with it. Never replaces a file. Returns the new path; empty, with the reason in
/// @a reason, if nothing could be renamed. To be called under a DirectoryLock.
std::string moveDatabaseAside(const std::string &path, std::string &reason);

/// Copies the companion @a companion of the database at @a path to where moveDatabaseAside() would move it now.
/// Returns the path of the copy; empty if there is none. To be called under a DirectoryLock.
std::string copyAside(const std::string &path, const char *companion);

#endif
