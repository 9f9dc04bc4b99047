// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Paths.h - this program's path, and a temporary folder for copies of libraries.
#pragma once

#include <stdexcept>
#include <string>

#include <windows.h>

/// The folder of this program, with its trailing separator.
inline std::wstring programFolder()
{
    wchar_t path[1024];
    const DWORD length = GetModuleFileNameW(nullptr, path, 1024);
    const std::wstring text(path, length);
    return text.substr(0, text.find_last_of(L'\\') + 1);
}

/// The name of this program without extension.
inline std::wstring programTitle()
{
    wchar_t path[1024];
    const DWORD length = GetModuleFileNameW(nullptr, path, 1024);
    std::wstring text(path, length);
    text.erase(0, text.find_last_of(L'\\') + 1);
    return text.substr(0, text.find_last_of(L'.'));
}

/// A folder for copies of libraries, removed with its contents at the end.
class ScratchFolder
{
public:
    ScratchFolder()
    {
        wchar_t temp[512];
        GetTempPathW(512, temp);
        folder = std::wstring(temp) + L"mathexpr-" + std::to_wstring(GetCurrentProcessId()) + L"-" +
                 std::to_wstring(GetTickCount64()) + L"\\";
        if (!CreateDirectoryW(folder.c_str(), nullptr))
        {
            throw std::runtime_error("no scratch folder");
        }
    }
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder()
    {
        WIN32_FIND_DATAW found;
        HANDLE search = FindFirstFileW((folder + L"*.dll").c_str(), &found);
        if (search != INVALID_HANDLE_VALUE)
        {
            do
            {
                DeleteFileW((folder + found.cFileName).c_str());
            } while (FindNextFileW(search, &found));
            FindClose(search);
        }
        RemoveDirectoryW(folder.c_str());
    }

    /// Copies a file from the program's folder.
    void copy(const std::wstring& name, const std::wstring& as = {})
    {
        if (!CopyFileW((programFolder() + name).c_str(), (folder + (as.empty() ? name : as)).c_str(), FALSE))
        {
            throw std::runtime_error("a library cannot be copied");
        }
    }

    const std::wstring& path() const { return folder; }

private:
    std::wstring folder;
};
