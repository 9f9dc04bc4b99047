// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameEntries.h - what an index of names holds: each name in alphabetical order, and again for each further word in it.
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

    /// Null for a name that is not there.
    const NameNotes* find(std::wstring_view name) const;

    /// Names that begin so, in any case of letters, and then names with a word that does.
    std::vector<std::wstring> matching(std::wstring_view typed, std::size_t maxCount) const;

    /// The neighbours of a name that need not be there.
    std::vector<std::wstring> neighboursOf(std::wstring_view name) const;

private:
    /// In lower case, and as it was added.
    using Key = std::pair<std::wstring, std::wstring>;

    std::map<Key, NameNotes> names;
    std::set<Key> words;  // the rest of a name from a word on, and the name
};

}
