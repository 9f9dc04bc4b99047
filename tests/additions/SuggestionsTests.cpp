// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// SuggestionsTests.cpp - suggestions for unknown names.
#include "mathexpr/Variables.h"
#include "tests/additions/Session.h"

#include <gtest/gtest.h>

#include <chrono>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using Names = std::vector<std::wstring>;

Names suggested(Session& session, const wchar_t* text)
{
    session.run(text);
    return session.diagnostic().suggestions;
}

class Offered final : public mathexpr::IMathExprNameSource
{
public:
    explicit Offered(Names offered) : names(std::move(offered)) {}

    const wchar_t* getName(std::uint32_t index) const override
    {
        return index < names.size() ? names[index].c_str() : nullptr;
    }

private:
    Names names;
};

TEST(Suggestions, ForAFunction)
{
    Session session(true);
    EXPECT_EQ(suggested(session, L"dst([1,2],[3,4])"), Names{L"dist"});    // left out
    EXPECT_EQ(suggested(session, L"distt([1,2],[3,4])"), Names{L"dist"});  // put in
    EXPECT_EQ(suggested(session, L"dixt([1,2],[3,4])"), Names{L"dist"});   // changed
    EXPECT_EQ(suggested(session, L"idst([1,2],[3,4])"), Names{L"dist"});   // swapped
    EXPECT_EQ(suggested(session, L"DIST([1,2],[3,4])"), Names{L"dist"});   // another case
    EXPECT_EQ(suggested(session, L"ropund(2.5)"), (Names{L"round"}));
    EXPECT_EQ(suggested(session, L"xyzzyx(1)"), Names{});
}

TEST(Suggestions, AreThreeAtMostAndTheNearestFirst)
{
    Session session(true);
    EXPECT_EQ(suggested(session, L"sind(30)"), (Names{L"sin", L"sinh"}));
    const Names names = suggested(session, L"m2n(30)");
    ASSERT_EQ(names.size(), 3U);
    EXPECT_EQ(names.front(), L"min");
}

TEST(Suggestions, OfAnOverloadedFunctionComeOnce)
{
    Session session(true);
    EXPECT_EQ(suggested(session, L"maxx(1,2)"), Names{L"max"});
}

TEST(Suggestions, ForAName)
{
    Session session(true);
    mathexpr::setVariable(session.expression, L"width", number(1));
    EXPECT_EQ(suggested(session, L"Pi*2"), (Names{L"pi", L"PI"}));
    EXPECT_EQ(suggested(session, L"wdith*2"), Names{L"width"});
    EXPECT_EQ(suggested(session, L"sin+2"), (Names{L"sin", L"asin", L"sinh"}));  // the brackets were forgotten
    EXPECT_EQ(suggested(session, L"q+2"), Names{});
    mathexpr::setVariable(session.expression, L"height", number(1));
    mathexpr::setVariable(session.expression, L"k", number(1));
    EXPECT_EQ(suggested(session, L"wdith*2"), Names{L"width"});
    EXPECT_EQ(suggested(session, L"heigth*2"), Names{L"height"});
    EXPECT_EQ(suggested(session, L"kw+2"), Names{});  // nothing of "k" would be left
}

TEST(Suggestions, ForgiveMoreErrorsInLongerNames)
{
    Session session(true);
    for (const wchar_t* name : {L"zw", L"zwxy", L"zwxyv", L"zwxyvuts", L"zwxyvutsr"})
    {
        mathexpr::setVariable(session.expression, name, number(1));
    }
    EXPECT_EQ(suggested(session, L"z*2"), Names{});
    EXPECT_EQ(suggested(session, L"zq*2"), Names{L"zw"});
    EXPECT_EQ(suggested(session, L"zwqq*2"), Names{});
    EXPECT_EQ(suggested(session, L"zwqqv*2"), Names{L"zwxyv"});
    EXPECT_EQ(suggested(session, L"zwqqquts*2"), Names{});
    EXPECT_EQ(suggested(session, L"zwqqqutsr*2"), Names{L"zwxyvutsr"});
    EXPECT_EQ(suggested(session, L"zwqqqqtsr*2"), Names{});
}

TEST(Suggestions, BeforeABracketAreFunctionsOnly)
{
    Session session(true);
    mathexpr::setVariable(session.expression, L"width", number(1));
    EXPECT_EQ(suggested(session, L"wdith(2)"), Names{});
}

TEST(Suggestions, OfTheHost)
{
    Session session(true);
    const Offered offered({L"height", L"weight"});
    mathexpr::setNameSource(session.expression, &offered);
    EXPECT_EQ(suggested(session, L"heigth"), (Names{L"height", L"weight"}));
    EXPECT_EQ(suggested(session, L"eight"), (Names{L"height", L"weight"}));
    mathexpr::setNameSource(session.expression, nullptr);
    EXPECT_EQ(suggested(session, L"eight"), Names{});
}

TEST(Suggestions, AreNotMadeForOtherFailures)
{
    Session session(true);
    EXPECT_EQ(suggested(session, L"sin(1,2)"), Names{});
    EXPECT_EQ(suggested(session, L"1+"), Names{});
}

TEST(Suggestions, WhatTheHostThrowsPasses)
{
    class Throwing final : public mathexpr::IMathExprNameSource
    {
    public:
        const wchar_t* getName(std::uint32_t) const override { throw std::runtime_error("host"); }
    };
    Session session(true);
    const Throwing source;
    mathexpr::setNameSource(session.expression, &source);
    session.run(L"unk");
    EXPECT_THROW(session.diagnostic(), std::runtime_error);
    EXPECT_TRUE(session.run(L"1+1").evaluated);
}

/// A full table of edit distances would take hours for names of this length.
TEST(Suggestions, OfLongNamesTakeLinearTime)
{
    Session session(true);
    const std::wstring longName(1'000'000, L'x');
    const Offered offered({longName + L"y"});
    mathexpr::setNameSource(session.expression, &offered);
    EXPECT_EQ(suggested(session, longName.c_str()), Names{longName + L"y"});
}

}
