// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PastedCharacters.h - characters that documents and other programs write where the language has a symbol of its own.
#pragma once

#include <string>
#include <string_view>

namespace mathexpr {

/// Stands right before its operand: \u221A16.
inline constexpr wchar_t rootSign = L'\u221A';

/// The text with ASCII for full-width forms, for signs of multiplication, division and minus, and for blanks. Each
/// character stays where it is.
std::wstring withPlainCharacters(std::wstring_view text);

/// The text with the language's own symbols for the others: ^2 for a raised 2, sqrt(16) for a root sign, ^ for two
/// asterisks, != for <>. A degree sign goes, because angles are in degrees.
std::wstring withOwnSymbols(std::wstring_view text);

}
