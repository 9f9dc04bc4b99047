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
#include "MTParserLib/compile/MTCompilation.h"
#include "MTParserLib/compile/MTCompileErrors.h"
#include "MTParserLib/compile/MTParserEmitter.h"
#include "MTParserLib/text/MTLimits.h"
#include "mathexpr/IMathExprService.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

class MTParserCompiler
{
public:
    /// @param registrar     resolves symbols and names, and receives the variables that the host answers; keeps for
    ///                      this compiler alone which variables a text has used
    /// @param compilation   receives what becomes of a text; both outlive the compiler
    /// @param showMessages  true: an error shows its message and compile returns false; false: it raises an exception
    /// @param service       the host's; may be null
    MTParserCompiler(MTParserRegistrar& registrar, MTCompilation& compilation, bool showMessages,
                     const IMathExprService* service) noexcept;

    /// The greatest integer literal that is accepted.
    void setMaxInteger(std::uint32_t limit) noexcept { maxInteger = limit; }
    std::uint32_t getMaxInteger() const noexcept { return maxInteger; }

    /// Whether an unknown name that the host does not answer becomes a variable of value 0.
    void setAutomaticVariables(bool enabled) noexcept { automaticVariables = enabled; }

    /// The host's; may be null.
    const IMathExprService* getService() const noexcept { return service; }

    /// Compiles a text. The program is empty while this runs and after any failure.
    /// @param given         as the user typed it; null is an empty text
    /// @param limits        what a text may be at most
    /// @param assignTarget  receives the name that the text assigns to, also where the text fails after that
    /// @return true with a complete program; false after a message, or where an item refused its constant arguments
    /// @throws ParsingException, DefinitionException, std::bad_alloc, and what the host's service throws: one of the
    ///         first two as if the library had raised it
    bool compile(const wchar_t* given, const MTLimits& limits, std::wstring& assignTarget);

    /// Whether the text compiled last has named a variable.
    bool hasUsed(const MTVariableDefinition& variable) const noexcept { return variable.lastUse == compilation; }

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

    bool checkLimits(const wchar_t* typed, const MTLimits& limits);
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
    bool compileOperator(std::size_t first, std::uint32_t position);

    template <class Leaves>
    bool emitWhile(Leaves leaves, std::size_t& nbEmitted);
    bool emit(const StackRecord& record);

    void setKind(Token kind) noexcept;
    StackRecord* nearestRecord() noexcept;
    void markPending() noexcept;

    MTSpan spanOf(const StackRecord& record) const noexcept;

    // The one place where a failure is told: what is noted is what the exception carries and the message says.
    void noteError(const MTCompileError& error, MTSpan span, std::wstring_view itemName, std::uint32_t nbArgs);

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
    MTCompilation& compiled;
    MTParserProgram& program;  // of the compilation, as are text and failure
    std::wstring& text;
    MTFailure& failure;
    const bool showMessages;
    const IMathExprService* const service;
    std::uint32_t maxInteger = 2147483647;
    bool automaticVariables = false;

    MTParserEmitter emitter;
    MTLimitScratch limitScratch;
    std::vector<StackRecord> stack;
    std::vector<BracketLevel> levels;
    std::string digits;             // of the number being read
    std::uint64_t compilation = 1;  // the number of the one that runs or ran last, if any: variables begin at 0
};

/// Where a step of a program stands in the rewritten text that it was compiled from.
/// @param position, nbArgs  of the step
MTSpan spanOfStep(const MTParserRegistrar& registrar, std::wstring_view text, std::uint32_t position,
                  std::uint32_t nbArgs) noexcept;
