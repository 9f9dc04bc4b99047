// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// CompletedPlace.cpp - see CompletedPlace.h.
#include "mathexpr/editor/CompletedPlace.h"

#include "mathexpr/editor/FunctionFacts.h"
#include "mathexpr/editor/OpenBrackets.h"

#include <algorithm>

namespace mathexpr::editor {
namespace {

bool isWord(const TextToken& token)
{
    return token.kind == TokenKind::Number || token.kind == TokenKind::Constant || token.kind == TokenKind::Function ||
           isRenamable(token);
}

}

CompletedPlace completedPlaceAt(const TextReading& reading, std::uint32_t cursor)
{
    const std::wstring_view text = reading.typed();
    const auto at = std::min(cursor, static_cast<std::uint32_t>(text.size()));
    CompletedPlace place{{}, {at, 0}, {}, L'\0', false, false, false, {}, ValueKind::Unknown};
    const auto word = std::find_if(reading.tokens().begin(), reading.tokens().end(), [at](const TextToken& token) {
        return isWord(token) && token.start <= at && at <= endOf(token);
    });
    if (word != reading.tokens().end())
    {
        place.replaced = spanOf(*word);
        place.assigns = word->kind == TokenKind::AssignedName;
    }
    place.before = text.substr(0, place.replaced.start);
    TextToken typed;
    typed.start = place.replaced.start;
    typed.length = at - place.replaced.start;
    place.typed = reading.textOf(typed);
    const std::size_t next = text.find_first_not_of(L' ', std::size_t{place.replaced.start} + place.replaced.length);
    place.following = next == std::wstring_view::npos ? L'\0' : text[next];
    for (const TextToken& token : reading.tokens())
    {
        if (token.kind != TokenKind::Blank && token.start < place.replaced.start)
        {
            place.followsWord = isWord(token);
        }
        place.precedesWord = place.precedesWord || (token.start == next && isWord(token));
    }

    const std::vector<OpenBracket> open = openBracketsAt(reading, place.replaced.start);
    place.closing = closingOf(open);
    if (!open.empty())
    {
        const std::vector<const FunctionFacts*> overloads = overloadsOf(open.back().function);
        place.wanted = overloads.empty() ? ValueKind::Unknown
                                         : overloads[overloadWith(overloads, open.back().argument)]->parameterKind;
    }
    return place;
}

}
