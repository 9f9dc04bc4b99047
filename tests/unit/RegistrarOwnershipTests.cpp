// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// RegistrarOwnershipTests.cpp - the items that the registrar deletes, and when it does.
#include "MTParserLib/MTParserRegistrar.h"
#include "tests/unit/EngineItems.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

class Ownership : public testing::Test
{
protected:
    Ownership() { registrar->setSyntax({L'.', L',', L'[', L']'}); }

    std::unique_ptr<MTParserRegistrar> registrar = std::make_unique<MTParserRegistrar>();
    int nbDeleted = 0;
};

TEST_F(Ownership, DeletesOwnedItemsAtTheEnd)
{
    registrar->defineOperator(new TestOperator(L"+", false, 1, &nbDeleted), true);
    registrar->defineOperator(new TestOperator(L"-", true, 1, &nbDeleted), true);
    registrar->defineFunction(new TestFunction(L"f", 1, &nbDeleted), true);
    registrar->defineFunction(new TestFunction(L"f", 2, &nbDeleted), true);
    registrar->defineVariable(new TestVariable(L"x", &nbDeleted));
    EXPECT_EQ(nbDeleted, 0);
    registrar.reset();
    EXPECT_EQ(nbDeleted, 5);
}

TEST_F(Ownership, LeavesOtherItemsAlone)
{
    {
        const auto operatorItem = std::make_unique<TestOperator>(L"+", false, 1, &nbDeleted);
        const auto function = std::make_unique<TestFunction>(L"f", 1, &nbDeleted);
        registrar->defineOperator(operatorItem.get(), false);
        registrar->defineFunction(function.get(), false);
        registrar.reset();
        EXPECT_EQ(nbDeleted, 0);
    }
    EXPECT_EQ(nbDeleted, 2);
}

TEST_F(Ownership, DeletesARefusedItemThatWasHandedOver)
{
    EXPECT_THROW(registrar->defineOperator(new TestOperator(L"", false, 1, &nbDeleted), true),
                 mathexpr::DefinitionException);
    EXPECT_EQ(nbDeleted, 1);
    EXPECT_THROW(registrar->defineFunction(new TestFunction(L"", 1, &nbDeleted), true), mathexpr::DefinitionException);
    EXPECT_EQ(nbDeleted, 2);
    EXPECT_THROW(registrar->defineVariable(new TestVariable(L"", &nbDeleted)), mathexpr::DefinitionException);
    EXPECT_EQ(nbDeleted, 3);
    TestFactory factory(true, &nbDeleted);
    registrar->setVariableFactory(&factory);
    EXPECT_THROW(registrar->defineVariable(std::wstring_view(L"a.b")), mathexpr::DefinitionException);
    EXPECT_EQ(nbDeleted, 4);
    SlotlessFactory slotless(&nbDeleted);
    registrar->setVariableFactory(&slotless);
    EXPECT_THROW(registrar->defineVariable(std::wstring_view(L"a")), mathexpr::DefinitionException);
    EXPECT_EQ(nbDeleted, 5);
    registrar.reset();
    EXPECT_EQ(nbDeleted, 5);
}

TEST_F(Ownership, LeavesARefusedItemThatWasNotHandedOver)
{
    {
        const auto operatorItem = std::make_unique<TestOperator>(L"", false, 1, &nbDeleted);
        const auto function = std::make_unique<TestFunction>(L"", 1, &nbDeleted);
        EXPECT_THROW(registrar->defineOperator(operatorItem.get(), false), mathexpr::DefinitionException);
        EXPECT_THROW(registrar->defineFunction(function.get(), false), mathexpr::DefinitionException);
        EXPECT_EQ(nbDeleted, 0);
    }
    EXPECT_EQ(nbDeleted, 2);
}

TEST_F(Ownership, KeepsAVariableAtItsAddress)
{
    TestFactory factory(true, &nbDeleted);
    registrar->setVariableFactory(&factory);
    registrar->defineVariable(std::wstring_view(L"first"));
    VALTYPE* const address = registrar->getVariableValuePtr(L"first");
    for (int i = 0; i < 100; ++i)
    {
        registrar->defineVariable(L"v" + std::to_wstring(i));
    }
    EXPECT_EQ(registrar->getVariableValuePtr(L"FIRST"), address);
    registrar.reset();
    EXPECT_EQ(nbDeleted, 101);
}

/// A registrar shares the definitions of its prototype until it has definitions of its own.
class Prototype : public testing::Test
{
protected:
    Prototype()
    {
        prototype.setSyntax({L'.', L',', L'[', L']'});
        prototype.defineConstant(L"shared", VALTYPE{});
    }

    static std::size_t countOf(const MTParserRegistrar& counted)
    {
        return counted.getNbOperators() + counted.getNbFunctions() + counted.getNbConstants();
    }

    MTParserRegistrar prototype;
};

TEST_F(Prototype, HasNoneOfTheDefinitionsThatARegistrarAdds)
{
    MTParserRegistrar first(&prototype);
    first.defineOperator(new TestOperator(L"+"), true);
    MTParserRegistrar second(&prototype);
    second.defineFunction(new TestFunction(L"f"), true);
    MTParserRegistrar third(&prototype);
    third.defineConstant(L"c", VALTYPE{});
    MTParserRegistrar fourth(&prototype);
    fourth.setSyntax({L',', L';', L'[', L']'});
    for (const MTParserRegistrar* registrar : {&first, &second, &third})
    {
        EXPECT_EQ(countOf(*registrar), 2U);
        EXPECT_NE(registrar->findConstant(L"shared"), MTParserRegistrar::notFound);
    }
    EXPECT_EQ(fourth.getSyntax().decimalPoint, L',');
    EXPECT_EQ(countOf(prototype), 1U);
    EXPECT_EQ(prototype.getSyntax().decimalPoint, L'.');
}

}
