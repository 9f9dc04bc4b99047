// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Refusal.cpp - see Refusal.h.
#include "MTParserLib/vocabulary/Refusal.h"

#include "mathexpr/SMTParsingExcepData.h"

void refusePoint(std::uint32_t line)
{
    SMTParsingExcepData data;
    data.exID = mathexpr::ParsingError::ArgumentKind;
    throw mathexpr::ParsingException(line, 0, L"MTParserLib/MTParserDefFuncs", data);
}
