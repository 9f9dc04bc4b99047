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
#include <string_view>
#include <utility>
#include <vector>

namespace mathexpr {
namespace {

using Pieces = std::vector<TextPiece>;

/// Operators after which a product or quotient needs brackets, since they bind their right operand too tightly.
constexpr std::wstring_view tighter = L"/%^";

/// Length of the number at the beginning; a second decimal point ends it.
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

/// Adds brackets to a product if a neighbouring operator would take only one of its factors.
/// @param behind  index of the piece after the product
std::wstring asOperand(const Pieces& pieces, std::size_t at, std::size_t behind, const std::wstring& product)
{
    const bool isTorn = (at != 0 && pieces[at - 1].isMarkOf(tighter)) || pieces[behind].isMark(L'^');
    return isTorn ? L'(' + product + L')' : product;
}

std::wstring withSymbols(const std::wstring& text, const KnownNames&)
{
    return withOwnSymbols(text);
}

/// "max(1;2)"
std::wstring withSeparators(const std::wstring& text, const KnownNames& names)
{
    Pieces pieces = piecesOf(text);
    for (TextPiece& piece : pieces)
    {
        if (!names.isNamedValue(piece.text))
        {
            std::replace(piece.text.begin(), piece.text.end(), L';', L',');
        }
    }
    return textOf(pieces);
}

/// "1e5", "1E+5" and "1e-5". Neighbouring pieces are emptied, never removed: the last piece is the end.
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

/// Whether the piece begins a factor other than a number.
bool isFactor(const TextPiece& piece, const TextPiece& next, const KnownNames& names)
{
    return piece.isMark(L'(') ||
           (piece.isWord && (names.isNamedValue(piece.text) || (next.isMark(L'(') && names.isFunction(piece.text))));
}

/// The pieces of a text, with "2pi" as two.
Pieces factorsOf(const std::wstring& text, const KnownNames& names)
{
    Pieces pieces = piecesOf(text);
    for (std::size_t at = 0; at + 1 < pieces.size(); ++at)
    {
        const TextPiece next = pieces[at + 1];
        const std::size_t length = lengthOfNumber(pieces[at].text);
        const TextPiece rest{{}, pieces[at].text.substr(length), true};
        const bool isPowerOfTen = rest.text == L"e" && next.isMark(L'+');
        if (length != 0 && !isPowerOfTen && !isFactor(pieces[at], next, names) && isFactor(rest, next, names))
        {
            pieces[at].text.resize(length);
            pieces.insert(pieces.begin() + static_cast<std::ptrdiff_t>(at) + 1, rest);
        }
    }
    return pieces;
}

bool mayBeArgument(const TextPiece& piece, const KnownNames& names)
{
    return piece.isWord && (names.isNumber(piece.text) || names.isNamedValue(piece.text));
}

/// "Sin(30)", "Sin 30", "Pi" and "PI()".
std::wstring withCase(const std::wstring& text, const KnownNames& names)
{
    Pieces pieces = factorsOf(text, names);
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
        else if (names.isNamedValue(word))
        {
            continue;
        }
        else if (!constant.empty() && !isCall)
        {
            pieces[at].text = constant;
        }
        else if (isCall || mayBeArgument(pieces[at + 1], names))
        {
            const std::wstring_view function = names.functionIgnoringCase(word);
            pieces[at].text = function.empty() ? word : std::wstring(function);
        }
    }
    return textOf(pieces);
}

/// Index of the piece after an argument without brackets, which may be a product such as "2x"; first if there is no
/// argument.
std::size_t behindArgument(const Pieces& pieces, std::size_t first, const KnownNames& names)
{
    std::size_t behind = first + (mayBeArgument(pieces[first], names) ? 1 : 0);
    while (behind != first && names.isNumber(pieces[first].text) && mayBeArgument(pieces[behind], names))
    {
        ++behind;
    }
    return behind;
}

/// "sin 30", "ln x", "sin 2x", "sin -30", "sin30" and "Sin30".
std::wstring withArgumentBrackets(const std::wstring& text, const KnownNames& names)
{
    Pieces pieces = factorsOf(text, names);
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
            const std::size_t first = at + (next.isMark(L'-') ? 2 : 1);
            const std::size_t behind = behindArgument(pieces, first, names);
            if (behind != first)
            {
                next.blanks.clear();
                next.text.insert(0, L"(");
                pieces[behind - 1].text += L')';
                at = behind - 1;
            }
            continue;
        }
        const std::size_t nameLength = word.find_last_not_of(L"0123456789.") + 1;  // 0 for a number
        const std::wstring function(names.functionIgnoringCase(std::wstring_view(word).substr(0, nameLength)));
        if (nameLength != word.size() && !function.empty())
        {
            pieces[at].text = function + L'(' + word.substr(nameLength) + L')';
        }
    }
    return textOf(pieces);
}

/// Inserts the multiplication signs in "2pi", "2 pi", "2sin(30)", "2(3)", "x(3)", "(1)(2)", "(1)2" and "[1,2](3)".
/// Adjacent numbers are one number: "1 000".
void multiply(Pieces& pieces, const KnownNames& names)
{
    for (std::size_t at = 0; at + 2 < pieces.size(); ++at)
    {
        TextPiece& piece = pieces[at];
        const TextPiece& next = pieces[at + 1];
        const bool isBracket = piece.isMarkOf(L")]");
        const bool isValue = names.isNumber(piece.text) || names.isNamedValue(piece.text);
        if ((isBracket && names.isNumber(next.text)) ||
            ((isBracket || isValue) && isFactor(next, pieces[at + 2], names)))
        {
            piece.text += L'*';
        }
    }
}

std::wstring withMultiplication(const std::wstring& text, const KnownNames& names)
{
    Pieces pieces = factorsOf(text, names);
    multiply(pieces, names);
    return textOf(pieces);
}

/// Adjacent factors, as in 2x(3)^2.
struct Product
{
    std::size_t behind;  ///< Index of the piece after the last factor.
    bool isNew;          ///< Whether a multiplication sign was inserted between two of them.
};

/// @param multiplied  the same pieces with multiplication signs
Product productAt(std::size_t begin, const Pieces& typed, const Pieces& multiplied)
{
    Product product{begin, false};
    for (int depth = 0; product.behind + 1 < typed.size(); ++product.behind)
    {
        const TextPiece& piece = typed[product.behind];
        depth -= piece.isMarkOf(L")]") ? 1 : 0;
        const bool isFactor = piece.isWord || piece.isMarkOf(L"([)]^");
        if (depth < 0 || (depth == 0 && !isFactor))
        {
            break;
        }
        product.isNew = product.isNew || (depth == 0 && piece.text != multiplied[product.behind].text);
        depth += piece.isMarkOf(L"([") ? 1 : 0;
    }
    return product;
}

/// Like withMultiplication, but a product typed without a sign is kept together: "1/2pi" is 1/(2*pi).
std::wstring withProducts(const std::wstring& text, const KnownNames& names)
{
    const Pieces typed = factorsOf(text, names);
    Pieces multiplied = typed;
    multiply(multiplied, names);
    Pieces together = multiplied;
    for (std::size_t at = 1; at < typed.size(); ++at)
    {
        const Product product = productAt(at, typed, multiplied);
        if (typed[at - 1].isMarkOf(tighter) && product.isNew)
        {
            together[at].text.insert(0, L"(");
            together[product.behind - 1].text += L')';
        }
    }
    return textOf(together);
}

/// "15%", unless another operand follows.
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

// Later rules see the output of earlier ones: raised digits have become powers, a pasted pi a name.
// clang-format off
constexpr Rule rules[] = {
//   rule                    reason
//   ----------------------- --------------------
    {withSymbols,            Hint::DidYouMean},
    {withSeparators,         Hint::DidYouMean},
    {withExponents,          Hint::Exponent},
    {withBracketsBeforePlus, Hint::PowerOfTen},
    {withCase,               Hint::DidYouMean},
    {withArgumentBrackets,   Hint::DidYouMean},
    {withMultiplication,     Hint::Multiplication},
    {withoutPercent,         Hint::Percent},
};
// clang-format on

/// Positions at which a comma can only be part of a number: outside all brackets, in a call with too many arguments,
/// and between arguments that are separated by semicolons.
std::vector<bool> decimalCommas(const std::wstring& text, const MTFailure& failure, MTSpan typedSpan)
{
    const bool hasSemicolons = text.find(L';') != std::wstring::npos;
    const bool hasTooMany =
        failure.kind == ExpressionDiagnostic::Kind::Parsing && failure.code == ParsingError::NoOverload;
    const std::size_t callEnd = hasTooMany ? std::min(text.find(L')', typedSpan.end), text.size()) : 0;
    std::vector<bool> areDecimal;
    int depth = 0;
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        depth += text[at] == L'(' || text[at] == L'[' ? 1 : 0;
        depth -= text[at] == L')' || text[at] == L']' ? 1 : 0;
        const bool isInCall = at >= typedSpan.end && at < callEnd;
        areDecimal.push_back(depth == 0 || hasSemicolons || isInCall);
    }
    return areDecimal;
}

}

Correction correct(const std::wstring& typed, const MTFailure& failure, MTSpan typedSpan, const KnownNames& names)
{
    const std::wstring plain = withPlainCharacters(typed);
    NumberReadings readings = rewriteNumbers(plain, decimalCommas(plain, failure, typedSpan));
    const bool isAmbiguousNumber = !readings.other.empty();
    Correction correction;
    bool hasReason = plain != typed;
    const auto noteReason = [&](Hint::Id reason) {
        if (correction.reason != Hint::PowerOfTen)  // this mistake cannot be explained by a corrected text
        {
            correction.reason = hasReason && reason != Hint::PowerOfTen ? Hint::DidYouMean : reason;
        }
        hasReason = true;
    };
    if (readings.text != plain)
    {
        noteReason(Hint::DecimalPoint);
    }
    for (const Rule& rule : rules)
    {
        std::wstring rewritten = rule.apply(readings.text, names);
        if (!readings.other.empty())
        {
            readings.other = rule.apply(readings.other, names);
        }
        else if (rule.apply == withMultiplication)
        {
            std::wstring together = withProducts(readings.text, names);
            readings.other = together != rewritten ? together : std::wstring();
        }
        if (rewritten != readings.text)
        {
            noteReason(rule.reason);
            readings.text = std::move(rewritten);
        }
    }
    if (readings.text != typed)
    {
        correction.text = std::move(readings.text);
        correction.other = std::move(readings.other);
        correction.choice = isAmbiguousNumber ? Hint::TwoReadings : Hint::DidYouMean;
    }
    return correction;
}

}
