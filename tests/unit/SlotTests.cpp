// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// SlotTests.cpp - the order of the virtual functions, which is part of the interface, and their default results.
#include "mathexpr/IMathExprService.h"
#include "mathexpr/IMathFunction.h"
#include "mathexpr/IMathOperator.h"
#include "mathexpr/IMathVariableFactory.h"
#include "mathexpr/MathExpression.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <memory>

namespace {

struct PlainOperator final : IMathOperator
{
    std::wstring getHelpString() const override { return L"help"; }
    std::wstring getDescription() const override { return L"description"; }
    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE&, bool) const override { return false; }
    std::int32_t getPrecedence() const override { return 3; }
    std::wstring getSymbol() const override { return L"symbol"; }
};

struct PlainFunction final : IMathFunction
{
    std::wstring getHelpString() const override { return L"help"; }
    std::wstring getDescription() const override { return L"description"; }
    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE&, bool) const override { return false; }
    std::wstring getSymbol() const override { return L"symbol"; }
    std::uint32_t getNbArgs() const override { return NB_ARGS_UNDEFINED; }
};

struct PlainVariable final : IMathVariable
{
    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE&, bool) const override { return false; }
    std::wstring getSymbol() const override { return L"symbol"; }
    VALTYPE* getValuePtr() override { return &value; }

    VALTYPE value;
};

TEST(Defaults, OfAnOperator)
{
    const PlainOperator item;
    EXPECT_TRUE(item.isConstant());
    EXPECT_FALSE(item.isUnaryOp());
}

TEST(Defaults, OfAFunction)
{
    const PlainFunction item;
    EXPECT_TRUE(item.isConstant());
    EXPECT_EQ(NB_ARGS_UNDEFINED, 0xFFFFFFFFu);
}

TEST(Defaults, OfAVariable)
{
    const PlainVariable item;
    EXPECT_EQ(item.getHelpString(), L"");
    EXPECT_EQ(item.getDescription(), L"");
    EXPECT_FALSE(item.isConstant());
    EXPECT_EQ(item.reservedSlot(), 0);
}

TEST(MemoryVariable, IsTheNumberZeroWhenMadeByTheFactory)
{
    MathExpression::MemVariableFactory factory;
    const std::unique_ptr<IMathVariable> variable(factory.create(L"name"));
    EXPECT_EQ(variable->getSymbol(), L"name");
    EXPECT_EQ(variable->getHelpString(), L"");
    EXPECT_EQ(variable->getDescription(), L"");
    EXPECT_FALSE(variable->isConstant());
    EXPECT_EQ(variable->reservedSlot(), 0);
    VALTYPE value{9, 9, 9, 9, 9.0, 9.0, 9.0};
    EXPECT_TRUE(variable->evaluate(0, nullptr, value, true));
    const VALTYPE zero{};
    EXPECT_EQ(std::memcmp(&value, &zero, sizeof(VALTYPE)), 0);
}

TEST(MemoryVariable, YieldsTheValueAtItsAddressWhateverTheArguments)
{
    MathExpression::MemVariableFactory factory;
    const std::unique_ptr<IMathVariable> variable(factory.create(L"p"));
    const VALTYPE point{1, 1, 0, 0, 1.0, 2.0, 3.0};
    VALTYPE* const address = variable->getValuePtr();
    *address = point;
    const VALTYPE args[3] = {};
    for (const std::uint32_t nbArgs : {0u, 1u, 3u, 1000u})
    {
        VALTYPE value;
        EXPECT_TRUE(variable->evaluate(nbArgs, nbArgs > 3 ? nullptr : args, value, false));
        EXPECT_EQ(std::memcmp(&value, &point, sizeof(VALTYPE)), 0);
    }
    EXPECT_EQ(variable->getValuePtr(), address);
}

TEST(MemoryVariable, StartsWithItsInitialValue)
{
    const VALTYPE point{1, 0, 0, 0, 1.0, 2.0, 3.0};
    MathExpression::MemVariableEvaluator variable(L"p", point);
    EXPECT_EQ(variable.getSymbol(), L"p");
    EXPECT_EQ(std::memcmp(variable.getValuePtr(), &point, sizeof(VALTYPE)), 0);
}

#if defined(__GNUC__) && defined(__x86_64__) && !defined(_WIN32)

/// The slot of a virtual function. In this ABI, a pointer to a virtual function is 1 plus its offset in the table. The
/// destructor, slot 0, has two entries in the table.
template <class Operation>
std::size_t slotOf(Operation operation)
{
    std::ptrdiff_t encoded[2];
    static_assert(sizeof(encoded) == sizeof(operation));
    std::memcpy(encoded, &operation, sizeof(operation));
    return static_cast<std::size_t>(encoded[0] - 1) / sizeof(void*) - 1;
}

TEST(Slots, OfAnItem)
{
    EXPECT_EQ(slotOf(&IMathExprItemEvaluator::getHelpString), 1u);
    EXPECT_EQ(slotOf(&IMathExprItemEvaluator::getDescription), 2u);
    EXPECT_EQ(slotOf(&IMathExprItemEvaluator::isConstant), 3u);
    EXPECT_EQ(slotOf(&IMathExprItemEvaluator::evaluate), 4u);
}

TEST(Slots, OfAnOperator)
{
    EXPECT_EQ(slotOf(&IMathOperator::getHelpString), 1u);
    EXPECT_EQ(slotOf(&IMathOperator::getDescription), 2u);
    EXPECT_EQ(slotOf(&IMathOperator::isConstant), 3u);
    EXPECT_EQ(slotOf(&IMathOperator::evaluate), 4u);
    EXPECT_EQ(slotOf(&IMathOperator::getPrecedence), 5u);
    EXPECT_EQ(slotOf(&IMathOperator::getSymbol), 6u);
    EXPECT_EQ(slotOf(&IMathOperator::isUnaryOp), 7u);
}

TEST(Slots, OfAFunction)
{
    EXPECT_EQ(slotOf(&IMathFunction::getHelpString), 1u);
    EXPECT_EQ(slotOf(&IMathFunction::getDescription), 2u);
    EXPECT_EQ(slotOf(&IMathFunction::isConstant), 3u);
    EXPECT_EQ(slotOf(&IMathFunction::evaluate), 4u);
    EXPECT_EQ(slotOf(&IMathFunction::getSymbol), 5u);
    EXPECT_EQ(slotOf(&IMathFunction::getNbArgs), 6u);
}

TEST(Slots, OfAVariable)
{
    EXPECT_EQ(slotOf(&IMathVariable::getHelpString), 1u);
    EXPECT_EQ(slotOf(&IMathVariable::getDescription), 2u);
    EXPECT_EQ(slotOf(&IMathVariable::isConstant), 3u);
    EXPECT_EQ(slotOf(&IMathVariable::evaluate), 4u);
    EXPECT_EQ(slotOf(&IMathVariable::reservedSlot), 5u);
    EXPECT_EQ(slotOf(&IMathVariable::getSymbol), 6u);
    EXPECT_EQ(slotOf(&IMathVariable::getValuePtr), 7u);
}

TEST(Slots, OfTheFactoryAndTheService)
{
    EXPECT_EQ(slotOf(&IMathVariableFactory::create), 1u);
    EXPECT_EQ(slotOf(&IMathExprService::lookupValue), 1u);
}

/// The entries of an object's table from slot 1 on.
void* const* tableOf(const void* object)
{
    void* const* table = nullptr;
    std::memcpy(&table, object, sizeof(table));
    return table + 1;
}

TEST(Slots, AreCalledThroughTheTable)
{
    PlainVariable variable;
    variable.value.x = 5.0;
    const IMathVariable* const item = &variable;
    using GetValuePtr = VALTYPE* (*)(const IMathVariable*);
    using ReservedSlot = std::int32_t (*)(const IMathVariable*);
    EXPECT_EQ(reinterpret_cast<GetValuePtr>(tableOf(item)[7])(item), &variable.value);
    EXPECT_EQ(reinterpret_cast<ReservedSlot>(tableOf(item)[5])(item), 0);

    const PlainOperator operatorItem;
    const IMathOperator* const asOperator = &operatorItem;
    using GetPrecedence = std::int32_t (*)(const IMathOperator*);
    using IsUnaryOp = bool (*)(const IMathOperator*);
    EXPECT_EQ(reinterpret_cast<GetPrecedence>(tableOf(asOperator)[5])(asOperator), 3);
    EXPECT_FALSE(reinterpret_cast<IsUnaryOp>(tableOf(asOperator)[7])(asOperator));

    const PlainFunction function;
    const IMathFunction* const asFunction = &function;
    using GetNbArgs = std::uint32_t (*)(const IMathFunction*);
    EXPECT_EQ(reinterpret_cast<GetNbArgs>(tableOf(asFunction)[6])(asFunction), NB_ARGS_UNDEFINED);
}

TEST(Slots, AnItemIsNothingButItsInterface)
{
    EXPECT_EQ(sizeof(IMathOperator), sizeof(void*));
    EXPECT_EQ(sizeof(IMathFunction), sizeof(void*));
    EXPECT_EQ(sizeof(IMathVariable), sizeof(void*));
    EXPECT_EQ(sizeof(IMathVariableFactory), sizeof(void*));
    EXPECT_EQ(sizeof(IMathExprService), sizeof(void*));
}

#endif

}
