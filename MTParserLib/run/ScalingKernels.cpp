// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ScalingKernels.cpp - one kernel for each sequence of up to two multiplications and divisions.
#include "MTParserLib/run/ScalingKernels.h"

#include "MTParserLib/run/BuiltInScalars.h"

#include <algorithm>
#include <array>

namespace {

/// Multiplies or divides a number by each of the factors; which of them divide is known at compile time.
template <bool... divides>
double scale(double x, const std::array<double, sizeof...(divides)>& factors)
{
    [[maybe_unused]] const double* factor = factors.data();
    ((x = divides ? x / *factor : x * *factor, ++factor), ...);
    return x;
}

template <bool... divides>
std::array<double, sizeof...(divides)> load([[maybe_unused]] const double* factors)
{
    std::array<double, sizeof...(divides)> loaded;
    std::copy_n(factors, loaded.size(), loaded.begin());
    return loaded;
}

template <MTOperandForm form, bool... divides>
bool runScaling(const MTScalarStep* step, double value, void* result, const MTScalarOwner* owner, void* self)
{
    if constexpr (form == MTOperandForm::SpillMemory)
    {
        *step->spillSlot = value;
    }
    const bool scalesValue = form == MTOperandForm::ValueMemory;
    const double x = scalesValue ? value : *step->a;
    const double* const factors = scalesValue ? step->a : step->b;
    MATHEXPR_JUMP scalarkernels::runNext(step, scale<divides...>(x, load<divides...>(factors)), result, owner, self);
}

template <bool... divides>
constexpr ScalingKernels stepThat{runScaling<MTOperandForm::Memory, divides...>,
                                  runScaling<MTOperandForm::SpillMemory, divides...>,
                                  runScaling<MTOperandForm::ValueMemory, divides...>};

// Indexed by whether each factor divides.
constexpr const ScalingKernels* ofOne[] = {&stepThat<false>, &stepThat<true>};
constexpr const ScalingKernels* ofTwo[][2] = {{&stepThat<false, false>, &stepThat<false, true>},
                                              {&stepThat<true, false>, &stepThat<true, true>}};

}

std::size_t countScalingSteps(const ConversionFormula& formula) noexcept
{
    return std::max<std::size_t>(1, (formula.getFactors().size() + factorsPerStep - 1) / factorsPerStep);
}

platform::ArrayView<const double> factorsOfStep(const ConversionFormula& formula, std::size_t step) noexcept
{
    const platform::ArrayView<const double> rest = formula.getFactors().subspan(step * factorsPerStep);
    return rest.first(std::min(factorsPerStep, rest.size()));
}

const ScalingKernels& findScalingStep(const ConversionFormula& formula, std::size_t step) noexcept
{
    const std::size_t first = step * factorsPerStep;
    switch (factorsOfStep(formula, step).size())
    {
    case 0:
        return stepThat<>;
    case 1:
        return *ofOne[formula.divides(first) ? 1 : 0];
    default:
        return *ofTwo[formula.divides(first) ? 1 : 0][formula.divides(first + 1) ? 1 : 0];
    }
}
