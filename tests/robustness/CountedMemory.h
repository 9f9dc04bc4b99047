// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CountedMemory.h - how many bytes the program and the shared library have asked for and not given back.
#pragma once

#include <cstddef>

namespace memory {

/// Takes as many bytes from the system, and gives nothing back to it from then on.
void hold(std::size_t bytes);

void startCounting() noexcept;

/// The most bytes that were in use at one time since, beyond those that were in use before.
std::size_t mostInUse() noexcept;

}
