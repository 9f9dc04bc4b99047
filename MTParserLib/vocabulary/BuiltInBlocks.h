// BuiltInBlocks.h - makes the block kernels of the classes of the vocabulary. They are loops over the class's own
// compute, written so that compilers vectorise those of the simple arithmetic.
#pragma once

#include "MTParserLib/MTBlockKernels.h"
#include "MTParserLib/vocabulary/BuiltInKernels.h"

#include <cstdint>

namespace blockkernels {

template <MTBlockForm form>
double first(const double* a, std::size_t row)
{
    return a[form == MTBlockForm::FirstUniform ? 0 : row];
}

template <MTBlockForm form>
double second(const double* b, std::size_t row)
{
    return b[form == MTBlockForm::SecondUniform ? 0 : row];
}

template <class Item>
void computeUnary(const double* a, const double*, double* result, std::size_t nbRows)
{
    for (std::size_t row = 0; row < nbRows; ++row)
    {
        result[row] = Item::compute(a[row]);
    }
}

template <class Item, MTBlockForm form>
void computeBinary(const double* a, const double* b, double* result, std::size_t nbRows)
{
    // Read before the loop, which could otherwise not know that it does not change them.
    const double uniformA = *a;
    const double uniformB = *b;
    for (std::size_t row = 0; row < nbRows; ++row)
    {
        result[row] = Item::compute(form == MTBlockForm::FirstUniform ? uniformA : a[row],
                                    form == MTBlockForm::SecondUniform ? uniformB : b[row]);
    }
}

// Rows are counted rather than searched for the first, so that the loop has no other way out.

template <class Item>
bool isUnaryOutside(const double* a, const double*, std::size_t nbRows)
{
    std::int64_t nbOutside = 0;
    for (std::size_t row = 0; row < nbRows; ++row)
    {
        nbOutside += Item::isOutside(a[row]) ? 1 : 0;
    }
    return nbOutside != 0;
}

template <class Item, MTBlockForm form>
bool isBinaryOutside(const double* a, const double* b, std::size_t nbRows)
{
    std::int64_t nbOutside = 0;
    for (std::size_t row = 0; row < nbRows; ++row)
    {
        nbOutside += Item::isOutside(first<form>(a, row), second<form>(b, row)) ? 1 : 0;
    }
    return nbOutside != 0;
}

template <class Item>
concept ComputesFromThree = numberkernels::yieldsOnlyX<Item>() && requires(double x)
{
    static_cast<double>(Item::compute(x, x, x));
};

template <class Item>
concept ComputesFromMany = numberkernels::yieldsOnlyX<Item>() && requires(std::span<const VALTYPE> values)
{
    static_cast<double>(Item::compute(values));
};

template <class Item>
void computeMany(std::span<const MTBlockOperand> operands, VALTYPE* args, double* result, std::size_t nbRows)
{
    for (std::size_t row = 0; row < nbRows; ++row)
    {
        for (std::size_t j = 0; j < operands.size(); ++j)
        {
            args[j].x = operands[j].values[operands[j].uniform ? 0 : row];
        }
        if constexpr (ComputesFromThree<Item>)
        {
            result[row] = Item::compute(args[0].x, args[1].x, args[2].x);
        }
        else
        {
            result[row] = Item::compute(std::span(std::as_const(args), operands.size()));
        }
    }
}

template <class Item>
constexpr MTBlockKernels makeKernels()
{
    using enum MTBlockForm;
    MTBlockKernels kernels{};
    if constexpr (numberkernels::ComputesFromOne<Item>)
    {
        kernels.compute = {computeUnary<Item>, nullptr, nullptr};
        if constexpr (requires(double x) { Item::isOutside(x); })
        {
            kernels.outside = {isUnaryOutside<Item>, nullptr, nullptr};
        }
    }
    else if constexpr (numberkernels::ComputesFromTwo<Item>)
    {
        kernels.compute = {computeBinary<Item, NoneUniform>, computeBinary<Item, FirstUniform>,
                           computeBinary<Item, SecondUniform>};
        if constexpr (requires(double x) { Item::isOutside(x, x); })
        {
            kernels.outside = {isBinaryOutside<Item, NoneUniform>, isBinaryOutside<Item, FirstUniform>,
                               isBinaryOutside<Item, SecondUniform>};
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
constexpr const MTBlockKernels* builtInBlocks()
{
    if constexpr (numberkernels::ComputesFromOne<Item> || numberkernels::ComputesFromTwo<Item> ||
                  blockkernels::ComputesFromThree<Item> || blockkernels::ComputesFromMany<Item>)
    {
        return &blockkernels::kernels<Item>;
    }
    else
    {
        return nullptr;
    }
}
