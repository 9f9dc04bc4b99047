// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CountedMemory.h - counts the bytes that the program and the shared library have allocated and not freed.
#pragma once

#include <cstddef>

namespace memory {

/// Allocates this many bytes from the system, and returns no memory to it from then on.
void hold(std::size_t bytes);

void startCounting() noexcept;

/// Peak memory use since startCounting, in addition to the use before.
std::size_t mostInUse() noexcept;

}
