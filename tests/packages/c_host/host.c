// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* host.c - a host in C: computes a point, and reads a diagnostic. */
#include <mathexpr.h>
#include <stdio.h>

int main(void)
{
    mathexpr_expression* expression = NULL;
    mathexpr_value value;
    if (mathexpr_create_utf8(NULL, &expression) != MATHEXPR_OK ||
        mathexpr_set_expression_utf8(expression, "2*(", MATHEXPR_ZERO_TERMINATED) != MATHEXPR_PARSING_ERROR ||
        mathexpr_set_expression_utf8(expression, "[1,2,0]+[3,4,0]", MATHEXPR_ZERO_TERMINATED) != MATHEXPR_OK ||
        mathexpr_evaluate(expression, &value) != MATHEXPR_OK)
    {
        return 1;
    }
    printf("%g %g %g\n", value.x, value.y, value.z);
    return mathexpr_destroy(expression) == MATHEXPR_OK ? 0 : 1;
}
