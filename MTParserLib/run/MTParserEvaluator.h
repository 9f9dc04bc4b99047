// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserEvaluator.h - runs a compiled program.
#pragma once

#include "MTParserLib/program/MTParserProgram.h"

/// The step that ended a run: which one, its argument count, and why it refused its arguments.
struct MTRunFailure
{
    std::uint32_t position;
    std::uint32_t nbArgs;
    Message::Id refusal;  ///< None if it raised an exception.
};

/// Describes a step of scalar code that refused its operands.
/// @param slot  x of the step's result
MTRunFailure failureAt(const MTParserProgram& program, const double* slot, Message::Id refusal) noexcept;

/// Runs a complete program once. Allocates nothing. A program with a constant root is not run.
/// @param showMessages  whether an item may show the user why it refuses
/// @param failure       receives the step that refused its arguments or raised an exception
/// @return true with the value in the program's root; false as soon as an item refuses its arguments
/// @throws what an item raises for an argument of the wrong kind
bool runProgram(MTParserProgram& program, bool showMessages, MTRunFailure& failure);
