// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// header_cxx17.cpp - the headers alone, as C++17, with warnings as errors; nothing in them may throw.
#include <mathexpr.h>
#include <mathexpr_editor.h>

static_assert(noexcept(mathexpr_evaluate(nullptr, nullptr)), "nothing is thrown across the C interface");
static_assert(noexcept(mathexpr_get_tokens_utf8(nullptr, nullptr, 0, nullptr)), "nor by the editor services");
static_assert(sizeof(mathexpr_char16) == 2, "a unit of UTF-16");

mathexpr_status useHeader(mathexpr_expression* expression);

mathexpr_status useHeader(mathexpr_expression* expression)
{
    return mathexpr_set_expression_utf16(expression, u"1+2", MATHEXPR_ZERO_TERMINATED);
}
