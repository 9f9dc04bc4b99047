// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTNameIndex.h - hash index of named entries in a vector of the owner.
//
// An open-addressing hash table of (hash, index) pairs. The names stay with their entries; the caller supplies the
// comparison. All kinds of names share one hash, computed once per token. It ignores the case of A to Z, as
// variables do; the comparison decides whether case matters. The vocabulary's table is computed at compile time
// (MTNameIndex::Table).
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <string_view>
#include <vector>

/// Folds A to Z to lower case, in every locale; other characters are unchanged.
constexpr wchar_t foldCase(wchar_t character) noexcept
{
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}

/// Whether two names denote the same variable.
constexpr bool sameIgnoringCase(std::wstring_view left, std::wstring_view right) noexcept
{
    if (left.size() != right.size())
    {
        return false;
    }
    for (std::size_t at = 0; at < left.size(); ++at)
    {
        if (foldCase(left[at]) != foldCase(right[at]))
        {
            return false;
        }
    }
    return true;
}

class MTNameIndex
{
    static constexpr std::uint32_t free = std::numeric_limits<std::uint32_t>::max();

    struct Slot
    {
        std::uint32_t hash = 0;
        std::uint32_t index = free;
    };

public:
    static constexpr std::size_t notFound = std::numeric_limits<std::size_t>::max();

    /// A table with a number of slots, computed at compile time. The number of slots is a power of two.
    template <std::size_t nbSlots>
    class Table
    {
    public:
        // not covered: runs while compiling
        constexpr void insert(std::uint32_t hash, std::size_t index) noexcept
        {
            place(slots.data(), nbSlots, Slot{hash, static_cast<std::uint32_t>(index)});
        }

        template <class IsNamed>
        constexpr std::size_t find(std::uint32_t hash, IsNamed isNamed) const  // not covered: runs while compiling
        {
            return findIn(slots.data(), nbSlots, hash, isNamed);
        }

    private:
        friend MTNameIndex;
        std::array<Slot, nbSlots> slots{};
    };

    MTNameIndex() = default;
    template <std::size_t nbSlots>
    explicit MTNameIndex(const Table<nbSlots>& table) : slots(table.slots.begin(), table.slots.end())
    {}

    /// FNV-1a over the folded characters.
    static constexpr std::uint32_t hash(std::wstring_view name) noexcept
    {
        std::uint32_t value = 2166136261U;
        for (const wchar_t character : name)
        {
            value = (value ^ static_cast<std::uint32_t>(foldCase(character))) * 16777619U;
        }
        return value;
    }

    /// The index of the entry with this hash for which isNamed(index) is true.
    template <class IsNamed>
    std::size_t find(std::uint32_t hash, IsNamed isNamed) const
    {
        return slots.empty() ? notFound : findIn(slots.data(), slots.size(), hash, isNamed);
    }

    /// Reserves memory for one more entry, so that insert cannot fail.
    /// @param nbEntries  present number of entries, or an upper bound
    void reserveOneMore(std::size_t nbEntries)
    {
        // At most half full, so a search takes one or two probes.
        if (2 * (nbEntries + 1) <= slots.size())
        {
            return;
        }
        std::vector<Slot> larger(slots.empty() ? 16 : 2 * slots.size());
        larger.swap(slots);
        for (const Slot& slot : larger)
        {
            if (slot.index != free)
            {
                place(slots.data(), slots.size(), slot);
            }
        }
    }

    /// Adds an entry; call reserveOneMore before.
    void insert(std::uint32_t hash, std::size_t index) noexcept
    {
        place(slots.data(), slots.size(), Slot{hash, static_cast<std::uint32_t>(index)});
    }

    /// Removes all entries and keeps the memory.
    void clear() noexcept { slots.assign(slots.size(), Slot{}); }

private:
    template <class IsNamed>
    static constexpr std::size_t findIn(const Slot* slots, std::size_t nbSlots, std::uint32_t hash, IsNamed isNamed)
    {
        const std::size_t mask = nbSlots - 1;
        for (std::size_t at = hash & mask; slots[at].index != free; at = (at + 1) & mask)
        {
            if (slots[at].hash == hash && isNamed(slots[at].index))
            {
                return slots[at].index;
            }
        }
        return notFound;
    }

    static constexpr void place(Slot* slots, std::size_t nbSlots, Slot slot) noexcept
    {
        const std::size_t mask = nbSlots - 1;
        std::size_t at = slot.hash & mask;
        while (slots[at].index != free)
        {
            at = (at + 1) & mask;
        }
        slots[at] = slot;
    }

    std::vector<Slot> slots;
};
