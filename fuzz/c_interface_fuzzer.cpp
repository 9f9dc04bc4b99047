// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// c_interface_fuzzer.cpp - arbitrary bytes as texts and names of the C interface, in both encodings. Every call returns
// a status; UTF-8 and UTF-16 of a text give the same result; a formatted value reads back; a function returns what an
// evaluation returns; the object stays usable.
#include <mathexpr.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

namespace {

void expect(bool holds)
{
    if (!holds)
    {
        std::abort();
    }
}

struct Result
{
    mathexpr_status status;
    mathexpr_value value;

    bool operator==(const Result& other) const
    {
        const bool sameValue = value.type == other.value.type && value.flag == other.value.flag &&
                               value.x == other.value.x && value.y == other.value.y && value.z == other.value.z;
        return status == other.status && (status != MATHEXPR_OK || sameValue);
    }
};

mathexpr_expression* create()
{
    mathexpr_expression* expression = nullptr;
    expect(mathexpr_create_utf8(nullptr, &expression) == MATHEXPR_OK && expression != nullptr);
    return expression;
}

bool isFinite(const mathexpr_value& value)
{
    return std::isfinite(value.x) && std::isfinite(value.y) && std::isfinite(value.z);
}

void checkText(const mathexpr_value& value)
{
    std::array<char, MATHEXPR_VALUE_TEXT_CAPACITY> text;
    std::size_t length = 0;
    expect(mathexpr_format_value_utf8(&value, 15, text.data(), text.size(), &length) == MATHEXPR_OK);
    expect(mathexpr_format_value_utf8(&value, MATHEXPR_EXACT_DIGITS, text.data(), text.size(), &length) == MATHEXPR_OK);
    if (isFinite(value))
    {
        mathexpr_expression* const reader = create();
        mathexpr_value read{};
        expect(mathexpr_evaluate_text_utf8(reader, text.data(), length, &read) == MATHEXPR_OK);
        expect(read.type == value.type && read.x == value.x);
        expect(read.type == MATHEXPR_NUMBER || (read.y == value.y && read.z == value.z));
        expect(mathexpr_destroy(reader) == MATHEXPR_OK);
    }
}

void checkFunction(const char* text, std::size_t size, const mathexpr_value& value)
{
    mathexpr_expression* const maker = create();
    mathexpr_function* function = nullptr;
    const mathexpr_status made = mathexpr_create_function_utf8(maker, text, size, nullptr, 0, &function);
    expect(made == (value.type == MATHEXPR_POINT ? MATHEXPR_OTHER_KIND : MATHEXPR_OK));
    expect(mathexpr_destroy(maker) == MATHEXPR_OK);
    double result = 0.0;
    if (made == MATHEXPR_OK)
    {
        expect(mathexpr_call_function(function, nullptr, &result) == MATHEXPR_OK);
        expect(result == value.x || std::isnan(value.x));
    }
    expect(mathexpr_destroy_function(function) == MATHEXPR_OK);
}

}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    mathexpr_expression* const expression = create();
    const char* const utf8 = reinterpret_cast<const char*>(data);
    Result first{mathexpr_set_expression_utf8(expression, utf8, size), {}};
    if (first.status == MATHEXPR_OK)
    {
        first.status = mathexpr_evaluate(expression, &first.value);
    }
    std::string read(utf8, size);
    read.erase(std::remove(read.begin(), read.end(), ' '), read.end());  // the language ignores blanks, also in names
    const bool isRandom = read.find("rand") != std::string::npos;
    if (first.status == MATHEXPR_OK)
    {
        checkText(first.value);
        if (!isRandom)
        {
            checkFunction(utf8, size, first.value);
        }
    }
    std::size_t offset = 0;
    const mathexpr_status encoding = mathexpr_check_utf8(utf8, size, &offset);
    expect(encoding == MATHEXPR_OK ? offset == 0 || offset == size : first.status == encoding && offset < size);

    const bool ascii = std::string_view(utf8, size)
                           .find_first_not_of("\t\n\r !\"#$%&'()*+,-./0123456789:;<=>?@"
                                              "ABCDEFGHIJKLMNOPQRSTUVWXYZ[\\]^_`"
                                              "abcdefghijklmnopqrstuvwxyz{|}~") == std::string_view::npos;
    if (ascii)
    {
        const std::basic_string<mathexpr_char16> utf16(data, data + size);
        mathexpr_expression* const other = create();
        Result second{mathexpr_set_expression_utf16(other, utf16.data(), utf16.size()), {}};
        if (second.status == MATHEXPR_OK)
        {
            second.status = mathexpr_evaluate(other, &second.value);
        }
        expect(first == second || first.value.x != first.value.x || first.value.y != first.value.y ||
               first.value.z != first.value.z || isRandom);
        expect(mathexpr_destroy(other) == MATHEXPR_OK);
    }

    mathexpr_value value{};
    mathexpr_set_variable_utf8(expression, utf8, size, &value, nullptr);
    mathexpr_get_variable_utf8(expression, utf8, size, &value);
    mathexpr_remove_variable_utf8(expression, utf8, size);
    std::basic_string<mathexpr_char16> units(size / sizeof(mathexpr_char16), 0);
    std::memcpy(units.data(), data, units.size() * sizeof(mathexpr_char16));
    mathexpr_set_expression_utf16(expression, units.data(), units.size());

    expect(mathexpr_drop_assignment(expression) == MATHEXPR_OK);
    expect(mathexpr_set_expression_utf8(expression, "1+1", MATHEXPR_ZERO_TERMINATED) == MATHEXPR_OK);
    expect(mathexpr_evaluate(expression, &value) == MATHEXPR_OK && value.x == 2.0);
    expect(mathexpr_destroy(expression) == MATHEXPR_OK);
    return 0;
}
