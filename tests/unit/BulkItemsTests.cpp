// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BulkItemsTests.cpp - bulk evaluation of programs with items and variables of host classes. They are called row by
// row, on the calling thread.
#include "MTParserLib/MTParserCompiler.h"
#include "MTParserLib/MTParserDefFuncs.h"
#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/run/MTBulkRun.h"
#include "MTParserLib/vocabulary/Operators.h"
#include "tests/unit/EngineItems.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <numeric>
#include <thread>
#include <vector>

namespace {

/// Doubles its argument and records it. Refuses negative arguments without a reason.
class Watch final : public IMathFunction
{
public:
    std::wstring getHelpString() const override { return {}; }
    std::wstring getDescription() const override { return {}; }
    bool evaluate(std::uint32_t, const VALTYPE* args, VALTYPE& result, bool) const override
    {
        seen.push_back(args[0].x);
        onOtherThread = onOtherThread || std::this_thread::get_id() != home;
        result.x = 2 * args[0].x;
        return args[0].x >= 0;
    }
    std::wstring getSymbol() const override { return L"watch"; }
    std::uint32_t getNbArgs() const override { return 1; }

    mutable std::vector<double> seen;
    mutable bool onOtherThread = false;

private:
    const std::thread::id home = std::this_thread::get_id();
};

/// Refuses every argument, after another item has refused one with a message.
class Divider final : public IMathFunction
{
public:
    std::wstring getHelpString() const override { return {}; }
    std::wstring getDescription() const override { return {}; }
    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE& result, bool) const override
    {
        const VALTYPE zeros[2];
        return DivOp().evaluate(2, zeros, result, false);
    }
    std::wstring getSymbol() const override { return L"divider"; }
    std::uint32_t getNbArgs() const override { return 1; }
};

/// Its value is the number of evaluations.
class Count final : public IMathVariable
{
public:
    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE& result, bool) const override
    {
        result.x = ++nbAsked;
        return true;
    }
    std::wstring getSymbol() const override { return L"count"; }
    VALTYPE* getValuePtr() override { return &value; }

private:
    mutable double nbAsked = 0;
    VALTYPE value;
};

class BulkItems : public testing::Test
{
protected:
    BulkItems()
    {
        registrar.setSyntax({L'.', L',', L'[', L']'});
        registerVocabulary(registrar);
        registrar.defineVariable(x, true);
    }

    /// Evaluates a text with numbers for x.
    std::vector<double> evaluate(const wchar_t* text, const std::vector<double>& numbers, std::uint32_t nbThreads)
    {
        std::wstring assignTarget;
        EXPECT_TRUE(compiler.compile(text, {}, assignTarget));
        const MTBoundColumn column{x->getValuePtr(), {L"x", numbers.data()}};
        std::vector<double> values(numbers.size());
        tally =
            runInBulk(compilation.program, platform::ArrayView(&column, 1), numbers.size(), {values.data()}, nbThreads);
        return values;
    }

    TestVariable* const x = new TestVariable(L"x");
    MTParserRegistrar registrar;
    MTCompilation compilation;
    MTParserCompiler compiler{registrar, compilation, false, nullptr};
    MTBulkTally tally;
};

TEST_F(BulkItems, SeeTheRowsInTheirOrderOnOneThread)
{
    const Watch watch;
    registrar.defineFunction(const_cast<Watch*>(&watch), false);
    std::vector<double> rows(20000);
    std::iota(rows.begin(), rows.end(), 0.0);
    const std::vector<double> values = evaluate(L"watch(x)+1", rows, 4);
    EXPECT_EQ(watch.seen, rows);
    EXPECT_FALSE(watch.onOtherThread);
    EXPECT_EQ(values.front(), 1.0);
    EXPECT_EQ(values.back(), 2 * rows.back() + 1);
    EXPECT_EQ(tally.nbFailed, 0U);
}

TEST_F(BulkItems, MayRefuseARowWithoutAReason)
{
    const Watch watch;
    registrar.defineFunction(const_cast<Watch*>(&watch), false);
    EXPECT_EQ(evaluate(L"watch(x)", {1, -2, 3, -4}, 1)[2], 6.0);
    EXPECT_EQ(tally.nbFailed, 2U);
    EXPECT_EQ(tally.firstFailed, 1U);
    EXPECT_EQ(tally.firstStatus, std::uint32_t{mathexpr::RowStatus::ArgumentsRefused});
}

TEST_F(BulkItems, DoNotRefuseForTheReasonOfAnotherItem)
{
    registrar.defineFunction(new Divider, true);
    evaluate(L"divider(x)", {1}, 1);
    EXPECT_EQ(tally.firstStatus, std::uint32_t{mathexpr::RowStatus::ArgumentsRefused});
}

TEST_F(BulkItems, VariablesAreEvaluatedForEveryRow)
{
    registrar.defineVariable(new Count);
    EXPECT_EQ(evaluate(L"x*10+count", {1, 2, 3}, 4), (std::vector<double>{11, 22, 33}));
    EXPECT_EQ(evaluate(L"count", {0, 0}, 4), (std::vector<double>{4, 5}));
}

}
