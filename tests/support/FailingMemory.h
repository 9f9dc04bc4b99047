// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FailingMemory.h - counts the allocations of the program and the shared library, and makes chosen ones fail.
//
// The program's global operator new is used by all libraries that it is linked with, except DLLs.
#pragma once

#include <cstddef>

namespace memory {

/// The allocations that fail, counted from 1.
enum class Failing
{
    Once,        ///< Only the n-th.
    FromThenOn,  ///< The n-th and all later ones.
};

/// While an object of this class exists, the chosen allocations fail.
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

/// Number of allocations so far.
std::size_t madeCount() noexcept;

/// Number of allocations that have not been released.
std::size_t aliveCount() noexcept;

}
