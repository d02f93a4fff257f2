// SPDX-License-Identifier: MIT
#include "tavilib/tavipacket.h"

#include "tavilib/tavialloc_p.h"
#include "tavilib/tavilog.h"
#include "tavilib/tavistring.h"

#include <cstddef>
#include <cstdlib>
#include <cstring>

namespace tavi::detail {

namespace {

/// A list that a record owns.
struct OwnedList {
    size_t offset; ///< Of the pointer to its head; 0 (where the header is) for none.
    int type;
};

/// What freeing and copying need to know of a kind of record.
struct PacketKind {
    int type;
    size_t size;
    /// The offsets of its owned strings, closed by 0.
    size_t strings[4];
    /// The lists and single records that it owns, closed by an offset of 0.
    OwnedList lists[5];
};

constexpr PacketKind packet_kinds[] = {
    {TAVIPACKET_COMBOCOLOUR, sizeof(TAVICOMBOCOLOUR), {offsetof(TAVICOMBOCOLOUR, name), 0}, {}},
    {TAVIPACKET_SPECTROPHOTOMETERINFO,
     sizeof(SPECTROPHOTOMETERINFO),
     {offsetof(SPECTROPHOTOMETERINFO, name), offsetof(SPECTROPHOTOMETERINFO, dll_filename),
      offsetof(SPECTROPHOTOMETERINFO, rev), 0},
     {}},
    {TAVIPACKET_PATCHDENSITY, sizeof(PATCHDENSITY), {0}, {}},
    {TAVIPACKET_CALCHECKCHART,
     sizeof(CALCHECKCHART),
     {offsetof(CALCHECKCHART, name), 0},
     {{offsetof(CALCHECKCHART, reference), TAVIPACKET_COMBOCOLOUR},
      {offsetof(CALCHECKCHART, criteria), TAVIPACKET_CALCHECKCRITERIA}}},
    {TAVIPACKET_CALCHECKRESULT,
     sizeof(CALCHECKRESULT),
     {0},
     {{offsetof(CALCHECKRESULT, delta_e), TAVIPACKET_CALCHECKSTATISTICS},
      {offsetof(CALCHECKRESULT, delta_h), TAVIPACKET_CALCHECKSTATISTICS},
      {offsetof(CALCHECKRESULT, delta_c), TAVIPACKET_CALCHECKSTATISTICS},
      {offsetof(CALCHECKRESULT, criteria), TAVIPACKET_CALCHECKCRITERIA}}},
    {TAVIPACKET_CALCHECKSTATISTICS, sizeof(CALCHECKSTATISTICS), {0}, {}},
    {TAVIPACKET_CALCHECKCRITERIA,
     sizeof(CALCHECKCRITERIA),
     {offsetof(CALCHECKCRITERIA, name), offsetof(CALCHECKCRITERIA, standard), offsetof(CALCHECKCRITERIA, edition), 0},
     {}},
    {TAVIPACKET_CALCHECKRECORD,
     sizeof(CALCHECKRECORD),
     {0},
     {{offsetof(CALCHECKRECORD, chart), TAVIPACKET_CALCHECKCHART},
      {offsetof(CALCHECKRECORD, measured), TAVIPACKET_COMBOCOLOUR},
      {offsetof(CALCHECKRECORD, results), TAVIPACKET_CALCHECKRESULT}}},
    {TAVIPACKET_OUTPUTPAGE,
     sizeof(TAVIOUTPUTPAGE),
     {0},
     {{offsetof(TAVIOUTPUTPAGE, calibration), TAVIPACKET_CALCHECKRECORD}}},
    {TAVIPACKET_JOB,
     sizeof(TAVIJOB),
     {offsetof(TAVIJOB, name), 0},
     {{offsetof(TAVIJOB, pages), TAVIPACKET_OUTPUTPAGE}}},
};

const PacketKind *kindOf(int type, const char *function)
{
    for (const PacketKind &kind : packet_kinds) {
        if (kind.type == type)
            return &kind;
    }
    TaviLogMessage("tavipacket", function, TAVILOG_ERROR, TAVILOG_FORM_TEXT, 1, "Unknown packet type %d", type);
    return nullptr;
}

char *&stringAt(void *item, size_t offset)
{
    return *reinterpret_cast<char **>(static_cast<char *>(item) + offset);
}

TAVIPACKETHEADER *&listAt(void *item, size_t offset)
{
    return *reinterpret_cast<TAVIPACKETHEADER **>(static_cast<char *>(item) + offset);
}

void freeOne(const PacketKind &kind, TAVIPACKETHEADER *item)
{
    for (const size_t *offset = kind.strings; *offset; ++offset)
        std::free(stringAt(item, *offset));
    for (const OwnedList *list = kind.lists; list->offset; ++list)
        freePacketList(&listAt(item, list->offset), list->type);
    std::free(item);
}

TAVIPACKETHEADER *duplicateOne(const PacketKind &kind, const TAVIPACKETHEADER *item)
{
    void *copy = TaviAllocZeroed(kind.size);
    if (!copy)
        return nullptr;
    std::memcpy(copy, item, kind.size);
    auto *header = static_cast<TAVIPACKETHEADER *>(copy);
    header->next = nullptr;
    for (const size_t *offset = kind.strings; *offset; ++offset)
        stringAt(copy, *offset) = nullptr;
    for (const OwnedList *list = kind.lists; list->offset; ++list)
        listAt(copy, list->offset) = nullptr;
    for (const size_t *offset = kind.strings; *offset; ++offset) {
        const char *text = stringAt(const_cast<TAVIPACKETHEADER *>(item), *offset);
        if (!text)
            continue;
        stringAt(copy, *offset) = AllocateAndCopyStringConst(text);
        if (!stringAt(copy, *offset)) {
            freeOne(kind, header);
            return nullptr;
        }
    }
    for (const OwnedList *list = kind.lists; list->offset; ++list) {
        const TAVIPACKETHEADER *head = listAt(const_cast<TAVIPACKETHEADER *>(item), list->offset);
        if (!head)
            continue;
        listAt(copy, list->offset) = duplicatePacketList(list->type, head);
        if (!listAt(copy, list->offset)) {
            freeOne(kind, header);
            return nullptr;
        }
    }
    return header;
}

void freeAll(const PacketKind &kind, TAVIPACKETHEADER *head)
{
    while (head) {
        auto *next = static_cast<TAVIPACKETHEADER *>(head->next);
        freeOne(kind, head);
        head = next;
    }
}

} // namespace

void freePacketItem(TAVIPACKETHEADER *item, int type)
{
    if (const PacketKind *kind = kindOf(type, "TaviPacketFreeItem"))
        freeOne(*kind, item);
}

void freePacketList(TAVIPACKETHEADER **head, int type)
{
    if (const PacketKind *kind = kindOf(type, "TaviPacketFreeList")) {
        freeAll(*kind, *head);
        *head = nullptr;
    }
}

TAVIPACKETHEADER *duplicatePacketItem(int type, const TAVIPACKETHEADER *item)
{
    const PacketKind *kind = kindOf(type, "DuplicatePacketItem");
    return kind ? duplicateOne(*kind, item) : nullptr;
}

TAVIPACKETHEADER *duplicatePacketList(int type, const TAVIPACKETHEADER *head)
{
    const PacketKind *kind = kindOf(type, "DuplicatePacketList");
    if (!kind)
        return nullptr;
    TAVIPACKETHEADER *copies = nullptr;
    TAVIPACKETHEADER *tail = nullptr;
    for (; head; head = static_cast<const TAVIPACKETHEADER *>(head->next)) {
        TAVIPACKETHEADER *copy = duplicateOne(*kind, head);
        if (!copy) {
            freeAll(*kind, copies);
            return nullptr;
        }
        if (tail)
            tail->next = copy;
        else
            copies = copy;
        tail = copy;
    }
    return copies;
}

} // namespace tavi::detail
