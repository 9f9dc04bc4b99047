// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FailingMemory.h - counts the allocations of this program and of the shared library, and lets chosen ones fail.
//
// The global operator new is the program's for every library that it links, except for a DLL.
#pragma once

#include <cstddef>

namespace memory {

/// Which allocations fail, counted from 1 on.
enum class Failing
{
    Once,        ///< The n-th alone.
    FromThenOn,  ///< The n-th and all after it.
};

/// While one lives, allocations fail as it was told.
class Shortage
{
public:
    Shortage(std::size_t n, Failing failing) noexcept;
    Shortage(const Shortage&) = delete;
    Shortage& operator=(const Shortage&) = delete;
    ~Shortage();

    /// Whether an allocation has failed.
    bool wasFelt() const noexcept;
};

/// How many allocations there have been.
std::size_t madeCount() noexcept;

/// How many allocations have not been released.
std::size_t aliveCount() noexcept;

}
