// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Hover.cpp - describes a token from the vocabulary, and evaluates a part of the text. The evaluation uses a separate
// object, and is skipped if host code could run.
#include "MTParserLib/MTMessage.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"
#include "mathexpr/MessageSource.h"
#include "mathexpr/TypingHelp.h"
#include "mathexpr/Vocabulary.h"
#include "mathexpr/editor/FunctionFacts.h"
#include "mathexpr/editor/TextReading.h"
#include "mathexpr/editor/Trial.h"
#include "mathexpr/editor/UnitNames.h"

#include <algorithm>
#include <iterator>

namespace mathexpr {
namespace editor {
namespace {

class HoverWriter
{
public:
    HoverWriter(const MathExpression& givenExpression, const TextReading& given, HostQuestions questions)
        : expression(givenExpression), reading(given), tokens(given.tokens()),
          trial(givenExpression, given.names(), questions == HostQuestions::Allowed)
    {}

    HoverInfo write(std::uint32_t cursor)
    {
        const std::size_t index = tokenAt(cursor);
        if (index == tokens.size() || tokens[index].kind == TokenKind::Blank)
        {
            return {};
        }
        const TextToken& token = tokens[index];
        info.kind = token.kind;
        info.span = spanOf(token);
        info.name = reading.textOf(token);
        switch (token.kind)
        {
        case TokenKind::Function:
            describeFunction(index);
            break;
        case TokenKind::Operator:
            describeOperator(index);
            break;
        case TokenKind::Number:
        case TokenKind::Constant:
        case TokenKind::Variable:
        case TokenKind::HostName:
            addValue(info.span);
            break;
        default:
            if (token.partner != noPartner)
            {
                addValue(partOf(std::min(index, std::size_t{token.partner})));
            }
            break;
        }
        return std::move(info);
    }

private:
    /// The token that begins at the cursor or contains it; otherwise the one that ends there.
    std::size_t tokenAt(std::uint32_t cursor) const
    {
        const auto at = std::find_if(tokens.begin(), tokens.end(),
                                     [cursor](const TextToken& token) { return cursor < endOf(token); });
        const auto index = static_cast<std::size_t>(at - tokens.begin());
        const bool isNothing = at == tokens.end() || (at->kind == TokenKind::Blank && at->start == cursor);
        return isNothing && index != 0 ? index - 1 : index;
    }

    /// Index of the next token that is not a blank; the number of tokens if there is none.
    std::size_t nextOf(std::size_t index) const
    {
        const auto isBlank = [](const TextToken& token) { return token.kind == TokenKind::Blank; };
        const auto next =
            std::find_if_not(tokens.begin() + static_cast<std::ptrdiff_t>(index) + 1, tokens.end(), isBlank);
        return static_cast<std::size_t>(next - tokens.begin());
    }

    /// The part of the text in a pair of brackets, including the brackets and the called function.
    /// @param open  index of an opening bracket that has a partner
    TextSpan partOf(std::size_t open) const
    {
        std::size_t begin = open;
        for (std::size_t index = open; index-- > 0 && begin == open && isCallable(index);)
        {
            begin = tokens[index].kind == TokenKind::Function ? index : begin;
        }
        return {tokens[begin].start, endOf(tokens[tokens[open].partner]) - tokens[begin].start};
    }

    bool isCallable(std::size_t index) const
    {
        return tokens[index].kind == TokenKind::Blank || tokens[index].kind == TokenKind::Function;
    }

    void describeFunction(std::size_t index)
    {
        const TextToken& open = tokens[nextOf(index)];
        const std::vector<const FunctionFacts*> overloads = overloadsOf(info.name);
        const FunctionFacts& facts = *overloads[overloadWith(overloads, lastArgumentOf(nextOf(index)))];
        info.help = facts.help;
        info.description = facts.description;
        info.domain = loadMessage(facts.domain);
        info.unit = nameOf(facts.argumentUnit);
        info.example = facts.call;
        trial.evaluate(info.example, info.exampleValue);
        if (open.partner != noPartner)
        {
            addValue(partOf(nextOf(index)));
        }
    }

    /// Index of the last argument of a call.
    std::uint32_t lastArgumentOf(std::size_t open) const
    {
        return static_cast<std::uint32_t>(std::count_if(
            tokens.begin() + static_cast<std::ptrdiff_t>(open),
            tokens[open].partner == noPartner ? tokens.end()
                                              : tokens.begin() + static_cast<std::ptrdiff_t>(tokens[open].partner),
            [&](const TextToken& token) {
                return token.kind == TokenKind::Separator && token.depth == tokens[open].depth + 1;
            }));
    }

    void describeOperator(std::size_t index)
    {
        std::size_t before = index;
        while (before != 0 && (before == index || tokens[before].kind == TokenKind::Blank))
        {
            --before;
        }
        const bool isUnary =
            before == index || tokens[before].kind == TokenKind::Blank || expectsOperand(reading, tokens[before]);
        VocabularyItem item;
        for (std::uint32_t at = 0; getVocabularyItem(at, item); ++at)
        {
            if (item.kind == VocabularyKind::Operator && item.symbol == info.name && item.unary == isUnary)
            {
                info.help = item.help;
                info.description = item.description;
            }
        }
    }

    void addValue(TextSpan part)
    {
        if (!EngineAccess::parserOf(expression).getRegistrar().callsHost())
        {
            trial.evaluate(std::wstring(reading.typed().substr(part.start, part.length)), info.value);
            info.valueSpan = info.value ? part : TextSpan();
        }
    }

    const MathExpression& expression;
    const TextReading& reading;
    const std::vector<TextToken>& tokens;
    Trial trial;
    HoverInfo info;
};

}
}

HoverInfo getHover(const MathExpression& expression, const wchar_t* text, std::uint32_t cursor, HostQuestions questions)
{
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        const editor::TextReading reading(expression, editor::viewOf(text));
        return editor::HoverWriter(expression, reading, questions).write(cursor);
    });
}

}
