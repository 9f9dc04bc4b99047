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

/// Loads a resource library that stands in the folder of the module that calls. No other place is looked at: neither
/// the search path nor the current directory nor the folder of the program, so that nobody can put a library of that
/// name before the right one. It is opened for its resources only: no code of it runs, and of strings in several
/// languages Windows picks the user's.
///
/// May be called while the caller is being attached to the process.
///
/// @param fileName  a plain file name, such as L"MathExprRes.dll"
/// @return the module to read resources from, the same for every call that finds the same file; null when there
///         is none, when it is no resource library, or when the name is not a plain one. The module belongs to
///         TarnUInfo, which keeps it until it is unloaded itself.
TARNUINFO_API HMODULE LoadResourceDll(const wchar_t* fileName);
