// SPDX-License-Identifier: MIT
#ifndef TAVILIB_TAVIPACKET_H
#define TAVILIB_TAVIPACKET_H

#include "tavilib/tavilib_export.h"
#include "tavilib/tavilist.h"
#include "tavilib/tavirecords.h"

/// @file
/// Freeing and copying records together with the strings and sub-lists they own. The type code (TAVIPACKET_...)
/// tells what a record is; a code that is not known here is logged, nothing is freed, and a copy is null.
///
/// Mind the order of the arguments: the type code comes last in the free operations and first in the duplicate ones.

namespace tavi::detail {
TAVILIB_EXPORT void freePacketItem(TAVIPACKETHEADER *item, int type);
TAVILIB_EXPORT void freePacketList(TAVIPACKETHEADER **head, int type);
TAVILIB_EXPORT TAVIPACKETHEADER *duplicatePacketItem(int type, const TAVIPACKETHEADER *item);
TAVILIB_EXPORT TAVIPACKETHEADER *duplicatePacketList(int type, const TAVIPACKETHEADER *head);
} // namespace tavi::detail

/// Frees one record and all it owns. The record must be unlinked; null is ignored.
template <TaviPacket T>
void TaviPacketFreeItem(T *item, int type)
{
    if (item)
        tavi::detail::freePacketItem(&item->header, type);
}

/// Frees all records of a list and sets its head to null. O(length).
template <TaviPacket T>
void TaviPacketFreeList(T **head, int type)
{
    if (head && *head)
        tavi::detail::freePacketList(tavi::detail::headAddress(head), type);
}

/// A deep copy of one record, unlinked. Null for a null item and if memory is out (then nothing is left allocated).
template <TaviPacket T>
T *DuplicatePacketItem(int type, const T *item)
{
    return item ? reinterpret_cast<T *>(tavi::detail::duplicatePacketItem(type, &item->header)) : nullptr;
}

/// A deep copy of a list, in order. Null for an empty list and if memory is out: never a part of it. O(length).
template <TaviPacket T>
T *DuplicatePacketList(int type, const T *head)
{
    return head ? reinterpret_cast<T *>(tavi::detail::duplicatePacketList(type, &head->header)) : nullptr;
}

#endif
