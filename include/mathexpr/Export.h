// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Export.h - marks the names that the shared library exports. A host that links the static library defines MATHEXPR_STATIC;
// CMake and pkg-config do this for it.
//
// MATHEXPR_API marks every exported class and function. All other symbols are hidden on every platform, so that they cannot
// clash with a host's symbols.
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

// Marks an exception type that crosses the library's boundary. A host catches it by type, so both sides must share its type
// information.
#if defined(_WIN32) || defined(MATHEXPR_STATIC)
#define MATHEXPR_EXCEPTION
#else
#define MATHEXPR_EXCEPTION __attribute__((visibility("default")))
#endif
