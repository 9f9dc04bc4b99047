// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Native.h - the formulas in C++: the lower bound on an interpreter's time, and the expected values.
//
// Each function is compiled separately with g++ -O2 and called through a pointer, like an expression. The operations
// are in the order that the language defines; trigonometry takes degrees, with the language's eleven decimals of pi.
#pragma once

#include "benchmarks/Inputs.h"

namespace native {

double increment(const Inputs& in);
double multiplyAdd(const Inputs& in);
double differenceOfSquares(const Inputs& in);
double nestedArithmetic(const Inputs& in);
double lengthByPowers(const Inputs& in);
double lengthByProducts(const Inputs& in);
double trigonometry(const Inputs& in);
double extremes(const Inputs& in);
double comparisons(const Inputs& in);
double polynomial(const Inputs& in);
double constants(const Inputs& in);
double flatSum(const Inputs& in);
double nestedSum(const Inputs& in);

Point pointArithmetic(const Inputs& in);
double distance(const Inputs& in);
Point direction(const Inputs& in);
Point crossProduct(const Inputs& in);
Point packing(const Inputs& in);

double conversions(const Inputs& in);

/// The result of the peers, whose angles are radians, for the trigonometric formula's text.
double trigonometryInRadians(const Inputs& in);

}
