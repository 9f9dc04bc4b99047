// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* bulk.c - one expression over arrays. */
#include "tests/c/check.h"

#include <string.h>

enum
{
    NB_ROWS = 1000
};

static mathexpr_column_utf8 column(const char* name, uint32_t kind, const double* data, size_t stride)
{
    mathexpr_column_utf8 made = {0};
    made.size = sizeof(made);
    made.kind = kind;
    made.name = name;
    made.name_length = ZT;
    made.data = data;
    made.stride = (ptrdiff_t)stride;
    made.coordinate_stride = sizeof(double);
    return made;
}

static mathexpr_results results_in(void* data, uint32_t kind, size_t stride)
{
    mathexpr_results made = {0};
    made.size = sizeof(made);
    made.kind = kind;
    made.data = data;
    made.stride = (ptrdiff_t)stride;
    made.coordinate_stride = sizeof(double);
    return made;
}

void test_bulk(void)
{
    static double xs[NB_ROWS];
    static double found[NB_ROWS];
    static uint32_t status[NB_ROWS];
    mathexpr_expression* const expression = plain();
    mathexpr_column_utf8 columns[2];
    mathexpr_column_utf16 wider = {0};
    mathexpr_results results = results_in(found, MATHEXPR_NUMBERS, sizeof(double));
    mathexpr_bulk_outcome outcome = {sizeof(outcome), 77, 77, 77, 77, 77, 77};
    const mathexpr_value one = number(1);
    const double step = 0.25;
    uint32_t thread_count = 0;
    int row = 0;

    for (row = 0; row < NB_ROWS; ++row)
    {
        xs[row] = row;
        status[row] = 77;
    }
    results.row_status = status;
    CHECK_OK(mathexpr_set_variable_utf8(expression, "\xC3\xA4", ZT, &one, NULL));
    CHECK_OK(mathexpr_set_variable_utf8(expression, "step", ZT, &one, NULL));
    CHECK_OK(mathexpr_set_variable_utf8(expression, "k", ZT, &one, NULL));
    CHECK_OK(mathexpr_set_expression_utf8(expression, "\xC3\xA4*step+k", ZT));
    columns[0] = column("\xC3\xA4", MATHEXPR_NUMBERS, xs, sizeof(double));
    columns[1] = column("STEP+++", MATHEXPR_NUMBERS, &step, 0);
    columns[1].name_length = 4;
    for (thread_count = 0; thread_count <= 2; ++thread_count)
    {
        memset(found, 0, sizeof(found));
        CHECK_OK(mathexpr_evaluate_bulk_utf8(expression, columns, 2, NB_ROWS, &results, thread_count, &outcome));
        CHECK_EQUAL(outcome.error, MATHEXPR_BULK_NONE);
        CHECK_EQUAL(outcome.failed_count, 0);
        CHECK_EQUAL(outcome.reserved, 0);
        for (row = 0; row < NB_ROWS; ++row)
        {
            CHECK_NUMBER(found[row], row * 0.25 + 1);
            CHECK_EQUAL(status[row], MATHEXPR_ROW_DONE);
        }
    }
    /* In reverse order, from one array into the other. */
    wider.size = sizeof(wider);
    wider.name = wide("step");
    wider.name_length = ZT;
    wider.data = xs + NB_ROWS - 1;
    wider.stride = -(ptrdiff_t)sizeof(double);
    CHECK_OK(mathexpr_evaluate_bulk_utf16(expression, &wider, 1, NB_ROWS, &results, 1, NULL));
    CHECK_NUMBER(found[0], NB_ROWS);
    CHECK_NUMBER(found[NB_ROWS - 1], 1.0);
    /* Without columns, every row has the value of a single evaluation. */
    CHECK_OK(mathexpr_evaluate_bulk_utf8(expression, NULL, 0, 2, &results, 1, &outcome));
    CHECK_NUMBER(found[1], 2.0);
    CHECK_NUMBER(found[2], NB_ROWS - 2);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_bulk_points(void)
{
    const double points[] = {1, 2, 3, 4, 5, 6};
    double found[6] = {0};
    mathexpr_value records[2];
    mathexpr_expression* const expression = plain();
    mathexpr_column_utf8 corner = column("p", MATHEXPR_POINTS, points, 3 * sizeof(double));
    mathexpr_results results = results_in(found, MATHEXPR_POINTS, sizeof(double));
    const mathexpr_value origin = point(0, 0, 0);

    memset(records, 0xEE, sizeof(records));
    CHECK_OK(mathexpr_set_variable_utf8(expression, "p", ZT, &origin, NULL));
    CHECK_OK(mathexpr_set_expression_utf8(expression, "p*2", ZT));
    results.coordinate_stride = 2 * sizeof(double);
    CHECK_OK(mathexpr_evaluate_bulk_utf8(expression, &corner, 1, 2, &results, 1, NULL));
    CHECK_NUMBER(found[0], 2.0);
    CHECK_NUMBER(found[1], 8.0);
    CHECK_NUMBER(found[2], 4.0);
    CHECK_NUMBER(found[3], 10.0);
    CHECK_NUMBER(found[4], 6.0);
    CHECK_NUMBER(found[5], 12.0);

    results = results_in(records, MATHEXPR_RECORDS, sizeof(mathexpr_value));
    CHECK_OK(mathexpr_evaluate_bulk_utf8(expression, &corner, 1, 2, &results, 1, NULL));
    CHECK_EQUAL(records[1].type, MATHEXPR_POINT);
    CHECK_NUMBER(records[1].x, 8.0);
    CHECK_NUMBER(records[1].z, 12.0);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_bulk_failed_rows(void)
{
    const double xs[] = {1, 0, 4, 0};
    double found[4] = {7, 7, 7, 7};
    uint32_t status[4] = {77, 77, 77, 77};
    mathexpr_expression* const expression = plain();
    mathexpr_column_utf8 x = column("x", MATHEXPR_NUMBERS, xs, sizeof(double));
    mathexpr_results results = results_in(found, MATHEXPR_NUMBERS, sizeof(double));
    mathexpr_bulk_outcome outcome = {sizeof(outcome), 77, 77, 77, 77, 77, 77};
    const mathexpr_value one = number(1);

    results.row_status = status;
    CHECK_OK(mathexpr_set_variable_utf8(expression, "x", ZT, &one, NULL));
    CHECK_OK(mathexpr_set_expression_utf8(expression, "1/x", ZT));
    CHECK_OK(mathexpr_evaluate_bulk_utf8(expression, &x, 1, 4, &results, 1, &outcome));
    CHECK_EQUAL(outcome.error, MATHEXPR_BULK_NONE);
    CHECK_EQUAL(outcome.failed_count, 2);
    CHECK_EQUAL(outcome.first_failed, 1);
    CHECK_EQUAL(outcome.first_status, 10);
    CHECK_NUMBER(found[0], 1.0);
    CHECK(found[1] != found[1]);
    CHECK_NUMBER(found[2], 0.25);
    CHECK(found[3] != found[3]);
    CHECK_EQUAL(status[0], MATHEXPR_ROW_DONE);
    CHECK_EQUAL(status[1], 10);
    CHECK_EQUAL(status[2], MATHEXPR_ROW_DONE);
    CHECK_EQUAL(status[3], 10);

    CHECK_OK(mathexpr_set_expression_utf8(expression, "[x,0,0]", ZT));
    CHECK_OK(mathexpr_evaluate_bulk_utf8(expression, &x, 1, 4, &results, 1, &outcome));
    CHECK_EQUAL(outcome.failed_count, 4);
    CHECK_EQUAL(outcome.first_status, MATHEXPR_ROW_OTHER_KIND);
    CHECK_OK(mathexpr_destroy(expression));
}

void test_bulk_refused(void)
{
    const double xs[] = {1, 2, 3};
    double found[4] = {7, 7, 7, 7};
    mathexpr_expression* const expression = plain();
    mathexpr_column_utf8 columns[2];
    mathexpr_column_utf8 good;
    mathexpr_results results = results_in(found, MATHEXPR_NUMBERS, sizeof(double));
    mathexpr_bulk_outcome outcome = {sizeof(outcome), 77, 77, 77, 77, 77, 77};
    const mathexpr_value one = number(1);

#define REFUSED(columns, column_count, reason, at)                                                                     \
    do                                                                                                                 \
    {                                                                                                                  \
        outcome.error = outcome.first_status = 77;                                                                     \
        CHECK_STATUS(mathexpr_evaluate_bulk_utf8(expression, columns, column_count, 2, &results, 1, &outcome),         \
                     MATHEXPR_BULK_REFUSED);                                                                           \
        CHECK_EQUAL(outcome.error, reason);                                                                            \
        CHECK_EQUAL(outcome.column, at);                                                                               \
        CHECK_EQUAL(outcome.failed_count, 0);                                                                          \
    } while (0)

    CHECK_OK(mathexpr_set_variable_utf8(expression, "x", ZT, &one, NULL));
    CHECK_OK(mathexpr_set_variable_utf8(expression, "y", ZT, &one, NULL));
    good = column("x", MATHEXPR_NUMBERS, xs, sizeof(double));
    columns[0] = good;
    columns[1] = column("y", MATHEXPR_NUMBERS, xs, sizeof(double));

    CHECK_STATUS(mathexpr_evaluate_bulk_utf8(expression, columns, 2, 2, &results, 1, &outcome), MATHEXPR_NO_PROGRAM);
    CHECK_EQUAL(outcome.error, MATHEXPR_BULK_NO_PROGRAM);
    CHECK_OK(mathexpr_set_expression_utf8(expression, "x+y", ZT));
    REFUSED(NULL, 1, MATHEXPR_BULK_COLUMNS_MISSING, 0);
    columns[1].name = NULL;
    REFUSED(columns, 2, MATHEXPR_BULK_COLUMN_NAME, 1);
    columns[1].name = "";
    REFUSED(columns, 2, MATHEXPR_BULK_COLUMN_NAME, 1);
    columns[1].name = "y\xFF";
    REFUSED(columns, 2, MATHEXPR_BULK_COLUMN_NAME, 1);
    columns[1].name = "y\0z";
    columns[1].name_length = 3;
    REFUSED(columns, 2, MATHEXPR_BULK_COLUMN_NAME, 1);
    columns[1] = column("X", MATHEXPR_NUMBERS, xs, sizeof(double));
    REFUSED(columns, 2, MATHEXPR_BULK_COLUMN_TWICE, 1);
    columns[1] = column("y", MATHEXPR_RECORDS, xs, sizeof(double));
    REFUSED(columns, 2, MATHEXPR_BULK_COLUMN_KIND, 1);
    columns[1] = column("y", MATHEXPR_NUMBERS, NULL, sizeof(double));
    REFUSED(columns, 2, MATHEXPR_BULK_COLUMN_DATA, 1);
    columns[1] = column("y", MATHEXPR_NUMBERS, xs, 4);
    REFUSED(columns, 2, MATHEXPR_BULK_COLUMN_ALIGNMENT, 1);
    columns[1] = good;
    columns[1].name = "z"; /* read by nothing */
    results.kind = 3;
    REFUSED(columns, 2, MATHEXPR_BULK_RESULTS_KIND, 0);
    results.kind = MATHEXPR_NUMBERS;
    results.data = NULL;
    REFUSED(columns, 2, MATHEXPR_BULK_RESULTS_DATA, 0);
    results.data = found;
    results.stride = 12;
    REFUSED(columns, 2, MATHEXPR_BULK_RESULTS_ALIGNMENT, 0);
    results.stride = 0;
    REFUSED(columns, 2, MATHEXPR_BULK_RESULTS_OVERLAP, 0);
    results.stride = sizeof(double);
    CHECK_NUMBER(found[0], 7.0);
    CHECK_NUMBER(found[1], 7.0);

    CHECK_OK(mathexpr_evaluate_bulk_utf8(expression, columns, 2, 3, &results, 1, &outcome));
    CHECK_NUMBER(found[2], 4.0);
    CHECK_NUMBER(found[3], 7.0);
    results.data = NULL;
    columns[0].data = NULL;
    CHECK_OK(mathexpr_evaluate_bulk_utf8(expression, columns, 2, 0, &results, 1, &outcome));
    CHECK_OK(mathexpr_destroy(expression));
}

void test_bulk_leaves_the_expression(void)
{
    const double xs[] = {1, 0};
    double found[2] = {7, 7};
    mathexpr_expression* expression = NULL;
    mathexpr_options_utf8 options = {0};
    mathexpr_column_utf8 x = column("x", MATHEXPR_NUMBERS, xs, sizeof(double));
    mathexpr_results results = results_in(found, MATHEXPR_NUMBERS, sizeof(double));
    mathexpr_value value = number(5);
    int32_t failed = 1;

    options.size = sizeof(options);
    options.kind = MATHEXPR_CALCULATOR;
    CHECK_OK(mathexpr_create_utf8(&options, &expression));
    CHECK_OK(mathexpr_set_variable_utf8(expression, "x", ZT, &value, NULL));
    CHECK_OK(mathexpr_calculate_utf8(expression, "1/x", ZT, 10, &value));
    CHECK_OK(mathexpr_evaluate_bulk_utf8(expression, &x, 1, 2, &results, 1, NULL));
    CHECK_NUMBER(found[0], 1.0);
    CHECK(found[1] != found[1]);
    CHECK_OK(mathexpr_get_variable_utf8(expression, "x", ZT, &value));
    CHECK_NUMBER(value.x, 5.0);
    CHECK_OK(mathexpr_has_failed(expression, &failed));
    CHECK_EQUAL(failed, 0);
    CHECK_OK(mathexpr_destroy(expression));
}
