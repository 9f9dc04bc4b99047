// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* header_c99.c - the header alone, as C99, with warnings as errors; twice, as hosts include it. */
#include <mathexpr.h>

#include <mathexpr.h>

mathexpr_status use_header(mathexpr_expression* expression);

mathexpr_status use_header(mathexpr_expression* expression)
{
    mathexpr_value value;
    return mathexpr_evaluate(expression, &value);
}
