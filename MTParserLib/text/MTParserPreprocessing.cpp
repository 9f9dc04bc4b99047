// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserPreprocessing.cpp - both stages in one pass over the text, and the mapping of positions back to the typed
// text.
//
// One pass gives the same result as removing the blanks and then replacing one shorthand after the other, because no
// replacement ends in "e" or begins with "+", and none contains a bracket or "e+": inserted text never forms a new
// shorthand.
#include "MTParserLib/text/MTParserPreprocessing.h"

namespace {

constexpr std::wstring_view point = L"point(";
constexpr std::wstring_view power = L"*10^";

}

bool needsRewriting(std::wstring_view typed) noexcept
{
    // Without a branch per character, so that a compiler can compare several at once.
    unsigned int found = 0;
    for (const wchar_t character : typed)
    {
        found |= static_cast<unsigned int>(character == L' ') | static_cast<unsigned int>(character == L'[') |
                 static_cast<unsigned int>(character == L']');
    }
    for (std::size_t at = 1; at < typed.size(); ++at)
    {
        found |= static_cast<unsigned int>(typed[at] == L'+') & static_cast<unsigned int>(typed[at - 1] == L'e');
    }
    return found != 0;
}

void preprocess(std::wstring_view typed, std::wstring& rewritten)
{
    std::size_t length = 0;
    for (const wchar_t character : typed)
    {
        length += character == L'[' ? point.size() : character == L'+' ? power.size() - 1 : 1;
    }
    rewritten.resize(length);
    wchar_t* const begin = rewritten.data();
    wchar_t* end = begin;
    for (const wchar_t character : typed)
    {
        switch (character)
        {
        case L' ':
            break;
        case L'[':
            end += point.copy(end, point.size());
            break;
        case L']':
            *end++ = L')';
            break;
        case L'+':
            if (end != begin && end[-1] == L'e')
            {
                --end;
                end += power.copy(end, power.size());
            }
            else
            {
                *end++ = L'+';
            }
            break;
        default:
            *end++ = character;
            break;
        }
    }
    rewritten.resize(static_cast<std::size_t>(end - begin));
}

MTSpan typedSpanOf(std::wstring_view typed, MTSpan rewritten) noexcept
{
    MTSpan span{typed.size(), typed.size()};
    std::size_t rewrittenEnd = 0;
    for (std::size_t at = 0; at < typed.size() && rewrittenEnd < rewritten.end; ++at)
    {
        if (typed[at] == L' ')
        {
            continue;
        }
        const std::size_t pieceBegin = at;
        std::size_t pieceLength = 1;
        if (typed[at] == L'[')
        {
            pieceLength = point.size();
        }
        else if (typed[at] == L'e')
        {
            const std::size_t next = typed.find_first_not_of(L' ', at + 1);
            if (next != std::wstring_view::npos && typed[next] == L'+')
            {
                pieceLength = power.size();
                at = next;
            }
        }
        if (rewrittenEnd <= rewritten.begin)
        {
            span.begin = pieceBegin;
        }
        rewrittenEnd += pieceLength;
        span.end = at + 1;
    }
    return span;
}
