// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ConversionTests.cpp - compares the unit conversions with conversions_reference.py, bit for bit, and with exact
// arithmetic.
#include "Items.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <stdexcept>

namespace {

struct Value
{
    double argument, result;
    bool hasExact;
    double exactHigh, exactLow;  // their sum is the exact result
};

struct Expectation
{
    std::string kind;
    double rounding;  // bound on the relative error from rounding
    double mismatch;  // relative error of the formula's constants
    std::vector<Value> values;
};

double readDouble(const std::string& digits)
{
    return std::bit_cast<double>(static_cast<std::uint64_t>(std::stoull(digits, nullptr, 16)));
}

std::map<std::string, Expectation> readExpectations()
{
    std::map<std::string, Expectation> expectations;
    std::ifstream file(MATHEXPR_CONVERSIONS_EXPECTED);
    for (std::string line; std::getline(file, line);)
    {
        std::istringstream words(line);
        std::string what;
        std::string symbol;
        words >> what >> symbol;
        Expectation& expectation = expectations[symbol];
        if (what == "conversion")
        {
            words >> expectation.kind >> expectation.rounding >> expectation.mismatch;
        }
        else
        {
            std::string argument;
            std::string result;
            words >> argument >> result;
            Value value{readDouble(argument), readDouble(result), false, 0.0, 0.0};
            std::string high;
            std::string low;
            if (words >> high >> low)
            {
                value = {value.argument, value.result, true, readDouble(high), readDouble(low)};
            }
            expectation.values.push_back(value);
        }
    }
    return expectations;
}

/// Every conversion with its expected values.
class Conversions : public testing::Test
{
protected:
    template <class Check>
    void forEach(Check check)
    {
        for (const auto& [symbol, expectation] : expectations)
        {
            SCOPED_TRACE(symbol);
            check(symbol, expectation);
        }
    }

    const IMathFunction& find(const std::string& symbol)
    {
        return vocabulary.getFunction(std::wstring(symbol.begin(), symbol.end()), 1);
    }

    double convert(const std::string& symbol, double x)
    {
        const VALTYPE argument = number(x);
        VALTYPE result;
        find(symbol).evaluate(1, &argument, result, false);
        return result.x;
    }

    RegisteredVocabulary vocabulary;
    const std::map<std::string, Expectation> expectations = readExpectations();
};

bool isConversion(const VocabularyEntry& entry)
{
    switch (entry.family)
    {
    case mathexpr::VocabularyFamily::Angle:
    case mathexpr::VocabularyFamily::Length:
    case mathexpr::VocabularyFamily::Area:
    case mathexpr::VocabularyFamily::Volume:
        return true;
    default:
        return false;
    }
}

TEST_F(Conversions, EachHasAnExpectation)
{
    std::set<std::string> registered;
    for (const VocabularyEntry& entry : getVocabulary())
    {
        if (isConversion(entry))
        {
            registered.insert(narrow(entry.symbol));
        }
    }
    std::set<std::string> expected;
    for (const auto& [symbol, expectation] : expectations)
    {
        expected.insert(symbol);
        EXPECT_GE(expectation.values.size(), 20U) << symbol;
    }
    EXPECT_EQ(registered, expected);
    EXPECT_EQ(expected.size(), 23U + 81 + 64 + 49);
}

TEST_F(Conversions, YieldTheBitsOfTheWrittenSteps)
{
    forEach([this](const std::string& symbol, const Expectation& expectation) {
        for (const Value& value : expectation.values)
        {
            VALTYPE argument = number(value.argument);
            argument.flag = 3;
            argument.reserved = 5;
            argument.padding = 7;
            argument.y = 11;
            argument.z = 13;
            if (expectation.kind == "copied")
            {
                VALTYPE result = stale();
                ASSERT_TRUE(find(symbol).evaluate(1, &argument, result, true));
                EXPECT_EQ(std::memcmp(&result, &argument, sizeof result), 0) << value.argument;
            }
            else
            {
                VALTYPE expected = withConverted(value.result);
                expected.flag = expectation.kind == "converted" ? 1 : 0;
                EXPECT_TRUE(yields(find(symbol), {argument}, expected)) << value.argument;
            }
        }
    });
}

TEST_F(Conversions, KindsAreAsRequired)
{
    const std::set<std::string> copied{"d2d", "r2r", "m2m", "scm2scm", "sf2sf", "si2si", "skm2skm"};
    forEach([&](const std::string& symbol, const Expectation& expectation) {
        const auto endsWith = [&](const char* unit) { return symbol.ends_with(std::string("2") + unit); };
        const bool flagZero = (endsWith("skm") || endsWith("vkm")) && symbol != "sa2skm" && symbol != "skm2skm";
        EXPECT_EQ(expectation.kind, copied.contains(symbol) ? "copied" : flagZero ? "flag-zero" : "converted");
    });
}

/// The largest relative error, and its conversion.
struct Worst
{
    double error = 0.0;
    std::string symbol = "none";

    void add(double candidate, const std::string& where)
    {
        if (candidate > error)
        {
            error = candidate;
            symbol = where;
        }
    }
};

// These conversions use 4,840 square yards per acre; the others use a literal for the acre in square metres.
const std::set<std::string> acreByCount{"sa2sf", "sa2si", "sa2sy", "sf2sa", "si2sa", "sy2sa"};

TEST_F(Conversions, AreExactUpToRounding)
{
    Worst rounding;
    Worst acre;
    forEach([&](const std::string& symbol, const Expectation& expectation) {
        EXPECT_EQ(expectation.mismatch != 0.0, acreByCount.contains(symbol));
        for (const Value& value : expectation.values)
        {
            if (!value.hasExact)
            {
                continue;
            }
            const double difference = (convert(symbol, value.argument) - value.exactHigh) - value.exactLow;
            const double error = std::fabs(difference / value.exactHigh);
            EXPECT_LE(error, expectation.rounding * (1 + 1e-9) + expectation.mismatch * (1 + 1e-6)) << value.argument;
            (acreByCount.contains(symbol) ? acre : rounding).add(error, symbol);
        }
    });
    std::printf("largest relative error: %.3g (%s); between acres and imperial areas: %.3g (%s)\n", rounding.error,
                rounding.symbol.c_str(), acre.error, acre.symbol.c_str());
    EXPECT_LT(rounding.error, 1e-15);
    EXPECT_LT(acre.error, 6e-10);
}

TEST_F(Conversions, ThereAndBackIsExactUpToRounding)
{
    Worst worst;
    forEach([&](const std::string& symbol, const Expectation& there) {
        const std::size_t separator = symbol.find('2');
        const std::string reverse = symbol.substr(separator + 1) + "2" + symbol.substr(0, separator);
        const Expectation& back = expectations.at(reverse);
        for (const Value& value : there.values)
        {
            if (value.hasExact)
            {
                const double returned = convert(reverse, convert(symbol, value.argument));
                const double error = std::fabs((returned - value.argument) / value.argument);
                EXPECT_LE(error, (there.rounding + back.rounding) * (1 + 1e-9)) << value.argument;
                worst.add(error, symbol + ", " + reverse);
            }
        }
    });
    std::printf("largest relative error there and back: %.3g (%s)\n", worst.error, worst.symbol.c_str());
    EXPECT_LT(worst.error, 1e-15);
}

TEST_F(Conversions, ChosenValues)
{
    EXPECT_EQ(convert("d2g", 90), 100);
    EXPECT_EQ(convert("g2d", 100), 90);
    EXPECT_EQ(convert("q2d", 1), 90);
    EXPECT_EQ(convert("c2q", 1), 4);
    EXPECT_EQ(convert("d2c", 720), 2);
    EXPECT_DOUBLE_EQ(convert("r2c", 1) * 360, 57.29577951308232);
    EXPECT_DOUBLE_EQ(convert("m2f", 0.3048), 1);
    EXPECT_EQ(convert("f2m", 1), 0.3048);
    EXPECT_EQ(convert("f2su", 1), 0.3048 / 0.30480060960122);
    EXPECT_LT(convert("f2su", 1), 1);
    EXPECT_DOUBLE_EQ(convert("su2su", 2), 2);
    EXPECT_EQ(convert("sa2sm", 1), 4046.85642);
    EXPECT_EQ(convert("sa2sf", 1), 43560);
    EXPECT_EQ(convert("sf2sa", 43560), 1);
    EXPECT_EQ(convert("vf2vi", 1), 1728);
    EXPECT_EQ(convert("vm2vcm", 1), 1000000);
    EXPECT_EQ(convert("sm2skm", 5), 5e-6);
    EXPECT_EQ(convert("sm2scm", 5), 50000);
}

}
