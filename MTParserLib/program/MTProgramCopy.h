// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTProgramCopy.h - a copy of a program with slots and variables of its own.
//
// Its slots can be set to what they are in a program that has just been compiled, so that no run shows in the next.
#pragma once

#include "MTParserLib/program/MTParserProgram.h"

#include <cstddef>
#include <vector>

class MTProgramCopy
{
public:
    /// @param program  complete; not needed afterwards, but for its items and the variables whose values are read
    explicit MTProgramCopy(const MTParserProgram& program);
    MTProgramCopy(const MTProgramCopy&) = delete;
    MTProgramCopy& operator=(const MTProgramCopy&) = delete;

    const std::vector<MTProgramStep>& getSteps() const noexcept { return steps; }
    const VALTYPE& getRoot() const noexcept { return *root; }

    /// Makes a variable of the program an input of the copy, which is zero before each run.
    /// @return where its value stands; null where no step reads it
    VALTYPE* addInput(const VALTYPE& variable);

    /// Sets slots and variables to what they are before the first run.
    void refresh() noexcept;

    /// Runs the steps.
    /// @return why an item refuses its operands; Message::None with the value in the root
    /// @throws what an item of the host throws, but for the exception with code 15
    Message::Id run();

    /// Runs the steps for the kinds alone, which all slots have afterwards as after a complete run.
    /// @return false where an item refuses the kinds of its operands
    bool settleKinds();

private:
    /// Which place of the copy stands for one of the program.
    std::size_t indexOf(const VALTYPE* place) const noexcept;

    std::vector<MTProgramStep> steps;
    std::vector<const VALTYPE*> originals;  // by index of the place that stands for each, in ascending order
    std::vector<VALTYPE> fresh;             // what stands in the slots before a run
    std::vector<VALTYPE> slots;             // and the variables
    const VALTYPE* root;
};
