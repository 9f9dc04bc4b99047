// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TypingTests.cpp - the failure of a text, its correction, the call at a cursor, and the item under it.
#include "mathexpr/EditorServices.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/Limits.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/MadeValues.h"
#include "tests/editor/EditorTexts.h"
#include "tests/language/Values.h"
#include "tests/support/MessageRecorder.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

using mathexpr::CallSignature;
using mathexpr::HostQuestions;
using mathexpr::HoverInfo;
using mathexpr::TokenKind;
using mathexpr::TypingState;
using mathexpr::ValueKind;

/// An object with the number width and the point origin, and a host that offers depth with the value 5.
class Typing : public testing::Test
{
public:
    Typing() : edited({{L"depth", number(7)}})
    {
        mathexpr::setVariable(edited.expression, L"width", number(5));
        mathexpr::setVariable(edited.expression, L"origin", point(1, 2, 3));
    }

    TypingState state(const wchar_t* text) const { return mathexpr::diagnoseText(edited.expression, text).state; }

    EditedExpression edited;
};

TEST_F(Typing, IsUnfinishedWhereSomethingHasToFollow)
{
    for (const wchar_t* const text :
         {L"",        L"  ",  L"1+",    L"2*(",          L"sin(",         L"sin(30",       L"si",
          L"sin",     L"wid", L"1+dep", L"dist(origin,", L"dist([0,0,0]", L"ill(origin,[", L"min(1,2",
          L"a=",      L"a=-", L"1!",    L"(width=",      L"[1,2",         L"1e+",          L"2*(3+(4",
          L"pi*(1-2", L"!",   L"1.5e",  L"total",        L"sin(origin",   L"dist(depth,"})
    {
        EXPECT_EQ(state(text), TypingState::Unfinished) << testing::PrintToString(std::wstring(text));
    }
}

TEST_F(Typing, IsWrongWhereNothingHelps)
{
    for (const wchar_t* const text :
         {L"1+)", L")", L"sin()", L"1+xyzzy", L"xyzzy(", L"1 2 +*", L"(1)(2", L"dist(1,2)", L"sin(origin)", L"1/0",
          L"1,2", L"dist(1,2,3", L"wid+1", L"(a=2)", L"2147483648", L"1.2.3"})
    {
        EXPECT_NE(state(text), TypingState::Unfinished) << testing::PrintToString(std::wstring(text));
    }
    EXPECT_EQ(state(L"1+)"), TypingState::Wrong);
    EXPECT_EQ(state(L"wid+1"), TypingState::Wrong);
    EXPECT_EQ(state(nullptr), TypingState::Unfinished);
    EXPECT_EQ(state(L"width*2"), TypingState::Complete);
    EXPECT_EQ(state(L"depth"), TypingState::Complete);
    EXPECT_EQ(edited.host.lookupCount, 0U);
}

TEST(TypingDiagnostics, AskTheHostOnlyWhenTheyMay)
{
    EditedExpression edited;
    const EditorHost host(Bindings{{L"hidden", number(1)}});
    const MathExpression expression(true, &host);
    EXPECT_EQ(mathexpr::diagnoseText(expression, L"1+hidden").state, TypingState::Wrong);
    EXPECT_EQ(host.lookupCount, 0U);
    EXPECT_EQ(mathexpr::diagnoseText(expression, L"1+hidden", HostQuestions::Allowed).state, TypingState::Complete);
    EXPECT_EQ(host.lookupCount, 1U);
    EXPECT_EQ(mathexpr::diagnoseText(expression, L"1+unknown", HostQuestions::Allowed).state, TypingState::Wrong);
    EXPECT_TRUE(mathexpr::getVariableNames(expression).empty());
}

TEST_F(Typing, KeepsTheLimitsAndTheGreatestInteger)
{
    mathexpr::setLimits(edited.expression, {1, 0, 0});
    EXPECT_EQ(state(L""), TypingState::Unfinished);
    EXPECT_EQ(state(L"-"), TypingState::Wrong);  // nothing that could follow is accepted
    mathexpr::setLimits(edited.expression, {10, 3, 1});
    EXPECT_EQ(mathexpr::diagnoseText(edited.expression, L"1+2+3+4+5+6").failure.code,
              mathexpr::ParsingError::TextTooLong);
    EXPECT_EQ(mathexpr::diagnoseText(edited.expression, L"1+2+3").failure.code, mathexpr::ParsingError::TooManyRecords);
    EXPECT_EQ(mathexpr::diagnoseText(edited.expression, L"((1))").failure.code, mathexpr::ParsingError::NestedTooDeep);
    const MessageRecorder shown;
    CMathExpr calculator;
    VALTYPE value;
    calculator.Calculate(L"1", value, 5);
    EXPECT_EQ(mathexpr::diagnoseText(mathexpr::expressionOf(calculator), L"6").failure.message, 19U);
    EXPECT_TRUE(shown.ids.empty());
}

TEST_F(Typing, OffersTheFixOfTheHint)
{
    const std::vector<mathexpr::TextFix> fixes = mathexpr::getFixes(edited.expression, L"1+2pi");
    ASSERT_EQ(fixes.size(), 1U);
    std::wstring text = L"1+2pi";
    text.replace(fixes[0].edit.span.start, fixes[0].edit.span.length, fixes[0].edit.replacement);
    EXPECT_EQ(text, L"1+2*pi");
    EXPECT_FALSE(fixes[0].title.empty());
    EXPECT_EQ(mathexpr::getFixes(edited.expression, L"widht").at(0).edit.replacement, L"width");
    EXPECT_EQ(mathexpr::getFixes(edited.expression, L"dephts").at(0).edit.replacement, L"depth");
    EXPECT_TRUE(mathexpr::getFixes(edited.expression, L"1+2").empty());
    EXPECT_TRUE(mathexpr::getFixes(edited.expression, L"1+").empty());
}

TEST(TypingDiagnostics, HaveFixesThatCompile)
{
    const MessageRecorder shown;
    std::size_t count = 0;
    forEachBeginning([&](const TypedText& typed) {
        EditedExpression edited(typed.host);
        for (const mathexpr::TextFix& fix : mathexpr::getFixes(edited.expression, typed.text.c_str()))
        {
            ++count;
            std::wstring fixed = typed.text;
            fixed.replace(fix.edit.span.start, fix.edit.span.length, fix.edit.replacement);
            EXPECT_NE(fixed, typed.text) << typed.where;
            EXPECT_FALSE(fix.title.empty()) << typed.where;
            EXPECT_EQ(mathexpr::diagnoseText(edited.expression, fixed.c_str()).state, TypingState::Complete)
                << typed.where << '\n'
                << std::string(fixed.begin(), fixed.end());
            EXPECT_TRUE(edited.compiles(fixed)) << typed.where << '\n' << std::string(fixed.begin(), fixed.end());
        }
    });
    EXPECT_GT(count, 100U);
}

/// The diagnostic is the same as when compiling, and the object does not change.
TEST(TypingDiagnostics, AreThoseOfCompiling)
{
    const MessageRecorder shown;
    std::size_t unfinished = 0;
    forEachBeginning([&](const TypedText& typed) {
        EditedExpression edited(typed.host);
        const EditorHost* const host = &edited.host;
        const mathexpr::TypingDiagnostic found = mathexpr::diagnoseText(edited.expression, typed.text.c_str());
        EXPECT_EQ(host->lookupCount, 0U);
        EXPECT_FALSE(mathexpr::hasFailed(edited.expression));
        EXPECT_TRUE(mathexpr::getVariableNames(edited.expression).empty());
        EXPECT_TRUE(shown.ids.empty());
        const bool compiles = edited.compiles(typed.text);
        const_cast<MessageRecorder&>(shown).take();
        EXPECT_EQ(found.state == TypingState::Complete, compiles) << typed.where;
        unfinished += found.state == TypingState::Unfinished ? 1 : 0;
        const mathexpr::ExpressionDiagnostic expected = mathexpr::getDiagnostic(edited.expression);
        EXPECT_EQ(found.failure.message, expected.message) << typed.where;
        EXPECT_EQ(found.failure.kind, expected.kind);
        EXPECT_EQ(found.failure.code, expected.code);
        EXPECT_EQ(found.failure.start, expected.start);
        EXPECT_EQ(found.failure.length, expected.length);
        EXPECT_EQ(found.failure.itemName, expected.itemName);
        EXPECT_EQ(found.failure.hints, expected.hints);
        EXPECT_EQ(found.failure.fix.has_value(), expected.fix.has_value());
    });
    EXPECT_GT(unfinished, 2000U);
}

TEST(TypingDiagnostics, CallNoBeginningOfAGoodTextWrong)
{
    const MessageRecorder shown;
    std::size_t count = 0;
    for (const TypedText& whole : languageTexts())
    {
        EditedExpression edited(whole.host);
        VALTYPE value;
        const bool assignsLate = whole.text.find(L")x=") != std::wstring::npos;  // needs an assignment sign after it
        if (whole.text.size() > 40 || assignsLate || !edited.compiles(whole.text))
        {
            continue;
        }
        try
        {
            if (!edited.expression.evaluate(value))
            {
                continue;
            }
        }
        catch (const mathexpr::ParsingException&)
        {
            continue;
        }
        for (std::size_t length = 0; length < whole.text.size(); ++length)
        {
            const mathexpr::TypingDiagnostic found =
                mathexpr::diagnoseText(edited.expression, whole.text.substr(0, length).c_str());
            if (found.failure.kind == mathexpr::ExpressionDiagnostic::Kind::Parsing &&
                found.failure.code != mathexpr::ParsingError::ArgumentKind)
            {
                ++count;
                EXPECT_EQ(found.state, TypingState::Unfinished) << whole.where << "\nat " << length;
            }
        }
    }
    EXPECT_GT(count, 1000U);
}

TEST_F(Typing, FindsTheSignatureAroundTheCursor)
{
    const CallSignature signature = mathexpr::getSignature(edited.expression, L"1+dist([1,2],si n(3), x", 23);
    EXPECT_EQ(signature.function, L"dist");
    EXPECT_EQ(signature.name.start, 2U);
    EXPECT_EQ(signature.name.length, 4U);
    EXPECT_EQ(signature.argument, 2U);
    ASSERT_EQ(signature.overloads.size(), 1U);
    EXPECT_EQ(signature.overloads[0].help, L"dist(x,y)");
    EXPECT_EQ(signature.overloads[0].description, L"Distance between two endpoints");
    EXPECT_EQ(signature.overloads[0].parameters, (std::vector<std::wstring>{L"x", L"y"}));
    EXPECT_EQ(signature.overloads[0].parameterKind, ValueKind::Point);
    EXPECT_EQ(signature.wanted, ValueKind::Unknown);  // there is no third argument

    const wchar_t* const text = L"dist([1,2],(si n(3";
    EXPECT_EQ(mathexpr::getSignature(edited.expression, text, 0).function, L"");
    EXPECT_EQ(mathexpr::getSignature(edited.expression, text, 5).wanted, ValueKind::Point);
    EXPECT_EQ(mathexpr::getSignature(edited.expression, text, 8).function, L"point");
    EXPECT_EQ(mathexpr::getSignature(edited.expression, text, 8).argument, 1U);
    EXPECT_EQ(mathexpr::getSignature(edited.expression, text, 12).function, L"dist");
    EXPECT_EQ(mathexpr::getSignature(edited.expression, text, 12).argument, 1U);
    EXPECT_EQ(mathexpr::getSignature(edited.expression, text, 99).function, L"sin");
    EXPECT_EQ(mathexpr::getSignature(edited.expression, text, 99).unit, L"degree");
    EXPECT_EQ(mathexpr::getSignature(edited.expression, text, 99).name.length, 4U);
    EXPECT_EQ(mathexpr::getSignature(edited.expression, L"i2mm(", 5).unit, L"inch");
    EXPECT_EQ(mathexpr::getSignature(edited.expression, L"ln(", 3).unit, L"");
    EXPECT_EQ(mathexpr::getSignature(edited.expression, L"xyzzy(", 6).function, L"");
    EXPECT_EQ(mathexpr::getSignature(edited.expression, L"sin(3))+1e+(", 12).function, L"");
    EXPECT_EQ(mathexpr::getSignature(edited.expression, nullptr, 3).function, L"");
}

TEST_F(Typing, ChoosesTheOverload)
{
    const auto active = [&](const wchar_t* text) {
        const CallSignature signature = mathexpr::getSignature(edited.expression, text, 99);
        return signature.overloads.at(signature.activeOverload).help;
    };
    EXPECT_EQ(active(L"min(1"), L"min(x,y)");
    EXPECT_EQ(active(L"min(1,2,"), L"min(x,y,z)");
    EXPECT_EQ(active(L"min(1,2,3,4"), L"min(v1,v2,v3,...)");
    EXPECT_EQ(active(L"sin(1,2"), L"sin(x)");
    EXPECT_EQ(active(L"rand("), L"rand(min, max)");
    EXPECT_EQ(mathexpr::getSignature(edited.expression, L"abs(", 4).wanted, ValueKind::Either);
}

TEST_F(Typing, ExplainsWhatIsUnderTheCursor)
{
    const wchar_t* const text = L"2*sqrt( width*5 ) -depth";
    const HoverInfo function = mathexpr::getHover(edited.expression, text, 3);
    EXPECT_EQ(function.kind, TokenKind::Function);
    EXPECT_EQ(function.span.start, 2U);
    EXPECT_EQ(function.span.length, 4U);
    EXPECT_EQ(function.help, L"sqrt(x)");
    EXPECT_EQ(function.description, L"Square root");
    EXPECT_FALSE(function.domain.empty());
    EXPECT_EQ(function.example, L"sqrt(2)");
    EXPECT_EQ(function.exampleValue->x, std::sqrt(2.0));
    EXPECT_EQ(function.value->x, 5.0);
    EXPECT_EQ(function.valueSpan.start, 2U);
    EXPECT_EQ(function.valueSpan.length, 15U);
    for (const std::uint32_t bracket : {6U, 16U})
    {
        EXPECT_EQ(mathexpr::getHover(edited.expression, text, bracket).value->x, 5.0);
        EXPECT_EQ(mathexpr::getHover(edited.expression, text, bracket).valueSpan.start, 2U);
    }
    EXPECT_EQ(mathexpr::getHover(edited.expression, text, 0).value->x, 2.0);
    EXPECT_EQ(mathexpr::getHover(edited.expression, text, 1).help, L"x * y");
    EXPECT_EQ(mathexpr::getHover(edited.expression, text, 9).value->x, 5.0);
    EXPECT_EQ(mathexpr::getHover(edited.expression, text, 9).kind, TokenKind::Variable);
    EXPECT_EQ(mathexpr::getHover(edited.expression, text, 15).name, L"5");
    EXPECT_EQ(mathexpr::getHover(edited.expression, text, 18).help, L"x - y");
    EXPECT_FALSE(mathexpr::getHover(edited.expression, text, 19).value);
    EXPECT_EQ(edited.host.lookupCount, 0U);
    EXPECT_EQ(mathexpr::getHover(edited.expression, text, 99, HostQuestions::Allowed).value->x, 7.0);
    EXPECT_EQ(edited.host.lookupCount, 1U);
}

TEST_F(Typing, ExplainsBrokenTexts)
{
    const auto hover = [&](const wchar_t* text, std::uint32_t cursor) {
        return mathexpr::getHover(edited.expression, text, cursor);
    };
    EXPECT_EQ(hover(nullptr, 0).span.length, 0U);
    EXPECT_EQ(hover(L"   ", 1).span.length, 0U);
    EXPECT_EQ(hover(L"1  2", 2).name, L"12");
    EXPECT_EQ(hover(L"1 +  2", 4).span.length, 0U);
    EXPECT_EQ(hover(L" -1", 1).help, L"-x");
    EXPECT_EQ(hover(L"-1", 0).help, L"-x");
    EXPECT_EQ(hover(L"2 - 1", 2).help, L"x - y");
    EXPECT_EQ(hover(L"2*-1", 2).help, L"-x");
    EXPECT_EQ(hover(L"min(1,(2),3,4", 0).help, L"min(v1,v2,v3,...)");
    EXPECT_EQ(hover(L"min(1,(2),3,4", 0).example, L"min(2,3,4)");
    EXPECT_FALSE(hover(L"min(1,(2),3,4", 0).value);
    EXPECT_FALSE(hover(L"min(1", 3).value);
    EXPECT_EQ(hover(L"min(1,max(2,3,4))", 0).help, L"min(x,y)");
    EXPECT_EQ(hover(L"min(1,2)+min(3,4,5)", 9).help, L"min(x,y,z)");
    EXPECT_EQ(hover(L"2*( 1+2)", 2).value->x, 3.0);
    EXPECT_EQ(hover(L"2* ( 1+2)", 3).valueSpan.start, 3U);
    EXPECT_EQ(hover(L"[1,2]", 4).value->type, 1);
    EXPECT_EQ(hover(L"sin (30)", 4).valueSpan.start, 0U);
    EXPECT_EQ(hover(L"pi", 1).kind, TokenKind::Constant);
    EXPECT_TRUE(hover(L"pi", 1).value.has_value());
    EXPECT_EQ(hover(L"xyzzy", 1).kind, TokenKind::UnknownName);
    EXPECT_FALSE(hover(L"(1/0)", 0).value);
    EXPECT_FALSE(hover(L"rand(1,2)", 0).value);
    EXPECT_FALSE(hover(L"rand(1,2)", 0).exampleValue);
    EXPECT_FALSE(hover(L"(depth+1)", 0).value);
    EXPECT_EQ(hover(L"a=2", 0).kind, TokenKind::AssignedName);
    EXPECT_EQ(hover(L"asin(1)", 0).example, L"asin(0.5)");
    EXPECT_EQ(hover(L"dist(origin,origin)", 0).example, L"dist([0,0,0],[2,2,0])");
}

TEST_F(Typing, ExplainsAndSignsEveryText)
{
    forEachBeginning([&](const TypedText& typed) {
        for (std::uint32_t cursor = 0; cursor <= typed.text.size();
             cursor += 1 + static_cast<std::uint32_t>(typed.text.size()) / 8)
        {
            const HoverInfo info = mathexpr::getHover(edited.expression, typed.text.c_str(), cursor);
            EXPECT_LE(info.span.start, cursor);
            EXPECT_LE(info.span.start + info.span.length, typed.text.size());
            EXPECT_LE(info.valueSpan.start + info.valueSpan.length, typed.text.size());
            const CallSignature signature = mathexpr::getSignature(edited.expression, typed.text.c_str(), cursor);
            EXPECT_LE(signature.name.start + signature.name.length, cursor);
            EXPECT_EQ(signature.function.empty(), signature.overloads.empty());
        }
    });
}

/// An item of the host, which must not be called to show a value.
class HostItem final : public IMathFunction
{
public:
    std::wstring getHelpString() const override { return L"hosts2x(x)"; }
    std::wstring getDescription() const override { return L"the host's"; }
    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE&, bool) const override
    {
        ADD_FAILURE() << "the host's code has run";
        return true;
    }
    std::wstring getSymbol() const override { return L"hosts2x"; }  // not a conversion
    std::uint32_t getNbArgs() const override { return 1; }
};

TEST_F(Typing, RunsNoCodeOfTheHosts)
{
    MTParserRegistrar& registrar = mathexpr::EngineAccess::parserOf(edited.expression).getRegistrar();
    registrar.defineFunction(new HostItem, true);
    EXPECT_FALSE(mathexpr::getHover(edited.expression, L"(1+2)", 0).value);
    EXPECT_EQ(mathexpr::typesetText(edited.expression, L"hosts2x(1)", mathexpr::Notation::Latex),
              L"\\operatorname{hosts2x}\\left(1\\right)");
}

}
