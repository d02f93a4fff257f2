// SPDX-License-Identifier: MIT
#include "taviapp/tavifileinfo.h"

#include <cstdlib>
#include <sys/stat.h>
#include <unistd.h>

TaviFileInfo::TaviFileInfo(const std::string &path)
{
    setFile(path);
}

void TaviFileInfo::setFile(const std::string &path)
{
    path_ = path;
    struct stat status = {};
    // The operating system would stop at a zero byte and describe another path.
    exists_ = path_.find('\0') == std::string::npos && ::stat(path_.c_str(), &status) == 0;
}

std::string TaviFileInfo::dirnameFromPath(const std::string &path)
{
    const size_t slash = path.rfind('/');
    if (slash == std::string::npos)
        return {};
    const size_t end = path.find_last_not_of('/', slash);
    return end == std::string::npos ? "/" : path.substr(0, end + 1);
}

std::string TaviFileInfo::scratchfile()
{
    const char *directory = std::getenv("TMPDIR");
    std::string path = (directory && *directory ? directory : "/tmp") + std::string("/tavi-XXXXXX");
    const int file = ::mkstemp(path.data());
    if (file < 0)
        return {};
    ::close(file);
    return path;
}
