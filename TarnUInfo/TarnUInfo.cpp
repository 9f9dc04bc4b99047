// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TarnUInfo.cpp - see TarnUInfo.h. A list holds the loaded libraries. They are released when this library is unloaded,
// unless the process is ending, which releases everything.
//
// Does not use the C++ run-time library, so that unloading leaves nothing of it behind.

#include "TarnUInfo/TarnUInfo.h"

#if defined(_MSC_VER)
#include <intrin.h>
#define TARNUINFO_RETURN_ADDRESS() _ReturnAddress()
#else
#define TARNUINFO_RETURN_ADDRESS() __builtin_return_address(0)
#endif

namespace {

/// The longest path of Windows, including the terminating zero.
constexpr DWORD longestPath = 32768;

/// A loaded library and its path, in one block of memory.
struct ResourceLibrary
{
    ResourceLibrary* next;
    HMODULE module;
    wchar_t path[longestPath];
};

SRWLOCK librariesLock = SRWLOCK_INIT;
ResourceLibrary* libraries = nullptr;

/// The module that contains the code at an address; null if there is none.
HMODULE moduleOfCode(const void* address)
{
    HMODULE module = nullptr;
    constexpr DWORD flags = GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT;
    return GetModuleHandleExW(flags, static_cast<const wchar_t*>(address), &module) ? module : nullptr;
}

/// A name is not plain if it could refer to another folder, or to another stream of a file.
bool isPlainFileName(const wchar_t* name)
{
    if (*name == L'\0' || lstrcmpW(name, L".") == 0 || lstrcmpW(name, L"..") == 0)
    {
        return false;
    }
    for (; *name != L'\0'; ++name)
    {
        if (*name == L'\\' || *name == L'/' || *name == L':')
        {
            return false;
        }
    }
    return true;
}

/// Builds the path of a file in a module's folder. Returns false if the folder is unknown or the path too long.
bool pathBeside(HMODULE module, const wchar_t* fileName, wchar_t (&path)[longestPath])
{
    DWORD length = GetModuleFileNameW(module, path, longestPath);
    // not covered: the system knows the path of every module, and no path is longer
    if (length == 0 || length >= longestPath)
    {
        return false;
    }
    while (length > 0 && path[length - 1] != L'\\')  // not covered: the path of a module contains a folder
    {
        --length;
    }
    for (; length < longestPath; ++length, ++fileName)
    {
        path[length] = *fileName;
        if (*fileName == L'\0')
        {
            return true;
        }
    }
    return false;
}

HMODULE findLibrary(const wchar_t* path)
{
    for (const ResourceLibrary* library = libraries; library != nullptr; library = library->next)
    {
        if (CompareStringOrdinal(library->path, -1, path, -1, TRUE) == CSTR_EQUAL)
        {
            return library->module;
        }
    }
    return nullptr;
}

/// Returns a loaded library, or loads it and adds it to the list. Until then, the caller owns the new entry.
HMODULE findOrLoad(ResourceLibrary*& entry)
{
    HMODULE module = findLibrary(entry->path);
    if (module == nullptr)
    {
        module = LoadLibraryExW(entry->path, nullptr, LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
        if (module != nullptr)
        {
            entry->module = module;
            entry->next = libraries;
            libraries = entry;
            entry = nullptr;
        }
    }
    return module;
}

}

HMODULE LoadResourceDll(const wchar_t* fileName)
{
    HMODULE caller = moduleOfCode(TARNUINFO_RETURN_ADDRESS());
    if (caller == nullptr || fileName == nullptr || !isPlainFileName(fileName))
    {
        return nullptr;
    }
    auto* entry = static_cast<ResourceLibrary*>(HeapAlloc(GetProcessHeap(), 0, sizeof(ResourceLibrary)));
    if (entry == nullptr)  // not covered: the system's heap cannot be made to run out
    {
        return nullptr;
    }
    HMODULE module = nullptr;
    if (pathBeside(caller, fileName, entry->path))
    {
        AcquireSRWLockExclusive(&librariesLock);
        module = findOrLoad(entry);
        ReleaseSRWLockExclusive(&librariesLock);
    }
    if (entry != nullptr)
    {
        HeapFree(GetProcessHeap(), 0, entry);
    }
    return module;
}

extern "C" BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID processEnds)
{
    if (reason == DLL_PROCESS_ATTACH)
    {
        DisableThreadLibraryCalls(module);
    }
    else if (reason == DLL_PROCESS_DETACH && processEnds == nullptr)
    {
        while (libraries != nullptr)
        {
            ResourceLibrary* library = libraries;
            libraries = library->next;
            FreeLibrary(library->module);
            HeapFree(GetProcessHeap(), 0, library);
        }
    }
    return TRUE;
}
