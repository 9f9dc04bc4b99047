// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* function.c - texts as functions of numbers, by position. */
#include "tests/c/check.h"

static void set(mathexpr_expression* expression, const char* name, double x)
{
    const mathexpr_value value = number(x);
    CHECK_OK(mathexpr_set_variable_utf8(expression, name, ZT, &value, NULL));
}

/* An expression with the variables a and b. */
static mathexpr_expression* with_variables(void)
{
    mathexpr_expression* const expression = plain();
    set(expression, "a", 10);
    set(expression, "b", 20);
    return expression;
}

static const char* const a_b[] = {"a", "b"};

static mathexpr_function* made(mathexpr_expression* expression, const char* text)
{
    mathexpr_function* function = NULL;
    CHECK_OK(mathexpr_create_function_utf8(expression, text, ZT, a_b, 2, &function));
    return function;
}

static void check_call(mathexpr_function* function, double a, double b, double expected)
{
    double arguments[2];
    double result = 77;
    arguments[0] = a;
    arguments[1] = b;
    CHECK_OK(mathexpr_call_function(function, arguments, &result));
    CHECK_NUMBER(result, expected);
}

void test_function(void)
{
    mathexpr_expression* const expression = with_variables();
    mathexpr_function* function = NULL;
    mathexpr_function* constant = NULL;
    mathexpr_value value = number(0);
    double result = 0;
    set(expression, "k", 3);
    function = made(expression, "a-2*b+k");
    CHECK_OK(mathexpr_create_function_utf8(expression, "2*3", ZT, NULL, 0, &constant));
    check_call(function, 1, 2, 0);
    check_call(function, -1, 0.5, 1);

    /* The function is independent of the expression: it keeps the previous value of k. */
    set(expression, "k", 4);
    set(expression, "a", 5);
    check_call(function, 1, 2, 0);
    CHECK_OK(mathexpr_evaluate(expression, &value));
    CHECK_NUMBER(value.x, 6);
    CHECK_OK(mathexpr_destroy(expression));
    check_call(function, 1, 2, 0);
    CHECK_OK(mathexpr_call_function(constant, NULL, &result));
    CHECK_NUMBER(result, 6);
    CHECK_OK(mathexpr_destroy_function(constant));
    CHECK_OK(mathexpr_destroy_function(function));
    CHECK_OK(mathexpr_destroy_function(NULL));
}

/* Arguments are numbers, whatever the variables of the expression are. */
void test_function_of_a_point_variable(void)
{
    const mathexpr_value corner = point(1, 2, 3);
    mathexpr_expression* const expression = with_variables();
    mathexpr_function* product = NULL;

    CHECK_OK(mathexpr_set_variable_utf8(expression, "a", ZT, &corner, NULL));
    CHECK_OK(mathexpr_create_function_utf8(expression, "a*b", ZT, a_b, 2, &product));
    if (product != NULL)
    {
        check_call(product, 3, 4, 12);
    }
    CHECK_OK(mathexpr_destroy_function(product));
    CHECK_OK(mathexpr_destroy(expression));
}

void test_function_calls_are_fresh(void)
{
    mathexpr_expression* const expression = with_variables();
    mathexpr_function* const grows = made(expression, "[a,1]*[b,1]");
    mathexpr_function* const assigns = made(expression, "c=a*b");
    mathexpr_function* const unused = made(expression, "b");
    mathexpr_function* const last = made(expression, "(a+1,b*2)");
    mathexpr_function* const settled = made(expression, "(a/b,7)");
    mathexpr_value value = number(0);
    /* A dot product is added to the content of its slot. */
    check_call(grows, 2, 3, 7);
    check_call(grows, 2, 3, 7);
    check_call(assigns, 2, 3, 6);
    check_call(unused, 2, 3, 3);
    check_call(last, 2, 3, 6);
    check_call(settled, 2, 0, 7);
    CHECK_OK(mathexpr_evaluate_text_utf8(expression, "b+1", ZT, &value));
    CHECK_STATUS(mathexpr_get_variable_utf8(expression, "c", ZT, &value), MATHEXPR_NOT_FOUND);
    CHECK_OK(mathexpr_destroy_function(grows));
    CHECK_OK(mathexpr_destroy_function(assigns));
    CHECK_OK(mathexpr_destroy_function(unused));
    CHECK_OK(mathexpr_destroy_function(last));
    CHECK_OK(mathexpr_destroy_function(settled));
    CHECK_OK(mathexpr_destroy(expression));
}

static void check_no_value(mathexpr_expression* expression, const char* text, double a, mathexpr_status status)
{
    mathexpr_function* const function = made(expression, text);
    double arguments[2] = {0, 1};
    double result = 77;
    arguments[0] = a;
    CHECK_STATUS(mathexpr_call_function(function, arguments, &result), status);
    CHECK_NUMBER(result, 77);
    CHECK_OK(mathexpr_destroy_function(function));
}

void test_function_refuses(void)
{
    static const char* const twice[] = {"a", "b", "A"};
    static const char* const unknown[] = {"a", "x"};
    static const char* const ill_formed[] = {"a", "b\xFF"};
    static const char* const missing[] = {"a", NULL};
    mathexpr_expression* const expression = with_variables();
    mathexpr_expression* calculator = NULL;
    mathexpr_options_utf8 options = {0};
    mathexpr_diagnostic_utf8 diagnostic = {0};
    mathexpr_function* function = NULL;
    double result = 77;
    options.size = sizeof(options);
    options.kind = MATHEXPR_CALCULATOR;
    diagnostic.size = sizeof(diagnostic);
    CHECK_OK(mathexpr_create_utf8(&options, &calculator));

    CHECK_STATUS(mathexpr_create_function_utf8(expression, "a", ZT, twice, 3, &function), MATHEXPR_BAD_OPTION);
    CHECK_STATUS(mathexpr_create_function_utf8(expression, "a", ZT, unknown, 2, &function), MATHEXPR_NOT_FOUND);
    CHECK_STATUS(mathexpr_create_function_utf8(expression, "a", ZT, ill_formed, 2, &function), MATHEXPR_BAD_UTF8);
    CHECK_STATUS(mathexpr_create_function_utf8(expression, "a", ZT, missing, 2, &function), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_create_function_utf8(expression, "a\xFF", ZT, a_b, 2, &function), MATHEXPR_BAD_UTF8);
    CHECK_STATUS(mathexpr_create_function_utf8(calculator, "1", ZT, NULL, 0, &function), MATHEXPR_WRONG_KIND);
    CHECK_STATUS(mathexpr_create_function_utf8(expression, "[a,b]", ZT, a_b, 2, &function), MATHEXPR_OTHER_KIND);
    CHECK_STATUS(mathexpr_create_function_utf8(expression, "[a,b]/a", ZT, a_b, 2, &function), MATHEXPR_OTHER_KIND);
    CHECK_STATUS(mathexpr_create_function_utf8(expression, "1/0", ZT, a_b, 2, &function), MATHEXPR_REFUSED);
    CHECK_STATUS(mathexpr_create_function_utf8(expression, "2*(a", ZT, a_b, 2, &function), MATHEXPR_PARSING_ERROR);
    CHECK(function == NULL);
    CHECK_OK(mathexpr_get_diagnostic_utf8(expression, &diagnostic));
    CHECK_EQUAL(diagnostic.message, 2);
    CHECK_EQUAL(diagnostic.start, 2);

    check_no_value(expression, "ln(a)", -1, MATHEXPR_REFUSED);
    check_no_value(expression, "sin([a,b])", 1, MATHEXPR_REFUSED);
    check_no_value(expression, "(a+1,sqrt(b-1))", 1, MATHEXPR_REFUSED);
    /* A refused call does not affect later ones. */
    function = made(expression, "[b,0]*[b,0]/a");
    {
        const double zero[2] = {0, 4};
        CHECK_STATUS(mathexpr_call_function(function, zero, &result), MATHEXPR_REFUSED);
    }
    check_call(function, 2, 4, 8);
    CHECK_OK(mathexpr_destroy_function(function));
    CHECK_OK(mathexpr_destroy(calculator));
    CHECK_OK(mathexpr_destroy(expression));
}

void test_function_utf16(void)
{
    mathexpr_expression* const expression = with_variables();
    const mathexpr_char16* arguments[2];
    mathexpr_function* function = NULL;
    arguments[0] = wide("b");
    arguments[1] = wide("a");
    CHECK_OK(mathexpr_create_function_utf16(expression, wide("a/b"), ZT, arguments, 2, &function));
    check_call(function, 4, 1, 0.25);
    CHECK_OK(mathexpr_destroy_function(function));
    CHECK_OK(mathexpr_destroy(expression));
}

void test_function_copies(void)
{
    mathexpr_expression* const expression = with_variables();
    mathexpr_function* const function = made(expression, "a^b");
    mathexpr_function* copy = NULL;
    CHECK_OK(mathexpr_copy_function(function, &copy));
    check_call(function, 2, 3, 8);
    CHECK_OK(mathexpr_destroy_function(function));
    check_call(copy, 3, 2, 9);
    CHECK_OK(mathexpr_destroy_function(copy));
    CHECK_OK(mathexpr_destroy(expression));
}

void test_function_null(void)
{
    mathexpr_expression* const expression = with_variables();
    mathexpr_function* const function = made(expression, "a+b");
    mathexpr_function* other = NULL;
    const double arguments[2] = {1, 2};
    double result = 77;
    CHECK_STATUS(mathexpr_create_function_utf8(NULL, "a", ZT, a_b, 2, &other), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_create_function_utf16(NULL, wide("1"), ZT, NULL, 0, &other), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_create_function_utf8(expression, NULL, ZT, a_b, 2, &other), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_create_function_utf8(expression, "a", ZT, NULL, 2, &other), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_create_function_utf8(expression, "a", ZT, a_b, 2, NULL), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_copy_function(NULL, &other), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_copy_function(function, NULL), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_call_function(NULL, arguments, &result), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_call_function(function, NULL, &result), MATHEXPR_NULL_ARGUMENT);
    CHECK_STATUS(mathexpr_call_function(function, arguments, NULL), MATHEXPR_NULL_ARGUMENT);
    CHECK(other == NULL);
    CHECK_NUMBER(result, 77);
    CHECK_OK(mathexpr_destroy_function(function));
    CHECK_OK(mathexpr_destroy(expression));
}

void test_function_stale(void)
{
    mathexpr_expression* const expression = with_variables();
    mathexpr_function* const function = made(expression, "a+b");
    mathexpr_function* copy = NULL;
    const double arguments[2] = {1, 2};
    double result = 77;
    CHECK_OK(mathexpr_destroy_function(function));
    CHECK_OK(mathexpr_destroy(expression));
    if (!mathexpr_checks_handles())
    {
        skip("this library does not check handles");
    }
    CHECK_STATUS(mathexpr_create_function_utf8(expression, "a", ZT, a_b, 2, &copy), MATHEXPR_STALE_HANDLE);
    CHECK_STATUS(mathexpr_copy_function(function, &copy), MATHEXPR_STALE_HANDLE);
    CHECK_STATUS(mathexpr_call_function(function, arguments, &result), MATHEXPR_STALE_HANDLE);
    CHECK_STATUS(mathexpr_destroy_function(function), MATHEXPR_STALE_HANDLE);
    CHECK_NUMBER(result, 77);
}
