// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// msvc_host.c - a host for Microsoft's ABI, built by another compiler without a run-time library and linked with the
// package's mathexpr.lib. test_package.sh builds and runs it.
//
// The exit status is 0, or the number of the first failed step.

#include <mathexpr.h>

__declspec(dllimport) void __stdcall ExitProcess(unsigned status);

/// A symbol that this compiler's run-time library provides for floating point.
int _fltused = 0;

static int32_t lookUp(void* context, const mathexpr_char16* name, size_t length, mathexpr_value* value)
{
    const mathexpr_value point = {MATHEXPR_POINT, 0, 0, 0, 1, 2, 3};
    if (length != 2 || name[0] != 0xD835 || name[1] != 0xDC65)
    {
        return MATHEXPR_LOOKUP_NOT_KNOWN;
    }
    ++*(int*)context;
    *value = point;
    return MATHEXPR_LOOKUP_FOUND;
}

static unsigned firstWrongStep(void)
{
    static const mathexpr_char16 text[] = {0xD835, 0xDC65, '*', 'a', 0};
    int nbAsked = 0;
    mathexpr_options_utf16 options = {sizeof(options), MATHEXPR_EXPRESSION, 0, 0, 0, lookUp, 0, 0};
    mathexpr_expression* expression = 0;
    mathexpr_diagnostic_utf8 diagnostic;
    mathexpr_value value = {MATHEXPR_NUMBER, 0, 0, 0, 2.5, 0, 0};
    options.context = &nbAsked;
    diagnostic.size = sizeof(diagnostic);
    if (mathexpr_abi_version() != MATHEXPR_ABI_VERSION)
    {
        return 1;
    }
    if (mathexpr_create_utf16(&options, &expression) != MATHEXPR_OK)
    {
        return 2;
    }
    if (mathexpr_set_variable_utf8(expression, "a", MATHEXPR_ZERO_TERMINATED, &value, 0) != MATHEXPR_OK)
    {
        return 3;
    }
    if (mathexpr_evaluate_text_utf16(expression, text, MATHEXPR_ZERO_TERMINATED, &value) != MATHEXPR_OK || nbAsked != 1)
    {
        return 4;
    }
    if (value.type != MATHEXPR_POINT || value.x != 2.5 || value.y != 5 || value.z != 7.5)
    {
        return 5;
    }
    if (mathexpr_set_expression_utf8(expression, "a*unknown", MATHEXPR_ZERO_TERMINATED) == MATHEXPR_OK)
    {
        return 6;
    }
    if (mathexpr_get_diagnostic_utf8(expression, &diagnostic) != MATHEXPR_OK || diagnostic.start != 2 ||
        diagnostic.item_length != 7 || diagnostic.item[0] != 'u')
    {
        return 7;
    }
    return mathexpr_destroy(expression) == MATHEXPR_OK ? 0 : 8;
}

void start(void)
{
    ExitProcess(firstWrongStep());
}
