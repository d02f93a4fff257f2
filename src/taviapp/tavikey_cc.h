// SPDX-License-Identifier: MIT
#ifndef TAVIAPP_TAVIKEY_CC_H
#define TAVIAPP_TAVIKEY_CC_H

#include "taviapp/taviapp_export.h"
#include "tavilib/tavirecords.h"

/// Operations on record keys. A key names a record of the suite's database; the widgets only carry it.
class TAVIAPP_EXPORT TAVIKEY_CC
{
public:
    /// The key that names no record: two zero words.
    static TAVIKEY_ELEMENT getNullKey();
    /// Makes @a key the null key.
    static void nullifyKey(TAVIKEY_ELEMENT &key);
    /// Whether @a key is any other than the null key.
    static bool isValid(const TAVIKEY_ELEMENT &key);
};

#endif
