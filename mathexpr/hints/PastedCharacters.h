// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PastedCharacters.h - replaces characters of documents and other programs by the language's own symbols.
#pragma once

#include <string>
#include <string_view>

namespace mathexpr {

/// Precedes its operand: \u221A16.
inline constexpr wchar_t rootSign = L'\u221A';

/// Replaces full-width forms by ASCII, and variants of multiplication, division, minus and blank by the language's
/// characters. Positions do not change.
std::wstring withPlainCharacters(std::wstring_view text);

/// Replaces the others by the language's symbols: ^2 for a raised 2, sqrt(16) for a root sign, ^ for two asterisks, !=
/// for <>. A degree sign is removed, because angles are in degrees.
std::wstring withOwnSymbols(std::wstring_view text);

}
