// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Conversions.cpp - see Conversions.h.
#include "MTParserLib/vocabulary/Conversions.h"

double ConversionFormula::compute(double x) const noexcept
{
    for (std::size_t j = 0; j < nbFactors; ++j)
    {
        x = divisions[j] ? x / factors[j] : x * factors[j];
    }
    return x;
}

void ConversionText::convert(const VALTYPE& argument, VALTYPE& result) const
{
    if (isPoint(argument))
    {
        refusePoint(line);
    }
    if (kind == ConversionResult::Copied)
    {
        result = argument;
        return;
    }
    setNumber(result, formula.compute(argument.x));
    result.flag = kind == ConversionResult::Converted ? 1 : 0;
    result.reserved = 0;
}

bool Conversion::evaluate(std::uint32_t, const VALTYPE* args, VALTYPE& result, bool) const
{
    describe().convert(args[0], result);
    return true;
}
