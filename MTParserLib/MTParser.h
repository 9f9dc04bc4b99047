// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParser.h - the engine's session: all that one expression object owns, and the way of a text through it.
//
//     text      compile     registrar, limits -> compilation (program, or failure)
//     program   run         -> the value in the program's root, or failure
//     variable  set, define -> registrar
//
// Copies of a calculator share a session. What is an object's own, such as the name that waits to be assigned, is handed
// to each call.
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
    /// A session that knows the vocabulary.
    /// @param showMessages, service  as of MTParserCompiler
    MTParser(bool showMessages, const IMathExprService* service);
    MTParser(const MTParser&) = delete;
    MTParser& operator=(const MTParser&) = delete;

    MTParserRegistrar& getRegistrar() noexcept { return registrar; }
    /// At one address for the life of the session.
    MTParserProgram& getProgram() noexcept { return compilation.program; }
    /// The last failure, of a compilation, a run or an assignment.
    const MTFailure& getFailure() const noexcept { return compilation.failure; }
    bool hasFailed() const noexcept { return getFailure().message != Message::None; }
    /// The text compiled last, as typed; empty where it was too long to be looked at.
    const std::wstring& getTypedText() const noexcept { return compilation.typedText; }

    /// In force from the next text on.
    void setLimits(const MTLimits& newLimits) noexcept { limits = newLimits; }
    const MTLimits& getLimits() const noexcept { return limits; }
    void setMaxInteger(std::uint32_t limit) noexcept { compiler.setMaxInteger(limit); }
    std::uint32_t getMaxInteger() const noexcept { return compiler.getMaxInteger(); }

    /// The host's, which answers names; may be null.
    const IMathExprService* getService() const noexcept { return compiler.getService(); }

    /// Names that the host offers for suggestions; only kept here, and may be null.
    void setNameSource(const mathexpr::IMathExprNameSource* source) noexcept { nameSource = source; }
    const mathexpr::IMathExprNameSource* getNameSource() const noexcept { return nameSource; }

    /// As of MTParserCompiler.
    /// @param automaticVariables  whether an unknown name that the host does not answer becomes a variable of value 0
    bool compile(const wchar_t* text, bool automaticVariables, std::wstring& assignTarget);

    /// Runs the program, which is complete, once.
    /// @param showMessages  whether an item may tell the user why it refuses
    /// @return true with the value in the program's root; false when an item refused its arguments, which is noted
    /// @throws what an item raises for an argument of the wrong kind, which is noted as well
    bool run(bool showMessages);

    /// Notes, and shows if it may, that a step of the program's scalar code has refused its operands.
    /// @param slot  x of the step's result
    void refuse(const double* slot, Message::Id refusal, bool showMessages);

    /// @return false when there is no such variable
    bool setVariable(std::wstring_view name, const VALTYPE& value);
    /// Defines a variable that only holds the value at its address. A refusal is raised anew, as this layer's.
    /// @throws DefinitionException
    void defineVariable(std::unique_ptr<IMathVariable> variable);
    /// Notes that the name that waits to be assigned cannot be a variable.
    void noteRefusedAssignment(const SMTDefExcepData& data);

    /// Removes a variable from the registrar. A program that reads it is emptied, which is noted as a failure.
    /// @return false when there is no such variable
    bool removeVariable(std::wstring_view name);

private:
    MTSpan spanOf(const MTRunFailure& failed) const noexcept;

    MTParserRegistrar registrar;
    MTCompilation compilation;
    MTParserCompiler compiler;
    MTLimits limits;
    const mathexpr::IMathExprNameSource* nameSource = nullptr;
};
