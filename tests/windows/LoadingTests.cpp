// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// LoadingTests.cpp - loads the library with and without its resource library, once and a thousand times.
//
// This program is not linked with the library.

#include "tests/windows/BoxWatch.h"
#include "tests/windows/LoadedLibrary.h"
#include "tests/windows/ReplacedImport.h"

#include "mathexpr/SMTParsingExcepData.h"

#include <atomic>
#include <cstdlib>
#include <cstring>
#include <thread>

#include <gtest/gtest.h>
#include <psapi.h>

namespace {

/// A copy of the library in a separate folder, without its resource library.
class LibraryCopy
{
public:
    LibraryCopy()
    {
        folder.copy(L"mathexpr.dll");
        folder.copy(L"TarnUInfo.dll");
    }

    void addResources(const std::wstring& from) { folder.copy(from, L"MathExprRes.dll"); }

    std::wstring path() const { return folder.path() + L"mathexpr.dll"; }

private:
    ScratchFolder folder;
};

TEST(Loading, IsRefusedWithoutTheResourceLibrary)
{
    // The program's folder has a resource library. It is also the current directory and on the search path.
    SetCurrentDirectoryW(programFolder().c_str());
    ASSERT_NE(GetFileAttributesW(L"MathExprRes.dll"), INVALID_FILE_ATTRIBUTES);
    const std::wstring searchPath = programFolder();
    SetEnvironmentVariableW(L"PATH", searchPath.c_str());

    const LibraryCopy copy;
    BoxWatch watch;
    {
        const LoadedLibrary library(copy.path());
        const DWORD error = GetLastError();
        EXPECT_FALSE(library);
        EXPECT_EQ(error, static_cast<DWORD>(ERROR_DLL_INIT_FAILED));
    }
    EXPECT_EQ(watch.count(), 1);
    EXPECT_STREQ(watch.last().text, L"MathExprRes.dll not found");
    EXPECT_EQ(watch.last().title, programTitle());
    EXPECT_EQ(watch.last().buttons, 1);
    EXPECT_EQ(GetModuleHandleW(L"mathexpr.dll"), nullptr);
    EXPECT_EQ(GetModuleHandleW(L"TarnUInfo.dll"), nullptr);
}

TEST(Loading, SucceedsWithTheResourceLibraryBesideIt)
{
    LibraryCopy copy;
    copy.addResources(L"MathExprRes.dll");
    BoxWatch watch;
    const LoadedLibrary library(copy.path());
    ASSERT_TRUE(library);
    VALTYPE result;
    EXPECT_TRUE(library.calculate(L"[1,2,0]+[3,4,0]", result));
    EXPECT_EQ(result.type, 1);
    EXPECT_EQ(result.x, 4);
    EXPECT_EQ(result.y, 6);
    EXPECT_EQ(watch.count(), 0);
}

// The first call creates the vocabulary. It is slowed down so that the second call begins before it ends.
TEST(Loading, MakesTheVocabularyOnceForTwoThreads)
{
    LibraryCopy copy;
    copy.addResources(L"MathExprRes.dll");
    const LoadedLibrary library(copy.path());
    ASSERT_TRUE(library);
    static std::atomic<int> nbAllocations;
    nbAllocations = 0;
    const ReplacedImport slow(
        L"mathexpr.dll", "malloc", +[](std::size_t size) {
            if (++nbAllocations <= 50)
            {
                Sleep(5);
            }
            return std::malloc(size);
        });
    bool done[2] = {};
    VALTYPE results[2];
    std::thread other([&] { done[1] = library.calculate(L"1+1", results[1]); });
    done[0] = library.calculate(L"2*3", results[0]);
    other.join();
    EXPECT_TRUE(done[0]);
    EXPECT_TRUE(done[1]);
    EXPECT_EQ(results[0].x, 6.0);
    EXPECT_EQ(results[1].x, 2.0);
    EXPECT_LT(nbAllocations, 900) << "the vocabulary was created twice";
}

TEST(Loading, ShowsNothingForAStringThatIsMissing)
{
    LibraryCopy copy;
    copy.addResources(L"OneStringRes.dll");
    BoxWatch watch;
    const LoadedLibrary library(copy.path());
    ASSERT_TRUE(library);
    VALTYPE result;
    EXPECT_FALSE(library.calculate(L"1/0", result));
    Sleep(100);
    EXPECT_EQ(watch.count(), 0);
    EXPECT_FALSE(library.calculate(L"1+", result));
    EXPECT_EQ(watch.count(), 1);
    EXPECT_STREQ(watch.last().text, L"The one string of this library.");
}

TEST(Loading, LeavesNothingBehindAThousandTimes)
{
    LibraryCopy copy;
    copy.addResources(L"MathExprRes.dll");
    const auto loadUseAndUnload = [&copy] {
        const LoadedLibrary library(copy.path());
        VALTYPE result;
        ASSERT_TRUE(library && library.calculate(L"a=sin(30)+[1,2,3]*[4,5,6]", result));
        // A thread that computes and ends while the library is loaded, and an exception that leaves the library.
        std::thread([&library] {
            VALTYPE point;
            EXPECT_TRUE(library.calculate(L"[1,2,3]*2", point));
        }).join();
        EXPECT_THROW(library.calculate(L"sin([1,2,3])", result), mathexpr::ParsingException);
    };
    // Wine does not count handles, but it assigns the lowest free number, as Windows does.
    const auto measure = [](ULONG_PTR& handles, SIZE_T& memory) {
        HANDLE next = CreateEventW(nullptr, FALSE, FALSE, nullptr);
        handles = reinterpret_cast<ULONG_PTR>(next) / 4;
        CloseHandle(next);
        PROCESS_MEMORY_COUNTERS counters{};
        GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters));
        memory = counters.WorkingSetSize;
    };
    for (int i = 0; i < 100; ++i)
    {
        loadUseAndUnload();
    }
    ULONG_PTR handlesBefore = 0;
    ULONG_PTR handlesAfter = 0;
    SIZE_T memoryBefore = 0;
    SIZE_T memoryAfter = 0;
    measure(handlesBefore, memoryBefore);
    for (int i = 0; i < 1000; ++i)
    {
        loadUseAndUnload();
    }
    measure(handlesAfter, memoryAfter);
    std::printf("handles %llu -> %llu, working set %llu -> %llu bytes\n",
                static_cast<unsigned long long>(handlesBefore), static_cast<unsigned long long>(handlesAfter),
                static_cast<unsigned long long>(memoryBefore), static_cast<unsigned long long>(memoryAfter));
    // The lowest free number varies by a few handles that Wine keeps or has not closed yet, such as those of ended
    // threads. A leak of one handle per load would add 1,000.
    EXPECT_LE(handlesAfter, handlesBefore + 100);
    // A leak of one mapping of the resource library per load would add 28 MB.
    EXPECT_LE(memoryAfter, memoryBefore + 1024 * 1024);
    EXPECT_EQ(GetModuleHandleW(L"mathexpr.dll"), nullptr);
}

}
