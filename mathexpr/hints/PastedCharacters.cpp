// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PastedCharacters.cpp - tables of characters, and the characters that depend on their context: raised digits,
// fractions, pi and the root sign.
#include "mathexpr/hints/PastedCharacters.h"

#include "mathexpr/hints/TextPieces.h"

#include <algorithm>
#include <iterator>

namespace mathexpr {
namespace {

struct Twin
{
    wchar_t written;
    wchar_t meant;
};

struct Spelling
{
    wchar_t written;
    std::wstring_view meant;
};

// clang-format off
constexpr Twin twins[] = {
//   written    meant
//   ---------- -----
    {L'\t',     L' '},
    {L'\u00A0', L' '},  // no-break space
    {L'\u2009', L' '},  // thin space
    {L'\u202F', L' '},  // narrow no-break space
    {L'\u3000', L' '},  // ideographic space
    {L'\u00D7', L'*'},  // multiplication sign
    {L'\u00B7', L'*'},  // middle dot
    {L'\u22C5', L'*'},  // dot operator
    {L'\u2217', L'*'},  // asterisk operator
    {L'\u2022', L'*'},  // bullet
    {L'\u00F7', L'/'},  // division sign
    {L'\u2215', L'/'},  // division slash
    {L'\u2044', L'/'},  // fraction slash
    {L'\u2212', L'-'},  // minus sign
    {L'\u2010', L'-'},  // hyphen
    {L'\u2011', L'-'},  // no-break hyphen
    {L'\u2013', L'-'},  // en dash
    {L'\u2014', L'-'},  // em dash
};

constexpr Spelling signs[] = {
//   written    meant
//   ---------- -----
    {L'\u2264', L"<="},  // less-than or equal to
    {L'\u2265', L">="},  // greater-than or equal to
    {L'\u2260', L"!="},  // not equal to
    {L'\u00B0', L""},    // degree sign
};

constexpr Spelling raised[] = {
//   written    meant
//   ---------- -----
    {L'\u2070', L"0"},
    {L'\u00B9', L"1"},
    {L'\u00B2', L"2"},
    {L'\u00B3', L"3"},
    {L'\u2074', L"4"},
    {L'\u2075', L"5"},
    {L'\u2076', L"6"},
    {L'\u2077', L"7"},
    {L'\u2078', L"8"},
    {L'\u2079', L"9"},
    {L'\u207B', L"-"},
};

constexpr Spelling fractions[] = {
//   written    meant
//   ---------- ------
    {L'\u00BD', L".5"},
    {L'\u00BC', L".25"},
    {L'\u00BE', L".75"},
    {L'\u215B', L".125"},
    {L'\u215C', L".375"},
    {L'\u215D', L".625"},
    {L'\u215E', L".875"},
};
// clang-format on

constexpr wchar_t smallPi = L'\u03C0';

template <class Row, std::size_t size>
const Row* findIn(const Row (&table)[size], wchar_t character)
{
    const auto* const found = std::find_if(std::begin(table), std::end(table),
                                           [character](const Row& row) { return row.written == character; });
    return found == std::end(table) ? nullptr : found;
}

wchar_t plain(wchar_t character)
{
    if (character >= L'\uFF01' && character <= L'\uFF5E')  // full-width forms, in the order of ASCII
    {
        return static_cast<wchar_t>(character - L'\uFF01' + L'!');
    }
    const Twin* const twin = findIn(twins, character);
    return twin != nullptr ? twin->meant : character;
}

/// Start of the last operand of a text, which is a word, or brackets and the function before them.
std::size_t beginOfLastOperand(std::wstring_view text)
{
    std::size_t end = text.size();
    if (!text.empty() && text.back() == L')')
    {
        int open = 1;
        while (open != 0 && --end != 0)
        {
            open += text[end - 1] == L')' ? 1 : 0;
            open -= text[end - 1] == L'(' ? 1 : 0;
        }
        end -= end != 0 ? 1 : 0;
    }
    const auto mark = std::find_if(text.rend() - static_cast<std::ptrdiff_t>(end), text.rend(), endsWord);
    return static_cast<std::size_t>(text.rend() - mark);
}

/// Whether a minus is a sign, not a subtraction.
bool isSign(std::wstring_view text, std::size_t at)
{
    if (text[at] != L'-')
    {
        return false;
    }
    const std::size_t before = text.substr(0, at).find_last_not_of(L' ');
    return before == std::wstring_view::npos ||
           std::wstring_view(L"+-*/^%<>=!&|([,").find(text[before]) != std::wstring_view::npos;
}

/// Appends a power. After a sign the power gets brackets, as in -(2^2), since the language reads -2^2 as (-2)^2.
void appendPower(std::wstring& text, const std::wstring& power)
{
    const std::size_t base = beginOfLastOperand(text);
    const bool isNegated = base != 0 && base != text.size() && isSign(text, base - 1);
    if (isNegated)
    {
        text.insert(base, L"(");
    }
    text += L'^' + power + (isNegated ? L")" : L"");
}

/// Inserts a multiplication sign if a symbol would otherwise merge with the preceding word.
std::wstring_view timesBehind(const std::wstring& text)
{
    return !text.empty() && !endsWord(text.back()) && text.back() != rootSign ? L"*" : L"";
}

/// The same for a word or a bracket after a symbol.
std::wstring_view timesBefore(std::wstring_view rest)
{
    return !rest.empty() && (!endsWord(rest.front()) || rest.front() == L'(') ? L"*" : L"";
}

std::wstring withRoots(std::wstring text)
{
    for (std::size_t at = text.find(rootSign); at != std::wstring::npos; at = text.find(rootSign, at))
    {
        const std::size_t operand = text.find_first_not_of(L' ', at + 1);
        if (operand != std::wstring::npos && text[operand] != L'(')
        {
            const auto end = std::find_if(text.begin() + static_cast<std::ptrdiff_t>(operand), text.end(), endsWord);
            text.insert(end, L')');
            text.insert(operand, 1, L'(');
        }
        text.replace(at, 1, L"sqrt");
    }
    return text;
}

}

std::wstring withPlainCharacters(std::wstring_view text)
{
    std::wstring own(text);
    std::transform(own.begin(), own.end(), own.begin(), plain);
    return own;
}

std::wstring withOwnSymbols(std::wstring_view text)
{
    std::wstring own;
    for (std::size_t at = 0; at < text.size(); ++at)
    {
        const wchar_t character = text[at];
        if (character == L'*' && !own.empty() && own.back() == L'*')
        {
            own.back() = L'^';
        }
        else if (character == L'>' && !own.empty() && own.back() == L'<')
        {
            own.back() = L'!';
            own += L'=';
        }
        else if (const Spelling* const sign = findIn(signs, character))
        {
            own += sign->meant;
        }
        else if (character == smallPi)
        {
            own += timesBehind(own);
            own += L"pi";
            own += timesBefore(text.substr(at + 1));
        }
        else if (const Spelling* const fraction = findIn(fractions, character))
        {
            const bool behindDigit = !own.empty() && isDigit(own.back());
            own += behindDigit ? L"" : L"0";
            own += fraction->meant;
        }
        else if (findIn(raised, character) != nullptr)
        {
            std::wstring power;
            for (const Spelling* digit = nullptr; at < text.size() && (digit = findIn(raised, text[at])) != nullptr;
                 ++at)
            {
                power += digit->meant;
            }
            appendPower(own, power);
            own += timesBefore(text.substr(at));
            --at;
        }
        else
        {
            own += character == rootSign ? timesBehind(own) : std::wstring_view();
            own += character;
        }
    }
    return withRoots(std::move(own));
}

}
