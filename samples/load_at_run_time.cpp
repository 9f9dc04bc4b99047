// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// load_at_run_time.cpp - a host that continues without the library if it cannot be loaded.
//
//     load_at_run_time FOLDER EXPRESSION
//
// It is compiled with the library's headers, but not linked with it: the entry points are found by their names.

#include "mathexpr/CMathExpr.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <cstdio>
#include <string>

#include <windows.h>

namespace {

// The names are those of MinGW's compilers; lib/mathexpr.def lists them all.
using Construct = void (*)(void* object, const mathexpr::HostRuntime& host);
using Destroy = void (*)(void* object);
using Calculate = bool (*)(void* object, const wchar_t* expression, VALTYPE& result, std::uint32_t maxInteger);

template <class Function>
Function find(HMODULE library, const char* name)
{
    return reinterpret_cast<Function>(reinterpret_cast<void*>(GetProcAddress(library, name)));
}

bool compute(HMODULE library, const wchar_t* expression, VALTYPE& result)
{
    const auto construct = find<Construct>(library, "_ZN9CMathExprC1ERKN8mathexpr11HostRuntimeE");
    const auto destroy = find<Destroy>(library, "_ZN9CMathExprD1Ev");
    const auto calculate = find<Calculate>(library, "_ZN9CMathExpr9CalculateEPKwR7VALTYPEj");
    if (construct == nullptr || destroy == nullptr || calculate == nullptr)
    {
        return false;
    }
    alignas(CMathExpr) unsigned char object[sizeof(CMathExpr)];
    construct(object, mathexpr::HostRuntime());
    bool ok = false;
    try
    {
        ok = calculate(object, expression, result, 2147483647);
    }
    catch (const mathexpr::ParsingException& exception)
    {
        std::printf("not computed: code %u\n", exception.entries.front().data.exID);
    }
    destroy(object);
    return ok;
}

}

int wmain(int count, wchar_t** arguments)
{
    if (count != 3)
    {
        std::printf("load_at_run_time FOLDER EXPRESSION\n");
        return 2;
    }
    // Only the library's folder and the system's folders are searched for its dependencies.
    const std::wstring path = std::wstring(arguments[1]) + L"\\mathexpr.dll";
    HMODULE library =
        LoadLibraryExW(path.c_str(), nullptr, LOAD_LIBRARY_SEARCH_DLL_LOAD_DIR | LOAD_LIBRARY_SEARCH_SYSTEM32);
    if (library == nullptr)
    {
        std::printf("going on without the library: error %lu\n", GetLastError());
        return 3;
    }
    VALTYPE result;
    const bool ok = compute(library, arguments[2], result);
    FreeLibrary(library);
    if (ok && result.type == 0)
    {
        std::printf("%.17g\n", result.x);
    }
    else if (ok)
    {
        std::printf("[%.17g,%.17g,%.17g]\n", result.x, result.y, result.z);
    }
    return ok ? 0 : 1;
}
