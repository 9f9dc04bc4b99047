// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BuiltInKernels.h - builds the kernels of the vocabulary's classes.
#pragma once

#include "MTParserLib/program/MTItemKernels.h"
#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/run/BuiltInScalars.h"
#include "MTParserLib/tiles/BuiltInTiles.h"
#include "MTParserLib/vocabulary/BuiltInItem.h"
#include "MTParserLib/vocabulary/Conversions.h"

#include <type_traits>

template <class Item>
Message::Id evaluateDirectly(const MTProgramStep& step, const MTFrame& frame, bool showMessages)
{
    const auto operand = [&](std::uint32_t index) -> const VALTYPE& { return frame[step.operand(index)]; };
    return showRefusal(applyTo<Item>(step.nbArgs, operand, frame.slots[step.result]), showMessages);
}

template <class Item>
Message::Id evaluateConversion(const MTProgramStep& step, const MTFrame& frame, bool)
{
    Item::text.convert(frame[step.first], frame.slots[step.result]);
    return Message::None;
}

template <class Item>
constexpr MTItemKernels makeItemKernels()  // not covered: runs while compiling
{
    if constexpr (std::is_base_of_v<Conversion, Item>)
    {
        const bool computes = Item::text.kind != ConversionResult::Copied;
        return {evaluateConversion<Item>, true, nullptr, computes ? &Item::text.formula : nullptr};
    }
    else
    {
        return {evaluateDirectly<Item>,           TakesOneOperand<Item> || TakesTwoOperands<Item>,
                scalarkernels::kernelsOf<Item>(), nullptr,
                findTileFormula<Item>(),          findTileCall<Item>()};
    }
}

/// For a class of the vocabulary.
template <class Item>
inline constexpr MTItemKernels builtInKernels = makeItemKernels<Item>();
