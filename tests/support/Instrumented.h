// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Instrumented.h - whether a sanitizer watches the tests, under which they take more stack and many times the time.
#pragma once

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool isInstrumented = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
inline constexpr bool isInstrumented = true;
#else
inline constexpr bool isInstrumented = false;
#endif
#else
inline constexpr bool isInstrumented = false;
#endif
