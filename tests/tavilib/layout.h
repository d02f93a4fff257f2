/* SPDX-License-Identifier: MIT */
#ifndef TESTS_TAVILIB_LAYOUT_H
#define TESTS_TAVILIB_LAYOUT_H

/*
 * Assertions about the binary layout of records, made as a file is compiled; C and C++. TAVI_LAYOUT_OFF_BY is 0 but
 * in the tests that see the assertions fail.
 */

#include "tavilib/instrumentplugin.h"

#include <stddef.h>

#ifndef TAVI_LAYOUT_OFF_BY
#define TAVI_LAYOUT_OFF_BY 0
#endif

#ifdef __cplusplus
#define CHECK(condition, text) static_assert(condition, text)
#else
#define CHECK(condition, text) _Static_assert(condition, text)
#endif

#define SIZE(type, size) CHECK(sizeof(type) == (size) + TAVI_LAYOUT_OFF_BY, "size of " #type)
#define OFFSET(type, field, offset)                                                                                  \
    CHECK(offsetof(type, field) == (offset) + TAVI_LAYOUT_OFF_BY, "offset of " #type "." #field)
#define WIDTH(type, field, width)                                                                                    \
    CHECK(sizeof(((type *)0)->field) == (width) + TAVI_LAYOUT_OFF_BY, "width of " #type "." #field)
#define VALUE(name, value) CHECK((long)(name) == (value) + TAVI_LAYOUT_OFF_BY, "value of " #name)
/* Field "after" begins where "before" ends, or behind that. */
#define ORDER(type, before, after)                                                                                   \
    CHECK(offsetof(type, before) + sizeof(((type *)0)->before) + 1000 * TAVI_LAYOUT_OFF_BY <= offsetof(type, after), \
          "order of " #type "." #before " and " #after)

#endif
