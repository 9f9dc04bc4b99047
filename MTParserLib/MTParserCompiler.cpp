// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTParserCompiler.cpp - the pass over the text, the operator stack, and the errors.
#include "MTParserLib/MTParserCompiler.h"

#include "MTParserLib/text/MTParserNumber.h"
#include "MTParserLib/text/MTParserPreprocessing.h"
#include "platform/FloatingPointGuard.h"

#include <limits>
#include <string>

namespace {

constexpr const wchar_t* compilerFile = L"MTParserLib/MTParserCompiler";

/// Token positions count from 1.
std::uint32_t positionOf(std::size_t tokenStart)
{
    return static_cast<std::uint32_t>(tokenStart + 1);
}

MTSpan spanOfToken(std::wstring_view token, std::uint32_t position)
{
    return {position - std::size_t{1}, position - 1 + token.size()};
}

/// The record of an exception. A host may have raised it and removed its entries.
template <class Data>
Data newestData(const MTExceptions<Data>& exception)
{
    return exception.entries.empty() ? Data() : exception.entries.front().data;
}

}

MTParserCompiler::MTParserCompiler(MTParserRegistrar& registrar, MTCompilation& compilation, bool showMessages,
                                   const IMathExprService* service) noexcept
    : registrar(registrar), compiled(compilation), program(compilation.program), text(compilation.text),
      failure(compilation.failure), showMessages(showMessages), service(service), emitter(program, showMessages)
{}

bool MTParserCompiler::compile(const wchar_t* given, const MTLimits& limits, std::wstring& assignTarget)
{
    emitter.begin(!registrar.callsHost());
    failure.clear();
    ++compilation;

    const wchar_t* const typed = given != nullptr ? given : L"";
    compiled.typedText.clear();
    compiled.text = {};
    compiled.assignSpan = {};
    if (!limits.areNone() && !checkLimits(typed, limits))
    {
        return false;
    }
    compiled.typedText = typed;
    const bool isRewritten = needsRewriting(compiled.typedText);
    if (isRewritten)
    {
        preprocess(compiled.typedText, compiled.rewrittenText);
    }
    compiled.text = isRewritten ? compiled.rewrittenText : compiled.typedText;
    if (!hasCompiled)
    {
        reserve();
    }
    stack.clear();
    levels.assign(1, BracketLevel{});
    if (!compileRewritten(assignTarget) || !compileEnd())
    {
        return false;
    }
    if (!emitter.finish(!hasCompiled))
    {
        return fail(CompileError::noExpression, __LINE__, 0, {}, text);
    }
    if (!hasCompiled && program.isShort())
    {
        releaseStacks();
    }
    hasCompiled = true;
    return true;
}

/// For the first text: arrays that grow from a single element would be allocated several times.
void MTParserCompiler::reserve()
{
    constexpr std::size_t usual = 4;
    emitter.reserve(usual);
    stack.reserve(usual);
    levels.reserve(usual);
}

/// Most objects compile a single short text. A second text allocates stacks again, and they are kept. A long first text keeps
/// its stacks, because the system takes time to provide much memory.
void MTParserCompiler::releaseStacks() noexcept
{
    emitter.releaseStacks();
    std::vector<StackRecord>().swap(stack);
    std::vector<BracketLevel>().swap(levels);
}

bool MTParserCompiler::checkLimits(const wchar_t* typed, const MTLimits& limits)
{
    const MTLimitExcess excess = findLimitExcess(typed, limits, registrar, limitScratch);
    if (excess.error == nullptr)
    {
        return true;
    }
    noteError(*excess.error, excess.span, {}, 0);
    failure.spanCountsTyped = true;
    if (excess.error != &CompileError::textTooLong)
    {
        compiled.typedText = typed;
    }
    return report(__LINE__, static_cast<std::uint32_t>(excess.span.begin));
}

bool MTParserCompiler::compileRewritten(std::wstring& assignTarget)
{
    const std::wstring_view all = text;
    const wchar_t separator = registrar.getSyntax().argumentSeparator;
    const MTPlainCharacters& plainCharacters = registrar.getPlainCharacters();

    std::size_t tokenStart = 0;
    for (std::size_t i = plainCharacters.skip(all, 0); i < all.size(); i = plainCharacters.skip(all, i + 1))
    {
        const wchar_t character = all[i];
        const wchar_t next = i + 1 < all.size() ? all[i + 1] : L'\0';
        const auto position = static_cast<std::uint32_t>(i);

        if (character == L')' && next == L'(')
        {
            levels.pop_back();
            noteError(CompileError::bracketAfterBracket, {i + 1, i + 2}, {}, 0);
            raise(__LINE__, position + 1);
        }

        // A bracket stays a bracket even if an operator's symbol begins with it.
        const bool isStructure = character == L'(' || character == L')' || character == separator;
        const std::size_t firstOperator =
            isStructure ? MTParserRegistrar::notFound : registrar.findOperatorAt({all.data() + i, all.size() - i});
        const bool isOperator = firstOperator != MTParserRegistrar::notFound;
        const std::wstring_view token(all.data() + tokenStart, i - tokenStart);
        if (!isStructure && !isOperator)
        {
            if (character == L'=')
            {
                if (!stack.empty())
                {
                    const bool afterValue = !token.empty() || levels.back().current == Token::Value;
                    return fail(afterValue ? CompileError::assignmentAfterValue : CompileError::assignmentForValue,
                                __LINE__, position, {i, i + 1});
                }
                assignTarget = token;
                compiled.assignSpan = {tokenStart, i};
                tokenStart = i + 1;
            }
            continue;
        }

        if (!token.empty() && !compileToken(token, positionOf(tokenStart), character))
        {
            return false;
        }
        const bool done = isOperator          ? compileOperator(firstOperator, position)
                          : character == L'(' ? openBracket(position, next)
                                              : endArgument(position, character, next);
        if (!done)
        {
            return false;
        }
        if (isOperator)
        {
            i += registrar.getOperatorDefinition(firstOperator).symbol.size() - 1;
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
        const StackRecord& record = stack.back();
        if (record.kind == StackRecord::Kind::OpenBracket)
        {
            return fail(CompileError::bracketNotClosed, __LINE__, record.position, spanOf(record));
        }
        if (!emit(record))
        {
            return false;
        }
        stack.pop_back();
    }
    return true;
}

/// Pushes a record that is filled in place.
inline MTParserCompiler::StackRecord& MTParserCompiler::push(StackRecord::Kind kind, std::uint32_t position)
{
    StackRecord& record = stack.emplace_back();
    record.kind = kind;
    record.position = position;
    return record;
}

inline void MTParserCompiler::setKind(Token kind) noexcept
{
    BracketLevel& level = levels.back();
    level.previous = level.current;
    level.current = kind;
}

inline MTParserCompiler::StackRecord* MTParserCompiler::nearestRecord() noexcept
{
    std::size_t count = stack.size();
    if (count > 0 && stack[count - 1].kind == StackRecord::Kind::OpenBracket)
    {
        --count;
    }
    return count > 0 ? &stack[count - 1] : nullptr;
}

inline void MTParserCompiler::markPending() noexcept
{
    if (StackRecord* nearest = nearestRecord())
    {
        nearest->argumentPending = true;
    }
}

void MTParserCompiler::noteUse(MTVariableDefinition& variable)
{
    program.usedVariables.push_back(variable.item.get());
    if (variable.valueInPlace != nullptr)
    {
        variable.input = firstInput + static_cast<MTPlace>(program.inputs.size());
        program.inputs.push_back(variable.valueInPlace);
    }
    variable.lastUse = compilation;
}

inline void MTParserCompiler::emitVariable(MTVariableDefinition& variable, std::uint32_t position)
{
    if (!hasUsed(variable))
    {
        noteUse(variable);
    }
    emitter.emitVariable(*variable.item, variable.input, position);
}

inline bool MTParserCompiler::compileName(std::wstring_view token, std::uint32_t position)
{
    const std::uint32_t hash = MTNameIndex::hash(token);
    const std::size_t constant = registrar.findConstant(token, hash);
    if (constant != MTParserRegistrar::notFound)
    {
        emitter.emitConstant(registrar.getConstantValue(constant), position);
        return true;
    }
    MTVariableDefinition* const variable = registrar.findVariableDefinition(token, hash);
    if (variable == nullptr)
    {
        return compileUnknownName(token, hash, position);
    }
    emitVariable(*variable, position);
    return true;
}

bool MTParserCompiler::compileToken(std::wstring_view token, std::uint32_t position, wchar_t following)
{
    const Token current = levels.back().current;
    if (current != Token::Nothing && current != Token::Operator)
    {
        return fail(CompileError::valueAfterValue, __LINE__, position, spanOfToken(token, position), token);
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
        return fail(CompileError::unknownFunction, __LINE__, position, spanOfToken(token, position), token);
    }
    markPending();
    setKind(Token::Function);
    StackRecord& record = push(StackRecord::Kind::Function, position);
    record.precedence = functionPrecedence;
    record.definition = static_cast<std::uint32_t>(firstOverload);
    return true;
}

bool MTParserCompiler::compileNumber(std::wstring_view token, std::uint32_t position)
{
    const wchar_t decimalPoint = registrar.getSyntax().decimalPoint;
    const double number = readNumber(token, decimalPoint, digits);
    if (number > maxInteger && token.find(decimalPoint) == std::wstring_view::npos)
    {
        // Shown even in silent mode, and never an exception.
        failure.note(Message::IntegerTooLarge, mathexpr::Expected::SmallerNumber, spanOfToken(token, position), token,
                     0);
        showMessage(Message::IntegerTooLarge);
        return false;
    }
    emitter.emitNumber(number, position);
    return true;
}

bool MTParserCompiler::compileUnknownName(std::wstring_view token, std::uint32_t hash, std::uint32_t position)
{
    MTVariableDefinition* variable = nullptr;
    try
    {
        variable = resolveUnknown(token, hash);
    }
    catch (mathexpr::DefinitionException& exception)
    {
        const SMTDefExcepData data = newestData(exception);
        failure.noteDefinition(data, mathexpr::Expected::KnownName, spanOfToken(token, position));
        return passOn(exception, __LINE__, data);
    }
    catch (mathexpr::ParsingException& exception)  // raised by the host
    {
        const SMTParsingExcepData data = newestData(exception);
        failure.noteParsing(data, mathexpr::Expected::KnownName, spanOfToken(token, position), data.nbArgs);
        return passOn(exception, __LINE__, data);
    }
    if (variable == nullptr)
    {
        return fail(CompileError::unknownName, __LINE__, position, spanOfToken(token, position), token);
    }
    emitVariable(*variable, position);
    return true;
}

/// Call from the handler of an exception that was raised while a name was resolved.
template <class Data>
bool MTParserCompiler::passOn(MTExceptions<Data>& exception, std::uint32_t line, const Data& data) const
{
    if (showMessages)
    {
        showMessage(Message::InvalidExpression);
        return false;
    }
    exception.addEntry(line, 0, compilerFile, data);
    // cppcheck-suppress rethrowNoCurrentException ; called by a handler
    throw;
}

/// Calls the host with the host's own floating-point control words in force.
bool MTParserCompiler::askHost(std::wstring_view name, VALTYPE& answer) const
{
    if (service == nullptr)
    {
        return false;
    }
    const std::wstring terminated(name);
    const platform::HostFloatingPoint hostsWords;
    return service->lookupValue(terminated.c_str(), answer);
}

/// Defines a variable that the host supplies, or that is defined automatically.
/// @return null if there is none
MTVariableDefinition* MTParserCompiler::resolveUnknown(std::wstring_view name, std::uint32_t hash)
{
    VALTYPE answer;
    const bool answered = askHost(name, answer);
    if (!answered && !automaticVariables)
    {
        return nullptr;
    }
    registrar.defineVariable(name);
    MTVariableDefinition* const variable = registrar.findVariableDefinition(name, hash);
    if (answered && variable != nullptr)
    {
        *variable->item->getValuePtr() = answer;
        variable->answeredByHost = true;
    }
    return variable;
}

bool MTParserCompiler::openBracket(std::uint32_t position, wchar_t next)
{
    if (next == L')')
    {
        return fail(CompileError::argumentEmpty, __LINE__, position, {position, position + 2});
    }
    if (StackRecord* nearest = nearestRecord())
    {
        nearest->argumentPending = false;
    }
    push(StackRecord::Kind::OpenBracket, position);
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
    const MTSpan here{position, position + 1};
    if (levels.back().current == Token::Operator)
    {
        return fail(CompileError::operandMissing, __LINE__, position, here);
    }
    levels.pop_back();
    if (!closes)
    {
        levels.push_back(BracketLevel{});
        if (next == L')')
        {
            return fail(CompileError::argumentEmpty, __LINE__, position, {position, position + 2});
        }
    }

    const std::size_t nbRecords = stack.size();
    if (!emitDownTo(std::numeric_limits<std::int32_t>::min()))
    {
        return false;
    }
    if (stack.empty())
    {
        return fail(closes ? CompileError::closingWithoutOpening : CompileError::separatorOutsideBrackets, __LINE__,
                    position, here);
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
    else if (stack.size() == nbRecords && !argumentTaken)
    {
        return fail(CompileError::argumentEmpty, __LINE__, position, here);
    }

    // A bracket that is a whole argument, as in sin((1)), is counted by the record around it. An empty one was refused
    // when it was opened.
    const bool argumentGoesOn = closes && (next == L')' || next == registrar.getSyntax().argumentSeparator);
    if (StackRecord* nearest = nearestRecord())
    {
        nearest->argumentPending = argumentGoesOn;
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

/// @param first  the first operator with the symbol at this position
bool MTParserCompiler::compileOperator(std::size_t first, std::uint32_t position)
{
    markPending();
    setKind(Token::Operator);
    const Token before = levels.back().previous;
    const bool unary = before == Token::Nothing || before == Token::Operator;
    const MTSpan span{position, position + registrar.getOperatorDefinition(first).symbol.size()};
    const std::size_t index = registrar.findOperatorFrom(first, unary);
    if (index == MTParserRegistrar::notFound)
    {
        return fail(unary ? CompileError::operatorWithoutLeft : CompileError::operatorNotBinary, __LINE__, position + 1,
                    span);
    }
    if (span.end >= text.size())
    {
        return fail(CompileError::operandMissing, __LINE__, static_cast<std::uint32_t>(span.end - 1), span);
    }

    const std::int32_t precedence = registrar.getOperatorDefinition(index).precedence;
    // A waiting unary operator stays if an operator of the same precedence follows: the latter is part of its operand.
    const bool staysUnderEqual = !stack.empty() && stack.back().kind == StackRecord::Kind::Operator &&
                                 stack.back().precedence == precedence && stack.back().nbArgs == 1;
    if (!staysUnderEqual && !emitDownTo(precedence))
    {
        return false;
    }

    StackRecord& record = push(StackRecord::Kind::Operator, position);
    record.precedence = precedence;
    record.definition = static_cast<std::uint32_t>(index);
    record.nbArgs = unary ? 1 : 2;
    return true;
}

/// Emits the records on top that bind at least as tightly. Stops at an open bracket.
bool MTParserCompiler::emitDownTo(std::int32_t precedence)
{
    while (!stack.empty() && stack.back().kind != StackRecord::Kind::OpenBracket &&
           stack.back().precedence >= precedence)
    {
        if (!emit(stack.back()))
        {
            return false;
        }
        stack.pop_back();
    }
    return true;
}

bool MTParserCompiler::emit(const StackRecord& record)
{
    const MTFunctionDefinition* function = nullptr;
    if (record.kind == StackRecord::Kind::Function)
    {
        const std::size_t overload = registrar.findOverload(record.definition, record.nbArgs);
        if (overload == MTParserRegistrar::notFound)
        {
            const std::wstring_view symbol = registrar.getFunctionDefinition(record.definition).symbol;
            return fail(CompileError::noOverload, __LINE__, record.position, spanOf(record), symbol, record.nbArgs);
        }
        function = &registrar.getFunctionDefinition(overload);
    }

    MTEmission emission{};
    try
    {
        if (function != nullptr)
        {
            emission = emitter.emit(*function->item, *function->kernels, record.nbArgs, record.position, true);
        }
        else
        {
            const MTOperatorDefinition& definition = registrar.getOperatorDefinition(record.definition);
            emission = emitter.emit(*definition.item, *definition.kernels, record.nbArgs, record.position, false);
        }
    }
    catch (const mathexpr::ParsingException& exception)
    {
        failure.noteRaised(exception, spanOf(record), record.nbArgs);
        throw;
    }
    if (emission == MTEmission::OperandMissing)
    {
        return fail(CompileError::programBroken, __LINE__, emitter.getPositionFound(), spanOf(record));
    }
    if (emission == MTEmission::Refused)
    {
        // The item itself has shown the message.
        failure.noteRefusal(emitter.getRefusal(), spanOf(record), record.nbArgs);
        return false;
    }
    return true;
}

MTSpan MTParserCompiler::spanOf(const StackRecord& record) const noexcept
{
    switch (record.kind)
    {
    case StackRecord::Kind::Function:
        return spanOfToken(registrar.getFunctionDefinition(record.definition).symbol, record.position);
    case StackRecord::Kind::Operator:
        return {record.position, record.position + registrar.getOperatorDefinition(record.definition).symbol.size()};
    default:
        return {record.position, record.position + 1};
    }
}

void MTParserCompiler::noteError(const MTCompileError& error, MTSpan span, std::wstring_view itemName,
                                 std::uint32_t nbArgs)
{
    std::uint32_t expected = error.expected;
    if (expected == CompileError::continuation)
    {
        expected = levels.size() > 1 ? CompileError::anyInBracket : CompileError::anyOutside;
    }
    failure.note(error.message, expected, span, itemName, nbArgs);
    failure.kind = mathexpr::ExpressionDiagnostic::Kind::Parsing;
    failure.code = error.exID;
}

bool MTParserCompiler::fail(const MTCompileError& error, std::uint32_t line, std::uint32_t position, MTSpan span,
                            std::wstring_view itemName, std::uint32_t nbArgs)
{
    noteError(error, span, itemName, nbArgs);
    return report(line, position);
}

bool MTParserCompiler::report(std::uint32_t line, std::uint32_t position) const
{
    if (!showMessages)
    {
        raise(line, position);
    }
    showMessage(failure.message);
    return false;
}

void MTParserCompiler::raise(std::uint32_t line, std::uint32_t position) const
{
    SMTParsingExcepData data;
    data.exID = failure.code;
    data.pos = position;
    data.itemName = failure.itemName;
    data.nbArgs = failure.nbArgs;
    throw mathexpr::ParsingException(line, 0, compilerFile, data);
}

MTSpan spanOfStep(const MTParserRegistrar& registrar, std::wstring_view text, std::uint32_t position,
                  std::uint32_t nbArgs) noexcept
{
    std::wstring_view symbol;
    // A function's position counts from 1, so text[position] is in its name or is its bracket; neither begins an
    // operator. A step without arguments is a variable.
    if (nbArgs != 0 && text[position] != L'(' && registrar.isOperatorSymbol(text.substr(position), symbol))
    {
        return {position, position + symbol.size()};
    }
    const std::size_t begin = position - 1;
    const auto endsName = [&](std::size_t at) {
        const wchar_t character = text[at];
        return character == L'(' || character == L')' || character == registrar.getSyntax().argumentSeparator ||
               registrar.isOperatorSymbol(text.substr(at), symbol);
    };
    std::size_t end = begin;
    while (end < text.size() && !endsName(end))
    {
        ++end;
    }
    return {begin, end};
}
