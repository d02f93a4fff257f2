// SPDX-License-Identifier: MIT
#include "taviapp/tavikey_cc.h"

TAVIKEY_ELEMENT TAVIKEY_CC::getNullKey()
{
    return {0, 0};
}

void TAVIKEY_CC::nullifyKey(TAVIKEY_ELEMENT &key)
{
    key = getNullKey();
}

bool TAVIKEY_CC::isValid(const TAVIKEY_ELEMENT &key)
{
    return key.word0 != 0 || key.word1 != 0;
}
