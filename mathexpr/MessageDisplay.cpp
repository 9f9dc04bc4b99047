// MessageDisplay.cpp - from the number of a message to the user: the text, then the host's display or the platform's
// box.

#include "mathexpr/MessageDisplay.h"

#include "MTParserLib/MTMessage.h"
#include "mathexpr/MessageSource.h"
#include "platform/FloatingPointGuard.h"
#include "platform/Platform.h"

#include <utility>

namespace {

MessageDisplay messageDisplay;

}

MessageDisplay setMessageDisplay(MessageDisplay display) noexcept
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
    if (messageDisplay.show != nullptr)
    {
        messageDisplay.show(messageDisplay.context, id, text.c_str());
    }
    else
    {
        platform::showMessageBox(text.c_str());
    }
}
