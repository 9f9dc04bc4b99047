// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NativeBulk.cpp - see NativeBulk.h. Columns are read through separate pointers, as in performance-critical loops.
#include "benchmarks/NativeBulk.h"

#include <cmath>

#if !defined(NATIVE_BULK)
#define NATIVE_BULK nativebulk
#endif

namespace NATIVE_BULK {

namespace {

double radians(double degrees)
{
    return degrees * 3.14159265359 / 180.0;
}

}

void increment(const Columns& in, double* results, std::size_t nbRows)
{
    const double* const x = in.x.data();
    for (std::size_t i = 0; i < nbRows; ++i)
    {
        results[i] = x[i] + 1;
    }
}

void nestedArithmetic(const Columns& in, double* results, std::size_t nbRows)
{
    const double* const x = in.x.data();
    const double* const y = in.y.data();
    const double* const z = in.z.data();
    const double* const a = in.a.data();
    const double* const b = in.b.data();
    for (std::size_t i = 0; i < nbRows; ++i)
    {
        results[i] = ((x[i] * 2 + y[i]) * 3 - z[i]) / (a[i] + b[i] * 2);
    }
}

void lengthByProducts(const Columns& in, double* results, std::size_t nbRows)
{
    const double* const x = in.x.data();
    const double* const y = in.y.data();
    const double* const z = in.z.data();
    for (std::size_t i = 0; i < nbRows; ++i)
    {
        results[i] = std::sqrt(x[i] * x[i] + y[i] * y[i] + z[i] * z[i]);
    }
}

void trigonometry(const Columns& in, double* results, std::size_t nbRows)
{
    const double* const x = in.x.data();
    const double* const y = in.y.data();
    const double* const r = in.r.data();
    for (std::size_t i = 0; i < nbRows; ++i)
    {
        results[i] = std::sin(radians(x[i])) * r[i] + std::cos(radians(y[i])) * r[i];
    }
}

void comparisons(const Columns& in, double* results, std::size_t nbRows)
{
    const double* const x = in.x.data();
    const double* const y = in.y.data();
    const double* const a = in.a.data();
    const double* const b = in.b.data();
    for (std::size_t i = 0; i < nbRows; ++i)
    {
        results[i] = (x[i] > y[i] ? 1.0 : 0.0) * a[i] + (x[i] <= y[i] ? 1.0 : 0.0) * b[i];
    }
}

void polynomial(const Columns& in, double* results, std::size_t nbRows)
{
    for (std::size_t i = 0; i < nbRows; ++i)
    {
        const double x = in.x[i];
        // clang-format off
        results[i] = (((((((((((((((0.16 * x + 0.15) * x + 0.14) * x + 0.13) * x + 0.12) * x + 0.11) * x + 0.1) * x
            + 0.09) * x + 0.08) * x + 0.07) * x + 0.06) * x + 0.05) * x + 0.04) * x + 0.03) * x + 0.02) * x + 0.01);
        // clang-format on
    }
}

void distance(const Columns& in, double* results, std::size_t nbRows)
{
    const Point* const p = in.p.data();
    const Point* const q = in.q.data();
    for (std::size_t i = 0; i < nbRows; ++i)
    {
        const double x = p[i].x - q[i].x;
        const double y = p[i].y - q[i].y;
        const double z = p[i].z - q[i].z;
        results[i] = std::sqrt(x * x + y * y + z * z);
    }
}

void pointArithmetic(const Columns& in, double* results, std::size_t nbRows)
{
    const Point* const p = in.p.data();
    const Point* const q = in.q.data();
    for (std::size_t i = 0; i < nbRows; ++i)
    {
        results[3 * i] = p[i].x + q[i].x * 2;
        results[3 * i + 1] = p[i].y + q[i].y * 2;
        results[3 * i + 2] = p[i].z + q[i].z * 2;
    }
}

void direction(const Columns& in, double* results, std::size_t nbRows)
{
    const Point* const p = in.p.data();
    const Point* const q = in.q.data();
    const double* const r = in.r.data();
    for (std::size_t i = 0; i < nbRows; ++i)
    {
        const double x = p[i].x - q[i].x;
        const double y = p[i].y - q[i].y;
        const double z = p[i].z - q[i].z;
        const double length = std::sqrt(x * x + y * y + z * z);
        results[3 * i] = (q[i].x - p[i].x) / length * r[i];
        results[3 * i + 1] = (q[i].y - p[i].y) / length * r[i];
        results[3 * i + 2] = (q[i].z - p[i].z) / length * r[i];
    }
}

void packing(const Columns& in, double* results, std::size_t nbRows)
{
    const double* const x = in.x.data();
    const double* const y = in.y.data();
    for (std::size_t i = 0; i < nbRows; ++i)
    {
        results[3 * i] = x[i];
        results[3 * i + 1] = y[i];
        results[3 * i + 2] = x[i] + y[i];
    }
}

}
