// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DiagnosticsTests.cpp - the diagnostic of every failure: its contents, and the span of the typed text.
//
// An expected span is drawn as an underline below the text.
#include "mathexpr/Variables.h"
#include "tests/additions/Session.h"

#include <gtest/gtest.h>

#include <ostream>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

using Kind = mathexpr::ExpressionDiagnostic::Kind;
using mathexpr::Expected::ClosingBracket;
using mathexpr::Expected::End;
using mathexpr::Expected::InDomain;
using mathexpr::Expected::KnownName;
using mathexpr::Expected::NewName;
using mathexpr::Expected::Number;
using mathexpr::Expected::Operator;
using mathexpr::Expected::OtherCount;
using mathexpr::Expected::Point;
using mathexpr::Expected::SameKind;
using mathexpr::Expected::Separator;
using mathexpr::Expected::SmallerNumber;
using mathexpr::Expected::Value;

constexpr std::uint32_t inBracket = Operator | ClosingBracket | Separator;
constexpr std::uint32_t outside = Operator | End;

struct Row
{
    const wchar_t* text;
    const char* underline;
    std::uint32_t message;
    Kind kind;
    std::uint32_t code;
    const wchar_t* item;
    std::uint32_t expected;
    std::uint32_t nbArgs = 0;
};

void PrintTo(const Row& row, std::ostream* out)
{
    *out << testing::PrintToString(std::wstring(row.text));
}

// clang-format off
const Row rows[] = {
// text                    message  kind              code  item          expected      arguments
// underline
// ----------------------------------------------------------------------------------------------
{L"(1+2)(3)",
  "     ^",                     3, Kind::Parsing,       0, L"(",         outside},
{L"((1)(2))",
  "    ^",                      3, Kind::Parsing,       0, L"(",         inBracket},
{L"[1] (2)",
  "    ^",                      3, Kind::Parsing,       0, L"(",         outside},
{L"unk)(1)",
  "    ^",                      3, Kind::Parsing,       0, L"(",         outside},
{L"2!3",
  " ^",                         3, Kind::Parsing,       0, L"!",         outside},
{L"(2 ! 3)",
  "   ^",                       3, Kind::Parsing,       0, L"!",         inBracket},
{L"*2",
  "^",                          3, Kind::Parsing,       0, L"*",         Value},
{L"2 + > = 3",
  "    ^^^",                    3, Kind::Parsing,       0, L">=",        Value},
{L"e+1",
  "^^",                         3, Kind::Parsing,       0, L"e+",        Value},
{L"2*e  +1",
  "  ^^^^",                     3, Kind::Parsing,       0, L"e+",        Value},

{L"1+",
  " ^",                         3, Kind::Parsing,       3, L"+",         Value},
{L"1 + 2 < =",
  "      ^^^",                  3, Kind::Parsing,       3, L"<=",        Value},
{L"(1+)",
  "   ^",                       3, Kind::Parsing,       3, L")",         Value},
{L"[1,2-]",
  "     ^",                     3, Kind::Parsing,       3, L"]",         Value},
{L"max(1+,2)",
  "      ^",                    3, Kind::Parsing,       3, L",",         Value},
{L"[1, 2, 3] -",
  "          ^",                3, Kind::Parsing,       3, L"-",         Value},
{L"1.5e+",
  "   ^^",                      3, Kind::Parsing,       3, L"e+",        Value},

{L"1)",
  " ^",                         3, Kind::Parsing,       4, L")",         outside},
{L"[1] + [2]]",
  "         ^",                 3, Kind::Parsing,       4, L"]",         outside},

{L"1,2",
  " ^",                         3, Kind::Parsing,       5, L",",         outside},
{L"1.5e+3 , 2",
  "       ^",                   3, Kind::Parsing,       5, L",",         outside},

{L"(1",
  "^",                          2, Kind::Parsing,       6, L"(",         inBracket},
{L"((1)",
  "^",                          2, Kind::Parsing,       6, L"(",         inBracket},
{L"2 * sin (30",
  "        ^",                  2, Kind::Parsing,       6, L"(",         inBracket},
{L"1+[1,2",
  "  ^",                        2, Kind::Parsing,       6, L"[",         inBracket},

{L"sin(1,2)",
  "^^^",                        3, Kind::Parsing,       7, L"sin",       OtherCount,   2},
{L"[1,0] + 2*di st( [1,2] )",
  "          ^^^^^",            3, Kind::Parsing,       7, L"dist",      OtherCount,   1},

{L"",
  "",                           3, Kind::Parsing,       8, L"",          Value},
{L"   ",
  "^^^",                        3, Kind::Parsing,       8, L"",          Value},
{L" a =",
  "^^^^",                       3, Kind::Parsing,       8, L"a=",        Value},

{L"(1)2",
  "   ^",                       3, Kind::Parsing,       9, L"2",         outside},
{L"sin((1)2",
  "       ^",                   3, Kind::Parsing,       9, L"2",         inBracket},
{L"[1] [2]",
  "    ^",                      3, Kind::Parsing,       9, L"point",     outside},
{L"1e+(2)pi",
  "      ^^",                   3, Kind::Parsing,       9, L"pi",        outside},

{L"foo(1)",
  "^^^",                        4, Kind::Parsing,      10, L"foo",       mathexpr::Expected::Function},
{L"1 + f o o (1)",
  "    ^^^^^",                  4, Kind::Parsing,      10, L"foo",       mathexpr::Expected::Function},
{L"2(3)",
  "^",                          4, Kind::Parsing,      10, L"2",         mathexpr::Expected::Function},
{L"y [1]",
  "^^^",                        4, Kind::Parsing,      10, L"ypoint",    mathexpr::Expected::Function},
{L"[1]+2 [3]",
  "    ^^^",                    4, Kind::Parsing,      10, L"2point",    mathexpr::Expected::Function},

{L"1+unk*2",
  "  ^^^",                      1, Kind::Parsing,      11, L"unk",       KnownName},
{L"[1,2] + [ unk , 3 ]",
  "          ^^^",              1, Kind::Parsing,      11, L"unk",       KnownName},
{L"cube+1",
  "^^^",                        1, Kind::Parsing,      11, L"cub",       KnownName},
{L"cube",
  "^^^^",                       1, Kind::Parsing,      11, L"cube",      KnownName},
{L"+unk",
  "^",                          3, Kind::Parsing,       0, L"+",         Value},
{L"2*[e ,unk]",
  "      ^^^",                  1, Kind::Parsing,      11, L"unk",       KnownName},
{L"1E+5",
  "^^",                         1, Kind::Parsing,      11, L"1E",        KnownName},
{L"1.5e-3",
  "^^^^",                       1, Kind::Parsing,      11, L"1.5e",      KnownName},
{L"2e+3*unk",
  "     ^^^",                   1, Kind::Parsing,      11, L"unk",       KnownName},

{L"()",
  "^^",                         3, Kind::Parsing,      12, L"()",        Value},
{L"sin ( )",
  "    ^^^",                    3, Kind::Parsing,      12, L"()",        Value},
{L"sin()+x",
  "   ^^",                      3, Kind::Parsing,      12, L"()",        Value},
{L"1+[ ]",
  "  ^^^",                      3, Kind::Parsing,      12, L"[]",        Value},
{L"min(1,)",
  "     ^^",                    3, Kind::Parsing,      12, L",)",        Value},
{L"min(1,)*x",
  "     ^^",                    3, Kind::Parsing,      12, L",)",        Value},
{L"[1,2,]",
  "    ^^",                     3, Kind::Parsing,      12, L",]",        Value},
{L"min(,2)",
  "    ^",                      3, Kind::Parsing,      12, L",",         Value},
{L"(1,2)",
  "  ^",                        3, Kind::Parsing,      12, L",",         Value},
{L"1+a=2",
  "   ^",                       3, Kind::Parsing,      12, L"=",         outside},
{L"(a=2)",
  "  ^",                        3, Kind::Parsing,      12, L"=",         inBracket},
{L"1 + = 2",
  "    ^",                      3, Kind::Parsing,      12, L"=",         Value},

{L"2*!3",
  " ^",                         3, Kind::Parsing,      16, L"*",         Value},
{L"[1]+min(1,(2+3,4))",
  "    ^^^",                    3, Kind::Parsing,      16, L"min",       Value},

{L"sin([1,2,3])",
  "^^^",                        3, Kind::Parsing,      15, L"sin",       Number,       1},
{L"2 * s qrt(p)",
  "    ^^^^^",                  3, Kind::Parsing,      15, L"sqrt",      Number,       1},
{L"[1,2,3]*0+[1,0]*cos(p)",
  "                ^^^",        3, Kind::Parsing,      15, L"cos",       Number,       1},

{L"1 + [1,2]",
  "  ^",                        5, Kind::None,          0, L"+",         SameKind,     2},
{L"[1,2] - x",
  "      ^",                    5, Kind::None,          0, L"-",         SameKind,     2},
{L"x+p",
  " ^",                         5, Kind::None,          0, L"+",         SameKind,     2},
{L"1+asin(2)",
  "  ^^^^",                     6, Kind::None,          0, L"asin",      InDomain,     1},
{L"acos( x )",
  "^^^^",                       6, Kind::None,          0, L"acos",      InDomain,     1},
{L"round(3e+9)",
  "^^^^^",                      7, Kind::None,          0, L"round",     InDomain,     1},
{L"trunc(x*1e+10)",
  "^^^^^",                      7, Kind::None,          0, L"trunc",     InDomain,     1},
{L"ln(0)",
  "^^",                         8, Kind::None,          0, L"ln",        InDomain,     1},
{L"2e+3*log(zero)",
  "     ^^^",                   9, Kind::None,          0, L"log",       InDomain,     1},
{L"1e+2 / 0",
  "     ^",                    10, Kind::None,          0, L"/",         InDomain,     2},
{L"(1/0)*2",
  "  ^",                       10, Kind::None,          0, L"/",         InDomain,     2},
{L"2*1/0+x",
  "   ^",                      10, Kind::None,          0, L"/",         InDomain,     2},
{L"(x / zero) + 1",
  "   ^",                      10, Kind::None,          0, L"/",         InDomain,     2},
{L"x/p",
  " ^",                        11, Kind::None,          0, L"/",         Number,       2},
{L"sqrt(zero)+x",
  "^^^^",                      12, Kind::None,          0, L"sqrt",      InDomain,     1},
{L"[1,2,3]^2",
  "       ^",                  13, Kind::None,          0, L"^",         Number,       2},
{L"dist(x,p)",
  "^^^^",                      14, Kind::None,          0, L"dist",      Point,        2},
{L"nor(p,1)",
  "^^^",                       15, Kind::None,          0, L"nor",       Point,        2},
{L"vec(1,2)",
  "^^^",                       16, Kind::None,          0, L"vec",       Point,        2},
{L"1 + vec1(x,x)",
  "    ^^^^",                  17, Kind::None,          0, L"vec1",      Point,        2},
{L"ill(p,p,p,x)",
  "^^^",                       18, Kind::None,          0, L"ill",       Point,        4},

{L"1+2147483648",
  "  ^^^^^^^^^^",              19, Kind::None,          0, L"2147483648", SmallerNumber},
{L"3e+99 999 999 999",
  "   ^^^^^^^^^^^^^^",         19, Kind::None,          0, L"99999999999", SmallerNumber},

{L"pi=3",
  "^^",                         3, Kind::Definition,   14, L"pi",        NewName},
{L"  p i = 3",
  "  ^^^",                      3, Kind::Definition,   14, L"pi",        NewName},
{L"a=5=x",
  "  ^",                        3, Kind::Definition,   13, L"5",         NewName},
{L"1 + a.b",
  "    ^^^",                    3, Kind::Definition,   15, L"a.b",       KnownName},
};
// clang-format on

/// The span that an underline covers.
std::pair<std::uint32_t, std::uint32_t> spanOf(const std::string& underline)
{
    const std::size_t begin = underline.find('^');
    if (begin == std::string::npos)
    {
        return {0, 0};
    }
    return {static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(underline.size() - begin)};
}

void defineNames(Session& session)
{
    mathexpr::setVariable(session.expression, L"x", number(2.5));
    mathexpr::setVariable(session.expression, L"zero", number(0));
    mathexpr::setVariable(session.expression, L"p", point(1, 2, 3));
    session.host.names[L"a.b"] = number(1);
}

class EveryFailure : public testing::TestWithParam<Row>
{};

void expectRecord(const Row& row, const mathexpr::ExpressionDiagnostic& diagnostic)
{
    EXPECT_EQ(diagnostic.message, row.message);
    EXPECT_EQ(diagnostic.kind, row.kind);
    EXPECT_EQ(diagnostic.code, row.code);
    EXPECT_EQ(std::pair(diagnostic.start, diagnostic.length), spanOf(row.underline));
    EXPECT_EQ(diagnostic.itemName, row.item);
    EXPECT_EQ(diagnostic.expected, row.expected);
    EXPECT_EQ(diagnostic.nbArgs, row.nbArgs);
}

TEST_P(EveryFailure, IsShownAndRecorded)
{
    const Row& row = GetParam();
    Session session(false);
    defineNames(session);
    const Outcome outcome = session.run(row.text);

    EXPECT_FALSE(outcome.evaluated);
    const mathexpr::ExpressionDiagnostic diagnostic = session.diagnostic();
    expectRecord(row, diagnostic);
    EXPECT_FALSE(diagnostic.text.empty());
    if (outcome.parsing)
    {
        // Raised in both modes, never shown.
        EXPECT_TRUE(row.code == mathexpr::ParsingError::OperatorMisplaced ||
                    row.code == mathexpr::ParsingError::ArgumentKind);
        EXPECT_EQ(outcome.parsing->exID, row.code);
        EXPECT_EQ(outcome.messages, std::vector<std::uint32_t>{});
    }
    else
    {
        EXPECT_EQ(outcome.messages, std::vector<std::uint32_t>{row.message});
        EXPECT_EQ(outcome.messageTexts, std::vector<std::wstring>{diagnostic.text});
    }
}

TEST_P(EveryFailure, IsRaisedAndRecordedInSilence)
{
    const Row& row = GetParam();
    Session session(true);
    defineNames(session);
    const Outcome outcome = session.run(row.text);

    EXPECT_FALSE(outcome.evaluated);
    const mathexpr::ExpressionDiagnostic diagnostic = session.diagnostic();
    expectRecord(row, diagnostic);
    EXPECT_FALSE(diagnostic.text.empty());
    if (row.kind == Kind::Parsing)
    {
        ASSERT_TRUE(outcome.parsing);
        EXPECT_EQ(outcome.parsing->exID, row.code);
        EXPECT_EQ(outcome.parsing->nbArgs, row.code == mathexpr::ParsingError::NoOverload ? row.nbArgs : 0U);
        if (!outcome.parsing->itemName.empty())
        {
            EXPECT_EQ(outcome.parsing->itemName, row.item);
        }
    }
    else
    {
        EXPECT_FALSE(outcome.parsing);
    }
    if (outcome.definition)
    {
        EXPECT_EQ(row.kind, Kind::Definition);
        EXPECT_EQ(outcome.definition->exID, row.code);
        EXPECT_EQ(outcome.definition->itemName, row.item);
        EXPECT_EQ(outcome.definition->conflictItemName, diagnostic.conflictItemName);
    }
    const std::vector<std::uint32_t> shownInSilence =
        row.message == 19 ? std::vector<std::uint32_t>{19} : std::vector<std::uint32_t>{};
    EXPECT_EQ(outcome.messages, shownInSilence);
}

/// After a failure the object stays usable, and a success clears the diagnostic.
TEST_P(EveryFailure, IsForgottenAfterASuccess)
{
    Session session(true);
    defineNames(session);
    session.run(GetParam().text);
    EXPECT_TRUE(mathexpr::hasFailed(session.expression));
    mathexpr::dropAssignment(session.expression);
    const Outcome outcome = session.run(L"1+1");
    EXPECT_TRUE(outcome.evaluated);
    EXPECT_FALSE(mathexpr::hasFailed(session.expression));
    EXPECT_EQ(session.diagnostic().message, 0U);
}

INSTANTIATE_TEST_SUITE_P(Rows, EveryFailure, testing::ValuesIn(rows));

TEST(Failures, AllCodesAndMessagesAreInTheTable)
{
    std::set<std::uint32_t> codes;
    std::set<std::uint32_t> messages;
    for (const Row& row : rows)
    {
        messages.insert(row.message);
        if (row.kind == Kind::Parsing)
        {
            codes.insert(row.code);
        }
    }
    EXPECT_EQ(codes, (std::set<std::uint32_t>{0, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 15, 16}));
    EXPECT_EQ(messages.size(), 19U);
}

TEST(Failures, CountsOfArgumentsAreThoseOfAllOverloads)
{
    Session session(true);
    session.run(L"rand(1)");
    EXPECT_EQ(session.diagnostic().acceptedArgCounts, (std::vector<std::uint32_t>{0, 2}));
    session.run(L"dist([1,2])");
    EXPECT_EQ(session.diagnostic().acceptedArgCounts, std::vector<std::uint32_t>{2});
    session.run(L"1/0");
    EXPECT_EQ(session.diagnostic().acceptedArgCounts, std::vector<std::uint32_t>{});
}

TEST(Failures, ReportTheConflict)
{
    Session session(true);
    session.run(L"pi=3");
    EXPECT_EQ(session.diagnostic().conflictItemName, L"pi");
    session.host.names[L"a.b"] = number(1);
    session.run(L"a.b");
    EXPECT_EQ(session.diagnostic().conflictItemName, L".");
    session.run(L"1+");
    EXPECT_EQ(session.diagnostic().conflictItemName, L"");
}

TEST(Failures, NullIsAnEmptyText)
{
    Session session(true);
    session.run(nullptr);
    const mathexpr::ExpressionDiagnostic diagnostic = session.diagnostic();
    EXPECT_EQ(diagnostic.code, std::uint32_t{mathexpr::ParsingError::NoExpression});
    EXPECT_EQ(diagnostic.length, 0U);
}

TEST(Failures, ANewObjectHasNone)
{
    Session session(false);
    EXPECT_FALSE(mathexpr::hasFailed(session.expression));
    VALTYPE value;
    EXPECT_FALSE(session.expression.evaluate(value));
    EXPECT_FALSE(mathexpr::hasFailed(session.expression));
}

TEST(Failures, EvaluatingWithoutAProgramKeepsTheDiagnostic)
{
    Session session(true);
    session.run(L"1+");
    VALTYPE value;
    EXPECT_FALSE(session.expression.evaluate(value));
    EXPECT_EQ(session.diagnostic().code, std::uint32_t{mathexpr::ParsingError::OperandMissing});
}

TEST(Failures, APendingNameOfAnEarlierTextHasNoPlace)
{
    Session session(true);
    session.run(L"pi=3");
    const Outcome outcome = session.run(L"1+1");
    EXPECT_TRUE(outcome.compiled);
    EXPECT_FALSE(outcome.evaluated);
    const mathexpr::ExpressionDiagnostic diagnostic = session.diagnostic();
    EXPECT_EQ(diagnostic.kind, Kind::Definition);
    EXPECT_EQ(diagnostic.itemName, L"pi");
    EXPECT_EQ(diagnostic.length, 0U);
}

TEST(Failures, EachEvaluationHasItsOwn)
{
    Session session(false);
    defineNames(session);
    VALTYPE& x = *mathexpr::getVariableAddress(session.expression, L"x");
    ASSERT_TRUE(session.expression.setExpression(L"1/x + sqrt(x)"));
    VALTYPE value;
    x = number(0);
    EXPECT_FALSE(session.expression.evaluate(value));
    EXPECT_EQ(session.diagnostic().message, 10U);
    x = number(-1);
    EXPECT_FALSE(session.expression.evaluate(value));
    EXPECT_EQ(session.diagnostic().message, 12U);
    x = number(4);
    EXPECT_TRUE(session.expression.evaluate(value));
    EXPECT_EQ(session.diagnostic().message, 0U);
    x = point(1, 2, 3);
    EXPECT_FALSE(session.expression.evaluate(value));
    EXPECT_EQ(session.diagnostic().message, 11U);
}

TEST(Failures, CanBeReadWhileTheMessageIsShown)
{
    Session session(false);
    std::uint32_t code = 0;
    session.shown.whileShown = [&] { code = session.diagnostic().code; };
    session.run(L"1+unk");
    EXPECT_EQ(code, std::uint32_t{mathexpr::ParsingError::UnknownName});
}

TEST(Failures, OfAnotherObjectWhileTheMessageIsShownDoNotMix)
{
    Session session(false);
    MathExpression other(true, nullptr);
    session.shown.whileShown = [&] { EXPECT_FALSE(other.setExpression(L"sqrt(0)")); };
    session.run(L"1/0");
    EXPECT_EQ(session.diagnostic().message, 10U);
    EXPECT_EQ(mathexpr::getDiagnostic(other).message, 12U);
}

TEST(Failures, ExceptionsOfTheHostLeaveNoDiagnostic)
{
    class Throwing final : public IMathExprService
    {
    public:
        bool lookupValue(const wchar_t*, VALTYPE&) const override { throw std::runtime_error("host"); }
    };
    const Throwing host;
    MathExpression expression(true, &host);
    EXPECT_THROW(expression.setExpression(L"1+"), mathexpr::ParsingException);
    EXPECT_THROW(expression.setExpression(L"unk"), std::runtime_error);
    EXPECT_FALSE(mathexpr::hasFailed(expression));
}

TEST(Failures, OfAOneShotCalculator)
{
    const MessageRecorder shown;
    CMathExpr calculator;
    VALTYPE value;
    EXPECT_FALSE(calculator.Calculate(L"1 + 70", value, 10));
    const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(mathexpr::expressionOf(calculator));
    EXPECT_EQ(diagnostic.message, 19U);
    EXPECT_EQ(std::pair(diagnostic.start, diagnostic.length), spanOf("    ^^"));
}

}
