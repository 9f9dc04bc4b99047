// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserNumber.h - from the digits of a number to its value.
#pragma once

#include <string>
#include <string_view>

/// Reads digits with at most one decimal point, the same in every locale: the nearest double, infinity for a number too
/// large, 0 for a decimal point alone.
/// @param scratch  memory that is used again from call to call
double readNumber(std::wstring_view number, wchar_t decimalPoint, std::string& scratch);
