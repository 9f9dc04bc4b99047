// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TokenTests.cpp - tokens cover every text and agree with the compiler.
#include "mathexpr/EditorServices.h"
#include "mathexpr/Limits.h"
#include "mathexpr/MTExceptions.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/MadeValues.h"
#include "tests/editor/EditorTexts.h"
#include "tests/support/MessageRecorder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>

namespace {

using mathexpr::TextToken;
using mathexpr::TokenKind;

/// The kinds as letters; a blank is itself.
constexpr std::wstring_view letters = L"ncfvhuo(,a= s?";

std::wstring kinds(const MathExpression& expression, const wchar_t* text)
{
    std::wstring all;
    for (const TextToken& token : mathexpr::getTokens(expression, text))
    {
        all += letters[static_cast<std::size_t>(token.kind)];
    }
    return all;
}

/// The tokens of a text, each in angle brackets.
std::wstring pieces(const MathExpression& expression, const std::wstring& text)
{
    std::wstring all;
    for (const TextToken& token : mathexpr::getTokens(expression, text.c_str()))
    {
        all += L'<' + text.substr(token.start, token.length) + L'>';
    }
    return all;
}

TEST(Tokens, HaveTheKindThatTheCompilerGivesAName)
{
    EditedExpression edited({{L"depth", std::nullopt}, {L"d.p", std::nullopt}});
    mathexpr::setVariable(edited.expression, L"width", number(5));
    EXPECT_EQ(kinds(edited.expression, L"width*Width+pi+e+E+sin(2)+depth"), L"vovocoscof(n(oh");
    EXPECT_EQ(kinds(edited.expression, L"sin"), L"u");
    EXPECT_EQ(kinds(edited.expression, L"Sin(1)"), L"u(n(");
    EXPECT_EQ(kinds(edited.expression, L"DEPTH"), L"u");
    EXPECT_EQ(kinds(edited.expression, L"depth+DEPTH"), L"hoh");
    EXPECT_EQ(kinds(edited.expression, L"1.5 1.5.2 .5 2x"), L"u");
    EXPECT_EQ(kinds(edited.expression, L"2[1,2]"), L"usn,ns");
    EXPECT_EQ(kinds(edited.expression, L"2e+3"), L"nsn");
    EXPECT_TRUE(edited.compiles(L"depth"));
    EXPECT_EQ(kinds(edited.expression, L"depth"), L"h");
}

TEST(Tokens, KeepTheBlanksWithinThem)
{
    const EditedExpression edited;
    EXPECT_EQ(pieces(edited.expression, L"  1 000 <  = si n ( 30 ) "),
              L"<  ><1 000>< ><<  =>< ><si n>< ><(>< ><30>< ><)>< >");
    EXPECT_EQ(pieces(edited.expression, L"1.5e + 3"), L"<1.5><e +>< ><3>");
    EXPECT_EQ(pieces(edited.expression, L""), L"");
    EXPECT_EQ(pieces(edited.expression, L"   "), L"<   >");
    EXPECT_TRUE(mathexpr::getTokens(edited.expression, nullptr).empty());
}

TEST(Tokens, RecogniseAssignments)
{
    const EditedExpression edited;
    EXPECT_EQ(kinds(edited.expression, L"a=2"), L"a=n");
    EXPECT_EQ(kinds(edited.expression, L"a=b=2"), L"a=a=n");
    EXPECT_EQ(kinds(edited.expression, L"=2"), L"=n");
    EXPECT_EQ(kinds(edited.expression, L"1+a=2"), L"nou?n");
    EXPECT_EQ(kinds(edited.expression, L"(a=2)"), L"(u?n(");
    EXPECT_EQ(kinds(edited.expression, L"(1)a=2"), L"(n(a=n");
    EXPECT_EQ(kinds(edited.expression, L"sin(1)a=2"), L"f(n(u?n");
    EXPECT_EQ(kinds(edited.expression, L"[1]=2"), L"sns?n");
    EXPECT_EQ(kinds(edited.expression, L"(1+2)=2"), L"(non(=n");
    EXPECT_EQ(kinds(edited.expression, L"1e+2=2"), L"nsn?n");
    EXPECT_EQ(kinds(edited.expression, L"([1]1e+2)=2"), L"(snsnsn(=n");
    EXPECT_EQ(kinds(edited.expression, L"a==2"), L"uon");
}

TEST(Tokens, PairBrackets)
{
    const EditedExpression edited;
    const std::vector<TextToken> tokens = mathexpr::getTokens(edited.expression, L"(1*[2,(3))+ 4)");
    ASSERT_EQ(tokens.size(), 14U);
    EXPECT_EQ(tokens[0].partner, 13U);
    EXPECT_EQ(tokens[3].partner, 9U);  // "[" and ")"
    EXPECT_EQ(tokens[6].partner, 8U);
    EXPECT_EQ(tokens[8].partner, 6U);
    EXPECT_EQ(tokens[9].partner, 3U);
    EXPECT_EQ(tokens[13].partner, 0U);
    EXPECT_EQ(tokens[10].partner, mathexpr::noPartner);
}

TEST(Tokens, HaveTheirNestingDepth)
{
    const EditedExpression edited;
    std::vector<std::uint32_t> depths;
    for (const TextToken& token : mathexpr::getTokens(edited.expression, L"1*( [2] ) ) 3"))
    {
        depths.push_back(token.depth);
    }
    EXPECT_EQ(depths, (std::vector<std::uint32_t>{0, 0, 0, 1, 1, 2, 1, 1, 0, 0, 0, 0, 0}));
}

TEST(Tokens, OfATextBeyondTheLimitAreOne)
{
    EditedExpression edited;
    mathexpr::setLimits(edited.expression, {4, 0, 0});
    EXPECT_EQ(kinds(edited.expression, L"1+22"), L"non");
    EXPECT_EQ(kinds(edited.expression, L"1+222"), L"?");
    const TextToken whole = mathexpr::getTokens(edited.expression, L"1+222").at(0);
    EXPECT_EQ(whole.start, 0U);
    EXPECT_EQ(whole.length, 5U);
    EXPECT_EQ(whole.depth, 0U);
}

/// Compares the tokens of a text with the outcome of compiling it.
void expectAgreement(const TypedText& typed)
{
    EditedExpression edited(typed.host);
    const std::vector<TextToken> tokens = mathexpr::getTokens(edited.expression, typed.text.c_str());
    std::size_t end = 0;
    std::set<std::size_t> begins;
    std::set<std::size_t> ends;
    for (std::size_t index = 0; index < tokens.size(); ++index)
    {
        EXPECT_EQ(tokens[index].start, end);
        EXPECT_NE(tokens[index].length, 0U);
        begins.insert(end);
        end += tokens[index].length;
        ends.insert(end);
        const std::uint32_t partner = tokens[index].partner;
        if (partner != mathexpr::noPartner)
        {
            ASSERT_LT(partner, tokens.size());
            EXPECT_EQ(tokens[partner].partner, index);
            EXPECT_EQ(tokens[partner].depth, tokens[index].depth);
        }
    }
    EXPECT_EQ(end, typed.text.size());

    const auto hasKind = [&](TokenKind kind) {
        return std::any_of(tokens.begin(), tokens.end(), [kind](const TextToken& token) { return token.kind == kind; });
    };
    if (edited.compiles(typed.text))
    {
        EXPECT_FALSE(hasKind(TokenKind::UnknownName));
        EXPECT_FALSE(hasKind(TokenKind::Other));
        std::vector<std::wstring> named;
        std::set<std::wstring> folded;
        for (const TextToken& token : tokens)
        {
            std::wstring name = withoutBlanks(typed.text.substr(token.start, token.length));
            std::wstring lower = name;
            std::transform(lower.begin(), lower.end(), lower.begin(), [](wchar_t each) {
                return each >= L'A' && each <= L'Z' ? static_cast<wchar_t>(each - L'A' + L'a') : each;
            });
            const bool isRead = token.kind == TokenKind::Variable || token.kind == TokenKind::HostName;
            if (isRead && folded.insert(lower).second)
            {
                named.push_back(name);
            }
        }
        EXPECT_EQ(named, mathexpr::getUsedNames(edited.expression));
        return;
    }
    const mathexpr::ExpressionDiagnostic diagnostic = mathexpr::getDiagnostic(edited.expression);
    if (diagnostic.length != 0 && diagnostic.code != mathexpr::ParsingError::NoExpression)
    {
        EXPECT_TRUE(begins.count(diagnostic.start)) << diagnostic.start;
        EXPECT_TRUE(ends.count(diagnostic.start + diagnostic.length)) << diagnostic.start << '+' << diagnostic.length;
    }
    if (diagnostic.kind == mathexpr::ExpressionDiagnostic::Kind::Parsing &&
        (diagnostic.code == mathexpr::ParsingError::UnknownName ||
         diagnostic.code == mathexpr::ParsingError::UnknownFunction))
    {
        const auto unknown = std::find_if(tokens.begin(), tokens.end(),
                                          [](const TextToken& token) { return token.kind == TokenKind::UnknownName; });
        ASSERT_NE(unknown, tokens.end());
        EXPECT_LE(unknown->start, diagnostic.start);
    }
}

TEST(Tokens, CoverEveryTextAndAgreeWithTheCompiler)
{
    const MessageRecorder shown;  // message 19 is shown even in silent mode
    std::size_t count = 0;
    forEachBeginning([&](const TypedText& typed) {
        ++count;
        expectAgreement(typed);
        if (testing::Test::HasFailure() &&
            testing::UnitTest::GetInstance()->current_test_info()->result()->total_part_count() < 20)
        {
            ADD_FAILURE() << typed.where << "\nbeginning of " << typed.text.size();
        }
    });
    EXPECT_GT(count, 9000U);
}

}
