// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TileKernels.cpp - the tile kernels. Compiled once per instruction set, with its options and with MATHEXPR_TILE_SET as
// the name of its set. A tile has eight vectors.
//
// In WebAssembly a call by address costs as much as computing some vectors, and only few vectors are passed in registers.
// There a tile has more vectors, and the value is in memory.
//
// Everything is private to the object file, and nothing of the standard library is used: a function compiled for a wide
// instruction set must not replace one that runs on every processor.
#include "MTParserLib/tiles/MTTileCode.h"
#include "MTParserLib/tiles/TileFormulas.h"
#include "MTParserLib/tiles/TileVector.h"

#if !defined(MATHEXPR_TILE_SET)
#define MATHEXPR_TILE_SET baselineTiles
#endif

// Windows' own convention passes vectors through memory, so kernels use that of the other systems.
#if defined(_WIN32) && defined(MATHEXPR_TILE_VECTORS)
#define MATHEXPR_TILE_ABI __attribute__((sysv_abi))
#else
#define MATHEXPR_TILE_ABI
#endif

// The value: a fresh one, as parameters, as arguments, one of its vectors, and what is to be done with each of them.
#if defined(__wasm__)
#define MATHEXPR_TILE_FRESH_LANES V values[nbVectors] = {}
#define MATHEXPR_TILE_LANES V* values
#define MATHEXPR_TILE_UNUSED_LANES V*
#define MATHEXPR_TILE_PASSED_LANES values
#define MATHEXPR_TILE_V(i) values[i]
#define MATHEXPR_TILE_EACH(DO)                                                                                         \
    for (std::ptrdiff_t vector = 0; vector < nbVectors; ++vector)                                                      \
    {                                                                                                                  \
        DO(vector)                                                                                                     \
    }
#else
#define MATHEXPR_TILE_FRESH_LANES const V v0 = {}, v1 = {}, v2 = {}, v3 = {}, v4 = {}, v5 = {}, v6 = {}, v7 = {}
#define MATHEXPR_TILE_LANES V v0, V v1, V v2, V v3, V v4, V v5, V v6, V v7
#define MATHEXPR_TILE_UNUSED_LANES V, V, V, V, V, V, V, V
#define MATHEXPR_TILE_PASSED_LANES v0, v1, v2, v3, v4, v5, v6, v7
#define MATHEXPR_TILE_V(i) v##i
#define MATHEXPR_TILE_EACH(DO) DO(0) DO(1) DO(2) DO(3) DO(4) DO(5) DO(6) DO(7)
#endif
/// Compiled to a jump, if it is the last action of a kernel.
#define MATHEXPR_TILE_NEXT                                                                                             \
    return reinterpret_cast<Kernel>(step[1].kernel)(step + 1, context, MATHEXPR_TILE_PASSED_LANES)

namespace tilekernels {
namespace {

constexpr std::ptrdiff_t nbVectors = vectorsPerTile;

#if defined(MATHEXPR_TILE_VECTORS)

// Three vectors hold as many points as a vector has lanes. Coordinate c of point k is number 3 * k + c. Every lane has
// each coordinate in one of the vectors, since 3 and the width have no common factor.

/// A list of lane numbers.
template <int... numbers>
struct Lanes
{};
template <int count, int... numbers>
struct CountedLanes : CountedLanes<count - 1, count - 1, numbers...>
{};
template <int... numbers>
struct CountedLanes<0, numbers...>
{
    using Type = Lanes<numbers...>;
};
using AllLanes = CountedLanes<MATHEXPR_TILE_WIDTH>::Type;

/// Which of the three vectors holds a coordinate in a lane.
constexpr int vectorOf(int coordinate, int lane)  // not covered: runs while compiling
{
    int number = lane;
    while (number % 3 != coordinate)
    {
        number += MATHEXPR_TILE_WIDTH;
    }
    return number / MATHEXPR_TILE_WIDTH;
}

/// Lane number for a shuffle: of the second operand if second is true, otherwise of the first.
constexpr int laneOf(bool second, int lane)  // not covered: runs while compiling
{
    return second ? MATHEXPR_TILE_WIDTH + lane : lane;
}

/// One coordinate of as many points as there are lanes.
template <int coordinate, int... lanes>
V takeCoordinate(V first, V second, V third, Lanes<lanes...>)
{
    const V two = __builtin_shufflevector(first, second, laneOf(vectorOf(coordinate, lanes) == 1, lanes)...);
    const V all = __builtin_shufflevector(two, third, laneOf(vectorOf(coordinate, lanes) == 2, lanes)...);
    return __builtin_shufflevector(all, all, (3 * lanes + coordinate) % MATHEXPR_TILE_WIDTH...);
}

formulas::PointOf<V> takeApart(const double* points)
{
    const V first = load(points);
    const V second = load(points + width);
    const V third = load(points + 2 * width);
    return {takeCoordinate<0>(first, second, third, AllLanes()), takeCoordinate<1>(first, second, third, AllLanes()),
            takeCoordinate<2>(first, second, third, AllLanes())};
}

/// The point to which the number in a lane of one of the three vectors belongs.
constexpr int pointOf(int vector, int lane)  // not covered: runs while compiling
{
    return (vector * MATHEXPR_TILE_WIDTH + lane) / 3;
}

/// Whether a lane of one of the three vectors holds a coordinate.
constexpr bool holds(int vector, int lane, int coordinate)  // not covered: runs while compiling
{
    return (vector * MATHEXPR_TILE_WIDTH + lane) % 3 == coordinate;
}

template <int vector, int... lanes>
V putTogether(const formulas::PointOf<V>& points, Lanes<lanes...>)
{
    const V x = __builtin_shufflevector(points.x, points.x, pointOf(vector, lanes)...);
    const V y = __builtin_shufflevector(points.y, points.y, pointOf(vector, lanes)...);
    const V z = __builtin_shufflevector(points.z, points.z, pointOf(vector, lanes)...);
    const V two = __builtin_shufflevector(x, y, laneOf(holds(vector, lanes, 1), lanes)...);
    return __builtin_shufflevector(two, z, laneOf(holds(vector, lanes, 2), lanes)...);
}

void putTogether(double* result, const formulas::PointOf<V>& points)
{
    store(result, putTogether<0>(points, AllLanes()));
    store(result + width, putTogether<1>(points, AllLanes()));
    store(result + 2 * width, putTogether<2>(points, AllLanes()));
}

template <int vector, int... lanes>
V repeat(V numbers, Lanes<lanes...>)
{
    return __builtin_shufflevector(numbers, numbers, pointOf(vector, lanes)...);
}

/// A number per point, repeated for its coordinates in one of the three vectors.
template <int vector>
V repeatForCoordinates(V numbers)
{
    return repeat<vector>(numbers, AllLanes());
}

#else

formulas::PointOf<V> takeApart(const double* point)
{
    return {point[0], point[1], point[2]};
}
void putTogether(double* result, formulas::PointOf<V> point)
{
    result[0] = point.x;
    result[1] = point.y;
    result[2] = point.z;
}
template <int>
V repeatForCoordinates(V number)
{
    return number;
}

#endif

}
}

#if defined(MATHEXPR_TILE_VECTORS)
template <>
struct formulas::Functions<tilekernels::V>
{
    static tilekernels::V squareRoot(tilekernels::V x) { return tilekernels::squareRoot(x); }
    static tilekernels::V magnitude(tilekernels::V x) { return tilekernels::magnitude(x); }
};
#endif

namespace tilekernels {
namespace {

using Points = formulas::PointOf<V>;
using Kernel = const MTTileStep*(MATHEXPR_TILE_ABI*)(const MTTileStep* step, MTTileContext* context,
                                                     MATHEXPR_TILE_LANES);

template <class Result>
inline constexpr bool isPoint = false;
template <>
inline constexpr bool isPoint<Points> = true;

template <class Formula, class... Operands>
constexpr bool yieldsPoint()  // not covered: runs while compiling
{
    if constexpr (formulas::takesOperands<Formula, Operands...>)
    {
        return isPoint<decltype(Formula::of(Operands{}...))>;
    }
    else
    {
        return false;
    }
}

/// Computes a formula, and adds the lanes that it refuses to a condition.
template <class Formula, class... Operands>
auto compute([[maybe_unused]] Condition& refused, Operands... operands)
{
    if constexpr (formulas::mayRefuse<Formula, Operands...>)
    {
        refused = refused | Formula::refuses(operands...);
    }
    return Formula::of(operands...);
}

template <class Formula, class... Operands>
void noteRefusal([[maybe_unused]] Condition refused, [[maybe_unused]] MTTileContext& context)
{
    if constexpr (formulas::mayRefuse<Formula, Operands...>)
    {
        if (holdsInAny(refused))
        {
            context.refused = true;
        }
    }
}

template <class Formula, MTTileOperands operands>
const MTTileStep* MATHEXPR_TILE_ABI computeNumber(const MTTileStep* step, MTTileContext* context, MATHEXPR_TILE_LANES)
{
    [[maybe_unused]] const double* const a = context->places[step->a];
    Condition refused{};
#define MATHEXPR_TILE_LANE(i)                                                                                          \
    MATHEXPR_TILE_V(i) =                                                                                               \
        compute<Formula>(refused, operands == MTTileOperands::Value ? MATHEXPR_TILE_V(i) : load(a + width * (i)));
    MATHEXPR_TILE_EACH(MATHEXPR_TILE_LANE)
#undef MATHEXPR_TILE_LANE
    noteRefusal<Formula, V>(refused, *context);
    MATHEXPR_TILE_NEXT;
}

template <class Formula, MTTileOperands operands>
const MTTileStep* MATHEXPR_TILE_ABI computeNumbers(const MTTileStep* step, MTTileContext* context, MATHEXPR_TILE_LANES)
{
    using Form = MTTileOperands;
    constexpr bool isFirstValue = operands == Form::Value || operands == Form::ValueUniform;
    constexpr bool isSecondValue = operands == Form::MemoryValue || operands == Form::UniformValue;
    constexpr bool isFirstUniform = operands == Form::UniformValue || operands == Form::UniformMemory;
    constexpr bool isSecondUniform = operands == Form::ValueUniform || operands == Form::MemoryUniform;
    [[maybe_unused]] const double* const a = context->places[step->a];
    [[maybe_unused]] const double* const b = context->places[step->b];
    [[maybe_unused]] const V uniform = load(isFirstUniform ? a : b);
    Condition refused{};
#define MATHEXPR_TILE_LANE(i)                                                                                          \
    MATHEXPR_TILE_V(i) = compute<Formula>(refused,                                                                     \
                                          isFirstValue     ? MATHEXPR_TILE_V(i)                                        \
                                          : isFirstUniform ? uniform                                                   \
                                                           : load(a + width * (i)),                                    \
                                          isSecondValue     ? MATHEXPR_TILE_V(i)                                       \
                                          : isSecondUniform ? uniform                                                  \
                                                            : load(b + width * (i)));
    MATHEXPR_TILE_EACH(MATHEXPR_TILE_LANE)
#undef MATHEXPR_TILE_LANE
    noteRefusal<Formula, V, V>(refused, *context);
    MATHEXPR_TILE_NEXT;
}

/// Two formulas at once: the value stays in its registers while the first is computed.
template <class First, class Second>
const MTTileStep* MATHEXPR_TILE_ABI computeJoined(const MTTileStep* step, MTTileContext* context, MATHEXPR_TILE_LANES)
{
    const double* const a = context->places[step->a];
    const double* const b = context->places[step->b];
#define MATHEXPR_TILE_LANE(i)                                                                                          \
    MATHEXPR_TILE_V(i) = Second::of(MATHEXPR_TILE_V(i), First::of(load(a + width * (i)), load(b + width * (i))));
    MATHEXPR_TILE_EACH(MATHEXPR_TILE_LANE)
#undef MATHEXPR_TILE_LANE
    MATHEXPR_TILE_NEXT;
}

template <class Formula, MTTileOperands operands>
const MTTileStep* MATHEXPR_TILE_ABI makePoints(const MTTileStep* step, MTTileContext* context, MATHEXPR_TILE_LANES)
{
    const double* const a = context->places[step->a];
    const double* const b = context->places[step->b];
    [[maybe_unused]] const double* const c = context->places[step->c];
    double* const result = context->places[step->result];
#define MATHEXPR_TILE_LANE(i)                                                                                          \
    putTogether(result + 3 * width * (i),                                                                              \
                Formula::of(load(a + width * (i)), load(b + width * (i)),                                              \
                            operands == MTTileOperands::TwoAndValue ? MATHEXPR_TILE_V(i) : load(c + width * (i))));
    MATHEXPR_TILE_EACH(MATHEXPR_TILE_LANE)
#undef MATHEXPR_TILE_LANE
    MATHEXPR_TILE_NEXT;
}

/// A number from each point, or from each pair of points.
template <class Formula, MTTileOperands operands>
const MTTileStep* MATHEXPR_TILE_ABI computeFromPoints(const MTTileStep* step, MTTileContext* context,
                                                      MATHEXPR_TILE_LANES)
{
    const double* const a = context->places[step->a];
    const auto number = [&](std::ptrdiff_t i) {
        const Points first = takeApart(a + 3 * width * i);
        if constexpr (operands == MTTileOperands::Point)
        {
            return Formula::of(first);
        }
        else
        {
            const Points second = takeApart(context->places[step->b] + 3 * width * i);
            if constexpr (formulas::addsOnto<Formula, formulas::PointOf<double>, formulas::PointOf<double>>)
            {
                return Formula::onto(V{}, first, second);
            }
            else
            {
                return Formula::of(first, second);
            }
        }
    };
#define MATHEXPR_TILE_LANE(i) MATHEXPR_TILE_V(i) = number(i);
    MATHEXPR_TILE_EACH(MATHEXPR_TILE_LANE)
#undef MATHEXPR_TILE_LANE
    MATHEXPR_TILE_NEXT;
}

/// A point from each pair of points.
template <class Formula>
const MTTileStep* MATHEXPR_TILE_ABI computePoints(const MTTileStep* step, MTTileContext* context, MATHEXPR_TILE_LANES)
{
    const double* const a = context->places[step->a];
    const double* const b = context->places[step->b];
    double* const result = context->places[step->result];
    for (std::ptrdiff_t i = 0; i < 3 * nbVectors * width; i += 3 * width)
    {
        putTogether(result + i, Formula::of(takeApart(a + i), takeApart(b + i)));
    }
    MATHEXPR_TILE_NEXT;
}

/// A formula that treats all coordinates alike: for a point, two points, or a point and a uniform number.
template <class Formula, MTTileOperands operands>
const MTTileStep* MATHEXPR_TILE_ABI computeCoordinates(const MTTileStep* step, MTTileContext* context,
                                                       MATHEXPR_TILE_LANES)
{
    using Form = MTTileOperands;
    const double* const a = context->places[step->a];
    [[maybe_unused]] const double* const b = operands == Form::Point ? a : context->places[step->b];
    double* const result = context->places[step->result];
    [[maybe_unused]] const V uniform = load(operands == Form::UniformPoint ? a : b);
    Condition refused{};
    const auto computeVector = [&](std::ptrdiff_t i) {
        if constexpr (operands == Form::Point)
        {
            store(result + i, Formula::of(load(a + i)));
        }
        else
        {
            store(result + i, compute<Formula>(refused, operands == Form::UniformPoint ? uniform : load(a + i),
                                               operands == Form::PointUniform ? uniform : load(b + i)));
        }
    };
#define MATHEXPR_TILE_LANE(i)                                                                                          \
    computeVector(3 * width * (i));                                                                                    \
    computeVector(3 * width * (i) + width);                                                                            \
    computeVector(3 * width * (i) + 2 * width);
    MATHEXPR_TILE_EACH(MATHEXPR_TILE_LANE)
#undef MATHEXPR_TILE_LANE
    noteRefusal<Formula, V, V>(refused, *context);
    MATHEXPR_TILE_NEXT;
}

/// A formula that multiplies or divides points by numbers.
template <class Formula, MTTileOperands operands>
const MTTileStep* MATHEXPR_TILE_ABI scalePoints(const MTTileStep* step, MTTileContext* context, MATHEXPR_TILE_LANES)
{
    constexpr bool pointFirst = operands == MTTileOperands::PointMemory || operands == MTTileOperands::PointValue;
    constexpr bool isValue = operands == MTTileOperands::PointValue || operands == MTTileOperands::ValuePoint;
    const double* const points = context->places[pointFirst ? step->a : step->b];
    [[maybe_unused]] const double* const numbers = context->places[pointFirst ? step->b : step->a];
    double* const result = context->places[step->result];
    Condition refused{};
    const auto scale = [&](const double* coordinates, V number) {
        if constexpr (pointFirst)
        {
            return compute<Formula>(refused, load(coordinates), number);
        }
        else
        {
            return compute<Formula>(refused, number, load(coordinates));
        }
    };
    const auto scaleAll = [&](std::ptrdiff_t i, V number) {
        const V first = scale(points + i, repeatForCoordinates<0>(number));
        const V second = scale(points + i + width, repeatForCoordinates<1>(number));
        const V third = scale(points + i + 2 * width, repeatForCoordinates<2>(number));
        store(result + i, first);
        store(result + i + width, second);
        store(result + i + 2 * width, third);
    };
#define MATHEXPR_TILE_LANE(i) scaleAll(3 * width * (i), isValue ? MATHEXPR_TILE_V(i) : load(numbers + width * (i)));
    MATHEXPR_TILE_EACH(MATHEXPR_TILE_LANE)
#undef MATHEXPR_TILE_LANE
    noteRefusal<Formula, V, V>(refused, *context);
    MATHEXPR_TILE_NEXT;
}

/// Call before baseline instructions run, which would stall on the used upper halves of registers. Compilers leave this
/// to the caller of a function with vectors.
void leaveWideRegisters()
{
#if MATHEXPR_TILE_WIDTH > 2 && defined(MATHEXPR_TILE_VECTORS)
    _mm256_zeroupper();
#endif
}

void storeValue(double* result, MATHEXPR_TILE_LANES)
{
#define MATHEXPR_TILE_LANE(i) store(result + width * (i), MATHEXPR_TILE_V(i));
    MATHEXPR_TILE_EACH(MATHEXPR_TILE_LANE)
#undef MATHEXPR_TILE_LANE
}

const MTTileStep* MATHEXPR_TILE_ABI push(const MTTileStep* step, MTTileContext* context, MATHEXPR_TILE_LANES)
{
    storeValue(context->places[step->result], MATHEXPR_TILE_PASSED_LANES);
    MATHEXPR_TILE_NEXT;
}

const MTTileStep* MATHEXPR_TILE_ABI call(const MTTileStep* step, MTTileContext* context, MATHEXPR_TILE_LANES)
{
    leaveWideRegisters();
    if (step->call(*step, *context))
    {
        context->refused = true;
    }
#if !defined(__wasm__)
    v0 = v1 = v2 = v3 = v4 = v5 = v6 = v7 = V{};  // allows the compiler to drop them during the call: no step uses them
#endif
    MATHEXPR_TILE_NEXT;
}

const MTTileStep* MATHEXPR_TILE_ABI pauseChain(const MTTileStep* step, MTTileContext*, MATHEXPR_TILE_UNUSED_LANES)
{
    return step + 1;
}

const MTTileStep* MATHEXPR_TILE_ABI end(const MTTileStep* step, MTTileContext* context, MATHEXPR_TILE_LANES)
{
    if (!context->refused)
    {
        storeValue(context->places[step->result], MATHEXPR_TILE_PASSED_LANES);
    }
    return nullptr;
}

template <int numbersPerRow>
const MTTileStep* MATHEXPR_TILE_ABI endCopying(const MTTileStep* step, MTTileContext* context,
                                               MATHEXPR_TILE_UNUSED_LANES)
{
    const double* const a = context->places[step->a];
    double* const result = context->places[step->result];
    for (std::ptrdiff_t i = 0; !context->refused && i < numbersPerRow * nbVectors * width; i += width)
    {
        store(result + i, load(a + i));
    }
    return nullptr;
}

const MTTileStep* MATHEXPR_TILE_ABI stop(const MTTileStep*, MTTileContext*, MATHEXPR_TILE_UNUSED_LANES)
{
    return nullptr;
}

/// The kernel of a formula for such operands; null if it does not accept them.
template <class Formula, MTTileOperands operands>
constexpr Kernel kernelOf()  // not covered: runs while compiling
{
    using Form = MTTileOperands;
    using formulas::takesOperands;
    if constexpr (operands < Form::ThreeNumbers)
    {
        if constexpr (takesOperands<Formula, V, V>)
        {
            return computeNumbers<Formula, operands>;
        }
        else if constexpr (takesOperands<Formula, V> && (operands == Form::Value || operands == Form::Memory))
        {
            return computeNumber<Formula, operands>;
        }
    }
    else if constexpr (operands == Form::ThreeNumbers || operands == Form::TwoAndValue)
    {
        if constexpr (yieldsPoint<Formula, V, V, V>())
        {
            return makePoints<Formula, operands>;
        }
    }
    else if constexpr (operands == Form::Point)
    {
        if constexpr (yieldsPoint<Formula, Points>())
        {
            return computeCoordinates<Formula, operands>;
        }
        else if constexpr (takesOperands<Formula, Points>)
        {
            return computeFromPoints<Formula, operands>;
        }
    }
    else if constexpr (operands == Form::Points)
    {
        constexpr bool addsOnto = formulas::addsOnto<Formula, formulas::PointOf<double>, formulas::PointOf<double>>;
        if constexpr (yieldsPoint<Formula, Points, Points>() && takesOperands<Formula, V, V>)
        {
            return computeCoordinates<Formula, operands>;
        }
        else if constexpr (yieldsPoint<Formula, Points, Points>())
        {
            return computePoints<Formula>;
        }
        else if constexpr (addsOnto || takesOperands<Formula, Points, Points>)
        {
            return computeFromPoints<Formula, operands>;
        }
    }
    else if constexpr (operands == Form::PointUniform)
    {
        if constexpr (takesOperands<Formula, Points, V>)
        {
            return computeCoordinates<Formula, operands>;
        }
    }
    else if constexpr (operands == Form::UniformPoint)
    {
        if constexpr (takesOperands<Formula, V, Points>)
        {
            return computeCoordinates<Formula, operands>;
        }
    }
    else if constexpr (operands == Form::PointMemory || operands == Form::PointValue)
    {
        if constexpr (takesOperands<Formula, Points, V>)
        {
            return scalePoints<Formula, operands>;
        }
    }
    else if constexpr (takesOperands<Formula, V, Points>)
    {
        return scalePoints<Formula, operands>;
    }
    return nullptr;
}

constexpr std::size_t rowsPerTile = nbVectors * width;

struct FormulaKernels
{
    Kernel kernels[nbTileOperands];  // indexed by operands
};

template <class Formula>
constexpr FormulaKernels kernelsOf()  // not covered: runs while compiling
{
    using Form = MTTileOperands;
    // clang-format off
    return {{kernelOf<Formula, Form::Value>(),         kernelOf<Formula, Form::MemoryValue>(),
             kernelOf<Formula, Form::Memory>(),        kernelOf<Formula, Form::ValueUniform>(),
             kernelOf<Formula, Form::UniformValue>(),  kernelOf<Formula, Form::MemoryUniform>(),
             kernelOf<Formula, Form::UniformMemory>(), kernelOf<Formula, Form::ThreeNumbers>(),
             kernelOf<Formula, Form::TwoAndValue>(),   kernelOf<Formula, Form::Point>(),
             kernelOf<Formula, Form::Points>(),        kernelOf<Formula, Form::PointMemory>(),
             kernelOf<Formula, Form::PointValue>(),    kernelOf<Formula, Form::PointUniform>(),
             kernelOf<Formula, Form::MemoryPoint>(),   kernelOf<Formula, Form::ValuePoint>(),
             kernelOf<Formula, Form::UniformPoint>()}};
    // clang-format on
}

template <class List>
struct KernelTable;
template <class... Formulas>
struct KernelTable<tiles::FormulaList<Formulas...>>
{
    static constexpr FormulaKernels rows[] = {kernelsOf<Formulas>()...};
};

constexpr Kernel controls[] = {push, call, pauseChain, end, endCopying<1>, endCopying<3>, stop};  // as MTTileControl

MTTileKernel findKernel(std::uint8_t formula, MTTileOperands operands)
{
    return reinterpret_cast<MTTileKernel>(
        KernelTable<tiles::VectorFormulas>::rows[formula].kernels[static_cast<std::size_t>(operands)]);
}

/// Indexed by the first formula, then by the second.
template <class First, class List>
struct JoinedRow;
template <class First, class... Seconds>
struct JoinedRow<First, tiles::FormulaList<Seconds...>>
{
    static constexpr Kernel kernels[] = {computeJoined<First, Seconds>...};
};
template <class List>
struct JoinedTable;
template <class... Firsts>
struct JoinedTable<tiles::FormulaList<Firsts...>>
{
    static constexpr const Kernel* rows[] = {JoinedRow<Firsts, tiles::JoinedFormulas>::kernels...};
};

MTTileKernel findJoined(std::uint8_t first, std::uint8_t second)
{
    return reinterpret_cast<MTTileKernel>(JoinedTable<tiles::JoinedFormulas>::rows[first][second]);
}

MTTileKernel findControl(MTTileControl control)
{
    return reinterpret_cast<MTTileKernel>(controls[static_cast<std::size_t>(control)]);
}

std::size_t run(const MTTileStep* first, MTTileContext& context, const std::size_t* distances, std::size_t nbMoved,
                std::size_t nbTiles)
{
    MATHEXPR_TILE_FRESH_LANES;
    std::size_t tile = 0;
    for (; tile < nbTiles && !context.refused; ++tile)
    {
        const MTTileStep* step = first;
        do
        {
            step = reinterpret_cast<Kernel>(step->kernel)(step, &context, MATHEXPR_TILE_PASSED_LANES);
        } while (step != nullptr);
        for (std::size_t j = 0; j < nbMoved; ++j)
        {
            context.places[j] += distances[j];
        }
    }
    leaveWideRegisters();
    return context.refused ? tile - 1 : tile;
}

}
}

const MTTileSet MATHEXPR_TILE_SET{tilekernels::rowsPerTile, tilekernels::findKernel, tilekernels::findJoined,
                                  tilekernels::findControl, tilekernels::run};
