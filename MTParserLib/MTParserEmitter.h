// MTParserEmitter.h - appends records to a program, wires each to its operands, and folds what is constant.
//
// An operand is found through the extent of the sub-program that ends before it, so that the work for a record grows
// with the number of its operands and not with what lies below them. A record whose item depends on its arguments
// alone, and whose arguments are all constant, is computed at once and takes the place of its whole sub-program.
#pragma once

#include "MTParserLib/MTParserProgram.h"

#include <cstddef>
#include <cstdint>
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
    static constexpr std::uint32_t noRecord = 0xFFFFFFFF;

    Outcome outcome = Outcome::Done;
    std::uint32_t position = 0;  ///< With OperandMissing: of the record found instead, or noRecord.
};

class MTParserEmitter
{
public:
    /// @param target        receives the finished program; outlives the emitter
    /// @param mayShow       whether an item that is folded may tell the user why it refuses
    MTParserEmitter(MTParserProgram& target, bool mayShow) noexcept : program(target), showMessages(mayShow) {}

    /// Forgets what was emitted and empties the program.
    void clear() noexcept;

    void emitConstant(const VALTYPE& value, std::uint32_t position);

    /// @param valueInPlace  the variable's value, where evaluating the variable does nothing but copy it; else null
    void emitVariable(const IMathExprItemEvaluator& variable, const VALTYPE* valueInPlace, std::uint32_t position);

    /// Marks where the arguments of a function call begin.
    void emitPlaceholder(std::uint32_t position);

    /// Appends an operator, whose operands were emitted before it.
    MTEmission emitOperator(const IMathExprItemEvaluator& item, const MTItemKernels& kernels, std::uint32_t nbArgs,
                            std::uint32_t position);

    /// Appends a function call, whose placeholder and arguments were emitted before it.
    MTEmission emitCall(const IMathExprItemEvaluator& item, const MTItemKernels& kernels, std::uint32_t nbArgs,
                        std::uint32_t position);

    /// Completes the program. What no record consumes gets a slot of its own, and the last record is the root.
    /// @return false when nothing was emitted: the program stays empty
    bool finish();

private:
    enum class Kind : std::uint8_t
    {
        Constant,      // the value is known: a literal, a constant, or a folded record
        Item,          // evaluated each time
        Variable,      // read where its value stands, or copied to where it is consumed
        VariableRead,  // consumed by an item that reads it in place
        Placeholder,   // where the arguments of a call begin
    };

    struct Record
    {
        MTProgramStep step;       // of an item or a variable; its destination is null until a record consumes it
        const VALTYPE* slots;     // of an item: where its arguments can stand side by side
        std::size_t firstRecord;  // where the sub-program that ends here begins
        Kind kind;
        VALTYPE value;  // of a constant
    };

    MTEmission emit(const IMathExprItemEvaluator& item, const MTItemKernels& kernels, std::uint32_t nbArgs,
                    std::uint32_t position, bool isCall);
    MTEmission operandMissing(std::size_t end) const;
    Record& append(Kind kind, const MTProgramStep& step, std::size_t firstRecord);
    void copyAllVariables() noexcept;

    MTParserProgram& program;
    const bool showMessages;
    std::vector<Record> records;
    bool callsHost = false;  // an item or a variable is known by its interface only
};
