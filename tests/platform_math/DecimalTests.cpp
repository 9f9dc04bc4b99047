// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DecimalTests.cpp - numbers are read as the nearest double, with the method of every platform.
#include "platform/DecimalText.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <random>
#include <string>

#include <gtest/gtest.h>

namespace {

double read(const std::string& text)
{
    double value = 0.0;
    EXPECT_TRUE(platform::readDecimal(text, value)) << text;
    return value;
}

TEST(Decimals, AreTheNearestDoubles)
{
    const std::string zeros(1000, '0');
    EXPECT_EQ(read("0"), 0.0);
    EXPECT_EQ(read("00.00"), 0.0);
    EXPECT_EQ(read("0.1"), 0.1);
    EXPECT_EQ(read("1.e+5"), 1e5);
    EXPECT_EQ(read(zeros + "15" + zeros + "e-1001"), 1.5);
    EXPECT_EQ(read("0." + zeros + "1e1000"), 0.1);
    EXPECT_EQ(read("1e22"), 1e22);
    EXPECT_EQ(read("1e23"), 0x1.52d02c7e14af6p+76);
    EXPECT_EQ(read("123456789012345678e-23"), 0x1.4b66dc01ec6fbp-20);
    EXPECT_EQ(read("2.2250738585072011e-308"), 0x0.fffffffffffffp-1022);
    EXPECT_EQ(read("2.2250738585072012e-308"), 0x1p-1022);
    EXPECT_EQ(read("2.4703282292062328e-324"), 0x1p-1074);
    EXPECT_EQ(read("1.7976931348623158e308"), std::numeric_limits<double>::max());
    // A tie between two doubles; and a number just above it, by a digit far after the decimal point.
    EXPECT_EQ(read("9007199254740993" + zeros + "e-1000"), 0x1p53);
    EXPECT_EQ(read("9007199254740993." + zeros + "1"), 0x1.0000000000001p53);
}

TEST(Decimals, AreRefusedBeyondTheDoubles)
{
    double value = 0.0;
    for (const char* const text : {"1.7976931348623159e308", "1e309", "1e99999", "2.4703282292062327e-324", "1e-400"})
    {
        EXPECT_FALSE(platform::readDecimal(text, value)) << text;
    }
    EXPECT_FALSE(platform::readDecimal(std::string(400, '9'), value));
}

TEST(Decimals, OfSeventeenDigitsReadBack)
{
    std::mt19937_64 random(1);
    for (int count = 0; count < 20000; ++count)
    {
        const auto number = std::bit_cast<double>(random() & 0x7FFF'FFFF'FFFF'FFFF);
        if (std::isfinite(number))
        {
            char text[32];
            std::snprintf(text, sizeof text, "%.16e", number);
            EXPECT_EQ(read(text), number) << text;
        }
    }
}

// The processor's conversion of an integer rounds to nearest, ties to even.
TEST(Decimals, BetweenTwoDoublesAreRounded)
{
    std::mt19937_64 random(1);
    for (int count = 0; count < 20000; ++count)
    {
        const std::uint64_t leading = random() >> 11U | std::uint64_t{1} << 52U;
        const unsigned nbBelow = 2 + static_cast<unsigned>(random() % 10);
        const std::uint64_t middle = leading << nbBelow | std::uint64_t{1} << (nbBelow - 1);
        EXPECT_EQ(read(std::to_string(middle)), static_cast<double>(middle));
        EXPECT_EQ(read(std::to_string(middle - 1) + ".9"), static_cast<double>(middle - 1));
        EXPECT_EQ(read(std::to_string(middle) + "." + std::string(static_cast<std::size_t>(count) % 900, '0') + "1"),
                  static_cast<double>(middle + 1));
    }
}

}
