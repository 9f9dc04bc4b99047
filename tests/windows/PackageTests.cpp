// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// PackageTests.cpp - the samples of the unpacked package, run as a German user would.
//
// MATHEXPR_PACKAGE is the package's folder, MATHEXPR_SAMPLES that of the samples' programs. The user's language is that
// of the session.

#include "MathExprRes/MessageTexts.h"
#include "tests/windows/BoxWatch.h"

#include <cstdlib>

#include <gtest/gtest.h>

namespace {

std::wstring environment(const wchar_t* name)
{
    const wchar_t* value = _wgetenv(name);
    return value == nullptr ? std::wstring() : std::wstring(value);
}

struct Outcome
{
    DWORD exitCode = 0;
    LONG boxes = 0;
    std::wstring text;
};

/// Runs a program in the package's bin, with its boxes watched.
Outcome run(const std::wstring& program, const std::wstring& arguments)
{
    const std::wstring path = environment(L"MATHEXPR_SAMPLES") + L"\\" + program;
    std::wstring command = L"\"" + path + L"\" " + arguments;
    const std::wstring folder = environment(L"MATHEXPR_PACKAGE") + L"\\bin";
    SetEnvironmentVariableW(L"PATH", folder.c_str());
    STARTUPINFOW start{};
    start.cb = sizeof(start);
    PROCESS_INFORMATION process{};
    Outcome outcome;
    if (!CreateProcessW(path.c_str(), command.data(), nullptr, nullptr, FALSE, CREATE_SUSPENDED, nullptr, nullptr,
                        &start, &process))
    {
        ADD_FAILURE() << "the sample does not start: error " << GetLastError();
        return outcome;
    }
    {
        const BoxWatch watch(process.dwProcessId);
        ResumeThread(process.hThread);
        WaitForSingleObject(process.hProcess, 30000);
        outcome.boxes = watch.count();
        outcome.text = watch.last().text;
    }
    GetExitCodeProcess(process.hProcess, &outcome.exitCode);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return outcome;
}

TEST(Package, LinkedSampleShowsAGermanBoxToAGermanUser)
{
    ASSERT_EQ(PRIMARYLANGID(GetUserDefaultUILanguage()), LANG_GERMAN);
    const Outcome outcome = run(L"linked_host.exe", L"1/0");
    EXPECT_EQ(outcome.exitCode, 1U);
    EXPECT_EQ(outcome.boxes, 1);
    EXPECT_EQ(outcome.text, messageText(10, Language::German));
}

TEST(Package, LinkedSampleComputes)
{
    const Outcome outcome = run(L"linked_host.exe", L"corner*width");
    EXPECT_EQ(outcome.exitCode, 0U);
    EXPECT_EQ(outcome.boxes, 0);
}

TEST(Package, LoadingSampleShowsAGermanBoxToAGermanUser)
{
    const Outcome outcome = run(L"load_at_run_time.exe", L"\"" + environment(L"MATHEXPR_PACKAGE") + L"\\bin\" foo(1)");
    EXPECT_EQ(outcome.exitCode, 1U);
    EXPECT_EQ(outcome.boxes, 1);
    EXPECT_EQ(outcome.text, messageText(4, Language::German));
}

TEST(Package, LoadingSampleComputes)
{
    const Outcome outcome = run(L"load_at_run_time.exe", L"\"" + environment(L"MATHEXPR_PACKAGE") + L"\\bin\" 1+2");
    EXPECT_EQ(outcome.exitCode, 0U);
    EXPECT_EQ(outcome.boxes, 0);
}

TEST(Package, LoadingSampleContinuesWithoutTheLibrary)
{
    const Outcome outcome = run(L"load_at_run_time.exe", L"\"C:\\no such folder\" 1+2");
    EXPECT_EQ(outcome.exitCode, 3U);
    EXPECT_EQ(outcome.boxes, 0);
}

}
