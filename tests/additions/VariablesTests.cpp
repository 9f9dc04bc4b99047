// VariablesTests.cpp - variables listed, read, set and removed from outside.
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
    ExpressionVariables variables{session.expression};
};

TEST_F(VariablesTest, UsedNamesComeInTheOrderOfFirstUse)
{
    session.host.names = {{L"b", number(2)}, {L"a", number(1)}, {L"c", point(1, 2, 3)}};
    ASSERT_TRUE(session.expression.setExpression(L"b*a+B*b+pi-[c,a]"));
    EXPECT_EQ(variables.usedNames(), (Names{L"b", L"a", L"c"}));
    ASSERT_TRUE(session.expression.setExpression(L"A+1"));
    EXPECT_EQ(variables.usedNames(), Names{L"a"});
    ASSERT_TRUE(session.expression.setExpression(L"2*3"));
    EXPECT_EQ(variables.usedNames(), Names{});
}

TEST_F(VariablesTest, NothingIsUsedAfterAFailure)
{
    variables.set(L"a", number(1));
    EXPECT_EQ(variables.usedNames(), Names{});
    EXPECT_THROW(session.expression.setExpression(L"a+a*"), ParsingException);
    EXPECT_EQ(variables.usedNames(), Names{});
}

TEST_F(VariablesTest, TheAssignedNameIsUsedWhereItIsRead)
{
    session.run(L"a=2");
    EXPECT_EQ(variables.usedNames(), Names{});
    session.run(L"a=a+1");
    EXPECT_EQ(variables.usedNames(), Names{L"a"});
}

TEST_F(VariablesTest, NamesComeInTheOrderOfDefinition)
{
    session.host.names = {{L"Host", number(2)}};
    session.run(L"z=1");
    session.run(L"y=Host");
    variables.set(L"a", number(1));
    EXPECT_EQ(variables.names(), (Names{L"z", L"Host", L"y", L"a"}));
    EXPECT_EQ(variables.hostNames(), Names{L"Host"});
    EXPECT_TRUE(variables.remove(L"z"));
    EXPECT_EQ(variables.names(), (Names{L"Host", L"y", L"a"}));
}

TEST_F(VariablesTest, AHostsNameStaysTheHostsUntilItIsRemoved)
{
    session.host.names = {{L"h", number(2)}};
    session.run(L"h");
    session.run(L"h=7");
    EXPECT_EQ(variables.hostNames(), Names{L"h"});
    EXPECT_EQ(session.host.asked, Names{L"h"});
    EXPECT_TRUE(variables.remove(L"H"));
    EXPECT_EQ(variables.hostNames(), Names{});
    EXPECT_EQ(session.run(L"h").value.x, 2.0);
    EXPECT_EQ(session.host.asked, (Names{L"h", L"h"}));
    EXPECT_TRUE(variables.remove(L"h"));
    session.run(L"h=1");
    EXPECT_EQ(variables.hostNames(), Names{});
}

TEST_F(VariablesTest, GetReadsTheWholeValue)
{
    session.run(L"p=[1,2,3]");
    VALTYPE value;
    ASSERT_TRUE(variables.get(L"P", value));
    EXPECT_EQ(value.type, 1);
    EXPECT_EQ(value.y, 2.0);
    value = number(8);
    EXPECT_FALSE(variables.get(L"unk", value));
    EXPECT_FALSE(variables.get(L"pi", value));
    EXPECT_FALSE(variables.get(nullptr, value));
    EXPECT_EQ(value.x, 8.0);
}

TEST_F(VariablesTest, SetChangesWhatAProgramComputes)
{
    EXPECT_TRUE(variables.set(L"a", number(3)));
    ASSERT_TRUE(session.expression.setExpression(L"a*2"));
    EXPECT_EQ(evaluate(), 6.0);
    VALTYPE* const address = variables.address(L"a");
    EXPECT_TRUE(variables.set(L"A", number(5)));
    EXPECT_EQ(evaluate(), 10.0);
    EXPECT_EQ(variables.address(L"a"), address);
    EXPECT_EQ(variables.names(), Names{L"a"});
}

TEST_F(VariablesTest, AnAddressStays)
{
    variables.set(L"a", number(1));
    VALTYPE* const address = variables.address(L"a");
    for (int i = 0; i < 1000; ++i)
    {
        variables.set((L"v" + std::to_wstring(i)).c_str(), number(i));
    }
    session.run(L"a=7");
    EXPECT_EQ(variables.address(L"A"), address);
    EXPECT_EQ(address->x, 7.0);
    ASSERT_TRUE(session.expression.setExpression(L"a+v999"));
    address->x = 0.5;
    EXPECT_EQ(evaluate(), 999.5);
    EXPECT_EQ(variables.address(L"unk"), nullptr);
    EXPECT_EQ(variables.address(nullptr), nullptr);
}

TEST_F(VariablesTest, RemovingEmptiesAProgramThatReadsTheVariable)
{
    variables.set(L"a", number(1));
    variables.set(L"b", number(2));
    ASSERT_TRUE(session.expression.setExpression(L"a+1"));
    EXPECT_TRUE(variables.remove(L"b"));
    EXPECT_EQ(evaluate(), 2.0);
    EXPECT_TRUE(variables.remove(L"A"));
    EXPECT_EQ(variables.usedNames(), Names{});

    VALTYPE value = number(8);
    EXPECT_FALSE(session.expression.evaluate(value));
    EXPECT_EQ(value.x, 8.0);
    const ExpressionDiagnostic diagnostic = session.diagnostic();
    EXPECT_EQ(diagnostic.message, 1U);
    EXPECT_EQ(diagnostic.kind, ExpressionDiagnostic::Kind::None);
    EXPECT_EQ(diagnostic.itemName, L"A");
    EXPECT_EQ(diagnostic.nbArgs, 0U);
    EXPECT_EQ(diagnostic.length, 0U);

    EXPECT_THROW(session.expression.setExpression(L"a+1"), ParsingException);
    EXPECT_TRUE(session.run(L"1+1").evaluated);
    EXPECT_FALSE(variables.remove(L"a"));
    EXPECT_FALSE(variables.remove(nullptr));
}

TEST_F(VariablesTest, RemovingBeforeTheFirstTextIsNoFailure)
{
    variables.set(L"a", number(1));
    EXPECT_TRUE(variables.remove(L"a"));
    EXPECT_FALSE(ExpressionDiagnostics(session.expression).hasFailed());
}

TEST_F(VariablesTest, APendingAssignmentDefinesARemovedNameAnew)
{
    variables.set(L"a", number(1));
    ASSERT_TRUE(session.expression.setExpression(L"a=5"));
    EXPECT_TRUE(variables.remove(L"a"));
    EXPECT_EQ(evaluate(), 5.0);
    VALTYPE value;
    ASSERT_TRUE(variables.get(L"a", value));
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
    variables.set(L"a", number(1));
    ASSERT_TRUE(session.expression.setExpression(L"a+1"));
    const RefusedName refused[] = {
        {nullptr, 12, L""}, {L"", 12, L""},     {L"12", 13, L""},     {L"1.5", 13, L""},  {L"pi", 14, L"pi"},
        {L"a.b", 15, L"."}, {L"a,b", 15, L","}, {L"a[", 15, L"["},    {L"a b", 15, L" "}, {L"f(x)", 15, L"("},
        {L"a=b", 15, L"="}, {L"a+b", 15, L"+"}, {L"a<=b", 15, L"<="},
    };
    for (const RefusedName& row : refused)
    {
        SCOPED_TRACE(row.name == nullptr ? std::wstring(L"null") : std::wstring(row.name));
        try
        {
            variables.set(row.name, number(2));
            ADD_FAILURE() << "not refused";
        }
        catch (const DefinitionException& exception)
        {
            const SMTDefExcepData& data = exception.entries.front().data;
            EXPECT_EQ(data.exID, row.code);
            EXPECT_EQ(data.itemName, row.name == nullptr ? L"" : row.name);
            EXPECT_EQ(data.conflictItemName, row.conflict);
        }
    }
    EXPECT_EQ(variables.names(), Names{L"a"});
    EXPECT_EQ(evaluate(), 2.0);
}

TEST_F(VariablesTest, EveryNameThatIsTakenCanBeWritten)
{
    for (const wchar_t* name : {L"a", L"sin", L"Pi", L"1e", L"a_b", L"width2", L"\u00e4\u00f6"})
    {
        ASSERT_TRUE(variables.set(name, number(42)));
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
            ExpressionVariables variables(*expression);
            setAnswer = variables.set(L"a", number(9));
            removeAnswer = variables.remove(L"a");
            getAnswer = variables.get(L"a", value);
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
    ExpressionVariables(expression).set(L"a", number(4));
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
    ExpressionVariables(calculator).set(L"a", number(3));
    EXPECT_EQ(ExpressionVariables(copy).names(), Names{L"a"});
    VALTYPE value;
    ASSERT_TRUE(copy.Calculate(L"a*a", value, 100));
    EXPECT_EQ(value.x, 9.0);
    EXPECT_EQ(ExpressionVariables(calculator).usedNames(), Names{L"a"});
}

}
