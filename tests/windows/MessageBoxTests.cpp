// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageBoxTests.cpp - every message in its real box, which another process finds and dismisses.

#include "mathexpr/CMathExpr.h"
#include "mathexpr/MessageDisplay.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/Variables.h"
#include "tests/windows/BoxWatch.h"
#include "tests/windows/TelltaleExpressions.h"

#include <cstring>

#include <gtest/gtest.h>

namespace {

std::wstring textOfResource(std::uint32_t id)
{
    HMODULE resources = LoadLibraryExW((programFolder() + L"MathExprRes.dll").c_str(), nullptr,
                                       LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    wchar_t text[512] = {};
    const int length = LoadStringW(resources, id, text, 512);
    FreeLibrary(resources);
    return std::wstring(text, static_cast<std::size_t>(length));
}

constexpr VALTYPE untouched{1, 1, 0, 0, -1.5, -2.5, -3.5};

bool sameBytes(const VALTYPE& left, const VALTYPE& right)
{
    return std::memcmp(&left, &right, sizeof(VALTYPE)) == 0;
}

TEST(MessageBoxes, ShowEachMessageAsItsResourceReads)
{
    BoxWatch watch;
    CMathExpr calculator;
    for (const auto& [message, expression] : telltaleExpressions)
    {
        SCOPED_TRACE(message);
        watch.clear();
        VALTYPE result = untouched;
        EXPECT_FALSE(calculator.Calculate(expression, result, 2147483647));
        EXPECT_TRUE(sameBytes(result, untouched));
        EXPECT_EQ(watch.count(), 1);
        const std::wstring text = textOfResource(message);
        EXPECT_FALSE(text.empty());
        EXPECT_EQ(watch.last().text, text);
        EXPECT_EQ(watch.last().title, programTitle());
        EXPECT_EQ(watch.last().buttons, 1);
        EXPECT_STREQ(watch.last().buttonText, L"OK");
        EXPECT_EQ(watch.last().exclamationMark, 1);
        EXPECT_EQ(watch.last().owner, 0U);
        mathexpr::dropAssignment(mathexpr::expressionOf(calculator));
    }
}

TEST(MessageBoxes, BelongToTheActiveWindow)
{
    HWND window = CreateWindowExW(0, L"Static", L"host", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0, 300, 200, nullptr,
                                  nullptr, GetModuleHandleW(nullptr), nullptr);
    ASSERT_NE(window, nullptr);
    SetActiveWindow(window);
    ASSERT_EQ(GetActiveWindow(), window);
    {
        BoxWatch watch;
        CMathExpr calculator;
        VALTYPE result;
        EXPECT_FALSE(calculator.Calculate(L"1/0", result, 2147483647));
        EXPECT_EQ(watch.count(), 1);
        EXPECT_EQ(watch.last().owner, reinterpret_cast<ULONG_PTR>(window));
        EXPECT_EQ(watch.last().ownerDisabled, 1);
    }
    EXPECT_TRUE(IsWindowEnabled(window));
    DestroyWindow(window);
}

TEST(MessageBoxes, AreNotShownWhenSilentButForTheIntegerLimit)
{
    BoxWatch watch;
    for (const auto& [message, expression] : telltaleExpressions)
    {
        SCOPED_TRACE(message);
        MathExpression object(true, nullptr);
        bool compiled = false;
        try
        {
            compiled = object.setExpression(expression);
        }
        catch (const mathexpr::ParsingException&)
        {}
        EXPECT_FALSE(compiled);
        Sleep(40);  // several polls of the watcher
        EXPECT_EQ(watch.count(), message == 19 ? 1 : 0);
    }
    EXPECT_EQ(watch.last().text, textOfResource(19));
}

TEST(MessageBoxes, AreReplacedByTheHostsDisplay)
{
    BoxWatch watch;
    std::uint32_t shown = 0;
    const mathexpr::ProcessMessageDisplay before = mathexpr::setMessageDisplay(
        {[](void* context, std::uint32_t id, const wchar_t*) { *static_cast<std::uint32_t*>(context) = id; }, &shown});
    CMathExpr calculator;
    VALTYPE result;
    EXPECT_FALSE(calculator.Calculate(L"1/0", result, 2147483647));
    mathexpr::setMessageDisplay(before);
    Sleep(100);
    EXPECT_EQ(shown, 10U);
    EXPECT_EQ(watch.count(), 0);
}

}
