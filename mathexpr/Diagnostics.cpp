// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Diagnostics.cpp - converts the recorded failure to the public structure.
#include "mathexpr/Diagnostics.h"

#include "MTParserLib/text/MTParserPreprocessing.h"
#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"
#include "mathexpr/MessageSource.h"
#include "mathexpr/NameSuggestions.h"
#include "mathexpr/hints/Hints.h"
#include "mathexpr/hints/KnownNames.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace mathexpr {
namespace {

MTSpan spanInTypedText(const MTFailure& failure, std::wstring_view typed)
{
    const bool isParsing = failure.kind == ExpressionDiagnostic::Kind::Parsing;
    if (isParsing && failure.code == ParsingError::NoExpression)
    {
        return {0, typed.size()};  // including blanks, of which the whole text may consist
    }
    if (failure.spanCountsTyped || failure.span.isEmpty())
    {
        return failure.span;
    }
    return typedSpanOf(typed, failure.span);
}

std::wstring withoutBlanks(std::wstring_view text)
{
    std::wstring stripped;
    std::copy_if(text.begin(), text.end(), std::back_inserter(stripped),
                 [](wchar_t character) { return character != L' '; });
    return stripped;
}

void offerFunctions(NameSuggestions& suggestions, const MTParserRegistrar& registrar)
{
    for (std::size_t index = 0; index < registrar.getNbFunctions(); ++index)
    {
        suggestions.offer(registrar.getFunctionDefinition(index).symbol);
    }
}

void offerValues(NameSuggestions& suggestions, const KnownNames& names, std::wstring_view misspelt)
{
    const MTParserRegistrar& registrar = names.registrar();
    for (std::size_t index = 0; index < registrar.getNbConstants(); ++index)
    {
        suggestions.offer(registrar.getConstantName(index));
    }
    for (std::size_t index = 0; index < registrar.getNbVariables(); ++index)
    {
        suggestions.offer(registrar.getVariableDefinition(index).name);
    }
    std::for_each(names.hostNames().begin(), names.hostNames().end(),
                  [&suggestions](const std::wstring& name) { suggestions.offer(name); });
    for (const std::wstring& name : names.indexedNear(misspelt))
    {
        suggestions.offer(name);
    }
}

/// Before a bracket, only functions are candidates. Elsewhere, candidates are everything with a value, and functions
/// whose brackets are missing.
std::vector<std::wstring> suggestionsFor(const MTFailure& failure, const KnownNames& names)
{
    NameSuggestions suggestions(failure.itemName);
    if (failure.message == Message::UnknownName)
    {
        offerValues(suggestions, names, failure.itemName);
    }
    offerFunctions(suggestions, names.registrar());
    return suggestions.take();
}

ExpressionDiagnostic diagnosticOf(MTParser& parser)
{
    ExpressionDiagnostic diagnostic;
    const KnownNames names(parser.getRegistrar(), parser.getNameSource());
    const MTFailure& failure = parser.getFailure();
    const std::wstring_view typed = parser.getTypedText();

    diagnostic.message = failure.message;
    diagnostic.text = loadMessage(failure.message);
    diagnostic.kind = failure.kind;
    diagnostic.code = failure.code;
    const MTSpan span = spanInTypedText(failure, typed);
    diagnostic.start = static_cast<std::uint32_t>(span.begin);
    diagnostic.length = static_cast<std::uint32_t>(span.end - span.begin);
    diagnostic.itemName = failure.itemName;
    if (failure.itemName.empty() && span.end <= typed.size())
    {
        diagnostic.itemName = withoutBlanks(typed.substr(span.begin, span.end - span.begin));
    }
    diagnostic.conflictItemName = failure.conflictItemName;
    diagnostic.nbArgs = failure.nbArgs;
    if (failure.nbArgs != 0)
    {
        diagnostic.acceptedArgCounts = names.argumentCounts(diagnostic.itemName);
    }
    diagnostic.expected = failure.expected;
    if (failure.message == Message::UnknownName || failure.message == Message::UnknownFunction)
    {
        diagnostic.suggestions = suggestionsFor(failure, names);
    }
    addHints(diagnostic, parser, names);
    return diagnostic;
}

}

bool hasFailed(const MathExpression& expression) noexcept
{
    return EngineAccess::parserOf(expression).hasFailed();
}

ExpressionDiagnostic getDiagnostic(const MathExpression& expression)
{
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        return hasFailed(expression) ? diagnosticOf(EngineAccess::parserOf(expression)) : ExpressionDiagnostic();
    });
}

void setNameSource(MathExpression& expression, const IMathExprNameSource* source) noexcept
{
    EngineAccess::parserOf(expression).setNameSource(source);
}

}
