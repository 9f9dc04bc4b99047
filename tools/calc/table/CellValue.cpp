// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CellValue.cpp - see CellValue.h.
#include "tools/calc/table/CellValue.h"

#include "tools/calc/table/TableReader.h"
#include "tools/calc/text/Displayable.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>
#include <system_error>

namespace {

constexpr std::size_t mostShown = 40;  // characters of a cell

/// The value of a literal outside the range of double: 0 or infinity. Its exponent decides which; without an exponent,
/// the digits before its decimal point.
double outOfRange(std::string_view text)
{
    const bool isNegative = text.starts_with('-');
    const std::size_t exponent = text.find_first_of("eE");
    const bool isSmall = exponent == std::string_view::npos
                             ? text.substr(isNegative ? 1 : 0).find_first_not_of("0.") > text.find('.')
                             : text.substr(exponent + 1).starts_with('-');
    const double magnitude = isSmall ? 0.0 : std::numeric_limits<double>::infinity();
    return isNegative ? -magnitude : magnitude;
}

std::optional<double> numberIn(std::string_view text)
{
    text = withoutBlanks(text);
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
    {
        text.remove_prefix(1);
    }
    double number = 0.0;
    const char* const end = text.data() + text.size();
    const auto [parsedEnd, error] = std::from_chars(text.data(), end, number);
    if (parsedEnd != end || (error != std::errc() && error != std::errc::result_out_of_range))
    {
        return std::nullopt;
    }
    return error == std::errc() ? number : outOfRange(text);
}

std::optional<double> numberWithCommaIn(std::string_view text)
{
    constexpr std::size_t longest = 1100;  // more than the text of any double
    if (text.size() > longest || text.find('.') != std::string_view::npos)
    {
        return std::nullopt;
    }
    std::string plain(text);
    std::ranges::replace(plain, ',', '.');
    return numberIn(plain);
}

std::optional<VALTYPE> pointIn(std::string_view cell)
{
    std::array<double, 3> coordinates{};
    std::size_t count = 0;
    std::string_view rest = cell.substr(1, cell.size() - 2);
    for (bool isLast = false; !isLast; ++count)
    {
        const std::size_t end = std::min(rest.find(','), rest.size());
        const auto number = count < coordinates.size() ? numberIn(rest.substr(0, end)) : std::nullopt;
        if (!number)
        {
            return std::nullopt;
        }
        coordinates[count] = *number;
        isLast = end == rest.size();
        rest.remove_prefix(isLast ? end : end + 1);
    }
    VALTYPE value;
    value.type = 1;
    value.x = coordinates[0];
    value.y = coordinates[1];
    value.z = coordinates[2];
    return value;
}

/// Whether a cell would be a number without these marks, such as thousands separators.
bool hasMarks(std::string_view cell, std::string_view marks)
{
    return cell.find_first_of(marks) != std::string_view::npos &&
           cell.find_first_not_of("0123456789.,'+- ") == std::string_view::npos;
}

}

std::optional<VALTYPE> cellValue(std::string_view cell, bool decimalComma)
{
    cell = withoutBlanks(cell);
    if (cell.starts_with('['))
    {
        return cell.size() > 1 && cell.ends_with(']') ? pointIn(cell) : std::nullopt;
    }
    const auto number = decimalComma ? numberWithCommaIn(cell) : numberIn(cell);
    VALTYPE value;
    value.x = number.value_or(0.0);
    return number ? std::optional(value) : std::nullopt;
}

std::string cellComplaint(std::string_view cell, bool decimalComma)
{
    cell = withoutBlanks(cell);
    if (cell.empty())
    {
        return "is empty";
    }
    std::string complaint = "is neither a number nor a point: \"" + displayable(cell, mostShown) + "\"";
    if (!hasMarks(cell, decimalComma ? ".' " : ",' "))
    {
        return complaint;
    }
    if (!decimalComma && cellValue(cell, true))
    {
        return complaint + "; --decimal-comma reads it";
    }
    return complaint + "; numbers are written without marks between thousands";
}
