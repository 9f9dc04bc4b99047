// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HostArrayTests.cpp - one expression over arrays in the host's memory.
#include <mathexpr.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cmath>

namespace {

using mathexpr::Column;
using mathexpr::Point;
using mathexpr::Results;

struct Room
{
    double width;
    double height;
    double area;
};

TEST(HostArrays, AreReadAndWrittenWhereTheyAre)
{
    std::vector<Room> rooms{{2, 3, 0}, {4, 5, 0}};
    constexpr std::ptrdiff_t stride = sizeof(Room);
    const auto outcome = mathexpr::evaluateArrays(
        "w*h", {{"w", &rooms[0].width, rooms.size(), stride}, {"h", &rooms[0].height, rooms.size(), stride}},
        Results(&rooms[0].area, rooms.size(), stride));
    EXPECT_EQ(outcome.failedCount, 0u);
    EXPECT_EQ(rooms[0].area, 6.0);
    EXPECT_EQ(rooms[1].area, 20.0);
}

TEST(HostArrays, MayBeAsManyAsTheHostFindsAtRunTime)
{
    const std::vector<std::string> headings{"a", "b", "c"};
    const std::vector<std::vector<double>> cells{{1, 2}, {10, 20}, {100, 200}};
    std::vector<Column> columns;
    for (std::size_t index = 0; index < headings.size(); ++index)
    {
        columns.emplace_back(headings[index], cells[index]);
    }
    std::vector<double> sums(2);
    EXPECT_EQ(mathexpr::evaluateArrays("a+b+c", columns, sums).failedCount, 0u);
    EXPECT_EQ(sums, (std::vector<double>{111, 222}));
}

TEST(HostArrays, HoldNumbersOrPoints)
{
    const std::array<Point, 2> corners{{{3, 4, 0}, {0, 5, 12}}};
    std::vector<double> lengths(2);
    std::array<Point, 2> doubled;
    EXPECT_EQ(mathexpr::evaluateArrays("dist(p,[0,0])", {{"p", corners}}, lengths, 2).failedCount, 0u);
    EXPECT_EQ(lengths, (std::vector<double>{5, 13}));
    EXPECT_EQ(mathexpr::evaluateArrays("p*2", {{"p", corners}}, doubled).failedCount, 0u);
    EXPECT_EQ(doubled[1], (Point{0, 10, 24}));
}

TEST(HostArrays, ReportFailedRowsAndReasons)
{
    const std::vector<double> xs{1, -1, 4, 0};
    std::vector<double> values(4);
    std::vector<std::uint32_t> status(4);
    mathexpr::Expression expression("ln(x)", {{"x", 0.0}});
    const auto outcome = expression.evaluateArrays({{"x", xs}}, Results(values).withRowStatus(status.data()));
    EXPECT_EQ(outcome.failedCount, 2u);
    EXPECT_EQ(outcome.firstFailed, 1u);
    EXPECT_EQ(outcome.firstStatus, 8u);
    EXPECT_EQ(status, (std::vector<std::uint32_t>{0, 8, 0, 8}));
    EXPECT_TRUE(std::isnan(values[1]) && values[0] == 0.0);
}

TEST(HostArrays, ThatCannotBeUsedAreRefused)
{
    const std::vector<double> three(3);
    std::vector<double> two(2, 77.0);
    std::vector<double> results(3, 77.0);
    const auto message = [&](std::initializer_list<Column> columns, const Results& given) {
        mathexpr::Expression expression("x+y", {{"x", 0.0}, {"y", 0.0}});
        const auto refused = expression.tryEvaluateArrays(columns, given);
        EXPECT_FALSE(refused);
        EXPECT_EQ(refused.error().status(), MATHEXPR_BULK_REFUSED);
        return std::string(refused.error().what());
    };
    const auto* const odd = reinterpret_cast<const double*>(reinterpret_cast<const char*>(three.data()) + 4);
    double* const none = nullptr;
    EXPECT_EQ(message({{"x", three}}, two), "different lengths: the column 'x' has 3 rows, the results have 2 rows");
    EXPECT_EQ(message({{"", three}}, results), "the column '' has no name, or one that is not well-formed UTF-8");
    EXPECT_EQ(message({{"x", three}, {"X", three}}, results), "the column 'X' occurs twice");
    EXPECT_EQ(message({{"x", three}, {"y", static_cast<const double*>(none), 3}}, results),
              "the column 'y' has no data");
    EXPECT_EQ(message({{"x", odd, 3}}, results),
              "the column 'x' is not aligned to 8 bytes, or its stride is not a multiple of 8");
    EXPECT_EQ(message({{"x", three}}, Results(none, 3)), "the results have no data");
    EXPECT_EQ(message({{"x", three}}, Results(results.data(), 3, 4)),
              "the results are not aligned to 8 bytes, or their stride is not a multiple of 8");
    EXPECT_EQ(message({{"x", three}}, Results(results.data(), 3, 0)), "rows of the results share memory");
    EXPECT_EQ(results, std::vector<double>(3, 77.0));
    EXPECT_FALSE(mathexpr::tryEvaluateArrays("x", {{"2", three}}, results));
    EXPECT_FALSE(mathexpr::tryEvaluateArrays("x*", {{"x", three}}, results));
    EXPECT_EQ(mathexpr::Expression().tryEvaluateArrays({}, results).error().status(), MATHEXPR_NO_PROGRAM);
}

}
