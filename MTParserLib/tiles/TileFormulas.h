// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TileFormulas.h - the formulas that have vector kernels, and their indices.
#pragma once

#include "MTParserLib/tiles/MTTileCode.h"
#include "MTParserLib/vocabulary/Formulas.h"

#include <cstdint>

namespace tiles {

template <class... Formulas>
struct FormulaList
{};

using VectorFormulas =
    FormulaList<formulas::Add, formulas::Minus, formulas::Mult, formulas::Div, formulas::Negate, formulas::Greater,
                formulas::Lesser, formulas::GreaterEqual, formulas::LesserEqual, formulas::NotEqual, formulas::Equal,
                formulas::Or, formulas::Not, formulas::Cross, formulas::Sqrt, formulas::Square, formulas::Abs,
                formulas::Min, formulas::Max, formulas::Radians, formulas::Degrees, formulas::MakePoint, formulas::Dist,
                formulas::Nor, formulas::Vec, formulas::Vec1>;

template <class Wanted, class List>
inline constexpr std::uint8_t indexIn = noTileFormula;
template <class Wanted, class... Others>
inline constexpr std::uint8_t indexIn<Wanted, FormulaList<Wanted, Others...>> = 0;
template <class Wanted, class First, class... Others>
inline constexpr std::uint8_t indexIn<Wanted, FormulaList<First, Others...>> =
    indexIn<Wanted, FormulaList<Others...>> == noTileFormula
        ? noTileFormula
        : static_cast<std::uint8_t>(1 + indexIn<Wanted, FormulaList<Others...>>);

template <class Formula>
inline constexpr std::uint8_t formulaIndex = indexIn<Formula, VectorFormulas>;

/// Formulas of which any two share a kernel. They are the first ones of the list above, so that the indices agree.
using JoinedFormulas = FormulaList<formulas::Add, formulas::Minus, formulas::Mult>;
inline constexpr std::uint8_t nbJoinedFormulas = 3;
static_assert(formulaIndex<formulas::Add> == 0 && formulaIndex<formulas::Minus> == 1 &&
              formulaIndex<formulas::Mult> == 2);

}
