// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTProgramCopy.h - runs a program with slots and variables of its own, so that another thread may do the same.
//
// The slots can be set to what they are in a program that has just been compiled, so that no run shows in the next.
#pragma once

#include "MTParserLib/program/MTParserProgram.h"

#include <vector>

class MTProgramCopy
{
public:
    /// Its variables have the values that those of the program have now.
    /// @param original  complete; has to stay as it is for the life of this object
    explicit MTProgramCopy(const MTParserProgram& original);
    MTProgramCopy(const MTProgramCopy&) = delete;
    MTProgramCopy& operator=(const MTProgramCopy&) = delete;

    const MTFrame& getFrame() const noexcept { return frame; }
    const VALTYPE& getRoot() const noexcept { return slots.back(); }

    /// Sets the copy's own variable in place of one of the program to zero.
    /// @return the variable's value in the copy; null where the program does not read it
    VALTYPE* addInput(const VALTYPE& variable) noexcept;

    /// Sets the slots to what they are before the first run.
    void refresh() noexcept;

    /// Runs the steps, unless the program is constant.
    /// @return why an item refuses its operands; Message::None with the value in the root
    /// @throws what an item of the host throws, but for the exception with code 15
    Message::Id run();

    /// Runs the steps for the kinds alone, which all slots have afterwards as after a complete run.
    /// @return false where an item refuses the kinds of its operands
    bool settleKinds();

private:
    const MTParserProgram& program;
    std::vector<VALTYPE> slots;
    std::vector<VALTYPE> variables;
    std::vector<const VALTYPE*> inputs;  // the variables
    MTFrame frame;
};
