// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ValueText.cpp - see ValueText.h.
//
// The language reads "2e+3" as a product, 2*10^3, so the shortest digits of a number may read back to another number.
// The exact text is therefore found with the language's own arithmetic: for powers of ten near that of the number, the
// shortest mantissa whose product with the power is the number.
#include "mathexpr/ValueText.h"

#include "MTParserLib/vocabulary/Operators.h"
#include "platform/DecimalText.h"
#include "platform/FloatingPointGuard.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>

namespace mathexpr {

namespace {

/// Up to this bound, every whole number is a double. Larger numbers are not written with all digits.
constexpr double maxWholeNumber = 9007199254740992.0;  // 2^53

/// The largest integer literal that all expressions accept.
constexpr std::string_view maxIntegerLiteral = "2147483647";

/// Bounds on the power of ten of the first digit of plain decimals.
constexpr int minPlainExponent = -6;
constexpr int maxPlainExponent = 14;

/// Buffer for the text of one number.
class NumberText
{
public:
    std::string_view view() const noexcept { return {text.data(), length}; }

    void append(std::string_view more) noexcept
    {
        more.copy(text.data() + length, more.size());
        length += more.size();
    }
    void appendZeros(std::size_t count) noexcept
    {
        std::fill_n(text.data() + length, count, '0');
        length += count;
    }

    /// Appends a whole number. A number too large for an integer literal is written as a decimal.
    void appendWhole(std::string_view digits) noexcept
    {
        append(digits);
        if (digits.size() > maxIntegerLiteral.size() ||
            (digits.size() == maxIntegerLiteral.size() && digits > maxIntegerLiteral))
        {
            append(".0");
        }
    }

    /// @param number  finite and not negative
    void appendPlain(double number) noexcept
    {
        std::array<char, ValueText::maxNumberLength> plain;
        const std::string_view digits(
            plain.data(), static_cast<std::size_t>(
                              platform::writeFixed(plain.data(), plain.data() + plain.size(), number) - plain.data()));
        if (digits.find('.') == std::string_view::npos)
        {
            appendWhole(digits);
        }
        else
        {
            append(digits);
        }
    }

    void appendPower(int exponent) noexcept
    {
        append(exponent >= 0 ? "e+" : "*10^");
        length = static_cast<std::size_t>(std::to_chars(text.data() + length, text.data() + text.size(), exponent).ptr -
                                          text.data());
    }

private:
    std::array<char, ValueText::maxNumberLength> text;
    std::size_t length = 0;
};

/// The decimal digits of a number, and the power of ten of the first digit.
struct Decimal
{
    /// @param number  finite and greater than 0
    Decimal(double number, std::uint32_t nbDigits) noexcept
    {
        std::array<char, 32> scientific;  // d.ddde+dd
        char* const begin = scientific.data();
        char* const end = begin + scientific.size();
        const char* const last = nbDigits == ValueText::exactDigits
                                     ? platform::writeScientific(begin, end, number)
                                     : platform::writeScientific(begin, end, number, static_cast<int>(nbDigits) - 1);
        const char* const mark = std::find(begin, end, 'e');
        std::from_chars(mark[1] == '+' ? mark + 2 : mark + 1, last, exponent);
        for (const char* at = begin; at != mark; ++at)
        {
            if (*at != '.')
            {
                digits[count++] = *at;
            }
        }
        while (count > 1 && digits[count - 1] == '0')
        {
            --count;
        }
    }

    std::string_view first(std::size_t size) const noexcept { return {digits.data(), size}; }
    std::string_view after(std::size_t size) const noexcept { return {digits.data() + size, count - size}; }

    std::array<char, ValueText::maxDigits> digits;
    std::size_t count = 0;
    int exponent = 0;
};

bool isPlain(const Decimal& decimal) noexcept
{
    return decimal.exponent >= minPlainExponent && decimal.exponent <= maxPlainExponent;
}

bool isFiniteAndNotZero(double number) noexcept
{
    return std::isfinite(number) && number != 0.0;
}

/// The power of ten as the language computes it.
double powerOfTen(int exponent) noexcept
{
    return ExpOp::of(10.0, exponent);
}

/// Finds the shortest mantissa whose product with a power of ten is the number.
/// @return false, with nothing changed, if there is none
bool findMantissa(double number, int exponent, NumberText& mantissa) noexcept
{
    const double power = powerOfTen(exponent);
    const double quotient = number / power;
    if (!isFiniteAndNotZero(quotient))  // the power of ten is 0 or infinite
    {
        return false;
    }
    bool found = false;
    for (const double candidate :
         {quotient, std::nextafter(quotient, 0.0), std::nextafter(quotient, std::numeric_limits<double>::infinity())})
    {
        if (formulas::Mult::of(candidate, power) == number)
        {
            NumberText text;
            text.appendPlain(candidate);
            if (!found || text.view().size() < mantissa.view().size())
            {
                mantissa = text;
            }
            found = true;
        }
    }
    return found;
}

void appendExact(double number, NumberText& text) noexcept
{
    const Decimal decimal(number, ValueText::exactDigits);
    if (!isPlain(decimal))
    {
        for (const int shift : {0, -1, 1, -2, 2})
        {
            NumberText mantissa;
            if (findMantissa(number, decimal.exponent + shift, mantissa))
            {
                text.append(mantissa.view());
                text.appendPower(decimal.exponent + shift);
                return;
            }
        }
    }
    text.appendPlain(number);
}

/// Whether the language certainly reads this mantissa and power of ten as a finite number other than 0.
bool staysInRange(const Decimal& decimal) noexcept
{
    constexpr double margin = 1.0 + 8 * std::numeric_limits<double>::epsilon();
    std::uint64_t mantissa = 0;
    for (const char digit : decimal.first(decimal.count))
    {
        mantissa = 10 * mantissa + static_cast<std::uint64_t>(digit - '0');
    }
    const double significand = static_cast<double>(mantissa) / powerOfTen(static_cast<int>(decimal.count) - 1);
    return isFiniteAndNotZero(significand * margin * powerOfTen(decimal.exponent));
}

void appendRounded(double number, std::uint32_t nbDigits, NumberText& text) noexcept
{
    const Decimal decimal(number, nbDigits);
    const bool plain = isPlain(decimal);
    if (!plain && !staysInRange(decimal))
    {
        appendExact(number, text);
    }
    else if (!plain)
    {
        text.append(decimal.first(1));
        if (decimal.count > 1)
        {
            text.append(".");
            text.append(decimal.after(1));
        }
        text.appendPower(decimal.exponent);
    }
    else if (decimal.exponent < 0)
    {
        text.append("0.");
        text.appendZeros(static_cast<std::size_t>(-1 - decimal.exponent));
        text.append(decimal.first(decimal.count));
    }
    else
    {
        const std::size_t nbWhole = static_cast<std::size_t>(decimal.exponent) + 1;
        if (decimal.count > nbWhole)
        {
            text.append(decimal.first(nbWhole));
            text.append(".");
            text.append(decimal.after(nbWhole));
        }
        else
        {
            NumberText whole;
            whole.append(decimal.first(decimal.count));
            whole.appendZeros(nbWhole - decimal.count);
            text.appendWhole(whole.view());
        }
    }
}

NumberText textOf(double number, std::uint32_t nbDigits) noexcept
{
    NumberText text;
    if (std::isnan(number))
    {
        text.append("nan");  // the sign of a NaN is ignored
        return text;
    }
    if (std::signbit(number))
    {
        text.append("-");
    }
    const double magnitude = std::fabs(number);
    if (std::isinf(magnitude))
    {
        text.append("inf");
    }
    else if (magnitude <= maxWholeNumber && std::trunc(magnitude) == magnitude)
    {
        text.appendPlain(magnitude);
    }
    else if (nbDigits == ValueText::exactDigits)
    {
        appendExact(magnitude, text);
    }
    else
    {
        appendRounded(magnitude, nbDigits, text);
    }
    return text;
}

}

ValueText::ValueText(const VALTYPE& value, std::uint32_t digits) noexcept
{
    const platform::FloatingPointGuard guard;
    const auto append = [this](std::string_view more) {
        more.copy(text.data() + length, more.size());
        length += more.size();
    };
    if (value.type == 0)
    {
        append(textOf(value.x, digits).view());
        return;
    }
    append("[");
    append(textOf(value.x, digits).view());
    append(",");
    append(textOf(value.y, digits).view());
    append(",");
    append(textOf(value.z, digits).view());
    append("]");
}

}
