// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// TextReading.cpp - one pass over the text without its blanks. Shorthands are not rewritten, but read as their
// replacements.
#include "mathexpr/editor/TextReading.h"

#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"
#include "mathexpr/hints/NameWords.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace mathexpr {
namespace editor {
namespace {

class TokenReader
{
public:
    TokenReader(std::wstring_view typed, const KnownNames& knownNames)
        : names(knownNames), separator(knownNames.registrar().getSyntax().argumentSeparator), typedLength(typed.size())
    {
        for (std::size_t at = 0; at < typed.size(); ++at)
        {
            if (typed[at] != L' ')
            {
                stripped.push_back(typed[at]);
                typedIndices.push_back(at);
            }
        }
    }

    std::vector<TextToken> read()
    {
        const std::wstring_view all = stripped;
        for (std::size_t at = 0; at < all.size();)
        {
            std::wstring_view symbol;
            std::size_t length = 1;
            if (all.substr(at, 2) == L"e+")
            {
                endName(at);
                length = 2;
                add(TokenKind::Shorthand, at, at + length);
                operatorWaits = operatorWaits || open.empty();
            }
            else if (all[at] == L'(' || all[at] == L'[')
            {
                openBracket(at);
            }
            else if (all[at] == L')' || all[at] == L']')
            {
                closeBracket(at);
            }
            else if (all[at] == separator)
            {
                endName(at);
                add(TokenKind::Separator, at, at + 1);
            }
            else if (names.registrar().isOperatorSymbol(all.substr(at), symbol))
            {
                endName(at);
                length = symbol.size();
                add(TokenKind::Operator, at, at + length);
                operatorWaits = operatorWaits || open.empty();
            }
            else if (all[at] == L'=')
            {
                assign(at);
            }
            else
            {
                ++at;
                continue;
            }
            at += length;
            nameBegin = at;
        }
        endName(all.size());
        addBlanks(typedLength);
        return std::move(tokens);
    }

private:
    void addBlanks(std::size_t end)
    {
        const std::size_t begin = tokens.empty() ? 0 : endOf(tokens.back());
        if (begin != end)
        {
            push(TokenKind::Blank, begin, end);
        }
    }

    /// @param begin, end  a span of the stripped text; not empty
    void add(TokenKind kind, std::size_t begin, std::size_t end)
    {
        addBlanks(typedIndices[begin]);
        push(kind, typedIndices[begin], typedIndices[end - 1] + 1);
    }

    void push(TokenKind kind, std::size_t begin, std::size_t end)
    {
        tokens.push_back({kind, static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(end - begin),
                          static_cast<std::uint32_t>(open.size()), noPartner});
    }

    void endName(std::size_t end)
    {
        if (nameBegin != end)
        {
            add(kindOfName(std::wstring_view(stripped).substr(nameBegin, end - nameBegin), end), nameBegin, end);
        }
    }

    TokenKind kindOfName(std::wstring_view name, std::size_t end)
    {
        const wchar_t following = end < stripped.size() ? stripped[end] : L'\0';
        if (following == L'(')
        {
            return names.isFunction(name) ? TokenKind::Function : TokenKind::UnknownName;
        }
        if (following == L'[')
        {
            return TokenKind::UnknownName;  // the compiler reads "x[" as the call of "xpoint"
        }
        if (names.isNumber(name))
        {
            return TokenKind::Number;
        }
        if (names.registrar().findConstant(name) != MTParserRegistrar::notFound)
        {
            return TokenKind::Constant;
        }
        if (const MTVariableDefinition* const variable = names.registrar().findVariableDefinition(name))
        {
            return variable->answeredByHost ? TokenKind::HostName : TokenKind::Variable;
        }
        // The first answer of the host defines a variable, so later uses of the name ignore case.
        const std::wstring folded = inLowerCase(name);
        if (names.isNamedValue(name))
        {
            answered.insert(folded);
        }
        return answered.count(folded) != 0 ? TokenKind::HostName : TokenKind::UnknownName;
    }

    void openBracket(std::size_t at)
    {
        const bool isCall = stripped[at] == L'[' || nameBegin != at;
        endName(at);
        operatorWaits = operatorWaits || (isCall && open.empty());
        add(kindOfBracket(at), at, at + 1);
        open.push_back(tokens.size() - 1);
    }

    void closeBracket(std::size_t at)
    {
        endName(at);
        if (open.empty())
        {
            add(kindOfBracket(at), at, at + 1);
            return;
        }
        const std::size_t partner = open.back();
        addBlanks(typedIndices[at]);
        open.pop_back();
        add(kindOfBracket(at), at, at + 1);
        tokens.back().partner = static_cast<std::uint32_t>(partner);
        tokens[partner].partner = static_cast<std::uint32_t>(tokens.size() - 1);
    }

    TokenKind kindOfBracket(std::size_t at) const
    {
        const bool isSquare = stripped[at] == L'[' || stripped[at] == L']';
        return isSquare ? TokenKind::Shorthand : TokenKind::Bracket;
    }

    /// Assigns under the same condition as the compiler: no operator, call or open bracket is pending.
    void assign(std::size_t at)
    {
        if (operatorWaits || !open.empty())
        {
            endName(at);
            add(TokenKind::Other, at, at + 1);
            return;
        }
        if (nameBegin != at)
        {
            add(TokenKind::AssignedName, nameBegin, at);
        }
        add(TokenKind::AssignmentSign, at, at + 1);
    }

    const KnownNames& names;
    const wchar_t separator;
    const std::size_t typedLength;
    std::wstring stripped;                  // the text without blanks
    std::vector<std::size_t> typedIndices;  // index in the typed text of each character of stripped

    std::vector<TextToken> tokens;
    std::vector<std::size_t> open;    // indices of the tokens of open brackets
    std::set<std::wstring> answered;  // names of the host that the text has used, in lower case
    std::size_t nameBegin = 0;        // start of the name or number that is being read
    bool operatorWaits = false;       // an operator or call waits outside all brackets
};

}

TextReading::TextReading(const MathExpression& expression, std::wstring_view typedText)
    : text(typedText),
      known(EngineAccess::parserOf(expression).getRegistrar(), EngineAccess::parserOf(expression).getNameSource())
{
    if (isTooLong(expression, text.size()))
    {
        all.push_back({TokenKind::Other, 0, static_cast<std::uint32_t>(text.size()), 0, noPartner});
        return;
    }
    all = TokenReader(text, known).read();
}

std::wstring TextReading::textOf(const TextToken& token) const
{
    const std::wstring_view typedToken = text.substr(token.start, token.length);
    std::wstring stripped;
    std::copy_if(typedToken.begin(), typedToken.end(), std::back_inserter(stripped),
                 [](wchar_t character) { return character != L' '; });
    return stripped;
}

std::wstring_view viewOf(const wchar_t* text) noexcept
{
    return text == nullptr ? std::wstring_view() : std::wstring_view(text);
}

bool isTooLong(const MathExpression& expression, std::size_t length) noexcept
{
    const std::uint32_t limit = EngineAccess::parserOf(expression).getLimits().textLength;
    return limit != 0 && length > limit;
}

bool isRenamable(const TextToken& token) noexcept
{
    switch (token.kind)
    {
    case TokenKind::Variable:
    case TokenKind::HostName:
    case TokenKind::UnknownName:
    case TokenKind::AssignedName:
        return true;
    default:
        return false;
    }
}

std::vector<std::size_t> withoutBlanks(const std::vector<TextToken>& tokens)
{
    std::vector<std::size_t> indices;
    for (std::size_t index = 0; index < tokens.size(); ++index)
    {
        if (tokens[index].kind != TokenKind::Blank)
        {
            indices.push_back(index);
        }
    }
    return indices;
}

bool expectsOperand(const TextReading& reading, const TextToken& before)
{
    switch (before.kind)
    {
    case TokenKind::Operator:
    case TokenKind::Separator:
    case TokenKind::AssignmentSign:
        return true;
    case TokenKind::Bracket:
    case TokenKind::Shorthand: {
        const wchar_t last = reading.typed()[endOf(before) - 1];
        return last == L'(' || last == L'[' || last == L'+';
    }
    default:
        return false;
    }
}

}

std::vector<TextToken> getTokens(const MathExpression& expression, const wchar_t* text)
{
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        const editor::TextReading reading(expression, editor::viewOf(text));
        return reading.tokens();
    });
}

}
