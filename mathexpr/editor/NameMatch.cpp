// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameMatch.cpp - see NameMatch.h.
#include "mathexpr/editor/NameMatch.h"

#include "mathexpr/hints/NameWords.h"

namespace mathexpr::editor {
namespace {

bool beginsWith(std::wstring_view text, std::wstring_view beginning) noexcept
{
    return text.substr(0, beginning.size()) == beginning;
}

bool beginsAlike(std::wstring_view text, std::wstring_view beginning) noexcept
{
    std::size_t matched = 0;
    for (std::size_t at = 0; at < text.size() && matched < beginning.size(); ++at)
    {
        if (text[at] == L' ')
        {
            continue;
        }
        if (foldCase(text[at]) != foldCase(beginning[matched]))
        {
            return false;
        }
        ++matched;
    }
    return matched == beginning.size();
}

/// Whether a word after the first begins like this.
bool hasWord(std::wstring_view text, std::wstring_view beginning) noexcept
{
    for (std::size_t at = 1; at < text.size(); ++at)
    {
        if (beginsWord(text, at) && beginsAlike(text.substr(at), beginning))
        {
            return true;
        }
    }
    return false;
}

}

bool hasBeginning(std::wstring_view text, std::wstring_view beginning) noexcept
{
    return beginsAlike(text, beginning) || hasWord(text, beginning);
}

Match matchOf(std::wstring_view name, std::wstring_view description, std::wstring_view typed) noexcept
{
    if (beginsWith(name, typed))
    {
        return Match::Beginning;
    }
    if (beginsAlike(name, typed))
    {
        return Match::BeginningInOtherCase;
    }
    if (hasWord(name, typed))
    {
        return Match::Word;
    }
    return hasBeginning(description, typed) ? Match::Meaning : Match::None;
}

}
