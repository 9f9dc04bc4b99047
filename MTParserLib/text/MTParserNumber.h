// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserNumber.h - converts digits to a value.
#pragma once

#include <string>
#include <string_view>

/// Reads digits with at most one decimal point, independent of the locale. The result is the nearest double, infinity
/// for a number that is too large, and 0 for a decimal point alone.
/// @param scratch  memory that is reused from call to call
double readNumber(std::wstring_view number, wchar_t decimalPoint, std::string& scratch);
