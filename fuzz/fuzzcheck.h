// SPDX-License-Identifier: MIT
#ifndef FUZZ_FUZZCHECK_H
#define FUZZ_FUZZCHECK_H

#include <cstdio>
#include <cstdlib>

/// What must hold for every input; a fuzzer takes an abort for its find.
#define FUZZ_CHECK(condition)                                                                                        \
    do {                                                                                                             \
        if (!(condition)) {                                                                                          \
            std::fprintf(stderr, "%s:%d: does not hold: %s\n", __FILE__, __LINE__, #condition);                      \
            std::abort();                                                                                            \
        }                                                                                                            \
    } while (false)

#endif
