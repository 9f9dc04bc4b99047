// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTRunChoice.h - what is known of the runs of a program, and which runner the next one takes.
//
//     x/y       compiled                    Fresh
//               evaluate: steps, complete   Settled        the slots tell of which kinds x and y make them
//               evaluate: scalar code       Scalar, armed  the next evaluation jumps into scalar code
//               evaluate, y is 0: refused   Scalar         not armed: there is a failure to be forgotten
//               evaluate, x is a point      Settled        by the steps: scalar code was made for numbers
//
// The whole table is in docs/architecture.md.
#pragma once

#include "mathexpr/ValType.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class MTParserProgram;
struct MTScalarStep;

enum class MTRunState : std::uint8_t
{
    Empty,        ///< There is no program, or it is still being compiled.
    Constant,     ///< The value stands in the root; nothing is run.
    Fresh,        ///< No run with inputs of these kinds has been complete.
    Settled,      ///< The last run was complete, so the slots have the kinds that later runs give them.
    Scalar,       ///< There is scalar code for these kinds.
    Interpreted,  ///< Scalar code cannot stand for the program.
};

class MTRunChoice
{
public:
    MTRunState getState() const noexcept { return state; }

    /// There is no program.
    void clear() noexcept
    {
        state = MTRunState::Empty;
        armed = nullptr;
    }

    /// A program has been compiled.
    /// @param nbInputs  as many as it has
    void begin(bool isConstant, std::size_t nbInputs)
    {
        inputHeads.resize(nbInputs);
        state = isConstant ? MTRunState::Constant : MTRunState::Fresh;
    }

    /// Chooses the runner of the next evaluation of a complete program, which it belongs to.
    /// @return Constant, where there is nothing to run; Scalar: scalar code; Fresh or Interpreted: the steps
    MTRunState choose(MTParserProgram& program);

    /// Call when the steps have run to their end.
    void settle(const MTParserProgram& program);

    /// The first step of scalar code while the fast path is armed: while no call is under way that may reach the host,
    /// and the last evaluation was a success. Null otherwise.
    const MTScalarStep* getArmed() const noexcept { return armed; }
    void arm(const MTParserProgram& program) noexcept;
    void disarm() noexcept { armed = nullptr; }

private:
    MTRunState state = MTRunState::Empty;
    const MTScalarStep* armed = nullptr;
    std::vector<std::uint16_t> inputHeads;  // of the run that settled the kinds
};
