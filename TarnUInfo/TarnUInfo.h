// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TarnUInfo.h - finds and loads the resource library of a module: strings in the user's language.
#pragma once

#include <windows.h>

#if defined(TARNUINFO_BUILDING)
#define TARNUINFO_API extern "C" __declspec(dllexport)
#else
#define TARNUINFO_API extern "C" __declspec(dllimport)
#endif

/// Loads a resource library from the folder of the calling module. No other folder is searched: not the search path,
/// the current directory or the program's folder. So no other library of that name can be loaded instead. The library
/// is opened for its resources only and runs no code. If it has strings in several languages, Windows selects the
/// language of the user.
///
/// May be called during the caller's process attach.
///
/// @param fileName  a plain file name, such as L"MathExprRes.dll"
/// @return the module to read resources from, the same for every call that finds the same file; null if there is no
///         such file, it is not a resource library, or the name is not plain. TarnUInfo owns the module and keeps it
///         until TarnUInfo itself is unloaded.
TARNUINFO_API HMODULE LoadResourceDll(const wchar_t* fileName);
