// SPDX-License-Identifier: MIT
#include "taviapp/iso12642.h"
#include "taviapp/iso12642text_p.h"
#include "tavilib/tavilog.h"

#include <atomic>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <new>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace {

std::string systemError()
{
    return std::generic_category().message(errno);
}

bool writeAll(int file, const std::string &text)
{
    for (size_t at = 0; at < text.size();) {
        const ssize_t count = ::write(file, text.data() + at, text.size() - at);
        if (count < 0 && errno != EINTR)
            return false;
        at += count > 0 ? static_cast<size_t>(count) : 0;
    }
    return true;
}

/// A new file beside the one at @a path, with the rights that the user's mask leaves. Negative if there can be none.
int createBeside(const std::string &path, std::string &beside)
{
    static std::atomic<unsigned> number{0};
    for (int attempt = 0; attempt < 100; ++attempt) {
        beside = path + '.' + std::to_string(getpid()) + '-' + std::to_string(++number) + ".new";
        const int file = open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (file >= 0 || errno != EEXIST)
            return file;
    }
    return -1;
}

/// Writes a file beside the one at @a path and puts it in its place. A reason if that fails; then nothing is left.
std::string replaceFile(std::string path, const std::string &text)
{
    struct stat status = {};
    if (stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode))
        return S_ISDIR(status.st_mode) ? "is a directory" : "is no regular file";
    // A link keeps pointing to what is written.
    if (const std::unique_ptr<char, void (*)(void *)> target(realpath(path.c_str(), nullptr), std::free); target)
        path = target.get();
    const bool keep_rights = stat(path.c_str(), &status) == 0;
    std::string beside;
    const int file = createBeside(path, beside);
    if (file < 0)
        return "cannot be written: " + systemError();
    std::string reason;
    if (!writeAll(file, text) || (keep_rights && fchmod(file, status.st_mode & 0777U) != 0) || fsync(file) != 0)
        reason = "cannot be written: " + systemError();
    if (close(file) != 0 && reason.empty())
        reason = "cannot be written: " + systemError();
    if (reason.empty() && std::rename(beside.c_str(), path.c_str()) != 0)
        reason = "cannot be written: " + systemError();
    if (!reason.empty())
        unlink(beside.c_str());
    return reason;
}

} // namespace

bool ExportISO12642::exportColours(const TAVICOMBOCOLOUR_CC &colours, const std::string &path,
                                   const SPECTROPHOTOMETERINFO *instrument, uint32_t colour_space)
{
    try {
        std::string error;
        if (exportColours(colours, path, instrument, colour_space, error))
            return true;
        LogError("iso12642", "exportColours", error.c_str());
    } catch (const std::bad_alloc &) {
        LogError("iso12642", "exportColours", "out of memory");
    }
    return false;
}

bool ExportISO12642::exportColours(const TAVICOMBOCOLOUR_CC &colours, const std::string &path,
                                   const SPECTROPHOTOMETERINFO *instrument, uint32_t colour_space, std::string &error)
{
    std::string reason;
    if (colour_space != lab)
        reason = "other colour spaces than Lab cannot be written";
    const std::string text = reason.empty() ? iso12642Text(colours.head(), instrument, reason) : std::string();
    if (reason.empty())
        reason = replaceFile(path, text);
    error = reason.empty() ? std::string() : path + ": " + reason;
    return reason.empty();
}
