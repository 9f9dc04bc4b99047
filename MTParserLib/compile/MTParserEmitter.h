// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserEmitter.h - appends steps to a program, connects each to its operands, and folds constants.
//
// A stack holds what was emitted and not yet consumed: constants, variables, results of steps. An item pops its
// operands and pushes its result, so the work for a record is proportional to its operand count, not to the length of
// the program. An item that depends on its arguments alone, with constant arguments, is evaluated at once and never
// becomes a step.
#pragma once

#include "MTParserLib/program/MTParserProgram.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

/// Outcome of emitting a record.
enum class MTEmission : std::uint8_t
{
    Done,
    Refused,         ///< The item refused its constant arguments, and showed its message if allowed.
    OperandMissing,  ///< An operand, or the start of a call, is missing.
};

class MTParserEmitter
{
public:
    /// @param target   receives the finished program; must outlive the emitter
    /// @param mayShow  whether a folded item may show the user why it refuses
    MTParserEmitter(MTParserProgram& target, bool mayShow) noexcept : program(target), showMessages(mayShow) {}

    /// Discards what was emitted, and empties the program.
    /// @param readsInPlace  whether variables may be read by their consumers: no code of the host runs between
    void begin(bool readsInPlace) noexcept;

    void emitConstant(const VALTYPE& value, std::uint32_t position)
    {
        pushConstant(position);
        constants.push_back(value);
    }

    void emitNumber(double number, std::uint32_t position)
    {
        pushConstant(position);
        constants.emplace_back().x = number;
    }

    /// @param input  the variable's value, if evaluating it only copies that value; otherwise noPlace
    void emitVariable(const IMathExprItemEvaluator& variable, MTPlace input, std::uint32_t position)
    {
        if (variablesInPlace)
        {
            push(Kind::Variable, position, input);
        }
        else
        {
            emitCopy(variable, input, position);
        }
    }

    /// Marks the start of a call's arguments.
    void emitPlaceholder(std::uint32_t position) { push(Kind::Placeholder, position, 0); }

    /// Appends an operator or a function call, whose operands were emitted before it.
    /// @param isCall  a placeholder was emitted before its arguments
    MTEmission emit(const IMathExprItemEvaluator& item, const MTItemKernels& kernels, std::uint32_t nbArgs,
                    std::uint32_t position, bool isCall);

    /// After Refused: the reason.
    Message::Id getRefusal() const noexcept { return refusal; }

    /// There is no record at all.
    static constexpr std::uint32_t noRecord = std::numeric_limits<std::uint32_t>::max();
    /// After OperandMissing: the position of the record found instead, or noRecord.
    std::uint32_t getPositionFound() const noexcept { return positionFound; }

    /// Completes the program. Unconsumed results get slots of their own; the last record is the root.
    /// @param shrinks  whether a short program is moved to memory of its size
    /// @return false if nothing was emitted; the program stays empty
    bool finish(bool shrinks);

    /// Reserves memory for so many steps, slots and operands.
    void reserve(std::size_t count);
    void releaseStacks() noexcept;

private:
    enum class Kind : std::uint8_t
    {
        Constant,     // a known value: a literal, a constant, or a folded result
        Variable,     // read in place
        Result,       // of a step
        Placeholder,  // start of a call's arguments
    };

    /// An operand that waits for its consumer.
    struct Operand
    {
        Kind kind;
        std::uint32_t position;
        std::size_t index;  // of a result: its step; of a constant: its index in constants; of a variable: its input
    };
    using Operands = std::vector<Operand>::const_iterator;

    /// Writes the operand where it stays: copying what was written a moment ago would stall.
    void push(Kind kind, std::uint32_t position, std::size_t index)
    {
        Operand& operand = waiting.emplace_back();
        operand.kind = kind;
        operand.position = position;
        operand.index = index;
    }
    /// The next of the constants.
    void pushConstant(std::uint32_t position) { push(Kind::Constant, position, constants.size()); }
    MTProgramStep& pushResult(const IMathExprItemEvaluator& item, const MTItemKernels& kernels, std::uint32_t position);

    void emitCopy(const IMathExprItemEvaluator& variable, MTPlace input, std::uint32_t position);
    MTEmission fold(const IMathExprItemEvaluator& item, const MTItemKernels& kernels, std::uint32_t nbArgs,
                    std::uint32_t position, bool isCall);
    bool popOperands(Operands begin, bool isCall);
    MTEmission operandMissing(Operands end);
    MTPlace collectOperands(Operands begin, std::uint32_t nbArgs);
    MTPlace addSlot();
    MTPlace placeOf(const Operand& operand);
    void bring(const Operand& operand, MTPlace slot);

    MTParserProgram& program;
    const bool showMessages;
    bool variablesInPlace = false;
    Message::Id refusal = Message::None;
    std::uint32_t positionFound = 0;
    std::vector<Operand> waiting;
    std::vector<VALTYPE> constants;  // of waiting operands
};
