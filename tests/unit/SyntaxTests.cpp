// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// SyntaxTests.cpp - the compiler with other characters, operators and functions than those of an expression object.
//
// The texts are constant, so the compiled program contains their value.
#include "MTParserLib/MTParserCompiler.h"
#include "MTParserLib/MTParserRegistrar.h"
#include "tests/support/MessageRecorder.h"
#include "tests/unit/EngineItems.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>

namespace {

using Ids = std::vector<std::uint32_t>;

class Syntax : public testing::Test
{
protected:
    Syntax()
    {
        registrar.setVariableFactory(&factory);
        registrar.defineOperator(new TestOperator(L"+"), true);
        registrar.defineOperator(new TestOperator(L"-", true, 4), true);
        registrar.defineOperator(new TestOperator(L"plus", false, 1), true);
        registrar.defineFunction(new TestFunction(L"count", NB_ARGS_UNDEFINED), true);
        registrar.defineFunction(new TestFunction(L"one", 1), true);
    }

    /// The value of a constant text; nothing if it does not compile.
    std::optional<double> valueOf(const wchar_t* text)
    {
        if (!compiler.compile(text, limits, assignTarget))
        {
            EXPECT_FALSE(compilation.program.isComplete());
            return std::nullopt;
        }
        EXPECT_TRUE(compilation.program.isComplete());
        return compilation.program.getRoot().x;
    }

    MessageRecorder messages;
    TestFactory factory;
    MTParserRegistrar registrar;
    MTCompilation compilation;
    MTLimits limits;
    MTParserCompiler compiler{registrar, compilation, true, nullptr};
    std::wstring assignTarget;
};

// The precedence may be below -1, since an open bracket has none.
TEST_F(Syntax, KeepsOperatorsOfAnyPrecedenceWithinTheirBrackets)
{
    registrar.setSyntax({L'.', L',', L'[', L']'});
    registrar.defineOperator(new TestOperator(L"~", false, -1), true);
    registrar.defineOperator(new TestOperator(L"?", false, std::numeric_limits<std::int32_t>::min()), true);
    EXPECT_EQ(valueOf(L"(1~2)+3"), 6.0);
    EXPECT_EQ(valueOf(L"(1?2)+3"), 6.0);
    EXPECT_EQ(valueOf(L"count((1~-2),3?4)"), 2.0);
    EXPECT_EQ(valueOf(L"-(1?2~3)"), -6.0);
}

TEST_F(Syntax, TakesAnotherDecimalPointAndSeparator)
{
    registrar.setSyntax({L',', L';', L'[', L']'});
    EXPECT_EQ(valueOf(L"1,5+2"), 3.5);
    EXPECT_EQ(valueOf(L",5"), 0.5);
    EXPECT_EQ(valueOf(L"count(1,5;2;3)"), 3.0);
    EXPECT_EQ(valueOf(L"count(1,5)"), 1.0);
    EXPECT_EQ(messages.take(), Ids{});
    // With a decimal point a literal is not an integer, whatever its value.
    EXPECT_EQ(valueOf(L"2147483648,0"), 2147483648.0);
    EXPECT_EQ(valueOf(L"2147483648"), std::nullopt);
    EXPECT_EQ(valueOf(L"1.5"), std::nullopt);
    EXPECT_EQ(messages.take(), (Ids{19, 1}));
}

TEST_F(Syntax, TakesOperatorsThatAreWords)
{
    registrar.setSyntax({L'.', L',', L'[', L']'});
    EXPECT_EQ(valueOf(L"2plus3"), 5.0);
    EXPECT_EQ(valueOf(L"2plus-3"), -1.0);
    EXPECT_EQ(valueOf(L"2plus"), std::nullopt);
    EXPECT_EQ(messages.take(), Ids{3});
    // A name may begin with the symbol of such an operator.
    registrar.defineFunction(new TestFunction(L"pair", 2), true);
    EXPECT_EQ(valueOf(L"pair(4,5)plus3"), 5.0);
}

TEST_F(Syntax, ReadsABracketAsABracketWhateverOperatorsThereAre)
{
    registrar.setSyntax({L'.', L',', L'[', L']'});
    for (const wchar_t* const symbol : {L"(", L")", L"(1", L")+"})
    {
        registrar.defineOperator(new TestOperator(symbol), true);
        registrar.defineOperator(new TestOperator(symbol, true), true);
    }
    EXPECT_EQ(valueOf(L"(1+2)+3"), 6.0);
    EXPECT_EQ(valueOf(L"-((1))"), -1.0);
    EXPECT_EQ(valueOf(L"count(1,(2),one(3))+count((4))"), 4.0);
    EXPECT_EQ(messages.take(), Ids{});
    EXPECT_EQ(valueOf(L"1+one(1"), std::nullopt);
    EXPECT_EQ(valueOf(L"1)"), std::nullopt);
    EXPECT_EQ(messages.take(), (Ids{2, 3}));
}

TEST_F(Syntax, LimitsBracketsAsBracketsWhateverOperatorsThereAre)
{
    registrar.setSyntax({L'.', L',', L'[', L']'});
    registrar.defineOperator(new TestOperator(L"("), true);
    registrar.defineOperator(new TestOperator(L")"), true);
    limits = {0, 1, 2};
    EXPECT_EQ(valueOf(L"((1))"), 1.0);
    EXPECT_EQ(valueOf(L"(((1)))"), std::nullopt);
    EXPECT_EQ(compilation.failure.code, mathexpr::ParsingError::NestedTooDeep);
    EXPECT_EQ(valueOf(L"one(1)"), std::nullopt);
    EXPECT_EQ(compilation.failure.code, mathexpr::ParsingError::TooManyRecords);
    EXPECT_EQ(messages.take(), (Ids{3, 3}));
}

TEST_F(Syntax, FindsAFunctionOfOneLetterBeforeABracketThatIsAnOperatorToo)
{
    registrar.setSyntax({L'.', L',', L'[', L']'});
    registrar.defineFunction(new TestFunction(L"f"), true);
    registrar.defineOperator(new TestOperator(L"("), true);
    EXPECT_EQ(valueOf(L"2+f(1)"), 3.0);
    const MTSpan span = spanOfStep(registrar, compilation.text, 3, 1);
    EXPECT_EQ(span.begin, 2U);
    EXPECT_EQ(span.end, 3U);
}

TEST_F(Syntax, PutsThePositionOfAnOperatorThatEndsTheTextOnItsLastCharacter)
{
    registrar.setSyntax({L'.', L',', L'[', L']'});
    MTParserCompiler silent(registrar, compilation, false, nullptr);
    try
    {
        silent.compile(L"2plus", {}, assignTarget);
        FAIL() << "nothing was raised";
    }
    catch (const mathexpr::ParsingException& exception)
    {
        EXPECT_EQ(exception.entries.front().data.exID, mathexpr::ParsingError::OperandMissing);
        EXPECT_EQ(exception.entries.front().data.pos, 4u);
    }
    EXPECT_EQ(messages.take(), Ids{});
}

TEST_F(Syntax, HandsAFunctionTheArgumentsThatWereWritten)
{
    registrar.setSyntax({L'.', L',', L'[', L']'});
    EXPECT_EQ(valueOf(L"count(1)"), 1.0);
    EXPECT_EQ(valueOf(L"count(1,2,3,4)"), 4.0);
    EXPECT_EQ(valueOf(L"count(count(1,2),one(3),(4+5))"), 3.0);
    EXPECT_EQ(valueOf(L"one(count(1,2,3))+count(1,2)"), 3.0);
}

TEST_F(Syntax, MakesUnknownNamesVariablesOnlyWhereThatIsSwitchedOn)
{
    registrar.setSyntax({L'.', L',', L'[', L']'});
    EXPECT_EQ(valueOf(L"unknown+1"), std::nullopt);
    EXPECT_EQ(messages.take(), Ids{1});
    EXPECT_EQ(registrar.findVariable(L"unknown"), nullptr);

    compiler.setAutomaticVariables(true);
    EXPECT_TRUE(compiler.compile(L"unknown+1", {}, assignTarget));
    ASSERT_NE(registrar.findVariable(L"UNKNOWN"), nullptr);
    EXPECT_EQ(registrar.getVariableValuePtr(L"unknown")->x, 0.0);

    compiler.setAutomaticVariables(false);
    EXPECT_TRUE(compiler.compile(L"unknown+1", {}, assignTarget));
    EXPECT_FALSE(compiler.compile(L"another+1", {}, assignTarget));
    EXPECT_EQ(messages.take(), Ids{1});
}

TEST_F(Syntax, ReportsAFactoryThatMakesNothing)
{
    registrar.setSyntax({L'.', L',', L'[', L']'});
    TestFactory none(false);
    registrar.setVariableFactory(&none);
    compiler.setAutomaticVariables(true);
    EXPECT_EQ(valueOf(L"unknown"), std::nullopt);
    EXPECT_EQ(messages.take(), Ids{3});

    MTParserCompiler silent(registrar, compilation, false, nullptr);
    silent.setAutomaticVariables(true);
    try
    {
        silent.compile(L"unknown", {}, assignTarget);
        FAIL() << "nothing was raised";
    }
    catch (const mathexpr::DefinitionException& exception)
    {
        ASSERT_EQ(exception.entries.size(), 3u);
        EXPECT_EQ(exception.entries.front().file, L"MTParserLib/MTParserCompiler");
        EXPECT_EQ(exception.entries.front().data.exID, mathexpr::DefinitionError::VariableNameEmpty);
        EXPECT_EQ(exception.entries.front().data.itemName, L"unknown");
    }
}

TEST_F(Syntax, DoesNotKnowANameWhoseVariableIsCalledOtherwise)
{
    registrar.setSyntax({L'.', L',', L'[', L']'});
    class Renaming final : public IMathVariableFactory
    {
        IMathVariable* create(const wchar_t* name) override { return new TestVariable(std::wstring(name) + L"_"); }
    };
    class Answering final : public IMathExprService
    {
        bool lookupValue(const wchar_t*, VALTYPE&) const override { return true; }
    };
    Renaming renaming;
    registrar.setVariableFactory(&renaming);
    const Answering service;
    MTParserCompiler asking(registrar, compilation, true, &service);
    EXPECT_FALSE(asking.compile(L"1+width", {}, assignTarget));
    EXPECT_EQ(messages.take(), Ids{1});
    EXPECT_NE(registrar.findVariable(L"width_"), nullptr);
    EXPECT_EQ(registrar.findVariable(L"width"), nullptr);
}

TEST_F(Syntax, NeedsNoFactoryWhereNoVariableIsMade)
{
    MTParserRegistrar bare;
    bare.setSyntax({L'.', L',', L'[', L']'});
    MTParserCompiler plain(bare, compilation, true, nullptr);
    EXPECT_TRUE(plain.compile(L"12.5", {}, assignTarget));
    EXPECT_EQ(compilation.program.getRoot().x, 12.5);
    plain.setAutomaticVariables(true);
    EXPECT_FALSE(plain.compile(L"x", {}, assignTarget));
    EXPECT_EQ(messages.take(), Ids{3});
}

TEST_F(Syntax, StoresTheNameAssignedTo)
{
    registrar.setSyntax({L'.', L',', L'[', L']'});
    EXPECT_EQ(valueOf(L"a=2+3"), 5.0);
    EXPECT_EQ(assignTarget, L"a");
    // Another text changes the target only if it contains an assignment.
    EXPECT_EQ(valueOf(L"2+3"), 5.0);
    EXPECT_EQ(assignTarget, L"a");
    EXPECT_EQ(valueOf(L"b=c=2+"), std::nullopt);
    EXPECT_EQ(assignTarget, L"c");
    EXPECT_EQ(valueOf(L"=5"), 5.0);
    EXPECT_EQ(assignTarget, L"");
    EXPECT_EQ(messages.take(), Ids{3});
}

}
