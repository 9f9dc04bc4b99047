// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTItemKernels.h - how the evaluator calls an item of a known class without a virtual call.
#pragma once

#include "MTParserLib/MTMessage.h"
#include "MTParserLib/program/MTFrame.h"
#include "MTParserLib/run/MTScalarCode.h"
#include "MTParserLib/tiles/MTTileCode.h"
#include "mathexpr/IMathExprItemEvaluator.h"

#include <cstdint>

class ConversionFormula;
struct MTProgramStep;

/// Evaluates the item of a step, as item->evaluate would, with the operands and the result of the step.
/// @return why the item refuses its operands; Message::InvalidExpression if it gives no reason
using MTEvaluate = Message::Id (*)(const MTProgramStep& step, const MTFrame& frame, bool showMessages);

/// What the evaluator knows about a class of the vocabulary. It lives as long as the process.
struct MTItemKernels
{
    MTEvaluate evaluate;
    /// Whether the item reads its one or two operands at the places that the step names. Otherwise they must be
    /// collected in adjacent slots.
    bool readsInPlace = false;
    const MTScalarKernels* scalar = nullptr;  ///< Null if scalar code cannot run the item.
    /// Of an item that multiplies and divides a number by constants, instead of kernels; otherwise null.
    const ConversionFormula* formula = nullptr;
    std::uint8_t tileFormula = noTileFormula;  ///< Index of its formula among those with vector kernels.
    MTTileCall tileCall = nullptr;             ///< Computes it for numbers, if it has no such formula.
};

/// For an item of which only the interface is known.
extern const MTItemKernels virtualKernels;

inline bool isHostItem(const MTItemKernels& kernels) noexcept
{
    return kernels.evaluate == virtualKernels.evaluate;
}
