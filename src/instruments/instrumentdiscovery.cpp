// SPDX-License-Identifier: MIT
#include "instruments/instrumentdiscovery_p.h"

#include "taviapp/tavifileinfo.h"
#include "tavilib/instrumentplugin.h"
#include "tavilib/tavidll.h"
#include "tavilib/tavifile.h"
#include "tavilib/tavilist.h"
#include "tavilib/tavilog.h"
#include "tavilib/tavipacket.h"
#include "tavilib/tavistring.h"

#include <cstdlib>
#include <string_view>
#include <utility>

namespace {

constexpr const char *directory_candidates[] = {"readers", "../readers", "lib/readers", "../lib/readers"};

bool isRegularFile(const TAVIDIRENTRY &entry)
{
    return (entry.mode & 0xf000U) == 0x8000U;
}

/// The plug-in's identity card with its file name filled in, or null. The plug-in is unloaded again.
SPECTROPHOTOMETERINFO *readIdentityCard(const std::string &directory, const char *file_name, const char *unit)
{
    void *library = TaviDllOpen((directory + "/" + file_name).c_str());
    if (!library)
        return nullptr;
    SPECTROPHOTOMETERINFO *info = nullptr;
    const auto get_info = reinterpret_cast<SpectrophotometerGetInfoFunction>(
        TaviDllGetProcAddress(library, "SpectrophotometerGetInfo"));
    if (get_info)
        info = get_info();
    else
        TaviLogMessage(unit, "buildInstrumentList", TAVILOG_ERROR, TAVILOG_FORM_TEXT, 1,
                       "Could no get SpectrophotometerInfo for %s", file_name);
    TaviDllClose(library);
    if (!info)
        return nullptr;
    info->header.next = nullptr;
    if (!info->name || !*info->name) {
        // It could not be told from a choice of nothing, and would stand first in every list.
        TaviLogMessage(unit, "buildInstrumentList", TAVILOG_ERROR, TAVILOG_FORM_TEXT, 1,
                       "No name in SpectrophotometerInfo for %s", file_name);
        TaviPacketFreeItem(info, TAVIPACKET_SPECTROPHOTOMETERINFO);
        return nullptr;
    }
    std::free(info->dll_filename); // null by the contract; what a plug-in puts there is on the heap all the same
    info->dll_filename = AllocateAndCopyStringConst(file_name);
    if (!info->dll_filename)
        TaviPacketFreeItem(std::exchange(info, nullptr), TAVIPACKET_SPECTROPHOTOMETERINFO);
    return info;
}

} // namespace

std::string findInstrumentDirectory()
{
    TaviFileInfo candidate(directory_candidates[0]);
    for (const char *path : directory_candidates) {
        candidate.setFile(path);
        if (candidate.exists())
            return path;
    }
    return directory_candidates[0];
}

bool discoverInstruments(SPECTROPHOTOMETERINFO **list, uint32_t wanted_flags, const char *unit)
{
    const std::string directory = findInstrumentDirectory();
    TAVIDIRENTRY *entries = nullptr;
    if (TaviGetDirListIgnoringMacResources(&entries, directory.c_str(), 0) < 0) {
        TaviLogMessage(unit, "buildInstrumentList", TAVILOG_ERROR, TAVILOG_FORM_TEXT, 1,
                       "Cannot retrieve directory for %s", directory.c_str());
        return false;
    }
    for (const TAVIDIRENTRY *entry = entries; entry; entry = NextInList(entry)) {
        if (!isRegularFile(*entry) || !TaviCheckExtension(entry->name, ".so"))
            continue;
        SPECTROPHOTOMETERINFO *info = readIdentityCard(directory, entry->name, unit);
        if (!info)
            continue;
        if (info->flags & wanted_flags)
            InsertOrderedList(list, info, info->name);
        else
            TaviPacketFreeItem(info, TAVIPACKET_SPECTROPHOTOMETERINFO);
    }
    TaviFreeDirList(&entries);
    return true;
}

const SPECTROPHOTOMETERINFO *chooseInstrument(const SPECTROPHOTOMETERINFO *list, const char *text, bool by_name)
{
    if (!text)
        return nullptr;
    std::string_view wanted = text;
    if (by_name)
        wanted = wanted.substr(0, wanted.find(" Rev "));
    for (; list; list = NextInList(list)) {
        const char *held = by_name ? list->name : list->dll_filename;
        const std::string_view candidate = held ? held : "";
        if (by_name ? candidate.starts_with(wanted) : candidate == wanted)
            return list;
    }
    return nullptr;
}
