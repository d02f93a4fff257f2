// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_ISO12642_H
#define TAVIAPP_ISO12642_H

#include "taviapp/cgatsreport.h"
#include "taviapp/taviapp_export.h"
#include "tavilib/tavirecords.h"

#include <string>

/// Reads colour patches from CGATS / ISO 12642 files.
class TAVIAPP_EXPORT ISO12642Importer
{
public:
    /// The patches of the file at @a path, in file order, as a new list that the caller owns (type code 17), or null
    /// if the file is refused or holds no patch. A refusal is logged with file, line and reason. @a flags is 0 in all
    /// callers and not looked at. May be called from any thread.
    ///
    /// A patch has the flag COMBOCOLOUR_FLAG_LAB and its Lab triple where the file gives Lab, or XYZ, which is turned
    /// into D50 Lab. Device values are kept in TAVICOMBOCOLOUR::device. O(file size).
    static TAVICOMBOCOLOUR *import(const std::string &path, unsigned long flags);

    /// The same without the log: @a report tells what was assumed, doubted, or why the file was refused.
    static TAVICOMBOCOLOUR *import(const std::string &path, unsigned long flags, CgatsReport &report);
};

#endif
