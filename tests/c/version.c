// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* version.c - version numbers and status texts. */
#include "tests/c/check.h"

#include <string.h>

void test_version(void)
{
    CHECK_TEXT(mathexpr_version_text(), EXPECTED_VERSION);
    CHECK_EQUAL(mathexpr_version_number(), EXPECTED_VERSION_NUMBER);
    CHECK_EQUAL(mathexpr_abi_version(), MATHEXPR_ABI_VERSION);
    CHECK(mathexpr_checks_handles() == 0 || mathexpr_checks_handles() == 1);
}

void test_status_text(void)
{
    static const mathexpr_status statuses[] = {
        MATHEXPR_OK,
        MATHEXPR_NULL_ARGUMENT,
        MATHEXPR_STALE_HANDLE,
        MATHEXPR_WRONG_KIND,
        MATHEXPR_BUSY,
        MATHEXPR_BAD_UTF8,
        MATHEXPR_BAD_UTF16,
        MATHEXPR_ZERO_IN_TEXT,
        MATHEXPR_BAD_SIZE,
        MATHEXPR_BAD_VALUE,
        MATHEXPR_BAD_OPTION,
        MATHEXPR_NOT_FOUND,
        MATHEXPR_BULK_REFUSED,
        MATHEXPR_BUFFER_TOO_SMALL,
        MATHEXPR_PARSING_ERROR,
        MATHEXPR_DEFINITION_ERROR,
        MATHEXPR_REFUSED,
        MATHEXPR_NO_PROGRAM,
        MATHEXPR_OTHER_KIND,
        MATHEXPR_HOST_CALLBACK_THREW,
        MATHEXPR_HOST_CALLBACK_REFUSED,
        MATHEXPR_HOST_CALLBACK_BAD_ANSWER,
        MATHEXPR_OUT_OF_MEMORY,
        MATHEXPR_INTERNAL_ERROR,
    };
    const size_t nb = sizeof(statuses) / sizeof(statuses[0]);
    const char* const unknown = mathexpr_status_text(99);
    size_t one = 0;
    size_t other = 0;
    CHECK_TEXT(unknown, "unknown status");
    CHECK_TEXT(mathexpr_status_text(-1), unknown);
    for (one = 0; one < nb; ++one)
    {
        CHECK(strcmp(mathexpr_status_text(statuses[one]), unknown) != 0);
        for (other = 0; other < one; ++other)
        {
            CHECK(strcmp(mathexpr_status_text(statuses[one]), mathexpr_status_text(statuses[other])) != 0);
        }
    }
}
