// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CMathExprTests.cpp - copies of a calculator share variables and program, and any of them may be destroyed first.
#include "mathexpr/CMathExpr.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/support/MessageRecorder.h"

#include <gtest/gtest.h>

#include <memory>
#include <type_traits>
#include <vector>

namespace {

using Ids = std::vector<std::uint32_t>;

constexpr std::uint32_t anyInteger = 2147483647;

double valueOf(CMathExpr& calculator, const wchar_t* text)
{
    VALTYPE value;
    EXPECT_TRUE(calculator.Calculate(text, value, anyInteger));
    return value.x;
}

TEST(Calculator, TakesTheLimitOfEachCall)
{
    MessageRecorder recorder;
    CMathExpr calculator;
    VALTYPE value;
    EXPECT_FALSE(calculator.Calculate(L"2+3", value, 0));
    EXPECT_EQ(recorder.take(), Ids{19});
    EXPECT_TRUE(calculator.Calculate(L"2.0+3.0", value, 0));
    EXPECT_EQ(value.x, 5.0);
    EXPECT_TRUE(calculator.Calculate(L"2+3", value, 3));
    EXPECT_TRUE(calculator.Calculate(L"4294967295", value, 0xFFFFFFFF));
    EXPECT_EQ(value.x, 4294967295.0);
}

TEST(Calculator, PassesAParsingExceptionOn)
{
    MessageRecorder recorder;
    CMathExpr calculator;
    VALTYPE value;
    EXPECT_THROW(calculator.Calculate(L"sin([1,2,3])", value, anyInteger), mathexpr::ParsingException);
    EXPECT_THROW(calculator.Calculate(L"(1)(2)", value, anyInteger), mathexpr::ParsingException);
    valueOf(calculator, L"p=[1,2,3]");
    EXPECT_THROW(calculator.Calculate(L"sin(p)", value, anyInteger), mathexpr::ParsingException);
    EXPECT_EQ(recorder.take(), Ids{});
    EXPECT_EQ(valueOf(calculator, L"2+3"), 5.0);
}

TEST(Calculator, TakesANullPointerForAnEmptyText)
{
    MessageRecorder recorder;
    CMathExpr calculator;
    VALTYPE value;
    EXPECT_FALSE(calculator.Calculate(nullptr, value, anyInteger));
    EXPECT_EQ(recorder.take(), Ids{3});
}

TEST(Copy, OutlivesItsSource)
{
    auto source = std::make_unique<CMathExpr>();
    valueOf(*source, L"a=2");
    CMathExpr copy(*source);
    source.reset();
    EXPECT_EQ(valueOf(copy, L"a*3"), 6.0);
    EXPECT_EQ(valueOf(copy, L"b=a+5"), 7.0);
    EXPECT_EQ(valueOf(copy, L"b"), 7.0);
}

TEST(Copy, IsOutlivedByItsSource)
{
    CMathExpr source;
    {
        CMathExpr copy(source);
        valueOf(copy, L"a=2");
    }
    EXPECT_EQ(valueOf(source, L"a*3"), 6.0);
    EXPECT_EQ(valueOf(source, L"b=a+5"), 7.0);
    EXPECT_EQ(valueOf(source, L"b"), 7.0);
}

TEST(Copy, SharesVariables)
{
    CMathExpr source;
    CMathExpr copy(source);
    valueOf(source, L"a=2");
    EXPECT_EQ(valueOf(copy, L"a"), 2.0);
    valueOf(copy, L"a=3");
    EXPECT_EQ(valueOf(source, L"a"), 3.0);
}

TEST(Copy, MakesOnlyItsOwnAssignments)
{
    MessageRecorder recorder;
    CMathExpr source;
    CMathExpr copy(source);
    VALTYPE value;
    // The assignment stays pending in the object that made it, whatever the other object does meanwhile.
    EXPECT_FALSE(source.Calculate(L"a=1/0", value, anyInteger));
    EXPECT_EQ(valueOf(copy, L"5"), 5.0);
    EXPECT_FALSE(copy.Calculate(L"a", value, anyInteger));
    EXPECT_EQ(valueOf(source, L"6"), 6.0);
    EXPECT_EQ(valueOf(copy, L"a"), 6.0);
    EXPECT_EQ(recorder.take(), (Ids{10, 1}));
}

TEST(Copy, TakesAPendingNameAlong)
{
    MessageRecorder recorder;
    CMathExpr source;
    VALTYPE value;
    EXPECT_FALSE(source.Calculate(L"a=1/0", value, anyInteger));
    CMathExpr copy(source);
    EXPECT_EQ(valueOf(copy, L"8"), 8.0);
    EXPECT_EQ(valueOf(copy, L"a"), 8.0);
    EXPECT_EQ(valueOf(source, L"9"), 9.0);
    EXPECT_EQ(valueOf(source, L"a"), 9.0);
    EXPECT_EQ(recorder.take(), Ids{10});
}

TEST(Copy, ByAssignmentKeepsTheFormerStateForOtherCopies)
{
    CMathExpr source;
    valueOf(source, L"a=2");
    CMathExpr target;
    valueOf(target, L"a=100");
    const CMathExpr holder(target);
    target = source;
    EXPECT_EQ(valueOf(target, L"a"), 2.0);
    CMathExpr former(holder);
    EXPECT_EQ(valueOf(former, L"a"), 100.0);

    CMathExpr& same = target;
    target = same;
    EXPECT_EQ(valueOf(target, L"a"), 2.0);
}

TEST(Copy, WorksInAnyOrderOfDestruction)
{
    for (std::size_t survivor = 0; survivor < 4; ++survivor)
    {
        std::vector<std::unique_ptr<CMathExpr>> calculators;
        calculators.push_back(std::make_unique<CMathExpr>());
        valueOf(*calculators[0], L"a=2");
        calculators.push_back(std::make_unique<CMathExpr>(*calculators[0]));
        calculators.push_back(std::make_unique<CMathExpr>(*calculators[1]));
        calculators.push_back(std::make_unique<CMathExpr>());
        *calculators[3] = *calculators[2];
        for (std::size_t i = 0; i < calculators.size(); ++i)
        {
            if (i != survivor)
            {
                calculators[i].reset();
            }
        }
        EXPECT_EQ(valueOf(*calculators[survivor], L"b=a*a+[3,4,0]*[1,1,1]"), 11.0);
        EXPECT_EQ(valueOf(*calculators[survivor], L"b"), 11.0);
    }
}

TEST(Calculator, IsDeletedThroughItsBaseAndInArrays)
{
    struct Derived final : CMathExpr
    {
        explicit Derived(bool& flag) : deleted(flag) {}
        ~Derived() override { deleted = true; }
        bool& deleted;
    };
    EXPECT_TRUE(std::has_virtual_destructor_v<CMathExpr>);
    bool deleted = false;
    std::unique_ptr<CMathExpr>(new Derived(deleted)).reset();
    EXPECT_TRUE(deleted);

    const auto several = std::make_unique<CMathExpr[]>(3);
    valueOf(several[2], L"a=2");
    EXPECT_EQ(valueOf(several[2], L"a"), 2.0);
}

TEST(Calculator, DropsAPendingAssignment)
{
    MessageRecorder recorder;
    CMathExpr calculator;
    VALTYPE value;
    EXPECT_FALSE(calculator.Calculate(L"a=1/0", value, anyInteger));
    mathexpr::dropAssignment(mathexpr::expressionOf(calculator));
    EXPECT_EQ(valueOf(calculator, L"4"), 4.0);
    EXPECT_FALSE(calculator.Calculate(L"a", value, anyInteger));
    EXPECT_EQ(recorder.take(), (Ids{10, 1}));
}

}
