// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// StartUpWindows.cpp - process attach: loads the resource library with the message texts, or refuses to be loaded.
// Process detach: releases what the library keeps, if the process goes on.
//
// Everything here runs on the host's thread, the attach under the loader's lock. The handle is written once, before any
// other entry point can run, and only read afterwards. It is not released here: what TarnUInfo has loaded it releases
// when it is unloaded itself, which is right after this library.

#include "mathexpr/MessageSource.h"

#include "TarnUInfo/TarnUInfo.h"
#include "platform/KeptWhileLoaded.h"
#include "platform/Platform.h"

#include <windows.h>

namespace {

HMODULE resourceLibrary = nullptr;

}

// Defined under the name that the loader's entry point calls; the signature is the system's.
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
    // With a size of 0, LoadString answers where the string stands in the resource, without a terminating zero.
    const wchar_t* text = nullptr;
    const int length = LoadStringW(resourceLibrary, id, reinterpret_cast<wchar_t*>(&text), 0);
    if (length <= 0)
    {
        return {};
    }
    return {text, static_cast<std::size_t>(length)};
}
