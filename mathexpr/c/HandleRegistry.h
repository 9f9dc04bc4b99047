// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// HandleRegistry.h - detects destroyed and invalid handles in builds with MATHEXPR_CHECK_HANDLES. In other builds every
// handle counts as valid, and nothing is stored.
#pragma once

#if defined(MATHEXPR_CHECK_HANDLES)

namespace HandleRegistry {

/// @throws std::bad_alloc
void add(const void* handle);

bool isLive(const void* handle) noexcept;

/// Takes the memory of a destroyed handle. Freeing is delayed, so that the next handle has another address.
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
