// Refusal.cpp - see Refusal.h.
#include "MTParserLib/vocabulary/Refusal.h"

#include "mathexpr/SMTParsingExcepData.h"
#include "platform/ThreadSlot.h"

namespace {

// An item answers no more than false, so the reason waits here for whoever asked the item.
PLATFORM_THREAD_SLOT(Message::Id, lastRefusal);

}

bool refuse(Message::Id reason, bool showMessages)
{
    if (showMessages)
    {
        showMessage(reason);
    }
    // After the message: while that is shown, the host may have computed something else.
    lastRefusal.set(reason);
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
    const Message::Id reason = lastRefusal.get();
    lastRefusal.set(Message::Id{});
    return reason;
}
