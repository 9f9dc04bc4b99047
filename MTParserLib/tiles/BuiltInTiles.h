// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BuiltInTiles.h - how the classes of the vocabulary are computed in tiles.
#pragma once

#include "MTParserLib/run/BuiltInScalars.h"
#include "MTParserLib/tiles/MTTileCode.h"
#include "MTParserLib/tiles/TileFormulas.h"
#include "MTParserLib/tiles/TileSines.h"
#include "MTParserLib/vocabulary/CoreMath.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <type_traits>

/// Computes a formula and records whether it refuses.
template <class Formula, class... Operands>
double computeNoting([[maybe_unused]] bool& refused, Operands... operands)
{
    if constexpr (formulas::mayRefuse<Formula, Operands...>)
    {
        refused = Formula::refuses(operands...) || refused;
    }
    return Formula::of(operands...);
}

/// Computes an item whose formula is for double only.
template <class Item>
bool computeTileRows(const MTTileStep& step, const MTTileContext& context)
{
    using Formula = typename Item::Formula;
    const double* const a = context.places[step.a];
    [[maybe_unused]] const double* const b = context.places[step.b];
    double* const result = context.places[step.result];
    bool refused = false;
    for (std::size_t row = 0; row < context.nbRows; ++row)
    {
        if constexpr (scalarkernels::hasKernels<Item, double>())
        {
            result[row] = computeNoting<Formula>(refused, a[row]);
        }
        else
        {
            result[row] = computeNoting<Formula>(refused, a[row], b[row]);
        }
    }
    return refused;
}

template <class Item>
using OfRadians = decltype(Item::Formula::ofRadians(double{}));

/// Computes a function of an angle. The angles of all rows come first: if a processor has predicted a branch of the function
/// wrongly, it notices without waiting for a division.
template <class Formula>
bool computeTileAngles(const MTTileStep& step, const MTTileContext& context)
{
    const double* const degrees = context.places[step.a];
    double* const result = context.places[step.result];
    double* const end = std::transform(degrees, degrees + context.nbRows, result, formulas::Radians::of<double>);
    std::transform(result, end, result, Formula::ofRadians);
    return false;
}

/// Index of an item's formula among those with vector kernels.
template <class Item>
constexpr std::uint8_t findTileFormula()  // not covered: runs while compiling
{
    if constexpr (hasForm<scalarkernels::FormulaOf, Item>)
    {
        return tiles::formulaIndex<typename Item::Formula>;
    }
    else
    {
        return noTileFormula;
    }
}

template <class Item>
constexpr MTTileCall findTileCall()  // not covered: runs while compiling
{
    constexpr bool computes =
        scalarkernels::hasKernels<Item, double>() || scalarkernels::hasKernels<Item, double, double>();
    if constexpr (computes && findTileFormula<Item>() == noTileFormula)
    {
        if constexpr (tiles::hasSines && (std::is_same_v<Item, SinFct> || std::is_same_v<Item, CosFct>))
        {
            return tiles::computeSines<std::is_same_v<Item, CosFct>>;
        }
        else if constexpr (hasForm<OfRadians, Item>)
        {
            return computeTileAngles<typename Item::Formula>;
        }
        else
        {
            return computeTileRows<Item>;
        }
    }
    else
    {
        return nullptr;
    }
}
