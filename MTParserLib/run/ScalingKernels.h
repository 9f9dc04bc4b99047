// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ScalingKernels.h - the kernels of unit conversions: multiplications and divisions by constants, two per step.
//
//     f2i(x)     x * 0.3048 / 0.0254                one step: * /
//     vm2vmm(x)  x * 1000.0 * 1000.0 * 1000.0       two steps: * * and *
//     cm2cm(x)   x                                  one step without factors
#pragma once

#include "MTParserLib/run/MTScalarCode.h"
#include "MTParserLib/vocabulary/Conversions.h"
#include "platform/ArrayView.h"

#include <array>
#include <cstddef>

/// The kernels of one step of a conversion, by form: Memory, SpillMemory, ValueMemory. The factors are adjacent and take
/// the place of a second operand.
using ScalingKernels = std::array<MTScalarKernel, 3>;

/// Upper bound on the factors of a step.
inline constexpr std::size_t factorsPerStep = 2;

/// Number of steps of a formula, at least one.
std::size_t countScalingSteps(const ConversionFormula& formula) noexcept;

/// The factors of a step, by its index.
platform::ArrayView<const double> factorsOfStep(const ConversionFormula& formula, std::size_t step) noexcept;

const ScalingKernels& findScalingStep(const ConversionFormula& formula, std::size_t step) noexcept;
