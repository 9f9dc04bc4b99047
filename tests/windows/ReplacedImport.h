// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReplacedImport.h - replaces a function that a library imports by a test function.
#pragma once

#include <cstring>
#include <stdexcept>
#include <string>

#include <windows.h>

/// The entry in a module's import table for a function; null if there is none.
inline void** importedFunction(HMODULE module, const char* name)
{
    auto* const base = reinterpret_cast<unsigned char*>(module);
    const auto* const dos = reinterpret_cast<const IMAGE_DOS_HEADER*>(base);
    const auto* const headers = reinterpret_cast<const IMAGE_NT_HEADERS*>(base + dos->e_lfanew);
    const IMAGE_DATA_DIRECTORY& imports = headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
    for (auto* library = reinterpret_cast<const IMAGE_IMPORT_DESCRIPTOR*>(base + imports.VirtualAddress);
         library->Name != 0; ++library)
    {
        const auto* names = reinterpret_cast<const IMAGE_THUNK_DATA*>(base + library->OriginalFirstThunk);
        auto* entries = reinterpret_cast<IMAGE_THUNK_DATA*>(base + library->FirstThunk);
        for (; names->u1.AddressOfData != 0; ++names, ++entries)
        {
            const auto* byName = reinterpret_cast<const IMAGE_IMPORT_BY_NAME*>(base + names->u1.AddressOfData);
            if (!IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal) &&
                std::strcmp(reinterpret_cast<const char*>(byName->Name), name) == 0)
            {
                return reinterpret_cast<void**>(&entries->u1.Function);
            }
        }
    }
    return nullptr;
}

/// While the object exists, a module calls another function instead of the imported one.
class ReplacedImport
{
public:
    template <class Function>
    ReplacedImport(const wchar_t* module, const char* name, Function* function)
        : entry(importedFunction(GetModuleHandleW(module), name))
    {
        if (entry == nullptr)
        {
            throw std::runtime_error(std::string("not imported: ") + name);
        }
        original = *entry;
        write(reinterpret_cast<void*>(function));
    }
    ReplacedImport(const ReplacedImport&) = delete;
    ReplacedImport& operator=(const ReplacedImport&) = delete;
    ~ReplacedImport() { write(original); }

private:
    void write(void* function)
    {
        DWORD protection = 0;
        VirtualProtect(entry, sizeof(*entry), PAGE_READWRITE, &protection);
        *entry = function;
        VirtualProtect(entry, sizeof(*entry), protection, &protection);
    }

    void** entry;
    void* original = nullptr;
};
