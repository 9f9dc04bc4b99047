// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Conversions.h - the unit conversions: their base class, and one class per row of the table.
//
// The formula of a row is recorded at compile time: x stands for a formula without factors, and each "*" and "/"
// appends one. So "x * 3600.0 / 3240.0" is the list {* 3600, / 3240}. One function evaluates the lists of all
// conversions, from left to right.
#pragma once

#include "MTParserLib/vocabulary/BuiltInItem.h"
#include "platform/ArrayView.h"

#include <array>
#include <cstddef>
#include <cstdint>

/// A number multiplied and divided by constants.
class ConversionFormula
{
public:
    static constexpr std::size_t maxFactors = 6;

    constexpr ConversionFormula operator*(double factor) const { return followedBy(factor, false); }
    constexpr ConversionFormula operator/(double factor) const { return followedBy(factor, true); }

    constexpr platform::ArrayView<const double> getFactors() const noexcept
    {
        return platform::ArrayView(factors).first(nbFactors);
    }
    /// Whether the factor divides the number; otherwise it multiplies.
    constexpr bool divides(std::size_t index) const noexcept { return divisions[index]; }

    double compute(double x) const noexcept;

private:
    constexpr ConversionFormula followedBy(double factor, bool dividing) const
    {
        ConversionFormula longer = *this;
        longer.factors[nbFactors] = factor;
        longer.divisions[nbFactors] = dividing;
        ++longer.nbFactors;
        return longer;
    }

    std::array<double, maxFactors> factors{};
    std::array<bool, maxFactors> divisions{};
    std::size_t nbFactors = 0;
};

/// What a conversion writes. A plain number and a full copy differ: the second flag marks a converted value for "&".
enum class ConversionResult
{
    Converted,  ///< type 0, flag 1, reserved 0 and x by the formula; y and z stay.
    FlagZero,   ///< As Converted, but with flag 0.
    Copied,     ///< The whole argument record, bit for bit, without arithmetic.
};

/// The properties of a conversion.
struct ConversionText : FunctionText
{
    ConversionResult kind;
    ConversionFormula formula;

    /// Accepts every number; a point raises the exception.
    void convert(const VALTYPE& argument, VALTYPE& result) const;
};

/// A function of one number with a text.
class Conversion : public DescribedFunction
{
public:
    static constexpr bool constant = true;

    bool isConstant() const final { return constant; }
    bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const final;

protected:
    const ConversionText& describe() const noexcept override = 0;
};

/// Base of the line numbers of conversions in exceptions; distinct from the line numbers of CoreMath.h.
inline constexpr std::uint32_t firstConversionLine = 1000;

#define CONVERSION(family, Class, symbol_, help_, description_, kind, formula)                                         \
    struct Class final : Conversion                                                                                    \
    {                                                                                                                  \
        static constexpr ConversionText text{{symbol_, help_, description_, 1, firstConversionLine + __LINE__},        \
                                             ConversionResult::kind,                                                   \
                                             [](ConversionFormula x) { return formula; }({})};                         \
        const ConversionText& describe() const noexcept final { return text; }                                         \
    };
#include "MTParserLib/vocabulary/ConversionTable.h"
