// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// OpenBrackets.cpp - see OpenBrackets.h.
#include "mathexpr/editor/OpenBrackets.h"

#include "mathexpr/IMathFunction.h"
#include "mathexpr/editor/FunctionFacts.h"

namespace mathexpr::editor {

std::vector<OpenBracket> openBracketsAt(const TextReading& reading, std::uint32_t cursor)
{
    std::vector<OpenBracket> open;
    const TextToken* called = nullptr;  // the function just before
    for (const TextToken& token : reading.tokens())
    {
        if (endOf(token) > cursor)
        {
            break;
        }
        if (token.kind == TokenKind::Blank)
        {
            continue;
        }
        const wchar_t character = reading.typed()[token.start];
        const bool isBracket = token.kind == TokenKind::Bracket || token.kind == TokenKind::Shorthand;
        if (isBracket && character == L'(')
        {
            const bool isCall = called != nullptr;
            open.push_back(
                {isCall ? reading.textOf(*called) : std::wstring(), isCall ? spanOf(*called) : TextSpan(), 0});
        }
        else if (isBracket && character == L'[')
        {
            open.push_back({L"point", spanOf(token), 0});
        }
        else if (isBracket && character != L'e' && !open.empty())
        {
            open.pop_back();
        }
        else if (token.kind == TokenKind::Separator && !open.empty())
        {
            ++open.back().argument;
        }
        called = token.kind == TokenKind::Function ? &token : nullptr;
    }
    return open;
}

std::wstring closingOf(const std::vector<OpenBracket>& open)
{
    std::wstring closing;
    for (auto bracket = open.rbegin(); bracket != open.rend(); ++bracket)
    {
        const std::vector<const FunctionFacts*> overloads = overloadsOf(bracket->function);
        if (!overloads.empty() && overloads.back()->nbArgs != NB_ARGS_UNDEFINED)
        {
            const std::vector<std::wstring>& arguments =
                overloads[overloadWith(overloads, bracket->argument)]->arguments;
            for (std::size_t missing = bracket->argument + std::size_t{1}; missing < arguments.size(); ++missing)
            {
                closing += L',' + arguments[missing];
            }
        }
        closing += L')';
    }
    return closing;
}

}
