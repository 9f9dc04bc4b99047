// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParser.h - the engine's session: the state of one expression object, and the pipeline of a text.
//
//     text      compile     registrar, limits -> compilation (program, or failure)
//     program   run         -> the value in the program's root, or failure
//     variable  set, define -> registrar
//
// Copies of a calculator share a session. State of a single object, such as its pending assignment, is passed to each
// call.
#pragma once

#include "MTParserLib/MTParserCompiler.h"
#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/compile/MTCompilation.h"
#include "MTParserLib/run/MTParserEvaluator.h"
#include "MTParserLib/text/MTLimits.h"
#include "mathexpr/IMathExprNameSource.h"
#include "mathexpr/IMathExprService.h"

#include <memory>
#include <string>
#include <string_view>

class MTParser
{
public:
    /// Creates a session that knows the vocabulary.
    /// @param showMessages, service  as in MTParserCompiler
    MTParser(bool showMessages, const IMathExprService* service);
    MTParser(const MTParser&) = delete;
    MTParser& operator=(const MTParser&) = delete;

    MTParserRegistrar& getRegistrar() noexcept { return registrar; }
    /// The program; its address does not change during the session.
    MTParserProgram& getProgram() noexcept { return compilation.program; }
    /// The last failure of a compilation, a run or an assignment.
    const MTFailure& getFailure() const noexcept { return compilation.failure; }
    bool hasFailed() const noexcept { return getFailure().message != Message::None; }
    /// The text compiled last, as typed; empty if it exceeded the length limit.
    const std::wstring& getTypedText() const noexcept { return compilation.typedText; }

    /// Applies to the texts compiled afterwards.
    void setLimits(const MTLimits& newLimits) noexcept { limits = newLimits; }
    const MTLimits& getLimits() const noexcept { return limits; }
    void setMaxInteger(std::uint32_t limit) noexcept { compiler.setMaxInteger(limit); }
    std::uint32_t getMaxInteger() const noexcept { return compiler.getMaxInteger(); }

    /// The host's lookup of names; may be null.
    const IMathExprService* getService() const noexcept { return compiler.getService(); }

    /// Names that the host offers for suggestions; only stored here; may be null.
    void setNameSource(const mathexpr::IMathExprNameSource* source) noexcept { nameSource = source; }
    const mathexpr::IMathExprNameSource* getNameSource() const noexcept { return nameSource; }

    /// See MTParserCompiler::compile.
    /// @param automaticVariables  whether an unknown name that the host does not supply becomes a variable with the
    ///                            value 0
    bool compile(const wchar_t* text, bool automaticVariables, std::wstring& assignTarget);

    /// Runs the complete program once.
    /// @param showMessages  whether an item may show the user why it refuses
    /// @return true with the value in the program's root; false if an item refused its arguments, which is recorded
    /// @throws what an item raises for an argument of the wrong kind, which is recorded as well
    bool run(bool showMessages);

    /// Records that a step of scalar code refused its operands, and shows the message if allowed.
    /// @param slot  x of the step's result
    void refuse(const double* slot, Message::Id refusal, bool showMessages);

    /// @return false if there is no such variable
    bool setVariable(std::wstring_view name, const VALTYPE& value);
    /// Defines a variable whose evaluation only copies the value at its address. A refusal is raised again with an entry
    /// of this layer.
    /// @throws DefinitionException
    void defineVariable(std::unique_ptr<IMathVariable> variable);
    /// Records that the pending assignment's name cannot be a variable.
    void noteRefusedAssignment(const SMTDefExcepData& data);

    /// Removes a variable from the registrar. A program that reads it is emptied, which is recorded as a failure.
    /// @return false if there is no such variable
    bool removeVariable(std::wstring_view name);

private:
    MTSpan spanOf(const MTRunFailure& failed) const noexcept;

    MTParserRegistrar registrar;
    MTCompilation compilation;
    MTParserCompiler compiler;
    MTLimits limits;
    const mathexpr::IMathExprNameSource* nameSource = nullptr;
};
