// MTParserCompiler.cpp - the pass over the text, the operator stack, and the errors.
#include "MTParserLib/MTParserCompiler.h"

#include "MTParserLib/MTParserNumber.h"
#include "MTParserLib/MTParserPreprocessing.h"

#include <string>

namespace {

constexpr const wchar_t* sourceFile = L"MTParserLib/MTParserCompiler";

/// The precedence of a function that waits for its bracket to be closed: above every operator.
constexpr std::int32_t functionPrecedence = 5;
/// Below every operator, so that an open bracket stops whatever empties the stack.
constexpr std::int32_t openBracketPrecedence = -1;

/// Empties the program when the compiling ends in any way but with a complete program.
class EmptyUnlessComplete
{
public:
    explicit EmptyUnlessComplete(MTParserProgram& program) noexcept : program(program) {}
    EmptyUnlessComplete(const EmptyUnlessComplete&) = delete;
    EmptyUnlessComplete& operator=(const EmptyUnlessComplete&) = delete;
    ~EmptyUnlessComplete()
    {
        if (!program.isComplete())
        {
            program.clear();
        }
    }

private:
    MTParserProgram& program;
};

/// Tokens are reported with the first character of the text counted as 1.
std::uint32_t positionOf(std::size_t tokenStart)
{
    return static_cast<std::uint32_t>(tokenStart + 1);
}

}

MTParserCompiler::MTParserCompiler(MTParserRegistrar& registrar, bool showMessages,
                                   const IMathExprService* service) noexcept
    : registrar(registrar), showMessages(showMessages), service(service), emitter(program, showMessages)
{}

bool MTParserCompiler::compile(const wchar_t* typed, std::wstring& assignTarget)
{
    program.clear();
    const EmptyUnlessComplete emptyUnlessComplete(program);

    preprocess(typed, text);
    stack.clear();
    levels.assign(1, BracketLevel{});
    if (!compileRewritten(assignTarget) || !compileEnd())
    {
        return false;
    }
    program.finish();
    return program.isComplete() || fail(CompileError::noExpression, __LINE__, 0, text);
}

bool MTParserCompiler::compileRewritten(std::wstring& assignTarget)
{
    const std::wstring_view all = text;
    const wchar_t separator = registrar.getSyntax().argumentSeparator;

    std::size_t tokenStart = 0;
    for (std::size_t i = 0; i < all.size(); ++i)
    {
        const wchar_t character = all[i];
        const wchar_t next = i + 1 < all.size() ? all[i + 1] : L'\0';
        const auto position = static_cast<std::uint32_t>(i);

        if (character == L')' && next == L'(')
        {
            raise(CompileError::operatorMisplaced, __LINE__, position + 1);
        }

        std::wstring_view symbol;
        const bool isOperator = registrar.isOperatorSymbol(all.substr(i), symbol);
        const bool endsToken = isOperator || character == separator || character == L'(' || character == L')';
        const std::wstring_view token = all.substr(tokenStart, i - tokenStart);
        if (!endsToken)
        {
            if (character == L'=')
            {
                if (!stack.empty())
                {
                    return fail(CompileError::assignmentMisplaced, __LINE__, position);
                }
                assignTarget = token;
                tokenStart = i + 1;
            }
            continue;
        }

        if (!token.empty() && !compileToken(token, positionOf(tokenStart), character))
        {
            return false;
        }
        bool done = true;
        if (isOperator)
        {
            done = compileOperator(symbol, position);
            i += symbol.size() - 1;
        }
        else if (character == L'(')
        {
            done = openBracket(position, next);
        }
        else
        {
            done = endArgument(position, character, next);
        }
        if (!done)
        {
            return false;
        }
        tokenStart = i + 1;
    }

    const std::wstring_view lastToken = all.substr(tokenStart);
    return lastToken.empty() || compileToken(lastToken, positionOf(tokenStart), lastToken.back());
}

bool MTParserCompiler::compileEnd()
{
    while (!stack.empty())
    {
        const StackRecord record = stack.back();
        stack.pop_back();
        if (record.kind == StackRecord::Kind::OpenBracket)
        {
            return fail(CompileError::bracketNotClosed, __LINE__, record.position);
        }
        if (!emit(record))
        {
            return false;
        }
    }
    return true;
}

bool MTParserCompiler::compileToken(std::wstring_view token, std::uint32_t position, wchar_t following)
{
    const Token current = levels.back().current;
    if (current != Token::Nothing && current != Token::Operator)
    {
        return fail(CompileError::valueAfterValue, __LINE__, position, token);
    }
    if (following == L'(')
    {
        return compileFunctionName(token, position);
    }
    if (registrar.isNumber(token) ? !compileNumber(token, position) : !compileName(token, position))
    {
        return false;
    }
    setKind(Token::Value);
    markPending();
    return true;
}

bool MTParserCompiler::compileFunctionName(std::wstring_view token, std::uint32_t position)
{
    const std::size_t firstOverload = registrar.findFunction(token);
    if (firstOverload == MTParserRegistrar::notFound)
    {
        return fail(CompileError::unknownFunction, __LINE__, position, token);
    }
    markPending();
    setKind(Token::Function);
    StackRecord record{StackRecord::Kind::Function, functionPrecedence, position};
    record.firstOverload = firstOverload;
    stack.push_back(record);
    return true;
}

bool MTParserCompiler::compileNumber(std::wstring_view token, std::uint32_t position)
{
    const wchar_t decimalPoint = registrar.getSyntax().decimalPoint;
    VALTYPE value;
    value.x = readNumber(token, decimalPoint, digits);
    if (value.x > maxInteger && token.find(decimalPoint) == std::wstring_view::npos)
    {
        // Shown whatever the message switch says, and never an exception.
        showMessage(Message::IntegerTooLarge);
        return false;
    }
    emitter.emitConstant(value, position);
    return true;
}

bool MTParserCompiler::compileName(std::wstring_view token, std::uint32_t position)
{
    const std::size_t constant = registrar.findConstant(token);
    if (constant != MTParserRegistrar::notFound)
    {
        emitter.emitConstant(registrar.getConstantValue(constant), position);
        return true;
    }
    try
    {
        const IMathVariable* variable = resolveVariable(token);
        if (variable == nullptr)
        {
            return fail(CompileError::unknownName, __LINE__, position, token);
        }
        emitter.emitVariable(*variable, position);
        return true;
    }
    catch (DefinitionException& exception)
    {
        if (showMessages)
        {
            showMessage(Message::InvalidExpression);
            return false;
        }
        const SMTDefExcepData data = exception.entries.front().data;
        exception.addEntry(__LINE__, 0, sourceFile, data);
        throw;
    }
}

IMathVariable* MTParserCompiler::resolveVariable(std::wstring_view name)
{
    IMathVariable* variable = registrar.findVariable(name);
    if (variable != nullptr)
    {
        return variable;
    }
    VALTYPE answer;
    if (service != nullptr && service->lookupValue(std::wstring(name).c_str(), answer))
    {
        registrar.defineVariable(name);
        variable = registrar.findVariable(name);
        if (variable != nullptr)
        {
            *variable->getValuePtr() = answer;
        }
        return variable;
    }
    if (automaticVariables)
    {
        registrar.defineVariable(name);
        variable = registrar.findVariable(name);
    }
    return variable;
}

bool MTParserCompiler::openBracket(std::uint32_t position, wchar_t next)
{
    if (next == L')')
    {
        return fail(CompileError::argumentEmpty, __LINE__, position);
    }
    if (StackRecord* nearest = nearestRecord())
    {
        nearest->argumentPending = false;
    }
    stack.push_back(StackRecord{StackRecord::Kind::OpenBracket, openBracketPrecedence, position});
    if (levels.back().current == Token::Function)
    {
        emitter.emitPlaceholder(position);
    }
    levels.push_back(BracketLevel{});
    return true;
}

bool MTParserCompiler::endArgument(std::uint32_t position, wchar_t character, wchar_t next)
{
    const bool closes = character == L')';
    if (levels.back().current == Token::Operator)
    {
        return fail(CompileError::operandMissing, __LINE__, position);
    }
    levels.pop_back();
    if (!closes)
    {
        levels.push_back(BracketLevel{});
        if (next == L')')
        {
            return fail(CompileError::argumentEmpty, __LINE__, position);
        }
    }

    std::size_t nbEmitted = 0;
    if (!emitWhile([](const StackRecord& top) { return top.kind != StackRecord::Kind::OpenBracket; }, nbEmitted))
    {
        return false;
    }
    if (stack.empty())
    {
        return closes ? fail(CompileError::closingWithoutOpening, __LINE__, position)
                      : fail(CompileError::separatorOutsideBrackets, __LINE__, position);
    }

    const bool argumentTaken = takeArgument();
    if (closes)
    {
        stack.pop_back();
        if (levels.back().current != Token::Function)
        {
            setKind(Token::Value);
        }
    }
    else if (nbEmitted == 0 && !argumentTaken)
    {
        return fail(CompileError::argumentEmpty, __LINE__, position);
    }

    // A bracket that is an argument by itself, as in sin((1)), counts for the record around it.
    const bool argumentGoesOn = closes && (next == L')' || next == registrar.getSyntax().argumentSeparator);
    if (StackRecord* nearest = nearestRecord())
    {
        nearest->argumentPending = argumentGoesOn && argumentTaken;
    }
    return true;
}

bool MTParserCompiler::takeArgument()
{
    StackRecord* nearest = nearestRecord();
    if (nearest == nullptr || !nearest->argumentPending)
    {
        return false;
    }
    if (nearest->kind == StackRecord::Kind::Function)
    {
        ++nearest->nbArgs;
    }
    return true;
}

bool MTParserCompiler::compileOperator(std::wstring_view symbol, std::uint32_t position)
{
    markPending();
    setKind(Token::Operator);
    const Token before = levels.back().previous;
    const bool unary = before == Token::Nothing || before == Token::Operator;
    const std::size_t index = registrar.findOperator(symbol, unary);
    if (index == MTParserRegistrar::notFound)
    {
        return fail(CompileError::operatorMisplaced, __LINE__, position + 1);
    }
    const std::size_t last = position + symbol.size() - 1;
    if (last + 1 >= text.size())
    {
        return fail(CompileError::operandMissing, __LINE__, static_cast<std::uint32_t>(last));
    }

    const IMathOperator& item = registrar.getOperator(index);
    const std::int32_t precedence = item.getPrecedence();
    // A waiting unary operator stays when one of its own precedence follows: that one and its operand belong to it.
    const bool staysUnderEqual = !stack.empty() && stack.back().kind == StackRecord::Kind::Operator &&
                                 stack.back().precedence == precedence && stack.back().operatorItem->isUnaryOp();
    const std::int32_t leaving = staysUnderEqual ? precedence + 1 : precedence;
    std::size_t nbEmitted = 0;
    if (!emitWhile([leaving](const StackRecord& top) { return leaving <= top.precedence; }, nbEmitted))
    {
        return false;
    }

    StackRecord record{StackRecord::Kind::Operator, precedence, position};
    record.nbArgs = unary ? 1 : 2;
    record.operatorItem = &item;
    stack.push_back(record);
    return true;
}

template <class Leaves>
bool MTParserCompiler::emitWhile(Leaves leaves, std::size_t& nbEmitted)
{
    while (!stack.empty() && leaves(stack.back()))
    {
        const StackRecord record = stack.back();
        stack.pop_back();
        ++nbEmitted;
        if (!emit(record))
        {
            return false;
        }
    }
    return true;
}

bool MTParserCompiler::emit(const StackRecord& record)
{
    MTEmission emission;
    if (record.kind == StackRecord::Kind::Function)
    {
        const std::size_t overload = registrar.findOverload(record.firstOverload, record.nbArgs);
        if (overload == MTParserRegistrar::notFound)
        {
            const std::wstring symbol = registrar.getFunction(record.firstOverload).getSymbol();
            return fail(CompileError::noOverload, __LINE__, record.position, symbol, record.nbArgs);
        }
        emission = emitter.emitCall(registrar.getFunction(overload), record.nbArgs, record.position);
    }
    else
    {
        emission = emitter.emitOperator(*record.operatorItem, record.nbArgs, record.position);
    }
    if (emission.outcome == MTEmission::Outcome::OperandMissing)
    {
        return fail(CompileError::programBroken, __LINE__, emission.position);
    }
    // An item that refused its constant arguments has told the user itself.
    return emission.outcome == MTEmission::Outcome::Done;
}

void MTParserCompiler::setKind(Token kind) noexcept
{
    BracketLevel& level = levels.back();
    level.previous = level.current;
    level.current = kind;
}

MTParserCompiler::StackRecord* MTParserCompiler::nearestRecord() noexcept
{
    const std::size_t depth = !stack.empty() && stack.back().kind == StackRecord::Kind::OpenBracket ? 2 : 1;
    return stack.size() < depth ? nullptr : &stack[stack.size() - depth];
}

void MTParserCompiler::markPending() noexcept
{
    if (StackRecord* nearest = nearestRecord())
    {
        nearest->argumentPending = true;
    }
}

bool MTParserCompiler::fail(const MTCompileError& error, std::uint32_t line, std::uint32_t position,
                            std::wstring_view itemName, std::uint32_t nbArgs) const
{
    if (!showMessages)
    {
        raise(error, line, position, itemName, nbArgs);
    }
    showMessage(error.message);
    return false;
}

void MTParserCompiler::raise(const MTCompileError& error, std::uint32_t line, std::uint32_t position,
                             std::wstring_view itemName, std::uint32_t nbArgs)
{
    SMTParsingExcepData data;
    data.exID = error.exID;
    data.pos = position;
    data.itemName = itemName;
    data.nbArgs = nbArgs;
    throw ParsingException(line, 0, sourceFile, data);
}
