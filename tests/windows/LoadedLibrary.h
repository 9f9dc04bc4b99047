// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LoadedLibrary.h - the library, loaded at run time.
#pragma once

#include "mathexpr/CMathExpr.h"

#include <memory>
#include <new>
#include <string>

#include <windows.h>

class LoadedLibrary
{
public:
    /// @param path  full path of mathexpr.dll; the dependencies are loaded from its folder
    explicit LoadedLibrary(const std::wstring& path)
        : module(LoadLibraryExW(path.c_str(), nullptr, LOAD_WITH_ALTERED_SEARCH_PATH))
    {}
    LoadedLibrary(const LoadedLibrary&) = delete;
    LoadedLibrary& operator=(const LoadedLibrary&) = delete;
    ~LoadedLibrary()
    {
        if (module != nullptr)
        {
            FreeLibrary(module);
        }
    }

    explicit operator bool() const { return module != nullptr; }

    /// Computes a text with a new calculator.
    bool calculate(const wchar_t* text, VALTYPE& result) const
    {
        const mathexpr::HostRuntime host;
        alignas(CMathExpr) unsigned char memory[sizeof(CMathExpr)];
        entry<void (*)(void*, const mathexpr::HostRuntime*)>("_ZN9CMathExprC1ERKN8mathexpr11HostRuntimeE")(memory,
                                                                                                           &host);
        struct Destroy
        {
            void (*destructor)(void*);
            void operator()(void* object) const { destructor(object); }
        };
        const std::unique_ptr<void, Destroy> object(memory, {entry<void (*)(void*)>("_ZN9CMathExprD1Ev")});
        using Calculate = bool (*)(void*, const wchar_t*, VALTYPE*, std::uint32_t);
        return entry<Calculate>("_ZN9CMathExpr9CalculateEPKwR7VALTYPEj")(memory, text, &result, 2147483647);
    }

private:
    template <class Function>
    Function entry(const char* name) const
    {
        const FARPROC address = GetProcAddress(module, name);
        if (address == nullptr)
        {
            throw std::runtime_error(std::string("not exported: ") + name);
        }
        return reinterpret_cast<Function>(reinterpret_cast<void*>(address));
    }

    HMODULE module;
};
