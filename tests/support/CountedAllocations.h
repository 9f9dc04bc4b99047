// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CountedAllocations.h - counts what the program allocates, and the shared library with it.
//
// The global operator new is the program's for every library that it links, except for a DLL.
#pragma once

#include <cstddef>

/// Calls of the global operator new so far.
std::size_t allocationCount();
