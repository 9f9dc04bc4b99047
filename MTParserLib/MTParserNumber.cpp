// MTParserNumber.cpp - reads through the standard library's conversion that knows no locale.
#include "MTParserLib/MTParserNumber.h"

#include <charconv>
#include <limits>
#include <system_error>

double readNumber(std::wstring_view number, wchar_t decimalPoint, std::string& scratch)
{
    scratch.clear();
    for (const wchar_t character : number)
    {
        scratch += character == decimalPoint ? '.' : static_cast<char>(character);
    }

    double value = 0.0;
    const auto [end, error] = std::from_chars(scratch.data(), scratch.data() + scratch.size(), value);
    if (error == std::errc::result_out_of_range)
    {
        // Too large if there is anything before the decimal point, too small otherwise.
        const std::size_t nonZero = scratch.find_first_of("123456789");
        const std::size_t point = scratch.find('.');
        return nonZero < point ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return value;
}
