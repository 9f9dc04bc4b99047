// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MathExpression.h - the expression object: compiles a text once and evaluates it any number of times.
//
//     MathExpression expression(false, nullptr);
//     VALTYPE value;
//     if (expression.setExpression(L"[1,2,0]+[3,4,0]") && expression.evaluate(value))
//         ...  // value.type is 1, value.x 4, value.y 6, value.z 0
//
// Use an object from one thread at a time; separate objects share no mutable state. While a call waits for the host, in its
// service or its message display, calls on the same object return false and change nothing.
#pragma once

#include "mathexpr/Export.h"
#include "mathexpr/HostRuntime.h"
#include "mathexpr/IMathExprService.h"
#include "mathexpr/IMathVariableFactory.h"
#include "mathexpr/ValType.h"

#include <memory>
#include <string>

class MTParser;
class MTParserProgram;

namespace mathexpr {
struct EngineAccess;
}

/// Owns a registry of operators, functions, constants and variables, and one compiled expression. Variables are kept as long
/// as the object exists, so their values persist from one expression to the next.
class MATHEXPR_API MathExpression
{
public:
    /// @param silentMode  false: errors are shown in message boxes and reported as false. true: no box (but message 19),
    ///                    and a text that does not compile raises MTExceptions<SMTParsingExcepData>.
    /// @param service     looks up names that nothing else defines; may be null; the host owns it and keeps it alive
    /// @throws std::bad_alloc
    MathExpression(bool silentMode, const IMathExprService* service)
        : MathExpression(silentMode, service, mathexpr::HostRuntime())
    {}

    /// The same for a host that finds this constructor by its name (GetProcAddress) and passes its own HostRuntime.
    MathExpression(bool silent, const IMathExprService* service, const mathexpr::HostRuntime& host);
    ~MathExpression();

    /// Compiles a text; a null pointer is an empty text. After a failure the object holds no program.
    /// @return true if there is a program to evaluate; false after the user has seen a message, or, when silent, if an item
    ///         refused its constant arguments or an integer literal is too large
    /// @throws MTExceptions<SMTParsingExcepData>  when silent: every other failure. In both modes: ")" before "("
    ///         (code 0), and a constant point where a function needs a number (code 15)
    /// @throws MTExceptions<SMTDefExcepData>      when silent: a name that the host knows but that cannot be a variable
    /// @throws std::bad_alloc, and what the host's service throws. Engine exceptions thrown by the service, of either kind,
    ///         are handled as the library's own: rethrown when silent, otherwise message 3 and false
    bool setExpression(const wchar_t* expression);

    /// Runs the program and stores a pending assignment, once.
    /// @param result  the value; untouched unless true is returned
    /// @return false if an item refused its arguments, the assigned name cannot be a variable, or there is no program
    /// @throws MTExceptions<SMTParsingExcepData>  in both modes: code 15, a point where a function needs a number
    /// @throws std::bad_alloc  if the assignment creates a variable
    bool evaluate(VALTYPE& result);

    /// A variable held in memory.
    class MATHEXPR_API MemVariableEvaluator final : public IMathVariable
    {
    public:
        MemVariableEvaluator(const wchar_t* name, const VALTYPE& initialValue);

        bool evaluate(std::uint32_t nbArgs, const VALTYPE* args, VALTYPE& result, bool showMessages) const override;
        std::wstring getSymbol() const override;
        VALTYPE* getValuePtr() override;

    private:
        std::wstring name;
        VALTYPE value;
    };

    /// Makes variables held in memory.
    class MATHEXPR_API MemVariableFactory final : public IMathVariableFactory
    {
    public:
        IMathVariable* create(const wchar_t* name) override;
    };

private:
    friend class CMathExpr;
    friend struct mathexpr::EngineAccess;

    // A copy shares the engine's session with its source; the last one destroyed releases it. Only CMathExpr copies.
    MathExpression(const MathExpression&);
    MathExpression& operator=(const MathExpression&);

    struct AutomaticVariables
    {
        bool enabled = false;                     // an unknown name becomes a variable with the value 0
        IMathVariableFactory* factory = nullptr;  // null: memVariableFactory
    };

    bool compileText(const wchar_t* expression);
    bool evaluateProgram(VALTYPE& result);
    bool assign(const VALTYPE& value);
    void store(const std::wstring& name, const VALTYPE& value);
    void setMaxInteger(std::uint32_t maxInteger) noexcept;

    std::shared_ptr<MTParser> parser;
    AutomaticVariables automaticVariables;
    MTParserProgram* program = nullptr;  // owned by parser
    MemVariableFactory memVariableFactory;
    std::wstring assignTarget;
    bool silent;
    mathexpr::HostRuntime host;
};
