// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Values.cpp - see Values.h. Reads and writes numbers with <charconv>, which is independent of the locale.
#include "tests/language/Values.h"

#include "tests/ReadNumber.h"

#include <bit>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <limits>

namespace {

struct Coordinate
{
    double value = 0.0;
    bool anyNan = false;
};

template <class Number, class... Format>
bool readWhole(std::string_view text, Number& number, Format... format)
{
    const auto [end, error] = readNumber(text.data(), text.data() + text.size(), number, format...);
    return error == std::errc() && end == text.data() + text.size();
}

std::optional<Coordinate> parseCoordinate(std::string_view text)
{
    if (text == "nan")
    {
        return Coordinate{std::numeric_limits<double>::quiet_NaN(), true};
    }
    if (text.substr(0, 2) == "0x")
    {
        std::uint64_t bits = 0;
        if (text.size() != 18 || !readWhole(text.substr(2), bits, 16))
        {
            return std::nullopt;
        }
        return Coordinate{std::bit_cast<double>(bits), false};
    }
    Coordinate coordinate;
    if (!readWhole(text, coordinate.value) || std::isnan(coordinate.value))
    {
        return std::nullopt;
    }
    return coordinate;
}

bool cutSuffix(std::string_view& text, std::string_view suffix)
{
    if (text.size() < suffix.size() || text.substr(text.size() - suffix.size()) != suffix)
    {
        return false;
    }
    text.remove_suffix(suffix.size());
    return true;
}

bool cutPrefix(std::string_view& text, std::string_view prefix)
{
    if (text.substr(0, prefix.size()) != prefix)
    {
        return false;
    }
    text.remove_prefix(prefix.size());
    return true;
}

std::string describe(double number)
{
    char text[64];
    const auto shortest = std::to_chars(text, text + sizeof(text), number);
    std::string description(text, shortest.ptr);
    const auto bits = std::to_chars(text, text + sizeof(text), std::bit_cast<std::uint64_t>(number), 16);
    return description + " (0x" + std::string(text, bits.ptr) + ")";
}

}

std::optional<ExpectedValue> parseValue(std::string_view text)
{
    ExpectedValue value;
    value.record.flag = cutSuffix(text, "/flag") ? 1 : 0;
    const bool storedCoordinates = cutPrefix(text, "number");
    if (!cutPrefix(text, "["))
    {
        const auto number = parseCoordinate(text);
        if (storedCoordinates || !number)
        {
            return std::nullopt;
        }
        value.record.x = number->value;
        value.anyNan[0] = number->anyNan;
        return value;
    }
    if (!cutSuffix(text, "]"))
    {
        return std::nullopt;
    }
    value.record.type = storedCoordinates ? 0 : 1;
    double* const coordinates[] = {&value.record.x, &value.record.y, &value.record.z};
    for (std::size_t i = 0; i < 3; ++i)
    {
        const std::size_t comma = text.find(',');
        if ((comma == std::string_view::npos) != (i == 2))
        {
            return std::nullopt;
        }
        const auto coordinate = parseCoordinate(text.substr(0, comma));
        if (!coordinate)
        {
            return std::nullopt;
        }
        *coordinates[i] = coordinate->value;
        value.anyNan[i] = coordinate->anyNan;
        text.remove_prefix(i == 2 ? text.size() : comma + 1);
    }
    return value;
}

bool matches(const ExpectedValue& expected, const VALTYPE& actual)
{
    VALTYPE compared = actual;
    double* const coordinates[] = {&compared.x, &compared.y, &compared.z};
    const double wanted[] = {expected.record.x, expected.record.y, expected.record.z};
    for (std::size_t i = 0; i < 3; ++i)
    {
        if (expected.anyNan[i] && std::isnan(*coordinates[i]))
        {
            *coordinates[i] = wanted[i];
        }
    }
    return std::memcmp(&compared, &expected.record, sizeof(VALTYPE)) == 0;
}

std::string describe(const VALTYPE& value)
{
    return "type " + std::to_string(value.type) + " flag " + std::to_string(value.flag) + " reserved " +
           std::to_string(value.reserved) + " x " + describe(value.x) + " y " + describe(value.y) + " z " +
           describe(value.z);
}
