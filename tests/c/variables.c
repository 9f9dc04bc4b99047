// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* variables.c - lists, reads, sets, removes variables, and changes them in place. */
#include "tests/c/check.h"

#include <string.h>

#define UMLAUT "\xC3\xA4"

static mathexpr_names_utf8 names8(mathexpr_expression* expression, uint32_t which)
{
    mathexpr_names_utf8 names;
    memset(&names, 0xEE, sizeof(names));
    names.size = sizeof(names);
    CHECK_OK(mathexpr_get_names_utf8(expression, which, &names));
    CHECK_EQUAL(names.reserved, 0);
    return names;
}

static int32_t lookup_three(void* context, const char* name, size_t length, mathexpr_value* value)
{
    (void)context;
    CHECK_EQUAL(strlen(name), length);
    *value = number(3);
    return strcmp(name, "Host") == 0 ? MATHEXPR_LOOKUP_FOUND : MATHEXPR_LOOKUP_NOT_KNOWN;
}

void test_names(void)
{
    mathexpr_options_utf8 options = {0};
    mathexpr_expression* expression = NULL;
    mathexpr_names_utf8 names;
    mathexpr_names_utf16 wider = {sizeof(wider), 0, NULL, 0};
    const mathexpr_value one = number(1);

    options.size = sizeof(options);
    options.lookup = lookup_three;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    names = names8(expression, MATHEXPR_NAMES_DEFINED);
    CHECK_EQUAL(names.name_count, 0);
    CHECK(names.names == NULL);

    CHECK_OK(mathexpr_set_variable_utf8(expression, "zoo", ZT, &one, NULL));
    CHECK_OK(mathexpr_set_variable_utf8(expression, "Alpha" UMLAUT, ZT, &one, NULL));
    CHECK_OK(mathexpr_set_expression_utf8(expression, "alpha" UMLAUT "+Host*ALPHA" UMLAUT "+pi", ZT));
    names = names8(expression, MATHEXPR_NAMES_USED);
    CHECK_EQUAL(names.name_count, 2);
    CHECK_TEXT(names.names[0], "Alpha" UMLAUT);
    CHECK_TEXT(names.names[1], "Host");
    CHECK_OK(mathexpr_get_names_utf16(expression, MATHEXPR_NAMES_USED, &wider));
    CHECK_EQUAL(wider.name_count, 2);
    CHECK_EQUAL(wider.names[0][5], 0xE4);
    CHECK_EQUAL(wider.names[0][6], 0);
    CHECK_TEXT16(wider.names[1], "Host");
    CHECK_TEXT(names.names[1], "Host");

    names = names8(expression, MATHEXPR_NAMES_DEFINED);
    CHECK_EQUAL(names.name_count, 3);
    CHECK_TEXT(names.names[0], "zoo");
    CHECK_TEXT(names.names[1], "Alpha" UMLAUT);
    CHECK_TEXT(names.names[2], "Host");
    names = names8(expression, MATHEXPR_NAMES_OF_HOST);
    CHECK_EQUAL(names.name_count, 1);
    CHECK_TEXT(names.names[0], "Host");

    /* A returned list does not change. */
    CHECK_OK(mathexpr_remove_variable_utf8(expression, "Host", ZT));
    CHECK_TEXT(names.names[0], "Host");
    CHECK_EQUAL(names8(expression, MATHEXPR_NAMES_USED).name_count, 0);
    CHECK_EQUAL(names8(expression, MATHEXPR_NAMES_OF_HOST).name_count, 0);

    names.name_count = 77;
    CHECK_STATUS(mathexpr_get_names_utf8(expression, 3, &names), MATHEXPR_BAD_OPTION);
    CHECK_STATUS(mathexpr_get_names_utf16(expression, 3, &wider), MATHEXPR_BAD_OPTION);
    CHECK_EQUAL(names.name_count, 77);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_variables(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_value value = point(1, 2, 3);

    value.flag = 1;
    CHECK_OK(mathexpr_set_variable_utf8(expression, "p" UMLAUT "+++", 3, &value, NULL));
    value = number(0);
    CHECK_OK(mathexpr_get_variable_utf8(expression, "P" UMLAUT "---", 3, &value));
    CHECK_EQUAL(value.type, MATHEXPR_POINT);
    CHECK_EQUAL(value.flag, 1);
    CHECK_NUMBER(value.x, 1.0);
    CHECK_NUMBER(value.y, 2.0);
    CHECK_NUMBER(value.z, 3.0);

    value = number(5);
    CHECK_OK(mathexpr_set_variable_utf8(expression, "a", ZT, &value, NULL));
    CHECK_OK(mathexpr_set_expression_utf8(expression, "a*2", ZT));
    value = number(8);
    value.reserved = 0xFFFF;
    value.padding = 0xFFFFFFFF;
    CHECK_OK(mathexpr_set_variable_utf8(expression, "A", ZT, &value, NULL));
    CHECK_OK(mathexpr_evaluate(expression, &value));
    CHECK_NUMBER(value.x, 16.0);
    CHECK_EQUAL(value.reserved, 0);
    CHECK_EQUAL(value.padding, 0);

    CHECK_STATUS(mathexpr_get_variable_utf8(expression, "unk", ZT, &value), MATHEXPR_NOT_FOUND);
    CHECK_STATUS(mathexpr_get_variable_utf8(expression, "pi", ZT, &value), MATHEXPR_NOT_FOUND);
    CHECK_STATUS(mathexpr_get_variable_utf8(expression, "", 0, &value), MATHEXPR_NOT_FOUND);
    CHECK_STATUS(mathexpr_remove_variable_utf8(expression, "unk", ZT), MATHEXPR_NOT_FOUND);
    CHECK_NUMBER(value.x, 16.0);
    CHECK_OK(mathexpr_remove_variable_utf8(expression, "A", ZT));
    CHECK_STATUS(mathexpr_evaluate(expression, &value), MATHEXPR_NO_PROGRAM);
    CHECK_STATUS(mathexpr_remove_variable_utf8(expression, "a", ZT), MATHEXPR_NOT_FOUND);

    value.type = 2;
    CHECK_STATUS(mathexpr_set_variable_utf8(expression, "a", ZT, &value, NULL), MATHEXPR_BAD_VALUE);
    value.type = MATHEXPR_NUMBER;
    value.flag = 2;
    CHECK_STATUS(mathexpr_set_variable_utf8(expression, "a", ZT, &value, NULL), MATHEXPR_BAD_VALUE);
    CHECK_STATUS(mathexpr_get_variable_utf8(expression, "a", ZT, &value), MATHEXPR_NOT_FOUND);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_variables_utf16(void)
{
    static const mathexpr_char16 face[] = {0xD83D, 0xDE00, 0};
    mathexpr_expression* const expression = plain();
    mathexpr_value value = number(5);
    mathexpr_value* address = NULL;

    CHECK_OK(mathexpr_set_variable_utf16(expression, face, ZT, &value, NULL));
    value = number(0);
    CHECK_OK(mathexpr_get_variable_utf8(expression, "\xF0\x9F\x98\x80", ZT, &value));
    CHECK_NUMBER(value.x, 5.0);
    CHECK_OK(mathexpr_get_variable_address_utf16(expression, face, 2, &address));
    address->x = 6;
    CHECK_OK(mathexpr_get_variable_utf16(expression, face, 2, &value));
    CHECK_NUMBER(value.x, 6.0);
    CHECK_OK(mathexpr_evaluate_text_utf16(expression, face, ZT, &value));
    CHECK_NUMBER(value.x, 6.0);
    CHECK_OK(mathexpr_remove_variable_utf16(expression, face, ZT));
    CHECK_STATUS(mathexpr_get_variable_utf16(expression, face, ZT, &value), MATHEXPR_NOT_FOUND);
    CHECK_STATUS(mathexpr_get_variable_address_utf16(expression, face, ZT, &address), MATHEXPR_NOT_FOUND);
    CHECK_STATUS(mathexpr_remove_variable_utf16(expression, face, ZT), MATHEXPR_NOT_FOUND);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_refused_names(void)
{
    static const struct
    {
        const char* name;
        uint32_t code;
        size_t start, length;
    } rows[] = {
        {"", MATHEXPR_DEFINITION_NAME_EMPTY, 0, 0},
        {"12", MATHEXPR_DEFINITION_NAME_IS_NUMBER, 0, 2},
        {"1.5", MATHEXPR_DEFINITION_NAME_IS_NUMBER, 0, 3},
        {"pi", MATHEXPR_DEFINITION_NAME_IS_CONSTANT, 0, 2},
        {"a.b", MATHEXPR_DEFINITION_CONTAINS_SYNTAX_CHARACTER, 1, 1},
        {UMLAUT "a,b", MATHEXPR_DEFINITION_CONTAINS_SYNTAX_CHARACTER, 3, 1},
        {UMLAUT " b", MATHEXPR_DEFINITION_CONTAINS_SYNTAX_CHARACTER, 2, 1},
        {"f(x)", MATHEXPR_DEFINITION_CONTAINS_SYNTAX_CHARACTER, 1, 1},
        {"a<b<=c", MATHEXPR_DEFINITION_CONTAINS_SYNTAX_CHARACTER, 1, 1},
        {"a<=b", MATHEXPR_DEFINITION_CONTAINS_SYNTAX_CHARACTER, 1, 2},
    };
    mathexpr_expression* const expression = plain();
    const mathexpr_value one = number(1);
    mathexpr_name_refusal refusal = {sizeof(refusal), 0, 0, 0};
    mathexpr_value value = number(77);
    int32_t failed = 1;
    size_t row = 0;

    CHECK_OK(mathexpr_set_variable_utf8(expression, "a", ZT, &one, NULL));
    CHECK_OK(mathexpr_set_expression_utf8(expression, "a+1", ZT));
    for (row = 0; row < sizeof(rows) / sizeof(rows[0]); ++row)
    {
        CHECK_STATUS(mathexpr_set_variable_utf8(expression, rows[row].name, ZT, &one, &refusal),
                     MATHEXPR_DEFINITION_ERROR);
        CHECK_EQUAL(refusal.code, rows[row].code);
        CHECK_EQUAL(refusal.start, rows[row].start);
        CHECK_EQUAL(refusal.length, rows[row].length);
        CHECK_STATUS(mathexpr_set_variable_utf8(expression, rows[row].name, ZT, &one, NULL), MATHEXPR_DEFINITION_ERROR);
    }
    CHECK_STATUS(mathexpr_set_variable_utf16(expression, wide("ab+c"), ZT, &one, &refusal), MATHEXPR_DEFINITION_ERROR);
    CHECK_EQUAL(refusal.code, MATHEXPR_DEFINITION_CONTAINS_SYNTAX_CHARACTER);
    CHECK_EQUAL(refusal.start, 2);
    CHECK_EQUAL(refusal.length, 1);
    refusal.code = 99;
    CHECK_OK(mathexpr_set_variable_utf8(expression, "b", ZT, &one, &refusal));
    CHECK_EQUAL(refusal.code, 99);

    CHECK_OK(mathexpr_has_failed(expression, &failed));
    CHECK_EQUAL(failed, 0);
    CHECK_OK(mathexpr_evaluate(expression, &value));
    CHECK_NUMBER(value.x, 2.0);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_addresses(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_value value = number(1);
    mathexpr_value* address = NULL;
    mathexpr_value* again = NULL;
    char name[] = "v000";
    int index = 0;

    CHECK_STATUS(mathexpr_get_variable_address_utf8(expression, "a", ZT, &address), MATHEXPR_NOT_FOUND);
    CHECK(address == NULL);
    CHECK_OK(mathexpr_set_variable_utf8(expression, "a", ZT, &value, NULL));
    CHECK_OK(mathexpr_get_variable_address_utf8(expression, "a", ZT, &address));
    for (index = 0; index < 1000; ++index)
    {
        name[1] = (char)('0' + index / 100);
        name[2] = (char)('0' + index / 10 % 10);
        name[3] = (char)('0' + index % 10);
        CHECK_OK(mathexpr_set_variable_utf8(expression, name, ZT, &value, NULL));
    }
    CHECK_OK(mathexpr_set_expression_utf8(expression, "a*a+v999", ZT));
    for (index = 0; index < 5; ++index)
    {
        address->x = index;
        CHECK_OK(mathexpr_evaluate(expression, &value));
        CHECK_NUMBER(value.x, index * index + 1.0);
    }
    *address = point(1, 2, 3);
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "A", ZT, &value));
    CHECK_EQUAL(value.type, MATHEXPR_POINT);
    CHECK_NUMBER(value.z, 3.0);
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "a=7", ZT, &value));
    CHECK_OK(mathexpr_get_variable_address_utf8(expression, "A", ZT, &again));
    CHECK(again == address);
    CHECK_NUMBER(address->x, 7.0);
    CHECK_OK(mathexpr_destroy(expression));
}
