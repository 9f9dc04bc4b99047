// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* abi.c - the numbers and layouts of the interface. They are frozen: lines may be added, but never changed. The layouts
 * are those of 64-bit platforms.
 */
#include "tests/c/check.h"

#include <mathexpr_editor.h>

#include <stddef.h>

void test_numbers(void)
{
    CHECK_EQUAL(MATHEXPR_OK, 0);
    CHECK_EQUAL(MATHEXPR_NULL_ARGUMENT, 1);
    CHECK_EQUAL(MATHEXPR_STALE_HANDLE, 2);
    CHECK_EQUAL(MATHEXPR_WRONG_KIND, 3);
    CHECK_EQUAL(MATHEXPR_BUSY, 4);
    CHECK_EQUAL(MATHEXPR_BAD_UTF8, 5);
    CHECK_EQUAL(MATHEXPR_BAD_UTF16, 6);
    CHECK_EQUAL(MATHEXPR_ZERO_IN_TEXT, 7);
    CHECK_EQUAL(MATHEXPR_BAD_SIZE, 8);
    CHECK_EQUAL(MATHEXPR_BAD_VALUE, 9);
    CHECK_EQUAL(MATHEXPR_BAD_OPTION, 10);
    CHECK_EQUAL(MATHEXPR_NOT_FOUND, 11);
    CHECK_EQUAL(MATHEXPR_BULK_REFUSED, 12);
    CHECK_EQUAL(MATHEXPR_BUFFER_TOO_SMALL, 13);
    CHECK_EQUAL(MATHEXPR_PARSING_ERROR, 20);
    CHECK_EQUAL(MATHEXPR_DEFINITION_ERROR, 21);
    CHECK_EQUAL(MATHEXPR_REFUSED, 22);
    CHECK_EQUAL(MATHEXPR_NO_PROGRAM, 23);
    CHECK_EQUAL(MATHEXPR_OTHER_KIND, 24);
    CHECK_EQUAL(MATHEXPR_HOST_CALLBACK_THREW, 30);
    CHECK_EQUAL(MATHEXPR_HOST_CALLBACK_REFUSED, 31);
    CHECK_EQUAL(MATHEXPR_HOST_CALLBACK_BAD_ANSWER, 32);
    CHECK_EQUAL(MATHEXPR_OUT_OF_MEMORY, 40);
    CHECK_EQUAL(MATHEXPR_INTERNAL_ERROR, 41);
    CHECK_EQUAL(MATHEXPR_NUMBER, 0);
    CHECK_EQUAL(MATHEXPR_POINT, 1);
    CHECK_EQUAL(MATHEXPR_EXPRESSION, 0);
    CHECK_EQUAL(MATHEXPR_CALCULATOR, 1);
    CHECK_EQUAL(MATHEXPR_SHOW_MESSAGES, 1);
    CHECK_EQUAL(MATHEXPR_LOOKUP_NOT_KNOWN, 0);
    CHECK_EQUAL(MATHEXPR_LOOKUP_FOUND, 1);
    CHECK_EQUAL(MATHEXPR_LOOKUP_REFUSED, 2);
    CHECK_EQUAL(MATHEXPR_KIND_NONE, 0);
    CHECK_EQUAL(MATHEXPR_KIND_PARSING, 1);
    CHECK_EQUAL(MATHEXPR_KIND_DEFINITION, 2);
    CHECK_EQUAL(MATHEXPR_PARSING_OPERATOR_MISPLACED, 0);
    CHECK_EQUAL(MATHEXPR_PARSING_OPERAND_MISSING, 3);
    CHECK_EQUAL(MATHEXPR_PARSING_CLOSING_WITHOUT_OPENING, 4);
    CHECK_EQUAL(MATHEXPR_PARSING_SEPARATOR_OUTSIDE_BRACKETS, 5);
    CHECK_EQUAL(MATHEXPR_PARSING_BRACKET_NOT_CLOSED, 6);
    CHECK_EQUAL(MATHEXPR_PARSING_NO_OVERLOAD, 7);
    CHECK_EQUAL(MATHEXPR_PARSING_NO_EXPRESSION, 8);
    CHECK_EQUAL(MATHEXPR_PARSING_VALUE_AFTER_VALUE, 9);
    CHECK_EQUAL(MATHEXPR_PARSING_UNKNOWN_FUNCTION, 10);
    CHECK_EQUAL(MATHEXPR_PARSING_UNKNOWN_NAME, 11);
    CHECK_EQUAL(MATHEXPR_PARSING_ARGUMENT_EMPTY, 12);
    CHECK_EQUAL(MATHEXPR_PARSING_ARGUMENT_KIND, 15);
    CHECK_EQUAL(MATHEXPR_PARSING_STRUCTURE, 16);
    CHECK_EQUAL(MATHEXPR_PARSING_TEXT_TOO_LONG, 17);
    CHECK_EQUAL(MATHEXPR_PARSING_TOO_MANY_RECORDS, 18);
    CHECK_EQUAL(MATHEXPR_PARSING_NESTED_TOO_DEEP, 19);
    CHECK_EQUAL(MATHEXPR_DEFINITION_NAME_EMPTY, 12);
    CHECK_EQUAL(MATHEXPR_DEFINITION_NAME_IS_NUMBER, 13);
    CHECK_EQUAL(MATHEXPR_DEFINITION_NAME_IS_CONSTANT, 14);
    CHECK_EQUAL(MATHEXPR_DEFINITION_CONTAINS_SYNTAX_CHARACTER, 15);
    CHECK_EQUAL(MATHEXPR_EXPECTED_VALUE, 0x1);
    CHECK_EQUAL(MATHEXPR_EXPECTED_OPERATOR, 0x2);
    CHECK_EQUAL(MATHEXPR_EXPECTED_CLOSING_BRACKET, 0x4);
    CHECK_EQUAL(MATHEXPR_EXPECTED_SEPARATOR, 0x8);
    CHECK_EQUAL(MATHEXPR_EXPECTED_END, 0x10);
    CHECK_EQUAL(MATHEXPR_EXPECTED_FUNCTION, 0x20);
    CHECK_EQUAL(MATHEXPR_EXPECTED_KNOWN_NAME, 0x40);
    CHECK_EQUAL(MATHEXPR_EXPECTED_NEW_NAME, 0x80);
    CHECK_EQUAL(MATHEXPR_EXPECTED_OTHER_COUNT, 0x100);
    CHECK_EQUAL(MATHEXPR_EXPECTED_NUMBER, 0x200);
    CHECK_EQUAL(MATHEXPR_EXPECTED_POINT, 0x400);
    CHECK_EQUAL(MATHEXPR_EXPECTED_SAME_KIND, 0x800);
    CHECK_EQUAL(MATHEXPR_EXPECTED_IN_DOMAIN, 0x1000);
    CHECK_EQUAL(MATHEXPR_EXPECTED_SMALLER_NUMBER, 0x2000);
    CHECK_EQUAL(MATHEXPR_EXPECTED_LESS, 0x4000);
    CHECK_EQUAL(MATHEXPR_NAMES_USED, 0);
    CHECK_EQUAL(MATHEXPR_NAMES_DEFINED, 1);
    CHECK_EQUAL(MATHEXPR_NAMES_OF_HOST, 2);
    CHECK_EQUAL(MATHEXPR_ITEM_CONSTANT, 0);
    CHECK_EQUAL(MATHEXPR_ITEM_OPERATOR, 1);
    CHECK_EQUAL(MATHEXPR_ITEM_FUNCTION, 2);
    CHECK_EQUAL(MATHEXPR_FAMILY_OPERATORS, 0);
    CHECK_EQUAL(MATHEXPR_FAMILY_CORE_MATH, 1);
    CHECK_EQUAL(MATHEXPR_FAMILY_ANGLE, 2);
    CHECK_EQUAL(MATHEXPR_FAMILY_LENGTH, 3);
    CHECK_EQUAL(MATHEXPR_FAMILY_AREA, 4);
    CHECK_EQUAL(MATHEXPR_FAMILY_VOLUME, 5);
    CHECK_EQUAL(MATHEXPR_FAMILY_GEOMETRY, 6);
    CHECK_EQUAL(MATHEXPR_FAMILY_CONSTANTS, 7);
    CHECK_EQUAL(MATHEXPR_NUMBERS, 0);
    CHECK_EQUAL(MATHEXPR_POINTS, 1);
    CHECK_EQUAL(MATHEXPR_RECORDS, 2);
    CHECK_EQUAL(MATHEXPR_ROW_DONE, 0);
    CHECK_EQUAL(MATHEXPR_ROW_ARGUMENTS_REFUSED, 3);
    CHECK_EQUAL(MATHEXPR_ROW_OTHER_KIND, 256);
    CHECK_EQUAL(MATHEXPR_BULK_NONE, 0);
    CHECK_EQUAL(MATHEXPR_BULK_BUSY, 1);
    CHECK_EQUAL(MATHEXPR_BULK_NO_PROGRAM, 2);
    CHECK_EQUAL(MATHEXPR_BULK_COLUMNS_MISSING, 3);
    CHECK_EQUAL(MATHEXPR_BULK_COLUMN_NAME, 4);
    CHECK_EQUAL(MATHEXPR_BULK_COLUMN_TWICE, 5);
    CHECK_EQUAL(MATHEXPR_BULK_COLUMN_KIND, 6);
    CHECK_EQUAL(MATHEXPR_BULK_COLUMN_DATA, 7);
    CHECK_EQUAL(MATHEXPR_BULK_COLUMN_ALIGNMENT, 8);
    CHECK_EQUAL(MATHEXPR_BULK_COLUMN_VARIABLE, 9);
    CHECK_EQUAL(MATHEXPR_BULK_RESULTS_KIND, 10);
    CHECK_EQUAL(MATHEXPR_BULK_RESULTS_DATA, 11);
    CHECK_EQUAL(MATHEXPR_BULK_RESULTS_ALIGNMENT, 12);
    CHECK_EQUAL(MATHEXPR_BULK_RESULTS_OVERLAP, 13);
    CHECK_EQUAL(MATHEXPR_ANY_ARG_COUNT, 0xFFFFFFFF);
    CHECK_EQUAL(MATHEXPR_MAX_STRUCT_SIZE, 4096);
    CHECK_EQUAL(MATHEXPR_EXACT_DIGITS, 0);
    CHECK_EQUAL(MATHEXPR_VALUE_TEXT_CAPACITY, 1024);
    CHECK(MATHEXPR_ZERO_TERMINATED == (size_t)-1);
    CHECK_EQUAL(MATHEXPR_ABI_VERSION, 1);
    CHECK_EQUAL(MATHEXPR_TOKEN_NUMBER, 0);
    CHECK_EQUAL(MATHEXPR_TOKEN_CONSTANT, 1);
    CHECK_EQUAL(MATHEXPR_TOKEN_FUNCTION, 2);
    CHECK_EQUAL(MATHEXPR_TOKEN_VARIABLE, 3);
    CHECK_EQUAL(MATHEXPR_TOKEN_HOST_NAME, 4);
    CHECK_EQUAL(MATHEXPR_TOKEN_UNKNOWN_NAME, 5);
    CHECK_EQUAL(MATHEXPR_TOKEN_OPERATOR, 6);
    CHECK_EQUAL(MATHEXPR_TOKEN_BRACKET, 7);
    CHECK_EQUAL(MATHEXPR_TOKEN_SEPARATOR, 8);
    CHECK_EQUAL(MATHEXPR_TOKEN_ASSIGNED_NAME, 9);
    CHECK_EQUAL(MATHEXPR_TOKEN_ASSIGNMENT_SIGN, 10);
    CHECK_EQUAL(MATHEXPR_TOKEN_BLANK, 11);
    CHECK_EQUAL(MATHEXPR_TOKEN_SHORTHAND, 12);
    CHECK_EQUAL(MATHEXPR_TOKEN_OTHER, 13);
    CHECK_EQUAL(MATHEXPR_RENAME_DONE, 0);
    CHECK_EQUAL(MATHEXPR_RENAME_NOT_A_NAME, 1);
    CHECK_EQUAL(MATHEXPR_RENAME_NAME_TAKEN, 2);
    CHECK_EQUAL(MATHEXPR_RENAME_READ_OTHERWISE, 3);
    CHECK_EQUAL(MATHEXPR_TYPING_COMPLETE, 0);
    CHECK_EQUAL(MATHEXPR_TYPING_UNFINISHED, 1);
    CHECK_EQUAL(MATHEXPR_TYPING_WRONG, 2);
    CHECK_EQUAL(MATHEXPR_VALUE_UNKNOWN, 0);
    CHECK_EQUAL(MATHEXPR_VALUE_NUMBER, 1);
    CHECK_EQUAL(MATHEXPR_VALUE_POINT, 2);
    CHECK_EQUAL(MATHEXPR_VALUE_EITHER, 3);
    CHECK_EQUAL(MATHEXPR_MAY_ASK_HOST, 1);
    CHECK(MATHEXPR_NO_PARTNER == (size_t)-1);
}

#define MEMBER(structure, member, offset) CHECK_EQUAL(offsetof(structure, member), offset)

void test_layouts(void)
{
    CHECK_EQUAL(sizeof(mathexpr_status), 4);
    CHECK_EQUAL(sizeof(mathexpr_char16), 2);
    if (sizeof(void*) != 8)
    {
        skip("not a 64-bit platform");
    }

    CHECK_EQUAL(sizeof(mathexpr_value), 32);
    MEMBER(mathexpr_value, type, 0);
    MEMBER(mathexpr_value, flag, 1);
    MEMBER(mathexpr_value, reserved, 2);
    MEMBER(mathexpr_value, padding, 4);
    MEMBER(mathexpr_value, x, 8);
    MEMBER(mathexpr_value, y, 16);
    MEMBER(mathexpr_value, z, 24);

    CHECK_EQUAL(sizeof(mathexpr_options_utf8), 48);
    MEMBER(mathexpr_options_utf8, size, 0);
    MEMBER(mathexpr_options_utf8, kind, 4);
    MEMBER(mathexpr_options_utf8, flags, 8);
    MEMBER(mathexpr_options_utf8, reserved, 12);
    MEMBER(mathexpr_options_utf8, context, 16);
    MEMBER(mathexpr_options_utf8, lookup, 24);
    MEMBER(mathexpr_options_utf8, show_message, 32);
    MEMBER(mathexpr_options_utf8, get_name, 40);

    CHECK_EQUAL(sizeof(mathexpr_options_utf16), 48);
    MEMBER(mathexpr_options_utf16, size, 0);
    MEMBER(mathexpr_options_utf16, kind, 4);
    MEMBER(mathexpr_options_utf16, flags, 8);
    MEMBER(mathexpr_options_utf16, reserved, 12);
    MEMBER(mathexpr_options_utf16, context, 16);
    MEMBER(mathexpr_options_utf16, lookup, 24);
    MEMBER(mathexpr_options_utf16, show_message, 32);
    MEMBER(mathexpr_options_utf16, get_name, 40);

    CHECK_EQUAL(sizeof(mathexpr_limits), 16);
    MEMBER(mathexpr_limits, size, 0);
    MEMBER(mathexpr_limits, max_text_length, 4);
    MEMBER(mathexpr_limits, max_records, 8);
    MEMBER(mathexpr_limits, max_nesting, 12);

    CHECK_EQUAL(sizeof(mathexpr_diagnostic_utf8), 168);
    MEMBER(mathexpr_diagnostic_utf8, size, 0);
    MEMBER(mathexpr_diagnostic_utf8, message, 4);
    MEMBER(mathexpr_diagnostic_utf8, kind, 8);
    MEMBER(mathexpr_diagnostic_utf8, code, 12);
    MEMBER(mathexpr_diagnostic_utf8, start, 16);
    MEMBER(mathexpr_diagnostic_utf8, length, 24);
    MEMBER(mathexpr_diagnostic_utf8, text, 32);
    MEMBER(mathexpr_diagnostic_utf8, text_length, 40);
    MEMBER(mathexpr_diagnostic_utf8, item, 48);
    MEMBER(mathexpr_diagnostic_utf8, item_length, 56);
    MEMBER(mathexpr_diagnostic_utf8, conflict, 64);
    MEMBER(mathexpr_diagnostic_utf8, conflict_length, 72);
    MEMBER(mathexpr_diagnostic_utf8, expected, 80);
    MEMBER(mathexpr_diagnostic_utf8, arg_count, 84);
    MEMBER(mathexpr_diagnostic_utf8, accepted_arg_counts, 88);
    MEMBER(mathexpr_diagnostic_utf8, accepted_count, 96);
    MEMBER(mathexpr_diagnostic_utf8, suggestions, 104);
    MEMBER(mathexpr_diagnostic_utf8, suggestion_count, 112);
    MEMBER(mathexpr_diagnostic_utf8, hints, 120);
    MEMBER(mathexpr_diagnostic_utf8, hint_count, 128);
    MEMBER(mathexpr_diagnostic_utf8, fix_start, 136);
    MEMBER(mathexpr_diagnostic_utf8, fix_length, 144);
    MEMBER(mathexpr_diagnostic_utf8, fix_replacement, 152);
    MEMBER(mathexpr_diagnostic_utf8, fix_replacement_length, 160);

    CHECK_EQUAL(sizeof(mathexpr_diagnostic_utf16), 168);
    MEMBER(mathexpr_diagnostic_utf16, size, 0);
    MEMBER(mathexpr_diagnostic_utf16, message, 4);
    MEMBER(mathexpr_diagnostic_utf16, kind, 8);
    MEMBER(mathexpr_diagnostic_utf16, code, 12);
    MEMBER(mathexpr_diagnostic_utf16, start, 16);
    MEMBER(mathexpr_diagnostic_utf16, length, 24);
    MEMBER(mathexpr_diagnostic_utf16, text, 32);
    MEMBER(mathexpr_diagnostic_utf16, text_length, 40);
    MEMBER(mathexpr_diagnostic_utf16, item, 48);
    MEMBER(mathexpr_diagnostic_utf16, item_length, 56);
    MEMBER(mathexpr_diagnostic_utf16, conflict, 64);
    MEMBER(mathexpr_diagnostic_utf16, conflict_length, 72);
    MEMBER(mathexpr_diagnostic_utf16, expected, 80);
    MEMBER(mathexpr_diagnostic_utf16, arg_count, 84);
    MEMBER(mathexpr_diagnostic_utf16, accepted_arg_counts, 88);
    MEMBER(mathexpr_diagnostic_utf16, accepted_count, 96);
    MEMBER(mathexpr_diagnostic_utf16, suggestions, 104);
    MEMBER(mathexpr_diagnostic_utf16, suggestion_count, 112);
    MEMBER(mathexpr_diagnostic_utf16, hints, 120);
    MEMBER(mathexpr_diagnostic_utf16, hint_count, 128);
    MEMBER(mathexpr_diagnostic_utf16, fix_start, 136);
    MEMBER(mathexpr_diagnostic_utf16, fix_length, 144);
    MEMBER(mathexpr_diagnostic_utf16, fix_replacement, 152);
    MEMBER(mathexpr_diagnostic_utf16, fix_replacement_length, 160);

    CHECK_EQUAL(sizeof(mathexpr_names_utf8), 24);
    MEMBER(mathexpr_names_utf8, size, 0);
    MEMBER(mathexpr_names_utf8, reserved, 4);
    MEMBER(mathexpr_names_utf8, names, 8);
    MEMBER(mathexpr_names_utf8, name_count, 16);

    CHECK_EQUAL(sizeof(mathexpr_names_utf16), 24);
    MEMBER(mathexpr_names_utf16, size, 0);
    MEMBER(mathexpr_names_utf16, reserved, 4);
    MEMBER(mathexpr_names_utf16, names, 8);
    MEMBER(mathexpr_names_utf16, name_count, 16);

    CHECK_EQUAL(sizeof(mathexpr_name_refusal), 24);
    MEMBER(mathexpr_name_refusal, size, 0);
    MEMBER(mathexpr_name_refusal, code, 4);
    MEMBER(mathexpr_name_refusal, start, 8);
    MEMBER(mathexpr_name_refusal, length, 16);

    CHECK_EQUAL(sizeof(mathexpr_vocabulary_item_utf8), 64);
    MEMBER(mathexpr_vocabulary_item_utf8, size, 0);
    MEMBER(mathexpr_vocabulary_item_utf8, kind, 4);
    MEMBER(mathexpr_vocabulary_item_utf8, family, 8);
    MEMBER(mathexpr_vocabulary_item_utf8, arg_count, 12);
    MEMBER(mathexpr_vocabulary_item_utf8, precedence, 16);
    MEMBER(mathexpr_vocabulary_item_utf8, unary, 20);
    MEMBER(mathexpr_vocabulary_item_utf8, constant, 24);
    MEMBER(mathexpr_vocabulary_item_utf8, reserved, 28);
    MEMBER(mathexpr_vocabulary_item_utf8, value, 32);
    MEMBER(mathexpr_vocabulary_item_utf8, symbol, 40);
    MEMBER(mathexpr_vocabulary_item_utf8, help, 48);
    MEMBER(mathexpr_vocabulary_item_utf8, description, 56);

    CHECK_EQUAL(sizeof(mathexpr_vocabulary_item_utf16), 64);
    MEMBER(mathexpr_vocabulary_item_utf16, size, 0);
    MEMBER(mathexpr_vocabulary_item_utf16, kind, 4);
    MEMBER(mathexpr_vocabulary_item_utf16, family, 8);
    MEMBER(mathexpr_vocabulary_item_utf16, arg_count, 12);
    MEMBER(mathexpr_vocabulary_item_utf16, precedence, 16);
    MEMBER(mathexpr_vocabulary_item_utf16, unary, 20);
    MEMBER(mathexpr_vocabulary_item_utf16, constant, 24);
    MEMBER(mathexpr_vocabulary_item_utf16, reserved, 28);
    MEMBER(mathexpr_vocabulary_item_utf16, value, 32);
    MEMBER(mathexpr_vocabulary_item_utf16, symbol, 40);
    MEMBER(mathexpr_vocabulary_item_utf16, help, 48);
    MEMBER(mathexpr_vocabulary_item_utf16, description, 56);

    CHECK_EQUAL(sizeof(mathexpr_column_utf8), 48);
    MEMBER(mathexpr_column_utf8, size, 0);
    MEMBER(mathexpr_column_utf8, kind, 4);
    MEMBER(mathexpr_column_utf8, name, 8);
    MEMBER(mathexpr_column_utf8, name_length, 16);
    MEMBER(mathexpr_column_utf8, data, 24);
    MEMBER(mathexpr_column_utf8, stride, 32);
    MEMBER(mathexpr_column_utf8, coordinate_stride, 40);

    CHECK_EQUAL(sizeof(mathexpr_column_utf16), 48);
    MEMBER(mathexpr_column_utf16, size, 0);
    MEMBER(mathexpr_column_utf16, kind, 4);
    MEMBER(mathexpr_column_utf16, name, 8);
    MEMBER(mathexpr_column_utf16, name_length, 16);
    MEMBER(mathexpr_column_utf16, data, 24);
    MEMBER(mathexpr_column_utf16, stride, 32);
    MEMBER(mathexpr_column_utf16, coordinate_stride, 40);

    CHECK_EQUAL(sizeof(mathexpr_results), 40);
    MEMBER(mathexpr_results, size, 0);
    MEMBER(mathexpr_results, kind, 4);
    MEMBER(mathexpr_results, data, 8);
    MEMBER(mathexpr_results, stride, 16);
    MEMBER(mathexpr_results, coordinate_stride, 24);
    MEMBER(mathexpr_results, row_status, 32);

    CHECK_EQUAL(sizeof(mathexpr_bulk_outcome), 40);
    MEMBER(mathexpr_bulk_outcome, size, 0);
    MEMBER(mathexpr_bulk_outcome, error, 4);
    MEMBER(mathexpr_bulk_outcome, column, 8);
    MEMBER(mathexpr_bulk_outcome, failed_count, 16);
    MEMBER(mathexpr_bulk_outcome, first_failed, 24);
    MEMBER(mathexpr_bulk_outcome, first_status, 32);
    MEMBER(mathexpr_bulk_outcome, reserved, 36);

    CHECK_EQUAL(sizeof(mathexpr_token), 32);
    MEMBER(mathexpr_token, kind, 0);
    MEMBER(mathexpr_token, depth, 4);
    MEMBER(mathexpr_token, start, 8);
    MEMBER(mathexpr_token, length, 16);
    MEMBER(mathexpr_token, partner, 24);

    CHECK_EQUAL(sizeof(mathexpr_tokens), 24);
    MEMBER(mathexpr_tokens, size, 0);
    MEMBER(mathexpr_tokens, reserved, 4);
    MEMBER(mathexpr_tokens, tokens, 8);
    MEMBER(mathexpr_tokens, token_count, 16);

    CHECK_EQUAL(sizeof(mathexpr_text_utf8), 24);
    MEMBER(mathexpr_text_utf8, size, 0);
    MEMBER(mathexpr_text_utf8, reserved, 4);
    MEMBER(mathexpr_text_utf8, text, 8);
    MEMBER(mathexpr_text_utf8, text_length, 16);

    CHECK_EQUAL(sizeof(mathexpr_text_utf16), 24);
    MEMBER(mathexpr_text_utf16, size, 0);
    MEMBER(mathexpr_text_utf16, reserved, 4);
    MEMBER(mathexpr_text_utf16, text, 8);
    MEMBER(mathexpr_text_utf16, text_length, 16);

    CHECK_EQUAL(sizeof(mathexpr_span), 16);
    MEMBER(mathexpr_span, start, 0);
    MEMBER(mathexpr_span, length, 8);

    CHECK_EQUAL(sizeof(mathexpr_spans), 24);
    MEMBER(mathexpr_spans, size, 0);
    MEMBER(mathexpr_spans, reserved, 4);
    MEMBER(mathexpr_spans, spans, 8);
    MEMBER(mathexpr_spans, span_count, 16);

    CHECK_EQUAL(sizeof(mathexpr_edit_utf8), 32);
    MEMBER(mathexpr_edit_utf8, start, 0);
    MEMBER(mathexpr_edit_utf8, length, 8);
    MEMBER(mathexpr_edit_utf8, replacement, 16);
    MEMBER(mathexpr_edit_utf8, replacement_length, 24);

    CHECK_EQUAL(sizeof(mathexpr_edit_utf16), 32);
    MEMBER(mathexpr_edit_utf16, start, 0);
    MEMBER(mathexpr_edit_utf16, length, 8);
    MEMBER(mathexpr_edit_utf16, replacement, 16);
    MEMBER(mathexpr_edit_utf16, replacement_length, 24);

    CHECK_EQUAL(sizeof(mathexpr_renaming_utf8), 40);
    MEMBER(mathexpr_renaming_utf8, size, 0);
    MEMBER(mathexpr_renaming_utf8, refusal, 4);
    MEMBER(mathexpr_renaming_utf8, refused_at, 8);
    MEMBER(mathexpr_renaming_utf8, edits, 24);
    MEMBER(mathexpr_renaming_utf8, edit_count, 32);

    CHECK_EQUAL(sizeof(mathexpr_renaming_utf16), 40);
    MEMBER(mathexpr_renaming_utf16, size, 0);
    MEMBER(mathexpr_renaming_utf16, refusal, 4);
    MEMBER(mathexpr_renaming_utf16, refused_at, 8);
    MEMBER(mathexpr_renaming_utf16, edits, 24);
    MEMBER(mathexpr_renaming_utf16, edit_count, 32);

    CHECK_EQUAL(sizeof(mathexpr_literal), 48);
    MEMBER(mathexpr_literal, start, 0);
    MEMBER(mathexpr_literal, length, 8);
    MEMBER(mathexpr_literal, value, 16);

    CHECK_EQUAL(sizeof(mathexpr_literals), 24);
    MEMBER(mathexpr_literals, size, 0);
    MEMBER(mathexpr_literals, reserved, 4);
    MEMBER(mathexpr_literals, literals, 8);
    MEMBER(mathexpr_literals, literal_count, 16);

    CHECK_EQUAL(sizeof(mathexpr_overload_utf8), 40);
    MEMBER(mathexpr_overload_utf8, help, 0);
    MEMBER(mathexpr_overload_utf8, description, 8);
    MEMBER(mathexpr_overload_utf8, parameters, 16);
    MEMBER(mathexpr_overload_utf8, parameter_count, 24);
    MEMBER(mathexpr_overload_utf8, parameter_kind, 32);
    MEMBER(mathexpr_overload_utf8, reserved, 36);

    CHECK_EQUAL(sizeof(mathexpr_overload_utf16), 40);
    MEMBER(mathexpr_overload_utf16, help, 0);
    MEMBER(mathexpr_overload_utf16, description, 8);
    MEMBER(mathexpr_overload_utf16, parameters, 16);
    MEMBER(mathexpr_overload_utf16, parameter_count, 24);
    MEMBER(mathexpr_overload_utf16, parameter_kind, 32);
    MEMBER(mathexpr_overload_utf16, reserved, 36);

    CHECK_EQUAL(sizeof(mathexpr_signature_utf8), 64);
    MEMBER(mathexpr_signature_utf8, size, 0);
    MEMBER(mathexpr_signature_utf8, argument, 4);
    MEMBER(mathexpr_signature_utf8, name, 8);
    MEMBER(mathexpr_signature_utf8, function, 24);
    MEMBER(mathexpr_signature_utf8, unit, 32);
    MEMBER(mathexpr_signature_utf8, overloads, 40);
    MEMBER(mathexpr_signature_utf8, overload_count, 48);
    MEMBER(mathexpr_signature_utf8, active_overload, 56);
    MEMBER(mathexpr_signature_utf8, wanted, 60);

    CHECK_EQUAL(sizeof(mathexpr_signature_utf16), 64);
    MEMBER(mathexpr_signature_utf16, size, 0);
    MEMBER(mathexpr_signature_utf16, argument, 4);
    MEMBER(mathexpr_signature_utf16, name, 8);
    MEMBER(mathexpr_signature_utf16, function, 24);
    MEMBER(mathexpr_signature_utf16, unit, 32);
    MEMBER(mathexpr_signature_utf16, overloads, 40);
    MEMBER(mathexpr_signature_utf16, overload_count, 48);
    MEMBER(mathexpr_signature_utf16, active_overload, 56);
    MEMBER(mathexpr_signature_utf16, wanted, 60);

    CHECK_EQUAL(sizeof(mathexpr_hover_utf8), 160);
    MEMBER(mathexpr_hover_utf8, size, 0);
    MEMBER(mathexpr_hover_utf8, kind, 4);
    MEMBER(mathexpr_hover_utf8, span, 8);
    MEMBER(mathexpr_hover_utf8, name, 24);
    MEMBER(mathexpr_hover_utf8, help, 32);
    MEMBER(mathexpr_hover_utf8, description, 40);
    MEMBER(mathexpr_hover_utf8, domain, 48);
    MEMBER(mathexpr_hover_utf8, unit, 56);
    MEMBER(mathexpr_hover_utf8, example, 64);
    MEMBER(mathexpr_hover_utf8, has_example_value, 72);
    MEMBER(mathexpr_hover_utf8, has_value, 76);
    MEMBER(mathexpr_hover_utf8, example_value, 80);
    MEMBER(mathexpr_hover_utf8, value, 112);
    MEMBER(mathexpr_hover_utf8, value_span, 144);

    CHECK_EQUAL(sizeof(mathexpr_hover_utf16), 160);
    MEMBER(mathexpr_hover_utf16, size, 0);
    MEMBER(mathexpr_hover_utf16, kind, 4);
    MEMBER(mathexpr_hover_utf16, span, 8);
    MEMBER(mathexpr_hover_utf16, name, 24);
    MEMBER(mathexpr_hover_utf16, help, 32);
    MEMBER(mathexpr_hover_utf16, description, 40);
    MEMBER(mathexpr_hover_utf16, domain, 48);
    MEMBER(mathexpr_hover_utf16, unit, 56);
    MEMBER(mathexpr_hover_utf16, example, 64);
    MEMBER(mathexpr_hover_utf16, has_example_value, 72);
    MEMBER(mathexpr_hover_utf16, has_value, 76);
    MEMBER(mathexpr_hover_utf16, example_value, 80);
    MEMBER(mathexpr_hover_utf16, value, 112);
    MEMBER(mathexpr_hover_utf16, value_span, 144);

    CHECK_EQUAL(sizeof(mathexpr_name_notes_utf8), 24);
    MEMBER(mathexpr_name_notes_utf8, size, 0);
    MEMBER(mathexpr_name_notes_utf8, value_kind, 4);
    MEMBER(mathexpr_name_notes_utf8, description, 8);
    MEMBER(mathexpr_name_notes_utf8, unavailable, 16);

    CHECK_EQUAL(sizeof(mathexpr_completion_options_utf8), 40);
    MEMBER(mathexpr_completion_options_utf8, size, 0);
    MEMBER(mathexpr_completion_options_utf8, max_count, 4);
    MEMBER(mathexpr_completion_options_utf8, recent, 8);
    MEMBER(mathexpr_completion_options_utf8, recent_count, 16);
    MEMBER(mathexpr_completion_options_utf8, context, 24);
    MEMBER(mathexpr_completion_options_utf8, get_notes, 32);

    CHECK_EQUAL(sizeof(mathexpr_name_notes_utf16), 24);
    MEMBER(mathexpr_name_notes_utf16, size, 0);
    MEMBER(mathexpr_name_notes_utf16, value_kind, 4);
    MEMBER(mathexpr_name_notes_utf16, description, 8);
    MEMBER(mathexpr_name_notes_utf16, unavailable, 16);

    CHECK_EQUAL(sizeof(mathexpr_completion_options_utf16), 40);
    MEMBER(mathexpr_completion_options_utf16, size, 0);
    MEMBER(mathexpr_completion_options_utf16, max_count, 4);
    MEMBER(mathexpr_completion_options_utf16, recent, 8);
    MEMBER(mathexpr_completion_options_utf16, recent_count, 16);
    MEMBER(mathexpr_completion_options_utf16, context, 24);
    MEMBER(mathexpr_completion_options_utf16, get_notes, 32);

    CHECK_EQUAL(sizeof(mathexpr_completion_utf8), 120);
    MEMBER(mathexpr_completion_utf8, kind, 0);
    MEMBER(mathexpr_completion_utf8, value_kind, 4);
    MEMBER(mathexpr_completion_utf8, edit, 8);
    MEMBER(mathexpr_completion_utf8, selection, 40);
    MEMBER(mathexpr_completion_utf8, name, 56);
    MEMBER(mathexpr_completion_utf8, description, 64);
    MEMBER(mathexpr_completion_utf8, has_value, 72);
    MEMBER(mathexpr_completion_utf8, reserved, 76);
    MEMBER(mathexpr_completion_utf8, value, 80);
    MEMBER(mathexpr_completion_utf8, unavailable, 112);

    CHECK_EQUAL(sizeof(mathexpr_completion_utf16), 120);
    MEMBER(mathexpr_completion_utf16, kind, 0);
    MEMBER(mathexpr_completion_utf16, value_kind, 4);
    MEMBER(mathexpr_completion_utf16, edit, 8);
    MEMBER(mathexpr_completion_utf16, selection, 40);
    MEMBER(mathexpr_completion_utf16, name, 56);
    MEMBER(mathexpr_completion_utf16, description, 64);
    MEMBER(mathexpr_completion_utf16, has_value, 72);
    MEMBER(mathexpr_completion_utf16, reserved, 76);
    MEMBER(mathexpr_completion_utf16, value, 80);
    MEMBER(mathexpr_completion_utf16, unavailable, 112);

    CHECK_EQUAL(sizeof(mathexpr_completions_utf8), 24);
    MEMBER(mathexpr_completions_utf8, size, 0);
    MEMBER(mathexpr_completions_utf8, reserved, 4);
    MEMBER(mathexpr_completions_utf8, items, 8);
    MEMBER(mathexpr_completions_utf8, item_count, 16);

    CHECK_EQUAL(sizeof(mathexpr_completions_utf16), 24);
    MEMBER(mathexpr_completions_utf16, size, 0);
    MEMBER(mathexpr_completions_utf16, reserved, 4);
    MEMBER(mathexpr_completions_utf16, items, 8);
    MEMBER(mathexpr_completions_utf16, item_count, 16);
}
