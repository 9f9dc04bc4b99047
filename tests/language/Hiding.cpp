// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Hiding.cpp - see Hiding.h.
#include "tests/language/Hiding.h"

#include <algorithm>
#include <cstdlib>
#include <optional>
#include <string_view>

namespace {

constexpr std::wstring_view boundaries = L"+-*/^%<>=!&|(),[]";

bool isBoundary(wchar_t character)
{
    return boundaries.find(character) != std::wstring_view::npos;
}

/// The value of digits with at most one decimal point; nothing for other tokens.
std::optional<double> numberOf(std::wstring_view token)
{
    std::string digits;
    for (const wchar_t character : token)
    {
        if (character != L'.' && (character < L'0' || character > L'9'))
        {
            return std::nullopt;
        }
        digits.push_back(static_cast<char>(character));
    }
    if (digits.empty() || std::count(digits.begin(), digits.end(), '.') > 1)
    {
        return std::nullopt;
    }
    return std::strtod(digits.c_str(), nullptr);  // the tests run in the C locale
}

std::wstring nameFor(const VALTYPE& value, Bindings& host)
{
    std::wstring name = L"hidden" + std::to_wstring(host.size());
    host[name] = value;
    return name;
}

std::size_t tokenEnd(std::wstring_view text, std::size_t start)
{
    return std::min(text.find_first_of(boundaries, start), text.size());
}

/// Whether the text that follows a token makes it a call or an assignment target.
bool continues(std::wstring_view rest)
{
    return !rest.empty() && (rest[0] == L'(' || rest[0] == L'[' || (rest[0] == L'=' && rest.substr(0, 2) != L"=="));
}

std::wstring hideNumbers(std::wstring_view text, Bindings& host)
{
    std::wstring hidden;
    for (std::size_t i = 0; i < text.size();)
    {
        if (isBoundary(text[i]))
        {
            hidden.push_back(text[i++]);
            continue;
        }
        const std::size_t end = tokenEnd(text, i);
        const std::wstring_view token = text.substr(i, end - i);
        const auto number = numberOf(token);
        if (number && !continues(text.substr(end)))
        {
            VALTYPE value;
            value.x = *number;
            hidden += nameFor(value, host);
        }
        else
        {
            hidden += token;
        }
        i = end;
    }
    return hidden;
}

/// Reads "[number,number,number]" with optional signs, if a point literal begins here.
std::optional<VALTYPE> pointAt(std::wstring_view text, std::size_t& end)
{
    VALTYPE value;
    value.type = 1;
    end = 1;
    for (double* const coordinate : {&value.x, &value.y, &value.z})
    {
        const bool negative = end < text.size() && text[end] == L'-';
        end += negative ? 1 : 0;
        const std::size_t tokenStop = tokenEnd(text, end);
        const auto number = numberOf(text.substr(end, tokenStop - end));
        const wchar_t wanted = coordinate == &value.z ? L']' : L',';
        if (!number || tokenStop == text.size() || text[tokenStop] != wanted)
        {
            return std::nullopt;
        }
        *coordinate = negative ? -*number : *number;
        end = tokenStop + 1;
    }
    return value;
}

std::wstring hidePoints(std::wstring_view text, Bindings& host)
{
    std::wstring hidden;
    for (std::size_t i = 0; i < text.size();)
    {
        std::size_t length = 0;
        if (text[i] == L'[' && (i == 0 || isBoundary(text[i - 1])))
        {
            const std::wstring_view rest = text.substr(i);
            const auto point = pointAt(rest, length);
            const bool standsAlone = point && (length == rest.size() || isBoundary(rest[length]));
            if (standsAlone && !continues(rest.substr(length)))
            {
                hidden += nameFor(*point, host);
                i += length;
                continue;
            }
        }
        hidden.push_back(text[i++]);
    }
    return hidden;
}

}

std::wstring hideOperands(const std::wstring& text, Hidden what, Bindings& host)
{
    std::wstring stripped = text;
    stripped.erase(std::remove(stripped.begin(), stripped.end(), L' '), stripped.end());
    return what == Hidden::Numbers ? hideNumbers(stripped, host) : hidePoints(stripped, host);
}
