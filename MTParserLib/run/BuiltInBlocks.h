// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BuiltInBlocks.h - makes the block kernels of the classes of the vocabulary. They are loops over the class's own
// formulas, written so that compilers vectorise those of the simple arithmetic.
#pragma once

#include "MTParserLib/run/BuiltInScalars.h"
#include "MTParserLib/run/MTBlockKernels.h"
#include "platform/ArrayView.h"

#include <array>
#include <cstdint>
#include <utility>

namespace blockkernels {

/// Computes a result for each row. So many results at a time are computed before they are stored that compilers, who
/// cannot know whether the arrays overlap, have a stretch without stores to vectorise.
template <class Compute>
void computeRows(double* result, std::size_t nbRows, Compute compute)
{
    constexpr std::size_t nbAtOnce = 8;
    std::size_t row = 0;
    for (; row + nbAtOnce <= nbRows; row += nbAtOnce)
    {
        std::array<double, nbAtOnce> computed;
        for (std::size_t j = 0; j < nbAtOnce; ++j)
        {
            computed[j] = compute(row + j);
        }
        for (std::size_t j = 0; j < nbAtOnce; ++j)
        {
            result[row + j] = computed[j];
        }
    }
    for (; row < nbRows; ++row)
    {
        result[row] = compute(row);
    }
}

/// Whether something holds for any row. Written so that compilers vectorise it: there is no other way out of the loop.
template <class Condition>
bool holdsInAnyRow(std::size_t nbRows, Condition condition)
{
    std::int64_t holds = 0;
    for (std::size_t row = 0; row < nbRows; ++row)
    {
        holds = condition(row) ? std::int64_t{1} : holds;
    }
    return holds != 0;
}

template <class Item>
void computeUnary(const double* a, const double*, double* result, std::size_t nbRows)
{
    computeRows(result, nbRows, [a](std::size_t row) { return Item::Formula::of(a[row]); });
}

template <class Item, MTBlockForm form>
void computeBinary(const double* a, const double* b, double* result, std::size_t nbRows)
{
    computeRows(result, nbRows, [a, b, uniformA = *a, uniformB = *b](std::size_t row) {
        return Item::Formula::of(form == MTBlockForm::FirstUniform ? uniformA : a[row],
                                 form == MTBlockForm::SecondUniform ? uniformB : b[row]);
    });
}

template <class Item>
bool isUnaryOutside(const double* a, const double*, std::size_t nbRows)
{
    return holdsInAnyRow(nbRows, [a](std::size_t row) { return Item::Formula::refuses(a[row]); });
}

template <class Item, MTBlockForm form>
bool isBinaryOutside(const double* a, const double* b, std::size_t nbRows)
{
    return holdsInAnyRow(nbRows, [a, b](std::size_t row) {
        return Item::Formula::refuses(a[form == MTBlockForm::FirstUniform ? 0 : row],
                                      b[form == MTBlockForm::SecondUniform ? 0 : row]);
    });
}

template <class Item>
using NumberFromThree = decltype(double{Item::Formula::of(0.0, 0.0, 0.0)});
template <class Item>
using NumberFromMany = decltype(Item::Formula::of(std::declval<platform::ArrayView<const VALTYPE>>()));

template <class Item>
inline constexpr bool ComputesFromThree = scalarkernels::yieldsSameAgain<Item>() && hasForm<NumberFromThree, Item>;
template <class Item>
inline constexpr bool ComputesFromMany = scalarkernels::yieldsSameAgain<Item>() && hasForm<NumberFromMany, Item>;

template <class Item>
void computeMany(platform::ArrayView<const MTBlockOperand> operands, VALTYPE* args, double* result, std::size_t nbRows)
{
    for (std::size_t row = 0; row < nbRows; ++row)
    {
        for (std::size_t j = 0; j < operands.size(); ++j)
        {
            args[j].x = operands[j].values[operands[j].uniform ? 0 : row];
        }
        if constexpr (ComputesFromThree<Item>)
        {
            result[row] = Item::Formula::of(args[0].x, args[1].x, args[2].x);
        }
        else
        {
            result[row] = Item::Formula::of(platform::ArrayView(std::as_const(args), operands.size()));
        }
    }
}

template <class Item>
constexpr MTBlockKernels makeKernels()  // not covered: runs while compiling
{
    using Form = MTBlockForm;
    MTBlockKernels kernels{};
    if constexpr (scalarkernels::ComputesFromOne<Item>)
    {
        kernels.compute = {computeUnary<Item>, nullptr, nullptr};
        if constexpr (mayRefuse<typename Item::Formula, double>)
        {
            kernels.outside = {isUnaryOutside<Item>, nullptr, nullptr};
        }
    }
    else if constexpr (scalarkernels::ComputesFromTwo<Item>)
    {
        kernels.compute = {computeBinary<Item, Form::NoneUniform>, computeBinary<Item, Form::FirstUniform>,
                           computeBinary<Item, Form::SecondUniform>};
        if constexpr (mayRefuse<typename Item::Formula, double, double>)
        {
            kernels.outside = {isBinaryOutside<Item, Form::NoneUniform>, isBinaryOutside<Item, Form::FirstUniform>,
                               isBinaryOutside<Item, Form::SecondUniform>};
        }
    }
    else
    {
        kernels.computeMany = computeMany<Item>;
    }
    return kernels;
}

template <class Item>
inline constexpr MTBlockKernels kernels = makeKernels<Item>();

}

/// For a class of the vocabulary; null where it has none.
template <class Item>
constexpr const MTBlockKernels* builtInBlocks()  // not covered: runs while compiling
{
    if constexpr (scalarkernels::ComputesFromOne<Item> || scalarkernels::ComputesFromTwo<Item> ||
                  blockkernels::ComputesFromThree<Item> || blockkernels::ComputesFromMany<Item>)
    {
        return &blockkernels::kernels<Item>;
    }
    else
    {
        return nullptr;
    }
}
