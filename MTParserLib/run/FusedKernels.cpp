// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FusedKernels.cpp - the table of kernels for two consecutive items.
#include "MTParserLib/run/BuiltInScalars.h"

#include <array>
#include <utility>

namespace {

using namespace scalarkernels;

constexpr std::array secondForms{MTOperandForm::ValueMemory, MTOperandForm::MemoryValue};
constexpr std::size_t nbKernels = nbFused * nbOperandForms * nbFused * secondForms.size();

/// The kernel at an index of the table. From the fastest varying to the slowest: second form, second item, first form,
/// first item.
template <std::size_t index>
constexpr MTScalarKernel kernelAt()  // not covered: runs while compiling
{
    constexpr std::size_t second = index / secondForms.size();
    constexpr std::size_t form = second / nbFused;
    constexpr std::size_t first = form / nbOperandForms;
    return runFused<std::tuple_element_t<first, Fused>, static_cast<MTOperandForm>(form % nbOperandForms),
                    std::tuple_element_t<second % nbFused, Fused>, secondForms[index % secondForms.size()]>;
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
    const std::size_t formIndex = form == secondForms.front() ? 0 : 1;
    const std::size_t first = firstIndex * nbOperandForms + static_cast<std::size_t>(firstForm);
    return fusedKernels[(first * nbFused + secondIndex) * secondForms.size() + formIndex];
}
