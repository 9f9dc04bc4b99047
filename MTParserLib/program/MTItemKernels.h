// MTItemKernels.h - how the evaluator reaches an item that it knows, without a virtual call.
#pragma once

#include "MTParserLib/run/MTNumberCode.h"
#include "mathexpr/IMathExprItemEvaluator.h"

#include <cstdint>

struct MTProgramStep;

/// Evaluates the item of a step: does what item->evaluate promises, with the operands and the destination of the step.
using MTEvaluate = bool (*)(const MTProgramStep& step, bool showMessages);

/// What the vocabulary tells the evaluator about a class. It lives as long as the process.
struct MTItemKernels
{
    MTEvaluate evaluate;
    /// Whether it takes its one or two operands from where the step says that they stand. Otherwise they have to be
    /// collected in the argument slots of the step.
    bool readsInPlace = false;
    const MTNumberKernels* numbers = nullptr;  ///< Null where number code cannot stand for the item.
};

/// For an item that is known by its interface only.
extern const MTItemKernels virtualKernels;
