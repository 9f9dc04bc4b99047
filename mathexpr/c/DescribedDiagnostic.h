// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// DescribedDiagnostic.h - converts the record of a failure to the structures of mathexpr.h.
#pragma once

#include "mathexpr/ExpressionDiagnostic.h"
#include "mathexpr/c/Encoding.h"
#include "mathexpr/c/Expression.h"

#include <mathexpr.h>

#include <algorithm>
#include <cstddef>
#include <string_view>

/// Number of code units that a part of the typed text takes in an encoding.
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
