// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Platform.h - everything that differs between operating systems, but for the floating-point control words
// (FloatingPointGuard.h).
//
// One source per platform implements it: PlatformPosix.cpp, and on Windows PlatformWindows.cpp.
#pragma once

#include <string_view>

namespace platform {

/// Whether the system takes names of different spelling for the same name, as Windows does with a letter and its accent
/// written as one character or as two.
#if defined(_WIN32)
inline constexpr bool comparesLinguistically = true;
#else
inline constexpr bool comparesLinguistically = false;
#endif

/// Whether a name consists of ASCII letters, digits and underscores. Between two such names being identical decides,
/// and the system is not asked.
bool isPlainName(std::wstring_view name) noexcept;

/// Whether two names mean the same function or constant. Case matters.
bool isSameName(std::wstring_view left, std::wstring_view right) noexcept;

/// Shows a text to the user and returns when the user has seen it. Windows: a modal message box with an OK button.
/// Elsewhere: the text on standard error, and, when a user sits at standard input and standard error, a wait for Enter.
void showMessageBox(const wchar_t* text);

}
