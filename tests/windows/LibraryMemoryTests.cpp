// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LibraryMemoryTests.cpp - memory runs out inside the DLL: std::bad_alloc reaches the host, and the host's count of
// exceptions stays correct.
//
// The DLL has its own operator new, which allocates through an entry in its import table. The tests replace this entry
// by a test function.

#include "mathexpr/BulkEvaluation.h"
#include "mathexpr/CMathExpr.h"
#include "mathexpr/Diagnostics.h"
#include "mathexpr/MessageDisplay.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/windows/ReplacedImport.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <memory>
#include <new>
#include <thread>

#include <gtest/gtest.h>
#include <windows.h>

namespace {

constexpr int unlimited = -1;
std::atomic<int> allowed = unlimited;
std::atomic<int> nbRefused = 0;

void* limitedMalloc(std::size_t size)
{
    if (allowed == 0)
    {
        ++nbRefused;
        return nullptr;
    }
    allowed -= allowed == unlimited ? 0 : 1;
    return std::malloc(size);
}

void* limitedCalloc(std::size_t count, std::size_t size)
{
    void* const memory = limitedMalloc(count * size);
    return memory == nullptr ? nullptr : std::memset(memory, 0, count * size);
}

/// Limits the memory of the DLL while the object exists.
struct LimitedMemory
{
    ReplacedImport malloc{L"mathexpr.dll", "malloc", &limitedMalloc};
    ReplacedImport calloc{L"mathexpr.dll", "calloc", &limitedCalloc};
};

class Memory : public testing::Test
{
protected:
    void SetUp() override
    {
        before = mathexpr::setMessageDisplay({[](void*, std::uint32_t, const wchar_t*) {}, nullptr});
    }
    void TearDown() override { mathexpr::setMessageDisplay(before); }

    /// Calls prepare, then work with no memory, with one block, with two... until work succeeds.
    template <class Prepare, class Work>
    void expectBadAlloc(Prepare prepare, Work work)
    {
        const LimitedMemory limited;
        nbRefused = 0;
        bool done = false;
        for (int blocks = 0; !done; ++blocks)
        {
            ASSERT_LT(blocks, 1000);
            const auto subject = prepare();
            allowed = blocks;
            try
            {
                work(*subject);
                done = true;
            }
            catch (const std::bad_alloc&)
            {}
            allowed = unlimited;
            ASSERT_EQ(std::uncaught_exceptions(), 0) << blocks;
        }
        EXPECT_GT(nbRefused, 0) << "nothing was refused";
    }

private:
    mathexpr::ProcessMessageDisplay before;
};

struct Subject
{
    CMathExpr calculator;
    MathExpression expression{true, nullptr};
    VALTYPE result{};

    Subject()
    {
        mathexpr::setVariable(expression, L"a", VALTYPE{0, 0, 0, 0, 2, 0, 0});
        expression.setExpression(L"b=a+1");
    }
};

std::unique_ptr<Subject> newSubject()
{
    return std::make_unique<Subject>();
}

TEST_F(Memory, RunsOutInACalculatorsConstructor)
{
    expectBadAlloc([] { return std::make_unique<int>(); }, [](int&) { const CMathExpr calculator; });
}

TEST_F(Memory, RunsOutInAnExpressionsConstructor)
{
    expectBadAlloc([] { return std::make_unique<int>(); },
                   [](int&) { const MathExpression expression(true, nullptr); });
}

TEST_F(Memory, RunsOutWhileACalculatorIsCopied)
{
    const auto pending = [] {
        auto subject = newSubject();
        // The pending assignment is copied, too; its name is too long for the string's internal buffer.
        subject->calculator.Calculate(L"a_name_of_many_letters.b=3", subject->result, 2147483647);
        return subject;
    };
    expectBadAlloc(pending, [](Subject& subject) { const CMathExpr copy(subject.calculator); });
    expectBadAlloc(pending, [](Subject& subject) {
        CMathExpr other;
        other = subject.calculator;
    });
}

TEST_F(Memory, RunsOutWhileATextIsComputed)
{
    expectBadAlloc(newSubject, [](Subject& subject) {
        subject.calculator.Calculate(L"c=max(1,2)*[1,2,3]", subject.result, 2147483647);
    });
    expectBadAlloc(newSubject, [](Subject& subject) { subject.expression.setExpression(L"a*2+max(1,a)"); });
    expectBadAlloc(newSubject, [](Subject& subject) { subject.expression.evaluate(subject.result); });
}

TEST_F(Memory, RunsOutInTheVariables)
{
    expectBadAlloc(newSubject,
                   [](Subject& subject) { mathexpr::setVariable(subject.expression, L"another", VALTYPE{}); });
    expectBadAlloc(newSubject, [](Subject& subject) { mathexpr::getVariableNames(subject.expression); });
    expectBadAlloc(newSubject, [](Subject& subject) { mathexpr::getUsedNames(subject.expression); });
}

TEST_F(Memory, RunsOutInADiagnostic)
{
    const auto failed = [] {
        auto subject = newSubject();
        try
        {
            subject->expression.setExpression(L"unknown+1");
        }
        catch (const mathexpr::ParsingException&)
        {}
        return subject;
    };
    expectBadAlloc(failed, [](Subject& subject) { mathexpr::getDiagnostic(subject.expression); });
}

TEST_F(Memory, RunsOutInBulkEvaluation)
{
    expectBadAlloc(newSubject, [](Subject& subject) {
        const double numbers[] = {1, 2, 3};
        double values[3];
        mathexpr::BulkColumn column;
        column.name = L"a";
        column.data = numbers;
        mathexpr::BulkResults results;
        results.data = values;
        mathexpr::BulkOutcome outcome;
        mathexpr::evaluateBulk(subject.expression, &column, 1, 3, results, 2, outcome);
    });
}

// A thread's exception state is allocated at its first exception.
TEST_F(Memory, RunsOutForAThreadsFirstException)
{
    const LimitedMemory limited;
    nbRefused = 0;
    bool caught = false;
    std::thread([&] {
        allowed = 0;
        try
        {
            const CMathExpr calculator;
        }
        catch (const std::bad_alloc&)
        {
            caught = true;
        }
        allowed = unlimited;
    }).join();
    EXPECT_TRUE(caught);
    EXPECT_GE(nbRefused, 2);
}

/// Holds depth exceptions at once, each thrown by the library without memory. Memory becomes available soon after the
/// last one is requested.
int nbHeld(int depth)
{
    std::thread relief;
    if (depth == 1)
    {
        relief = std::thread([] {
            Sleep(100);
            allowed = unlimited;
        });
    }
    int held = 0;
    try
    {
        allowed = 0;
        const CMathExpr calculator;
    }
    catch (const std::bad_alloc&)
    {
        held = 1 + (depth > 1 ? nbHeld(depth - 1) : 0);
    }
    if (relief.joinable())
    {
        relief.join();
    }
    return held;
}

// The reserve holds 16 exceptions. The seventeenth waits.
TEST_F(Memory, RunsOutForMoreExceptionsThanAreKeptReady)
{
    const LimitedMemory limited;
    EXPECT_EQ(nbHeld(16 + 1), 16 + 1);
    allowed = unlimited;
    EXPECT_EQ(std::uncaught_exceptions(), 0);
    EXPECT_EQ(nbHeld(16 + 1), 16 + 1);  // all have been released
    allowed = unlimited;
}

}
