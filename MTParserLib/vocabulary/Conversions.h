// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Conversions.h - the unit conversions: what they all do, and a class for each row of the table.
//
// The formula of a row is recorded when the library is compiled: x stands for a formula without factors, and each "*"
// and "/" adds one. So "x * 3600.0 / 3240.0" is the list {* 3600, / 3240}, which one function computes for all
// conversions, one after the other from left to right.
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
    /// Whether the number is divided by a factor, and not multiplied.
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

/// What a conversion writes. A plain number and a whole copy are not the same: the second flag tells "&" that a value
/// was converted.
enum class ConversionResult
{
    Converted,  ///< type 0, flag 1, reserved 0 and x by the formula; y and z stay.
    FlagZero,   ///< As Converted, but with flag 0.
    Copied,     ///< The whole argument record, bit by bit, without arithmetic.
};

/// All that a conversion is.
struct ConversionText : FunctionText
{
    ConversionResult kind;
    ConversionFormula formula;

    /// Nothing is outside the domain; a point raises the exception.
    void convert(const VALTYPE& argument, VALTYPE& result) const;
};

/// A function of one number that states its text.
class Conversion : public DescribedFunction
{
public:
    static constexpr bool constant = true;

    bool isConstant() const final { return constant; }
    bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const final;

protected:
    const ConversionText& describe() const noexcept override = 0;
};

/// The lines of the table are counted on from here in exceptions, so that none is also a line of CoreMath.h.
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
