// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TileVector.h - the vector type V, as wide as the options of the source allow, and what has no operator; a single double where
// the compiler has no vectors.
//
// Everything is private to the object file: a function compiled for a wide instruction set must not replace one that runs on
// every processor.
#pragma once

#include <cstddef>

// Not on Windows, unless the stack is known to be aligned: g++ would crash at a call there.
#if defined(__has_builtin) && (!defined(_WIN32) || defined(MATHEXPR_TILE_STACK_ALIGNED))
#if __has_builtin(__builtin_shufflevector)
#define MATHEXPR_TILE_VECTORS
#endif
#endif
#if !defined(MATHEXPR_TILE_VECTORS)
#include "MTParserLib/vocabulary/FormulaItem.h"  // double's functions
#elif defined(__SSE2__)
#include <immintrin.h>
#endif

// Operations that have instructions but no operators. g++ 12 warns about what plain _mm512_sqrt_pd leaves undefined.
#if defined(__AVX512DQ__)
#define MATHEXPR_TILE_WIDTH 8
#define MATHEXPR_TILE_HOLDS_IN_ANY(condition) _mm512_movepi64_mask((__m512i)(condition))
#define MATHEXPR_TILE_SQUARE_ROOT(x) _mm512_maskz_sqrt_pd(0xFF, x)
#elif defined(__AVX2__)
#define MATHEXPR_TILE_WIDTH 4
#define MATHEXPR_TILE_HOLDS_IN_ANY(condition) _mm256_movemask_pd((__m256d)(condition))
#define MATHEXPR_TILE_SQUARE_ROOT(x) _mm256_sqrt_pd(x)
#elif defined(__SSE2__)
#define MATHEXPR_TILE_WIDTH 2
#define MATHEXPR_TILE_HOLDS_IN_ANY(condition) _mm_movemask_pd((__m128d)(condition))
#define MATHEXPR_TILE_SQUARE_ROOT(x) _mm_sqrt_pd(x)
#elif defined(__wasm_simd128__)
#define MATHEXPR_TILE_WIDTH 2
#define MATHEXPR_TILE_HOLDS_IN_ANY(condition) __builtin_wasm_any_true_v128((SignedBytes)(condition))
#define MATHEXPR_TILE_SQUARE_ROOT(x) __builtin_wasm_sqrt_f64x2(x)
typedef signed char SignedBytes __attribute__((vector_size(16)));  // NOLINT(modernize-use-using): as clang reads it
#else
#define MATHEXPR_TILE_WIDTH 2
#define MATHEXPR_TILE_HOLDS_IN_ANY(condition) ((condition)[0] | (condition)[1])
#define MATHEXPR_TILE_SQUARE_ROOT(x) (V{__builtin_sqrt((x)[0]), __builtin_sqrt((x)[1])})
#endif

namespace tilekernels {

#if defined(MATHEXPR_TILE_VECTORS)

constexpr std::ptrdiff_t width = MATHEXPR_TILE_WIDTH;
typedef double V __attribute__((vector_size(8 * width)));  // NOLINT(modernize-use-using): as clang reads it
using Condition = decltype(V{} == V{});

static inline V load(const double* from)
{
    V vector;
    __builtin_memcpy(&vector, from, sizeof vector);
    return vector;
}

static inline void store(double* to, V vector)
{
    __builtin_memcpy(to, &vector, sizeof vector);
}

static inline bool holdsInAny(Condition condition)
{
    return MATHEXPR_TILE_HOLDS_IN_ANY(condition) != 0;
}

static inline V squareRoot(V x)
{
    return MATHEXPR_TILE_SQUARE_ROOT(x);
}

static inline V magnitude(V x)
{
    return (V)((Condition)x & 0x7FFF'FFFF'FFFF'FFFF);
}

#else

constexpr std::ptrdiff_t width = 1;
using V = double;
using Condition = bool;

static inline V load(const double* from)
{
    return *from;
}

static inline void store(double* to, V number)
{
    *to = number;
}

static inline bool holdsInAny(Condition condition)
{
    return condition;
}

#endif

}
