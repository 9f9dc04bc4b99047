// MessageDisplay.cpp - from the number of a message to the user: the text, then the host's display or the platform's
// box.

#include "mathexpr/MessageDisplay.h"

#include "MTParserLib/MTMessage.h"
#include "MathExprRes/MessageTexts.h"
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
    const wchar_t* text = messageText(id);
    if (text == nullptr)
    {
        return;
    }
    if (messageDisplay.show != nullptr)
    {
        messageDisplay.show(messageDisplay.context, id, text);
    }
    else
    {
        platform::showMessageBox(text);
    }
}
