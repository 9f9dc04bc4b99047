// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* evaluation.c - creates, evaluates, copies and destroys expressions and calculators. */
#include "tests/c/check.h"

#include <string.h>

/* Counts messages instead of showing them. */
static void count_message(void* context, uint32_t id, const char* text, size_t length)
{
    CHECK(id >= 1 && id <= 19);
    CHECK_EQUAL(strlen(text), length);
    CHECK(length > 0);
    ++*(int*)context;
}

static mathexpr_expression* calculator(int* message_count)
{
    mathexpr_expression* expression = NULL;
    mathexpr_options_utf8 options = {0};
    options.size = sizeof(options);
    options.kind = MATHEXPR_CALCULATOR;
    options.context = message_count;
    options.show_message = count_message;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    return expression;
}

static int32_t never_asked(void* context, const char* name, size_t length, mathexpr_value* value)
{
    (void)context;
    (void)name;
    (void)length;
    (void)value;
    FAIL("a calculator asks for no names");
    return MATHEXPR_LOOKUP_NOT_KNOWN;
}

void test_creation(void)
{
    mathexpr_expression* expression = NULL;
    mathexpr_options_utf8 options = {0};
    mathexpr_options_utf16 options16 = {0};

    options.size = sizeof(options);
    options16.size = sizeof(options16);
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    CHECK(expression != NULL);
    CHECK_OK(mathexpr_destroy(expression));
    CHECK_OK(mathexpr_create_utf16(&options16, &expression));
    CHECK_OK(mathexpr_destroy(expression));
    CHECK_OK(mathexpr_create_utf16(NULL, &expression));
    CHECK_OK(mathexpr_destroy(expression));
    options16.kind = MATHEXPR_CALCULATOR;
    CHECK_OK(mathexpr_create_utf16(&options16, &expression));
    CHECK_OK(mathexpr_destroy(expression));
    CHECK_OK(mathexpr_destroy(NULL));

    expression = NULL;
    options.kind = 2;
    CHECK_STATUS(mathexpr_create_utf8(&options, &expression), MATHEXPR_BAD_OPTION);
    options.kind = MATHEXPR_EXPRESSION;
    options.flags = 2;
    CHECK_STATUS(mathexpr_create_utf8(&options, &expression), MATHEXPR_BAD_OPTION);
    options.flags = MATHEXPR_SHOW_MESSAGES;
    options.reserved = 1;
    CHECK_STATUS(mathexpr_create_utf8(&options, &expression), MATHEXPR_BAD_OPTION);
    options.reserved = 0;
    options.kind = MATHEXPR_CALCULATOR;
    options.lookup = never_asked;
    CHECK_STATUS(mathexpr_create_utf8(&options, &expression), MATHEXPR_BAD_OPTION);
    CHECK(expression == NULL);
    options.lookup = NULL;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    CHECK_OK(mathexpr_destroy(expression));
}

void test_evaluation(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_value value = number(77);

    CHECK_STATUS(mathexpr_evaluate(expression, &value), MATHEXPR_NO_PROGRAM);
    CHECK_NUMBER(value.x, 77.0);
    CHECK_OK(mathexpr_set_expression_utf8(expression, "[1,2,0]+[3,4,0.5]", ZT));
    CHECK_OK(mathexpr_evaluate(expression, &value));
    CHECK_EQUAL(value.type, MATHEXPR_POINT);
    CHECK_EQUAL(value.flag, 0);
    CHECK_EQUAL(value.reserved, 0);
    CHECK_EQUAL(value.padding, 0);
    CHECK_NUMBER(value.x, 4.0);
    CHECK_NUMBER(value.y, 6.0);
    CHECK_NUMBER(value.z, 0.5);

    CHECK_OK(mathexpr_set_expression_utf8(expression, "2*3+999", 3));
    CHECK_OK(mathexpr_evaluate(expression, &value));
    CHECK_EQUAL(value.type, MATHEXPR_NUMBER);
    CHECK_NUMBER(value.x, 6.0);
    CHECK_OK(mathexpr_set_expression_utf16(expression, wide("sin(30)*2"), ZT));
    CHECK_OK(mathexpr_evaluate(expression, &value));
    CHECK_NUMBER(value.x, 1.0000000000000597);
    CHECK_OK(mathexpr_set_expression_utf16(expression, wide("2*3+999"), 3));
    CHECK_OK(mathexpr_evaluate(expression, &value));
    CHECK_NUMBER(value.x, 6.0);
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "m2cm(2)", ZT, &value));
    CHECK_NUMBER(value.x, 200.0);
    CHECK_EQUAL(value.flag, 1);
    CHECK_OK(mathexpr_evaluate_text_utf16(expression, wide("2^10"), ZT, &value));
    CHECK_NUMBER(value.x, 1024.0);
    CHECK_OK(mathexpr_evaluate(expression, &value));
    CHECK_NUMBER(value.x, 1024.0);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_failed_evaluation(void)
{
    mathexpr_expression* const expression = plain();
    const mathexpr_value zero = number(0);
    const mathexpr_value corner = point(1, 2, 3);
    mathexpr_value value = number(77);

    CHECK_OK(mathexpr_set_variable_utf8(expression, "zero", ZT, &zero, NULL));
    CHECK_OK(mathexpr_set_variable_utf8(expression, "p", ZT, &corner, NULL));

    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1+", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_STATUS(mathexpr_evaluate(expression, &value), MATHEXPR_NO_PROGRAM);
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, NULL, 0), MATHEXPR_PARSING_ERROR);
    CHECK_STATUS(mathexpr_set_expression_utf16(expression, wide("sin(1,2)"), ZT), MATHEXPR_PARSING_ERROR);
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1/0", ZT), MATHEXPR_REFUSED);
    CHECK_STATUS(mathexpr_evaluate(expression, &value), MATHEXPR_NO_PROGRAM);
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "sin([1,2,3])", ZT), MATHEXPR_PARSING_ERROR);

    CHECK_OK(mathexpr_set_expression_utf8(expression, "1/zero", ZT));
    CHECK_STATUS(mathexpr_evaluate(expression, &value), MATHEXPR_REFUSED);
    CHECK_STATUS(mathexpr_evaluate(expression, &value), MATHEXPR_REFUSED);
    CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, "1/zero", ZT, &value), MATHEXPR_REFUSED);
    CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, "1+", ZT, &value), MATHEXPR_PARSING_ERROR);
    CHECK_STATUS(mathexpr_evaluate_text_utf16(expression, wide("sin(p)"), ZT, &value), MATHEXPR_PARSING_ERROR);
    CHECK_NUMBER(value.x, 77.0);
    CHECK_STATUS(mathexpr_calculate_utf8(expression, "1", ZT, 10, &value), MATHEXPR_WRONG_KIND);
    CHECK_STATUS(mathexpr_calculate_utf16(expression, wide("1"), ZT, 10, &value), MATHEXPR_WRONG_KIND);
    CHECK_NUMBER(value.x, 77.0);
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "1+1", ZT, &value));
    CHECK_NUMBER(value.x, 2.0);
    CHECK_OK(mathexpr_destroy(expression));
}

/* Sets w and evaluates, three times. */
static void check_thrice(mathexpr_expression* expression, mathexpr_value w, mathexpr_status status, double expected)
{
    int round;
    CHECK_OK(mathexpr_set_variable_utf8(expression, "w", ZT, &w, NULL));
    for (round = 0; round < 3; ++round)
    {
        mathexpr_value value = number(77);
        CHECK_STATUS(mathexpr_evaluate(expression, &value), status);
        CHECK_NUMBER(value.x, expected);
    }
}

/* The fast path for one value is not used for another value that an item refuses. */
void test_repeated_evaluation(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_diagnostic_utf8 diagnostic = {0};
    const mathexpr_value four = number(4);
    diagnostic.size = sizeof(diagnostic);
    CHECK_OK(mathexpr_set_variable_utf8(expression, "w", ZT, &four, NULL));
    CHECK_OK(mathexpr_set_expression_utf8(expression, "1+sqrt(w)", ZT));
    check_thrice(expression, number(4), MATHEXPR_OK, 3);
    check_thrice(expression, number(-1), MATHEXPR_REFUSED, 77);
    CHECK_OK(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
    CHECK_EQUAL(diagnostic.message, 12);
    CHECK_EQUAL(diagnostic.start, 2);
    check_thrice(expression, number(16), MATHEXPR_OK, 5);
    check_thrice(expression, point(1, 2, 3), MATHEXPR_PARSING_ERROR, 77);
    check_thrice(expression, number(16), MATHEXPR_OK, 5);
    CHECK_OK(mathexpr_set_expression_utf8(expression, "w*2", ZT));
    check_thrice(expression, number(16), MATHEXPR_OK, 32);
    check_thrice(expression, point(1, 2, 3), MATHEXPR_OK, 2);
    CHECK_OK(mathexpr_destroy(expression));
}

/* The same with values written in place: the library is not notified of the change. */
void test_repeated_evaluation_in_place(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_diagnostic_utf8 diagnostic = {0};
    mathexpr_value* w = NULL;
    mathexpr_value value = number(77);
    const mathexpr_value four = number(4);
    diagnostic.size = sizeof(diagnostic);
    CHECK_OK(mathexpr_set_variable_utf8(expression, "w", ZT, &four, NULL));
    CHECK_OK(mathexpr_get_variable_address_utf8(expression, "w", ZT, &w));
    CHECK_OK(mathexpr_set_expression_utf8(expression, "1+sqrt(w)", ZT));
    check_thrice(expression, four, MATHEXPR_OK, 3);
    *w = number(-1);
    CHECK_STATUS(mathexpr_evaluate(expression, &value), MATHEXPR_REFUSED);
    CHECK_NUMBER(value.x, 77.0);
    CHECK_OK(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
    CHECK_EQUAL(diagnostic.message, 12);
    CHECK_EQUAL(diagnostic.start, 2);
    check_thrice(expression, number(16), MATHEXPR_OK, 5);
    *w = point(1, 2, 3);
    CHECK_STATUS(mathexpr_evaluate(expression, &value), MATHEXPR_PARSING_ERROR);
    CHECK_NUMBER(value.x, 77.0);

    CHECK_OK(mathexpr_set_expression_utf8(expression, "w*2", ZT));
    check_thrice(expression, number(16), MATHEXPR_OK, 32);
    *w = point(1, 2, 3);
    CHECK_OK(mathexpr_evaluate(expression, &value));
    CHECK_EQUAL(value.type, MATHEXPR_POINT);
    CHECK_NUMBER(value.z, 6.0);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_assignment(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_value value = number(77);

    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "a=2*3", ZT, &value));
    CHECK_NUMBER(value.x, 6.0);
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "a^2", ZT, &value));
    CHECK_NUMBER(value.x, 36.0);

    CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, "pi=3", ZT, &value), MATHEXPR_DEFINITION_ERROR);
    CHECK_NUMBER(value.x, 36.0);
    CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, "1+1", ZT, &value), MATHEXPR_DEFINITION_ERROR);
    CHECK_OK(mathexpr_drop_assignment(expression));
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "1+1", ZT, &value));
    CHECK_NUMBER(value.x, 2.0);

    CHECK_OK(mathexpr_set_expression_utf8(expression, "b=1", ZT));
    CHECK_OK(mathexpr_drop_assignment(expression));
    CHECK_OK(mathexpr_evaluate(expression, &value));
    CHECK_STATUS(mathexpr_get_variable_utf8(expression, "b", ZT, &value), MATHEXPR_NOT_FOUND);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_calculator(void)
{
    int message_count = 0;
    mathexpr_expression* const expression = calculator(&message_count);
    mathexpr_value value = number(77);

    CHECK_OK(mathexpr_calculate_utf8(expression, "a=2*3", ZT, 100, &value));
    CHECK_NUMBER(value.x, 6.0);
    CHECK_OK(mathexpr_calculate_utf16(expression, wide("a^2"), ZT, 100, &value));
    CHECK_NUMBER(value.x, 36.0);
    CHECK_OK(mathexpr_calculate_utf8(expression, "100.5", ZT, 10, &value));
    CHECK_NUMBER(value.x, 100.5);
    CHECK_EQUAL(message_count, 0);

    CHECK_STATUS(mathexpr_calculate_utf8(expression, "11", ZT, 10, &value), MATHEXPR_REFUSED);
    CHECK_EQUAL(message_count, 1);
    CHECK_STATUS(mathexpr_calculate_utf16(expression, wide("1+"), ZT, 10, &value), MATHEXPR_PARSING_ERROR);
    CHECK_EQUAL(message_count, 2);
    CHECK_STATUS(mathexpr_calculate_utf8(expression, "1/0", ZT, 10, &value), MATHEXPR_REFUSED);
    CHECK_EQUAL(message_count, 3);
    CHECK_STATUS(mathexpr_calculate_utf8(expression, "pi=3", ZT, 10, &value), MATHEXPR_DEFINITION_ERROR);
    CHECK_EQUAL(message_count, 4);
    CHECK_OK(mathexpr_drop_assignment(expression));
    CHECK_NUMBER(value.x, 100.5);

    CHECK_STATUS(mathexpr_calculate_utf8(expression, "1\xFF", ZT, 10, &value), MATHEXPR_BAD_UTF8);
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1", ZT), MATHEXPR_WRONG_KIND);
    CHECK_STATUS(mathexpr_set_expression_utf16(expression, wide("1"), ZT), MATHEXPR_WRONG_KIND);
    CHECK_STATUS(mathexpr_evaluate(expression, &value), MATHEXPR_WRONG_KIND);
    CHECK_STATUS(mathexpr_evaluate_text_utf8(expression, "1", ZT, &value), MATHEXPR_WRONG_KIND);
    CHECK_STATUS(mathexpr_evaluate_text_utf16(expression, wide("1"), ZT, &value), MATHEXPR_WRONG_KIND);
    CHECK_EQUAL(message_count, 4);
    CHECK_OK(mathexpr_calculate_utf8(expression, "a", ZT, 10, &value));
    CHECK_NUMBER(value.x, 6.0);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_copies(void)
{
    int message_count = 0;
    mathexpr_expression* const source = calculator(&message_count);
    mathexpr_expression* const single = plain();
    mathexpr_expression* copy = NULL;
    mathexpr_value value = number(77);
    mathexpr_value* address = NULL;
    int32_t failed = 0;

    CHECK_STATUS(mathexpr_copy(single, &copy), MATHEXPR_WRONG_KIND);
    CHECK(copy == NULL);
    CHECK_OK(mathexpr_destroy(single));

    CHECK_OK(mathexpr_calculate_utf8(source, "a=2", ZT, 100, &value));
    CHECK_OK(mathexpr_copy(source, &copy));
    CHECK(copy != NULL && copy != source);
    CHECK_OK(mathexpr_calculate_utf8(copy, "b=a+1", ZT, 100, &value));
    CHECK_NUMBER(value.x, 3.0);
    CHECK_OK(mathexpr_get_variable_utf8(source, "b", ZT, &value));
    CHECK_NUMBER(value.x, 3.0);
    CHECK_OK(mathexpr_get_variable_address_utf8(source, "a", ZT, &address));

    CHECK_OK(mathexpr_destroy(source));
    address->x = 40;
    CHECK_OK(mathexpr_calculate_utf8(copy, "a+b", ZT, 100, &value));
    CHECK_NUMBER(value.x, 43.0);
    CHECK_STATUS(mathexpr_calculate_utf8(copy, "1+unk", ZT, 100, &value), MATHEXPR_PARSING_ERROR);
    CHECK_EQUAL(message_count, 1);
    CHECK_OK(mathexpr_has_failed(copy, &failed));
    CHECK_EQUAL(failed, 1);
    CHECK_OK(mathexpr_destroy(copy));
}

void test_limits(void)
{
    mathexpr_expression* const expression = plain();
    mathexpr_limits limits = {sizeof(limits), 1, 1, 1};
    mathexpr_diagnostic_utf8 diagnostic = {0};

    CHECK_OK(mathexpr_get_limits(expression, &limits));
    CHECK_EQUAL(limits.max_text_length, 0);
    CHECK_EQUAL(limits.max_records, 0);
    CHECK_EQUAL(limits.max_nesting, 0);
    limits.max_text_length = 12;
    limits.max_records = 5;
    limits.max_nesting = 2;
    CHECK_OK(mathexpr_set_limits(expression, &limits));
    limits.max_text_length = limits.max_records = limits.max_nesting = 0;
    CHECK_OK(mathexpr_get_limits(expression, &limits));
    CHECK_EQUAL(limits.max_text_length, 12);
    CHECK_EQUAL(limits.max_records, 5);
    CHECK_EQUAL(limits.max_nesting, 2);

    diagnostic.size = sizeof(diagnostic);
    CHECK_OK(mathexpr_set_expression_utf8(expression, "1+2+3", ZT));
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1+2+3+4", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_OK(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
    CHECK_EQUAL(diagnostic.code, MATHEXPR_PARSING_TOO_MANY_RECORDS);
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "(((1)))", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_OK(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
    CHECK_EQUAL(diagnostic.code, MATHEXPR_PARSING_NESTED_TOO_DEEP);
    /* The limit counts characters, not bytes: twelve characters of two bytes each are accepted. */
    CHECK_STATUS(mathexpr_set_expression_utf8(expression,
                                              "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4"
                                              "\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4\xC3\xA4",
                                              ZT),
                 MATHEXPR_PARSING_ERROR);
    CHECK_OK(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
    CHECK_EQUAL(diagnostic.code, MATHEXPR_PARSING_UNKNOWN_NAME);
    CHECK_STATUS(mathexpr_set_expression_utf8(expression, "1           +", ZT), MATHEXPR_PARSING_ERROR);
    CHECK_OK(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
    CHECK_EQUAL(diagnostic.code, MATHEXPR_PARSING_TEXT_TOO_LONG);
    CHECK_OK(mathexpr_destroy(expression));
}
