// Conversions.h - the unit conversions: what they all do, and a class for each row of the table.
#pragma once

#include "MTParserLib/vocabulary/BuiltInItem.h"

#include <cstdint>

/// What a conversion writes. A plain number and a whole copy are not the same: the second flag tells "&" that a value
/// was converted.
enum class ConversionResult
{
    Converted,  ///< type 0, flag 1, reserved 0 and x by the formula; y and z stay.
    FlagZero,   ///< As Converted, but with flag 0.
    Copied,     ///< The whole argument record, bit by bit, without arithmetic.
};

/// A function of one number that states compute, its formula. Nothing is outside its domain; a point raises the
/// exception.
template <class Function, ConversionResult kind>
class Conversion : public BuiltInFunction<Function>
{
public:
    static constexpr bool copiesArgument = kind == ConversionResult::Copied;

    static bool apply(const VALTYPE& a, VALTYPE& result, bool)
    {
        if (isPoint(a))
        {
            refusePoint(Function::text.line);
        }
        if constexpr (copiesArgument)
        {
            result = a;
        }
        else
        {
            setNumber(result, Function::compute(a.x));
            result.flag = kind == ConversionResult::Converted ? 1 : 0;
            result.reserved = 0;
        }
        return true;
    }
};

/// The lines of the table are counted on from here in exceptions, so that none is also a line of CoreMath.h.
inline constexpr std::uint32_t firstConversionLine = 1000;

#define CONVERSION(family, Class, symbol_, help_, description_, kind, formula)                                         \
    struct Class final : Conversion<Class, ConversionResult::kind>                                                     \
    {                                                                                                                  \
        static constexpr FunctionText text{symbol_, help_, description_, 1, firstConversionLine + __LINE__};           \
        static double compute(double x) { return formula; }                                                            \
    };
#include "MTParserLib/vocabulary/ConversionTable.h"
