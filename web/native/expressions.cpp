// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// expressions.cpp - exports in addition to the C interface: replacements for functions that take function pointers, which
// JavaScript cannot create; and calls of functions with the arguments as parameters, since writing them to memory would take
// longer than the computation.
#include "host.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdlib>

namespace {

mathexpr_status callStatus = MATHEXPR_OK;

/// Suppresses message 19, which even a silent expression would show. The JavaScript error contains it.
void showNothing(void*, std::uint32_t, const mathexpr_char16*, std::size_t) {}

}

extern "C"
{

    /// Creates an expression with callbacks in JavaScript.
    mathexpr_status web_create(void* context, mathexpr_expression** expression)
    {
        const mathexpr_options_utf16 options{sizeof(options), MATHEXPR_EXPRESSION, 0,           0,
                                             context,         hostLookup,          showNothing, hostGetName};
        return mathexpr_create_utf16(&options, expression);
    }

    /// Gets completions, with notes from JavaScript.
    mathexpr_status web_complete(mathexpr_expression* expression, const mathexpr_char16* text, std::size_t length,
                                 std::size_t cursor, std::uint32_t maxCount, const mathexpr_char16* const* recent,
                                 std::size_t recentCount, void* context, mathexpr_completions_utf16* completions)
    {
        const mathexpr_completion_options_utf16 options{sizeof(options), maxCount, recent,
                                                        recentCount,     context,  hostGetNotes};
        return mathexpr_get_completions_utf16(expression, text, length, cursor, &options, completions);
    }

    // Each returns the function's value, or NaN after a failure; on NaN the caller checks web_call_status().

    double web_call_many(mathexpr_function* function, const double* arguments)
    {
        double result = 0.0;
        callStatus = mathexpr_call_function(function, arguments, &result);
        return callStatus == MATHEXPR_OK ? result : std::nan("");
    }

    double web_call_0(mathexpr_function* function)
    {
        return web_call_many(function, nullptr);
    }
    double web_call_1(mathexpr_function* function, double a)
    {
        const double arguments[] = {a};
        return web_call_many(function, arguments);
    }
    double web_call_2(mathexpr_function* function, double a, double b)
    {
        const double arguments[] = {a, b};
        return web_call_many(function, arguments);
    }
    double web_call_3(mathexpr_function* function, double a, double b, double c)
    {
        const double arguments[] = {a, b, c};
        return web_call_many(function, arguments);
    }
    double web_call_4(mathexpr_function* function, double a, double b, double c, double d)
    {
        const double arguments[] = {a, b, c, d};
        return web_call_many(function, arguments);
    }
    double web_call_5(mathexpr_function* function, double a, double b, double c, double d, double e)
    {
        const double arguments[] = {a, b, c, d, e};
        return web_call_many(function, arguments);
    }
    double web_call_6(mathexpr_function* function, double a, double b, double c, double d, double e, double f)
    {
        const double arguments[] = {a, b, c, d, e, f};
        return web_call_many(function, arguments);
    }

    /// Status of the last call of a function.
    mathexpr_status web_call_status()
    {
        return callStatus;
    }

    /// Selects the language of messages by a locale name such as "pt_BR".
    void web_set_locale(const char* name)
    {
        setenv("LC_ALL", name, 1);  // NOLINT(concurrency-mt-unsafe): a module has one thread
    }
}
