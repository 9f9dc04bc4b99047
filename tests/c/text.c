// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* text.c - the texts that the library accepts, and the reported positions in the others. */
#include "tests/c/check.h"

enum
{
    UNTOUCHED = 1234
};

static const struct
{
    const char* text;
    size_t length;
    mathexpr_status status;
    size_t offset;
} rows8[] = {
    {"", 0, MATHEXPR_OK, UNTOUCHED},
    {"1+2", 3, MATHEXPR_OK, UNTOUCHED},
    {"1+2\xFF", 3, MATHEXPR_OK, UNTOUCHED},
    {"\x7F", 1, MATHEXPR_OK, UNTOUCHED},
    {"\xC2\x80\xDF\xBF", 4, MATHEXPR_OK, UNTOUCHED},
    {"\xE0\xA0\x80\xED\x9F\xBF\xEE\x80\x80\xEF\xBF\xBF", 12, MATHEXPR_OK, UNTOUCHED},
    {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", 8, MATHEXPR_OK, UNTOUCHED},
    /* a stray continuation byte, and a byte that never occurs */
    {"a\x80", 2, MATHEXPR_BAD_UTF8, 1},
    {"a\xBF", 2, MATHEXPR_BAD_UTF8, 1},
    {"ab\xF5\x80\x80\x80", 6, MATHEXPR_BAD_UTF8, 2},
    {"\xFF", 1, MATHEXPR_BAD_UTF8, 0},
    /* overlong forms */
    {"\xC0\x80", 2, MATHEXPR_BAD_UTF8, 0},
    {"\xC1\xBF", 2, MATHEXPR_BAD_UTF8, 0},
    {"a\xE0\x9F\xBF", 4, MATHEXPR_BAD_UTF8, 1},
    {"a\xF0\x8F\xBF\xBF", 5, MATHEXPR_BAD_UTF8, 1},
    /* encoded surrogates, and numbers above the last code point */
    {"a\xED\xA0\x80", 4, MATHEXPR_BAD_UTF8, 1},
    {"a\xED\xBF\xBF", 4, MATHEXPR_BAD_UTF8, 1},
    {"a\xF4\x90\x80\x80", 5, MATHEXPR_BAD_UTF8, 1},
    /* a truncated character, at the end and before another character */
    {"a\xC3", 2, MATHEXPR_BAD_UTF8, 1},
    {"a\xE2\x82", 3, MATHEXPR_BAD_UTF8, 1},
    {"a\xF0\x9F\x98", 4, MATHEXPR_BAD_UTF8, 1},
    {"\xC3\xA4\xC3\x41", 4, MATHEXPR_BAD_UTF8, 2},
    {"a\xE2\x82\x41", 4, MATHEXPR_BAD_UTF8, 1},
    {"a\xE2\x82\xAC\xF0\x9F\x98\xC0", 8, MATHEXPR_BAD_UTF8, 4},
    {"a\xC3\xA4", 2, MATHEXPR_BAD_UTF8, 1},
    /* zeros; the position of the first error is reported */
    {"1\0+2", 4, MATHEXPR_ZERO_IN_TEXT, 1},
    {"\0", 1, MATHEXPR_ZERO_IN_TEXT, 0},
    {"1\0\xFF", 3, MATHEXPR_ZERO_IN_TEXT, 1},
    {"1\xFF\0", 3, MATHEXPR_BAD_UTF8, 1},
    {"1\xE2\0", 3, MATHEXPR_BAD_UTF8, 1},
    /* up to the zero */
    {"1\0\xFF", MATHEXPR_ZERO_TERMINATED, MATHEXPR_OK, UNTOUCHED},
    {"1\xFF", MATHEXPR_ZERO_TERMINATED, MATHEXPR_BAD_UTF8, 1},
    {NULL, 0, MATHEXPR_OK, UNTOUCHED},
    {NULL, 1, MATHEXPR_NULL_ARGUMENT, UNTOUCHED},
    {NULL, MATHEXPR_ZERO_TERMINATED, MATHEXPR_NULL_ARGUMENT, UNTOUCHED},
};

void test_utf8(void)
{
    size_t row = 0;
    for (row = 0; row < sizeof(rows8) / sizeof(rows8[0]); ++row)
    {
        size_t offset = UNTOUCHED;
        CHECK_STATUS(mathexpr_check_utf8(rows8[row].text, rows8[row].length, &offset), rows8[row].status);
        CHECK_EQUAL(offset, rows8[row].offset);
        CHECK_STATUS(mathexpr_check_utf8(rows8[row].text, rows8[row].length, NULL), rows8[row].status);
    }
}

static const struct
{
    mathexpr_char16 text[6];
    size_t length;
    mathexpr_status status;
    size_t offset;
} rows16[] = {
    {{0}, 0, MATHEXPR_OK, UNTOUCHED},
    {{'1', 0xFFFF, 0xD7FF, 0xE000}, 4, MATHEXPR_OK, UNTOUCHED},
    {{0xD800, 0xDC00, 0xDBFF, 0xDFFF}, 4, MATHEXPR_OK, UNTOUCHED},
    {{'a', 0xD800}, 2, MATHEXPR_BAD_UTF16, 1},
    {{'a', 0xDC00}, 2, MATHEXPR_BAD_UTF16, 1},
    {{'a', 0xD800, 'b'}, 3, MATHEXPR_BAD_UTF16, 1},
    {{'a', 0xD800, 0xD800, 0xDC00}, 4, MATHEXPR_BAD_UTF16, 1},
    {{0xD800, 0xDC00, 0xDC00}, 3, MATHEXPR_BAD_UTF16, 2},
    {{0xDC00, 0xD800}, 2, MATHEXPR_BAD_UTF16, 0},
    {{0xD83D, 0xDE00}, 1, MATHEXPR_BAD_UTF16, 0},
    {{'1', 0, 0xD800}, 3, MATHEXPR_ZERO_IN_TEXT, 1},
    {{0xD800, 0}, 2, MATHEXPR_BAD_UTF16, 0},
    {{'1', 0, 0xD800}, MATHEXPR_ZERO_TERMINATED, MATHEXPR_OK, UNTOUCHED},
};

void test_utf16(void)
{
    size_t row = 0;
    size_t offset = UNTOUCHED;
    for (row = 0; row < sizeof(rows16) / sizeof(rows16[0]); ++row)
    {
        offset = UNTOUCHED;
        CHECK_STATUS(mathexpr_check_utf16(rows16[row].text, rows16[row].length, &offset), rows16[row].status);
        CHECK_EQUAL(offset, rows16[row].offset);
        CHECK_STATUS(mathexpr_check_utf16(rows16[row].text, rows16[row].length, NULL), rows16[row].status);
    }
    offset = UNTOUCHED;
    CHECK_STATUS(mathexpr_check_utf16(NULL, 0, &offset), MATHEXPR_OK);
    CHECK_STATUS(mathexpr_check_utf16(NULL, 3, &offset), MATHEXPR_NULL_ARGUMENT);
    CHECK_EQUAL(offset, UNTOUCHED);
}

/* Program, variables and diagnostic are unchanged. */
static void check_unchanged(mathexpr_expression* expression)
{
    mathexpr_value value = number(0);
    mathexpr_names_utf8 names = {sizeof(names), 0, NULL, 0};
    int32_t failed = 1;
    CHECK_OK(mathexpr_has_failed(expression, &failed));
    CHECK_EQUAL(failed, 0);
    CHECK_OK(mathexpr_evaluate(expression, &value));
    CHECK_NUMBER(value.x, 12.0);
    CHECK_OK(mathexpr_get_names_utf8(expression, MATHEXPR_NAMES_DEFINED, &names));
    CHECK_EQUAL(names.name_count, 1);
}

void test_refused_text_changes_nothing(void)
{
    static const mathexpr_char16 lone[] = {'a', 0xD83D, 0};
    static const mathexpr_char16 zero[] = {'1', 0, '2'};
    mathexpr_expression* const expression = plain();
    const mathexpr_value five = number(5);
    mathexpr_value value = number(77);
    mathexpr_value* address = NULL;

    CHECK_OK(mathexpr_set_variable_utf8(expression, "a", ZT, &five, NULL));
    CHECK_OK(mathexpr_set_expression_utf8(expression, "a+7", ZT));

    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1+\xFF", ZT), MATHEXPR_BAD_UTF8);
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1\0+2", 4), MATHEXPR_ZERO_IN_TEXT);
    CHECK_STATUS(mathexpr_set_expression_utf16(expression, lone, ZT), MATHEXPR_BAD_UTF16);
    CHECK_STATUS(mathexpr_set_expression_utf16(expression, zero, 3), MATHEXPR_ZERO_IN_TEXT);
    CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, "\x80", ZT, &value), MATHEXPR_BAD_UTF8);
    CHECK_STATUS(mathexpr_evaluate_text_utf16(expression, lone, ZT, &value), MATHEXPR_BAD_UTF16);
    check_unchanged(expression);

    CHECK_STATUS(mathexpr_set_variable_utf8(expression, "b\xC3", ZT, &five, NULL), MATHEXPR_BAD_UTF8);
    CHECK_STATUS(mathexpr_set_variable_utf8(expression, "b\0c", 3, &five, NULL), MATHEXPR_ZERO_IN_TEXT);
    CHECK_STATUS(mathexpr_set_variable_utf16(expression, lone, ZT, &five, NULL), MATHEXPR_BAD_UTF16);
    CHECK_STATUS(mathexpr_get_variable_utf8(expression, "a\xFF", ZT, &value), MATHEXPR_BAD_UTF8);
    CHECK_STATUS(mathexpr_get_variable_utf8(expression, "a\0b", 3, &value), MATHEXPR_ZERO_IN_TEXT);
    CHECK_STATUS(mathexpr_get_variable_utf16(expression, lone, ZT, &value), MATHEXPR_BAD_UTF16);
    CHECK_STATUS(mathexpr_get_variable_address_utf8(expression, "a\xFF", ZT, &address), MATHEXPR_BAD_UTF8);
    CHECK_STATUS(mathexpr_get_variable_address_utf16(expression, lone, ZT, &address), MATHEXPR_BAD_UTF16);
    CHECK_STATUS(mathexpr_remove_variable_utf8(expression, "a\xFF", ZT), MATHEXPR_BAD_UTF8);
    CHECK_STATUS(mathexpr_remove_variable_utf8(expression, "a\0", 2), MATHEXPR_ZERO_IN_TEXT);
    CHECK_STATUS(mathexpr_remove_variable_utf16(expression, lone, ZT), MATHEXPR_BAD_UTF16);
    CHECK_NUMBER(value.x, 77.0);
    CHECK(address == NULL);
    check_unchanged(expression);
    CHECK_OK(mathexpr_destroy(expression));
}
