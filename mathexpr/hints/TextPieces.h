// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TextPieces.h - splits a typed text into words and marks, so that a correction can change one and keep the rest.
//
//     2 pi*(x)    "2" " pi" "*" "(" "x" ")"
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <vector>

namespace mathexpr {

struct TextPiece
{
    std::wstring blanks;  ///< Before the text.
    std::wstring text;    ///< A word, one mark, or nothing after the final blanks.
    bool isWord;

    bool isMark(wchar_t mark) const { return !isWord && text.size() == 1 && text.front() == mark; }
    bool isMarkOf(std::wstring_view marks) const
    {
        return std::any_of(marks.begin(), marks.end(), [this](wchar_t mark) { return isMark(mark); });
    }
};

/// Whether a character ends a word: an operator, a bracket, the comma, "=" or a blank.
bool endsWord(wchar_t character);

bool isDigit(wchar_t character);

/// Never empty: the last piece has no text.
std::vector<TextPiece> piecesOf(std::wstring_view text);

std::wstring textOf(const std::vector<TextPiece>& pieces);

}
