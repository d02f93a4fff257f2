// SPDX-License-Identifier: MIT
#include "taviapp/cgatsreader.h"

#include "taviapp/cgatsparser_p.h"
#include "taviapp/cgatstext_p.h"
#include "tavilib/tavifile.h"

#include <algorithm>
#include <cerrno>
#include <sys/stat.h>
#include <system_error>

namespace {

/// All bytes of the file. False if the report now holds a refusal.
bool readBytes(const std::string &path, std::string &bytes, CgatsReport &report, size_t most)
{
    const auto refuseForError = [&report](int error) {
        report.refuse(0, "cannot be read: " + std::generic_category().message(error));
        return false;
    };
    // Asked before opening, because opening a pipe waits for its writer.
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        return refuseForError(errno);
    if (!S_ISREG(status.st_mode)) {
        report.refuse(0, S_ISDIR(status.st_mode) ? "is a directory" : "is no regular file");
        return false;
    }
    const std::unique_ptr<FILE, void (*)(FILE *)> file(Tavi_fopen(path.c_str(), "rb"), Tavi_fclose);
    if (!file)
        return refuseForError(errno);
    const std::string too_big = "has more than " + std::to_string(most) + " bytes";
    if (static_cast<size_t>(status.st_size) > most) {
        report.refuse(0, too_big);
        return false;
    }
    // One byte more than the file had: it may be growing.
    bytes.resize(static_cast<size_t>(status.st_size) + 1);
    size_t length = 0;
    while (const size_t count = std::fread(bytes.data() + length, 1, bytes.size() - length, file.get())) {
        length += count;
        if (length > most) {
            report.refuse(0, too_big);
            return false;
        }
        if (length == bytes.size())
            bytes.resize(std::min(bytes.size() * 2, most + 1));
    }
    if (std::ferror(file.get()))
        return refuseForError(errno);
    bytes.resize(length);
    return true;
}

} // namespace

const std::string *CgatsTable::keyword(std::string_view name) const
{
    const auto found = std::find_if(keywords_.begin(), keywords_.end(),
                                    [name](const Keyword &keyword) { return cgatsEqual(keyword.name, name); });
    return found == keywords_.end() ? nullptr : &found->value;
}

std::string CgatsTable::cellText(size_t row, size_t column, bool *converted) const
{
    std::string text = cgatsToUtf8(cell(row, column), converted);
    if (cells_[row * columns_ + column].length & doubled_quotes)
        cgatsUndoubleQuotes(text);
    return text;
}

CgatsFile CgatsFile::read(const std::string &path, CgatsReport &report, const CgatsLimits &limits)
{
    report.path = path;
    std::string bytes;
    if (!readBytes(path, bytes, report, std::min(limits.file_size, largest_file)))
        return CgatsFile();
    return parse(std::move(bytes), report, limits);
}

CgatsFile CgatsFile::parse(std::string bytes, CgatsReport &report, const CgatsLimits &limits)
{
    CgatsFile file;
    const size_t most = std::min(limits.file_size, largest_file);
    if (bytes.size() > most) {
        report.refuse(0, "has more than " + std::to_string(most) + " bytes");
        return file;
    }
    if (!cgatsDecode(bytes, report))
        return file;
    if (bytes.size() > most) { // UTF-16 may grow by half
        report.refuse(0, "has more than " + std::to_string(most) + " bytes as UTF-8");
        return file;
    }
    file.tables_ = CgatsParser(std::make_shared<const std::string>(std::move(bytes)), report, limits).run();
    return file;
}
