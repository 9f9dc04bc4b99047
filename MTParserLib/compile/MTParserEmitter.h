// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserEmitter.h - appends steps to a program, wires each to its operands, and folds what is constant.
//
// What has been emitted and not been consumed yet waits on a stack: a constant, a variable, the result of a step. An
// item takes its operands from the top and leaves its result there, so that the work for a record grows with the number
// of its operands and not with the length of the program. An item that depends on its arguments alone, and whose
// arguments are all constant, is computed at once and never becomes a step.
#pragma once

#include "MTParserLib/program/MTParserProgram.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <vector>

/// What became of an emitted record.
struct MTEmission
{
    enum class Outcome : std::uint8_t
    {
        Done,
        Refused,         ///< The item refused its constant arguments, and has told the user if it may.
        OperandMissing,  ///< There is no operand, or no beginning of the call, where the record needs one.
    };

    /// Where nothing at all is left to read.
    static constexpr std::uint32_t noRecord = std::numeric_limits<std::uint32_t>::max();

    Outcome outcome = Outcome::Done;
    std::uint32_t position = 0;           ///< With OperandMissing: of the record found instead, or noRecord.
    Message::Id refusal = Message::None;  ///< With Refused: why.
};

class MTParserEmitter
{
public:
    /// @param target        receives the finished program; outlives the emitter
    /// @param mayShow       whether an item that is folded may tell the user why it refuses
    MTParserEmitter(MTParserProgram& target, bool mayShow) noexcept : program(target), showMessages(mayShow) {}

    /// Forgets what was emitted and empties the program.
    /// @param readsInPlace  whether variables may be read when they are consumed: no item of the host's runs on the way
    void begin(bool readsInPlace) noexcept;

    void emitConstant(const VALTYPE& value, std::uint32_t position);

    /// @param input  the variable's value, where evaluating the variable does nothing but copy it; else noPlace
    void emitVariable(const IMathExprItemEvaluator& variable, MTPlace input, std::uint32_t position);

    /// Marks where the arguments of a function call begin.
    void emitPlaceholder(std::uint32_t position);

    /// Appends an operator or a function call, whose operands were emitted before it.
    /// @param isCall  a placeholder was emitted before its arguments
    MTEmission emit(const IMathExprItemEvaluator& item, const MTItemKernels& kernels, std::uint32_t nbArgs,
                    std::uint32_t position, bool isCall);

    /// Completes the program. What no record consumes gets a slot of its own, and the last record is the root.
    /// @return false when nothing was emitted: the program stays empty
    bool finish();

private:
    enum class Kind : std::uint8_t
    {
        Constant,     // the value is known: a literal, a constant, or what was folded
        Variable,     // to be read where its value stands
        Result,       // of a step
        Placeholder,  // where the arguments of a call begin
    };

    /// What waits for its consumer.
    struct Operand
    {
        Kind kind;
        std::uint32_t position;
        union
        {
            std::size_t index;  // of a result: its step; of a constant: among those that wait
            const IMathExprItemEvaluator* variable;
        };
        MTPlace input;  // of the variable
    };

    MTEmission operandMissing(std::size_t end) const;
    void setOperands(MTProgramStep& step, const Operand* operands);
    MTPlace addSlot();
    MTPlace placeOf(const Operand& operand);
    void bring(const Operand& operand, MTPlace slot);
    void pushResult(const MTProgramStep& step);

    MTParserProgram& program;
    const bool showMessages;
    bool variablesInPlace = false;
    std::vector<Operand> waiting;
    std::vector<VALTYPE> constants;  // that wait
};
