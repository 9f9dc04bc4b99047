// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Platform.h - everything that differs between operating systems, except the floating-point control words
// (FloatingPointGuard.h).
//
// One source per platform implements it: PlatformPosix.cpp, and on Windows PlatformWindows.cpp.
#pragma once

#include <string_view>

namespace platform {

/// Whether the system considers differently encoded names equal, as Windows does with a letter and its accent written
/// as one character or two.
#if defined(_WIN32)
inline constexpr bool comparesLinguistically = true;
#else
inline constexpr bool comparesLinguistically = false;
#endif

/// Whether a name consists of ASCII letters, digits and underscores. Two such names are equal only if they are
/// identical; the system need not compare them.
bool isPlainName(std::wstring_view name) noexcept;

/// Whether two names denote the same function or constant. Case matters.
bool isSameName(std::wstring_view left, std::wstring_view right) noexcept;

/// Shows a text to the user and returns when the user has seen it. Windows: a modal message box with an OK button.
/// Elsewhere: writes the text to standard error and, if standard input and standard error are a terminal, waits for
/// Enter.
void showMessageBox(const wchar_t* text);

}
