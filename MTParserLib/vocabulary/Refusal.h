// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Refusal.h - the two ways in which an item turns its arguments down: the message that apply returns, and an exception.
#pragma once

#include "MTParserLib/MTMessage.h"

#include <cstdint>

/// Shows the user why an item refuses its arguments, if it does and may.
/// @return the refusal
inline Message::Id showRefusal(Message::Id refusal, bool showMessages)
{
    if (refusal != Message::None && showMessages)
    {
        showMessage(refusal);
    }
    return refusal;
}

/// Raises the parsing exception of a function that needs a number and is given a point.
/// @param line  the source line of the function's class, by which a reader of the exception tells which one it was
[[noreturn]] void refusePoint(std::uint32_t line);
