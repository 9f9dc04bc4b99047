// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FailureTests.cpp - cases that hosts cannot cause: the mapping of every span of the rewritten text to the typed text,
// and failures of items outside the vocabulary.
#include "MTParserLib/MTMessage.h"
#include "MTParserLib/MTParserCompiler.h"
#include "MTParserLib/MTParserDefFuncs.h"
#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/text/MTParserPreprocessing.h"

#include <gtest/gtest.h>

#include <memory>
#include <random>
#include <string>
#include <string_view>
#include <vector>

void showMessage(Message::Id) {}

namespace {

std::string spansOf(std::wstring_view typed)
{
    std::wstring rewritten;
    preprocess(typed, rewritten);
    std::string spans;
    for (std::size_t at = 0; at < rewritten.size(); ++at)
    {
        const MTSpan span = typedSpanOf(typed, {at, at + 1});
        spans += (spans.empty() ? "" : " ") + std::to_string(span.begin) + "-" + std::to_string(span.end);
    }
    return spans;
}

TEST(TypedSpans, OfEachRewrittenCharacter)
{
    EXPECT_EQ(spansOf(L"1+2"), "0-1 1-2 2-3");
    EXPECT_EQ(spansOf(L" 1 + 2 "), "1-2 3-4 5-6");
    EXPECT_EQ(spansOf(L"[1]"), "0-1 0-1 0-1 0-1 0-1 0-1 1-2 2-3");
    EXPECT_EQ(spansOf(L"1e+2"), "0-1 1-3 1-3 1-3 1-3 3-4");
    EXPECT_EQ(spansOf(L"1e  + 2"), "0-1 1-5 1-5 1-5 1-5 6-7");
    EXPECT_EQ(spansOf(L"ee++"), "0-1 1-3 1-3 1-3 1-3 3-4");
    EXPECT_EQ(spansOf(L"1E+2"), "0-1 1-2 2-3 3-4");
    EXPECT_EQ(spansOf(L"e "), "0-1");
}

TEST(TypedSpans, OfLongerStretchesIncludeTheBlanksWithin)
{
    const std::wstring_view typed = L"2 * [ 1 , 2e + 3 ]";
    const auto span = [&](std::size_t begin, std::size_t end) {
        const MTSpan found = typedSpanOf(typed, {begin, end});
        return std::wstring(typed.substr(found.begin, found.end - found.begin));
    };
    // The rewritten text is 2*point(1,2*10^3).
    EXPECT_EQ(span(0, 2), L"2 *");
    EXPECT_EQ(span(2, 8), L"[");
    EXPECT_EQ(span(7, 9), L"[ 1");
    EXPECT_EQ(span(8, 12), L"1 , 2e +");
    EXPECT_EQ(span(11, 12), L"e +");
    EXPECT_EQ(span(15, 17), L"3 ]");
    EXPECT_EQ(span(0, 17), std::wstring(typed));
}

/// A span of the rewritten text maps to the typed characters that it replaces.
TEST(TypedSpans, CoverTheTextInOrder)
{
    std::mt19937 generator(20);
    const std::wstring_view alphabet = L"e+[] 1(e+ ";
    for (int round = 0; round < 20'000; ++round)
    {
        std::wstring typed;
        for (std::size_t length = generator() % 12; length > 0; --length)
        {
            typed += alphabet[generator() % alphabet.size()];
        }
        std::wstring rewritten;
        preprocess(typed, rewritten);
        std::wstring again;
        MTSpan last;
        for (std::size_t at = 0; at < rewritten.size(); ++at)
        {
            const MTSpan span = typedSpanOf(typed, {at, at + 1});
            ASSERT_TRUE(at == 0 || span.begin >= last.end || (span.begin == last.begin && span.end == last.end));
            if (at == 0 || span.begin != last.begin)
            {
                std::wstring piece;
                preprocess(std::wstring_view(typed).substr(span.begin, span.end - span.begin), piece);
                again += piece;
            }
            last = span;
        }
        ASSERT_EQ(again, rewritten) << testing::PrintToString(typed);
    }
}

/// A function of one number; the test decides whether it accepts or refuses.
class Told final : public IMathFunction
{
public:
    enum class What
    {
        RefuseWithoutReason,
        RaiseOwnCode
    };

    explicit Told(What whatToDo) : what(whatToDo) {}

    std::wstring getHelpString() const override { return L"told(x)"; }
    std::wstring getDescription() const override { return L"Does as it is told"; }
    std::wstring getSymbol() const override { return L"told"; }
    std::uint32_t getNbArgs() const override { return 1; }
    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE&, bool) const override
    {
        if (what == What::RaiseOwnCode)
        {
            SMTParsingExcepData data;
            data.exID = 77;
            data.itemName = L"own";
            throw mathexpr::ParsingException(1, 0, L"test", data);
        }
        return false;
    }

private:
    What what;
};

class ForeignItem : public testing::Test
{
protected:
    void define(Told::What what)
    {
        registrar.setSyntax({L'.', L',', L'[', L']'});
        registerVocabulary(registrar);
        registrar.defineFunction(new Told(what), true);
        compiler = std::make_unique<MTParserCompiler>(registrar, compilation, false, nullptr);
    }

    MTParserRegistrar registrar;
    MTCompilation compilation;
    std::unique_ptr<MTParserCompiler> compiler;
    std::wstring assignTarget;
};

TEST_F(ForeignItem, ThatRefusesWithoutAReasonHasTheGeneralMessage)
{
    define(Told::What::RefuseWithoutReason);
    EXPECT_FALSE(compiler->compile(L"1+sqrt(0)", {}, assignTarget));
    EXPECT_EQ(compilation.failure.message, Message::SqrtDomain);
    EXPECT_FALSE(compiler->compile(L"1+told(2)", {}, assignTarget));
    EXPECT_EQ(compilation.failure.message, Message::InvalidExpression);
    EXPECT_EQ(compilation.failure.expected, 0U);
    EXPECT_EQ(compilation.failure.span.begin, 2U);
    EXPECT_EQ(compilation.failure.span.end, 6U);
}

TEST_F(ForeignItem, ThatRaisesAnotherCodeIsRecordedWithIt)
{
    define(Told::What::RaiseOwnCode);
    EXPECT_THROW(compiler->compile(L"told(2)", {}, assignTarget), mathexpr::ParsingException);
    EXPECT_EQ(compilation.failure.kind, mathexpr::ExpressionDiagnostic::Kind::Parsing);
    EXPECT_EQ(compilation.failure.code, 77U);
    EXPECT_EQ(compilation.failure.expected, 0U);
    EXPECT_EQ(compilation.failure.itemName, L"own");
}

}
