// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Export.h - marks what the shared library shows to its hosts. A host that links the static one defines
// MATHEXPR_STATIC; its build system does so, where the library comes from CMake or pkg-config.
//
// MATHEXPR_API stands before every exported class and function. Everything else stays hidden on every platform, so that
// a host's own symbols and the library's can never meet.
#pragma once

#if defined(MATHEXPR_STATIC)
#define MATHEXPR_API
#elif defined(_WIN32)
#if defined(MATHEXPR_BUILDING)
#define MATHEXPR_API __declspec(dllexport)
#else
#define MATHEXPR_API __declspec(dllimport)
#endif
#else
#define MATHEXPR_API __attribute__((visibility("default")))
#endif

// Marks an exception type that crosses the library's boundary: a host catches it by type, so its type information has
// to be one and the same on both sides.
#if defined(_WIN32) || defined(MATHEXPR_STATIC)
#define MATHEXPR_EXCEPTION
#else
#define MATHEXPR_EXCEPTION __attribute__((visibility("default")))
#endif
