// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTLimits.cpp - counts what a text contains. Tokens are read as by the compiler, but no name is resolved.
//
// Reads the typed text without blanks, not the rewritten one, so that "e+" is part of a number, as a user sees it.
#include "MTParserLib/text/MTLimits.h"

#include <cstddef>
#include <string_view>

namespace {

class Counter
{
public:
    Counter(std::wstring_view strippedText, const MTLimits& givenLimits, const MTParserRegistrar& givenRegistrar,
            std::vector<std::uint32_t>& prefixCounts)
        : text(strippedText), limits(givenLimits), registrar(givenRegistrar), nbPrefixes(prefixCounts)
    {
        nbPrefixes.assign(1, 0);
    }

    /// The span of the excess refers to the stripped text.
    MTLimitExcess count()
    {
        const wchar_t separator = registrar.getSyntax().argumentSeparator;
        std::size_t at = 0;
        while (at < text.size() && excess.error == nullptr)
        {
            const wchar_t character = text[at];
            std::wstring_view symbol;
            std::size_t length = 1;
            if (character == L'e' && at + 1 < text.size() && text[at + 1] == L'+')
            {
                length = 2;  // part of the token
            }
            else if (character == L'(' || character == L'[')
            {
                open(at);
            }
            else if (character == L')' || character == L']')
            {
                endToken(at);
                close();
            }
            else if (character == separator)
            {
                endToken(at);
                endOperand();
                operandRead = false;
            }
            else if (registrar.isOperatorSymbol(text.substr(at), symbol))
            {
                length = symbol.size();
                readOperator({at, at + length});
            }
            at += length;
            if (!isToken(character, symbol, separator))
            {
                tokenBegin = at;  // a name before "=" is not a value, and has not been counted
            }
        }
        if (excess.error == nullptr)
        {
            endToken(text.size());
        }
        return excess;
    }

private:
    static bool isToken(wchar_t character, std::wstring_view symbol, wchar_t separator)
    {
        return symbol.empty() && character != separator &&
               std::wstring_view(L"()[]=").find(character) == std::wstring_view::npos;
    }

    void countRecord(MTSpan span)
    {
        ++nbRecords;
        if (limits.records != 0 && nbRecords > limits.records && excess.error == nullptr)
        {
            excess = {&CompileError::tooManyRecords, span};
        }
    }

    void descend(MTSpan span)
    {
        ++depth;
        if (limits.nesting != 0 && depth > limits.nesting && excess.error == nullptr)
        {
            excess = {&CompileError::nestedTooDeep, span};
        }
    }

    void endToken(std::size_t end)
    {
        if (tokenBegin != end)
        {
            countRecord({tokenBegin, end});
            endOperand();
        }
    }

    void endOperand()
    {
        operandRead = true;
        depth -= nbPrefixes.back();
        nbPrefixes.back() = 0;
    }

    void readOperator(MTSpan span)
    {
        endToken(span.begin);
        countRecord(span);
        if (operandRead)
        {
            operandRead = false;
        }
        else
        {
            ++nbPrefixes.back();
            descend(span);
        }
    }

    void open(std::size_t at)
    {
        const bool isCall = text[at] == L'[' || tokenBegin != at;
        if (isCall)
        {
            countRecord({tokenBegin, tokenBegin == at ? at + 1 : at});
        }
        descend({at, at + 1});
        nbPrefixes.push_back(0);
        operandRead = false;
    }

    void close()
    {
        endOperand();
        if (nbPrefixes.size() > 1)
        {
            nbPrefixes.pop_back();
            --depth;
            endOperand();
        }
    }

    const std::wstring_view text;
    const MTLimits limits;
    const MTParserRegistrar& registrar;
    std::vector<std::uint32_t>& nbPrefixes;

    MTLimitExcess excess{nullptr, {}};
    std::size_t tokenBegin = 0;
    bool operandRead = false;  // here an operator would be binary
    std::uint32_t nbRecords = 0;
    std::uint32_t depth = 0;
};

/// Converts an index in the stripped text to one in the typed text.
std::size_t typedIndexOf(const wchar_t* typed, std::size_t stripped)
{
    std::size_t at = 0;
    for (;; ++at)
    {
        if (typed[at] != L' ' && stripped-- == 0)
        {
            return at;
        }
    }
}

}

MTLimitExcess findLimitExcess(const wchar_t* typed, const MTLimits& limits, const MTParserRegistrar& registrar,
                              MTLimitScratch& scratch)
{
    if (limits.textLength != 0)
    {
        std::size_t length = 0;
        while (length < limits.textLength && typed[length] != L'\0')
        {
            ++length;
        }
        if (typed[length] != L'\0')
        {
            return {&CompileError::textTooLong, {length, length + 1}};
        }
    }
    if (limits.records == 0 && limits.nesting == 0)
    {
        return {nullptr, {}};
    }
    scratch.stripped.clear();
    for (const wchar_t* at = typed; *at != L'\0'; ++at)
    {
        if (*at != L' ')
        {
            scratch.stripped.push_back(*at);
        }
    }
    MTLimitExcess excess = Counter(scratch.stripped, limits, registrar, scratch.nbPrefixes).count();
    if (excess.error != nullptr)
    {
        excess.span = {typedIndexOf(typed, excess.span.begin), typedIndexOf(typed, excess.span.end - 1) + 1};
    }
    return excess;
}
