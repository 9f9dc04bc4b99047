// Refusal.cpp - see Refusal.h.
#include "MTParserLib/vocabulary/Refusal.h"

#include "mathexpr/SMTParsingExcepData.h"

#include <utility>

namespace {

// An item answers no more than false, so the reason waits here for whoever asked the item.
thread_local Message::Id lastRefusal{};

}

bool refuse(Message::Id reason, bool showMessages)
{
    if (showMessages)
    {
        showMessage(reason);
    }
    // After the message: while that is shown, the host may have computed something else.
    lastRefusal = reason;
    return false;
}

void refusePoint(std::uint32_t line)
{
    SMTParsingExcepData data;
    data.exID = ParsingError::ArgumentKind;
    throw ParsingException(line, 0, L"MTParserLib/MTParserDefFuncs", data);
}

Message::Id takeRefusal() noexcept
{
    return std::exchange(lastRefusal, Message::Id{});
}
