// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTTileCode.h - tile code: a program for many rows at a time. One kernel a step computes a tile of rows, eight vectors
// of the processor's, and jumps to the kernel of the next step.
//
//     x*2+y     *     [x, 2] -> value            x of the tile's rows times 2, in eight vector registers
//               +     [value, y] -> value
//               end   value -> result            written only if no kernel has refused a row
//
// A kernel takes the result of the step before, the value, from the registers in which the calling convention hands
// it on. All other operands stand in places: columns where the host keeps them, buffers of one tile, and numbers that
// are the same in all rows, repeated for each of them. Points stand packed (x y z x y z) and only in places, so that
// kernels that treat all coordinates alike need not take them apart.
//
// Reading places is what most kernels spend their time on. So those that can take a uniform number from one vector, and
// two formulas share a kernel where the value would else have to be stored and read again:
//
//     x*x+y*y   *     [x, x] -> value
//               *, +  value, [y, y] -> value     value + y*y
//
// A kernel that refuses a row sets a flag and computes on; nothing is written then, and the tile's rows are evaluated
// one by one. So results may lie on a column.
//
// This header is compiled for wide instruction sets, too: it includes nothing that has functions.
#pragma once

#include <cstddef>
#include <cstdint>

struct MTTileContext;
struct MTTileRecordCall;
struct MTTileStep;

inline constexpr std::size_t vectorsPerTile = 8;

/// What MTItemKernels::tileFormula says of an item whose formula has no kernels of vectors.
inline constexpr std::uint8_t noTileFormula = 255;

/// A kernel, without its vectors, whose type depends on the instruction set.
using MTTileKernel = void (*)();

/// Computes a step from place to place, in the instruction set that the whole library has.
/// @return whether it refuses a row
using MTTileCall = bool (*)(const MTTileStep& step, const MTTileContext& context);

/// Places are known by their number.
struct MTTileStep
{
    MTTileKernel kernel;
    std::uint32_t a;
    std::uint32_t b;
    std::uint32_t c;
    std::uint32_t result;             // of a kernel that writes to a place
    MTTileCall call;                  // of the kernel that calls, else null
    const MTTileRecordCall* records;  // what an item is called with, where it is called in its record form
};

/// What one thread computes a tile with.
struct MTTileContext
{
    double** places;
    std::size_t nbRows;  // of a tile
    bool refused;        // a row of the tile
};

/// Where the operands of a formula stand, and of which kinds they are: N numbers, P points. A uniform one is a number in a
/// place that is the same in all rows; kernels read it once.
enum class MTTileOperands : std::uint8_t
{
    Value,          ///< N, the value of the step before; a second N in a place.
    MemoryValue,    ///< N in a place, and the value.
    Memory,         ///< One N or two in places.
    ValueUniform,   ///< The value, and N.
    UniformValue,   ///< N, and the value.
    MemoryUniform,  ///< N in a place, and N.
    UniformMemory,  ///< N, and N in a place.
    ThreeNumbers,   ///< In places.
    TwoAndValue,    ///< Two N in places, and the value.
    Point,
    Points,
    PointMemory,   ///< P, and N in a place.
    PointValue,    ///< P, and the value.
    PointUniform,  ///< P, and N.
    MemoryPoint,   ///< N in a place, and P.
    ValuePoint,    ///< The value, and P.
    UniformPoint,  ///< N, and P.
};
inline constexpr std::size_t nbTileOperands = 17;

/// The kernels that compute no formula.
enum class MTTileControl : std::uint8_t
{
    Push,        ///< value -> result
    Call,        ///< Calls the step's function.
    Pause,       ///< Returns, so that the next step is called anew: not every build turns the last call into a jump.
    End,         ///< value -> result, unless a row was refused
    EndNumbers,  ///< a -> result, likewise
    EndPoints,
    Stop,  ///< The result is in its place already.
};

/// All kernels of one instruction set. It is made while compiling, so that nothing of a set runs before it is chosen.
struct MTTileSet
{
    std::size_t nbRows;  // of a tile
    /// By the formula's index among tiles::VectorFormulas; null where it does not take such operands.
    MTTileKernel (*findKernel)(std::uint8_t formula, MTTileOperands operands);
    /// Of two formulas: second(value, first(a, b)), with numbers in places. By their indices among tiles::JoinedFormulas.
    MTTileKernel (*findJoined)(std::uint8_t first, std::uint8_t second);
    MTTileKernel (*findControl)(MTTileControl control);
    /// Computes tiles until one has a row that is refused.
    /// @param distances  of the first nbMoved places, from a tile to the next, in numbers; they advance past each tile that
    ///                   is computed, and past the one that is refused
    /// @return how many tiles have their results
    std::size_t (*run)(const MTTileStep* first, MTTileContext& context, const std::size_t* distances,
                       std::size_t nbMoved, std::size_t nbTiles);
};

/// Every set that is compiled into the library; a processor need not have those after the first.
extern const MTTileSet baselineTiles;
#if defined(MATHEXPR_WIDE_TILES)
extern const MTTileSet avx2Tiles;
extern const MTTileSet avx512Tiles;
#endif
