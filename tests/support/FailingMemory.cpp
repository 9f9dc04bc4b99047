// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FailingMemory.cpp - replaces the global operator new. The counts are atomic, since worker threads allocate as well.
#include "tests/support/FailingMemory.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> alive = 0;
std::atomic<std::size_t> made = 0;
std::atomic<std::size_t> firstToFail = 0;  // 0: none
std::atomic<std::size_t> lastToFail = 0;

void* allocate(std::size_t size)
{
    const std::size_t count = ++made;
    const bool fails = firstToFail != 0 && count >= firstToFail && count <= lastToFail;
    void* const memory = fails ? nullptr : std::malloc(size == 0 ? 1 : size);
    alive += memory != nullptr ? 1 : 0;
    return memory;
}

void release(void* memory) noexcept
{
    alive -= memory != nullptr ? 1 : 0;
    std::free(memory);
}

}

void* operator new(std::size_t size)
{
    if (void* const memory = allocate(size))
    {
        return memory;
    }
    throw std::bad_alloc();
}

void* operator new(std::size_t size, const std::nothrow_t&) noexcept
{
    return allocate(size);
}

void operator delete(void* memory) noexcept
{
    release(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    release(memory);
}

void operator delete(void* memory, const std::nothrow_t&) noexcept
{
    release(memory);
}

namespace memory {

Shortage::Shortage(std::size_t n, Failing failing) noexcept
{
    const std::size_t first = made + n;
    lastToFail = failing == Failing::Once ? first : static_cast<std::size_t>(-1);
    firstToFail = first;
}

Shortage::~Shortage()
{
    firstToFail = 0;
}

bool Shortage::wasFelt() const noexcept
{
    return made >= firstToFail;
}

std::size_t madeCount() noexcept
{
    return made;
}

std::size_t aliveCount() noexcept
{
    return alive;
}

}
