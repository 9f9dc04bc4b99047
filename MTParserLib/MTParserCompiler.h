// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserCompiler.h - turns a text into a program in one pass from left to right.
//
// How to compile an expression by hand. Read the rewritten text character by character; a token is the text between
// operator symbols, brackets and separators.
//
// - A value token (number, constant, variable) is emitted at once.
// - An operator first pops and emits the operators that bind at least as tightly, then is pushed. A unary operator is
//   not popped by one of its own precedence.
// - A name before "(" is a function. It is pushed with precedence 5, below the "(" that follows it, and a placeholder
//   is emitted. It is popped like an operator, after its ")".
// - "(" is pushed as a barrier, and opens a bracket level.
// - ")" and the separator pop and emit everything down to the barrier; ")" removes the barrier. Both end an argument. If
//   the record below the barrier is a function, and its pending flag is set, its argument count grows by one. The flag
//   is set if something was read since the last separator.
// - At the end of the text, all records left are popped and emitted.
//
// A bracket level remembers the last two things read in it. They distinguish a unary from a binary operator, and detect
// a value that follows a value.
//
// The pending flag belongs to the nearest record: the top of the stack, or the one below it if the top is a barrier. It
// is set and read on every record, including operators and barriers; only the count is kept for functions alone.
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
    /// @param registrar     resolves symbols and names, and receives the variables that the host supplies; records for
    ///                      this compiler alone which variables a text has used
    /// @param compilation   receives the outcome of a text; both must outlive the compiler
    /// @param showMessages  true: an error shows its message and compile returns false; false: it raises an exception
    /// @param service       the host's; may be null
    MTParserCompiler(MTParserRegistrar& registrar, MTCompilation& compilation, bool showMessages,
                     const IMathExprService* service) noexcept;

    /// The greatest accepted integer literal.
    void setMaxInteger(std::uint32_t limit) noexcept { maxInteger = limit; }
    std::uint32_t getMaxInteger() const noexcept { return maxInteger; }

    /// Whether an unknown name that the host does not supply becomes a variable with the value 0.
    void setAutomaticVariables(bool enabled) noexcept { automaticVariables = enabled; }

    /// The host's service; may be null.
    const IMathExprService* getService() const noexcept { return service; }

    /// Compiles a text. The program is empty during the call and after any failure.
    /// @param given         as the user typed it; null is an empty text
    /// @param limits        upper bounds on the text
    /// @param assignTarget  receives the name that the text assigns to, even if the text fails later
    /// @return true with a complete program; false after a message, or if an item refused its constant arguments
    /// @throws ParsingException, DefinitionException, std::bad_alloc; exceptions of the host's service propagate, and
    ///         the first two kinds are handled as if the library had raised them
    bool compile(const wchar_t* given, const MTLimits& limits, std::wstring& assignTarget);

    /// Whether the text compiled last uses the variable.
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

    /// All but kind and position are 0 at first.
    struct StackRecord
    {
        enum class Kind : std::uint8_t
        {
            OpenBracket,
            Operator,
            Function,
        };
        Kind kind;
        bool argumentPending;
        std::int32_t precedence;
        std::uint32_t position;
        std::uint32_t definition;  // the operator's, or that of the function's first overload
        std::uint32_t nbArgs;      // of a function: grows as its arguments are read
    };

    void reserve();
    void releaseStacks() noexcept;
    bool checkLimits(const wchar_t* typed, const MTLimits& limits);
    bool compileRewritten(std::wstring& assignTarget);
    bool compileEnd();

    bool compileToken(std::wstring_view token, std::uint32_t position, wchar_t following);
    bool compileFunctionName(std::wstring_view token, std::uint32_t position);
    bool compileNumber(std::wstring_view token, std::uint32_t position);
    bool compileName(std::wstring_view token, std::uint32_t position);
    bool compileUnknownName(std::wstring_view token, std::uint32_t hash, std::uint32_t position);
    MTVariableDefinition* resolveUnknown(std::wstring_view name, std::uint32_t hash);
    void emitVariable(MTVariableDefinition& variable, std::uint32_t position);
    void noteUse(MTVariableDefinition& variable);
    StackRecord& push(StackRecord::Kind kind, std::uint32_t position);
    bool askHost(std::wstring_view name, VALTYPE& answer) const;

    bool openBracket(std::uint32_t position, wchar_t next);
    bool endArgument(std::uint32_t position, wchar_t character, wchar_t next);
    bool takeArgument();
    bool compileOperator(std::size_t first, std::uint32_t position);

    bool emitDownTo(std::int32_t precedence);
    bool emit(const StackRecord& record);

    void setKind(Token kind) noexcept;
    StackRecord* nearestRecord() noexcept;
    void markPending() noexcept;

    MTSpan spanOf(const StackRecord& record) const noexcept;

    // The only place that records a failure: the record, the exception and the message agree.
    void noteError(const MTCompileError& error, MTSpan span, std::wstring_view itemName, std::uint32_t nbArgs);

    /// Records an error and reports it.
    [[nodiscard]] bool fail(const MTCompileError& error, std::uint32_t line, std::uint32_t position, MTSpan span,
                            std::wstring_view itemName = {}, std::uint32_t nbArgs = 0);
    /// Shows the message of the recorded failure and returns false, or raises its exception.
    [[nodiscard]] bool report(std::uint32_t line, std::uint32_t position) const;
    [[noreturn]] void raise(std::uint32_t line, std::uint32_t position) const;
    /// Shows the general message and returns false, or rethrows the exception with an entry of this layer.
    template <class Data>
    bool passOn(MTExceptions<Data>& exception, std::uint32_t line, const Data& data) const;

    MTParserRegistrar& registrar;
    MTCompilation& compiled;
    MTParserProgram& program;  // of the compilation, like text and failure
    const std::wstring_view& text;
    MTFailure& failure;
    const bool showMessages;
    const IMathExprService* const service;
    std::uint32_t maxInteger = 2147483647;
    bool automaticVariables = false;

    MTParserEmitter emitter;
    bool hasCompiled = false;  // whether a text has been compiled; from then on the stacks keep their memory
    MTLimitScratch limitScratch;
    std::vector<StackRecord> stack;
    std::vector<BracketLevel> levels;
    std::string digits;             // of the number being read
    std::uint64_t compilation = 1;  // the number of the one that runs or ran last, if any: variables begin at 0
};

/// The position of a step in the rewritten text that it was compiled from.
/// @param position, nbArgs  of the step
MTSpan spanOfStep(const MTParserRegistrar& registrar, std::wstring_view text, std::uint32_t position,
                  std::uint32_t nbArgs) noexcept;
