// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// NameIndex.cpp - see NameIndex.h and NameEntries.h.
#include "mathexpr/NameIndex.h"

#include "mathexpr/HostBoundary.h"
#include "mathexpr/hints/NameEntries.h"
#include "mathexpr/hints/NameWords.h"

namespace mathexpr {
namespace {

constexpr std::size_t neighboursOnEachSide = 200;

/// Adds the names of the keys that begin like this.
template <class Iterator, class NameOf>
void addBeginning(std::wstring_view beginning, Iterator key, Iterator end, std::size_t maxCount,
                  std::vector<std::wstring>& found, NameOf nameOf)
{
    for (; key != end && found.size() < maxCount; ++key)
    {
        const auto& [folded, name] = nameOf(*key);
        if (folded.compare(0, beginning.size(), beginning) != 0)
        {
            return;
        }
        found.push_back(name);
    }
}

}

void NameEntries::add(const std::wstring& name, const NameNotes& notes)
{
    const std::wstring folded = inLowerCase(name);
    names.insert_or_assign(Key(folded, name), notes);
    for (std::size_t at = 1; at < name.size(); ++at)
    {
        if (beginsWord(name, at))
        {
            words.emplace(folded.substr(at), name);
        }
    }
}

bool NameEntries::remove(const std::wstring& name)
{
    const std::wstring folded = inLowerCase(name);
    for (std::size_t at = 1; at < name.size(); ++at)
    {
        words.erase(Key(folded.substr(at), name));
    }
    return names.erase(Key(folded, name)) != 0;
}

const NameNotes* NameEntries::find(std::wstring_view name) const
{
    const auto found = names.find(Key(inLowerCase(name), name));
    return found == names.end() ? nullptr : &found->second;
}

std::vector<std::wstring> NameEntries::matching(std::wstring_view typed, std::size_t maxCount) const
{
    const std::wstring beginning = inLowerCase(typed);
    const Key first(beginning, std::wstring());
    std::vector<std::wstring> found;
    addBeginning(beginning, names.lower_bound(first), names.end(), maxCount, found,
                 [](const auto& entry) -> const Key& { return entry.first; });
    addBeginning(beginning, words.lower_bound(first), words.end(), maxCount, found,
                 [](const Key& key) -> const Key& { return key; });
    return found;
}

std::vector<std::wstring> NameEntries::neighboursOf(std::wstring_view name) const
{
    const auto middle = names.lower_bound(Key(inLowerCase(name), std::wstring()));
    std::vector<std::wstring> found;
    for (auto before = middle; before != names.begin() && found.size() < neighboursOnEachSide;)
    {
        --before;
        found.push_back(before->first.second);
    }
    const std::size_t maxCount = found.size() + neighboursOnEachSide;
    for (auto behind = middle; behind != names.end() && found.size() < maxCount; ++behind)
    {
        found.push_back(behind->first.second);
    }
    return found;
}

NameIndex::NameIndex(const HostRuntime& runtime) : host(runtime), entries(std::make_unique<NameEntries>()) {}

NameIndex::~NameIndex() = default;

void NameIndex::add(const wchar_t* name, const NameNotes& notes)
{
    if (name != nullptr && *name != L'\0')
    {
        atHostBoundary(host, [&] { entries->add(name, notes); });
    }
}

bool NameIndex::remove(const wchar_t* name)
{
    return name != nullptr && atHostBoundary(host, [&] { return entries->remove(name); });
}

const wchar_t* NameIndex::getName(std::uint32_t) const
{
    return nullptr;
}

}
