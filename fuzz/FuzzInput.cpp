// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FuzzInput.cpp - see FuzzInput.h.
#include "fuzz/FuzzInput.h"

#include "mathexpr/Vocabulary.h"

#include <array>
#include <limits>
#include <vector>

namespace {

constexpr std::uint8_t firstPiece = 128;
constexpr std::uint8_t anyFunction = 255;  // the next byte selects the function

/// Pieces that are not in the vocabulary.
constexpr std::array<const wchar_t*, 34> pieces{
    L"x",  L"y",    L"p",     L"q",       L"throws",   L"unknown",  L"a=",         L"x=",    L"pi=",
    L"pi", L"e",    L"1.5e+", L"[1,2,3]", L"[x,",      L"],",       L"2147483648", L"0.1",   L"1",
    L"0",  L"30",   L"..",    L"e+",      L"max(1,2,", L"fact(",    L"point(",     L"dist(", L"ill(p,q,",
    L"a",  L"9e99", L"+-",    L"--",      L"((((((((", L"))))))))", L"1e",
};

const std::vector<std::wstring>& functions()
{
    static const std::vector<std::wstring> all = [] {
        std::vector<std::wstring> names;
        mathexpr::VocabularyItem item;
        for (std::uint32_t index = 0; mathexpr::getVocabularyItem(index, item); ++index)
        {
            if (item.kind == mathexpr::VocabularyKind::Function)
            {
                names.push_back(std::wstring(item.symbol) + L"(");
            }
        }
        return names;
    }();
    return all;
}

}

std::wstring FuzzInput::text()
{
    std::wstring made;
    for (std::uint8_t next = byte(); next != 0; next = byte())
    {
        if (next < firstPiece)
        {
            made += static_cast<wchar_t>(next);
        }
        else if (next == anyFunction)
        {
            made += functions()[byte() % functions().size()];
        }
        else
        {
            made += pieces[(next - firstPiece) % pieces.size()];
        }
    }
    return made;
}

std::wstring FuzzInput::name()
{
    constexpr std::wstring_view beyondAscii = L"\u00E4\u0130\u03C0\u4E2D\uFFFD\u2028";
    std::wstring made;
    for (std::uint8_t next = byte(); next != 0; next = byte())
    {
        made += next < firstPiece ? static_cast<wchar_t>(next) : beyondAscii[next % beyondAscii.size()];
    }
    return made;
}

VALTYPE FuzzInput::value() noexcept
{
    constexpr double infinite = std::numeric_limits<double>::infinity();
    constexpr std::array<double, 16> numbers{0.0,  -0.0, 1.0,    -1.0,     0.5,       2.0, 30.0,   90.0,
                                             1e15, 1e-9, -1e308, infinite, -infinite, 2.5, 5e-324, 2147483647.5};
    VALTYPE made;
    made.type = static_cast<std::uint8_t>(below(2));
    made.flag = static_cast<std::uint8_t>(below(2));
    made.x = numbers[below(numbers.size())];
    made.y = numbers[below(numbers.size())];
    made.z = numbers[below(numbers.size())];
    return made;
}
