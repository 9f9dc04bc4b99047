// MathExpression.cpp - builds the engine for one expression object, and leads a text through it.
#include "mathexpr/MathExpression.h"

#include "MTParserLib/MTMessage.h"
#include "MTParserLib/MTParserCompiler.h"
#include "MTParserLib/MTParserDefFuncs.h"
#include "MTParserLib/MTParserEvaluator.h"
#include "MTParserLib/MTParserProgram.h"
#include "MTParserLib/MTParserRegistrar.h"

namespace {

constexpr const wchar_t* sourceFile = L"MTParserLib/MTParser";

/// The line reported for an assigned name that cannot be a variable. Hosts may know it, so it does not move with the
/// code.
constexpr std::uint32_t assignmentLine = 424;

// Eleven decimals of pi: fewer than a double holds, and part of the language as they stand.
constexpr double pi = 3.14159265359;
constexpr double e = 2.718281828459045;

VALTYPE numberOf(double x)
{
    VALTYPE value;
    value.x = x;
    return value;
}

/// Defines a variable that holds a value. A refusal is raised anew, as this layer's.
void defineMemoryVariable(MTParserRegistrar& registrar, const std::wstring& name, const VALTYPE& value)
{
    auto variable = std::make_unique<MathExpression::MemVariableEvaluator>(name.c_str(), value);
    try
    {
        registrar.defineVariable(variable.release());
    }
    catch (const DefinitionException& exception)
    {
        throw DefinitionException(assignmentLine, 0, sourceFile, exception.entries.front().data);
    }
}

}

MathExpression::MathExpression(bool silentMode, const IMathExprService* service)
    : registrar(std::make_shared<MTParserRegistrar>()),
      compiler(std::make_shared<MTParserCompiler>(*registrar, !silentMode, service)), program(&compiler->getProgram()),
      silent(silentMode)
{
    registrar->setSyntax({L'.', L',', L'[', L']'});
    registrar->defineConstant(L"pi", numberOf(pi));
    registrar->defineConstant(L"PI", numberOf(pi));
    registrar->defineConstant(L"e", numberOf(e));
    registrar->defineConstant(L"E", numberOf(e));
    registrar->setVariableFactory(&memVariableFactory);
    registerVocabulary(*registrar);
}

MathExpression::MathExpression(const MathExpression&) = default;
MathExpression& MathExpression::operator=(const MathExpression&) = default;

MathExpression::~MathExpression() = default;

bool MathExpression::setExpression(const wchar_t* expression)
{
    const MTProgramClaim claim(*program);
    if (!claim.isGranted())
    {
        return false;
    }
    // Copies share the registrar and the compiler: what points back at an expression object has to point at this one.
    IMathVariableFactory* configured = automaticVariables.factory;
    registrar->setVariableFactory(configured != nullptr ? configured : &memVariableFactory);
    compiler->setAutomaticVariables(automaticVariables.enabled);
    return compiler->compile(expression, assignTarget);
}

bool MathExpression::evaluate(VALTYPE& result)
{
    const MTProgramClaim claim(*program);
    if (!claim.isGranted() || !program->isComplete() || !runProgram(*program, !silent))
    {
        return false;
    }
    if (!assignTarget.empty() && !assign(program->rootValue()))
    {
        return false;
    }
    result = program->rootValue();
    return true;
}

bool MathExpression::assign(const VALTYPE& value)
{
    if (IMathVariable* variable = registrar->findVariable(assignTarget))
    {
        *variable->getValuePtr() = value;
    }
    else
    {
        try
        {
            defineMemoryVariable(*registrar, assignTarget, value);
        }
        catch (const DefinitionException&)
        {
            if (!silent)
            {
                showMessage(Message::InvalidExpression);
            }
            return false;
        }
    }
    assignTarget.clear();
    return true;
}

void MathExpression::dropAssignment() noexcept
{
    assignTarget.clear();
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
