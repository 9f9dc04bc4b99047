// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Signature.cpp - finds the innermost open bracket that calls a function of the vocabulary.
#include "mathexpr/EngineAccess.h"
#include "mathexpr/HostBoundary.h"
#include "mathexpr/TypingHelp.h"
#include "mathexpr/editor/FunctionFacts.h"
#include "mathexpr/editor/OpenBrackets.h"
#include "mathexpr/editor/UnitNames.h"

#include <algorithm>
#include <iterator>

namespace mathexpr {
namespace editor {
namespace {

CallSignature signatureOf(const OpenBracket& bracket)
{
    const std::vector<const FunctionFacts*> overloads = overloadsOf(bracket.function);
    CallSignature signature;
    signature.function = bracket.function;
    signature.name = bracket.name;
    signature.argument = bracket.argument;
    signature.activeOverload = static_cast<std::uint32_t>(overloadWith(overloads, bracket.argument));
    const FunctionFacts& active = *overloads[signature.activeOverload];
    signature.wanted = active.nbArgs > bracket.argument ? active.parameterKind : ValueKind::Unknown;
    signature.unit = nameOf(active.argumentUnit);
    std::transform(
        overloads.begin(), overloads.end(), std::back_inserter(signature.overloads), [](const FunctionFacts* facts) {
            return SignatureOverload{facts->help, facts->description, facts->parameters, facts->parameterKind};
        });
    return signature;
}

}
}

CallSignature getSignature(const MathExpression& expression, const wchar_t* text, std::uint32_t cursor)
{
    return atHostBoundary(EngineAccess::hostOf(expression), [&] {
        const editor::TextReading reading(expression, editor::viewOf(text));
        const std::vector<editor::OpenBracket> open = editor::openBracketsAt(reading, cursor);
        const auto call = std::find_if(open.rbegin(), open.rend(), [](const editor::OpenBracket& bracket) {
            return !editor::overloadsOf(bracket.function).empty();
        });
        return call == open.rend() ? CallSignature() : editor::signatureOf(*call);
    });
}

}
