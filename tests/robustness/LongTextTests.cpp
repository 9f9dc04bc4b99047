// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LongTextTests.cpp - texts of ten million characters, on a thread with 64 KiB of stack: the expected value or complete
// failure, and an object that stays usable.
#include "mathexpr/MathExpression.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/reference/ReferenceEvaluator.h"
#include "tests/robustness/LongTexts.h"
#include "tests/robustness/SmallStack.h"
#include "tests/unit/Hosts.h"

#include <gtest/gtest.h>

#include <ostream>

/// Prints a shape for GoogleTest.
static void PrintTo(const LongText& text, std::ostream* out)
{
    *out << text.name;
}

namespace {

constexpr std::size_t characters = isInstrumented ? 100000 : 10000000;

/// The outcome of a text: a value or a failure. The other member is default-constructed.
struct Answer
{
    VALTYPE value;
    SMTParsingExcepData failure;

    bool operator==(const Answer& other) const
    {
        return value.type == other.value.type && value.flag == other.value.flag && value.x == other.value.x &&
               value.y == other.value.y && value.z == other.value.z && failure.exID == other.failure.exID &&
               failure.pos == other.failure.pos && failure.nbArgs == other.failure.nbArgs &&
               failure.itemName == other.failure.itemName;
    }
};

Answer expectedOf(const LongText& shape, std::size_t parts)
{
    Answer answer;
    if (shape.code == LongText::compiles)
    {
        answer.value.type = shape.isPoint ? 1 : 0;
        answer.value.x = shape.expected.at(parts);
        return answer;
    }
    answer.failure.exID = shape.code;
    answer.failure.pos = static_cast<std::uint32_t>(shape.expected.at(parts));
    if (shape.isNamed)
    {
        answer.failure.itemName = std::wstring(parts, shape.opening[0]);
    }
    return answer;
}

class LongTexts : public testing::TestWithParam<LongText>
{};

TEST_P(LongTexts, CompileAndEvaluateOnASmallStack)
{
    const LongText& shape = GetParam();
    const std::size_t parts = shape.partsOf(characters);
    const std::wstring text = shape.make(parts);
    const AnsweringHost host({{L"x", number(1.0)}});
    Answer found;
    VALTYPE afterwards;
    onSmallStack([&] {
        MathExpression expression(true, &host);
        try
        {
            if (expression.setExpression(text.c_str()))
            {
                expression.evaluate(found.value);
            }
        }
        catch (const mathexpr::ParsingException& exception)
        {
            found.failure = exception.entries.front().data;
        }
        mathexpr::dropAssignment(expression);
        expression.setExpression(L"1+1");
        expression.evaluate(afterwards);
    });
    EXPECT_TRUE(found == expectedOf(shape, parts))
        << "value " << found.value.x << ", code " << found.failure.exID << " at " << found.failure.pos;
    EXPECT_EQ(afterwards.x, 2.0);
}

// The reference is recursive, so it checks the expectations with short texts of the same shapes.
TEST_P(LongTexts, AreExpectedToDoWhatShortOnesDo)
{
    const LongText& shape = GetParam();
    for (const std::size_t parts : {std::size_t{4}, std::size_t{26}})
    {
        reference::Session session(true, [](const std::wstring& name, VALTYPE& value) {
            value.x = 1.0;
            return name == L"x";
        });
        reference::Outcome outcome = session.setExpression(shape.make(parts));
        if (outcome.returned)
        {
            outcome = session.evaluate(VALTYPE{});
        }
        Answer found;
        found.value = outcome.value;
        if (outcome.raised)
        {
            found.failure.exID = outcome.raised->exID;
            found.failure.pos = outcome.raised->pos;
            found.failure.nbArgs = outcome.raised->nbArgs;
            found.failure.itemName = outcome.raised->itemName;
        }
        EXPECT_TRUE(found == expectedOf(shape, parts)) << reference::describe(outcome);
    }
}

INSTANTIATE_TEST_SUITE_P(Shapes, LongTexts, testing::ValuesIn(longTexts().begin(), longTexts().end()),
                         [](const testing::TestParamInfo<LongText>& test) {
                             std::string name;
                             for (const char ch : std::string(test.param.name))
                             {
                                 name += ch >= 'a' && ch <= 'z' ? ch : '_';
                             }
                             return name;
                         });

}
