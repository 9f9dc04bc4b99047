// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameEntries.h - the content of a name index: all names in alphabetical order, and again by each further word in them.
#pragma once

#include "mathexpr/NameIndex.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mathexpr {

class NameEntries
{
public:
    void add(const std::wstring& name, const NameNotes& notes);
    bool remove(const std::wstring& name);

    /// Null if the index does not hold the name.
    const NameNotes* find(std::wstring_view name) const;

    /// Names that begin like this, then names with a word that does, ignoring case.
    std::vector<std::wstring> matching(std::wstring_view typed, std::size_t maxCount) const;

    /// The names next to a name in alphabetical order; the index need not hold it.
    std::vector<std::wstring> neighboursOf(std::wstring_view name) const;

private:
    /// The name in lower case, and as it was added.
    using Key = std::pair<std::wstring, std::wstring>;

    std::map<Key, NameNotes> names;
    std::set<Key> words;  // the name from a later word on, and the name
};

}
