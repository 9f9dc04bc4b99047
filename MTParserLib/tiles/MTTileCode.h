// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTTileCode.h - tile code: a program for many rows at once. One kernel per step computes a tile of rows, eight vectors
// of the processor, and jumps to the kernel of the next step.
//
//     x*2+y     *     [x, 2] -> value            x of the tile's rows times 2, in eight vector registers
//               +     [value, y] -> value
//               end   value -> result            written only if no kernel has refused a row
//
// A kernel receives the result of the previous step, the value, in the registers of the calling convention. All other
// operands are in places: columns in the host's memory, buffers of one tile, and uniform numbers, which are the same in
// all rows and repeated for each. Points are packed (x y z x y z) and always in places, so that kernels that treat all
// coordinates alike need not separate them.
//
// Most kernels spend their time on reading places. So kernels that can read a uniform number once do so, and two
// formulas share a kernel if the value would otherwise have to be stored and read again:
//
//     x*x+y*y   *     [x, x] -> value
//               *, +  value, [y, y] -> value     value + y*y
//
// A kernel that refuses a row sets a flag and continues. Then nothing is written, and the tile's rows are evaluated one
// by one. Therefore results may overwrite a column.
//
// This header is also compiled for wide instruction sets, so it includes nothing that defines functions.
#pragma once

#include <cstddef>
#include <cstdint>

struct MTTileContext;
struct MTTileRecordCall;
struct MTTileStep;

#if defined(__wasm__)
inline constexpr std::size_t vectorsPerTile = 32;  // in memory: TileKernels.cpp
#else
inline constexpr std::size_t vectorsPerTile = 8;
#endif

/// MTItemKernels::tileFormula of an item whose formula has no vector kernels.
inline constexpr std::uint8_t noTileFormula = 255;

/// A kernel without its vector parameters, whose type depends on the instruction set.
using MTTileKernel = void (*)();

/// Computes a step from place to place, in the library's baseline instruction set.
/// @return whether it refuses a row
using MTTileCall = bool (*)(const MTTileStep& step, const MTTileContext& context);

/// Places are identified by number.
struct MTTileStep
{
    MTTileKernel kernel;
    std::uint32_t a;
    std::uint32_t b;
    std::uint32_t c;
    std::uint32_t result;             // of a kernel that writes to a place
    MTTileCall call;                  // the function of a Call step, otherwise null
    const MTTileRecordCall* records;  // arguments of that function if it calls the item with records
};

/// State of one thread while it computes a tile.
struct MTTileContext
{
    double** places;
    std::size_t nbRows;  // of a tile
    bool refused;        // whether a row of the tile was refused
};

/// Locations and kinds of a formula's operands: N is a number, P a point. A uniform number is in a place with the same
/// number in all rows; kernels read it once.
enum class MTTileOperands : std::uint8_t
{
    Value,          ///< N is the value of the previous step; a second N is in a place.
    MemoryValue,    ///< N in a place, and the value.
    Memory,         ///< One or two N in places.
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

/// Kernels that compute no formula.
enum class MTTileControl : std::uint8_t
{
    Push,        ///< value -> result
    Call,        ///< Calls the step's function.
    Pause,       ///< Returns; the next step is called anew, since not every build compiles tail calls to jumps.
    End,         ///< value -> result, unless a row was refused
    EndNumbers,  ///< a -> result, unless a row was refused
    EndPoints,
    Stop,  ///< The result is already in its place.
};

/// All kernels of an instruction set. Computed at compile time, so that no code of a set runs before it is selected.
struct MTTileSet
{
    std::size_t nbRows;  // of a tile
    /// By index among tiles::VectorFormulas; null if the formula does not accept such operands.
    MTTileKernel (*findKernel)(std::uint8_t formula, MTTileOperands operands);
    /// For two formulas: second(value, first(a, b)), with numbers in places. By index among tiles::JoinedFormulas.
    MTTileKernel (*findJoined)(std::uint8_t first, std::uint8_t second);
    MTTileKernel (*findControl)(MTTileControl control);
    /// Computes tiles until one has a refused row.
    /// @param distances  for the first nbMoved places: numbers from one tile to the next; the places advance past every
    ///                   computed tile, and past the one with the refused row
    /// @return number of tiles with results
    std::size_t (*run)(const MTTileStep* first, MTTileContext& context, const std::size_t* distances,
                       std::size_t nbMoved, std::size_t nbTiles);
};

/// All sets in the library; the processor may lack all but the first.
extern const MTTileSet baselineTiles;
#if defined(MATHEXPR_WIDE_TILES)
extern const MTTileSet avx2Tiles;
extern const MTTileSet avx512Tiles;
#endif
