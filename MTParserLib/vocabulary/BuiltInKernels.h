// BuiltInKernels.h - makes the evaluator's kernels of the classes of the vocabulary.
//
// Every class has a direct call. A class that computes a number from one or two numbers, and nothing else, has number
// kernels as well: one for each place in which its operands may stand. They call the class's own compute, so that there
// is one statement of each formula.
#pragma once

#include "MTParserLib/MTItemKernels.h"
#include "MTParserLib/vocabulary/BuiltInItem.h"
#include "MTParserLib/vocabulary/Operators.h"

#include <array>
#include <cstddef>
#include <tuple>
#include <type_traits>

template <class Item>
bool evaluateDirectly(const IMathExprItemEvaluator*, std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result,
                      bool showMessages)
{
    return Item::apply(nbArgs, args, result, showMessages);
}

namespace numberkernels {

/// Items of which two in a row become one step: the arithmetic that formulas are mostly made of.
using Fused = std::tuple<AddOp, MinusOp, MultOp, DivOp>;
inline constexpr std::size_t nbFused = std::tuple_size_v<Fused>;

template <class Item, std::size_t index = 0>
constexpr std::size_t fusedIndexOf()
{
    if constexpr (index == nbFused)
    {
        return MTNumberKernels::notFused;
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

/// Whether an item comes to the same x when it is computed again, and writes nothing else that may change. Random
/// numbers would be drawn twice where the program runs after its number code gave up; a whole copy takes y and z along.
template <class Item>
constexpr bool yieldsOnlyX()
{
    bool yields = true;
    if constexpr (requires { Item::constant; })
    {
        yields = Item::constant;
    }
    if constexpr (requires { Item::copiesArgument; })
    {
        yields = yields && !Item::copiesArgument;
    }
    return yields;
}

template <class Item>
concept ComputesFromOne = yieldsOnlyX<Item>() && requires(double x)
{
    static_cast<double>(Item::compute(x));
};

template <class Item>
concept ComputesFromTwo = yieldsOnlyX<Item>() && requires(double x)
{
    static_cast<double>(Item::compute(x, x));
};

/// Computes one item, unless it refuses.
template <class Item, class... Operands>
double computeItem(const MTNumberStep& step, double* product, MTNumberRun& run, Operands... operands)
{
    if constexpr (requires { Item::isOutside(operands...); })
    {
        if (Item::isOutside(operands...))
        {
            run.refuse(step);
            return 0.0;
        }
    }
    const double result = Item::compute(operands...);
    if constexpr (requires { Item::readsResult; })
    {
        *product = result;
    }
    return result;
}

template <class Item, MTOperandForm form>
double computeUnary(const MTNumberStep& step, double value, MTNumberRun& run)
{
    if constexpr (form == MTOperandForm::PushMemory)
    {
        *run.top++ = value;
    }
    const double operand = form == MTOperandForm::ValueMemory ? value : *step.a;
    return computeItem<Item>(step, step.product, run, operand);
}

template <class Item, MTOperandForm form>
double computeBinary(const MTNumberStep& step, double value, MTNumberRun& run)
{
    if constexpr (form == MTOperandForm::ValueMemory)
    {
        return computeItem<Item>(step, step.product, run, value, *step.a);
    }
    else if constexpr (form == MTOperandForm::MemoryValue)
    {
        return computeItem<Item>(step, step.product, run, *step.a, value);
    }
    else if constexpr (form == MTOperandForm::StackValue)
    {
        return computeItem<Item>(step, step.product, run, *--run.top, value);
    }
    else
    {
        if constexpr (form == MTOperandForm::PushMemory)
        {
            *run.top++ = value;
        }
        return computeItem<Item>(step, step.product, run, *step.a, *step.b);
    }
}

template <class First, MTOperandForm firstForm, class Second, MTOperandForm secondForm>
double computeFused(const MTNumberStep& step, double value, MTNumberRun& run)
{
    const double first = computeBinary<First, firstForm>(step, value, run);
    if constexpr (requires { First::isOutside(value, value); })
    {
        if (run.refused)
        {
            return first;
        }
    }
    if constexpr (secondForm == MTOperandForm::ValueMemory)
    {
        return computeItem<Second>(step, step.secondProduct, run, first, *step.c);
    }
    else
    {
        return computeItem<Second>(step, step.secondProduct, run, *step.c, first);
    }
}

template <class Item>
constexpr MTNumberKernels unaryKernels()
{
    using enum MTOperandForm;
    return {
        {computeUnary<Item, Memory>, computeUnary<Item, PushMemory>, computeUnary<Item, ValueMemory>, nullptr, nullptr},
        1,
        MTNumberKernels::notFused};
}

template <class Item>
constexpr MTNumberKernels binaryKernels()
{
    using enum MTOperandForm;
    return {{computeBinary<Item, Memory>, computeBinary<Item, PushMemory>, computeBinary<Item, ValueMemory>,
             computeBinary<Item, MemoryValue>, computeBinary<Item, StackValue>},
            2,
            fusedIndexOf<Item>()};
}

template <class Item>
inline constexpr MTNumberKernels kernelsFromOne = unaryKernels<Item>();
template <class Item>
inline constexpr MTNumberKernels kernelsFromTwo = binaryKernels<Item>();

template <class Item>
constexpr const MTNumberKernels* kernelsOf()
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

/// For a class of the vocabulary.
template <class Item>
inline constexpr MTItemKernels builtInKernels{evaluateDirectly<Item>, numberkernels::kernelsOf<Item>()};
