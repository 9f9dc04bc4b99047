// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParser.cpp - see MTParser.h.
#include "MTParserLib/MTParser.h"

#include "MTParserLib/MTParserDefFuncs.h"
#include "MTParserLib/vocabulary/Refusal.h"
#include "platform/KeptWhileLoaded.h"

#include <memory>
#include <utility>

namespace {

constexpr const wchar_t* sessionFile = L"MTParserLib/MTParser";

/// The line reported for an assigned name that cannot be a variable. Hosts may depend on it, so it is a constant and
/// not __LINE__.
constexpr std::uint32_t assignmentLine = 424;

/// A registrar with syntax, constants, operators and functions, filled once per process.
const MTParserRegistrar& vocabularyPrototype()
{
    static platform::KeptWhileLoaded<std::unique_ptr<const MTParserRegistrar>> prototype([] {
        auto registrar = std::make_unique<MTParserRegistrar>();
        registrar->setSyntax({L'.', L',', L'[', L']'});
        registerConstants(*registrar);
        registerVocabulary(*registrar);
        return registrar;
    }());
    return **prototype;
}

}

MTParser::MTParser(bool showMessages, const IMathExprService* service)
    : registrar(&vocabularyPrototype()), compiler(registrar, compilation, showMessages, service)
{}

bool MTParser::compile(const wchar_t* text, bool automaticVariables, std::wstring& assignTarget)
{
    compiler.setAutomaticVariables(automaticVariables);
    return compiler.compile(text, limits, assignTarget);
}

bool MTParser::run(bool showMessages)
{
    compilation.failure.clear();
    MTRunFailure failed{};
    try
    {
        if (runProgram(compilation.program, showMessages, failed))
        {
            return true;
        }
    }
    catch (const mathexpr::ParsingException& exception)
    {
        compilation.failure.noteRaised(exception, spanOf(failed), failed.nbArgs);
        throw;
    }
    compilation.failure.noteRefusal(failed.refusal, spanOf(failed), failed.nbArgs);
    return false;
}

void MTParser::refuse(const double* slot, Message::Id refusal, bool showMessages)
{
    showRefusal(refusal, showMessages);
    const MTRunFailure failed = failureAt(compilation.program, slot, refusal);
    compilation.failure.noteRefusal(refusal, spanOf(failed), failed.nbArgs);
}

MTSpan MTParser::spanOf(const MTRunFailure& failed) const noexcept
{
    return spanOfStep(registrar, compilation.text, failed.position, failed.nbArgs);
}

bool MTParser::setVariable(std::wstring_view name, const VALTYPE& value)
{
    IMathVariable* const variable = registrar.findVariable(name);
    if (variable == nullptr)
    {
        return false;
    }
    *variable->getValuePtr() = value;
    return true;
}

void MTParser::defineVariable(std::unique_ptr<IMathVariable> variable)
{
    try
    {
        registrar.defineVariable(variable.release(), true);
    }
    catch (const mathexpr::DefinitionException& exception)
    {
        throw mathexpr::DefinitionException(assignmentLine, 0, sessionFile, exception.entries.front().data);
    }
}

void MTParser::noteRefusedAssignment(const SMTDefExcepData& data)
{
    // The name may be a pending one from an earlier text.
    const MTSpan span = compilation.assignSpan;
    const std::wstring_view assigned = compilation.text.substr(span.begin, span.end - span.begin);
    compilation.failure.noteDefinition(data, mathexpr::Expected::NewName, assigned == data.itemName ? span : MTSpan{});
}

bool MTParser::removeVariable(std::wstring_view name)
{
    const MTVariableDefinition* const variable = registrar.findVariableDefinition(name);
    if (variable != nullptr && compiler.hasUsed(*variable))
    {
        compilation.program.clear();
        compilation.failure.note(Message::UnknownName, mathexpr::Expected::KnownName, {}, name, 0);
    }
    return registrar.removeVariable(name);
}
