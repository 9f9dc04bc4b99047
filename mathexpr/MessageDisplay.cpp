// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MessageDisplay.cpp - shows a message by number: loads its text and passes it to the display of the thread. A thread
// without a display uses that of the process; without either, the platform shows a message box.

#include "mathexpr/MessageDisplay.h"

#include "MTParserLib/MTMessage.h"
#include "mathexpr/MessageSource.h"
#include "mathexpr/ThreadMessageDisplay.h"
#include "platform/FloatingPointGuard.h"
#include "platform/Platform.h"
#include "platform/ThreadSlot.h"

#include <utility>

namespace {

mathexpr::ProcessMessageDisplay messageDisplay;

/// Null if the thread uses the display of the process.
PLATFORM_THREAD_SLOT(const mathexpr::ProcessMessageDisplay*, threadsDisplay);

}

ThreadMessageDisplay::ThreadMessageDisplay(const mathexpr::ProcessMessageDisplay* display) noexcept
    : before(threadsDisplay.get())
{
    threadsDisplay.set(display != nullptr && display->show != nullptr ? display : nullptr);
}

ThreadMessageDisplay::~ThreadMessageDisplay()
{
    threadsDisplay.set(before);
}

mathexpr::ProcessMessageDisplay mathexpr::setMessageDisplay(mathexpr::ProcessMessageDisplay display) noexcept
{
    return std::exchange(messageDisplay, display);
}

void showMessage(Message::Id id)
{
    const std::wstring text = loadMessage(id);
    if (text.empty())
    {
        return;
    }
    const platform::HostFloatingPoint hostsWords;
    const mathexpr::ProcessMessageDisplay* const threads = threadsDisplay.get();
    const mathexpr::ProcessMessageDisplay display = threads != nullptr ? *threads : messageDisplay;
    if (display.show != nullptr)
    {
        display.show(display.context, id, text.c_str());
    }
    else
    {
        platform::showMessageBox(text.c_str());
    }
}
