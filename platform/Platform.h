// Platform.h - everything that differs between operating systems.
//
// One source per platform implements it: PlatformPosix.cpp, and on Windows PlatformWindows.cpp.
#pragma once

#include <compare>
#include <string_view>

namespace platform {

/// Orders names of variables: the letters A to Z count as a to z, in every locale; nothing else is folded.
std::weak_ordering compareIgnoringCase(std::wstring_view left, std::wstring_view right) noexcept;

/// Shows a text to the user and returns when the user has seen it. Windows: a modal message box with an OK button.
/// Elsewhere: the text on standard error, and, when a user sits at standard input and standard error, a wait for Enter.
void showMessageBox(const wchar_t* text);

}
