// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FormatTests.cpp - uniform spacing, and what it must not change.
#include "mathexpr/EditorServices.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/Limits.h"
#include "tests/editor/EditorTexts.h"
#include "tests/program/ProgramDump.h"
#include "tests/support/MessageRecorder.h"

#include <gtest/gtest.h>

namespace {

std::wstring formatted(const wchar_t* text)
{
    const EditedExpression edited;
    return mathexpr::formatText(edited.expression, text);
}

TEST(Format, SpacesEvenly)
{
    EXPECT_EQ(formatted(L"a=2*x+ - 3^2"), L"a = 2 * x + -3^2");
    EXPECT_EQ(formatted(L"dist( [1,2,0] ,[ 3 , 4 ,0])"), L"dist([1, 2, 0], [3, 4, 0])");
    EXPECT_EQ(formatted(L"-x-(-y)"), L"-x - (-y)");
    EXPECT_EQ(formatted(L"!a==b&&c"), L"!a == b & &c");
    EXPECT_EQ(formatted(L" 1 "), L"1");
    EXPECT_EQ(formatted(L""), L"");
    EXPECT_EQ(formatted(nullptr), L"");
}

TEST(Format, DoesNotChangeShorthandsAndOddNames)
{
    EXPECT_EQ(formatted(L"1.5 e + 3*2"), L"1.5e+3 * 2");
    EXPECT_EQ(formatted(L"1e+-3"), L"1e+-3");
    EXPECT_EQ(formatted(L"1 000+a\tb+\u00e4"), L"1000 + a\tb + \u00e4");
}

TEST(Format, TakesBrokenTexts)
{
    EXPECT_EQ(formatted(L"1+"), L"1 +");
    EXPECT_EQ(formatted(L")(,="), L")(, =");
    EXPECT_EQ(formatted(L"=2"), L"= 2");
    EXPECT_EQ(formatted(L"sin(1)2"), L"sin(1)2");
}

TEST(Format, KeepsToTheLimit)
{
    EditedExpression edited;
    mathexpr::setLimits(edited.expression, {4, 0, 0});
    EXPECT_EQ(mathexpr::formatText(edited.expression, L"1+2"), L"1+2");  // would have five characters
    EXPECT_EQ(mathexpr::formatText(edited.expression, L" (1)"), L"(1)");
    EXPECT_EQ(mathexpr::formatText(edited.expression, L" 1 + 2"), L" 1 + 2");
}

TEST(Format, ChangesNothingButBlanksAndIsIdempotent)
{
    const EditedExpression edited;
    forEachBeginning([&](const TypedText& typed) {
        const std::wstring once = mathexpr::formatText(edited.expression, typed.text.c_str());
        EXPECT_EQ(withoutBlanks(once), withoutBlanks(typed.text));
        EXPECT_EQ(mathexpr::formatText(edited.expression, once.c_str()), once);
    });
}

/// The compiled program as text; empty if the text does not compile.
std::string programOf(EditedExpression& edited, const std::wstring& text)
{
    MTParser& parser = mathexpr::EngineAccess::parserOf(edited.expression);
    return edited.compiles(text) ? dumpProgram(parser.getProgram(), parser.getRegistrar()) : std::string();
}

TEST(Format, KeepsTheGoldenProgram)
{
    const VALTYPE zero;
    const Bindings names{{L"x", zero}, {L"y", zero}, {L"z", zero}, {L"p", zero}, {L"q", zero}};
    std::size_t count = 0;
    for (const std::wstring& text : goldenTexts())
    {
        EditedExpression edited(names);
        const std::string program = programOf(edited, text);
        count += program.empty() ? 0U : 1U;
        EXPECT_EQ(programOf(edited, mathexpr::formatText(edited.expression, text.c_str())), program);
    }
    EXPECT_GT(count, 10U);
}

TEST(Format, KeepsTheProgramOfEveryText)
{
    const MessageRecorder shown;
    std::size_t count = 0;
    forEachBeginning([&](const TypedText& typed) {
        EditedExpression edited(typed.host);
        const std::wstring spaced = mathexpr::formatText(edited.expression, typed.text.c_str());
        const std::string program = programOf(edited, typed.text);
        count += program.empty() ? 0U : 1U;
        EXPECT_EQ(programOf(edited, spaced), program) << typed.where;
    });
    EXPECT_GT(count, 1500U);
}

}
