// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BulkEvaluationTests.cpp - bulk evaluation from a host's view: arrays in and out, failed rows, refused input, and an
// unchanged object. tests/reference compares the values with those of single evaluations.
#include "mathexpr/BulkEvaluation.h"
#include "mathexpr/Limits.h"
#include "mathexpr/Variables.h"
#include "tests/additions/Session.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using Numbers = std::vector<double>;

constexpr std::ptrdiff_t doubles(std::ptrdiff_t count)
{
    return count * static_cast<std::ptrdiff_t>(sizeof(double));
}

mathexpr::BulkColumn numbersOf(const wchar_t* name, const Numbers& data)
{
    return {name, data.data()};
}

mathexpr::BulkColumn pointsOf(const wchar_t* name, const Numbers& data)
{
    return {name, data.data(), doubles(3), mathexpr::BulkKind::Point};
}

class BulkTest : public testing::Test
{
protected:
    BulkTest()
    {
        for (const wchar_t* name : {L"x", L"y", L"p", L"q"})
        {
            mathexpr::setVariable(session.expression, name, number(0));
        }
    }

    void compile(const wchar_t* text) { ASSERT_TRUE(session.expression.setExpression(text)); }

    bool run(const std::vector<mathexpr::BulkColumn>& columns, std::size_t nbRows, mathexpr::BulkResults results,
             std::uint32_t nbThreads = 1)
    {
        status.assign(nbRows, 99);
        results.status = status.data();
        return mathexpr::evaluateBulk(session.expression, columns.data(), columns.size(), nbRows, results, nbThreads,
                                      outcome);
    }

    Numbers numbers(const std::vector<mathexpr::BulkColumn>& columns, std::size_t nbRows)
    {
        Numbers results(nbRows, 99.0);
        EXPECT_TRUE(run(columns, nbRows, {results.data()}));
        return results;
    }

    /// The reason why nothing was evaluated.
    mathexpr::BulkError refusal(const std::vector<mathexpr::BulkColumn>& columns, const mathexpr::BulkResults& results,
                                std::size_t nbRows = 2)
    {
        EXPECT_FALSE(
            mathexpr::evaluateBulk(session.expression, columns.data(), columns.size(), nbRows, results, 1, outcome));
        return outcome.error;
    }

    Session session{true};
    mathexpr::BulkOutcome outcome;
    std::vector<std::uint32_t> status;
};

TEST_F(BulkTest, EvaluatesARowForEachNumber)
{
    compile(L"x*2+y");
    const Numbers x = {1, 2, 3};
    const Numbers y = {0.5, 0.25, -1};
    EXPECT_EQ(numbers({numbersOf(L"x", x), numbersOf(L"y", y)}, 3), (Numbers{2.5, 4.25, 5}));
    EXPECT_EQ(outcome.failedCount, 0U);
    EXPECT_EQ(status, (std::vector<std::uint32_t>{0, 0, 0}));
}

TEST_F(BulkTest, ReadsAndWritesWithGapsBackwardsAndByPlanes)
{
    compile(L"p+[x,x,x]");
    const Numbers x = {10, 99, 20, 99};
    const Numbers planes = {1, 2, 3, 4, 5, 6};  // the points [1,3,5] and [2,4,6]
    const mathexpr::BulkColumn gaps{L"x", x.data(), doubles(2)};
    const mathexpr::BulkColumn points{L"p", planes.data(), doubles(1), mathexpr::BulkKind::Point, doubles(2)};
    Numbers rows(8, 0);
    ASSERT_TRUE(run({gaps, points}, 2, {rows.data(), doubles(4), mathexpr::BulkKind::Point}));
    EXPECT_EQ(rows, (Numbers{11, 13, 15, 0, 22, 24, 26, 0}));

    Numbers written(6, 0);
    ASSERT_TRUE(run({gaps, points}, 2, {written.data() + 1, doubles(-1), mathexpr::BulkKind::Point, doubles(2)}));
    EXPECT_EQ(written, (Numbers{22, 11, 24, 13, 26, 15}));

    compile(L"x+1");
    const mathexpr::BulkColumn backwards{L"x", x.data() + 2, doubles(-2)};
    EXPECT_EQ(numbers({backwards}, 2), (Numbers{21, 11}));
    const mathexpr::BulkColumn repeated{L"x", x.data(), 0};
    EXPECT_EQ(numbers({repeated}, 3), (Numbers{11, 11, 11}));
    Numbers gapsBetween(4, 0);
    ASSERT_TRUE(run({repeated}, 2, {gapsBetween.data(), doubles(2)}));
    EXPECT_EQ(gapsBetween, (Numbers{11, 0, 11, 0}));
}

TEST_F(BulkTest, WritesNoRowBeyondTheLast)
{
    const Numbers x = {1, 2, 3};
    for (const wchar_t* text : {L"x", L"x*2", L"max(x,1,2)", L"max(x,1,2,3)", L"pow(x,2)", L"7", L"-x", L"2-x"})
    {
        compile(text);
        Numbers results(3, 99);
        ASSERT_TRUE(run({numbersOf(L"x", x)}, 2, {results.data()}));
        EXPECT_EQ(results[2], 99.0) << testing::PrintToString(std::wstring(text));
    }
}

TEST_F(BulkTest, APointWithoutAColumnIsNoNumber)
{
    mathexpr::setVariable(session.expression, L"p", point(7, 8, 9));
    compile(L"max(p,1,2)+x");
    const Numbers x = {1, 2};
    numbers({numbersOf(L"x", x)}, 2);
    EXPECT_EQ(outcome.failedCount, 2U);
}

TEST_F(BulkTest, WritesRecordsWithTypeAndFlag)
{
    std::vector<VALTYPE> records(2);
    const mathexpr::BulkResults results{records.data(), sizeof(VALTYPE), mathexpr::BulkKind::Record};
    const Numbers x = {1, 2};
    compile(L"m2f(x)");
    ASSERT_TRUE(run({numbersOf(L"x", x)}, 2, results));
    EXPECT_EQ(records[1].type, 0);
    EXPECT_EQ(records[1].flag, 1);
    EXPECT_EQ(records[1].x, 2 * 10000.0 / 3048.0);
    compile(L"[x,2,3]");
    ASSERT_TRUE(run({numbersOf(L"x", x)}, 2, results));
    EXPECT_EQ(records[1].type, 1);
    EXPECT_EQ(records[1].z, 3);
}

TEST_F(BulkTest, TheStrideOfASingleRecordIsIgnored)
{
    compile(L"[x,2,3]");
    const Numbers x = {1};
    VALTYPE record = number(99);
    ASSERT_TRUE(run({numbersOf(L"x", x)}, 1, {&record, doubles(3), mathexpr::BulkKind::Record, doubles(1)}));
    EXPECT_EQ(record.type, 1);
    EXPECT_EQ(record.x, 1);
    EXPECT_EQ(record.y, 2);
    EXPECT_EQ(record.z, 3);
}

TEST_F(BulkTest, AResultMayOverwriteTheNumberOfItsRow)
{
    compile(L"1/x+x");
    Numbers x = {1, 0, 4, 0.5};
    ASSERT_TRUE(run({numbersOf(L"x", x)}, 4, {x.data()}));
    EXPECT_EQ(x[0], 2);
    EXPECT_TRUE(std::isnan(x[1]));
    EXPECT_EQ(x[2], 4.25);
    EXPECT_EQ(x[3], 2.5);
}

TEST_F(BulkTest, AVariableWithoutAColumnIsTheSameInAllRows)
{
    const Numbers x = {1, 2};
    mathexpr::setVariable(session.expression, L"y", number(10));
    compile(L"x+sqrt(y)*sqrt(y)");
    EXPECT_EQ(numbers({numbersOf(L"x", x)}, 2),
              (Numbers{1 + std::sqrt(10.0) * std::sqrt(10.0), 2 + std::sqrt(10.0) * std::sqrt(10.0)}));
    mathexpr::setVariable(session.expression, L"p", point(1, 2, 3));
    compile(L"p*x");
    Numbers points(6);
    ASSERT_TRUE(run({numbersOf(L"x", x)}, 2, {points.data(), doubles(3), mathexpr::BulkKind::Point}));
    EXPECT_EQ(points, (Numbers{1, 2, 3, 2, 4, 6}));
}

TEST_F(BulkTest, ExpressionsWithoutColumnsAndConstants)
{
    compile(L"2*3");
    EXPECT_EQ(numbers({}, 3), (Numbers{6, 6, 6}));
    mathexpr::setVariable(session.expression, L"y", number(4));
    compile(L"y");
    EXPECT_EQ(numbers({}, 2), (Numbers{4, 4}));
    compile(L"sqrt(y)+1");
    EXPECT_EQ(numbers({}, 2), (Numbers{3, 3}));
    mathexpr::setVariable(session.expression, L"y", number(-4));
    ASSERT_TRUE(run({}, 2, {Numbers(2).data()}));
    EXPECT_EQ(status, (std::vector<std::uint32_t>{12, 12}));
}

TEST_F(BulkTest, ARowThatFailsStopsNoOther)
{
    compile(L"1/x+sqrt(y)");
    const Numbers x = {1, 0, 2, 0, 4};
    const Numbers y = {4, -1, -1, 4, 16};
    const Numbers results = numbers({numbersOf(L"x", x), numbersOf(L"y", y)}, 5);
    EXPECT_EQ(status, (std::vector<std::uint32_t>{0, 10, 12, 10, 0}));
    EXPECT_EQ(results[0], 3);
    EXPECT_TRUE(std::isnan(results[1]) && std::isnan(results[2]) && std::isnan(results[3]));
    EXPECT_EQ(results[4], 4.25);
    EXPECT_EQ(outcome.failedCount, 3U);
    EXPECT_EQ(outcome.firstFailed, 1U);
    EXPECT_EQ(outcome.firstStatus, 10U);
    EXPECT_TRUE(session.shown.ids.empty());
}

TEST_F(BulkTest, NothingIsShownAlsoWhereMessagesAre)
{
    Session loud(false);
    loud.host.names = {{L"x", number(1)}};
    ASSERT_TRUE(loud.expression.setExpression(L"sqrt(x)"));
    const Numbers x = {-1, 4};
    Numbers results(2);
    const mathexpr::BulkColumn column = numbersOf(L"x", x);
    ASSERT_TRUE(mathexpr::evaluateBulk(loud.expression, &column, 1, 2, {results.data()}, 1, outcome));
    EXPECT_EQ(outcome.failedCount, 1U);
    EXPECT_EQ(results[1], 2);
    EXPECT_TRUE(loud.shown.ids.empty());
}

TEST_F(BulkTest, AnExceptionOfAnItemIsAFailedRow)
{
    compile(L"sin(p)");
    const Numbers points = {1, 2, 3};
    numbers({pointsOf(L"p", points)}, 1);
    EXPECT_EQ(status, std::vector<std::uint32_t>{mathexpr::RowStatus::ArgumentsRefused});
}

TEST_F(BulkTest, AValueOfAnotherKindIsAFailedRow)
{
    const Numbers points = {1, 2, 3};
    compile(L"p*2");
    EXPECT_TRUE(std::isnan(numbers({pointsOf(L"p", points)}, 1)[0]));
    EXPECT_EQ(status, std::vector<std::uint32_t>{mathexpr::RowStatus::OtherKind});
    Numbers results(3, 99);
    for (const wchar_t* text : {L"x+1", L"x", L"7", L"y"})
    {
        compile(text);
        results.assign(3, 99);
        ASSERT_TRUE(run({numbersOf(L"x", points)}, 1, {results.data(), doubles(3), mathexpr::BulkKind::Point}));
        EXPECT_EQ(status, std::vector<std::uint32_t>{mathexpr::RowStatus::OtherKind});
        EXPECT_TRUE(std::isnan(results[0]) && std::isnan(results[1]) && std::isnan(results[2]));
        EXPECT_EQ(outcome.firstStatus, mathexpr::RowStatus::OtherKind);
    }
    compile(L"[1,2,3]");
    const Numbers rows = numbers({}, 3);
    EXPECT_TRUE(std::isnan(rows[0]) && std::isnan(rows[1]) && std::isnan(rows[2]));
}

TEST_F(BulkTest, AFailedRecordIsTheNumberNaN)
{
    compile(L"sqrt(x)");
    const Numbers x = {-1};
    VALTYPE record = point(7, 8, 9);
    record.flag = 1;
    ASSERT_TRUE(run({numbersOf(L"x", x)}, 1, {&record, sizeof(VALTYPE), mathexpr::BulkKind::Record}));
    EXPECT_EQ(record.type, 0);
    EXPECT_EQ(record.flag, 0);
    EXPECT_TRUE(std::isnan(record.x));
    EXPECT_EQ(record.y, 0);
}

TEST_F(BulkTest, NamesAreThoseOfTheLanguageAndOthersDoNoHarm)
{
    compile(L"X+1");
    const Numbers x = {1, 2};
    EXPECT_EQ(numbers({numbersOf(L"unused", x), numbersOf(L"x", x), numbersOf(L"pi", x)}, 2), (Numbers{2, 3}));
}

TEST_F(BulkTest, NoRowsAreNoError)
{
    compile(L"x+1");
    EXPECT_TRUE(mathexpr::evaluateBulk(session.expression, nullptr, 0, 0, {}, 4, outcome));
    const mathexpr::BulkColumn column{L"x"};
    EXPECT_TRUE(mathexpr::evaluateBulk(session.expression, &column, 1, 0, {}, 4, outcome));
    EXPECT_EQ(outcome.failedCount, 0U);
}

TEST_F(BulkTest, RefusesColumnsThatCannotBeRead)
{
    compile(L"x+1");
    const Numbers x = {1, 2};
    Numbers target = {99, 99};
    const mathexpr::BulkResults results{target.data()};
    const auto* misaligned = reinterpret_cast<const double*>(reinterpret_cast<const char*>(x.data()) + 4);

    EXPECT_FALSE(mathexpr::evaluateBulk(session.expression, nullptr, 1, 2, results, 1, outcome));
    EXPECT_EQ(outcome.error, mathexpr::BulkError::ColumnsMissing);
    EXPECT_EQ(refusal({numbersOf(L"x", x), numbersOf(nullptr, x)}, results), mathexpr::BulkError::ColumnName);
    EXPECT_EQ(outcome.column, 1U);
    EXPECT_EQ(refusal({numbersOf(L"", x)}, results), mathexpr::BulkError::ColumnName);
    EXPECT_EQ(refusal({numbersOf(L"x", x), numbersOf(L"u", x), numbersOf(L"X", x)}, results),
              mathexpr::BulkError::ColumnTwice);
    EXPECT_EQ(outcome.column, 2U);
    EXPECT_EQ(refusal({numbersOf(L"u", x), numbersOf(L"U", x)}, results), mathexpr::BulkError::ColumnTwice);
    EXPECT_EQ(refusal({{L"x", x.data(), 8, mathexpr::BulkKind::Record}}, results), mathexpr::BulkError::ColumnKind);
    EXPECT_EQ(refusal({{L"x", x.data(), 8, static_cast<mathexpr::BulkKind>(7)}}, results),
              mathexpr::BulkError::ColumnKind);
    EXPECT_EQ(refusal({{L"x", nullptr}}, results), mathexpr::BulkError::ColumnData);
    EXPECT_EQ(refusal({{L"x", misaligned}}, results, 1), mathexpr::BulkError::ColumnAlignment);
    EXPECT_EQ(refusal({{L"x", x.data(), 4}}, results), mathexpr::BulkError::ColumnAlignment);
    EXPECT_EQ(refusal({{L"x", x.data(), 8, mathexpr::BulkKind::Point, 12}}, results),
              mathexpr::BulkError::ColumnAlignment);
    EXPECT_EQ(target, (Numbers{99, 99}));
}

TEST_F(BulkTest, RefusesResultsThatCannotBeWritten)
{
    compile(L"x+1");
    const Numbers x = {1, 2, 3};
    const std::vector<mathexpr::BulkColumn> columns = {numbersOf(L"x", x)};
    Numbers target(24, 99);
    double* const data = target.data();
    EXPECT_EQ(refusal(columns, {data, 8, static_cast<mathexpr::BulkKind>(3)}), mathexpr::BulkError::ResultsKind);
    EXPECT_EQ(refusal(columns, {nullptr}), mathexpr::BulkError::ResultsData);
    EXPECT_EQ(refusal(columns, {reinterpret_cast<char*>(data) + 4}), mathexpr::BulkError::ResultsAlignment);
    EXPECT_EQ(refusal(columns, {data, 12}), mathexpr::BulkError::ResultsAlignment);
    EXPECT_EQ(refusal(columns, {data, 24, mathexpr::BulkKind::Point, 4}), mathexpr::BulkError::ResultsAlignment);
    auto* const oddStatus = reinterpret_cast<std::uint32_t*>(reinterpret_cast<char*>(data) + 2);
    EXPECT_EQ(refusal(columns, {data, 8, mathexpr::BulkKind::Number, 8, oddStatus}),
              mathexpr::BulkError::ResultsAlignment);
    EXPECT_EQ(refusal(columns, {data, 0}), mathexpr::BulkError::ResultsOverlap);
    EXPECT_EQ(refusal(columns, {data, 24, mathexpr::BulkKind::Record}), mathexpr::BulkError::ResultsOverlap);
    EXPECT_EQ(refusal(columns, {data, 16, mathexpr::BulkKind::Point}), mathexpr::BulkError::ResultsOverlap);
    EXPECT_EQ(refusal(columns, {data, 24, mathexpr::BulkKind::Point, 0}), mathexpr::BulkError::ResultsOverlap);
    EXPECT_EQ(refusal(columns, {data, 0, mathexpr::BulkKind::Point, 8}), mathexpr::BulkError::ResultsOverlap);
    EXPECT_EQ(refusal(columns, {data, 8, mathexpr::BulkKind::Point, 16}, 3), mathexpr::BulkError::ResultsOverlap);
    EXPECT_EQ(refusal(columns, {data, -8, mathexpr::BulkKind::Point, 16}, 3), mathexpr::BulkError::ResultsOverlap);
    EXPECT_EQ(target, Numbers(24, 99));
    // Every other row of two; and a single row, whose stride is ignored.
    EXPECT_TRUE(run(columns, 3, {data, 16, mathexpr::BulkKind::Point, 40}));
    EXPECT_TRUE(run(columns, 1, {data, 0, mathexpr::BulkKind::Point, 8}));
    EXPECT_TRUE(run(columns, 1, {data, 0}));
}

TEST_F(BulkTest, WithoutAProgramNothingIsEvaluated)
{
    Numbers target = {99, 99};
    EXPECT_EQ(refusal({}, {target.data()}), mathexpr::BulkError::NoProgram);
    EXPECT_THROW(session.expression.setExpression(L"1+"), mathexpr::ParsingException);
    EXPECT_EQ(refusal({}, {target.data()}), mathexpr::BulkError::NoProgram);
    EXPECT_EQ(target, (Numbers{99, 99}));
}

TEST_F(BulkTest, RefusesWhileACallWaitsForTheHost)
{
    Session loud(false);
    loud.host.names = {{L"x", number(-1)}};
    ASSERT_TRUE(loud.expression.setExpression(L"sqrt(x)"));
    Numbers target = {99};
    std::vector<mathexpr::BulkError> errors;
    loud.shown.whileShown = [&] {
        EXPECT_FALSE(mathexpr::evaluateBulk(loud.expression, nullptr, 0, 1, {target.data()}, 1, outcome));
        errors.push_back(outcome.error);
    };
    VALTYPE value;
    EXPECT_FALSE(loud.expression.evaluate(value));
    EXPECT_EQ(errors, std::vector<mathexpr::BulkError>{mathexpr::BulkError::Busy});
    EXPECT_EQ(target, Numbers{99});
}

TEST_F(BulkTest, TheObjectIsAfterwardsWhatItWas)
{
    // The dot product is added to the content of its slot, which later evaluations can observe.
    mathexpr::setVariable(session.expression, L"p", point(1, 2, 3));
    mathexpr::setVariable(session.expression, L"q", point(1, 0, 0));
    compile(L"p*q");
    VALTYPE value;
    ASSERT_TRUE(session.expression.evaluate(value));
    ASSERT_TRUE(session.expression.evaluate(value));
    EXPECT_EQ(value.x, 2);
    const Numbers points = {10, 0, 0, 20, 0, 0};
    EXPECT_EQ(numbers({pointsOf(L"p", points)}, 2), (Numbers{10, 20}));
    ASSERT_TRUE(session.expression.evaluate(value));
    EXPECT_EQ(value.x, 3);
    ASSERT_TRUE(mathexpr::getVariable(session.expression, L"p", value));
    EXPECT_EQ(value.y, 2);
}

TEST_F(BulkTest, NeitherScalarCodeNorTheDiagnosticIsDisturbed)
{
    mathexpr::setVariable(session.expression, L"x", number(0));
    compile(L"1/x");
    VALTYPE value;
    EXPECT_FALSE(session.expression.evaluate(value));
    const Numbers x = {-1, 2};
    compile(L"sqrt(y)/x");
    EXPECT_FALSE(session.expression.evaluate(value));
    const mathexpr::ExpressionDiagnostic before = session.diagnostic();
    EXPECT_EQ(before.message, 12U);
    mathexpr::setVariable(session.expression, L"y", number(4));
    EXPECT_EQ(numbers({numbersOf(L"x", x)}, 2), (Numbers{-2, 1}));
    EXPECT_EQ(session.diagnostic().message, before.message);
    EXPECT_EQ(session.diagnostic().start, before.start);
}

TEST_F(BulkTest, AnAssignmentStaysPending)
{
    compile(L"a=x*2");
    const Numbers x = {1, 2};
    EXPECT_EQ(numbers({numbersOf(L"x", x)}, 2), (Numbers{2, 4}));
    VALTYPE value;
    EXPECT_FALSE(mathexpr::getVariable(session.expression, L"a", value));
    mathexpr::setVariable(session.expression, L"x", number(5));
    ASSERT_TRUE(session.expression.evaluate(value));
    ASSERT_TRUE(mathexpr::getVariable(session.expression, L"a", value));
    EXPECT_EQ(value.x, 10);
    compile(L"pi=x");
    EXPECT_EQ(numbers({numbersOf(L"x", x)}, 2), (Numbers{1, 2}));
}

TEST_F(BulkTest, ThreadsComeToTheSame)
{
    const std::size_t nbRows = 100003;
    Numbers x(nbRows);
    for (std::size_t row = 0; row < nbRows; ++row)
    {
        x[row] = static_cast<double>(row % 1000) - 3.0;
    }
    for (const wchar_t* text : {L"sqrt(x)*2+x", L"[x,1,2]*x", L"dist([x,0,0],[0,0,0])/x", L"4"})
    {
        compile(text);
        std::vector<VALTYPE> alone(nbRows);
        ASSERT_TRUE(run({numbersOf(L"x", x)}, nbRows, {alone.data(), sizeof(VALTYPE), mathexpr::BulkKind::Record}, 0));
        const std::vector<std::uint32_t> statusAlone = status;
        const mathexpr::BulkOutcome outcomeAlone = outcome;
        std::vector<VALTYPE> together(nbRows);
        ASSERT_TRUE(
            run({numbersOf(L"x", x)}, nbRows, {together.data(), sizeof(VALTYPE), mathexpr::BulkKind::Record}, 1000));
        EXPECT_EQ(status, statusAlone);
        EXPECT_EQ(outcome.failedCount, outcomeAlone.failedCount);
        EXPECT_EQ(outcome.firstFailed, outcomeAlone.firstFailed);
        EXPECT_EQ(outcome.firstStatus, outcomeAlone.firstStatus);
        for (std::size_t row = 0; row < nbRows; ++row)
        {
            ASSERT_EQ(together[row].type, alone[row].type);
            ASSERT_TRUE(together[row].x == alone[row].x || std::isnan(alone[row].x)) << row;
        }
    }
}

TEST_F(BulkTest, ThreadsDrawRandomNumbersInTheOrderOfRows)
{
    compile(L"rand(0,1)+0*x");
    const Numbers x(100'000);
    Numbers expected(x.size());
    std::srand(7);
    for (double& drawn : expected)
    {
        VALTYPE value;
        ASSERT_TRUE(session.expression.evaluate(value));
        drawn = value.x;
    }
    Numbers results(x.size());
    std::srand(7);
    ASSERT_TRUE(run({numbersOf(L"x", x)}, x.size(), {results.data()}, 3));
    EXPECT_TRUE(results == expected);
}

TEST_F(BulkTest, DeepExpressions)
{
    // More pending results than there are buffers.
    std::wstring nested = L"x";
    std::wstring flat = L"x";
    for (int level = 0; level < 2000; ++level)
    {
        nested = L"(x*2+" + nested + L")";
        flat += L"*1+x";
    }
    const Numbers x = {1, 2, 3};
    compile(nested.c_str());
    EXPECT_EQ(numbers({numbersOf(L"x", x)}, 3), (Numbers{4001, 8002, 12003}));
    compile(flat.c_str());
    EXPECT_EQ(numbers({numbersOf(L"x", x)}, 3), (Numbers{2001, 4002, 6003}));
}

/// Columns, variables without a column, kinds of results and texts may change between calls.
class BulkTestOfCalls : public BulkTest
{
protected:
    /// The rows computed by an object without earlier bulk evaluations.
    Numbers freshly(const wchar_t* text, const std::vector<mathexpr::BulkColumn>& columns, std::size_t nbRows)
    {
        Session fresh(true);
        for (const wchar_t* name : {L"x", L"y", L"p", L"q"})
        {
            VALTYPE value;
            EXPECT_TRUE(mathexpr::getVariable(session.expression, name, value));
            mathexpr::setVariable(fresh.expression, name, value);
        }
        EXPECT_TRUE(fresh.expression.setExpression(text));
        Numbers results(nbRows, 99.0);
        EXPECT_TRUE(mathexpr::evaluateBulk(fresh.expression, columns.data(), columns.size(), nbRows, {results.data()},
                                           1, outcome));
        return results;
    }

    const Numbers x = {1, 99, 2, 99, 3, 99, 4};
    const Numbers y = {-1, -2, -3, -4};
    const Numbers points = {1, 0, 0, 0, 2, 0, 0, 0, 3, 4, 0, 0};
};

TEST_F(BulkTestOfCalls, AnyColumnsMayBeGivenInAnyOrder)
{
    const wchar_t* const text = L"dist(p,q)*x+y";
    compile(text);
    const mathexpr::BulkColumn gaps{L"x", x.data(), doubles(2)};
    const mathexpr::BulkColumn packed = numbersOf(L"x", x);
    const mathexpr::BulkColumn other = numbersOf(L"y", y);
    const std::vector<std::vector<mathexpr::BulkColumn>> calls = {{packed, other},
                                                                  {packed, other},
                                                                  {gaps, other},
                                                                  {other, gaps},
                                                                  {pointsOf(L"p", points), packed},
                                                                  {pointsOf(L"q", points), packed},
                                                                  {numbersOf(L"p", y), packed},
                                                                  {other},
                                                                  {packed, other, numbersOf(L"unread", y)},
                                                                  {packed, other}};
    mathexpr::setVariable(session.expression, L"q", point(1, 1, 1));
    for (std::size_t call = 0; call < calls.size(); ++call)
    {
        Numbers found(4, 99.0);
        ASSERT_TRUE(run(calls[call], 4, {found.data()}));
        const std::size_t failedCount = outcome.failedCount;
        EXPECT_EQ(found.size(), 4U);
        const Numbers expected = freshly(text, calls[call], 4);
        EXPECT_EQ(failedCount, outcome.failedCount) << "call " << call;
        for (std::size_t row = 0; row < 4; ++row)
        {
            EXPECT_TRUE(found[row] == expected[row] || (std::isnan(found[row]) && std::isnan(expected[row])))
                << "call " << call << ", row " << row;
        }
    }
}

TEST_F(BulkTestOfCalls, AVariableWithoutAColumnHasItsPresentValue)
{
    for (const wchar_t* text : {L"1/y+x", L"max(x,y,1,2)", L"x+0*y"})
    {
        compile(text);
        for (const double value : {2.0, 4.0, 0.0, -0.0, 2.0, std::nan("")})
        {
            mathexpr::setVariable(session.expression, L"y", number(value));
            Numbers found(4, 99.0);
            ASSERT_TRUE(run({numbersOf(L"x", x)}, 4, {found.data()}));
            const std::vector<std::uint32_t> statusFound = status;
            EXPECT_EQ(testing::PrintToString(found), testing::PrintToString(freshly(text, {numbersOf(L"x", x)}, 4)));
            EXPECT_EQ(outcome.failedCount, statusFound[0] != 0 ? 4U : 0U);
        }
    }
    compile(L"y*x");
    EXPECT_EQ(numbers({numbersOf(L"x", y)}, 2).size(), 2U);
    mathexpr::setVariable(session.expression, L"y", point(1, 2, 3));
    Numbers products(6);
    ASSERT_TRUE(run({numbersOf(L"x", y)}, 2, {products.data(), doubles(3), mathexpr::BulkKind::Point}));
    EXPECT_EQ(products, (Numbers{-1, -2, -3, -2, -4, -6}));
}

TEST_F(BulkTestOfCalls, ResultsMayBeOfAnotherKind)
{
    compile(L"x*2");
    const std::vector<mathexpr::BulkColumn> columns = {numbersOf(L"x", y)};
    EXPECT_EQ(numbers(columns, 4), (Numbers{-2, -4, -6, -8}));
    Numbers asPoints(12, 99.0);
    ASSERT_TRUE(run(columns, 4, {asPoints.data(), doubles(3), mathexpr::BulkKind::Point}));
    EXPECT_EQ(outcome.failedCount, 4U);
    EXPECT_EQ(outcome.firstStatus, mathexpr::RowStatus::OtherKind);
    EXPECT_TRUE(std::isnan(asPoints[11]));
    std::vector<VALTYPE> records(4);
    ASSERT_TRUE(run(columns, 4, {records.data(), sizeof(VALTYPE), mathexpr::BulkKind::Record}));
    EXPECT_EQ(records[3].x, -8);
    EXPECT_EQ(numbers(columns, 4), (Numbers{-2, -4, -6, -8}));
}

TEST_F(BulkTestOfCalls, AnotherTextIsAnotherProgram)
{
    const std::vector<mathexpr::BulkColumn> columns = {numbersOf(L"x", y)};
    for (const wchar_t* text : {L"x*2", L"x*3", L"5", L"x", L"x*2"})
    {
        compile(text);
        EXPECT_EQ(numbers(columns, 4), freshly(text, columns, 4));
    }
    EXPECT_THROW(session.expression.setExpression(L"x*"), mathexpr::ParsingException);
    EXPECT_EQ(refusal(columns, {Numbers(4).data()}), mathexpr::BulkError::NoProgram);
    compile(L"x-1");
    numbers(columns, 4);
    mathexpr::ExpressionLimits limits;
    limits.maxTextLength = 3;
    mathexpr::setLimits(session.expression, limits);
    EXPECT_EQ(numbers(columns, 4), (Numbers{-2, -3, -4, -5}));  // applies to the next text
    EXPECT_THROW(session.expression.setExpression(L"x-10"), mathexpr::ParsingException);
    EXPECT_EQ(refusal(columns, {Numbers(4).data()}), mathexpr::BulkError::NoProgram);
    compile(L"x-2");
    EXPECT_EQ(numbers(columns, 4), (Numbers{-3, -4, -5, -6}));
    ASSERT_TRUE(mathexpr::removeVariable(session.expression, L"x"));
    EXPECT_EQ(refusal(columns, {Numbers(4).data()}), mathexpr::BulkError::NoProgram);
}

TEST_F(BulkTest, ACalculatorsLastTextIsEvaluated)
{
    CMathExpr calculator;
    VALTYPE value;
    ASSERT_TRUE(calculator.Calculate(L"x=3", value, 100));
    ASSERT_TRUE(calculator.Calculate(L"x*x", value, 100));
    const Numbers x = {2, 5};
    const mathexpr::BulkColumn column = numbersOf(L"x", x);
    Numbers results(2);
    ASSERT_TRUE(
        mathexpr::evaluateBulk(mathexpr::expressionOf(calculator), &column, 1, 2, {results.data()}, 1, outcome));
    EXPECT_EQ(results, (Numbers{4, 25}));
}

}
