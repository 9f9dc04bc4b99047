// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserCompiler.h - turns a text into a program in one pass from left to right.
//
// How an expression is compiled by hand. Read the rewritten text character by character; a token is what lies between
// operator symbols, brackets and separators.
//
//   A value token (number, constant, variable) is emitted at once.
//   An operator first makes operators that bind at least as tightly leave the stack and be emitted, then goes onto the
//     stack itself. A unary operator is not made to leave by one of its own precedence.
//   A name before "(" is a function: it goes onto the stack with precedence 5, under the "(" that follows it, which
//     also emits a placeholder. It leaves the stack like an operator, after its ")".
//   "(" goes onto the stack as a wall, and opens a bracket level.
//   ")" and the separator emit everything down to the wall; ")" removes the wall. Both end an argument: it is counted
//     by the record under the wall if that is a function's and something was read since the last separator (its
//     pending flag).
//   At the end of the text everything left on the stack is emitted.
//
// A bracket level holds what was read last in it and what before that: it tells a unary operator from a binary one, and
// a value from a value that follows a value.
//
// The pending flag belongs to the nearest record: the top of the stack, or the one under it where the top is a wall. It
// is set and read on any record, an operator's and a wall's too; only the count is kept for functions alone.
#pragma once

#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/compile/MTCompileErrors.h"
#include "MTParserLib/compile/MTFailure.h"
#include "MTParserLib/compile/MTParserEmitter.h"
#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/text/MTLimits.h"
#include "mathexpr/IMathExprNameSource.h"
#include "mathexpr/IMathExprService.h"
#include "mathexpr/SMTDefExcepData.h"
#include "mathexpr/SMTParsingExcepData.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class MTParserCompiler
{
public:
    /// @param registrar     resolves symbols and names, and receives the variables that the host answers; outlives the
    ///                      compiler
    /// @param showMessages  true: an error shows its message and compile returns false; false: it raises an exception
    /// @param service       the host's; may be null
    MTParserCompiler(MTParserRegistrar& registrar, bool showMessages, const IMathExprService* service) noexcept;

    /// The greatest integer literal that is accepted.
    void setMaxInteger(std::uint32_t limit) noexcept { maxInteger = limit; }

    /// Whether an unknown name that the host does not answer becomes a variable of value 0.
    void setAutomaticVariables(bool enabled) noexcept { automaticVariables = enabled; }

    /// In force from the next text on.
    void setLimits(const MTLimits& newLimits) noexcept { limits = newLimits; }
    const MTLimits& getLimits() const noexcept { return limits; }

    /// Names that the host offers for suggestions; the compiler only keeps the pointer, which may be null.
    void setNameSource(const mathexpr::IMathExprNameSource* source) noexcept { nameSource = source; }
    const mathexpr::IMathExprNameSource* getNameSource() const noexcept { return nameSource; }

    /// Compiles a text. The program is empty while this runs and after any failure.
    /// @param text          as the user typed it; null is an empty text
    /// @param assignTarget  receives the name that the text assigns to, also where the text fails after that
    /// @return true with a complete program; false after a message, or where an item refused its constant arguments
    /// @throws ParsingException, DefinitionException, std::bad_alloc, and what the host's service throws: one of the
    ///         first two as if the library had raised it
    bool compile(const wchar_t* text, std::wstring& assignTarget);

    /// The program, at one address for the life of the compiler.
    MTParserProgram& getProgram() noexcept { return program; }

    /// The variables that the program reads, in the order of their first use.
    const std::vector<const IMathVariable*>& getUsedVariables() const noexcept { return usedVariables; }

    /// The last failure of a compilation, or of a run that was noted here.
    const MTFailure& getFailure() const noexcept { return failure; }
    /// The text compiled last, as typed; empty where it was too long to be looked at.
    const std::wstring& getTypedText() const noexcept { return typedText; }

    void clearFailure() noexcept { failure.message = Message::Id{}; }

    /// Notes why a step of the program refused its arguments, or what it raised.
    /// @param position, nbArgs  of the step
    void noteRefusal(std::uint32_t position, std::uint32_t nbArgs, Message::Id refusal);
    void noteRaised(std::uint32_t position, std::uint32_t nbArgs, const mathexpr::ParsingException& exception);
    /// Notes that the name that waits to be assigned cannot be a variable.
    void noteRefusedAssignment(const SMTDefExcepData& data);

    /// Removes a variable from the registrar. A program that reads it is emptied, which is noted as a failure.
    /// @return false when there is no such variable
    bool removeVariable(std::wstring_view name);

private:
    enum class Token : std::uint8_t
    {
        Nothing,
        Value,
        Operator,
        Function,
    };

    struct BracketLevel
    {
        Token previous = Token::Nothing;
        Token current = Token::Nothing;
    };

    struct StackRecord
    {
        enum class Kind : std::uint8_t
        {
            OpenBracket,
            Operator,
            Function,
        };
        Kind kind;
        std::int32_t precedence{};
        std::uint32_t position;
        std::size_t definition{};  // the operator's, or that of a function's first overload
        std::uint32_t nbArgs{};    // a function's grows as its arguments are read
        bool argumentPending{};
    };

    bool checkLimits(const wchar_t* typed);
    bool compileRewritten(std::wstring& assignTarget);
    bool compileEnd();

    bool compileToken(std::wstring_view token, std::uint32_t position, wchar_t following);
    bool compileFunctionName(std::wstring_view token, std::uint32_t position);
    bool compileNumber(std::wstring_view token, std::uint32_t position);
    bool compileName(std::wstring_view token, std::uint32_t position);
    MTVariableDefinition* resolveVariable(std::wstring_view name, std::uint32_t hash);
    bool askHost(std::wstring_view name, VALTYPE& answer) const;

    bool openBracket(std::uint32_t position, wchar_t next);
    bool endArgument(std::uint32_t position, wchar_t character, wchar_t next);
    bool takeArgument();
    bool compileOperator(std::wstring_view symbol, std::uint32_t position);

    template <class Leaves>
    bool emitWhile(Leaves leaves, std::size_t& nbEmitted);
    bool emit(const StackRecord& record);

    void setKind(Token kind) noexcept;
    StackRecord* nearestRecord() noexcept;
    void markPending() noexcept;

    MTSpan spanOf(const StackRecord& record) const noexcept;
    MTSpan spanOfStep(std::uint32_t position, std::uint32_t nbArgs) const noexcept;

    // The one place where a failure is told: what is noted is what the exception carries and the message says.
    void note(Message::Id message, std::uint32_t expected, MTSpan span, std::wstring_view itemName,
              std::uint32_t nbArgs);
    void noteError(const MTCompileError& error, MTSpan span, std::wstring_view itemName, std::uint32_t nbArgs);
    void noteDefinition(const SMTDefExcepData& data, std::uint32_t expected, MTSpan span);
    void noteParsing(const SMTParsingExcepData& data, std::uint32_t expected, MTSpan span, std::uint32_t nbArgs);
    void noteRefusedItem(MTSpan span, std::uint32_t nbArgs, Message::Id refusal);
    void noteRaisedItem(MTSpan span, std::uint32_t nbArgs, const mathexpr::ParsingException& exception);

    /// Notes an error and reports it.
    [[nodiscard]] bool fail(const MTCompileError& error, std::uint32_t line, std::uint32_t position, MTSpan span,
                            std::wstring_view itemName = {}, std::uint32_t nbArgs = 0);
    /// Shows the message of the failure noted and answers false, or raises its exception.
    [[nodiscard]] bool report(std::uint32_t line, std::uint32_t position) const;
    [[noreturn]] void raise(std::uint32_t line, std::uint32_t position) const;
    /// Shows the general message and answers false, or throws the exception on with an entry of its own.
    template <class Data>
    bool passOn(MTExceptions<Data>& exception, std::uint32_t line, const Data& data) const;

    MTParserRegistrar& registrar;
    const bool showMessages;
    const IMathExprService* const service;
    std::uint32_t maxInteger = 2147483647;
    bool automaticVariables = false;

    MTParserProgram program;
    MTParserEmitter emitter;

    MTLimits limits;
    const mathexpr::IMathExprNameSource* nameSource = nullptr;

    MTFailure failure;
    std::wstring typedText;
    MTSpan assignSpan;  // of the name that the text assigns to
    MTLimitScratch limitScratch;

    std::wstring text;  // rewritten
    std::vector<StackRecord> stack;
    std::vector<BracketLevel> levels;
    std::string digits;  // of the number being read
    std::vector<const IMathVariable*> usedVariables;
    std::uint64_t compilation = 1;  // the number of the one that runs or ran last, if any: variables begin at 0
};
