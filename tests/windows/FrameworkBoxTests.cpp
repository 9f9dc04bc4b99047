// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// FrameworkBoxTests.cpp - the message display for Microsoft's framework, compiled with a stub of the framework's
// header. The display calls the framework's message box and passes only the text.

#include "platform/Platform.h"

#include <afxwin.h>

#include <string>

#include <gtest/gtest.h>

namespace {

struct Request
{
    std::wstring text;
    UINT type;
    UINT helpId;
};

Request last;
int requests = 0;

TEST(FrameworkBox, IsRequestedWithoutStyleAndHelp)
{
    platform::showMessageBox(L"Division by zero");
    EXPECT_EQ(requests, 1);
    EXPECT_EQ(last.text, L"Division by zero");
    EXPECT_EQ(last.type, 0U);
    EXPECT_EQ(last.helpId, 0U);
}

TEST(FrameworkBox, DoesNotAffectTheComparisonOfNames)
{
    EXPECT_TRUE(platform::isSameName(L"p\u200Di", L"pi"));
    EXPECT_FALSE(platform::isSameName(L"Pi", L"pi"));
}

}

int WINAPI AfxMessageBox(const wchar_t* text, UINT type, UINT helpId)
{
    last = {text, type, helpId};
    ++requests;
    return IDOK;
}
