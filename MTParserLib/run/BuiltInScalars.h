// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BuiltInScalars.h - makes the number kernels of the classes of the vocabulary.
//
// A class that computes a number from one or two numbers, and nothing else, has a kernel for each place in which its
// operands may stand. They call the class's own formula.
#pragma once

#include "MTParserLib/run/MTScalarCode.h"
#include "MTParserLib/vocabulary/Operators.h"

#include <array>
#include <cstddef>
#include <tuple>
#include <type_traits>

namespace scalarkernels {

/// Items of which two in a row become one step: the arithmetic that formulas are mostly made of.
using Fused = std::tuple<AddOp, MinusOp, MultOp, DivOp>;
inline constexpr std::size_t nbFused = std::tuple_size_v<Fused>;

template <class Item, std::size_t index = 0>
constexpr std::size_t fusedIndexOf()  // not covered: runs while compiling
{
    if constexpr (index == nbFused)
    {
        return MTScalarKernels::notFused;
    }
    else if constexpr (std::is_same_v<Item, std::tuple_element_t<index, Fused>>)
    {
        return index;
    }
    else
    {
        return fusedIndexOf<Item, index + 1>();
    }
}

template <class Item>
using Constancy = decltype(Item::constant);

/// Whether an item comes to the same x when it is computed again. Random numbers would be drawn twice where the program
/// runs after its scalar code gave up.
template <class Item>
constexpr bool yieldsSameAgain()  // not covered: runs while compiling
{
    if constexpr (hasForm<Constancy, Item>)
    {
        return Item::constant;
    }
    else
    {
        return true;
    }
}

template <class Item>
using NumberFromOne = decltype(double{Item::Formula::of(0.0)});
template <class Item>
using NumberFromTwo = decltype(double{Item::Formula::of(0.0, 0.0)});

template <class Item>
inline constexpr bool ComputesFromOne = yieldsSameAgain<Item>() && hasForm<NumberFromOne, Item>;
template <class Item>
inline constexpr bool ComputesFromTwo = yieldsSameAgain<Item>() && hasForm<NumberFromTwo, Item>;

/// Computes one item, unless it refuses its operands.
template <class Item, class... Operands>
double computeItem(double* product, bool& refused, Operands... operands)
{
    using Formula = typename Item::Formula;
    if constexpr (mayRefuse<Formula, Operands...>)
    {
        refused = Formula::refuses(operands...);
        if (refused)
        {
            return 0.0;
        }
    }
    const double result = Formula::of(operands...);
    if constexpr (addsOnto<Formula, PointValue, PointValue>)
    {
        *product = result;
    }
    return result;
}

/// Fetches the operands of an item from where they stand, and computes it.
template <class Item, MTOperandForm form>
double computeForm(const MTScalarStep& step, double value, double*& top, bool& refused)
{
    using Form = MTOperandForm;
    if constexpr (form == Form::PushMemory)
    {
        *top++ = value;
    }
    if constexpr (ComputesFromOne<Item>)
    {
        return computeItem<Item>(step.product, refused, form == Form::ValueMemory ? value : *step.a);
    }
    else if constexpr (form == Form::ValueMemory)
    {
        return computeItem<Item>(step.product, refused, value, *step.a);
    }
    else if constexpr (form == Form::MemoryValue)
    {
        return computeItem<Item>(step.product, refused, *step.a, value);
    }
    else if constexpr (form == Form::StackValue)
    {
        return computeItem<Item>(step.product, refused, *--top, value);
    }
    else
    {
        return computeItem<Item>(step.product, refused, *step.a, *step.b);
    }
}

/// Runs the next step. As the last thing that a kernel does, this is a jump.
inline double runNext(const MTScalarStep* step, double value, double* top, bool* refused)
{
    ++step;
    return step->kernel(step, value, top, refused);
}

template <class Item, MTOperandForm form>
double runItem(const MTScalarStep* step, double value, double* top, bool* refused)
{
    bool itemRefused = false;
    const double result = computeForm<Item, form>(*step, value, top, itemRefused);
    if (itemRefused)
    {
        *refused = true;
        return result;
    }
    return runNext(step, result, top, refused);
}

template <class First, MTOperandForm firstForm, class Second, MTOperandForm secondForm>
double runFused(const MTScalarStep* step, double value, double* top, bool* refused)
{
    bool itemRefused = false;
    const double first = computeForm<First, firstForm>(*step, value, top, itemRefused);
    if (itemRefused)
    {
        *refused = true;
        return first;
    }
    const double result = secondForm == MTOperandForm::ValueMemory
                              ? computeItem<Second>(step->secondProduct, itemRefused, first, *step->c)
                              : computeItem<Second>(step->secondProduct, itemRefused, *step->c, first);
    if (itemRefused)
    {
        *refused = true;
        return result;
    }
    return runNext(step, result, top, refused);
}

template <class Item>
constexpr MTScalarKernels unaryKernels()  // not covered: runs while compiling
{
    using Form = MTOperandForm;
    return {{runItem<Item, Form::Memory>, runItem<Item, Form::PushMemory>, runItem<Item, Form::ValueMemory>, nullptr,
             nullptr},
            MTScalarKernels::notFused};
}

template <class Item>
constexpr MTScalarKernels binaryKernels()  // not covered: runs while compiling
{
    using Form = MTOperandForm;
    return {{runItem<Item, Form::Memory>, runItem<Item, Form::PushMemory>, runItem<Item, Form::ValueMemory>,
             runItem<Item, Form::MemoryValue>, runItem<Item, Form::StackValue>},
            fusedIndexOf<Item>()};
}

template <class Item>
inline constexpr MTScalarKernels kernelsFromOne = unaryKernels<Item>();
template <class Item>
inline constexpr MTScalarKernels kernelsFromTwo = binaryKernels<Item>();

template <class Item>
constexpr const MTScalarKernels* kernelsOf()  // not covered: runs while compiling
{
    if constexpr (ComputesFromOne<Item>)
    {
        return &kernelsFromOne<Item>;
    }
    else if constexpr (ComputesFromTwo<Item>)
    {
        return &kernelsFromTwo<Item>;
    }
    else
    {
        return nullptr;
    }
}

}
