// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// StartUpWindows.cpp - process attach: loads the resource library with the message texts, or refuses to load. Process
// detach: releases what the library keeps, unless the process is ending.
//
// Everything runs on the host's thread; attach runs under the loader's lock. The handle is written once, before any
// other entry point can run, and only read afterwards. It is not released here: TarnUInfo is unloaded right after this
// library, and releases the libraries that it has loaded.

#include "mathexpr/MessageSource.h"

#include "TarnUInfo/TarnUInfo.h"
#include "platform/KeptWhileLoaded.h"
#include "platform/Platform.h"

#include <windows.h>

namespace {

HMODULE resourceLibrary = nullptr;

}

// The loader's entry point calls it by this name; the system defines the signature.
extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID processEnds)
{
    if (reason == DLL_PROCESS_ATTACH)
    {
        DisableThreadLibraryCalls(module);
        resourceLibrary = LoadResourceDll(L"MathExprRes.dll");
        if (resourceLibrary == nullptr)
        {
            platform::showMessageBox(L"MathExprRes.dll not found");
            return FALSE;
        }
    }
    else if (reason == DLL_PROCESS_DETACH && processEnds == nullptr)
    {
        platform::runUnloadActions();
    }
    return TRUE;
}

std::wstring loadMessage(std::uint32_t id)
{
    // With a size of 0, LoadString returns the address of the string in the resource, which is not zero-terminated.
    const wchar_t* text = nullptr;
    const int length = LoadStringW(resourceLibrary, id, reinterpret_cast<wchar_t*>(&text), 0);
    if (length <= 0)
    {
        return {};
    }
    return {text, static_cast<std::size_t>(length)};
}
