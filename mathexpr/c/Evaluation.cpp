// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Evaluation.cpp - implements compilation and evaluation of mathexpr.h.
#include "mathexpr/c/Evaluation.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "mathexpr/c/Values.h"

namespace {

/// The status for the recorded failure, whether it was shown or thrown.
mathexpr_status statusOfFailure(mathexpr_expression& expression) noexcept
{
    switch (mathexpr::EngineAccess::parserOf(expression.object()).getFailure().kind)
    {
    case mathexpr::ExpressionDiagnostic::Kind::Parsing:
        return MATHEXPR_PARSING_ERROR;
    case mathexpr::ExpressionDiagnostic::Kind::Definition:
        return MATHEXPR_DEFINITION_ERROR;
    case mathexpr::ExpressionDiagnostic::Kind::None:
        break;
    }
    return MATHEXPR_REFUSED;
}

/// @param compute  returns false or throws on failure
template <class Compute>
mathexpr_status attempt(mathexpr_expression& expression, Compute compute)
{
    try
    {
        if (compute())
        {
            return MATHEXPR_OK;
        }
    }
    catch (const mathexpr::ParsingException&)
    {
        return MATHEXPR_PARSING_ERROR;
    }
    catch (const mathexpr::DefinitionException&)
    {
        return MATHEXPR_DEFINITION_ERROR;
    }
    return statusOfFailure(expression);
}

mathexpr_status evaluate(mathexpr_expression& expression, mathexpr_value* value)
{
    if (!mathexpr::EngineAccess::parserOf(*expression.plain).getProgram().isComplete())
    {
        return MATHEXPR_NO_PROGRAM;
    }
    return attempt(expression, [&] { return expression.plain->evaluate(inPlace(*value)); });
}

template <class Encoding>
mathexpr_status setExpression(mathexpr_expression& expression, const typename Encoding::Unit* text, std::size_t length)
{
    if (expression.isCalculator())
    {
        return MATHEXPR_WRONG_KIND;
    }
    std::wstring wide;
    const mathexpr_status status = takeText<Encoding>(text, length, wide);
    return status != MATHEXPR_OK ? status : compileText(expression, wide);
}

template <class Encoding>
mathexpr_status evaluateText(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                             mathexpr_value* value) noexcept
{
    return changeExpression(handle, [=](mathexpr_expression& expression) -> mathexpr_status {
        if (value == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        const mathexpr_status status = setExpression<Encoding>(expression, text, length);
        return status != MATHEXPR_OK ? status : evaluate(expression, value);
    });
}

template <class Encoding>
mathexpr_status calculate(mathexpr_expression* handle, const typename Encoding::Unit* text, std::size_t length,
                          std::uint32_t maxInteger, mathexpr_value* value) noexcept
{
    return changeExpression(handle, [=](mathexpr_expression& expression) -> mathexpr_status {
        if (value == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        if (!expression.isCalculator())
        {
            return MATHEXPR_WRONG_KIND;
        }
        std::wstring wide;
        const mathexpr_status status = takeText<Encoding>(text, length, wide);
        return status != MATHEXPR_OK ? status : attempt(expression, [&] {
            return expression.calculator->Calculate(wide.c_str(), inPlace(*value), maxInteger);
        });
    });
}

}

mathexpr_status compileText(mathexpr_expression& expression, const std::wstring& text)
{
    return attempt(expression, [&] { return expression.plain->setExpression(text.c_str()); });
}

mathexpr_status evaluateInFull(mathexpr_expression* handle, mathexpr_value* value) noexcept
{
    return changeExpression(handle, [=](mathexpr_expression& expression) -> mathexpr_status {
        if (value == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        return expression.isCalculator() ? MATHEXPR_WRONG_KIND : evaluate(expression, value);
    });
}

mathexpr_status mathexpr_set_expression_utf8(mathexpr_expression* handle, const char* text, size_t length) noexcept
{
    return changeExpression(
        handle, [=](mathexpr_expression& expression) { return setExpression<Utf8>(expression, text, length); });
}

mathexpr_status mathexpr_set_expression_utf16(mathexpr_expression* handle, const mathexpr_char16* text,
                                              size_t length) noexcept
{
    return changeExpression(
        handle, [=](mathexpr_expression& expression) { return setExpression<Utf16>(expression, text, length); });
}

mathexpr_status mathexpr_evaluate_text_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                            mathexpr_value* value) noexcept
{
    return evaluateText<Utf8>(expression, text, length, value);
}

mathexpr_status mathexpr_evaluate_text_utf16(mathexpr_expression* expression, const mathexpr_char16* text,
                                             size_t length, mathexpr_value* value) noexcept
{
    return evaluateText<Utf16>(expression, text, length, value);
}

mathexpr_status mathexpr_calculate_utf8(mathexpr_expression* expression, const char* text, size_t length,
                                        uint32_t max_integer, mathexpr_value* value) noexcept
{
    return calculate<Utf8>(expression, text, length, max_integer, value);
}

mathexpr_status mathexpr_calculate_utf16(mathexpr_expression* expression, const mathexpr_char16* text, size_t length,
                                         uint32_t max_integer, mathexpr_value* value) noexcept
{
    return calculate<Utf16>(expression, text, length, max_integer, value);
}

mathexpr_status mathexpr_drop_assignment(mathexpr_expression* handle) noexcept
{
    return changeExpression(handle, [](mathexpr_expression& expression) {
        mathexpr::dropAssignment(expression.object());
        return MATHEXPR_OK;
    });
}
