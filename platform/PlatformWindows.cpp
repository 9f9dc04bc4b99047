// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PlatformWindows.cpp - Platform.h for Windows.

#include "platform/Platform.h"

#include <algorithm>
#include <string>

#if defined(MATHEXPR_USE_MFC)
#include <afxwin.h>
#else
#include <windows.h>
#endif

bool platform::isSameName(std::wstring_view left, std::wstring_view right) noexcept
{
    if (left == right)
    {
        return true;
    }
    if (isPlainName(left) && isPlainName(right))
    {
        return false;
    }
    // The same comparison as lstrcmpW, for texts that are not zero-terminated.
    return CompareStringW(GetThreadLocale(), 0, left.data(), static_cast<int>(left.size()), right.data(),
                          static_cast<int>(right.size())) == CSTR_EQUAL;
}

#if defined(MATHEXPR_USE_MFC)

void platform::showMessageBox(const wchar_t* text)
{
    AfxMessageBox(text, 0, 0);
}

#else

namespace {

/// The program's name without folder and extension, the title of the framework's message box.
std::wstring programName()
{
    std::wstring path(MAX_PATH, L'\0');
    DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    while (length == path.size())
    {
        path.resize(2 * path.size());
        length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    }
    path.resize(length);
    path.erase(0, path.find_last_of(L"\\/") + 1);
    path.resize(std::min(path.size(), path.find_last_of(L'.')));
    return path;
}

}

// The same box as AfxMessageBox(text, 0, 0): for a type without an icon the framework uses the exclamation mark, and
// the owner is the thread's active window.
void platform::showMessageBox(const wchar_t* text)
{
    MessageBoxW(GetActiveWindow(), text, programName().c_str(), MB_OK | MB_ICONEXCLAMATION);
}

#endif
