// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_TAVIFILEINFO_H
#define TAVIAPP_TAVIFILEINFO_H

#include "taviapp/taviapp_export.h"

#include <string>

/// Describes a path as it was found at construction or at the last setFile().
///
/// A value class; use each object on one thread.
class TAVIAPP_EXPORT TaviFileInfo
{
public:
    explicit TaviFileInfo(const std::string &path);

    /// Describes another path from now on.
    void setFile(const std::string &path);

    /// The path as it was given.
    const std::string &path() const { return path_; }
    /// Whether the path exists, whatever it is; a link that points nowhere does not.
    bool exists() const { return exists_; }

    /// The directory part of a path: "" for a bare name, "/" for a name in the root, never with a slash at its end
    /// otherwise.
    static std::string dirnameFromPath(const std::string &path);

    /// A unique path for a temporary file, in the directory of TMPDIR or else "/tmp". The file is made, empty and
    /// readable by its owner alone, so that nobody else gets the path; the caller removes it. Empty if no file can
    /// be made.
    static std::string scratchfile();

private:
    std::string path_;
    bool exists_ = false;
};

#endif
