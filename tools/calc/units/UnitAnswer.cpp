// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// UnitAnswer.cpp - see UnitAnswer.h.
#include "tools/calc/units/UnitAnswer.h"

#include "mathexpr/MathExpression.h"
#include "tools/calc/answer/MessageRecorder.h"
#include "tools/calc/text/Utf8.h"
#include "tools/calc/text/ValueText.h"
#include "tools/calc/units/UnitQuestion.h"

std::string unitAnswer(std::string_view text, std::uint32_t digits)
{
    const auto expression = expressionForUnits(text);
    if (!expression)
    {
        return {};
    }
    // Contains only numbers and conversions, so the session's names do not matter. The only possible failure is a
    // divisor of 0, which returns false.
    MathExpression object(false, nullptr);
    const MessageRecorder muffled;
    VALTYPE value;
    const auto wide = toWide(*expression);
    const bool done = wide && object.setExpression(wide->c_str()) && object.evaluate(value);
    return done ? *expression + " = " + valueText(value, digits) : std::string();
}
