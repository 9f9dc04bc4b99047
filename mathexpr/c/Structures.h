// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Structures.h - reads and writes the sized structures of mathexpr.h, by the rules in its head.
//
// The structures have no padding, and every member ends where an earlier version of the structure may end: a size that
// is a multiple of the alignment never splits a member.
#pragma once

#include <mathexpr.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <type_traits>

inline std::uint32_t sizeOf(const void* structure) noexcept
{
    std::uint32_t size = 0;
    std::memcpy(&size, structure, sizeof(size));
    return size;
}

/// Whether a version of the structure may have this size.
template <class Structure>
bool hasPlausibleSize(const Structure* given) noexcept
{
    static_assert(std::is_trivially_copyable_v<Structure> && offsetof(Structure, size) == 0);
    const std::uint32_t size = sizeOf(given);
    return size != 0 && size <= MATHEXPR_MAX_STRUCT_SIZE && size % alignof(Structure) == 0;
}

/// Reads a structure of any version. Its size becomes this version's.
/// @return false if the size is invalid, or a member unknown to this version is not 0
template <class Structure>
bool readStructure(const Structure* given, Structure& known) noexcept
{
    if (!hasPlausibleSize(given))
    {
        return false;
    }
    const std::uint32_t size = sizeOf(given);
    const auto* const bytes = reinterpret_cast<const unsigned char*>(given);
    if (size > sizeof(Structure) &&
        std::any_of(bytes + sizeof(Structure), bytes + size, [](unsigned char byte) { return byte != 0; }))
    {
        return false;
    }
    known = Structure{};
    std::memcpy(&known, bytes, std::min<std::size_t>(size, sizeof(Structure)));
    known.size = sizeof(Structure);
    return true;
}

/// Writes a structure of any version. Its size must be valid and is kept.
template <class Structure>
void writeStructure(const Structure& known, Structure* given) noexcept
{
    const std::uint32_t size = sizeOf(given);
    auto* const bytes = reinterpret_cast<unsigned char*>(given);
    const std::size_t common = std::min<std::size_t>(size, sizeof(Structure));
    std::memcpy(bytes + sizeof(size), reinterpret_cast<const unsigned char*>(&known) + sizeof(size),
                common - sizeof(size));
    std::fill(bytes + common, bytes + size, static_cast<unsigned char>(0));
}
