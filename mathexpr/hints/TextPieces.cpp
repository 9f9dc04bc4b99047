// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TextPieces.cpp - see TextPieces.h.
#include "mathexpr/hints/TextPieces.h"

#include <algorithm>

namespace mathexpr {
namespace {

constexpr std::wstring_view marks = L"+-*/^%<>=!&|()[],";

}

bool endsWord(wchar_t character)
{
    return character == L' ' || marks.find(character) != std::wstring_view::npos;
}

bool isDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}

std::vector<TextPiece> piecesOf(std::wstring_view text)
{
    std::vector<TextPiece> pieces;
    for (;;)
    {
        const std::size_t begin = std::min(text.find_first_not_of(L' '), text.size());
        TextPiece piece{std::wstring(text.substr(0, begin)), {}, false};
        text.remove_prefix(begin);
        if (text.empty())
        {
            pieces.push_back(piece);
            return pieces;
        }
        const auto wordEnd = std::find_if(text.begin(), text.end(), endsWord);
        piece.isWord = wordEnd != text.begin();
        piece.text = text.substr(0, piece.isWord ? static_cast<std::size_t>(wordEnd - text.begin()) : 1);
        text.remove_prefix(piece.text.size());
        pieces.push_back(piece);
    }
}

std::wstring textOf(const std::vector<TextPiece>& pieces)
{
    std::wstring text;
    for (const TextPiece& piece : pieces)
    {
        text += piece.blanks + piece.text;
    }
    return text;
}

}
