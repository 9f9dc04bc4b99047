// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserProgram.h - the compiled program: what the compiler hands to the evaluator.
//
//     x*2+y     0  *  x, 2       -> slot 1
//               1  +  slot 1, y  -> root
//
// Steps in postfix order: the operands of a step are the sub-programs that end just before it, the last operand last;
// the last step is the root's. A step names its operands and its result by their places in a frame (MTFrame.h). Its
// result goes straight to the slot of the step that consumes it, so that evaluating is one pass over the steps without
// a stack.
//
// What needs not be computed is no step: constants stand in the slots that consume them, and the value of a variable
// is read where the variable keeps it. A variable is a step of its own, which copies it to a slot, only where its
// consumer needs its arguments side by side, and where code of the host's may run in a program and change variables on
// the way.
#pragma once

#include "MTParserLib/program/MTFrame.h"
#include "MTParserLib/program/MTItemKernels.h"
#include "MTParserLib/run/MTRunChoice.h"
#include "MTParserLib/run/MTScalarCode.h"
#include "mathexpr/IMathVariable.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

class MTBulkPlan;

/// The evaluation of one operator, function or variable.
struct MTProgramStep
{
    const MTItemKernels* kernels;
    const IMathExprItemEvaluator* item;
    /// The first operand, of which all others follow side by side, unless the item reads its operands in place. Of a
    /// variable that is copied, its value; of one of the host's, noPlace.
    MTPlace first;
    MTPlace second;  ///< The second operand; meaningless where there is none.
    MTPlace result;  ///< The slot of the step that consumes the result, or one of its own.
    std::uint32_t nbArgs;
    std::uint32_t position;  ///< In the rewritten text, for error reports.

    MTPlace operand(std::uint32_t index) const noexcept { return index == 1 ? second : first + index; }
    /// Whether it copies a variable. No item is called without arguments, but for a variable of the host's.
    bool isCopy() const noexcept { return nbArgs == 0 && first != noPlace; }
    Message::Id evaluate(const MTFrame& frame, bool showMessages) const
    {
        return kernels->evaluate(*this, frame, showMessages);
    }
};

/// Evaluates an item of one or two operands of the kinds that a step's operands have. All numbers are 1, which no item
/// refuses.
/// @param result  receives what the item makes of a fresh slot
Message::Id evaluateWithOnes(const MTProgramStep& step, const MTFrame& frame, VALTYPE& result);

/// The steps of one expression and their frame.
class MTParserProgram
{
public:
    MTParserProgram() noexcept;
    ~MTParserProgram();

    /// Forgets the steps and keeps the memory.
    void clear() noexcept;

    /// Whether there is something to evaluate: a program that is still being compiled is not complete.
    bool isComplete() const noexcept { return choice.getState() != MTRunState::Empty; }
    /// Whether the value of a complete program is known, so that no step has to be run for it.
    bool isConstant() const noexcept { return choice.getState() == MTRunState::Constant; }

    /// The slot that holds the value of the whole expression after a run of a complete program. It is the last.
    MTPlace getRootPlace() const noexcept { return static_cast<MTPlace>(slots.size() - 1); }
    const VALTYPE& getRoot() const noexcept { return slots.back(); }

    /// The input that has its value at an address; noPlace where there is none.
    MTPlace findInput(const VALTYPE& variable) const noexcept;

    std::vector<MTProgramStep> steps;
    std::vector<VALTYPE> slots;

    /// The variables that it reads, in the order of their first use.
    std::vector<const IMathVariable*> usedVariables;
    /// The values of those that are read where the variable keeps its value, in the same order.
    std::vector<const VALTYPE*> inputs;

    MTFrame frame;  ///< Of a complete program: slots and inputs.

    MTScalarCode scalar;
    MTRunChoice choice;
    std::unique_ptr<MTBulkPlan> bulkPlan;  ///< Of the last bulk evaluation; null before the first.

private:
    friend class MTReentryGuard;

    bool isEntered = false;
};

/// Guards a program against reentry: one call at a time compiles or runs it. While such a call waits for the host, in a
/// look-up or a message box, the host may call back; that call does not enter, and must leave the program alone.
class MTReentryGuard
{
public:
    explicit MTReentryGuard(MTParserProgram& program) noexcept : program(program), entered(!program.isEntered)
    {
        program.isEntered = true;
        program.choice.disarm();
    }
    MTReentryGuard(const MTReentryGuard&) = delete;
    MTReentryGuard& operator=(const MTReentryGuard&) = delete;
    ~MTReentryGuard()
    {
        if (entered)
        {
            program.isEntered = false;
        }
    }

    bool hasEntered() const noexcept { return entered; }

private:
    MTParserProgram& program;
    const bool entered;
};
