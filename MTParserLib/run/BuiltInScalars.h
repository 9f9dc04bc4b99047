// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BuiltInScalars.h - builds the scalar kernels of the vocabulary's classes.
//
// A class has kernels for every combination of kinds that its formula has overloads for, one for each form of operands
// (MTOperandForm).
#pragma once

#include "MTParserLib/run/MTScalarSteps.h"
#include "MTParserLib/vocabulary/Operators.h"

#include <array>
#include <cstddef>
#include <tuple>
#include <type_traits>
#include <utility>

namespace scalarkernels {

using formulas::addsOnto;
using formulas::mayRefuse;
using formulas::takesOperands;

template <class Item>
using FormulaOf = typename Item::Formula;

/// An item in code whose runs all start with fresh slots.
template <class Item>
struct OnFreshSlots
{
    using Formula = FormulaOf<Item>;
    static constexpr bool constant = Item::constant;
    static constexpr Message::Id refusal = Item::refusal;
};

template <class Item>
inline constexpr bool hasFreshSlots = false;
template <class Item>
inline constexpr bool hasFreshSlots<OnFreshSlots<Item>> = true;

/// Whether an item of points reads the previous content of its slot. If so, numbers are stored there as well.
template <class Item>
inline constexpr bool readsSlot = !hasFreshSlots<Item> && addsOnto<FormulaOf<Item>, PointValue, PointValue>;

/// Items that are fused in pairs: the arithmetic that most formulas consist of.
using Fused = std::tuple<AddOp, MinusOp, MultOp, DivOp, OnFreshSlots<MultOp>>;
inline constexpr std::size_t nbFused = std::tuple_size_v<Fused>;

template <class Item, class... Items>
constexpr std::size_t findFusedIndex(const std::tuple<Items...>* /*all*/)  // not covered: runs while compiling
{
    std::size_t index = 0;
    const bool isFused = ((std::is_same_v<Item, Items> || (++index, false)) || ...);
    return isFused ? index : MTScalarKernels::notFused;
}

/// Whether an item has kernels for operands of these types, double or PointValue. Only items whose repeated evaluation
/// gives the same result have kernels.
template <class Item, class... Operands>
constexpr bool hasKernels()  // not covered: runs while compiling
{
    if constexpr (hasForm<FormulaOf, Item>)
    {
        return Item::constant &&
               (takesOperands<FormulaOf<Item>, Operands...> || addsOnto<FormulaOf<Item>, Operands...>);
    }
    else
    {
        return false;
    }
}

/// Whether an item yields a point for such operands.
template <class Item, class... Operands>
constexpr bool yieldsPoint()  // not covered: runs while compiling
{
    if constexpr (takesOperands<FormulaOf<Item>, Operands...>)
    {
        return std::is_same_v<decltype(FormulaOf<Item>::of(std::declval<Operands>()...)), PointValue>;
    }
    else
    {
        return false;
    }
}

inline void storePoint(double* slot, PointValue point) noexcept
{
    slot[0] = point.x;
    slot[1] = point.y;
    slot[2] = point.z;
}

/// Computes an item, unless it refuses its operands. Stores a point, and also a product, which a later run may read.
/// @param slot   x of the item's slot
/// @param value  receives a number; unchanged if the result is a point
/// @return whether the item refuses its operands
template <class Item, class... Operands>
bool isRefused(double* slot, double& value, Operands... operands)
{
    using Formula = FormulaOf<Item>;
    if constexpr (mayRefuse<Formula, Operands...>)
    {
        if (Formula::refuses(operands...))
        {
            return true;
        }
    }
    if constexpr (addsOnto<Formula, Operands...>)
    {
        value = Formula::onto(readsSlot<Item> ? *slot : 0.0, operands...);
    }
    else if constexpr (yieldsPoint<Item, Operands...>())
    {
        storePoint(slot, Formula::of(operands...));
    }
    else
    {
        value = Formula::of(operands...);
    }
    if constexpr (readsSlot<Item> && !yieldsPoint<Item, Operands...>())
    {
        *slot = value;
    }
    return false;
}

template <class Operand>
Operand load(const double* x) noexcept
{
    if constexpr (std::is_same_v<Operand, PointValue>)
    {
        return {x[0], x[1], x[2]};
    }
    else
    {
        return *x;
    }
}

/// Loads the operands of an item according to their form, and computes it.
template <class Item, MTOperandForm form, class First, class... Others>
bool isFormRefused(const MTScalarStep& step, double& value)
{
    using Form = MTOperandForm;
    if constexpr (form == Form::SpillMemory)
    {
        *step.spillSlot = value;
    }
    if constexpr (sizeof...(Others) == 2)
    {
        return isRefused<Item>(step.result, value, *step.a, *step.b, form == Form::MemoryValue ? value : *step.c);
    }
    else if constexpr (form == Form::ValueMemory)
    {
        return isRefused<Item>(step.result, value, value, load<Others>(step.a)...);
    }
    else if constexpr (form == Form::MemoryValue)
    {
        return isRefused<Item>(step.result, value, load<First>(step.a), value);
    }
    else
    {
        return isRefused<Item>(step.result, value, load<First>(step.a), load<Others>(step.b)...);
    }
}

template <class Item, MTOperandForm form, class... Operands>
bool runItem(const MTScalarStep* step, double value, void* result, const MTScalarOwner* owner, void* self)
{
    if (isFormRefused<Item, form, Operands...>(*step, value))
    {
        if constexpr (mayRefuse<FormulaOf<Item>, Operands...>)
        {
            return owner->refused(self, step->result, Item::refusal);
        }
    }
    MATHEXPR_JUMP runNext(step, value, result, owner, self);
}

template <class First, MTOperandForm firstForm, class Second, MTOperandForm secondForm>
bool runFused(const MTScalarStep* step, double value, void* result, const MTScalarOwner* owner, void* self)
{
    if (isFormRefused<First, firstForm, double, double>(*step, value))
    {
        if constexpr (mayRefuse<FormulaOf<First>, double, double>)
        {
            return owner->refused(self, step->result, First::refusal);
        }
    }
    if (secondForm == MTOperandForm::ValueMemory ? isRefused<Second>(step->secondResult, value, value, *step->c)
                                                 : isRefused<Second>(step->secondResult, value, *step->c, value))
    {
        if constexpr (mayRefuse<FormulaOf<Second>, double, double>)
        {
            return owner->refused(self, step->secondResult, Second::refusal);
        }
    }
#if defined(__wasm__)
    // A call by address is slow in WebAssembly. If the next step of a polynomial has the same kernel, a jump to itself takes a
    // third of the time.
    if constexpr (firstForm == MTOperandForm::ValueMemory && std::is_same_v<FormulaOf<First>, formulas::Mult> &&
                  std::is_same_v<FormulaOf<Second>, formulas::Add>)
    {
        constexpr MTScalarKernel itself = runFused<First, firstForm, Second, secondForm>;
        if (step[1].kernel == itself)
        {
            MATHEXPR_JUMP itself(step + 1, value, result, owner, self);
        }
    }
#endif
    MATHEXPR_JUMP runNext(step, value, result, owner, self);
}

template <class Operand>
inline constexpr bool isNumber = std::is_same_v<Operand, double>;

/// Adds the kernels of an item for operands of certain types, if it has them.
template <class Item, class First, class... Others>
constexpr void addKernels(MTScalarKernels& item, MTOperandKinds kinds)  // not covered: runs while compiling
{
    using Form = MTOperandForm;
    if constexpr (hasKernels<Item, First, Others...>())
    {
        const auto add = [&](Form form, MTScalarKernel kernel) {
            item.kernels[static_cast<std::size_t>(kinds)][static_cast<std::size_t>(form)] = kernel;
        };
        constexpr std::size_t nbOthers = sizeof...(Others);
        add(Form::Memory, runItem<Item, Form::Memory, First, Others...>);
        // A point leaves the last number alone, which may be one of three operands, though.
        if constexpr (!yieldsPoint<Item, First, Others...>() || nbOthers == 2)
        {
            add(Form::SpillMemory, runItem<Item, Form::SpillMemory, First, Others...>);
        }
        if constexpr (isNumber<First> && nbOthers < 2)
        {
            add(Form::ValueMemory, runItem<Item, Form::ValueMemory, First, Others...>);
        }
        if constexpr (nbOthers > 0 && (isNumber<Others> && ...))
        {
            add(Form::MemoryValue, runItem<Item, Form::MemoryValue, First, Others...>);
        }
    }
}

template <class Item>
constexpr MTScalarKernels makeKernels(const MTScalarKernels* onFreshSlots)  // not covered: runs while compiling
{
    using Kinds = MTOperandKinds;
    MTScalarKernels item;
    item.fusedIndex = findFusedIndex<Item>(static_cast<const Fused*>(nullptr));
    if constexpr (hasForm<FormulaOf, Item>)
    {
        item.readsResult = readsSlot<Item>;
    }
    item.onFreshSlots = onFreshSlots;
    addKernels<Item, double>(item, Kinds::Numbers);
    addKernels<Item, double, double>(item, Kinds::Numbers);
    addKernels<Item, double, double, double>(item, Kinds::Numbers);
    addKernels<Item, PointValue>(item, Kinds::PointNumber);
    addKernels<Item, PointValue, double>(item, Kinds::PointNumber);
    addKernels<Item, double, PointValue>(item, Kinds::NumberPoint);
    addKernels<Item, PointValue, PointValue>(item, Kinds::Points);
    return item;
}

template <class Item>
inline constexpr MTScalarKernels kernelsOnFreshSlots = makeKernels<OnFreshSlots<Item>>(nullptr);

template <class Item>
constexpr const MTScalarKernels* findKernelsOnFreshSlots()  // not covered: runs while compiling
{
    if constexpr (hasForm<FormulaOf, Item>)
    {
        if constexpr (readsSlot<Item>)
        {
            return &kernelsOnFreshSlots<Item>;
        }
    }
    return nullptr;
}

template <class Item>
inline constexpr MTScalarKernels kernels = makeKernels<Item>(findKernelsOnFreshSlots<Item>());

template <class Item>
constexpr const MTScalarKernels* kernelsOf()  // not covered: runs while compiling
{
    constexpr bool hasAny = hasKernels<Item, double>() || hasKernels<Item, double, double>() ||
                            hasKernels<Item, double, double, double>() || hasKernels<Item, PointValue, PointValue>();
    if constexpr (hasAny)
    {
        return &kernels<Item>;
    }
    else
    {
        return nullptr;
    }
}

}
