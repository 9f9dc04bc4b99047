// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// RegistrarDefinitionTests.cpp - every error of a definition: code, items, entries, and the order of the checks. A
// refused definition stores nothing.
#include "MTParserLib/MTParserRegistrar.h"
#include "tests/unit/EngineItems.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <set>

namespace {

constexpr const wchar_t* registrarFile = L"MTParserLib/MTParserRegistrar";

/// The exception that a call raises.
std::optional<mathexpr::DefinitionException> raisedBy(const std::function<void()>& call)
{
    try
    {
        call();
    }
    catch (const mathexpr::DefinitionException& exception)
    {
        return exception;
    }
    return std::nullopt;
}

class Registrar : public testing::Test
{
protected:
    Registrar()
    {
        registrar.setSyntax({L'.', L',', L'[', L']'});
        registrar.setVariableFactory(&factory);
    }

    void defineOperator(const wchar_t* symbol, bool unary = false, std::int32_t precedence = 1)
    {
        registrar.defineOperator(new TestOperator(symbol, unary, precedence), true);
    }
    void defineFunction(const wchar_t* symbol, std::uint32_t nbArgs = 1)
    {
        registrar.defineFunction(new TestFunction(symbol, nbArgs), true);
    }
    void defineConstant(const wchar_t* name) { registrar.defineConstant(name, VALTYPE{}); }
    void defineVariable(const wchar_t* name) { registrar.defineVariable(new TestVariable(name)); }
    void defineVariableByName(const wchar_t* name) { registrar.defineVariable(std::wstring_view(name)); }

    struct Refusal
    {
        std::uint32_t exID;
        const wchar_t* itemName;
        const wchar_t* conflictItemName;
        std::size_t nbEntries;
    };

    /// Expects the whole record in every entry, and an unchanged registrar.
    void expectRefused(const Refusal& expected, const std::function<void()>& definition)
    {
        SCOPED_TRACE(expected.exID);
        const std::size_t nbOperators = registrar.getNbOperators();
        const std::size_t nbFunctions = registrar.getNbFunctions();
        const std::size_t nbConstants = registrar.getNbConstants();
        const SyntaxCharacters syntax = registrar.getSyntax();

        const auto exception = raisedBy(definition);
        ASSERT_TRUE(exception);
        EXPECT_EQ(exception->entries.size(), expected.nbEntries);
        for (const mathexpr::DefinitionException::Entry& entry : exception->entries)
        {
            EXPECT_EQ(entry.data.exID, expected.exID);
            EXPECT_EQ(entry.data.itemName, expected.itemName);
            EXPECT_EQ(entry.data.conflictItemName, expected.conflictItemName);
            EXPECT_EQ(entry.file, registrarFile);
            EXPECT_GT(entry.line, 0u);
            EXPECT_EQ(entry.reserved, 0u);
        }
        raisingLines.insert(exception->entries.back().line);

        EXPECT_EQ(registrar.getNbOperators(), nbOperators);
        EXPECT_EQ(registrar.getNbFunctions(), nbFunctions);
        EXPECT_EQ(registrar.getNbConstants(), nbConstants);
        EXPECT_EQ(registrar.getSyntax().decimalPoint, syntax.decimalPoint);
        EXPECT_EQ(registrar.getSyntax().argumentSeparator, syntax.argumentSeparator);
        EXPECT_EQ(registrar.getSyntax().pointOpeningBracket, syntax.pointOpeningBracket);
        EXPECT_EQ(registrar.getSyntax().pointClosingBracket, syntax.pointClosingBracket);
    }

    TestFactory factory;
    MTParserRegistrar registrar;
    std::set<std::uint32_t> raisingLines;
};

TEST_F(Registrar, RefusesSyntaxCharactersThatAreTheSame)
{
    expectRefused({0, L".", L".", 1}, [&] { registrar.setSyntax({L'.', L'.', L'[', L']'}); });
    expectRefused({1, L"[", L"[", 1}, [&] { registrar.setSyntax({L'.', L'[', L'[', L']'}); });
    expectRefused({1, L"]", L"]", 1}, [&] { registrar.setSyntax({L'.', L']', L'[', L']'}); });
    expectRefused({2, L"", L"", 1}, [&] { registrar.setSyntax({L'[', L',', L'[', L']'}); });
    expectRefused({2, L"", L"", 1}, [&] { registrar.setSyntax({L']', L',', L'[', L']'}); });
    // The first failing check raises the exception.
    expectRefused({0, L"[", L"[", 1}, [&] { registrar.setSyntax({L'[', L'[', L'[', L']'}); });
}

TEST_F(Registrar, TakesOneCharacterForBothPointBrackets)
{
    EXPECT_NO_THROW(registrar.setSyntax({L'.', L',', L'|', L'|'}));
    EXPECT_EQ(registrar.getSyntax().pointOpeningBracket, L'|');
    EXPECT_EQ(registrar.getSyntax().pointClosingBracket, L'|');
}

TEST_F(Registrar, RefusesSyntaxCharactersThatSymbolsContain)
{
    defineOperator(L"+;");
    expectRefused({5, L"+;", L";", 1}, [&] { registrar.setSyntax({L'.', L';', L'[', L']'}); });
    defineFunction(L"f;g");
    expectRefused({5, L"+;", L";", 1}, [&] { registrar.setSyntax({L'.', L';', L'[', L']'}); });
    defineFunction(L"f{g");
    expectRefused({9, L"f{g", L"{", 1}, [&] { registrar.setSyntax({L'.', L',', L'{', L'}'}); });
    defineConstant(L"c{");
    expectRefused({9, L"f{g", L"{", 1}, [&] { registrar.setSyntax({L'.', L',', L'{', L'}'}); });
    defineConstant(L"a:c");
    expectRefused({20, L"a:c", L":", 1}, [&] { registrar.setSyntax({L':', L',', L'[', L']'}); });
    EXPECT_NO_THROW(registrar.setSyntax({L'#', L',', L'<', L'>'}));
    defineOperator(L"?!");
    expectRefused({5, L"?!", L"?", 1}, [&] { registrar.setSyntax({L'?', L',', L'<', L'>'}); });
}

TEST_F(Registrar, RefusesOperators)
{
    defineOperator(L"+");
    defineOperator(L"-", true);
    defineFunction(L"max@");
    defineConstant(L"c@#");

    expectRefused({4, L"", L"", 2}, [&] { defineOperator(L""); });
    expectRefused({6, L"*", L"", 2}, [&] { defineOperator(L"*", false, 5); });
    expectRefused({6, L"*", L"", 2}, [&] { defineOperator(L"*", false, 6); });
    expectRefused({3, L"+", L"+", 2}, [&] { defineOperator(L"+"); });
    expectRefused({3, L"-", L"-", 2}, [&] { defineOperator(L"-", true); });
    expectRefused({5, L"+.", L".", 2}, [&] { defineOperator(L"+."); });
    expectRefused({5, L"],", L"]", 2}, [&] { defineOperator(L"],"); });
    expectRefused({10, L"x@", L"max@", 2}, [&] { defineOperator(L"x@"); });
    expectRefused({21, L"#", L"c@#", 2}, [&] { defineOperator(L"#"); });

    // The order of the checks.
    expectRefused({4, L"", L"", 2}, [&] { defineOperator(L"", false, 5); });
    expectRefused({6, L"+", L"", 2}, [&] { defineOperator(L"+", false, 5); });
    expectRefused({6, L"+.", L"", 2}, [&] { defineOperator(L"+.", false, 5); });
    expectRefused({10, L"@", L"max@", 2}, [&] { defineOperator(L"@"); });
    EXPECT_EQ(registrar.getNbOperators(), 2u);

    EXPECT_NO_THROW(defineOperator(L"*"));
    EXPECT_EQ(registrar.getNbOperators(), 3u);
}

TEST_F(Registrar, TakesOneSymbolAsABinaryAndAUnaryOperator)
{
    defineOperator(L"-");
    defineOperator(L"-", true, 4);
    EXPECT_EQ(registrar.getNbOperators(), 2u);
    expectRefused({3, L"-", L"-", 2}, [&] { defineOperator(L"-"); });
    expectRefused({3, L"-", L"-", 2}, [&] { defineOperator(L"-", true); });
    EXPECT_NO_THROW(defineOperator(L"~", true, 0));
}

TEST_F(Registrar, RefusesFunctions)
{
    defineOperator(L"+");
    defineFunction(L"f", 1);
    defineFunction(L"g", NB_ARGS_UNDEFINED);

    expectRefused({8, L"", L"", 1}, [&] { defineFunction(L""); });
    expectRefused({7, L"f", L"f", 1}, [&] { defineFunction(L"f", 1); });
    expectRefused({7, L"g", L"g", 1}, [&] { defineFunction(L"g", NB_ARGS_UNDEFINED); });
    expectRefused({9, L"h,", L",", 1}, [&] { defineFunction(L"h,"); });
    expectRefused({9, L"h[1]", L"[", 1}, [&] { defineFunction(L"h[1]"); });
    expectRefused({10, L"h+", L"+", 1}, [&] { defineFunction(L"h+"); });
    expectRefused({10, L"+h", L"+", 1}, [&] { defineFunction(L"+h"); });

    // The order of the checks.
    expectRefused({9, L"h+.", L".", 1}, [&] { defineFunction(L"h+."); });
    defineFunction(L"f", 2);
    defineFunction(L"F", 1);
    EXPECT_EQ(registrar.getNbFunctions(), 4u);
}

TEST_F(Registrar, RefusesConstants)
{
    defineOperator(L"+");
    defineConstant(L"pi");
    defineVariable(L"Radius");
    defineVariable(L"a+b");

    expectRefused({18, L"", L"", 1}, [&] { defineConstant(L""); });
    expectRefused({17, L"pi", L"pi", 1}, [&] { defineConstant(L"pi"); });
    expectRefused({19, L"12", L"", 1}, [&] { defineConstant(L"12"); });
    expectRefused({19, L"1.5", L"", 1}, [&] { defineConstant(L"1.5"); });
    expectRefused({19, L".", L"", 1}, [&] { defineConstant(L"."); });
    expectRefused({20, L"..", L".", 1}, [&] { defineConstant(L".."); });
    expectRefused({20, L"a]", L"]", 1}, [&] { defineConstant(L"a]"); });
    expectRefused({21, L"1+", L"+", 1}, [&] { defineConstant(L"1+"); });
    expectRefused({22, L"rADIUS", L"Radius", 1}, [&] { defineConstant(L"rADIUS"); });

    // The order of the checks.
    expectRefused({20, L"a+.", L".", 1}, [&] { defineConstant(L"a+."); });
    expectRefused({21, L"a+b", L"+", 1}, [&] { defineConstant(L"a+b"); });
    defineConstant(L"PI");
    EXPECT_EQ(registrar.getNbConstants(), 2u);
}

TEST_F(Registrar, RefusesVariables)
{
    defineOperator(L"+");
    defineConstant(L"pi");
    defineVariable(L"x");

    expectRefused({12, L"", L"", 2}, [&] { defineVariable(L""); });
    expectRefused({11, L"x", L"x", 2}, [&] { defineVariable(L"x"); });
    expectRefused({11, L"X", L"x", 2}, [&] { defineVariable(L"X"); });
    expectRefused({13, L"12", L"", 2}, [&] { defineVariable(L"12"); });
    expectRefused({13, L"1.5", L"", 2}, [&] { defineVariable(L"1.5"); });
    expectRefused({13, L".", L"", 2}, [&] { defineVariable(L"."); });
    expectRefused({14, L"pi", L"pi", 2}, [&] { defineVariable(L"pi"); });
    expectRefused({15, L"a.b", L".", 2}, [&] { defineVariable(L"a.b"); });
    expectRefused({15, L"..", L".", 2}, [&] { defineVariable(L".."); });
    expectRefused({15, L"],[", L"]", 2}, [&] { defineVariable(L"],["); });

    EXPECT_NO_THROW(defineVariable(L"PI"));
    EXPECT_NO_THROW(defineVariable(L"a+b"));
    EXPECT_EQ(registrar.findVariable(L"a.b"), nullptr);
    EXPECT_EQ(registrar.findVariable(L"pi"), registrar.findVariable(L"PI"));
}

TEST_F(Registrar, RefusesVariablesByName)
{
    defineConstant(L"pi");
    defineVariableByName(L"x");

    expectRefused({12, L"", L"", 3}, [&] { defineVariableByName(L""); });
    expectRefused({11, L"X", L"x", 3}, [&] { defineVariableByName(L"X"); });
    expectRefused({13, L"12", L"", 3}, [&] { defineVariableByName(L"12"); });
    expectRefused({14, L"pi", L"pi", 3}, [&] { defineVariableByName(L"pi"); });
    expectRefused({15, L"a.b", L".", 3}, [&] { defineVariableByName(L"a.b"); });

    TestFactory none(false);
    registrar.setVariableFactory(&none);
    expectRefused({12, L"name", L"", 2}, [&] { defineVariableByName(L"name"); });
    SlotlessFactory slotless;
    registrar.setVariableFactory(&slotless);
    expectRefused({12, L"name", L"", 3}, [&] { defineVariableByName(L"name"); });
    registrar.setVariableFactory(&factory);
    EXPECT_NO_THROW(defineVariableByName(L"name"));
}

TEST_F(Registrar, RefusesTheValueOfNoVariable)
{
    expectRefused({16, L"x", L"", 1}, [&] { registrar.getVariableValuePtr(L"x"); });
    defineVariableByName(L"x");
    EXPECT_EQ(registrar.getVariableValuePtr(L"X"), registrar.findVariable(L"x")->getValuePtr());
}

TEST_F(Registrar, RaisesEverythingFromOnePlace)
{
    defineConstant(L"pi");
    expectRefused({0, L".", L".", 1}, [&] { registrar.setSyntax({L'.', L'.', L'[', L']'}); });
    expectRefused({4, L"", L"", 2}, [&] { defineOperator(L""); });
    expectRefused({8, L"", L"", 1}, [&] { defineFunction(L""); });
    expectRefused({14, L"pi", L"pi", 3}, [&] { defineVariableByName(L"pi"); });
    expectRefused({17, L"pi", L"pi", 1}, [&] { defineConstant(L"pi"); });
    EXPECT_EQ(raisingLines.size(), 1u);
}

}
