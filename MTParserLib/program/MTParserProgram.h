// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserProgram.h - the compiled program: what the compiler hands to the evaluator.
//
//     x*2+y     0  *  x, 2      -> slot 1
//               1  +  slot 1, y -> root
//
// Steps in postfix order: the operands of a step are the sub-programs that end just before it, the last operand last;
// the last step is the root's. Each step's result goes straight to its destination, the slot of the step that consumes
// it, so that evaluating is one pass over the steps without a stack.
//
// What already stands somewhere is no step: constants stand in the slots that consume them, and the value of a variable
// is read where the variable keeps it. A variable is a step of its own, which copies it to its destination, only where
// its consumer needs its arguments side by side, and where code of the host's may run in a program and change variables
// on the way.
#pragma once

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
    /// variable that is copied, its value.
    const VALTYPE* first;
    const VALTYPE* second;  ///< The second operand; meaningless where there is none.
    VALTYPE* destination;   ///< The slot that consumes the result, or one of its own.
    std::uint32_t nbArgs;
    std::uint32_t position;  ///< In the rewritten text, for error reports.

    const VALTYPE& operand(std::uint32_t index) const noexcept { return index == 1 ? *second : first[index]; }
    /// Whether it copies a variable. No item is called without arguments, but for a variable of the host's.
    bool isCopy() const noexcept { return nbArgs == 0 && first != nullptr; }
    Message::Id evaluate(bool showMessages) const { return kernels->evaluate(*this, showMessages); }
};

/// Evaluates an item of one or two operands of the kinds that a step's operands have. All numbers are 1, which no item
/// refuses.
Message::Id evaluateWithOnes(const MTProgramStep& step, VALTYPE& result);

/// Memory for argument slots. It hands out memory that never moves, takes it back in the reverse order, and keeps what
/// it has for the next program.
class MTSlotArena
{
public:
    /// How far the arena is used.
    struct Mark
    {
        std::size_t chunk;
        std::size_t used;
    };

    /// A contiguous array of all-zero slots; null for none.
    VALTYPE* allocate(std::size_t count)
    {
        if (top.chunk == chunks.size() || chunks[top.chunk].size - top.used < count)
        {
            return allocateElsewhere(count);
        }
        VALTYPE* const allocated = chunks[top.chunk].slots.get() + top.used;
        top.used += count;
        for (VALTYPE* slot = allocated; slot != allocated + count; ++slot)
        {
            *slot = VALTYPE{};
        }
        return count == 0 ? nullptr : allocated;  // not covered: empty brackets are refused
    }
    /// A slot by itself.
    VALTYPE& allocateOne() { return *allocate(1); }

    Mark mark() const noexcept { return top; }
    void release(Mark mark) noexcept { top = mark; }

private:
    struct Chunk
    {
        std::unique_ptr<VALTYPE[]> slots;
        std::size_t size;
    };

    VALTYPE* allocateElsewhere(std::size_t count);

    std::vector<Chunk> chunks;
    Mark top{};
};

/// The steps of one expression and the slots that their results go to.
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

    std::vector<MTProgramStep> steps;
    MTSlotArena slots;

    /// Where the value of the whole expression stands after a run of the steps; null until the program is complete.
    VALTYPE* root;

    /// The variables that it reads, in the order of their first use.
    std::vector<const IMathVariable*> usedVariables;
    /// The values of those that are read where the variable keeps its value, in the same order.
    std::vector<const VALTYPE*> inputs;

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
