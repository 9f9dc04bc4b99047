// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageDisplayTests.cpp - selection of the message display, and messages without a text.
//
// The display is compiled into this program, because the library shows only its own message numbers.
#include "mathexpr/MessageDisplay.h"

#include "MTParserLib/MTMessage.h"
#include "mathexpr/MessageSource.h"
#include "mathexpr/ThreadMessageDisplay.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

using Ids = std::vector<std::uint32_t>;

constexpr auto withoutText = static_cast<Message::Id>(9999);

mathexpr::ProcessMessageDisplay recording(Ids& ids)
{
    return {[](void* context, std::uint32_t id, const wchar_t*) { static_cast<Ids*>(context)->push_back(id); }, &ids};
}

class Displays : public testing::Test
{
protected:
    ~Displays() override { mathexpr::setMessageDisplay(before); }

    Ids processes;
    Ids threads;
    const mathexpr::ProcessMessageDisplay before = mathexpr::setMessageDisplay(recording(processes));
};

TEST_F(Displays, ShowNothingWhereThereIsNoText)
{
    EXPECT_EQ(loadMessage(withoutText), L"");
    showMessage(withoutText);
    showMessage(Message::DivisionByZero);
    EXPECT_EQ(processes, Ids{Message::DivisionByZero});
}

// The message goes to standard error: nobody would close a message box.
TEST_F(Displays, AreLeftToTheSystemWhereNoneIsSet)
{
    mathexpr::setMessageDisplay({});
    testing::internal::CaptureStderr();
    showMessage(Message::DivisionByZero);
    const std::string shown = testing::internal::GetCapturedStderr();
    const std::wstring text = loadMessage(Message::DivisionByZero);
    EXPECT_EQ(std::wstring(shown.begin(), shown.end()), text + L"\n");
}

TEST_F(Displays, OfAThreadNestAndEndWithTheirScope)
{
    const mathexpr::ProcessMessageDisplay own = recording(threads);
    const mathexpr::ProcessMessageDisplay without;
    {
        const ThreadMessageDisplay outer(&own);
        showMessage(Message::DivisionByZero);
        {
            const ThreadMessageDisplay none(nullptr);
            showMessage(Message::UnknownName);
        }
        {
            const ThreadMessageDisplay inner(&without);
            showMessage(Message::UnknownFunction);
        }
        showMessage(Message::InvalidExpression);
    }
    showMessage(Message::IntegerTooLarge);
    EXPECT_EQ(threads, (Ids{Message::DivisionByZero, Message::InvalidExpression}));
    EXPECT_EQ(processes, (Ids{Message::UnknownName, Message::UnknownFunction, Message::IntegerTooLarge}));
}

}
