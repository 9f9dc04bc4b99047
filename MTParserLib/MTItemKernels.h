// MTItemKernels.h - how the evaluator reaches an item that it knows, without a virtual call.
#pragma once

#include "MTParserLib/MTNumberCode.h"
#include "mathexpr/IMathExprItemEvaluator.h"

#include <cstdint>

/// Does what item->evaluate promises. A built-in item has no data, and its function does not look at the item.
using MTEvaluate = bool (*)(const IMathExprItemEvaluator* item, std::uint32_t nbArgs, const VALTYPE* args,
                            VALTYPE& result, bool showMessages);

/// What the vocabulary tells the evaluator about a class. It lives as long as the process.
struct MTItemKernels
{
    MTEvaluate evaluate;
    const MTNumberKernels* numbers = nullptr;  ///< Null where number code cannot stand for the item.
};

/// For an item that is known by its interface only.
inline bool evaluateVirtually(const IMathExprItemEvaluator* item, std::uint32_t nbArgs, const VALTYPE* args,
                              VALTYPE& result, bool showMessages)
{
    return item->evaluate(nbArgs, args, result, showMessages);
}

inline constexpr MTItemKernels virtualKernels{evaluateVirtually};
