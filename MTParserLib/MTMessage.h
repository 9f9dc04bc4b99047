// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTMessage.h - how the engine shows an error to the user. There is no other way.
//
// The engine knows messages by number only. The program that links the engine defines this function: the shared library
// shows a message box, a test records the number.
#pragma once

#include <cstdint>

/// Message numbers. They are part of the interface: each selects a text of the resource library.
namespace Message {
enum Id : std::uint32_t
{
    None = 0,  ///< No error.
    UnknownName = 1,
    BracketNotClosed = 2,
    InvalidExpression = 3,
    UnknownFunction = 4,
    NumberWithPoint = 5,
    ArcDomain = 6,
    RoundDomain = 7,
    LnDomain = 8,
    LogDomain = 9,
    DivisionByZero = 10,
    DivisionByPoint = 11,
    SqrtDomain = 12,
    PowerOfPoint = 13,
    DistNeedsPoints = 14,
    NorNeedsPoints = 15,
    VecNeedsPoints = 16,
    Vec1NeedsPoints = 17,
    IllNeedsPoints = 18,
    IntegerTooLarge = 19,
};
}

/// Shows the text of a message, or nothing if it has no text. Returns when the user has seen it.
void showMessage(Message::Id id);
