// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NumberLiterals.cpp - splits a literal at its marks. Which of them is the decimal mark depends on their kind, their
// number, and the number of digits between them.
#include "mathexpr/hints/NumberLiterals.h"

#include "mathexpr/hints/PastedCharacters.h"
#include "mathexpr/hints/TextPieces.h"

#include <algorithm>
#include <cstddef>

namespace mathexpr {
namespace {

constexpr std::size_t thousand = 3;  // digits
constexpr wchar_t typographicApostrophe = L'\u2019';

/// The digits of a literal in groups, and the marks between the groups.
struct Literal
{
    std::vector<std::wstring> digits;
    std::wstring marks;

    /// Whether the first groupCount groups are groups of thousands.
    bool isGrouped(std::size_t groupCount) const
    {
        const auto isGroup = [](const std::wstring& group) { return group.size() == thousand; };
        return digits.front().size() <= thousand &&
               std::all_of(digits.begin() + 1, digits.begin() + static_cast<std::ptrdiff_t>(groupCount), isGroup);
    }

    std::wstring joined(std::size_t groupCount) const
    {
        std::wstring all;
        for (std::size_t index = 0; index < groupCount; ++index)
        {
            all += digits[index];
        }
        return all;
    }
};

Literal literalOf(std::wstring_view text)
{
    Literal literal;
    literal.digits.emplace_back();
    for (const wchar_t character : text)
    {
        if (isDigit(character))
        {
            literal.digits.back() += character;
            continue;
        }
        literal.marks += character == typographicApostrophe ? L'\'' : character;
        literal.digits.emplace_back();
    }
    return literal;
}

/// The possible readings of a literal; the literal itself if it has none, or is already valid.
NumberReadings readingsOf(std::wstring_view text)
{
    const Literal literal = literalOf(text);
    const std::size_t groupCount = literal.digits.size();
    NumberReadings unchanged{std::wstring(text), {}};
    if (literal.marks.empty() || literal.marks == L".")
    {
        return unchanged;
    }
    const wchar_t last = literal.marks.back();
    const auto lastCount = std::count(literal.marks.begin(), literal.marks.end(), last);
    const std::wstring whole = literal.joined(groupCount);
    if (last != L'\'' && lastCount == 1)  // a decimal mark, alone or after marks of thousands
    {
        const std::wstring decimal = literal.joined(groupCount - 1) + L'.' + literal.digits.back();
        const std::wstring thousandsMarks = literal.marks.substr(0, groupCount - 2);
        if (!thousandsMarks.empty())
        {
            const bool isOneKind = thousandsMarks.find_first_not_of(thousandsMarks.front()) == std::wstring::npos;
            return isOneKind && literal.isGrouped(groupCount - 1) ? NumberReadings{decimal, {}} : unchanged;
        }
        const bool mayBeThousands = literal.isGrouped(groupCount) && literal.digits.front().front() != L'0';
        return {decimal, mayBeThousands ? whole : std::wstring()};
    }
    const bool isOneKind = lastCount == static_cast<std::ptrdiff_t>(literal.marks.size());
    return isOneKind && literal.isGrouped(groupCount) ? NumberReadings{whole, {}} : unchanged;
}

/// Whether a number may begin after a character.
bool mayPrecedeNumber(wchar_t character)
{
    return endsWord(character) || character == L';' || character == rootSign;
}

}

NumberReadings rewriteNumbers(std::wstring_view text, const std::vector<bool>& areDecimal)
{
    NumberReadings rewritten;
    const auto isMark = [&](std::size_t at) {
        return text[at] == L'.' || text[at] == L'\'' || text[at] == typographicApostrophe ||
               (text[at] == L',' && areDecimal[at]);
    };
    bool isAmbiguous = false;
    for (std::size_t at = 0; at < text.size();)
    {
        if (!isDigit(text[at]) || (at != 0 && !mayPrecedeNumber(text[at - 1])))
        {
            rewritten.text += text[at];
            rewritten.other += text[at];
            ++at;
            continue;
        }
        std::size_t stop = at + 1;
        while (stop < text.size() &&
               (isDigit(text[stop]) || (isMark(stop) && stop + 1 < text.size() && isDigit(text[stop + 1]))))
        {
            ++stop;
        }
        const NumberReadings readings = readingsOf(text.substr(at, stop - at));
        rewritten.text += readings.text;
        rewritten.other += readings.other.empty() ? readings.text : readings.other;
        isAmbiguous = isAmbiguous || !readings.other.empty();
        at = stop;
    }
    if (!isAmbiguous)
    {
        rewritten.other.clear();
    }
    return rewritten;
}

}
