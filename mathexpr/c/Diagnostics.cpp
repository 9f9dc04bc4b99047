// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Diagnostics.cpp - the part of mathexpr.h about diagnostics.
#include "mathexpr/Diagnostics.h"

#include "mathexpr/c/Expression.h"
#include "mathexpr/c/Structures.h"

#include <algorithm>

namespace {

// The numbers are the library's own.
static_assert(MATHEXPR_KIND_NONE == static_cast<std::uint32_t>(mathexpr::ExpressionDiagnostic::Kind::None));
static_assert(MATHEXPR_KIND_PARSING == static_cast<std::uint32_t>(mathexpr::ExpressionDiagnostic::Kind::Parsing));
static_assert(MATHEXPR_KIND_DEFINITION == static_cast<std::uint32_t>(mathexpr::ExpressionDiagnostic::Kind::Definition));

/// How many units of an encoding a part of the typed text takes.
template <class Encoding>
std::size_t unitsOf(std::wstring_view typed, std::size_t begin, std::size_t length)
{
    const std::size_t first = std::min(begin, typed.size());
    return Encoding::encode(typed.substr(first, length)).size();
}

template <class Encoding>
typename Encoding::Diagnostic describe(const mathexpr::ExpressionDiagnostic& own,
                                       const DiagnosticTexts<Encoding>& texts, std::wstring_view typed)
{
    typename Encoding::Diagnostic diagnostic{};
    diagnostic.message = own.message;
    diagnostic.kind = static_cast<std::uint32_t>(own.kind);
    diagnostic.code = own.code;
    diagnostic.start = unitsOf<Encoding>(typed, 0, own.start);
    diagnostic.length = unitsOf<Encoding>(typed, own.start, own.length);
    diagnostic.text = texts.text.c_str();
    diagnostic.text_length = texts.text.size();
    diagnostic.item = texts.itemName.c_str();
    diagnostic.item_length = texts.itemName.size();
    diagnostic.conflict = texts.conflictName.c_str();
    diagnostic.conflict_length = texts.conflictName.size();
    diagnostic.expected = own.expected;
    diagnostic.arg_count = own.nbArgs;
    diagnostic.accepted_arg_counts = texts.acceptedArgCounts.empty() ? nullptr : texts.acceptedArgCounts.data();
    diagnostic.accepted_count = texts.acceptedArgCounts.size();
    diagnostic.suggestions = texts.suggestions.data();
    diagnostic.suggestion_count = texts.suggestions.size();
    diagnostic.hints = texts.hints.data();
    diagnostic.hint_count = texts.hints.size();
    if (own.fix)
    {
        diagnostic.fix_start = unitsOf<Encoding>(typed, 0, own.fix->start);
        diagnostic.fix_length = unitsOf<Encoding>(typed, own.fix->start, own.fix->length);
    }
    diagnostic.fix_replacement = texts.replacement.c_str();
    diagnostic.fix_replacement_length = texts.replacement.size();
    return diagnostic;
}

template <class Encoding>
mathexpr_status getDiagnostic(mathexpr_expression* handle, typename Encoding::Diagnostic* diagnostic) noexcept
{
    return readExpression(handle, [diagnostic](mathexpr_expression& expression) {
        if (diagnostic == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        if (!hasPlausibleSize(diagnostic))
        {
            return MATHEXPR_BAD_SIZE;
        }
        if (expression.host->isAskedForNames)
        {
            return MATHEXPR_BUSY;
        }
        const Mark asked(expression.host->isAskedForNames);
        const mathexpr::ExpressionDiagnostic own = mathexpr::getDiagnostic(expression.object());
        auto texts = std::make_unique<const DiagnosticTexts<Encoding>>(own);
        const std::wstring_view typed = mathexpr::EngineAccess::parserOf(expression.object()).getTypedText();
        writeStructure(describe<Encoding>(own, *texts, typed), diagnostic);
        expression.template answers<Encoding>().diagnostic = std::move(texts);
        return MATHEXPR_OK;
    });
}

}

mathexpr_status mathexpr_has_failed(const mathexpr_expression* handle, int32_t* failed) noexcept
{
    return readExpression(handle, [failed](mathexpr_expression& expression) {
        if (failed == nullptr)
        {
            return MATHEXPR_NULL_ARGUMENT;
        }
        *failed = mathexpr::hasFailed(expression.object()) ? 1 : 0;
        return MATHEXPR_OK;
    });
}

mathexpr_status mathexpr_get_diagnostic_utf8(mathexpr_expression* expression,
                                             mathexpr_diagnostic_utf8* diagnostic) noexcept
{
    return getDiagnostic<Utf8>(expression, diagnostic);
}

mathexpr_status mathexpr_get_diagnostic_utf16(mathexpr_expression* expression,
                                              mathexpr_diagnostic_utf16* diagnostic) noexcept
{
    return getDiagnostic<Utf16>(expression, diagnostic);
}
