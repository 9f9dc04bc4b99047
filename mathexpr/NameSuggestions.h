// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameSuggestions.h - finds, among names that are offered one by one, those that a misspelt name may mean.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Keeps the three nearest names. Near are names that a few keystrokes turn into the misspelt one: a character left
/// out, put in, changed, or swapped with the next. The longer the name, the more of them are forgiven; upper and lower
/// case count as one.
class NameSuggestions
{
public:
    explicit NameSuggestions(std::wstring_view misspelt);

    /// Among equally near names the one offered first wins; a name offered twice counts once.
    void offer(std::wstring_view name);

    /// The nearest first.
    std::vector<std::wstring> take();

private:
    struct Candidate
    {
        std::wstring name;
        std::size_t distance;
    };

    std::size_t distanceTo(std::wstring_view name);

    std::wstring wanted;   // in lower case
    std::size_t forgiven;  // the greatest distance that still counts as near
    std::vector<Candidate> nearest;
    std::vector<std::size_t> rows;  // memory of distanceTo
};
