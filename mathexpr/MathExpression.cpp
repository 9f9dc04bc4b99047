// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MathExpression.cpp - builds the engine for one expression object, and leads a text through it.
#include "mathexpr/MathExpression.h"

#include "MTParserLib/MTMessage.h"
#include "MTParserLib/MTParserCompiler.h"
#include "MTParserLib/MTParserDefFuncs.h"
#include "MTParserLib/MTParserRegistrar.h"
#include "MTParserLib/program/MTParserProgram.h"
#include "MTParserLib/program/MTValueCopy.h"
#include "MTParserLib/run/MTParserEvaluator.h"
#include "mathexpr/HostBoundary.h"
#include "platform/KeptWhileLoaded.h"

namespace {

constexpr const wchar_t* sessionFile = L"MTParserLib/MTParser";

/// The line reported for an assigned name that cannot be a variable. Hosts may know it, so it does not move with the
/// code.
constexpr std::uint32_t assignmentLine = 424;

/// A registrar with syntax, constants, operators and functions, filled once in the life of the process.
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

/// Defines a variable that holds a value. A refusal is raised anew, as this layer's.
void defineMemoryVariable(MTParserRegistrar& registrar, const std::wstring& name, const VALTYPE& value)
{
    auto variable = std::make_unique<MathExpression::MemVariableEvaluator>(name.c_str(), value);
    try
    {
        registrar.defineVariable(variable.release(), true);
    }
    catch (const mathexpr::DefinitionException& exception)
    {
        throw mathexpr::DefinitionException(assignmentLine, 0, sessionFile, exception.entries.front().data);
    }
}

/// Runs a program, and has the compiler note why it ended early.
bool runAndNote(MTParserProgram& program, bool showMessages, MTParserCompiler& compiler)
{
    compiler.clearFailure();
    MTRunFailure failure;
    try
    {
        if (runProgram(program, showMessages, failure))
        {
            return true;
        }
    }
    catch (const mathexpr::ParsingException& exception)
    {
        compiler.noteRaised(failure.position, failure.nbArgs, exception);
        throw;
    }
    compiler.noteRefusal(failure.position, failure.nbArgs, failure.refusal);
    return false;
}

}

MathExpression::MathExpression(bool silentMode, const IMathExprService* service,
                               const mathexpr::HostRuntime& hostRuntime)
try : registrar(std::make_shared<MTParserRegistrar>(&vocabularyPrototype())),
    compiler(std::make_shared<MTParserCompiler>(*registrar, !silentMode, service)), program(&compiler->getProgram()),
    silent(silentMode), host(hostRuntime)
{}
catch (...)
{
    // It computes nothing, but memory may run out.
    handExceptionsOver(hostRuntime);
    throw;
}

MathExpression::MathExpression(const MathExpression&) = default;
MathExpression& MathExpression::operator=(const MathExpression&) = default;

MathExpression::~MathExpression() = default;

bool MathExpression::setExpression(const wchar_t* expression)
{
    const bool compiled = atHostBoundary(host, [&] { return compileText(expression); });
    settleExceptions(host);
    return compiled;
}

bool MathExpression::evaluate(VALTYPE& result)
{
    // Most evaluations: there is nothing to do but to run number code, which calls nobody who could call back.
    double x = 0.0;
    if (platform::computesAsTheLibrary() && assignTarget.empty() && program->numbers.runStraight(x))
    {
        copyWithX(result, *program->root, x);
        return true;
    }
    return evaluateProgram(result);
}

bool MathExpression::compileText(const wchar_t* expression)
{
    const MTProgramClaim claim(*program);
    if (!claim.isGranted())
    {
        return false;
    }
    // Copies share the registrar and the compiler: what points back at an expression object has to point at this one.
    IMathVariableFactory* configured = automaticVariables.factory;
    registrar->setVariableFactory(configured != nullptr ? configured : &memVariableFactory, configured == nullptr);
    compiler->setAutomaticVariables(automaticVariables.enabled);
    return compiler->compile(expression, assignTarget);
}

bool MathExpression::evaluateProgram(VALTYPE& result)
{
    return atHostBoundary(host, [&] {
        const MTProgramClaim claim(*program);
        if (!claim.isGranted() || !program->isComplete() || !runAndNote(*program, !silent, *compiler))
        {
            return false;
        }
        if (!assignTarget.empty() && !assign(*program->root))
        {
            return false;
        }
        copyRecent(result, *program->root);
        program->numbers.openStraightWay();
        return true;
    });
}

bool MathExpression::assign(const VALTYPE& value)
{
    try
    {
        store(assignTarget, value);
    }
    catch (const mathexpr::DefinitionException& exception)
    {
        compiler->noteRefusedAssignment(exception.entries.front().data);
        if (!silent)
        {
            showMessage(Message::InvalidExpression);
        }
        return false;
    }
    assignTarget.clear();
    return true;
}

void MathExpression::store(const std::wstring& name, const VALTYPE& value)
{
    if (IMathVariable* variable = registrar->findVariable(name))
    {
        *variable->getValuePtr() = value;
    }
    else
    {
        defineMemoryVariable(*registrar, name, value);
    }
}

void MathExpression::setMaxInteger(std::uint32_t maxInteger) noexcept
{
    const MTProgramClaim claim(*program);
    if (claim.isGranted())
    {
        compiler->setMaxInteger(maxInteger);
    }
}

MathExpression::MemVariableEvaluator::MemVariableEvaluator(const wchar_t* variableName, const VALTYPE& initialValue)
    : name(variableName), value(initialValue)
{}

bool MathExpression::MemVariableEvaluator::evaluate(std::uint32_t, const VALTYPE*, VALTYPE& result, bool) const
{
    result = value;
    return true;
}

std::wstring MathExpression::MemVariableEvaluator::getSymbol() const
{
    return name;
}

VALTYPE* MathExpression::MemVariableEvaluator::getValuePtr()
{
    return &value;
}

IMathVariable* MathExpression::MemVariableFactory::create(const wchar_t* name)
{
    return new MemVariableEvaluator(name, VALTYPE{});
}
