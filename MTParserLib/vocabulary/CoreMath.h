// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CoreMath.h - trigonometry, roots, powers, logarithms, rounding, minimum and maximum, sums, random numbers.
//
// Angles are degrees. Every function writes type (number) and x of the result and leaves the rest. All but "abs" raise
// the exception for a point as their first argument, before they look at their domain; of a point given as a later
// argument they read x.
#pragma once

#include "MTParserLib/vocabulary/FormulaItem.h"
#include "platform/ArrayView.h"

#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

/// A function of one number that declares of, unless it names a formula.
template <class Function, class FormulaOfNumber = Function, Message::Id domainMessage = Message::None>
class UnaryFunction : public BuiltInFunction<Function>
{
public:
    using Formula = FormulaOfNumber;
    static constexpr NumberWrites writes = NumberWrites::Kind;
    static constexpr Message::Id refusal = domainMessage;

    static Message::Id apply(const VALTYPE& a, VALTYPE& result)
    {
        if (isPoint(a))
        {
            refusePoint(Function::text.line);
        }
        return applyFormula<Function>(result, a.x);
    }
};

/// A function of one number that also declares refuses: it refuses with the message if that returns true.
template <class Function, Message::Id domainMessage>
using DomainFunction = UnaryFunction<Function, Function, domainMessage>;

/// A function of an angle in degrees that declares ofRadians.
template <class Function>
struct AngleFunction : UnaryFunction<Function>
{
    static double of(double degrees) { return Function::ofRadians(formulas::Radians::of(degrees)); }
};

/// A function of two numbers that declares of, unless it names a formula.
template <class Function, class FormulaOfNumbers = Function>
class BinaryFunction : public BuiltInFunction<Function>
{
public:
    using Formula = FormulaOfNumbers;
    static constexpr NumberWrites writes = NumberWrites::Kind;

    static Message::Id apply(const VALTYPE& a, const VALTYPE& b, VALTYPE& result)
    {
        if (isPoint(a))
        {
            refusePoint(Function::text.line);
        }
        return applyFormula<Function>(result, a.x, b.x);
    }
};

/// A function of more numbers: of three doubles, or of all argument records.
template <class Function, class FormulaOfNumbers = Function>
class VariadicFunction : public BuiltInFunction<Function>
{
public:
    using Formula = FormulaOfNumbers;
    static constexpr NumberWrites writes = NumberWrites::Kind;

    static Message::Id apply(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result)
    {
        if (nbArgs != 0 && isPoint(args[0]))
        {
            refusePoint(Function::text.line);
        }
        if constexpr (Function::text.nbArgs == 3)
        {
            return applyFormula<Function>(result, args[0].x, args[1].x, args[2].x);
        }
        else
        {
            static_assert(Function::text.nbArgs == NB_ARGS_UNDEFINED);
            return applyFormula<Function>(result, platform::ArrayView(args, nbArgs));
        }
    }
};

namespace coremath {

/// Truncates toward zero. NaN and values out of range yield the smallest integer, as the processor's own conversion
/// does; C++ leaves these cases undefined.
inline std::int32_t truncate(double x)
{
    const bool fits = x > -2147483649.0 && x < 2147483648.0;
    return fits ? static_cast<std::int32_t>(x) : std::numeric_limits<std::int32_t>::min();
}

inline bool isOutsideInt32(double x)
{
    return x < -2147483648.0 || x > 2147483647.0;
}

/// NaN for no values, which an expression cannot request.
/// @tparam OfTwo  function of a value and the extreme of the values before it
template <class OfTwo>
double extreme(platform::ArrayView<const VALTYPE> values)
{
    double found = values.empty() ? std::numeric_limits<double>::quiet_NaN() : values[0].x;
    for (const VALTYPE& value : values)
    {
        found = OfTwo::of(value.x, found);
    }
    return found;
}

/// 0 to 1 inclusive in 32767 steps, whatever the range of the platform's generator.
inline double random()
{
    return (std::rand() & 0x7FFF) / 32767.0;  // NOLINT(concurrency-mt-unsafe): rand locks, or is per thread
}

}

struct SinFct final : AngleFunction<SinFct>
{
    static constexpr FunctionText text{L"sin", L"sin(x)", L"Sine", 1, __LINE__};
    static double ofRadians(double angle) { return std::sin(angle); }
};

struct ArcSinFct final : DomainFunction<ArcSinFct, Message::ArcDomain>
{
    static constexpr FunctionText text{L"asin", L"asin(x)", L"Arcsine", 1, __LINE__};
    static bool refuses(double x) { return x < -1.0 || x > 1.0; }
    static double of(double x) { return formulas::Degrees::of(std::asin(x)); }
};

/// The hyperbolic functions also take degrees.
struct SinhFct final : AngleFunction<SinhFct>
{
    static constexpr FunctionText text{L"sinh", L"sinh(x)", L"Hyperbolic sine", 1, __LINE__};
    static double ofRadians(double angle) { return std::sinh(angle); }
};

struct CosFct final : AngleFunction<CosFct>
{
    static constexpr FunctionText text{L"cos", L"cos(x)", L"Cosine", 1, __LINE__};
    static double ofRadians(double angle) { return std::cos(angle); }
};

struct ArcCosFct final : DomainFunction<ArcCosFct, Message::ArcDomain>
{
    static constexpr FunctionText text{L"acos", L"acos(x)", L"Arccosine", 1, __LINE__};
    static bool refuses(double x) { return x < -1.0 || x > 1.0; }
    static double of(double x) { return formulas::Degrees::of(std::acos(x)); }
};

struct CoshFct final : AngleFunction<CoshFct>
{
    static constexpr FunctionText text{L"cosh", L"cosh(x)", L"Hyperbolic cosine", 1, __LINE__};
    static double ofRadians(double angle) { return std::cosh(angle); }
};

struct TanFct final : AngleFunction<TanFct>
{
    static constexpr FunctionText text{L"tan", L"tan(x)", L"Tangent", 1, __LINE__};
    static double ofRadians(double angle) { return std::tan(angle); }
};

struct ArcTanFct final : UnaryFunction<ArcTanFct>
{
    static constexpr FunctionText text{L"atan", L"atan(x)", L"Arctangent", 1, __LINE__};
    static double of(double x) { return formulas::Degrees::of(std::atan(x)); }
};

struct TanhFct final : AngleFunction<TanhFct>
{
    static constexpr FunctionText text{L"tanh", L"tanh(x)", L"Hyperbolic tangent", 1, __LINE__};
    static double ofRadians(double angle) { return std::tanh(angle); }
};

struct SqrtFct final : UnaryFunction<SqrtFct, formulas::Sqrt, Message::SqrtDomain>
{
    static constexpr FunctionText text{L"sqrt", L"sqrt(x)", L"Square root", 1, __LINE__};
};

struct MinFct final : BinaryFunction<MinFct, formulas::Min>
{
    static constexpr FunctionText text{L"min", L"min(x,y)", L"Return smaller of two values", 2, __LINE__};
};

struct Min3Fct final : VariadicFunction<Min3Fct, formulas::OfThree<formulas::Min>>
{
    static constexpr FunctionText text{L"min", L"min(x,y,z)", L"Return smaller of three values", 3, __LINE__};
};

struct MinUndefFct final : VariadicFunction<MinUndefFct>
{
    static constexpr FunctionText text{L"min", L"min(v1,v2,v3,...)", L"Return smaller of a set of values",
                                       NB_ARGS_UNDEFINED, __LINE__};
    static double of(platform::ArrayView<const VALTYPE> values) { return coremath::extreme<formulas::Min>(values); }
};

struct MaxFct final : BinaryFunction<MaxFct, formulas::Max>
{
    static constexpr FunctionText text{L"max", L"max(x,y)", L"Return larger of two values", 2, __LINE__};
};

struct Max3Fct final : VariadicFunction<Max3Fct, formulas::OfThree<formulas::Max>>
{
    static constexpr FunctionText text{L"max", L"max(x,y,z)", L"Return larger of three values", 3, __LINE__};
};

struct MaxUndefFct final : VariadicFunction<MaxUndefFct>
{
    static constexpr FunctionText text{L"max", L"max(v1,v2,v3,...)", L"Return larger of a set of values",
                                       NB_ARGS_UNDEFINED, __LINE__};
    static double of(platform::ArrayView<const VALTYPE> values) { return coremath::extreme<formulas::Max>(values); }
};

struct AbsFct final : BuiltInFunction<AbsFct>
{
    static constexpr FunctionText text{L"abs", L"abs(x)", L"Absolute value", 1};
    using Formula = formulas::Abs;
    static constexpr NumberWrites writes = NumberWrites::Kind;

    static Message::Id apply(const VALTYPE& a, VALTYPE& result) { return applyByKind<AbsFct>(a, result); }
};

/// Never seeded by the library: uses the process's default sequence, shared with all its other users.
struct RandFct final : BuiltInFunction<RandFct>
{
    static constexpr FunctionText text{L"rand", L"rand()", L"Random value between 0 and 1", 0};
    static constexpr bool constant = false;

    static Message::Id apply(std::uint32_t, const VALTYPE*, VALTYPE& result)
    {
        setNumber(result, coremath::random());
        return Message::None;
    }
};

struct RandMinMaxFct final : BinaryFunction<RandMinMaxFct>
{
    static constexpr FunctionText text{L"rand", L"rand(min, max)", L"Random value between min and max", 2, __LINE__};
    static constexpr bool constant = false;
    static double of(double min, double max) { return min + coremath::random() * (max - min); }
};

struct CeilFct final : UnaryFunction<CeilFct>
{
    static constexpr FunctionText text{L"ceil", L"ceil(x)", L"Ceiling", 1, __LINE__};
    static double of(double x) { return std::ceil(x); }
};

struct FloorFct final : UnaryFunction<FloorFct>
{
    static constexpr FunctionText text{L"floor", L"floor(x)", L"Floor", 1, __LINE__};
    static double of(double x) { return std::floor(x); }
};

/// The natural logarithm; "log" is base 10.
struct LogFct final : DomainFunction<LogFct, Message::LnDomain>
{
    static constexpr FunctionText text{L"ln", L"ln(x)", L"Natural logarithm", 1, __LINE__};
    static bool refuses(double x) { return x <= 0.0; }
    static double of(double x) { return std::log(x); }
};

struct Log10Fct final : DomainFunction<Log10Fct, Message::LogDomain>
{
    static constexpr FunctionText text{L"log", L"log(x)", L"Base-10 logarithm", 1, __LINE__};
    static bool refuses(double x) { return x <= 0.0; }
    static double of(double x) { return std::log10(x); }
};

struct SumFct final : VariadicFunction<SumFct>
{
    static constexpr FunctionText text{L"sum", L"sum(v1,v2,v3,...)", L"Return the sum of a set of values",
                                       NB_ARGS_UNDEFINED, __LINE__};

    static double of(platform::ArrayView<const VALTYPE> values)
    {
        double sum = 0.0;
        for (const VALTYPE& value : values)
        {
            sum += value.x;
        }
        return sum;
    }
};

struct AvgFct final : VariadicFunction<AvgFct>
{
    static constexpr FunctionText text{L"avg", L"avg(v1,v2,v3,...)", L"Return the average of a set of values",
                                       NB_ARGS_UNDEFINED, __LINE__};
    static double of(platform::ArrayView<const VALTYPE> values)
    {
        return SumFct::of(values) / static_cast<double>(values.size());
    }
};

/// Multiplies the value that the result holds on entry by (n-1)!, so it is not a factorial of the argument alone.
struct FactorialFct final : BuiltInFunction<FactorialFct>
{
    static constexpr FunctionText text{L"fact", L"fact(x)", L"Return the factorial of x: x*(x-1)*(x-2)*...(x-x+1)", 1,
                                       __LINE__};

    static Message::Id apply(const VALTYPE& a, VALTYPE& result)
    {
        if (isPoint(a))
        {
            refusePoint(text.line);
        }
        const std::int32_t n = coremath::truncate(a.x);
        setNumber(result, n <= 0 ? 0.0 : multiplyDown(result.x, n - 1));
        return Message::None;
    }

private:
    /// Stops as soon as further factors cannot change the product, so that a huge n takes no time.
    static double multiplyDown(double product, std::int32_t factor)
    {
        for (; factor >= 2 && product != 0.0 && std::isfinite(product); --factor)
        {
            product *= factor;
        }
        return product;
    }
};

struct SqrFct final : UnaryFunction<SqrFct, formulas::Square>
{
    static constexpr FunctionText text{L"sqr", L"sqr(x)", L"Square", 1, __LINE__};
};

struct ExpFct final : UnaryFunction<ExpFct>
{
    static constexpr FunctionText text{L"exp", L"exp(x)", L"Calculates e raised to the power of x", 1, __LINE__};
    static double of(double x) { return std::exp(x); }
};

struct Exp10Fct final : UnaryFunction<Exp10Fct>
{
    static constexpr FunctionText text{L"exp10", L"exp10(x)", L"Calculates 10 raised to the power of x", 1, __LINE__};

    static double of(double x)
    {
        // Volatile: a compiler that knows the base would replace pow(10, x) by exp10(x), which differs in the last
        // bits.
        const volatile double ten = 10.0;
        return std::pow(ten, x);
    }
};

/// Rounds halves away from zero.
struct RoundFct final : DomainFunction<RoundFct, Message::RoundDomain>
{
    static constexpr FunctionText text{L"round", L"round(x)", L"Round", 1, __LINE__};
    static bool refuses(double x) { return coremath::isOutsideInt32(x); }
    static double of(double x) { return coremath::truncate(x >= 0.0 ? x + 0.5 : x - 0.5); }
};

struct TruncFct final : DomainFunction<TruncFct, Message::RoundDomain>
{
    static constexpr FunctionText text{L"trunc", L"trunc(x)", L"Truncate", 1, __LINE__};
    static bool refuses(double x) { return coremath::isOutsideInt32(x); }
    static double of(double x) { return coremath::truncate(x); }
};

/// Unlike the angle conversions, "r2d" and "d2r" use the short pi and do not set the second flag.
struct R2dFct final : UnaryFunction<R2dFct, formulas::Degrees>
{
    static constexpr FunctionText text{L"r2d", L"r2d(x)", L"Convert Radians To Degrees", 1, __LINE__};
};

struct D2rFct final : UnaryFunction<D2rFct, formulas::Radians>
{
    static constexpr FunctionText text{L"d2r", L"d2r(x)", L"Convert Degrees To Radians", 1, __LINE__};
};

/// Unlike the operator "^", passes a zero base to the standard library: pow(0,0) is 1.
struct PowFct final : BinaryFunction<PowFct>
{
    static constexpr FunctionText text{L"pow", L"pow(x,y)", L"the y power of x", 2, __LINE__};
    static double of(double x, double y) { return std::pow(x, y); }
};
