// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTFailure.h - the record of a failure. Raw facts; text is built on request.
#pragma once

#include "MTParserLib/MTMessage.h"
#include "MTParserLib/text/MTSpan.h"
#include "mathexpr/ExpressionDiagnostic.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <cstdint>
#include <string>
#include <string_view>

/// The last failure; message is None if there is none. The fields are explained in ExpressionDiagnostic.h.
struct MTFailure
{
    Message::Id message;
    mathexpr::ExpressionDiagnostic::Kind kind;
    std::uint32_t code;
    MTSpan span;           ///< In the rewritten text; empty if no part of it is concerned.
    bool spanCountsTyped;  ///< The span counts in the typed text instead.
    std::uint32_t expected;
    std::uint32_t nbArgs;
    std::wstring itemName;
    std::wstring conflictItemName;

    void clear() noexcept { message = Message::None; }

    void note(Message::Id message, std::uint32_t expected, MTSpan span, std::wstring_view itemName,
              std::uint32_t nbArgs);
    /// Records a definition that the registrar refused.
    void noteDefinition(const SMTDefExcepData& data, std::uint32_t expected, MTSpan span);
    void noteParsing(const SMTParsingExcepData& data, std::uint32_t expected, MTSpan span, std::uint32_t nbArgs);
    /// Records an item that refused its arguments, or raised an exception for them.
    void noteRefusal(Message::Id refusal, MTSpan span, std::uint32_t nbArgs);
    void noteRaised(const mathexpr::ParsingException& exception, MTSpan span, std::uint32_t nbArgs);
};
