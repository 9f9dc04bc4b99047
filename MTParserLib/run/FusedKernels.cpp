// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FusedKernels.cpp - the table of kernels for two consecutive items.
#include "MTParserLib/run/BuiltInScalars.h"

#include <utility>

namespace {

using namespace scalarkernels;

constexpr std::size_t nbSecondForms = 2;
constexpr std::size_t nbKernels = nbFused * nbOperandForms * nbFused * nbSecondForms;

constexpr MTOperandForm secondForm(std::size_t index)
{
    // not covered: runs while compiling, but for 0
    return index == 0 ? MTOperandForm::ValueMemory : MTOperandForm::MemoryValue;
}

/// The kernel at an index of the table. From the fastest varying to the slowest: second form, second item, first form,
/// first item.
template <std::size_t index>
constexpr MTScalarKernel kernelAt()  // not covered: runs while compiling
{
    constexpr std::size_t second = index / nbSecondForms;
    constexpr std::size_t form = second / nbFused;
    constexpr std::size_t first = form / nbOperandForms;
    return runFused<std::tuple_element_t<first, Fused>, static_cast<MTOperandForm>(form % nbOperandForms),
                    std::tuple_element_t<second % nbFused, Fused>, secondForm(index % nbSecondForms)>;
}

template <std::size_t... indices>
constexpr std::array<MTScalarKernel, nbKernels>
allKernels(std::index_sequence<indices...>)  // not covered: runs while compiling
{
    return {kernelAt<indices>()...};
}

constexpr auto fusedKernels = allKernels(std::make_index_sequence<nbKernels>());

}

MTScalarKernel findFusedKernel(std::size_t firstIndex, MTOperandForm firstForm, std::size_t secondIndex,
                               MTOperandForm form) noexcept
{
    const std::size_t formIndex = form == secondForm(0) ? 0 : 1;
    const std::size_t first = firstIndex * nbOperandForms + static_cast<std::size_t>(firstForm);
    return fusedKernels[(first * nbFused + secondIndex) * nbSecondForms + formIndex];
}
