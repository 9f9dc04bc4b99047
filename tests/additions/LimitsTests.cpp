// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LimitsTests.cpp - the host's limits: what they count, and that an exceeded limit leaves everything unchanged.
//
// An expected span is drawn as an underline below the text.
#include "mathexpr/Limits.h"
#include "mathexpr/Variables.h"
#include "tests/additions/Session.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Row
{
    const wchar_t* text;
    std::uint32_t count;  ///< The smallest limit that accepts the text.
    const char* excess;   ///< The underline if the limit is one less.
};

std::uint32_t beginOf(const std::string& underline)
{
    return static_cast<std::uint32_t>(underline.find('^'));
}

std::uint32_t lengthOf(const std::string& underline)
{
    return static_cast<std::uint32_t>(underline.size()) - beginOf(underline);
}

void expectLimit(const Row& row, std::uint32_t mathexpr::ExpressionLimits::*measure, std::uint32_t code)
{
    SCOPED_TRACE(std::wstring(row.text));
    Session session(true);
    mathexpr::setVariable(session.expression, L"x", number(2));
    mathexpr::ExpressionLimits limits;
    limits.*measure = row.count;
    ASSERT_TRUE(mathexpr::setLimits(session.expression, limits));
    EXPECT_TRUE(session.run(row.text).evaluated);
    mathexpr::dropAssignment(session.expression);

    if (row.count == 1)
    {
        return;  // 0 is no limit
    }
    limits.*measure = row.count - 1;
    mathexpr::setLimits(session.expression, limits);
    const Outcome outcome = session.run(row.text);
    ASSERT_TRUE(outcome.parsing);
    EXPECT_EQ(outcome.parsing->exID, code);
    EXPECT_EQ(outcome.parsing->pos, beginOf(row.excess));
    EXPECT_EQ(outcome.parsing->nbArgs, 0U);
    EXPECT_EQ(outcome.messages, std::vector<std::uint32_t>{});
    const mathexpr::ExpressionDiagnostic diagnostic = session.diagnostic();
    EXPECT_EQ(diagnostic.message, 3U);
    EXPECT_EQ(diagnostic.kind, mathexpr::ExpressionDiagnostic::Kind::Parsing);
    EXPECT_EQ(diagnostic.code, code);
    EXPECT_EQ(diagnostic.nbArgs, 0U);
    EXPECT_EQ(diagnostic.start, beginOf(row.excess));
    EXPECT_EQ(diagnostic.length, lengthOf(row.excess));
    EXPECT_EQ(diagnostic.expected, std::uint32_t{mathexpr::Expected::Less});
}

TEST(Limits, TextLengthCountsCharactersAsTyped)
{
    const Row rows[] = {
        // clang-format off
        {L"1+1",        3,
           "  ^"},
        {L" 1 + 1 ",    7,
           "      ^"},
        {L"[1, 2]",     6,
           "     ^"},
        {L"1.5e+3",     6,
           "     ^"},
        {L"2",          1, ""},
        // clang-format on
    };
    for (const Row& row : rows)
    {
        expectLimit(row, &mathexpr::ExpressionLimits::maxTextLength, mathexpr::ParsingError::TextTooLong);
    }
}

TEST(Limits, RecordsCountValuesOperatorsAndCalls)
{
    const Row rows[] = {
        // clang-format off
        {L"2",              1, ""},
        {L"-x",             2,
           " ^"},
        {L"1+x",            3,
           "  ^"},
        {L"a = 1 + 25",     3,
           "        ^^"},
        {L"1+sin(30)",      4,
           "      ^^"},
        {L"[1,2,3]",        4,
           "     ^"},
        {L"[1,2,3]*2",      6,
           "        ^"},
        {L"1.5e+3",         1, ""},
        {L"2 * 1.5e +3",    3,
           "    ^^^^^^^"},
        {L"e*2",            3,
           "  ^"},
        {L"2*e",            3,
           "  ^"},
        {L"--x",            3,
           "  ^"},
        {L"1 < = 2 & 1",    5,
           "          ^"},
        {L"((1))+1",        3,
           "      ^"},
        {L"max(1,2,x)+1e+2", 6,
           "           ^^^^"},
        {L"min(x,2 )  < =3", 5,
           "              ^"},
        {L"x+min(x,2 ) * 1", 7,
           "              ^"},
        // clang-format on
    };
    for (const Row& row : rows)
    {
        expectLimit(row, &mathexpr::ExpressionLimits::maxRecords, mathexpr::ParsingError::TooManyRecords);
    }
}

TEST(Limits, NestingCountsWhatIsOpenAtOnePlace)
{
    const Row rows[] = {
        // clang-format off
        {L"(1)",            1, ""},
        {L"(1)+(2)+(3)",    1, ""},
        {L"[1,2]*(3+x)",    1, ""},
        {L"((1))",          2,
           " ^"},
        {L"sin( [ 1 ]*[1])", 2,
           "     ^"},
        {L"-x-x",           1, ""},
        {L"1 - -x",         1, ""},
        {L"- - x",          2,
           "  ^"},
        {L"2*-(-x)",        3,
           "    ^"},
        {L"-(1)-(2)",       2,
           " ^"},
        {L"-sin(x)+!max(1,-x)", 3,
           "               ^"},
        {L"-(-x)-(-(-x))",  4,
           "         ^"},
        {L"(-1)*(1)",       2,
           " ^"},
        {L"max(-1,-2)",     2,
           "    ^"},
        // clang-format on
    };
    for (const Row& row : rows)
    {
        expectLimit(row, &mathexpr::ExpressionLimits::maxNesting, mathexpr::ParsingError::NestedTooDeep);
    }
}

TEST(Limits, AreOffUntilTheyAreSet)
{
    Session session(true);
    const mathexpr::ExpressionLimits limits = mathexpr::getLimits(session.expression);
    EXPECT_EQ(limits.maxTextLength, 0U);
    EXPECT_EQ(limits.maxRecords, 0U);
    EXPECT_EQ(limits.maxNesting, 0U);
    const std::wstring deep = std::wstring(50'000, L'(') + L"1" + std::wstring(50'000, L')');
    EXPECT_TRUE(session.run(deep.c_str()).evaluated);
}

TEST(Limits, NothingIsDoneBeyondThem)
{
    Session session(false);
    session.host.names[L"h"] = number(1);
    ASSERT_TRUE(mathexpr::setLimits(session.expression, {0, 4, 0}));
    const Outcome outcome = session.run(L"a=h+h*h");
    EXPECT_FALSE(outcome.compiled);
    EXPECT_EQ(outcome.messages, std::vector<std::uint32_t>{3});
    EXPECT_EQ(session.host.asked, std::vector<std::wstring>{});
    EXPECT_TRUE(session.run(L"1+1").evaluated);
    EXPECT_EQ(mathexpr::getVariableNames(session.expression), std::vector<std::wstring>{});
}

TEST(Limits, ATextTooLongIsNotReadToItsEnd)
{
    Session session(true);
    mathexpr::setLimits(session.expression, {10, 0, 0});
    const std::wstring text(10'000'000, L'1');
    EXPECT_TRUE(session.run(text.c_str()).parsing);
    EXPECT_EQ(session.diagnostic().start, 10U);
    EXPECT_EQ(session.diagnostic().itemName, L"");
}

TEST(Limits, OfATextTooLongTheTextBeforeSaysNothing)
{
    Session session(true);
    EXPECT_TRUE(session.run(L"1+2+3+4+5+6+7").evaluated);
    mathexpr::setLimits(session.expression, {10, 0, 0});
    EXPECT_TRUE(session.run(L"7+6+5+4+3+2+1").parsing);
    EXPECT_EQ(session.diagnostic().start, 10U);
    EXPECT_EQ(session.diagnostic().itemName, L"");
}

TEST(Limits, BehindAnEmptyTextNothingIsRead)
{
    Session session(true);
    mathexpr::setLimits(session.expression, {3, 0, 0});
    EXPECT_EQ(session.run(L"\0002+2+2").parsing->exID, std::uint32_t{mathexpr::ParsingError::NoExpression});
}

TEST(Limits, OfTwoExceededAtOnePositionReportTheFirst)
{
    Session session(true);
    mathexpr::setLimits(session.expression, {0, 1, 1});
    EXPECT_EQ(session.run(L"--1").parsing->exID, std::uint32_t{mathexpr::ParsingError::TooManyRecords});
    mathexpr::setLimits(session.expression, {3, 1, 1});
    EXPECT_EQ(session.run(L"--11").parsing->exID, std::uint32_t{mathexpr::ParsingError::TextTooLong});
}

TEST(Limits, UnbalancedTextsAreCountedToo)
{
    Session session(true);
    mathexpr::setLimits(session.expression, {0, 100, 3});
    for (const wchar_t* text : {L")))))1", L"]]]](1", L",,,,", L"1)+2)-3)", L"-)-)-)-", L"====", L"e+e+e+", L"((", L""})
    {
        const Outcome outcome = session.run(text);
        ASSERT_TRUE(outcome.parsing);
        EXPECT_LT(outcome.parsing->exID, 17U) << testing::PrintToString(std::wstring(text));
        mathexpr::dropAssignment(session.expression);
    }
}

TEST(Limits, TextsThatWouldNotCompileAreCountedToo)
{
    const struct
    {
        const wchar_t* text;
        std::uint32_t records;
        std::uint32_t nesting;
        bool isExceeded;
    } rows[] = {
        {L"1e+", 1, 9, false},
        {L"1e++2", 2, 9, true},
        {L"1e++2", 3, 9, false},
        {L"max(-,-1)", 9, 2, false},
    };
    for (const auto& row : rows)
    {
        SCOPED_TRACE(std::wstring(row.text));
        Session session(true);
        mathexpr::setLimits(session.expression, {0, row.records, row.nesting});
        const Outcome outcome = session.run(row.text);
        EXPECT_EQ(outcome.parsing && outcome.parsing->exID >= mathexpr::ParsingError::TextTooLong, row.isExceeded);
    }
}

TEST(Limits, ABracketThatClosesNothingTakesNothingFromTheNesting)
{
    Session session(true);
    mathexpr::setLimits(session.expression, {0, 0, 1});
    EXPECT_EQ(session.run(L")+((1))").parsing->exID, std::uint32_t{mathexpr::ParsingError::NestedTooDeep});
    EXPECT_EQ(session.run(L")+(1)").parsing->exID, std::uint32_t{mathexpr::ParsingError::ClosingWithoutOpening});
}

TEST(Limits, ABracketIsTheRecordOfItsPoint)
{
    Session session(true);
    mathexpr::setLimits(session.expression, {0, 2, 0});
    EXPECT_EQ(session.run(L"1+[2,3]").parsing->exID, std::uint32_t{mathexpr::ParsingError::TooManyRecords});
    EXPECT_EQ(session.diagnostic().start, 2U);
    EXPECT_EQ(session.diagnostic().length, 1U);
}

TEST(Limits, OfAOneShotCalculatorAreSharedWithItsCopies)
{
    const MessageRecorder shown;
    CMathExpr calculator;
    CMathExpr copy(calculator);
    ASSERT_TRUE(mathexpr::setLimits(mathexpr::expressionOf(calculator), {3, 0, 0}));
    EXPECT_EQ(mathexpr::getLimits(mathexpr::expressionOf(copy)).maxTextLength, 3U);
    VALTYPE value;
    EXPECT_FALSE(copy.Calculate(L"1+11", value, 100));
    EXPECT_TRUE(copy.Calculate(L"1+1", value, 100));
}

TEST(Limits, CannotBeSetWhileACallWaitsForTheHost)
{
    Session session(false);
    bool answer = true;
    session.shown.whileShown = [&] { answer = mathexpr::setLimits(session.expression, {1, 1, 1}); };
    session.run(L"1+");
    EXPECT_FALSE(answer);
    EXPECT_EQ(mathexpr::getLimits(session.expression).maxTextLength, 0U);
}

}
