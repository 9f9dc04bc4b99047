// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BoxReport.h - what the watching process tells the test about a message box, in memory that both share.
#pragma once

#include <string>

#include <windows.h>

struct BoxReport
{
    volatile LONG watching;  // set by the watcher once it looks
    volatile LONG stop;      // set by the test when it no longer waits for a box
    LONG found;              // how many boxes were seen and dismissed
    LONG buttons;            // of the last box
    LONG ownerDisabled;      // whether its owner took no input while it was shown
    LONG exclamationMark;    // whether it showed an icon
    ULONG_PTR owner;         // window handle, 0: none
    wchar_t text[512];
    wchar_t title[256];
    wchar_t buttonText[64];
};

inline std::wstring boxReportName(DWORD watchedProcess)
{
    return L"Local\\mathexpr-box-report-" + std::to_wstring(watchedProcess);
}
