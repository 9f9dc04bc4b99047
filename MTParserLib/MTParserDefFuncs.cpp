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

#include <array>
#include <cstddef>
#include <memory>
#include <new>
#include <string_view>
#include <type_traits>
#include <utility>

namespace {

/// A class of the list.
template <class Listed>
struct ListedClass
{
    using Item = Listed;
    mathexpr::VocabularyFamily family;
    const wchar_t* className;
};

template <class Item>
// not covered: runs while compiling
constexpr VocabularyEntry describe(ListedClass<Item> listed)
{
    VocabularyEntry entry{};
    entry.family = listed.family;
    entry.className = listed.className;
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
    }
    else
    {
        entry.nbArgs = Item::text.nbArgs;
    }
    entry.kernels = &builtInKernels<Item>;
    return entry;
}

constexpr VocabularyConstant constants[] = {
    {L"pi", formulas::pi},
    {L"PI", formulas::pi},
    {L"e", 2.718281828459045},
    {L"E", 2.718281828459045},
};

/// Passes all classes to the visitor, in the order in which they are registered.
template <class Visitor>
constexpr auto visitVocabulary(Visitor visit)  // not covered: runs while compiling
{
#define ITEM(family, Class)                                                                                            \
    ListedClass<Class>                                                                                                 \
    {                                                                                                                  \
        mathexpr::VocabularyFamily::family, L"" #Class                                                                 \
    }
    return visit(
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
    ITEM(CoreMath,  PowFct)
        // clang-format on
    );
}

// not covered: runs while compiling
constexpr auto vocabulary =
    visitVocabulary([](auto... listed) { return std::array<VocabularyEntry, sizeof...(listed)>{describe(listed)...}; });

constexpr std::size_t countOf(mathexpr::VocabularyFamily family)  // not covered: runs while compiling
{
    std::size_t count = 0;
    for (const VocabularyEntry& entry : vocabulary)
    {
        count += entry.family == family ? 1 : 0;
    }
    return count;
}

constexpr std::size_t nbOperators = countOf(mathexpr::VocabularyFamily::Operators);
constexpr std::size_t nbFunctions = vocabulary.size() - nbOperators;

static_assert(nbOperators == 16 && nbFunctions == 257);
static_assert(countOf(mathexpr::VocabularyFamily::Angle) == 23, "5 x 5 but for r2d and d2r");
static_assert(countOf(mathexpr::VocabularyFamily::Length) == 81, "9 x 9");
static_assert(countOf(mathexpr::VocabularyFamily::Area) == 64, "8 x 8");
static_assert(countOf(mathexpr::VocabularyFamily::Volume) == 49, "7 x 7");

constexpr const VocabularyEntry& functionAt(std::size_t index)  // not covered: runs while compiling
{
    return vocabulary[nbOperators + index];
}

/// The registrar's index of functions, computed at compile time.
struct FunctionNames
{
    MTNameIndex::Table<512> index;
    std::array<std::size_t, nbFunctions> nextOverload{};
    bool areDistinct = true;  // no two functions have the same name and argument count
};

constexpr FunctionNames indexFunctions()  // not covered: runs while compiling
{
    FunctionNames names;
    for (std::size_t at = 0; at < nbFunctions; ++at)
    {
        const std::wstring_view symbol = functionAt(at).symbol;
        const std::uint32_t hash = MTNameIndex::hash(symbol);
        std::size_t last =
            names.index.find(hash, [=](std::size_t index) { return functionAt(index).symbol == symbol; });
        if (last == MTNameIndex::notFound)
        {
            names.index.insert(hash, at);
        }
        else
        {
            for (; names.nextOverload[last] != MTNameIndex::notFound; last = names.nextOverload[last])
            {
                names.areDistinct = names.areDistinct && functionAt(last).nbArgs != functionAt(at).nbArgs;
            }
            names.areDistinct = names.areDistinct && functionAt(last).nbArgs != functionAt(at).nbArgs;
            names.nextOverload[last] = at;
        }
        names.nextOverload[at] = MTNameIndex::notFound;
    }
    return names;
}

constexpr FunctionNames functionNames = indexFunctions();

constexpr bool isLetterOrDigit(wchar_t character)  // not covered: runs while compiling
{
    const wchar_t folded = foldCase(character);
    return (folded >= L'a' && folded <= L'z') || (folded >= L'0' && folded <= L'9');
}

/// Whether all characters are letters and digits, or none of them is.
constexpr bool consistsOf(std::wstring_view symbol, bool lettersAndDigits)  // not covered: runs while compiling
{
    for (const wchar_t character : symbol)
    {
        if (isLetterOrDigit(character) != lettersAndDigits)
        {
            return false;
        }
    }
    return !symbol.empty();
}

/// Whether the registrar would accept the whole vocabulary: no name contains an operator's symbol or a syntax character,
/// no operator contains a syntax character, and no two operators are the same.
constexpr bool isVocabularySound()  // not covered: runs while compiling
{
    for (const VocabularyConstant& constant : constants)
    {
        if (!consistsOf(constant.symbol, true))
        {
            return false;
        }
    }
    for (std::size_t at = 0; at < nbFunctions; ++at)
    {
        if (!consistsOf(functionAt(at).symbol, true))
        {
            return false;
        }
    }
    for (std::size_t at = 0; at < nbOperators; ++at)
    {
        const std::wstring_view symbol = vocabulary[at].symbol;
        if (!vocabulary[at].isOperator || vocabulary[at].precedence >= functionPrecedence ||
            !consistsOf(symbol, false) || symbol.find_first_of(L".,[]") != std::wstring_view::npos)
        {
            return false;
        }
        for (std::size_t before = 0; before < at; ++before)
        {
            if (vocabulary[before].isUnary == vocabulary[at].isUnary && vocabulary[before].symbol == symbol)
            {
                return false;
            }
        }
    }
    return true;
}

static_assert(functionNames.areDistinct && isVocabularySound());

/// One block of memory for all items: an item has no data but its virtual table.
using ItemMemory = std::array<void*, vocabulary.size()>;

template <class Item>
const IMathExprItemEvaluator* makeItem(void*& memory)
{
    static_assert(sizeof(Item) == sizeof(void*), "an item has no data");
    return ::new (static_cast<void*>(&memory)) Item;
}

/// The items are never destroyed, only their memory is released: their destructors have no effect.
std::array<const IMathExprItemEvaluator*, vocabulary.size()> makeItems(ItemMemory& memory)
{
    return visitVocabulary([&memory](auto... listed) {
        std::size_t at = 0;
        return std::array<const IMathExprItemEvaluator*, sizeof...(listed)>{
            makeItem<typename decltype(listed)::Item>(memory[at++])...};
    });
}

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
    MTVocabulary definitions;
    const auto memory = std::make_shared<ItemMemory>();
    const auto items = makeItems(*memory);
    definitions.items = memory;
    definitions.operators.reserve(nbOperators);
    for (std::size_t at = 0; at < nbOperators; ++at)
    {
        const VocabularyEntry& entry = vocabulary[at];
        definitions.operators.push_back({static_cast<const IMathOperator*>(items[at]), entry.kernels, entry.symbol,
                                         entry.precedence, entry.isUnary});
    }
    definitions.functions.reserve(nbFunctions);
    for (std::size_t at = 0; at < nbFunctions; ++at)
    {
        const VocabularyEntry& entry = functionAt(at);
        definitions.functions.push_back({static_cast<const IMathFunction*>(items[nbOperators + at]), entry.kernels,
                                         entry.symbol, entry.nbArgs, functionNames.nextOverload[at]});
    }
    definitions.functionIndex = MTNameIndex(functionNames.index);
    registrar.defineVocabulary(std::move(definitions));
}
