// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// BoxWatch.h - starts a process that watches for message boxes of this process or of a given one, reads and dismisses
// them.
#pragma once

#include "tests/windows/BoxReport.h"
#include "tests/windows/Paths.h"

#include <cwchar>
#include <stdexcept>
#include <string>

class BoxWatch
{
public:
    explicit BoxWatch(DWORD process = GetCurrentProcessId())
    {
        memory = CreateFileMappingW(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, sizeof(BoxReport),
                                    boxReportName(process).c_str());
        report = static_cast<BoxReport*>(MapViewOfFile(memory, FILE_MAP_ALL_ACCESS, 0, 0, sizeof(BoxReport)));
        std::wstring command = L"\"" + programFolder() + L"box_watcher.exe\" " + std::to_wstring(process);
        STARTUPINFOW start{};
        start.cb = sizeof(start);
        if (report == nullptr ||
            !CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start, &watcher))
        {
            throw std::runtime_error("the watching process does not start");
        }
        while (report->watching == 0)
        {
            if (WaitForSingleObject(watcher.hProcess, 5) != WAIT_TIMEOUT)
            {
                throw std::runtime_error("the watching process has ended");
            }
        }
    }
    BoxWatch(const BoxWatch&) = delete;
    BoxWatch& operator=(const BoxWatch&) = delete;
    ~BoxWatch()
    {
        InterlockedExchange(&report->stop, 1);
        WaitForSingleObject(watcher.hProcess, 5000);
        CloseHandle(watcher.hThread);
        CloseHandle(watcher.hProcess);
        UnmapViewOfFile(report);
        CloseHandle(memory);
    }

    /// Number of boxes so far. A box is counted before it is dismissed, so none is missed.
    LONG count() const { return report->found; }

    /// The last box.
    const BoxReport& last() const { return *report; }

    /// Discards what has been recorded.
    void clear()
    {
        report->found = 0;
        report->text[0] = L'\0';
        report->title[0] = L'\0';
        report->buttonText[0] = L'\0';
    }

private:
    HANDLE memory = nullptr;
    BoxReport* report = nullptr;
    PROCESS_INFORMATION watcher{};
};
