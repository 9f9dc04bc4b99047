// MTParserEmitter.h - appends records to a program, wires each to its operands, and folds what is constant.
//
// An operand is found through the extent of the sub-program that ends before it, so that the work for a record grows
// with the number of its operands and not with what lies below them. A record whose item depends on its arguments
// alone, and whose arguments are all constant, is computed at once and takes the place of its whole sub-program.
#pragma once

#include "MTParserLib/MTParserProgram.h"

#include <cstdint>

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
    static constexpr std::uint32_t noRecord = 0xFFFFFFFF;

    Outcome outcome = Outcome::Done;
    std::uint32_t position = 0;  ///< With OperandMissing: of the record found instead, or noRecord.
};

class MTParserEmitter
{
public:
    /// @param program       receives the records; outlives the emitter
    /// @param showMessages  whether an item that is folded may tell the user why it refuses
    MTParserEmitter(MTParserProgram& program, bool showMessages) noexcept : program(program), showMessages(showMessages)
    {}

    void emitConstant(const VALTYPE& value, std::uint32_t position);
    void emitVariable(const IMathExprItemEvaluator& variable, std::uint32_t position);

    /// Marks where the arguments of a function call begin.
    void emitPlaceholder(std::uint32_t position);

    /// Appends an operator, whose operands were emitted before it.
    MTEmission emitOperator(const IMathExprItemEvaluator& item, std::uint32_t nbArgs, std::uint32_t position);

    /// Appends a function call, whose placeholder and arguments were emitted before it.
    MTEmission emitCall(const IMathExprItemEvaluator& item, std::uint32_t nbArgs, std::uint32_t position);

private:
    MTEmission emit(const IMathExprItemEvaluator& item, std::uint32_t nbArgs, std::uint32_t position, bool isCall);
    MTEmission operandMissing(std::size_t end) const;

    MTParserProgram& program;
    bool showMessages;
};
