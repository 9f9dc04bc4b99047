// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MathExpression.cpp - forwards a host's calls to the engine's session.
#include "mathexpr/MathExpression.h"

#include "MTParserLib/MTMessage.h"
#include "MTParserLib/MTParser.h"
#include "MTParserLib/program/MTValueCopy.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"

MathExpression::MathExpression(bool silentMode, const IMathExprService* service,
                               const mathexpr::HostRuntime& hostRuntime)
try : parser(std::make_shared<MTParser>(!silentMode, service)), program(&parser->getProgram()), silent(silentMode),
    host(hostRuntime)
{}
catch (...)
{
    // It computes nothing, but can run out of memory.
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
    static constexpr MTScalarOwner owner{
        [](void* self, void* record) {
            return static_cast<MathExpression*>(self)->evaluateProgram(*static_cast<VALTYPE*>(record));
        },
        [](void* self, const double* slot, Message::Id refusal) {
            mathexpr::EngineAccess::refuse(*static_cast<MathExpression*>(self), slot, refusal);
            return false;
        }};
    // Most evaluations jump into scalar code, which never calls the host, and writes the result.
    const MTScalarStep* const first = mathexpr::EngineAccess::fastPathOf(*this);
    return first != nullptr ? MTScalarCode::run(first, &result, &owner, this) : evaluateProgram(result);
}

bool MathExpression::compileText(const wchar_t* expression)
{
    const MTReentryGuard guard(*program);
    if (!guard.hasEntered())
    {
        return false;
    }
    // Copies share the parser; pointers in it to an expression object must refer to this one.
    IMathVariableFactory* configured = automaticVariables.factory;
    parser->getRegistrar().setVariableFactory(configured != nullptr ? configured : &memVariableFactory,
                                              configured == nullptr);
    return parser->compile(expression, automaticVariables.enabled, assignTarget);
}

bool MathExpression::evaluateProgram(VALTYPE& result)
{
    return atHostBoundary(host, [&] {
        const MTReentryGuard guard(*program);
        if (!guard.hasEntered() || !program->isComplete() || !parser->run(!silent))
        {
            return false;
        }
        if (!assignTarget.empty() && !assign(program->getRoot()))
        {
            return false;
        }
        copyRecent(result, program->getRoot());
        program->choice.arm(*program);
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
        parser->noteRefusedAssignment(exception.entries.front().data);
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
    if (!parser->setVariable(name, value))
    {
        parser->defineVariable(std::make_unique<MemVariableEvaluator>(name.c_str(), value));
    }
}

void MathExpression::setMaxInteger(std::uint32_t maxInteger) noexcept
{
    const MTReentryGuard guard(*program);
    if (guard.hasEntered())
    {
        parser->setMaxInteger(maxInteger);
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
