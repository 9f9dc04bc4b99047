// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// VariablesTests.cpp - hosts list, read, set and remove variables.
#include "mathexpr/Variables.h"
#include "tests/additions/Session.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Names = std::vector<std::wstring>;

class VariablesTest : public testing::Test
{
protected:
    double evaluate()
    {
        VALTYPE value;
        EXPECT_TRUE(session.expression.evaluate(value));
        return value.x;
    }

    Session session{true};
};

TEST_F(VariablesTest, UsedNamesComeInTheOrderOfFirstUse)
{
    session.host.names = {{L"b", number(2)}, {L"a", number(1)}, {L"c", point(1, 2, 3)}};
    ASSERT_TRUE(session.expression.setExpression(L"b*a+B*b+pi-[c,a]"));
    EXPECT_EQ(mathexpr::getUsedNames(session.expression), (Names{L"b", L"a", L"c"}));
    ASSERT_TRUE(session.expression.setExpression(L"A+1"));
    EXPECT_EQ(mathexpr::getUsedNames(session.expression), Names{L"a"});
    ASSERT_TRUE(session.expression.setExpression(L"2*3"));
    EXPECT_EQ(mathexpr::getUsedNames(session.expression), Names{});
}

TEST_F(VariablesTest, NothingIsUsedAfterAFailure)
{
    mathexpr::setVariable(session.expression, L"a", number(1));
    EXPECT_EQ(mathexpr::getUsedNames(session.expression), Names{});
    EXPECT_THROW(session.expression.setExpression(L"a+a*"), mathexpr::ParsingException);
    EXPECT_EQ(mathexpr::getUsedNames(session.expression), Names{});
}

TEST_F(VariablesTest, TheAssignedNameIsUsedWhereItIsRead)
{
    session.run(L"a=2");
    EXPECT_EQ(mathexpr::getUsedNames(session.expression), Names{});
    session.run(L"a=a+1");
    EXPECT_EQ(mathexpr::getUsedNames(session.expression), Names{L"a"});
}

TEST_F(VariablesTest, NamesComeInTheOrderOfDefinition)
{
    session.host.names = {{L"Host", number(2)}};
    session.run(L"z=1");
    session.run(L"y=Host");
    mathexpr::setVariable(session.expression, L"a", number(1));
    EXPECT_EQ(mathexpr::getVariableNames(session.expression), (Names{L"z", L"Host", L"y", L"a"}));
    EXPECT_EQ(mathexpr::getHostNames(session.expression), Names{L"Host"});
    EXPECT_TRUE(mathexpr::removeVariable(session.expression, L"z"));
    EXPECT_EQ(mathexpr::getVariableNames(session.expression), (Names{L"Host", L"y", L"a"}));
}

TEST_F(VariablesTest, AHostsNameStaysTheHostsUntilItIsRemoved)
{
    session.host.names = {{L"h", number(2)}};
    session.run(L"h");
    session.run(L"h=7");
    EXPECT_EQ(mathexpr::getHostNames(session.expression), Names{L"h"});
    EXPECT_EQ(session.host.asked, Names{L"h"});
    EXPECT_TRUE(mathexpr::removeVariable(session.expression, L"H"));
    EXPECT_EQ(mathexpr::getHostNames(session.expression), Names{});
    EXPECT_EQ(session.run(L"h").value.x, 2.0);
    EXPECT_EQ(session.host.asked, (Names{L"h", L"h"}));
    EXPECT_TRUE(mathexpr::removeVariable(session.expression, L"h"));
    session.run(L"h=1");
    EXPECT_EQ(mathexpr::getHostNames(session.expression), Names{});
}

TEST_F(VariablesTest, GetReadsAllFields)
{
    session.run(L"p=[1,2,3]");
    VALTYPE value;
    ASSERT_TRUE(mathexpr::getVariable(session.expression, L"P", value));
    EXPECT_EQ(value.type, 1);
    EXPECT_EQ(value.y, 2.0);
    value = number(8);
    EXPECT_FALSE(mathexpr::getVariable(session.expression, L"unk", value));
    EXPECT_FALSE(mathexpr::getVariable(session.expression, L"pi", value));
    EXPECT_FALSE(mathexpr::getVariable(session.expression, nullptr, value));
    EXPECT_EQ(value.x, 8.0);
}

TEST_F(VariablesTest, SetChangesWhatAProgramComputes)
{
    EXPECT_TRUE(mathexpr::setVariable(session.expression, L"a", number(3)));
    ASSERT_TRUE(session.expression.setExpression(L"a*2"));
    EXPECT_EQ(evaluate(), 6.0);
    VALTYPE* const address = mathexpr::getVariableAddress(session.expression, L"a");
    EXPECT_TRUE(mathexpr::setVariable(session.expression, L"A", number(5)));
    EXPECT_EQ(evaluate(), 10.0);
    EXPECT_EQ(mathexpr::getVariableAddress(session.expression, L"a"), address);
    EXPECT_EQ(mathexpr::getVariableNames(session.expression), Names{L"a"});
}

TEST_F(VariablesTest, AnAddressStays)
{
    mathexpr::setVariable(session.expression, L"a", number(1));
    VALTYPE* const address = mathexpr::getVariableAddress(session.expression, L"a");
    for (int i = 0; i < 1000; ++i)
    {
        mathexpr::setVariable(session.expression, (L"v" + std::to_wstring(i)).c_str(), number(i));
    }
    session.run(L"a=7");
    EXPECT_EQ(mathexpr::getVariableAddress(session.expression, L"A"), address);
    EXPECT_EQ(address->x, 7.0);
    ASSERT_TRUE(session.expression.setExpression(L"a+v999"));
    address->x = 0.5;
    EXPECT_EQ(evaluate(), 999.5);
    EXPECT_EQ(mathexpr::getVariableAddress(session.expression, L"unk"), nullptr);
    EXPECT_EQ(mathexpr::getVariableAddress(session.expression, nullptr), nullptr);
}

TEST_F(VariablesTest, RemovingEmptiesAProgramThatReadsTheVariable)
{
    mathexpr::setVariable(session.expression, L"a", number(1));
    mathexpr::setVariable(session.expression, L"b", number(2));
    ASSERT_TRUE(session.expression.setExpression(L"a+1"));
    EXPECT_TRUE(mathexpr::removeVariable(session.expression, L"b"));
    EXPECT_EQ(evaluate(), 2.0);
    EXPECT_TRUE(mathexpr::removeVariable(session.expression, L"A"));
    EXPECT_EQ(mathexpr::getUsedNames(session.expression), Names{});

    VALTYPE value = number(8);
    EXPECT_FALSE(session.expression.evaluate(value));
    EXPECT_EQ(value.x, 8.0);
    const mathexpr::ExpressionDiagnostic diagnostic = session.diagnostic();
    EXPECT_EQ(diagnostic.message, 1U);
    EXPECT_EQ(diagnostic.kind, mathexpr::ExpressionDiagnostic::Kind::None);
    EXPECT_EQ(diagnostic.itemName, L"A");
    EXPECT_EQ(diagnostic.nbArgs, 0U);
    EXPECT_EQ(diagnostic.start, 0U);
    EXPECT_EQ(diagnostic.length, 0U);

    EXPECT_THROW(session.expression.setExpression(L"a+1"), mathexpr::ParsingException);
    EXPECT_TRUE(session.run(L"1+1").evaluated);
    EXPECT_FALSE(mathexpr::removeVariable(session.expression, L"a"));
    EXPECT_FALSE(mathexpr::removeVariable(session.expression, nullptr));
}

TEST_F(VariablesTest, RemovingBeforeTheFirstTextIsNoFailure)
{
    mathexpr::setVariable(session.expression, L"a", number(1));
    EXPECT_TRUE(mathexpr::removeVariable(session.expression, L"a"));
    EXPECT_FALSE(mathexpr::hasFailed(session.expression));
}

TEST_F(VariablesTest, APendingAssignmentDefinesARemovedNameAnew)
{
    mathexpr::setVariable(session.expression, L"a", number(1));
    ASSERT_TRUE(session.expression.setExpression(L"a=5"));
    EXPECT_TRUE(mathexpr::removeVariable(session.expression, L"a"));
    EXPECT_EQ(evaluate(), 5.0);
    VALTYPE value;
    ASSERT_TRUE(mathexpr::getVariable(session.expression, L"a", value));
    EXPECT_EQ(value.x, 5.0);
}

struct RefusedName
{
    const wchar_t* name;
    std::uint32_t code;
    const wchar_t* conflict;
};

TEST_F(VariablesTest, ANameThatCannotBeAVariableIsRefusedAndNothingIsLost)
{
    mathexpr::setVariable(session.expression, L"a", number(1));
    ASSERT_TRUE(session.expression.setExpression(L"a+1"));
    const RefusedName refused[] = {
        {nullptr, 12, L""}, {L"", 12, L""},     {L"12", 13, L""},     {L"1.5", 13, L""},  {L"pi", 14, L"pi"},
        {L"a.b", 15, L"."}, {L"a,b", 15, L","}, {L"a[", 15, L"["},    {L"a b", 15, L" "}, {L"f(x)", 15, L"("},
        {L"a=b", 15, L"="}, {L"a+b", 15, L"+"}, {L"a<=b", 15, L"<="}, {L"+a", 15, L"+"},  {L" a", 15, L" "},
    };
    for (const RefusedName& row : refused)
    {
        SCOPED_TRACE(row.name == nullptr ? std::wstring(L"null") : std::wstring(row.name));
        try
        {
            mathexpr::setVariable(session.expression, row.name, number(2));
            ADD_FAILURE() << "not refused";
        }
        catch (const mathexpr::DefinitionException& exception)
        {
            EXPECT_EQ(exception.entries.front().reserved, 0U);
            const SMTDefExcepData& data = exception.entries.front().data;
            EXPECT_EQ(data.exID, row.code);
            EXPECT_EQ(data.itemName, row.name == nullptr ? L"" : row.name);
            EXPECT_EQ(data.conflictItemName, row.conflict);
        }
    }
    EXPECT_EQ(mathexpr::getVariableNames(session.expression), Names{L"a"});
    EXPECT_EQ(evaluate(), 2.0);
}

TEST_F(VariablesTest, EveryNameThatIsTakenCanBeWritten)
{
    for (const wchar_t* name : {L"a", L"sin", L"Pi", L"1e", L"a_b", L"width2", L"\u00e4\u00f6"})
    {
        ASSERT_TRUE(mathexpr::setVariable(session.expression, name, number(42)));
        EXPECT_EQ(session.run(name).value.x, 42.0);
    }
}

TEST_F(VariablesTest, NothingChangesWhileACallWaitsForTheHost)
{
    class Meddling final : public IMathExprService
    {
    public:
        bool lookupValue(const wchar_t*, VALTYPE& value) const override
        {
            setAnswer = mathexpr::setVariable(*expression, L"a", number(9));
            removeAnswer = mathexpr::removeVariable(*expression, L"a");
            getAnswer = mathexpr::getVariable(*expression, L"a", value);
            return true;
        }
        MathExpression* expression = nullptr;
        mutable bool setAnswer = true;
        mutable bool removeAnswer = true;
        mutable bool getAnswer = false;
    };
    Meddling host;
    MathExpression expression(true, &host);
    host.expression = &expression;
    mathexpr::setVariable(expression, L"a", number(4));
    VALTYPE value;
    ASSERT_TRUE(expression.setExpression(L"a+unk"));
    ASSERT_TRUE(expression.evaluate(value));
    EXPECT_EQ(value.x, 8.0);
    EXPECT_FALSE(host.setAnswer);
    EXPECT_FALSE(host.removeAnswer);
    EXPECT_TRUE(host.getAnswer);
}

TEST(VariablesOfACalculator, AreSharedWithItsCopies)
{
    CMathExpr calculator;
    CMathExpr copy(calculator);
    mathexpr::setVariable(mathexpr::expressionOf(calculator), L"a", number(3));
    EXPECT_EQ(mathexpr::getVariableNames(mathexpr::expressionOf(copy)), Names{L"a"});
    VALTYPE value;
    ASSERT_TRUE(copy.Calculate(L"a*a", value, 100));
    EXPECT_EQ(value.x, 9.0);
    EXPECT_EQ(mathexpr::getUsedNames(mathexpr::expressionOf(calculator)), Names{L"a"});
}

}
