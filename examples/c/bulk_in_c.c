/* bulk_in_c.c - one expression over arrays, read and written where they are. */
#include <mathexpr.h>

#include <stdio.h>

int main(void)
{
    enum
    {
        nb_rows = 4
    };
    const double radii[nb_rows] = {1, 2, -3, 4};
    double logarithms[nb_rows];
    uint32_t row_status[nb_rows];

    mathexpr_expression* expression = NULL;
    if (mathexpr_create_utf8(NULL, &expression) != MATHEXPR_OK)
        return 1;

    /* A name has to be known when a text is compiled; its values come from the column. */
    const mathexpr_value zero = {.type = MATHEXPR_NUMBER};
    mathexpr_status status = mathexpr_set_variable_utf8(expression, "r", 1, &zero, NULL);
    if (status == MATHEXPR_OK)
        status = mathexpr_set_expression_utf8(expression, "ln(r)", MATHEXPR_ZERO_TERMINATED);

    const mathexpr_column_utf8 column = {sizeof column, MATHEXPR_NUMBERS, "r", 1, radii, sizeof(double), 0};
    const mathexpr_results results = {sizeof results, MATHEXPR_NUMBERS, logarithms, sizeof(double), 0, row_status};
    mathexpr_bulk_outcome outcome = {.size = sizeof outcome};
    if (status == MATHEXPR_OK)
        status = mathexpr_evaluate_bulk_utf8(expression, &column, 1, nb_rows, &results, 1, &outcome);
    if (status == MATHEXPR_OK)
    {
        for (int row = 0; row < nb_rows; ++row)
        {
            if (row_status[row] == MATHEXPR_ROW_DONE)
                printf("ln(%g) = %.4f\n", radii[row], logarithms[row]);
            else
                printf("ln(%g) has no value, message %u\n", radii[row], (unsigned)row_status[row]);
        }
        printf("%u failed\n", (unsigned)outcome.nb_failed);
    }
    mathexpr_destroy(expression);
    return status == MATHEXPR_OK ? 0 : 1;
}
