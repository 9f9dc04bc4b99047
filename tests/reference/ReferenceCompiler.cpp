// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// ReferenceCompiler.cpp - one pass over the text, with operator stack, bracket levels and folding.
//
// Nothing is optimised: every step is written as the language defines it, so the special cases need no extra code.
#include "ReferenceCompiler.h"

#include "ReferenceVocabulary.h"

#include <charconv>
#include <limits>

namespace reference {
namespace {

constexpr std::uint32_t cursorRanOut = 0xFFFFFFFF;
constexpr std::int32_t functionPrecedence = 5;
constexpr std::int32_t openBracketPrecedence = -1;

enum class Token
{
    Nothing,
    Value,
    Operator,
    Function,
};

/// A bracket level: the kinds of the last two tokens read in it.
struct Level
{
    Token previous = Token::Nothing;
    Token current = Token::Nothing;

    void set(Token kind)
    {
        previous = current;
        current = kind;
    }
};

/// A pending operator, function or open bracket.
struct Waiting
{
    enum class Kind
    {
        OpenBracket,
        Operator,
        Function,
    };

    Kind kind = Kind::OpenBracket;
    std::int32_t precedence = openBracketPrecedence;
    std::uint32_t position = 0;
    std::uint32_t nbArgs = 0;
    bool argumentPending = false;
    std::wstring symbol;
    const Item* item = nullptr;
};

[[noreturn]] void fail(std::uint32_t exID, std::uint32_t pos, std::uint32_t message, const std::wstring& itemName = {},
                       std::uint32_t nbArgs = 0)
{
    Failure failure;
    failure.raised.exID = exID;
    failure.raised.pos = pos;
    failure.raised.itemName = itemName;
    failure.raised.nbArgs = nbArgs;
    failure.message = message;
    throw failure;
}

double readNumber(const std::wstring& token)
{
    if (token == L".")
    {
        return 0.0;
    }
    const std::string digits(token.begin(), token.end());
    double value = 0.0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (error == std::errc::result_out_of_range)
    {
        const std::string whole = digits.substr(0, digits.find('.'));
        const bool tooLarge = whole.find_first_not_of('0') != std::string::npos;
        return tooLarge ? std::numeric_limits<double>::infinity() : 0.0;
    }
    return value;
}

class Compilation
{
public:
    Compilation(const std::wstring& strippedText, Surroundings& around)
        : text(rewritten(strippedText)), surroundings(around)
    {}

    Program run()
    {
        levels.emplace_back();
        for (std::size_t i = 0; i < text.size(); ++i)
        {
            i = scan(i);
        }
        finish();
        cleanUp();
        return std::move(program);
    }

private:
    const std::wstring text;
    Surroundings& surroundings;
    Program program;
    std::vector<Waiting> stack;
    std::vector<Level> levels;
    std::wstring token;

    /// Reads the token at i; returns the index of its last character.
    std::size_t scan(std::size_t i)
    {
        const wchar_t ch = text[i];
        const wchar_t next = i + 1 < text.size() ? text[i + 1] : L'\0';
        if (ch == L')' && next == L'(')
        {
            fail(0, index(i + 1), 0);
        }
        const std::wstring symbol = operatorSymbolAt(text, i);
        if (symbol.empty() && ch != L',' && ch != L'(' && ch != L')')
        {
            collect(i, ch);
            return i;
        }
        if (!token.empty())
        {
            compileToken(index(i - token.size() + 1), ch);
            token.clear();
        }
        if (ch == L'(')
        {
            openBracket(i, next);
            return i;
        }
        if (ch == L')' || ch == L',')
        {
            closeArgument(i, ch, next);
            return i;
        }
        return readOperator(i, symbol);
    }

    static std::uint32_t index(std::size_t i) { return static_cast<std::uint32_t>(i); }

    void collect(std::size_t i, wchar_t ch)
    {
        if (ch != L'=')
        {
            token += ch;
            return;
        }
        if (!stack.empty())
        {
            fail(12, index(i), 3);
        }
        surroundings.assignTarget = token;
        token.clear();
    }

    /// The top of the stack, or the record below if the top is an open bracket; null if there is none.
    Waiting* nearestFunctionRecord()
    {
        if (stack.empty())
        {
            return nullptr;
        }
        if (stack.back().kind != Waiting::Kind::OpenBracket)
        {
            return &stack.back();
        }
        return stack.size() >= 2 ? &stack[stack.size() - 2] : nullptr;
    }

    void setPending(bool pending)
    {
        if (Waiting* nearest = nearestFunctionRecord())
        {
            nearest->argumentPending = pending;
        }
    }

    void openBracket(std::size_t i, wchar_t next)
    {
        if (next == L')')
        {
            fail(12, index(i), 3);
        }
        setPending(false);
        Waiting bracket;
        bracket.position = index(i);
        stack.push_back(bracket);
        if (levels.back().current == Token::Function)
        {
            Record& placeholder = append(index(i));
            placeholder.placeholder = true;
        }
        levels.emplace_back();
    }

    bool topIsOpenBracket() const { return stack.back().kind == Waiting::Kind::OpenBracket; }

    void closeArgument(std::size_t i, wchar_t ch, wchar_t next)
    {
        const bool separator = ch == L',';
        if (levels.back().current == Token::Operator)
        {
            fail(3, index(i), 3);
        }
        levels.pop_back();
        if (separator)
        {
            levels.emplace_back();
            if (next == L')')
            {
                fail(12, index(i), 3);
            }
        }
        std::size_t popped = 0;
        while (!stack.empty() && !topIsOpenBracket())
        {
            popAndEmit();
            ++popped;
        }
        if (stack.empty())
        {
            fail(separator ? 5 : 4, index(i), 3);
        }
        const bool taken = takeArgument();
        if (!separator)
        {
            stack.pop_back();
            if (levels.back().current != Token::Function)
            {
                levels.back().set(Token::Value);
            }
        }
        else if (popped == 0 && !taken)
        {
            fail(12, index(i), 3);
        }
        setPending(ch == L')' && (next == L')' || next == L',') && taken);
    }

    bool takeArgument()
    {
        Waiting* nearest = nearestFunctionRecord();
        if (nearest == nullptr || !nearest->argumentPending)
        {
            return false;
        }
        if (nearest->kind == Waiting::Kind::Function)
        {
            ++nearest->nbArgs;
        }
        return true;
    }

    std::size_t readOperator(std::size_t i, const std::wstring& symbol)
    {
        setPending(true);
        Level& level = levels.back();
        level.set(Token::Operator);
        const bool unary = level.previous == Token::Nothing || level.previous == Token::Operator;
        const Item* item = findOperator(symbol, unary);
        if (item == nullptr)
        {
            fail(0, index(i + 1), 3);
        }
        const std::size_t last = i + symbol.size() - 1;
        if (last + 1 >= text.size())
        {
            fail(3, index(last), 3);
        }

        std::int32_t precedence = item->precedence;
        if (!stack.empty() && stack.back().kind == Waiting::Kind::Operator &&
            stack.back().precedence == item->precedence && stack.back().item->unary)
        {
            precedence = stack.back().precedence + 1;
        }
        while (!stack.empty() && !topIsOpenBracket() && precedence <= stack.back().precedence)
        {
            popAndEmit();
        }
        Waiting waiting;
        waiting.kind = Waiting::Kind::Operator;
        waiting.precedence = item->precedence;
        waiting.position = index(i);
        waiting.nbArgs = unary ? 1 : 2;
        waiting.symbol = symbol;
        waiting.item = item;
        stack.push_back(waiting);
        return last;
    }

    void finish()
    {
        if (!token.empty())
        {
            compileToken(index(text.size() - token.size() + 1), token.back());
        }
        while (!stack.empty())
        {
            if (topIsOpenBracket())
            {
                fail(6, stack.back().position, 2);
            }
            popAndEmit();
        }
    }

    void compileToken(std::uint32_t position, wchar_t following)
    {
        Level& level = levels.back();
        if (level.current != Token::Nothing && level.current != Token::Operator)
        {
            fail(9, position, 3, token);
        }
        if (following == L'(')
        {
            if (!isFunction(token))
            {
                fail(10, position, 4, token);
            }
            setPending(true);
            level.set(Token::Function);
            Waiting waiting;
            waiting.kind = Waiting::Kind::Function;
            waiting.precedence = functionPrecedence;
            waiting.position = position;
            waiting.symbol = token;
            stack.push_back(waiting);
            return;
        }
        if (isNumber(token))
        {
            compileNumber(position);
        }
        else
        {
            compileName(position);
        }
        level.set(Token::Value);
        setPending(true);
    }

    void compileNumber(std::uint32_t position)
    {
        const double value = readNumber(token);
        const bool integer = token.find(L'.') == std::wstring::npos;
        if (integer && value > static_cast<double>(surroundings.maxInteger))
        {
            // Shown even in silent mode.
            surroundings.messages.numbers.push_back(19);
            throw Refusal();
        }
        Record& record = append(position);
        record.constant = true;
        record.value.x = value;
    }

    void compileName(std::uint32_t position)
    {
        if (const std::optional<double> constant = findConstant(token))
        {
            Record& record = append(position);
            record.constant = true;
            record.value.x = *constant;
            return;
        }
        if (surroundings.variables.count(folded(token)) == 0)
        {
            askHost();
        }
        const auto variable = surroundings.variables.find(folded(token));
        if (variable == surroundings.variables.end())
        {
            fail(11, position, 1, token);
        }
        append(position).variable = variable->second.get();
    }

    void askHost()
    {
        if (!surroundings.host)
        {
            return;
        }
        surroundings.asked.push_back(token);
        VALTYPE value;
        bool known = false;
        try
        {
            known = surroundings.host(token, value);
        }
        catch (...)
        {
            Failure failure;
            failure.raised.kind = Raised::Kind::Host;
            throw failure;
        }
        if (known)
        {
            requireVariableName(token);
            surroundings.variables[folded(token)] = std::make_unique<VALTYPE>(value);
        }
    }

    Record& append(std::uint32_t position)
    {
        program.push_back(std::make_unique<Record>());
        program.back()->position = position;
        return *program.back();
    }

    void popAndEmit()
    {
        const Waiting waiting = stack.back();
        stack.pop_back();
        const Item* item = waiting.item;
        if (waiting.kind == Waiting::Kind::Function)
        {
            item = findOverload(waiting.symbol, waiting.nbArgs);
            if (item == nullptr)
            {
                fail(7, waiting.position, 3, waiting.symbol, waiting.nbArgs);
            }
        }
        Record& record = append(waiting.position);
        record.item = item;
        record.function = waiting.kind == Waiting::Kind::Function;
        record.args.resize(waiting.nbArgs);
        fold();
    }

    // Folding

    bool allOperandsConstant = false;
    std::size_t consumed = 0;
    std::int64_t cursor = 0;

    void fold()
    {
        VALTYPE scratch;
        allOperandsConstant = true;
        consumed = 0;
        cursor = static_cast<std::int64_t>(program.size()) - 1;
        readRecord(scratch);
        for (const auto& record : program)
        {
            record->visited = false;
        }
        Record& root = *program.back();
        root.destination = &root.unconsumed;
        if (!allOperandsConstant)
        {
            return;
        }
        // The consumed records are just below the root, which is counted too.
        const auto last = program.end() - 1;
        program.erase(last - static_cast<std::ptrdiff_t>(consumed - 1), last);
        root.constant = true;
        root.value = scratch;
        root.item = nullptr;
    }

    Record& recordAtCursor()
    {
        if (cursor < 0)
        {
            fail(16, cursorRanOut, 3);
        }
        return *program[static_cast<std::size_t>(cursor)];
    }

    void readRecord(VALTYPE& slot)
    {
        Record& record = recordAtCursor();
        if (record.placeholder || record.visited)
        {
            fail(16, record.position, 3);
        }
        record.destination = &slot;
        record.visited = true;
        ++consumed;
        --cursor;
        if (record.constant)
        {
            slot = record.value;
            return;
        }
        if (record.variable != nullptr || !record.item->constant)
        {
            allOperandsConstant = false;
        }
        for (std::size_t j = record.args.size(); j > 0; --j)
        {
            readRecord(record.args[j - 1]);
        }
        if (allOperandsConstant && !record.item->evaluate(record.args, slot, surroundings.messages))
        {
            throw Refusal();
        }
        if (record.function)
        {
            Record& placeholder = recordAtCursor();
            if (!placeholder.placeholder)
            {
                fail(16, placeholder.position, 3);
            }
            ++consumed;
            --cursor;
        }
    }

    void cleanUp()
    {
        std::erase_if(program, [](const auto& record) { return record->placeholder; });
        if (program.empty())
        {
            fail(8, 0, 3, text);
        }
        const Record* last = program.back().get();
        std::erase_if(program, [last](const auto& record) { return record->constant && record.get() != last; });
        program.back()->destination = &program.back()->value;
    }
};

void replaceAll(std::wstring& text, const std::wstring& search, const std::wstring& replacement)
{
    std::size_t found = text.find(search);
    while (found != std::wstring::npos)
    {
        text.replace(found, search.size(), replacement);
        found = text.find(search, found + replacement.size());
    }
}
}

std::wstring withoutBlanks(const std::wstring& text)
{
    std::wstring result;
    for (const wchar_t ch : text)
    {
        if (ch != L' ')
        {
            result += ch;
        }
    }
    return result;
}

std::wstring rewritten(std::wstring text)
{
    replaceAll(text, L"[", L"point(");
    replaceAll(text, L"]", L")");
    replaceAll(text, L"e+", L"*10^");
    return text;
}

std::wstring folded(std::wstring name)
{
    for (wchar_t& ch : name)
    {
        if (ch >= L'A' && ch <= L'Z')
        {
            ch = static_cast<wchar_t>(ch - L'A' + L'a');
        }
    }
    return name;
}

void requireVariableName(const std::wstring& name)
{
    const auto refuse = [&](std::uint32_t exID, const std::wstring& conflict) {
        Failure failure;
        failure.raised.kind = Raised::Kind::Definition;
        failure.raised.exID = exID;
        failure.raised.itemName = name;
        failure.raised.conflictItemName = conflict;
        failure.message = 3;
        throw failure;
    };
    if (name.empty())
    {
        refuse(12, {});
    }
    if (isNumber(name))
    {
        refuse(13, {});
    }
    if (findConstant(name))
    {
        refuse(14, {});
    }
    const std::size_t syntax = name.find_first_of(L".,[]");
    if (syntax != std::wstring::npos)
    {
        refuse(15, name.substr(syntax, 1));
    }
}

Program compile(const std::wstring& text, Surroundings& surroundings)
{
    return Compilation(text, surroundings).run();
}
}
