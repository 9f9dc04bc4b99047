// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CountedMemory.cpp - replaces the program's global operator new. For one thread at a time.
#include "tests/robustness/CountedMemory.h"

#include <algorithm>
#include <cstdlib>
#include <new>

#include <malloc.h>

namespace {

constexpr std::size_t sizeRoom = alignof(std::max_align_t);  // each block is preceded by its size

std::size_t inUse = 0;
std::size_t inUseBefore = 0;
std::size_t most = 0;

}

void* operator new(std::size_t size)
{
    auto* const block = static_cast<std::size_t*>(std::malloc(size + sizeRoom));
    if (block == nullptr)
    {
        throw std::bad_alloc();
    }
    *block = size;
    inUse += size;
    most = std::max(most, inUse);
    return reinterpret_cast<char*>(block) + sizeRoom;
}

void operator delete(void* memory) noexcept
{
    if (memory != nullptr)
    {
        void* const block = static_cast<char*>(memory) - sizeRoom;
        inUse -= *static_cast<std::size_t*>(block);
        std::free(block);
    }
}

void operator delete(void* memory, std::size_t) noexcept
{
    operator delete(memory);
}

namespace memory {

void hold(std::size_t bytes)
{
    constexpr std::size_t page = 4096;
    mallopt(M_ARENA_MAX, 1);
    mallopt(M_MMAP_MAX, 0);
    mallopt(M_TRIM_THRESHOLD, -1);
    auto* const block = static_cast<volatile char*>(std::malloc(bytes));
    if (block == nullptr)
    {
        throw std::bad_alloc();
    }
    for (std::size_t at = 0; at < bytes; at += page)
    {
        block[at] = 1;
    }
    std::free(const_cast<char*>(block));
}

void startCounting() noexcept
{
    inUseBefore = inUse;
    most = inUse;
}

std::size_t mostInUse() noexcept
{
    return most - inUseBefore;
}

}
