// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTItemKernels.h - how the evaluator reaches an item that it knows, without a virtual call.
#pragma once

#include "MTParserLib/MTMessage.h"
#include "MTParserLib/program/MTFrame.h"
#include "MTParserLib/run/MTScalarCode.h"
#include "MTParserLib/tiles/MTTileCode.h"
#include "mathexpr/IMathExprItemEvaluator.h"

#include <cstdint>

class ConversionFormula;
struct MTProgramStep;

/// Evaluates the item of a step: does what item->evaluate promises, with the operands and the result of the step.
/// @return why the item refuses its operands; Message::InvalidExpression for an item that gives no reason
using MTEvaluate = Message::Id (*)(const MTProgramStep& step, const MTFrame& frame, bool showMessages);

/// What the vocabulary tells the evaluator about a class. It lives as long as the process.
struct MTItemKernels
{
    MTEvaluate evaluate;
    /// Whether it takes its one or two operands from where the step says that they stand. Otherwise they have to be
    /// collected in slots side by side.
    bool readsInPlace = false;
    const MTScalarKernels* scalar = nullptr;  ///< Null where scalar code cannot stand for the item.
    /// Of an item that multiplies and divides a number by constants, in place of kernels; null for all others.
    const ConversionFormula* formula = nullptr;
    std::uint8_t tileFormula = noTileFormula;  ///< Of its formula among those that have kernels of vectors.
    MTTileCall tileCall = nullptr;             ///< Computes it of numbers, where it has no such formula.
};

/// For an item that is known by its interface only.
extern const MTItemKernels virtualKernels;

inline bool isHostItem(const MTItemKernels& kernels) noexcept
{
    return kernels.evaluate == virtualKernels.evaluate;
}
