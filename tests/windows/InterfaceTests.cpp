// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// InterfaceTests.cpp - UTF-16 text, names as Windows compares them, and objects on several threads.

#include "mathexpr/CMathExpr.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <cmath>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace {

/// Supplies 5 for every name, and records the names.
class Recorder : public IMathExprService
{
public:
    bool lookupValue(const wchar_t* name, VALTYPE& value) const override
    {
        names.emplace_back(name);
        value.x = 5;
        return true;
    }

    mutable std::vector<std::wstring> names;
};

double valueOf(MathExpression& expression, const wchar_t* text)
{
    VALTYPE result;
    return expression.setExpression(text) && expression.evaluate(result) ? result.x : std::nan("");
}

TEST(Text, PassesCharactersBeyondTheBasicPlaneThrough)
{
    const Recorder host;
    MathExpression expression(true, &host);
    EXPECT_EQ(valueOf(expression, L"\U0001D465+1"), 6);  // a mathematical x, two units of UTF-16
    ASSERT_EQ(host.names.size(), 1U);
    EXPECT_EQ(host.names[0], L"\xD835\xDC65");
}

TEST(Text, CountsPositionsInUnitsOfUtf16)
{
    MathExpression expression(true, nullptr);
    try
    {
        expression.setExpression(L"1*\U0001D465\U0001D466+2");
        FAIL() << "nothing was raised";
    }
    catch (const mathexpr::ParsingException& exception)
    {
        EXPECT_EQ(exception.entries.front().data.exID, static_cast<std::uint32_t>(mathexpr::ParsingError::UnknownName));
        EXPECT_EQ(exception.entries.front().data.pos, 3U);
        EXPECT_EQ(exception.entries.front().data.itemName, L"\U0001D465\U0001D466");
    }
    const Recorder host;
    MathExpression asking(true, &host);
    try
    {
        asking.setExpression(L"\U0001D465+)");
        FAIL() << "nothing was raised";
    }
    catch (const mathexpr::ParsingException& exception)
    {
        EXPECT_EQ(exception.entries.front().data.exID,
                  static_cast<std::uint32_t>(mathexpr::ParsingError::OperandMissing));
        EXPECT_EQ(exception.entries.front().data.pos, 3U);  // the bracket, counted from 0
    }
}

TEST(Text, KeepsAHalfOfASurrogatePairAsItIs)
{
    const Recorder host;
    MathExpression expression(true, &host);
    EXPECT_EQ(valueOf(expression, L"\xD835+1"), 6);
    EXPECT_EQ(host.names, std::vector<std::wstring>{L"\xD835"});
}

TEST(Names, OfConstantsAndFunctionsAreComparedAsWindowsDoes)
{
    const Recorder host;
    MathExpression expression(true, &host);
    // The comparison ignores a zero-width joiner.
    EXPECT_EQ(valueOf(expression, L"p\u200Di"), 3.14159265359);
    EXPECT_EQ(valueOf(expression, L"sq\u200Drt(16)"), 4);
    EXPECT_TRUE(host.names.empty());
    EXPECT_EQ(valueOf(expression, L"Pi"), 5);
    EXPECT_THROW(expression.setExpression(L"Sqrt(16)"), mathexpr::ParsingException);
}

TEST(Names, OfVariablesFoldTheLettersAToZOnly)
{
    MathExpression expression(true, nullptr);
    EXPECT_EQ(valueOf(expression, L"WIDTH=7"), 7);
    EXPECT_EQ(valueOf(expression, L"width*2"), 14);
    EXPECT_EQ(valueOf(expression, L"\u00C4=8"), 8);
    EXPECT_THROW(expression.setExpression(L"\u00E4*2"), mathexpr::ParsingException);
    // A letter with its accent, as one character and as two, names two variables.
    EXPECT_EQ(valueOf(expression, L"\u00E9=9"), 9);
    EXPECT_THROW(expression.setExpression(L"e\u0301*2"), mathexpr::ParsingException);
}

TEST(Threads, WithSeparateObjectsAreIndependent)
{
    const auto work = [](double start, bool& allRight) {
        MathExpression expression(true, nullptr);
        allRight = true;
        for (int i = 0; i < 20000; ++i)
        {
            const std::wstring text = L"a=" + std::to_wstring(static_cast<int>(start) + i) + L"*2";
            allRight = allRight && valueOf(expression, text.c_str()) == 2 * (start + i) &&
                       valueOf(expression, L"a+1") == 2 * (start + i) + 1;
            try
            {
                expression.setExpression(L"1+");
                allRight = false;
            }
            catch (const mathexpr::ParsingException&)
            {}
        }
    };
    bool firstRight = false;
    bool secondRight = false;
    std::thread first(work, 0.0, std::ref(firstRight));
    std::thread second(work, 500000.0, std::ref(secondRight));
    first.join();
    second.join();
    EXPECT_TRUE(firstRight);
    EXPECT_TRUE(secondRight);
}

}
