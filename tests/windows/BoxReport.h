// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BoxReport.h - data about message boxes, from the watcher process to the test, in shared memory.
#pragma once

#include <string>

#include <windows.h>

struct BoxReport
{
    volatile LONG watching;  // set by the watcher when it starts
    volatile LONG stop;      // set by the test when it expects no more boxes
    LONG found;              // number of boxes seen and dismissed
    LONG buttons;            // of the last box
    LONG ownerDisabled;      // whether its owner was disabled while it was shown
    LONG exclamationMark;    // whether it had an icon
    ULONG_PTR owner;         // window handle, 0: none
    wchar_t text[512];
    wchar_t title[256];
    wchar_t buttonText[64];
};

inline std::wstring boxReportName(DWORD watchedProcess)
{
    return L"Local\\mathexpr-box-report-" + std::to_wstring(watchedProcess);
}
