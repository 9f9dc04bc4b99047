// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Literals.cpp - numbers are tokens; a point is recognised by the tokens between its brackets.
//
//     coordinate   number
//                  number "e+" number
//                  number "*" "10" "^" number     where each number may have a sign
#include "MTParserLib/text/MTParserNumber.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"
#include "mathexpr/TextEdits.h"
#include "mathexpr/editor/TextReading.h"
#include "mathexpr/editor/Trial.h"

namespace mathexpr {
namespace editor {
namespace {

class LiteralReader
{
public:
    LiteralReader(const MathExpression& expression, const TextReading& given)
        : reading(given), tokens(given.tokens()), order(withoutBlanks(tokens)), trial(expression, given.names(), false)
    {}

    std::vector<TextLiteral> read()
    {
        for (std::size_t at = 0; at < order.size(); ++at)
        {
            if (token(at).kind == TokenKind::Number)
            {
                addNumber(at);
            }
            else if (isWrittenPoint(at))
            {
                addPoint(at);
            }
        }
        return std::move(literals);
    }

private:
    const TextToken& token(std::size_t at) const { return tokens[order[at]]; }

    bool is(std::size_t at, std::wstring_view text) const { return reading.textOf(token(at)) == text; }

    bool isSign(std::size_t at) const { return is(at, L"-") && (at == 0 || expectsOperand(reading, token(at - 1))); }

    void addNumber(std::size_t at)
    {
        const TextToken& number = token(at);
        const bool isNegative = at != 0 && isSign(at - 1);
        TextLiteral literal;
        literal.span.start = isNegative ? token(at - 1).start : number.start;
        literal.span.length = endOf(number) - literal.span.start;
        std::string digits;
        literal.value.x =
            readNumber(reading.textOf(number), reading.names().registrar().getSyntax().decimalPoint, digits);
        literal.value.x = isNegative ? -literal.value.x : literal.value.x;
        literals.push_back(literal);
    }

    /// Whether a point begins at "[" or "point(", with only coordinates up to its partner.
    bool isWrittenPoint(std::size_t at) const
    {
        const bool isCall = token(at).kind == TokenKind::Function && is(at, L"point");
        const std::size_t open = isCall ? at + 1 : at;
        if ((!isCall && !is(at, L"[")) || token(open).partner == noPartner)
        {
            return false;
        }
        std::size_t coordinates = 1;
        std::size_t end = endOfCoordinate(open + 1);
        while (end != 0 && token(end).kind == TokenKind::Separator)
        {
            ++coordinates;
            end = endOfCoordinate(end + 1);
        }
        return end != 0 && order[end] == token(open).partner && coordinates <= 3;
    }

    /// Index after a coordinate; 0 if none begins here.
    std::size_t endOfCoordinate(std::size_t at) const
    {
        std::size_t end = endOfNumber(at);
        if (end != 0 && is(end, L"e+"))
        {
            end = endOfNumber(end + 1);
        }
        else if (end != 0 && is(end, L"*") && is(end + 1, L"10") && is(end + 2, L"^"))
        {
            end = endOfNumber(end + 3);
        }
        return end;
    }

    std::size_t endOfNumber(std::size_t at) const
    {
        const std::size_t number = is(at, L"-") ? at + 1 : at;
        // number + 1 exists: at least the bracket that closes the point follows.
        return token(number).kind == TokenKind::Number ? number + 1 : 0;
    }

    void addPoint(std::size_t at)
    {
        const std::size_t open = is(at, L"[") ? at : at + 1;
        TextLiteral literal;
        literal.span.start = token(at).start;
        literal.span.length = endOf(tokens[token(open).partner]) - literal.span.start;
        std::optional<VALTYPE> value;
        trial.evaluate(std::wstring(reading.typed().substr(literal.span.start, literal.span.length)), value);
        if (value)
        {
            literal.value = *value;
            literals.push_back(literal);
        }
    }

    const TextReading& reading;
    const std::vector<TextToken>& tokens;
    const std::vector<std::size_t> order;  // indices of the tokens that are not blanks
    Trial trial;
    std::vector<TextLiteral> literals;
};

}
}

std::vector<TextLiteral> getLiterals(const MathExpression& expression, const wchar_t* text)
{
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        const editor::TextReading reading(expression, editor::viewOf(text));
        return editor::LiteralReader(expression, reading).read();
    });
}

}
