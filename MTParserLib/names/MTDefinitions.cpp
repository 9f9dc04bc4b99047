// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// MTDefinitions.cpp - the order of operators, and the index of their first characters.
#include "MTParserLib/names/MTDefinitions.h"

void MTDefinitions::insertOperator(const MTOperatorDefinition& definition)
{
    const auto firstShorter =
        std::find_if(operators.begin(), operators.end(), [&](const MTOperatorDefinition& defined) {
            return defined.symbol.size() < definition.symbol.size();
        });
    operators.insert(firstShorter, definition);
}

void MTDefinitions::indexCharacters() noexcept
{
    plainCharacters = MTPlainCharacters();
    for (const wchar_t special : {L'(', L')', L'=', syntax.argumentSeparator})
    {
        plainCharacters.set(special, false);
    }
    firstOperator.fill(notFound);
    for (std::size_t index = operators.size(); index-- > 0;)
    {
        const wchar_t first = operators[index].symbol.front();
        plainCharacters.set(first, false);
        const auto isAlike = [first](const MTOperatorDefinition& other) { return other.symbol.front() == first; };
        const auto alike =
            std::find_if(operators.begin() + static_cast<std::ptrdiff_t>(index) + 1, operators.end(), isAlike);
        operators[index].nextAlike =
            alike == operators.end() ? notFound : static_cast<std::size_t>(alike - operators.begin());
        const auto code = static_cast<std::size_t>(first);
        if (code < firstOperator.size())
        {
            firstOperator[code] = index;
        }
    }
}

std::size_t MTDefinitions::firstOperatorBeyondAscii(wchar_t character) const noexcept
{
    const auto first = std::find_if(operators.begin(), operators.end(), [character](const MTOperatorDefinition& each) {
        return each.symbol.front() == character;
    });
    return first == operators.end() ? notFound : static_cast<std::size_t>(first - operators.begin());
}
