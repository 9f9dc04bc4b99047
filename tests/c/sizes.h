// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* sizes.h - structures with the sizes of other versions of the library. */
#pragma once

#include "tests/c/check.h"

#include <stddef.h>
#include <string.h>

/* A structure of a later version, with one more member. */
#define LATER(structure)                                                                                               \
    struct                                                                                                             \
    {                                                                                                                  \
        structure known;                                                                                               \
        uint64_t later;                                                                                                \
    }

/* Calls with the structure of an earlier and of a later version, and checks what was written and what was not. */
#define CHECK_WRITTEN(structure, call, first, filled)                                                                  \
    do                                                                                                                 \
    {                                                                                                                  \
        LATER(structure) later;                                                                                        \
        structure expected;                                                                                            \
        structure earlier;                                                                                             \
        unsigned char untouched[sizeof(structure)];                                                                    \
        structure* asked = &expected;                                                                                  \
        memset(&expected, 0xEE, sizeof(expected));                                                                     \
        expected.size = sizeof(expected);                                                                              \
        CHECK_OK(call);                                                                                                \
        CHECK(filled);                                                                                                 \
        memset(untouched, 0xEE, sizeof(untouched));                                                                    \
        memset(&earlier, 0xEE, sizeof(earlier));                                                                       \
        earlier.size = offsetof(structure, first);                                                                     \
        asked = &earlier;                                                                                              \
        CHECK_OK(call);                                                                                                \
        CHECK_EQUAL(earlier.size, offsetof(structure, first));                                                         \
        CHECK_EQUAL(memcmp((char*)&earlier + earlier.size, untouched, sizeof(earlier) - earlier.size), 0);             \
        memset(&later, 0xEE, sizeof(later));                                                                           \
        later.known.size = sizeof(later);                                                                              \
        asked = &later.known;                                                                                          \
        CHECK_OK(call);                                                                                                \
        CHECK_EQUAL(later.known.size, sizeof(later));                                                                  \
        CHECK_EQUAL(later.later, 0);                                                                                   \
        CHECK(filled);                                                                                                 \
    } while (0)
