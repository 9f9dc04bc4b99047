// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTProgramCopy.h - runs a program with separate slots and variables, so that several threads can run it at once.
//
// The slots can be reset to their state after compilation, so that runs are independent.
#pragma once

#include "MTParserLib/program/MTParserProgram.h"

#include <vector>

class MTProgramCopy
{
public:
    /// The copy's variables receive the present values of the program's variables.
    /// @param original  complete; must not change during the life of this object
    explicit MTProgramCopy(const MTParserProgram& original);
    MTProgramCopy(const MTProgramCopy&) = delete;
    MTProgramCopy& operator=(const MTProgramCopy&) = delete;

    const MTFrame& getFrame() const noexcept { return frame; }
    const VALTYPE& getRoot() const noexcept { return slots.back(); }

    /// Sets the copy's counterpart of a variable to zero.
    /// @return its address; null if the program does not read the variable
    VALTYPE* addInput(const VALTYPE& variable) noexcept;

    /// Resets the slots to their state before the first run.
    void refresh() noexcept;

    /// Runs the steps, unless the program is constant.
    /// @return why an item refuses its operands; Message::None with the value in the root
    /// @throws what an item of the host throws, except the exception with code 15
    Message::Id run();

    /// Runs the steps only to determine the kinds of the slots, which are then those after a complete run.
    /// @return false if an item refuses the kinds of its operands
    bool settleKinds();

private:
    const MTParserProgram& program;
    std::vector<VALTYPE> slots;
    std::vector<VALTYPE> variables;
    std::vector<const VALTYPE*> inputs;  // of the variables
    MTFrame frame;
};
