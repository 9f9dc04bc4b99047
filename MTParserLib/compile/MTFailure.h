// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTFailure.h - what is kept of a failure so that it can be told to a host later: numbers and a place, nothing made
// ready. Kept by the compiler, also of a failure while its program runs.
#pragma once

#include "MTParserLib/MTMessage.h"
#include "MTParserLib/text/MTSpan.h"
#include "mathexpr/ExpressionDiagnostic.h"

#include <cstdint>
#include <string>

/// The last failure; nothing has failed where message is 0. What the fields mean to a host is said in
/// ExpressionDiagnostic.h.
struct MTFailure
{
    Message::Id message{};
    mathexpr::ExpressionDiagnostic::Kind kind = mathexpr::ExpressionDiagnostic::Kind::None;
    std::uint32_t code = 0;
    MTSpan span;                   ///< In the rewritten text; empty where nothing in it stands for the failure.
    bool spanCountsTyped = false;  ///< The span counts in the typed text instead.
    std::uint32_t expected = 0;
    std::uint32_t nbArgs = 0;
    std::wstring itemName;
    std::wstring conflictItemName;
};
