// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameSuggestions.cpp - see NameSuggestions.h.
#include "mathexpr/NameSuggestions.h"

#include "mathexpr/hints/NameWords.h"

#include <algorithm>
#include <utility>

namespace {

constexpr std::size_t maxSuggestions = 3;

/// A name of one letter allows no error, since an error could replace the whole name.
std::size_t forgivenIn(std::size_t length)
{
    return length < 2 ? 0 : length < 5 ? 1 : length < 9 ? 2 : 3;
}

}

NameSuggestions::NameSuggestions(std::wstring_view misspelt)
    : wanted(mathexpr::inLowerCase(misspelt)), forgiven(forgivenIn(misspelt.size()))
{}

void NameSuggestions::offer(std::wstring_view name)
{
    const std::size_t difference = std::max(name.size(), wanted.size()) - std::min(name.size(), wanted.size());
    if (difference > forgiven)
    {
        return;
    }
    const std::size_t distance = distanceTo(name);
    if (distance > forgiven || (distance != 0 && distance >= name.size()))
    {
        return;
    }
    const auto isNamed = [name](const Candidate& candidate) { return candidate.name == name; };
    if (std::any_of(nearest.begin(), nearest.end(), isNamed))
    {
        return;
    }
    const auto farther = std::find_if(nearest.begin(), nearest.end(),
                                      [distance](const Candidate& candidate) { return candidate.distance > distance; });
    nearest.insert(farther, Candidate{std::wstring(name), distance});
    if (nearest.size() > maxSuggestions)
    {
        nearest.pop_back();
    }
}

std::vector<std::wstring> NameSuggestions::take()
{
    std::vector<std::wstring> names;
    for (Candidate& candidate : nearest)
    {
        names.push_back(std::move(candidate.name));
    }
    return names;
}

/// The edit distance (optimal string alignment). Only cells near the diagonal can hold small distances, so only these
/// are computed, and long names take linear time. Larger distances are returned as forgiven + 1.
std::size_t NameSuggestions::distanceTo(std::wstring_view name)
{
    const std::wstring other = mathexpr::inLowerCase(name);
    const std::size_t tooFar = forgiven + 1;
    const std::size_t width = other.size() + 1;
    rows.assign(3 * width, tooFar);
    const auto at = [&](std::size_t row, std::size_t column) -> std::size_t& { return rows[row % 3 * width + column]; };

    for (std::size_t column = 0; column <= std::min(forgiven, other.size()); ++column)
    {
        at(0, column) = column;
    }
    for (std::size_t row = 1; row <= wanted.size(); ++row)
    {
        const std::size_t first = row - std::min(row, forgiven);
        const std::size_t last = std::min(row + forgiven, other.size());
        if (first > 0)
        {
            at(row, first - 1) = tooFar;
        }
        for (std::size_t column = first; column <= last; ++column)
        {
            if (column == 0)
            {
                at(row, 0) = row;
                continue;
            }
            const std::size_t changed = wanted[row - 1] == other[column - 1] ? 0 : 1;
            std::size_t best = at(row - 1, column - 1) + changed;
            best = std::min(best, at(row, column - 1) + 1);
            best = std::min(best, at(row - 1, column) + 1);
            if (row > 1 && column > 1 && wanted[row - 1] == other[column - 2] && wanted[row - 2] == other[column - 1])
            {
                best = std::min(best, at(row - 2, column - 2) + 1);
            }
            at(row, column) = std::min(best, tooFar);
        }
        if (last < other.size())
        {
            at(row, last + 1) = tooFar;
        }
    }
    return at(wanted.size(), other.size());
}
