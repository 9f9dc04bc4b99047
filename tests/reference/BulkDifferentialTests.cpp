// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BulkDifferentialTests.cpp - compares bulk evaluation with separate evaluations: every row is compiled and evaluated
// by a new object, and must yield the same value, bit for bit, or the same message.
#include "ExpressionGenerator.h"
#include "Settings.h"

#include "mathexpr/BulkEvaluation.h"
#include "mathexpr/Diagnostics.h"
#include "mathexpr/IMathExprService.h"
#include "mathexpr/IMathFunction.h"
#include "mathexpr/MTExceptions.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "mathexpr/Vocabulary.h"
#include "tests/support/MessageRecorder.h"

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <map>
#include <string>
#include <vector>

namespace {

using reference::Random;
using Values = std::map<std::wstring, VALTYPE>;

/// Knows every name; some names have given values.
class Names final : public IMathExprService
{
public:
    bool lookupValue(const wchar_t* name, VALTYPE& value) const override
    {
        const auto known = values.find(name);
        if (known != values.end())
        {
            value = known->second;
        }
        return true;
    }

    Values values;
};

/// Bit for bit, except that all NaNs are equal: the sign and payload of a result depend on the order in which the
/// compiler puts two NaN operands.
bool isSame(const VALTYPE& left, const VALTYPE& right)
{
    const auto same = [](double a, double b) {
        return (std::isnan(a) && std::isnan(b)) || std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
    };
    return left.type == right.type && left.flag == right.flag && left.reserved == right.reserved &&
           same(left.x, right.x) && same(left.y, right.y) && same(left.z, right.z);
}

struct Row
{
    std::uint32_t status = 0;
    VALTYPE value;

    bool operator==(const Row& other) const
    {
        return status == other.status && (status != 0 || isSame(value, other.value));
    }
};

std::ostream& operator<<(std::ostream& out, const Row& row)
{
    return out << "status " << row.status << ", type " << int{row.value.type} << ", flag " << int{row.value.flag}
               << ", " << std::hexfloat << row.value.x << ' ' << row.value.y << ' ' << row.value.z;
}

/// The outcome of a row evaluated separately.
Row evaluateAlone(const std::wstring& text, const Values& values)
{
    Names names;
    names.values = values;
    MathExpression expression(true, &names);
    Row row;
    bool evaluated = false;
    try
    {
        EXPECT_TRUE(expression.setExpression(text.c_str()));
        evaluated = expression.evaluate(row.value);
    }
    catch (const mathexpr::ParsingException&)
    {}
    // Bulk evaluation does not assign, so a refused assignment does not fail the row.
    if (!evaluated && mathexpr::getDiagnostic(expression).kind != mathexpr::ExpressionDiagnostic::Kind::Definition)
    {
        row.status = mathexpr::getDiagnostic(expression).message;
    }
    return row;
}

/// Columns of random values with gaps between the rows.
class Table
{
public:
    Table(Random& random, std::vector<std::wstring> columnNames, std::size_t rows, bool mayBePoints)
        : names(std::move(columnNames)), nbRows(rows)
    {
        for (const std::wstring& name : names)
        {
            Column column{};
            column.isPoint = mayBePoints && random.chance(40);
            const std::size_t width = column.isPoint ? 3 : 1;
            column.gap = random.chance(40) ? random.below(3) : 0;
            column.backwards = random.chance(20);
            column.planes = column.isPoint && random.chance(30);
            column.data.resize((width + column.gap) * nbRows);
            for (double& number : column.data)
            {
                number = numbers[random.below(numbers.size())];
            }
            columns.emplace(name, std::move(column));
        }
    }

    std::vector<mathexpr::BulkColumn> bulkColumns() const
    {
        std::vector<mathexpr::BulkColumn> all;
        for (const std::wstring& name : names)
        {
            const Column& column = columns.at(name);
            mathexpr::BulkColumn bulk;
            bulk.name = name.c_str();
            bulk.kind = column.isPoint ? mathexpr::BulkKind::Point : mathexpr::BulkKind::Number;
            const auto [row, coordinate] = distances(column);
            bulk.stride = row * 8;
            bulk.coordinateStride = coordinate * 8;
            bulk.data = column.data.data() + origin(column);
            all.push_back(bulk);
        }
        return all;
    }

    void setRow(std::size_t row, Values& values) const
    {
        for (const auto& [name, column] : columns)
        {
            const auto [rowDistance, coordinate] = distances(column);
            const double* x = column.data.data() + origin(column) + static_cast<std::ptrdiff_t>(row) * rowDistance;
            VALTYPE value;
            value.type = column.isPoint ? 1 : 0;
            value.x = *x;
            value.y = column.isPoint ? x[coordinate] : 0.0;
            value.z = column.isPoint ? x[2 * coordinate] : 0.0;
            values[name] = value;
        }
    }

private:
    static constexpr std::array<double, 18> numbers = {std::numeric_limits<double>::quiet_NaN(),
                                                       -std::numeric_limits<double>::quiet_NaN(),
                                                       std::numeric_limits<double>::infinity(),
                                                       -std::numeric_limits<double>::infinity(),
                                                       1.0,
                                                       2.5,
                                                       30.0,
                                                       0.3048,
                                                       0.0,
                                                       -0.0,
                                                       -3.0,
                                                       1e-9,
                                                       0.5,
                                                       1e+300,
                                                       -1e+9,
                                                       5e-9,
                                                       1e-310,
                                                       45.0};

    struct Column
    {
        bool isPoint;
        bool backwards;
        bool planes;  // all x, then all y, then all z
        std::size_t gap;
        std::vector<double> data;
    };

    std::pair<std::ptrdiff_t, std::ptrdiff_t> distances(const Column& column) const
    {
        const auto width = static_cast<std::ptrdiff_t>((column.isPoint && !column.planes ? 3 : 1) + column.gap);
        const auto rowDistance = column.planes ? 1 : width;
        const auto coordinate = column.planes ? static_cast<std::ptrdiff_t>(nbRows) : 1;
        return {column.backwards ? -rowDistance : rowDistance, coordinate};
    }

    std::ptrdiff_t origin(const Column& column) const
    {
        const std::ptrdiff_t rowDistance = distances(column).first;
        return column.backwards ? -rowDistance * static_cast<std::ptrdiff_t>(nbRows - 1) : 0;
    }

    std::vector<std::wstring> names;
    std::size_t nbRows;
    std::map<std::wstring, Column> columns;
};

constexpr std::array<std::size_t, 10> rowCounts = {1, 2, 3, 5, 8, 13, 17, 19, 24, 31};

class BulkDifferential : public testing::Test
{
protected:
    /// Compares all rows of a random table; returns whether the text compiled.
    bool compare(Random& random, const std::wstring& text, const Values& known, std::size_t nbRows, bool mayBePoints,
                 std::uint32_t nbThreads)
    {
        Names names;
        names.values = known;
        MathExpression expression(true, &names);
        try
        {
            if (!expression.setExpression(text.c_str()))
            {
                return false;
            }
        }
        catch (const mathexpr::ParsingException&)
        {
            return false;
        }
        catch (const mathexpr::DefinitionException&)
        {
            return false;
        }
        std::vector<std::wstring> columnNames;
        for (const std::wstring& name : mathexpr::getUsedNames(expression))
        {
            if (random.chance(85))
            {
                columnNames.push_back(name);
            }
        }
        if (random.chance(50))
        {
            leaveTraces(expression);
        }
        const Table table(random, columnNames, nbRows, mayBePoints);
        const std::vector<mathexpr::BulkColumn> columns = table.bulkColumns();
        std::vector<VALTYPE> values(nbRows);
        std::vector<std::uint32_t> status(nbRows, 77);
        mathexpr::BulkResults results{values.data(), sizeof(VALTYPE), mathexpr::BulkKind::Record};
        results.status = status.data();
        mathexpr::BulkOutcome outcome;
        std::srand(7);
        messages.take();
        EXPECT_TRUE(
            mathexpr::evaluateBulk(expression, columns.data(), columns.size(), nbRows, results, nbThreads, outcome));
        EXPECT_TRUE(messages.take().empty());

        std::size_t nbFailed = 0;
        std::srand(7);
        for (std::size_t row = 0; row < nbRows; ++row)
        {
            Values rowValues = known;
            table.setRow(row, rowValues);
            const Row expected = evaluateAlone(text, rowValues);
            const Row found{status[row], values[row]};
            EXPECT_EQ(found, expected) << "row " << row;
            if (expected.status != 0 && nbFailed++ == 0)
            {
                EXPECT_EQ(outcome.firstFailed, row);
                EXPECT_EQ(outcome.firstStatus, expected.status);
            }
            if (testing::Test::HasFailure())
            {
                return true;
            }
        }
        EXPECT_EQ(outcome.failedCount, nbFailed);
        return true;
    }

    /// Fills the slots by single evaluations; these values must not affect bulk evaluation.
    static void leaveTraces(MathExpression& expression)
    {
        try
        {
            VALTYPE value;
            expression.evaluate(value);
            expression.evaluate(value);
        }
        catch (const mathexpr::ParsingException&)
        {}
        mathexpr::dropAssignment(expression);
    }

    MessageRecorder messages;
};

std::string narrow(const std::wstring& text)
{
    std::string narrowed;
    for (const wchar_t c : text)
    {
        narrowed += c < 128 ? static_cast<char>(c) : '?';
    }
    return narrowed;
}

TEST_F(BulkDifferential, AnyExpression)
{
    const std::uint64_t first = reference::firstSeed();
    const std::uint64_t count = reference::fromEnvironment("MATHEXPR_DIFFERENTIAL_COUNT", 4000);
    std::size_t nbCompiled = 0;
    for (std::uint64_t seed = first; seed < first + count; ++seed)
    {
        Random random(seed);
        reference::ExpressionGenerator generator(random);
        const std::wstring text = generator.wellFormed();
        Values known;
        for (const wchar_t* name : {L"a", L"b", L"v0", L"v1", L"v5", L"p", L"x", L"y"})
        {
            known[name] = generator.value();
        }
        nbCompiled += compare(random, text, known, random.pick(rowCounts), true, 1) ? 1U : 0U;
        ASSERT_FALSE(HasFailure()) << "seed " << seed << ": " << narrow(text);
    }
    EXPECT_GT(nbCompiled, count / 2);
}

/// A random formula of vocabulary items, with numbers as arguments.
std::wstring numberFormula(Random& random, const std::vector<mathexpr::VocabularyItem>& items, std::size_t depth)
{
    if (depth == 0 || random.chance(10))
    {
        static const std::array<std::wstring, 6> leaves = {L"x", L"y", L"z", L"k", L"2.5", L"3"};
        return random.pick(leaves);
    }
    // Half of the items are arithmetic operators, which come first.
    const mathexpr::VocabularyItem& item = items[random.below(random.chance(50) ? 4 : items.size())];
    const auto operand = [&] { return numberFormula(random, items, depth - 1); };
    if (item.kind == mathexpr::VocabularyKind::Operator)
    {
        return item.unary ? L"(" + std::wstring(item.symbol) + operand() + L")"
                          : L"(" + operand() + item.symbol + operand() + L")";
    }
    const std::size_t nbArgs = item.nbArgs == NB_ARGS_UNDEFINED ? 4 + random.below(3) : item.nbArgs;
    std::wstring text = std::wstring(item.symbol) + L"(";
    for (std::size_t j = 0; j < nbArgs; ++j)
    {
        text += (j == 0 ? L"" : L",") + operand();
    }
    return text + L")";
}

std::vector<mathexpr::VocabularyItem> numberItems()
{
    std::vector<mathexpr::VocabularyItem> items;
    mathexpr::VocabularyItem item;
    for (std::uint32_t index = 0; mathexpr::getVocabularyItem(index, item); ++index)
    {
        // No expression can call "rand()".
        if (item.kind != mathexpr::VocabularyKind::Constant && item.family != mathexpr::VocabularyFamily::Geometry &&
            item.nbArgs != 0)
        {
            items.push_back(item);
        }
    }
    return items;
}

TEST_F(BulkDifferential, FormulasOfNumbers)
{
    const std::vector<mathexpr::VocabularyItem> items = numberItems();
    const std::uint64_t first = reference::firstSeed();
    const std::uint64_t count = reference::fromEnvironment("MATHEXPR_DIFFERENTIAL_COUNT", 4000);
    std::size_t nbCompiled = 0;
    for (std::uint64_t seed = first; seed < first + count; ++seed)
    {
        Random random(seed);
        const std::wstring text = numberFormula(random, items, 1 + seed % 5);
        VALTYPE constant;
        constant.x = 1.25;
        constant.flag = random.chance(20) ? 1 : 0;
        constant.y = random.chance(20) ? 4.0 : 0.0;
        nbCompiled += compare(random, text, {{L"k", constant}}, random.pick(rowCounts), random.chance(10), 1) ? 1U : 0U;
        ASSERT_FALSE(HasFailure()) << "seed " << seed << ": " << narrow(text);
    }
    EXPECT_GT(nbCompiled, count / 2);
}

TEST_F(BulkDifferential, EveryItemOfNumbers)
{
    for (const mathexpr::VocabularyItem& item : numberItems())
    {
        Random random(1);
        std::wstring text = item.symbol;
        if (item.kind == mathexpr::VocabularyKind::Operator)
        {
            text = item.unary ? text + L"x" : L"x" + text + L"y";
        }
        else if (item.nbArgs == NB_ARGS_UNDEFINED)
        {
            text += L"(x,y,k,z,2)";
        }
        else
        {
            static const std::array<const wchar_t*, 3> args = {L"(x)", L"(x,y)", L"(x,y,z)"};
            text += args[item.nbArgs - 1];
        }
        EXPECT_TRUE(compare(random, text, {}, 200, false, 1));
        ASSERT_FALSE(HasFailure()) << narrow(text);
    }
}

TEST_F(BulkDifferential, RowCountsAroundTheEdgesOfBlocksAndPortions)
{
    const std::array<const wchar_t*, 6> texts = {
        L"((x*2+y)*3-z)/(x-y)", L"sqrt(x)+ln(y)", L"[x,y,z]*k&[y,z,x]", L"m2f(x)", L"min(x,y,z,k)", L"fact(x)+x*y"};
    for (const std::size_t nbRows : {511U, 512U, 513U, 1024U, 8191U, 8192U, 8193U, 16384U, 16385U, 33000U})
    {
        for (const std::uint32_t nbThreads : {1U, 4U})
        {
            Random random(nbRows);
            const std::wstring text = texts[(nbRows + nbThreads) % texts.size()];
            EXPECT_TRUE(compare(random, text, {}, nbRows, false, nbThreads));
            ASSERT_FALSE(HasFailure()) << nbRows << " rows, " << nbThreads << " threads: " << narrow(text);
        }
    }
}

TEST_F(BulkDifferential, RandomNumbersAreDrawnRowByRow)
{
    Random random(1);
    EXPECT_TRUE(compare(random, L"rand(0,x)+y*rand(y,k)", {}, 20000, false, 4));
    EXPECT_TRUE(compare(random, L"rand(0,x)/y+sqrt(rand(y,x))", {}, 2000, false, 4));
}

/// Numbers, some of which divisions, roots or logarithms refuse.
std::vector<double> numbersToRefuse(Random& random, std::size_t count)
{
    static constexpr std::array<double, 8> numbers = {0.0, 1.0, -3.0, 2.5, 9.0, 0.3048, 30.0, 1e-9};
    std::vector<double> all(count);
    for (double& value : all)
    {
        value = random.chance(80) ? 1.0 + static_cast<double>(random.below(100)) : random.pick(numbers);
    }
    return all;
}

/// The values of the rows as bits, and their status. All NaNs are equal.
struct BulkRows
{
    std::vector<std::uint64_t> bits;
    std::vector<std::uint32_t> status;

    bool operator==(const BulkRows&) const = default;
};

/// Evaluates into an array, which may also be a column.
BulkRows evaluateInto(std::vector<double>& results, MathExpression& expression,
                      const std::vector<mathexpr::BulkColumn>& columns, mathexpr::BulkKind kind, std::size_t nbRows)
{
    BulkRows rows;
    rows.status.resize(nbRows, 77);
    const std::ptrdiff_t width = kind == mathexpr::BulkKind::Point ? 3 : 1;
    mathexpr::BulkResults target{results.data(), width * static_cast<std::ptrdiff_t>(sizeof(double)), kind};
    target.status = rows.status.data();
    mathexpr::BulkOutcome outcome;
    EXPECT_TRUE(mathexpr::evaluateBulk(expression, columns.data(), columns.size(), nbRows, target, 1, outcome));
    for (const double value : results)
    {
        const double canonical = std::isnan(value) ? std::numeric_limits<double>::quiet_NaN() : value;
        rows.bits.push_back(std::bit_cast<std::uint64_t>(canonical));
    }
    return rows;
}

TEST_F(BulkDifferential, ResultsOnAColumnAreThoseBesideIt)
{
    const std::array<const wchar_t*, 8> texts = {L"sqrt(x)/y+x*3", L"x/y-x",          L"x",     L"ln(x-y)*x+m2f(x)",
                                                 L"x/y/y+x*x",     L"min(x,y,z,2)/y", L"x/y&x", L"fact(x)+x/y"};
    const std::array<const wchar_t*, 5> pointTexts = {L"p*ln(x)", L"p/y+p*x", L"vec1(p,q)*x/y", L"(p&q/x)-p",
                                                      L"[x/y,sqrt(x),1]"};
    Names names;
    names.values[L"p"].type = names.values[L"q"].type = 1;
    for (const std::size_t nbRows :
         {1U, 2U, 7U, 8U, 9U, 15U, 16U, 17U, 31U, 32U, 33U, 63U, 64U, 65U, 129U, 511U, 512U, 513U, 1025U, 8193U})
    {
        Random random(nbRows);
        std::vector<double> x = numbersToRefuse(random, nbRows);
        std::vector<double> p = numbersToRefuse(random, 3 * nbRows);
        const std::vector<double> y = numbersToRefuse(random, nbRows);
        const std::vector<double> z = numbersToRefuse(random, nbRows);
        const std::vector<double> q = numbersToRefuse(random, 3 * nbRows);
        constexpr std::ptrdiff_t pointStride = 3 * sizeof(double);
        const std::vector<mathexpr::BulkColumn> columns = {{L"x", x.data()},
                                                           {L"y", y.data()},
                                                           {L"z", z.data()},
                                                           {L"p", p.data(), pointStride, mathexpr::BulkKind::Point},
                                                           {L"q", q.data(), pointStride, mathexpr::BulkKind::Point}};
        const auto compareOn = [&](std::vector<double>& column, const wchar_t* text, mathexpr::BulkKind kind) {
            MathExpression expression(true, &names);
            ASSERT_TRUE(expression.setExpression(text));
            const std::vector<double> before = column;
            std::vector<double> beside(column.size());
            const BulkRows expected = evaluateInto(beside, expression, columns, kind, nbRows);
            EXPECT_EQ(evaluateInto(column, expression, columns, kind, nbRows), expected)
                << narrow(text) << ", " << nbRows << " rows";
            column = before;
        };
        for (const wchar_t* text : texts)
        {
            compareOn(x, text, mathexpr::BulkKind::Number);
        }
        for (const wchar_t* text : pointTexts)
        {
            compareOn(p, text, mathexpr::BulkKind::Point);
        }
    }
}

}
