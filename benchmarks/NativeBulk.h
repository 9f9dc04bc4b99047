// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NativeBulk.h - some of the formulas in C++ as loops over columns: the lower bound on the time of bulk evaluation.
// Compiled with g++ -O2, in a separate translation unit.
#pragma once

#include "benchmarks/Inputs.h"

#include <cstddef>
#include <vector>

/// A column for each scalar and each point.
struct Columns
{
    std::vector<double> x, y, z, a, b, r;
    std::vector<Point> p, q;
};

/// The same source, compiled with -O2, and with -O3 for this processor.
#define DECLARE_NATIVE_BULK(name)                                                                                      \
    namespace name {                                                                                                   \
    void increment(const Columns& in, double* results, std::size_t nbRows);                                            \
    void nestedArithmetic(const Columns& in, double* results, std::size_t nbRows);                                     \
    void lengthByProducts(const Columns& in, double* results, std::size_t nbRows);                                     \
    void trigonometry(const Columns& in, double* results, std::size_t nbRows);                                         \
    void comparisons(const Columns& in, double* results, std::size_t nbRows);                                          \
    void polynomial(const Columns& in, double* results, std::size_t nbRows);                                           \
    void pointArithmetic(const Columns& in, double* results, std::size_t nbRows);                                      \
    void distance(const Columns& in, double* results, std::size_t nbRows);                                             \
    void direction(const Columns& in, double* results, std::size_t nbRows);                                            \
    void packing(const Columns& in, double* results, std::size_t nbRows);                                              \
    }

DECLARE_NATIVE_BULK(nativebulk)
DECLARE_NATIVE_BULK(nativebulkwide)

#undef DECLARE_NATIVE_BULK
