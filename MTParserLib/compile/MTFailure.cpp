// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTFailure.cpp - see MTFailure.h.
#include "MTParserLib/compile/MTFailure.h"

#include "MTParserLib/compile/MTCompileErrors.h"

void MTFailure::note(Message::Id newMessage, std::uint32_t newExpected, MTSpan newSpan, std::wstring_view newItemName,
                     std::uint32_t newNbArgs)
{
    message = newMessage;
    kind = mathexpr::ExpressionDiagnostic::Kind::None;
    code = 0;
    span = newSpan;
    spanCountsTyped = false;
    expected = newExpected;
    nbArgs = newNbArgs;
    itemName = newItemName;
    conflictItemName.clear();
}

void MTFailure::noteDefinition(const SMTDefExcepData& data, std::uint32_t newExpected, MTSpan newSpan)
{
    note(Message::InvalidExpression, newExpected, newSpan, data.itemName, 0);
    kind = mathexpr::ExpressionDiagnostic::Kind::Definition;
    code = data.exID;
    conflictItemName = data.conflictItemName;
}

void MTFailure::noteParsing(const SMTParsingExcepData& data, std::uint32_t newExpected, MTSpan newSpan,
                            std::uint32_t newNbArgs)
{
    note(Message::InvalidExpression, newExpected, newSpan, data.itemName, newNbArgs);
    kind = mathexpr::ExpressionDiagnostic::Kind::Parsing;
    code = data.exID;
}

void MTFailure::noteRefusal(Message::Id refusal, MTSpan newSpan, std::uint32_t newNbArgs)
{
    note(refusal, expectedInsteadOf(refusal), newSpan, {}, newNbArgs);
}

void MTFailure::noteRaised(const mathexpr::ParsingException& exception, MTSpan newSpan, std::uint32_t newNbArgs)
{
    const SMTParsingExcepData& data = exception.entries.front().data;
    noteParsing(data, data.exID == mathexpr::ParsingError::ArgumentKind ? mathexpr::Expected::Number : 0U, newSpan,
                newNbArgs);
}
