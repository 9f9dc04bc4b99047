// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT

/* header_c99.c - the headers alone, as C99, with warnings as errors; included twice. */
#include <mathexpr_editor.h>

#include <mathexpr.h>

#include <mathexpr_editor.h>

mathexpr_status use_header(mathexpr_expression* expression);

mathexpr_status use_header(mathexpr_expression* expression)
{
    mathexpr_value value;
    return mathexpr_evaluate(expression, &value);
}
