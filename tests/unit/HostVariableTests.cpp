// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostVariableTests.cpp - expression objects that define unknown names as variables, of their own or from the host's
// factory.
#include "mathexpr/BulkEvaluation.h"
#include "mathexpr/Diagnostics.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/support/MessageRecorder.h"
#include "tests/unit/EngineItems.h"
#include "tests/unit/Hosts.h"

#include <gtest/gtest.h>

#include <array>
#include <optional>

namespace {

/// Refuses to be evaluated, by returning false or with an exception.
class StubbornVariable final : public IMathVariable
{
public:
    StubbornVariable(std::wstring givenName, bool isLoud) : name(std::move(givenName)), raises(isLoud) {}

    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE&, bool) const override
    {
        if (raises)
        {
            throw mathexpr::ParsingException(1, 0, L"host", SMTParsingExcepData{});
        }
        return false;
    }
    std::wstring getSymbol() const override { return name; }
    VALTYPE* getValuePtr() override { return &value; }

private:
    std::wstring name;
    bool raises;
    VALTYPE value;
};

class StubbornFactory final : public IMathVariableFactory
{
public:
    explicit StubbornFactory(bool isLoud) : raises(isLoud) {}

    IMathVariable* create(const wchar_t* name) override { return new StubbornVariable(name, raises); }

private:
    bool raises;
};

class HostVariables : public testing::Test
{
protected:
    std::optional<double> valueOf(const wchar_t* text)
    {
        VALTYPE value;
        if (!expression.setExpression(text) || !expression.evaluate(value))
        {
            return std::nullopt;
        }
        return value.x;
    }

    TestFactory obliging;
    StubbornFactory refusing{false};
    StubbornFactory throwing{true};
    MathExpression expression{true, nullptr};
};

TEST_F(HostVariables, UnknownNamesAreZeroWhereThatIsSwitchedOn)
{
    EXPECT_THROW(expression.setExpression(L"width+1"), mathexpr::ParsingException);
    mathexpr::EngineAccess::automaticVariablesOf(expression).enabled = true;
    EXPECT_EQ(valueOf(L"width+1"), 1.0);
    EXPECT_EQ(mathexpr::getVariableNames(expression), std::vector<std::wstring>{L"width"});
    EXPECT_EQ(mathexpr::getHostNames(expression), std::vector<std::wstring>{});
    *mathexpr::getVariableAddress(expression, L"WIDTH") = VALTYPE{0, 0, 0, 0, 4.0, 0.0, 0.0};
    EXPECT_EQ(valueOf(L"width+1"), 5.0);
}

TEST_F(HostVariables, AreMadeByTheFactoryAndDeletedWithTheExpression)
{
    int nbDeleted = 0;
    {
        MathExpression object(true, nullptr);
        TestFactory factory(true, &nbDeleted);
        mathexpr::EngineAccess::automaticVariablesOf(object) = {true, &factory};
        VALTYPE value;
        ASSERT_TRUE(object.setExpression(L"a+b+a"));
        *mathexpr::getVariableAddress(object, L"a") = VALTYPE{0, 0, 0, 0, 3.0, 0.0, 0.0};
        ASSERT_TRUE(object.evaluate(value));
        EXPECT_EQ(value.x, 6.0);
        EXPECT_EQ(nbDeleted, 0);
    }
    EXPECT_EQ(nbDeleted, 2);
}

TEST_F(HostVariables, WithoutAValueAreRefused)
{
    MessageRecorder recorder;
    SlotlessFactory slotless;
    const AnsweringHost host({{L"width", number(2.0)}});
    for (const IMathExprService* const service :
         {static_cast<const IMathExprService*>(nullptr), static_cast<const IMathExprService*>(&host)})
    {
        MathExpression loud(false, service);
        mathexpr::EngineAccess::automaticVariablesOf(loud) = {true, &slotless};
        EXPECT_FALSE(loud.setExpression(L"width+1"));
        EXPECT_EQ(recorder.take(), std::vector<std::uint32_t>{3});

        MathExpression silent(true, service);
        mathexpr::EngineAccess::automaticVariablesOf(silent) = {true, &slotless};
        try
        {
            silent.setExpression(L"width+1");
            FAIL() << "nothing was raised";
        }
        catch (const mathexpr::DefinitionException& exception)
        {
            EXPECT_EQ(exception.entries.front().data.exID, mathexpr::DefinitionError::VariableNameEmpty);
            EXPECT_EQ(exception.entries.front().data.itemName, L"width");
        }
        EXPECT_EQ(mathexpr::getVariableNames(silent), std::vector<std::wstring>{});
        VALTYPE value;
        EXPECT_TRUE(silent.setExpression(L"2+3") && silent.evaluate(value));
        EXPECT_EQ(value.x, 5.0);
    }
}

TEST_F(HostVariables, ThatRefuseAreShownInTheText)
{
    mathexpr::EngineAccess::automaticVariablesOf(expression) = {true, &refusing};
    for (const wchar_t* text : {L"no", L"1+no", L"no+1", L"(no)", L"max(1,no,2)"})
    {
        EXPECT_EQ(valueOf(text), std::nullopt);
        const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(expression);
        EXPECT_EQ(diagnostic.message, 3U);
        EXPECT_EQ(diagnostic.itemName, L"no");
        EXPECT_EQ(diagnostic.start, std::wstring(text).find(L"no"));
        EXPECT_EQ(diagnostic.length, 2U);
    }
}

// The reported position of a variable of one letter is that of the operator after it.
TEST_F(HostVariables, OfOneLetterThatRefuseAreShownInTheText)
{
    mathexpr::EngineAccess::automaticVariablesOf(expression) = {true, &refusing};
    for (const wchar_t* text : {L"n+1", L"1+n*2", L"max(1,n-1)"})
    {
        EXPECT_EQ(valueOf(text), std::nullopt);
        const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(expression);
        EXPECT_EQ(diagnostic.itemName, L"n");
        EXPECT_EQ(diagnostic.start, std::wstring(text).find(L'n'));
        EXPECT_EQ(diagnostic.length, 1U);
    }
}

TEST_F(HostVariables, ThatThrowAreShownInTheText)
{
    mathexpr::EngineAccess::automaticVariablesOf(expression) = {true, &throwing};
    VALTYPE value;
    ASSERT_TRUE(expression.setExpression(L"2*(no+1)"));
    EXPECT_THROW(expression.evaluate(value), mathexpr::ParsingException);
    const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(expression);
    EXPECT_EQ(diagnostic.kind, mathexpr::ExpressionDiagnostic::Kind::Parsing);
    EXPECT_EQ(diagnostic.start, 3U);
    EXPECT_EQ(diagnostic.length, 2U);
}

TEST_F(HostVariables, TakeNoColumns)
{
    mathexpr::EngineAccess::automaticVariablesOf(expression) = {true, &obliging};
    ASSERT_TRUE(expression.setExpression(L"a*2+b"));
    const std::array<double, 2> numbers{1.0, 2.0};
    const std::array<mathexpr::BulkColumn, 2> columns{mathexpr::BulkColumn{L"unused", numbers.data()},
                                                      mathexpr::BulkColumn{L"a", numbers.data()}};
    std::array<double, 2> results{9.0, 9.0};
    mathexpr::BulkOutcome outcome;
    EXPECT_FALSE(mathexpr::evaluateBulk(expression, columns.data(), columns.size(), 2, {results.data()}, 1, outcome));
    EXPECT_EQ(outcome.error, mathexpr::BulkError::ColumnVariable);
    EXPECT_EQ(outcome.column, 1U);
    EXPECT_EQ(results, (std::array<double, 2>{9.0, 9.0}));
    EXPECT_TRUE(mathexpr::evaluateBulk(expression, columns.data(), 1, 2, {results.data()}, 1, outcome));
    EXPECT_EQ(results, (std::array<double, 2>{0.0, 0.0}));
}

}
