// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserProgram.h - the compiled program: output of the compiler, input of the evaluator.
//
//     x*2+y     0  *  x, 2       -> slot 1
//               1  +  slot 1, y  -> root
//
// Steps are in postfix order: the operands of a step are the sub-programs that end just before it, the last operand
// last; the last step computes the root. A step names the places of its operands and its result in a frame (MTFrame.h).
// The result is written directly to the slot from which its consumer reads, so evaluating is one pass over the steps,
// without a stack.
//
// Constants and variables need no steps: a constant is stored in a slot at compile time, and a variable's value is read
// where the variable keeps it. Exception: a variable is copied by a separate step if its consumer needs adjacent
// arguments, or if code of the host may run in the program and change variables in between.
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

/// Evaluates one operator, function or variable.
struct MTProgramStep
{
    const MTItemKernels* kernels;
    const IMathExprItemEvaluator* item;
    /// The first operand. Unless the item reads its operands in place, the others follow in adjacent slots. For a
    /// variable that is copied, its value; for a variable of the host, noPlace.
    MTPlace first;
    MTPlace second;  ///< The second operand; unspecified if there is none.
    MTPlace result;  ///< The slot from which the consumer reads, or the step's own slot.
    std::uint32_t nbArgs;
    std::uint32_t position;  ///< In the rewritten text, for error reports.

    MTPlace operand(std::uint32_t index) const noexcept { return index == 1 ? second : first + index; }
    /// Whether the step copies a variable. Only variables of the host are evaluated without arguments.
    bool isCopy() const noexcept { return nbArgs == 0 && first != noPlace; }
    Message::Id evaluate(const MTFrame& frame, bool showMessages) const
    {
        return kernels->evaluate(*this, frame, showMessages);
    }
};

/// Evaluates an item on given arguments, without a program.
/// @param item  may be null if its kernels are those of a class of the vocabulary
/// @param args  followed by a record for the result, which is reset first
inline Message::Id evaluateItem(const MTItemKernels& kernels, const IMathExprItemEvaluator* item, VALTYPE* args,
                                std::uint32_t nbArgs)
{
    args[nbArgs] = VALTYPE{};
    return kernels.evaluate({&kernels, item, 0, 1, nbArgs, nbArgs, 0}, {args, nullptr}, false);
}

/// Sets a number, or all coordinates of a point, to 1.
void setOnes(VALTYPE& record) noexcept;

/// Evaluates an item of one or two operands of the same kinds as a step's operands, with all numbers 1, which no item
/// refuses.
/// @param result  receives the item's result, written to a fresh slot
Message::Id evaluateWithOnes(const MTProgramStep& step, const MTFrame& frame, VALTYPE& result);

/// The steps of one expression and their frame.
class MTParserProgram
{
public:
    MTParserProgram() noexcept;
    ~MTParserProgram();

    /// Removes the steps and keeps the memory.
    void clear() noexcept;

    /// Whether it is short enough to be moved to memory of its size.
    bool isShort() const noexcept;
    /// Moves it to memory of its size. Call before the frame and the scalar code refer to that memory.
    void shrink();

    /// Whether there is a program to evaluate. It is incomplete while it is compiled.
    bool isComplete() const noexcept { return choice.getState() != MTRunState::Empty; }
    /// Whether the value of a complete program is known at compile time, so that no step is run.
    bool isConstant() const noexcept { return choice.getState() == MTRunState::Constant; }

    /// The slot with the value of the whole expression after a run of a complete program: the last slot.
    MTPlace getRootPlace() const noexcept { return static_cast<MTPlace>(slots.size() - 1); }
    const VALTYPE& getRoot() const noexcept { return slots.back(); }

    /// The input whose value is at an address; noPlace if there is none.
    MTPlace findInput(const VALTYPE& variable) const noexcept;

    std::vector<MTProgramStep> steps;
    std::vector<VALTYPE> slots;

    /// The variables that the program reads, in the order of first use.
    std::vector<const IMathVariable*> usedVariables;
    /// The values of the variables that are read in place, in the same order.
    std::vector<const VALTYPE*> inputs;

    MTFrame frame{};  ///< The slots and inputs of a complete program.

    MTScalarCode scalar;
    MTRunChoice choice;
    std::unique_ptr<MTBulkPlan> bulkPlan;  ///< From the last bulk evaluation; null before the first.

private:
    friend class MTReentryGuard;

    bool isEntered = false;
};

/// Guards a program against reentrancy: one call at a time compiles or runs it. While that call waits for the host, in
/// a look-up or a message box, the host may call back; the nested call is not entered, and must not touch the program.
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
