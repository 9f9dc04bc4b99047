// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// RegistrarLookupTests.cpp - look-ups of symbols and names.
#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/names/MTNameIndex.h"
#include "tests/unit/EngineItems.h"

#include <gtest/gtest.h>

#include <utility>

namespace {

constexpr std::size_t notFound = MTParserRegistrar::notFound;

class Lookup : public testing::Test
{
protected:
    Lookup() { registrar.setSyntax({L'.', L',', L'[', L']'}); }

    void defineOperator(const wchar_t* symbol, bool unary = false)
    {
        registrar.defineOperator(new TestOperator(symbol, unary), true);
    }
    const IMathFunction* defineFunction(const wchar_t* symbol, std::uint32_t nbArgs)
    {
        const auto function = new TestFunction(symbol, nbArgs);
        registrar.defineFunction(function, true);
        return function;
    }

    std::wstring symbolAt(const wchar_t* text) const
    {
        std::wstring_view symbol;
        return registrar.isOperatorSymbol(text, symbol) ? std::wstring(symbol) : L"none";
    }

    const IMathFunction* overload(const wchar_t* name, std::uint32_t nbArgs) const
    {
        const std::size_t index = registrar.findFunctionOverload(name, nbArgs);
        return index == notFound ? nullptr : &registrar.getFunction(index);
    }

    MTParserRegistrar registrar;
};

TEST_F(Lookup, FindsTheLongestOperatorSymbolWhicheverCameFirst)
{
    defineOperator(L"<");
    defineOperator(L"<=");
    defineOperator(L">=");
    defineOperator(L">");
    defineOperator(L"<=>");
    EXPECT_EQ(symbolAt(L"<=3"), L"<=");
    EXPECT_EQ(symbolAt(L"<3"), L"<");
    EXPECT_EQ(symbolAt(L">=3"), L">=");
    EXPECT_EQ(symbolAt(L">3"), L">");
    EXPECT_EQ(symbolAt(L"<=>"), L"<=>");
    EXPECT_EQ(symbolAt(L"<="), L"<=");
    EXPECT_EQ(symbolAt(L"<"), L"<");
    EXPECT_EQ(symbolAt(L"=<"), L"none");
    EXPECT_EQ(symbolAt(L"3<"), L"none");
    EXPECT_EQ(symbolAt(L""), L"none");
}

TEST_F(Lookup, FindsNoOperatorInATextShorterThanEverySymbol)
{
    defineOperator(L"<=>");
    defineOperator(L"and");
    EXPECT_EQ(symbolAt(L"<="), L"none");
    EXPECT_EQ(symbolAt(L"<"), L"none");
    EXPECT_EQ(symbolAt(L"an"), L"none");
    EXPECT_EQ(symbolAt(L"and"), L"and");
    EXPECT_EQ(symbolAt(L"AND"), L"none");
}

TEST_F(Lookup, FindsOperatorsBeyondAscii)
{
    defineOperator(L"\u2264");
    defineOperator(L"\u2264\u2264");
    EXPECT_EQ(symbolAt(L"\u22643"), L"\u2264");
    EXPECT_EQ(symbolAt(L"\u2264\u2264"), L"\u2264\u2264");
    EXPECT_EQ(symbolAt(L"\u2265"), L"none");
    EXPECT_EQ(symbolAt(L"\x80"), L"none");
    defineOperator(L"\x80");
    EXPECT_EQ(symbolAt(L"\x80"), L"\x80");
}

TEST_F(Lookup, KeepsOperatorsByLengthAndThenInTheirOrder)
{
    for (const wchar_t* const symbol : {L"+", L"<=", L"-", L"and", L"==", L"*"})
    {
        defineOperator(symbol);
    }
    const wchar_t* const expected[] = {L"and", L"<=", L"==", L"+", L"-", L"*"};
    ASSERT_EQ(registrar.getNbOperators(), std::size(expected));
    for (std::size_t i = 0; i < std::size(expected); ++i)
    {
        EXPECT_EQ(registrar.getOperator(i).getSymbol(), expected[i]);
        EXPECT_EQ(registrar.findOperator(expected[i], false), i);
    }
}

TEST_F(Lookup, DistinguishesBinaryFromUnaryOperators)
{
    defineOperator(L"-");
    defineOperator(L"-", true);
    defineOperator(L"!", true);
    const std::size_t binary = registrar.findOperator(L"-", false);
    const std::size_t unary = registrar.findOperator(L"-", true);
    ASSERT_NE(binary, notFound);
    ASSERT_NE(unary, notFound);
    EXPECT_FALSE(registrar.getOperator(binary).isUnaryOp());
    EXPECT_TRUE(registrar.getOperator(unary).isUnaryOp());
    EXPECT_EQ(registrar.findOperator(L"!", false), notFound);
    EXPECT_NE(registrar.findOperator(L"!", true), notFound);
    EXPECT_EQ(registrar.findOperator(L"--", true), notFound);
    EXPECT_EQ(registrar.findOperator(L"", true), notFound);
}

TEST_F(Lookup, DistinguishesOperatorsOfTheSameLengthAndBeginning)
{
    for (const wchar_t* const symbol : {L"<=", L"<>", L"<"})
    {
        defineOperator(symbol);
    }
    EXPECT_EQ(registrar.findOperator(L"<=", false), 0u);
    EXPECT_EQ(registrar.findOperator(L"<>", false), 1u);
    EXPECT_EQ(registrar.findOperator(L"<!", false), notFound);
    EXPECT_EQ(registrar.findOperator(L"<", false), 2u);
}

TEST_F(Lookup, ChoosesOverloadsByTheirArgumentCount)
{
    const auto* const one = defineFunction(L"f", 1);
    const auto* const two = defineFunction(L"f", 2);
    const auto* const none = defineFunction(L"f", 0);
    EXPECT_EQ(overload(L"f", 0), none);
    EXPECT_EQ(overload(L"f", 1), one);
    EXPECT_EQ(overload(L"f", 2), two);
    EXPECT_EQ(overload(L"f", 3), nullptr);
    EXPECT_EQ(overload(L"F", 1), nullptr);
    EXPECT_EQ(overload(L"g", 1), nullptr);
    EXPECT_NE(registrar.findFunction(L"f"), notFound);
    EXPECT_EQ(registrar.findFunction(L"F"), notFound);
    EXPECT_EQ(registrar.findFunction(L"g"), notFound);
}

TEST_F(Lookup, PrefersAnExactCountToAnyNumber)
{
    const auto* const any = defineFunction(L"f", NB_ARGS_UNDEFINED);
    const auto* const two = defineFunction(L"f", 2);
    EXPECT_EQ(overload(L"f", 1), any);
    EXPECT_EQ(overload(L"f", 2), two);
    EXPECT_EQ(overload(L"f", 3), any);
    EXPECT_EQ(overload(L"f", 1000), any);
    EXPECT_EQ(overload(L"f", NB_ARGS_UNDEFINED), any);
    EXPECT_EQ(overload(L"f", 0), nullptr);
}

TEST_F(Lookup, NeedsAnArgumentForAnyNumberButForPoint)
{
    const auto* const point = defineFunction(L"point", NB_ARGS_UNDEFINED);
    defineFunction(L"Point", NB_ARGS_UNDEFINED);
    defineFunction(L"points", NB_ARGS_UNDEFINED);
    EXPECT_EQ(overload(L"point", 0), point);
    EXPECT_EQ(overload(L"point", 7), point);
    EXPECT_EQ(overload(L"Point", 0), nullptr);
    EXPECT_EQ(overload(L"points", 0), nullptr);
}

TEST_F(Lookup, KeepsFunctionsInTheirOrder)
{
    const IMathFunction* const defined[] = {defineFunction(L"b", 1), defineFunction(L"a", 1), defineFunction(L"b", 2),
                                            defineFunction(L"c", 0)};
    ASSERT_EQ(registrar.getNbFunctions(), std::size(defined));
    for (std::size_t i = 0; i < std::size(defined); ++i)
    {
        EXPECT_EQ(&registrar.getFunction(i), defined[i]);
        EXPECT_EQ(registrar.findFunctionOverload(defined[i]->getSymbol(), defined[i]->getNbArgs()), i);
    }
}

TEST_F(Lookup, DistinguishesConstantsByCase)
{
    VALTYPE value;
    value.x = 3.0;
    registrar.defineConstant(L"pi", value);
    value.x = 4.0;
    registrar.defineConstant(L"PI", value);
    EXPECT_EQ(registrar.findConstant(L"pi"), 0u);
    EXPECT_EQ(registrar.findConstant(L"PI"), 1u);
    EXPECT_EQ(registrar.findConstant(L"Pi"), notFound);
    EXPECT_EQ(registrar.findConstant(L""), notFound);
    EXPECT_EQ(registrar.getConstantName(1), L"PI");
    EXPECT_EQ(registrar.getConstantValue(0).x, 3.0);
    EXPECT_EQ(registrar.getConstantValue(1).x, 4.0);
}

TEST_F(Lookup, FindsVariablesWithoutRegardToTheCaseOfAToZ)
{
    const auto variable = new TestVariable(L"Length_1");
    registrar.defineVariable(variable);
    EXPECT_EQ(registrar.findVariable(L"length_1"), variable);
    EXPECT_EQ(registrar.findVariable(L"LENGTH_1"), variable);
    EXPECT_EQ(registrar.findVariable(L"length_2"), nullptr);
    EXPECT_EQ(registrar.findVariable(L"length"), nullptr);

    // Only A to Z are folded, neither accented letters nor characters next to the letters.
    const auto accented = new TestVariable(L"\u00c9");
    registrar.defineVariable(accented);
    EXPECT_EQ(registrar.findVariable(L"\u00e9"), nullptr);
    EXPECT_EQ(registrar.findVariable(L"\u00c9"), accented);
    registrar.defineVariable(new TestVariable(L"a@"));
    EXPECT_EQ(registrar.findVariable(L"a`"), nullptr);
}

TEST_F(Lookup, FindsConstantsBeyondAscii)
{
    VALTYPE value;
    value.x = 3.5;
    registrar.defineConstant(L"\u03c0", value);
    registrar.defineConstant(L"tau", VALTYPE{});
    EXPECT_EQ(registrar.findConstant(L"\u03c0"), 0u);
    EXPECT_EQ(registrar.findConstant(L"tau"), 1u);
    EXPECT_EQ(registrar.findConstant(L"\u03a0"), notFound);
    EXPECT_EQ(registrar.getConstantValue(0).x, 3.5);
}

// Both names of a pair have the same hash, so they collide in the index.
TEST_F(Lookup, DistinguishesNamesWithTheSameHash)
{
    ASSERT_EQ(MTNameIndex::hash(L"declinate"), MTNameIndex::hash(L"macallums"));
    ASSERT_EQ(MTNameIndex::hash(L"costarring"), MTNameIndex::hash(L"liquid"));
    ASSERT_EQ(MTNameIndex::hash(L"arjtra"), MTNameIndex::hash(L"ahikxw"));
    for (const auto& [first, second] :
         {std::pair(L"declinate", L"macallums"), std::pair(L"costarring", L"liquid"), std::pair(L"arjtra", L"ahikxw")})
    {
        const auto variable = new TestVariable(first);
        registrar.defineVariable(variable);
        EXPECT_EQ(registrar.findVariable(second), nullptr);
        const auto other = new TestVariable(second);
        registrar.defineVariable(other);
        EXPECT_EQ(registrar.findVariable(first), variable);
        EXPECT_EQ(registrar.findVariable(second), other);

        const IMathFunction* const function = defineFunction(first, 1);
        EXPECT_EQ(registrar.findFunction(second), notFound);
        const IMathFunction* const otherFunction = defineFunction(second, 1);
        EXPECT_EQ(overload(first, 1), function);
        EXPECT_EQ(overload(second, 1), otherFunction);
    }
}

TEST_F(Lookup, DistinguishesConstantsWithTheSameHash)
{
    registrar.defineConstant(L"arjtra", VALTYPE{});
    EXPECT_EQ(registrar.findConstant(L"ahikxw"), notFound);
    registrar.defineConstant(L"ahikxw", VALTYPE{});
    EXPECT_EQ(registrar.findConstant(L"arjtra"), 0u);
    EXPECT_EQ(registrar.findConstant(L"ahikxw"), 1u);
}

TEST_F(Lookup, FindsEachOfManyVariables)
{
    for (int i = 0; i < 1000; ++i)
    {
        registrar.defineVariable(new TestVariable(L"v" + std::to_wstring(i)));
    }
    for (int i = 0; i < 1000; ++i)
    {
        const IMathVariable* const found = registrar.findVariable(L"V" + std::to_wstring(i));
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->getSymbol(), L"v" + std::to_wstring(i));
    }
    EXPECT_EQ(registrar.findVariable(L"v1000"), nullptr);
}

// Characters that the compiler skips without a look-up.
TEST_F(Lookup, KnowsTheCharactersThatCanOnlyBePartOfANameOrNumber)
{
    defineOperator(L"<=");
    const MTPlainCharacters& characters = registrar.getPlainCharacters();
    for (const wchar_t plain : {L'a', L'Z', L'0', L'_', L'.', L'>', L'\x7f', L'\x80', L'\u03c0'})
    {
        EXPECT_TRUE(characters.contains(plain)) << static_cast<int>(plain);
    }
    for (const wchar_t special : {L'(', L')', L'=', L',', L'<'})
    {
        EXPECT_FALSE(characters.contains(special)) << static_cast<int>(special);
    }
    defineOperator(L"\u2264");
    EXPECT_FALSE(registrar.getPlainCharacters().contains(L'\u2264'));
    EXPECT_TRUE(registrar.getPlainCharacters().contains(L'>'));
}

TEST_F(Lookup, KnowsWhetherAProgramMayCallTheHost)
{
    EXPECT_FALSE(registrar.callsHost());
    TestFactory factory;
    registrar.setVariableFactory(&factory);
    EXPECT_TRUE(registrar.callsHost());
    registrar.setVariableFactory(&factory, true);
    EXPECT_FALSE(registrar.callsHost());
    registrar.defineVariable(new TestVariable(L"x"), true);
    EXPECT_FALSE(registrar.callsHost());
    registrar.defineVariable(new TestVariable(L"y"));
    EXPECT_TRUE(registrar.callsHost());
}

TEST_F(Lookup, KnowsThatItemsOfTheHostMayBeCalled)
{
    defineFunction(L"f", 1);
    EXPECT_TRUE(registrar.callsHost());
    MTParserRegistrar other;
    other.setSyntax({L'.', L',', L'[', L']'});
    other.defineOperator(new TestOperator(L"+"), true);
    EXPECT_TRUE(other.callsHost());
}

TEST_F(Lookup, ReadsDigitsWithAtMostOneDecimalPointAsANumber)
{
    for (const wchar_t* const text : {L"0", L"12", L"1.5", L".5", L"5.", L"."})
    {
        EXPECT_TRUE(registrar.isNumber(text)) << testing::PrintToString(std::wstring(text));
    }
    for (const wchar_t* const text : {L"", L"..", L"1.5.", L"1e3", L"x", L"1,5", L"-1", L" 1", L"\u0661"})
    {
        EXPECT_FALSE(registrar.isNumber(text)) << testing::PrintToString(std::wstring(text));
    }
    registrar.setSyntax({L',', L';', L'[', L']'});
    EXPECT_TRUE(registrar.isNumber(L"1,5"));
    EXPECT_FALSE(registrar.isNumber(L"1.5"));
}

}
