// SPDX-License-Identifier: MIT
#include "tavilib/calcheckcriteria.h"
#include "tavilib/tavifile.h"
#include "tavilib/tavilog.h"
#include "tavilib/tavipacket.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <dlfcn.h>
#include <memory>
#include <new>
#include <set>
#include <sys/stat.h>
#include <system_error>

namespace {

constexpr size_t largest_file = 64U << 10;
constexpr const char *suffix = ".criteria";
constexpr const char *sub_folder = "/taviwidgets/criteria";

std::string variable(const char *name)
{
    const char *value = std::getenv(name);
    return value ? value : "";
}

void appendAll(std::vector<std::string> &folders, const std::string &list, const char *below)
{
    size_t begin = 0;
    while (begin <= list.size()) {
        const size_t end = std::min(list.find(':', begin), list.size());
        if (end > begin)
            folders.push_back(list.substr(begin, end - begin) + below);
        begin = end + 1;
    }
}

/// The folder of the file that this code is in, so that an installation can be moved. Empty if it cannot be told.
std::string libraryFolder()
{
    Dl_info info = {};
    if (dladdr(reinterpret_cast<const void *>(&libraryFolder), &info) == 0 || !info.dli_fname)
        return {};
    const std::unique_ptr<char, void (*)(void *)> path(realpath(info.dli_fname, nullptr), std::free);
    if (!path)
        return {};
    const std::string whole(path.get());
    return whole.substr(0, whole.rfind('/'));
}

bool exists(const std::string &path)
{
    struct stat status = {};
    return stat(path.c_str(), &status) == 0;
}

/// The criteria sets that charts are judged by which bring no limits, read once.
class DefaultSets
{
public:
    DefaultSets()
    {
        try {
            for (Set &set : sets_)
                read(set);
        } catch (const std::bad_alloc &) {
            LogError("calcheckcriteria", "calcheckCriteriaFor", "out of memory");
        }
    }
    ~DefaultSets()
    {
        for (Set &set : sets_)
            TaviPacketFreeItem(set.criteria, TAVIPACKET_CALCHECKCRITERIA);
    }
    DefaultSets(const DefaultSets &) = delete;
    DefaultSets &operator=(const DefaultSets &) = delete;

    const CALCHECKCRITERIA *find(DELTAE_TYPE type) const
    {
        if (type == DELTAE_CIE94)
            return nullptr;
        return sets_[type == DELTAE_CIE76 ? 0 : 1].criteria;
    }

private:
    struct Set {
        const char *name;
        DELTAE_TYPE type;
        CALCHECKCRITERIA *criteria;
    };

    static void read(Set &set)
    {
        std::string error;
        set.criteria = calcheckFindCriteria(set.name, error);
        if (set.criteria && set.criteria->delta_e_type != set.type) {
            error = std::string("the criteria set '") + set.name + "' is for another formula than its name says";
            TaviPacketFreeItem(set.criteria, TAVIPACKET_CALCHECKCRITERIA);
            set.criteria = nullptr;
        }
        if (!set.criteria)
            LogError("calcheckcriteria", "calcheckCriteriaFor", error.c_str());
    }

    Set sets_[2] = {{"iso12647-7-2007", DELTAE_CIE76, nullptr}, {"iso12647-7-2016", DELTAE_CIE2000, nullptr}};
};

} // namespace

std::vector<std::string> calcheckCriteriaFolders()
{
    std::vector<std::string> folders;
    const std::string instead = variable("TAVI_CRITERIA_PATH");
    if (!instead.empty()) {
        appendAll(folders, instead, "");
        return folders;
    }
    // Libraries may lie in a folder of their architecture, which is one step more.
    const std::string library = libraryFolder();
    for (const char *up : {"/..", "/../.."}) {
        const std::string folder = library + up + "/share" + sub_folder;
        if (!library.empty() && exists(folder)) {
            folders.push_back(folder);
            break;
        }
    }
    const std::string home = variable("XDG_DATA_HOME");
    if (!home.empty())
        folders.push_back(home + sub_folder);
    else if (!variable("HOME").empty())
        folders.push_back(variable("HOME") + "/.local/share" + sub_folder);
    const std::string system = variable("XDG_DATA_DIRS");
    appendAll(folders, system.empty() ? "/usr/local/share:/usr/share" : system, sub_folder);
    return folders;
}

std::vector<std::string> calcheckCriteriaNames()
{
    std::set<std::string> names;
    for (const std::string &folder : calcheckCriteriaFolders()) {
        TAVIDIRENTRY *entries = nullptr;
        TaviGetDirListIgnoringMacResources(&entries, folder.c_str(), 0);
        for (const TAVIDIRENTRY *entry = entries; entry; entry = NextInList(entry)) {
            const std::string name(entry->name);
            if (S_ISREG(entry->mode) && name.size() > std::string_view(suffix).size() && name.ends_with(suffix))
                names.insert(name.substr(0, name.size() - std::string_view(suffix).size()));
        }
        TaviFreeDirList(&entries);
    }
    return {names.begin(), names.end()};
}

CALCHECKCRITERIA *calcheckReadCriteria(const std::string &path, std::string &error)
{
    error.clear();
    const auto refuse = [&](const std::string &reason) -> CALCHECKCRITERIA * {
        error = path + ": " + reason;
        return nullptr;
    };
    struct stat status = {};
    if (stat(path.c_str(), &status) != 0)
        return refuse("cannot be read: " + std::generic_category().message(errno));
    if (!S_ISREG(status.st_mode))
        return refuse("is no regular file");
    const std::unique_ptr<FILE, void (*)(FILE *)> file(Tavi_fopen(path.c_str(), "rb"), Tavi_fclose);
    if (!file)
        return refuse("cannot be read: " + std::generic_category().message(errno));
    std::string text(largest_file + 1, '\0');
    text.resize(std::fread(text.data(), 1, text.size(), file.get()));
    if (std::ferror(file.get()))
        return refuse("cannot be read: " + std::generic_category().message(errno));
    if (text.size() > largest_file)
        return refuse("has more than " + std::to_string(largest_file) + " bytes");
    return calcheckParseCriteria(text, path, error);
}

CALCHECKCRITERIA *calcheckFindCriteria(const std::string &name_or_path, std::string &error)
{
    if (name_or_path.find('/') != std::string::npos || name_or_path.ends_with(suffix))
        return calcheckReadCriteria(name_or_path, error);
    const std::vector<std::string> folders = calcheckCriteriaFolders();
    for (const std::string &folder : folders) {
        const std::string path = folder + '/' + name_or_path + suffix;
        if (!exists(path))
            continue;
        CALCHECKCRITERIA *criteria = calcheckReadCriteria(path, error);
        // A verdict names its set, and by that name the set must be found again.
        if (criteria && name_or_path != criteria->name) {
            error = path + ": the set in it is called '" + criteria->name + "'";
            TaviPacketFreeItem(criteria, TAVIPACKET_CALCHECKCRITERIA);
            return nullptr;
        }
        return criteria;
    }
    error = "there is no criteria set '" + name_or_path + "' in";
    for (const std::string &folder : folders)
        error += ' ' + folder;
    std::string names;
    for (const std::string &name : calcheckCriteriaNames())
        names += (names.empty() ? "" : ", ") + name;
    error += names.empty() ? "; there are none at all" : "; there are " + names;
    return nullptr;
}

const CALCHECKCRITERIA *calcheckCriteriaFor(DELTAE_TYPE delta_e_type)
{
    static const DefaultSets sets;
    return sets.find(delta_e_type);
}
