// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// RegistrarShortageTests.cpp - memory runs out at every allocation of a definition. A failed definition changes
// nothing, and succeeds when it is repeated with enough memory.
#include "MTParserLib/MTParserDefFuncs.h"
#include "MTParserLib/MTParserRegistrar.h"
#include "tests/support/FailingMemory.h"
#include "tests/unit/EngineItems.h"

#include <gtest/gtest.h>

#include <functional>
#include <new>
#include <ostream>
#include <string>

namespace {

using memory::Failing;

/// A kind of definition. Each index has a different name.
struct Definition
{
    const char* kind;
    std::function<void(MTParserRegistrar&, int index)> define;
    std::function<bool(const MTParserRegistrar&, int index)> isKnown;
    std::function<std::size_t(const MTParserRegistrar&)> count;

    friend std::ostream& operator<<(std::ostream& out, const Definition& definition) { return out << definition.kind; }
};

std::wstring nameOf(int index)
{
    return L"a_name_so_long_that_its_string_takes_memory_" + std::to_wstring(index);
}

/// A symbol of characters that no other symbol contains.
std::wstring symbolOf(int index)
{
    return std::wstring(20, static_cast<wchar_t>(0x3041 + index));
}

const Definition definitions[] = {
    {"operator",
     [](MTParserRegistrar& registrar, int index) { registrar.defineOperator(new TestOperator(symbolOf(index)), true); },
     [](const MTParserRegistrar& registrar, int index) {
         std::wstring_view symbol;
         const bool isSymbol = registrar.isOperatorSymbol(symbolOf(index), symbol);
         const bool isFound = registrar.findOperator(symbolOf(index), false) != MTParserRegistrar::notFound;
         EXPECT_EQ(isSymbol, isFound);
         return isFound;
     },
     [](const MTParserRegistrar& registrar) { return registrar.getNbOperators(); }},
    {"function",
     [](MTParserRegistrar& registrar, int index) { registrar.defineFunction(new TestFunction(nameOf(index)), true); },
     [](const MTParserRegistrar& registrar, int index) {
         return registrar.findFunction(nameOf(index)) != MTParserRegistrar::notFound;
     },
     [](const MTParserRegistrar& registrar) { return registrar.getNbFunctions(); }},
    {"overload",
     [](MTParserRegistrar& registrar, int index) {
         registrar.defineFunction(new TestFunction(nameOf(0), static_cast<std::uint32_t>(index + 1)), true);
     },
     [](const MTParserRegistrar& registrar, int index) {
         return registrar.findFunctionOverload(nameOf(0), static_cast<std::uint32_t>(index + 1)) !=
                MTParserRegistrar::notFound;
     },
     [](const MTParserRegistrar& registrar) { return registrar.getNbFunctions(); }},
    {"constant", [](MTParserRegistrar& registrar, int index) { registrar.defineConstant(nameOf(index), VALTYPE{}); },
     [](const MTParserRegistrar& registrar, int index) {
         return registrar.findConstant(nameOf(index)) != MTParserRegistrar::notFound;
     },
     [](const MTParserRegistrar& registrar) { return registrar.getNbConstants(); }},
    {"variable",
     [](MTParserRegistrar& registrar, int index) { registrar.defineVariable(new TestVariable(nameOf(index))); },
     [](const MTParserRegistrar& registrar, int index) { return registrar.findVariable(nameOf(index)) != nullptr; },
     [](const MTParserRegistrar& registrar) { return registrar.getNbVariables(); }},
};

/// Repeats a definition with its first allocation failing, then its second, until it succeeds.
void defineWithShortages(const Definition& definition, MTParserRegistrar& registrar, int index)
{
    const std::size_t countBefore = definition.count(registrar);
    bool felt = true;
    for (std::size_t n = 1; felt; ++n)
    {
        SCOPED_TRACE("allocation " + std::to_string(n));
        bool defined = false;
        try
        {
            const memory::Shortage shortage(n, Failing::Once);
            definition.define(registrar, index);
            felt = shortage.wasFelt();
            defined = true;
        }
        catch (const std::bad_alloc&)
        {}
        ASSERT_NE(defined, felt);
        ASSERT_EQ(defined, definition.isKnown(registrar, index));
        ASSERT_EQ(definition.count(registrar), countBefore + (defined ? 1 : 0));
    }
}

class RegistrarShortages : public testing::TestWithParam<Definition>
{};

// There are enough definitions for every container to grow several times.
TEST_P(RegistrarShortages, DefineNothingPartially)
{
    SCOPED_TRACE(GetParam());  // the first trace allocates permanently
    const std::size_t aliveBefore = memory::aliveCount();
    {
        MTParserRegistrar registrar;
        registrar.setSyntax({L'.', L',', L'[', L']'});
        for (int index = 0; index < 40 && !HasFatalFailure(); ++index)
        {
            SCOPED_TRACE(index);
            defineWithShortages(GetParam(), registrar, index);
        }
        for (int index = 0; index < 40 && !HasFatalFailure(); ++index)
        {
            EXPECT_TRUE(GetParam().isKnown(registrar, index)) << index;
        }
    }
    EXPECT_EQ(memory::aliveCount(), aliveBefore);
}

INSTANTIATE_TEST_SUITE_P(Every, RegistrarShortages, testing::ValuesIn(definitions),
                         [](const auto& each) { return std::string(each.param.kind); });

TEST(VocabularyMemory, SufficesForTheWholeVocabularyOrNothingIsDefined)
{
    bool felt = true;
    for (std::size_t n = 1; felt; ++n)
    {
        SCOPED_TRACE("allocation " + std::to_string(n));
        MTParserRegistrar registrar;
        bool defined = false;
        try
        {
            const memory::Shortage shortage(n, Failing::Once);
            registerVocabulary(registrar);
            felt = shortage.wasFelt();
            defined = true;
        }
        catch (const std::bad_alloc&)
        {}
        ASSERT_NE(defined, felt);
        EXPECT_EQ(registrar.getNbOperators() != 0, defined);
        EXPECT_EQ(registrar.getNbFunctions() != 0, defined);
        EXPECT_EQ(registrar.findFunction(L"sin") != MTParserRegistrar::notFound, defined);
    }
}

TEST(VocabularyMemory, IsReleasedWithTheRegistrar)
{
    const std::size_t aliveBefore = memory::aliveCount();
    {
        MTParserRegistrar registrar;
        registrar.setSyntax({L'.', L',', L'[', L']'});
        registerConstants(registrar);
        registerVocabulary(registrar);
        EXPECT_GT(memory::aliveCount(), aliveBefore);
    }
    EXPECT_EQ(memory::aliveCount(), aliveBefore);
}

}
