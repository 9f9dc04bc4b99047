// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ScalingKernels.h - the kernels of conversions: a number is multiplied and divided by constants, two at a time.
//
//     f2i(x)     x * 0.3048 / 0.0254                one step: * /
//     vm2vmm(x)  x * 1000.0 * 1000.0 * 1000.0       two steps: * * and *
//     cm2cm(x)   x                                  one step without a factor
#pragma once

#include "MTParserLib/run/MTScalarCode.h"
#include "MTParserLib/vocabulary/Conversions.h"
#include "platform/ArrayView.h"

#include <array>
#include <cstddef>

/// The kernels of one step of a conversion by form: Memory, SpillMemory, ValueMemory. The factors stand side by side, where
/// the second operand of an item would stand.
using ScalingKernels = std::array<MTScalarKernel, 3>;

/// As many factors as one step takes, or all that are left.
inline constexpr std::size_t factorsPerStep = 2;

/// How many steps a formula takes: at least one.
std::size_t countScalingSteps(const ConversionFormula& formula) noexcept;

/// The factors of a step, by its number.
platform::ArrayView<const double> factorsOfStep(const ConversionFormula& formula, std::size_t step) noexcept;

const ScalingKernels& findScalingStep(const ConversionFormula& formula, std::size_t step) noexcept;
