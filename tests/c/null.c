// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* null.c - NULL for every required pointer: MATHEXPR_NULL_ARGUMENT, and nothing written. */
#include "tests/c/check.h"

#define REFUSES(call) CHECK_STATUS(call, MATHEXPR_NULL_ARGUMENT)

void test_null_expression(void)
{
    mathexpr_value value = number(77);
    mathexpr_value* address = NULL;
    mathexpr_expression* copy = NULL;
    mathexpr_limits limits = {sizeof(limits), 7, 7, 7};
    mathexpr_diagnostic_utf8 diagnostic = {0};
    mathexpr_diagnostic_utf16 diagnostic16 = {0};
    mathexpr_names_utf8 names = {sizeof(names), 0, NULL, 77};
    mathexpr_names_utf16 names16 = {sizeof(names16), 0, NULL, 77};
    mathexpr_results results = {0};
    int32_t failed = 77;

    diagnostic.size = sizeof(diagnostic);
    diagnostic16.size = sizeof(diagnostic16);
    results.size = sizeof(results);
    REFUSES(mathexpr_copy(NULL, &copy));
    REFUSES(mathexpr_set_expression_utf8(NULL, "1", ZT));
    REFUSES(mathexpr_set_expression_utf16(NULL, wide("1"), ZT));
    REFUSES(mathexpr_evaluate(NULL, &value));
    REFUSES(mathexpr_evaluate_text_utf8(NULL, "1", ZT, &value));
    REFUSES(mathexpr_evaluate_text_utf16(NULL, wide("1"), ZT, &value));
    REFUSES(mathexpr_calculate_utf8(NULL, "1", ZT, 10, &value));
    REFUSES(mathexpr_calculate_utf16(NULL, wide("1"), ZT, 10, &value));
    REFUSES(mathexpr_drop_assignment(NULL));
    REFUSES(mathexpr_set_limits(NULL, &limits));
    REFUSES(mathexpr_get_limits(NULL, &limits));
    REFUSES(mathexpr_has_failed(NULL, &failed));
    REFUSES(mathexpr_get_diagnostic_utf8(NULL, &diagnostic));
    REFUSES(mathexpr_get_diagnostic_utf16(NULL, &diagnostic16));
    REFUSES(mathexpr_get_names_utf8(NULL, MATHEXPR_NAMES_USED, &names));
    REFUSES(mathexpr_get_names_utf16(NULL, MATHEXPR_NAMES_USED, &names16));
    REFUSES(mathexpr_get_variable_utf8(NULL, "a", ZT, &value));
    REFUSES(mathexpr_get_variable_utf16(NULL, wide("a"), ZT, &value));
    REFUSES(mathexpr_set_variable_utf8(NULL, "a", ZT, &value, NULL));
    REFUSES(mathexpr_set_variable_utf16(NULL, wide("a"), ZT, &value, NULL));
    REFUSES(mathexpr_remove_variable_utf8(NULL, "a", ZT));
    REFUSES(mathexpr_remove_variable_utf16(NULL, wide("a"), ZT));
    REFUSES(mathexpr_get_variable_address_utf8(NULL, "a", ZT, &address));
    REFUSES(mathexpr_get_variable_address_utf16(NULL, wide("a"), ZT, &address));
    REFUSES(mathexpr_evaluate_bulk_utf8(NULL, NULL, 0, 0, &results, 1, NULL));
    REFUSES(mathexpr_evaluate_bulk_utf16(NULL, NULL, 0, 0, &results, 1, NULL));
    CHECK_NUMBER(value.x, 77.0);
    CHECK(address == NULL && copy == NULL);
    CHECK_EQUAL(limits.max_records, 7);
    CHECK_EQUAL(names.name_count, 77);
    CHECK_EQUAL(names16.name_count, 77);
    CHECK_EQUAL(failed, 77);
}

void test_null_arguments(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_expression* calculator = NULL;
    mathexpr_options_utf8 options = {0};
    mathexpr_value value = number(77);
    mathexpr_value* address = NULL;

    options.size = sizeof(options);
    options.kind = MATHEXPR_CALCULATOR;
    CHECK_OK(mathexpr_create_utf8(&options, &calculator));

    REFUSES(mathexpr_create_utf8(NULL, NULL));
    REFUSES(mathexpr_create_utf16(NULL, NULL));
    REFUSES(mathexpr_copy(calculator, NULL));
    CHECK_OK(mathexpr_set_expression_utf8(expression, "4+4", ZT));
    REFUSES(mathexpr_set_expression_utf8(expression, NULL, ZT));
    REFUSES(mathexpr_set_expression_utf8(expression, NULL, 1));
    REFUSES(mathexpr_set_expression_utf16(expression, NULL, ZT));
    REFUSES(mathexpr_evaluate(expression, NULL));
    REFUSES(mathexpr_evaluate_text_utf8(expression, NULL, ZT, &value));
    REFUSES(mathexpr_evaluate_text_utf8(expression, "1", ZT, NULL));
    REFUSES(mathexpr_evaluate_text_utf16(expression, NULL, ZT, &value));
    REFUSES(mathexpr_evaluate_text_utf16(expression, wide("1"), ZT, NULL));
    REFUSES(mathexpr_calculate_utf8(calculator, NULL, ZT, 10, &value));
    REFUSES(mathexpr_calculate_utf8(calculator, "1", ZT, 10, NULL));
    REFUSES(mathexpr_calculate_utf16(calculator, NULL, ZT, 10, &value));
    REFUSES(mathexpr_calculate_utf16(calculator, wide("1"), ZT, 10, NULL));
    REFUSES(mathexpr_set_limits(expression, NULL));
    REFUSES(mathexpr_get_limits(expression, NULL));
    REFUSES(mathexpr_has_failed(expression, NULL));
    REFUSES(mathexpr_get_diagnostic_utf8(expression, NULL));
    REFUSES(mathexpr_get_diagnostic_utf16(expression, NULL));
    REFUSES(mathexpr_get_names_utf8(expression, MATHEXPR_NAMES_USED, NULL));
    REFUSES(mathexpr_get_names_utf16(expression, MATHEXPR_NAMES_USED, NULL));
    REFUSES(mathexpr_get_variable_utf8(expression, NULL, ZT, &value));
    REFUSES(mathexpr_get_variable_utf8(expression, "a", ZT, NULL));
    REFUSES(mathexpr_get_variable_utf16(expression, NULL, ZT, &value));
    REFUSES(mathexpr_get_variable_utf16(expression, wide("a"), ZT, NULL));
    REFUSES(mathexpr_set_variable_utf8(expression, NULL, ZT, &value, NULL));
    REFUSES(mathexpr_set_variable_utf8(expression, "a", ZT, NULL, NULL));
    REFUSES(mathexpr_set_variable_utf16(expression, NULL, ZT, &value, NULL));
    REFUSES(mathexpr_set_variable_utf16(expression, wide("a"), ZT, NULL, NULL));
    REFUSES(mathexpr_remove_variable_utf8(expression, NULL, ZT));
    REFUSES(mathexpr_remove_variable_utf16(expression, NULL, ZT));
    REFUSES(mathexpr_get_variable_address_utf8(expression, NULL, ZT, &address));
    REFUSES(mathexpr_get_variable_address_utf8(expression, "a", ZT, NULL));
    REFUSES(mathexpr_get_variable_address_utf16(expression, NULL, ZT, &address));
    REFUSES(mathexpr_get_variable_address_utf16(expression, wide("a"), ZT, NULL));
    REFUSES(mathexpr_get_vocabulary_item_utf8(0, NULL));
    REFUSES(mathexpr_get_vocabulary_item_utf16(0, NULL));
    REFUSES(mathexpr_evaluate_bulk_utf8(expression, NULL, 0, 0, NULL, 1, NULL));
    REFUSES(mathexpr_evaluate_bulk_utf16(expression, NULL, 0, 0, NULL, 1, NULL));

    CHECK_NUMBER(value.x, 77.0);
    CHECK(address == NULL);
    CHECK_OK(mathexpr_evaluate(expression, &value));
    CHECK_NUMBER(value.x, 8.0);
    CHECK_OK(mathexpr_destroy(calculator));
    CHECK_OK(mathexpr_destroy(expression));
}

/* Evaluations take a shorter path once a program has run. */
void test_null_value_of_a_program_that_has_run(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_value value = number(3);
    int run;

    CHECK_OK(mathexpr_set_variable_utf8(expression, "a", ZT, &value, NULL));
    CHECK_OK(mathexpr_set_expression_utf8(expression, "a*2+1", ZT));
    for (run = 0; run < 3; ++run)
    {
        CHECK_OK(mathexpr_evaluate(expression, &value));
        REFUSES(mathexpr_evaluate(expression, NULL));
    }
    CHECK_NUMBER(value.x, 7.0);
    CHECK_OK(mathexpr_destroy(expression));
}
