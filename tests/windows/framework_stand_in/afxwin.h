// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// afxwin.h - stands in for the header of Microsoft's framework of this name; see FrameworkBoxTests.cpp.
#pragma once

#include <windows.h>

int WINAPI AfxMessageBox(const wchar_t* text, UINT type = MB_OK, UINT helpId = static_cast<UINT>(-1));
