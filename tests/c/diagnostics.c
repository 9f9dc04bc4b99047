// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* diagnostics.c - contents and positions of diagnostics, in the units of each encoding. */
#include "tests/c/check.h"

#include <string.h>

static mathexpr_diagnostic_utf8 diagnostic8(mathexpr_expression* expression)
{
    mathexpr_diagnostic_utf8 diagnostic;
    memset(&diagnostic, 0xEE, sizeof(diagnostic));
    diagnostic.size = sizeof(diagnostic);
    CHECK_OK(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
    CHECK_EQUAL(strlen(diagnostic.text), diagnostic.text_length);
    CHECK_EQUAL(strlen(diagnostic.item), diagnostic.item_length);
    CHECK_EQUAL(strlen(diagnostic.conflict), diagnostic.conflict_length);
    return diagnostic;
}

static mathexpr_diagnostic_utf16 diagnostic16(mathexpr_expression* expression)
{
    mathexpr_diagnostic_utf16 diagnostic;
    memset(&diagnostic, 0xEE, sizeof(diagnostic));
    diagnostic.size = sizeof(diagnostic);
    CHECK_OK(mathexpr_get_diagnostic_utf16(expression, &diagnostic));
    return diagnostic;
}

void test_diagnostic_record(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_diagnostic_utf8 diagnostic;
    mathexpr_diagnostic_utf16 wider;
    int32_t failed = 77;

    CHECK_OK(mathexpr_has_failed(expression, &failed));
    CHECK_EQUAL(failed, 0);
    diagnostic = diagnostic8(expression);
    CHECK_EQUAL(diagnostic.message, 0);
    CHECK_EQUAL(diagnostic.kind, MATHEXPR_KIND_NONE);
    CHECK_EQUAL(diagnostic.code, 0);
    CHECK_EQUAL(diagnostic.start, 0);
    CHECK_EQUAL(diagnostic.length, 0);
    CHECK_TEXT(diagnostic.text, "");
    CHECK_TEXT(diagnostic.item, "");
    CHECK_TEXT(diagnostic.conflict, "");
    CHECK_EQUAL(diagnostic.expected, 0);
    CHECK_EQUAL(diagnostic.arg_count, 0);
    CHECK(diagnostic.accepted_arg_counts == NULL);
    CHECK_EQUAL(diagnostic.accepted_count, 0);
    CHECK(diagnostic.suggestions == NULL);
    CHECK_EQUAL(diagnostic.suggestion_count, 0);
    CHECK(diagnostic.hints == NULL);
    CHECK_EQUAL(diagnostic.hint_count, 0);
    CHECK_EQUAL(diagnostic.fix_start, 0);
    CHECK_EQUAL(diagnostic.fix_length, 0);
    CHECK_TEXT(diagnostic.fix_replacement, "");
    CHECK_EQUAL(diagnostic.fix_replacement_length, 0);

    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1 + trunc(1,2,3)", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_OK(mathexpr_has_failed(expression, &failed));
    CHECK_EQUAL(failed, 1);
    diagnostic = diagnostic8(expression);
    CHECK_EQUAL(diagnostic.message, 3);
    CHECK_EQUAL(diagnostic.kind, MATHEXPR_KIND_PARSING);
    CHECK_EQUAL(diagnostic.code, MATHEXPR_PARSING_NO_OVERLOAD);
    CHECK_EQUAL(diagnostic.start, 4);
    CHECK_EQUAL(diagnostic.length, 5);
    CHECK(diagnostic.text_length > 0);
    CHECK_TEXT(diagnostic.item, "trunc");
    CHECK_EQUAL(diagnostic.expected, MATHEXPR_EXPECTED_OTHER_COUNT);
    CHECK_EQUAL(diagnostic.arg_count, 3);
    CHECK_EQUAL(diagnostic.accepted_count, 1);
    CHECK(diagnostic.accepted_arg_counts != NULL && diagnostic.accepted_arg_counts[0] == 1);
    wider = diagnostic16(expression);
    CHECK_EQUAL(wider.message, 3);
    CHECK_EQUAL(wider.kind, MATHEXPR_KIND_PARSING);
    CHECK_EQUAL(wider.code, MATHEXPR_PARSING_NO_OVERLOAD);
    CHECK_EQUAL(wider.start, 4);
    CHECK_EQUAL(wider.length, 5);
    CHECK_TEXT16(wider.text, diagnostic.text);
    CHECK_EQUAL(wider.text_length, diagnostic.text_length);
    CHECK_TEXT16(wider.item, "trunc");
    CHECK_EQUAL(wider.item_length, 5);
    CHECK_TEXT16(wider.conflict, "");
    CHECK_EQUAL(wider.conflict_length, 0);
    CHECK_EQUAL(wider.expected, MATHEXPR_EXPECTED_OTHER_COUNT);
    CHECK_EQUAL(wider.arg_count, 3);
    CHECK_EQUAL(wider.accepted_count, 1);
    CHECK(wider.accepted_arg_counts != NULL && wider.accepted_arg_counts[0] == 1);

    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1/0", ZT), MATHEXPR_REFUSED);
    diagnostic = diagnostic8(expression);
    CHECK_EQUAL(diagnostic.message, 10);
    CHECK_EQUAL(diagnostic.kind, MATHEXPR_KIND_NONE);
    CHECK_EQUAL(diagnostic.expected, MATHEXPR_EXPECTED_IN_DOMAIN);
    CHECK_EQUAL(diagnostic.arg_count, 2);

    CHECK_OK(mathexpr_set_expression_utf8(expression, "1", ZT));
    CHECK_OK(mathexpr_has_failed(expression, &failed));
    CHECK_EQUAL(failed, 0);
    CHECK_EQUAL(diagnostic8(expression).message, 0);
    CHECK_OK(mathexpr_destroy(expression));
}

/* Length in UTF-8 bytes and UTF-16 units: UMLAUT 2 and 1, EURO 3 and 1, FACE 4 and 2. */
#define UMLAUT "\xC3\xA4"
#define EURO "\xE2\x82\xAC"
#define FACE "\xF0\x9F\x98\x80"

void test_diagnostic_correction(void)
{
    mathexpr_expression* const expression = plain();
    const mathexpr_value one = number(1);
    mathexpr_diagnostic_utf8 narrow;
    mathexpr_diagnostic_utf16 wider;
    CHECK_OK(mathexpr_set_variable_utf8(expression, FACE, ZT, &one, NULL));
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, FACE "+2" FACE, ZT), MATHEXPR_PARSING_ERROR);
    narrow = diagnostic8(expression);
    CHECK_EQUAL(narrow.hint_count, 1);
    CHECK_TEXT(narrow.hints[0], "Multiplication is written with *. Did you mean " FACE "+2*" FACE "?");
    CHECK_EQUAL(narrow.fix_start, 5);
    CHECK_EQUAL(narrow.fix_length, 5);
    CHECK_TEXT(narrow.fix_replacement, "2*" FACE);
    CHECK_EQUAL(narrow.fix_replacement_length, 6);
    wider = diagnostic16(expression);
    CHECK_EQUAL(wider.hint_count, 1);
    CHECK_EQUAL(wider.hints[0][49], '+');
    CHECK_EQUAL(wider.fix_start, 3);
    CHECK_EQUAL(wider.fix_length, 3);
    CHECK_EQUAL(wider.fix_replacement[1], '*');
    CHECK_EQUAL(wider.fix_replacement[2], 0xD83D);
    CHECK_EQUAL(wider.fix_replacement[3], 0xDE00);
    CHECK_EQUAL(wider.fix_replacement_length, 4);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_diagnostic_positions(void)
{
    static const struct
    {
        const char* text;
        size_t start8, length8, start16, length16;
    } rows[] = {
        {"1 + unk*2", 4, 3, 4, 3},
        {UMLAUT "=" UMLAUT "unk", 3, 5, 2, 4},
        {"1+" FACE "*2", 2, 4, 2, 2},
        {"2*[ " EURO " , 1 ]", 4, 3, 4, 1},
        {"a + " FACE UMLAUT EURO " ) ", 14, 1, 9, 1},
        {FACE " ( 1 )", 0, 4, 0, 2},
        {"1 +" UMLAUT UMLAUT " " UMLAUT "*2", 3, 7, 3, 4},
    };
    const mathexpr_value one = number(1);
    size_t row = 0;
    for (row = 0; row < sizeof(rows) / sizeof(rows[0]); ++row)
    {
        mathexpr_expression* const expression = plain();
        mathexpr_diagnostic_utf8 narrow;
        mathexpr_diagnostic_utf16 wider;
        CHECK_OK(mathexpr_set_variable_utf8(expression, "a", ZT, &one, NULL));
        CHECK_OK(mathexpr_set_variable_utf8(expression, FACE UMLAUT EURO, ZT, &one, NULL));
        CHECK_STATUS(mathexpr_set_expression_utf8(expression, rows[row].text, ZT), MATHEXPR_PARSING_ERROR);
        narrow = diagnostic8(expression);
        wider = diagnostic16(expression);
        CHECK_EQUAL(narrow.start, rows[row].start8);
        CHECK_EQUAL(narrow.length, rows[row].length8);
        CHECK_EQUAL(wider.start, rows[row].start16);
        CHECK_EQUAL(wider.length, rows[row].length16);
        CHECK_OK(mathexpr_destroy(expression));
    }
}

void test_diagnostic_lifetime(void)
{
    static const mathexpr_char16 face[] = {'1', '+', 0xD83D, 0xDE00, 0};
    mathexpr_expression* const expression = plain();
    mathexpr_diagnostic_utf8 first;
    mathexpr_diagnostic_utf16 other;

    CHECK_STATUS(mathexpr_set_expression_utf16(expression, face, ZT), MATHEXPR_PARSING_ERROR);
    first = diagnostic8(expression);
    CHECK_TEXT(first.item, FACE);
    /* It stays valid after another text is compiled, and after a diagnostic in the other encoding is read. */
    CHECK_OK(mathexpr_set_expression_utf8(expression, "1+1", ZT));
    other = diagnostic16(expression);
    CHECK_EQUAL(other.message, 0);
    CHECK_TEXT(first.item, FACE);
    CHECK(first.text_length > 0 && first.text[0] != '\0');
    CHECK_STATUS(mathexpr_set_expression_utf16(expression, face, ZT), MATHEXPR_PARSING_ERROR);
    other = diagnostic16(expression);
    CHECK_EQUAL(other.item_length, 2);
    CHECK_EQUAL(other.item[0], 0xD83D);
    CHECK_EQUAL(other.item[1], 0xDE00);
    CHECK_EQUAL(other.item[2], 0);
    CHECK_EQUAL(diagnostic8(expression).item_length, 4);
    CHECK_EQUAL(other.item[0], 0xD83D);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_diagnostic_suggestions(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_diagnostic_utf8 narrow;
    mathexpr_diagnostic_utf16 wider;
    const mathexpr_value one = number(1);

    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "dits([1,2,3],[4,5,6])", ZT), MATHEXPR_PARSING_ERROR);
    narrow = diagnostic8(expression);
    CHECK_EQUAL(narrow.code, MATHEXPR_PARSING_UNKNOWN_FUNCTION);
    CHECK(narrow.suggestion_count >= 1 && narrow.suggestion_count <= 3);
    CHECK_TEXT(narrow.suggestions[0], "dist");
    wider = diagnostic16(expression);
    CHECK_EQUAL(wider.suggestion_count, narrow.suggestion_count);
    CHECK_TEXT16(wider.suggestions[0], "dist");

    CHECK_OK(mathexpr_set_variable_utf8(expression, "l" UMLAUT "nge", ZT, &one, NULL));
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "2*lange", ZT), MATHEXPR_PARSING_ERROR);
    narrow = diagnostic8(expression);
    CHECK_TEXT(narrow.suggestions[0], "l" UMLAUT "nge");
    CHECK_EQUAL(narrow.expected, MATHEXPR_EXPECTED_KNOWN_NAME);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_diagnostic_of_definition(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_value value = number(77);
    mathexpr_diagnostic_utf8 narrow;

    CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, UMLAUT "=2", ZT, &value), MATHEXPR_OK);
    CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, "  p i = " UMLAUT, ZT, &value), MATHEXPR_DEFINITION_ERROR);
    narrow = diagnostic8(expression);
    CHECK_EQUAL(narrow.kind, MATHEXPR_KIND_DEFINITION);
    CHECK_EQUAL(narrow.code, MATHEXPR_DEFINITION_NAME_IS_CONSTANT);
    CHECK_EQUAL(narrow.start, 2);
    CHECK_EQUAL(narrow.length, 3);
    CHECK_TEXT(narrow.item, "pi");
    CHECK_TEXT(narrow.conflict, "pi");
    CHECK_EQUAL(narrow.expected, MATHEXPR_EXPECTED_NEW_NAME);
    CHECK_OK(mathexpr_destroy(expression));
}
