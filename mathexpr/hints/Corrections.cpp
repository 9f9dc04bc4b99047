// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Corrections.cpp - the rules, and the order in which they run.
#include "mathexpr/hints/Corrections.h"

#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/hints/NumberLiterals.h"
#include "mathexpr/hints/PastedCharacters.h"
#include "mathexpr/hints/TextPieces.h"

#include <algorithm>
#include <iterator>
#include <string_view>
#include <utility>
#include <vector>

namespace mathexpr {
namespace {

using Pieces = std::vector<TextPiece>;

/// Operators whose right operand a product or quotient would be torn from.
constexpr std::wstring_view tighter = L"/%^";

/// How many characters at the beginning are a number; a second decimal point ends it.
std::size_t lengthOfNumber(std::wstring_view word)
{
    std::size_t length = 0;
    bool pointSeen = false;
    while (length < word.size() && (isDigit(word[length]) || (word[length] == L'.' && !pointSeen)))
    {
        pointSeen = pointSeen || word[length] == L'.';
        ++length;
    }
    return length == 1 && pointSeen ? 0 : length;
}

/// Puts a product in brackets where its neighbours would take it apart.
/// @param behind  the index of the piece behind it
std::wstring asOperand(const Pieces& pieces, std::size_t at, std::size_t behind, const std::wstring& product)
{
    const bool isTorn = (at != 0 && pieces[at - 1].isMarkOf(tighter)) || pieces[behind].isMark(L'^');
    return isTorn ? L'(' + product + L')' : product;
}

std::wstring withSymbols(const std::wstring& text, const KnownNames&)
{
    return withOwnSymbols(text);
}

/// "1e5", "1E+5" and "1e-5". Neighbouring pieces are emptied, never removed: the last one is the end.
std::wstring withExponents(const std::wstring& text, const KnownNames& names)
{
    Pieces pieces = piecesOf(text);
    for (std::size_t at = 0; at + 1 < pieces.size(); ++at)
    {
        const std::wstring word = pieces[at].text;
        const std::size_t length = pieces[at].isWord ? lengthOfNumber(word) : 0;
        if (length == 0 || length == word.size() || (word[length] != L'e' && word[length] != L'E'))
        {
            continue;
        }
        const std::wstring mantissa = word.substr(0, length);
        const std::wstring exponent = word.substr(length + 1);
        if (!exponent.empty())
        {
            if (std::all_of(exponent.begin(), exponent.end(), isDigit) && !names.isNamedValue(word))
            {
                std::wstring power = mantissa;
                power.append(L"e+").append(exponent);
                pieces[at].text = asOperand(pieces, at, at + 1, power);
            }
            continue;
        }
        const bool isPlus = pieces[at + 1].isMark(L'+') && word[length] == L'E';
        if ((!isPlus && !pieces[at + 1].isMark(L'-')) || !pieces[at + 2].isWord ||
            !std::all_of(pieces[at + 2].text.begin(), pieces[at + 2].text.end(), isDigit))
        {
            continue;
        }
        std::wstring power = mantissa;
        power += isPlus ? L"e+" : L"*10^-";
        power += pieces[at + 2].text;
        pieces[at].text = asOperand(pieces, at, at + 3, power);
        pieces[at + 1].text.clear();
        pieces[at + 2] = {{}, {}, false};
    }
    return textOf(pieces);
}

/// A name that ends in "e" before "+".
std::wstring withBracketsBeforePlus(const std::wstring& text, const KnownNames& names)
{
    Pieces pieces = piecesOf(text);
    for (std::size_t at = 0; at + 1 < pieces.size(); ++at)
    {
        const std::wstring& word = pieces[at].text;
        if (word.back() == L'e' && pieces[at + 1].isMark(L'+') && names.isNamedValue(word))
        {
            pieces[at].text = L'(' + pieces[at].text + L')';
        }
    }
    return textOf(pieces);
}

/// "Sin(30)", "Pi" and "PI()".
std::wstring withCase(const std::wstring& text, const KnownNames& names)
{
    Pieces pieces = piecesOf(text);
    for (std::size_t at = 0; at + 1 < pieces.size(); ++at)
    {
        const std::wstring word = pieces[at].text;
        if (!pieces[at].isWord || names.isFunction(word))
        {
            continue;
        }
        const std::wstring constant(names.constantIgnoringCase(word));
        const bool isCall = pieces[at + 1].isMark(L'(');
        if (isCall && pieces[at + 2].isMark(L')') && !constant.empty())
        {
            pieces[at].text = names.isNamedValue(word) ? word : constant;
            pieces[at + 1].text.clear();
            pieces[at + 2].text.clear();
        }
        else if (isCall)
        {
            const std::wstring_view function = names.functionIgnoringCase(word);
            pieces[at].text = function.empty() ? word : std::wstring(function);
        }
        else if (!constant.empty() && !names.isNamedValue(word))
        {
            pieces[at].text = constant;
        }
    }
    return textOf(pieces);
}

/// "sin 30", "ln x" and "sin30".
std::wstring withArgumentBrackets(const std::wstring& text, const KnownNames& names)
{
    Pieces pieces = piecesOf(text);
    for (std::size_t at = 0; at + 1 < pieces.size(); ++at)
    {
        const std::wstring word = pieces[at].text;
        TextPiece& next = pieces[at + 1];
        if (!pieces[at].isWord || names.isNamedValue(word) || next.isMark(L'('))
        {
            continue;
        }
        if (names.isFunction(word))
        {
            if (next.isWord && (names.isNumber(next.text) || names.isNamedValue(next.text)))
            {
                next = {{}, L'(' + next.text + L')', false};
            }
            continue;
        }
        const std::size_t nameLength = word.find_last_not_of(L"0123456789.") + 1;  // 0 for a number
        if (nameLength != word.size() && names.isFunction(std::wstring_view(word).substr(0, nameLength)))
        {
            pieces[at].text = word.substr(0, nameLength) + L'(' + word.substr(nameLength) + L')';
        }
    }
    return textOf(pieces);
}

/// "2pi", "2 pi", "2sin(30)", "2(3)", "x(3)", "(1)(2)", "(1)2" and "[1,2](3)".
std::wstring withMultiplication(const std::wstring& text, const KnownNames& names)
{
    Pieces pieces = piecesOf(text);
    const auto isFactor = [&](const std::wstring& word, const TextPiece& next) {
        return next.isMark(L'(') ? names.isFunction(word) : names.isNamedValue(word);
    };
    for (std::size_t at = 0; at + 1 < pieces.size(); ++at)
    {
        const std::wstring word = pieces[at].text;
        const TextPiece& next = pieces[at + 1];
        if (pieces[at].isMarkOf(L")]") && (next.isWord || next.isMark(L'(')))
        {
            pieces[at].text += L'*';
        }
        if (!pieces[at].isWord || names.isFunction(word))
        {
            continue;
        }
        const bool isValue = names.isNumber(word) || names.isNamedValue(word);
        if (isValue && (next.isMark(L'(') || (next.isWord && isFactor(next.text, pieces[at + 2]))))
        {
            pieces[at].text += L'*';
        }
        const std::size_t length = lengthOfNumber(word);
        const bool isPowerOfTen = next.isMark(L'+') && word.substr(length) == L"e";
        if (!isValue && !isPowerOfTen && length != 0 && isFactor(word.substr(length), next))
        {
            pieces[at].text.insert(length, 1, L'*');
        }
    }
    return textOf(pieces);
}

/// "15%", where no other operand follows.
std::wstring withoutPercent(const std::wstring& text, const KnownNames& names)
{
    Pieces pieces = piecesOf(text);
    for (std::size_t at = 0; at + 2 < pieces.size(); ++at)
    {
        const TextPiece& behind = pieces[at + 2];
        if (pieces[at].isWord && pieces[at + 1].isMark(L'%') && (behind.text.empty() || behind.isMarkOf(L")],+*/")) &&
            names.isNumber(pieces[at].text))
        {
            pieces[at].text = asOperand(pieces, at, at + 2, pieces[at].text + L"/100");
            pieces[at + 1].text.clear();
        }
    }
    return textOf(pieces);
}

struct Rule
{
    std::wstring (*apply)(const std::wstring&, const KnownNames&);
    Hint::Id reason;
};

// Later rules read what earlier ones have written: raised digits are powers, a pasted pi is a name.
// clang-format off
constexpr Rule rules[] = {
//   rule                    reason
//   ----------------------- --------------------
    {withExponents,          Hint::Exponent},
    {withBracketsBeforePlus, Hint::PowerOfTen},
    {withCase,               Hint::DidYouMean},
    {withArgumentBrackets,   Hint::DidYouMean},
    {withMultiplication,     Hint::Multiplication},
    {withoutPercent,         Hint::Percent},
};
// clang-format on

/// Where a comma can only belong to a number: outside of all brackets, and in a call that has too many arguments.
std::pair<std::size_t, std::size_t> decimalCommas(const std::wstring& text, const MTFailure& failure, MTSpan typedSpan)
{
    const bool isParsing = failure.kind == ExpressionDiagnostic::Kind::Parsing;
    if (isParsing && failure.code == ParsingError::SeparatorOutsideBrackets)
    {
        return {0, text.size()};
    }
    if (isParsing && failure.code == ParsingError::NoOverload)
    {
        return {typedSpan.end, std::min(text.find(L')', typedSpan.end), text.size())};
    }
    return {0, 0};
}

}

Correction correct(const std::wstring& typed, const MTFailure& failure, MTSpan typedSpan, const KnownNames& names)
{
    const auto [commasBegin, commasEnd] = decimalCommas(typed, failure, typedSpan);
    NumberReadings readings = rewriteNumbers(typed, commasBegin, commasEnd);
    Correction correction;
    bool hasReason = false;
    const auto noteReason = [&](Hint::Id reason) {
        correction.reason = hasReason ? Hint::DidYouMean : reason;
        hasReason = true;
    };
    if (readings.text != typed)
    {
        noteReason(commasBegin == commasEnd ? Hint::DidYouMean : Hint::DecimalPoint);
    }
    const auto rewrite = [&](const Rule& rule) {
        std::wstring rewritten = rule.apply(readings.text, names);
        if (rewritten != readings.text)
        {
            noteReason(rule.reason);
            readings.text = std::move(rewritten);
        }
        if (!readings.other.empty())
        {
            readings.other = rule.apply(readings.other, names);
        }
    };
    rewrite({withSymbols, Hint::DidYouMean});
    std::for_each(std::begin(rules), std::end(rules), rewrite);
    if (readings.text != typed)
    {
        correction.text = std::move(readings.text);
        correction.other = std::move(readings.other);
    }
    return correction;
}

}
