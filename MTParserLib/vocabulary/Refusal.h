// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Refusal.h - how an item refuses its arguments: with the message that apply returns, or with an exception.
#pragma once

#include "MTParserLib/MTMessage.h"

#include <cstdint>

/// Shows the user why an item refuses its arguments, if it does and showing is allowed.
/// @return the refusal
inline Message::Id showRefusal(Message::Id refusal, bool showMessages)
{
    if (refusal != Message::None && showMessages)
    {
        showMessage(refusal);
    }
    return refusal;
}

/// Raises the parsing exception of a function that gets a point instead of a number.
/// @param line  source line of the function's class, which identifies it in the exception
[[noreturn]] void refusePoint(std::uint32_t line);
