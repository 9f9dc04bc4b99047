// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TileTests.cpp - compares tiles of every instruction set of the processor with separate evaluations of the same rows:
// every bit of the values, the status of every row, and the results of rows without a value.
#include "ExpressionGenerator.h"
#include "Settings.h"

#include "MTParserLib/MTParserCompiler.h"
#include "MTParserLib/MTParserDefFuncs.h"
#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/compile/MTCompilation.h"
#include "MTParserLib/run/MTBulkPlan.h"
#include "MTParserLib/run/MTBulkRun.h"
#include "MTParserLib/tiles/MTTileProgram.h"
#include "MTParserLib/tiles/MTTileSets.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <fstream>
#include <iterator>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <tuple>
#include <vector>

#if defined(__linux__)
#include <sys/mman.h>
#include <unistd.h>
#endif

namespace {

using mathexpr::BulkKind;
using reference::Random;

class Variable final : public IMathVariable
{
public:
    Variable(std::wstring name, VALTYPE initial) : symbol(std::move(name)), value(initial) {}
    bool evaluate(std::uint32_t, const VALTYPE*, VALTYPE& result, bool) const override
    {
        result = value;
        return true;
    }
    std::wstring getSymbol() const override { return symbol; }
    VALTYPE* getValuePtr() override { return &value; }

private:
    std::wstring symbol;
    VALTYPE value;
};

/// Generates texts with operands of accepted kinds; covers most items of the vocabulary.
class Formulas
{
public:
    explicit Formulas(Random& source) : random(source) {}

    std::wstring number(std::size_t depth)
    {
        static const std::array<std::wstring, 7> leaves = {L"x", L"y", L"x", L"y", L"k", L"2.5", L"0"};
        static const std::array<std::wstring, 16> binary = {L"+", L"-", L"*", L"/",  L"+",  L"-",  L"*",  L"/",
                                                            L">", L"<", L"|", L">=", L"<=", L"==", L"!=", L"^"};
        static const std::array<std::wstring, 14> unary = {L"sqrt", L"abs",   L"-",    L"!",     L"d2r",
                                                           L"r2d",  L"sqr",   L"m2f",  L"m2m",   L"sin",
                                                           L"ln",   L"round", L"asin", L"vm2vmm"};
        static const std::array<std::wstring, 8> calls = {L"min", L"max", L"pow", L"sum",
                                                          L"avg", L"min", L"max", L"fact"};
        const std::size_t kind = depth == 0 ? 0 : random.below(100);
        if (kind < 10)
        {
            return random.pick(leaves);
        }
        if (kind < 50)
        {
            const std::wstring left = number(depth - 1);
            return L"(" + left + random.pick(binary) + number(depth - 1) + L")";
        }
        if (kind < 65)
        {
            const std::wstring& item = random.pick(unary);
            return L"(" + item + L"(" + number(depth - 1) + L"))";
        }
        if (kind < 78)
        {
            const std::wstring& item = random.pick(calls);
            std::wstring text = item + L"(" + number(depth - 1);
            const std::size_t more = item == L"fact" ? 0 : item == L"pow" ? 1 : 1 + random.below(4);
            for (std::size_t j = 0; j < more; ++j)
            {
                text += L"," + number(depth - 1);
            }
            return text + L")";
        }
        const std::wstring left = point(depth - 1);
        const std::wstring right = point(depth - 1);
        switch (random.below(5))
        {
        case 0:
            return L"dist(" + left + L"," + right + L")";
        case 1:
            return L"(" + left + L"*" + right + L")";
        case 2:
            return L"abs(" + left + L")";
        case 3:
            return L"(" + left + L">" + right + L")";
        default:
            return L"((" + number(depth - 1) + L"*" + number(depth - 1) + L")+(" + number(depth - 1) + L"-" +
                   number(depth - 1) + L"))";
        }
    }

    std::wstring point(std::size_t depth)
    {
        static const std::array<std::wstring, 6> leaves = {L"p", L"q", L"p", L"q", L"c", L"[1,2,3]"};
        static const std::array<std::wstring, 3> operators = {L"+", L"-", L"&"};
        static const std::array<std::wstring, 3> calls = {L"vec(", L"vec1(", L"nor("};
        if (depth == 0 || random.chance(15))
        {
            return random.pick(leaves);
        }
        switch (random.below(7))
        {
        case 0:
            return L"[" + number(depth - 1) + L"," + number(depth - 1) + L"," + number(depth - 1) + L"]";
        case 1:
            return L"[" + number(depth - 1) + (random.chance(50) ? L"]" : L"," + number(depth - 1) + L"]");
        case 2:
            return L"(" + point(depth - 1) + L"*" + number(depth - 1) + L")";
        case 3:
            return random.chance(50) ? L"(" + number(depth - 1) + L"*" + point(depth - 1) + L")"
                                     : L"(" + point(depth - 1) + L"/" + number(depth - 1) + L")";
        case 4:
            return random.chance(80) ? L"(-(" + point(depth - 1) + L"))"
                                     : L"ill(p,q," + point(depth - 1) + L"," + point(depth - 1) + L")";
        case 5:
            return random.pick(calls) + point(depth - 1) + L"," + point(depth - 1) + L")";
        default:
            return L"(" + point(depth - 1) + random.pick(operators) + point(depth - 1) + L")";
        }
    }

private:
    Random& random;
};

/// The bits of all results, and the status of every row. All NaNs are equal.
struct Rows
{
    std::vector<std::uint64_t> bits;
    std::vector<std::uint32_t> status;

    bool operator==(const Rows&) const = default;
};

VALTYPE record(std::uint8_t type, double x, double y, double z)
{
    VALTYPE value;
    value.type = type;
    value.x = x;
    value.y = y;
    value.z = z;
    return value;
}

class Tiles : public testing::Test
{
protected:
    Tiles()
    {
        registrar.setSyntax({L'.', L',', L'[', L']'});
        registerVocabulary(registrar);
        for (const auto& [name, initial] : {std::pair{L"x", record(0, 0, 0, 0)},
                                            {L"y", record(0, 0, 0, 0)},
                                            {L"k", record(0, 1.5, 4, 0)},
                                            {L"p", record(1, 0, 0, 0)},
                                            {L"q", record(1, 0, 0, 0)},
                                            {L"c", record(1, 3, -0.0, 2)}})
        {
            variables[name] = new Variable(name, initial);
            registrar.defineVariable(variables[name], true);
        }
    }

    /// @return false if constants are refused at compile time
    bool compile(const std::wstring& text)
    {
        std::wstring assignTarget;
        try
        {
            return compiler.compile(text.c_str(), {}, assignTarget);
        }
        catch (const mathexpr::ParsingException&)
        {
            return false;
        }
    }

    bool isConstant() const { return compilation.program.isConstant(); }

    /// Random numbers, a few of which are refused by some items.
    static std::vector<double> someNumbers(Random& random, std::size_t count, std::size_t percentSpecial)
    {
        static constexpr std::array<double, 10> special = {0.0, -0.0, -1.0,     1e300,     1e-310,
                                                           0.5, 1.0,  HUGE_VAL, -HUGE_VAL, NAN};
        std::vector<double> all(count);
        for (double& value : all)
        {
            value = random.chance(percentSpecial) ? random.pick(special)
                                                  : 0.25 + static_cast<double>(random.below(500)) / 8;
        }
        return all;
    }

    static std::ptrdiff_t distanceOf(BulkKind kind, std::ptrdiff_t gap)
    {
        return ((kind == BulkKind::Number ? 1 : 3) + gap) * static_cast<std::ptrdiff_t>(sizeof(double));
    }

    std::vector<MTBoundColumn> makeColumns(std::ptrdiff_t gap)
    {
        std::vector<MTBoundColumn> columns;
        for (const auto& [name, numbers] : data)
        {
            const BulkKind kind = name == L"p" || name == L"q" ? BulkKind::Point : BulkKind::Number;
            columns.push_back(
                {variables[name]->getValuePtr(), {name.c_str(), numbers.data(), distanceOf(kind, gap), kind}});
        }
        return columns;
    }

    /// Evaluates rows of columns with a gap between the rows, into results with the same gap.
    Rows evaluate(const MTTileSet* set, std::size_t nbRows, BulkKind kind, std::ptrdiff_t gap)
    {
        const std::vector<MTBoundColumn> columns = makeColumns(gap);
        std::vector<double> results(nbRows * 6, 77.0);
        Rows rows;
        rows.status.resize(nbRows, 77);
        mathexpr::BulkResults target{
            results.data(), kind == BulkKind::Record ? std::ptrdiff_t{sizeof(VALTYPE)} : distanceOf(kind, gap), kind};
        target.status = rows.status.data();
        runInBulk(compilation.program, columns, nbRows, target, 1, set);
        for (const double value : results)
        {
            rows.bits.push_back(std::bit_cast<std::uint64_t>(std::isnan(value) ? std::nan("") : value));
        }
        return rows;
    }

    /// Tiles of every set must yield the same as separate evaluations of the rows.
    void expectRowsOfAllSets(const std::wstring& text, std::size_t nbRows, BulkKind kind)
    {
        ASSERT_TRUE(compile(text)) << narrow(text);
        const Rows expected = evaluate(nullptr, nbRows, kind, 0);
        for (const MTTileSet* set : availableTileSets())
        {
            EXPECT_EQ(evaluate(set, nbRows, kind, 0), expected)
                << narrow(text) << ", " << set->nbRows << " rows of a tile";
        }
    }

    void makeData(Random& random, std::size_t nbRows, std::size_t percentSpecial)
    {
        for (const wchar_t* name : {L"x", L"y", L"p", L"q"})
        {
            data[name] = someNumbers(random, 6 * nbRows, percentSpecial);
        }
    }

    static std::string narrow(const std::wstring& text) { return {text.begin(), text.end()}; }

    std::map<std::wstring, Variable*> variables;
    MTParserRegistrar registrar;
    MTCompilation compilation;
    MTParserCompiler compiler{registrar, compilation, false, nullptr};
    std::map<std::wstring, std::vector<double>> data;
};

TEST_F(Tiles, ComeToWhatEachRowDoesByItself)
{
    const std::uint64_t first = reference::firstSeed();
    const std::uint64_t count = reference::fromEnvironment("MATHEXPR_DIFFERENTIAL_COUNT", 4000);
    const auto mostRows = static_cast<std::size_t>(reference::fromEnvironment("MATHEXPR_DIFFERENTIAL_ROWS", 200));
    std::size_t nbInTiles = 0;
    std::uint64_t nbCompared = 0;
    for (std::uint64_t seed = first; seed < first + count; ++seed)
    {
        Random random(seed);
        Formulas formulas(random);
        const bool isPoint = random.chance(40);
        const std::wstring text = isPoint ? formulas.point(1 + seed % 4) : formulas.number(1 + seed % 4);
        if (!compile(text))
        {
            continue;
        }
        const std::size_t nbRows = 1 + random.below(mostRows);
        makeData(random, nbRows, random.pick(std::array<std::size_t, 3>{0, 2, 20}));
        const BulkKind kind = random.chance(30) ? BulkKind::Record : isPoint ? BulkKind::Point : BulkKind::Number;
        const std::ptrdiff_t gap = random.chance(70) ? 0 : 1;
        const Rows expected = evaluate(nullptr, nbRows, kind, gap);
        for (const MTTileSet* set : availableTileSets())
        {
            EXPECT_EQ(evaluate(set, nbRows, kind, gap), expected) << set->nbRows << " rows of a tile";
        }
        nbCompared += nbRows;
        nbInTiles +=
            !isConstant() && MTTileProgram::build(compilation.program, makeColumns(gap), baselineTiles) ? 1U : 0U;
        ASSERT_FALSE(HasFailure()) << "seed " << seed << ": " << narrow(text) << ", " << nbRows << " rows";
    }
    EXPECT_GT(nbInTiles, count / 2);
    RecordProperty("rows", std::to_string(nbCompared));  // by each instruction set
}

// Vector code may compute sines and cosines, with a different method for each range of angles.
TEST_F(Tiles, TakeSinesOfAnyAngle)
{
    constexpr std::size_t nbRows = 20000;
    Random random(1);
    const auto fraction = [&] { return static_cast<double>(random.below(1U << 30U)) / (1U << 30U); };
    const auto exponent = [&](std::size_t limit) { return static_cast<int>(random.below(limit)); };
    const auto multiple = [&](double angle) { return angle * (static_cast<double>(random.below(401)) - 200); };
    const auto sometimesNegative = [&](double angle) { return random.chance(50) ? -angle : angle; };
    makeData(random, nbRows, 0);
    for (std::size_t row = 0; row < nbRows; row += 8)
    {
        const double angles[] = {720 * fraction(),
                                 45 * fraction(),
                                 multiple(15),
                                 multiple(45) * (1 + std::ldexp(fraction() - 0.5, -exponent(54))),
                                 std::ldexp(fraction(), -exponent(1074)),
                                 std::ldexp(fraction(), exponent(1024)),
                                 1.1e8 * fraction(),
                                 random.pick(std::array{0.0, 5e-324, 8.5e-7, HUGE_VAL, static_cast<double>(NAN)})};
        std::transform(std::begin(angles), std::end(angles), data[L"x"].begin() + static_cast<std::ptrdiff_t>(row),
                       sometimesNegative);
    }
    data[L"y"].assign(data[L"x"].begin(), data[L"x"].end());
    std::sort(data[L"y"].begin(), data[L"y"].end(),
              [](double left, double right) { return std::isnan(left) ? !std::isnan(right) : left < right; });
    for (const wchar_t* text : {L"sin(x)", L"cos(x)", L"sin(y)", L"cos(y)"})
    {
        expectRowsOfAllSets(text, nbRows, BulkKind::Number);
    }
}

TEST_F(Tiles, TakeProgramsThatDifferFromRowToRowOnlyByValue)
{
    Random random(1);
    makeData(random, 1, 0);
    const std::vector<MTBoundColumn> columns = makeColumns(0);
    for (const wchar_t* text : {L"x+1", L"p+q*2", L"dist(p,q)", L"vec1(p,q)*x", L"[x,y,x+y]", L"fact(x)", L"p&q",
                                L"p>q", L"ill(p,q,p,q)", L"min(x,y,2)", L"m2m(x)", L"sin(x)/y", L"m2f(x)", L"min(x,p)",
                                L"[x,y,x,y]", L"m2f(x)&m2f(y)", L"[p,x]", L"cm2cm(x)", L"x^p"})
    {
        ASSERT_TRUE(compile(text));
        EXPECT_TRUE(MTTileProgram::build(compilation.program, columns, baselineTiles)) << narrow(text);
        const Rows expected = evaluate(nullptr, 1, BulkKind::Record, 0);
        EXPECT_EQ(evaluate(&baselineTiles, 1, BulkKind::Record, 0), expected) << narrow(text);
    }
    for (const wchar_t* text : {L"rand(0,x)", L"x", L"k+1", L"x/0", L"x+p", L"sin(p)", L"x+sqrt(k-2)"})
    {
        ASSERT_TRUE(compile(text));
        EXPECT_FALSE(MTTileProgram::build(compilation.program, columns, baselineTiles)) << narrow(text);
    }
}

TEST_F(Tiles, ServeCallsWithOtherArraysAndResults)
{
    Random random(1);
    for (const wchar_t* text : {L"x/y+k", L"p/x+q", L"dist(p,q)/y", L"x", L"2*3", L"[x,max(y,1,2,3),k]"})
    {
        ASSERT_TRUE(compile(text));
        for (int call = 0; call < 60; ++call)
        {
            const std::size_t nbRows = 1 + random.below(700);
            makeData(random, nbRows, 2);
            const BulkKind kind = random.pick(std::array{BulkKind::Number, BulkKind::Point, BulkKind::Record});
            const std::ptrdiff_t gap = random.chance(50) ? 0 : 1;
            const Rows found =
                evaluate(availableTileSets()[random.below(availableTileSets().size())], nbRows, kind, gap);
            compilation.program.bulkPlan.reset();
            ASSERT_EQ(found, evaluate(nullptr, nbRows, kind, gap)) << narrow(text) << ", call " << call;
            if (random.chance(50))
            {
                compilation.program.bulkPlan.reset();
            }
        }
    }
}

TEST_F(Tiles, AreGivenUpForARefusalInAnyPlace)
{
    for (const MTTileSet* set : availableTileSets())
    {
        const std::size_t nbRows = 3 * set->nbRows + 5;
        for (std::size_t refused = 0; refused < nbRows; ++refused)
        {
            Random random(refused);
            makeData(random, nbRows, 0);
            data[L"x"][refused] = 0.0;
            for (const auto& [text, kind] : {std::pair{L"y/x", BulkKind::Number},
                                             {L"sqrt(x)", BulkKind::Number},
                                             {L"ln(x)+y", BulkKind::Number},
                                             {L"p/x", BulkKind::Point},
                                             {L"p*(1/x)", BulkKind::Point},
                                             {L"pow(y/x,2)", BulkKind::Number}})
            {
                ASSERT_TRUE(compile(text));
                const Rows found = evaluate(set, nbRows, kind, 0);
                ASSERT_EQ(found, evaluate(nullptr, nbRows, kind, 0)) << narrow(text) << ", row " << refused;
                EXPECT_NE(found.status[refused], 0);
            }
        }
    }
}

TEST_F(Tiles, EndAtAnyRow)
{
    Random random(1);
    makeData(random, 600, 1);
    for (const auto& [text, kind] :
         {std::pair{L"sqrt(x)/y-x", BulkKind::Number}, {L"p/x+q", BulkKind::Point}, {L"(p&q)*x", BulkKind::Record}})
    {
        ASSERT_TRUE(compile(text));
        for (std::size_t nbRows = 0; nbRows < 600; nbRows += nbRows < 140 ? 1 : 37)
        {
            const Rows expected = evaluate(nullptr, nbRows, kind, 0);
            for (const MTTileSet* set : availableTileSets())
            {
                ASSERT_EQ(evaluate(set, nbRows, kind, 0), expected) << narrow(text) << ", " << nbRows << " rows";
            }
        }
    }
}

TEST_F(Tiles, ReadAndWritePointsWhoseCoordinatesAreApart)
{
    Random random(1);
    const std::size_t nbRows = 133;
    makeData(random, 2 * nbRows, 2);
    ASSERT_TRUE(compile(L"p/x+q"));
    std::vector<MTBoundColumn> columns = makeColumns(0);
    const auto apart = static_cast<std::ptrdiff_t>(nbRows * sizeof(double) * 3);
    for (MTBoundColumn& column : columns)
    {
        column.column.coordinateStride = apart;  // with 16 unused bytes between the x of two rows
    }
    const auto evaluated = [&](const MTTileSet* set) {
        std::vector<double> results(9 * nbRows, 77.0);
        runInBulk(compilation.program, columns, nbRows, {results.data(), 24, BulkKind::Point, apart}, 1, set);
        std::vector<std::uint64_t> bits;
        for (const double value : results)
        {
            bits.push_back(std::bit_cast<std::uint64_t>(std::isnan(value) ? std::nan("") : value));
        }
        return bits;
    };
    for (const MTTileSet* set : availableTileSets())
    {
        EXPECT_EQ(evaluated(set), evaluated(nullptr)) << set->nbRows << " rows of a tile";
    }
}

TEST_F(Tiles, ReadNumbersThatAreTheSameInAllRows)
{
    Random random(1);
    makeData(random, 200, 2);
    for (const auto& [text, kind] : {std::pair{L"x+2.5", BulkKind::Number},
                                     {L"2.5-x", BulkKind::Number},
                                     {L"x/k", BulkKind::Number},
                                     {L"k/x", BulkKind::Number},
                                     {L"(x+y)*k", BulkKind::Number},
                                     {L"k-(x+y)", BulkKind::Number},
                                     {L"k/(x-y)", BulkKind::Number},
                                     {L"max(x*y,k)", BulkKind::Number},
                                     {L"(k>x)-(y<=k)", BulkKind::Number},
                                     {L"p*k", BulkKind::Point},
                                     {L"k*p", BulkKind::Point},
                                     {L"p/k+q", BulkKind::Point},
                                     {L"[x,k,2]", BulkKind::Point},
                                     {L"[k,2,x*y]", BulkKind::Point}})
    {
        expectRowsOfAllSets(text, 200, kind);
    }
}

TEST_F(Tiles, KeepAValueWhileAnotherFormulaIsComputed)
{
    Random random(1);
    makeData(random, 200, 2);
    const std::array<std::wstring, 4> operators = {L"+", L"-", L"*", L"/"};
    for (const std::wstring& first : operators)
    {
        for (const std::wstring& second : operators)
        {
            for (const std::wstring& text :
                 {L"abs(x)" + second + L"(x" + first + L"y)", L"abs(x)" + second + L"(k" + first + L"y)",
                  L"x" + second + L"(y" + first + L"2)", L"x" + second + L"(abs(y)" + first + L"x)",
                  L"x*x" + second + L"(y" + first + L"x)*k" + second + L"(x" + first + L"x)",
                  L"[x*y" + second + L"(x" + first + L"y),y,x" + first + L"y" + second + L"k]"})
            {
                expectRowsOfAllSets(text, 200, text[0] == L'[' ? BulkKind::Point : BulkKind::Number);
            }
        }
    }
}

TEST_F(Tiles, TakeArraysThatBeginAnywhereInAVector)
{
    Random random(1);
    const std::size_t mostRows = 17000;
    const std::vector<double> numbers = someNumbers(random, mostRows + 8, 1);
    const std::vector<double> points = someNumbers(random, 3 * mostRows + 8, 1);
    for (const wchar_t* text : {L"x/y", L"p/y+q", L"x"})
    {
        ASSERT_TRUE(compile(text));
        const BulkKind kind = text[0] == L'p' ? BulkKind::Point : BulkKind::Number;
        const std::size_t width = kind == BulkKind::Point ? 3 : 1;
        for (std::size_t offset = 0; offset < 8; ++offset)
        {
            const std::vector<MTBoundColumn> columns = {
                {variables[L"x"]->getValuePtr(), {L"x", numbers.data() + offset}},
                {variables[L"y"]->getValuePtr(), {L"y", numbers.data() + offset}},
                {variables[L"p"]->getValuePtr(), {L"p", points.data() + offset, 24, BulkKind::Point}},
                {variables[L"q"]->getValuePtr(), {L"q", points.data() + 7 - offset, 24, BulkKind::Point}}};
            struct Call
            {
                std::size_t nbRows;
                std::uint32_t nbThreads;
            };
            for (const Call& call : {Call{513, 1}, Call{1000, 1}, Call{8199, 2}, Call{17000, 3}})
            {
                const auto evaluated = [&](const MTTileSet* set) {
                    std::vector<double> results(call.nbRows * width + 8, 77.0);
                    Rows rows;
                    rows.status.resize(call.nbRows, 77);
                    mathexpr::BulkResults target{results.data() + offset / 2, distanceOf(kind, 0), kind};
                    target.status = rows.status.data();
                    const MTBulkTally tally =
                        runInBulk(compilation.program, columns, call.nbRows, target, call.nbThreads, set);
                    rows.status.push_back(static_cast<std::uint32_t>(tally.nbFailed));
                    rows.status.push_back(static_cast<std::uint32_t>(tally.firstFailed));
                    rows.status.push_back(tally.firstStatus);
                    for (const double value : results)
                    {
                        rows.bits.push_back(std::bit_cast<std::uint64_t>(std::isnan(value) ? std::nan("") : value));
                    }
                    return rows;
                };
                const Rows expected = evaluated(nullptr);
                for (const MTTileSet* set : availableTileSets())
                {
                    EXPECT_TRUE(evaluated(set) == expected)
                        << narrow(text) << ", offset " << offset << ", " << call.nbRows << " rows, " << set->nbRows
                        << " rows of a tile";
                }
            }
        }
    }
}

/// Numbers from one vector boundary to the next.
std::size_t lanesOf(const MTTileSet& set)
{
    return set.nbRows / vectorsPerTile;
}

/// The addresses that the kernels of a run read and write: the columns in order, then the results.
std::vector<const double*> placesOfRun;

/// Baseline tiles that record the addresses in placesOfRun.
MTTileSet notingPlaces()
{
    return {baselineTiles.nbRows, baselineTiles.findKernel, baselineTiles.findJoined, baselineTiles.findControl,
            [](const MTTileStep* first, MTTileContext& context, const std::size_t* distances, std::size_t nbMoved,
               std::size_t nbTiles) {
                placesOfRun.assign(context.places, context.places + 5);
                return baselineTiles.run(first, context, distances, nbMoved, nbTiles);
            }};
}

// Copying would take longer than computing most formulas.
TEST_F(Tiles, ReadAndWritePackedArraysInPlace)
{
    const MTTileSet set = notingPlaces();
    Random random(1);
    makeData(random, set.nbRows, 0);
    const std::vector<const double*> arrays = {data[L"p"].data(), data[L"q"].data(), data[L"x"].data(),
                                               data[L"y"].data()};
    for (const auto& [text, kind] : {std::pair{L"dist(p,q)*x+y", BulkKind::Number}, {L"p*x+q*y", BulkKind::Point}})
    {
        ASSERT_TRUE(compile(text));
        for (const std::ptrdiff_t gap : {0, 1})
        {
            std::vector<double> results(6 * set.nbRows);
            runInBulk(compilation.program, makeColumns(gap), set.nbRows, {results.data(), distanceOf(kind, gap), kind},
                      1, &set);
            ASSERT_EQ(placesOfRun.size(), 5U);
            for (std::size_t column = 0; column < arrays.size(); ++column)
            {
                EXPECT_EQ(placesOfRun[column] == arrays[column], gap == 0) << narrow(text) << ", column " << column;
            }
            EXPECT_EQ(placesOfRun[4] == results.data(), gap == 0) << narrow(text);
        }
    }
}

// Copies are aligned to cache lines, wherever their memory is. The other allocations move it by parts of a cache line.
TEST_F(Tiles, CopyColumnsToTheBeginningOfACacheLine)
{
    const MTTileSet set = notingPlaces();
    Random random(1);
    makeData(random, set.nbRows, 0);
    ASSERT_TRUE(compile(L"dist(p,q)*x+y"));
    std::vector<std::vector<double>> others;
    for (int call = 0; call < 16; ++call)
    {
        std::vector<double> results(set.nbRows);
        runInBulk(compilation.program, makeColumns(1), set.nbRows, {results.data()}, 1, &set);
        ASSERT_EQ(placesOfRun.size(), 5U);
        for (std::size_t column = 0; column < 4; ++column)
        {
            EXPECT_EQ(reinterpret_cast<std::uintptr_t>(placesOfRun[column]) % 64, 0U) << "column " << column;
        }
        compilation.program.bulkPlan.reset();
        others.emplace_back(4097);  // takes the place of the copies
        others.emplace_back(257);
    }
}

#if defined(__linux__)
// The end of a column may be the end of the host's mapped memory.
TEST_F(Tiles, ReadNothingBehindTheLastRow)
{
    const auto size = static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
    void* const pages = mmap(nullptr, 2 * size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    ASSERT_NE(pages, MAP_FAILED);
    ASSERT_EQ(mprotect(static_cast<char*>(pages) + size, size, PROT_NONE), 0);
    const double* const end = static_cast<double*>(pages) + size / sizeof(double);
    const std::size_t nbRows = baselineTiles.nbRows + 3;
    for (const auto& [text, kind, width] :
         {std::tuple{L"x*2", BulkKind::Number, std::ptrdiff_t{1}}, {L"p*2", BulkKind::Point, std::ptrdiff_t{3}}})
    {
        ASSERT_TRUE(compile(text));
        for (const std::ptrdiff_t gap : {0, 1})
        {
            const std::ptrdiff_t last = width + static_cast<std::ptrdiff_t>(nbRows - 1) * (width + gap);
            const std::wstring name(1, text[0]);
            const MTBoundColumn column{variables[name]->getValuePtr(),
                                       {name.c_str(), end - last, distanceOf(kind, gap), kind}};
            std::vector<double> results(3 * nbRows, 77.0);
            for (const MTTileSet* set : availableTileSets())
            {
                runInBulk(compilation.program, {&column, 1}, nbRows, {results.data(), distanceOf(kind, 0), kind}, 1,
                          set);
                EXPECT_EQ(results.front(), 0.0) << narrow(text) << ", " << gap;
            }
        }
    }
    munmap(pages, 2 * size);
}
#endif

// Aligned columns are read faster.
TEST_F(Tiles, BeginWhereMostPackedColumnsAreAligned)
{
    ASSERT_TRUE(compile(L"dist(p,q)*x+y"));
    alignas(64) static std::array<double, 256> numbers;
    const auto leadRows = [&](const MTTileSet* set, const std::array<std::size_t, 4>& firsts,
                              const std::array<std::ptrdiff_t, 4>& gaps) {
        std::vector<MTBoundColumn> columns;
        for (const auto& [name, kind] : {std::pair{L"x", BulkKind::Number},
                                         {L"y", BulkKind::Number},
                                         {L"p", BulkKind::Point},
                                         {L"q", BulkKind::Point}})
        {
            const std::size_t index = columns.size();
            columns.push_back(
                {variables[name]->getValuePtr(), {name, &numbers[firsts[index]], distanceOf(kind, gaps[index]), kind}});
        }
        MTBulkPlan plan(compilation.program, columns, set);
        std::vector<double> results(10);
        plan.getWorker().bind(columns, {results.data()});
        return plan.getWorker().getLeadRows();
    };
    for (const MTTileSet* set : availableTileSets())
    {
        const std::size_t lanes = lanesOf(*set);
        for (std::size_t lead = 0; lead < 8; ++lead)
        {
            // The addresses of columns whose row "lead" is aligned; a point takes three numbers.
            const std::size_t number = 16 - lead;
            const std::size_t point = 32 - 3 * lead;
            const std::size_t expected = lead % lanes;
            EXPECT_EQ(leadRows(set, {number, number, point, point}, {0, 0, 0, 0}), expected) << lanes;
            EXPECT_EQ(leadRows(set, {number, number, point + 1, point + 2}, {0, 0, 0, 0}), expected) << lanes;
            EXPECT_EQ(leadRows(set, {number + 1, number + 1, point, number}, {1, 1, 0, 1}), expected) << lanes;
        }
    }
    EXPECT_EQ(leadRows(nullptr, {15, 15, 29, 29}, {0, 0, 0, 0}), 0U) << "row by row";
}

#if defined(__linux__) && defined(__x86_64__) && !defined(__ILP32__)
TEST(TileSets, AreThoseOfTheProcessor)
{
    std::ifstream cpuinfo("/proc/cpuinfo");
    std::set<std::string> features;
    for (std::string line; features.empty() && std::getline(cpuinfo, line);)
    {
        if (line.rfind("flags", 0) == 0)
        {
            std::istringstream words(line);
            features.insert(std::istream_iterator<std::string>(words), {});
        }
    }
    ASSERT_TRUE(features.count("sse2"));
    std::vector<std::size_t> expected = {2};
    if (features.count("avx2"))
    {
        expected.push_back(4);
        if (features.count("avx512f") && features.count("avx512dq") && features.count("avx512vl"))
        {
            expected.push_back(8);
        }
    }
    std::vector<std::size_t> found;
    for (const MTTileSet* set : availableTileSets())
    {
        found.push_back(lanesOf(*set));
    }
    EXPECT_EQ(found, expected);
    EXPECT_EQ(lanesOf(widestTileSet()), expected.back());
}
#endif

TEST_F(Tiles, TakeLongPrograms)
{
    std::wstring sum = L"x";
    std::wstring nested = L"x";
    std::wstring constants = L"x";
    for (int j = 1; j < 5000; ++j)
    {
        sum += j % 2 == 0 ? L"+y" : L"-x*y";
        constants += L"+" + std::to_wstring(j);
        nested = j % 50 != 0 ? nested : L"(x*y+(x/y-" + nested + L"))";
    }
    Random random(1);
    makeData(random, 100, 0);
    for (const std::wstring& text : {sum, nested, constants})
    {
        ASSERT_TRUE(compile(text));
        const Rows expected = evaluate(nullptr, 100, BulkKind::Number, 0);
        for (const MTTileSet* set : availableTileSets())
        {
            EXPECT_EQ(evaluate(set, 100, BulkKind::Number, 0), expected) << set->nbRows << " rows of a tile";
        }
    }
}

}
