// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTMessage.h - the one way in which the engine shows an error to the user.
//
// The engine knows messages by number only. Whoever links the engine defines this function: the shared library shows a
// message box, a test records the number.
#pragma once

#include <cstdint>

/// Numbers of the messages. The numbers are part of the interface: they pick a text of the resource library.
namespace Message {
enum Id : std::uint32_t
{
    None = 0,  ///< Nothing is wrong.
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

/// Shows the text of message id, or nothing when there is no such text. Returns when the user has seen it.
void showMessage(Message::Id id);
