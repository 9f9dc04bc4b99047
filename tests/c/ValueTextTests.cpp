// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ValueTextTests.cpp - formatted values read back: exact texts to the same bits, rounded ones to the nearest digits.
#include <mathexpr.h>

#include <gtest/gtest.h>

#include <array>
#include <bit>
#include <cfenv>
#include <clocale>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>
#include <string>
#include <utility>

namespace {

constexpr double infinity = std::numeric_limits<double>::infinity();

std::string textOf(double number, std::uint32_t digits = MATHEXPR_EXACT_DIGITS)
{
    const mathexpr_value value{MATHEXPR_NUMBER, 0, 0, 0, number, 0, 0};
    std::array<char, MATHEXPR_VALUE_TEXT_CAPACITY> text;
    EXPECT_EQ(mathexpr_format_value_utf8(&value, digits, text.data(), text.size(), nullptr), MATHEXPR_OK);
    return text.data();
}

class ValueText : public testing::Test
{
protected:
    ValueText() { EXPECT_EQ(mathexpr_create_utf8(nullptr, &expression), MATHEXPR_OK); }
    ~ValueText() override { mathexpr_destroy(expression); }
    ValueText(const ValueText&) = delete;
    ValueText& operator=(const ValueText&) = delete;

    /// The value that the language reads from a text; NaN if it is not a number.
    double read(const std::string& text) const
    {
        mathexpr_value value{};
        const bool isRead = mathexpr_evaluate_text_utf8(expression, text.data(), text.size(), &value) == MATHEXPR_OK;
        return isRead && value.type == MATHEXPR_NUMBER ? value.x : std::numeric_limits<double>::quiet_NaN();
    }

    void expectExact(double number) const
    {
        const std::string text = textOf(number);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(read(text)), std::bit_cast<std::uint64_t>(number)) << text;
        nbLong += text.size() > 30 ? 1 : 0;
    }

    mathexpr_expression* expression = nullptr;
    mutable int nbLong = 0;
};

TEST_F(ValueText, hasTheFormOfItsMagnitude)
{
    EXPECT_EQ(textOf(1e-6), "0.000001");
    EXPECT_EQ(textOf(std::nextafter(1e-6, 0)), "9.999999999999998*10^-7");
    EXPECT_EQ(textOf(1e14), "100000000000000.0");
    EXPECT_EQ(textOf(999999999999999.5), "999999999999999.5");
    EXPECT_EQ(textOf(1e15), "1000000000000000.0");
    EXPECT_EQ(textOf(1e15 + 0.5), "1.0000000000000004e+15");
    EXPECT_EQ(textOf(9007199254740992), "9007199254740992.0");
    EXPECT_EQ(textOf(9007199254740994), "9.007199254740994e+15");
    EXPECT_EQ(textOf(1e300), "1e+300");
    EXPECT_EQ(textOf(0x1.fc0148ee4b364p-428).size(), 146) << "no mantissa with a nearby power of ten yields it";
    EXPECT_EQ(textOf(1e23), "0.9999999999999998e+23") << "the language reads 1e+23 as the neighbouring double";
    EXPECT_EQ(textOf(-1e-300), "-1*10^-300");
}

TEST_F(ValueText, isNoIntegerLiteralWhereOneWouldBeTooLarge)
{
    EXPECT_EQ(textOf(2147483647), "2147483647");
    EXPECT_EQ(textOf(2147483648), "2147483648.0");
    EXPECT_EQ(textOf(-3000000000), "-3000000000.0");
    EXPECT_EQ(textOf(2147483647.4, 10), "2147483647");
    EXPECT_EQ(textOf(2147483647.6, 10), "2147483648.0");
    EXPECT_EQ(textOf(12345678901.5, 3), "12300000000.0");
}

TEST_F(ValueText, namesWhatIsNoNumber)
{
    EXPECT_EQ(textOf(std::numeric_limits<double>::quiet_NaN()), "nan");
    EXPECT_EQ(textOf(-std::numeric_limits<double>::quiet_NaN(), 3), "nan");
    EXPECT_EQ(textOf(infinity), "inf");
    EXPECT_EQ(textOf(-infinity, 17), "-inf");
}

TEST_F(ValueText, roundsToDigits)
{
    EXPECT_EQ(textOf(1.0 / 3, 1), "0.3");
    EXPECT_EQ(textOf(2.0 / 3, 15), "0.666666666666667");
    EXPECT_EQ(textOf(0.1, 17), "0.10000000000000001");
    EXPECT_EQ(textOf(76.19999999999999, 15), "76.2");
    EXPECT_EQ(textOf(0.00001234, 2), "0.000012");
    EXPECT_EQ(textOf(0.99999, 2), "1");
    EXPECT_EQ(textOf(9.9999e-7, 3), "0.000001");
    EXPECT_EQ(textOf(1234.5678, 2), "1200");
    EXPECT_EQ(textOf(1234.5678, 6), "1234.57");
    EXPECT_EQ(textOf(999999999999999.9, 3), "1e+15");
    EXPECT_EQ(textOf(1.23456e25, 3), "1.23e+25");
    EXPECT_EQ(textOf(-1.5e-20, 3), "-1.5*10^-20");
    // Whole numbers keep their digits.
    EXPECT_EQ(textOf(1234567, 3), "1234567");
    EXPECT_EQ(textOf(9007199254740991, 1), "9007199254740991.0");
}

TEST_F(ValueText, keepsItsDigitsWhereRoundingWouldLeaveTheRange)
{
    EXPECT_EQ(textOf(std::numeric_limits<double>::max(), 2), textOf(std::numeric_limits<double>::max()));
    EXPECT_EQ(textOf(std::numeric_limits<double>::max(), 15), textOf(std::numeric_limits<double>::max()));
    EXPECT_EQ(textOf(std::numeric_limits<double>::max(), 16), textOf(std::numeric_limits<double>::max()));
    EXPECT_EQ(textOf(1.7e308, 2), "1.7e+308");
    EXPECT_EQ(textOf(1.7123e308, 2), "1.7e+308");
    EXPECT_EQ(textOf(1.2345e308, 3), "1.23e+308");
    EXPECT_EQ(textOf(std::numeric_limits<double>::denorm_min(), 3), "0.5*10^-323");
}

TEST_F(ValueText, hasTheNearestPowerThatYieldsIt)
{
    for (const auto& [number, power] :
         {std::pair(8.9475217037375151e-216, "*10^-216"), std::pair(8.0465956340031387e-73, "*10^-74"),
          std::pair(1.0551456176986525e-144, "*10^-143"), std::pair(5.4544754849754079e-163, "*10^-165"),
          std::pair(5.1435248468260936e-141, "*10^-139")})
    {
        EXPECT_TRUE(textOf(number).ends_with(power)) << textOf(number);
    }
}

TEST_F(ValueText, isReadBackExactly)
{
    for (const double number :
         {0.0, -0.0, 1.0, 0.1, 1e-5, 1e-6, 1e15, 1e16, 1e22, 1e23, 3e9, 5e-324, 1e-323, 1e-310, 2.2250738585072014e-308,
          std::numeric_limits<double>::max(), -std::numeric_limits<double>::max()})
    {
        expectExact(number);
    }
    std::mt19937_64 random(1);
    for (int i = 0; i < 200000; ++i)
    {
        const auto number = std::bit_cast<double>(random());
        if (std::isfinite(number))
        {
            expectExact(number);
        }
    }
    // Few numbers need the hundreds of digits of a plain decimal.
    EXPECT_LT(nbLong, 200);
}

TEST_F(ValueText, isReadBackExactlyAroundPowersOfTen)
{
    for (int exponent = -323; exponent <= 308; ++exponent)
    {
        double number = std::pow(10.0, exponent);
        for (int i = 0; i < 10; ++i, number = std::nextafter(number, 0))
        {
            expectExact(number);
        }
    }
}

TEST_F(ValueText, isReadBackWithItsDigits)
{
    std::mt19937_64 random(2);
    for (int i = 0; i < 20000; ++i)
    {
        const auto number = std::bit_cast<double>(random());
        const auto digits = static_cast<std::uint32_t>(1 + i % 17);
        if (std::isnormal(number))
        {
            const std::string text = textOf(number, digits);
            const double tolerance = 0.51 * std::pow(10.0, 1.0 - digits) + 1e-15;
            EXPECT_NEAR(read(text) / number, 1.0, tolerance) << text;
        }
    }
}

TEST_F(ValueText, ofAPointIsReadBack)
{
    const mathexpr_value point{MATHEXPR_POINT, 1, 0, 0, 1.0 / 3, -1e-9 / 3, 1e40 / 3};
    std::array<char, MATHEXPR_VALUE_TEXT_CAPACITY> text;
    ASSERT_EQ(mathexpr_format_value_utf8(&point, MATHEXPR_EXACT_DIGITS, text.data(), text.size(), nullptr),
              MATHEXPR_OK);
    mathexpr_value value{};
    ASSERT_EQ(mathexpr_evaluate_text_utf8(expression, text.data(), MATHEXPR_ZERO_TERMINATED, &value), MATHEXPR_OK);
    EXPECT_EQ(value.type, MATHEXPR_POINT);
    EXPECT_EQ(value.x, point.x);
    EXPECT_EQ(value.y, point.y);
    EXPECT_EQ(value.z, point.z);
}

TEST_F(ValueText, dependsNeitherOnTheLocaleNorOnTheRounding)
{
    const char* const german = std::setlocale(LC_ALL, "de_DE.UTF-8");
    std::fesetround(FE_UPWARD);
    const std::string text = textOf(1234.5) + ' ' + textOf(1.5e-7) + ' ' + textOf(1.5e22) + ' ' + textOf(2.0 / 3, 4);
    const bool kept = std::fegetround() == FE_UPWARD;
    std::fesetround(FE_TONEAREST);
    std::setlocale(LC_ALL, "C");
    EXPECT_EQ(text, "1234.5 1.5*10^-7 1.5e+22 0.6667") << (german != nullptr ? german : "without the locale");
    EXPECT_TRUE(kept);
}

}
