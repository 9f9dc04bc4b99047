// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceFunctions.cpp - the core mathematical functions. Each checks the kind of its first argument only, and writes
// only type and x of the result.
#include "ReferenceVocabulary.h"

#include <cmath>
#include <cstdlib>

namespace reference {
namespace {

using Args = std::vector<VALTYPE>;

constexpr double shortPi = 3.14159265359;

double radians(double degrees)
{
    const double product = degrees * shortPi;
    return product / 180.0;
}

double degrees(double radians)
{
    const double product = radians * 180.0;
    return product / shortPi;
}

// Computed with pow. The volatile base keeps compilers from replacing pow by exp10.
double powerOfTen(double exponent)
{
    volatile double base = 10.0;
    return std::pow(base, exponent);
}

double randomFraction()
{
    return static_cast<double>(std::rand() & 0x7FFF) / 32767.0;
}

bool number(VALTYPE& result, double value)
{
    result.type = 0;
    result.x = value;
    return true;
}

template <double (*Compute)(double)>
bool plain(const Args& args, VALTYPE& result, Messages&)
{
    requireNumber(args[0]);
    return number(result, Compute(args[0].x));
}

bool arc(const Args& args, VALTYPE& result, Messages& messages, double (*inverse)(double))
{
    requireNumber(args[0]);
    if (args[0].x < -1.0 || args[0].x > 1.0)
    {
        return messages.refuse(6);
    }
    return number(result, degrees(inverse(args[0].x)));
}

bool arcSine(const Args& args, VALTYPE& result, Messages& messages)
{
    return arc(args, result, messages, std::asin);
}

bool arcCosine(const Args& args, VALTYPE& result, Messages& messages)
{
    return arc(args, result, messages, std::acos);
}

bool squareRoot(const Args& args, VALTYPE& result, Messages& messages)
{
    requireNumber(args[0]);
    if (args[0].x <= 0.0)
    {
        return messages.refuse(12);
    }
    return number(result, std::sqrt(args[0].x));
}

bool logarithm(const Args& args, VALTYPE& result, Messages& messages)
{
    requireNumber(args[0]);
    if (args[0].x <= 0.0)
    {
        return messages.refuse(8);
    }
    return number(result, std::log(args[0].x));
}

bool logarithm10(const Args& args, VALTYPE& result, Messages& messages)
{
    requireNumber(args[0]);
    if (args[0].x <= 0.0)
    {
        return messages.refuse(9);
    }
    return number(result, std::log10(args[0].x));
}

bool outsideIntegers(double x)
{
    return x < -2147483648.0 || x > 2147483647.0;
}

bool roundToInteger(const Args& args, VALTYPE& result, Messages& messages)
{
    requireNumber(args[0]);
    const double x = args[0].x;
    if (outsideIntegers(x))
    {
        return messages.refuse(7);
    }
    return number(result, toInteger(x >= 0.0 ? x + 0.5 : x - 0.5));
}

bool truncate(const Args& args, VALTYPE& result, Messages& messages)
{
    requireNumber(args[0]);
    if (outsideIntegers(args[0].x))
    {
        return messages.refuse(7);
    }
    return number(result, toInteger(args[0].x));
}

// The initial product is the value in the result. The loop ends early if the product is zero, infinite or NaN, since
// further factors would not change it.
bool factorial(const Args& args, VALTYPE& result, Messages&)
{
    requireNumber(args[0]);
    const std::int32_t n = toInteger(args[0].x);
    if (n <= 0)
    {
        return number(result, 0.0);
    }
    double product = result.x;
    for (std::int32_t factor = n - 1; factor >= 2 && product != 0.0 && std::isfinite(product); --factor)
    {
        product = product * factor;
    }
    return number(result, product);
}

bool absolute(const Args& args, VALTYPE& result, Messages&)
{
    const VALTYPE& a = args[0];
    if (a.type != 0)
    {
        return number(result, std::sqrt(a.x * a.x + a.y * a.y + a.z * a.z));
    }
    return number(result, std::fabs(a.x));
}

double smaller(double a, double b)
{
    return b > a ? a : b;
}

double larger(double a, double b)
{
    return a > b ? a : b;
}

bool minimum2(const Args& args, VALTYPE& result, Messages&)
{
    requireNumber(args[0]);
    return number(result, smaller(args[0].x, args[1].x));
}

bool minimum3(const Args& args, VALTYPE& result, Messages&)
{
    requireNumber(args[0]);
    const double m = smaller(args[0].x, args[1].x);
    return number(result, args[2].x > m ? m : args[2].x);
}

bool minimumOfAny(const Args& args, VALTYPE& result, Messages&)
{
    requireNumber(args[0]);
    double current = args[0].x;
    for (const VALTYPE& arg : args)
    {
        current = arg.x < current ? arg.x : current;
    }
    return number(result, current);
}

bool maximum2(const Args& args, VALTYPE& result, Messages&)
{
    requireNumber(args[0]);
    return number(result, larger(args[0].x, args[1].x));
}

bool maximum3(const Args& args, VALTYPE& result, Messages&)
{
    requireNumber(args[0]);
    const double m = larger(args[0].x, args[1].x);
    return number(result, m > args[2].x ? m : args[2].x);
}

bool maximumOfAny(const Args& args, VALTYPE& result, Messages&)
{
    requireNumber(args[0]);
    double current = args[0].x;
    for (const VALTYPE& arg : args)
    {
        current = arg.x > current ? arg.x : current;
    }
    return number(result, current);
}

double total(const Args& args)
{
    double sum = 0.0;
    for (const VALTYPE& arg : args)
    {
        sum = sum + arg.x;
    }
    return sum;
}

bool average(const Args& args, VALTYPE& result, Messages&)
{
    requireNumber(args[0]);
    return number(result, total(args) / static_cast<double>(args.size()));
}

bool sumOfAll(const Args& args, VALTYPE& result, Messages&)
{
    requireNumber(args[0]);
    return number(result, total(args));
}

bool random(const Args&, VALTYPE& result, Messages&)
{
    return number(result, randomFraction());
}

bool randomBetween(const Args& args, VALTYPE& result, Messages&)
{
    requireNumber(args[0]);
    const double scaled = randomFraction() * (args[1].x - args[0].x);
    return number(result, args[0].x + scaled);
}

bool powerOf(const Args& args, VALTYPE& result, Messages&)
{
    requireNumber(args[0]);
    return number(result, std::pow(args[0].x, args[1].x));
}

// clang-format off
double sine(double x)              { return std::sin(radians(x)); }
double hyperbolicSine(double x)    { return std::sinh(radians(x)); }
double cosine(double x)            { return std::cos(radians(x)); }
double hyperbolicCosine(double x)  { return std::cosh(radians(x)); }
double tangent(double x)           { return std::tan(radians(x)); }
double hyperbolicTangent(double x) { return std::tanh(radians(x)); }
double arcTangent(double x)        { return degrees(std::atan(x)); }
double roundUp(double x)           { return std::ceil(x); }
double roundDown(double x)         { return std::floor(x); }
double square(double x)            { return x * x; }
double exponential(double x)       { return std::exp(x); }
// clang-format on
}

void addCoreFunctions(std::vector<Item>& list)
{
    const auto add = [&](const wchar_t* symbol, std::uint32_t nbArgs, auto evaluate, bool constant = true) {
        list.push_back({symbol, nbArgs, 0, false, constant, evaluate});
    };
    add(L"sin", 1, plain<sine>);
    add(L"asin", 1, arcSine);
    add(L"sinh", 1, plain<hyperbolicSine>);
    add(L"cos", 1, plain<cosine>);
    add(L"acos", 1, arcCosine);
    add(L"cosh", 1, plain<hyperbolicCosine>);
    add(L"tan", 1, plain<tangent>);
    add(L"atan", 1, plain<arcTangent>);
    add(L"tanh", 1, plain<hyperbolicTangent>);
    add(L"sqrt", 1, squareRoot);
    add(L"min", 2, minimum2);
    add(L"min", 3, minimum3);
    add(L"min", anyNumberOfArguments, minimumOfAny);
    add(L"max", 2, maximum2);
    add(L"max", 3, maximum3);
    add(L"max", anyNumberOfArguments, maximumOfAny);
    add(L"abs", 1, absolute);
    add(L"rand", 0, random, false);
    add(L"rand", 2, randomBetween, false);
    add(L"ceil", 1, plain<roundUp>);
    add(L"floor", 1, plain<roundDown>);
    add(L"ln", 1, logarithm);
    add(L"log", 1, logarithm10);
    add(L"avg", anyNumberOfArguments, average);
    add(L"sum", anyNumberOfArguments, sumOfAll);
    add(L"fact", 1, factorial);
    add(L"sqr", 1, plain<square>);
    add(L"exp", 1, plain<exponential>);
    add(L"exp10", 1, plain<powerOfTen>);
    add(L"round", 1, roundToInteger);
    add(L"trunc", 1, truncate);
    add(L"r2d", 1, plain<degrees>);
    add(L"d2r", 1, plain<radians>);
    add(L"pow", 2, powerOf);
}
}
