// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* bulk_in_c.c - one expression over arrays, which are used in place. */
#include <mathexpr.h>

#include <stdio.h>

enum
{
    row_count = 4
};

static void print_failure(mathexpr_expression* expression, mathexpr_status status)
{
    mathexpr_diagnostic_utf8 diagnostic = {.size = sizeof diagnostic};
    if ((status == MATHEXPR_PARSING_ERROR || status == MATHEXPR_REFUSED) &&
        mathexpr_get_diagnostic_utf8(expression, &diagnostic) == MATHEXPR_OK)
        puts(diagnostic.text);
    else
        puts(mathexpr_status_text(status));
}

static void print_row(double radius, double x, uint32_t row_status)
{
    const mathexpr_value value = {.type = MATHEXPR_NUMBER, .x = x};
    char text[MATHEXPR_VALUE_TEXT_CAPACITY];
    if (row_status == MATHEXPR_ROW_DONE &&
        mathexpr_format_value_utf8(&value, 5, text, sizeof text, NULL) == MATHEXPR_OK)
        printf("r = %g: %s\n", radius, text);
    else
        printf("r = %g: no value, message %u\n", radius, (unsigned)row_status);
}

int main(int argc, char** argv)
{
    const char* const text = argc > 1 ? argv[1] : "ln(r)";
    const double radii[row_count] = {1, 2, -3, 4};
    double values[row_count];
    uint32_t row_status[row_count];

    mathexpr_expression* expression = NULL;
    if (mathexpr_create_utf8(NULL, &expression) != MATHEXPR_OK)
        return 1;

    /* Names must be known when a text is compiled; the values of r come from the column. */
    const mathexpr_value zero = {.type = MATHEXPR_NUMBER};
    const mathexpr_value size = {.type = MATHEXPR_NUMBER, .x = 4};
    mathexpr_status status = mathexpr_set_variable_utf8(expression, "r", MATHEXPR_ZERO_TERMINATED, &zero, NULL);
    if (status == MATHEXPR_OK)
        status = mathexpr_set_variable_utf8(expression, "gr\u00f6\u00dfe", MATHEXPR_ZERO_TERMINATED, &size, NULL);
    if (status == MATHEXPR_OK)
        status = mathexpr_set_expression_utf8(expression, text, MATHEXPR_ZERO_TERMINATED);

    const mathexpr_column_utf8 column = {sizeof column, MATHEXPR_NUMBERS, "r", 1, radii, sizeof(double), 0};
    const mathexpr_results results = {sizeof results, MATHEXPR_NUMBERS, values, sizeof(double), 0, row_status};
    mathexpr_bulk_outcome outcome = {.size = sizeof outcome};
    if (status == MATHEXPR_OK)
        status = mathexpr_evaluate_bulk_utf8(expression, &column, 1, row_count, &results, 1, &outcome);
    if (status == MATHEXPR_OK)
    {
        for (int row = 0; row < row_count; ++row)
            print_row(radii[row], values[row], row_status[row]);
        printf("%u failed\n", (unsigned)outcome.failed_count);
    }
    else
        print_failure(expression, status);
    mathexpr_destroy(expression);
    return status == MATHEXPR_OK ? 0 : 1;
}
