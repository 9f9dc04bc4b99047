// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameSuggestions.h - finds the known names that are similar to a misspelt one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Keeps the three nearest names. The distance counts single errors: a character omitted, inserted, changed, or swapped
/// with the next. Longer names allow more errors. Case is ignored.
/// case count as one.
class NameSuggestions
{
public:
    explicit NameSuggestions(std::wstring_view misspelt);

    /// Considers a name. At equal distance the name offered first wins; duplicates are ignored.
    void offer(std::wstring_view name);

    /// The nearest first. Call once, after all names have been offered.
    std::vector<std::wstring> take();

private:
    struct Candidate
    {
        std::wstring name;
        std::size_t distance;
    };

    std::size_t distanceTo(std::wstring_view name);

    std::wstring wanted;   // in lower case
    std::size_t forgiven;  // greatest accepted distance
    std::vector<Candidate> nearest;
    std::vector<std::size_t> rows;  // memory of distanceTo
};
