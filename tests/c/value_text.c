// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* value_text.c - formatted values in both encodings: buffers and refusals. ValueTextTests.cpp reads the texts back.
 */
#include "tests/c/check.h"

#include <string.h>

static void check_value(mathexpr_value value, uint32_t digits, const char* expected)
{
    char text[MATHEXPR_VALUE_TEXT_CAPACITY];
    mathexpr_char16 text16[MATHEXPR_VALUE_TEXT_CAPACITY];
    size_t length = 0;
    size_t length16 = 0;
    CHECK_OK(mathexpr_format_value_utf8(&value, digits, text, sizeof(text), &length));
    CHECK_TEXT(text, expected);
    CHECK_EQUAL(length, strlen(expected));
    CHECK_OK(mathexpr_format_value_utf16(&value, digits, text16, MATHEXPR_VALUE_TEXT_CAPACITY, &length16));
    CHECK_TEXT16(text16, expected);
    CHECK_EQUAL(length16, strlen(expected));
}

void test_value_text(void)
{
    check_value(number(0), MATHEXPR_EXACT_DIGITS, "0");
    check_value(number(-0.0), MATHEXPR_EXACT_DIGITS, "-0");
    check_value(number(100000), MATHEXPR_EXACT_DIGITS, "100000");
    check_value(number(0.1 + 0.2), MATHEXPR_EXACT_DIGITS, "0.30000000000000004");
    check_value(number(0.1 + 0.2), 15, "0.3");
    check_value(number(-1.5e20), MATHEXPR_EXACT_DIGITS, "-1.5e+20");
    check_value(number(1.5e-7), MATHEXPR_EXACT_DIGITS, "1.5*10^-7");
    check_value(point(1, -2.5, 1e-5), MATHEXPR_EXACT_DIGITS, "[1,-2.5,0.00001]");
    check_value(point(1.0 / 3, 2.0 / 3, 1e30 / 3), 3, "[0.333,0.667,3.33e+29]");
}

void test_value_text_buffers(void)
{
    const mathexpr_value value = point(1, 2, 3);
    char text[16] = "untouched";
    mathexpr_char16 text16[8] = {'u', 0};
    size_t length = 0;
    CHECK_STATUS(mathexpr_format_value_utf8(&value, 15, NULL, 0, &length), MATHEXPR_BUFFER_TOO_SMALL);
    CHECK_EQUAL(length, 7);
    length = 0;
    CHECK_STATUS(mathexpr_format_value_utf8(&value, 15, text, 7, &length), MATHEXPR_BUFFER_TOO_SMALL);
    CHECK_EQUAL(length, 7);
    CHECK_TEXT(text, "untouched");
    CHECK_STATUS(mathexpr_format_value_utf16(&value, 15, text16, 7, NULL), MATHEXPR_BUFFER_TOO_SMALL);
    CHECK_TEXT16(text16, "u");
    CHECK_OK(mathexpr_format_value_utf8(&value, 15, text, 8, NULL));
    CHECK_TEXT(text, "[1,2,3]");
    CHECK_OK(mathexpr_format_value_utf16(&value, 15, text16, 8, &length));
    CHECK_TEXT16(text16, "[1,2,3]");
}

void test_value_text_refused(void)
{
    mathexpr_value value = number(1);
    char text[16] = "untouched";
    size_t length = 77;
    CHECK_STATUS(mathexpr_format_value_utf8(NULL, 15, text, sizeof(text), &length), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_format_value_utf16(NULL, 15, NULL, 0, &length), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_format_value_utf8(&value, 15, NULL, 16, &length), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_format_value_utf8(&value, 18, text, sizeof(text), &length), MATHEXPR_BAD_OPTION);
    value.type = 2;
    CHECK_STATUS(mathexpr_format_value_utf8(&value, 15, text, sizeof(text), &length), MATHEXPR_BAD_VALUE);
    CHECK_EQUAL(length, 77);
    CHECK_TEXT(text, "untouched");
}
