// ShownMessages.cpp - the engine's one outside function, recording.
#include "tests/unit/ShownMessages.h"

#include "MTParserLib/MTMessage.h"

#include <utility>

namespace {

std::vector<std::uint32_t> shown;

}

void showMessage(Message::Id id)
{
    shown.push_back(id);
}

std::vector<std::uint32_t> takeShownMessages()
{
    return std::exchange(shown, {});
}
