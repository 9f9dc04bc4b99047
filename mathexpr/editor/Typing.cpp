// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Typing.cpp - compiles a text in a separate object. A text is unfinished if it fails at its end and some continuation
// is accepted. Continuations are found by trial compilation, so no second grammar is needed.
#include "mathexpr/Completion.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"
#include "mathexpr/SMTParsingExcepData.h"
#include "mathexpr/TypingHelp.h"
#include "mathexpr/editor/OpenBrackets.h"
#include "mathexpr/editor/TextReading.h"
#include "mathexpr/editor/Trial.h"

#include <algorithm>
#include <iterator>

namespace mathexpr {
namespace editor {
namespace {

/// Whether text appended at the end could correct the failure.
bool isAtTheEnd(const ExpressionDiagnostic& failure, std::wstring_view typed)
{
    if (failure.kind != ExpressionDiagnostic::Kind::Parsing)
    {
        return false;
    }
    switch (failure.code)
    {
    case ParsingError::BracketNotClosed:
    case ParsingError::NoExpression:
        return true;
    default:
        return typed.find_first_not_of(L' ', std::size_t{failure.start} + failure.length) == std::wstring_view::npos;
    }
}

/// Whether the last word is a prefix of a name that is accepted here.
bool isBeginningOfName(const MathExpression& expression, const TextReading& reading)
{
    const std::wstring typed(reading.typed());
    const std::vector<CompletionItem> completions =
        getCompletions(expression, typed.c_str(), static_cast<std::uint32_t>(typed.size()));
    return std::any_of(completions.begin(), completions.end(), [&](const CompletionItem& item) {
        TextToken word;
        word.start = item.edit.span.start;
        word.length = item.edit.span.length;
        const std::wstring typedName = reading.textOf(word);
        return std::wstring_view(item.name).substr(0, typedName.size()) == typedName;
    });
}

bool canGoOn(const MathExpression& expression, const TextReading& reading, HostQuestions questions)
{
    const auto length = static_cast<std::uint32_t>(reading.typed().size());
    const std::wstring closing = closingOf(openBracketsAt(reading, length));
    Trial trial(expression, reading.names(), questions == HostQuestions::Allowed);
    const std::wstring number = Trial::anyNumber;
    const std::wstring point = Trial::anyPoint;
    const struct
    {
        std::wstring behindText;
        std::wstring behindBrackets;
    } continuations[] = {{number, L""},        {point, L""},         {L"", L""},          {L'*' + point, L""},
                         {L'+' + number, L""}, {L'=' + number, L""}, {L'=' + point, L""}, {number, L'*' + point},
                         {L"", L'*' + point},  {point, L'*' + point}};
    if (std::any_of(std::begin(continuations), std::end(continuations), [&](const auto& continuation) {
            const std::wstring text =
                std::wstring(reading.typed()) + continuation.behindText + closing + continuation.behindBrackets;
            return trial.judge(text) != Trial::Verdict::Refused;
        }))
    {
        return true;
    }
    return isBeginningOfName(expression, reading);
}

TypingDiagnostic diagnose(const MathExpression& expression, const std::wstring& typed, HostQuestions questions)
{
    const TextReading reading(expression, typed);
    Trial trial(expression, reading.names(), questions == HostQuestions::Allowed);
    TypingDiagnostic diagnostic;
    if (!trial.compile(typed))
    {
        diagnostic.failure = trial.diagnostic();
        const bool isUnfinished = isAtTheEnd(diagnostic.failure, typed) && canGoOn(expression, reading, questions);
        diagnostic.state = isUnfinished ? TypingState::Unfinished : TypingState::Wrong;
    }
    return diagnostic;
}

}
}

TypingDiagnostic diagnoseText(const MathExpression& expression, const wchar_t* text, HostQuestions questions)
{
    return atHostBoundary(EngineAccess::hostOf(expression),
                          [&] { return editor::diagnose(expression, std::wstring(editor::viewOf(text)), questions); });
}

std::vector<TextFix> getFixes(const MathExpression& expression, const wchar_t* text)
{
    const ExpressionDiagnostic failure = diagnoseText(expression, text).failure;
    std::vector<TextFix> fixes;
    if (failure.fix)
    {
        fixes.push_back({{{failure.fix->start, failure.fix->length}, failure.fix->replacement}, failure.hints.back()});
    }
    return fixes;
}

}
