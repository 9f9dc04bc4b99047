// SPDX-FileCopyrightText: 2026 The mathexpr authors
// SPDX-License-Identifier: MIT
//
// Diagnostics.cpp - implements the diagnostics of mathexpr.h.
#include "mathexpr/Diagnostics.h"

#include "mathexpr/c/DescribedDiagnostic.h"
#include "mathexpr/c/Expression.h"
#include "mathexpr/c/Structures.h"

namespace {

// The numbers are those of the C++ enumerations.
static_assert(MATHEXPR_KIND_NONE == static_cast<std::uint32_t>(mathexpr::ExpressionDiagnostic::Kind::None));
static_assert(MATHEXPR_KIND_PARSING == static_cast<std::uint32_t>(mathexpr::ExpressionDiagnostic::Kind::Parsing));
static_assert(MATHEXPR_KIND_DEFINITION == static_cast<std::uint32_t>(mathexpr::ExpressionDiagnostic::Kind::Definition));

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
