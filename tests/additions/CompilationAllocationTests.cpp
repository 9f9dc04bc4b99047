// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CompilationAllocationTests.cpp - which compilations and bulk evaluations allocate memory, and which reuse it.
#include "mathexpr/BulkEvaluation.h"
#include "mathexpr/Limits.h"
#include "mathexpr/Variables.h"
#include "tests/additions/Session.h"
#include "tests/support/FailingMemory.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

// The compiler's stacks are not kept after a short first text, since most objects compile only one text.
TEST(Allocations, AreMadeByTheFirstTwoCompilationsOnly)
{
    for (const std::uint32_t limit : {0U, 1000U})
    {
        Session session(true);
        ASSERT_TRUE(mathexpr::setLimits(session.expression, {limit, limit, limit}));
        mathexpr::setVariable(session.expression, L"width", number(2));
        mathexpr::setVariable(session.expression, L"height", number(3));
        const std::wstring text = L"[width, height, 1.5e+3] * (sin(30) - -width) + [1, 2, 3]";

        const std::size_t atFirst = memory::madeCount();
        ASSERT_TRUE(session.expression.setExpression(text.c_str()));
        EXPECT_GT(memory::madeCount(), atFirst);
        constexpr std::size_t nbStacks = 4;
        const std::size_t aliveAfterFirst = memory::aliveCount();
        ASSERT_TRUE(session.expression.setExpression(text.c_str()));
        EXPECT_EQ(memory::aliveCount(), aliveAfterFirst + nbStacks);
        const std::size_t before = memory::madeCount();
        for (int i = 0; i < 10; ++i)
        {
            ASSERT_TRUE(session.expression.setExpression(text.c_str()));
            VALTYPE value;
            ASSERT_TRUE(session.expression.evaluate(value));
        }
        EXPECT_EQ(memory::madeCount(), before) << "limit " << limit;
    }
}

// Initially there is room for a few operands, operators, brackets, steps and slots.
TEST(Allocations, OfAShortFirstTextAreAsManyWhateverItsShape)
{
    const auto allocationsFor = [](const wchar_t* text) {
        Session session(true);
        mathexpr::setVariable(session.expression, L"x", number(2));
        const std::size_t before = memory::madeCount();
        EXPECT_TRUE(session.expression.setExpression(text));
        return memory::madeCount() - before;
    };
    EXPECT_EQ(allocationsFor(L"min(1,2,3)"), allocationsFor(L"sin(1)"));
    EXPECT_EQ(allocationsFor(L"(((1)))"), allocationsFor(L"1+1+1"));
    EXPECT_EQ(allocationsFor(L"x*x+x*x"), allocationsFor(L"x-(x)"));
}

TEST(Allocations, AreNotRepeatedAfterALongFirstText)
{
    Session session(true);
    mathexpr::setVariable(session.expression, L"x", number(2));
    std::wstring text = L"x";
    for (int i = 0; i < 100; ++i)
    {
        text += L"+x*(2-x)";
    }
    ASSERT_TRUE(session.expression.setExpression(text.c_str()));
    const std::size_t before = memory::madeCount();
    ASSERT_TRUE(session.expression.setExpression(text.c_str()));
    EXPECT_EQ(memory::madeCount(), before);
}

TEST(Allocations, AreNotRepeatedAfterAFirstTextOfMoreThan64Slots)
{
    const auto areRepeatedAfter = [](std::size_t nbSums) {
        Session session(true);
        mathexpr::setVariable(session.expression, L"x", number(2));
        std::wstring text = L"x";
        for (std::size_t sum = 0; sum < nbSums; ++sum)  // each has a slot
        {
            text += L"+x";
        }
        EXPECT_TRUE(session.expression.setExpression(text.c_str()));
        const std::size_t before = memory::madeCount();
        EXPECT_TRUE(session.expression.setExpression(text.c_str()));
        return memory::madeCount() != before;
    };
    EXPECT_TRUE(areRepeatedAfter(64));
    EXPECT_FALSE(areRepeatedAfter(65));
}

// Only its value remains on the compiler's stacks, until the next text.
TEST(Allocations, AreNotMadeByAConstantHoweverOftenItIsCompiled)
{
    Session session(true);
    const auto compile = [&](int times) {
        for (int i = 0; i < times; ++i)
        {
            ASSERT_TRUE(session.expression.setExpression(L"1"));
        }
    };
    compile(2);
    const std::size_t before = memory::madeCount();
    compile(1000);
    EXPECT_EQ(memory::madeCount(), before);
}

// After its preparations, bulk evaluation allocates nothing, in blocks or row by row, even if rows fail.
TEST(Allocations, AreNotMadeForRows)
{
    Session session(true);
    session.host.names = {{L"x", number(1)}};
    std::vector<double> x(20000);
    for (std::size_t row = 0; row < x.size(); ++row)
    {
        x[row] = static_cast<double>(row % 7);
    }
    std::vector<VALTYPE> results(x.size());
    const mathexpr::BulkColumn column{L"x", x.data()};
    for (const wchar_t* text : {L"1/x+min(x,2,3,4)", L"[x,1,2]*2/x"})
    {
        ASSERT_TRUE(session.expression.setExpression(text));
        mathexpr::BulkOutcome outcome;
        const auto allocationsFor = [&](std::size_t nbRows) {
            const std::size_t before = memory::madeCount();
            EXPECT_TRUE(mathexpr::evaluateBulk(session.expression, &column, 1, nbRows,
                                               {results.data(), sizeof(VALTYPE), mathexpr::BulkKind::Record}, 1,
                                               outcome));
            return memory::madeCount() - before;
        };
        allocationsFor(1);
        const std::size_t forOne = allocationsFor(1);
        EXPECT_EQ(allocationsFor(x.size()), forOne);
        EXPECT_GT(outcome.failedCount, 0U);
    }
}

// The tile code of a text and its worker's memory are kept until another text is compiled.
TEST(Allocations, AreNotMadeAgainForTheSameColumns)
{
    Session session(true);
    session.host.names = {{L"x", number(1)}};
    const double x = 2.0;
    double result = 0.0;
    const mathexpr::BulkColumn column{L"x", &x};
    const auto allocationsFor = [&](const wchar_t* text) {
        EXPECT_TRUE(session.expression.setExpression(text));
        std::vector<std::size_t> made;
        for (int call = 0; call < 3; ++call)
        {
            mathexpr::BulkOutcome outcome;
            const std::size_t before = memory::madeCount();
            EXPECT_TRUE(mathexpr::evaluateBulk(session.expression, &column, 1, 1, {&result}, 1, outcome));
            made.push_back(memory::madeCount() - before);
        }
        EXPECT_EQ(made[1], made[2]);
        EXPECT_LT(made[1], made[0]);
        return made[1];
    };
    const std::size_t forOneStep = allocationsFor(L"x+1");
    EXPECT_EQ(allocationsFor(L"max(x,2,3,4)*sqrt(x)-x/2+[x,1,2]*[3,x,4]"), forOneStep);
}

}
