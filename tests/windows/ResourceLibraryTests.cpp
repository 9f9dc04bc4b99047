// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ResourceLibraryTests.cpp - TarnUInfo opens files in the folder of its caller, which is this program, and no others.

#include "TarnUInfo/TarnUInfo.h"
#include "tests/windows/Paths.h"

#include <cstdint>
#include <cstring>
#include <string>

#include <gtest/gtest.h>

namespace {

TEST(ResourceLibrary, IsFoundBesideTheCaller)
{
    HMODULE library = LoadResourceDll(L"MathExprRes.dll");
    ASSERT_NE(library, nullptr);
    wchar_t text[512];
    EXPECT_GT(LoadStringW(library, 10, text, 512), 0);
    EXPECT_EQ(LoadResourceDll(L"MathExprRes.dll"), library);
    EXPECT_EQ(LoadResourceDll(L"mathexprres.DLL"), library);
}

TEST(ResourceLibrary, IsOneOfSeveral)
{
    HMODULE first = LoadResourceDll(L"MathExprRes.dll");
    HMODULE second = LoadResourceDll(L"OneStringRes.dll");
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    EXPECT_EQ(LoadResourceDll(L"MathExprRes.dll"), first);
    EXPECT_EQ(LoadResourceDll(L"OneStringRes.dll"), second);
}

TEST(ResourceLibrary, IsOpenedForItsResourcesOnly)
{
    HMODULE library = LoadResourceDll(L"MathExprRes.dll");
    ASSERT_NE(library, nullptr);
    // The system marks such a handle in its low bits, and does not list the library as a module.
    EXPECT_NE(reinterpret_cast<std::uintptr_t>(library) & 3U, 0U);
    EXPECT_EQ(GetModuleHandleW(L"MathExprRes.dll"), nullptr);
}

TEST(ResourceLibrary, IsFoundNowhereElse)
{
    ScratchFolder folder;
    folder.copy(L"OneStringRes.dll", L"Planted.dll");
    const std::wstring searchPath = folder.path();
    ASSERT_TRUE(SetCurrentDirectoryW(searchPath.c_str()));
    SetEnvironmentVariableW(L"PATH", searchPath.c_str());
    ASSERT_NE(GetFileAttributesW(L"Planted.dll"), INVALID_FILE_ATTRIBUTES);
    EXPECT_EQ(LoadResourceDll(L"Planted.dll"), nullptr);
    EXPECT_EQ(LoadResourceDll((searchPath + L"Planted.dll").c_str()), nullptr);
    SetCurrentDirectoryW(programFolder().c_str());
}

TEST(ResourceLibrary, HasAPlainName)
{
    const std::wstring fullPath = programFolder() + L"MathExprRes.dll";
    ASSERT_NE(GetFileAttributesW(fullPath.c_str()), INVALID_FILE_ATTRIBUTES);
    for (const wchar_t* name :
         {L"", L".", L"..", L".\\MathExprRes.dll", L"./MathExprRes.dll", L"..\\bin\\MathExprRes.dll",
          L"MathExprRes.dll:stream", L"C:MathExprRes.dll", fullPath.c_str(), L"no such library.dll"})
    {
        EXPECT_EQ(LoadResourceDll(name), nullptr) << testing::PrintToString(name);
    }
    EXPECT_EQ(LoadResourceDll(nullptr), nullptr);
    EXPECT_EQ(LoadResourceDll(std::wstring(40000, L'a').c_str()), nullptr);
}

// Generated code does not belong to a module, so it has no folder.
TEST(ResourceLibrary, IsNotGivenToCodeOutsideOfModules)
{
    // sub rsp, 40; call rdx; add rsp, 40; ret: calls its second argument with its first.
    constexpr unsigned char code[] = {0x48, 0x83, 0xEC, 0x28, 0xFF, 0xD2, 0x48, 0x83, 0xC4, 0x28, 0xC3};
    void* const memory = VirtualAlloc(nullptr, sizeof code, MEM_COMMIT | MEM_RESERVE, PAGE_EXECUTE_READWRITE);
    ASSERT_NE(memory, nullptr);
    std::memcpy(memory, code, sizeof code);
    using Caller = HMODULE (*)(const wchar_t*, decltype(&LoadResourceDll));
    EXPECT_EQ(reinterpret_cast<Caller>(memory)(L"MathExprRes.dll", &LoadResourceDll), nullptr);
    VirtualFree(memory, 0, MEM_RELEASE);
}

}
