// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CountedAllocations.cpp - the global operator new, counting.
#include "tests/support/CountedAllocations.h"

#include <cstdlib>
#include <new>

namespace {

std::size_t calls = 0;

}

std::size_t allocationCount()
{
    return calls;
}

void* operator new(std::size_t size)
{
    ++calls;
    if (void* const memory = std::malloc(size == 0 ? 1 : size))
    {
        return memory;
    }
    throw std::bad_alloc();
}

void operator delete(void* memory) noexcept
{
    std::free(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    std::free(memory);
}
