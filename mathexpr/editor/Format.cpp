// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Format.cpp - joins the tokens, with or without a blank between adjacent tokens. The compiler ignores blanks, so the
// program cannot change.
#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"
#include "mathexpr/TextEdits.h"
#include "mathexpr/editor/TextReading.h"

namespace mathexpr {
namespace editor {
namespace {

class Formatter
{
public:
    explicit Formatter(const TextReading& given) : reading(given) {}

    std::wstring format()
    {
        for (const std::size_t index : withoutBlanks(reading.tokens()))
        {
            append(reading.tokens()[index]);
        }
        return formatted;
    }

private:
    void append(const TextToken& token)
    {
        const std::wstring text = reading.textOf(token);
        const bool isBinary = token.kind == TokenKind::Operator && previous != nullptr &&
                              !expectsOperand(reading, *previous) && text != L"^";
        const bool isSpaced = isBinary || token.kind == TokenKind::AssignmentSign;
        if (previous != nullptr && (isSpaced || blankFollows))
        {
            formatted += L' ';
        }
        formatted += text;
        blankFollows = isSpaced || token.kind == TokenKind::Separator;
        previous = &token;
    }

    const TextReading& reading;
    std::wstring formatted;
    const TextToken* previous = nullptr;
    bool blankFollows = false;
};

}
}

std::wstring formatText(const MathExpression& expression, const wchar_t* text)
{
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        const std::wstring_view typed = editor::viewOf(text);
        if (editor::isTooLong(expression, typed.size()))
        {
            return std::wstring(typed);
        }
        std::wstring formatted = editor::Formatter(editor::TextReading(expression, typed)).format();
        return editor::isTooLong(expression, formatted.size()) ? std::wstring(typed) : formatted;
    });
}

}
