// SPDX-License-Identifier: MIT
#ifndef TESTS_SUPPORT_VIRTUALPLACE_H
#define TESTS_SUPPORT_VIRTUALPLACE_H

#include <array>
#include <cstddef>
#include <cstring>

/// Where a virtual operation stands among those of its class, in bytes, as programs that were built against it know
/// it.
template <typename Operation>
std::ptrdiff_t virtualPlace(Operation operation)
{
    std::array<std::ptrdiff_t, 2> words{};
    static_assert(sizeof operation == sizeof words, "not the usual binary interface");
    std::memcpy(words.data(), &operation, sizeof words);
    return words[0];
}

#endif
