// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Formulas.h - the arithmetic of the vocabulary. Each formula is written once, for one row (D is double) and for
// several rows at once (D is a vector of doubles of g++ and clang).
//
//     Add::of(1.0, 2.0)                      3.0
//     Add::of(PointOf{1, 2, 3}, p)           the sum of two points
//     Div::refuses(1.0, 0.0)                 true; for vectors, a mask of lanes
//
// A formula is evaluated in the order in which it is written, and every comparison has the direction that is right for
// NaN. The overloads of of() are the kinds of operands that the formula accepts. refuses() is true where there is no
// result. A formula that adds to the previous content of its result declares onto().
//
// This header includes nothing. Sources compiled for wider instruction sets include it, and inline functions of the
// standard library compiled there could replace the copies that run on every processor. Formulas that need the standard
// library are for double only and are defined with their items.
#pragma once

namespace formulas {

/// A point, or as many points as D has lanes.
template <class D>
struct PointOf
{
    D x;
    D y;
    D z;
};

/// Functions of a number that are not operators: squareRoot and magnitude. Specialised for every D.
template <class D>
struct Functions;

/// D if it is a number, so that an overload that returns it accepts no points.
template <class D>
struct NumberTest
{
    using Type = D;
};
template <class D>
struct NumberTest<PointOf<D>>
{};
template <class D>
using Number = typename NumberTest<D>::Type;

template <class... Types>
struct MakeVoid
{
    using Type = void;
};
template <class Enabled, class Formula, class... Operands>
inline constexpr bool hasOverload = false;
template <class Formula, class... Operands>
inline constexpr bool hasOverload<typename MakeVoid<decltype(Formula::of(Operands{}...))>::Type, Formula, Operands...> =
    true;
template <class Enabled, class Formula, class... Operands>
inline constexpr bool hasRefusal = false;
template <class Formula, class... Operands>
inline constexpr bool
    hasRefusal<typename MakeVoid<decltype(Formula::refuses(Operands{}...))>::Type, Formula, Operands...> = true;
template <class Enabled, class Formula, class... Operands>
inline constexpr bool hasOnto = false;
template <class Formula, class... Operands>
inline constexpr bool
    hasOnto<typename MakeVoid<decltype(Formula::onto(0.0, Operands{}...))>::Type, Formula, Operands...> = true;

/// Whether a formula accepts operands of these types.
template <class Formula, class... Operands>
inline constexpr bool takesOperands = hasOverload<void, Formula, Operands...>;

/// Whether a formula can refuse operands of these types.
template <class Formula, class... Operands>
inline constexpr bool mayRefuse = hasRefusal<void, Formula, Operands...>;

/// Whether a formula of doubles, or of points of doubles, adds to the previous content of its result.
template <class Formula, class... Operands>
inline constexpr bool addsOnto = hasOnto<void, Formula, Operands...>;

template <class D>
PointOf<D> difference(PointOf<D> a, PointOf<D> b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}

template <class D>
D length(PointOf<D> a)
{
    return Functions<D>::squareRoot(a.x * a.x + a.y * a.y + a.z * a.z);
}

// One row for each overload.
// clang-format off
struct Add
{
    template <class D> static Number<D> of(D a, D b)                      { return a + b; }
    template <class D> static PointOf<D> of(PointOf<D> a, PointOf<D> b)   { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
};

struct Minus
{
    template <class D> static Number<D> of(D a, D b)                      { return a - b; }
    template <class D> static PointOf<D> of(PointOf<D> a, PointOf<D> b)   { return difference(a, b); }
};

struct Mult
{
    template <class D> static Number<D> of(D a, D b)                      { return a * b; }
    template <class D> static PointOf<D> of(PointOf<D> a, D b)            { return {a.x * b, a.y * b, a.z * b}; }
    template <class D> static PointOf<D> of(D a, PointOf<D> b)            { return {a * b.x, a * b.y, a * b.z}; }
    /// The dot product is added to the previous content of the result.
    template <class D> static D onto(D held, PointOf<D> a, PointOf<D> b)
    {
        return held + a.x * b.x + a.y * b.y + a.z * b.z;
    }
};

struct Div
{
    template <class D> static Number<D> of(D a, D b)                      { return a / b; }
    template <class D> static PointOf<D> of(PointOf<D> a, D b)            { return {a.x / b, a.y / b, a.z / b}; }
    template <class Dividend, class D> static auto refuses(Dividend, D b) { return b == 0.0; }
};

struct Negate
{
    template <class D> static Number<D> of(D a)                           { return -a; }
    template <class D> static PointOf<D> of(PointOf<D> a)                 { return {-a.x, -a.y, -a.z}; }
};

struct Greater      { template <class D> static Number<D> of(D a, D b) { return a > b ? 1.0 : 0.0; } };
struct Lesser       { template <class D> static Number<D> of(D a, D b) { return b > a ? 1.0 : 0.0; } };
struct GreaterEqual { template <class D> static Number<D> of(D a, D b) { return a >= b ? 1.0 : 0.0; } };
struct LesserEqual  { template <class D> static Number<D> of(D a, D b) { return b >= a ? 1.0 : 0.0; } };
struct NotEqual     { template <class D> static Number<D> of(D a, D b) { return a == b ? 0.0 : 1.0; } };
struct Equal        { template <class D> static Number<D> of(D a, D b) { return a == b ? 1.0 : 0.0; } };
struct Not          { template <class D> static Number<D> of(D a)      { return a == 0.0 ? 1.0 : 0.0; } };
struct Square       { template <class D> static Number<D> of(D x)      { return x * x; } };

struct Or
{
    /// Written with "&", since not every compiler has "&&" for vectors.
    template <class D> static Number<D> of(D a, D b) { return ((a == 0.0) & (b == 0.0)) ? 0.0 : 1.0; }
};

/// Also refuses 0.
struct Sqrt
{
    template <class D> static Number<D> of(D x)                           { return Functions<D>::squareRoot(x); }
    template <class D, class = Number<D>> static auto refuses(D x)        { return x <= 0.0; }
};

/// The magnitude of a number, or the length of a point.
struct Abs
{
    template <class D> static Number<D> of(D x)                           { return Functions<D>::magnitude(x); }
    template <class D> static D of(PointOf<D> a)                          { return length(a); }
};

struct Min { template <class D> static Number<D> of(D a, D b) { return b > a ? a : b; } };
struct Max { template <class D> static Number<D> of(D a, D b) { return a > b ? a : b; } };

template <class OfTwo>
struct OfThree { template <class D> static Number<D> of(D a, D b, D c) { return OfTwo::of(OfTwo::of(a, b), c); } };

/// Eleven decimals, which are part of the interface; the constants "pi" and "PI" have the same value.
inline constexpr double pi = 3.14159265359;

struct Radians { template <class D> static Number<D> of(D degrees) { return degrees * pi / 180.0; } };
struct Degrees { template <class D> static Number<D> of(D radians) { return radians * 180.0 / pi; } };

struct MakePoint { template <class D> static PointOf<Number<D>> of(D x, D y, D z) { return {x, y, z}; } };
struct Vec       { template <class D> static PointOf<D> of(PointOf<D> a, PointOf<D> b) { return difference(b, a); } };
struct Dist      { template <class D> static D of(PointOf<D> a, PointOf<D> b) { return length(difference(a, b)); } };
// clang-format on

struct Cross
{
    template <class D>
    static PointOf<D> of(PointOf<D> a, PointOf<D> b)
    {
        return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
    }
};

/// z is not used; endpoints above each other yield NaN.
struct Nor
{
    template <class D>
    static PointOf<D> of(PointOf<D> a, PointOf<D> b)
    {
        const D x = a.x - b.x;
        const D y = a.y - b.y;
        const D distance = Functions<D>::squareRoot(x * x + y * y);
        return {y / distance, (b.x - a.x) / distance, D{}};
    }
};

/// Equal endpoints yield NaN.
struct Vec1
{
    template <class D>
    static PointOf<D> of(PointOf<D> a, PointOf<D> b)
    {
        const D distance = length(difference(a, b));
        const PointOf<D> vector = difference(b, a);
        return {vector.x / distance, vector.y / distance, vector.z / distance};
    }
};

}
