// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTRunChoice.h - the state of a program between runs; chooses the runner of the next run.
//
// Example, x/y:
//
//     compiled                    Fresh
//     evaluate: steps, complete   Settled        the slots have the kinds that x and y lead to
//     evaluate: scalar code       Scalar, armed  the next evaluation takes the fast path
//     evaluate, y is 0: refused   Scalar         not armed: there is a recorded failure to clear
//     evaluate, x is a point      Settled        by the steps: scalar code was built for numbers
//
// docs/architecture.md has the whole table.
#pragma once

#include "mathexpr/ValType.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class MTParserProgram;
struct MTScalarStep;

enum class MTRunState : std::uint8_t
{
    Empty,        ///< There is no program, or it is being compiled.
    Constant,     ///< The root holds the value; nothing is run.
    Fresh,        ///< No run with inputs of these kinds has completed.
    Settled,      ///< The last run completed, so the slots have the kinds of later runs.
    Scalar,       ///< There is scalar code for these kinds.
    Interpreted,  ///< Scalar code cannot run the program.
};

class MTRunChoice
{
public:
    MTRunState getState() const noexcept { return state; }

    /// The program has been removed.
    void clear() noexcept
    {
        state = MTRunState::Empty;
        armed = nullptr;
    }

    /// A program has been compiled.
    /// @param nbInputs  its number of inputs
    void begin(bool isConstant, std::size_t nbInputs)
    {
        inputHeads.resize(nbInputs);
        state = isConstant ? MTRunState::Constant : MTRunState::Fresh;
    }

    /// Selects the engine for the next evaluation of a complete program, which owns this object.
    /// @return Constant: nothing to run; Scalar: scalar code; Fresh or Interpreted: the steps
    MTRunState choose(MTParserProgram& program);

    /// Call after the steps have run to their end.
    void settle(const MTParserProgram& program);

    /// The first step of scalar code while the fast path is armed: no call that may reach the host is in progress, and
    /// the last evaluation succeeded. Otherwise null.
    const MTScalarStep* getArmed() const noexcept { return armed; }
    void arm(const MTParserProgram& program) noexcept;
    void disarm() noexcept { armed = nullptr; }

private:
    MTRunState state = MTRunState::Empty;
    const MTScalarStep* armed = nullptr;
    std::vector<std::uint16_t> inputHeads;  // of the run that determined the kinds
};
