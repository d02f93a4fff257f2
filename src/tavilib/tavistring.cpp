// SPDX-License-Identifier: MIT
#include "tavilib/tavistring.h"

#include "tavilib/tavialloc_p.h"

#include <cstring>

char *AllocateAndCopyStringConst(const char *text)
{
    if (!text)
        return nullptr;
    const size_t size = std::strlen(text) + 1;
    auto *copy = static_cast<char *>(TaviAllocZeroed(size));
    if (copy)
        std::memcpy(copy, text, size);
    return copy;
}

char *AllocateAndCopyString(char *text)
{
    return AllocateAndCopyStringConst(text);
}

char *Tavi_strtok(char *text, const char *delimiters, char **save)
{
    if (!save || !delimiters)
        return nullptr;
    char *at = text ? text : *save;
    if (!at)
        return nullptr;
    at += std::strspn(at, delimiters);
    if (!*at) {
        *save = at;
        return nullptr;
    }
    char *token = at;
    at += std::strcspn(at, delimiters);
    if (*at)
        *at++ = '\0';
    *save = at;
    return token;
}
