// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// afxwin.h - a stub of the header of this name in Microsoft's framework; see FrameworkBoxTests.cpp.
#pragma once

#include <windows.h>

int WINAPI AfxMessageBox(const wchar_t* text, UINT type = MB_OK, UINT helpId = static_cast<UINT>(-1));
