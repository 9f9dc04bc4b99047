// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TelltaleExpressions.h - for each message, an expression whose failure shows it.
#pragma once

#include <cstdint>

struct TelltaleExpression
{
    std::uint32_t message;
    const wchar_t* text;
};

// clang-format off
inline constexpr TelltaleExpression telltaleExpressions[] = {
    // Number  Text
    // ------  --------------------------
    {       1, L"unknown+1"},
    {       2, L"(1+2"},
    {       3, L"1+"},
    {       4, L"foo(1)"},
    {       5, L"1+[1,2,3]"},
    {       6, L"asin(2)"},
    {       7, L"round(3e+9)"},
    {       8, L"ln(0)"},
    {       9, L"log(0)"},
    {      10, L"1/0"},
    {      11, L"1/[1,2,3]"},
    {      12, L"sqrt(0)"},
    {      13, L"[1,2,3]^2"},
    {      14, L"dist(1,2)"},
    {      15, L"nor(1,2)"},
    {      16, L"vec(1,2)"},
    {      17, L"vec1(1,2)"},
    {      18, L"ill(1,2,3,4)"},
    {      19, L"2147483648"},
};
// clang-format on
