// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Names.cpp - the part of name comparison that is the same on all platforms.

#include "platform/Platform.h"

#include <algorithm>

bool platform::isPlainName(std::wstring_view name) noexcept
{
    return std::all_of(name.begin(), name.end(), [](wchar_t c) {
        return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z') || (c >= L'0' && c <= L'9') || c == L'_';
    });
}
