// Refusal.cpp - see Refusal.h.
#include "MTParserLib/vocabulary/Refusal.h"

#include "mathexpr/SMTParsingExcepData.h"

void refusePoint(std::uint32_t line)
{
    SMTParsingExcepData data;
    data.exID = ParsingError::ArgumentKind;
    throw ParsingException(line, 0, L"MTParserLib/MTParserDefFuncs", data);
}
