// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// box_watcher.cpp - a second process that finds the message boxes of another one, reads them and presses OK.
//
//     box_watcher PROCESS-ID
//
// It reports through the shared memory of that process (BoxReport.h), and ends on request or after a minute.

#include "tests/windows/BoxReport.h"

#include <cstdlib>
#include <cwchar>

namespace {

struct Search
{
    DWORD process;
    HWND box;
};

BOOL CALLBACK isBoxOf(HWND window, LPARAM parameter)
{
    auto& search = *reinterpret_cast<Search*>(parameter);
    DWORD process = 0;
    GetWindowThreadProcessId(window, &process);
    wchar_t className[32] = {};
    GetClassNameW(window, className, 32);
    if (process == search.process && std::wcscmp(className, L"#32770") == 0 && IsWindowVisible(window))
    {
        search.box = window;
        return FALSE;
    }
    return TRUE;
}

BOOL CALLBACK readChild(HWND child, LPARAM parameter)
{
    auto& report = *reinterpret_cast<BoxReport*>(parameter);
    wchar_t className[32] = {};
    GetClassNameW(child, className, 32);
    if (std::wcscmp(className, L"Button") == 0)
    {
        ++report.buttons;
        SendMessageW(child, WM_GETTEXT, 64, reinterpret_cast<LPARAM>(report.buttonText));
    }
    else if (std::wcscmp(className, L"Static") == 0)
    {
        if ((GetWindowLongPtrW(child, GWL_STYLE) & SS_TYPEMASK) == SS_ICON)
        {
            const bool shown = IsWindowVisible(child) && SendMessageW(child, STM_GETICON, 0, 0) != 0;
            report.exclamationMark = shown ? 1 : 0;
        }
        else
        {
            SendMessageW(child, WM_GETTEXT, 512, reinterpret_cast<LPARAM>(report.text));
        }
    }
    return TRUE;
}

void readAndDismiss(HWND box, BoxReport& report)
{
    report.buttons = 0;
    report.exclamationMark = 0;
    GetWindowTextW(box, report.title, 256);
    HWND owner = GetWindow(box, GW_OWNER);
    report.owner = reinterpret_cast<ULONG_PTR>(owner);
    report.ownerDisabled = owner != nullptr && !IsWindowEnabled(owner) ? 1 : 0;
    EnumChildWindows(box, readChild, reinterpret_cast<LPARAM>(&report));
    ++report.found;
    PostMessageW(box, WM_COMMAND, IDOK, 0);
    while (IsWindow(box))
    {
        Sleep(2);
    }
}

}

int wmain(int count, wchar_t** arguments)
{
    if (count != 2)
    {
        return 2;
    }
    Search search{static_cast<DWORD>(std::wcstoul(arguments[1], nullptr, 10)), nullptr};
    HANDLE memory = OpenFileMappingW(FILE_MAP_ALL_ACCESS, FALSE, boxReportName(search.process).c_str());
    if (memory == nullptr)
    {
        return 3;
    }
    auto* report = static_cast<BoxReport*>(MapViewOfFile(memory, FILE_MAP_ALL_ACCESS, 0, 0, sizeof(BoxReport)));
    if (report == nullptr)
    {
        return 4;
    }
    InterlockedExchange(&report->watching, 1);
    const ULONGLONG end = GetTickCount64() + 60000;
    while (report->stop == 0 && GetTickCount64() < end)
    {
        search.box = nullptr;
        EnumWindows(isBoxOf, reinterpret_cast<LPARAM>(&search));
        if (search.box != nullptr)
        {
            readAndDismiss(search.box, *report);
        }
        Sleep(5);
    }
    return 0;
}
