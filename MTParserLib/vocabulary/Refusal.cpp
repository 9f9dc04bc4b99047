// Refusal.cpp - see Refusal.h.
#include "MTParserLib/vocabulary/Refusal.h"

#include "mathexpr/SMTParsingExcepData.h"

bool refuse(Message::Id reason, bool showMessages)
{
    if (showMessages)
    {
        showMessage(reason);
    }
    return false;
}

void refusePoint(std::uint32_t line)
{
    SMTParsingExcepData data;
    data.exID = ParsingError::ArgumentKind;
    throw ParsingException(line, 0, L"MTParserLib/MTParserDefFuncs", data);
}
