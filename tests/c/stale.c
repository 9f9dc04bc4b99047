// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* stale.c - destroyed and invalid handles, in builds that detect them. */
#include "tests/c/check.h"

#define REFUSES(call) CHECK_STATUS(call, MATHEXPR_STALE_HANDLE)

void test_checks_handles(void)
{
    CHECK_EQUAL(mathexpr_checks_handles(), EXPECTED_CHECKS_HANDLES);
}

static void need_checks(void)
{
    if (!mathexpr_checks_handles())
    {
        skip("this library does not check handles");
    }
}

/* Every function that takes a handle. */
static void check_stale(mathexpr_expression* stale)
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
    REFUSES(mathexpr_destroy(stale));
    REFUSES(mathexpr_copy(stale, &copy));
    REFUSES(mathexpr_set_expression_utf8(stale, "1", ZT));
    REFUSES(mathexpr_set_expression_utf16(stale, wide("1"), ZT));
    REFUSES(mathexpr_evaluate(stale, &value));
    REFUSES(mathexpr_evaluate_text_utf8(stale, "1", ZT, &value));
    REFUSES(mathexpr_evaluate_text_utf16(stale, wide("1"), ZT, &value));
    REFUSES(mathexpr_calculate_utf8(stale, "1", ZT, 10, &value));
    REFUSES(mathexpr_calculate_utf16(stale, wide("1"), ZT, 10, &value));
    REFUSES(mathexpr_drop_assignment(stale));
    REFUSES(mathexpr_set_limits(stale, &limits));
    REFUSES(mathexpr_get_limits(stale, &limits));
    REFUSES(mathexpr_has_failed(stale, &failed));
    REFUSES(mathexpr_get_diagnostic_utf8(stale, &diagnostic));
    REFUSES(mathexpr_get_diagnostic_utf16(stale, &diagnostic16));
    REFUSES(mathexpr_get_names_utf8(stale, MATHEXPR_NAMES_USED, &names));
    REFUSES(mathexpr_get_names_utf16(stale, MATHEXPR_NAMES_USED, &names16));
    REFUSES(mathexpr_get_variable_utf8(stale, "a", ZT, &value));
    REFUSES(mathexpr_get_variable_utf16(stale, wide("a"), ZT, &value));
    REFUSES(mathexpr_set_variable_utf8(stale, "a", ZT, &value, NULL));
    REFUSES(mathexpr_set_variable_utf16(stale, wide("a"), ZT, &value, NULL));
    REFUSES(mathexpr_remove_variable_utf8(stale, "a", ZT));
    REFUSES(mathexpr_remove_variable_utf16(stale, wide("a"), ZT));
    REFUSES(mathexpr_get_variable_address_utf8(stale, "a", ZT, &address));
    REFUSES(mathexpr_get_variable_address_utf16(stale, wide("a"), ZT, &address));
    REFUSES(mathexpr_evaluate_bulk_utf8(stale, NULL, 0, 0, &results, 1, NULL));
    REFUSES(mathexpr_evaluate_bulk_utf16(stale, NULL, 0, 0, &results, 1, NULL));
    CHECK_NUMBER(value.x, 77.0);
    CHECK(address == NULL && copy == NULL);
    CHECK_EQUAL(names.name_count, 77);
    CHECK_EQUAL(failed, 77);
}

void test_stale_handles(void)
{
    mathexpr_expression* expression = NULL;
    mathexpr_value never_made = number(1);

    need_checks();
    expression = plain();
    CHECK_OK(mathexpr_destroy(expression));
    check_stale(expression);
    check_stale((mathexpr_expression*)(void*)&never_made);
}

/* Nearly as many destroyed handles as the registry keeps. */
#define KEPT_HANDLES 250

void test_stale_handles_stay_stale(void)
{
    mathexpr_expression* destroyed[KEPT_HANDLES];
    mathexpr_expression* others[KEPT_HANDLES];
    mathexpr_value value = number(77);
    int index = 0;

    need_checks();
    for (index = 0; index < KEPT_HANDLES; ++index)
    {
        destroyed[index] = plain();
        CHECK_OK(mathexpr_destroy(destroyed[index]));
    }
    for (index = 0; index < KEPT_HANDLES; ++index)
    {
        others[index] = plain();
    }
    for (index = 0; index < KEPT_HANDLES; ++index)
    {
        REFUSES(mathexpr_evaluate(destroyed[index], &value));
        CHECK_OK(mathexpr_evaluate_text_utf8(others[index], "1", ZT, &value));
    }
    for (index = 0; index < KEPT_HANDLES; ++index)
    {
        CHECK_OK(mathexpr_destroy(others[index]));
    }
    /* More than the registry keeps before it frees them. */
    for (index = 0; index < 1000; ++index)
    {
        CHECK_OK(mathexpr_destroy(plain()));
    }
}
