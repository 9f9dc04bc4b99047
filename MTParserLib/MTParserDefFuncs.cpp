// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserDefFuncs.cpp - the one list of the vocabulary. See MTParserDefFuncs.h.
#include "MTParserLib/MTParserDefFuncs.h"

#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/run/BuiltInKernels.h"
#include "MTParserLib/vocabulary/Conversions.h"
#include "MTParserLib/vocabulary/CoreMath.h"
#include "MTParserLib/vocabulary/Geometry.h"
#include "MTParserLib/vocabulary/Operators.h"

#include <cstddef>
#include <iterator>
#include <type_traits>

namespace {

template <class Item>
void defineOperator(MTParserRegistrar& registrar)
{
    registrar.defineOperator(new Item, true, builtInKernels<Item>);
}

template <class Item>
void defineFunction(MTParserRegistrar& registrar)
{
    registrar.defineFunction(new Item, true, builtInKernels<Item>);
}

template <class Item>
// not covered: runs while compiling
constexpr VocabularyEntry describe(mathexpr::VocabularyFamily family, const wchar_t* className)
{
    static_assert(sizeof(Item) == sizeof(void*), "an item has no data");
    VocabularyEntry entry{};
    entry.family = family;
    entry.className = className;
    entry.symbol = Item::text.symbol;
    entry.help = Item::text.help;
    entry.description = Item::text.description;
    entry.isConstant = Item::constant;
    if constexpr (std::is_base_of_v<IMathOperator, Item>)
    {
        entry.isOperator = true;
        entry.isUnary = Item::text.unary;
        entry.nbArgs = Item::text.unary ? 1 : 2;
        entry.precedence = Item::text.precedence;
        entry.define = defineOperator<Item>;
    }
    else
    {
        entry.nbArgs = Item::text.nbArgs;
        entry.define = defineFunction<Item>;
    }
    return entry;
}

#define ITEM(family, Class) describe<Class>(mathexpr::VocabularyFamily::family, L"" #Class)

constexpr VocabularyConstant constants[] = {
    {L"pi", formulas::pi},
    {L"PI", formulas::pi},
    {L"e", 2.718281828459045},
    {L"E", 2.718281828459045},
};

// The order decides which of two colliding registrations the registrar refuses.
constexpr VocabularyEntry vocabulary[] = {
    // clang-format off
    //   family     class
    //   ---------- ------------------
    ITEM(Operators, AddOp),
    ITEM(Operators, MinusOp),
    ITEM(Operators, MultOp),
    ITEM(Operators, DivOp),
    ITEM(Operators, ExpOp),
    ITEM(Operators, UnaryMinusOp),
    ITEM(Operators, ModuloOp),
    ITEM(Operators, GreaterThanOp),
    ITEM(Operators, LesserThanOp),
    ITEM(Operators, GreaterEqualThanOp),
    ITEM(Operators, LesserEqualThanOp),
    ITEM(Operators, NotEqualOp),
    ITEM(Operators, EqualOp),
    ITEM(Operators, AndOp),
    ITEM(Operators, OrOp),
    ITEM(Operators, NotOp),
    ITEM(CoreMath,  SinFct),
    ITEM(CoreMath,  ArcSinFct),
    ITEM(CoreMath,  SinhFct),
    ITEM(CoreMath,  CosFct),
    ITEM(CoreMath,  ArcCosFct),
    ITEM(CoreMath,  CoshFct),
    ITEM(CoreMath,  TanFct),
    ITEM(CoreMath,  ArcTanFct),
    ITEM(CoreMath,  TanhFct),
    ITEM(CoreMath,  SqrtFct),
    ITEM(CoreMath,  MinFct),
    ITEM(CoreMath,  Min3Fct),
    ITEM(CoreMath,  MinUndefFct),
    ITEM(CoreMath,  MaxFct),
    ITEM(CoreMath,  Max3Fct),
    ITEM(CoreMath,  MaxUndefFct),
    ITEM(CoreMath,  AbsFct),
    ITEM(CoreMath,  RandFct),
    ITEM(CoreMath,  RandMinMaxFct),
    ITEM(CoreMath,  CeilFct),
    ITEM(CoreMath,  FloorFct),
    ITEM(CoreMath,  LogFct),
    ITEM(CoreMath,  Log10Fct),
    ITEM(CoreMath,  AvgFct),
    ITEM(CoreMath,  SumFct),
    ITEM(CoreMath,  FactorialFct),
    ITEM(CoreMath,  SqrFct),
    ITEM(CoreMath,  ExpFct),
    ITEM(CoreMath,  Exp10Fct),
    ITEM(CoreMath,  RoundFct),
    ITEM(CoreMath,  TruncFct),
    ITEM(CoreMath,  R2dFct),
    ITEM(CoreMath,  D2rFct),
    ITEM(Geometry,  Point),
#define CONVERSION(family, Class, symbol, help, description, kind, formula) ITEM(family, Class),
#include "MTParserLib/vocabulary/ConversionTable.h"
    ITEM(Geometry,  dist),
    ITEM(Geometry,  nor),
    ITEM(Geometry,  vec),
    ITEM(Geometry,  vec1),
    ITEM(Geometry,  ill),
    ITEM(CoreMath,  PowFct),
    // clang-format on
};

constexpr std::size_t countOf(mathexpr::VocabularyFamily family)  // not covered: runs while compiling
{
    std::size_t count = 0;
    for (const VocabularyEntry& entry : vocabulary)
    {
        count += entry.family == family ? 1 : 0;
    }
    return count;
}

static_assert(countOf(mathexpr::VocabularyFamily::Operators) == 16 && std::size(vocabulary) == 16 + 257);
static_assert(countOf(mathexpr::VocabularyFamily::Angle) == 23, "5 x 5 but for r2d and d2r");
static_assert(countOf(mathexpr::VocabularyFamily::Length) == 81, "9 x 9");
static_assert(countOf(mathexpr::VocabularyFamily::Area) == 64, "8 x 8");
static_assert(countOf(mathexpr::VocabularyFamily::Volume) == 49, "7 x 7");

}

platform::ArrayView<const VocabularyConstant> getConstants() noexcept
{
    return constants;
}

void registerConstants(MTParserRegistrar& registrar)
{
    for (const VocabularyConstant& constant : constants)
    {
        VALTYPE value;
        value.x = constant.value;
        registrar.defineConstant(constant.symbol, value);
    }
}

platform::ArrayView<const VocabularyEntry> getVocabulary() noexcept
{
    return vocabulary;
}

void registerVocabulary(MTParserRegistrar& registrar)
{
    for (const VocabularyEntry& entry : vocabulary)
    {
        entry.define(registrar);
    }
}
