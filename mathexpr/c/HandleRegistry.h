// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HandleRegistry.h - recognises handles that have been destroyed or were never made, in libraries that are built with
// MATHEXPR_CHECK_HANDLES. In others every handle counts as live, and nothing is kept.
#pragma once

#if defined(MATHEXPR_CHECK_HANDLES)

namespace HandleRegistry {

/// @throws std::bad_alloc
void add(const void* handle);

bool isLive(const void* handle) noexcept;

/// Takes the memory of a destroyed handle. It is freed later, so that the next handle that is made does not have the
/// same address.
void retire(void* memory) noexcept;

}

#else

namespace HandleRegistry {

inline void add(const void*) noexcept {}

inline bool isLive(const void*) noexcept
{
    return true;
}

}

#endif
